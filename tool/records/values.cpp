#include "records/values.h"

#include "text/characters.h"

namespace tool {

std::optional<Node> string_value(Octets value, const View &) {
  if (value.empty()) return std::nullopt;
  const uint8_t *const end = value.data() + value.size();
  ASN1String *made = nullptr;
  const uint8_t *const next = asn1_ASN1String_d(value.data(), end, 0, value[0], &made, 0);
  const Owned<ASN1String> owned(next == nullptr ? nullptr : made, asn1_ASN1String_free);
  if (next != end || !from_string(value[0], octets(owned.get()))) return std::nullopt;
  return characters(value[0], owned.get());
}

std::optional<Node> date_value(Octets value, const View &) {
  const auto time = decoded(asn1_GeneralizedTime_d, asn1_GeneralizedTime_free, value);
  if (!time) return std::nullopt;
  return time_of(generalized_time, time.get());
}

std::optional<Node> number_value(Octets value, const View &) {
  const auto integer = decoded(asn1_Integer_d, asn1_Integer_free, value);
  if (!integer) return std::nullopt;
  return number(integer.get());
}

}  // namespace tool
