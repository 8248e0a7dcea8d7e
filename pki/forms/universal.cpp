// The universal types in the forms of the RFCs. Their records are those of liborvelasn1, and so are the
// functions that copy and release them.
#include "pki/forms/universal.h"

#include "pki/export.h"
#include "pki/forms/content.h"
#include "pki/forms/identifier.h"

using asn1::BackWriter;
using namespace pki;

namespace pki {

namespace {

/// Copies octets into a record of a string or a number; `length` is left to the caller.
template <class Record>
Record *with_octets(const uint8_t *octets, uint32_t count) {
  auto *const record = asn1::new_record<Record>();
  if (record == nullptr || count == 0) return record;
  record->data = asn1::new_array<uint8_t>(count);
  if (record->data == nullptr) {
    std::free(record);
    return nullptr;
  }
  std::memcpy(record->data, octets, count);
  return record;
}

template <auto Clone, class Record>
void *cloned(const void *value) {
  return Clone(static_cast<const Record *>(value));
}
/// Releases a record and the block that its member `Data` owns.
template <auto Data>
void released(void *value) {
  using Record = typename asn1::MemberOf<decltype(Data)>::Record;
  auto *const record = static_cast<Record *>(value);
  if (record == nullptr) return;
  std::free(record->*Data);
  std::free(record);
}

uint32_t measure_octets(const uint8_t *data, uint32_t length) {
  return length != 0 && data == nullptr ? 0 : asn1::element_octets(length);
}

void trace_octets(uint32_t depth, const uint8_t *octets, uint32_t count) {
  if (depth != 0) [[unlikely]] {
    asn1_LogByteArray(depth, octets, static_cast<int32_t>(count));
  }
}

// ---------------------------------------------------------------------------------------------
// Numbers
// ---------------------------------------------------------------------------------------------

template <uint8_t OwnTag, class Record>
const uint8_t *decode_integer(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                              uint32_t depth) {
  Reader in(z, end);
  View content;
  if (!take_primitive(in, impl_tag, OwnTag, depth, &content) ||
      refuse_integer(content) != nullptr) {
    return nullptr;
  }
  const uint8_t first = content.data[0];
  const uint32_t skipped = first == 0 ? 1 : 0;
  auto *const integer = with_octets<Integer>(content.data + skipped, content.length - skipped);
  asn1::store(place, integer);
  if (integer == nullptr) return nullptr;
  integer->length = content.length - skipped;
  integer->negative = first >> 7;
  trace_octets(depth, content.data, content.length);
  return in.position();
}

uint32_t measure_integer(const void *value) {
  const auto *const integer = static_cast<const Integer *>(value);
  if (integer->length > INT32_MAX || (integer->length != 0 && integer->data == nullptr)) return 0;
  return asn1_Integer_e(nullptr, integer);
}

template <uint8_t OwnTag>
void write_integer(BackWriter &out, const void *value) {
  out.element(
      [value](uint8_t **pp) { return asn1_Integer_e(pp, static_cast<const Integer *>(value)); });
  if constexpr (OwnTag != tag::integer) out.retag(OwnTag);
}

template <uint8_t OwnTag>
constexpr TypeFunctions integer_functions{.decode = decode_integer<OwnTag, Integer>,
                                          .measure = measure_integer,
                                          .write = write_integer<OwnTag>,
                                          .clone = cloned<asn1_Integer_clone, Integer>,
                                          .free = released<&Integer::data>};

uint32_t number_at(const void *place) {
  uint32_t value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

template <uint8_t OwnTag, auto Refuse>
const uint8_t *decode_number(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                             uint32_t depth) {
  Reader in(z, end);
  View content;
  if (!take_primitive(in, impl_tag, OwnTag, depth, &content) || Refuse(content) != nullptr) {
    return nullptr;
  }
  const uint32_t value = content.data[0];
  std::memcpy(place, &value, sizeof value);
  trace_octets(depth, content.data, 1);
  return in.position();
}

void write_octet(BackWriter &out, uint8_t identifier, uint8_t octet) {
  out.octets(&octet, 1);
  out.header(identifier, 1);
}

// DER has one octet for TRUE (X.690, 11.1), whatever was read.
constexpr TypeFunctions boolean_functions{
    .decode = decode_number<tag::boolean, refuse_boolean>,
    .measure = [](const void *) { return asn1::element_octets(1); },
    .write =
        [](BackWriter &out, const void *place) {
          write_octet(out, tag::boolean, number_at(place) != 0 ? 0xFF : 0);
        }};
constexpr TypeFunctions enumerated_functions{
    .decode = decode_number<tag::enumerated, refuse_enumerated>,
    .measure =
        [](const void *place) { return number_at(place) < 0x80 ? asn1::element_octets(1) : 0; },
    .write =
        [](BackWriter &out, const void *place) {
          write_octet(out, tag::enumerated, static_cast<uint8_t>(number_at(place)));
        }};

constexpr TypeFunctions null_functions{
    .decode =
        [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *, uint32_t depth) {
          Reader in(z, end);
          View content;
          const bool taken = take_primitive(in, impl_tag, tag::null, depth, &content) &&
                             refuse_null(content) == nullptr;
          return taken ? in.position() : nullptr;
        },
    .measure = [](const void *) { return asn1::element_octets(0); },
    .write = [](BackWriter &out, const void *) { out.header(tag::null, 0); },
    .clone = [](const void *) -> void * { return nullptr; },
    .free = [](void *) {}};

// ---------------------------------------------------------------------------------------------
// OBJECT IDENTIFIER
// ---------------------------------------------------------------------------------------------

template <uint32_t Most>
const uint8_t *decode_identifier(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 void *place, uint32_t depth) {
  Reader in(z, end);
  View content;
  if (!take_primitive(in, impl_tag, tag::object_identifier, depth, &content) ||
      (Most != 0 && content.length > Most)) {
    return nullptr;
  }
  ObjId *const identifier = identifier_of(content);
  asn1::store(place, identifier);
  if (identifier == nullptr) return nullptr;
  trace_octets(depth, content.data, content.length);
  return in.position();
}

template <uint32_t Most>
constexpr TypeFunctions identifier_functions{
    .decode = decode_identifier<Most>,
    .measure =
        [](const void *value) {
          const uint32_t count = identifier_octets(*static_cast<const ObjId *>(value));
          return count == 0 || (Most != 0 && count > Most) ? 0 : asn1::element_octets(count);
        },
    .write =
        [](BackWriter &out, const void *value) {
          const auto &identifier = *static_cast<const ObjId *>(value);
          const uint32_t count = identifier_octets(identifier);
          if (uint8_t *const to = out.room(count)) write_identifier(identifier, to);
          out.header(tag::object_identifier, count);
        },
    .clone = cloned<asn1_ObjId_clone, ObjId>,
    .free = released<&ObjId::arcs>};

// ---------------------------------------------------------------------------------------------
// Strings
// ---------------------------------------------------------------------------------------------

/// Joins the segments of a constructed string. Returns the position past it, or a null pointer.
template <class Record>
[[gnu::noinline]] const uint8_t *join(const Reader &content, const Header &header, void *place) {
  constexpr bool bits = std::is_same_v<Record, BitString>;
  StringSize size;
  Refusal refusal = nullptr;
  const uint8_t *at = nullptr;
  if (take_string(content, header, bits, &size, &refusal, &at, [](View) {}) == nullptr) {
    return nullptr;
  }
  auto *const record = asn1::new_record<Record>();
  if (record == nullptr) return nullptr;
  record->data = size.octets == 0 ? nullptr : asn1::new_array<uint8_t>(size.octets);
  if (size.octets != 0 && record->data == nullptr) {
    std::free(record);
    return nullptr;
  }
  record->length = bits ? size.octets * 8 - size.unused : size.octets;
  uint8_t *to = record->data;
  asn1::store(place, record);
  return take_string(content, header, bits, &size, &refusal, &at, [&to](View segment) {
    if (to == nullptr) return;
    std::memcpy(to, segment.data, segment.length);
    to += segment.length;
  });
}

template <class Record, uint8_t OwnTag>
const uint8_t *decode_string(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                             uint32_t depth) {
  constexpr bool bits = std::is_same_v<Record, BitString>;
  Reader in(z, end);
  Header header;
  if (!in.read_exact_header(impl_tag, OwnTag, Forms::any, &header, depth)) return nullptr;
  if (header.constructed || header.indefinite) {
    return header.constructed ? join<Record>(in, header, place) : nullptr;
  }
  View content{nullptr, header.length};
  StringSize size;
  if (!in.take(header.length, &content.data) || size.add(&content, bits) != nullptr) return nullptr;
  auto *const record = with_octets<Record>(content.data, content.length);
  asn1::store(place, record);
  if (record == nullptr) return nullptr;
  record->length = bits ? content.length * 8 - size.unused : content.length;
  trace_octets(depth, content.data, content.length);
  return in.position();
}

template <uint8_t OwnTag>
constexpr TypeFunctions string_functions{
    .decode = decode_string<ASN1String, OwnTag>,
    .measure =
        [](const void *value) {
          const auto &string = *static_cast<const ASN1String *>(value);
          return measure_octets(string.data, string.length);
        },
    .write =
        [](BackWriter &out, const void *value) {
          const auto &string = *static_cast<const ASN1String *>(value);
          out.octets(string.data, string.length);
          out.header(OwnTag, string.length);
        },
    .clone = cloned<asn1_ASN1String_clone, ASN1String>,
    .free = released<&ASN1String::data>};

template <auto Encode>
constexpr TypeFunctions bits_functions{
    .decode = decode_string<BitString, tag::bit_string>,
    .measure =
        [](const void *value) {
          const auto *const bits = static_cast<const BitString *>(value);
          return bits->length != 0 && bits->data == nullptr ? 0 : Encode(nullptr, bits);
        },
    .write =
        [](BackWriter &out, const void *value) {
          out.element(
              [value](uint8_t **pp) { return Encode(pp, static_cast<const BitString *>(value)); });
        },
    .clone = cloned<asn1_BitString_clone, BitString>,
    .free = released<&BitString::data>};

// ---------------------------------------------------------------------------------------------
// Times
// ---------------------------------------------------------------------------------------------

/// A text has room for any that asn1_Time_set() puts in its place, as one of liborvelasn1 has.
template <uint8_t OwnTag, uint32_t Room>
const uint8_t *decode_time(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                           uint32_t depth) {
  Reader in(z, end);
  View content;
  if (!take_primitive(in, impl_tag, OwnTag, depth, &content) || refuse_time(content) != nullptr) {
    return nullptr;
  }
  const size_t size = content.length < Room ? Room : size_t{content.length} + 1;
  char *const text = asn1::new_array<char>(size);
  asn1::store(place, text);
  if (text == nullptr) return nullptr;
  std::memcpy(text, content.data, content.length);
  std::memset(text + content.length, 0, size - content.length);
  trace_octets(depth, content.data, content.length);
  return in.position();
}

/// The characters of a time; none where a decoder would refuse them.
View time_text(const void *value) {
  const auto *const text = static_cast<const char *>(value);
  const size_t length = std::strlen(text);
  if (length > INT32_MAX) return {};
  const View view{reinterpret_cast<const uint8_t *>(text), static_cast<uint32_t>(length)};
  return refuse_time(view) == nullptr ? view : View();
}

template <uint8_t OwnTag, uint32_t Room, auto Clone>
constexpr TypeFunctions time_functions{
    .decode = decode_time<OwnTag, Room>,
    .measure =
        [](const void *value) {
          const View text = time_text(value);
          return text.length == 0 ? 0 : asn1::element_octets(text.length);
        },
    .write =
        [](BackWriter &out, const void *value) {
          const View text = time_text(value);
          out.octets(text.data, text.length);
          out.header(OwnTag, text.length);
        },
    .clone = cloned<Clone, char>,
    .free = [](void *value) { std::free(value); }};

// ---------------------------------------------------------------------------------------------
// ANY
// ---------------------------------------------------------------------------------------------

/// `Identifier` is the octet that the element must have, or 0.
template <uint8_t Identifier>
const uint8_t *decode_any(const uint8_t *z, const uint8_t *end, uint32_t, void *place,
                          uint32_t depth) {
  Reader in(z, end);
  const uint8_t *at = nullptr;
  if ((Identifier != 0 && in.peek() != Identifier) || take_any(in, &at) != nullptr) return nullptr;
  const auto count = static_cast<size_t>(in.position() - z);
  if (count > UINT32_MAX) return nullptr;
  Any *const any = with_octets<Any>(z, static_cast<uint32_t>(count));
  asn1::store(place, any);
  if (any == nullptr) return nullptr;
  any->length = static_cast<uint32_t>(count);
  trace_octets(depth, z, any->length);
  return in.position();
}

template <uint8_t Identifier>
constexpr TypeFunctions any_functions{
    .decode = decode_any<Identifier>,
    .measure =
        [](const void *value) {
          const auto &any = *static_cast<const Any *>(value);
          return any.data == nullptr || (Identifier != 0 && any.data[0] != Identifier) ? 0
                                                                                       : any.length;
        },
    .write =
        [](BackWriter &out, const void *value) {
          const auto &any = *static_cast<const Any *>(value);
          out.octets(any.data, any.length);
        },
    .clone = cloned<asn1_Any_clone, Any>,
    .free = released<&Any::data>};

constexpr Type universal(Kind kind, uint8_t identifier, const char *name, const char *record,
                         const TypeFunctions &functions) {
  return described({.kind = kind, .identifier = identifier, .exact = true, .by_hand = functions},
                   name, record, {});
}

template <uint8_t Number>
constexpr Type tagged_any = universal(Kind::any, tag::context | tag::constructed | Number, "ANY",
                                      "Any",
                                      any_functions<tag::context | tag::constructed | Number>);

constexpr Field time_fields[] = {
    Alternative<tag::utc_time, "utcTime", UTCTimeCodec>::field,
    Alternative<tag::generalized_time, "generalTime", GeneralizedTimeCodec>::field};

constexpr Type with_most(Type type, uint16_t most) {
  type.most = most;
  return type;
}

}  // namespace

constinit const Type IntegerType =
    universal(Kind::integer, tag::integer, "INTEGER", "Integer", integer_functions<tag::integer>);
constinit const Type OptionalEnumeratedType = universal(
    Kind::integer, tag::enumerated, "ENUMERATED", "Integer", integer_functions<tag::enumerated>);
constinit const Type BooleanType = described({.kind = Kind::boolean,
                                              .identifier = tag::boolean,
                                              .exact = true,
                                              .size = sizeof(uint32_t),
                                              .by_hand = boolean_functions},
                                             "BOOLEAN", "Boolean", {});
constinit const Type EnumeratedType = described({.kind = Kind::enumerated,
                                                 .identifier = tag::enumerated,
                                                 .exact = true,
                                                 .size = sizeof(uint32_t),
                                                 .by_hand = enumerated_functions},
                                                "ENUMERATED", "Enumerated", {});
constinit const Type NullType = universal(Kind::null, tag::null, "NULL", "Null", null_functions);
constinit const Type ObjIdType = universal(Kind::object_identifier, tag::object_identifier,
                                           "OBJECT IDENTIFIER", "ObjId", identifier_functions<0>);
constinit const Type AttributeTypeType =
    with_most(universal(Kind::object_identifier, tag::object_identifier, "AttributeType", "ObjId",
                        identifier_functions<most_attribute_type_octets>),
              most_attribute_type_octets);
constinit const Type BitStringType = universal(Kind::bit_string, tag::bit_string, "BIT STRING",
                                               "BitString", bits_functions<asn1_BitString_BER_e>);
constinit const Type NamedBitsType = universal(Kind::bit_string, tag::bit_string, "BIT STRING",
                                               "BitString", bits_functions<asn1_BitString_e>);

// NOLINTNEXTLINE(bugprone-macro-parentheses): types, which parentheses do not go around.
#define STRING_FORM(T, kind, name, identifier) \
  constinit const Type T##Type =               \
      universal(kind, identifier, name, #T, string_functions<identifier>);

STRING_FORM(OctetString, Kind::octet_string, "OCTET STRING", tag::octet_string)
STRING_FORM(UTF8String, Kind::character_string, "UTF8String", tag::utf8_string)
STRING_FORM(NumericString, Kind::character_string, "NumericString", tag::numeric_string)
STRING_FORM(PrintableString, Kind::character_string, "PrintableString", tag::printable_string)
STRING_FORM(TeletexString, Kind::character_string, "TeletexString", tag::teletex_string)
STRING_FORM(IA5String, Kind::character_string, "IA5String", tag::ia5_string)
STRING_FORM(VisibleString, Kind::character_string, "VisibleString", tag::visible_string)
STRING_FORM(UniversalString, Kind::character_string, "UniversalString", tag::universal_string)
STRING_FORM(BMPString, Kind::character_string, "BMPString", tag::bmp_string)

constinit const Type UTCTimeType = universal(Kind::utc_time, tag::utc_time, "UTCTime", "UTCTime",
                                             time_functions<tag::utc_time, 18, asn1_UTCTime_clone>);
constinit const Type GeneralizedTimeType =
    universal(Kind::generalized_time, tag::generalized_time, "GeneralizedTime", "GeneralizedTime",
              time_functions<tag::generalized_time, 27, asn1_GeneralizedTime_clone>);
constinit const Type AnyType =
    universal(Kind::any, tag::any, "ANY", "Any", any_functions<tag::any>);
constinit const Type TaggedAny0Type = tagged_any<0>;
constinit const Type TaggedAny1Type = tagged_any<1>;
constinit const Type TaggedAny2Type = tagged_any<2>;
constinit const Type TaggedAny3Type = tagged_any<3>;
constinit const Type TaggedAny5Type = tagged_any<5>;

// Time ::= CHOICE {
//   utcTime      UTCTime,
//   generalTime  GeneralizedTime }
constinit const Type TimeType = described({.kind = Kind::choice,
                                           .identifier = tag::utc_time,
                                           .other_identifier = tag::generalized_time,
                                           .exact = true,
                                           .size = sizeof(Time),
                                           .count = 2,
                                           .fields = time_fields},
                                          "Time", "Time", {});

}  // namespace pki

// clang-format off

// AlgorithmIdentifier ::= SEQUENCE {
//   algorithm   OBJECT IDENTIFIER,
//   parameters  ANY DEFINED BY algorithm OPTIONAL }
using AlgIdTable = Unrolled<Sequence<AlgId,
    Required<&AlgId::algorithm, ObjIdCodec>,
    Optional<&AlgId::parameters, AnyCodec>>>;
EXPORT_FORM(AlgId, AlgId, "AlgorithmIdentifier", AlgIdTable)
