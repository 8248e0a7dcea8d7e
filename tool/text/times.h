// Times as people read them. All reckoning is in UTC and in 64 bits: neither the zone of the
// process nor the width of its time_t has a say, as they have in the library's conversion.
#ifndef ORVELASN1_TOOL_TEXT_TIMES_H
#define ORVELASN1_TOOL_TEXT_TIMES_H

#include "text/octets.h"

namespace tool {

/// Seconds since 1970 in UTC.
using Seconds = int64_t;

/// The moment that a time of a certificate names; nothing where its text is no date. Each field is
/// checked, so that a 31st of June is no date.
std::optional<Seconds> seconds_of(const Time *time);

/// The moment of "2026-01-31", "2026-01-31T12:00:00Z" or the same with a blank for the T.
std::optional<Seconds> seconds_of(std::string_view iso);

/// The present moment.
Seconds now();

/// "2026-01-31 12:00:00"
std::string calendar(Seconds seconds);

/// "2026-01-31T12:00:00Z"
std::string iso(Seconds seconds);

/// How a period of validity stands to a moment.
struct Standing {
  enum class State : uint8_t { unknown, not_yet_valid, valid, expired };
  State state = State::unknown;
  int64_t days_left = 0;  ///< whole days to the end, below 0 behind it
  std::string text;       ///< "213 days left", "EXPIRED 17 days ago"
};

Standing standing(const Validity *validity, Seconds moment);

/// The word for a state, as in JSON: "notYetValid".
const char *name_of(Standing::State state);

}  // namespace tool

#endif
