// The patterns of the records: SEQUENCE, CHOICE, SEQUENCE OF and SET OF, explicit and implicit
// tags, optional fields, stored encodings. A syntax writes its fields down once, as a table in the
// order of the wire; encoder, decoder, copy and release all come from that table.
//
// A codec stands for an ASN.1 type. It has
//   Field        the type of the record's member that holds a value: a pointer, or a number
//   identifier   the identifier octet of the type, constructed bit included
//   starts(o)    whether a value can begin with the octet o (-1 where there is none)
//   encode, decode, clone, free    the operations, with the arguments of the public functions
#ifndef ORVELASN1_PATTERN_H
#define ORVELASN1_PATTERN_H

#include "core/cursor.h"

namespace asn1 {

// ---------------------------------------------------------------------------------------------
// Codecs
// ---------------------------------------------------------------------------------------------

template <class Function>
struct RecordOf;
template <class Record>
struct RecordOf<void (*)(Record *)> {
  using type = Record;
};

/// A type of records, by the public functions of its family.
template <uint8_t Identifier, auto Encode, auto Decode, auto Clone, auto Free>
struct Family {
  using Record = typename RecordOf<decltype(Free)>::type;
  using Field = Record *;
  static constexpr uint8_t identifier = Identifier;
  static constexpr auto clone = Clone;
  static constexpr auto free = Free;

  static bool starts(int octet) { return octet == Identifier; }
  static uint32_t encode(uint8_t **pp, const Record *value) { return Encode(pp, value); }
  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Field *place, uint32_t depth) {
    return Decode(z, end, impl_tag, place, depth);
  }
};

/// A type whose values are numbers inside the record.
template <uint8_t Identifier, auto Encode, auto Decode>
struct NumberFamily {
  using Field = uint32_t;
  static constexpr uint8_t identifier = Identifier;

  static bool starts(int octet) { return octet == Identifier; }
  static uint32_t encode(uint8_t **pp, uint32_t value) { return Encode(pp, value); }
  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Field *place, uint32_t depth) {
    return Decode(z, end, impl_tag, place, depth);
  }
};

/// Writes an element under an explicit tag; `element(pp)` is the element's encoder.
template <class Element>
uint32_t encode_explicit(uint8_t **pp, uint32_t tag, Element element) {
  Measure measure;
  if (!measure.add(element(nullptr))) return 0;
  const uint32_t whole = measure.element();
  if (pp == nullptr || whole == 0) return whole;
  Writer(pp).header(static_cast<uint8_t>(tag | constructed_bit), measure.content());
  element(pp);
  return whole;
}

/// Reads the header of an explicit tag; `element(z, end)` decodes what is inside.
template <class Element>
const uint8_t *decode_explicit(const uint8_t *z, const uint8_t *end, uint32_t tag, uint32_t depth,
                               Element element) {
  Reader in(z, end);
  uint32_t length;
  const auto expected = static_cast<uint8_t>(tag | constructed_bit);
  if (!in.read_header(0, expected, &length, depth)) return nullptr;
  const Reader content = in.content(length);
  return element(content.position(), content.end());
}

/// Writes an element and puts the class and number of `tag` in place of its own.
template <class Element>
uint32_t encode_implicit(uint8_t **pp, uint32_t tag, Element element) {
  uint8_t *const identifier = pp == nullptr ? nullptr : *pp;
  const uint32_t whole = element(pp);
  if (whole != 0 && identifier != nullptr) {
    *identifier =
        static_cast<uint8_t>((tag & ~uint32_t{constructed_bit}) | (*identifier & constructed_bit));
  }
  return whole;
}

/// [Number] EXPLICIT.
template <uint8_t Number, class Codec>
struct Explicit {
  using Field = typename Codec::Field;
  static constexpr uint8_t identifier = 0xA0 | Number;

  static bool starts(int octet) { return octet == identifier; }
  static uint32_t encode(uint8_t **pp, Field value) {
    require(value != nullptr, "asn1_x680", "asn1_explicit_e", "pElement");
    return encode_explicit(pp, identifier, [&](uint8_t **to) { return Codec::encode(to, value); });
  }
  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t, Field *place,
                               uint32_t depth) {
    return decode_explicit(z, end, identifier, depth,
                           [&](const uint8_t *from, const uint8_t *limit) {
                             return Codec::decode(from, limit, 0, place, depth);
                           });
  }
  static Field clone(Field value) { return Codec::clone(value); }
  static void free(Field value) { Codec::free(value); }
};

/// [Number] IMPLICIT.
template <uint8_t Number, class Codec>
struct Implicit {
  using Field = typename Codec::Field;
  static constexpr uint8_t identifier = 0x80 | Number | (Codec::identifier & constructed_bit);

  static bool starts(int octet) { return octet == identifier; }
  static uint32_t encode(uint8_t **pp, Field value) {
    require(value != nullptr, "asn1_x680", "asn1_implicit_e", "pElement");
    return encode_implicit(pp, identifier, [&](uint8_t **to) { return Codec::encode(to, value); });
  }
  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t, Field *place,
                               uint32_t depth) {
    return Codec::decode(z, end, identifier, place, depth);
  }
  static Field clone(Field value) { return Codec::clone(value); }
  static void free(Field value) { Codec::free(value); }
};

// ---------------------------------------------------------------------------------------------
// Lists
// ---------------------------------------------------------------------------------------------

/// Writes a constructed value of the elements of a list, in list order; `element(pp, e)` encodes
/// one.
template <class Element>
uint32_t encode_list(uint8_t **pp, uint32_t tag, const List *list, Element element) {
  Measure measure;
  for (int32_t i = 0; i < List_len(list); ++i) {
    if (!measure.add(element(nullptr, List_get(list, i)))) return 0;
  }
  const uint32_t whole = measure.element();
  if (pp == nullptr || whole == 0) return whole;
  Writer(pp).header(static_cast<uint8_t>(tag | constructed_bit), measure.content());
  for (int32_t i = 0; i < List_len(list); ++i) element(pp, List_get(list, i));
  return whole;
}

/// Reads a constructed value of elements into a new list.
///
/// An indefinite length is taken where the end-of-contents is the last thing in front of `end`: the
/// loop does not look for it, it runs up to there. A refused header leaves the new, empty list in
/// its place, whose owner releases it.
///
/// `decode(z, end, place, depth)` decodes one element; `release(element)` releases one and
/// `release_list(list)` all of a list; null pointers come to both too.
template <class Element, class Decode, class Release, class ReleaseList>
const uint8_t *decode_list(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                           List **place, uint32_t depth, Decode decode, Release release,
                           ReleaseList release_list) {
  require(place != nullptr, "asn1_x680", "asn1_List_d", "ppList != NULL");
  if (z == nullptr) return nullptr;
  Element *element = nullptr;
  auto fail = [&] {
    release(element);
    release_list(*place);
    *place = nullptr;
    return nullptr;
  };

  *place = List_new(0);
  if (*place == nullptr) return fail();
  Reader in(z, end);
  Header header;
  if (!in.read_header(constructed_tag(impl_tag), static_cast<uint8_t>(tag | constructed_bit),
                      Forms::indefinite, &header, depth)) {
    return nullptr;
  }
  const uint32_t inner_depth = child_depth(depth);
  Reader content = in.content(header);
  while (!content.at_end()) {
    element = nullptr;
    const uint8_t *next = decode(content.position(), content.end(), &element, inner_depth);
    if (next == nullptr) return fail();
    content.move_to(next);
    if (List_append(*place, element, 0) == 0) return fail();
    element = nullptr;  // the list's from here on, also on the way out
  }
  in.move_to(content.position());
  if (header.indefinite && !in.read_eoc()) return fail();
  if (inner_depth != 0) trace_close(depth);
  return in.position();
}

/// SEQUENCE OF or SET OF, by the identifier octet.
template <uint8_t Identifier, class Codec>
struct ListOf {
  using Field = List *;
  using Element = typename Codec::Record;
  static constexpr uint8_t identifier = Identifier;

  static bool starts(int octet) { return octet == Identifier; }
  static uint32_t encode(uint8_t **pp, const List *list) {
    return encode_list(pp, Identifier, list, [](uint8_t **to, const void *element) {
      return Codec::encode(to, static_cast<const Element *>(element));
    });
  }
  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               List **place, uint32_t depth) {
    return decode_list<Element>(
        z, end, impl_tag, Identifier, place, depth,
        [](const uint8_t *from, const uint8_t *limit, Element **element, uint32_t inner_depth) {
          return Codec::decode(from, limit, 0, element, inner_depth);
        },
        Codec::free, free);
  }
  static List *clone(const List *list) { return List_clone(list, Codec::clone, Codec::free); }
  static void free(List *list) { List_free(list, Codec::free); }
};

template <class Codec>
using SequenceOf = ListOf<0x30, Codec>;
template <class Codec>
using SetOf = ListOf<0x31, Codec>;

// ---------------------------------------------------------------------------------------------
// Fields
// ---------------------------------------------------------------------------------------------

/// Decodes a value at the position of `in`.
template <class Codec>
bool read(Reader &in, typename Codec::Field *place, uint32_t depth) {
  const uint8_t *next = Codec::decode(in.position(), in.end(), 0, place, depth);
  if (next == nullptr) return false;
  in.move_to(next);
  return true;
}

/// Copies one member: a pointer through the family's clone, where a null pointer stays one; a
/// number as it is.
template <class Codec>
bool clone_field(typename Codec::Field *copy, typename Codec::Field source) {
  if constexpr (std::is_pointer_v<typename Codec::Field>) {
    if (source == nullptr) return true;
    *copy = Codec::clone(source);
    return *copy != nullptr;
  } else {
    *copy = source;
    return true;
  }
}

/// A field that is always there.
template <auto Member, class Codec>
struct Required {
  template <class Record>
  static bool decode(ContentReader &in, Record *record, uint32_t depth) {
    return read<Codec>(in, &(record->*Member), depth);
  }
  template <class Record>
  static bool encode(uint8_t **pp, const Record *record, Measure &size) {
    // Sequence has seen that there is a record, which the analyzer loses at some depth.
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
    return size.add(Codec::encode(pp, record->*Member));
  }
  template <class Record>
  static bool clone(Record *copy, const Record *source) {
    return clone_field<Codec>(&(copy->*Member), source->*Member);
  }
  template <class Record>
  static void free(Record *record) {
    if constexpr (std::is_pointer_v<typename Codec::Field>) Codec::free(record->*Member);
  }
};

/// A BIT STRING that is always there, and whose octets are zeroed before they are released.
template <auto Member, class Codec>
struct Wiped : Required<Member, Codec> {
  template <class Record>
  static void free(Record *record) {
    const BitString *const bits = record->*Member;
    if (bits != nullptr && bits->data != nullptr) {
      explicit_bzero(bits->data, octets_of_bits(bits->length));
    }
    Codec::free(record->*Member);
  }
};

/// How the decoder finds out that an optional field is there.
enum class Presence {
  next_octet,      ///< the next octet of the content begins it
  octet_of_input,  ///< the next octet begins it, even where it lies behind the content
  anything_left    ///< the content is not used up
};

/// A field that may be missing: a null pointer or the number 0.
template <auto Member, class Codec, Presence By = Presence::next_octet>
struct Optional : Required<Member, Codec> {
  static bool present(const ContentReader &in) {
    if constexpr (By == Presence::next_octet) return Codec::starts(in.peek());
    if constexpr (By == Presence::octet_of_input) return Codec::starts(in.peek_outer());
    return !in.at_end();  // anything_left
  }
  template <class Record>
  static bool decode(ContentReader &in, Record *record, uint32_t depth) {
    return !present(in) || Required<Member, Codec>::decode(in, record, depth);
  }
  template <class Record>
  static bool encode(uint8_t **pp, const Record *record, Measure &size) {
    return !(record->*Member) || Required<Member, Codec>::encode(pp, record, size);
  }
};

/// A field that must not be there unless `Allowed(record)` holds.
template <auto Allowed, class Field>
struct OnlyIf : Field {
  template <class Record>
  static bool decode(ContentReader &in, Record *record, uint32_t depth) {
    if (Field::present(in) && !Allowed(record)) return false;
    return Field::decode(in, record, depth);
  }
};

/// A field whose octets are kept as they were read, in the member `Encoded`. The encoder writes
/// them where they are set and does not look at the field then. Kept octets that are none count as
/// a field that fails.
template <auto Encoded, class Field>
struct Stored {
  template <class Record>
  static bool decode(ContentReader &in, Record *record, uint32_t depth) {
    const uint8_t *const from = in.position();
    if (!Field::decode(in, record, depth)) return false;
    const auto count = static_cast<size_t>(in.position() - from);
    if (count == 0 || count > UINT32_MAX) return false;
    record->*Encoded = asn1_ASN1String_new(static_cast<uint32_t>(count), from);
    return record->*Encoded != nullptr;
  }
  template <class Record>
  static bool encode(uint8_t **pp, const Record *record, Measure &size) {
    const OctetString *const encoded = record->*Encoded;
    if (encoded == nullptr) return Field::encode(pp, record, size);
    if (pp != nullptr) Writer(pp).octets(encoded->data, encoded->length);
    return size.add(encoded->length);
  }
  template <class Record>
  static bool clone(Record *copy, const Record *source) {
    if (!Field::clone(copy, source)) return false;
    if (source->*Encoded == nullptr) return true;
    copy->*Encoded = asn1_OctetString_clone(source->*Encoded);
    return copy->*Encoded != nullptr;
  }
  template <class Record>
  static void free(Record *record) {
    Field::free(record);
    asn1_OctetString_free(record->*Encoded);
  }
};

// ---------------------------------------------------------------------------------------------
// SEQUENCE
// ---------------------------------------------------------------------------------------------

/// A record of fields. What is left in the content behind the last field that was recognised is
/// neither refused nor skipped: the cursor that comes back stands in front of it.
template <class Record, class... Fields>
struct Sequence {
  static Record *create() { return new_record<Record>(); }

  static void free(Record *record) {
    if (record == nullptr) return;
    (Fields::free(record), ...);
    std::free(record);
  }

  static Record *clone(const Record *source) {
    if (source == nullptr) return nullptr;
    Record *copy = create();
    if (copy == nullptr) return nullptr;
    if ((Fields::clone(copy, source) && ...)) return copy;
    free(copy);
    return nullptr;
  }

  static uint32_t encode(uint8_t **pp, const Record *record) {
    require(record != nullptr, "asn1_x680", "encoder of a SEQUENCE", "pElement != NULL");
    Measure size;
    if (!(Fields::encode(nullptr, record, size) && ...)) return 0;
    const uint32_t whole = size.element();
    if (pp == nullptr || whole == 0) return whole;
    Writer(pp).header(0x30, size.content());
    Measure written;
    return (Fields::encode(pp, record, written) && ...) ? whole : 0;
  }

  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Record **place, uint32_t depth) {
    Reader in(z, end);
    uint32_t length;
    if (!in.read_header(constructed_tag(impl_tag), 0x30, &length, depth)) return nullptr;
    return decode_fields(in.content(length), false, place, depth);
  }

  /// The same for a record that may have an indefinite length: its end-of-contents stands right
  /// behind the last field, and more may follow.
  static const uint8_t *decode_any_length(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          Record **place, uint32_t depth) {
    if (place == nullptr) return nullptr;
    *place = nullptr;
    Reader in(z, end);
    Header header;
    if (!in.read_header(impl_tag, 0x30, Forms::indefinite, &header, depth)) return nullptr;
    return decode_fields(in.content(header), header.indefinite, place, depth);
  }

 private:
  static const uint8_t *decode_fields(ContentReader content, bool indefinite, Record **place,
                                      uint32_t depth) {
    if (place == nullptr) return nullptr;
    Record *const record = create();
    *place = record;
    if (record == nullptr) return nullptr;
    const uint32_t inner_depth = child_depth(depth);
    if ((Fields::decode(content, record, inner_depth) && ...) &&
        (!indefinite || content.read_outer_eoc())) {
      trace_close(depth);
      return content.position();
    }
    (abandon_field<Fields>(record), ...);
    std::free(record);
    *place = nullptr;
    return nullptr;
  }

  /// Releases a field of a record that was not read to its end. A field may own more then than it
  /// does in a record that a caller holds.
  template <class Field>
  static void abandon_field(Record *record) {
    if constexpr (requires { Field::abandon(record); }) {
      Field::abandon(record);
    } else {
      Field::free(record);
    }
  }
};

// ---------------------------------------------------------------------------------------------
// CHOICE
// ---------------------------------------------------------------------------------------------

/// An alternative of a CHOICE: the type of `value` where `kind` is `Kind`.
template <uint8_t Kind, class Codec>
struct Alternative {
  using Value = typename Codec::Field;
  static constexpr uint8_t kind = Kind;

  template <class Record>
  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, Record *record,
                               uint32_t depth) {
    Value value = nullptr;
    const uint8_t *next = Codec::decode(z, end, 0, &value, depth);
    record->value = value;
    return next;
  }
  static uint32_t encode(uint8_t **pp, void *value) {
    return Codec::encode(pp, static_cast<Value>(value));
  }
  template <class Record>
  static bool clone(Record *copy, const Record *source) {
    if (source->value == nullptr) return true;
    copy->value = Codec::clone(static_cast<Value>(source->value));
    return copy->value != nullptr;
  }
  static void free(void *value) { Codec::free(static_cast<Value>(value)); }
};

/// [Kind] IMPLICIT NULL, which has no value. Read in the constructed form of the tag, which takes
/// the primitive one too.
template <uint8_t Kind>
struct NullAlternative {
  static constexpr uint8_t kind = Kind;

  template <class Record>
  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, Record *, uint32_t depth) {
    return asn1_Null_d(z, end, 0xA0 | Kind, nullptr, depth);
  }
  template <class Record>
  static bool clone(Record *, const Record *) {
    return true;
  }
  static void free(void *) {}
};

/// What the copy of a record of a kind without an alternative is.
enum class UnknownKind { copies_kind, fails };

/// A record of `kind`, the number of the context tag, and `value`. In the trace the alternative
/// stands one level down; there is no opening line, but a closing one.
template <class Record, UnknownKind Unknown, class... Alternatives>
struct Choice {
  static Record *create() { return new_record<Record>(); }

  static void free(Record *record) {
    if (record == nullptr) return;
    ((record->kind == Alternatives::kind ? Alternatives::free(record->value) : void()), ...);
    std::free(record);
  }

  static Record *clone(const Record *source) {
    if (source == nullptr) return nullptr;
    Record *const copy = create();
    if (copy == nullptr) return nullptr;
    const bool known = ((source->kind == Alternatives::kind) || ...);
    const bool cloned =
        ((source->kind != Alternatives::kind || Alternatives::clone(copy, source)) && ...);
    if (!cloned || (!known && Unknown == UnknownKind::fails)) {
      std::free(copy);
      return nullptr;
    }
    copy->kind = source->kind;
    return copy;
  }

  static uint32_t encode(uint8_t **pp, const Record *record) {
    require(record != nullptr, "asn1_x680", "encoder of a CHOICE", "pElement != NULL");
    uint32_t octets = 0;
    ((record->kind == Alternatives::kind ? void(octets = Alternatives::encode(pp, record->value))
                                         : void()),
     ...);
    return octets;
  }

  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, Record **place,
                               uint32_t depth) {
    if (place == nullptr) return nullptr;
    Record *const record = create();
    *place = record;
    if (record == nullptr) return nullptr;
    const uint8_t *next = nullptr;
    const int octet = z == nullptr ? -1 : Reader(z, end).peek();
    if (octet >= 0) {
      record->kind = octet & 0x1F;
      const uint32_t inner_depth = child_depth(depth);
      ((record->kind == Alternatives::kind
            ? void(next = Alternatives::decode(z, end, record, inner_depth))
            : void()),
       ...);
    }
    if (next == nullptr) {
      free(record);
      *place = nullptr;
      return nullptr;
    }
    trace_close(depth);
    return next;
  }
};

// ---------------------------------------------------------------------------------------------
// The universal types
// ---------------------------------------------------------------------------------------------

/// A type of the same name as its family of functions.
#define ORVELASN1_FAMILY(identifier, Type) \
  Family<identifier, asn1_##Type##_e, asn1_##Type##_d, asn1_##Type##_clone, asn1_##Type##_free>

using UTCTimeCodec = ORVELASN1_FAMILY(23, UTCTime);
using GeneralizedTimeCodec = ORVELASN1_FAMILY(24, GeneralizedTime);
using IA5StringCodec = ORVELASN1_FAMILY(22, IA5String);
using BooleanCodec = NumberFamily<1, asn1_Boolean_e, asn1_Boolean_d>;
using EnumeratedCodec = NumberFamily<10, asn1_Enumerated_e, asn1_Enumerated_d>;
using IntegerCodec = ORVELASN1_FAMILY(2, Integer);
using ObjIdCodec = ORVELASN1_FAMILY(6, ObjId);
using OctetStringCodec = ORVELASN1_FAMILY(4, OctetString);
using AlgIdCodec = ORVELASN1_FAMILY(0x30, AlgId);

/// Any element; where it is optional, it is there when anything is left.
using AnyCodec = ORVELASN1_FAMILY(0, Any);

/// BIT STRING, written with the zero bits at its end left out.
using BitStringCodec = ORVELASN1_FAMILY(3, BitString);

/// BIT STRING, written as it stands.
using BitStringAsStoredCodec =
    Family<3, asn1_BitString_BER_e, asn1_BitString_d, asn1_BitString_clone, asn1_BitString_free>;

/// Time, which begins with the octet of either alternative.
struct TimeCodec : ORVELASN1_FAMILY(0, Time) {
  static bool starts(int octet) { return octet == 23 || octet == 24; }
};

}  // namespace asn1

#endif
