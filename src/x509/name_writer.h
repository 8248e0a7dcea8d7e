// Writes a distinguished name as this library's own text.
#ifndef ORVELASN1_X509_NAME_WRITER_H
#define ORVELASN1_X509_NAME_WRITER_H

#include "core/library.h"
#include "registry/name_attributes.h"

namespace asn1 {

constexpr bool needs_escape(char c) { return c == '/' || c == ','; }

/// Whether a value goes into the text as it stands, without a NUL and without anything to escape.
/// Looks at eight octets at a time: x - 1 borrows into the top bit of an octet where that octet is
/// 0.
inline bool is_plain(const ASN1String &value) {
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
///
/// A Form has what is not the same for every caller:
///
///   can_write(rdn)               whether an RDN is a list that can be read
///   can_write(assertion)         the same for an assertion and what it has
///   write_identifier(text, oid)  writes the numbers of an identifier; false where that fails
///   write_number(text, tag)      writes an identifier octet that takes more than two characters
///
/// The buffer is of char8_t, which, unlike char, is not allowed to alias the members of this class:
/// they stay in registers while characters are written.
template <class Form>
class NameText {
 public:
  NameText(char8_t *buffer, size_t size) : buffer_(buffer), size_(size) {}

  /// The characters of the whole text, also where the buffer is shorter.
  uint64_t length() const { return length_; }

  /// Fails where an assertion has no value, and where the Form fails.
  bool write(const RDNSequence *sequence) {
    for (int32_t i = 0; i < List_len(sequence); ++i) {
      character('/');
      const auto *const rdn = static_cast<const RelativeDistinguishedName *>(List_get(sequence, i));
      if (!Form::can_write(rdn)) return false;
      for (int32_t j = 0; j < List_len(rdn); ++j) {
        if (j != 0) character(',');
        if (!write(static_cast<const AttributeValueAssertion *>(List_get(rdn, j)))) return false;
      }
    }
    return true;
  }

  void character(char c) {
    if (length_ < size_) buffer_[length_] = static_cast<char8_t>(c);
    ++length_;
  }

 private:
  bool write(const AttributeValueAssertion *assertion) {
    if (!Form::can_write(assertion)) return false;
    const char *const name = short_names.find(*assertion->type);
    if (name != nullptr) {
      for (const char *c = name; *c != '\0'; ++c) character(*c);
    } else if (!Form::write_identifier(*this, *assertion->type)) {
      return false;
    }
    write_tag(assertion->valueTag);
    if (assertion->value == nullptr) return false;
    write_value(*assertion->value);
    return true;
  }

  /// Writes a number in parentheses, and "=".
  void write_tag(int32_t tag) {
    character('(');
    if (tag < -9 || tag > 99) {
      Form::write_number(*this, tag);
    } else {
      if (tag < 0) character('-');
      if (tag > 9) character(static_cast<char>('0' + tag / 10));
      character(static_cast<char>('0' + (tag < 0 ? -tag : tag % 10)));
    }
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

  char8_t *buffer_;
  size_t size_;
  uint64_t length_ = 0;  ///< may be too long for memory, of records that stand in several places
};

/// Makes the text of a name, which the caller owns. Returns NULL where it cannot be written, or
/// memory is exhausted. Nearly every name is written once, to the stack, and then copied.
template <class Form>
Name *text_of_name(const RDNSequence *sequence) {
  char8_t scratch[512];
  NameText<Form> first(scratch, sizeof scratch);
  if (!first.write(sequence) || first.length() >= SIZE_MAX) return nullptr;
  const auto length = static_cast<size_t>(first.length());
  char *const text = new_array<char>(length + 1);
  if (text == nullptr) return nullptr;
  if (length <= sizeof scratch) {
    std::memcpy(text, scratch, length);
  } else if (!NameText<Form>(reinterpret_cast<char8_t *>(text), length).write(sequence)) {
    // The Form takes memory.
    std::free(text);
    return nullptr;
  }
  text[length] = '\0';
  return text;
}

}  // namespace asn1

#endif
