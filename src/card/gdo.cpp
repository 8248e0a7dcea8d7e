// Global data objects of a smart card.
#include "card/gdo.h"

#include "core/export.h"

using namespace asn1;

namespace {

constexpr const char *unit = "asn1_gdo";

const GDOObject &object(const void *record) { return *static_cast<const GDOObject *>(record); }

// ---------------------------------------------------------------------------------------------
// Attributes
// ---------------------------------------------------------------------------------------------

// An attribute's identifier is little-endian and as wide as a word of the platform. The decoder
// takes four octets only: what is written here on a 64-bit platform cannot be read back. A content
// without an identifier leaves it 0.
constexpr uint32_t id_octets = sizeof(GDOObjectAttribute::id);

constexpr FieldFunctions attribute_id_functions{
    .decode =
        [](const Field &, ContentReader &in, void *record, uint32_t depth) {
          auto *const attribute = static_cast<GDOObjectAttribute *>(record);
          if (!in.at_end()) {
            uint32_t length = 0;
            const uint8_t *octets;
            if (!in.read_header(0, tag::object_identifier, &length, depth) || length != 4 ||
                !in.take(length, &octets)) {
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
        },
    .measure = [](const Field &, const void *,
                  Measure &size) { return size.add(header_octets(id_octets) + id_octets); },
    .write =
        [](const Field &, BackWriter &out, const void *record) {
          uint8_t octets[id_octets];
          for (uint32_t i = 0; i < id_octets; ++i) {
            octets[i] = static_cast<uint8_t>(object(record).id >> (8 * i));
          }
          out.octets(octets, id_octets);
          out.header(tag::object_identifier, id_octets);
        },
    .free = [](const Field &, void *) {}};

constexpr Type attribute_id{.kind = Kind::card_identifier, .identifier = tag::object_identifier};
using AttributeIdCodec = Codec<attribute_id, void, tag::object_identifier>;

}  // namespace

// clang-format off

// GDOObjectAttribute ::= SEQUENCE {
//   id     OBJECT IDENTIFIER,  -- in name: four octets, the least significant first
//   value  OCTET STRING }
using GDOObjectAttributeTable = ClosedWithFields<Sequence<GDOObjectAttribute,
    ByHand<Required<&GDOObjectAttribute::id, AttributeIdCodec>, attribute_id_functions>,
    Required<&GDOObjectAttribute::value, OctetStringCodec>>>;

// clang-format on

namespace {

// An attribute is the same record as an object of a plain place, and released as one.
constexpr Type attribute_type = defined(
    GDOObjectAttributeTable::type, "GDOObjectAttribute", "GDOObjectAttribute",
    {.measure =
         [](const void *attribute) {
           require(attribute != nullptr, unit, "asn1_GDOObjectAttribute_e", "attribute != NULL");
           return measure_fields(attribute, GDOObjectAttributeTable::type);
         },
     .free =
         [](void *attribute) { asn1_GDOObjectSetOf_free(static_cast<GDOObject *>(attribute)); }},
    {});

// ---------------------------------------------------------------------------------------------
// Objects
// ---------------------------------------------------------------------------------------------

using AttributesCodec = SetOf<Codec<attribute_type, GDOObjectAttribute, tag::sequence>>;
using ObjectsCodec = SetOf<Codec<GDOObjectSetOfType, GDOObject, tag::sequence>>;
using SetsCodec = SetOf<ObjectsCodec>;

// An object is a SEQUENCE of one identifier octet, whatever the record's value, and of what the
// identifier says: an OCTET STRING, or a wrapper with a set in it.
uint32_t measure_object(const void *record, const Type &type) {
  require(record != nullptr, unit, "asn1_GDOObject_e", "o != NULL");
  const GDOObject &from = object(record);
  Measure size;
  size.add(header_octets(1) + 1);
  if (gdo_role(from.id) == GdoRole::leaf) {
    if (!size.add(measure(from.value, OctetStringType))) return 0;
  } else {
    const uint32_t inner = measure(from.children, gdo_children(from.id, type));
    if (inner == 0 || !size.add(element_octets(inner))) return 0;
  }
  return size.element();
}

void write_object(BackWriter &out, const void *record, const Type &type) {
  const GDOObject &from = object(record);
  const GdoRole role = gdo_role(from.id);
  const uint32_t end = out.left();
  if (role == GdoRole::leaf) {
    write(out, from.value, OctetStringType);
  } else {
    write(out, from.children, gdo_children(from.id, type));
    out.header(role == GdoRole::attribute_holder ? tag::bit_string : tag::octet_string,
               end - out.left());
  }
  const auto id = static_cast<uint8_t>(from.id);
  out.octets(&id, 1);
  out.header(tag::object_identifier, 1);
  out.header(tag::sequence, end - out.left());
}

/// The functions of an object at a plain place, or at a nested-set place.
template <const Type &T, auto Decode, auto Free>
constexpr TypeFunctions object_functions{
    .decode =
        [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place, uint32_t depth) {
          return Decode(z, end, impl_tag, static_cast<GDOObject **>(place), depth);
        },
    .measure = [](const void *record) { return measure_object(record, T); },
    .write = [](BackWriter &out, const void *record) { write_object(out, record, T); },
    .free = [](void *record) { Free(static_cast<GDOObject *>(record)); }};

constexpr Type object_form{.kind = Kind::card_object,
                           .identifier = tag::sequence,
                           .nests = true,
                           .size = sizeof(GDOObject)};

}  // namespace

GdoRole asn1::gdo_role(unsigned long id) {
  if ((id >= 0x10 && id <= 0x14) || id == 0x21) return GdoRole::container;
  return id == 0x20 ? GdoRole::attribute_holder : GdoRole::leaf;
}

const Type &asn1::gdo_children(unsigned long id, const Type &type) {
  if (gdo_role(id) == GdoRole::attribute_holder) return *AttributesCodec::type;
  return &type == &GDOObjectSetOfType ? *ObjectsCodec::type : *SetsCodec::type;
}

namespace asn1 {

#ifdef ORVELASN1_DESCRIBES
/// The public functions of an object.
template <auto Decode, auto Encode, auto Free>
constexpr PublicFunctions object_description{
    .create = []() -> void * { return asn1_GDOObject_new(); },
    .decode =
        [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **place, uint32_t depth) {
          auto *made = static_cast<GDOObject *>(*place);
          const uint8_t *const next = Decode(z, end, impl_tag, &made, depth);
          *place = made;
          return next;
        },
    .encode = [](uint8_t **pp, const void *record) { return Encode(pp, &object(record)); },
    .free = [](void *record) { Free(static_cast<GDOObject *>(record)); }};
#else
template <auto, auto, auto>
constexpr PublicFunctions object_description{};
#endif

constinit const Type GDOObjectSetOfType = defined(
    object_form, "GDOObject", "GDOObjectSetOf",
    object_functions<GDOObjectSetOfType, asn1_GDOObjectSetOf_d, asn1_GDOObjectSetOf_free>,
    object_description<asn1_GDOObjectSetOf_d, asn1_GDOObjectSetOf_e, asn1_GDOObjectSetOf_free>);
constinit const Type GDOObjectSetOfSetOfType =
    defined(object_form, "GDOObject", "GDOObjectSetOfSetOf",
            object_functions<GDOObjectSetOfSetOfType, asn1_GDOObjectSetOfSetOf_d,
                             asn1_GDOObjectSetOfSetOf_free>,
            object_description<asn1_GDOObjectSetOfSetOf_d, asn1_GDOObjectSetOfSetOf_e,
                               asn1_GDOObjectSetOfSetOf_free>);

}  // namespace asn1

namespace {
using PlainCodec = Codec<GDOObjectSetOfType, GDOObject, tag::sequence>;
using NestedSetCodec = Codec<GDOObjectSetOfSetOfType, GDOObject, tag::sequence>;
}  // namespace

// clang-format off

// GDO ::= SEQUENCE {
//   root  GDOObject,
//   set1  GDOObject,
//   set2  GDOObject,
//   set3  GDOObject,
//   set4  GDOObject OPTIONAL }
using GDOTable = ClosedWithFields<Sequence<GDO,
    Required<&GDO::root, PlainCodec>,
    Required<&GDO::set1, NestedSetCodec>,
    Required<&GDO::set2, NestedSetCodec>,
    Required<&GDO::set3, NestedSetCodec>,
    Optional<&GDO::set4, NestedSetCodec>>>;
EXPORT(GDO, GDOTable, NEW, DECODER, ENCODER, FREE)
