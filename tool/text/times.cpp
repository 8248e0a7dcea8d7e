#include "text/times.h"

#include <orvelpki.h>

#include <array>
#include <chrono>
#include <utility>

#include "text/characters.h"

namespace tool {

namespace {

constexpr Seconds minute = 60;
constexpr Seconds hour = 60 * minute;
constexpr Seconds day = 24 * hour;

/// Reads numbers of a fixed count of digits from a text, one after the other.
class Digits {
 public:
  explicit Digits(std::string_view text) : rest_(text) {}

  /// Reads the next number. A missing digit makes the whole text bad.
  int number(size_t digits) {
    int value = 0;
    for (size_t i = 0; i < digits; ++i) {
      if (!digit_next()) {
        good_ = false;
        return 0;
      }
      value = value * 10 + (rest_[0] - '0');
      rest_.remove_prefix(1);
    }
    return value;
  }

  /// Takes the character if it is next.
  bool take(char c) {
    if (!rest_.starts_with(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  void expect(bool condition) { good_ = good_ && condition; }
  bool good_to_the_end() const { return good_ && rest_.empty(); }

 private:
  bool digit_next() const { return !rest_.empty() && rest_[0] >= '0' && rest_[0] <= '9'; }

  std::string_view rest_;
  bool good_ = true;
};

struct Clock {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

std::optional<Seconds> reckon(const Clock &c) {
  const std::chrono::year_month_day date(std::chrono::year(c.year),
                                         std::chrono::month(static_cast<unsigned>(c.month)),
                                         std::chrono::day(static_cast<unsigned>(c.day)));
  if (!date.ok() || c.hour > 23 || c.minute > 59 || c.second > 60) return std::nullopt;
  return Seconds{std::chrono::sys_days(date).time_since_epoch().count()} * day + c.hour * hour +
         c.minute * minute + c.second;
}

/// Appends "2026-01-31 12:00:00" with a letter in place of the blank.
void append_date_and_time(std::string &out, Seconds seconds, char between) {
  const Seconds days = seconds >= 0 ? seconds / day : -((day - 1 - seconds) / day);
  const Seconds rest = seconds - days * day;
  const std::chrono::year_month_day date(
      std::chrono::sys_days(std::chrono::days(static_cast<int>(days))));
  char text[] = "0000-00-00 00:00:00";
  const auto put = [&text](size_t at, int64_t number) {
    text[at] = static_cast<char>('0' + number / 10);
    text[at + 1] = static_cast<char>('0' + number % 10);
  };
  const int year = static_cast<int>(date.year());
  put(0, year / 100);
  put(2, year % 100);
  put(5, static_cast<unsigned>(date.month()));
  put(8, static_cast<unsigned>(date.day()));
  text[10] = between;
  put(11, rest / hour);
  put(14, rest % hour / minute);
  put(17, rest % minute);
  out += text;
}

/// "17 days", "1 hour", "under a minute"
std::string duration(Seconds seconds) {
  const auto count = [](Seconds number, const char *unit) {
    return counted(static_cast<size_t>(number), unit);
  };
  if (seconds >= day) return count(seconds / day, "day");
  if (seconds >= hour) return count(seconds / hour, "hour");
  if (seconds >= minute) return count(seconds / minute, "minute");
  return "under a minute";
}

}  // namespace

std::optional<Seconds> seconds_of(const Time *time) {
  int64_t seconds = 0;
  return pki_Time_seconds(time, &seconds) == 1 ? std::optional(seconds) : std::nullopt;
}

std::optional<Seconds> seconds_of(std::string_view iso) {
  Digits text(iso);
  Clock c;
  c.year = text.number(4);
  text.expect(text.take('-'));
  c.month = text.number(2);
  text.expect(text.take('-'));
  c.day = text.number(2);
  if (text.take('T') || text.take(' ')) {
    c.hour = text.number(2);
    text.expect(text.take(':'));
    c.minute = text.number(2);
    text.expect(text.take(':'));
    c.second = text.number(2);
    text.take('Z');
  }
  if (!text.good_to_the_end()) return std::nullopt;
  return reckon(c);
}

std::optional<Seconds> duration_of(std::string_view text) {
  static constexpr std::array<std::pair<char, Seconds>, 4> units{
      {{'h', hour}, {'d', day}, {'w', 7 * day}, {'y', 365 * day}}};
  constexpr size_t most_digits = 6;
  if (text.size() < 2 || text.size() > most_digits + 1) return std::nullopt;
  Digits digits(text.substr(0, text.size() - 1));
  const int number = digits.number(text.size() - 1);
  if (!digits.good_to_the_end()) return std::nullopt;
  for (const auto &[letter, seconds] : units)
    if (text.ends_with(letter)) return number * seconds;
  return std::nullopt;
}

Seconds now() {
  return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now())
      .time_since_epoch()
      .count();
}

std::string calendar(Seconds seconds) {
  std::string out;
  append_date_and_time(out, seconds, ' ');
  return out;
}

std::string iso(Seconds seconds) {
  std::string out;
  append_iso(out, seconds);
  return out;
}

void append_iso(std::string &out, Seconds seconds) {
  append_date_and_time(out, seconds, 'T');
  out += 'Z';
}

std::string time_text(const Time *time, const char *zone) {
  if (time == nullptr || time->value == nullptr) return "none";
  const auto seconds = seconds_of(time);
  return seconds ? calendar(*seconds) + zone : in_quotes(time->value);
}

Json json_of(const Time *time) {
  if (time == nullptr || time->value == nullptr) return nullptr;
  Json object = Json::object();
  object.put("kind", time->kind).put("value", valid_utf8(time->value));
  if (const auto seconds = seconds_of(time)) object.put("time", iso(*seconds));
  return object;
}

Standing standing(const Validity *validity, Seconds moment) {
  const auto from = validity == nullptr ? std::nullopt : seconds_of(validity->notBefore);
  const auto until = validity == nullptr ? std::nullopt : seconds_of(validity->notAfter);
  using State = Standing::State;
  if (!from || !until) return {};
  const int64_t days_left = (*until - moment) / day;
  if (moment > *until) return {State::expired, days_left, moment - *until};
  if (moment < *from) return {State::not_yet_valid, days_left, *from - moment};
  return {State::valid, days_left, *until - moment};
}

std::string Standing::text() const {
  switch (state) {
    case State::expired:
      return "EXPIRED " + duration(distance) + " ago";
    case State::not_yet_valid:
      return "NOT VALID for another " + duration(distance);
    case State::valid:
      return duration(distance) + " left";
    case State::unknown:
      break;
  }
  return "UNREADABLE DATES";
}

const char *name_of(Standing::State state) {
  static constexpr std::array<const char *, 4> names{"unknown", "notYetValid", "valid", "expired"};
  return names[static_cast<size_t>(state)];
}

}  // namespace tool
