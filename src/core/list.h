// SEQUENCE OF and SET OF for elements that the library knows by functions only: those of a type's
// list, and those that a caller hands in.
#ifndef ORVELASN1_CORE_LIST_H
#define ORVELASN1_CORE_LIST_H

#include "core/cursor.h"

namespace asn1 {

/// Decodes a constructed value of elements into a new list.
///
/// An indefinite length is taken where the end-of-contents is the last thing in front of `end`: the
/// loop does not look for it, it runs up to there. A refused header leaves the new, empty list in
/// its place, whose owner releases it.
///
/// `decode(z, end, place, depth)` decodes one element; `release(element)` releases one and
/// `release_list(list)` all of a list; null pointers come to both too. Always inlined: the walk of
/// an unrolled list calls the functions of its elements, not those of any type.
template <class Decode, class Release, class ReleaseList>
[[gnu::always_inline]] inline const uint8_t *decode_list(const uint8_t *z, const uint8_t *end,
                                                         uint32_t impl_tag, uint32_t tag,
                                                         List **place, uint32_t depth,
                                                         Decode decode, Release release,
                                                         ReleaseList release_list) {
  require(place != nullptr, "asn1_x680", "asn1_List_d", "ppList != NULL");
  if (z == nullptr) return nullptr;
  void *element = nullptr;
  auto fail = [&]() -> const uint8_t * {
    release(element);
    release_list(*place);
    *place = nullptr;
    return nullptr;
  };

  *place = List_new(0);
  if (*place == nullptr) return fail();
  Reader in(z, end);
  Header header;
  if (!in.read_header(impl_tag, static_cast<uint8_t>(tag | tag::constructed), Forms::indefinite,
                      &header, depth)) {
    return nullptr;
  }
  const uint32_t inner_depth = child_depth(depth);
  ContentReader content = in.content(header);
  while (!content.at_end()) {
    element = nullptr;
    const uint8_t *next = decode(content.position(), content.end(), &element, inner_depth);
    if (next == nullptr) return fail();
    content.move_to(next);
    if (List_append(*place, element, 0) == 0) return fail();
    element = nullptr;  // the list's from here on, also on the way out
  }
  if (header.indefinite && !content.read_outer_eoc()) return fail();
  if (inner_depth != 0) trace_close(depth);
  return content.position();
}

/// Encodes a constructed value of the elements of a list, in list order; `element(pp, e)` encodes
/// one.
template <class Element>
uint32_t encode_list(uint8_t **pp, uint32_t tag, const List *list, Element element) {
  Measure size;
  for (int32_t i = 0; i < List_len(list); ++i) {
    if (!size.add(element(nullptr, List_get(list, i)))) return 0;
  }
  const uint32_t whole = size.element();
  if (pp == nullptr || whole == 0) return whole;
  Writer(pp).header(static_cast<uint8_t>(tag | tag::constructed), size.content());
  for (int32_t i = 0; i < List_len(list); ++i) element(pp, List_get(list, i));
  return whole;
}

}  // namespace asn1

#endif
