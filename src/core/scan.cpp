#include "core/scan.h"

namespace {

constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Returns the value of a digit of any base up to 16, or 16 where `c` is no digit.
constexpr uint32_t digit_value(char c) {
  if (asn1::is_digit(c)) return static_cast<uint32_t>(c - '0');
  if (c >= 'a' && c <= 'f') return static_cast<uint32_t>(c - 'a') + 10;
  if (c >= 'A' && c <= 'F') return static_cast<uint32_t>(c - 'A') + 10;
  return 16;
}

}  // namespace

asn1::Scan asn1::IntegerScanner::scan(const char *text, int32_t *value, size_t *width) {
  if (text < barren_) return Scan::no_number;
  const char *c = text;
  while (is_space(*c)) ++c;
  const char *const start = c;
  const bool negative = *c == '-';
  if (*c == '-' || *c == '+') ++c;
  if (!is_digit(*c)) {
    barren_ = start;
    return Scan::no_number;
  }
  uint32_t base = 10;
  if (*c == '0') {
    base = c[1] == 'x' || c[1] == 'X' ? 16 : 8;
    if (base == 16) c += 2;
  }
  const uint32_t most = static_cast<uint32_t>(INT32_MAX) + (negative ? 1 : 0);
  uint32_t magnitude = 0;
  bool fits = true;
  for (uint32_t digit = digit_value(*c); digit < base; digit = digit_value(*++c)) {
    fits = fits && magnitude <= (most - digit) / base;
    if (fits) magnitude = magnitude * base + digit;
  }
  if (!fits) return Scan::failure;
  *value = static_cast<int32_t>(negative ? 0 - magnitude : magnitude);
  *width = static_cast<size_t>(c - text);
  return Scan::number;
}
