// The universal types in the forms of the RFCs, and what a table of them is made of. The tables are
// those of liborvelasn1; every type is exact (core/type.h).
#ifndef ORVELPKI_FORMS_UNIVERSAL_H
#define ORVELPKI_FORMS_UNIVERSAL_H

#include <type_traits>

#include "core/table.h"

namespace pki {

using asn1::Codec;
using asn1::ContentReader;
using asn1::Explicit;
using asn1::Field;
using asn1::FieldFunctions;
using asn1::Implicit;
using asn1::Kind;
using asn1::Presence;
using asn1::Required;
using asn1::Stored;
using asn1::Type;
using asn1::TypeFunctions;
using asn1::Unrolled;
using asn1::UnrolledList;
using asn1::Wiped;
namespace tag = asn1::tag;

/// Declares a type that another file defines, and its codec.
#define DECLARE_FORM(T, Record, identifier) \
  extern const Type T##Type;                \
  using T##Codec = Codec<T##Type, Record, identifier>;

DECLARE_FORM(Integer, Integer, tag::integer)
DECLARE_FORM(ObjId, ObjId, tag::object_identifier)
DECLARE_FORM(BitString, BitString, tag::bit_string)  ///< written as it stands
DECLARE_FORM(NamedBits, BitString, tag::bit_string)  ///< written without the zero bits at its end
DECLARE_FORM(OctetString, OctetString, tag::octet_string)
DECLARE_FORM(UTF8String, UTF8String, tag::utf8_string)
DECLARE_FORM(NumericString, NumericString, tag::numeric_string)
DECLARE_FORM(PrintableString, PrintableString, tag::printable_string)
DECLARE_FORM(TeletexString, TeletexString, tag::teletex_string)
DECLARE_FORM(IA5String, IA5String, tag::ia5_string)
DECLARE_FORM(VisibleString, VisibleString, tag::visible_string)
DECLARE_FORM(UniversalString, UniversalString, tag::universal_string)
DECLARE_FORM(BMPString, ASN1String, tag::bmp_string)
DECLARE_FORM(UTCTime, UTCTime, tag::utc_time)
DECLARE_FORM(GeneralizedTime, GeneralizedTime, tag::generalized_time)
DECLARE_FORM(Any, Any, tag::any)  ///< any element, of any tag number and length
DECLARE_FORM(Time, Time, tag::utc_time)
DECLARE_FORM(AlgId, AlgId, tag::sequence)

/// ENUMERATED in the record of an INTEGER, where 0 is not the same as none.
DECLARE_FORM(OptionalEnumerated, Integer, tag::enumerated)

// Numbers inside the record, and NULL, which has no value.
template <const Type &T, uint8_t Identifier>
struct NumberCodec : Codec<T, uint32_t, Identifier> {
  static constexpr bool is_number = true;
};
extern const Type BooleanType;
extern const Type EnumeratedType;
extern const Type NullType;
using BooleanCodec = NumberCodec<BooleanType, tag::boolean>;
using EnumeratedCodec = NumberCodec<EnumeratedType, tag::enumerated>;
struct NullCodec : Codec<NullType, void, tag::null> {
  static constexpr bool may_be_null = true;
};

/// [Number] IMPLICIT over an element that is kept whole, tag included.
template <uint8_t Number>
struct TaggedAny;
#define DECLARE_TAGGED_ANY(number)                                                            \
  extern const Type TaggedAny##number##Type;                                                  \
  template <>                                                                                 \
  struct TaggedAny<number> {                                                                  \
    using Codec =                                                                             \
        pki::Codec<TaggedAny##number##Type, Any, tag::context | tag::constructed | (number)>; \
  };
DECLARE_TAGGED_ANY(0)
DECLARE_TAGGED_ANY(1)
DECLARE_TAGGED_ANY(2)
DECLARE_TAGGED_ANY(3)
DECLARE_TAGGED_ANY(5)
#undef DECLARE_TAGGED_ANY
template <uint8_t Number>
using TaggedAnyCodec = typename TaggedAny<Number>::Codec;

constexpr Type exact(Type type) {
  type.exact = true;
  return type;
}

// ---------------------------------------------------------------------------------------------
// Fields
// ---------------------------------------------------------------------------------------------

/// Whether a codec is that of a string, which may begin with the octet of the constructed form.
template <class C>
consteval bool is_string() {
  using Record = typename C::Record;
  constexpr bool has_segments =
      std::is_same_v<Record, ASN1String> || std::is_same_v<Record, BitString>;
  return has_segments && C::tagging != asn1::Tagging::explicit_tag;
}

template <class C>
consteval Presence presence_of() {
  if (C::found_by == tag::any) return Presence::any_element;
  return is_string<C>() ? Presence::either_form : Presence::next_octet;
}

/// A field that may be missing: a null pointer, or the number 0. A value whose codec has no octet
/// of its own stands last: it is there when anything is.
template <auto Member, class C>
using Optional = asn1::Optional<Member, C, presence_of<C>()>;

// ---------------------------------------------------------------------------------------------
// SEQUENCE, SET, CHOICE and lists
// ---------------------------------------------------------------------------------------------

template <class Record, class... Fields>
struct Sequence : asn1::Sequence<Record, Fields...> {
  static constexpr Type type = exact(asn1::Sequence<Record, Fields...>::type);
};

/// Of the numbers of context tags, and of universal types where an alternative has no tag: `kind`
/// is the number of the identifier octet.
template <class Record, class... Alternatives>
struct Choice : asn1::Choice<Record, asn1::UnknownKind::fails, Alternatives...> {
  static constexpr Type type =
      exact(asn1::Choice<Record, asn1::UnknownKind::fails, Alternatives...>::type);
};

using asn1::Alternative;

template <class C, uint8_t Identifier>
inline constexpr Type list_type = exact(asn1::list_type<C, Identifier>);
template <class C>
using SequenceOf = Codec<list_type<C, tag::sequence>, List, tag::sequence>;
template <class C>
using SetOf = Codec<list_type<C, tag::set>, List, tag::set>;

}  // namespace pki

#endif
