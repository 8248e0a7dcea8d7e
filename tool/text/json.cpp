#include "text/json.h"

#include "text/characters.h"
#include "text/object_identifiers.h"
#include "text/times.h"

namespace tool {

void put_oid(Json &object, const std::string &key, const ObjId *oid) {
  object[key] = dotted(oid);
  const std::string name = display_name(oid);
  if (!name.empty()) object[key + "Name"] = name;
}

std::string integer_text(const Integer *integer) {
  const Octets content = octets(integer);
  if (content.empty()) return "00";
  if (integer->negative == 0) return hex(content);
  // The amount of a negative number: all bits turned round, and one more.
  Bytes amount(content.begin(), content.end());
  bool carry = true;
  for (size_t i = amount.size(); i-- > 0;) {
    amount[i] = static_cast<uint8_t>(~amount[i] + (carry ? 1 : 0));
    carry = carry && amount[i] == 0;
  }
  return hex(amount).insert(0, 1, '-');
}

std::string number_text(const Integer *integer) {
  const uint32_t number = asn1_Integer_get(integer);
  return integer->negative == 0 && number != 0xFFFFFFFF ? std::to_string(number)
                                                        : "0x" + integer_text(integer);
}

Json json_of_number(const Integer *integer) {
  constexpr uint32_t too_large = 0xFFFFFFFF;
  const uint32_t number = asn1_Integer_get(integer);
  if (integer->negative != 0 || number == too_large) return integer_text(integer);
  return number;
}

Json json_of(const BitString *bits) {
  if (bits == nullptr) return nullptr;
  return Json{{"length", bits->length}, {"data", hex(octets(bits))}};
}

Json json_of(const Time *time) {
  if (time == nullptr || time->value == nullptr) return nullptr;
  Json object{{"kind", time->kind}, {"value", to_utf8(from_utf8(octets_of(time->value)))}};
  if (const auto seconds = seconds_of(time)) object["time"] = iso(*seconds);
  return object;
}

Json json_of(const AttributeValueAssertion *attribute) {
  Json object;
  put_oid(object, "type", attribute->type);
  object["valueTag"] = attribute->valueTag;
  const Octets value = octets(attribute->value);
  const auto text = from_string(static_cast<uint32_t>(attribute->valueTag), value);
  object["value"] = text ? Json(to_utf8(*text)) : Json(nullptr);
  if (!text || !is_clean(*text)) object["valueOctets"] = hex(value);
  return object;
}

Json json_of_rdn(const RelativeDistinguishedName *rdn) {
  Json attributes = Json::array();
  for (const auto *attribute : elements<AttributeValueAssertion>(rdn))
    attributes.push_back(json_of(attribute));
  return attributes;
}

Json json_of_name(const RDNSequence *name) {
  Json sequence = Json::array();
  for (const auto *rdn : elements<RelativeDistinguishedName>(name))
    sequence.push_back(json_of_rdn(rdn));
  return sequence;
}

}  // namespace tool
