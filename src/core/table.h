// Tables: how the ASN.1 of a type is written down in this library, once.
//
// A table is a record's ASN.1 as a C++ type, a line for each field:
//
//   // Validity ::= SEQUENCE {
//   //   notBefore  Time,
//   //   notAfter   Time }
//   using ValidityTable = Sequence<Validity,
//       Required<&Validity::notBefore, TimeCodec>,
//       Required<&Validity::notAfter, TimeCodec>>;
//   EXPORT_RECORD(Validity, ValidityTable)
//
// A codec is what a field names for its type: the type's data (type.h), its identifier octet, and
// the record. A family is the public functions of a type, asn1_T_d and its like: the EXPORT line
// defines them (export.h), together with the type's data, ValidityType, and its codec,
// ValidityCodec. A table becomes constant data at compile time, which one engine walks (record.h),
// so a nested field travels as the address of its type: no code is made for it.
//
// A field has its name from its member. What departs from the pattern is spelled out: a field with
// functions of its own stands beside the table, a public function by hand in a file of its own.
#ifndef ORVELASN1_CORE_TABLE_H
#define ORVELASN1_CORE_TABLE_H

#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

#include "core/engine.h"

namespace asn1 {

// ---------------------------------------------------------------------------------------------
// Members
// ---------------------------------------------------------------------------------------------

template <class Member>
struct MemberOf;
template <class R, class V>
struct MemberOf<V R::*> {
  using Record = R;
  using Value = V;
};

/// The octets of a record in front of a member.
template <auto Member>
consteval uint16_t offset_of() {
  using Record = typename MemberOf<decltype(Member)>::Record;
  union Probe {
    constexpr Probe() : record{} {}
    char octets[sizeof(Record)];
    Record record;
  };
  constexpr Probe probe;
  const void *const member = &(probe.record.*Member);
  for (size_t offset = 0; offset < sizeof(Record); ++offset) {
    if (static_cast<const void *>(probe.octets + offset) == member) {
      return static_cast<uint16_t>(offset);
    }
  }
  return no_member;
}

/// The name of a member, from the compiler's own text of the template argument, "&Record::member".
template <auto Member>
consteval auto member_text() {
  constexpr std::string_view text = __PRETTY_FUNCTION__;
  constexpr size_t end = text.find_first_of(";]", text.find("Member = "));
  constexpr size_t start = text.rfind(':', end) + 1;
  std::array<char, end - start + 1> name{};
  for (size_t i = start; i < end; ++i) name[i - start] = text[i];
  return name;
}
// Hidden by name, since the compiler takes the visibility of the record's members otherwise.
template <auto Member>
[[gnu::visibility("hidden")]] inline constexpr auto member_name = member_text<Member>();

/// A field of this name, which only a description keeps.
constexpr Field with_name([[maybe_unused]] const char *name, Field field) {
#ifdef ORVELASN1_DESCRIBES
  field.name = name;
#endif
  return field;
}

// ---------------------------------------------------------------------------------------------
// Codecs
// ---------------------------------------------------------------------------------------------

/// A type by its data. `T` may be defined elsewhere.
template <const Type &T, class R, uint8_t Identifier>
struct Codec {
  using Record = R;
  static constexpr const Type *type = &T;
  static constexpr uint8_t identifier = Identifier;
  static constexpr Tagging tagging = Tagging::none;
  static constexpr uint8_t octet = 0;  ///< of the tag
  static constexpr bool may_be_null = false;
  static constexpr bool is_number = false;
  static constexpr uint8_t found_by = Identifier;
};

/// [Number] EXPLICIT (X.690, 8.14).
template <uint8_t Number, class C>
struct Explicit : C {
  static constexpr uint8_t identifier = tag::context | tag::constructed | Number;
  static constexpr Tagging tagging = Tagging::explicit_tag;
  static constexpr uint8_t octet = identifier;
  static constexpr uint8_t found_by = identifier;
};

/// [Number] IMPLICIT: the class and number of the tag take the place of the type's own.
template <uint8_t Number, class C>
struct Implicit : C {
  static constexpr uint8_t identifier = tag::context | Number | (C::identifier & tag::constructed);
  static constexpr Tagging tagging = Tagging::implicit;
  static constexpr uint8_t octet = identifier;
  static constexpr uint8_t found_by = identifier;
};

template <class C, uint8_t Identifier>
inline constexpr Type list_type{.kind = Identifier == tag::set ? Kind::set_of : Kind::sequence_of,
                                .identifier = Identifier,
                                .element = C::type};

template <class C, uint8_t Identifier>
using ListOf = Codec<list_type<C, Identifier>, List, Identifier>;
template <class C>
using SequenceOf = ListOf<C, tag::sequence>;
template <class C>
using SetOf = ListOf<C, tag::set>;

// ---------------------------------------------------------------------------------------------
// Fields
// ---------------------------------------------------------------------------------------------

/// A field that is always there.
template <auto Member, class C>
struct Required {
  static constexpr Field field =
      with_name(member_name<Member>.data(), {.type = C::type,
                                             .member = offset_of<Member>(),
                                             .tagging = C::tagging,
                                             .tag = C::octet,
                                             .found_by = C::found_by,
                                             .is_number = C::is_number});
};

constexpr Field with_presence(Field field, Presence presence) {
  field.presence = presence;
  field.optional = true;
  return field;
}

/// A field that may be missing: a null pointer or the number 0.
template <auto Member, class C, Presence By = Presence::next_octet>
struct Optional {
  static constexpr Field field = with_presence(Required<Member, C>::field, By);
};

constexpr Field in_either_form(Field field) {
  field.presence = Presence::either_form;
  return field;
}

/// A field that is found in either form when it is read, and always written.
template <auto Member, class C>
struct EitherForm {
  static constexpr Field field = in_either_form(Required<Member, C>::field);
};

constexpr Field under(Field field, const Condition *condition) {
  field.condition = condition;
  return field;
}

/// An optional field that must not be there unless the condition holds.
template <const Condition &Holds, class F>
struct OnlyIf {
  static constexpr Field field = under(F::field, &Holds);
};

constexpr Field wiped(Field field) {
  field.wiped = true;
  return field;
}

/// A string or an INTEGER whose octets are zeroed before they are released.
template <class F>
struct Wiped {
  static constexpr Field field = wiped(F::field);
};

constexpr Field keeping(Field field, uint16_t member, Kept keeper) {
  field.kept = member;
  field.keeper = keeper;
  return field;
}

/// A field whose octets are kept as they were read, in the member `Encoded`. The encoder writes
/// them where they are set and does not look at the field then. Kept octets that are none count as
/// a field that fails.
template <auto Encoded, class F, Kept By = Kept::by_the_record>
struct Stored {
  static constexpr Field field = keeping(F::field, offset_of<Encoded>(), By);
};

constexpr Field by_hand(Field field, const FieldFunctions *functions) {
  field.by_hand = functions;
  return field;
}

/// A field with functions of its own.
template <class F, const FieldFunctions &Functions>
struct ByHand {
  static constexpr Field field = by_hand(F::field, &Functions);
};

// ---------------------------------------------------------------------------------------------
// SEQUENCE and CHOICE
// ---------------------------------------------------------------------------------------------

/// A record of fields. What is left in its content past the last field that was recognised is
/// neither refused nor skipped.
template <class Record, class... Fields>
struct Sequence {
  static constexpr uint8_t identifier = tag::sequence;
  static constexpr Field fields[] = {Fields::field...};
  static constexpr Type type{.kind = Kind::sequence,
                             .identifier = identifier,
                             .size = sizeof(Record),
                             .count = sizeof...(Fields),
                             .fields = fields};
};

constexpr Type with_any_length(Type type) {
  type.any_length = true;
  return type;
}

/// The same for a record that may have an indefinite length (X.690, 8.1.3.6).
template <class Record, class... Fields>
struct AnyLengthSequence : Sequence<Record, Fields...> {
  static constexpr Type type = with_any_length(Sequence<Record, Fields...>::type);
};

constexpr Type nesting(Type type) {
  type.nests = true;
  return type;
}

/// The same for a record that may hold others of its type, to any depth.
template <class Table>
struct Nesting : Table {
  static constexpr Type type = nesting(Table::type);
};

constexpr Type closed_with_fields(Type type) {
  type.closed_with_fields = true;
  return type;
}

/// The same for a record whose closing line in the trace is left out where the depth of its fields
/// wraps to 0.
template <class Table>
struct ClosedWithFields : Table {
  static constexpr Type type = closed_with_fields(Table::type);
};

/// A string constant as a template argument.
template <size_t Size>
struct Text {
  consteval Text(const char (&text)[Size]) {
    for (size_t i = 0; i < Size; ++i) octets[i] = text[i];
  }
  char octets[Size]{};
};
template <size_t Size>
Text(const char (&)[Size]) -> Text<Size>;

template <Text Name>
inline constexpr auto text_constant = Name;

/// An alternative of a CHOICE: the type of `value` where `kind` is `Number`.
template <uint8_t Number, Text Name, class C>
struct Alternative {
  static constexpr Field field =
      with_name(text_constant<Name>.octets, {.type = C::type,
                                             .kind = Number,
                                             .tagging = C::tagging,
                                             .tag = C::octet,
                                             .found_by = C::found_by,
                                             .may_be_null = C::may_be_null});
};

/// What the copy of a record of a kind without an alternative is.
enum class UnknownKind { copies_kind, fails };

/// A record of `kind`, the number of the context tag, and `value`. In the trace the alternative
/// stands one level down; there is no opening line, but a closing one.
template <class Record, UnknownKind Unknown, class... Alternatives>
struct Choice {
  static_assert(offsetof(Record, kind) == 0 && offsetof(Record, value) == sizeof(void *),
                "the engine takes all CHOICE records to be alike");
  static constexpr uint8_t identifier = tag::any;
  static constexpr Field fields[] = {Alternatives::field...};
  static constexpr Type type{.kind = Kind::choice,
                             .copies_unknown_kind = Unknown == UnknownKind::copies_kind,
                             .size = sizeof(Record),
                             .count = sizeof...(Alternatives),
                             .fields = fields};
};

/// A SEQUENCE whose walk the compiler unrolls. For the few types in which most of the time of
/// decoding a certificate or a revocation list goes; each costs about a kilobyte.
template <class Table>
struct Unrolled : Table {
  struct Walk {
    static constexpr const Type &type = Table::type;

    template <class F>
    [[gnu::always_inline]] bool all(F f) const {
      return [&]<size_t... Index>(std::index_sequence<Index...>) __attribute__((always_inline)) {
        return (f(Table::fields[Index]) && ...);
      }
      (std::make_index_sequence<std::size(Table::fields)>());
    }
  };
  static constexpr TypeFunctions functions{
      .decode =
          [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place, uint32_t depth) {
            return decode_fields(z, end, impl_tag, place, depth, Walk());
          },
      .clone = [](const void *source) -> void * {
        return source == nullptr ? nullptr : clone_fields(source, Walk());
      },
      .free =
          [](void *record) {
            if (record != nullptr) release_fields(record, Walk());
          }};
};

/// A SEQUENCE OF or SET OF, for the same reason.
template <class List>
struct UnrolledList : List {
  static constexpr TypeFunctions functions{
      .decode =
          [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place, uint32_t depth) {
            return decode_elements(z, end, impl_tag, place, depth, *List::type);
          },
      .free = [](void *list) { release_elements(list, *List::type->element); }};
};

// ---------------------------------------------------------------------------------------------
// Types by hand
// ---------------------------------------------------------------------------------------------

/// The functions of a type that is not walked, by those that are public.
template <class T, auto Decode, auto Encode, auto Clone, auto Free>
inline constexpr TypeFunctions adapted{
    .decode =
        [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place, uint32_t depth) {
          return Decode(z, end, impl_tag, static_cast<T **>(place), depth);
        },
    .measure = [](const void *value) { return Encode(nullptr, static_cast<const T *>(value)); },
    .write =
        [](BackWriter &out, const void *value) {
          out.element([value](uint8_t **pp) { return Encode(pp, static_cast<const T *>(value)); });
        },
    .clone = [](const void *value) -> void * { return Clone(static_cast<const T *>(value)); },
    .free = [](void *value) { Free(static_cast<T *>(value)); }};

/// Declares a type that another file defines, and its codec.
#define DECLARE_TYPE(T, identifier) \
  extern const Type T##Type;        \
  using T##Codec = Codec<T##Type, T, identifier>;

}  // namespace asn1

#endif
