// Distinguished names, as a structure and as a text.
#include <strings.h>

#include <cctype>
#include <cstdio>

#include "name_attributes.h"
#include "pattern.h"
#include "scan.h"

using namespace asn1;

namespace {
constexpr const char *unit = "asn1_x501";
}

// ---------------------------------------------------------------------------------------------
// AttributeValueAssertion
// ---------------------------------------------------------------------------------------------

namespace {

/// The value of an attribute: a string under whatever identifier octet it has, which the record
/// keeps beside it. The copy of a record has no identifier octet; whoever encodes copied names has
/// their stored octets or their text.
struct AttributeValue {
  static bool decode(Content &in, AttributeValueAssertion *record, uint32_t depth) {
    const int octet = in.peek();
    if (octet < 0) return false;
    record->valueTag = octet;
    const uint8_t *next = asn1_ASN1String_d(in.position(), in.end(), 0,
                                            static_cast<uint32_t>(octet), &record->value, depth);
    if (next == nullptr) return false;
    in.move_to(next);
    return true;
  }
  static bool encode(uint8_t **pp, const AttributeValueAssertion *record, Measure &size) {
    return size.add(
        asn1_ASN1String_e(pp, static_cast<uint32_t>(record->valueTag) & 0xFF, record->value));
  }
  static bool clone(AttributeValueAssertion *copy, const AttributeValueAssertion *source) {
    if (source->value == nullptr) return true;
    copy->value = asn1_ASN1String_clone(source->value);
    return copy->value != nullptr;
  }
  static void free(AttributeValueAssertion *record) { asn1_ASN1String_free(record->value); }
};

// AttributeTypeAndValue ::= SEQUENCE {
//   type   OBJECT IDENTIFIER,
//   value  ANY DEFINED BY type }
using AssertionSyntax =
    Sequence<AttributeValueAssertion, Required<&AttributeValueAssertion::type, ObjIdCodec>,
             AttributeValue>;

using AssertionCodec = ORVELASN1_FAMILY(0x30, AttributeValueAssertion);

// RelativeDistinguishedName ::= SET OF AttributeTypeAndValue
using RdnSyntax = SetOf<AssertionCodec>;
using RdnCodec = ORVELASN1_FAMILY(0x31, RelativeDistinguishedName);

// RDNSequence ::= SEQUENCE OF RelativeDistinguishedName
using RdnSequenceSyntax = SequenceOf<RdnCodec>;

/// Whether two lists are alike as sets, without counting how often an element occurs.
bool alike(const List *a, const List *b, List_comparison cmp) {
  if (List_len(a) != List_len(b)) return false;
  for (int32_t i = 0; i < List_len(a); ++i) {
    if (List_contains(b, List_get(a, i), cmp) < 0) return false;
  }
  return true;
}

}  // namespace

AttributeValueAssertion *asn1_AttributeValueAssertion_new() { return AssertionSyntax::create(); }
void asn1_AttributeValueAssertion_free(AttributeValueAssertion *pElement) {
  AssertionSyntax::free(pElement);
}
AttributeValueAssertion *asn1_AttributeValueAssertion_clone(
    const AttributeValueAssertion *pElement) {
  return AssertionSyntax::clone(pElement);
}
uint32_t asn1_AttributeValueAssertion_e(uint8_t **pp, const AttributeValueAssertion *pElement) {
  return AssertionSyntax::encode(pp, pElement);
}
const uint8_t *asn1_AttributeValueAssertion_d(const uint8_t *z, const uint8_t *end,
                                              uint32_t impl_tag,
                                              AttributeValueAssertion **ppElement, uint32_t depth) {
  return AssertionSyntax::decode(z, end, impl_tag, ppElement, depth);
}

int32_t asn1_AttributeValueAssertion_cmp(const AttributeValueAssertion *a,
                                         const AttributeValueAssertion *b) {
  return asn1_ObjId_cmp(a->type, b->type) == 0 && a->valueTag == b->valueTag &&
                 asn1_ASN1String_cmp(a->value, b->value) == 0
             ? 0
             : 1;
}

// ---------------------------------------------------------------------------------------------
// RelativeDistinguishedName, RDNSequence
// ---------------------------------------------------------------------------------------------

void asn1_RelativeDistinguishedName_free(RelativeDistinguishedName *pElement) {
  RdnSyntax::free(pElement);
}
RelativeDistinguishedName *asn1_RelativeDistinguishedName_clone(
    const RelativeDistinguishedName *pElement) {
  return RdnSyntax::clone(pElement);
}
uint32_t asn1_RelativeDistinguishedName_e(uint8_t **pp, const RelativeDistinguishedName *pElement) {
  return RdnSyntax::encode(pp, pElement);
}
const uint8_t *asn1_RelativeDistinguishedName_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                RelativeDistinguishedName **ppElement,
                                                uint32_t depth) {
  return RdnSyntax::decode(z, end, impl_tag, ppElement, depth);
}
int32_t asn1_RelativeDistinguishedName_cmp(const RelativeDistinguishedName *a,
                                           const RelativeDistinguishedName *b) {
  return alike(a, b, asn1_AttributeValueAssertion_cmp) ? 0 : 1;
}

void asn1_RDNSequence_free(RDNSequence *pElement) { RdnSequenceSyntax::free(pElement); }
RDNSequence *asn1_RDNSequence_clone(const RDNSequence *pElement) {
  return RdnSequenceSyntax::clone(pElement);
}
uint32_t asn1_RDNSequence_e(uint8_t **pp, const RDNSequence *pElement) {
  return RdnSequenceSyntax::encode(pp, pElement);
}
const uint8_t *asn1_RDNSequence_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  RDNSequence **ppElement, uint32_t depth) {
  return RdnSequenceSyntax::decode(z, end, impl_tag, ppElement, depth);
}

// The order of the RDNs does not count, as if the sequence were a set.
int32_t asn1_RDNSequence_cmp(const RDNSequence *a, const RDNSequence *b) {
  return alike(a, b, asn1_RelativeDistinguishedName_cmp) ? 0 : 1;
}

AttributeValueAssertion *asn1_RDNSequence_getAttr(const RDNSequence *sequence, const ObjId *oid,
                                                  AttributeValueAssertion **ppElement) {
  for (int32_t i = 0; i < List_len(sequence); ++i) {
    const auto *const rdn = static_cast<const RelativeDistinguishedName *>(List_get(sequence, i));
    for (int32_t j = 0; j < List_len(rdn); ++j) {
      auto *const assertion = static_cast<AttributeValueAssertion *>(List_get(rdn, j));
      *ppElement = assertion;
      if (asn1_ObjId_cmp(assertion->type, oid) == 0) return assertion;
    }
  }
  *ppElement = nullptr;
  return nullptr;
}

// ---------------------------------------------------------------------------------------------
// From structure to text
// ---------------------------------------------------------------------------------------------

namespace {

/// The octets of a value that its text keeps: those in front of the first NUL.
uint32_t text_octets(const ASN1String &value) {
  if (value.length == 0) return 0;
  const void *nul = std::memchr(value.data, 0, value.length);
  return nul == nullptr ? value.length
                        : static_cast<uint32_t>(static_cast<const uint8_t *>(nul) - value.data);
}

constexpr bool needs_escape(char c) { return c == '/' || c == ','; }

/// "(%i)=" of an identifier octet. One that does not fit ends the process.
class TagText {
 public:
  explicit TagText(int32_t tag) {
    const int length = std::snprintf(text_, sizeof text_, "(%i)=", tag);
    if (length < 0 || static_cast<size_t>(length) >= sizeof text_) {
      fatal(unit, "asn1_RDNSequence_to_Name", "a valueTag does not fit \"(%i)=\" in 6 octets");
    }
    length_ = static_cast<size_t>(length);
  }
  const char *text() const { return text_; }
  size_t length() const { return length_; }

 private:
  char text_[6];
  size_t length_;
};

/// Writes the pieces of a name's text, or only counts them, so that one block of the right size is
/// all that a name takes.
class NameText {
 public:
  /// Counts where `text` is NULL.
  explicit NameText(char *text) : text_(text) {}

  size_t length() const { return length_; }
  void octet(char c) {
    if (text_ != nullptr) text_[length_] = c;
    ++length_;
  }
  void octets(const char *piece, size_t count) {
    if (text_ != nullptr) std::memcpy(text_ + length_, piece, count);
    length_ += count;
  }
  void value(const ASN1String &value) {
    const uint32_t count = text_octets(value);
    for (uint32_t i = 0; i < count; ++i) {
      const auto c = static_cast<char>(value.data[i]);
      if (needs_escape(c)) octet('/');
      octet(c);
    }
  }
  /// False when memory is exhausted.
  bool attribute(const ObjId *oid) {
    require(oid != nullptr, "asn1_x680", "asn1_ObjId_cmp", "oid1 != NULL");
    const char *const name = short_names.find(*oid);
    if (name != nullptr) {
      octets(name, std::strlen(name));
      return true;
    }
    uint32_t size;
    if (asn1_ObjId_sprint(oid, nullptr, &size) != 0) return false;
    if (text_ != nullptr && asn1_ObjId_sprint(oid, text_ + length_, &size) != 0) return false;
    length_ += size - 1;
    return true;
  }
  /// False when memory is exhausted, or an assertion has no value.
  bool name(const RDNSequence *sequence) {
    for (int32_t i = 0; i < List_len(sequence); ++i) {
      octet('/');
      const auto *const rdn = static_cast<const RelativeDistinguishedName *>(List_get(sequence, i));
      for (int32_t j = 0; j < List_len(rdn); ++j) {
        const auto *const assertion =
            static_cast<const AttributeValueAssertion *>(List_get(rdn, j));
        if (j != 0) octet(',');
        if (!attribute(assertion->type)) return false;
        const TagText tag(assertion->valueTag);
        octets(tag.text(), tag.length());
        if (assertion->value == nullptr) return false;
        value(*assertion->value);
      }
    }
    return true;
  }

 private:
  char *text_;
  size_t length_ = 0;
};

}  // namespace

Name *asn1_RDNSequence_to_Name(const RDNSequence *sequence) {
  if (List_len(sequence) == 0) return nullptr;
  NameText measure(nullptr);
  if (!measure.name(sequence)) return nullptr;
  char *const text = new_array<char>(measure.length() + 1);
  if (text == nullptr) return nullptr;
  NameText out(text);
  if (!out.name(sequence)) {
    std::free(text);
    return nullptr;
  }
  text[out.length()] = '\0';
  return text;
}

// ---------------------------------------------------------------------------------------------
// From text to structure
// ---------------------------------------------------------------------------------------------

namespace {

/// Reads the octets of a value, from a text or, to count them, from the same text before. "//" and
/// "/," stand for their second character; any other "/", a "," and the end of the text end the
/// value.
class ValueText {
 public:
  explicit ValueText(const char *text) : cursor_(text) {}

  bool next(uint8_t *octet) {
    if (*cursor_ == '\0' || *cursor_ == ',') return false;
    if (*cursor_ == '/') {
      if (!needs_escape(cursor_[1])) return false;
      ++cursor_;
    }
    *octet = static_cast<uint8_t>(*cursor_++);
    return true;
  }
  const char *position() const { return cursor_; }

 private:
  const char *cursor_;
};

constexpr bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// Reads a dotted identifier, or the first short name that is a prefix of the text, whatever
/// follows it.
ObjId *parse_attribute(const char **cursor) {
  if (is_digit(**cursor)) return asn1_ObjId_parse(cursor);
  if (!is_letter(**cursor)) return nullptr;
  for (const NameAttribute &row : oidNameAttributes) {
    const size_t length = std::strlen(row.short_name);
    if (strncasecmp(row.short_name, *cursor, length) == 0) {
      *cursor += length;
      return asn1_ObjId_clone(row.identifier);
    }
  }
  return nullptr;
}

/// Reads "(" number ")", if it is there, and "=".
bool parse_tag(const char **cursor, int32_t *tag) {
  constexpr int32_t printable_string = 19;
  const char *c = *cursor;
  *tag = printable_string;
  if (*c == '(') {
    size_t width;
    if (IntegerScanner().scan(++c, tag, &width) != Scan::number) return false;
    c += width;
    if (*c++ != ')') return false;
  }
  if (*c++ != '=') return false;
  *cursor = c;
  return true;
}

/// Reads a value up to where it ends.
ASN1String *parse_value(const char **cursor) {
  size_t count = 0;
  uint8_t octet;
  for (ValueText text(*cursor); text.next(&octet);) ++count;
  if (count > UINT32_MAX) return nullptr;
  ASN1String *const value = asn1_ASN1String_new(static_cast<uint32_t>(count), nullptr);
  if (value == nullptr) return nullptr;
  ValueText text(*cursor);
  for (size_t i = 0; text.next(&octet); ++i) value->data[i] = octet;
  *cursor = text.position();
  return value;
}

}  // namespace

AttributeValueAssertion *asn1_AttributeValueAssertion_parse(const char **text) {
  auto *assertion = asn1_AttributeValueAssertion_new();
  if (assertion == nullptr) return nullptr;
  const char *cursor = *text;
  assertion->type = parse_attribute(&cursor);
  if (assertion->type != nullptr && parse_tag(&cursor, &assertion->valueTag)) {
    assertion->value = parse_value(&cursor);
    if (assertion->value != nullptr) {
      *text = cursor;
      return assertion;
    }
  }
  asn1_AttributeValueAssertion_free(assertion);
  return nullptr;
}

namespace {

/// Reads "/" or "," and the assertion behind it into the sequence: a "/" opens an RDN.
bool parse_assertion(const char **cursor, RDNSequence *sequence) {
  const bool opens_rdn = *(*cursor)++ == '/';
  AttributeValueAssertion *const assertion = asn1_AttributeValueAssertion_parse(cursor);
  if (assertion == nullptr) return false;
  RelativeDistinguishedName *rdn = nullptr;
  if (opens_rdn) {
    rdn = List_new(0);
    if (rdn != nullptr && List_append(sequence, rdn, 0) == 0) {
      asn1_RelativeDistinguishedName_free(rdn);
      rdn = nullptr;
    }
  } else {
    rdn = static_cast<RelativeDistinguishedName *>(List_get(sequence, List_len(sequence) - 1));
  }
  if (List_append(rdn, assertion, 0) != 0) return true;
  asn1_AttributeValueAssertion_free(assertion);
  return false;
}

}  // namespace

RDNSequence *asn1_Name_to_RDNSequence(const Name *name) {
  if (name == nullptr || *name != '/') return nullptr;
  RDNSequence *const sequence = List_new(0);
  if (sequence == nullptr) return nullptr;
  for (const char *cursor = name; *cursor != '\0';) {
    if (!parse_assertion(&cursor, sequence)) {
      asn1_RDNSequence_free(sequence);
      return nullptr;
    }
  }
  return sequence;
}

// ---------------------------------------------------------------------------------------------
// Name
// ---------------------------------------------------------------------------------------------

Name *asn1_Name_new(uint32_t length) {
  if (length > SIZE_MAX - 1) return nullptr;
  return static_cast<Name *>(std::calloc(static_cast<size_t>(length) + 1, 1));
}

void asn1_Name_free(Name *pElement) { std::free(pElement); }

Name *asn1_Name_clone(const Name *pElement) {
  return pElement == nullptr ? nullptr : strdup(pElement);
}

uint32_t asn1_Name_e(uint8_t **pp, const Name *name) {
  if (name == nullptr) return 0;
  RDNSequence *const sequence = asn1_Name_to_RDNSequence(name);
  if (sequence == nullptr) return 0;
  const uint32_t octets = asn1_RDNSequence_e(pp, sequence);
  asn1_RDNSequence_free(sequence);
  return octets;
}

const uint8_t *asn1_Name_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           Name **ppElement, uint32_t depth) {
  if (ppElement == nullptr) return nullptr;
  *ppElement = nullptr;
  if (z == nullptr || end < z) return nullptr;
  RDNSequence *sequence = nullptr;
  const uint8_t *next = asn1_RDNSequence_d(z, end, impl_tag, &sequence, depth);
  if (next != nullptr) *ppElement = asn1_RDNSequence_to_Name(sequence);
  asn1_RDNSequence_free(sequence);
  return *ppElement == nullptr ? nullptr : next;
}
