// UTCTime, GeneralizedTime, and Time, the CHOICE of the two.
#include <cstdio>
#include <ctime>

#include "core/cursor.h"
#include "core/scan.h"
#include "core/tags.h"

using namespace asn1;

namespace {

/// What the two types differ in.
struct TimeType {
  uint8_t tag;
  uint32_t buffer;      ///< octets of a new buffer, enough for any text that the library makes
  int year_digits;      ///< of the text
  bool seconds_needed;  ///< of the text
};

constexpr TimeType utc = {tag::utc_time, 18, 2, false};
constexpr TimeType generalized = {tag::generalized_time, 27, 4, true};

const TimeType *type_of(const Time &time) {
  if (time.kind == utc.tag) return &utc;
  if (time.kind == generalized.tag) return &generalized;
  return nullptr;
}

char *new_text(const TimeType &type) { return static_cast<char *>(std::calloc(type.buffer, 1)); }

/// Copies a text to a buffer that also has room for any text that the library makes, because a
/// record is set to another time in place. The octets after the text are zero.
char *copy_text(const TimeType &type, const char *octets, size_t length) {
  const size_t size = length < type.buffer ? type.buffer : length + 1;
  char *text = new_array<char>(size);
  if (text == nullptr) return nullptr;
  std::memcpy(text, octets, length);
  std::memset(text + length, 0, size - length);
  return text;
}

char *clone_text(const TimeType &type, const char *text) {
  return text == nullptr ? nullptr : copy_text(type, text, std::strlen(text));
}

uint32_t encode_text(uint8_t **pp, const TimeType &type, const char *text) {
  const size_t length = text == nullptr ? 0 : std::strlen(text);
  if (length == 0 || length > UINT32_MAX) return 0;
  const uint32_t whole = element_octets(static_cast<uint32_t>(length));
  if (pp == nullptr || whole == 0) return whole;
  Writer out(pp);
  out.header(type.tag, static_cast<uint32_t>(length));
  out.octets(text, static_cast<uint32_t>(length));
  return whole;
}

const uint8_t *decode_text(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           const TimeType &type, char **place, uint32_t depth) {
  if (z == nullptr || place == nullptr) return nullptr;
  *place = nullptr;
  Reader in(z, end);
  uint32_t length;
  const uint8_t *octets;
  if (!in.read_header(impl_tag, type.tag, &length, depth) || !in.take(length, &octets)) {
    return nullptr;
  }
  char *const text = copy_text(type, reinterpret_cast<const char *>(octets), length);
  if (text == nullptr) return nullptr;
  *place = text;
  if (depth != 0) [[unlikely]] {
    asn1_LogMessage(depth, "  \"%s\"\n", text);
  }
  return in.position();
}

/// Writes `seconds` in UTC to `buffer` or, where that is NULL, to a new one. Returns the buffer, or
/// NULL where memory is exhausted or the seconds have no broken-down time.
char *print_seconds(const TimeType &type, char *buffer, time_t seconds) {
  struct tm date = {};
  if (gmtime_r(&seconds, &date) == nullptr) return nullptr;
  int year_number = date.tm_year % 100;
  if (type.year_digits != 2 && __builtin_add_overflow(date.tm_year, 1900, &year_number))
    return nullptr;
  char year[16];
  std::snprintf(year, sizeof year, "%.*d", type.year_digits, year_number);
  char made[128];  // more than the compiler can prove: the fields are numbers of two digits
  const int length =
      std::snprintf(made, sizeof made, "%s%.2d%.2d%.2d%.2d%.2dZ", year, date.tm_mon + 1,
                    date.tm_mday, date.tm_hour, date.tm_min, date.tm_sec);
  char *const text = buffer == nullptr ? new_text(type) : buffer;
  if (text != nullptr) std::memcpy(text, made, static_cast<size_t>(length) + 1);
  return text;
}

/// Reads digits from a text. The text ends at its NUL, which is no digit.
class DigitReader {
 public:
  explicit DigitReader(const char *text) : cursor_(text) {}

  bool number(int digits, int *value) {
    int sum = 0;
    for (int i = 0; i < digits; ++i) {
      if (!is_digit(cursor_[i])) return false;
      sum = sum * 10 + (cursor_[i] - '0');
    }
    cursor_ += digits;
    *value = sum;
    return true;
  }
  char next() const { return *cursor_; }
  char take() { return *cursor_++; }

 private:
  const char *cursor_;
};

/// Reads a zone, which ends the text: "Z", or a sign with hours and minutes.
bool read_zone(DigitReader *text, time_t *offset) {
  const char zone = text->next();
  if (zone != 'Z' && zone != '+' && zone != '-') return false;
  text->take();
  int hours = 0;
  int minutes = 0;
  if (zone != 'Z' && (!text->number(2, &hours) || !text->number(2, &minutes))) return false;
  *offset = (zone == '-' ? time_t{-60} : time_t{60}) * (hours * 60 + minutes);
  return text->next() == '\0';
}

}  // namespace

Time *asn1_Time_new() { return new_record<Time>(); }
UTCTime *asn1_UTCTime_new() { return new_text(utc); }
GeneralizedTime *asn1_GeneralizedTime_new() { return new_text(generalized); }

void asn1_Time_free(Time *pElement) {
  if (pElement == nullptr) return;
  if (type_of(*pElement) != nullptr) std::free(pElement->value);
  std::free(pElement);
}

void asn1_UTCTime_free(UTCTime *pElement) { std::free(pElement); }
void asn1_GeneralizedTime_free(GeneralizedTime *pElement) { std::free(pElement); }

Time *asn1_Time_clone(const Time *pElement) {
  if (pElement == nullptr) return nullptr;
  const TimeType *const type = type_of(*pElement);
  if (type == nullptr) return nullptr;
  Time *copy = asn1_Time_new();
  if (copy == nullptr) return nullptr;
  copy->kind = pElement->kind;
  copy->value = clone_text(*type, pElement->value);
  if (copy->value == nullptr && pElement->value != nullptr) {
    std::free(copy);
    return nullptr;
  }
  return copy;
}

UTCTime *asn1_UTCTime_clone(const UTCTime *pElement) { return clone_text(utc, pElement); }
GeneralizedTime *asn1_GeneralizedTime_clone(const GeneralizedTime *pElement) {
  return clone_text(generalized, pElement);
}

uint32_t asn1_Time_e(uint8_t **pp, const Time *pElement) {
  const TimeType *const type = pElement == nullptr ? nullptr : type_of(*pElement);
  return type == nullptr ? 0 : encode_text(pp, *type, pElement->value);
}

uint32_t asn1_UTCTime_e(uint8_t **pp, const UTCTime *pElement) {
  return encode_text(pp, utc, pElement);
}

uint32_t asn1_GeneralizedTime_e(uint8_t **pp, const GeneralizedTime *pElement) {
  return encode_text(pp, generalized, pElement);
}

// Unlike other CHOICEs, a Time adds no level to the trace and writes no closing line.
const uint8_t *asn1_Time_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           Time **ppElement, uint32_t depth) {
  if (ppElement == nullptr) return nullptr;
  *ppElement = asn1_Time_new();
  if (*ppElement == nullptr) return nullptr;
  Time *const time = *ppElement;
  // The reader of the header asserts this only where a time begins.
  require(z == nullptr || end != nullptr, "asn1_x680", "asn1_Tag_d", "end != NULL");
  Reader in(z, end);
  if (z != nullptr && in.read_octet(&time->kind)) {
    const TimeType *const type = type_of(*time);
    const uint8_t *const next =
        type == nullptr ? nullptr : decode_text(z, end, impl_tag, *type, &time->value, depth);
    if (next != nullptr) return next;
  }
  asn1_Time_free(time);
  *ppElement = nullptr;
  return nullptr;
}

const uint8_t *asn1_UTCTime_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              UTCTime **ppElement, uint32_t depth) {
  return decode_text(z, end, impl_tag, utc, ppElement, depth);
}

const uint8_t *asn1_GeneralizedTime_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      GeneralizedTime **ppElement, uint32_t depth) {
  return decode_text(z, end, impl_tag, generalized, ppElement, depth);
}

int32_t asn1_Time_cmp(const Time *a, const Time *b) {
  time_t of_a;
  time_t of_b;
  if (asn1_Time2Seconds(&of_a, a) != 0 || asn1_Time2Seconds(&of_b, b) != 0) return -1;
  if (of_a == of_b) return 0;
  return of_a > of_b ? 1 : 2;  // not -1, which is failure
}

namespace {

/// Makes a record of a text, to be read only.
Time as_time(const TimeType &type, const char *text) {
  return {type.tag, const_cast<char *>(text)};
}

}  // namespace

int32_t asn1_UTCTime_cmp(const UTCTime *a, const UTCTime *b) {
  const Time of_a = as_time(utc, a);
  const Time of_b = as_time(utc, b);
  return asn1_Time_cmp(&of_a, &of_b);
}

int32_t asn1_GeneralizedTime_cmp(const GeneralizedTime *a, const GeneralizedTime *b) {
  const Time of_a = as_time(generalized, a);
  const Time of_b = as_time(generalized, b);
  return asn1_Time_cmp(&of_a, &of_b);
}

// The fields are taken for standard time of the local zone, and no correction follows. No field is
// checked: mktime rolls a month 13 over into the next year.
int32_t asn1_Time2Seconds(time_t *pSeconds, const Time *t) {
  constexpr int32_t failure = -1;
  if (pSeconds == nullptr || t == nullptr || t->value == nullptr) return failure;
  const TimeType *const type = type_of(*t);
  if (type == nullptr) return failure;

  DigitReader text(t->value);
  struct tm date = {};
  int year;
  int month;
  if (!text.number(type->year_digits, &year) || !text.number(2, &month) ||
      !text.number(2, &date.tm_mday) || !text.number(2, &date.tm_hour) ||
      !text.number(2, &date.tm_min)) {
    return failure;
  }
  if ((type->seconds_needed || is_digit(text.next())) && !text.number(2, &date.tm_sec)) {
    return failure;
  }
  time_t offset;
  if (!read_zone(&text, &offset)) return failure;

  if (type->year_digits == 4) {
    date.tm_year = year - 1900;
  } else {
    date.tm_year = year < 50 ? year + 100 : year;
  }
  date.tm_mon = month - 1;
  const time_t local = std::mktime(&date);
  time_t seconds;
  if (local == -1 || __builtin_sub_overflow(local, offset, &seconds)) return failure;
  *pSeconds = seconds;
  return 0;
}

int32_t asn1_UTCTime2Seconds(time_t *pSeconds, const UTCTime *t) {
  const Time time = as_time(utc, t);
  return asn1_Time2Seconds(pSeconds, &time);
}

int32_t asn1_GeneralizedTime2Seconds(time_t *pSeconds, const GeneralizedTime *t) {
  const Time time = as_time(generalized, t);
  return asn1_Time2Seconds(pSeconds, &time);
}

Time *asn1_Seconds2Time(Time *t, time_t seconds) {
  if (t == nullptr) {
    char *const text = print_seconds(generalized, nullptr, seconds);
    Time *const made = text == nullptr ? nullptr : asn1_Time_new();
    if (made == nullptr) {
      std::free(text);
      return nullptr;
    }
    made->kind = generalized.tag;
    made->value = text;
    return made;
  }
  const TimeType *const type = type_of(*t);
  if (type == nullptr) return nullptr;
  if (t->value != nullptr) return print_seconds(*type, t->value, seconds) == nullptr ? nullptr : t;
  // The record has no text to write to and gets none; only whether there is one counts.
  char *const text = print_seconds(*type, nullptr, seconds);
  std::free(text);
  return text == nullptr ? nullptr : t;
}

UTCTime *asn1_Seconds2UTCTime(UTCTime *buffer, time_t seconds) {
  return print_seconds(utc, buffer, seconds);
}

GeneralizedTime *asn1_Seconds2GeneralizedTime(GeneralizedTime *buffer, time_t seconds) {
  return print_seconds(generalized, buffer, seconds);
}

Time *asn1_Time_get(Time *t) { return asn1_Seconds2Time(t, std::time(nullptr)); }
UTCTime *asn1_UTCTime_get(UTCTime *buffer) {
  return asn1_Seconds2UTCTime(buffer, std::time(nullptr));
}
GeneralizedTime *asn1_GeneralizedTime_get(GeneralizedTime *buffer) {
  return asn1_Seconds2GeneralizedTime(buffer, std::time(nullptr));
}
