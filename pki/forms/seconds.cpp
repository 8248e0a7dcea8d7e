#include "pki/forms/seconds.h"

namespace pki {

namespace {

class Digits {
 public:
  explicit Digits(View text) : in_(text.data, text.data + text.length) {}

  bool take(char c) {
    if (in_.peek() != c) return false;
    return in_.skip(1);
  }
  bool take_digit() {
    if (!at_digit()) return false;
    in_.skip(1);
    return true;
  }
  bool at_digit() const { return in_.peek() >= '0' && in_.peek() <= '9'; }
  bool at_end() const { return in_.at_end(); }

  /// Reads two digits. Inlined, because nearly all of the time of reading a date goes here.
  [[gnu::always_inline]] bool pair(int64_t most, int64_t *value) {
    const uint8_t *octets = nullptr;
    if (!in_.take(2, &octets)) return false;
    const unsigned tens = octets[0] - unsigned{'0'}, ones = octets[1] - unsigned{'0'};
    *value = tens * 10 + ones;
    return tens <= 9 && ones <= 9 && *value <= most;
  }

 private:
  Reader in_;
};

constexpr bool is_leap(int64_t year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr int64_t days_of_month(int64_t year, int64_t month) {
  constexpr uint8_t days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && is_leap(year) ? 29 : days[month - 1];
}

/// Days from 1970-01-01 to a date of the Gregorian calendar. The year begins in March here, so that
/// the leap day is its last: the months before one take (153 * months + 2) / 5 days. Counts from
/// the year -400, a whole cycle of the calendar earlier: a quotient of a negative year, as January
/// 0000 has it here, would be rounded up.
constexpr int64_t days_since_1970(int64_t year, int64_t month, int64_t day) {
  const int64_t y = (month > 2 ? year : year - 1) + 400;
  const int64_t months = (month + 9) % 12;
  const int64_t leap_days = y / 4 - y / 100 + y / 400;
  constexpr int64_t days_to_1970 = 719468 + 146097;
  return y * 365 + leap_days + (153 * months + 2) / 5 + day - 1 - days_to_1970;
}
static_assert(days_since_1970(1970, 1, 1) == 0 && days_since_1970(2000, 3, 1) == 11017 &&
              days_since_1970(1950, 1, 1) == -7305 && days_since_1970(0, 1, 1) == -719528 &&
              days_since_1970(0, 2, 29) + 1 == days_since_1970(0, 3, 1));

/// Reads "Z" or a difference from UTC, in seconds.
bool read_zone(Digits &in, int64_t *difference) {
  *difference = 0;
  if (in.take('Z')) return true;
  const bool behind = in.take('-');
  int64_t hours = 0, minutes = 0;
  if ((!behind && !in.take('+')) || !in.pair(23, &hours) || !in.pair(59, &minutes)) {
    return false;
  }
  *difference = (behind ? -60 : 60) * (hours * 60 + minutes);
  return true;
}

}  // namespace

bool read_seconds(uint8_t identifier, View text, int64_t *seconds) {
  const bool is_utc = identifier == tag::utc_time;
  if (!is_utc && identifier != tag::generalized_time) return false;
  Digits in(text);
  int64_t century = 0, year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0,
          difference = 0;
  if ((!is_utc && !in.pair(99, &century)) || !in.pair(99, &year) || !in.pair(12, &month) ||
      month == 0 || !in.pair(31, &day) || !in.pair(23, &hour) || !in.pair(59, &minute)) {
    return false;
  }
  year += is_utc ? (year < 50 ? 2000 : 1900) : century * 100;
  if (day == 0 || day > days_of_month(year, month)) return false;
  if (in.at_digit() && !in.pair(60, &second)) return false;
  if (!is_utc && (in.take('.') || in.take(','))) {
    if (!in.take_digit()) return false;
    while (in.take_digit()) {
    }
  }
  if (!read_zone(in, &difference) || !in.at_end()) return false;
  *seconds =
      ((days_since_1970(year, month, day) * 24 + hour) * 60 + minute) * 60 + second - difference;
  return true;
}

}  // namespace pki
