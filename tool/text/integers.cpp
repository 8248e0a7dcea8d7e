#include "text/integers.h"

#include <bit>

namespace tool {

namespace {

/// Returns the number, unless it is negative or above what asn1_Integer_get() can tell.
std::optional<uint32_t> small(const Integer *integer) {
  constexpr uint32_t too_large = 0xFFFFFFFF;
  const uint32_t number = asn1_Integer_get(integer);
  return integer->negative == 0 && number != too_large ? std::optional(number) : std::nullopt;
}

}  // namespace

std::string integer_text(const Integer *integer) {
  const Octets content = octets(integer);
  if (content.empty()) return "00";
  if (integer->negative == 0) return hex(content);
  // The amount of a negative number: all bits inverted, plus one.
  Bytes amount(content.begin(), content.end());
  bool carry = true;
  for (size_t i = amount.size(); i-- > 0;) {
    amount[i] = static_cast<uint8_t>(~amount[i] + (carry ? 1 : 0));
    carry = carry && amount[i] == 0;
  }
  return hex(amount).insert(0, 1, '-');
}

std::string number_text(const Integer *integer) {
  const auto number = small(integer);
  return number ? std::to_string(*number) : "0x" + integer_text(integer);
}

Json json_of_number(const Integer *integer) {
  const auto number = small(integer);
  return number ? Json(*number) : Json(integer_text(integer));
}

uint64_t bit_length(const Integer *integer) {
  Octets content = octets(integer);
  while (!content.empty() && content[0] == 0) content = content.subspan(1);
  if (content.empty()) return 0;
  return uint64_t{8} * (content.size() - 1) + static_cast<uint64_t>(std::bit_width(content[0]));
}

}  // namespace tool
