// A type as constant data: what it is, what its fields are called, where they stand in the record
// and on the wire. One engine (record.h) walks it to decode, write, copy and release; liborvelpki
// walks the same data to say what is wrong with an input, and hands it to other programs.
#ifndef ORVELASN1_CORE_TYPE_H
#define ORVELASN1_CORE_TYPE_H

#include "core/cursor.h"
#include "core/tags.h"

#pragma GCC visibility push(default)
#include "pki_type.h"
#pragma GCC visibility pop

namespace asn1 {

struct Type;
struct Field;

/// What a type is, to whoever walks it; in the order of pki_Kind.
enum class Kind : uint8_t {
  any,
  boolean,
  integer,
  enumerated,
  null,
  object_identifier,
  bit_string,
  octet_string,
  character_string,
  utc_time,
  generalized_time,
  sequence,
  sequence_of,
  set_of,
  choice,
  name,             ///< a SEQUENCE OF RelativeDistinguishedName whose record is a text
  attribute_value,  ///< a string under any identifier octet, which the record keeps
  typed_content,    ///< what the identifier in the record's first field says
  card_object,      ///< an object of a smart card
  card_identifier,  ///< the identifier of such an object's attribute
  tls_list          ///< an OCTET STRING with a list in the presentation language of TLS
};

/// How a field is tagged; in the order of pki_Tagging.
enum class Tagging : uint8_t { none, implicit, explicit_tag };

/// How the decoder finds out that a field is there; in the order of pki_Presence.
enum class Presence : uint8_t {
  always,          ///< it is read without a look
  next_octet,      ///< the next octet of the content begins it
  octet_of_input,  ///< the next octet begins it, even where it stands past the content
  either_form,     ///< the next octet begins it, in primitive or constructed form
  anything_left,   ///< the content is not used up
  any_element      ///< an element follows, whatever its identifier octet
};

/// Who looks after the octets that a field is kept in beside its value.
enum class Kept : uint8_t { by_the_record, by_the_caller };

/// A field that departs from the pattern: the functions that replace those of the engine. A null
/// one leaves the engine's.
struct FieldFunctions {
  bool (*decode)(const Field &field, ContentReader &in, void *record, uint32_t depth) = nullptr;
  bool (*measure)(const Field &field, const void *record, Measure &size) = nullptr;
  void (*write)(const Field &field, BackWriter &out, const void *record) = nullptr;
  bool (*clone)(const Field &field, void *copy, const void *source) = nullptr;
  void (*free)(const Field &field, void *record) = nullptr;
};

/// What must hold for a field to be there at all, and what to say where it does not.
struct Condition {
  bool (*holds)(const void *record);
  const char *otherwise;
};

/// No member of a record.
constexpr uint16_t no_member = UINT16_MAX;

/// A component of a SEQUENCE, or an alternative of a CHOICE.
struct Field {
#ifdef ORVELASN1_DESCRIBES
  const char *name = nullptr;  ///< of the component
#endif
  const Type *type = nullptr;
  const FieldFunctions *by_hand = nullptr;
  const Condition *condition = nullptr;
  uint16_t member = no_member;  ///< the octets of the record in front of the value
  uint16_t text = no_member;    ///< those in front of its text, where a name is kept as one too
  uint16_t kept = no_member;    ///< those in front of its encoding, where that is kept
  uint8_t kind = 0;             ///< the number that picks the alternative
  Tagging tagging = Tagging::none;
  uint8_t tag = 0;       ///< the identifier octet of the tag
  uint8_t found_by = 0;  ///< the identifier octet by which the decoder finds the field
  Presence presence = Presence::always;
  Kept keeper = Kept::by_the_record;
  bool is_number = false;    ///< the value is a number inside the record
  bool optional = false;     ///< left out of the encoding where the record has none
  bool wiped = false;        ///< a string or number that is zeroed before it is released
  bool may_be_null = false;  ///< an implicit tag that takes a null pointer
};

/// The functions of a type that the engine does not walk: a universal type, or one that departs. A
/// null one leaves the engine's. A value is the record, or the place of a number.
struct TypeFunctions {
  const uint8_t *(*decode)(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                           uint32_t depth) = nullptr;
  uint32_t (*measure)(const void *value) = nullptr;
  void (*write)(BackWriter &out, const void *value) = nullptr;
  void *(*clone)(const void *value) = nullptr;
  void (*free)(void *value) = nullptr;
};

/// pki_Functions, of which an initialiser may leave some out.
struct PublicFunctions {
  void *(*create)() = nullptr;
  const uint8_t *(*decode)(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **place,
                           uint32_t depth) = nullptr;
  uint32_t (*encode)(uint8_t **pp, const void *record) = nullptr;
  void *(*clone)(const void *record) = nullptr;
  void (*free)(void *record) = nullptr;
  int32_t (*compare)(const void *a, const void *b) = nullptr;
};

struct Type {
  Kind kind = Kind::any;
  uint8_t identifier = tag::any;     ///< the identifier octet; 0 for none in particular
  uint8_t other_identifier = 0;      ///< the second one, of a CHOICE of two universal types
  bool any_length = false;           ///< a SEQUENCE that may have an indefinite length
  bool copies_unknown_kind = false;  ///< a CHOICE whose copy may lack an alternative
  bool nests = false;                ///< that may hold a value of its own type, to any depth
  bool closed_with_fields = false;   ///< a SEQUENCE that the trace closes where it shows the fields
  /// A form of an RFC. Its content is used up or it is refused; it may have an indefinite length,
  /// up to the end-of-contents wherever that stands (X.690, 8.1.3.6); a null pointer fails, and
  /// never ends the process.
  bool exact = false;
  uint16_t size = 0;   ///< octets of the record
  uint16_t count = 0;  ///< fields
  uint16_t most = 0;   ///< content octets that an exact identifier may have; 0: any number
  const Field *fields = nullptr;  ///< the components in the order of the wire, or alternatives
  const Type *element = nullptr;  ///< of a SEQUENCE OF or SET OF
  TypeFunctions by_hand{};
#ifdef ORVELASN1_DESCRIBES
  const char *name = nullptr;    ///< as the ASN.1 has it
  const char *record = nullptr;  ///< the name of the record and its functions
  pki_Functions functions{};
#endif
};

}  // namespace asn1

#endif
