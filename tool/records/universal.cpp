// Universal types (X.680).
#include "records/type.h"
#include "text/characters.h"
#include "text/integers.h"

namespace tool {

Node describe(const Integer *integer, const View &view) {
  constexpr size_t most = 20;
  const Octets content = octets(integer);
  if (integer->negative != 0 || content.size() <= most)
    return text(integer_text(integer), integer_text(integer));
  return text(
      view, [&] { return dump(content, view.full); }, integer_text(integer));
}

Node describe(const ObjId *oid, const View &) {
  Node node;
  node.value = oid;
  return node;
}

namespace {

void append_bits(std::string &out, const BitString *bits) {
  JsonObject(out).put("length", bits->length).put("data", octets(bits));
}

}  // namespace

Node describe(const BitString *bits, const View &view) {
  const auto lines = [&] {
    auto made = dump(octets(bits), view.full);
    if (bits->length % 8 != 0) made.back() += ", " + std::to_string(bits->length) + " bits";
    return made;
  };
  return text(view, lines, Json::of_part<append_bits>(bits));
}

Node describe(const ASN1String *string, const View &) {
  Node node;
  node.value = octets(string);
  return node;
}

Node describe(const Time *time, const View &view) { return time_of(time->kind, time->value, view); }

namespace {

uint32_t encode_bits(uint8_t **pp, const void *record) {
  return asn1_BitString_BER_e(pp, static_cast<const BitString *>(record));
}

}  // namespace

std::vector<Type> universal_types() {
  constexpr const char *string = "a character string";
  return {
      {.syntax = "Integer", .about = "an INTEGER of any size"},
      {.syntax = "ObjId", .about = "an object identifier"},
      {.syntax = "BitString", .about = "a BIT STRING", .own_encode = encode_bits},
      {.syntax = "OctetString", .about = "an OCTET STRING"},
      {.syntax = "Any", .about = "an element of any type, as it stands"},
      {.syntax = "UTF8String", .about = string},
      {.syntax = "NumericString", .about = string},
      {.syntax = "PrintableString", .about = string},
      {.syntax = "TeletexString", .about = string},
      {.syntax = "VideotextString", .about = string, .heading = "VideotexString"},
      {.syntax = "IA5String", .about = string},
      {.syntax = "GraphicString", .about = string},
      {.syntax = "VisibleString", .about = string},
      {.syntax = "GeneralString", .about = string},
      {.syntax = "UniversalString", .about = string},
      {.syntax = "Time", .about = "a UTCTime or GeneralizedTime", .by_hand = as<Time>},
      {.syntax = "UTCTime", .about = "a time with a year of two digits"},
      {.syntax = "GeneralizedTime", .about = "a time with a year of four digits"},
  };
}

}  // namespace tool
