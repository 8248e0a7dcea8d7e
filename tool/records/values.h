// Readers of values that a record keeps undecoded: those of extensions, attributes and the like.
// Each takes octets that are one whole element, and fails where they do not follow its syntax.
#ifndef ORVELASN1_TOOL_RECORDS_VALUES_H
#define ORVELASN1_TOOL_RECORDS_VALUES_H

#include "records/describe.h"
#include "records/syntax.h"

namespace tool {

using ValueReader = std::optional<Node> (*)(Octets value, const View &view);

/// Describes a record. The description keeps the record.
template <class T>
std::optional<Node> described(Owned<T> record, const View &view) {
  if (!record) return std::nullopt;
  Node node = describe(static_cast<const T *>(record.get()), view);
  return owning(std::move(node), std::move(record));
}

/// Reads a value that a family of the library decodes.
template <auto decode, auto release>
std::optional<Node> record_value(Octets value, const View &view) {
  return described(decoded(decode, release, value), view);
}

/// The functions of a SEQUENCE OF what a family of the library decodes.
template <auto decode_element, auto free_element, auto encode_element = nullptr>
struct ListOf {
  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, List **made,
                               uint32_t depth) {
    return asn1_SeqOf_d(z, end, impl_tag, decode_element, free_element, made, depth);
  }
  static uint32_t encode(uint8_t **pp, const List *list) {
    return asn1_SeqOf_e(pp, list, encode_element);
  }
  static void free(List *list) { List_free(list, free_element); }
};

/// Decodes a SEQUENCE OF what a family of the library decodes.
template <auto decode, auto release>
Owned<List> decoded_list(Octets value) {
  return decoded(ListOf<decode, release>::decode, ListOf<decode, release>::free, value);
}

/// Reads a SEQUENCE OF T.
template <class T, auto decode, auto release>
std::optional<Node> list_value(Octets value, const View &view) {
  auto list = decoded_list<decode, release>(value);
  if (!list) return std::nullopt;
  Node node = list_of<T>(list.get(), view);
  return owning(std::move(node), std::move(list));
}

/// Reads a character string of any type.
std::optional<Node> string_value(Octets value, const View &view);

/// Reads a GeneralizedTime.
std::optional<Node> date_value(Octets value, const View &view);

/// Reads a small INTEGER.
std::optional<Node> number_value(Octets value, const View &view);

}  // namespace tool

#endif
