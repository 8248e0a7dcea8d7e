#include "text/octets.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tool {

namespace {

/// Writes the two digits of each of some octets.
inline void write_hex(char *__restrict to, const uint8_t *__restrict from, size_t count) {
  const auto digit = [](uint8_t value) {
    return static_cast<char>(value + '0' + (value > 9 ? 'A' - '9' - 1 : 0));
  };
  for (size_t i = 0; i < count; ++i) {
    to[2 * i] = digit(from[i] >> 4);
    to[2 * i + 1] = digit(from[i] & 0x0F);
  }
}

int digit_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

/// The two digits of each twelve bits.
constexpr auto base64_pairs = [] {
  constexpr std::string_view digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::array<std::array<char, 2>, 4096> made{};
  for (size_t bits = 0; bits < made.size(); ++bits)
    made[bits] = {digits[bits >> 6], digits[bits & 0x3F]};
  return made;
}();

/// Writes the base64 form of octets, with padding at its end. Returns the place past it.
char *write_base64(char *to, Octets octets) {
  const auto write_group = [&to](uint32_t group) {
    std::memcpy(to, base64_pairs[group >> 12].data(), 2);
    std::memcpy(to + 2, base64_pairs[group & 0xFFF].data(), 2);
    to += 4;
  };
  for (; octets.size() >= 3; octets = octets.subspan(3))
    write_group(uint32_t{octets[0]} << 16 | uint32_t{octets[1]} << 8 | octets[2]);
  if (octets.empty()) return to;
  write_group(uint32_t{octets[0]} << 16 | (octets.size() == 2 ? uint32_t{octets[1]} << 8 : 0));
  std::fill(to - (3 - octets.size()), to, '=');
  return to;
}

constexpr size_t base64_size(size_t octets) { return (octets + 2) / 3 * 4; }

}  // namespace

// The compiler makes one instruction for all octets of a full block of each of those for one octet.
void append_hex(std::string &out, Octets octets) {
  constexpr size_t block = 16;
  const size_t at = out.size();
  out.resize(at + 2 * octets.size());
  char *to = out.data() + at;
  for (; octets.size() >= block; octets = octets.subspan(block), to += 2 * block)
    write_hex(to, octets.data(), block);
  write_hex(to, octets.data(), octets.size());
}

std::string hex(Octets octets) {
  std::string out;
  append_hex(out, octets);
  return out;
}

std::string spaced_hex(Octets octets) {
  std::string out;
  for (size_t i = 0; i < octets.size(); ++i) {
    if (i != 0) out += ' ';
    out += hex(octets.subspan(i, 1));
  }
  return out;
}

std::optional<Bytes> from_hex(std::string_view text) {
  Bytes out;
  for (size_t i = 0; i < text.size();) {
    if (text[i] == ' ' || text[i] == ':' || text[i] == '\n') {
      ++i;
      continue;
    }
    const int high = digit_value(text[i]);
    const int low = i + 1 < text.size() ? digit_value(text[i + 1]) : -1;
    if (high < 0 || low < 0) return std::nullopt;
    out.push_back(static_cast<uint8_t>(high * 16 + low));
    i += 2;
  }
  return out;
}

void append_base64(std::string &out, Octets octets, std::string_view line_end) {
  constexpr size_t octets_a_line = 48;
  const size_t lines = (octets.size() + octets_a_line - 1) / octets_a_line;
  const size_t at = out.size();
  out.resize(at + base64_size(octets.size()) + lines * line_end.size());
  for (char *to = out.data() + at; !octets.empty();) {
    const Octets line = octets.first(std::min(octets.size(), octets_a_line));
    to = std::ranges::copy(line_end, write_base64(to, line)).out;
    octets = octets.subspan(line.size());
  }
}

std::string base64_line(Octets octets) {
  std::string out(base64_size(octets.size()), '\0');
  write_base64(out.data(), octets);
  return out;
}

}  // namespace tool
