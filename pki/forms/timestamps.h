// Signed certificate timestamps in the encoding of TLS (RFC 6962, 3.2, 3.3). The decoder and the
// explanation share it.
#ifndef ORVELPKI_FORMS_TIMESTAMPS_H
#define ORVELPKI_FORMS_TIMESTAMPS_H

#include "pki/forms/content.h"

namespace pki {

constexpr uint32_t log_id_octets = 32;
constexpr uint8_t timestamp_v1 = 0;

/// A SignedCertificateTimestamp. Of a version other than v1 there are `version` and `opaque`.
struct Timestamp {
  uint8_t version = 0;
  const uint8_t *log_id = nullptr;
  uint64_t milliseconds = 0;
  View extensions;
  uint8_t hash_algorithm = 0;
  uint8_t signature_algorithm = 0;
  View signature;
  View opaque;
};

/// Takes a number, the highest octet first.
template <class Number>
bool take_number(Reader &in, Number *number) {
  const uint8_t *octets = nullptr;
  if (!in.take(sizeof(Number), &octets)) return false;
  uint64_t value = 0;
  for (size_t i = 0; i < sizeof(Number); ++i) value = value << 8 | octets[i];
  *number = static_cast<Number>(value);
  return true;
}

/// Takes a vector whose length stands in two octets in front of it.
inline bool take_vector(Reader &in, View *vector) {
  uint16_t length = 0;
  if (!take_number(in, &length)) return false;
  vector->length = length;
  return in.take(length, &vector->data);
}

/// Reads an element of a list.
inline Refusal read_timestamp(View element, Timestamp *to) {
  Reader in(element.data, element.data + element.length);
  if (!in.read_octet(&to->version)) return "a timestamp without octets";
  if (to->version != timestamp_v1) {
    to->opaque.length = element.length - 1;
    in.take(to->opaque.length, &to->opaque.data);
    return nullptr;
  }
  if (!in.take(log_id_octets, &to->log_id) || !take_number(in, &to->milliseconds) ||
      !take_vector(in, &to->extensions) || !in.read_octet(&to->hash_algorithm) ||
      !in.read_octet(&to->signature_algorithm) || !take_vector(in, &to->signature)) {
    return "a timestamp that ends inside a field";
  }
  return in.at_end() ? nullptr : "octets past the signature of a timestamp";
}

/// Calls `take(timestamp)`, which may refuse it, with each element of a list: the content of the
/// OCTET STRING. `*at` is where it goes wrong.
template <class Take>
Refusal read_timestamps(View content, const uint8_t **at, Take take) {
  *at = content.data;
  Reader in(content.data, content.data + content.length);
  View list;
  if (!take_vector(in, &list)) return "a list that is not as long as its length says";
  if (!in.at_end()) {
    *at = in.position();
    return "octets past the list";
  }
  if (list.length == 0) return "a list without elements";
  Reader elements(list.data, list.data + list.length);
  while (!elements.at_end()) {
    *at = elements.position();
    View element;
    if (!take_vector(elements, &element)) return "an element that reaches past its list";
    Timestamp timestamp;
    Refusal refusal = read_timestamp(element, &timestamp);
    if (refusal == nullptr) refusal = take(timestamp);
    if (refusal != nullptr) return refusal;
  }
  return nullptr;
}

/// Why the content of a list is refused, and where.
inline Refusal refuse_timestamps(View content, const uint8_t **at) {
  return read_timestamps(content, at, [](const Timestamp &) -> Refusal { return nullptr; });
}

}  // namespace pki

#endif
