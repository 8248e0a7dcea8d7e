// Distinguished names as a text.
#include <strings.h>

#include <algorithm>
#include <charconv>
#include <iterator>

#include "core/library.h"
#include "core/scan.h"
#include "core/tags.h"
#include "registry/name_attributes.h"

using namespace asn1;

// ---------------------------------------------------------------------------------------------
// From structure to text
// ---------------------------------------------------------------------------------------------

namespace {

constexpr bool needs_escape(char c) { return c == '/' || c == ','; }

/// Whether a value goes into the text as it stands, without a NUL and without anything to escape.
/// Looks at eight octets at a time: x - 1 borrows into the top bit of an octet where that octet is
/// 0.
bool is_plain(const ASN1String &value) {
  constexpr uint64_t ones = 0x0101010101010101;
  auto holds = [](uint64_t octets, char c) {
    octets ^= ones * static_cast<uint8_t>(c);
    return (octets - ones) & ~octets & (ones << 7);
  };
  uint32_t i = 0;
  for (; value.length - i >= sizeof(uint64_t); i += sizeof(uint64_t)) {
    uint64_t octets;
    std::memcpy(&octets, value.data + i, sizeof octets);
    if ((holds(octets, '\0') | holds(octets, '/') | holds(octets, ',')) != 0) return false;
  }
  for (; i < value.length; ++i) {
    const auto c = static_cast<char>(value.data[i]);
    if (c == '\0' || needs_escape(c)) return false;
  }
  return true;
}

/// Writes the text of a name into a buffer as far as it has room, and counts what the whole takes.
/// It takes no memory.
///
/// The buffer is of char8_t, which, unlike char, is not allowed to alias the members of this class:
/// they stay in registers while characters are written.
class NameText {
 public:
  NameText(char8_t *buffer, size_t size) : buffer_(buffer), size_(size) {}

  /// The characters of the whole text, also where the buffer is shorter.
  uint64_t length() const { return length_; }

  /// Fails where an assertion has no value.
  bool write(const RDNSequence *sequence) {
    for (int32_t i = 0; i < List_len(sequence); ++i) {
      character('/');
      const auto *const rdn = static_cast<const RelativeDistinguishedName *>(List_get(sequence, i));
      for (int32_t j = 0; j < List_len(rdn); ++j) {
        if (j != 0) character(',');
        if (!write(*static_cast<const AttributeValueAssertion *>(List_get(rdn, j)))) return false;
      }
    }
    return true;
  }

 private:
  bool write(const AttributeValueAssertion &assertion) {
    require(assertion.type != nullptr, "asn1_x680", "asn1_ObjId_cmp", "oid1 != NULL");
    const char *const name = short_names.find(*assertion.type);
    if (name != nullptr) {
      for (const char *c = name; *c != '\0'; ++c) character(*c);
    } else {
      write_dotted(*assertion.type);
    }
    write_tag(assertion.valueTag);
    if (assertion.value == nullptr) return false;
    write_value(*assertion.value);
    return true;
  }

  /// Writes the same characters as asn1_ObjId_sprint(): arcs are signed.
  void write_dotted(const ObjId &oid) {
    for (uint32_t i = 0; i < oid.count; ++i) {
      if (i != 0) character('.');
      char number[sizeof "-2147483648"] = {};
      const auto made = std::to_chars(number, std::end(number), static_cast<int32_t>(oid.arcs[i]));
      for (const char *c = number; c != made.ptr; ++c) character(*c);
    }
  }

  /// Writes a number in parentheses, and "=". There is room for two characters of the number. One
  /// that takes more ends the process.
  void write_tag(int32_t tag) {
    if (tag < -9 || tag > 99) {
      fatal("asn1_x501", "asn1_RDNSequence_to_Name",
            "valueTag does not fit \"(%i)=\" in six octets");
    }
    character('(');
    if (tag < 0) character('-');
    if (tag > 9) character(static_cast<char>('0' + tag / 10));
    character(static_cast<char>('0' + (tag < 0 ? -tag : tag % 10)));
    character(')');
    character('=');
  }

  /// Writes the octets before the first NUL, where the text of the value ends for every reader.
  void write_value(const ASN1String &value) {
    if (is_plain(value)) {
      const uint64_t end = length_ + value.length;
      size_t count = value.length;
      if (end > size_) [[unlikely]] {
        count = length_ < size_ ? static_cast<size_t>(size_ - length_) : 0;
      }
      if (count != 0) std::memcpy(buffer_ + length_, value.data, count);
      length_ = end;
      return;
    }
    for (uint32_t i = 0; i < value.length && value.data[i] != 0; ++i) {
      const auto c = static_cast<char>(value.data[i]);
      if (needs_escape(c)) character('/');
      character(c);
    }
  }

  void character(char c) {
    if (length_ < size_) buffer_[length_] = static_cast<char8_t>(c);
    ++length_;
  }

  char8_t *buffer_;
  size_t size_;
  uint64_t length_ = 0;  ///< may be too long for memory, of records that stand in several places
};

}  // namespace

// Nearly every name is written once, to the stack, and then copied to a block of its size.
Name *asn1_RDNSequence_to_Name(const RDNSequence *sequence) {
  if (List_len(sequence) == 0) return nullptr;
  char8_t scratch[512];
  NameText first(scratch, sizeof scratch);
  if (!first.write(sequence) || first.length() >= SIZE_MAX) return nullptr;
  const auto length = static_cast<size_t>(first.length());
  char *const text = new_array<char>(length + 1);
  if (text == nullptr) return nullptr;
  if (length <= sizeof scratch) {
    std::memcpy(text, scratch, length);
  } else {
    // Every assertion has its value, so that this cannot fail.
    NameText(reinterpret_cast<char8_t *>(text), length).write(sequence);
  }
  text[length] = '\0';
  return text;
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
