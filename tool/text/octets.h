// Octets: views of them, their hexadecimal and base64 forms, and those of the library's records.
#ifndef ORVELASN1_TOOL_TEXT_OCTETS_H
#define ORVELASN1_TOOL_TEXT_OCTETS_H

#include <orvelasn1.h>
#include <pki_view.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tool {

using Octets = std::span<const uint8_t>;
using Bytes = std::vector<uint8_t>;

/// Identifier octets (X.690, 8.1.2; X.680, 8.4), and their parts. That of a primitive universal
/// type is the number of its tag.
namespace tag {
constexpr uint8_t class_bits = 0xC0;
constexpr uint8_t constructed = 0x20;
constexpr uint8_t number_bits = 0x1F;

constexpr uint8_t boolean = 0x01;
constexpr uint8_t integer = 0x02;
constexpr uint8_t bit_string = 0x03;
constexpr uint8_t octet_string = 0x04;
constexpr uint8_t null = 0x05;
constexpr uint8_t object_identifier = 0x06;
constexpr uint8_t enumerated = 0x0A;
constexpr uint8_t utf8_string = 0x0C;
constexpr uint8_t numeric_string = 0x12;
constexpr uint8_t printable_string = 0x13;
constexpr uint8_t ia5_string = 0x16;
constexpr uint8_t utc_time = 0x17;
constexpr uint8_t generalized_time = 0x18;
constexpr uint8_t universal_string = 0x1C;
constexpr uint8_t bmp_string = 0x1E;
constexpr uint8_t sequence = 0x30;
constexpr uint8_t set = 0x31;
constexpr uint8_t context = 0x80;
}  // namespace tag

/// Returns the two digits of each octet, in capitals, without anything between them.
std::string hex(Octets octets);

/// Appends what hex() returns.
void append_hex(std::string &out, Octets octets);

/// Returns hex() with a blank between the octets.
std::string spaced_hex(Octets octets);

/// Reads a hexadecimal text, in which blanks and colons may stand between the octets. Fails on any
/// other text.
std::optional<Bytes> from_hex(std::string_view text);

/// Appends the base64 form in lines of 64 characters, each with a line end.
void append_base64(std::string &out, Octets octets, std::string_view line_end);

/// Returns the base64 form in one line, without a newline.
std::string base64_line(Octets octets);

/// Returns the octets of a view, or of a text.
inline Octets octets_of(const pki_Octets &view) {
  return view.data == nullptr ? Octets() : Octets(view.data, view.length);
}
inline Octets octets_of(std::string_view text) {
  return {reinterpret_cast<const uint8_t *>(text.data()), text.size()};
}

/// Returns octets as the characters of a text.
inline std::string_view text_of(Octets octets) {
  return {reinterpret_cast<const char *>(octets.data()), octets.size()};
}

/// Returns the octets of a string, ANY or INTEGER record; no octets for a null pointer.
template <class Record>
Octets octets(const Record *record) {
  return record == nullptr || record->data == nullptr ? Octets()
                                                      : Octets(record->data, record->length);
}

/// Returns the octets of a BIT STRING record, the last one with its padding bits.
inline Octets octets(const BitString *bits) {
  return bits == nullptr || bits->data == nullptr
             ? Octets()
             : Octets(bits->data, bits->length / 8 + (bits->length % 8 != 0 ? 1 : 0));
}

/// The elements of one of the library's lists, which may be null and must outlive this.
template <class Element>
class ListElements {
 public:
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = const Element *;
    using difference_type = std::ptrdiff_t;
    using pointer = const value_type *;
    using reference = value_type;

    Iterator() = default;
    Iterator(const List *list, int32_t at) : list_(list), at_(at) {}
    value_type operator*() const { return static_cast<value_type>(List_get(list_, at_)); }
    Iterator &operator++() {
      ++at_;
      return *this;
    }
    Iterator operator++(int) { return {list_, at_++}; }
    bool operator==(const Iterator &) const = default;

   private:
    const List *list_ = nullptr;
    int32_t at_ = 0;
  };

  explicit ListElements(const List *list) : list_(list) {}

  Iterator begin() const { return {list_, 0}; }
  Iterator end() const { return {list_, List_len(list_)}; }
  size_t size() const { return static_cast<size_t>(List_len(list_)); }
  bool empty() const { return size() == 0; }
  const Element *front() const { return *begin(); }

 private:
  const List *list_;
};

/// Returns the elements of one of the library's lists.
template <class Element>
ListElements<Element> elements(const List *list) {
  return ListElements<Element>(list);
}

/// Returns what an encoder `uint32_t f(uint8_t **pp)` writes; no octets where it fails.
template <class Encoder>
Bytes encoded(Encoder encode) {
  Bytes out(encode(nullptr));
  if (out.empty()) return out;
  uint8_t *cursor = out.data();
  if (encode(&cursor) != out.size()) out.clear();
  return out;
}

/// A record of the library together with the function that releases it.
template <class T>
using Owned = std::unique_ptr<T, void (*)(T *)>;

/// A decoder of the library.
template <class T>
using Decoder = const uint8_t *(*)(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   T **record, uint32_t depth);

/// Decodes the element at `z` and moves `z` past it. Returns its record. Where the decoder refuses
/// the element, returns null, and `z` is null.
template <class T>
Owned<T> take(Decoder<T> decode, void (*release)(T *), const uint8_t *&z, const uint8_t *end,
              uint32_t impl_tag = 0, uint32_t depth = 0) {
  T *record = nullptr;
  z = decode(z, end, impl_tag, &record, depth);
  // A list decoder that refuses the header leaves an empty list, which its caller must release.
  const bool made = z != nullptr || std::is_same_v<T, List>;
  Owned<T> owned(made ? record : nullptr, release);
  if (z == nullptr) owned.reset();
  return owned;
}

/// Decodes octets that are exactly one element. Returns null where `decode` refuses them or does
/// not take all of them.
template <class T>
Owned<T> decoded(Decoder<T> decode, void (*release)(T *), Octets octets) {
  if (octets.empty()) return Owned<T>(nullptr, release);
  const uint8_t *z = octets.data();
  const uint8_t *const end = z + octets.size();
  Owned<T> owned = take(decode, release, z, end);
  if (z != end) owned.reset();
  return owned;
}

}  // namespace tool

#endif
