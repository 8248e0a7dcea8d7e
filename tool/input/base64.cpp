#include "input/base64.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

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

/// Four octets in their order in memory, as one number: the three of a group of four digits, and
/// one that is 0 where all four are digits.
using Group = uint32_t;
constexpr Group group_of(std::array<uint32_t, 4> octets) {
  std::array<uint8_t, 4> low{};
  std::ranges::transform(octets, low.begin(), [](uint32_t octet) { return octet & 0xFF; });
  return std::bit_cast<Group>(low);
}

/// What each digit adds to its group, at each of the four places.
constexpr auto group_values = [] {
  std::array<std::array<Group, 256>, 4> made{};
  for (size_t c = 0; c < 256; ++c) {
    const uint32_t six = values[c];
    const uint32_t bad = six == no_digit ? 1 : 0;
    made[0][c] = group_of({six << 2, 0, 0, bad});
    made[1][c] = group_of({six >> 4, six << 4, 0, bad});
    made[2][c] = group_of({0, six >> 2, six << 6, bad});
    made[3][c] = group_of({0, 0, six, bad});
  }
  return made;
}();

constexpr bool is_good(Group group) { return (group & group_of({0, 0, 0, 1})) == 0; }

/// Returns the group of four characters.
inline Group group_at(const char *from) {
  const auto value = [from](size_t i) {
    return group_values[i][static_cast<unsigned char>(from[i])];
  };
  return value(0) | value(1) | value(2) | value(3);
}

/// Returns the six bits of a digit; -1 for another character.
int value_of(char c) {
  const uint8_t value = values[static_cast<unsigned char>(c)];
  return value == no_digit ? -1 : value;
}

bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace

bool is_base64_digit(char c) { return value_of(c) >= 0; }

size_t blank_in_base64(std::string_view text) {
  static constexpr std::array<std::string_view, 7> escapes{"\\n",   "\\r",   "\\t",  "&#10;",
                                                           "&#13;", "&#xA;", "&#xD;"};
  if (text.empty()) return 0;
  if (is_space(text[0])) return 1;
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
    if (!skip_blanks()) break;
  }
  return -1;
}

bool Base64Digits::skip_blanks() {
  const size_t start = at_;
  while (at_ < text_.size() && !is_base64_digit(text_[at_])) {
    const char c = text_[at_];
    const size_t blank = is_space(c) ? 1 : blank_in_base64(text_.substr(at_));
    if (blank == 0) break;
    at_ += blank;
    if (c == '\n' || (c == '\r' && !text_.substr(at_).starts_with('\n'))) ++line_ends_;
  }
  return at_ != start;
}

// Nearly all of the octets of a scan come by here. What is written may be where the text stands, so
// that groups are read before they are written. A group that is not the last one is written with the
// octet past it: one instruction in place of two.
size_t Base64Digits::groups(size_t most, uint8_t *out) {
  const char *from = text_.data() + at_;
  const size_t limit = std::min(most, (text_.size() - at_) / 4);
  size_t count = 0;
  for (; limit - count > 2; count += 2, from += 8, out += 6) {
    const Group first = group_at(from);
    const Group second = group_at(from + 4);
    if (!is_good(first | second)) break;
    std::memcpy(out, &first, sizeof first);
    std::memcpy(out + 3, &second, sizeof second);
  }
  for (; count < limit; ++count, from += 4, out += 3) {
    const Group group = group_at(from);
    if (!is_good(group)) break;
    std::memcpy(out, &group, 3);
  }
  at_ += 4 * count;
  return count;
}

Base64Text take_base64(std::string_view text, size_t most, uint8_t *out) {
  Base64Digits next(text);
  const auto left = [most, start = out](const uint8_t *to) {
    return most - static_cast<size_t>(to - start);
  };
  uint8_t *to = out;
  uint32_t group = 0;
  size_t bits = 0;
  while (left(to) != 0) {
    // Lines of whole groups, as nearly all are.
    if (bits == 0) do
        to += 3 * next.groups(left(to) / 3, to);
      while (next.skip_blanks());
    if (left(to) == 0) break;
    const int value = next();
    if (value < 0) break;
    group = group << 6 | static_cast<uint32_t>(value);
    bits += 6;
    if (bits < 8) continue;
    bits -= 8;
    *to++ = static_cast<uint8_t>(group >> bits);
  }
  const Octets octets(out, to);
  return {octets, (octets.size() * 8 + bits) / 6, next.at(), next.line_ends()};
}

}  // namespace tool
