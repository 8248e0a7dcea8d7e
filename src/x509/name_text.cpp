// Distinguished names as a text.
#include <strings.h>

#include "core/decimal.h"
#include "core/library.h"
#include "core/scan.h"
#include "core/tags.h"
#include "x509/name_writer.h"

using namespace asn1;

// ---------------------------------------------------------------------------------------------
// From structure to text
// ---------------------------------------------------------------------------------------------

namespace {

/// What this library promises: a record that is not filled, and an identifier octet for which the
/// text has no room, end the process.
struct RequiredForm {
  static bool can_write(const RelativeDistinguishedName *) { return true; }
  static bool can_write(const AttributeValueAssertion *assertion) {
    require(assertion->type != nullptr, "asn1_x680", "asn1_ObjId_cmp", "oid1 != NULL");
    return true;
  }

  /// Writes the same characters as asn1_ObjId_sprint(): arcs are signed.
  template <class Output>
  static bool write_identifier(Output &text, const ObjId &oid) {
    for (uint32_t i = 0; i < oid.count; ++i) {
      if (i != 0) text.character('.');
      for (const char c : Decimal(static_cast<int32_t>(oid.arcs[i]))) text.character(c);
    }
    return true;
  }

  template <class Output>
  [[noreturn]] static void write_number(Output &, int32_t) {
    fatal("asn1_x501", "asn1_RDNSequence_to_Name", "valueTag does not fit \"(%i)=\" in six octets");
  }
};

}  // namespace

Name *asn1_RDNSequence_to_Name(const RDNSequence *sequence) {
  return List_len(sequence) == 0 ? nullptr : text_of_name<RequiredForm>(sequence);
}

// ---------------------------------------------------------------------------------------------
// From text to structure
// ---------------------------------------------------------------------------------------------

namespace {

/// Reads the octets of a value out of a text. "//" and "/," stand for their second character. Any
/// other "/", a "," and the end of the text end the value.
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

/// Reads "(" number ")", if it is there, and "=". Without a number the tag is that of a
/// PrintableString.
bool parse_tag(const char **cursor, int32_t *tag) {
  const char *c = *cursor;
  *tag = tag::printable_string;
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

/// Reads "/" or "," and the assertion after it into the sequence. A "/" opens an RDN.
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
  size_t size;
  if (__builtin_add_overflow(length, 1U, &size)) return nullptr;
  return static_cast<Name *>(std::calloc(size, 1));
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
