// Global data objects of a smart card.
#include "core/element_functions.h"
#include "core/pattern.h"
#include "core/stack.h"

using namespace asn1;

namespace {

constexpr const char *unit = "asn1_gdo";

enum class Role { leaf, container, attribute_holder };

Role role_of(unsigned long id) {
  if ((id >= 0x10 && id <= 0x14) || id == 0x21) return Role::container;
  return id == 0x20 ? Role::attribute_holder : Role::leaf;
}

// Writes an identifier: one octet of it, whatever its value.
uint32_t asn1_GDOId_e(uint8_t **pp, unsigned long id) {
  if (pp != nullptr) {
    Writer out(pp);
    out.header(6, 1);
    out.octet(static_cast<uint8_t>(id));
  }
  return 3;
}

// ---------------------------------------------------------------------------------------------
// Attributes
// ---------------------------------------------------------------------------------------------

// The identifier is little-endian and as wide as a word of the platform. The decoder takes four
// octets only: what is written here on a 64-bit platform cannot be read back.
uint32_t asn1_GDOObjectAttribute_e(uint8_t **pp, const GDOObjectAttribute *attribute) {
  require(attribute != nullptr, unit, __func__, "attribute != NULL");
  constexpr uint32_t width = sizeof attribute->id;
  Measure size;
  if (!size.add(header_octets(width) + width) ||
      !size.add(asn1_OctetString_e(nullptr, attribute->value))) {
    return 0;
  }
  const uint32_t whole = size.element();
  if (pp == nullptr || whole == 0) return whole;
  Writer out(pp);
  out.header(0x30, size.content());
  out.header(6, width);
  for (uint32_t i = 0; i < width; ++i) out.octet(static_cast<uint8_t>(attribute->id >> (8 * i)));
  asn1_OctetString_e(pp, attribute->value);
  return whole;
}

/// The identifier of an attribute. A content without one leaves it 0.
struct AttributeId {
  static bool decode(ContentReader &in, GDOObjectAttribute *attribute, uint32_t depth) {
    if (!in.at_end()) {
      uint32_t length = 0;
      const uint8_t *octets;
      if (!in.read_header(0, 6, &length, depth) || length != 4 || !in.take(length, &octets)) {
        return false;
      }
      uint32_t id = 0;
      for (int i = 3; i >= 0; --i) id = id << 8 | octets[i];
      // The top bit counts as a sign, and spreads where a word is wider.
      attribute->id = static_cast<unsigned long>(static_cast<long>(static_cast<int32_t>(id)));
    }
    if (depth != 0) {
      asn1_LogMessage(depth, "0x%08x\n", static_cast<unsigned>(attribute->id));
    }
    return true;
  }
  static void free(GDOObjectAttribute *) {}
};

// A table has a line for each field.
// clang-format off

// GDOObjectAttribute ::= SEQUENCE {
//   id     OBJECT IDENTIFIER,  -- in name: four octets, the least significant first
//   value  OCTET STRING }
using AttributeSyntax = Sequence<GDOObjectAttribute,
    AttributeId,
    Required<&GDOObjectAttribute::value, OctetStringCodec>>;

// clang-format on

const uint8_t *asn1_GDOObjectAttribute_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                         GDOObjectAttribute **place, uint32_t depth) {
  return AttributeSyntax::decode(z, end, impl_tag, place, depth);
}

// An attribute is the same record as an object of a plain place, and released as one.
using AttributesCodec = SetOf<Family<0x30, asn1_GDOObjectAttribute_e, asn1_GDOObjectAttribute_d,
                                     nullptr, asn1_GDOObjectSetOf_free>>;

// ---------------------------------------------------------------------------------------------
// Objects
// ---------------------------------------------------------------------------------------------

using PlainCodec =
    Family<0x30, asn1_GDOObjectSetOf_e, asn1_GDOObjectSetOf_d, nullptr, asn1_GDOObjectSetOf_free>;
using NestedSetCodec = Family<0x30, asn1_GDOObjectSetOfSetOf_e, asn1_GDOObjectSetOfSetOf_d, nullptr,
                              asn1_GDOObjectSetOfSetOf_free>;
using ObjectsCodec = SetOf<PlainCodec>;

/// SET OF SET OF, by the functions of an element: `encode(pp, element)`.
template <class Encode>
uint32_t encode_set_of_sets(uint8_t **pp, const List *list, Encode encode) {
  return encode_list(pp, 0x31, list, [&](uint8_t **to, const void *inner) {
    return encode_list(to, 0x31, static_cast<const List *>(inner), encode);
  });
}

/// `decode(z, end, place, depth)` decodes an inner list, `release(list)` releases one.
template <class Decode, class Release>
const uint8_t *decode_set_of_sets(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  List **place, uint32_t depth, Decode decode, Release release) {
  return decode_list<List>(z, end, impl_tag, 0x31, place, depth, decode, release, [&](List *list) {
    for (int32_t i = 0; i < List_len(list); ++i) {
      release(static_cast<List *>(List_get(list, i)));
    }
    List_free(list, nullptr);
  });
}

/// The set inside the wrapper of an object that is no leaf.
uint32_t encode_children(uint8_t **pp, Role role, bool nested_sets, const List *children) {
  if (role == Role::attribute_holder) return AttributesCodec::encode(pp, children);
  if (!nested_sets) return ObjectsCodec::encode(pp, children);
  return encode_set_of_sets(pp, children, [](uint8_t **to, const void *object) {
    return asn1_GDOObjectSetOf_e(to, static_cast<const GDOObject *>(object));
  });
}

const uint8_t *decode_children(const Reader &in, Role role, bool nested_sets, List **place,
                               uint32_t depth) {
  const uint8_t *const z = in.position();
  if (role == Role::attribute_holder) return AttributesCodec::decode(z, in.end(), 0, place, depth);
  if (!nested_sets) return ObjectsCodec::decode(z, in.end(), 0, place, depth);
  return decode_set_of_sets(
      z, in.end(), 0, place, depth,
      [](const uint8_t *from, const uint8_t *limit, List **inner, uint32_t inner_depth) {
        return ObjectsCodec::decode(from, limit, 0, inner, inner_depth);
      },
      ObjectsCodec::free);
}

/// Reads the content of an object, whose identifier is known.
const uint8_t *decode_object_content(Reader in, bool nested_sets, GDOObject *object,
                                     uint32_t depth) {
  const Role role = role_of(object->id);
  if (role == Role::leaf) {
    return asn1_OctetString_d(in.position(), in.end(), 0, &object->value, depth);
  }
  uint32_t wrapper_tag = 0;
  if (role == Role::attribute_holder) {
    const int octet = in.peek();
    if (octet != 3 && octet != 4) return nullptr;
    if (octet == 3) wrapper_tag = 3;
  }
  uint32_t length = 0;
  if (!in.read_header(wrapper_tag, 4, &length, depth)) return nullptr;
  if (depth != 0) asn1_LogMessage(depth, " encapsulates {\n");
  const uint32_t inner_depth = child_depth(depth);
  const uint8_t *const next =
      decode_children(in.content(length), role, nested_sets, &object->children, inner_depth);
  if (inner_depth != 0) trace_close(inner_depth - 1);
  return next;
}

/// Reads the identifier, one octet; an empty content has none, which counts as 0.
bool read_id(Reader *in, GDOObject *object, uint32_t depth) {
  if (in->at_end()) return true;
  uint32_t length = 0;
  uint8_t id;
  if (!in->read_header(0, 6, &length, depth) || length != 1 || !in->read_octet(&id)) return false;
  object->id = id;
  return true;
}

}  // namespace

GDOObject *asn1_GDOObject_new() { return new_record<GDOObject>(); }

uint32_t asn1_GDOObject_e(uint8_t **pp, uint32_t setOfSetOf, const GDOObject *o) {
  require(o != nullptr, unit, __func__, "o != NULL");
  if (!stack_for_nested()) return 0;
  const Role role = role_of(o->id);
  const bool nested_sets = setOfSetOf != 0;
  uint32_t inner = 0;
  Measure body;
  if (!body.add(asn1_GDOId_e(nullptr, o->id))) return 0;
  if (role == Role::leaf) {
    if (!body.add(asn1_OctetString_e(nullptr, o->value))) return 0;
  } else {
    inner = encode_children(nullptr, role, nested_sets, o->children);
    if (inner == 0 || !body.add(element_octets(inner))) return 0;
  }
  const uint32_t whole = body.element();
  if (pp == nullptr || whole == 0) return whole;
  Writer(pp).header(0x30, body.content());
  asn1_GDOId_e(pp, o->id);
  if (role == Role::leaf) {
    asn1_OctetString_e(pp, o->value);
  } else {
    Writer(pp).header(role == Role::attribute_holder ? 3 : 4, inner);
    encode_children(pp, role, nested_sets, o->children);
  }
  return whole;
}

// Any number of SEQUENCE or SET headers may stand in front of the identifier. All are skipped, and
// only the innermost length counts.
const uint8_t *asn1_GDOObject_d(const uint8_t *z, const uint8_t *end, uint32_t, uint32_t setOfSetOf,
                                GDOObject **o, uint32_t depth) {
  require(o != nullptr, unit, __func__, "o != NULL");
  *o = nullptr;
  const ReadingNested nested;
  if (z == nullptr || !nested.fits()) return nullptr;
  Reader in(z, end);
  uint32_t length = 0;
  while (in.peek() != 6) {
    const int octet = in.peek();
    if (octet != 0x30 && octet != 0x31) return nullptr;
    if (!in.read_header(static_cast<uint32_t>(octet), 0x30, &length, depth)) return nullptr;
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
    next = decode_object_content(content, setOfSetOf != 0, object, depth);
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
  if (pElement != nullptr && role_of(pElement->id) != Role::attribute_holder) {
    for (int32_t i = 0; i < List_len(pElement->children); ++i) {
      List_free(static_cast<List *>(List_get(pElement->children, i)), asn1_GDOObjectSetOf_free);
    }
    List_free(pElement->children, nullptr);
    pElement->children = nullptr;
  }
  asn1_GDOObjectSetOf_free(pElement);
}

// ---------------------------------------------------------------------------------------------
// Sets of sets
// ---------------------------------------------------------------------------------------------

uint32_t asn1_SetOfSetOf_e(uint8_t **pp, const List *list, asn1_encoder element_e) {
  return encode_set_of_sets(
      pp, list, [&](uint8_t **to, const void *element) { return call(element_e, to, element); });
}

const uint8_t *asn1_SetOfSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 asn1_decoder element_d, asn1_destructor element_free,
                                 List **ppList, uint32_t depth) {
  if (z == nullptr || ppList == nullptr) return nullptr;
  return decode_set_of_sets(
      z, end, impl_tag, ppList, depth,
      [&](const uint8_t *from, const uint8_t *limit, List **inner, uint32_t inner_depth) {
        return asn1_SetOf_d(from, limit, 0, element_d, element_free, inner, inner_depth);
      },
      [&](List *list) { List_free(list, element_free); });
}

// ---------------------------------------------------------------------------------------------
// GDO
// ---------------------------------------------------------------------------------------------

namespace {

// A table has a line for each field.
// clang-format off

// GDO ::= SEQUENCE {
//   root  GDOObject,
//   set1  GDOObject,
//   set2  GDOObject,
//   set3  GDOObject,
//   set4  GDOObject OPTIONAL }
using GDOSyntax = Sequence<GDO,
    Required<&GDO::root, PlainCodec>,
    Required<&GDO::set1, NestedSetCodec>,
    Required<&GDO::set2, NestedSetCodec>,
    Required<&GDO::set3, NestedSetCodec>,
    Optional<&GDO::set4, NestedSetCodec>>;

// clang-format on

}  // namespace

GDO *asn1_GDO_new() { return GDOSyntax::create(); }
void asn1_GDO_free(GDO *pElement) { GDOSyntax::free(pElement); }
uint32_t asn1_GDO_e(uint8_t **pp, const GDO *pElement) { return GDOSyntax::encode(pp, pElement); }
const uint8_t *asn1_GDO_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, GDO **ppElement,
                          uint32_t depth) {
  return GDOSyntax::decode(z, end, impl_tag, ppElement, depth);
}
