#include "input/base64.h"

#include <algorithm>
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

/// What each digit of a group of four adds to its three octets, the first of them in the lowest
/// bits; `no_group` for other characters.
constexpr uint32_t no_group = 0x1000000;
constexpr auto group_values = [] {
  std::array<std::array<uint32_t, 256>, 4> made{};
  for (size_t c = 0; c < 256; ++c) {
    const uint32_t six = values[c];
    const bool is_digit = six != no_digit;
    made[0][c] = is_digit ? six << 2 : no_group;
    made[1][c] = is_digit ? six >> 4 | (six & 0x0F) << 12 : no_group;
    made[2][c] = is_digit ? (six >> 2) << 8 | (six & 0x03) << 22 : no_group;
    made[3][c] = is_digit ? six << 16 : no_group;
  }
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

// Nearly all of the octets of a scan come by here. What is written may be where the text stands, so
// that a whole group is read first.
size_t Base64Digits::groups(size_t most, uint8_t *out) {
  const char *const start = text_.data() + at_;
  const size_t limit = std::min(most, (text_.size() - at_) / 4);
  size_t count = 0;
  for (const char *from = start; count < limit; ++count, from += 4) {
    const auto value = [from](size_t i) {
      return group_values[i][static_cast<unsigned char>(from[i])];
    };
    const uint32_t group = value(0) | value(1) | value(2) | value(3);
    if (group >= no_group) break;
    if (out == nullptr) continue;
    *out++ = static_cast<uint8_t>(group);
    *out++ = static_cast<uint8_t>(group >> 8);
    *out++ = static_cast<uint8_t>(group >> 16);
  }
  at_ += 4 * count;
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
