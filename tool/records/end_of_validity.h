// When objects cease to be valid, read without building their records.
#ifndef ORVELASN1_TOOL_RECORDS_END_OF_VALIDITY_H
#define ORVELASN1_TOOL_RECORDS_END_OF_VALIDITY_H

#include "text/times.h"

namespace tool {

/// Returns the end of the validity of a certificate, or the next update of a revocation list. Fails
/// for all else, and where that time cannot be read. No octets end the process.
std::optional<Seconds> end_of_validity(Octets octets);

}  // namespace tool

#endif
