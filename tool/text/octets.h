// Octets: views of them, their hexadecimal form, and those of the library's records.
#ifndef ORVELASN1_TOOL_TEXT_OCTETS_H
#define ORVELASN1_TOOL_TEXT_OCTETS_H

#include <orvelasn1.h>

#include <cstdint>
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

/// The two digits of each octet, in capitals, without anything between them.
std::string hex(Octets octets);

/// As hex(), with a blank between the octets.
std::string spaced_hex(Octets octets);

/// The octets of a hexadecimal text, in which blanks and colons may stand between the octets;
/// nothing where the text is something else.
std::optional<Bytes> from_hex(std::string_view text);

/// The base64 form in lines of 64 characters, each with its newline.
std::string base64(Octets octets);

/// The octets of a text.
inline Octets octets_of(std::string_view text) {
  return {reinterpret_cast<const uint8_t *>(text.data()), text.size()};
}

/// Octets as the characters of a text.
inline std::string_view text_of(Octets octets) {
  return {reinterpret_cast<const char *>(octets.data()), octets.size()};
}

/// The octets of a string, ANY or INTEGER record; none for a null pointer.
template <class Record>
Octets octets(const Record *record) {
  return record == nullptr || record->data == nullptr ? Octets()
                                                      : Octets(record->data, record->length);
}

/// The octets of a BIT STRING record, the last one with its padding bits.
inline Octets octets(const BitString *bits) {
  return bits == nullptr || bits->data == nullptr
             ? Octets()
             : Octets(bits->data, bits->length / 8 + (bits->length % 8 != 0 ? 1 : 0));
}

/// The elements of one of the library's lists.
template <class Element>
std::vector<const Element *> elements(const List *list) {
  std::vector<const Element *> all;
  all.reserve(static_cast<size_t>(List_len(list)));
  for (int32_t i = 0; i < List_len(list); ++i)
    all.push_back(static_cast<const Element *>(List_get(list, i)));
  return all;
}

/// What an encoder `uint32_t f(uint8_t **pp)` writes; none where it fails.
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

/// The record that `decode` makes of exactly these octets; null where it refuses them or leaves
/// some.
template <class T>
Owned<T> decoded(const uint8_t *(*decode)(const uint8_t *, const uint8_t *, uint32_t, T **,
                                          uint32_t),
                 void (*release)(T *), Octets octets, uint32_t impl_tag = 0) {
  T *record = nullptr;
  const uint8_t *const end = octets.data() + octets.size();
  const uint8_t *const next =
      octets.empty() ? nullptr : decode(octets.data(), end, impl_tag, &record, 0);
  // A list decoder that refuses the header leaves an empty list to its caller.
  const bool made = next != nullptr || std::is_same_v<T, List>;
  Owned<T> owned(made ? record : nullptr, release);
  if (next != end) owned.reset();
  return owned;
}

}  // namespace tool

#endif
