// Universal types (X.680) and algorithm identifiers.
#include "records/syntax.h"
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
  Node record = Description(view)
                    .field("algorithm", algorithm->algorithm)
                    .field("parameters", algorithm->parameters)
                    .node();
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

template <uint8_t tag>
Node describe_characters(const ASN1String *string, const View &) {
  return characters(tag, string);
}

template <uint8_t kind>
Node describe_time(const char *value, const View &) {
  return time_of(kind, value);
}

constexpr Type rows[] = {
    type<asn1_AlgId_d, asn1_AlgId_e, asn1_AlgId_free>({.name = "algorithm-identifier",
                                                       .heading = "AlgorithmIdentifier",
                                                       .about = "an algorithm and its parameters",
                                                       .syntax = &algorithm_syntax}),
    type<asn1_Integer_d, asn1_Integer_e, asn1_Integer_free>({.name = "integer",
                                                             .heading = "INTEGER",
                                                             .about = "an INTEGER of any size",
                                                             .syntax = &integer_syntax}),
    type<asn1_ObjId_d, asn1_ObjId_e, asn1_ObjId_free>({.name = "object-identifier",
                                                       .heading = "OBJECT IDENTIFIER",
                                                       .about = "an object identifier",
                                                       .syntax = &oid_syntax}),
    type<asn1_BitString_d, asn1_BitString_BER_e, asn1_BitString_free>(
        {.name = "bit-string",
         .heading = "BIT STRING",
         .about = "a BIT STRING",
         .syntax = &bit_string_syntax}),
    type<asn1_OctetString_d, asn1_OctetString_e, asn1_OctetString_free>(
        {.name = "octet-string",
         .heading = "OCTET STRING",
         .about = "an OCTET STRING",
         .syntax = &octet_string_syntax}),
    type<asn1_Any_d, asn1_Any_e, asn1_Any_free>(
        {.name = "any", .heading = "ANY", .about = "an element of any type, as it stands"}),
    type<asn1_UTF8String_d, asn1_UTF8String_e, asn1_UTF8String_free, describe_characters<0x0C>>(
        {.name = "utf8-string", .heading = "UTF8String", .about = "a character string"}),
    type<asn1_NumericString_d, asn1_NumericString_e, asn1_NumericString_free,
         describe_characters<0x12>>(
        {.name = "numeric-string", .heading = "NumericString", .about = "a character string"}),
    type<asn1_PrintableString_d, asn1_PrintableString_e, asn1_PrintableString_free,
         describe_characters<0x13>>(
        {.name = "printable-string", .heading = "PrintableString", .about = "a character string"}),
    type<asn1_TeletexString_d, asn1_TeletexString_e, asn1_TeletexString_free,
         describe_characters<0x14>>(
        {.name = "teletex-string", .heading = "TeletexString", .about = "a character string"}),
    type<asn1_VideotextString_d, asn1_VideotextString_e, asn1_VideotextString_free,
         describe_characters<0x15>>(
        {.name = "videotex-string", .heading = "VideotexString", .about = "a character string"}),
    type<asn1_IA5String_d, asn1_IA5String_e, asn1_IA5String_free, describe_characters<0x16>>(
        {.name = "ia5-string", .heading = "IA5String", .about = "a character string"}),
    type<asn1_GraphicString_d, asn1_GraphicString_e, asn1_GraphicString_free,
         describe_characters<0x19>>(
        {.name = "graphic-string", .heading = "GraphicString", .about = "a character string"}),
    type<asn1_VisibleString_d, asn1_VisibleString_e, asn1_VisibleString_free,
         describe_characters<0x1A>>(
        {.name = "visible-string", .heading = "VisibleString", .about = "a character string"}),
    type<asn1_GeneralString_d, asn1_GeneralString_e, asn1_GeneralString_free,
         describe_characters<0x1B>>(
        {.name = "general-string", .heading = "GeneralString", .about = "a character string"}),
    type<asn1_UniversalString_d, asn1_UniversalString_e, asn1_UniversalString_free,
         describe_characters<0x1C>>(
        {.name = "universal-string", .heading = "UniversalString", .about = "a character string"}),
    type<asn1_Time_d, asn1_Time_e, asn1_Time_free>({.name = "time",
                                                    .heading = "Time",
                                                    .about = "a UTCTime or GeneralizedTime",
                                                    .syntax = &time_syntax}),
    type<asn1_UTCTime_d, asn1_UTCTime_e, asn1_UTCTime_free, describe_time<23>>(
        {.name = "utc-time",
         .heading = "UTCTime",
         .about = "a time with a year of two digits",
         .syntax = &utc_time_syntax}),
    type<asn1_GeneralizedTime_d, asn1_GeneralizedTime_e, asn1_GeneralizedTime_free,
         describe_time<24>>({.name = "generalized-time",
                             .heading = "GeneralizedTime",
                             .about = "a time with a year of four digits",
                             .syntax = &generalized_time_syntax}),
};

}  // namespace

std::span<const Type> universal_types() { return rows; }

}  // namespace tool
