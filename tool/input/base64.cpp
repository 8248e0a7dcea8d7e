#include "input/base64.h"

#include <array>

namespace tool {

namespace {

/// The six bits of each digit; `no_digit` for other characters.
constexpr uint8_t no_digit = 0xFF;
constexpr auto values = [] {
  constexpr std::string_view digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::array<uint8_t, 256> made{};
  made.fill(no_digit);
  for (size_t i = 0; i < digits.size(); ++i)
    made[static_cast<unsigned char>(digits[i])] = static_cast<uint8_t>(i);
  return made;
}();

/// Returns the six bits of a digit; -1 for another character.
int value_of(char c) {
  const uint8_t value = values[static_cast<unsigned char>(c)];
  return value == no_digit ? -1 : value;
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

// Nearly all of the octets of a scan come by here.
size_t Base64Digits::groups(size_t most, uint8_t *out) {
  size_t count = 0;
  for (; count < most && text_.size() - at_ >= 4; ++count, at_ += 4) {
    const auto value = [&](size_t i) { return values[static_cast<unsigned char>(text_[at_ + i])]; };
    const uint8_t a = value(0), b = value(1), c = value(2), d = value(3);
    if ((a | b | c | d) == no_digit) break;
    if (out == nullptr) continue;
    *out++ = static_cast<uint8_t>(a << 2 | b >> 4);
    *out++ = static_cast<uint8_t>(b << 4 | c >> 2);
    *out++ = static_cast<uint8_t>(c << 6 | d);
  }
  return count;
}

Octets take_base64(std::string_view text, size_t most, uint8_t *out) {
  Base64Digits next(text);
  uint8_t *const start = out;
  uint32_t group = 0;
  size_t bits = 0;
  for (size_t taken = 0; taken < most; taken = static_cast<size_t>(out - start)) {
    if (bits == 0) out += 3 * next.groups((most - taken) / 3, out);
    if (static_cast<size_t>(out - start) == most) break;
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
