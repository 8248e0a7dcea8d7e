// Tests messages: the value of each content type, both length forms, stored issuers, and messages
// inside messages. The inputs are put together from small pieces, so that each field can be left
// out, moved or spoilt.
#include "messages.h"
#include "nest.h"

namespace pkcs7_test {

namespace {

using namespace support;

#define FAMILY(T) \
  RecordFamily<T> { asn1_##T##_new, asn1_##T##_free, asn1_##T##_e, asn1_##T##_d, asn1_##T##_clone }
const auto messages = FAMILY(ContentInfo);
const auto signed_datas = FAMILY(SignedData);
const auto signers = FAMILY(SignerInfo);
const auto issueds = FAMILY(IssuerAndSerialNumber);
const auto encrypted_datas = FAMILY(EncryptedData);
const auto encrypted_contents = FAMILY(EncryptedContentInfo);
#undef FAMILY

// ---- octets -------------------------------------------------------------------------------------

const Bytes data = content_type(1);
const Bytes signed_data_type = content_type(2);
const Bytes enveloped_data = content_type(3);
const Bytes encrypted_data_type = content_type(6);

const Bytes eoc = hex("00 00");
const Bytes empty_set = hex("31 00");
const Bytes sha256 = hex("30 0D 06 09 60 86 48 01 65 03 04 02 01 05 00");
const Bytes rsa = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 01 05 00");
const Bytes germany = hex("30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45");
// A serialNumber attribute, whose text "/sn(19)=123" the reader of names takes for a surname.
const Bytes numbered = hex("30 0E 31 0C 30 0A 06 03 55 04 05 13 03 31 32 33");
const Bytes content_type_attribute =
    hex("30 18 06 09 2A 86 48 86 F7 0D 01 09 03 31 0B 06 09 2A 86 48 86 F7 0D 01 07 01");
const Bytes empty_attribute = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 09 05 31 00");

const Bytes detached = sequence(data);
const Bytes abc = message(data, octet_string(text("abc")));

Bytes issued(const Bytes &issuer) { return sequence(issuer + integer(5)); }

/// The fields of a SignerInfo, as octets of the input.
struct Signer {
  Bytes version = integer(1);
  Bytes issuer_and_serial = issued(germany);
  Bytes digest_algorithm = sha256;
  Bytes authenticated;
  Bytes encryption_algorithm = rsa;
  Bytes encrypted_digest = hex("04 02 D1 D2");
  Bytes unauthenticated;

  Bytes content() const {
    return version + issuer_and_serial + digest_algorithm + authenticated + encryption_algorithm +
           encrypted_digest + unauthenticated;
  }
  Bytes octets() const { return sequence(content()); }
};
Signer full_signer() {
  Signer signer;
  signer.authenticated = element(0xA0, content_type_attribute + empty_attribute);
  signer.unauthenticated = element(0xA1, empty_attribute);
  return signer;
}

/// The fields of a SignedData, as octets of the input.
struct Signed {
  Bytes version = integer(1);
  Bytes digest_algorithms = element(0x31, sha256);
  Bytes content_info = detached;
  Bytes certificates;
  Bytes crls;
  Bytes signer_infos = element(0x31, Signer().octets());

  Bytes content() const {
    return version + digest_algorithms + content_info + certificates + crls + signer_infos;
  }
  Bytes octets() const { return sequence(content()); }
};
Signed full_signed() {
  Signed fields;
  fields.certificates = hex("A0 05 30 03 02 01 07");
  fields.crls = hex("A1 06 30 00 30 02 05 00");
  return fields;
}

/// The fields of an EncryptedContentInfo, as octets of the input.
struct Encrypted {
  Bytes type = data;
  Bytes algorithm = sha256;
  Bytes octets_field = hex("80 03 E1 E2 E3");

  Bytes content() const { return type + algorithm + octets_field; }
  Bytes octets() const { return sequence(content()); }
};
Encrypted without_content() {
  Encrypted fields;
  fields.octets_field = {};
  return fields;
}
const Bytes encrypted_data = sequence(integer(0) + Encrypted().octets());

// ---- checks -------------------------------------------------------------------------------------

template <class T>
T *content_of(const Held<ContentInfo> &info) {
  return static_cast<T *>(info->content->value);
}

/// Returns a message of a type, without a value.
Held<ContentInfo> typed(const Bytes &type) {
  Held<ContentInfo> info = created(messages);
  info->contentType = decode(asn1_ObjId_d, type).record;
  return info;
}

// ---- ContentInfo: record ------------------------------------------------------------------------

TEST(ContentInfo, NewRecordHasAnEmptySlotAndNoType) {
  const Untyped info(asn1_ContentInfo_new());
  ASSERT_NE(nullptr, info);
  EXPECT_EQ(nullptr, info->contentType);
  ASSERT_NE(nullptr, info->content);
  EXPECT_EQ(nullptr, info->content->value);
}

TEST(ContentInfo, FreeIgnoresNull) { asn1_ContentInfo_free(nullptr); }

TEST(ContentInfo, FreeReleasesATypedRecordWithoutAValue) {
  for (const Bytes &type : {data, signed_data_type, enveloped_data, encrypted_data_type})
    typed(type);
}

TEST(Content, NewSlotIsEmpty) {
  Content *slot = asn1_Content_new();
  ASSERT_NE(nullptr, slot);
  EXPECT_EQ(nullptr, slot->value);
  asn1_Content_free(slot);
  asn1_Content_free(nullptr);
}

TEST(Content, FreeLeavesTheValueAlone) {
  Content *slot = asn1_Content_new();
  ASSERT_NE(nullptr, slot);
  const Owned<OctetString, asn1_OctetString_free> content(asn1_ASN1String_new(0, "abc"));
  slot->value = content.get();
  asn1_Content_free(slot);
  EXPECT_EQ(text("abc"), value(content.get()));
}

// ---- ContentInfo: the value by the type ---------------------------------------------------------

TEST(ContentInfoDispatch, DataHoldsAnOctetString) {
  const auto info = decoded(messages, abc);
  EXPECT_EQ(text("abc"), value(content_of<OctetString>(info)));
  expect_kept(messages, abc);
  expect_refused(messages, message(data, integer(1)));
}

TEST(ContentInfoDispatch, SignedDataHoldsASignedData) {
  const Bytes octets = message(signed_data_type, full_signed().octets());
  const auto info = decoded(messages, octets);
  const auto *content = content_of<SignedData>(info);
  EXPECT_EQ(Bytes{1}, value(content->version));
  EXPECT_EQ(1, List_len(content->signerInfos));
  expect_kept(messages, octets);
  expect_refused(messages, message(signed_data_type, octet_string(text("abc"))));
}

TEST(ContentInfoDispatch, EncryptedDataHoldsAnEncryptedData) {
  const Bytes octets = message(encrypted_data_type, encrypted_data);
  const auto info = decoded(messages, octets);
  const auto *content = content_of<EncryptedData>(info);
  EXPECT_EQ(hex("E1 E2 E3"), value(content->encryptedContentInfo->encryptedContent));
  expect_kept(messages, octets);
  expect_refused(messages, message(encrypted_data_type, octet_string(text("abc"))));
}

TEST(ContentInfoDispatch, AnyOtherTypeHoldsTheWholeElement) {
  const Bytes types[] = {
      enveloped_data,
      content_type(4),                             // signedAndEnvelopedData
      content_type(5),                             // digestedData
      content_type(7),                             // unknown
      hex("06 08 2A 86 48 86 F7 0D 01 07"),        // one arc less
      hex("06 0A 2A 86 48 86 F7 0D 01 07 01 01"),  // one arc more
      hex("06 09 2A 86 48 86 F7 0D 01 09 01"),     // emailAddress
      hex("06 00"),                                // one arc
  };
  for (const Bytes &type : types) {
    SCOPED_TRACE(testing::PrintToString(type));
    for (const Bytes &content : {octet_string(text("abc")), encrypted_data, hex("05 00")}) {
      const auto info = decoded(messages, message(type, content));
      ASSERT_NE(nullptr, info);
      EXPECT_EQ(content, value(content_of<Any>(info)));
      if (type != hex("06 00")) expect_kept(messages, message(type, content));
    }
  }
}

TEST(ContentInfoDispatch, AnyOtherTypeRefusesAnIndefiniteElementInside) {
  const Bytes inside = indefinite(0x30, integer(1));
  expect_refused(messages, message(enveloped_data, inside));
  expect_refused(messages, indefinite(0x30, enveloped_data + indefinite(0xA0, inside)));
}

TEST(ContentInfoDispatch, TheElementOfAnyOtherTypeLosesTheOctetsOfALongerLengthForm) {
  // The record is as long as the shortest form: the last content octet is lost.
  const auto info = decoded(messages, message(enveloped_data, hex("04 81 03 41 42 43")));
  EXPECT_EQ(hex("04 81 03 41 42"), value(content_of<Any>(info)));
}

// ---- ContentInfo: decoder -----------------------------------------------------------------------

TEST(ContentInfoDecoder, ADetachedMessageHasNoValue) {
  const auto info = decoded(messages, detached);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_data(), info->contentType));
  ASSERT_NE(nullptr, info->content);
  EXPECT_EQ(nullptr, info->content->value);
  expect_kept(messages, detached);
}

TEST(ContentInfoDecoder, EveryTypeMayStandAlone) {
  for (uint8_t arc = 1; arc <= 7; ++arc) expect_kept(messages, sequence(content_type(arc)));
}

TEST(ContentInfoDecoder, TakesItsOuterHeaderInAnyLengthForm) {
  expect_sequence_of_any_length(messages, data + explicit_0(octet_string(text("abc"))));
  expect_rewritten(messages, indefinite(0x30, data), detached);
  expect_rewritten(messages, indefinite(0x30, data) + hex("05 00"), detached, 2);
  expect_refused(messages, hex("30 80") + data + hex("00 01"));
}

TEST(ContentInfoDecoder, AnotherOctetBehindTheTypeCountsAsNoContent) {
  for (const char *field : {"80 05 04 03 61 62 63", "A1 05 04 03 61 62 63", "04 03 61 62 63",
                            "20 00", "FF", "00 00", "05 00"}) {
    SCOPED_TRACE(field);
    expect_rewritten(messages, sequence(data + hex(field)), detached, hex(field).size());
  }
}

TEST(ContentInfoDecoder, AnotherOctetBehindTheTypeEndsAnIndefiniteMessageInFailure) {
  for (const char *field : {"80 05 04 03 61 62 63", "A1 05 04 03 61 62 63", "05 00"}) {
    expect_refused(messages, indefinite(0x30, data + hex(field)));
  }
}

TEST(ContentInfoDecoder, AnEmptyContentFailsForEveryType) {
  for (uint8_t arc = 1; arc <= 7; ++arc) {
    SCOPED_TRACE(arc);
    const Bytes type = content_type(arc);
    expect_refused(messages, sequence(type + hex("A0 00")));
    expect_refused(messages, sequence(type + hex("A0 80 00 00")));
    expect_refused(messages, indefinite(0x30, type + hex("A0 00")));
    expect_refused(messages, indefinite(0x30, type + hex("A0 80 00 00")));
  }
}

TEST(ContentInfoDecoder, AllFourPairsOfLengthFormsAreTaken) {
  const Bytes content = octet_string(text("abc"));
  expect_kept(messages, sequence(data + explicit_0(content)));
  for (const Bytes &octets :
       {indefinite(0x30, data + explicit_0(content)), sequence(data + indefinite(0xA0, content)),
        indefinite(0x30, data + indefinite(0xA0, content))}) {
    expect_rewritten(messages, octets, abc);
  }
}

TEST(ContentInfoDecoder, AnIndefiniteMessageWithAConstructedStringComesBackDefiniteAndPrimitive) {
  const Bytes string = indefinite(0x24, hex("04 01 61 24 03 04 01 62 04 01 63"));
  expect_rewritten(messages, indefinite(0x30, data + indefinite(0xA0, string)), abc);
}

TEST(ContentInfoDecoder, AnIndefiniteMessageTakesASignedDataOfDefiniteLengthOnly) {
  const Signed fields = full_signed();
  expect_rewritten(messages, indefinite(0x30, signed_data_type + indefinite(0xA0, fields.octets())),
                   message(signed_data_type, fields.octets()));
  const Bytes inside = indefinite(0x30, fields.content());
  expect_refused(messages, message(signed_data_type, inside));
  expect_refused(messages, indefinite(0x30, signed_data_type + indefinite(0xA0, inside)));
}

TEST(ContentInfoDecoder, AnEncryptedDataMayBeIndefiniteOnAllLevels) {
  const Bytes encrypted = indefinite(
      0x30,
      integer(0) + indefinite(0x30, data + sha256 + indefinite(0xA0, hex("04 01 E1 04 02 E2 E3"))));
  const Bytes definite = message(encrypted_data_type, encrypted_data);
  expect_rewritten(messages, indefinite(0x30, encrypted_data_type + indefinite(0xA0, encrypted)),
                   definite);
  expect_rewritten(messages, message(encrypted_data_type, encrypted), definite);
}

TEST(ContentInfoDecoder, TheEndOfAnIndefiniteContentIsRequired) {
  const Bytes content = octet_string(text("abc"));
  for (const char *ending : {"", "00", "01 00", "05 00 00 00"}) {
    SCOPED_TRACE(ending);
    expect_refused(messages, sequence(data + hex("A0 80") + content + hex(ending)));
    expect_refused(messages, hex("30 80") + data + hex("A0 80") + content + hex(ending) + eoc);
  }
  // There is one end-of-contents where two are needed.
  expect_refused(messages, hex("30 80") + data + hex("A0 80") + content + eoc);
}

TEST(ContentInfoDecoder, WhatADefiniteContentLeavesIsLeftInFrontOfTheCursor) {
  const Bytes content = octet_string(text("abc")) + hex("05 00 01");
  expect_rewritten(messages, message(data, content), abc, 3);
  expect_refused(messages, indefinite(0x30, data + explicit_0(content)));
}

TEST(ContentInfoDecoder, TheOuterEndMayStandInsideADefiniteContentThatIsNotUsedUp) {
  // The decoder looks for it after the value, up to two octets past the end of the [0].
  const Bytes content = octet_string(text("abc"));
  expect_rewritten(messages, hex("30 80") + data + explicit_0(content + eoc) + hex("05 00"), abc,
                   2);
  expect_rewritten(messages, hex("30 80") + data + explicit_0(content + hex("00")) + hex("00 00"),
                   abc, 1);
}

TEST(ContentInfoDecoder, OctetsMayFollowTheEndOfAnIndefiniteContent) {
  const Bytes inside = data + indefinite(0xA0, octet_string(text("abc")));
  expect_rewritten(messages, sequence(inside + hex("05 00")), abc, 2);
  expect_rewritten(messages, indefinite(0x30, inside) + hex("05 00 04 00"), abc, 4);
}

TEST(ContentInfoDecoder, TheContentMustLieInFrontOfTheOuterEnd) {
  // The length of the [0] includes the end-of-contents.
  expect_refused(messages, hex("30 80") + data + hex("A0 07 04 03 61 62 63 00 00"));
  expect_refused(messages, hex("30 80") + data + hex("A0 06 04 03 61 62 63 00 00"));
  // The [0] extends past a definite message.
  expect_refused(messages, hex("30 0F") + data + hex("A0 05 04 03 61 62 63"));
}

TEST(ContentInfoDecoder, AnIndefiniteFormWithoutRoomForItsEndsFails) {
  expect_refused(messages, sequence(data + hex("A0 80")));
  expect_refused(messages, sequence(data + hex("A0 80 00")));
  expect_refused(messages, sequence(enveloped_data + hex("A0 80")));
  expect_refused(messages, sequence(signed_data_type + hex("A0 80 30")));
}

TEST(ContentInfoDecoder, AContentOfHugeLengthFails) {
  for (uint8_t arc = 1; arc <= 7; ++arc) {
    const Bytes content = hex("A0 84 80 00 00 00") + octet_string(text("abc"));
    expect_refused(messages, sequence(content_type(arc) + content));
    expect_refused(messages, indefinite(0x30, content_type(arc) + content));
  }
}

TEST(ContentInfoDecoder, EveryCutBehindTheTypeIsRefused) {
  const Bytes whole =
      indefinite(0x30, data + indefinite(0xA0, indefinite(0x24, hex("04 03 61 62 63"))));
  // The last two octets of an indefinite form are kept for its end.
  for (size_t size = 2 + data.size() + 2; size < whole.size(); ++size) {
    SCOPED_TRACE(size);
    expect_refused(messages, Bytes(whole.begin(), whole.begin() + static_cast<long>(size)));
  }
}

// ---- ContentInfo: encoder -----------------------------------------------------------------------

TEST(ContentInfoEncoder, WritesTheTypeAloneWithoutASlot) {
  const auto info = typed(data);
  Content *const slot = info->content;
  info->content = nullptr;
  EXPECT_EQ(detached, encoded(messages, info));
  info->content = slot;
  EXPECT_EQ(detached, encoded(messages, info));
}

TEST(ContentInfoEncoder, WritesAnEmptyString) {
  const auto info = typed(data);
  info->content->value = asn1_OctetString_new(0);
  EXPECT_EQ(message(data, hex("04 00")), encoded(messages, info));
}

TEST(ContentInfoEncoder, FailsWithoutAType) {
  const Untyped info(asn1_ContentInfo_new());
  expect_nothing_written(messages, info.get());
  // It fails before the content, whose type is not known.
  const Owned<OctetString, asn1_OctetString_free> content(asn1_OctetString_new(1));
  info->content->value = content.get();
  expect_nothing_written(messages, info.get());
}

TEST(ContentInfoEncoder, FailsWhereTheContentFails) {
  const auto info = typed(enveloped_data);
  info->content->value = asn1_Any_new(0);
  expect_nothing_written(messages, info.get());

  const auto outer = typed(signed_data_type);
  outer->content->value = asn1_SignedData_new();  // no version
  expect_nothing_written(messages, outer.get());
}

TEST(ContentInfoEncoder, IsWrittenUnderAnImplicitTag) {
  const auto info = decoded(messages, abc);
  Bytes expected = abc;
  expected[0] = 0xA3;
  EXPECT_EQ(expected, encode_with([&](uint8_t **pp) {
              return asn1_implicit_e(pp, 0x83, info.get(), asn1_ContentInfo_e);
            }));
}

// ---- ContentInfo: clone -------------------------------------------------------------------------

TEST(ContentInfoClone, OfNullIsNull) { EXPECT_EQ(nullptr, asn1_ContentInfo_clone(nullptr)); }

TEST(ContentInfoClone, OfARecordWithoutAnythingHasASlot) {
  // Without a slot in the source, the type does not matter.
  const Untyped info(asn1_ContentInfo_new());
  asn1_Content_free(info->content);
  info->content = nullptr;
  const Untyped copy(asn1_ContentInfo_clone(info.get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy->contentType);
  ASSERT_NE(nullptr, copy->content);
  EXPECT_EQ(nullptr, copy->content->value);
}

TEST(ContentInfoClone, OfATypeWithoutASlotHasOne) {
  const auto info = typed(signed_data_type);
  Content *const slot = info->content;
  info->content = nullptr;
  const auto copy = cloned(messages, info);
  info->content = slot;
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(sequence(signed_data_type), encoded(messages, copy));
  ASSERT_NE(nullptr, copy->content);
  EXPECT_EQ(nullptr, copy->content->value);
}

TEST(ContentInfoClone, OfATypeWithAnEmptySlotHasAnEmptySlot) {
  const auto copy = cloned(messages, typed(data));
  ASSERT_NE(nullptr, copy);
  ASSERT_NE(nullptr, copy->content);
  EXPECT_EQ(nullptr, copy->content->value);
}

TEST(ContentInfoClone, IsDeep) {
  const auto info = decoded(messages, abc);
  const auto copy = cloned(messages, info);
  ASSERT_NE(nullptr, copy);
  EXPECT_NE(info->contentType, copy->contentType);
  EXPECT_NE(info->content, copy->content);
  EXPECT_NE(info->content->value, copy->content->value);
}

#ifndef ORVELASN1_TESTS_SANITIZED
TEST(ContentInfoClone, LosesNoSlot) {
  const auto info = decoded(messages, abc);
  const FailingAllocation none(1'000);
  asn1_ContentInfo_free(asn1_ContentInfo_clone(info.get()));
  EXPECT_EQ(0, none.blocks_left());
}
#endif

// ---- SignedData ---------------------------------------------------------------------------------

TEST(SignedData, NewRecordIsZero) { expect_new_record_is_zero(signed_datas); }
TEST(SignedData, CloneIsDeep) { expect_deep_clone(signed_datas, full_signed().octets()); }

TEST(SignedData, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(signed_datas, full_signed().content());
  expect_huge_lengths_refused(signed_datas, full_signed().content());
}

TEST(SignedData, KeepsAllFieldsInOrder) {
  const auto record = decoded(signed_datas, full_signed().octets());
  EXPECT_EQ(Bytes{1}, value(record->version));
  ASSERT_EQ(1, List_len(record->digestAlgorithms));
  EXPECT_EQ(sha256,
            encode(asn1_AlgId_e, static_cast<AlgId *>(List_get(record->digestAlgorithms, 0))));
  EXPECT_EQ(nullptr, record->contentInfo->content->value);
  ASSERT_EQ(1, List_len(record->certificates));
  EXPECT_EQ(hex("30 03 02 01 07"), value(static_cast<Any *>(List_get(record->certificates, 0))));
  ASSERT_EQ(2, List_len(record->crls));
  EXPECT_EQ(hex("30 00"), value(static_cast<Any *>(List_get(record->crls, 0))));
  EXPECT_EQ(hex("30 02 05 00"), value(static_cast<Any *>(List_get(record->crls, 1))));
  ASSERT_EQ(1, List_len(record->signerInfos));
  EXPECT_EQ(Signer().octets(),
            encode(asn1_SignerInfo_e, static_cast<SignerInfo *>(List_get(record->signerInfos, 0))));
  expect_kept(signed_datas, full_signed().octets());
}

TEST(SignedData, KeepsTheOrderOfASetAndItsDuplicates) {
  Signed fields;
  fields.digest_algorithms = element(0x31, sha256 + rsa + sha256);
  fields.certificates = element(0xA0, hex("30 01 02 30 01 01 30 01 02"));
  expect_kept(signed_datas, fields.octets());
}

TEST(SignedData, AnyVersionIsTaken) {
  for (const char *version : {"02 01 00", "02 01 7F", "02 01 FF", "02 05 01 02 03 04 05"}) {
    Signed fields;
    fields.version = hex(version);
    expect_kept(signed_datas, fields.octets());
  }
}

TEST(SignedData, AbsentCertificatesAndCrlsStayAbsent) {
  const auto record = decoded(signed_datas, Signed().octets());
  EXPECT_EQ(nullptr, record->certificates);
  EXPECT_EQ(nullptr, record->crls);
  expect_kept(signed_datas, Signed().octets());
}

TEST(SignedData, EmptyCertificatesAndCrlsStayEmpty) {
  Signed fields;
  fields.certificates = hex("A0 00");
  fields.crls = hex("A1 00");
  const auto record = decoded(signed_datas, fields.octets());
  ASSERT_NE(nullptr, record->certificates);
  EXPECT_EQ(0, List_len(record->certificates));
  ASSERT_NE(nullptr, record->crls);
  EXPECT_EQ(0, List_len(record->crls));
  expect_kept(signed_datas, fields.octets());
}

TEST(SignedData, CrlsMayStandWithoutCertificates) {
  Signed fields = full_signed();
  fields.certificates = {};
  const auto record = decoded(signed_datas, fields.octets());
  EXPECT_EQ(nullptr, record->certificates);
  EXPECT_EQ(2, List_len(record->crls));
  expect_kept(signed_datas, fields.octets());
}

TEST(SignedData, CertificatesBehindCrlsFail) {
  Signed fields;
  fields.certificates = hex("A1 00 A0 00");
  expect_refused(signed_datas, fields.octets());
  fields.certificates = hex("A0 00 A0 00");
  expect_refused(signed_datas, fields.octets());
}

TEST(SignedData, PrimitiveCertificatesAndCrlsAreNotTheirFields) {
  for (const char *field : {"80 00", "81 00", "A2 00", "A3 00"}) {
    Signed fields;
    fields.certificates = hex(field);
    expect_refused(signed_datas, fields.octets());
  }
}

TEST(SignedData, AnIndefiniteCertificateOrListOfThemFails) {
  Signed fields;
  fields.certificates = element(0xA0, indefinite(0x30, {}));
  expect_refused(signed_datas, fields.octets());
  fields.certificates = indefinite(0xA0, hex("30 00"));
  expect_refused(signed_datas, fields.octets());
  fields.certificates = {};
  fields.digest_algorithms = indefinite(0x31, sha256);
  expect_refused(signed_datas, fields.octets());
}

TEST(SignedData, TheSignersStandLastAndMayBeIndefinite) {
  Signed fields = full_signed();
  const Bytes definite = fields.octets();
  fields.signer_infos = indefinite(0x31, Signer().octets());
  expect_rewritten(signed_datas, fields.octets(), definite);
  fields.signer_infos = fields.signer_infos + hex("05 00");
  expect_refused(signed_datas, fields.octets());
}

TEST(SignedData, NoSignersAreAnEmptyList) {
  Signed fields;
  fields.signer_infos = empty_set;
  const auto record = decoded(signed_datas, fields.octets());
  ASSERT_NE(nullptr, record->signerInfos);
  EXPECT_EQ(0, List_len(record->signerInfos));
  expect_kept(signed_datas, fields.octets());
}

TEST(SignedData, EndingAheadOfTheSignersFails) {
  Signed fields = full_signed();
  fields.signer_infos = {};
  expect_refused(signed_datas, fields.octets());
  fields.crls = {};
  expect_refused(signed_datas, fields.octets());
  fields.certificates = {};
  expect_refused(signed_datas, fields.octets());
}

TEST(SignedData, EachRequiredFieldIsRequired) {
  for (Bytes Signed::*field : {&Signed::version, &Signed::digest_algorithms, &Signed::content_info,
                               &Signed::signer_infos}) {
    Signed fields = full_signed();
    fields.*field = {};
    expect_refused(signed_datas, fields.octets());
    fields.*field = hex("0A 01 00");
    expect_refused(signed_datas, fields.octets());
  }
}

TEST(SignedData, ABadElementOfAnyListFails) {
  for (Bytes Signed::*field :
       {&Signed::digest_algorithms, &Signed::certificates, &Signed::crls, &Signed::signer_infos}) {
    Signed fields = full_signed();
    Bytes &list = fields.*field;
    list = element(list[0], Bytes(list.begin() + 2, list.end()) + hex("30 05 00"));
    expect_refused(signed_datas, fields.octets());
  }
}

TEST(SignedData, TheContentMayBeIndefinite) {
  Signed fields = full_signed();
  fields.content_info = abc;
  const Bytes definite = fields.octets();
  fields.content_info = indefinite(0x30, data + indefinite(0xA0, octet_string(text("abc"))));
  expect_rewritten(signed_datas, fields.octets(), definite);
}

TEST(SignedData, WhatStandsBehindTheContentOfAMessageIsReadAsTheNextField) {
  // The message stops after its type. The octets left in it are read as the empty CRLs and signers.
  Signed fields;
  fields.content_info = hex("30 0F") + data + hex("A1 00 31 00");
  fields.signer_infos = {};
  const auto record = decoded(signed_datas, fields.octets());
  ASSERT_NE(nullptr, record);
  EXPECT_EQ(0, List_len(record->crls));
  EXPECT_EQ(0, List_len(record->signerInfos));
}

TEST(SignedDataEncoder, FailsWithoutAVersion) {
  const auto record = decoded(signed_datas, full_signed().octets());
  clear(record->version, asn1_Integer_free);
  expect_nothing_written(signed_datas, record.get());
}

TEST(SignedDataEncoder, FailsWhereTheContentHasNoType) {
  const auto record = decoded(signed_datas, full_signed().octets());
  const Untyped untyped(asn1_ContentInfo_new());
  ContentInfo *const content = record->contentInfo;
  record->contentInfo = untyped.get();
  expect_nothing_written(signed_datas, record.get());
  record->contentInfo = content;
}

TEST(SignedDataEncoder, LeavesOutWhatIsNull) {
  const auto record = decoded(signed_datas, full_signed().octets());
  Signed expected = full_signed();
  List_free(record->certificates, asn1_Any_free);
  record->certificates = nullptr;
  expected.certificates = {};
  EXPECT_EQ(expected.octets(), encoded(signed_datas, record));
  List_free(record->crls, asn1_Any_free);
  record->crls = nullptr;
  expected.crls = {};
  EXPECT_EQ(expected.octets(), encoded(signed_datas, record));
}

TEST(SignedDataClone, TakesAHalfFilledRecord) {
  const auto record = created(signed_datas);
  record->crls = List_new(0);
  const auto copy = cloned(signed_datas, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy->version);
  EXPECT_EQ(nullptr, copy->contentInfo);
  EXPECT_EQ(nullptr, copy->certificates);
  ASSERT_NE(nullptr, copy->crls);
  EXPECT_NE(record->crls, copy->crls);
  EXPECT_EQ(0, List_len(copy->crls));
}

// ---- SignerInfo ---------------------------------------------------------------------------------

TEST(SignerInfo, NewRecordIsZero) { expect_new_record_is_zero(signers); }
TEST(SignerInfo, CloneIsDeep) { expect_deep_clone(signers, full_signer().octets()); }
TEST(SignerInfo, ExhaustedMemoryFails) {
  expect_exhausted_memory_to_fail(signers, full_signer().octets());
}

TEST(SignerInfo, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(signers, full_signer().content());
  expect_huge_lengths_refused(signers, full_signer().content());
}

TEST(SignerInfo, EveryCutIsRefused) {
  // The cut before the last field is accepted, because that field is optional.
  Signer signer = full_signer();
  const Bytes content = signer.content();
  expect_every_cut_refused(signers, content, {content.size() - signer.unauthenticated.size()});
}

TEST(SignerInfo, KeepsAllFieldsInOrder) {
  const auto record = decoded(signers, full_signer().octets());
  EXPECT_EQ(Bytes{1}, value(record->version));
  EXPECT_STREQ("/c(19)=DE", record->issuerAndSerialNumber->issuer);
  EXPECT_EQ(sha256, encode(asn1_AlgId_e, record->digestAlgorithm));
  ASSERT_EQ(2, List_len(record->authenticatedAttributes));
  EXPECT_EQ(content_type_attribute,
            encode(asn1_Attribute_e,
                   static_cast<Attribute *>(List_get(record->authenticatedAttributes, 0))));
  EXPECT_EQ(rsa, encode(asn1_AlgId_e, record->digestEncryptionAlgorithm));
  EXPECT_EQ(hex("D1 D2"), value(record->encryptedDigest));
  EXPECT_EQ(1, List_len(record->unauthenticatedAttributes));
  expect_kept(signers, full_signer().octets());
}

TEST(SignerInfo, AttributesAreFoundByLookingThemUp) {
  const auto record = decoded(signers, full_signer().octets());
  EXPECT_EQ(List_get(record->authenticatedAttributes, 1),
            asn1_Attributes_getAttribute(record->authenticatedAttributes, asn1_Get_signingTime()));
}

TEST(SignerInfo, AbsentAttributesStayAbsentAndEmptyOnesEmpty) {
  const auto without = decoded(signers, Signer().octets());
  EXPECT_EQ(nullptr, without->authenticatedAttributes);
  EXPECT_EQ(nullptr, without->unauthenticatedAttributes);
  expect_kept(signers, Signer().octets());

  Signer signer;
  signer.authenticated = hex("A0 00");
  signer.unauthenticated = hex("A1 00");
  const auto with = decoded(signers, signer.octets());
  ASSERT_NE(nullptr, with->authenticatedAttributes);
  EXPECT_EQ(0, List_len(with->authenticatedAttributes));
  ASSERT_NE(nullptr, with->unauthenticatedAttributes);
  EXPECT_EQ(0, List_len(with->unauthenticatedAttributes));
  expect_kept(signers, signer.octets());
}

TEST(SignerInfo, EachOptionalFieldMayStandAlone) {
  for (Bytes Signer::*field : {&Signer::authenticated, &Signer::unauthenticated}) {
    Signer signer = full_signer();
    signer.*field = {};
    expect_kept(signers, signer.octets());
  }
}

TEST(SignerInfo, OtherOctetsAreNotTheAuthenticatedAttributes) {
  for (const char *field : {"80 00", "A1 00", "31 00"}) {
    Signer signer;
    signer.authenticated = hex(field);
    expect_refused(signers, signer.octets());
  }
}

TEST(SignerInfo, OtherOctetsBehindTheDigestStayUnread) {
  for (const char *field : {"81 00", "A0 00", "31 00", "A2 00"}) {
    Signer signer;
    signer.unauthenticated = hex(field);
    const auto record = decoded(signers, signer.octets(), 2);
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(nullptr, record->unauthenticatedAttributes);
  }
}

TEST(SignerInfo, OnlyTheLastAttributesMayBeIndefinite) {
  Signer signer = full_signer();
  const Bytes definite = signer.octets();
  signer.unauthenticated = indefinite(0xA1, empty_attribute);
  expect_rewritten(signers, signer.octets(), definite);
  signer.authenticated = indefinite(0xA0, content_type_attribute + empty_attribute);
  expect_refused(signers, signer.octets());
}

TEST(SignerInfo, EachRequiredFieldIsRequired) {
  for (Bytes Signer::*field :
       {&Signer::version, &Signer::issuer_and_serial, &Signer::digest_algorithm,
        &Signer::encryption_algorithm, &Signer::encrypted_digest}) {
    Signer signer = full_signer();
    signer.*field = {};
    expect_refused(signers, signer.octets());
    signer.*field = hex("0A 01 00");
    expect_refused(signers, signer.octets());
  }
}

TEST(SignerInfo, AConstructedDigestComesBackPrimitive) {
  Signer signer;
  const Bytes primitive = signer.octets();
  signer.encrypted_digest = hex("24 80 04 01 D1 04 01 D2 00 00");
  expect_rewritten(signers, signer.octets(), primitive);
}

TEST(SignerInfo, KeepsAnIssuerThatItsTextCannotGiveBack) {
  Signer signer;
  signer.issuer_and_serial = issued(numbered);
  expect_kept(signers, signer.octets());
}

TEST(SignerInfo, AnyVersionIsTaken) {
  for (const char *version : {"02 01 00", "02 01 03", "02 01 FF"}) {
    Signer signer;
    signer.version = hex(version);
    expect_kept(signers, signer.octets());
  }
}

TEST(SignerInfoEncoder, FailsWithoutVersionOrDigest) {
  const auto record = decoded(signers, full_signer().octets());
  clear(record->encryptedDigest, asn1_OctetString_free);
  expect_nothing_written(signers, record.get());
  clear(record->version, asn1_Integer_free);
  expect_nothing_written(signers, record.get());
  // The version fails before the encoder reaches a record that must not be NULL.
  clear(record->digestAlgorithm, asn1_AlgId_free);
  expect_nothing_written(signers, record.get());
}

TEST(SignerInfoClone, TakesAHalfFilledRecord) {
  const auto record = created(signers);
  record->encryptedDigest = asn1_ASN1String_new(0, "D");
  record->unauthenticatedAttributes = List_new(0);
  const auto copy = cloned(signers, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy->version);
  EXPECT_EQ(nullptr, copy->authenticatedAttributes);
  EXPECT_EQ(text("D"), value(copy->encryptedDigest));
  EXPECT_NE(nullptr, copy->unauthenticatedAttributes);
}

// ---- IssuerAndSerialNumber ----------------------------------------------------------------------

TEST(IssuerAndSerialNumber, NewRecordIsZero) { expect_new_record_is_zero(issueds); }
TEST(IssuerAndSerialNumber, CloneIsDeep) { expect_deep_clone(issueds, issued(germany)); }
TEST(IssuerAndSerialNumber, ExhaustedMemoryFails) {
  expect_exhausted_memory_to_fail(issueds, issued(germany));
}

TEST(IssuerAndSerialNumber, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(issueds, germany + integer(5));
  expect_huge_lengths_refused(issueds, germany + integer(5));
  expect_every_cut_refused(issueds, germany + integer(5));
}

TEST(IssuerAndSerialNumber, KeepsTheIssuerAsTextAndAsOctets) {
  const auto record = decoded(issueds, issued(germany));
  EXPECT_STREQ("/c(19)=DE", record->issuer);
  EXPECT_EQ(germany, value(record->issuerEncoded));
  EXPECT_EQ(Bytes{5}, value(record->serialNumber));
  expect_kept(issueds, issued(germany));
}

TEST(IssuerAndSerialNumber, KeepsAnIssuerThatItsTextCannotGiveBack) {
  const Bytes issuers[] = {
      numbered,
      hex("30 0F 31 0D 30 0B 06 03 55 04 03 1E 04 00 41 00 42"),  // a BMPString
      hex("30 81 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45"),     // a longer length form
      hex("30 0F 31 0D 30 0B 06 03 55 04 06 33 04 13 02 44 45"),  // a constructed value
  };
  for (const Bytes &issuer : issuers) expect_kept(issueds, issued(issuer));
}

TEST(IssuerAndSerialNumber, TheTextOfASerialNumberAttributeCannotBeWritten) {
  const auto record = decoded(issueds, issued(numbered));
  EXPECT_STREQ("/sn(19)=123", record->issuer);
  clear(record->issuerEncoded, asn1_OctetString_free);
  expect_nothing_written(issueds, record.get());
}

TEST(IssuerAndSerialNumber, AnIssuerWithoutAnyPartFails) {
  expect_refused(issueds, issued(hex("30 00")));
}

TEST(IssuerAndSerialNumber, EachFieldIsRequired) {
  expect_refused(issueds, sequence(integer(5)));
  expect_refused(issueds, sequence(germany));
  expect_refused(issueds, sequence(integer(5) + germany));
  expect_refused(issueds, sequence(germany + hex("04 01 05")));
  expect_refused(issueds, hex("30 00"));
}

TEST(IssuerAndSerialNumberEncoder, TheOctetsOfTheIssuerWinOverItsText) {
  const auto record = decoded(issueds, issued(germany));
  clear(record->issuer, asn1_Name_free);
  EXPECT_EQ(issued(germany), encoded(issueds, record));
  record->issuer = asn1_Name_clone("/o(12)=A");
  EXPECT_EQ(issued(germany), encoded(issueds, record));
  clear(record->issuerEncoded, asn1_OctetString_free);
  EXPECT_EQ(issued(hex("30 0C 31 0A 30 08 06 03 55 04 0A 0C 01 41")), encoded(issueds, record));
}

TEST(IssuerAndSerialNumberEncoder, TheOctetsOfTheIssuerAreWrittenAsTheyStand) {
  const auto record = decoded(issueds, issued(germany));
  asn1_OctetString_free(record->issuerEncoded);
  record->issuerEncoded = asn1_ASN1String_new(2, "\xFF\x00");
  EXPECT_EQ(sequence(hex("FF 00") + integer(5)), encoded(issueds, record));
}

TEST(IssuerAndSerialNumberEncoder, FailsWithoutAFieldAndOnEmptyOctets) {
  const auto record = decoded(issueds, issued(germany));
  clear(record->serialNumber, asn1_Integer_free);
  expect_nothing_written(issueds, record.get());
  record->serialNumber = asn1_Integer_set(5);
  asn1_OctetString_free(record->issuerEncoded);
  record->issuerEncoded = asn1_OctetString_new(0);
  expect_nothing_written(issueds, record.get());
  clear(record->issuerEncoded, asn1_OctetString_free);
  EXPECT_EQ(issued(germany), encoded(issueds, record));
  clear(record->issuer, asn1_Name_free);
  expect_nothing_written(issueds, record.get());
}

TEST(IssuerAndSerialNumberClone, CopiesEachFieldByItself) {
  const auto only_text = created(issueds);
  only_text->issuer = asn1_Name_clone("/c(19)=DE");
  const auto text_copy = cloned(issueds, only_text);
  ASSERT_NE(nullptr, text_copy);
  EXPECT_STREQ("/c(19)=DE", text_copy->issuer);
  EXPECT_EQ(nullptr, text_copy->issuerEncoded);
  EXPECT_EQ(nullptr, text_copy->serialNumber);

  const auto only_octets = created(issueds);
  only_octets->issuerEncoded = asn1_ASN1String_new(0, "octets");
  const auto octets_copy = cloned(issueds, only_octets);
  ASSERT_NE(nullptr, octets_copy);
  EXPECT_EQ(nullptr, octets_copy->issuer);
  EXPECT_EQ(text("octets"), value(octets_copy->issuerEncoded));
}

// ---- EncryptedData ------------------------------------------------------------------------------

TEST(EncryptedData, NewRecordIsZero) { expect_new_record_is_zero(encrypted_datas); }
TEST(EncryptedData, CloneIsDeep) { expect_deep_clone(encrypted_datas, encrypted_data); }
TEST(EncryptedData, ExhaustedMemoryFails) {
  expect_exhausted_memory_to_fail(encrypted_datas, encrypted_data);
}

TEST(EncryptedData, TakesItsHeaderInAnyLengthForm) {
  expect_sequence_of_any_length(encrypted_datas, integer(0) + Encrypted().octets());
  expect_huge_lengths_refused(encrypted_datas, integer(0) + Encrypted().octets());
}

TEST(EncryptedData, KeepsItsFields) {
  const auto record = decoded(encrypted_datas, encrypted_data);
  EXPECT_EQ(0U, asn1_Integer_get(record->version));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_data(), record->encryptedContentInfo->contentType));
  expect_kept(encrypted_datas, encrypted_data);
}

TEST(EncryptedData, AnyVersionIsTaken) {
  for (const char *version : {"02 01 02", "02 01 FF", "02 02 01 00"}) {
    expect_kept(encrypted_datas, sequence(hex(version) + Encrypted().octets()));
  }
}

TEST(EncryptedData, BothLevelsMayBeIndefinite) {
  const Bytes inner = indefinite(0x30, Encrypted().content());
  expect_rewritten(encrypted_datas, sequence(integer(0) + inner), encrypted_data);
  expect_rewritten(encrypted_datas, indefinite(0x30, integer(0) + inner), encrypted_data);
  expect_refused(encrypted_datas, hex("30 80") + integer(0) + inner);  // one end-of-contents
}

TEST(EncryptedData, EachFieldIsRequired) {
  expect_refused(encrypted_datas, hex("30 00"));
  expect_refused(encrypted_datas, sequence(integer(0)));
  expect_refused(encrypted_datas, sequence(Encrypted().octets()));
  expect_refused(encrypted_datas, hex("30 80 00 00"));
  expect_refused(encrypted_datas, sequence(integer(0) + element(0x31, Encrypted().content())));
}

TEST(EncryptedDataEncoder, FailsWithoutAVersion) {
  const auto record = decoded(encrypted_datas, encrypted_data);
  clear(record->version, asn1_Integer_free);
  expect_nothing_written(encrypted_datas, record.get());
}

TEST(EncryptedDataClone, TakesAHalfFilledRecord) {
  const auto record = created(encrypted_datas);
  record->version = asn1_Integer_set(2);
  const auto copy = cloned(encrypted_datas, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(2U, asn1_Integer_get(copy->version));
  EXPECT_EQ(nullptr, copy->encryptedContentInfo);
}

// ---- EncryptedContentInfo -----------------------------------------------------------------------

TEST(EncryptedContentInfo, NewRecordIsZero) { expect_new_record_is_zero(encrypted_contents); }
TEST(EncryptedContentInfo, CloneIsDeep) {
  expect_deep_clone(encrypted_contents, Encrypted().octets());
}
TEST(EncryptedContentInfo, ExhaustedMemoryFails) {
  expect_exhausted_memory_to_fail(encrypted_contents, Encrypted().octets());
}

TEST(EncryptedContentInfo, TakesItsHeaderInAnyLengthForm) {
  expect_sequence_of_any_length(encrypted_contents, Encrypted().content());
  expect_huge_lengths_refused(encrypted_contents, Encrypted().content());
}

TEST(EncryptedContentInfo, KeepsItsFields) {
  const auto record = decoded(encrypted_contents, Encrypted().octets());
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_data(), record->contentType));
  EXPECT_EQ(sha256, encode(asn1_AlgId_e, record->contentEncryptionAlgorithm));
  EXPECT_EQ(hex("E1 E2 E3"), value(record->encryptedContent));
  expect_kept(encrypted_contents, Encrypted().octets());
}

TEST(EncryptedContentInfo, AConstructedContentIsTakenAndComesBackPrimitive) {
  for (const char *field :
       {"A0 07 04 01 E1 04 02 E2 E3", "A0 80 04 01 E1 04 02 E2 E3 00 00",
        "A0 09 24 80 04 03 E1 E2 E3 00 00", "80 81 03 E1 E2 E3", "80 80 E1 E2 E3 00 00"}) {
    SCOPED_TRACE(field);
    Encrypted fields;
    fields.octets_field = hex(field);
    expect_rewritten(encrypted_contents, fields.octets(), Encrypted().octets());
    expect_rewritten(encrypted_contents, indefinite(0x30, fields.content()), Encrypted().octets());
  }
}

TEST(EncryptedContentInfo, AnEmptyContentIsKept) {
  for (const char *field : {"80 00", "A0 00", "A0 80 00 00"}) {
    Encrypted fields;
    fields.octets_field = hex(field);
    const auto record = decoded(encrypted_contents, fields.octets());
    ASSERT_NE(nullptr, record->encryptedContent);
    fields.octets_field = hex("80 00");
    EXPECT_EQ(fields.octets(), encoded(encrypted_contents, record));
  }
}

TEST(EncryptedContentInfo, TheContentMayBeAbsent) {
  const auto record = decoded(encrypted_contents, without_content().octets());
  EXPECT_EQ(nullptr, record->encryptedContent);
  const auto copy = cloned(encrypted_contents, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_NE(nullptr, copy->contentEncryptionAlgorithm);
  EXPECT_EQ(nullptr, copy->encryptedContent);
  decoded(encrypted_contents, indefinite(0x30, without_content().content()));
}

TEST(EncryptedContentInfo, AnotherOctetCountsAsNoContent) {
  for (const char *field : {"04 01 E1", "24 00", "81 01 E1", "A1 00", "C0 00"}) {
    Encrypted fields;
    fields.octets_field = hex(field);
    const auto record = decoded(encrypted_contents, fields.octets(), hex(field).size());
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(nullptr, record->encryptedContent);
    expect_refused(encrypted_contents, indefinite(0x30, fields.content()));
  }
}

TEST(EncryptedContentInfo, ABadContentFails) {
  for (const char *field : {"80 04 E1 E2 E3", "80", "80 85", "80 84 80 00 00 00", "A0 03 02 01 01",
                            "A0 80 04 01 E1 00", "80 80 E1"}) {
    Encrypted fields;
    fields.octets_field = hex(field);
    expect_refused(encrypted_contents, fields.octets());
  }
}

TEST(EncryptedContentInfo, EachRequiredFieldIsRequired) {
  for (Bytes Encrypted::*field : {&Encrypted::type, &Encrypted::algorithm}) {
    Encrypted fields;
    fields.*field = {};
    expect_refused(encrypted_contents, fields.octets());
    expect_refused(encrypted_contents, indefinite(0x30, fields.content()));
  }
}

TEST(EncryptedContentInfo, NoTypeIsComparedWithAnything) {
  for (const Bytes &type : {signed_data_type, encrypted_data_type, hex("06 01 2A")}) {
    Encrypted fields;
    fields.type = type;
    expect_kept(encrypted_contents, fields.octets());
  }
}

TEST(EncryptedContentInfoEncoder, FailsWithoutAType) {
  const auto record = decoded(encrypted_contents, without_content().octets());
  clear(record->contentType, asn1_ObjId_free);
  // The encoder does not reach the content, which it requires.
  expect_nothing_written(encrypted_contents, record.get());
}

TEST(EncryptedContentInfoClone, TakesAHalfFilledRecord) {
  const auto record = created(encrypted_contents);
  record->encryptedContent = asn1_ASN1String_new(0, "E");
  const auto copy = cloned(encrypted_contents, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy->contentType);
  EXPECT_EQ(nullptr, copy->contentEncryptionAlgorithm);
  EXPECT_EQ(text("E"), value(copy->encryptedContent));
}

// ---- trace --------------------------------------------------------------------------------------

const std::string type_prefix = "  1.2.840.113549.1.7.";

/// Returns the lines one level deeper.
Lines deeper(Lines lines) {
  for (std::string &line : lines) line.insert(0, ". ");
  return lines;
}

TEST(MessageTrace, TheContentHasALevelOfItsOwnAndClosesOneAboveIt) {
  const Lines expected = {"SEQUENCE {",
                          ". OBJECT IDENTIFIER ",
                          ". " + type_prefix + "1",
                          ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
                          ". . OCTETSTRING",
                          ". . " + dump("61 62 63", "abc"),
                          ". }",
                          "}"};
  EXPECT_EQ(expected, traced(messages, abc));
  EXPECT_EQ(deeper(expected), traced(messages, abc, 2));
  EXPECT_EQ(Lines(), traced(messages, abc, 0));
  // An end-of-contents has no line.
  EXPECT_EQ(expected,
            traced(messages, indefinite(0x30, data + indefinite(0xA0, octet_string(text("abc"))))));
}

// The depth is raised for the fields, and once more for the content. Where it wraps to 0 it stays 0:
// what stands inside is silent, and nothing is closed.
TEST(MessageTrace, IsSilentWhereTheDepthWrapsToZero) {
  using Levels = std::vector<Leveled>;
  const std::string id = "OBJECT IDENTIFIER ";
  for (const Bytes &octets : {abc, detached, message(signed_data_type, Signed().octets())}) {
    EXPECT_EQ((Levels{{65534, "SEQUENCE {"}}), traced_levels(messages, octets, 0xFFFFFFFF));
  }
  EXPECT_EQ((Levels{{65533, "SEQUENCE {"}, {65534, id}, {65534, type_prefix + "1"}, {65533, "}"}}),
            traced_levels(messages, detached, 0xFFFFFFFE));
  EXPECT_EQ((Levels{{65533, "SEQUENCE {"}, {65534, id}, {65534, type_prefix + "1"}}),
            traced_levels(messages, abc, 0xFFFFFFFE));
  EXPECT_EQ((Levels{{65532, "SEQUENCE {"},
                    {65533, id},
                    {65533, type_prefix + "1"},
                    {65534, "CONTEXT-SPECIFIC CONSTRUCTED [0] {"},
                    {65534, "OCTETSTRING"},
                    {65534, dump("61 62 63", "abc")},
                    {65533, "}"},
                    {65532, "}"}}),
            traced_levels(messages, abc, 0xFFFFFFFD));
}

TEST(MessageTrace, AnAbsentContentHasNoLine) {
  const Lines expected = {"SEQUENCE {", ". OBJECT IDENTIFIER ", ". " + type_prefix + "1", "}"};
  EXPECT_EQ(expected, traced(messages, detached));
  EXPECT_EQ(expected, traced(messages, sequence(data + hex("80 00"))));
}

TEST(MessageTrace, AFailureLeavesTheLevelsOpen) {
  const Lines opened = {"SEQUENCE {", ". OBJECT IDENTIFIER ", ". " + type_prefix + "1",
                        ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {"};
  EXPECT_EQ(opened, traced(messages, sequence(data + hex("A0 00"))));

  Lines closed_once = opened;
  closed_once.insert(closed_once.end(), {". . OCTETSTRING", ". . " + dump("61", "a"), ". }"});
  EXPECT_EQ(closed_once, traced(messages, hex("30 80") + data + hex("A0 03 04 01 61 01 00")));

  Lines too_long = opened;
  too_long.back() = ". . z larger than end!";
  too_long.insert(too_long.end() - 1, ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {");
  EXPECT_EQ(too_long, traced(messages, sequence(data + hex("A0 01"))));
}

TEST(MessageTrace, AnUnknownTypeShowsTheWholeElement) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ". " + type_prefix + "3",
                   ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". . [ANY]",
                   ". . " + dump("05 00", ".."), ". }", "}"}),
            traced(messages, message(enveloped_data, hex("05 00"))));
}

TEST(MessageTrace, ShowsAWholeSignedMessage) {
  Signed fields;
  fields.certificates = hex("A0 02 30 00");
  fields.crls = hex("A1 00");
  fields.signer_infos = element(0x31, full_signer().octets());
  const std::string context = "CONTEXT-SPECIFIC CONSTRUCTED ";
  const Lines algorithm = {"SEQUENCE {", ". OBJECT IDENTIFIER ",     ".   2.16.840.1.101.3.4.2.1",
                           ". [ANY]",    ". " + dump("05 00", ".."), "}"};
  const Lines empty = {
      "SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549.1.9.5", ". SET {", ". }", "}"};
  Lines expected;
  const auto add = [&](const Lines &lines) {
    expected.insert(expected.end(), lines.begin(), lines.end());
  };
  add({"SEQUENCE {", ". OBJECT IDENTIFIER ", ". " + type_prefix + "2", ". . " + context + "[0] {",
       ". . SEQUENCE {", ". . . INTEGER", ". . .  1", ". . . SET {"});
  add(deeper(deeper(deeper(deeper(algorithm)))));
  add({". . . }", ". . . SEQUENCE {", ". . . . OBJECT IDENTIFIER ", ". . . . " + type_prefix + "1",
       ". . . }", ". . . " + context + "[0] {", ". . . . [ANY]", ". . . . " + dump("30 00", "0."),
       ". . . }", ". . . " + context + "[1] {", ". . . }", ". . . SET {", ". . . . SEQUENCE {"});
  Lines signer = {"INTEGER",
                  " 1",
                  "SEQUENCE {",
                  ". SEQUENCE {",
                  ". . SET {",
                  ". . . SEQUENCE {",
                  ". . . . OBJECT IDENTIFIER ",
                  ". . . .   2.5.4.6",
                  ". . . . PRINTABLESTRING ",
                  ". . . . " + dump("44 45", "DE"),
                  ". . . }",
                  ". . }",
                  ". }",
                  ". INTEGER",
                  ".  5",
                  "}"};
  const auto add_to_signer = [&](const Lines &lines) {
    signer.insert(signer.end(), lines.begin(), lines.end());
  };
  add_to_signer(algorithm);
  add_to_signer({context + "[0] {", ". SEQUENCE {", ". . OBJECT IDENTIFIER ",
                 ". .   1.2.840.113549.1.9.3", ". . SET {", ". . . [ANY]",
                 ". . . " + dump("06 09 2A 86 48 86 F7 0D 01 07 01", "..*.H......"), ". . }",
                 ". }"});
  add_to_signer(deeper(empty));
  add_to_signer({"}", "SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549.1.1.1", ". [ANY]",
                 ". " + dump("05 00", ".."), "}", "OCTETSTRING", dump("D1 D2", ".."),
                 context + "[1] {"});
  add_to_signer(deeper(empty));
  add_to_signer({"}"});
  add(deeper(deeper(deeper(deeper(deeper(signer))))));
  add({". . . . }", ". . . }", ". . }", ". }", "}"});
  EXPECT_EQ(expected, traced(messages, message(signed_data_type, fields.octets())));
}

TEST(MessageTrace, ShowsAnEncryptedContentInBothForms) {
  Lines expected = {"SEQUENCE {",
                    ". INTEGER",
                    ".  0",
                    ". SEQUENCE {",
                    ". . OBJECT IDENTIFIER ",
                    ". . " + type_prefix + "1",
                    ". . SEQUENCE {",
                    ". . . OBJECT IDENTIFIER ",
                    ". . .   2.16.840.1.101.3.4.2.1",
                    ". . . [ANY]",
                    ". . . " + dump("05 00", ".."),
                    ". . }",
                    ". . CONTEXT-SPECIFIC PRIMITIVE [0] OCTETSTRING",
                    ". . " + dump("E1 E2 E3", "..."),
                    ". }",
                    "}"};
  EXPECT_EQ(expected, traced(encrypted_datas, encrypted_data));

  // The segments are at the level of their string, whose closing line is one level above.
  Encrypted fields;
  fields.octets_field = hex("A0 80 04 01 41 00 00");
  expected.erase(expected.end() - 4, expected.end());
  expected.insert(expected.end(), {". . CONTEXT-SPECIFIC CONSTRUCTED [0] OCTETSTRING",
                                   ". . OCTETSTRING", ". . " + dump("41", "A"), ". }", ". }", "}"});
  EXPECT_EQ(expected, traced(encrypted_datas, sequence(integer(0) + fields.octets())));
}

// ---- messages inside messages -------------------------------------------------------------------

/// Returns a message inside so many signed messages.
Bytes nested(int levels, bool indefinite_too = false) {
  Nest nest(detached);
  for (int i = 0; i < levels; ++i) {
    nest.before(integer(1) + empty_set).behind(empty_set).wrap(0x30);
    if (indefinite_too) {
      nest.wrap_indefinite(0xA0).before(signed_data_type).wrap_indefinite(0x30);
    } else {
      nest.wrap(0xA0).before(signed_data_type).wrap(0x30);
    }
  }
  return nest.octets();
}

/// Returns whether a message was decoded. Checks that it can then be written, copied and released.
bool handled(const Bytes &input, const Bytes &definite) {
  const auto [consumed, info] = decode(asn1_ContentInfo_d, input);
  EXPECT_EQ(consumed >= 0, info != nullptr);
  if (info == nullptr) return false;
  EXPECT_EQ(static_cast<long>(input.size()), consumed);
  ContentInfo *const copy = asn1_ContentInfo_clone(info);
  EXPECT_NE(nullptr, copy);
  EXPECT_EQ(definite.size(), asn1_ContentInfo_e(nullptr, info));
  asn1_ContentInfo_free(info);
  if (copy == nullptr) return true;
  // The copies of both length forms are written alike: one of them is enough.
  if (input == definite) {
    EXPECT_TRUE(definite == encode(asn1_ContentInfo_e, copy));
  }
  asn1_ContentInfo_free(copy);
  return true;
}

/// Returns how many of these inputs were decoded, up to the first that was not.
size_t handled_of(const std::vector<int> &levels) {
  size_t count = 0;
  for (const int n : levels) {
    SCOPED_TRACE(n);
    const Bytes definite = nested(n);
    if (!handled(definite, definite)) break;
    EXPECT_TRUE(handled(nested(n, true), definite));
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

TEST(NestedMessage, OneInsideAnotherIsKept) {
  EXPECT_EQ(hex("30 23 06 09 2A 86 48 86 F7 0D 01 07 02 A0 16 30 14 02 01 01 31 00"
                "30 0B 06 09 2A 86 48 86 F7 0D 01 07 01 31 00"),
            nested(1));
  expect_kept(messages, nested(1));
  expect_rewritten(messages, nested(3, true), nested(3));
}

TEST(NestedMessage, WhatIsDecodedOnTheMainThreadCanBeWrittenCopiedAndReleased) {
  EXPECT_LE(2U, handled_of({100, 500, deepest}));
}

TEST(NestedMessage, WhatIsDecodedOnASmallStackCanBeWrittenCopiedAndReleased) {
  on_small_stack([] { EXPECT_LE(1U, handled_of({10, 100, deepest})); });
}

TEST(NestedMessage, DeeperThanTheStackIsRefused) {
  constexpr int levels = 20'000;
  for (const bool indefinite_too : {false, true}) {
    const Bytes input = nested(levels, indefinite_too);
    on_small_stack([&] { expect_refused(messages, input); });
  }
  const Bytes inside = sequence(integer(1) + empty_set + nested(levels) + empty_set);
  on_small_stack([&] { expect_refused(signed_datas, inside); });
}

TEST(NestedMessage, DeeperThanTheStackIsNeitherWrittenNorCopied) {
  const auto [consumed, info] = decode(asn1_ContentInfo_d, nested(deepest));
  ASSERT_NE(nullptr, info);
  on_small_stack([message = info] {
    EXPECT_EQ(0U, asn1_ContentInfo_e(nullptr, message));
    EXPECT_EQ(nullptr, asn1_ContentInfo_clone(message));
  });
  asn1_ContentInfo_free(info);
}

TEST(NestedMessage, AMessageIsDecodedAgainAfterOneThatWasTooDeep) {
  const Bytes input = nested(20'000);
  on_small_stack([&] {
    expect_refused(messages, input);
    expect_kept(messages, nested(10));
  });
}

#ifndef ORVELASN1_TESTS_SANITIZED
// A thread's bounds are asked for once, and that takes memory.
TEST(NestedMessage, IsRefusedWhereThereIsNoMemoryToFindTheStack) {
  const Bytes input = nested(1);
  on_small_stack([&] {
    {
      const FailingAllocation failing(0);
      ContentInfo *info = nullptr;
      EXPECT_EQ(nullptr,
                asn1_ContentInfo_d(input.data(), input.data() + input.size(), 0, &info, 0));
      EXPECT_EQ(nullptr, info);
      EXPECT_TRUE(failing.happened());
    }
    expect_kept(messages, input);
  });
}
#endif

TEST(NestedMessage, IsReleasedWhereItsEndIsMissing) {
  const Bytes without_end = hex("A0 80 04 01 41 01 00");
  expect_nothing_kept([&] { expect_refused(messages, sequence(data + without_end)); });
}

// ---- ends of the process ------------------------------------------------------------------------

TEST(MessageDeathTest, AMessageWithoutATypeCannotBeReleased) {
  EXPECT_EXIT(asn1_ContentInfo_free(asn1_ContentInfo_new()), aborted, no_type);
}

TEST(MessageDeathTest, AMessageWithoutATypeCannotBeReleasedInsideAnother) {
  EXPECT_EXIT(
      {
        SignedData *record = asn1_SignedData_new();
        record->contentInfo = asn1_ContentInfo_new();
        asn1_SignedData_free(record);
      },
      aborted, no_type);
}

TEST(MessageDeathTest, AMessageWithoutATypeCannotBeCopied) {
  const Untyped info(asn1_ContentInfo_new());
  EXPECT_EXIT(asn1_ContentInfo_clone(info.get()), aborted, no_type);
}

TEST(MessageDeathTest, AMessageWithoutASlotCannotBeReleased) {
  EXPECT_EXIT(
      {
        auto info = typed(data);
        asn1_Content_free(info->content);
        info->content = nullptr;
        info.reset();
      },
      aborted, only_line("pkcs7: asn1_ContentInfo_free: [^\n]+"));
}

TEST(MessageDeathTest, AnInputWithoutAWellFormedTypeEndsTheProcess) {
  const Bytes contents[] = {
      {},                              // nothing
      hex("A0 02 04 00"),              // no type
      hex("02 01 05"),                 // another one
      hex("26 01 2A"),                 // constructed
      hex("06"),                       // no length
      hex("06 80 2A 00 00"),           // indefinite
      hex("06 02 2A"),                 // cut
      hex("06 85 00 00 00 00 01 2A"),  // a length of five octets
      hex("06 06 2A FF FF FF FF 7F"),  // an arc of 35 bits
  };
  for (const Bytes &content : contents) {
    SCOPED_TRACE(testing::PrintToString(content));
    EXPECT_EXIT(decode(asn1_ContentInfo_d, sequence(content)), aborted, no_type);
    EXPECT_EXIT(decode(asn1_ContentInfo_d, indefinite(0x30, content)), aborted, no_type);
  }
  EXPECT_EXIT(decode(asn1_ContentInfo_d, hex("30 84 80 00 00 00") + data), aborted, no_type);
  EXPECT_EXIT(decode(asn1_ContentInfo_d, hex("30 80")), aborted, no_type);
  EXPECT_EXIT(decode(asn1_ContentInfo_d, hex("A3 00"), 0xA3), aborted, no_type);
}

TEST(MessageDeathTest, AnInnerMessageWithoutAWellFormedTypeEndsTheProcessToo) {
  Signed fields;
  fields.content_info = hex("30 00");
  EXPECT_EXIT(decode(asn1_SignedData_d, fields.octets()), aborted, no_type);
  EXPECT_EXIT(decode(asn1_ContentInfo_d, message(signed_data_type, fields.octets())), aborted,
              no_type);
}

TEST(MessageDeathTest, AnEncryptedContentIsRequiredByTheEncoder) {
  const auto record = decoded(encrypted_contents, without_content().octets());
  uint8_t buffer[64];
  uint8_t *cursor = buffer;
  EXPECT_ASSERT(asn1_EncryptedContentInfo_e(nullptr, record.get()), "asn1_implicit_e", "pElement");
  EXPECT_ASSERT(asn1_EncryptedContentInfo_e(&cursor, record.get()), "asn1_implicit_e", "pElement");

  const auto outer = decoded(
      messages, message(encrypted_data_type, sequence(integer(0) + without_content().octets())));
  EXPECT_ASSERT(asn1_ContentInfo_e(nullptr, outer.get()), "asn1_implicit_e", "pElement");
}

TEST(MessageDeathTest, EncodersEndTheProcessWithoutARecord) {
  expect_encoder_ends_the_process<ContentInfo>(messages, nullptr);
  expect_encoder_ends_the_process<SignedData>(signed_datas, nullptr);
  expect_encoder_ends_the_process<SignerInfo>(signers, nullptr);
  expect_encoder_ends_the_process<IssuerAndSerialNumber>(issueds, nullptr);
  expect_encoder_ends_the_process<EncryptedData>(encrypted_datas, nullptr);
  expect_encoder_ends_the_process<EncryptedContentInfo>(encrypted_contents, nullptr);
}

/// Checks that the encoder ends the process where this field is NULL.
template <class T, class Field>
void expect_field_needed(const RecordFamily<T> &family, const Bytes &octets, Field *T::*field,
                         void (*release)(Field *)) {
  const Held<T> record = decoded(family, octets);
  clear(record.get()->*field, release);
  expect_encoder_ends_the_process<T>(family, record.get());
}

TEST(MessageDeathTest, EncodersEndTheProcessWithoutARecordThatIsRequired) {
  expect_field_needed(signed_datas, Signed().octets(), &SignedData::contentInfo,
                      asn1_ContentInfo_free);
  expect_field_needed(signers, Signer().octets(), &SignerInfo::issuerAndSerialNumber,
                      asn1_IssuerAndSerialNumber_free);
  expect_field_needed(signers, Signer().octets(), &SignerInfo::digestAlgorithm, asn1_AlgId_free);
  expect_field_needed(signers, Signer().octets(), &SignerInfo::digestEncryptionAlgorithm,
                      asn1_AlgId_free);
  expect_field_needed(encrypted_datas, encrypted_data, &EncryptedData::encryptedContentInfo,
                      asn1_EncryptedContentInfo_free);
  expect_field_needed(encrypted_contents, Encrypted().octets(),
                      &EncryptedContentInfo::contentEncryptionAlgorithm, asn1_AlgId_free);
}

TEST(MessageDeathTest, AnIssuerWithATagOfThreeDigitsEndsTheProcess) {
  const Bytes issuer = hex("30 0D 31 0B 30 09 06 03 55 04 06 80 02 44 45");
  EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decode(asn1_IssuerAndSerialNumber_d, issued(issuer)));
  Signer signer;
  signer.issuer_and_serial = issued(issuer);
  EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decode(asn1_SignerInfo_d, signer.octets()));
}

TEST(MessageDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(messages);
  expect_decoder_asserts_its_cursors(signed_datas);
  expect_decoder_asserts_its_cursors(signers);
  expect_decoder_asserts_its_cursors(issueds);
  expect_decoder_asserts_its_cursors(encrypted_datas);
  expect_decoder_asserts_its_cursors(encrypted_contents);
}

// ---- exhausted memory ---------------------------------------------------------------------------

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(ContentMemory, ASlotIsNotMadeWhenItIsExhausted) {
  EXPECT_EQ(1, expect_failure_at_each_allocation([] {
              Content *slot = asn1_Content_new();
              const bool succeeded = slot != nullptr;
              asn1_Content_free(slot);
              return succeeded;
            }));
}

TEST(MessageMemoryDeathTest, ExhaustionEndsTheProcessWhereItLeavesAMessageWithoutAType) {
  // The first allocation is for the message. If a later one fails, the message has no type.
  EXPECT_EXIT(run_exhausted(0, asn1_ContentInfo_new), testing::ExitedWithCode(0), "^$");
  EXPECT_EXIT(run_exhausted(1, asn1_ContentInfo_new), aborted, no_type);

  const Input input(detached);
  const auto read = [&] {
    ContentInfo *info = nullptr;
    asn1_ContentInfo_d(input.z(), input.end(), 0, &info, 0);
    return info;
  };
  const auto source = decoded(messages, detached);
  const auto copy = [&] { return asn1_ContentInfo_clone(source.get()); };
  ContentInfo *info = nullptr;
  const long allocations = allocations_of([&] { info = read(); });
  asn1_ContentInfo_free(info);
  ASSERT_LT(2, allocations);
  EXPECT_EXIT(run_exhausted(0, read), testing::ExitedWithCode(0), "^$");
  EXPECT_EXIT(run_exhausted(0, copy), testing::ExitedWithCode(0), "^$");
  for (long successes = 1; successes < allocations; ++successes) {
    EXPECT_EXIT(run_exhausted(successes, read), aborted, no_type);
    EXPECT_EXIT(run_exhausted(successes, copy), aborted, no_type);
  }
}

TEST(MessageMemoryDeathTest, ExhaustionBehindTheTypeFailsAndReleasesAll) {
  long behind_type = 0;
  for (const Bytes &octets : {detached, abc, message(enveloped_data, hex("05 00")),
                              message(encrypted_data_type, encrypted_data)}) {
    const Input input(octets);
    const auto read = [&] {
      ContentInfo *info = nullptr;
      asn1_ContentInfo_d(input.z(), input.end(), 0, &info, 0);
      return info;
    };
    const auto source = decoded(messages, octets);
    const auto copy = [&] { return asn1_ContentInfo_clone(source.get()); };
    ContentInfo *info = nullptr;
    const long allocations = allocations_of([&] { info = read(); });
    asn1_ContentInfo_free(info);
    if (behind_type == 0) behind_type = allocations;  // of the message that has only a type
    for (long successes = behind_type; successes < allocations; ++successes) {
      SCOPED_TRACE(successes);
      EXPECT_EXIT(run_exhausted(successes, read), testing::ExitedWithCode(0), "^$");
      EXPECT_EXIT(run_exhausted(successes, copy), testing::ExitedWithCode(0), "^$");
    }
  }
}

TEST(MessageMemoryDeathTest, ExhaustionInASignedDataGivesNullOrLeavesAMessageWithoutAType) {
  const Bytes octets = full_signed().octets();
  const Input input(octets);
  expect_null_or_end(signed_datas, [&] {
    SignedData *record = nullptr;
    asn1_SignedData_d(input.z(), input.end(), 0, &record, 0);
    return record;
  });
  const auto source = decoded(signed_datas, octets);
  expect_null_or_end(signed_datas, [&] { return asn1_SignedData_clone(source.get()); });
}

#endif

}  // namespace

}  // namespace pkcs7_test
