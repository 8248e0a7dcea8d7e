// SEQUENCE OF and SET OF for elements that the library knows by functions only: those of a type's
// list, and those that a caller hands in.
#ifndef ORVELASN1_CORE_LIST_H
#define ORVELASN1_CORE_LIST_H

#include "core/cursor.h"

namespace asn1 {

/// What a list that is decoded does with its elements. Null pointers come to both releasing
/// functions, too.
struct Elements {
  const void *context;  ///< handed to each of the functions
  const uint8_t *(*decode)(const void *context, const uint8_t *z, const uint8_t *end, void **place,
                           uint32_t depth);
  void (*release)(const void *context, void *element);
  void (*release_list)(const void *context, List *list);
};

/// Decodes a constructed value of elements into a new list.
///
/// An indefinite length is taken where the end-of-contents is the last thing in front of `end`: the
/// loop does not look for it, it runs up to there. A refused header leaves the new, empty list in
/// its place, whose owner releases it.
const uint8_t *decode_list(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                           List **place, uint32_t depth, const Elements &elements);

/// Encodes a constructed value of the elements of a list, in list order; `element(pp, e)` encodes
/// one.
template <class Element>
uint32_t encode_list(uint8_t **pp, uint32_t tag, const List *list, Element element) {
  Measure measure;
  for (int32_t i = 0; i < List_len(list); ++i) {
    if (!measure.add(element(nullptr, List_get(list, i)))) return 0;
  }
  const uint32_t whole = measure.element();
  if (pp == nullptr || whole == 0) return whole;
  Writer(pp).header(static_cast<uint8_t>(tag | tag::constructed), measure.content());
  for (int32_t i = 0; i < List_len(list); ++i) element(pp, List_get(list, i));
  return whole;
}

}  // namespace asn1

#endif
