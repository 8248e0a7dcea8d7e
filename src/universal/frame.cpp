// The encoding frame: tag, length and end-of-contents, tagging wrappers, and lists of a caller's
// elements.
#include "core/cursor.h"
#include "core/element_functions.h"
#include "core/list.h"

using namespace asn1;

namespace {
constexpr const char *unit = "asn1_x680";
}

// ---------------------------------------------------------------------------------------------
// Tag and length
// ---------------------------------------------------------------------------------------------

uint32_t asn1_Tag_e(uint8_t **pp, uint32_t tag) {
  if (pp != nullptr) Writer(pp).octet(static_cast<uint8_t>(tag));
  return 1;
}

uint32_t asn1_Length_e(uint8_t **pp, uint32_t length) {
  if (pp != nullptr) Writer(pp).length(length);
  return length_octets(length);
}

uint32_t asn1_TagLength_e(uint8_t **pp, uint32_t tag, uint32_t length) {
  return asn1_Tag_e(pp, tag) + asn1_Length_e(pp, length);
}

uint32_t asn1_eoc_e(uint8_t **pp) {
  if (pp != nullptr) Writer(pp).header(0, 0);
  return 2;
}

const uint8_t *asn1_Tag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                          uint32_t *constructed, uint32_t depth) {
  Reader in(z, end);
  bool is_constructed = false;
  const bool accepted = in.read_tag(impl_tag, static_cast<uint8_t>(tag),
                                    constructed == nullptr ? nullptr : &is_constructed, depth);
  if (constructed != nullptr) *constructed = is_constructed;
  return accepted ? in.position() : nullptr;
}

const uint8_t *asn1_Length_d(const uint8_t *z, const uint8_t *end, uint32_t *length,
                             uint32_t *indefinite, uint32_t depth) {
  require(z != nullptr, unit, __func__, "z != NULL");
  require(end != nullptr, unit, __func__, "end != NULL");
  require(length != nullptr, unit, __func__, "length != NULL");
  Reader in(z, end);
  bool is_indefinite = false;
  const bool accepted =
      in.read_length(length, indefinite == nullptr ? nullptr : &is_indefinite, depth);
  if (indefinite != nullptr) *indefinite = is_indefinite;
  return accepted ? in.position() : nullptr;
}

const uint8_t *asn1_TagLength_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                uint32_t tag, uint32_t *constructed, uint32_t *length,
                                uint32_t *indefinite, uint32_t depth) {
  z = asn1_Tag_d(z, end, impl_tag, tag, constructed, depth);
  return z == nullptr ? nullptr : asn1_Length_d(z, end, length, indefinite, depth);
}

const uint8_t *asn1_eoc_d(const uint8_t *z, const uint8_t *end) {
  if (z == nullptr) return nullptr;
  Reader in(z, end);
  return in.read_eoc() ? in.position() : nullptr;
}

// ---------------------------------------------------------------------------------------------
// Tagging wrappers and lists
// ---------------------------------------------------------------------------------------------

namespace {

/// Encodes an element under an explicit tag; `element(pp)` encodes the element.
template <class Element>
uint32_t encode_explicit(uint8_t **pp, uint32_t tag, Element element) {
  Measure size;
  if (!size.add(element(nullptr))) return 0;
  const uint32_t whole = size.element();
  if (pp == nullptr || whole == 0) return whole;
  Writer(pp).header(static_cast<uint8_t>(tag | tag::constructed), size.content());
  element(pp);
  return whole;
}

/// Reads the header of an explicit tag; `element(z, end)` decodes what is inside.
template <class Element>
const uint8_t *decode_explicit(const uint8_t *z, const uint8_t *end, uint32_t tag, uint32_t depth,
                               Element element) {
  Reader in(z, end);
  uint32_t length;
  const auto expected = static_cast<uint8_t>(tag | tag::constructed);
  if (!in.read_header(0, expected, &length, depth)) return nullptr;
  const Reader content = in.content(length);
  return element(content.position(), content.end());
}

}  // namespace

uint32_t asn1_implicit_e(uint8_t **pp, uint32_t tag, const void *pElement,
                         asn1_encoder_function element_e) {
  require(pElement != nullptr, unit, __func__, "pElement");
  require(element_e != nullptr, unit, __func__, "element_e");
  uint8_t *const identifier = pp == nullptr ? nullptr : *pp;
  const uint32_t whole = call(element_e, pp, pElement);
  if (whole != 0 && identifier != nullptr) {
    *identifier = static_cast<uint8_t>((tag & ~uint32_t{tag::constructed}) |
                                       (*identifier & tag::constructed));
  }
  return whole;
}

uint32_t asn1_explicit_e(uint8_t **pp, uint32_t tag, const void *pElement,
                         asn1_encoder_function element_e) {
  require(pElement != nullptr, unit, __func__, "pElement");
  require(element_e != nullptr, unit, __func__, "element_e");
  return encode_explicit(pp, tag, [&](uint8_t **to) { return call(element_e, to, pElement); });
}

const uint8_t *asn1_explicit_d(const uint8_t *z, const uint8_t *end, uint32_t tag,
                               asn1_decoder_function element_d, void *ppElement, uint32_t depth) {
  require(z != nullptr, unit, __func__, "z");
  require(ppElement != nullptr, unit, __func__, "ppElement");
  require(element_d != nullptr, unit, __func__, "element_d");
  return decode_explicit(z, end, tag, depth, [&](const uint8_t *from, const uint8_t *limit) {
    return call(element_d, from, limit, ppElement, depth);
  });
}

uint32_t asn1_List_e(uint8_t **pp, uint32_t tag, const List *list,
                     asn1_encoder_function element_e) {
  return encode_list(pp, tag, list, [&](uint8_t **to, const void *element) {
    return call(element_e, to, element);
  });
}

const uint8_t *asn1_List_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                           asn1_decoder_function element_d, List_destructor_function element_free,
                           List **ppList, uint32_t depth) {
  return decode_list(
      z, end, impl_tag, tag, ppList, depth,
      [&](const uint8_t *from, const uint8_t *limit, void **element, uint32_t inner_depth) {
        return call(element_d, from, limit, element, inner_depth);
      },
      [&](void *element) { call(element_free, element); },
      [&](List *list) { List_free(list, element_free); });
}

uint32_t asn1_expl_List_e(uint8_t **pp, uint32_t explicit_tag, uint32_t list_tag, const List *list,
                          asn1_encoder_function element_e) {
  if (list == nullptr) return 0;
  return encode_explicit(pp, explicit_tag,
                         [&](uint8_t **to) { return asn1_List_e(to, list_tag, list, element_e); });
}

const uint8_t *asn1_expl_List_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                uint32_t list_tag, asn1_decoder_function element_d,
                                List_destructor_function element_free, List **ppList,
                                uint32_t depth) {
  if (z == nullptr || ppList == nullptr) return nullptr;
  return decode_explicit(
      z, end, explicit_tag, depth, [&](const uint8_t *from, const uint8_t *limit) {
        return asn1_List_d(from, limit, 0, list_tag, element_d, element_free, ppList, depth);
      });
}

uint32_t asn1_SetOf_e(uint8_t **pp, const List *list, asn1_encoder_function element_e) {
  return asn1_List_e(pp, tag::set, list, element_e);
}

uint32_t asn1_SeqOf_e(uint8_t **pp, const List *list, asn1_encoder_function element_e) {
  return asn1_List_e(pp, tag::sequence, list, element_e);
}

const uint8_t *asn1_SetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            asn1_decoder_function element_d, List_destructor_function element_free,
                            List **ppList, uint32_t depth) {
  return asn1_List_d(z, end, impl_tag, tag::set, element_d, element_free, ppList, depth);
}

const uint8_t *asn1_SeqOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            asn1_decoder_function element_d, List_destructor_function element_free,
                            List **ppList, uint32_t depth) {
  return asn1_List_d(z, end, impl_tag, tag::sequence, element_d, element_free, ppList, depth);
}

uint32_t asn1_expl_SetOf_e(uint8_t **pp, uint32_t explicit_tag, const List *list,
                           asn1_encoder_function element_e) {
  return asn1_expl_List_e(pp, explicit_tag, tag::set, list, element_e);
}

uint32_t asn1_expl_SeqOf_e(uint8_t **pp, uint32_t explicit_tag, const List *list,
                           asn1_encoder_function element_e) {
  return asn1_expl_List_e(pp, explicit_tag, tag::sequence, list, element_e);
}

const uint8_t *asn1_expl_SetOf_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                 asn1_decoder_function element_d,
                                 List_destructor_function element_free, List **ppList,
                                 uint32_t depth) {
  return asn1_expl_List_d(z, end, explicit_tag, tag::set, element_d, element_free, ppList, depth);
}

const uint8_t *asn1_expl_SeqOf_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                 asn1_decoder_function element_d,
                                 List_destructor_function element_free, List **ppList,
                                 uint32_t depth) {
  return asn1_expl_List_d(z, end, explicit_tag, tag::sequence, element_d, element_free, ppList,
                          depth);
}
