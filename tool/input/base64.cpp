#include "input/base64.h"

#include <array>

namespace tool {

namespace {

/// Returns the six bits of a digit; -1 for another character.
int value_of(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

}  // namespace

bool is_base64_digit(char c) { return value_of(c) >= 0; }

size_t blank_in_base64(std::string_view text) {
  static constexpr std::array<std::string_view, 7> escapes{"\\n",   "\\r",   "\\t",  "&#10;",
                                                           "&#13;", "&#xA;", "&#xD;"};
  if (text.empty()) return 0;
  if (text[0] == ' ' || (text[0] >= '\t' && text[0] <= '\r')) return 1;
  if (text[0] != '\\' && text[0] != '&') return 0;
  for (const std::string_view escape : escapes)
    if (text.starts_with(escape)) return escape.size();
  // JSON may write "/" as "\/".
  return text.starts_with("\\/") ? 1 : 0;
}

int Base64Digits::operator()() {
  while (at_ < text_.size()) {
    const int value = value_of(text_[at_]);
    if (value >= 0) {
      ++at_;
      return value;
    }
    const size_t blank = blank_in_base64(text_.substr(at_));
    if (blank == 0) break;
    at_ += blank;
  }
  return -1;
}

Octets take_base64(std::string_view text, size_t most, uint8_t *out) {
  Base64Digits next(text);
  uint8_t *const start = out;
  uint32_t group = 0;
  size_t bits = 0;
  while (static_cast<size_t>(out - start) < most) {
    const int value = next();
    if (value < 0) break;
    group = group << 6 | static_cast<uint32_t>(value);
    bits += 6;
    if (bits < 8) continue;
    bits -= 8;
    *out++ = static_cast<uint8_t>(group >> bits);
  }
  return {start, out};
}

}  // namespace tool
