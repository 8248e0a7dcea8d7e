// Times as people read them. All reckoning is in UTC and in 64 bits: neither the zone of the
// process nor the width of its time_t has a say, as they have in the library's conversion.
#ifndef ORVELASN1_TOOL_TEXT_TIMES_H
#define ORVELASN1_TOOL_TEXT_TIMES_H

#include "text/json.h"
#include "text/octets.h"

namespace tool {

/// Seconds since 1970 in UTC.
using Seconds = int64_t;

/// Returns the moment that a time of a certificate names, without a fraction of its second. Fails
/// where its text is not a date: each field is checked, and there is no 31st of June.
std::optional<Seconds> seconds_of(const Time *time);

/// Returns the moment of "2026-01-31", "2026-01-31T12:00:00Z" or the same with a blank for the T.
/// Fails on any other text.
std::optional<Seconds> seconds_of(std::string_view iso);

/// Returns the seconds of "12h", "30d", "2w" or "1y", which is 365 days. Fails on any other text.
std::optional<Seconds> duration_of(std::string_view text);

/// Returns the present moment.
Seconds now();

/// Returns "2026-01-31 12:00:00".
std::string calendar(Seconds seconds);

/// Returns or appends "2026-01-31T12:00:00Z".
std::string iso(Seconds seconds);
void append_iso(std::string &out, Seconds seconds);

/// Returns the time as calendar() with `zone` after it. Returns a text that is not a date in
/// quotation marks, and "none" for a time without a text.
std::string time_text(const Time *time, const char *zone = "");

Json json_of(const Time *time);

/// How a period of validity stands to a moment.
struct Standing {
  enum class State : uint8_t { unknown, not_yet_valid, valid, expired };
  State state = State::unknown;
  int64_t days_left = 0;  ///< whole days to the end, below 0 past it
  Seconds distance = 0;   ///< to what changes next, or from the end

  /// Returns "213 days left", "EXPIRED 17 days ago".
  std::string text() const;
};

Standing standing(const Validity *validity, Seconds moment);

/// Returns the word for a state, as in JSON: "notYetValid".
const char *name_of(Standing::State state);

}  // namespace tool

#endif
