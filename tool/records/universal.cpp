// Universal types (X.680) and algorithm identifiers.
#include "records/type.h"
#include "text/characters.h"
#include "text/integers.h"

namespace tool {

Node describe(const Integer *integer, const View &view) {
  constexpr size_t most = 20;
  const Octets content = octets(integer);
  if (integer->negative != 0 || content.size() <= most)
    return text(integer_text(integer), integer_text(integer));
  return text(dump(content, view.full), integer_text(integer));
}

Node describe(const ObjId *oid, const View &) {
  Node node;
  node.value = oid;
  return node;
}

Node describe(const BitString *bits, const View &view) {
  auto lines = dump(octets(bits), view.full);
  if (bits->length % 8 != 0) lines.back() += ", " + std::to_string(bits->length) + " bits";
  Json json = Json::object();
  json.put("length", bits->length).put("data", hex(octets(bits)));
  return text(std::move(lines), std::move(json));
}

Node describe(const ASN1String *string, const View &) {
  Node node;
  node.value = octets(string);
  return node;
}

Node describe(const Time *time, const View &) { return time_of(time->kind, time->value); }

// AlgorithmIdentifier ::= SEQUENCE { algorithm, parameters OPTIONAL }
Node describe(const AlgId *algorithm, const View &view) {
  Node record = Description(view).all("AlgId", algorithm).node();
  std::vector<std::string> lines{label(algorithm->algorithm, view)};
  const Octets parameters = octets(algorithm->parameters);
  const auto named = decoded(asn1_ObjId_d, asn1_ObjId_free, parameters);
  if (named)
    lines.front() += ", " + label(named.get(), view);
  else if (!parameters.empty() && asn1_Any_cmp(algorithm->parameters, asn1_Any_NULL()) != 0)
    for (const std::string &line : dump(parameters, view.full)) lines.push_back("  " + line);
  return shown_as(std::move(record), text(std::move(lines), nullptr));
}

namespace {

uint32_t encode_bits(uint8_t **pp, const void *record) {
  return asn1_BitString_BER_e(pp, static_cast<const BitString *>(record));
}

}  // namespace

std::vector<Type> universal_types() {
  constexpr const char *string = "a character string";
  return {
      {.syntax = "AlgId", .about = "an algorithm and its parameters", .by_hand = as<AlgId>},
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
