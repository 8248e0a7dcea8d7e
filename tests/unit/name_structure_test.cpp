// Tests distinguished names as a structure: assertions, RDNs and sequences of RDNs.
#include "allocator.h"
#include "support.h"

namespace name_structure_test {

namespace {

using support::Bytes;
using support::decode;
using support::element;
using support::encode;
using support::hex;
using support::left_by_refusal;
using support::text;
using support::trace_lines;
using support::value;
using support::operator+;

using Ava = support::Owned<AttributeValueAssertion, asn1_AttributeValueAssertion_free>;
using Rdn = support::Owned<RelativeDistinguishedName, asn1_RelativeDistinguishedName_free>;
using Sequence = support::Owned<RDNSequence, asn1_RDNSequence_free>;
using Lines = std::vector<std::string>;

const Bytes country = hex("06 03 55 04 06");
const Bytes organisation = hex("06 03 55 04 0A");
const Bytes common_name = hex("06 03 55 04 03");

Bytes assertion(const Bytes &type, uint8_t tag, const Bytes &content) {
  return element(0x30, type + element(tag, content));
}

const Bytes de = assertion(country, 0x13, text("DE"));
const Bytes acme = assertion(organisation, 0x0C, text("Acme"));
const Bytes one = assertion(common_name, 0x13, text("One"));

/// Decodes a structure that must be consumed as a whole.
template <class T, class Record>
T whole(const uint8_t *(*element_d)(const uint8_t *, const uint8_t *, uint32_t, Record **,
                                    uint32_t),
        const Bytes &octets, uint32_t impl_tag = 0) {
  const auto decoded = decode(element_d, octets, impl_tag);
  EXPECT_EQ(static_cast<long>(octets.size()), decoded.consumed);
  return T(decoded.record);
}

Ava ava(const Bytes &octets) { return whole<Ava>(asn1_AttributeValueAssertion_d, octets); }
Rdn rdn(const Bytes &octets) { return whole<Rdn>(asn1_RelativeDistinguishedName_d, octets); }
Sequence sequence(const Bytes &octets) { return whole<Sequence>(asn1_RDNSequence_d, octets); }

/// Return an RDN of these assertions, and a sequence of these RDNs.
Bytes set(const Bytes &assertions) { return element(0x31, assertions); }
Bytes name(const Bytes &rdns) { return element(0x30, rdns); }

const AttributeValueAssertion *assertion_at(const List *rdn, int32_t index) {
  return static_cast<const AttributeValueAssertion *>(List_get(rdn, index));
}
const AttributeValueAssertion *assertion_at(const RDNSequence *sequence, int32_t rdn,
                                            int32_t index) {
  return assertion_at(static_cast<const List *>(List_get(sequence, rdn)), index);
}

// ------------------------------------------------------------------------------ assertions, reading

TEST(AssertionDecoder, StoresTypeTagAndValue) {
  const Ava record = ava(hex("30 09 06 03 55 04 06 13 02 44 45"));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_at_countryName(), record->type));
  EXPECT_EQ(19, record->valueTag);
  EXPECT_EQ(text("DE"), value(record->value));
}

TEST(AssertionDecoder, TakesAnyTagForTheValueAndTheEncoderWritesItBack) {
  for (const uint8_t tag : hex("00 01 02 04 05 06 0C 10 13 1E 1F 41 5F 80 81 9F C0 DF")) {
    const Bytes octets = assertion(common_name, tag, text("x\001y"));
    const Ava record = ava(octets);
    EXPECT_EQ(tag, record->valueTag);
    EXPECT_EQ(text("x\001y"), value(record->value));
    EXPECT_EQ(octets, encode(asn1_AttributeValueAssertion_e, record.get()));
  }
}

TEST(AssertionDecoder, StoresAnEmptyValueWithoutData) {
  const Bytes octets = assertion(common_name, 0x0C, {});
  const Ava record = ava(octets);
  EXPECT_EQ(0U, record->value->length);
  EXPECT_EQ(nullptr, record->value->data);
  EXPECT_EQ(octets, encode(asn1_AttributeValueAssertion_e, record.get()));
}

TEST(AssertionDecoder, KeepsZeroOctetsOfTheValue) {
  const Ava record = ava(assertion(common_name, 0x1E, hex("00 41 00 42 00 00")));
  EXPECT_EQ(hex("00 41 00 42 00 00"), value(record->value));
}

TEST(AssertionDecoder, JoinsAConstructedValueAndKeepsTheConstructedBit) {
  const Ava record = ava(assertion(common_name, 0x33, hex("13 01 41 33 03 13 01 42 13 01 43")));
  EXPECT_EQ(0x33, record->valueTag);
  EXPECT_EQ(text("ABC"), value(record->value));
  EXPECT_EQ(assertion(common_name, 0x33, text("ABC")),
            encode(asn1_AttributeValueAssertion_e, record.get()));
}

TEST(AssertionDecoder, TakesAValueOfIndefiniteLength) {
  const Ava constructed = ava(element(0x30, common_name + hex("33 80 13 01 41 13 01 42 00 00")));
  EXPECT_EQ(0x33, constructed->valueTag);
  EXPECT_EQ(text("AB"), value(constructed->value));

  const Ava primitive = ava(element(0x30, common_name + hex("13 80 41 42 00 00")));
  EXPECT_EQ(0x13, primitive->valueTag);
  EXPECT_EQ(text("AB"), value(primitive->value));
}

TEST(AssertionDecoder, ReadsABitStringValueAsAStringThatTheEncoderTakesForBits) {
  const Ava record = ava(assertion(common_name, 0x03, hex("00 A0")));
  EXPECT_EQ(hex("00 A0"), value(record->value));
  // Two bits take one octet, which is zero.
  EXPECT_EQ(assertion(common_name, 0x03, hex("00")),
            encode(asn1_AttributeValueAssertion_e, record.get()));
}

TEST(AssertionDecoder, TakesATypeOfOneArc) {
  const Ava record = ava(element(0x30, hex("06 00 13 01 41")));
  EXPECT_EQ(1U, record->type->count);
  EXPECT_EQ(0U, record->type->arcs[0]);
  EXPECT_EQ(Bytes{}, encode(asn1_AttributeValueAssertion_e, record.get()));
}

TEST(AssertionDecoder, ReadsATypeWhoseLengthHasItsTopBitSetAsEmpty) {
  const Ava record = ava(element(0x30, hex("06 84 80 00 00 00 13 01 41")));
  EXPECT_EQ(1U, record->type->count);
  EXPECT_EQ(text("A"), value(record->value));
}

TEST(AssertionDecoder, TakesAnImplicitTagWithAndWithoutTheConstructedBit) {
  const Bytes content = common_name + hex("13 01 41");
  for (const uint8_t octet : {uint8_t{0xA1}, uint8_t{0x81}}) {
    for (const uint32_t impl_tag : {0xA1U, 0x81U, 0x1A1U}) {
      const Ava record =
          whole<Ava>(asn1_AttributeValueAssertion_d, element(octet, content), impl_tag);
      EXPECT_EQ(text("A"), value(record->value));
    }
  }
}

TEST(AssertionDecoder, TakesThePrimitiveFormOfTheSequence) {
  EXPECT_EQ(19, ava(element(0x10, common_name + hex("13 01 41")))->valueTag);
}

TEST(AssertionDecoder, StopsBehindTheValueWithoutALookAtTheRest) {
  const auto decoded = decode(asn1_AttributeValueAssertion_d,
                              element(0x30, common_name + hex("13 01 41") + hex("05 00")));
  const Ava record(decoded.record);
  EXPECT_EQ(2 + 5 + 3, decoded.consumed);
  EXPECT_EQ(text("A"), value(record->value));
}

TEST(AssertionDecoder, RefusesWithNothingLeft) {
  const Bytes rows[] = {
      hex("30 00"),                                        // no type
      element(0x30, hex("13 01 41")),                      // a value in place of the type
      element(0x30, common_name),                          // no value
      element(0x30, common_name) + hex("13 01 41"),        // the value is past the SEQUENCE
      element(0x30, common_name + hex("13")),              // a tag without a length
      element(0x30, common_name + hex("13 02 41")),        // a value cut off
      element(0x30, common_name + hex("13 85")),           // a bad length
      element(0x30, common_name + hex("33 03 0C 01 41")),  // a segment of another type
      element(0x30, common_name + hex("33 80 13 01 41")),  // no end-of-contents
      element(0x30, common_name + hex("13 84 80 00 00 00 41")),
      element(0x30, common_name + hex("13 84 FF FF FF FF 41")),
      element(0x30, hex("06 05 FF FF FF FF 7F 13 01 41")),  // an arc of more than 32 bits
      hex("30 84 80 00 00 00") + common_name + hex("13 01 41"),
      hex("30 84 FF FF FF FF") + common_name + hex("13 01 41"),
  };
  for (const Bytes &octets : rows) {
    AttributeValueAssertion before = {};
    EXPECT_EQ(nullptr, left_by_refusal(asn1_AttributeValueAssertion_d, octets, &before));
  }
}

TEST(AssertionDecoder, LeavesThePlaceAloneWhenTheHeaderIsRefused) {
  const Bytes rows[] = {
      {},
      hex("30"),
      hex("31 08") + common_name + hex("13 01 41"),
      hex("30 80") + common_name + hex("13 01 41 00 00"),  // definite length only
      hex("30 09") + common_name + hex("13 01 41"),        // one octet short
  };
  for (const Bytes &octets : rows) {
    AttributeValueAssertion before = {};
    EXPECT_EQ(&before, left_by_refusal(asn1_AttributeValueAssertion_d, octets, &before));
  }
}

TEST(AssertionDecoder, FailsAtEveryCutOfAValidInput) {
  for (size_t size = 0; size < acme.size(); ++size) {
    const Bytes cut(acme.begin(), acme.begin() + static_cast<long>(size));
    EXPECT_FALSE(decode(asn1_AttributeValueAssertion_d, cut).ok()) << size;
  }
}

// ------------------------------------------------------------------------------ assertions, writing

TEST(AssertionEncoder, FailsWithoutTypeOrValue) {
  const Ava record(asn1_AttributeValueAssertion_new());
  EXPECT_EQ(0U, asn1_AttributeValueAssertion_e(nullptr, record.get()));

  record->value = asn1_ASN1String_new(0, "x");
  EXPECT_EQ(0U, asn1_AttributeValueAssertion_e(nullptr, record.get()));

  asn1_ASN1String_free(record->value);
  record->value = nullptr;
  record->type = asn1_ObjId_clone(asn1_Get_id_at_name());
  EXPECT_EQ(0U, asn1_AttributeValueAssertion_e(nullptr, record.get()));
}

TEST(AssertionEncoder, FailsOnATypeOfOneArc) {
  const Ava record(asn1_AttributeValueAssertion_new());
  record->type = asn1_ObjId_new(1);
  record->value = asn1_ASN1String_new(0, "x");
  EXPECT_EQ(0U, asn1_AttributeValueAssertion_e(nullptr, record.get()));
}

TEST(AssertionEncoder, WritesNothingWhenItFails) {
  const Ava record(asn1_AttributeValueAssertion_new());
  record->type = asn1_ObjId_clone(asn1_Get_id_at_name());
  uint8_t buffer[16] = {};
  uint8_t *cursor = buffer;
  EXPECT_EQ(0U, asn1_AttributeValueAssertion_e(&cursor, record.get()));
  EXPECT_EQ(buffer, cursor);
  EXPECT_EQ(Bytes(16, 0), Bytes(std::begin(buffer), std::end(buffer)));
}

TEST(AssertionEncoder, WritesTheLowEightBitsOfTheTag) {
  const Ava record = ava(de);
  for (const int32_t tag : {0x13, 0x113, -0xED, 0x7FFFFF13}) {
    record->valueTag = tag;
    EXPECT_EQ(de, encode(asn1_AttributeValueAssertion_e, record.get())) << tag;
  }
}

TEST(AssertionEncoder, FailsWhenTheSumDoesNotFit32Bits) {
  const Ava record = ava(de);
  uint8_t buffer[8] = {};
  for (const uint32_t length : {0xFFFFFFFFU, 0xFFFFFFFAU, 0xFFFFFFF9U, 0xFFFFFFF0U}) {
    record->value->length = length;
    uint8_t *cursor = buffer;
    EXPECT_EQ(0U, asn1_AttributeValueAssertion_e(nullptr, record.get())) << length;
    EXPECT_EQ(0U, asn1_AttributeValueAssertion_e(&cursor, record.get())) << length;
    EXPECT_EQ(buffer, cursor);
  }
  record->value->length = 2;
}

// ------------------------------------------------------------------------------------------- copies

TEST(AssertionNew, IsZero) {
  const Ava record(asn1_AttributeValueAssertion_new());
  EXPECT_EQ(nullptr, record->type);
  EXPECT_EQ(0, record->valueTag);
  EXPECT_EQ(nullptr, record->value);
}

TEST(AssertionFree, IgnoresNull) { asn1_AttributeValueAssertion_free(nullptr); }

TEST(AssertionClone, OfNullIsNull) {
  EXPECT_EQ(nullptr, asn1_AttributeValueAssertion_clone(nullptr));
}

TEST(AssertionClone, CopiesTypeAndValueAndLosesTheTag) {
  const Ava record = ava(de);
  const Ava copy(asn1_AttributeValueAssertion_clone(record.get()));
  EXPECT_NE(record->type, copy->type);
  EXPECT_NE(record->value, copy->value);
  EXPECT_NE(record->value->data, copy->value->data);
  EXPECT_EQ(0, asn1_ObjId_cmp(record->type, copy->type));
  EXPECT_EQ(text("DE"), value(copy->value));
  EXPECT_EQ(0, copy->valueTag);
  EXPECT_EQ(19, record->valueTag);
  EXPECT_EQ(1, asn1_AttributeValueAssertion_cmp(record.get(), copy.get()));
  EXPECT_EQ(assertion(country, 0x00, text("DE")),
            encode(asn1_AttributeValueAssertion_e, copy.get()));
}

TEST(AssertionClone, OfAHalfFilledRecordIsHalfFilled) {
  const Ava empty(asn1_AttributeValueAssertion_new());
  const Ava copy_of_empty(asn1_AttributeValueAssertion_clone(empty.get()));
  EXPECT_EQ(nullptr, copy_of_empty->type);
  EXPECT_EQ(nullptr, copy_of_empty->value);

  const Ava typed(asn1_AttributeValueAssertion_new());
  typed->type = asn1_ObjId_clone(asn1_Get_id_at_title());
  const Ava copy_of_typed(asn1_AttributeValueAssertion_clone(typed.get()));
  EXPECT_EQ(0, asn1_ObjId_cmp(typed->type, copy_of_typed->type));
  EXPECT_EQ(nullptr, copy_of_typed->value);

  const Ava valued(asn1_AttributeValueAssertion_new());
  valued->value = asn1_ASN1String_new(0, "x");
  const Ava copy_of_valued(asn1_AttributeValueAssertion_clone(valued.get()));
  EXPECT_EQ(nullptr, copy_of_valued->type);
  EXPECT_EQ(text("x"), value(copy_of_valued->value));
}

TEST(RdnClone, KeepsTheOrderAndLosesTheTags) {
  const Rdn source = rdn(set(one + de));
  const Rdn copy(asn1_RelativeDistinguishedName_clone(source.get()));
  EXPECT_EQ(set(assertion(common_name, 0, text("One")) + assertion(country, 0, text("DE"))),
            encode(asn1_RelativeDistinguishedName_e, copy.get()));
  EXPECT_EQ(1, asn1_RelativeDistinguishedName_cmp(source.get(), copy.get()));
  EXPECT_EQ(set(one + de), encode(asn1_RelativeDistinguishedName_e, source.get()));
}

TEST(RdnClone, OfAnEmptyListIsAnEmptyList) {
  const Rdn source(List_new(0));
  const Rdn copy(asn1_RelativeDistinguishedName_clone(source.get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(0, List_len(copy.get()));
}

TEST(SequenceClone, KeepsTheOrderAndLosesTheTags) {
  const Sequence source = sequence(name(set(de) + set(acme + one)));
  const Sequence copy(asn1_RDNSequence_clone(source.get()));
  EXPECT_EQ(
      name(set(assertion(country, 0, text("DE"))) +
           set(assertion(organisation, 0, text("Acme")) + assertion(common_name, 0, text("One")))),
      encode(asn1_RDNSequence_e, copy.get()));
  EXPECT_EQ(1, asn1_RDNSequence_cmp(source.get(), copy.get()));
}

TEST(SequenceClone, OfACloneIsEqualToIt) {
  const Sequence source = sequence(name(set(de) + set(acme)));
  const Sequence copy(asn1_RDNSequence_clone(source.get()));
  const Sequence copy_of_copy(asn1_RDNSequence_clone(copy.get()));
  EXPECT_EQ(0, asn1_RDNSequence_cmp(copy.get(), copy_of_copy.get()));
}

TEST(SequenceClone, OfAnEmptyListIsAnEmptyList) {
  const Sequence source(List_new(0));
  const Sequence copy(asn1_RDNSequence_clone(source.get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(0, List_len(copy.get()));
}

TEST(SequenceFree, IgnoresNull) { asn1_RDNSequence_free(nullptr); }

TEST(RdnFree, IgnoresNull) { asn1_RelativeDistinguishedName_free(nullptr); }

// -------------------------------------------------------------------------------------- comparisons

TEST(AssertionComparison, IsExact) {
  const Ava a = ava(de);
  const struct {
    int32_t expected;
    Bytes other;
  } rows[] = {
      {0, de},
      {1, assertion(organisation, 0x13, text("DE"))},        // another type
      {1, assertion(hex("06 02 55 04"), 0x13, text("DE"))},  // a shorter type
      {1, assertion(country, 0x0C, text("DE"))},             // another tag
      {1, assertion(country, 0x33, hex("13 02 44 45"))},     // the constructed bit
      {1, assertion(country, 0x13, text("de"))},             // another case
      {1, assertion(country, 0x13, text("DE "))},            // a blank
      {1, assertion(country, 0x13, text("D"))},
      {1, assertion(country, 0x13, text(""))},
  };
  for (const auto &row : rows) {
    const Ava b = ava(row.other);
    EXPECT_EQ(row.expected, asn1_AttributeValueAssertion_cmp(a.get(), b.get()));
    EXPECT_EQ(row.expected, asn1_AttributeValueAssertion_cmp(b.get(), a.get()));
  }
}

TEST(AssertionComparison, LooksAtTheWholeTag) {
  const Ava a = ava(de);
  const Ava b = ava(de);
  b->valueTag += 256;
  EXPECT_EQ(1, asn1_AttributeValueAssertion_cmp(a.get(), b.get()));
}

TEST(AssertionComparison, FindsADifferenceWhereARecordOrItsValueIsMissing) {
  const Ava a = ava(de), without = ava(de);
  asn1_ASN1String_free(without->value);
  without->value = nullptr;
  for (const AttributeValueAssertion *other :
       {static_cast<const AttributeValueAssertion *>(nullptr),
        static_cast<const AttributeValueAssertion *>(without.get())}) {
    EXPECT_EQ(1, asn1_AttributeValueAssertion_cmp(a.get(), other));
    EXPECT_EQ(1, asn1_AttributeValueAssertion_cmp(other, a.get()));
  }
}

TEST(AssertionComparison, FindsEmptyValuesAlike) {
  const Ava a = ava(assertion(country, 0x13, {}));
  const Ava b = ava(assertion(country, 0x13, {}));
  EXPECT_EQ(0, asn1_AttributeValueAssertion_cmp(a.get(), b.get()));
}

TEST(RdnComparison, IsThatOfSetsOfOneLength) {
  const struct {
    int32_t expected;
    Bytes a, b;
  } rows[] = {
      {0, {}, {}},
      {0, de, de},
      {1, de, {}},
      {1, {}, de},
      {1, de, one},
      {0, de + one, one + de},             // the order does not count
      {0, de + de + one, de + one + one},  // and not how often one occurs
      {0, de + one + one, de + de + one},
      {1, de + one, de + de},
      {0, de + de, de + one},  // each of the first is in the second
      {1, de + one, de},
      {1, de, assertion(country, 0x0C, text("DE"))},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.expected,
              asn1_RelativeDistinguishedName_cmp(rdn(set(row.a)).get(), rdn(set(row.b)).get()));
  }
}

TEST(SequenceComparison, IsThatOfSetsOfOneLength) {
  const Bytes a = set(de), b = set(acme), c = set(one + de), c_turned = set(de + one);
  const struct {
    int32_t expected;
    Bytes a, b;
  } rows[] = {
      {0, {}, {}},
      {1, {}, a},
      {1, a, {}},
      {1, a, b},
      {0, a + b, a + b},
      {0, a + b, b + a},          // the order of RDNs does not count
      {0, a + c, c_turned + a},   // also inside the RDNs
      {0, a + a + b, a + b + b},  // and not how often one occurs
      {0, a + b + b, a + a + b},
      {1, a + b, a + a},
      {0, a + a, a + b},
      {1, a + b, a + b + b},
      {1, a + b, a + set(assertion(organisation, 0x13, text("Acme")))},  // another string type
      {1, set({}), a},
      {0, set({}), set({})},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.expected,
              asn1_RDNSequence_cmp(sequence(name(row.a)).get(), sequence(name(row.b)).get()));
  }
}

// ---------------------------------------------------------------------------------- lists, encoding

TEST(RdnDecoder, KeepsTheOrderAndDuplicatesAndTheEncoderDoesNotSort) {
  const Bytes octets = set(one + de + one + acme);
  const Rdn record = rdn(octets);
  ASSERT_EQ(4, List_len(record.get()));
  EXPECT_EQ(text("One"), value(assertion_at(record.get(), 0)->value));
  EXPECT_EQ(text("DE"), value(assertion_at(record.get(), 1)->value));
  EXPECT_EQ(text("One"), value(assertion_at(record.get(), 2)->value));
  EXPECT_EQ(text("Acme"), value(assertion_at(record.get(), 3)->value));
  EXPECT_EQ(octets, encode(asn1_RelativeDistinguishedName_e, record.get()));
}

TEST(SequenceDecoder, KeepsTheOrderOnBothLevels) {
  const Bytes octets = name(set(acme) + set(one + de) + set({}) + set(acme));
  const Sequence record = sequence(octets);
  ASSERT_EQ(4, List_len(record.get()));
  EXPECT_EQ(text("Acme"), value(assertion_at(record.get(), 0, 0)->value));
  EXPECT_EQ(text("DE"), value(assertion_at(record.get(), 1, 1)->value));
  EXPECT_EQ(0, List_len(static_cast<const List *>(List_get(record.get(), 2))));
  EXPECT_EQ(octets, encode(asn1_RDNSequence_e, record.get()));
}

TEST(SequenceDecoder, TakesTheEmptySequence) {
  const Sequence record = sequence(hex("30 00"));
  EXPECT_EQ(0, List_len(record.get()));
  EXPECT_EQ(hex("30 00"), encode(asn1_RDNSequence_e, record.get()));
}

TEST(RdnDecoder, TakesTheEmptySet) {
  const Rdn record = rdn(hex("31 00"));
  EXPECT_EQ(0, List_len(record.get()));
  EXPECT_EQ(hex("31 00"), encode(asn1_RelativeDistinguishedName_e, record.get()));
}

TEST(SequenceDecoder, TakesIndefiniteLengthWhereItsEndIsTheEndOfTheInput) {
  const Sequence record =
      sequence(hex("30 80") + set(de) + hex("31 80") + acme + hex("00 00 00 00"));
  EXPECT_EQ(name(set(de) + set(acme)), encode(asn1_RDNSequence_e, record.get()));

  const Sequence empty = sequence(hex("30 80 00 00"));
  EXPECT_EQ(0, List_len(empty.get()));
}

TEST(SequenceDecoder, RefusesIndefiniteLengthWithSomethingBehind) {
  const Bytes rows[] = {
      hex("30 80") + set(de) + hex("00 00 00"),
      hex("30 80") + set(de) + hex("00 00 05 00"),
      hex("30 80 31 80") + de + hex("00 00") + set(acme) + hex("00 00"),
      hex("30 80") + set(de) + hex("01 01"),  // no end-of-contents: each RDN is released once
      hex("30 80") + set(de) + set(acme) + hex("00 01"),
  };
  for (const Bytes &octets : rows) {
    EXPECT_EQ(nullptr, left_by_refusal<RDNSequence>(asn1_RDNSequence_d, octets, nullptr));
  }
}

TEST(RdnDecoder, ReleasesTheLastAssertionOnceWhenTheEndOfContentsIsMissing) {
  EXPECT_EQ(nullptr, left_by_refusal<List>(asn1_RelativeDistinguishedName_d,
                                           hex("31 80") + de + one + hex("01 01"), nullptr));
  EXPECT_EQ(nullptr,
            left_by_refusal<List>(asn1_RelativeDistinguishedName_d, hex("31 80 00 01"), nullptr));
}

TEST(RdnDecoder, RefusesAnElementThatIsNoAssertion) {
  for (const Bytes &content :
       {hex("05 00"), de + hex("05 00"), de + hex("30"), de + hex("30 00")}) {
    List *before = nullptr;
    EXPECT_EQ(nullptr, left_by_refusal(asn1_RelativeDistinguishedName_d, set(content), before));
  }
}

TEST(SequenceDecoder, RefusesAnElementThatIsNoRdn) {
  for (const Bytes &content :
       {de, set(de) + de, set(de) + set(hex("05 00")), set(de) + hex("31")}) {
    EXPECT_EQ(nullptr, left_by_refusal<List>(asn1_RDNSequence_d, name(content), nullptr));
  }
}

TEST(RdnDecoder, GoesOnInsideAnAssertionThatStopsEarly) {
  // The second assertion is inside the SEQUENCE of the first, after its value.
  const Bytes nested = element(0x30, country + hex("13 02 44 45") + one);
  const Rdn record = rdn(set(nested));
  EXPECT_EQ(set(de + one), encode(asn1_RelativeDistinguishedName_e, record.get()));
}

TEST(SequenceDecoder, LeavesAnEmptyListWhenTheHeaderIsRefused) {
  for (const Bytes &octets : {Bytes{}, hex("31 00"), hex("30"), hex("30 01"), hex("30 85 00")}) {
    const Sequence left(left_by_refusal<List>(asn1_RDNSequence_d, octets, nullptr));
    ASSERT_NE(nullptr, left);
    EXPECT_EQ(0, List_len(left.get()));
  }
}

TEST(RdnDecoder, LeavesAnEmptyListWhenTheHeaderIsRefused) {
  for (const Bytes &octets : {Bytes{}, hex("30 00"), hex("31"), hex("31 01"), hex("31 85 00")}) {
    const Rdn left(left_by_refusal<List>(asn1_RelativeDistinguishedName_d, octets, nullptr));
    ASSERT_NE(nullptr, left);
    EXPECT_EQ(0, List_len(left.get()));
  }
}

TEST(SequenceDecoder, TakesImplicitTags) {
  for (const uint32_t impl_tag : {0x84U, 0xA4U}) {
    const Sequence record = whole<Sequence>(asn1_RDNSequence_d, element(0xA4, set(de)), impl_tag);
    EXPECT_EQ(name(set(de)), encode(asn1_RDNSequence_e, record.get()));
  }
  const Rdn record = whole<Rdn>(asn1_RelativeDistinguishedName_d, element(0x85, de), 0xA5);
  EXPECT_EQ(set(de), encode(asn1_RelativeDistinguishedName_e, record.get()));
}

TEST(SequenceDecoder, ReadsALengthWithItsTopBitSetAsEmpty) {
  for (const char *header : {"30 84 80 00 00 00", "30 84 FF FF FF FF"}) {
    const auto decoded = decode(asn1_RDNSequence_d, hex(header) + set(de));
    const Sequence record(decoded.record);
    EXPECT_EQ(6, decoded.consumed);
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(0, List_len(record.get()));
  }
}

TEST(SequenceDecoder, FailsAtEveryCutOfAValidInput) {
  const Bytes octets = name(set(de) + set(acme + one));
  for (size_t size = 0; size < octets.size(); ++size) {
    const auto decoded =
        decode(asn1_RDNSequence_d, Bytes(octets.begin(), octets.begin() + static_cast<long>(size)));
    const Sequence left(decoded.record);
    EXPECT_FALSE(decoded.ok()) << size;
  }
}

TEST(SequenceDecoder, GivesNullForNoInput) {
  const uint8_t octet = 0;
  List *place = nullptr;
  EXPECT_EQ(nullptr, asn1_RDNSequence_d(nullptr, &octet, 0, &place, 0));
  EXPECT_EQ(nullptr, asn1_RelativeDistinguishedName_d(nullptr, &octet, 0, &place, 0));
  EXPECT_EQ(nullptr, place);
}

TEST(SequenceEncoder, FailsWhenOneAssertionFails) {
  const Sequence record = sequence(name(set(de) + set(acme + one)));
  auto *inner = static_cast<List *>(List_get(record.get(), 1));
  auto *last = static_cast<AttributeValueAssertion *>(List_get(inner, 1));
  ASN1String *kept = last->value;
  last->value = nullptr;
  EXPECT_EQ(0U, asn1_RelativeDistinguishedName_e(nullptr, inner));
  EXPECT_EQ(0U, asn1_RDNSequence_e(nullptr, record.get()));

  uint8_t buffer[64] = {};
  uint8_t *cursor = buffer;
  EXPECT_EQ(0U, asn1_RDNSequence_e(&cursor, record.get()));
  EXPECT_EQ(buffer, cursor);
  EXPECT_EQ(Bytes(64, 0), Bytes(std::begin(buffer), std::end(buffer)));
  last->value = kept;
}

TEST(SequenceEncoder, FailsWhenTheSumDoesNotFit32Bits) {
  const Sequence record = sequence(name(set(de + acme) + set(one)));
  auto *values = List_get(record.get(), 0);
  auto *first = static_cast<AttributeValueAssertion *>(List_get(static_cast<List *>(values), 0));
  auto *second = static_cast<AttributeValueAssertion *>(List_get(static_cast<List *>(values), 1));
  const uint32_t first_length = first->value->length, second_length = second->value->length;
  // Each RDN fits, both together do not.
  first->value->length = 0x80000000U;
  second->value->length = 0x7FFFFFE0U;
  EXPECT_EQ(0U, asn1_RelativeDistinguishedName_e(nullptr, static_cast<List *>(values)));
  EXPECT_EQ(0U, asn1_RDNSequence_e(nullptr, record.get()));
  first->value->length = first_length;
  second->value->length = second_length;
}

TEST(SequenceEncoder, NormalisesLengths) {
  const Sequence record = sequence(hex("30 81 0F 31 82 00 0B 30 09 06 03 55 04 06 13 02 44 45"));
  EXPECT_EQ(name(set(de)), encode(asn1_RDNSequence_e, record.get()));
}

TEST(SequenceEncoder, WritesLengthsOfTwoOctets) {
  const Bytes octets = name(set(assertion(common_name, 0x0C, Bytes(300, 'x'))));
  EXPECT_EQ(hex("30 82 01 3D 31 82 01 39 30 82 01 35 06 03 55 04 03 0C 82 01 2C 78"),
            Bytes(octets.begin(), octets.begin() + 22));
  const Sequence record = sequence(octets);
  EXPECT_EQ(octets, encode(asn1_RDNSequence_e, record.get()));
}

// -------------------------------------------------------------------------------------------- trace

/// Returns the line of a dump of up to 16 octets.
std::string dump(std::string octets, const char *characters) {
  octets.resize(16 * 3, ' ');
  return "  0x00000000 " + octets + characters;
}

Lines trace(const Bytes &octets, uint32_t depth) {
  return trace_lines([&] { Sequence(decode(asn1_RDNSequence_d, octets, 0, depth).record); });
}

TEST(SequenceTrace, ShowsEveryLevel) {
  const Lines expected = {
      "SEQUENCE {",
      ". SET {",
      ". . SEQUENCE {",
      ". . . OBJECT IDENTIFIER ",
      ". . .   2.5.4.6",
      ". . . PRINTABLESTRING ",
      ". . . " + dump("44 45 ", "DE"),
      ". . }",
      ". }",
      ". SET {",
      ". . SEQUENCE {",
      ". . . OBJECT IDENTIFIER ",
      ". . .   2.5.4.10",
      ". . . UTF8STRING",
      ". . . " + dump("41 63 6D 65 ", "Acme"),
      ". . }",
      ". . SEQUENCE {",
      ". . . OBJECT IDENTIFIER ",
      ". . .   2.5.4.3",
      ". . . PRINTABLESTRING ",
      ". . . " + dump("4F 6E 65 ", "One"),
      ". . }",
      ". }",
      "}",
  };
  EXPECT_EQ(expected, trace(name(set(de) + set(acme + one)), 1));
}

TEST(SequenceTrace, DeepensWithTheDepthGiven) {
  const Lines expected = {". . SEQUENCE {", ". . }"};
  EXPECT_EQ(expected, trace(hex("30 00"), 3));
}

TEST(SequenceTrace, IsSilentAtDepthZero) {
  EXPECT_EQ(Lines{}, trace(name(set(de)), 0));
  EXPECT_EQ(Lines{}, trace(hex("31 00"), 0));
}

TEST(SequenceTrace, SaysNothingOfAnotherTag) { EXPECT_EQ(Lines{}, trace(hex("31 00"), 1)); }

TEST(SequenceTrace, TellsOfALengthBehindTheEnd) {
  const Lines expected = {"SEQUENCE {", "z larger than end!"};
  EXPECT_EQ(expected, trace(hex("30 03 31 00"), 1));
}

TEST(SequenceTrace, HasNoClosingLineOfWhatFailed) {
  const Lines expected = {"SEQUENCE {", ". SET {", ". . SEQUENCE {", ". . . OBJECT IDENTIFIER ",
                          ". . .   2.5.4.6"};
  EXPECT_EQ(expected, trace(name(set(element(0x30, country))), 1));
}

TEST(AssertionTrace, NamesTheTagOfTheValue) {
  const struct {
    const char *value;
    Lines lines;
  } rows[] = {
      {"00 00", {}},
      {"1F 00", {".  PRIMITIVE [31] "}},
      {"80 00", {". CONTEXT-SPECIFIC PRIMITIVE [0] {"}},
      {"41 00", {". APPLICATION PRIMITIVE [1] {"}},
      {"C2 00", {". PRIVATE PRIMITIVE [2] {"}},
      {"A0 02 80 00",
       {". CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". CONTEXT-SPECIFIC PRIMITIVE [0] {", "}"}},
      {"33 02 13 00", {". PRINTABLESTRING  {", ". PRINTABLESTRING ", "}"}},
  };
  for (const auto &row : rows) {
    Lines expected = {"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   2.5.4.3"};
    expected.insert(expected.end(), row.lines.begin(), row.lines.end());
    expected.push_back("}");
    const Bytes octets = element(0x30, common_name + hex(row.value));
    EXPECT_EQ(expected, trace_lines([&] {
                Ava(decode(asn1_AttributeValueAssertion_d, octets, 0, 1).record);
              }))
        << row.value;
  }
}

// ------------------------------------------------------------------------------ ends of the process

TEST(NameStructureDeathTest, DecodersAssertTheirPointers) {
  const uint8_t octets[] = {0x30, 0x00};
  AttributeValueAssertion *place = nullptr;
  EXPECT_ASSERT(asn1_AttributeValueAssertion_d(nullptr, octets + 2, 0, &place, 0), "asn1_Tag_d",
                "z != NULL");
  EXPECT_ASSERT(asn1_AttributeValueAssertion_d(octets, nullptr, 0, &place, 0), "asn1_Tag_d",
                "end != NULL");
  EXPECT_ASSERT(asn1_RelativeDistinguishedName_d(octets, octets + 2, 0, nullptr, 0), "asn1_List_d",
                "ppList != NULL");
  EXPECT_ASSERT(asn1_RDNSequence_d(octets, octets + 2, 0, nullptr, 0), "asn1_List_d",
                "ppList != NULL");
}

TEST(NameStructureDeathTest, TheComparisonAssertsTheTypes) {
  const Ava full = ava(de);
  const Ava empty(asn1_AttributeValueAssertion_new());
  EXPECT_ASSERT(asn1_AttributeValueAssertion_cmp(empty.get(), full.get()), "asn1_ObjId_cmp",
                "oid1 != NULL");
  EXPECT_ASSERT(asn1_AttributeValueAssertion_cmp(full.get(), empty.get()), "asn1_ObjId_cmp",
                "oid2 != NULL");
}

// --------------------------------------------------------------------------------- exhausted memory

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(NameStructureMemory, EachFailingAllocationFailsTheDecoder) {
  const support::Input input(name(set(de) + set(acme + one)));
  support::expect_failure_at_each_allocation([&] {
    List *place = nullptr;
    const bool succeeded = asn1_RDNSequence_d(input.z(), input.end(), 0, &place, 0) != nullptr;
    EXPECT_EQ(succeeded, place != nullptr);
    asn1_RDNSequence_free(place);
    return succeeded;
  });
}

TEST(NameStructureMemory, EachFailingAllocationFailsTheClone) {
  const Sequence source = sequence(name(set(de) + set(acme + one)));
  support::expect_failure_at_each_allocation([&] {
    RDNSequence *copy = asn1_RDNSequence_clone(source.get());
    const bool succeeded = copy != nullptr;
    asn1_RDNSequence_free(copy);
    return succeeded;
  });
}

#endif

}  // namespace

}  // namespace name_structure_test
