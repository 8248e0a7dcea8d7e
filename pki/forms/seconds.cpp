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
  bool at_digit() const { return in_.peek() >= '0' && in_.peek() <= '9'; }
  bool at_end() const { return in_.at_end(); }

  bool number(unsigned digits, int64_t most, int64_t *value) {
    *value = 0;
    for (; digits != 0; --digits) {
      if (!at_digit()) return false;
      *value = *value * 10 + (in_.peek() - '0');
      in_.skip(1);
    }
    return *value <= most;
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
/// the leap day is its last: the months before one take (153 * months + 2) / 5 days.
constexpr int64_t days_since_1970(int64_t year, int64_t month, int64_t day) {
  const int64_t y = month > 2 ? year : year - 1;
  const int64_t months = (month + 9) % 12;
  const int64_t leap_days = y / 4 - y / 100 + y / 400;
  constexpr int64_t days_to_1970 = 719468;
  return y * 365 + leap_days + (153 * months + 2) / 5 + day - 1 - days_to_1970;
}
static_assert(days_since_1970(1970, 1, 1) == 0 && days_since_1970(2000, 3, 1) == 11017 &&
              days_since_1970(1950, 1, 1) == -7305);

/// Reads "Z" or a difference from UTC, in seconds.
bool read_zone(Digits &in, int64_t *difference) {
  *difference = 0;
  if (in.take('Z')) return true;
  const bool behind = in.take('-');
  int64_t hours = 0, minutes = 0;
  if ((!behind && !in.take('+')) || !in.number(2, 23, &hours) || !in.number(2, 59, &minutes)) {
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
  int64_t year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, difference = 0;
  if (!in.number(is_utc ? 2 : 4, 9999, &year) || !in.number(2, 12, &month) || month == 0 ||
      !in.number(2, 31, &day) || !in.number(2, 23, &hour) || !in.number(2, 59, &minute)) {
    return false;
  }
  if (is_utc) year += year < 50 ? 2000 : 1900;
  if (day == 0 || day > days_of_month(year, month)) return false;
  if (in.at_digit() && !in.number(2, 60, &second)) return false;
  if (!is_utc && (in.take('.') || in.take(','))) {
    int64_t digit = 0;
    if (!in.at_digit()) return false;
    while (in.at_digit()) in.number(1, 9, &digit);
  }
  if (!read_zone(in, &difference) || !in.at_end()) return false;
  *seconds =
      ((days_since_1970(year, month, day) * 24 + hour) * 60 + minute) * 60 + second - difference;
  return true;
}

}  // namespace pki
