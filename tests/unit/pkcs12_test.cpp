// Tests PKCS #12: the container, its MAC, and the bags.
#include "messages.h"

namespace pkcs12_test {

namespace {

using namespace support;

#define FAMILY(T) \
  RecordFamily<T> { asn1_##T##_new, asn1_##T##_free, asn1_##T##_e, asn1_##T##_d, asn1_##T##_clone }
const auto exchanges = FAMILY(PFX);
const auto macs = FAMILY(MacData);
const auto parameters = FAMILY(PbeParams);
const auto safe_bags = FAMILY(SafeBag);

// ---- octets -------------------------------------------------------------------------------------

const Bytes data = content_type(1);
const Bytes abc = message(data, octet_string(text("abc")));
const Bytes sha1_digest = hex("30 0F 30 09 06 05 2B 0E 03 02 1A 05 00 04 02 D1 D2");
const Bytes salt = hex("04 02 5A 5B");
const Bytes iterations_2048 = hex("02 02 08 00");
const Bytes mac = sequence(sha1_digest + salt + iterations_2048);
const Bytes version_3 = hex("02 01 03");
const Bytes exchange = version_3 + abc + mac;  // the content of a PFX

const Bytes cert_bag_type = hex("06 0B 2A 86 48 86 F7 0D 01 0C 0A 01 03");
const Bytes x509_certificate = hex("06 0A 2A 86 48 86 F7 0D 01 09 16 01");
const Bytes friendly_name = hex("30 13 06 09 2A 86 48 86 F7 0D 01 09 14 31 06 1E 04 00 41 00 42");
const Bytes local_key_id = hex("30 10 06 09 2A 86 48 86 F7 0D 01 09 15 31 03 04 01 07");
const Bytes wrapped_certificate = hex("04 04 30 02 05 00");
const Bytes cert_bag = sequence(x509_certificate + explicit_0(wrapped_certificate));
const Bytes bag = cert_bag_type + explicit_0(cert_bag);  // the content of a SafeBag

// ---- PFX ----------------------------------------------------------------------------------------

TEST(Pfx, NewRecordIsZero) { expect_new_record_is_zero(exchanges); }
TEST(Pfx, CloneIsDeep) { expect_deep_clone(exchanges, sequence(exchange)); }

TEST(Pfx, TakesItsHeaderInAnyLengthForm) {
  expect_sequence_of_any_length(exchanges, exchange);
  expect_huge_lengths_refused(exchanges, exchange);
}

TEST(Pfx, KeepsAllFieldsInOrder) {
  const auto record = decoded(exchanges, sequence(exchange));
  EXPECT_EQ(3U, asn1_Integer_get(record->version));
  EXPECT_EQ(text("abc"), value(static_cast<OctetString *>(record->authSafe->content->value)));
  EXPECT_EQ(2048U, asn1_Integer_get(record->macData->iterations));
  expect_kept(exchanges, sequence(exchange));
}

TEST(Pfx, AnyVersionIsTaken) {
  for (const char *version : {"02 01 00", "02 01 01", "02 01 FF", "02 05 01 02 03 04 05"}) {
    expect_kept(exchanges, sequence(hex(version) + abc));
  }
}

TEST(Pfx, TheMacMayBeAbsent) {
  const auto record = decoded(exchanges, sequence(version_3 + abc));
  EXPECT_EQ(nullptr, record->macData);
  expect_kept(exchanges, sequence(version_3 + abc));
  expect_rewritten(exchanges, indefinite(0x30, version_3 + abc), sequence(version_3 + abc));
}

TEST(Pfx, TheSafeHoldsWhatItsTypeSays) {
  const Bytes encrypted =
      hex("30 17 02 01 00 30 12 06 01 2A 30 08 06 06 2A 86 48 86 F7 0D"
          "80 03 E1 E2 E3");
  expect_kept(exchanges, sequence(version_3 + sequence(data)));
  expect_kept(exchanges, sequence(version_3 + message(content_type(6), encrypted) + mac));
  expect_kept(exchanges, sequence(version_3 + message(content_type(3), hex("05 00")) + mac));
  const Bytes signed_data = hex("30 0C 02 01 01 31 00 30 03 06 01 2A 31 00");
  expect_kept(exchanges, sequence(version_3 + message(content_type(2), signed_data) + mac));
}

TEST(Pfx, AllLevelsMayBeIndefinite) {
  const Bytes string = indefinite(0x24, hex("04 01 61 04 02 62 63"));
  const Bytes safe = indefinite(0x30, data + indefinite(0xA0, string));
  expect_rewritten(exchanges, indefinite(0x30, version_3 + safe), sequence(version_3 + abc));
  expect_rewritten(exchanges, indefinite(0x30, version_3 + safe + mac), sequence(exchange));
  expect_refused(exchanges, hex("30 80") + version_3 + safe + mac);
}

TEST(Pfx, AMacMayFollowAnIndefiniteSafe) {
  const Bytes content = octet_string(text("abc"));
  for (const Bytes &safe : {indefinite(0x30, data + explicit_0(content)),
                            indefinite(0x30, data + indefinite(0xA0, content)),
                            sequence(data + indefinite(0xA0, content))}) {
    expect_rewritten(exchanges, sequence(version_3 + safe + mac), sequence(exchange));
  }
}

TEST(Pfx, AnotherOctetBehindTheSafeCountsAsNoMac) {
  for (const Bytes &field : {hex("31 00"), hex("10 00"), hex("A0 00"), hex("05 00"), hex("FF")}) {
    SCOPED_TRACE(testing::PrintToString(field));
    expect_rewritten(exchanges, sequence(version_3 + abc + field), sequence(version_3 + abc),
                     field.size());
    expect_refused(exchanges, indefinite(0x30, version_3 + abc + field));
  }
}

TEST(Pfx, ABadMacFails) {
  expect_refused(exchanges, sequence(version_3 + abc + hex("30 00")));
  expect_refused(exchanges,
                 sequence(version_3 + abc + hex("30 80") + sha1_digest + salt + hex("00 00")));
}

TEST(Pfx, VersionAndSafeAreRequired) {
  expect_refused(exchanges, hex("30 00"));
  expect_refused(exchanges, hex("30 80 00 00"));
  expect_refused(exchanges, sequence(version_3));
  expect_refused(exchanges, sequence(abc + mac));
  expect_refused(exchanges, sequence(version_3 + hex("31 00")));
  expect_refused(exchanges, sequence(version_3 + message(data, hex("02 01 00"))));
}

TEST(Pfx, EveryCutAheadOfTheMacIsRefused) {
  const Bytes content = version_3 + abc;
  // The safe is written with its length, and so is the container.
  for (size_t size = 0; size < content.size(); ++size) {
    const Bytes cut(content.begin(), content.begin() + static_cast<long>(size));
    expect_refused(exchanges, sequence(cut));
    expect_refused(exchanges, indefinite(0x30, cut));
  }
}

TEST(PfxEncoder, FailsWithoutAVersion) {
  const auto record = decoded(exchanges, sequence(exchange));
  clear(record->version, asn1_Integer_free);
  expect_nothing_written(exchanges, record.get());
  // It fails before the safe, which must not be NULL.
  clear(record->authSafe, asn1_ContentInfo_free);
  expect_nothing_written(exchanges, record.get());
}

TEST(PfxEncoder, LeavesOutAMacThatIsNull) {
  const auto record = decoded(exchanges, sequence(exchange));
  clear(record->macData, asn1_MacData_free);
  EXPECT_EQ(sequence(version_3 + abc), encoded(exchanges, record));
}

TEST(PfxEncoder, FailsWhereTheSafeHasNoType) {
  const auto record = decoded(exchanges, sequence(exchange));
  const Untyped untyped(asn1_ContentInfo_new());
  ContentInfo *const safe = record->authSafe;
  record->authSafe = untyped.get();
  expect_nothing_written(exchanges, record.get());
  record->authSafe = safe;
}

TEST(PfxClone, TakesAHalfFilledRecord) {
  const auto record = created(exchanges);
  record->macData = asn1_MacData_new();
  const auto copy = cloned(exchanges, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy->version);
  EXPECT_EQ(nullptr, copy->authSafe);
  ASSERT_NE(nullptr, copy->macData);
  EXPECT_EQ(nullptr, copy->macData->mac);
}

// ---- MacData ------------------------------------------------------------------------------------

TEST(MacDataRecord, NewRecordIsZero) { expect_new_record_is_zero(macs); }
TEST(MacDataRecord, CloneIsDeep) { expect_deep_clone(macs, mac); }
TEST(MacDataRecord, ExhaustedMemoryFails) { expect_exhausted_memory_to_fail(macs, mac); }

TEST(MacDataRecord, IsASequenceOfDefiniteLength) {
  const Bytes content = sha1_digest + salt + iterations_2048;
  expect_sequence_of_definite_length(macs, content);
  expect_huge_lengths_refused(macs, content);
  // The last field is optional.
  expect_every_cut_refused(macs, content, {content.size() - iterations_2048.size()});
}

TEST(MacDataRecord, KeepsItsFields) {
  const auto record = decoded(macs, mac);
  EXPECT_EQ(hex("D1 D2"), value(record->mac->digest));
  EXPECT_EQ(hex("5A 5B"), value(record->macSalt));
  EXPECT_EQ(2048U, asn1_Integer_get(record->iterations));
  expect_kept(macs, mac);
}

TEST(MacDataRecord, AbsentIterationsStayAbsent) {
  const Bytes octets = sequence(sha1_digest + salt);
  const auto record = decoded(macs, octets);
  EXPECT_EQ(nullptr, record->iterations);
  expect_kept(macs, octets);
}

TEST(MacDataRecord, IterationsAreKeptWhateverTheirNumber) {
  for (const char *iterations : {"02 01 01", "02 01 00", "02 01 FF", "02 02 08 00"}) {
    expect_kept(macs, sequence(sha1_digest + salt + hex(iterations)));
  }
}

TEST(MacDataRecord, AnotherOctetBehindTheSaltCountsAsNoIterations) {
  for (const char *field : {"0A 01 01", "22 01 01", "82 01 01", "05 00", "FF"}) {
    expect_rewritten(macs, sequence(sha1_digest + salt + hex(field)), sequence(sha1_digest + salt),
                     hex(field).size());
  }
}

TEST(MacDataRecord, EachRequiredFieldIsRequired) {
  expect_refused(macs, hex("30 00"));
  expect_refused(macs, sequence(sha1_digest));
  expect_refused(macs, sequence(salt));
  expect_refused(macs, sequence(salt + sha1_digest));
  expect_refused(macs, sequence(sha1_digest + iterations_2048));
  expect_refused(macs, sequence(sha1_digest + salt + hex("02 00")));
}

TEST(MacDataRecord, AConstructedSaltComesBackPrimitive) {
  expect_rewritten(macs, sequence(sha1_digest + hex("24 80 04 01 5A 04 01 5B 00 00")),
                   sequence(sha1_digest + salt));
}

TEST(MacDataEncoder, FailsWithoutASalt) {
  const auto record = decoded(macs, mac);
  clear(record->macSalt, asn1_OctetString_free);
  expect_nothing_written(macs, record.get());
}

TEST(MacDataEncoder, FailsWhereTheDigestFails) {
  const auto record = decoded(macs, mac);
  clear(record->mac->digest, asn1_OctetString_free);
  expect_nothing_written(macs, record.get());
}

TEST(MacDataClone, TakesAHalfFilledRecord) {
  const auto record = created(macs);
  record->iterations = asn1_Integer_set(1);
  const auto copy = cloned(macs, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy->mac);
  EXPECT_EQ(nullptr, copy->macSalt);
  EXPECT_EQ(1U, asn1_Integer_get(copy->iterations));
}

// ---- PbeParams ----------------------------------------------------------------------------------

const Bytes salt_and_iterations = salt + iterations_2048;

TEST(PbeParamsRecord, NewRecordIsZero) { expect_new_record_is_zero(parameters); }
TEST(PbeParamsRecord, CloneIsDeep) { expect_deep_clone(parameters, sequence(salt_and_iterations)); }
TEST(PbeParamsRecord, ExhaustedMemoryFails) {
  expect_exhausted_memory_to_fail(parameters, sequence(salt_and_iterations));
}

TEST(PbeParamsRecord, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(parameters, salt_and_iterations);
  expect_huge_lengths_refused(parameters, salt_and_iterations);
  expect_every_cut_refused(parameters, salt_and_iterations);
}

TEST(PbeParamsRecord, KeepsItsFields) {
  const auto record = decoded(parameters, sequence(salt_and_iterations));
  EXPECT_EQ(hex("5A 5B"), value(record->salt));
  EXPECT_EQ(2048U, asn1_Integer_get(record->iterations));
  expect_kept(parameters, sequence(salt_and_iterations));
  expect_kept(parameters, sequence(hex("04 00 02 01 00")));
}

TEST(PbeParamsRecord, EachFieldIsRequired) {
  for (const Bytes &content :
       {Bytes(), salt, iterations_2048, iterations_2048 + salt, salt + hex("0A 01 01")}) {
    expect_refused(parameters, sequence(content));
  }
}

TEST(PbeParamsRecord, IsFoundInTheParametersOfAnAlgorithm) {
  const Owned<AlgId, asn1_AlgId_free> algorithm(
      decode(asn1_AlgId_d,
             sequence(hex("06 0A 2A 86 48 86 F7 0D 01 0C 01 03") + sequence(salt_and_iterations)))
          .record);
  ASSERT_NE(nullptr, algorithm);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_pbeWithSHA1And3_KeyTripleDES_CBC(), algorithm->algorithm));
  expect_kept(parameters, value(algorithm->parameters));
}

TEST(PbeParamsEncoder, FailsWithoutAField) {
  const auto record = decoded(parameters, sequence(salt_and_iterations));
  clear(record->iterations, asn1_Integer_free);
  expect_nothing_written(parameters, record.get());
  record->iterations = asn1_Integer_set(2048);
  EXPECT_EQ(sequence(salt_and_iterations), encoded(parameters, record));
  clear(record->salt, asn1_OctetString_free);
  expect_nothing_written(parameters, record.get());
}

TEST(PbeParamsClone, TakesAHalfFilledRecord) {
  const auto record = created(parameters);
  record->iterations = asn1_Integer_set(7);
  const auto copy = cloned(parameters, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy->salt);
  EXPECT_EQ(7U, asn1_Integer_get(copy->iterations));
}

// ---- SafeBag ------------------------------------------------------------------------------------

const Bytes attributes = element(0x31, friendly_name + local_key_id);

TEST(SafeBagRecord, NewRecordIsZero) { expect_new_record_is_zero(safe_bags); }
TEST(SafeBagRecord, CloneIsDeep) { expect_deep_clone(safe_bags, sequence(bag + attributes)); }
TEST(SafeBagRecord, ExhaustedMemoryFails) {
  expect_exhausted_memory_to_fail(safe_bags, sequence(bag + attributes));
}

TEST(SafeBagRecord, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(safe_bags, bag + attributes);
  expect_huge_lengths_refused(safe_bags, bag + attributes);
  // The last field is optional.
  expect_every_cut_refused(safe_bags, bag + attributes, {bag.size()});
}

TEST(SafeBagRecord, KeepsAllFieldsInOrder) {
  const auto record = decoded(safe_bags, sequence(bag + attributes));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_certBag(), record->bagId));
  EXPECT_EQ(cert_bag, value(record->bagValue));
  ASSERT_EQ(2, List_len(record->bagAttributes));
  EXPECT_EQ(List_get(record->bagAttributes, 1),
            asn1_Attributes_getAttribute(record->bagAttributes, asn1_Get_localKeyId()));
  expect_kept(safe_bags, sequence(bag + attributes));
}

TEST(SafeBagRecord, AbsentAttributesStayAbsentAndEmptyOnesEmpty) {
  const auto without = decoded(safe_bags, sequence(bag));
  EXPECT_EQ(nullptr, without->bagAttributes);
  expect_kept(safe_bags, sequence(bag));
  const auto with = decoded(safe_bags, sequence(bag + hex("31 00")));
  ASSERT_NE(nullptr, with->bagAttributes);
  EXPECT_EQ(0, List_len(with->bagAttributes));
  expect_kept(safe_bags, sequence(bag + hex("31 00")));
}

TEST(SafeBagRecord, AnythingButASetBehindTheValueFails) {
  for (const char *field : {"04 00", "30 00", "A0 00", "B1 00", "05 00", "FF", "00 00"}) {
    SCOPED_TRACE(field);
    expect_refused(safe_bags, sequence(bag + hex(field)));
  }
  decoded(safe_bags, sequence(bag + hex("11 00")));  // a SET in primitive form is accepted
}

TEST(SafeBagRecord, OnlyTheAttributesMayBeIndefinite) {
  const Bytes list = friendly_name + local_key_id;
  expect_rewritten(safe_bags, sequence(bag + indefinite(0x31, list)), sequence(bag + attributes));
  expect_refused(safe_bags, sequence(bag + indefinite(0x31, list) + hex("05 00")));
  expect_refused(safe_bags, sequence(bag + element(0x31, indefinite(0x30, hex("06 01 2A 31 00")))));
  expect_refused(safe_bags, sequence(cert_bag_type + indefinite(0xA0, cert_bag)));
  expect_refused(safe_bags, sequence(cert_bag_type + explicit_0(indefinite(0x30, hex("05 00")))));
}

TEST(SafeBagRecord, TheValueIsAnyElementAndNotLookedAt) {
  for (const char *content : {"05 00", "FF 01 00", "30 00", "1F 00", "30 02 FF FF"}) {
    expect_kept(safe_bags, sequence(cert_bag_type + explicit_0(hex(content))));
  }
}

TEST(SafeBagRecord, TheWrapperMayBePrimitive) {
  expect_rewritten(safe_bags, sequence(cert_bag_type + element(0x80, cert_bag)), sequence(bag));
}

TEST(SafeBagRecord, TypeAndValueAreRequired) {
  for (const Bytes &content :
       {Bytes(), cert_bag_type, explicit_0(cert_bag), cert_bag_type + hex("A0 00"),
        cert_bag_type + hex("A1 02 05 00"), cert_bag_type + cert_bag, cert_bag_type + attributes,
        cert_bag_type + hex("A0 84 80 00 00 00 05 00")}) {
    SCOPED_TRACE(testing::PrintToString(content));
    expect_refused(safe_bags, sequence(content));
  }
}

TEST(SafeBagRecord, WhatTheWrapperLeavesIsReadAsTheNextField) {
  expect_refused(safe_bags, sequence(cert_bag_type + explicit_0(hex("05 00 05 00"))));
  const auto record = decoded(safe_bags, sequence(cert_bag_type + explicit_0(hex("05 00 31 00"))));
  ASSERT_NE(nullptr, record);
  EXPECT_NE(nullptr, record->bagAttributes);
}

TEST(SafeBagRecord, TheContentsOfASafeAreAListOfBags) {
  const Bytes safe = sequence(sequence(bag) + sequence(bag + attributes));
  const Input input(safe);
  List *bags = nullptr;
  EXPECT_EQ(input.end(),
            asn1_SeqOf_d(input.z(), input.end(), 0, asn1_SafeBag_d, asn1_SafeBag_free, &bags, 0));
  EXPECT_EQ(2, List_len(bags));
  EXPECT_EQ(safe,
            encode_with([&](uint8_t **pp) { return asn1_SeqOf_e(pp, bags, asn1_SafeBag_e); }));
  List_free(bags, asn1_SafeBag_free);
}

TEST(SafeBagEncoder, FailsWithoutAType) {
  const auto record = decoded(safe_bags, sequence(bag));
  clear(record->bagId, asn1_ObjId_free);
  expect_nothing_written(safe_bags, record.get());
  // It fails before the value, which must not be NULL where there is a type.
  expect_nothing_written(safe_bags, created(safe_bags).get());
}

TEST(SafeBagEncoder, FailsOnAnEmptyValueOrABadAttribute) {
  const auto record = decoded(safe_bags, sequence(bag + attributes));
  auto *attribute = static_cast<Attribute *>(List_get(record->bagAttributes, 0));
  clear(attribute->type, asn1_ObjId_free);
  expect_nothing_written(safe_bags, record.get());
  List_free(record->bagAttributes, asn1_Attribute_free);
  record->bagAttributes = nullptr;
  EXPECT_EQ(sequence(bag), encoded(safe_bags, record));
  asn1_Any_free(record->bagValue);
  record->bagValue = asn1_Any_new(0);
  expect_nothing_written(safe_bags, record.get());
}

TEST(SafeBagClone, TakesAHalfFilledRecord) {
  const auto record = created(safe_bags);
  record->bagAttributes = List_new(0);
  const auto copy = cloned(safe_bags, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy->bagId);
  EXPECT_EQ(nullptr, copy->bagValue);
  EXPECT_NE(nullptr, copy->bagAttributes);
}

// ---- the small bags, one design three times -----------------------------------------------------

struct CertBags {
  using T = CertBag;
  static constexpr RecordFamily<T> family = FAMILY(CertBag);
  static constexpr ObjId *T::*id = &T::certId;
  static constexpr Any *T::*content = &T::certValue;
};
struct CrlBags {
  using T = CRLBag;
  static constexpr RecordFamily<T> family = FAMILY(CRLBag);
  static constexpr ObjId *T::*id = &T::crlId;
  static constexpr Any *T::*content = &T::crlValue;
};
struct SecretBags {
  using T = SecretBag;
  static constexpr RecordFamily<T> family = FAMILY(SecretBag);
  static constexpr ObjId *T::*id = &T::secretTypeId;
  static constexpr Any *T::*content = &T::secretValue;
};
#undef FAMILY

template <class Bags>
class SmallBag : public testing::Test {};
struct BagName {
  template <class Bags>
  static std::string GetName(int) {
    if (std::is_same_v<Bags, CertBags>) return "CertBag";
    return std::is_same_v<Bags, CrlBags> ? "CRLBag" : "SecretBag";
  }
};
using SmallBags = testing::Types<CertBags, CrlBags, SecretBags>;
TYPED_TEST_SUITE(SmallBag, SmallBags, BagName);

const Bytes small_bag = x509_certificate + explicit_0(wrapped_certificate);

TYPED_TEST(SmallBag, NewRecordIsZero) { expect_new_record_is_zero(TypeParam::family); }
TYPED_TEST(SmallBag, CloneIsDeep) { expect_deep_clone(TypeParam::family, cert_bag); }
TYPED_TEST(SmallBag, ExhaustedMemoryFails) {
  expect_exhausted_memory_to_fail(TypeParam::family, cert_bag);
}

TYPED_TEST(SmallBag, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(TypeParam::family, small_bag);
  expect_huge_lengths_refused(TypeParam::family, small_bag);
  expect_every_cut_refused(TypeParam::family, small_bag);
}

TYPED_TEST(SmallBag, TheValueKeepsItsOwnWrapper) {
  const auto record = decoded(TypeParam::family, cert_bag);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_x509Certificate(), record.get()->*TypeParam::id));
  EXPECT_EQ(wrapped_certificate, value(record.get()->*TypeParam::content));
  expect_kept(TypeParam::family, cert_bag);
}

TYPED_TEST(SmallBag, TheValueIsAnyElementOfDefiniteLength) {
  for (const char *content : {"05 00", "FF 01 00", "30 00", "1F 00"}) {
    expect_kept(TypeParam::family, sequence(x509_certificate + explicit_0(hex(content))));
  }
  expect_refused(TypeParam::family,
                 sequence(x509_certificate + explicit_0(indefinite(0x30, hex("05 00")))));
  expect_refused(TypeParam::family,
                 sequence(x509_certificate + indefinite(0xA0, wrapped_certificate)));
}

TYPED_TEST(SmallBag, BothFieldsAreRequired) {
  for (const Bytes &content :
       {Bytes(), x509_certificate, explicit_0(wrapped_certificate), x509_certificate + hex("A0 00"),
        x509_certificate + hex("A1 02 05 00"), x509_certificate + wrapped_certificate}) {
    expect_refused(TypeParam::family, sequence(content));
  }
}

TYPED_TEST(SmallBag, TheEncoderFailsWithoutATypeOrOnAnEmptyValue) {
  const auto &family = TypeParam::family;
  // The type is encoded first and fails: a value of NULL does not end the process then.
  expect_nothing_written(family, created(family).get());
  const auto record = decoded(family, cert_bag);
  asn1_Any_free(record.get()->*TypeParam::content);
  record.get()->*TypeParam::content = asn1_Any_new(0);
  expect_nothing_written(family, record.get());
  clear(record.get()->*TypeParam::id, asn1_ObjId_free);
  expect_nothing_written(family, record.get());
}

TYPED_TEST(SmallBag, TheCloneTakesAHalfFilledRecord) {
  const auto record = created(TypeParam::family);
  record.get()->*TypeParam::content = asn1_Any_new(3);
  const auto copy = cloned(TypeParam::family, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy.get()->*TypeParam::id);
  EXPECT_EQ(Bytes(3, 0), value(copy.get()->*TypeParam::content));
}

// ---- trace --------------------------------------------------------------------------------------

TEST(ExchangeTrace, ShowsTheContainerTheSafeAndTheMac) {
  const Lines expected = {"SEQUENCE {",
                          ". INTEGER",
                          ".  3",
                          ". SEQUENCE {",
                          ". . OBJECT IDENTIFIER ",
                          ". .   1.2.840.113549.1.7.1",
                          ". . . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
                          ". . . OCTETSTRING",
                          ". . . " + dump("61 62 63", "abc"),
                          ". . }",
                          ". }",
                          ". SEQUENCE {",
                          ". . SEQUENCE {",
                          ". . . SEQUENCE {",
                          ". . . . OBJECT IDENTIFIER ",
                          ". . . .   1.3.14.3.2.26",
                          ". . . . [ANY]",
                          ". . . . " + dump("05 00", ".."),
                          ". . . }",
                          ". . . OCTETSTRING",
                          ". . . " + dump("D1 D2", ".."),
                          ". . }",
                          ". . OCTETSTRING",
                          ". . " + dump("5A 5B", "Z["),
                          ". . INTEGER",
                          ". .  2048",
                          ". }",
                          "}"};
  EXPECT_EQ(expected, traced(exchanges, sequence(exchange)));
  EXPECT_EQ(expected, traced(exchanges, indefinite(0x30, exchange)));
  EXPECT_EQ(Lines(), traced(exchanges, sequence(exchange), 0));
}

TEST(ExchangeTrace, TheWrapperOfABagStandsAtTheLevelOfItsValue) {
  const Bytes content = cert_bag_type + explicit_0(hex("05 00")) + hex("31 00");
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549.1.12.10.1.3",
                   ". CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". [ANY]", ". " + dump("05 00", ".."),
                   ". SET {", ". }", "}"}),
            traced(safe_bags, sequence(content)));
}

TYPED_TEST(SmallBag, TheTraceShowsTheWrapperAtTheLevelOfItsValue) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549.1.9.22.1",
                   ". CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". [ANY]",
                   ". " + dump("04 04 30 02 05 00", "..0..."), "}"}),
            traced(TypeParam::family, cert_bag));
}

TEST(ExchangeTrace, ShowsTheParametersOfAnEncryption) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". OCTETSTRING", ". " + dump("5A 5B", "Z["), ". INTEGER",
                   ".  2048", "}"}),
            traced(parameters, sequence(salt_and_iterations)));
}

// ---- ends of the process ------------------------------------------------------------------------

TEST(PfxDeathTest, ASafeWithoutAWellFormedTypeEndsTheProcess) {
  for (const char *content : {"", "A0 02 04 00", "02 01 05", "06 02 2A"}) {
    SCOPED_TRACE(content);
    const Bytes fields = version_3 + sequence(hex(content));
    EXPECT_EXIT(decode(asn1_PFX_d, sequence(fields)), aborted, no_type);
    EXPECT_EXIT(decode(asn1_PFX_d, indefinite(0x30, fields)), aborted, no_type);
  }
}

TEST(PfxDeathTest, ASafeThatWasMadeAndNotFilledCannotBeReleased) {
  EXPECT_EXIT(
      {
        PFX *record = asn1_PFX_new();
        record->authSafe = asn1_ContentInfo_new();
        asn1_PFX_free(record);
      },
      aborted, no_type);
}

TEST(PfxDeathTest, ASafeThatWasMadeAndNotFilledCannotBeCopied) {
  const auto record = created(exchanges);
  const Untyped safe(asn1_ContentInfo_new());
  record->authSafe = safe.get();
  EXPECT_EXIT(asn1_PFX_clone(record.get()), aborted, no_type);
  record->authSafe = nullptr;
}

TEST(PfxDeathTest, TheEncodersNeedTheirRecords) {
  expect_encoder_ends_the_process<PFX>(exchanges, nullptr);
  expect_encoder_ends_the_process<MacData>(macs, nullptr);
  expect_encoder_ends_the_process<PbeParams>(parameters, nullptr);
  expect_encoder_ends_the_process<SafeBag>(safe_bags, nullptr);

  const auto without_safe = decoded(exchanges, sequence(exchange));
  clear(without_safe->authSafe, asn1_ContentInfo_free);
  expect_encoder_ends_the_process<PFX>(exchanges, without_safe.get());
  const auto without_digest = decoded(macs, mac);
  clear(without_digest->mac, asn1_DigestInfo_free);
  expect_encoder_ends_the_process<MacData>(macs, without_digest.get());
}

TEST(PfxDeathTest, TheDecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(exchanges);
  expect_decoder_asserts_its_cursors(macs);
  expect_decoder_asserts_its_cursors(parameters);
  expect_decoder_asserts_its_cursors(safe_bags);
}

/// Returns a bag with a type and a NULL value.
template <class T>
void expect_value_needed(const RecordFamily<T> &family, const T *record) {
  uint8_t buffer[64];
  uint8_t *cursor = buffer;
  EXPECT_ASSERT(family.encode(nullptr, record), "asn1_explicit_e", "pElement");
  EXPECT_ASSERT(family.encode(&cursor, record), "asn1_explicit_e", "pElement");
}

TEST(SafeBagDeathTest, AValueIsRequiredBesideAType) {
  const auto record = decoded(safe_bags, sequence(bag));
  clear(record->bagValue, asn1_Any_free);
  expect_value_needed<SafeBag>(safe_bags, record.get());
}

template <class Bags>
class SmallBagDeathTest : public testing::Test {};
TYPED_TEST_SUITE(SmallBagDeathTest, SmallBags, BagName);

TYPED_TEST(SmallBagDeathTest, AValueIsRequiredBesideAType) {
  const auto record = decoded(TypeParam::family, cert_bag);
  clear(record.get()->*TypeParam::content, asn1_Any_free);
  expect_value_needed<typename TypeParam::T>(TypeParam::family, record.get());
}

TYPED_TEST(SmallBagDeathTest, TheEncoderNeedsARecordAndTheDecoderItsCursors) {
  expect_encoder_ends_the_process<typename TypeParam::T>(TypeParam::family, nullptr);
  expect_decoder_asserts_its_cursors(TypeParam::family);
}

// ---- exhausted memory ---------------------------------------------------------------------------

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(PfxMemoryDeathTest, ExhaustionGivesNullOrLeavesASafeWithoutAType) {
  const Bytes octets = sequence(exchange);
  const Input input(octets);
  expect_null_or_end(exchanges, [&] {
    PFX *record = nullptr;
    asn1_PFX_d(input.z(), input.end(), 0, &record, 0);
    return record;
  });
  const auto source = decoded(exchanges, octets);
  expect_null_or_end(exchanges, [&] { return asn1_PFX_clone(source.get()); });
  EXPECT_EXIT(run_exhausted(0, asn1_PFX_new), testing::ExitedWithCode(0), "^$");
}

#endif

}  // namespace

}  // namespace pkcs12_test
