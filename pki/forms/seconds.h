// The times of certificates in seconds, the same in every zone of the process.
#ifndef ORVELPKI_FORMS_SECONDS_H
#define ORVELPKI_FORMS_SECONDS_H

#include "pki/forms/content.h"

namespace pki {

/// Reads the characters of a UTCTime or GeneralizedTime (X.680, 46 and 47; RFC 5280, 4.1.2.5):
/// seconds and their fraction may be left out, the zone is "Z" or a difference, and may not be left
/// out. The years of a UTCTime are 1950 to 2049. Counts the whole seconds since 1970-01-01 00:00:00
/// UTC. Fails for what is no date; a 60th second counts as the next minute's first.
bool read_seconds(uint8_t identifier, View text, int64_t *seconds);

}  // namespace pki

#endif
