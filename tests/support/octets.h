// Octets and elements, as tests write them down.
#ifndef ORVELASN1_TESTS_OCTETS_H
#define ORVELASN1_TESTS_OCTETS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace support {

using Bytes = std::vector<uint8_t>;

/// Returns the octets of a hex text. Skips blanks.
inline Bytes hex(std::string_view text) {
  Bytes out;
  std::string digits;
  for (const char c : text) {
    if (c == ' ' || c == '\n') continue;
    digits += c;
    if (digits.size() == 2) {
      out.push_back(static_cast<uint8_t>(std::stoul(digits, nullptr, 16)));
      digits.clear();
    }
  }
  return out;
}

/// Returns the octets of a text without the closing NUL.
inline Bytes text(std::string_view s) { return Bytes(s.begin(), s.end()); }

inline Bytes operator+(Bytes a, const Bytes &b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

/// Returns an element of definite length: identifier octet, shortest length, content.
inline Bytes element(uint8_t tag, const Bytes &content) {
  Bytes out{tag};
  const size_t n = content.size();
  if (n < 0x80) {
    out.push_back(static_cast<uint8_t>(n));
  } else {
    int octets = 0;
    for (size_t rest = n; rest != 0; rest >>= 8) ++octets;
    out.push_back(static_cast<uint8_t>(0x80 | octets));
    for (int i = octets - 1; i >= 0; --i) out.push_back(static_cast<uint8_t>(n >> (8 * i)));
  }
  return out + content;
}

}  // namespace support

#endif
