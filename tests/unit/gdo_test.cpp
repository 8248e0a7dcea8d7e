// Tests global data objects: the three roles, both kinds of place, attributes, and objects inside
// objects.
#include "nest.h"
#include "records.h"

namespace gdo_test {

namespace {

using namespace support;

const RecordFamily<GDOObject> plain = {asn1_GDOObject_new, asn1_GDOObjectSetOf_free,
                                       asn1_GDOObjectSetOf_e, asn1_GDOObjectSetOf_d, nullptr};
const RecordFamily<GDOObject> nested_set = {asn1_GDOObject_new, asn1_GDOObjectSetOfSetOf_free,
                                            asn1_GDOObjectSetOfSetOf_e, asn1_GDOObjectSetOfSetOf_d,
                                            nullptr};
const RecordFamily<GDO> cards = {asn1_GDO_new, asn1_GDO_free, asn1_GDO_e, asn1_GDO_d, nullptr};
using Object = Held<GDOObject>;

// ---- octets -------------------------------------------------------------------------------------

const uint8_t container_ids[] = {0x10, 0x11, 0x12, 0x13, 0x14, 0x21};
const Bytes leaf = hex("30 07 06 01 05 04 02 41 42");
const Bytes leaf_c = hex("30 06 06 01 06 04 01 43");
const Bytes attribute = hex("30 09 06 04 78 56 34 12 04 01 AA");

Bytes set(const Bytes &content) { return element(0x31, content); }
Bytes object(uint8_t id, const Bytes &content) {
  return sequence(hex("06 01") + Bytes{id} + content);
}
Bytes container(const Bytes &wrapped) { return object(0x10, element(4, wrapped)); }
Bytes holder(const Bytes &attributes) { return object(0x20, element(3, set(attributes))); }
Bytes indefinite(uint8_t tag, const Bytes &content) {
  return Bytes{tag, 0x80} + content + hex("00 00");
}

// ---- records ------------------------------------------------------------------------------------

OctetString *string(std::string_view octets) {
  return asn1_ASN1String_new(static_cast<uint32_t>(octets.size()), octets.data());
}

GDOObject *new_leaf(unsigned long id, std::string_view octets) {
  GDOObject *o = asn1_GDOObject_new();
  o->id = id;
  o->value = string(octets);
  return o;
}

template <class... Elements>
List *list_of(Elements *...elements) {
  List *list = List_new(0);
  (List_append(list, elements, 0), ...);
  return list;
}

GDOObject *new_holder_of(unsigned long id, List *children) {
  GDOObject *o = asn1_GDOObject_new();
  o->id = id;
  o->children = children;
  return o;
}

Object at_plain_place(GDOObject *o) { return {o, asn1_GDOObjectSetOf_free}; }
Object at_nested_set_place(GDOObject *o) { return {o, asn1_GDOObjectSetOfSetOf_free}; }

const GDOObject *child(const GDOObject *o, int32_t index) {
  return static_cast<const GDOObject *>(List_get(o->children, index));
}
const List *inner_list(const GDOObject *o, int32_t index) {
  return static_cast<const List *>(List_get(o->children, index));
}

template <class T>
void expect_kept(const RecordFamily<T> &family, const Bytes &octets) {
  EXPECT_EQ(octets, encoded(family, decoded(family, octets)));
}

void expect_leaf(unsigned long id, std::string_view octets, const GDOObject *o) {
  ASSERT_NE(nullptr, o);
  EXPECT_EQ(id, o->id);
  ASSERT_NE(nullptr, o->value);
  EXPECT_EQ(text(octets), value(o->value));
  EXPECT_EQ(nullptr, o->children);
}

// ---- the record ---------------------------------------------------------------------------------

TEST(GdoObject, NewRecordIsZero) {
  expect_new_record_is_zero(plain);
  expect_new_record_is_zero(nested_set);
}

TEST(GdoObject, FreeTakesHalfFilledRecords) {
  at_plain_place(new_leaf(5, ""));
  at_plain_place(new_holder_of(0x10, nullptr));
  at_nested_set_place(new_holder_of(0x10, nullptr));
  at_nested_set_place(new_holder_of(0x10, List_new(0)));
  at_nested_set_place(new_holder_of(0x20, nullptr));
}

TEST(GdoObject, FreeOfAPlainPlaceReleasesValueAndObjects) {
  GDOObject *o = new_holder_of(0x10, list_of(new_leaf(5, "a"), new_leaf(6, "b")));
  o->value = string("both");
  at_plain_place(o);
}

TEST(GdoObject, FreeOfANestedSetPlaceReleasesValueAndListsOfObjects) {
  List *first = list_of(new_leaf(5, "a"), new_holder_of(0x10, list_of(new_leaf(6, "b"))));
  GDOObject *o = new_holder_of(0x10, list_of(first, List_new(0)));
  o->value = string("both");
  at_nested_set_place(o);
}

TEST(GdoObject, FreeOfANestedSetPlaceReleasesListsWhateverTheRoleOfALeaf) {
  // The identifier of the record is not set yet, or is not that of a container.
  for (const unsigned long id : {0UL, 0x05UL, 0x110UL, 0x120UL}) {
    at_nested_set_place(new_holder_of(id, list_of(list_of(new_leaf(5, "a")), List_new(0))));
  }
}

TEST(GdoObject, FreeOfANestedSetPlaceReleasesTheAttributesOfAHolderAsAttributes) {
  at_nested_set_place(new_holder_of(0x20, list_of(new_leaf(0x12345678, "a"), new_leaf(1, "b"))));
  decoded(nested_set, holder(attribute + attribute));
}

// ---- the worked encodings -----------------------------------------------------------------------

TEST(GdoEncoding, ALeaf) {
  EXPECT_EQ(leaf, encoded(plain, at_plain_place(new_leaf(5, "AB"))));
  EXPECT_EQ(leaf, encoded(nested_set, at_nested_set_place(new_leaf(5, "AB"))));
  expect_leaf(5, "AB", decoded(plain, leaf).get());
  expect_leaf(5, "AB", decoded(nested_set, leaf).get());
}

TEST(GdoEncoding, AContainerAtAPlainPlace) {
  const Bytes octets = hex("30 10 06 01 10 04 0B 31 09 30 07 06 01 05 04 02 41 42");
  EXPECT_EQ(octets,
            encoded(plain, at_plain_place(new_holder_of(0x10, list_of(new_leaf(5, "AB"))))));
  const Object o = decoded(plain, octets);
  EXPECT_EQ(0x10U, o->id);
  EXPECT_EQ(nullptr, o->value);
  ASSERT_EQ(1, List_len(o->children));
  expect_leaf(5, "AB", child(o.get(), 0));
}

TEST(GdoEncoding, AContainerAtANestedSetPlace) {
  const Bytes octets = hex("30 12 06 01 10 04 0D 31 0B 31 09 30 07 06 01 05 04 02 41 42");
  EXPECT_EQ(octets, encoded(nested_set, at_nested_set_place(new_holder_of(
                                            0x10, list_of(list_of(new_leaf(5, "AB")))))));
  const Object o = decoded(nested_set, octets);
  ASSERT_EQ(1, List_len(o->children));
  ASSERT_EQ(1, List_len(inner_list(o.get(), 0)));
  expect_leaf(5, "AB", static_cast<GDOObject *>(List_get(inner_list(o.get(), 0), 0)));
}

/// The encoding of the attribute 0x12345678 with the value AA: its identifier is as wide as a word.
const Bytes written_attribute =
    sizeof(unsigned long) == 8 ? hex("30 0D 06 08 78 56 34 12 00 00 00 00 04 01 AA") : attribute;
const Bytes written_holder = sizeof(unsigned long) == 8
                                 ? hex("30 16 06 01 20 03 11 31 0F") + written_attribute
                                 : hex("30 12 06 01 20 03 0D 31 0B") + written_attribute;

TEST(GdoEncoding, AnAttributeHolderAtEitherPlace) {
  const Object o = at_plain_place(new_holder_of(0x20, list_of(new_leaf(0x12345678, "\xAA"))));
  EXPECT_EQ(written_holder, encoded(plain, o));
  EXPECT_EQ(written_holder, encoded(nested_set, o));
}

TEST(GdoEncoding, TheAttributeThatIsReadHasAnIdentifierOfFourOctets) {
  for (const auto &family : {plain, nested_set}) {
    const Object o = decoded(family, holder(attribute));
    EXPECT_EQ(0x20U, o->id);
    EXPECT_EQ(nullptr, o->value);
    ASSERT_EQ(1, List_len(o->children));
    expect_leaf(0x12345678, "\xAA", child(o.get(), 0));
    EXPECT_EQ(written_holder, encoded(family, o));
  }
}

TEST(GdoEncoding, AnAttributeIsReadBackOnlyWhereAWordHasFourOctets) {
  if (sizeof(unsigned long) == 4) {
    expect_kept(plain, written_holder);
  } else {
    expect_refused(plain, written_holder);
  }
}

TEST(GdoEncoding, AnIdentifierWithItsTopBitSpreadsThroughAWiderWord) {
  const Object o = decoded(plain, holder(hex("30 08 06 04 21 43 65 87 04 00")));
  ASSERT_EQ(1, List_len(o->children));
  const unsigned long id = sizeof(unsigned long) == 8 ? ~0UL - 0x789ABCDEUL : 0x87654321UL;
  EXPECT_EQ(id, child(o.get(), 0)->id);
  const Bytes octets = sizeof(unsigned long) == 8 ? hex("06 08 21 43 65 87 FF FF FF FF 04 00")
                                                  : hex("06 04 21 43 65 87 04 00");
  EXPECT_EQ(holder(sequence(octets)), encoded(plain, o));
}

TEST(GdoEncoding, AttributesKeepTheirOrder) {
  const Bytes second = hex("30 08 06 04 01 00 00 00 04 00");
  const Object o = decoded(plain, holder(second + attribute + second));
  ASSERT_EQ(3, List_len(o->children));
  EXPECT_EQ(1U, child(o.get(), 0)->id);
  EXPECT_EQ(0x12345678U, child(o.get(), 1)->id);
  EXPECT_EQ(1U, child(o.get(), 2)->id);
}

// ---- roles --------------------------------------------------------------------------------------

TEST(GdoRole, FollowsFromTheIdentifierInTheEncoder) {
  for (unsigned id = 0; id < 0x100; ++id) {
    SCOPED_TRACE(id);
    const bool is_container = (id >= 0x10 && id <= 0x14) || id == 0x21;
    GDOObject *record = new_leaf(id, "A");
    record->children = List_new(0);
    const Object o = at_plain_place(record);
    const Bytes content = id == 0x20     ? hex("03 02 31 00")
                          : is_container ? hex("04 02 31 00")
                                         : hex("04 01 41");
    EXPECT_EQ(object(static_cast<uint8_t>(id), content), encoded(plain, o));
    EXPECT_EQ(object(static_cast<uint8_t>(id), content), encoded(nested_set, o));
  }
}

TEST(GdoRole, FollowsFromTheIdentifierInTheDecoder) {
  for (unsigned id = 0; id < 0x100; ++id) {
    SCOPED_TRACE(id);
    const bool is_leaf = !((id >= 0x10 && id <= 0x14) || id == 0x20 || id == 0x21);
    for (const auto &family : {plain, nested_set}) {
      const Object o = decoded(family, object(static_cast<uint8_t>(id), hex("04 02 31 00")));
      ASSERT_NE(nullptr, o);
      EXPECT_EQ(id, o->id);
      if (is_leaf) {
        expect_leaf(id, std::string_view("1\0", 2), o.get());
      } else {
        EXPECT_EQ(nullptr, o->value);
        ASSERT_NE(nullptr, o->children);
        EXPECT_EQ(0, List_len(o->children));
      }
    }
    const Bytes under_bit_string = object(static_cast<uint8_t>(id), hex("03 02 31 00"));
    if (id == 0x20) {
      decoded(plain, under_bit_string);
    } else {
      expect_refused(plain, under_bit_string);
    }
  }
}

TEST(GdoRole, IsJudgedOnTheFullIdentifierAndOneOctetOfItIsWritten) {
  for (const unsigned long id : {0x120UL, 0x110UL, 0x121UL, 0xFFFFFF14UL}) {
    const auto octet = static_cast<uint8_t>(id);
    const Bytes octets = object(octet, hex("04 01 41"));
    EXPECT_EQ(octets, encoded(plain, at_plain_place(new_leaf(id, "A"))));
    expect_refused(plain, octets);  // the reader takes it for something else
  }
  EXPECT_EQ(object(0x05, hex("04 01 41")), encoded(plain, at_plain_place(new_leaf(0x205, "A"))));
}

TEST(GdoRole, AllContainersHoldObjects) {
  for (const uint8_t id : container_ids) {
    expect_kept(plain, object(id, element(4, set(leaf + leaf_c))));
    expect_kept(nested_set, object(id, element(4, set(set(leaf) + set(leaf_c)))));
  }
}

// ---- places -------------------------------------------------------------------------------------

TEST(GdoPlace, AnEmptyContainerAtAPlainPlaceHasAnEmptyList) {
  const Bytes octets = hex("30 07 06 01 10 04 02 31 00");
  const Object o = decoded(plain, octets);
  ASSERT_NE(nullptr, o->children);
  EXPECT_EQ(0, List_len(o->children));
  EXPECT_EQ(octets, encoded(plain, o));
}

TEST(GdoPlace, AnEmptyOuterListAndAnEmptyInnerListAreDifferent) {
  const Object empty = decoded(nested_set, container(hex("31 00")));
  EXPECT_EQ(0, List_len(empty->children));
  expect_kept(nested_set, container(hex("31 00")));
  const Object one = decoded(nested_set, container(hex("31 02 31 00")));
  ASSERT_EQ(1, List_len(one->children));
  EXPECT_EQ(0, List_len(inner_list(one.get(), 0)));
  expect_kept(nested_set, container(hex("31 02 31 00")));
}

TEST(GdoPlace, InnerListsKeepTheirOrder) {
  expect_kept(nested_set, container(set(set(leaf_c + leaf) + hex("31 00") + set(leaf))));
}

TEST(GdoPlace, ObjectsInsideAnySetStandAtAPlainPlace) {
  const Bytes inner = container(set(leaf));
  expect_kept(plain, container(set(inner)));
  expect_kept(nested_set, container(set(set(inner))));
  // A container inside a set of sets holds a plain set: it reads a set of sets as a flat list.
  const Object o = decoded(nested_set, container(set(set(container(set(set(leaf)))))));
  EXPECT_EQ(container(set(set(inner))), encoded(nested_set, o));
}

TEST(GdoPlace, ASetOfSetsAtAPlainPlaceIsReadAsOneFlatList) {
  const Object o = decoded(plain, container(set(set(leaf + leaf_c) + set(leaf_c))));
  ASSERT_EQ(3, List_len(o->children));
  expect_leaf(5, "AB", child(o.get(), 0));
  expect_leaf(6, "C", child(o.get(), 1));
  expect_leaf(6, "C", child(o.get(), 2));
  EXPECT_EQ(container(set(leaf + leaf_c + leaf_c)), encoded(plain, o));
}

TEST(GdoPlace, APlainSetAtANestedSetPlaceFails) {
  expect_refused(nested_set, container(set(leaf)));
}

TEST(GdoPlace, AHolderIsTheSameAtBothPlaces) {
  for (const auto &family : {plain, nested_set}) {
    for (const char *wrapper : {"03 02 31 00", "04 02 31 00"}) {
      EXPECT_EQ(hex("30 07 06 01 20 03 02 31 00"),
                encoded(family, decoded(family, object(0x20, hex(wrapper)))));
    }
  }
}

TEST(GdoPlace, TheFlagSaysWhichPlace) {
  const Bytes octets = container(set(set(leaf)));
  const Input input(octets);
  for (const uint32_t flag : {1U, 2U, 0x100U}) {
    GDOObject *place = nullptr;
    // The implicit tag has no meaning.
    EXPECT_EQ(input.end(), asn1_GDOObject_d(input.z(), input.end(), 0xA5, flag, &place, 0));
    const Object o = at_nested_set_place(place);
    EXPECT_EQ(octets.size(), asn1_GDOObject_e(nullptr, flag, o.get()));
  }
  GDOObject *place = nullptr;
  EXPECT_EQ(input.end(), asn1_GDOObject_d(input.z(), input.end(), 0xA5, 0, &place, 0));
  const Object o = at_plain_place(place);
  EXPECT_EQ(container(set(leaf)).size(), asn1_GDOObject_e(nullptr, 0, o.get()));
}

TEST(GdoPlace, AnImplicitTagHasNoMeaning) {
  for (const uint32_t impl_tag : {0x80U, 0xA5U, 0x31U, 0x04U, 0xFFFFFFFFU}) {
    SCOPED_TRACE(impl_tag);
    expect_leaf(5, "AB", decoded(plain, leaf, 0, impl_tag).get());
    expect_leaf(5, "AB", decoded(nested_set, leaf, 0, impl_tag).get());
    EXPECT_EQ(1, List_len(decoded(plain, container(set(leaf)), 0, impl_tag)->children));
    EXPECT_EQ(1, List_len(decoded(nested_set, container(set(set(leaf))), 0, impl_tag)->children));
    // It is not looked for, either.
    Bytes tagged = leaf;
    tagged[0] = static_cast<uint8_t>(impl_tag | 0x20);
    if (tagged[0] == 0x31) continue;  // a SET may stand in front of an object
    GDOObject before = {};
    EXPECT_EQ(nullptr, left_by_refusal(plain.decode, tagged, &before, impl_tag));
    EXPECT_EQ(nullptr, left_by_refusal(nested_set.decode, tagged, &before, impl_tag));
  }
}

// ---- the object decoder -------------------------------------------------------------------------

TEST(GdoObjectDecoder, SkipsAnyHeadersAheadOfTheIdentifier) {
  const Bytes content = hex("06 01 05 04 02 41 42");
  for (const Bytes &octets :
       {element(0x30, content), element(0x31, content), sequence(sequence(content)),
        sequence(set(content)), set(sequence(content)), set(set(sequence(set(content))))}) {
    expect_leaf(5, "AB", decoded(plain, octets).get());
    expect_leaf(5, "AB", decoded(nested_set, octets).get());
  }
}

TEST(GdoObjectDecoder, OnlyTheInnermostLengthCounts) {
  const Bytes content = hex("06 01 05 04 02 41 42");
  for (const char *headers : {"30 02 30 07", "31 01 30 07", "30 09 31 81 07", "30 00 30 07",
                              "30 84 80 00 00 00 30 07", "30 84 FF FF FF FF 31 07"}) {
    SCOPED_TRACE(headers);
    expect_leaf(5, "AB", decoded(plain, hex(headers) + content).get());
  }
  for (const char *headers : {"30 09 30 00", "30 09 30 06", "30 09 30 02", "30 84 80 00 00 00"}) {
    SCOPED_TRACE(headers);
    expect_refused(plain, hex(headers) + content);
  }
}

TEST(GdoObjectDecoder, SkipsAnyNumberOfHeadersOnASmallStack) {
  Nest nest(hex("06 01 05 04 02 41 42"));
  for (int i = 0; i < 50'000; ++i) nest.wrap(0x30).wrap(0x31);
  const Bytes octets = nest.octets();
  on_small_stack([&] { expect_leaf(5, "AB", decoded(plain, octets).get()); });
}

TEST(GdoObjectDecoder, RefusesWhatDoesNotStartWithAHeader) {
  for (const char *octets : {"", "06 01 05 04 02 41 42", "10 07 06 01 05 04 02 41 42",
                             "11 07 06 01 05 04 02 41 42", "A0 07 06 01 05 04 02 41 42", "00 00",
                             "30 07 04 01 05 04 02 41 42", "30 09 05 00 06 01 05 04 02 41 42"}) {
    SCOPED_TRACE(octets);
    expect_refused(plain, hex(octets));
  }
}

TEST(GdoObjectDecoder, RefusesAHeaderThatIsCutOrIndefinite) {
  for (const char *octets :
       {"30", "30 08 06 01 05 04 02 41 42", "30 85", "30 80 06 01 05 04 02 41 42 00 00",
        "30 07 30 80 06 01 05 04 00 00 00", "30 07 30 08 06 01 05 04 01 41"}) {
    SCOPED_TRACE(octets);
    expect_refused(plain, hex(octets));
  }
}

TEST(GdoObjectDecoder, RefusesAnEmptyObject) {
  for (const char *octets : {"30 00", "31 00", "30 02 31 00", "30 84 80 00 00 00"}) {
    SCOPED_TRACE(octets);
    expect_refused(plain, hex(octets));
    expect_refused(nested_set, hex(octets));
  }
  expect_refused(plain, hex("30 00 06 01 05 04 02 41 42"));
}

TEST(GdoObjectDecoder, TheIdentifierHasExactlyOneOctet) {
  for (const char *octets : {"30 06 06 00 04 02 41 42", "30 08 06 02 01 05 04 02 41 42",
                             "30 02 06 01", "30 03 06 01 05", "30 02 06 80"}) {
    SCOPED_TRACE(octets);
    expect_refused(plain, hex(octets));
  }
  // A longer form of the length is the same length.
  expect_leaf(5, "AB", decoded(plain, hex("30 08 06 81 01 05 04 02 41 42")).get());
}

TEST(GdoObjectDecoder, ALeafHoldsAnOctetStringOfAnyForm) {
  for (const char *content : {"04 02 41 42", "04 81 02 41 42", "24 06 04 01 41 04 01 42",
                              "24 80 04 02 41 42 00 00", "04 80 41 42 00 00"}) {
    SCOPED_TRACE(content);
    const Object o = decoded(plain, object(5, hex(content)));
    expect_leaf(5, "AB", o.get());
    EXPECT_EQ(leaf, encoded(plain, o));
  }
  expect_leaf(5, "", decoded(plain, hex("30 05 06 01 05 04 00")).get());
}

TEST(GdoObjectDecoder, ALeafTakesNothingElse) {
  for (const char *content :
       {"", "03 02 41 42", "0C 02 41 42", "80 02 41 42", "31 00", "04", "04 84 80 00 00 00"}) {
    SCOPED_TRACE(content);
    expect_refused(plain, object(5, hex(content)));
  }
  // Its octets are before the end of the input, but past the end of the object.
  expect_refused(plain, hex("30 06 06 01 05 04 02 41 42"));
}

TEST(GdoObjectDecoder, AContainerHasAPrimitiveDefiniteOctetString) {
  for (const char *content : {"", "24 02 31 00", "04 80 31 00 00 00", "03 02 31 00", "05 02 31 00",
                              "31 00", "04 00", "04 84 80 00 00 00 31 00", "04 03 31 00"}) {
    SCOPED_TRACE(content);
    expect_refused(plain, object(0x10, hex(content)));
    expect_refused(nested_set, object(0x10, hex(content)));
  }
}

TEST(GdoObjectDecoder, AHolderHasAPrimitiveDefiniteBitStringOrOctetString) {
  for (const char *content :
       {"", "23 02 31 00", "24 02 31 00", "03 80 31 00 00 00", "04 80 31 00 00 00", "05 02 31 00",
        "83 02 31 00", "31 00", "03 00", "03 03 00 31 00", "03 84 80 00 00 00 31 00"}) {
    SCOPED_TRACE(content);
    expect_refused(plain, object(0x20, hex(content)));
    expect_refused(nested_set, object(0x20, hex(content)));
  }
}

TEST(GdoObjectDecoder, ASetInsideAWrapperMayBeIndefiniteAtItsEnd) {
  EXPECT_EQ(container(set(leaf)),
            encoded(plain, decoded(plain, container(indefinite(0x31, leaf)))));
  EXPECT_EQ(container(set(set(leaf))),
            encoded(nested_set,
                    decoded(nested_set, container(indefinite(0x31, indefinite(0x31, leaf))))));
  EXPECT_EQ(
      1, List_len(decoded(plain, object(0x20, element(3, indefinite(0x31, attribute))))->children));
  expect_refused(plain, container(indefinite(0x31, leaf) + hex("05 00")));
  expect_refused(plain, container(hex("31 80") + leaf));
  expect_refused(nested_set, container(hex("31 80") + set(leaf)));
}

TEST(GdoObjectDecoder, LeavesWhatStandsBehindTheContentUnread) {
  expect_leaf(5, "AB", decoded(plain, hex("30 09 06 01 05 04 02 41 42 05 00"), 2).get());
  decoded(plain, container(set(leaf) + hex("05 00 01")), 3);
  decoded(plain, object(0x10, element(4, set(leaf)) + hex("05 00")), 2);
  decoded(nested_set, object(0x10, element(4, set(set(leaf)) + hex("05")) + hex("05 00")), 3);
  decoded(plain, object(0x20, element(3, set(attribute) + hex("05 00"))), 2);
}

TEST(GdoObjectDecoder, WhatAChildLeavesIsReadAsTheNextChild) {
  const Object o = decoded(plain, container(set(object(5, hex("04 02 41 42") + leaf_c))));
  ASSERT_EQ(2, List_len(o->children));
  expect_leaf(5, "AB", child(o.get(), 0));
  expect_leaf(6, "C", child(o.get(), 1));
  expect_refused(plain, container(set(object(5, hex("04 02 41 42 05 00")))));
}

TEST(GdoObjectDecoder, ABadChildReleasesTheOthers) {
  const Bytes bad = hex("30 03 06 01 05");
  expect_refused(plain, container(set(leaf + container(set(leaf)) + bad)));
  expect_refused(nested_set, container(set(set(leaf) + set(leaf_c + bad))));
  expect_refused(nested_set, container(set(set(leaf) + leaf)));
  expect_refused(plain, holder(attribute + bad));
}

TEST(GdoObjectDecoder, EveryCutIsRefused) {
  for (const Bytes &octets : {leaf, container(set(leaf + container(set(leaf)))), holder(attribute),
                              container(set(set(leaf) + set(leaf)))}) {
    for (size_t size = 0; size < octets.size(); ++size) {
      const Bytes cut(octets.begin(), octets.begin() + static_cast<long>(size));
      expect_refused(plain, cut);
      expect_refused(nested_set, cut);
      // With an outer length that fits.
      if (size >= 2) expect_refused(plain, sequence(Bytes(cut.begin() + 2, cut.end())));
    }
  }
}

// ---- attributes ---------------------------------------------------------------------------------

TEST(GdoAttribute, TheIdentifierHasExactlyFourOctets) {
  for (const char *octets :
       {"30 05 06 00 04 01 AA", "30 08 06 03 56 34 12 04 01 AA",
        "30 0A 06 05 78 56 34 12 00 04 01 AA", "30 0D 06 08 78 56 34 12 00 00 00 00 04 01 AA",
        "30 09 26 04 78 56 34 12 04 01 AA", "30 09 02 04 78 56 34 12 04 01 AA",
        "30 09 06 04 78 56 34"}) {
    SCOPED_TRACE(octets);
    expect_refused(plain, holder(hex(octets)));
  }
}

TEST(GdoAttribute, IsASequenceOfDefiniteLengthAndNothingIsSkippedAheadOfIt) {
  for (const Bytes &octets : {hex("30 00"), hex("30 84 80 00 00 00"), sequence(attribute),
                              set(Bytes(attribute.begin() + 2, attribute.end())),
                              hex("30 80 06 04 78 56 34 12 04 01 AA 00 00")}) {
    SCOPED_TRACE(testing::PrintToString(octets));
    expect_refused(plain, holder(octets));
  }
  Bytes primitive = attribute;
  primitive[0] = 0x10;
  decoded(plain, holder(primitive));
}

TEST(GdoAttribute, TheValueIsRequired) {
  for (const char *octets : {"30 06 06 04 78 56 34 12", "30 09 06 04 78 56 34 12 05 01 AA",
                             "30 09 06 04 78 56 34 12 04 02 AA"}) {
    expect_refused(plain, holder(hex(octets)));
  }
  const Object o = decoded(plain, holder(hex("30 0D 06 04 78 56 34 12 24 05 04 01 AA 04 00")));
  expect_leaf(0x12345678, "\xAA", child(o.get(), 0));
}

TEST(GdoAttribute, WhatItLeavesIsReadAsTheNextOne) {
  const Bytes content(attribute.begin() + 2, attribute.end());
  EXPECT_EQ(2, List_len(decoded(plain, holder(sequence(content + attribute)))->children));
  expect_refused(plain, holder(sequence(content + hex("05 00"))));
}

// ---- the object encoder -------------------------------------------------------------------------

TEST(GdoObjectEncoder, WritesAnEmptyValueAndFailsWithoutOne) {
  EXPECT_EQ(hex("30 05 06 01 05 04 00"), encoded(plain, at_plain_place(new_leaf(5, ""))));
  const Object o = at_plain_place(new_holder_of(5, nullptr));
  expect_nothing_written(plain, o.get());
  expect_nothing_written(nested_set, o.get());
}

TEST(GdoObjectEncoder, TakesNoListOfObjectsForAnEmptyOne) {
  for (const auto &family : {plain, nested_set}) {
    EXPECT_EQ(container(hex("31 00")),
              encoded(family, at_plain_place(new_holder_of(0x10, nullptr))));
    EXPECT_EQ(holder({}), encoded(family, at_plain_place(new_holder_of(0x20, nullptr))));
  }
  const Object lists = at_nested_set_place(new_holder_of(0x10, List_new(0)));
  List_append(lists->children, nullptr, 0);
  EXPECT_EQ(container(hex("31 02 31 00")), encoded(nested_set, lists));
}

TEST(GdoObjectEncoder, FailsWhereAChildFails) {
  const auto no_value = [] { return new_holder_of(5, nullptr); };
  const Object flat = at_plain_place(new_holder_of(0x10, list_of(new_leaf(5, "AB"), no_value())));
  expect_nothing_written(plain, flat.get());
  const Object deep =
      at_plain_place(new_holder_of(0x10, list_of(new_holder_of(0x21, list_of(no_value())))));
  expect_nothing_written(plain, deep.get());
  const Object sets = at_nested_set_place(
      new_holder_of(0x10, list_of(list_of(new_leaf(5, "AB")), list_of(no_value()))));
  expect_nothing_written(nested_set, sets.get());
  const Object attributes =
      at_plain_place(new_holder_of(0x20, list_of(new_leaf(1, "A"), no_value())));
  expect_nothing_written(plain, attributes.get());
  expect_nothing_written(nested_set, attributes.get());
}

TEST(GdoObjectEncoder, WritesLongLengths) {
  const std::string long_text(300, 'x');
  const Bytes long_leaf = object(5, element(4, text(long_text)));
  EXPECT_EQ(hex("30 82 01 33 06 01 05 04 82 01 2C") + text(long_text), long_leaf);
  const Object o = at_plain_place(new_holder_of(0x10, list_of(new_leaf(5, long_text))));
  EXPECT_EQ(container(set(long_leaf)), encoded(plain, o));
  expect_kept(plain, container(set(long_leaf)));
}

// ---- GDO ----------------------------------------------------------------------------------------

const Bytes root = object(0x11, element(4, set(leaf)));
const Bytes set1 = object(0x12, element(4, set(set(leaf))));
const Bytes set2 = object(0x13, element(4, set(set(leaf_c) + set(leaf))));
const Bytes set3 = object(0x14, element(4, set({})));
const Bytes set4 = object(0x21, element(4, set(set({}))));
const Bytes four = root + set1 + set2 + set3;

TEST(Gdo, NewRecordIsZero) { expect_new_record_is_zero(cards); }

TEST(Gdo, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(cards, four + set4);
  expect_huge_lengths_refused(cards, four + set4);
  // The last object is optional.
  expect_every_cut_refused(cards, four + set4, {four.size()});
}

TEST(Gdo, KeepsAllFieldsInOrder) {
  const auto record = decoded(cards, sequence(four + set4));
  EXPECT_EQ(0x11U, record->root->id);
  EXPECT_EQ(0x12U, record->set1->id);
  EXPECT_EQ(0x13U, record->set2->id);
  EXPECT_EQ(0x14U, record->set3->id);
  EXPECT_EQ(0x21U, record->set4->id);
  expect_leaf(5, "AB", child(record->root, 0));
  EXPECT_EQ(2, List_len(record->set2->children));
  EXPECT_EQ(1, List_len(inner_list(record->set2, 1)));
  expect_kept(cards, sequence(four + set4));
}

TEST(Gdo, TheFifthObjectIsOptional) {
  const auto record = decoded(cards, sequence(four));
  EXPECT_EQ(nullptr, record->set4);
  expect_kept(cards, sequence(four));
}

TEST(Gdo, AFifthObjectThatStartsAsASetIsLeftUnread) {
  Bytes fifth = set4;
  fifth[0] = 0x31;
  const auto record = decoded(cards, sequence(four + fifth), fifth.size());
  ASSERT_NE(nullptr, record);
  EXPECT_EQ(nullptr, record->set4);
  EXPECT_EQ(sequence(four), encoded(cards, record));
  // The four other objects may begin so.
  for (size_t start : {size_t{0}, root.size(), root.size() + set1.size()}) {
    Bytes octets = four;
    octets[start] = 0x31;
    EXPECT_EQ(sequence(four), encoded(cards, decoded(cards, sequence(octets))));
  }
}

TEST(Gdo, OtherOctetsBehindTheFourAreLeftUnread) {
  for (const char *field : {"10 00", "A0 00", "05 00", "FF"}) {
    const auto record = decoded(cards, sequence(four + hex(field)), hex(field).size());
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(nullptr, record->set4);
  }
  decoded(cards, sequence(four + set4 + set4), set4.size());
  expect_refused(cards, sequence(four + hex("30 00")));
}

TEST(Gdo, AnyRoleMayStandAtAnyPlace) {
  expect_kept(cards, sequence(leaf + leaf + leaf_c + leaf + leaf_c));
  const Bytes holders = holder(attribute);
  const auto record = decoded(cards, sequence(holders + holders + leaf + holders + holders));
  ASSERT_NE(nullptr, record);
  EXPECT_EQ(sequence(written_holder + written_holder + leaf + written_holder + written_holder),
            encoded(cards, record));
}

TEST(Gdo, TheRootStandsAtAPlainPlaceAndTheSetsDoNot) {
  const Bytes flat = container(set(leaf));
  const Bytes sets = container(set(set(leaf)));
  const auto record = decoded(cards, sequence(sets + sets + sets + sets));
  EXPECT_EQ(sequence(flat + sets + sets + sets), encoded(cards, record));
  expect_refused(cards, sequence(flat + flat + sets + sets));
  expect_refused(cards, sequence(flat + sets + flat + sets));
  expect_refused(cards, sequence(flat + sets + sets + flat));
  expect_refused(cards, sequence(flat + sets + sets + sets + flat));
}

TEST(Gdo, LessThanFourObjectsFail) {
  expect_refused(cards, hex("30 00"));
  expect_refused(cards, sequence(root));
  expect_refused(cards, sequence(root + set1));
  expect_refused(cards, sequence(root + set1 + set2));
}

TEST(GdoEncoder, FailsWhereAnObjectFails) {
  for (GDOObject *GDO::*field : {&GDO::root, &GDO::set1, &GDO::set2, &GDO::set3, &GDO::set4}) {
    const auto record = decoded(cards, sequence(leaf + leaf + leaf + leaf + leaf));
    clear((record.get()->*field)->value, asn1_OctetString_free);
    expect_nothing_written(cards, record.get());
  }
}

TEST(GdoEncoder, AnObjectThatFailsEndsItAheadOfOneThatIsMissing) {
  const auto record = decoded(cards, sequence(leaf + leaf + leaf + leaf));
  clear(record->root->value, asn1_OctetString_free);
  clear(record->set1, asn1_GDOObjectSetOfSetOf_free);
  expect_nothing_written(cards, record.get());
}

TEST(Gdo, FreeTakesAHalfFilledRecord) {
  const auto record = created(cards);
  record->root = new_holder_of(0x10, list_of(new_leaf(5, "AB")));
  record->set3 = new_holder_of(0x10, list_of(list_of(new_leaf(5, "AB"))));
}

// ---- objects inside objects ---------------------------------------------------------------------

/// Returns a leaf inside so many containers.
Bytes nested(int levels) {
  Nest nest(leaf);
  for (int i = 0; i < levels; ++i) nest.wrap(0x31).wrap(4).before(hex("06 01 10")).wrap(0x30);
  return nest.octets();
}

/// Returns whether an object was decoded. Checks that it can then be written, copied and released.
bool handled(const RecordFamily<GDOObject> &family, const Bytes &input) {
  const auto [consumed, record] = decode(family.decode, input);
  EXPECT_EQ(consumed >= 0, record != nullptr);
  if (record == nullptr) return false;
  EXPECT_EQ(static_cast<long>(input.size()), consumed);
  EXPECT_TRUE(input == encode(family.encode, record));
  family.free(record);
  return true;
}

/// Returns how many of these inputs were decoded, up to the first that was not.
size_t handled_of(const std::vector<int> &levels) {
  size_t count = 0;
  for (const int n : levels) {
    SCOPED_TRACE(n);
    const Bytes flat = nested(n);
    if (!handled(plain, flat)) break;
    handled(nested_set, container(set(set(flat))));
    ++count;
  }
  return count;
}

// A sanitizer takes more stack for each level, and more time.
#ifdef ORVELASN1_TESTS_SANITIZED
constexpr int deepest = 1'000;
#else
constexpr int deepest = 3'000;
#endif

TEST(NestedObject, OneInsideAnotherIsKept) {
  EXPECT_EQ(hex("30 10 06 01 10 04 0B 31 09 30 07 06 01 05 04 02 41 42"), nested(1));
  expect_kept(plain, nested(3));
}

TEST(NestedObject, WhatIsDecodedOnTheMainThreadCanBeWrittenAndReleased) {
  EXPECT_LE(2U, handled_of({100, 500, deepest}));
}

TEST(NestedObject, WhatIsDecodedOnASmallStackCanBeWrittenAndReleased) {
  on_small_stack([] { EXPECT_LE(1U, handled_of({10, 100, deepest})); });
}

TEST(NestedObject, DeeperThanTheStackIsRefused) {
  const Bytes input = nested(30'000);
  on_small_stack([&] {
    expect_refused(plain, input);
    expect_refused(nested_set, container(set(set(input))));
    expect_refused(cards, sequence(input + leaf + leaf + leaf));
    expect_refused(cards, sequence(leaf + leaf + leaf + container(set(set(input)))));
  });
}

TEST(NestedObject, AnObjectIsDecodedAgainAfterOneThatWasTooDeep) {
  const Bytes input = nested(30'000);
  on_small_stack([&] {
    expect_refused(plain, input);
    expect_kept(plain, nested(10));
  });
}

// ---- sets of sets of anything -------------------------------------------------------------------

/// An element that counts the elements of its kind: C1 and one octet.
struct Number {
  uint8_t octet;

  static inline int alive = 0;
  static inline int releases_of_nothing = 0;
  static inline std::vector<uint32_t> depths;
};

uint32_t number_e(uint8_t **pp, const Number *number) {
  if (number->octet == 0) return 0;
  if (pp != nullptr) {
    *(*pp)++ = 0xC1;
    *(*pp)++ = number->octet;
  }
  return 2;
}

const uint8_t *number_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, Number **place,
                        uint32_t depth) {
  EXPECT_EQ(0U, impl_tag);
  EXPECT_EQ(nullptr, *place);
  Number::depths.push_back(depth);
  if (end - z < 2 || z[0] != 0xC1) return nullptr;
  *place = new Number{z[1]};
  ++Number::alive;
  return z + 2;
}

void number_free(Number *number) {
  number == nullptr ? ++Number::releases_of_nothing : --Number::alive;
  delete number;
}

class SetOfSetOf : public testing::Test {
 protected:
  void SetUp() override {
    Number::alive = 0;
    Number::releases_of_nothing = 0;
    Number::depths.clear();
  }
  void TearDown() override { EXPECT_EQ(0, Number::alive); }

  using Lists = std::vector<Bytes>;

  static void release(List *lists) {
    for (int32_t i = 0; i < List_len(lists); ++i) {
      List_free(static_cast<List *>(List_get(lists, i)), number_free);
    }
    List_free(lists, nullptr);
  }
  using Held = Owned<List, &SetOfSetOf::release>;

  static Held decoded(const Bytes &octets, size_t unread = 0, uint32_t impl_tag = 0) {
    const Input input(octets);
    List *lists = nullptr;
    const uint8_t *next =
        asn1_SetOfSetOf_d(input.z(), input.end(), impl_tag, number_d, number_free, &lists, 0);
    EXPECT_EQ(input.end() - unread, next);
    return Held(lists);
  }

  static Bytes encoded(const List *lists) {
    return encode_with([&](uint8_t **pp) { return asn1_SetOfSetOf_e(pp, lists, number_e); });
  }

  static Lists contents(const List *lists) {
    Lists result;
    for (int32_t i = 0; i < List_len(lists); ++i) {
      const auto *inner = static_cast<const List *>(List_get(lists, i));
      Bytes octets;
      for (int32_t j = 0; j < List_len(inner); ++j) {
        octets.push_back(static_cast<const Number *>(List_get(inner, j))->octet);
      }
      result.push_back(octets);
    }
    return result;
  }

  /// Checks that octets are refused. Returns what the decoder leaves in the place.
  static List *left_by(const Bytes &octets, uint32_t impl_tag = 0) {
    const Input input(octets);
    List *const before = List_new(0);
    List *place = before;
    EXPECT_EQ(nullptr, asn1_SetOfSetOf_d(input.z(), input.end(), impl_tag, number_d, number_free,
                                         &place, 0));
    EXPECT_NE(before, place);
    List_free(before, nullptr);
    return place;
  }
};

TEST_F(SetOfSetOf, KeepsListsAndElementsInOrder) {
  const Bytes octets = hex("31 0C 31 04 C1 02 C1 01 31 00 31 02 C1 03");
  const Held lists = decoded(octets);
  EXPECT_EQ((Lists{{2, 1}, {}, {3}}), contents(lists.get()));
  EXPECT_EQ(octets, encoded(lists.get()));
}

TEST_F(SetOfSetOf, AnEmptyOneIsPresentAndEmpty) {
  const Held none = decoded(hex("31 00"));
  ASSERT_NE(nullptr, none);
  EXPECT_EQ(Lists(), contents(none.get()));
  EXPECT_EQ(hex("31 00"), encoded(none.get()));
  const Held one = decoded(hex("31 02 31 00"));
  EXPECT_EQ(Lists{{}}, contents(one.get()));
  EXPECT_EQ(hex("31 02 31 00"), encoded(one.get()));
}

TEST_F(SetOfSetOf, LeavesWhatFollowsUnread) {
  EXPECT_EQ(Lists{{1}}, contents(decoded(hex("31 04 31 02 C1 01 05 00"), 2).get()));
}

TEST_F(SetOfSetOf, StandsUnderAnImplicitTag) {
  for (const uint32_t impl_tag : {0x82U, 0xA2U, 0x1A2U}) {
    EXPECT_EQ(Lists{{1}}, contents(decoded(hex("A2 04 31 02 C1 01"), 0, impl_tag).get()));
    EXPECT_EQ(Lists{{1}}, contents(decoded(hex("82 04 31 02 C1 01"), 0, impl_tag).get()));
  }
}

TEST_F(SetOfSetOf, BothLevelsMayBeIndefiniteAtTheEndOfTheirRange) {
  for (const char *octets :
       {"31 80 31 02 C1 01 00 00", "31 06 31 80 C1 01 00 00", "31 80 31 80 C1 01 00 00 00 00"}) {
    SCOPED_TRACE(octets);
    EXPECT_EQ(Lists{{1}}, contents(decoded(hex(octets)).get()));
  }
  EXPECT_EQ((Lists{{1}, {2}}), contents(decoded(hex("31 80 31 02 C1 01 31 02 C1 02 00 00")).get()));
  EXPECT_EQ(Lists(), contents(decoded(hex("31 80 00 00")).get()));
  // The end-of-contents is not the last thing in its range.
  EXPECT_EQ(nullptr, left_by(hex("31 80 31 02 C1 01 00 00 05")));
  EXPECT_EQ(nullptr, left_by(hex("31 0A 31 80 C1 01 00 00 31 02 C1 02")));
}

TEST_F(SetOfSetOf, AHeaderThatIsRefusedLeavesAnEmptyList) {
  for (const char *octets : {"", "30 00", "32 00", "A2 00", "31", "31 01", "31 85"}) {
    SCOPED_TRACE(octets);
    const Held left(left_by(hex(octets)));
    ASSERT_NE(nullptr, left);
    EXPECT_EQ(0, List_len(left.get()));
  }
  EXPECT_NE(nullptr, Held(left_by(hex("31 00"), 0xA2)));
}

TEST_F(SetOfSetOf, AFailureBehindTheHeaderReleasesEachElementOnce) {
  for (const char *octets : {
           "31 04 30 02 C1 01",                    // the first inner header
           "31 06 31 02 C1 01 30 00",              // a later one
           "31 0A 31 02 C1 01 31 04 C1 02 C2 03",  // an element
           "31 06 31 02 C1 01 31 05",              // a length
           "31 07 31 02 C1 01 31 01 C1",           // an element that is cut
       }) {
    SCOPED_TRACE(octets);
    EXPECT_EQ(nullptr, left_by(hex(octets)));
    EXPECT_EQ(0, Number::alive);
  }
}

TEST_F(SetOfSetOf, TheEmptySlotOfAnElementThatFailsIsReleasedToo) {
  EXPECT_EQ(nullptr, left_by(hex("31 0A 31 02 C1 01 31 04 C1 02 C2 03")));
  EXPECT_EQ(1, Number::releases_of_nothing);
  // An inner header that is refused has no slot.
  EXPECT_EQ(nullptr, left_by(hex("31 04 30 02 C1 01")));
  EXPECT_EQ(1, Number::releases_of_nothing);
  decoded(hex("31 06 31 02 C1 01 31 00"));
  EXPECT_EQ(1, Number::releases_of_nothing);
}

TEST_F(SetOfSetOf, AMissingEndOfContentsReleasesEachElementOnce) {
  for (const char *octets :
       {"31 80 31 02 C1 01 05 00", "31 80 31 02 C1 01 31 02 C1 02 00 01", "31 80 05 00", "31 80 00",
        "31 80", "31 80 31 80 C1 01 00 00 01 00", "31 80 31 80 C1 01 01 00 00 00"}) {
    SCOPED_TRACE(octets);
    EXPECT_EQ(nullptr, left_by(hex(octets)));
    EXPECT_EQ(0, Number::alive);
  }
}

TEST_F(SetOfSetOf, ALengthWithItsTopBitSetHoldsNothing) {
  EXPECT_EQ(Lists(), contents(decoded(hex("31 84 80 00 00 00 31 00"), 2).get()));
}

TEST_F(SetOfSetOf, TheDecoderNeedsACursorAndAPlace) {
  const Bytes octets = hex("31 00");
  List *place = nullptr;
  EXPECT_EQ(nullptr,
            asn1_SetOfSetOf_d(nullptr, octets.data(), 0, number_d, number_free, &place, 0));
  EXPECT_EQ(nullptr, place);
  EXPECT_EQ(nullptr, asn1_SetOfSetOf_d(octets.data(), octets.data() + 2, 0, number_d, number_free,
                                       nullptr, 0));
}

TEST_F(SetOfSetOf, TheEncoderFailsWhereAnElementFails) {
  const Held lists = decoded(hex("31 08 31 02 C1 01 31 02 C1 00"));
  uint8_t buffer[16] = {};
  uint8_t *cursor = buffer;
  EXPECT_EQ(0U, asn1_SetOfSetOf_e(nullptr, lists.get(), number_e));
  EXPECT_EQ(0U, asn1_SetOfSetOf_e(&cursor, lists.get(), number_e));
  EXPECT_EQ(buffer, cursor);
  EXPECT_EQ(0, buffer[0]);
}

/// An element encoder that counts octets and writes none: the number of them is the element.
uint32_t count_e(uint8_t **, const uint32_t *octets) { return *octets; }

TEST_F(SetOfSetOf, TheEncoderCountsUpTo32Bits) {
  const struct {
    uint32_t first, second, whole;
    const char *header;
  } rows[] = {
      {0x40000000, 0x3FFFFFF4, 0x80000006, "31 84 80 00 00 00"},
      {0x80000000, 0x7FFFFFED, 0xFFFFFFFF, "31 84 FF FF FF F9"},
      {0x80000000, 0x7FFFFFEE, 0, ""},  // the whole does not fit
      {0x80000000, 0x7FFFFFF3, 0, ""},
      {0x80000000, 0x7FFFFFF4, 0, ""},  // nor the lists
      {0xFFFFFFFA, 1, 0, ""},           // nor one of them
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.second);
    uint32_t first = row.first, second = row.second;
    List *const inner[] = {List_new(0), List_new(0)};
    List_append(inner[0], &first, 0);
    List_append(inner[1], &second, 0);
    List *const lists = list_of(inner[0], inner[1]);
    uint8_t buffer[32] = {};
    uint8_t *cursor = buffer;
    EXPECT_EQ(row.whole, asn1_SetOfSetOf_e(nullptr, lists, count_e));
    EXPECT_EQ(row.whole, asn1_SetOfSetOf_e(&cursor, lists, count_e));
    // The header of the whole, and one of each list.
    EXPECT_EQ(buffer + (row.whole == 0 ? 0 : 18), cursor);
    const Bytes header = hex(row.header);
    EXPECT_EQ(header, Bytes(buffer, buffer + header.size()));
    for (List *const list : inner) List_free(list, nullptr);
    List_free(lists, nullptr);
  }
}

TEST_F(SetOfSetOf, ElementsAreDecodedTwoLevelsDeeper) {
  const Bytes octets = hex("31 06 31 02 C1 01 31 00");
  const auto lines = trace_lines([&] {
    for (const uint32_t depth : {0U, 1U, 4U}) {
      List *lists = nullptr;
      asn1_SetOfSetOf_d(octets.data(), octets.data() + octets.size(), 0, number_d, number_free,
                        &lists, depth);
      release(lists);
    }
  });
  EXPECT_EQ((std::vector<uint32_t>{0, 3, 6}), Number::depths);
  EXPECT_EQ(
      (Lines{"SET {", ". SET {", ". }", ". SET {", ". }", "}",  //
             ". . . SET {", ". . . . SET {", ". . . . }", ". . . . SET {", ". . . . }", ". . . }"}),
      lines);
}

TEST_F(SetOfSetOf, AFailureLeavesTheTraceOpen) {
  const Bytes octets = hex("31 80 31 02 C1 01 05 00");
  EXPECT_EQ((Lines{"SET {", ". SET {", ". }"}), trace_lines([&] {
              List *lists = nullptr;
              asn1_SetOfSetOf_d(octets.data(), octets.data() + octets.size(), 0, number_d,
                                number_free, &lists, 1);
            }));
}

// ---- trace --------------------------------------------------------------------------------------

const std::string dump_ab = dump("41 42", "AB");

TEST(GdoTrace, ShowsALeaf) {
  const Lines expected = {"SEQUENCE {",    ". OBJECT IDENTIFIER ", ". 0x05",
                          ". OCTETSTRING", ". " + dump_ab,         "}"};
  EXPECT_EQ(expected, traced(plain, leaf));
  EXPECT_EQ(expected, traced(nested_set, leaf));
  EXPECT_EQ(Lines(), traced(plain, leaf, 0));
}

TEST(GdoTrace, EachSkippedHeaderDeepensTheRestAndOneLineCloses) {
  EXPECT_EQ((Lines{"SET {", ". SEQUENCE {", ". . SET {", ". . . OBJECT IDENTIFIER ", ". . . 0x05",
                   ". . . OCTETSTRING", ". . . " + dump_ab, ". . }"}),
            traced(plain, set(sequence(set(hex("06 01 05 04 02 41 42"))))));
}

TEST(GdoTrace, ShowsAContainerAtAPlainPlace) {
  const Lines expected = {"SEQUENCE {",
                          ". OBJECT IDENTIFIER ",
                          ". 0x10",
                          ". OCTETSTRING",
                          ".  encapsulates {",
                          ". . SET {",
                          ". . . SEQUENCE {",
                          ". . . . OBJECT IDENTIFIER ",
                          ". . . . 0x05",
                          ". . . . OCTETSTRING",
                          ". . . . " + dump_ab,
                          ". . . }",
                          ". . }",
                          ". }",
                          "}"};
  EXPECT_EQ(expected, traced(plain, container(set(leaf))));
}

TEST(GdoTrace, ShowsAContainerAtANestedSetPlace) {
  const Lines expected = {"SEQUENCE {",
                          ". OBJECT IDENTIFIER ",
                          ". 0x10",
                          ". OCTETSTRING",
                          ".  encapsulates {",
                          ". . SET {",
                          ". . . SET {",
                          ". . . . SEQUENCE {",
                          ". . . . . OBJECT IDENTIFIER ",
                          ". . . . . 0x05",
                          ". . . . . OCTETSTRING",
                          ". . . . . " + dump_ab,
                          ". . . . }",
                          ". . . }",
                          ". . }",
                          ". }",
                          "}"};
  EXPECT_EQ(expected, traced(nested_set, container(set(set(leaf)))));
}

Lines traced_holder(const std::string &wrapper, const std::string &id) {
  return {"SEQUENCE {",
          ". OBJECT IDENTIFIER ",
          ". 0x20",
          ". " + wrapper,
          ".  encapsulates {",
          ". . SET {",
          ". . . SEQUENCE {",
          ". . . . OBJECT IDENTIFIER ",
          ". . . . " + id,
          ". . . . OCTETSTRING",
          ". . . . " + dump("AA", "."),
          ". . . }",
          ". . }",
          ". }",
          "}"};
}

TEST(GdoTrace, ShowsAHolderUnderEitherTag) {
  EXPECT_EQ(traced_holder("BITSTRING", "0x12345678"), traced(plain, holder(attribute)));
  EXPECT_EQ(traced_holder("BITSTRING", "0x12345678"), traced(nested_set, holder(attribute)));
  EXPECT_EQ(traced_holder("OCTETSTRING", "0x12345678"),
            traced(plain, object(0x20, element(4, set(attribute)))));
}

TEST(GdoTrace, ShowsTheLow32BitsOfAnIdentifierThatSpread) {
  EXPECT_EQ(traced_holder("BITSTRING", "0x87654321"),
            traced(plain, holder(hex("30 09 06 04 21 43 65 87 04 01 AA"))));
}

TEST(GdoTrace, TheWrapperClosesEvenWhereItsContentFails) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ". 0x10", ". OCTETSTRING",
                   ".  encapsulates {", ". }"}),
            traced(plain, container(hex("30 00"))));
  EXPECT_EQ(
      (Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ". 0x20", ". BITSTRING", ".  encapsulates {",
             ". . SET {", ". . . SEQUENCE {", ". . . . 0x00000000", ". }"}),
      traced(plain, holder(hex("30 00"))));
}

TEST(GdoTrace, AFailureLeavesTheObjectOpen) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER "}), traced(plain, hex("30 04 06 02 01 05")));
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ". 0x20"}),
            traced(plain, object(0x20, hex("05 00"))));
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ". 0x05"}),
            traced(plain, object(5, hex("05 00"))));
  // An empty object does not reach the identifier after it.
  EXPECT_EQ((Lines{"SEQUENCE {", ". 0x00"}), traced(plain, hex("30 00 06 01 05 04 00")));
}

TEST(GdoTrace, ShowsACard) {
  Lines expected = {"SEQUENCE {"};
  for (int i = 0; i < 5; ++i) {
    expected.insert(expected.end(), {". SEQUENCE {", ". . OBJECT IDENTIFIER ", ". . 0x05",
                                     ". . OCTETSTRING", ". . " + dump_ab, ". }"});
  }
  expected.push_back("}");
  EXPECT_EQ(expected, traced(cards, sequence(leaf + leaf + leaf + leaf + leaf)));
}

TEST(GdoTrace, AHeaderThatIsTooLongIsReportedAtTheDepthThatTheSkippedOnesRaised) {
  const std::string line = "z larger than end!";
  EXPECT_EQ((Lines{"SEQUENCE {", line}), traced(plain, hex("30 01")));
  for (const auto &family : {plain, nested_set}) {
    EXPECT_EQ((Lines{"SEQUENCE {", ". SET {", ". " + line}), traced(family, hex("30 02 31 05")));
    EXPECT_EQ((Lines{". SET {", ". . SEQUENCE {", ". . . SET {", ". . . " + line}),
              traced(family, hex("31 04 30 02 31 82 01"), 2));
  }
}

// The depth inside wraps to 0, for which nothing is written. A line that closes stands where the depth
// inside is not 0: of an object that is the depth of its content, of an attribute and of a card the
// depth of their fields, of a set the depth of its elements.
TEST(GdoTrace, IsSilentWhereTheDepthWrapsToZero) {
  using Lines = std::vector<Leveled>;
  const std::string id = "OBJECT IDENTIFIER ";
  const Lines open_only = {{65534, "SEQUENCE {"}};
  for (const bool nests : {false, true}) {
    const auto &family = nests ? nested_set : plain;
    const Bytes contained = container(nests ? set(set(leaf)) : set(leaf));
    EXPECT_EQ(open_only, traced_levels(family, leaf, 0xFFFFFFFF));
    EXPECT_EQ(open_only, traced_levels(family, holder(attribute), 0xFFFFFFFF));
    EXPECT_EQ((Lines{{65533, "SEQUENCE {"},
                     {65534, id},
                     {65534, "0x05"},
                     {65534, "OCTETSTRING"},
                     {65534, dump_ab},
                     {65533, "}"}}),
              traced_levels(family, leaf, 0xFFFFFFFE));
    EXPECT_EQ((Lines{{65533, "SEQUENCE {"},
                     {65534, id},
                     {65534, "0x20"},
                     {65534, "BITSTRING"},
                     {65534, " encapsulates {"},
                     {65533, "}"}}),
              traced_levels(family, holder(attribute), 0xFFFFFFFE));
    EXPECT_EQ((Lines{{65531, "SEQUENCE {"},
                     {65532, id},
                     {65532, "0x20"},
                     {65532, "BITSTRING"},
                     {65532, " encapsulates {"},
                     {65533, "SET {"},
                     {65534, "SEQUENCE {"},
                     {65533, "}"},
                     {65532, "}"},
                     {65531, "}"}}),
              traced_levels(family, holder(attribute), 0xFFFFFFFC));
    EXPECT_EQ((Lines{{65533, "SEQUENCE {"},
                     {65534, id},
                     {65534, "0x10"},
                     {65534, "OCTETSTRING"},
                     {65534, " encapsulates {"},
                     {65533, "}"}}),
              traced_levels(family, contained, 0xFFFFFFFE));
    EXPECT_EQ((Lines{{65532, "SEQUENCE {"},
                     {65533, id},
                     {65533, "0x10"},
                     {65533, "OCTETSTRING"},
                     {65533, " encapsulates {"},
                     {65534, "SET {"},
                     {65533, "}"},
                     {65532, "}"}}),
              traced_levels(family, contained, 0xFFFFFFFD));
  }
  // A skipped header raises the depth, too.
  EXPECT_EQ((Lines{{65533, "SET {"}, {65534, "SEQUENCE {"}}),
            traced_levels(plain, set(leaf), 0xFFFFFFFE));

  const Bytes card = sequence(leaf + leaf + leaf + leaf);
  EXPECT_EQ(open_only, traced_levels(cards, card, 0xFFFFFFFF));
  EXPECT_EQ((Lines{{65533, "SEQUENCE {"},
                   {65534, "SEQUENCE {"},
                   {65534, "SEQUENCE {"},
                   {65534, "SEQUENCE {"},
                   {65534, "SEQUENCE {"},
                   {65533, "}"}}),
            traced_levels(cards, card, 0xFFFFFFFE));
}

// ---- ends of the process ------------------------------------------------------------------------

TEST(GdoDeathTest, AnObjectIsRequired) {
  const testing::KilledBySignal aborted(SIGABRT);
  const std::string no_object = assert_line("asn1_GDOObject_e", "o != NULL", "asn1_gdo");
  EXPECT_EXIT(asn1_GDOObject_e(nullptr, 0, nullptr), aborted, no_object);
  EXPECT_EXIT(asn1_GDOObjectSetOf_e(nullptr, nullptr), aborted, no_object);
  EXPECT_EXIT(asn1_GDOObjectSetOfSetOf_e(nullptr, nullptr), aborted, no_object);

  const Input input(leaf);
  const std::string no_place = assert_line("asn1_GDOObject_d", "o != NULL", "asn1_gdo");
  EXPECT_EXIT(asn1_GDOObject_d(input.z(), input.end(), 0, 0, nullptr, 0), aborted, no_place);
  EXPECT_EXIT(asn1_GDOObjectSetOf_d(input.z(), input.end(), 0, nullptr, 0), aborted, no_place);
  EXPECT_EXIT(asn1_GDOObjectSetOfSetOf_d(input.z(), input.end(), 0, nullptr, 0), aborted, no_place);
}

TEST(GdoDeathTest, AnAttributeIsRequired) {
  const auto holder = created(plain);
  holder->id = 0x20;
  holder->children = List_new(0);
  ASSERT_EQ(1, List_append(holder->children, nullptr, 0));
  EXPECT_EXIT(asn1_GDOObjectSetOf_e(nullptr, holder.get()), testing::KilledBySignal(SIGABRT),
              assert_line("asn1_GDOObjectAttribute_e", "attribute != NULL", "asn1_gdo"));
}

TEST(GdoDeathTest, ACardNeedsItsFirstFourObjects) {
  const testing::KilledBySignal aborted(SIGABRT);
  const std::string no_object = assert_line("asn1_GDOObject_e", "o != NULL", "asn1_gdo");
  for (GDOObject *GDO::*field : {&GDO::root, &GDO::set1, &GDO::set2, &GDO::set3}) {
    const auto record = decoded(cards, sequence(leaf + leaf + leaf + leaf));
    clear(record.get()->*field, asn1_GDOObjectSetOf_free);
    EXPECT_EXIT(asn1_GDO_e(nullptr, record.get()), aborted, no_object);
    uint8_t buffer[64];
    uint8_t *cursor = buffer;
    EXPECT_EXIT(asn1_GDO_e(&cursor, record.get()), aborted, no_object);
  }
  expect_encoder_ends_the_process<GDO>(cards, nullptr);
}

TEST(GdoDeathTest, TheDecoderAssertsItsCursors) { expect_decoder_asserts_its_cursors(cards); }

// ---- exhausted memory ---------------------------------------------------------------------------

TEST(GdoMemory, ObjectsOfAllRolesFailWithoutAnythingLeft) {
  expect_exhausted_memory_to_fail(plain, leaf);
  expect_exhausted_memory_to_fail(plain, container(set(leaf + container(set(leaf)))));
  expect_exhausted_memory_to_fail(plain, holder(attribute + attribute));
  expect_exhausted_memory_to_fail(nested_set, container(set(set(leaf + leaf) + set(leaf))));
  expect_exhausted_memory_to_fail(nested_set, holder(attribute + attribute));
}

TEST(GdoMemory, ACardFailsWithoutAnythingLeft) {
  expect_exhausted_memory_to_fail(cards, sequence(four + set4));
}

#ifndef ORVELASN1_TESTS_SANITIZED
TEST(GdoMemory, ASetOfSetsFailsWithoutAnythingLeft) {
  const Input input(hex("31 0A 31 03 04 01 41 31 03 04 01 42"));
  EXPECT_LE(1, expect_failure_at_each_allocation([&] {
              List *lists = nullptr;
              const bool read = asn1_SetOfSetOf_d(input.z(), input.end(), 0, asn1_OctetString_d,
                                                  asn1_OctetString_free, &lists, 0) != nullptr;
              EXPECT_EQ(read, lists != nullptr);
              for (int32_t i = 0; i < List_len(lists); ++i) {
                List_free(static_cast<List *>(List_get(lists, i)), asn1_OctetString_free);
              }
              List_free(lists, nullptr);
              return read;
            }));
}

// The C library needs memory to say where the stack of a thread is. It is asked once.
TEST(GdoMemory, AnObjectFailsWhereTheBoundsOfTheStackHaveNoMemory) {
  const Input input(leaf);
  const auto read = [&input] {
    GDOObject *object = nullptr;
    const bool is_read =
        asn1_GDOObjectSetOf_d(input.z(), input.end(), 0, &object, 0) == input.end();
    asn1_GDOObjectSetOf_free(object);
    return is_read;
  };
  const long allocations = expect_failure_at_each_allocation(read);
  on_small_stack([&] { EXPECT_LT(allocations, expect_failure_at_each_allocation(read)); });
}
#endif

}  // namespace

}  // namespace gdo_test
