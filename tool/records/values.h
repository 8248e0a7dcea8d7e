// Readers of values that stand undecoded in a record: in extensions, attributes and the like. Each
// takes octets that are one whole element, and gives nothing where they do not follow its syntax.
#ifndef ORVELASN1_TOOL_RECORDS_VALUES_H
#define ORVELASN1_TOOL_RECORDS_VALUES_H

#include "records/describe.h"
#include "records/syntax.h"

namespace tool {

using ValueReader = std::optional<Node> (*)(Octets value, const View &view);

/// The description of a record, which keeps the record.
template <class T>
std::optional<Node> described(Owned<T> record, const View &view) {
  if (!record) return std::nullopt;
  Node node = describe(static_cast<const T *>(record.get()), view);
  return owning(std::move(node), std::move(record));
}

/// A value that a family of the library reads.
template <auto decode, auto release>
std::optional<Node> record_value(Octets value, const View &view) {
  return described(decoded(decode, release, value), view);
}

/// Decodes a SEQUENCE OF what a family of the library reads.
template <auto decode, auto release>
Owned<List> decoded_list(Octets value) {
  return decoded<List>(
      [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, List **made, uint32_t depth) {
        return asn1_SeqOf_d(z, end, impl_tag, decode, release, made, depth);
      },
      [](List *list) { List_free(list, release); }, value);
}

/// As record_value(), for a SEQUENCE OF T.
template <class T, auto decode, auto release>
std::optional<Node> list_value(Octets value, const View &view) {
  auto list = decoded_list<decode, release>(value);
  if (!list) return std::nullopt;
  Node node = list_of<T>(list.get(), view);
  return owning(std::move(node), std::move(list));
}

/// A character string of any type.
std::optional<Node> string_value(Octets value, const View &view);

/// A GeneralizedTime.
std::optional<Node> date_value(Octets value, const View &view);

/// A small INTEGER.
std::optional<Node> number_value(Octets value, const View &view);

}  // namespace tool

#endif
