// The universal types as data, and AlgorithmIdentifier. Their functions are spelled out: types.cpp,
// strings.cpp and time.cpp.
#include "universal/universal.h"

#include "core/export.h"

using namespace asn1;

namespace {

uint32_t number_at(const void *place) {
  uint32_t value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

/// The same for a number inside the record, which is copied with it.
template <auto Decode, auto Encode>
constexpr TypeFunctions number_functions{
    .decode =
        [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place, uint32_t depth) {
          return Decode(z, end, impl_tag, static_cast<uint32_t *>(place), depth);
        },
    .measure = [](const void *place) { return Encode(nullptr, number_at(place)); },
    .write =
        [](BackWriter &out, const void *place) {
          out.element([place](uint8_t **pp) { return Encode(pp, number_at(place)); });
        }};

/// NULL has no value: what stands for it is a null pointer.
constexpr TypeFunctions null_functions{
    .decode = [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *,
                 uint32_t depth) { return asn1_Null_d(z, end, impl_tag, nullptr, depth); },
    .measure = [](const void *) { return asn1_Null_e(nullptr); },
    .write = [](BackWriter &out, const void *) { out.element(asn1_Null_e); },
    .clone = [](const void *) -> void * { return nullptr; },
    .free = [](void *) {}};

}  // namespace

// NOLINTBEGIN(bugprone-macro-parentheses): types, which parentheses do not go around.
#define UNIVERSAL_TYPE(T, asn1_name, type_kind, type_identifier, ...)                    \
  namespace asn1 {                                                                       \
  extern const Type T##Type;                                                             \
  constinit const Type T##Type =                                                         \
      defined({.kind = type_kind, .identifier = type_identifier}, asn1_name, #T,         \
              adapted<T, asn1_##T##_d, asn1_##T##_e, asn1_##T##_clone, asn1_##T##_free>, \
              {ORVELASN1_DESCRIPTION(T, __VA_ARGS__)});                                  \
  }

// The strings of octets differ in nothing but their tag.
#ifdef ORVELASN1_DESCRIBES
#define STRING_FUNCTIONS(T, identifier)
#else
#define STRING_FUNCTIONS(T, identifier)                                                \
  T *asn1_##T##_new(uint32_t length) { return asn1_ASN1String_new(length, nullptr); }  \
  void asn1_##T##_free(T *pElement) { asn1_ASN1String_free(pElement); }                \
  uint32_t asn1_##T##_e(uint8_t **pp, const T *pElement) {                             \
    return asn1_ASN1String_e(pp, identifier, pElement);                                \
  }                                                                                    \
  const uint8_t *asn1_##T##_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, \
                              T **ppElement, uint32_t depth) {                         \
    return asn1_ASN1String_d(z, end, impl_tag, identifier, ppElement, depth);          \
  }                                                                                    \
  T *asn1_##T##_clone(const T *pElement) { return asn1_ASN1String_clone(pElement); }   \
  int32_t asn1_##T##_cmp(const T *a, const T *b) { return asn1_ASN1String_cmp(a, b); }
#endif

#define STRING_TYPE(T, asn1_name, type_kind, identifier) \
  STRING_FUNCTIONS(T, identifier)                        \
  UNIVERSAL_TYPE(T, asn1_name, type_kind, identifier, DECODER, ENCODER, CLONE, FREE, OWN_COMPARE)
#define CHARACTER_STRING(T, identifier) STRING_TYPE(T, #T, Kind::character_string, identifier)

// NOLINTEND(bugprone-macro-parentheses)

UNIVERSAL_TYPE(Integer, "INTEGER", Kind::integer, tag::integer, DECODER, ENCODER, CLONE, FREE,
               OWN_COMPARE)
UNIVERSAL_TYPE(ObjId, "OBJECT IDENTIFIER", Kind::object_identifier, tag::object_identifier, DECODER,
               ENCODER, CLONE, FREE, OWN_COMPARE)
UNIVERSAL_TYPE(BitString, "BIT STRING", Kind::bit_string, tag::bit_string, DECODER, ENCODER, CLONE,
               FREE, OWN_COMPARE)
STRING_TYPE(OctetString, "OCTET STRING", Kind::octet_string, tag::octet_string)
CHARACTER_STRING(UTF8String, tag::utf8_string)
CHARACTER_STRING(NumericString, tag::numeric_string)
CHARACTER_STRING(PrintableString, tag::printable_string)
CHARACTER_STRING(TeletexString, tag::teletex_string)
CHARACTER_STRING(VideotextString, tag::videotex_string)
CHARACTER_STRING(IA5String, tag::ia5_string)
CHARACTER_STRING(GraphicString, tag::graphic_string)
CHARACTER_STRING(VisibleString, tag::visible_string)
CHARACTER_STRING(GeneralString, tag::general_string)
CHARACTER_STRING(UniversalString, tag::universal_string)
UNIVERSAL_TYPE(UTCTime, "UTCTime", Kind::utc_time, tag::utc_time, NEW, DECODER, ENCODER, CLONE,
               FREE, OWN_COMPARE)
UNIVERSAL_TYPE(GeneralizedTime, "GeneralizedTime", Kind::generalized_time, tag::generalized_time,
               NEW, DECODER, ENCODER, CLONE, FREE, OWN_COMPARE)
UNIVERSAL_TYPE(Any, "ANY", Kind::any, tag::any, DECODER, ENCODER, CLONE, FREE, OWN_COMPARE)

namespace {

// Time ::= CHOICE {
//   utcTime      UTCTime,
//   generalTime  GeneralizedTime }
//
// Its functions are spelled out: `kind` is the whole identifier octet.
constexpr Field time_fields[] = {
    Alternative<tag::utc_time, "utcTime", UTCTimeCodec>::field,
    Alternative<tag::generalized_time, "generalTime", GeneralizedTimeCodec>::field};

}  // namespace

namespace asn1 {

constinit const Type TimeType = defined(
    {.kind = Kind::choice,
     .identifier = tag::utc_time,
     .other_identifier = tag::generalized_time,
     .size = sizeof(Time),
     .count = 2,
     .fields = time_fields},
    "Time", "Time", adapted<Time, asn1_Time_d, asn1_Time_e, asn1_Time_clone, asn1_Time_free>,
    {ORVELASN1_DESCRIPTION(Time, NEW, DECODER, ENCODER, CLONE, FREE, OWN_COMPARE)});

constinit const Type BooleanType =
    defined({.kind = Kind::boolean, .identifier = tag::boolean, .size = sizeof(uint32_t)},
            "BOOLEAN", "Boolean", number_functions<asn1_Boolean_d, asn1_Boolean_e>, {});
constinit const Type EnumeratedType =
    defined({.kind = Kind::enumerated, .identifier = tag::enumerated, .size = sizeof(uint32_t)},
            "ENUMERATED", "Enumerated", number_functions<asn1_Enumerated_d, asn1_Enumerated_e>, {});
constinit const Type NullType =
    defined({.kind = Kind::null, .identifier = tag::null}, "NULL", "Null", null_functions, {});

constinit const Type BitStringAsStoredType =
    defined({.kind = Kind::bit_string, .identifier = tag::bit_string}, "BIT STRING", "BitString",
            adapted<BitString, asn1_BitString_d, asn1_BitString_BER_e, asn1_BitString_clone,
                    asn1_BitString_free>,
            {});

}  // namespace asn1

// clang-format off

// AlgorithmIdentifier ::= SEQUENCE {
//   algorithm   OBJECT IDENTIFIER,
//   parameters  ANY DEFINED BY algorithm OPTIONAL }
using AlgIdTable = Unrolled<Sequence<AlgId,
    Required<&AlgId::algorithm, ObjIdCodec>,
    Optional<&AlgId::parameters, AnyCodec, Presence::anything_left>>>;
EXPORT_RECORD_AS(AlgId, "AlgorithmIdentifier", AlgIdTable)
