#include "text/serials.h"

#include <algorithm>

namespace tool {

namespace {

/// Reads decimal digits into octets, the most significant one first. The time is quadratic.
std::optional<Bytes> from_decimal(std::string_view digits) {
  constexpr size_t most = 1000;
  if (digits.empty() || digits.size() > most) return std::nullopt;
  Bytes lowest_first;
  for (const char digit : digits) {
    if (digit < '0' || digit > '9') return std::nullopt;
    auto carry = static_cast<uint32_t>(digit - '0');
    for (uint8_t &octet : lowest_first) {
      carry += uint32_t{octet} * 10;
      octet = static_cast<uint8_t>(carry);
      carry >>= 8;
    }
    if (carry != 0) lowest_first.push_back(static_cast<uint8_t>(carry));
  }
  std::ranges::reverse(lowest_first);
  return lowest_first;
}

std::optional<Bytes> amount_of(std::string_view text) {
  constexpr std::string_view decimal = "dec:";
  if (text.starts_with(decimal)) return from_decimal(text.substr(decimal.size()));
  if (text.starts_with("0x") || text.starts_with("0X")) text.remove_prefix(2);
  std::string digits(text);
  if (digits.size() % 2 != 0 && digits.find_first_of(": ") == std::string::npos)
    digits.insert(digits.begin(), '0');
  auto octets = from_hex(digits);
  return octets && octets->empty() ? std::nullopt : octets;
}

/// Inverts all bits and adds one.
void negate(Bytes &octets) {
  bool carry = true;
  for (size_t i = octets.size(); i-- > 0;) {
    octets[i] = static_cast<uint8_t>(~octets[i] + (carry ? 1 : 0));
    carry = carry && octets[i] == 0;
  }
}

}  // namespace

Octets shortest(Octets content) {
  constexpr uint8_t sign = 0x80;
  while (content.size() > 1 && ((content[0] == 0x00 && (content[1] & sign) == 0) ||
                                (content[0] == 0xFF && (content[1] & sign) != 0)))
    content = content.subspan(1);
  return content;
}

std::optional<Bytes> serial_of(std::string_view text) {
  const bool negative = text.starts_with('-');
  auto octets = amount_of(text.substr(negative ? 1 : 0));
  if (!octets) return std::nullopt;
  octets->insert(octets->begin(), 0);
  if (negative) negate(*octets);
  const Octets short_form = shortest(*octets);
  return Bytes(short_form.begin(), short_form.end());
}

}  // namespace tool
