// The functions of card objects that no table has: the shape of an object follows from its
// identifier.
#include "card/gdo.h"
#include "core/element_functions.h"
#include "core/list.h"
#include "core/stack.h"

using namespace asn1;

namespace {

constexpr const char *unit = "asn1_gdo";

const Type &object_type(uint32_t sets) {
  return sets != 0 ? GDOObjectSetOfSetOfType : GDOObjectSetOfType;
}

/// Reads the content of an object, whose identifier is known.
const uint8_t *decode_object_content(Reader in, const Type &type, GDOObject *object,
                                     uint32_t depth) {
  const GdoRole role = gdo_role(object->id);
  if (role == GdoRole::leaf) {
    return asn1_OctetString_d(in.position(), in.end(), 0, &object->value, depth);
  }
  uint32_t wrapper_tag = 0;
  if (role == GdoRole::attribute_holder) {
    const int octet = in.peek();
    if (octet != tag::bit_string && octet != tag::octet_string) return nullptr;
    if (octet == tag::bit_string) wrapper_tag = tag::bit_string;
  }
  uint32_t length = 0;
  if (!in.read_header(wrapper_tag, tag::octet_string, &length, depth)) return nullptr;
  if (depth != 0) asn1_LogMessage(depth, " encapsulates {\n");
  const uint32_t inner_depth = child_depth(depth);
  const Reader content = in.content(length);
  const uint8_t *const next = decode(content.position(), content.end(), 0, &object->children,
                                     inner_depth, gdo_children(object->id, type));
  if (inner_depth != 0) trace_close(inner_depth - 1);
  return next;
}

/// Reads the identifier, one octet; an empty content has none, which counts as 0.
bool read_id(Reader *in, GDOObject *object, uint32_t depth) {
  if (in->at_end()) return true;
  uint32_t length = 0;
  uint8_t id;
  if (!in->read_header(0, tag::object_identifier, &length, depth) || length != 1 ||
      !in->read_octet(&id))
    return false;
  object->id = id;
  return true;
}

}  // namespace

GDOObject *asn1_GDOObject_new() { return new_record<GDOObject>(); }

uint32_t asn1_GDOObject_e(uint8_t **pp, uint32_t setOfSetOf, const GDOObject *o) {
  return encode(pp, o, object_type(setOfSetOf));
}

// Any number of SEQUENCE or SET headers may stand in front of the identifier. All are skipped, and
// only the innermost length counts.
const uint8_t *asn1_GDOObject_d(const uint8_t *z, const uint8_t *end, uint32_t, uint32_t setOfSetOf,
                                GDOObject **o, uint32_t depth) {
  require(o != nullptr, unit, __func__, "o != NULL");
  *o = nullptr;
  const ReadingNested nested;
  if (z == nullptr || !nested.fits()) return nullptr;
  require(end != nullptr, "asn1_x680", "asn1_Tag_d", "end != NULL");
  Reader in(z, end);
  uint32_t length = 0;
  while (in.peek() != tag::object_identifier) {
    const int octet = in.peek();
    if (octet != tag::sequence && octet != tag::set) return nullptr;
    if (!in.read_header(static_cast<uint32_t>(octet), tag::sequence, &length, depth))
      return nullptr;
    if (depth != 0) ++depth;
  }
  if (in.position() == z) return nullptr;  // no header, and so no length

  GDOObject *const object = asn1_GDOObject_new();
  if (object == nullptr) return nullptr;
  *o = object;
  Reader content = in.content(length);
  const uint8_t *next = nullptr;
  if (read_id(&content, object, depth)) {
    if (depth != 0) asn1_LogMessage(depth, "0x%02x\n", static_cast<unsigned>(object->id));
    next = decode_object_content(content, object_type(setOfSetOf), object, depth);
  }
  if (next == nullptr) {
    asn1_GDOObjectSetOf_free(object);
    *o = nullptr;
    return nullptr;
  }
  if (depth != 0) trace_close(depth - 1);
  return next;
}

uint32_t asn1_GDOObjectSetOf_e(uint8_t **pp, const GDOObject *o) {
  return asn1_GDOObject_e(pp, 0, o);
}
uint32_t asn1_GDOObjectSetOfSetOf_e(uint8_t **pp, const GDOObject *o) {
  return asn1_GDOObject_e(pp, 1, o);
}
const uint8_t *asn1_GDOObjectSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     GDOObject **ppElement, uint32_t depth) {
  return asn1_GDOObject_d(z, end, impl_tag, 0, ppElement, depth);
}
const uint8_t *asn1_GDOObjectSetOfSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          GDOObject **ppElement, uint32_t depth) {
  return asn1_GDOObject_d(z, end, impl_tag, 1, ppElement, depth);
}

void asn1_GDOObjectSetOf_free(GDOObject *pElement) {
  if (pElement == nullptr) return;
  asn1_OctetString_free(pElement->value);
  List_free(pElement->children, asn1_GDOObjectSetOf_free);
  std::free(pElement);
}

void asn1_GDOObjectSetOfSetOf_free(GDOObject *pElement) {
  // The attributes of a holder are no lists, at whatever place it stands.
  if (pElement != nullptr && gdo_role(pElement->id) != GdoRole::attribute_holder) {
    for (int32_t i = 0; i < List_len(pElement->children); ++i) {
      List_free(static_cast<List *>(List_get(pElement->children, i)), asn1_GDOObjectSetOf_free);
    }
    List_free(pElement->children, nullptr);
    pElement->children = nullptr;
  }
  asn1_GDOObjectSetOf_free(pElement);
}

// ---------------------------------------------------------------------------------------------
// Sets of sets of a caller's elements
// ---------------------------------------------------------------------------------------------

uint32_t asn1_SetOfSetOf_e(uint8_t **pp, const List *list, asn1_encoder_function element_e) {
  return encode_list(pp, tag::set, list, [&](uint8_t **to, const void *inner) {
    return asn1_SetOf_e(to, static_cast<const List *>(inner), element_e);
  });
}

const uint8_t *asn1_SetOfSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 asn1_decoder_function element_d,
                                 List_destructor_function element_free, List **ppList,
                                 uint32_t depth) {
  if (z == nullptr || ppList == nullptr) return nullptr;
  return decode_list(
      z, end, impl_tag, tag::set, ppList, depth,
      [&](const uint8_t *from, const uint8_t *limit, void **place, uint32_t inner_depth) {
        List *set = nullptr;
        const uint8_t *const next =
            asn1_SetOf_d(from, limit, 0, element_d, element_free, &set, inner_depth);
        *place = set;
        return next;
      },
      [&](void *set) { List_free(static_cast<List *>(set), element_free); },
      [&](List *list) {
        for (int32_t i = 0; i < List_len(list); ++i) {
          List_free(static_cast<List *>(List_get(list, i)), element_free);
        }
        List_free(list, nullptr);
      });
}
