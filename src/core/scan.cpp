#include "core/scan.h"

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

const char *skip_space(const char *c) {
  while (std::isspace(static_cast<unsigned char>(*c)) != 0) ++c;
  return c;
}

// Behind the last character that the conversion can look at; 0b is a prefix in newer C libraries.
const char *reach(const char *c) {
  c = skip_space(c);
  if (*c == '+' || *c == '-') ++c;
  if (*c == '0' && c[1] != '\0' && std::strchr("xXbB", c[1]) != nullptr) {
    c += 2;
    while (std::isxdigit(static_cast<unsigned char>(*c)) != 0) ++c;
  } else {
    while (asn1::is_digit(*c)) ++c;
  }
  return *c == '\0' ? c : c + 1;
}

// sscanf does not say so when a number is too large for its object.
bool fits_int(const char *number) {
  errno = 0;
  const long long value = std::strtoll(number, nullptr, 0);
  return errno == 0 && value >= INT32_MIN && value <= INT32_MAX;
}

}  // namespace

// sscanf measures the whole text before it reads a digit, so a long text of many numbers would cost
// its length for each of them. It is given a copy of what it can look at.
asn1::Scan asn1::IntegerScanner::scan(const char *text, int32_t *value, size_t *width) {
  if (text < barren_) return Scan::no_number;
  char small[32];
  const auto count = static_cast<size_t>(reach(text) - text);
  char *const copy = count < sizeof small ? small : static_cast<char *>(std::malloc(count + 1));
  if (copy == nullptr) return Scan::failure;
  std::memcpy(copy, text, count);
  copy[count] = '\0';
  int number = 0;
  int characters = 0;
  Scan result = Scan::no_number;
  if (std::sscanf(copy, "%i%n", &number, &characters) != 1) {
    barren_ = skip_space(text);
  } else if (!fits_int(copy)) {
    result = Scan::failure;
  } else {
    result = Scan::number;
    *value = number;
    *width = static_cast<size_t>(characters);
  }
  if (copy != small) std::free(copy);
  return result;
}
