#include "text/octets.h"

#include <nettle/base64.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace tool {

namespace {

/// The digits of each octet.
constexpr auto pairs = [] {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::array<std::array<char, 2>, 256> made{};
  for (size_t octet = 0; octet < made.size(); ++octet)
    made[octet] = {digits[octet >> 4], digits[octet & 0x0F]};
  return made;
}();

int digit_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

void append_base64(std::string &out, Octets octets) {
  const size_t at = out.size();
  out.resize(at + BASE64_ENCODE_RAW_LENGTH(octets.size()));
  base64_encode_raw(&out[at], octets.size(), octets.data());
}

}  // namespace

void append_hex(std::string &out, Octets octets) {
  size_t at = out.size();
  out.resize(at + 2 * octets.size());
  for (const uint8_t octet : octets) {
    std::memcpy(&out[at], pairs[octet].data(), 2);
    at += 2;
  }
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

std::string base64(Octets octets) {
  constexpr size_t octets_a_line = 48;
  std::string out;
  out.reserve(BASE64_ENCODE_RAW_LENGTH(octets.size()) + octets.size() / octets_a_line + 1);
  while (!octets.empty()) {
    const Octets line = octets.first(std::min(octets.size(), octets_a_line));
    append_base64(out, line);
    out += '\n';
    octets = octets.subspan(line.size());
  }
  return out;
}

std::string base64_line(Octets octets) {
  std::string out;
  append_base64(out, octets);
  return out;
}

}  // namespace tool
