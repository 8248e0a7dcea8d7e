// Tests certificates and the records in them. The inputs are put together from small pieces, so
// that each field can be left out, moved or spoilt.
#include <algorithm>
#include <csignal>
#include <cstring>

#include "allocator.h"
#include "support.h"

namespace certificate_test {

namespace {

using support::any_line;
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

using ValidityRecord = support::Owned<Validity, asn1_Validity_free>;
using KeyRecord = support::Owned<SubjectPKI, asn1_SubjectPKI_free>;
using ExtensionRecord = support::Owned<Extension, asn1_Extension_free>;
using ExtensionList = support::Owned<Extensions, asn1_Extensions_free>;
using TbsRecord = support::Owned<Certificate_TBS, asn1_Certificate_TBS_free>;
using CertificateRecord = support::Owned<Certificate, asn1_Certificate_free>;
using Lines = std::vector<std::string>;

template <class T>
using Decoder = const uint8_t *(*)(const uint8_t *, const uint8_t *, uint32_t, T **, uint32_t);

Bytes sequence(const Bytes &content) { return element(0x30, content); }

/// Returns a name of one attribute.
Bytes name(const Bytes &type, uint8_t tag, const Bytes &content) {
  return sequence(element(0x31, sequence(type + element(tag, content))));
}

const Bytes country = hex("06 03 55 04 06");
const Bytes common_name = hex("06 03 55 04 03");
const Bytes serial_number_attribute = hex("06 03 55 04 05");
const Bytes rsa_with_sha256 = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00");
const Bytes rsa = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 01 05 00");
const Bytes key_usage = hex("06 03 55 1D 0F");
const Bytes utc_2026 = hex("17 0D 32 36 30 31 30 31 30 30 30 30 30 30 5A");
const Bytes utc_2027 = hex("17 0D 32 37 30 31 30 31 30 30 30 30 30 30 5A");
const Bytes general_2050 = hex("18 0F 32 30 35 30 30 31 30 31 30 30 30 30 30 30 5A");

const Bytes version_1 = hex("A0 03 02 01 00");  // written out, though it is the default
const Bytes version_2 = hex("A0 03 02 01 01");
const Bytes version_3 = hex("A0 03 02 01 02");
const Bytes issuer_id = hex("81 02 05 A0");
const Bytes subject_id = hex("82 03 00 AB CD");

Bytes extension(const Bytes &critical) {
  return sequence(key_usage + critical + hex("04 02 AB CD"));
}
Bytes extensions_field(const Bytes &list) { return element(0xA3, sequence(list)); }

const Bytes extensions = extensions_field(extension(hex("01 01 FF")));

/// The fields of a TBSCertificate, as octets of the input.
struct Parts {
  Bytes version;
  Bytes serial = hex("02 01 05");
  Bytes signature = rsa_with_sha256;
  Bytes issuer = name(country, 0x13, text("DE"));
  Bytes validity = sequence(utc_2026 + utc_2027);
  Bytes subject = name(common_name, 0x0C, text("A"));
  Bytes key = sequence(rsa + hex("03 03 00 AB CD"));
  Bytes issuer_unique_id;
  Bytes subject_unique_id;
  Bytes extensions;

  Bytes content() const {
    return version + serial + signature + issuer + validity + subject + key + issuer_unique_id +
           subject_unique_id + extensions;
  }
  Bytes tbs() const { return sequence(content()); }
};

/// Returns the fields of a version 3 certificate, with all that are optional.
Parts full() {
  Parts parts;
  parts.version = version_3;
  parts.issuer_unique_id = issuer_id;
  parts.subject_unique_id = subject_id;
  parts.extensions = extensions;
  return parts;
}

const Bytes signature = hex("03 03 00 C0 00");

Bytes certificate(const Bytes &tbs) { return sequence(tbs + rsa_with_sha256 + signature); }

/// Decodes octets that must be consumed as a whole.
template <class T, class Record>
T whole(Decoder<Record> element_d, const Bytes &octets, uint32_t impl_tag = 0) {
  const auto decoded = decode(element_d, octets, impl_tag);
  EXPECT_EQ(static_cast<long>(octets.size()), decoded.consumed);
  return T(decoded.record);
}

TbsRecord tbs(const Bytes &octets) { return whole<TbsRecord>(asn1_Certificate_TBS_d, octets); }
CertificateRecord cert(const Bytes &octets) {
  return whole<CertificateRecord>(asn1_Certificate_d, octets);
}

/// Checks that octets are refused after the header: the place for the record is set to NULL.
template <class T>
void expect_refused(Decoder<T> element_d, const Bytes &octets) {
  T before = {};
  EXPECT_EQ(nullptr, left_by_refusal(element_d, octets, &before));
}

/// Checks that octets are refused at the header: the place for the record does not change.
template <class T>
void expect_header_refused(Decoder<T> element_d, const Bytes &octets, uint32_t impl_tag = 0) {
  T before = {};
  EXPECT_EQ(&before, left_by_refusal(element_d, octets, &before, impl_tag));
}

/// Checks that the encoder returns 0 in both passes. The second changes neither buffer nor cursor.
template <class T>
void expect_nothing_written(uint32_t (*element_e)(uint8_t **, const T *), const T *record) {
  EXPECT_EQ(0U, element_e(nullptr, record));
  uint8_t buffer[16] = {};
  uint8_t *cursor = buffer;
  EXPECT_EQ(0U, element_e(&cursor, record));
  EXPECT_EQ(buffer, cursor);
  EXPECT_EQ(Bytes(16, 0), Bytes(std::begin(buffer), std::end(buffer)));
}

/// Checks that every cut of a valid input is refused, whether its length octets fit the cut or not.
template <class T>
void expect_every_cut_refused(Decoder<T> element_d, const Bytes &content) {
  const Bytes octets = sequence(content);
  for (size_t size = 0; size < octets.size(); ++size) {
    EXPECT_FALSE(
        decode(element_d, Bytes(octets.begin(), octets.begin() + static_cast<long>(size))).ok())
        << size;
  }
  for (size_t size = 0; size < content.size(); ++size) {
    EXPECT_FALSE(decode(element_d,
                        sequence(Bytes(content.begin(), content.begin() + static_cast<long>(size))))
                     .ok())
        << size;
  }
}

/// Checks the header, as for every SEQUENCE of this file.
template <class Owner, class T>
void expect_header_of_a_sequence(Decoder<T> element_d, const Bytes &content) {
  for (const Bytes &octets :
       {Bytes(), hex("30"), hex("30 01"), hex("30 85"), element(0x31, content),
        element(0xA1, content), hex("30 80") + content + hex("00 00")}) {
    expect_header_refused(element_d, octets);
  }
  expect_header_refused(element_d, sequence(content), 0xA1);
  expect_refused(element_d, hex("30 00"));
  expect_refused(element_d, hex("30 84 80 00 00 00") + content);
  expect_refused(element_d, hex("30 84 FF FF FF FF") + content);

  EXPECT_NE(nullptr, whole<Owner>(element_d, sequence(content)));
  EXPECT_NE(nullptr, whole<Owner>(element_d, element(0x10, content)));  // the primitive form
  for (const uint32_t impl_tag : {0xA1U, 0x81U, 0x2A1U}) {
    EXPECT_NE(nullptr, whole<Owner>(element_d, element(0xA1, content), impl_tag));
    EXPECT_NE(nullptr, whole<Owner>(element_d, element(0x81, content), impl_tag));
  }
  // Octets after the last field inside the SEQUENCE are not read.
  const Bytes longer = sequence(content + hex("05 00"));
  const auto decoded = decode(element_d, longer);
  const Owner record(decoded.record);
  EXPECT_EQ(static_cast<long>(longer.size() - 2), decoded.consumed);
}

// ------------------------------------------------------------------------------------------ Validity

TEST(Validity, IsTwoTimesOfEitherKind) {
  for (const Bytes &before : {utc_2026, general_2050}) {
    for (const Bytes &after : {utc_2027, general_2050}) {
      const Bytes octets = sequence(before + after);
      const ValidityRecord record = whole<ValidityRecord>(asn1_Validity_d, octets);
      EXPECT_EQ(before[0], record->notBefore->kind);
      EXPECT_EQ(after[0], record->notAfter->kind);
      EXPECT_EQ(Bytes(before.begin() + 2, before.end()), text(record->notBefore->value));
      EXPECT_EQ(Bytes(after.begin() + 2, after.end()), text(record->notAfter->value));
      EXPECT_EQ(octets, encode(asn1_Validity_e, record.get()));
    }
  }
}

TEST(Validity, IsASequenceOfDefiniteLength) {
  expect_header_of_a_sequence<ValidityRecord>(asn1_Validity_d, utc_2026 + utc_2027);
}

TEST(Validity, NeedsBothTimes) {
  for (const Bytes &content :
       {utc_2026, hex("02 01 00") + utc_2026, utc_2026 + hex("02 01 00"), utc_2026 + hex("17"),
        hex("37 0D") + text("260101000000Z") + utc_2027, hex("1E 00") + utc_2027,
        utc_2026 + hex("17 84 80 00 00 00")}) {
    expect_refused(asn1_Validity_d, sequence(content));
  }
  // The second time must be inside the SEQUENCE.
  expect_refused(asn1_Validity_d, sequence(utc_2026) + utc_2027);
}

TEST(Validity, IsRefusedAtEveryCut) {
  expect_every_cut_refused(asn1_Validity_d, utc_2026 + utc_2027);
}

TEST(Validity, IsNotEncodedWithoutBothTimes) {
  const ValidityRecord record(asn1_Validity_new());
  EXPECT_EQ(nullptr, record->notBefore);
  EXPECT_EQ(nullptr, record->notAfter);
  expect_nothing_written(asn1_Validity_e, record.get());

  record->notBefore = asn1_Time_new();
  record->notBefore->kind = 23;
  record->notBefore->value = asn1_UTCTime_clone("260101000000Z");
  expect_nothing_written(asn1_Validity_e, record.get());

  record->notAfter = asn1_Time_new();
  expect_nothing_written(asn1_Validity_e, record.get());  // kind 0
  record->notAfter->kind = 24;
  expect_nothing_written(asn1_Validity_e, record.get());  // no text
  record->notAfter->value = asn1_GeneralizedTime_clone("");
  expect_nothing_written(asn1_Validity_e, record.get());  // an empty text
}

TEST(Validity, IsClonedDeeply) {
  EXPECT_EQ(nullptr, asn1_Validity_clone(nullptr));

  const Bytes octets = sequence(utc_2026 + general_2050);
  const ValidityRecord record = whole<ValidityRecord>(asn1_Validity_d, octets);
  const ValidityRecord copy(asn1_Validity_clone(record.get()));
  EXPECT_NE(record->notBefore, copy->notBefore);
  EXPECT_NE(record->notBefore->value, copy->notBefore->value);
  EXPECT_EQ(octets, encode(asn1_Validity_e, copy.get()));
}

TEST(Validity, IsClonedHalfFilled) {
  const ValidityRecord record(asn1_Validity_new());
  const ValidityRecord empty(asn1_Validity_clone(record.get()));
  EXPECT_EQ(nullptr, empty->notBefore);
  EXPECT_EQ(nullptr, empty->notAfter);

  record->notAfter = asn1_Seconds2Time(nullptr, 0);
  const ValidityRecord half(asn1_Validity_clone(record.get()));
  EXPECT_EQ(nullptr, half->notBefore);
  EXPECT_STREQ("19700101000000Z", half->notAfter->value);
}

TEST(Validity, CannotBeClonedWithATimeOfNoKind) {
  const ValidityRecord record(asn1_Validity_new());
  record->notBefore = asn1_Seconds2Time(nullptr, 0);
  record->notAfter = asn1_Time_new();
  EXPECT_EQ(nullptr, asn1_Validity_clone(record.get()));
}

TEST(Validity, FreeIgnoresNull) { asn1_Validity_free(nullptr); }

// ---------------------------------------------------------------------------------------- SubjectPKI

const Bytes key_content = rsa + hex("03 03 00 AB CD");

TEST(SubjectKey, IsAnAlgorithmAndBits) {
  const KeyRecord record = whole<KeyRecord>(asn1_SubjectPKI_d, sequence(key_content));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_rsaEncryption(), record->algorithm->algorithm));
  EXPECT_EQ(hex("05 00"), value(record->algorithm->parameters));
  EXPECT_EQ(16U, record->subjectPublicKey->length);
  EXPECT_EQ(hex("AB CD"), value(record->subjectPublicKey));
  EXPECT_EQ(sequence(key_content), encode(asn1_SubjectPKI_e, record.get()));
}

TEST(SubjectKey, IsASequenceOfDefiniteLength) {
  expect_header_of_a_sequence<KeyRecord>(asn1_SubjectPKI_d, key_content);
}

TEST(SubjectKey, NeedsBothFields) {
  for (const Bytes &content :
       {rsa, hex("03 02 00 AB"), hex("30 00 03 02 00 AB"), rsa + hex("04 02 00 AB"),
        rsa + hex("03 00"), rsa + hex("03 02 08 AB"), rsa + hex("03 84 80 00 00 00")}) {
    expect_refused(asn1_SubjectPKI_d, sequence(content));
  }
  expect_refused(asn1_SubjectPKI_d, sequence(rsa) + hex("03 02 00 AB"));
}

TEST(SubjectKey, IsRefusedAtEveryCut) { expect_every_cut_refused(asn1_SubjectPKI_d, key_content); }

TEST(SubjectKey, LosesZeroOctetsAndBitsAtItsEndWhenItIsEncoded) {
  const struct {
    const char *read;
    const char *written;
  } rows[] = {
      {"03 03 00 80 00", "03 02 07 80"}, {"03 03 00 AB C0", "03 03 06 AB C0"},
      {"03 02 00 00", "03 01 00"},       {"03 01 00", "03 01 00"},
      {"03 02 05 FF", "03 02 00 FF"},
  };
  for (const auto &row : rows) {
    const KeyRecord record = whole<KeyRecord>(asn1_SubjectPKI_d, sequence(rsa + hex(row.read)));
    EXPECT_EQ(sequence(rsa + hex(row.written)), encode(asn1_SubjectPKI_e, record.get()))
        << row.read;
  }
}

TEST(SubjectKey, IsNotEncodedWithoutBits) {
  const KeyRecord record(asn1_SubjectPKI_new());
  EXPECT_EQ(nullptr, record->algorithm);
  EXPECT_EQ(nullptr, record->subjectPublicKey);
  record->algorithm = asn1_AlgId_new();
  expect_nothing_written(asn1_SubjectPKI_e, record.get());  // an empty algorithm
  record->algorithm->algorithm = asn1_ObjId_clone(asn1_Get_rsaEncryption());
  expect_nothing_written(asn1_SubjectPKI_e, record.get());
}

TEST(SubjectKey, IsClonedDeeplyAndHalfFilled) {
  EXPECT_EQ(nullptr, asn1_SubjectPKI_clone(nullptr));

  const KeyRecord record = whole<KeyRecord>(asn1_SubjectPKI_d, sequence(key_content));
  const KeyRecord copy(asn1_SubjectPKI_clone(record.get()));
  EXPECT_NE(record->subjectPublicKey->data, copy->subjectPublicKey->data);
  EXPECT_EQ(sequence(key_content), encode(asn1_SubjectPKI_e, copy.get()));

  asn1_AlgId_free(record->algorithm);
  record->algorithm = nullptr;
  const KeyRecord half(asn1_SubjectPKI_clone(record.get()));
  EXPECT_EQ(nullptr, half->algorithm);
  EXPECT_EQ(hex("AB CD"), value(half->subjectPublicKey));

  const KeyRecord empty(asn1_SubjectPKI_new());
  const KeyRecord copy_of_empty(asn1_SubjectPKI_clone(empty.get()));
  EXPECT_EQ(nullptr, copy_of_empty->algorithm);
  EXPECT_EQ(nullptr, copy_of_empty->subjectPublicKey);
}

TEST(SubjectKey, FreeIgnoresNullAndAKeyWithoutOctets) {
  asn1_SubjectPKI_free(nullptr);
  const KeyRecord record(asn1_SubjectPKI_new());
  record->subjectPublicKey = asn1_BitString_new(0);
}

TEST(SubjectKey, IsWipedBeforeItIsReleased) {
  // 12 bits take two octets.
  for (const char *bits : {"03 05 00 01 02 03 04", "03 03 04 AB CF"}) {
    KeyRecord record = whole<KeyRecord>(asn1_SubjectPKI_d, sequence(rsa + hex(bits)));
    const size_t octets = (record->subjectPublicKey->length + 7) / 8;
    const support::ReleaseWatch watch(record->subjectPublicKey->data, octets);
    record.reset();
    EXPECT_TRUE(watch.released()) << bits;
    EXPECT_EQ(Bytes(octets, 0), watch.octets()) << bits;
  }
}

TEST(SubjectKey, IsWipedWithTheWholeCertificate) {
  CertificateRecord record = cert(certificate(full().tbs()));
  const BitString *key = record->tbsCertificate->subjectPublicKeyInfo->subjectPublicKey;
  const support::ReleaseWatch watch(key->data, 2);
  record.reset();
  EXPECT_TRUE(watch.released());
  EXPECT_EQ(hex("00 00"), watch.octets());
}

TEST(SubjectKey, IsTheOnlyValueThatIsWiped) {
  CertificateRecord record = cert(certificate(full().tbs()));
  const support::ReleaseWatch watch(record->signatureValue->data, 1);
  record.reset();
  EXPECT_TRUE(watch.released());
  EXPECT_EQ(hex("C0"), watch.octets());
}

// ----------------------------------------------------------------------------------------- Extension

TEST(Extension, KeepsTheOctetOfCriticalAndDropsFalse) {
  const struct {
    const char *read;
    uint32_t critical;
    const char *written;
  } rows[] = {
      {"", 0, ""},
      {"01 01 00", 0, ""},
      {"01 01 01", 1, "01 01 01"},
      {"01 01 7F", 127, "01 01 7F"},
      {"01 01 FF", 255, "01 01 FF"},
      {"01 81 01 FF", 255, "01 01 FF"},
  };
  for (const auto &row : rows) {
    const ExtensionRecord record =
        whole<ExtensionRecord>(asn1_Extension_d, extension(hex(row.read)));
    EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ce_keyUsage(), record->extnID)) << row.read;
    EXPECT_EQ(row.critical, record->critical) << row.read;
    EXPECT_EQ(hex("AB CD"), value(record->extnValue)) << row.read;
    EXPECT_EQ(extension(hex(row.written)), encode(asn1_Extension_e, record.get())) << row.read;
  }
}

TEST(Extension, WritesTheLowEightBitsOfCritical) {
  const ExtensionRecord record = whole<ExtensionRecord>(asn1_Extension_d, extension({}));
  const struct {
    uint32_t critical;
    const char *written;
  } rows[] = {
      {0x1FF, "01 01 FF"}, {0x101, "01 01 01"}, {0x100, "01 01 00"}, {0xFFFFFF80, "01 01 80"}};
  for (const auto &row : rows) {
    record->critical = row.critical;
    EXPECT_EQ(extension(hex(row.written)), encode(asn1_Extension_e, record.get())) << row.critical;
  }
}

TEST(Extension, IsASequenceOfDefiniteLength) {
  expect_header_of_a_sequence<ExtensionRecord>(asn1_Extension_d, key_usage + hex("04 02 AB CD"));
  expect_header_of_a_sequence<ExtensionRecord>(asn1_Extension_d,
                                               key_usage + hex("01 01 FF 04 02 AB CD"));
}

TEST(Extension, IsRefusedWithoutItsFields) {
  for (const Bytes &content :
       {key_usage, hex("04 00"), hex("01 01 FF 04 00"), key_usage + hex("01 01 FF"),
        key_usage + hex("01 02 FF FF 04 00"), key_usage + hex("01 00 04 00"),
        key_usage + hex("01 01 FF 01 01 FF 04 00"),  // only once is accepted
        key_usage + hex("04"), key_usage + hex("05 00"), key_usage + hex("21 01 FF 04 00"),
        key_usage + hex("04 84 80 00 00 00"), key_usage + hex("24 02 0C 00"),
        hex("06 05 FF FF FF FF 7F 04 00")}) {
    expect_refused(asn1_Extension_d, sequence(content));
  }
}

TEST(Extension, IsRefusedAtEveryCut) {
  expect_every_cut_refused(asn1_Extension_d, key_usage + hex("01 01 FF 04 02 AB CD"));
}

TEST(Extension, LooksForCriticalNotBehindTheEndOfTheInput) {
  // The SEQUENCE ends the input: a sanitizer sees a read past it.
  expect_refused(asn1_Extension_d, sequence(key_usage));
}

TEST(Extension, TakesABooleanBehindItsContentForNoMoreThanALineInTheTrace) {
  const Bytes octets = sequence(key_usage) + hex("01 01 FF 04 00");
  expect_refused(asn1_Extension_d, octets);
  const Lines expected = {"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   2.5.29.15", ".   FALSE (0)"};
  EXPECT_EQ(expected, trace_lines([&] { decode(asn1_Extension_d, octets, 0, 1); }));
}

TEST(Extension, JoinsAConstructedValue) {
  const ExtensionRecord record = whole<ExtensionRecord>(
      asn1_Extension_d, sequence(key_usage + hex("24 80 04 01 AB 24 03 04 01 CD 00 00")));
  EXPECT_EQ(hex("AB CD"), value(record->extnValue));
  EXPECT_EQ(extension({}), encode(asn1_Extension_e, record.get()));
}

TEST(Extension, TakesAnEmptyValueAndAnIdentifierOfOneArc) {
  const Bytes empty = sequence(key_usage + hex("04 00"));
  EXPECT_EQ(empty, encode(asn1_Extension_e, whole<ExtensionRecord>(asn1_Extension_d, empty).get()));

  const ExtensionRecord record = whole<ExtensionRecord>(asn1_Extension_d, hex("30 04 06 00 04 00"));
  EXPECT_EQ(1U, record->extnID->count);
  expect_nothing_written(asn1_Extension_e, record.get());
}

TEST(Extension, IsNotEncodedWithoutIdentifierOrValue) {
  const ExtensionRecord record(asn1_Extension_new());
  EXPECT_EQ(nullptr, record->extnID);
  EXPECT_EQ(0U, record->critical);
  EXPECT_EQ(nullptr, record->extnValue);
  expect_nothing_written(asn1_Extension_e, record.get());

  record->extnID = asn1_ObjId_clone(asn1_Get_id_ce_keyUsage());
  record->critical = 1;
  expect_nothing_written(asn1_Extension_e, record.get());

  asn1_ObjId_free(record->extnID);
  record->extnID = nullptr;
  record->extnValue = asn1_OctetString_new(1);
  expect_nothing_written(asn1_Extension_e, record.get());
}

TEST(Extension, IsNotEncodedWhenTheSumDoesNotFit32Bits) {
  const ExtensionRecord record = whole<ExtensionRecord>(asn1_Extension_d, extension({}));
  for (const uint32_t length : {0xFFFFFFFFU, 0xFFFFFFFAU, 0xFFFFFFF8U, 0xFFFFFFF0U}) {
    record->extnValue->length = length;
    expect_nothing_written(asn1_Extension_e, record.get());
  }
  record->extnValue->length = 2;
}

TEST(Extension, IsClonedDeeplyAndHalfFilled) {
  EXPECT_EQ(nullptr, asn1_Extension_clone(nullptr));

  const ExtensionRecord record =
      whole<ExtensionRecord>(asn1_Extension_d, extension(hex("01 01 7F")));
  const ExtensionRecord copy(asn1_Extension_clone(record.get()));
  EXPECT_NE(record->extnID, copy->extnID);
  EXPECT_NE(record->extnValue->data, copy->extnValue->data);
  EXPECT_EQ(extension(hex("01 01 7F")), encode(asn1_Extension_e, copy.get()));

  const ExtensionRecord half(asn1_Extension_new());
  half->critical = 300;
  const ExtensionRecord copy_of_half(asn1_Extension_clone(half.get()));
  EXPECT_EQ(nullptr, copy_of_half->extnID);
  EXPECT_EQ(300U, copy_of_half->critical);
  EXPECT_EQ(nullptr, copy_of_half->extnValue);
}

TEST(Extension, FreeIgnoresNull) { asn1_Extension_free(nullptr); }

// ---------------------------------------------------------------------------------------- Extensions

TEST(ExtensionList, KeepsOrderAndDuplicates) {
  const Bytes other = sequence(hex("06 03 55 1D 13 04 00"));
  const Bytes octets = sequence(other + extension({}) + other + extension(hex("01 01 FF")));
  const ExtensionList list = whole<ExtensionList>(asn1_Extensions_d, octets);
  ASSERT_EQ(4, List_len(list.get()));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ce_basicConstraints(),
                              static_cast<Extension *>(List_get(list.get(), 2))->extnID));
  EXPECT_EQ(255U, static_cast<Extension *>(List_get(list.get(), 3))->critical);
  EXPECT_EQ(octets, encode(asn1_Extensions_e, list.get()));

  const ExtensionList copy(asn1_Extensions_clone(list.get()));
  EXPECT_EQ(octets, encode(asn1_Extensions_e, copy.get()));
  EXPECT_NE(List_get(list.get(), 0), List_get(copy.get(), 0));
}

TEST(ExtensionList, MayBeEmpty) {
  const ExtensionList list = whole<ExtensionList>(asn1_Extensions_d, hex("30 00"));
  EXPECT_EQ(0, List_len(list.get()));
  EXPECT_EQ(hex("30 00"), encode(asn1_Extensions_e, list.get()));
  const ExtensionList copy(asn1_Extensions_clone(list.get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(0, List_len(copy.get()));
}

TEST(ExtensionList, MayHaveIndefiniteLengthAtTheEndOfTheInput) {
  const ExtensionList list =
      whole<ExtensionList>(asn1_Extensions_d, hex("30 80") + extension({}) + hex("00 00"));
  EXPECT_EQ(1, List_len(list.get()));
  for (const char *tail : {"01 01", "00 00 00", "00 00 05 00"}) {
    EXPECT_EQ(nullptr, left_by_refusal<List>(asn1_Extensions_d,
                                             hex("30 80") + extension({}) + hex(tail), nullptr));
  }
}

TEST(ExtensionList, LeavesAnEmptyListOnlyWhenItsHeaderIsRefused) {
  const ExtensionList left(left_by_refusal<List>(asn1_Extensions_d, hex("31 00"), nullptr));
  ASSERT_NE(nullptr, left);
  EXPECT_EQ(0, List_len(left.get()));
  EXPECT_EQ(nullptr, left_by_refusal<List>(asn1_Extensions_d,
                                           sequence(extension({}) + hex("05 00")), nullptr));
}

TEST(ExtensionList, IsNotEncodedWhenOneOfItIsNot) {
  const ExtensionList list =
      whole<ExtensionList>(asn1_Extensions_d, sequence(extension({}) + extension({})));
  auto *last = static_cast<Extension *>(List_get(list.get(), 1));
  asn1_ObjId_free(last->extnID);
  last->extnID = nullptr;
  expect_nothing_written(asn1_Extensions_e, list.get());
}

TEST(ExtensionList, FreeIgnoresNull) { asn1_Extensions_free(nullptr); }

// ----------------------------------------------------------------------- Certificate_TBS, its fields

TEST(TbsCertificate, HoldsEachField) {
  const Parts parts = full();
  const TbsRecord record = tbs(parts.tbs());
  EXPECT_EQ(2U, asn1_Integer_get(record->version));
  EXPECT_EQ(hex("05"), value(record->serialNumber));
  EXPECT_EQ(rsa_with_sha256, encode(asn1_AlgId_e, record->signature));
  EXPECT_EQ(parts.issuer, encode(asn1_RDNSequence_e, record->issuerSequence));
  EXPECT_STREQ("/c(19)=DE", record->issuer);
  EXPECT_EQ(parts.issuer, value(record->issuerEncoded));
  EXPECT_EQ(parts.validity, encode(asn1_Validity_e, record->validity));
  EXPECT_EQ(parts.subject, encode(asn1_RDNSequence_e, record->subjectSequence));
  EXPECT_STREQ("/cn(12)=A", record->subject);
  EXPECT_EQ(parts.subject, value(record->subjectEncoded));
  EXPECT_EQ(parts.key, encode(asn1_SubjectPKI_e, record->subjectPublicKeyInfo));
  EXPECT_EQ(3U, record->issuerUniqueID->length);
  EXPECT_EQ(hex("A0"), value(record->issuerUniqueID));
  EXPECT_EQ(16U, record->subjectUniqueID->length);
  EXPECT_EQ(hex("AB CD"), value(record->subjectUniqueID));
  EXPECT_EQ(sequence(extension(hex("01 01 FF"))), encode(asn1_Extensions_e, record->extensions));
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, record.get()));
}

TEST(TbsCertificate, IsASequenceOfDefiniteLength) {
  expect_header_of_a_sequence<TbsRecord>(asn1_Certificate_TBS_d, Parts().content());
  expect_header_of_a_sequence<TbsRecord>(asn1_Certificate_TBS_d, full().content());
}

TEST(TbsCertificate, OptionalFieldsNeedAVersionOfAtLeastTwo) {
  for (const Bytes &version : {Bytes(), version_1, version_2, version_3, hex("A0 03 02 01 FF")}) {
    for (unsigned present = 0; present < 8; ++present) {
      Parts parts;
      parts.version = version;
      if ((present & 1) != 0) parts.issuer_unique_id = issuer_id;
      if ((present & 2) != 0) parts.subject_unique_id = subject_id;
      if ((present & 4) != 0) parts.extensions = extensions;
      if (present != 0 && (version.empty() || version == version_1)) {
        expect_refused(asn1_Certificate_TBS_d, parts.tbs());
        continue;
      }
      const TbsRecord record = tbs(parts.tbs());
      EXPECT_EQ(version.empty(), record->version == nullptr);
      EXPECT_EQ((present & 1) != 0, record->issuerUniqueID != nullptr);
      EXPECT_EQ((present & 2) != 0, record->subjectUniqueID != nullptr);
      EXPECT_EQ((present & 4) != 0, record->extensions != nullptr);
      EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, record.get()));
    }
  }
}

TEST(TbsCertificate, TheVersionTestLooksAtTheFirstOctetThatIsKept) {
  Parts parts;
  parts.version = hex("A0 04 02 02 00 01");  // one leading zero is dropped
  parts.extensions = extensions;
  EXPECT_NE(nullptr, tbs(parts.tbs()));

  parts.version = hex("A0 05 02 03 00 00 01");  // of two, one is kept
  expect_refused(asn1_Certificate_TBS_d, parts.tbs());
  parts.extensions = {};
  EXPECT_NE(nullptr, tbs(parts.tbs()));

  parts.version = hex("A0 04 02 02 00 00");
  EXPECT_NE(nullptr, tbs(parts.tbs()));
  parts.extensions = extensions;
  expect_refused(asn1_Certificate_TBS_d, parts.tbs());
}

TEST(TbsCertificate, AnExplicitVersionOfZeroIsKept) {
  Parts parts;
  parts.version = version_1;
  const TbsRecord record = tbs(parts.tbs());
  ASSERT_NE(nullptr, record->version);
  EXPECT_EQ(0U, record->version->length);
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, record.get()));
}

TEST(TbsCertificate, NeedsEveryRequiredField) {
  for (Bytes Parts::*field : {&Parts::serial, &Parts::signature, &Parts::issuer, &Parts::validity,
                              &Parts::subject, &Parts::key}) {
    for (const Parts &good : {Parts(), full()}) {
      Parts parts = good;
      parts.*field = {};
      expect_refused(asn1_Certificate_TBS_d, parts.tbs());
      parts.*field = hex("05 00");
      expect_refused(asn1_Certificate_TBS_d, parts.tbs());
      parts.*field = hex("30 00");
      expect_refused(asn1_Certificate_TBS_d, parts.tbs());
    }
  }
}

TEST(TbsCertificate, IsRefusedWithABadField) {
  const struct {
    Bytes Parts::*field;
    Bytes octets;
  } rows[] = {
      {&Parts::version, hex("80 03 02 01 02")},  // compared with A0, constructed bit included
      {&Parts::version, hex("A0 00")},
      {&Parts::version, hex("A0 02 05 00")},
      {&Parts::version, hex("A0 80 02 01 02 00 00")},
      {&Parts::version, hex("A1 03 02 01 02")},
      {&Parts::version, hex("02 01 02")},
      {&Parts::serial, hex("02 00")},
      {&Parts::serial, hex("22 01 05")},
      {&Parts::serial, hex("02 84 80 00 00 00")},
      {&Parts::signature, hex("30 80 06 01 2A 00 00")},
      {&Parts::issuer, hex("30 02 30 00")},
      {&Parts::issuer, hex("31 00")},
      {&Parts::issuer, sequence(element(0x31, sequence(country)))},
      {&Parts::issuer, hex("30 80 31 00 00 00")},  // not the last thing in its range
      {&Parts::validity, sequence(utc_2026)},
      {&Parts::subject, hex("30 02 30 00")},
      {&Parts::key, sequence(rsa)},
      {&Parts::issuer_unique_id, hex("81 00")},
      {&Parts::issuer_unique_id, hex("81 02 08 A0")},
      {&Parts::subject_unique_id, hex("82 00")},
      {&Parts::subject_unique_id, hex("82 84 80 00 00 00")},
      {&Parts::extensions, hex("A3 00")},
      {&Parts::extensions, hex("A3 02 31 00")},
      {&Parts::extensions, hex("A3 02 05 00")},
      {&Parts::extensions, hex("A3 80 30 00 00 00")},
      {&Parts::extensions, hex("A3 04 30 02 05 00")},
      {&Parts::extensions, extensions_field(extension({}) + sequence(key_usage))},
      {&Parts::extensions, element(0xA3, hex("30 80") + extension({}) + hex("01 01"))},
  };
  for (const auto &row : rows) {
    Parts parts = full();
    parts.*row.field = row.octets;
    expect_refused(asn1_Certificate_TBS_d, parts.tbs());
  }
}

TEST(TbsCertificate, IsRefusedAtEveryCutOfItsRequiredFields) {
  Parts parts;
  expect_every_cut_refused(asn1_Certificate_TBS_d, parts.content());
  parts.version = version_3;
  expect_every_cut_refused(asn1_Certificate_TBS_d, parts.content());
}

TEST(TbsCertificate, LooksForNoFieldBehindItsContent) {
  // The octets that follow would fit, but are past the SEQUENCE.
  const Parts parts = full();
  expect_refused(asn1_Certificate_TBS_d, hex("30 00") + parts.content());

  Parts short_parts = parts;
  short_parts.extensions = {};
  const auto decoded = decode(asn1_Certificate_TBS_d, short_parts.tbs() + extensions);
  const TbsRecord record(decoded.record);
  EXPECT_EQ(static_cast<long>(short_parts.tbs().size()), decoded.consumed);
  EXPECT_EQ(nullptr, record->extensions);
}

TEST(TbsCertificate, StopsWithSuccessInFrontOfWhatItDoesNotKnow) {
  const struct {
    Bytes known, rest;
  } rows[] = {
      {{}, hex("84 01 00")},
      {{}, hex("A1 04 03 02 05 A0")},  // a unique identifier in constructed form
      {{}, hex("A2 04 03 02 05 A0")},
      {{}, hex("83 02 30 00")},
      {{}, hex("05 00")},
      {{}, hex("00")},
      {issuer_id, issuer_id},
      {issuer_id, hex("A4 00")},
      {issuer_id + subject_id, hex("80 00")},
      {subject_id, issuer_id},  // out of order
      {subject_id, subject_id + extensions},
      {extensions, issuer_id + subject_id},
      {extensions, extensions},
      {issuer_id + extensions, subject_id},
      {issuer_id + subject_id + extensions, hex("A4 02 05 00")},
  };
  for (const auto &row : rows) {
    Parts parts;
    parts.version = version_3;
    const Bytes prefix = parts.content() + row.known;
    const Bytes octets = sequence(prefix + row.rest);
    const auto decoded = decode(asn1_Certificate_TBS_d, octets);
    const TbsRecord record(decoded.record);
    EXPECT_EQ(static_cast<long>(octets.size() - row.rest.size()), decoded.consumed);
    EXPECT_EQ(sequence(prefix), encode(asn1_Certificate_TBS_e, record.get()));

    // In a certificate, the algorithm is expected at these octets.
    expect_refused(asn1_Certificate_d, certificate(octets));
  }
}

TEST(TbsCertificate, AnUnknownFieldNeedsNoVersion) {
  const auto decoded =
      decode(asn1_Certificate_TBS_d, sequence(Parts().content() + hex("84 01 00")));
  const TbsRecord record(decoded.record);
  EXPECT_EQ(static_cast<long>(Parts().tbs().size()), decoded.consumed);
}

TEST(TbsCertificate, ReadsOnInsideAVersionThatIsNotFilled) {
  Parts parts;
  parts.version = hex("A0 06 02 01 02");  // the serial number lies inside the wrapper
  parts.serial = hex("02 01 07");
  const TbsRecord record = tbs(parts.tbs());
  EXPECT_EQ(2U, asn1_Integer_get(record->version));
  EXPECT_EQ(7U, asn1_Integer_get(record->serialNumber));
}

TEST(TbsCertificate, TakesAnEmptyListOfExtensionsAndOneOfIndefiniteLength) {
  Parts parts;
  parts.version = version_3;
  parts.extensions = hex("A3 02 30 00");
  const TbsRecord empty = tbs(parts.tbs());
  ASSERT_NE(nullptr, empty->extensions);
  EXPECT_EQ(0, List_len(empty->extensions));
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, empty.get()));

  parts.extensions = element(0xA3, hex("30 80") + extension(hex("01 01 FF")) + hex("00 00"));
  const TbsRecord indefinite = tbs(parts.tbs());
  parts.extensions = extensions;
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, indefinite.get()));
}

TEST(TbsCertificate, TrimsUniqueIdentifiersWhenItIsEncoded) {
  Parts parts = full();
  parts.issuer_unique_id = hex("81 03 00 80 00");
  parts.subject_unique_id = hex("82 02 05 FF");
  const TbsRecord record = tbs(parts.tbs());
  parts.issuer_unique_id = hex("81 02 07 80");
  parts.subject_unique_id = hex("82 02 00 FF");
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, record.get()));
}

TEST(TbsCertificate, RefusesAnEmptyName) {
  Parts parts = full();
  parts.issuer = hex("30 00");
  expect_refused(asn1_Certificate_TBS_d, parts.tbs());

  // That holds where the subject is in a subject-alternative-name extension, too (RFC 5280,
  // 4.1.2.6).
  parts = full();
  parts.subject = hex("30 00");
  parts.extensions = extensions_field(
      sequence(hex("06 03 55 1D 11 01 01 FF") + element(4, sequence(hex("82 01 61")))));
  expect_refused(asn1_Certificate_TBS_d, parts.tbs());
  expect_refused(asn1_Certificate_d, certificate(parts.tbs()));
}

TEST(TbsCertificate, TakesANameOfAnEmptyRdn) {
  Parts parts;
  parts.issuer = hex("30 02 31 00");
  const TbsRecord record = tbs(parts.tbs());
  EXPECT_STREQ("/", record->issuer);
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, record.get()));
}

// --------------------------------------------------------------- Certificate_TBS, its stored encodings

TEST(TbsCertificate, KeepsTheOctetsOfANameAsTheyCame) {
  Parts parts;
  parts.issuer = hex("30 81 0F 31 82 00 0B 30 09 06 03 55 04 06 13 02 44 45");
  parts.subject = sequence(element(0x31, sequence(common_name + hex("33 06 13 01 41 13 01 42"))));
  const TbsRecord record = tbs(parts.tbs());
  EXPECT_EQ(parts.issuer, value(record->issuerEncoded));
  EXPECT_STREQ("/c(19)=DE", record->issuer);
  EXPECT_EQ(parts.subject, value(record->subjectEncoded));
  EXPECT_STREQ("/cn(51)=AB", record->subject);
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, record.get()));
}

TEST(TbsCertificate, WritesANameFromItsOctetsElseItsSequenceElseItsText) {
  Parts parts;
  const TbsRecord record = tbs(parts.tbs());
  const struct {
    OctetString *Certificate_TBS::*encoded;
    RDNSequence *Certificate_TBS::*structure;
    Name *Certificate_TBS::*text;
    Bytes Parts::*part;
  } names[] = {
      {&Certificate_TBS::issuerEncoded, &Certificate_TBS::issuerSequence, &Certificate_TBS::issuer,
       &Parts::issuer},
      {&Certificate_TBS::subjectEncoded, &Certificate_TBS::subjectSequence,
       &Certificate_TBS::subject, &Parts::subject},
  };
  for (const auto &name_of : names) {
    Certificate_TBS *fields = record.get();
    // The three sources differ.
    asn1_RDNSequence_free(fields->*name_of.structure);
    fields->*name_of.structure = asn1_Name_to_RDNSequence("/cn(12)=sequence");
    asn1_Name_free(fields->*name_of.text);
    fields->*name_of.text = asn1_Name_clone("/cn(12)=text");
    EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, fields));

    asn1_OctetString_free(fields->*name_of.encoded);
    fields->*name_of.encoded = asn1_ASN1String_new(2, "\xDE\xAD");  // nothing checks what it holds
    parts.*name_of.part = hex("DE AD");
    EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, fields));

    asn1_OctetString_free(fields->*name_of.encoded);
    fields->*name_of.encoded = nullptr;
    parts.*name_of.part = name(common_name, 12, text("sequence"));
    EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, fields));

    asn1_RDNSequence_free(fields->*name_of.structure);
    fields->*name_of.structure = nullptr;
    parts.*name_of.part = name(common_name, 12, text("text"));
    EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, fields));

    asn1_Name_free(fields->*name_of.text);
    fields->*name_of.text = nullptr;
    expect_nothing_written(asn1_Certificate_TBS_e, fields);

    fields->*name_of.structure = List_new(0);
    parts.*name_of.part = hex("30 00");
    EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, fields));
  }
}

TEST(TbsCertificate, AStoredNameOfNoOctetsIsAFailedField) {
  for (OctetString *Certificate_TBS::*encoded :
       {&Certificate_TBS::issuerEncoded, &Certificate_TBS::subjectEncoded}) {
    const TbsRecord record = tbs(Parts().tbs());
    asn1_OctetString_free(record.get()->*encoded);
    record.get()->*encoded = asn1_OctetString_new(0);
    expect_nothing_written(asn1_Certificate_TBS_e, record.get());
  }
}

TEST(TbsCertificate, ASerialNumberInANameStopsOnlyTheText) {
  Parts parts;
  parts.subject = name(serial_number_attribute, 19, text("123"));
  const TbsRecord record = tbs(parts.tbs());
  EXPECT_STREQ("/sn(19)=123", record->subject);
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, record.get()));

  asn1_OctetString_free(record->subjectEncoded);
  record->subjectEncoded = nullptr;
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, record.get()));

  asn1_RDNSequence_free(record->subjectSequence);
  record->subjectSequence = nullptr;
  expect_nothing_written(asn1_Certificate_TBS_e, record.get());
}

TEST(TbsCertificate, CanBeBuiltFromNothing) {
  const TbsRecord record(asn1_Certificate_TBS_new());
  // The serial number fails before the encoder reaches the record that is missing after it.
  expect_nothing_written(asn1_Certificate_TBS_e, record.get());

  record->serialNumber = asn1_Integer_set(5);
  const char *oid = "1.2.840.113549.1.1.11";
  record->signature = asn1_AlgId_new();
  record->signature->algorithm = asn1_ObjId_parse(&oid);
  record->signature->parameters = asn1_Any_clone(asn1_Any_NULL());
  record->issuer = asn1_Name_clone("/C=DE");
  record->validity = asn1_Validity_new();
  record->validity->notBefore = asn1_Time_new();
  record->validity->notBefore->kind = 23;
  record->validity->notBefore->value = asn1_UTCTime_clone("260101000000Z");
  record->validity->notAfter = asn1_Time_clone(record->validity->notBefore);
  record->validity->notAfter->value[1] = '7';
  record->subject = asn1_Name_clone("/cn(12)=A");
  record->subjectPublicKeyInfo = asn1_SubjectPKI_new();
  record->subjectPublicKeyInfo->algorithm = asn1_AlgId_new();
  record->subjectPublicKeyInfo->algorithm->algorithm = asn1_ObjId_clone(asn1_Get_rsaEncryption());
  record->subjectPublicKeyInfo->algorithm->parameters = asn1_Any_clone(asn1_Any_NULL());
  record->subjectPublicKeyInfo->subjectPublicKey = asn1_BitString_new(0);
  asn1_BitString_append(record->subjectPublicKeyInfo->subjectPublicKey, 2, "\xAB\xCD");
  EXPECT_EQ(Parts().tbs(), encode(asn1_Certificate_TBS_e, record.get()));

  // The default version is written where it is set. An empty list is written, too.
  record->version = asn1_Integer_clone(asn1_Integer_0());
  record->extensions = List_new(0);
  Parts parts;
  parts.version = version_1;
  parts.extensions = hex("A3 02 30 00");
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, record.get()));
}

TEST(TbsCertificate, IsNotEncodedWhenAFieldFails) {
  const TbsRecord record = tbs(full().tbs());
  Certificate_TBS *fields = record.get();
  // Removes a field, checks the result, and puts the field back.
  const auto without = [&](auto member) {
    auto *kept = fields->*member;
    fields->*member = nullptr;
    expect_nothing_written(asn1_Certificate_TBS_e, static_cast<const Certificate_TBS *>(fields));
    fields->*member = kept;
  };
  without(&Certificate_TBS::serialNumber);

  const auto without_in = [&](auto *inner, auto member) {
    auto *kept = inner->*member;
    inner->*member = nullptr;
    expect_nothing_written(asn1_Certificate_TBS_e, static_cast<const Certificate_TBS *>(fields));
    inner->*member = kept;
  };
  without_in(fields->signature, &AlgId::algorithm);
  without_in(fields->validity, &Validity::notBefore);
  without_in(fields->validity, &Validity::notAfter);
  without_in(fields->subjectPublicKeyInfo, &SubjectPKI::subjectPublicKey);
  without_in(static_cast<Extension *>(List_get(fields->extensions, 0)), &Extension::extnValue);
}

TEST(TbsCertificate, IsNotEncodedWhenTheSumDoesNotFit32Bits) {
  const TbsRecord record = tbs(Parts().tbs());
  const uint32_t length = record->issuerEncoded->length;
  const auto others = static_cast<uint32_t>(Parts().content().size()) - length;
  // The last content fits, but not with its header.
  for (const uint32_t huge : {0xFFFFFFFFU, 0xFFFFFFF0U, 0xFFFFFFFFU - others}) {
    record->issuerEncoded->length = huge;
    expect_nothing_written(asn1_Certificate_TBS_e, record.get());
  }
  record->issuerEncoded->length = length;
}

// ------------------------------------------------------------------------ Certificate_TBS, its copies

TEST(TbsCertificate, NewIsZero) {
  const TbsRecord record(asn1_Certificate_TBS_new());
  const Certificate_TBS zero = {};
  EXPECT_EQ(0, std::memcmp(&zero, record.get(), sizeof zero));
}

TEST(TbsCertificate, FreeIgnoresNull) { asn1_Certificate_TBS_free(nullptr); }

TEST(TbsCertificate, IsClonedWithItsStoredEncodings) {
  EXPECT_EQ(nullptr, asn1_Certificate_TBS_clone(nullptr));

  const Parts parts = full();
  const TbsRecord record = tbs(parts.tbs());
  const TbsRecord copy(asn1_Certificate_TBS_clone(record.get()));
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, copy.get()));
  EXPECT_EQ(parts.issuer, value(copy->issuerEncoded));
  EXPECT_EQ(parts.subject, value(copy->subjectEncoded));
  EXPECT_STREQ("/c(19)=DE", copy->issuer);
  EXPECT_STREQ("/cn(12)=A", copy->subject);
  EXPECT_NE(record->version, copy->version);
  EXPECT_NE(record->serialNumber->data, copy->serialNumber->data);
  EXPECT_NE(record->issuer, copy->issuer);
  EXPECT_NE(record->issuerEncoded->data, copy->issuerEncoded->data);
  EXPECT_NE(record->issuerUniqueID->data, copy->issuerUniqueID->data);
  EXPECT_NE(record->extensions, copy->extensions);
}

TEST(TbsCertificate, ACloneHasNamesWithoutTags) {
  Parts parts = full();
  const TbsRecord record = tbs(parts.tbs());
  const TbsRecord copy(asn1_Certificate_TBS_clone(record.get()));
  asn1_OctetString_free(copy->issuerEncoded);
  copy->issuerEncoded = nullptr;
  asn1_OctetString_free(copy->subjectEncoded);
  copy->subjectEncoded = nullptr;
  Parts untagged = parts;
  untagged.issuer = name(country, 0, text("DE"));
  untagged.subject = name(common_name, 0, text("A"));
  EXPECT_EQ(untagged.tbs(), encode(asn1_Certificate_TBS_e, copy.get()));

  asn1_RDNSequence_free(copy->issuerSequence);
  copy->issuerSequence = nullptr;
  asn1_RDNSequence_free(copy->subjectSequence);
  copy->subjectSequence = nullptr;
  EXPECT_EQ(parts.tbs(), encode(asn1_Certificate_TBS_e, copy.get()));  // the text has them
}

TEST(TbsCertificate, IsClonedWithEachFieldAlone) {
  const TbsRecord record = tbs(full().tbs());
  const auto alone = [&](auto member) {
    Certificate_TBS half = {};
    half.*member = record.get()->*member;
    const TbsRecord copy(asn1_Certificate_TBS_clone(&half));
    ASSERT_NE(nullptr, copy);
    EXPECT_NE(nullptr, copy.get()->*member);
    EXPECT_NE(record.get()->*member, copy.get()->*member);
    Certificate_TBS rest = *copy;
    rest.*member = nullptr;
    const Certificate_TBS zero = {};
    EXPECT_EQ(0, std::memcmp(&zero, &rest, sizeof zero));
  };
  alone(&Certificate_TBS::version);
  alone(&Certificate_TBS::serialNumber);
  alone(&Certificate_TBS::signature);
  alone(&Certificate_TBS::issuerSequence);
  alone(&Certificate_TBS::issuer);
  alone(&Certificate_TBS::issuerEncoded);
  alone(&Certificate_TBS::validity);
  alone(&Certificate_TBS::subjectSequence);
  alone(&Certificate_TBS::subject);
  alone(&Certificate_TBS::subjectEncoded);
  alone(&Certificate_TBS::subjectPublicKeyInfo);
  alone(&Certificate_TBS::issuerUniqueID);
  alone(&Certificate_TBS::subjectUniqueID);
  alone(&Certificate_TBS::extensions);
}

TEST(TbsCertificate, CannotBeClonedWithATimeOfNoKind) {
  const TbsRecord record = tbs(full().tbs());
  record->validity->notAfter->kind = 0;
  EXPECT_EQ(nullptr, asn1_Certificate_TBS_clone(record.get()));
  record->validity->notAfter->kind = 23;
}

// --------------------------------------------------------------------------------------- Certificate

TEST(Certificate, HoldsEachFieldAndTheSignedOctets) {
  const Bytes octets = certificate(full().tbs());
  const CertificateRecord record = cert(octets);
  EXPECT_EQ(full().tbs(), value(record->tbsEncoded));
  EXPECT_EQ(full().tbs(), encode(asn1_Certificate_TBS_e, record->tbsCertificate));
  EXPECT_EQ(rsa_with_sha256, encode(asn1_AlgId_e, record->signatureAlgorithm));
  EXPECT_EQ(16U, record->signatureValue->length);
  EXPECT_EQ(hex("C0 00"), value(record->signatureValue));
  EXPECT_EQ(octets, encode(asn1_Certificate_e, record.get()));
}

TEST(Certificate, IsASequenceOfDefiniteLength) {
  expect_header_of_a_sequence<CertificateRecord>(asn1_Certificate_d,
                                                 Parts().tbs() + rsa_with_sha256 + signature);
}

TEST(Certificate, WithoutVersionAndExtensionsIsWrittenWithoutThem) {
  const CertificateRecord record = cert(certificate(Parts().tbs()));
  EXPECT_EQ(nullptr, record->tbsCertificate->version);
  EXPECT_EQ(nullptr, record->tbsCertificate->extensions);
  EXPECT_EQ(certificate(Parts().tbs()), encode(asn1_Certificate_e, record.get()));

  asn1_OctetString_free(record->tbsEncoded);
  record->tbsEncoded = nullptr;
  EXPECT_EQ(certificate(Parts().tbs()), encode(asn1_Certificate_e, record.get()));
}

TEST(Certificate, WithExtensionsNeedsAVersion) {
  Parts parts;
  parts.extensions = extensions;
  expect_refused(asn1_Certificate_d, certificate(parts.tbs()));
  parts.version = version_1;
  expect_refused(asn1_Certificate_d, certificate(parts.tbs()));
  parts.version = version_2;
  EXPECT_NE(nullptr, cert(certificate(parts.tbs())));
}

TEST(Certificate, IsRefusedWithoutItsFields) {
  const Bytes tbs_octets = full().tbs();
  for (const Bytes &content :
       {tbs_octets, tbs_octets + rsa_with_sha256, tbs_octets + signature,
        rsa_with_sha256 + signature, tbs_octets + rsa_with_sha256 + hex("04 01 00"),
        tbs_octets + rsa_with_sha256 + hex("03 00"),
        tbs_octets + rsa_with_sha256 + hex("03 02 08 FF"),
        tbs_octets + rsa_with_sha256 + hex("03 84 80 00 00 00"),
        tbs_octets + hex("30 00") + signature, hex("30 00") + rsa_with_sha256 + signature,
        tbs_octets + hex("05 00") + rsa_with_sha256 + signature}) {
    expect_refused(asn1_Certificate_d, sequence(content));
  }
  // The signature must be inside the SEQUENCE.
  expect_refused(asn1_Certificate_d, sequence(tbs_octets + rsa_with_sha256) + signature);
}

TEST(Certificate, IsRefusedAtEveryCut) {
  expect_every_cut_refused(asn1_Certificate_d, full().tbs() + rsa_with_sha256 + signature);
}

TEST(Certificate, TakesWhatTheSignedPartLeavesForItsOwn) {
  // The algorithm and the signature lie inside the TBSCertificate, after its last field.
  const Bytes inner = sequence(Parts().content() + rsa_with_sha256 + signature);
  const CertificateRecord record = cert(sequence(inner));
  const Bytes stored(inner.begin(),
                     inner.end() - static_cast<long>(rsa_with_sha256.size() + signature.size()));
  EXPECT_EQ(stored, value(record->tbsEncoded));
  EXPECT_EQ(sequence(inner), encode(asn1_Certificate_e, record.get()));
}

TEST(Certificate, KeepsTheSignedOctetsAsTheyCameAndNormalisesTheRest) {
  const Bytes signed_part = hex("30 83 00 00") +
                            Bytes{static_cast<uint8_t>(Parts().content().size())} +
                            Parts().content();
  const Bytes content = signed_part + hex("30 81 0D") +
                        Bytes(rsa_with_sha256.begin() + 2, rsa_with_sha256.end()) +
                        hex("23 08 03 02 00 C0 03 02 00 01");
  const CertificateRecord record =
      cert(hex("30 82 00") + Bytes{static_cast<uint8_t>(content.size())} + content);
  EXPECT_EQ(signed_part, value(record->tbsEncoded));
  EXPECT_EQ(sequence(signed_part + rsa_with_sha256 + hex("03 03 00 C0 01")),
            encode(asn1_Certificate_e, record.get()));
}

TEST(Certificate, WritesTheSignatureAsItStands) {
  for (const char *bits :
       {"03 01 00", "03 02 00 00", "03 03 00 80 00", "03 02 05 FF", "03 03 07 80 00"}) {
    const Bytes octets = sequence(Parts().tbs() + rsa_with_sha256 + hex(bits));
    EXPECT_EQ(octets, encode(asn1_Certificate_e, cert(octets).get())) << bits;
  }
}

TEST(Certificate, WritesTheStoredOctetsWhateverTheFieldsSay) {
  const CertificateRecord record = cert(certificate(full().tbs()));
  asn1_Integer_free(record->tbsCertificate->serialNumber);
  record->tbsCertificate->serialNumber = asn1_Integer_set(9);
  EXPECT_EQ(certificate(full().tbs()), encode(asn1_Certificate_e, record.get()));

  // Once the stored octets are released and cleared, the fields are written.
  asn1_OctetString_free(record->tbsEncoded);
  record->tbsEncoded = nullptr;
  Parts changed = full();
  changed.serial = hex("02 01 09");
  EXPECT_EQ(certificate(changed.tbs()), encode(asn1_Certificate_e, record.get()));

  // A name has stored octets of its own.
  Certificate_TBS *fields = record->tbsCertificate;
  asn1_RDNSequence_free(fields->subjectSequence);
  fields->subjectSequence = asn1_Name_to_RDNSequence("/cn(12)=B");
  EXPECT_EQ(certificate(changed.tbs()), encode(asn1_Certificate_e, record.get()));
  asn1_OctetString_free(fields->subjectEncoded);
  fields->subjectEncoded = nullptr;
  changed.subject = name(common_name, 12, text("B"));
  EXPECT_EQ(certificate(changed.tbs()), encode(asn1_Certificate_e, record.get()));
}

TEST(Certificate, NothingChecksTheStoredOctets) {
  const CertificateRecord record = cert(certificate(full().tbs()));
  asn1_OctetString_free(record->tbsEncoded);
  record->tbsEncoded = asn1_ASN1String_new(3, "\xDE\xAD\x00");
  EXPECT_EQ(sequence(hex("DE AD 00") + rsa_with_sha256 + signature),
            encode(asn1_Certificate_e, record.get()));
}

TEST(Certificate, StoredOctetsAreEnoughWithoutTheFields) {
  const CertificateRecord record = cert(certificate(full().tbs()));
  asn1_Certificate_TBS_free(record->tbsCertificate);
  record->tbsCertificate = nullptr;
  EXPECT_EQ(certificate(full().tbs()), encode(asn1_Certificate_e, record.get()));
}

TEST(Certificate, AStoredPartOfNoOctetsIsAFailedField) {
  const CertificateRecord record = cert(certificate(full().tbs()));
  asn1_OctetString_free(record->tbsEncoded);
  record->tbsEncoded = asn1_OctetString_new(0);
  expect_nothing_written(asn1_Certificate_e, record.get());
}

TEST(Certificate, IsNotEncodedWhenAFieldFails) {
  const CertificateRecord record = cert(certificate(full().tbs()));
  BitString *kept = record->signatureValue;
  record->signatureValue = nullptr;
  expect_nothing_written(asn1_Certificate_e, record.get());
  record->signatureValue = kept;

  ObjId *algorithm = record->signatureAlgorithm->algorithm;
  record->signatureAlgorithm->algorithm = nullptr;
  expect_nothing_written(asn1_Certificate_e, record.get());
  record->signatureAlgorithm->algorithm = algorithm;

  // The signed part fails before the encoder reaches the algorithm that is missing after it.
  const CertificateRecord half(asn1_Certificate_new());
  half->tbsCertificate = asn1_Certificate_TBS_new();
  expect_nothing_written(asn1_Certificate_e, half.get());
}

TEST(Certificate, IsNotEncodedWhenTheSumDoesNotFit32Bits) {
  const CertificateRecord record = cert(certificate(full().tbs()));
  const uint32_t length = record->tbsEncoded->length;
  for (const uint32_t huge : {0xFFFFFFFFU, 0xFFFFFFF0U, 0xFFFFFFE8U}) {
    record->tbsEncoded->length = huge;
    expect_nothing_written(asn1_Certificate_e, record.get());
  }
  record->tbsEncoded->length = length;
}

TEST(Certificate, ASerialNumberInTheSubjectDoesNotDisturbIt) {
  Parts parts = full();
  parts.subject = name(serial_number_attribute, 19, text("123"));
  const Bytes octets = certificate(parts.tbs());
  const CertificateRecord record = cert(octets);
  EXPECT_EQ(octets, encode(asn1_Certificate_e, record.get()));
  asn1_OctetString_free(record->tbsEncoded);
  record->tbsEncoded = nullptr;
  EXPECT_EQ(octets, encode(asn1_Certificate_e, record.get()));
}

TEST(Certificate, IsClonedDeeply) {
  EXPECT_EQ(nullptr, asn1_Certificate_clone(nullptr));

  const Bytes octets = certificate(full().tbs());
  CertificateRecord record = cert(octets);
  const CertificateRecord copy(asn1_Certificate_clone(record.get()));
  EXPECT_NE(record->tbsEncoded->data, copy->tbsEncoded->data);
  EXPECT_NE(record->tbsCertificate, copy->tbsCertificate);
  EXPECT_NE(record->signatureAlgorithm, copy->signatureAlgorithm);
  EXPECT_NE(record->signatureValue->data, copy->signatureValue->data);
  record.reset();
  EXPECT_EQ(octets, encode(asn1_Certificate_e, copy.get()));
  EXPECT_EQ(full().tbs(), encode(asn1_Certificate_TBS_e, copy->tbsCertificate));
}

TEST(Certificate, IsClonedHalfFilled) {
  const CertificateRecord empty(asn1_Certificate_new());
  const CertificateRecord copy_of_empty(asn1_Certificate_clone(empty.get()));
  const Certificate zero = {};
  EXPECT_EQ(0, std::memcmp(&zero, copy_of_empty.get(), sizeof zero));

  const CertificateRecord half(asn1_Certificate_new());
  half->tbsCertificate = asn1_Certificate_TBS_new();
  half->signatureValue = asn1_BitString_new(3);
  const CertificateRecord copy(asn1_Certificate_clone(half.get()));
  EXPECT_EQ(nullptr, copy->tbsEncoded);
  EXPECT_NE(nullptr, copy->tbsCertificate);
  EXPECT_EQ(nullptr, copy->signatureAlgorithm);
  EXPECT_EQ(3U, copy->signatureValue->length);
}

TEST(Certificate, HoldsNoPointerIntoItsInput) {
  const Bytes octets = certificate(full().tbs());
  Certificate *place = nullptr;
  {
    const support::Input input(octets);
    ASSERT_EQ(input.end(), asn1_Certificate_d(input.z(), input.end(), 0, &place, 0));
  }
  const CertificateRecord record(place);
  EXPECT_EQ(octets, encode(asn1_Certificate_e, record.get()));
}

TEST(Certificate, FreeIgnoresNull) { asn1_Certificate_free(nullptr); }

// ------------------------------------------------------------------------- a certificate of a peer

// Made by the openssl command: a P-256 key, a name with an RDN of two assertions, three extensions.
const char *const made_by_openssl =
    "308201f63082019da003020102020a008123456789abcdef01300a06082a8648"
    "ce3d040302305d310b3009060355040613024445310f300d060355040a0c0641"
    "2f422c2043310c300a060355040b0c034c6162312f300f06035504030c08536f"
    "6d65204f6e65301c06092a864886f70d010901160f6f6e65406578616d706c65"
    "2e6f7267301e170d3236313132313139333631395a170d333631313138313933"
    "3631395a305d310b3009060355040613024445310f300d060355040a0c06412f"
    "422c2043310c300a060355040b0c034c6162312f300f06035504030c08536f6d"
    "65204f6e65301c06092a864886f70d010901160f6f6e65406578616d706c652e"
    "6f72673059301306072a8648ce3d020106082a8648ce3d03010703420004256c"
    "25de572d5e5a945e31f287d78178a23610fbb41c5a74422c9fa862c0dff25a11"
    "6577dbbb5595dd12fc56041928290b1d6144a7abc3a52b6d714f8c945ad1a345"
    "304330120603551d130101ff040830060101ff020103300e0603551d0f0101ff"
    "040403020106301d0603551d0e04160414de8c8e470de497ebb706ca1b37e96a"
    "8cc1d46390300a06082a8648ce3d040302034700304402206096ac4692330970"
    "d5c347059b03515cf6f249d19bf399274933c06b4159e87c02202667595c31f3"
    "9e8ac4fa376709f56539c5d41f2f5484ead67bcfbc469dfbf5f4";

TEST(PeerCertificate, HoldsWhatItsMakerPutIn) {
  const CertificateRecord record = cert(hex(made_by_openssl));
  const Certificate_TBS *fields = record->tbsCertificate;
  EXPECT_EQ(2U, asn1_Integer_get(fields->version));
  EXPECT_EQ(hex("81 23 45 67 89 AB CD EF 01"), value(fields->serialNumber));
  EXPECT_EQ(0U, fields->serialNumber->negative);
  EXPECT_EQ(nullptr, fields->signature->parameters);
  EXPECT_STREQ("/c(19)=DE/o(12)=A//B/, C/ou(12)=Lab/cn(12)=Some One,m(22)=one@example.org",
               fields->subject);
  EXPECT_STREQ(fields->issuer, fields->subject);
  EXPECT_EQ(0, asn1_RDNSequence_cmp(fields->issuerSequence, fields->subjectSequence));
  EXPECT_STREQ("261121193619Z", fields->validity->notBefore->value);
  EXPECT_STREQ("361118193619Z", fields->validity->notAfter->value);
  const SubjectPKI *key = fields->subjectPublicKeyInfo;
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ecPublicKey(), key->algorithm->algorithm));
  EXPECT_EQ(hex("06 08 2A 86 48 CE 3D 03 01 07"), value(key->algorithm->parameters));
  EXPECT_EQ(65U * 8, key->subjectPublicKey->length);

  ASSERT_EQ(3, List_len(fields->extensions));
  const struct {
    const ObjId *id;
    uint32_t critical;
    const char *octets;
  } extensions_in_order[] = {
      {asn1_Get_id_ce_basicConstraints(), 255, "30 06 01 01 FF 02 01 03"},
      {asn1_Get_id_ce_keyUsage(), 255, "03 02 01 06"},
      {asn1_Get_id_ce_subjectKeyIdentifier(), 0,
       "04 14 DE 8C 8E 47 0D E4 97 EB B7 06 CA 1B 37 E9 6A 8C C1 D4 63 90"},
  };
  int32_t index = 0;
  for (const auto &row : extensions_in_order) {
    const auto *found = static_cast<const Extension *>(List_get(fields->extensions, index++));
    EXPECT_EQ(0, asn1_ObjId_cmp(row.id, found->extnID));
    EXPECT_EQ(row.critical, found->critical);
    EXPECT_EQ(hex(row.octets), value(found->extnValue));
  }
}

TEST(PeerCertificate, IsWrittenBackFromItsOctetsFromItsStructureAndFromItsTexts) {
  const Bytes octets = hex(made_by_openssl);
  const CertificateRecord record = cert(octets);
  Certificate_TBS *fields = record->tbsCertificate;
  // The signed part comes after the outer header of four octets, and has 417 octets.
  EXPECT_EQ(Bytes(octets.begin() + 4, octets.begin() + 4 + 417), value(record->tbsEncoded));
  EXPECT_EQ(octets, encode(asn1_Certificate_e, record.get()));

  asn1_OctetString_free(record->tbsEncoded);
  record->tbsEncoded = nullptr;
  EXPECT_EQ(octets, encode(asn1_Certificate_e, record.get()));

  for (OctetString **encoded : {&fields->issuerEncoded, &fields->subjectEncoded}) {
    asn1_OctetString_free(*encoded);
    *encoded = nullptr;
  }
  EXPECT_EQ(octets, encode(asn1_Certificate_e, record.get()));

  for (RDNSequence **structure : {&fields->issuerSequence, &fields->subjectSequence}) {
    asn1_RDNSequence_free(*structure);
    *structure = nullptr;
  }
  EXPECT_EQ(octets, encode(asn1_Certificate_e, record.get()));
}

// --------------------------------------------------------------------------------------------- trace

/// Returns the line of a dump of up to 16 octets.
std::string dump(std::string octets, const char *characters) {
  octets.resize(16 * 3, ' ');
  return "  0x00000000 " + octets + characters;
}

TEST(CertificateTrace, ShowsEveryField) {
  const Lines expected = {
      "SEQUENCE {",
      ". SEQUENCE {",
      ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . INTEGER",
      ". .  2",
      ". . INTEGER",
      ". .  5",
      ". . SEQUENCE {",
      ". . . OBJECT IDENTIFIER ",
      ". . .   1.2.840.113549.1.1.11",
      ". . . [ANY]",
      ". . . " + dump("05 00 ", ".."),
      ". . }",
      ". . SEQUENCE {",
      ". . . SET {",
      ". . . . SEQUENCE {",
      ". . . . . OBJECT IDENTIFIER ",
      ". . . . .   2.5.4.6",
      ". . . . . PRINTABLESTRING ",
      ". . . . . " + dump("44 45 ", "DE"),
      ". . . . }",
      ". . . }",
      ". . }",
      ". . SEQUENCE {",
      ". . . UTCTIME ",
      ". . .   \"260101000000Z\"",
      ". . . UTCTIME ",
      ". . .   \"270101000000Z\"",
      ". . }",
      ". . SEQUENCE {",
      ". . . SET {",
      ". . . . SEQUENCE {",
      ". . . . . OBJECT IDENTIFIER ",
      ". . . . .   2.5.4.3",
      ". . . . . UTF8STRING",
      ". . . . . " + dump("41 ", "A"),
      ". . . . }",
      ". . . }",
      ". . }",
      ". . SEQUENCE {",
      ". . . SEQUENCE {",
      ". . . . OBJECT IDENTIFIER ",
      ". . . .   1.2.840.113549.1.1.1",
      ". . . . [ANY]",
      ". . . . " + dump("05 00 ", ".."),
      ". . . }",
      ". . . BITSTRING",
      ". . .   (0 unused bits)",
      ". . . " + dump("AB CD ", ".."),
      ". . }",
      ". . CONTEXT-SPECIFIC PRIMITIVE [1] BITSTRING",
      ". .   (5 unused bits)",
      ". . " + dump("A0 ", "."),
      ". . CONTEXT-SPECIFIC PRIMITIVE [2] BITSTRING",
      ". .   (0 unused bits)",
      ". . " + dump("AB CD ", ".."),
      ". . CONTEXT-SPECIFIC CONSTRUCTED [3] {",
      ". . SEQUENCE {",
      ". . . SEQUENCE {",
      ". . . . OBJECT IDENTIFIER ",
      ". . . .   2.5.29.15",
      ". . . . BOOLEAN ",
      ". . . .   TRUE (ff)",
      ". . . . OCTETSTRING",
      ". . . . " + dump("AB CD ", ".."),
      ". . . }",
      ". . }",
      ". }",
      ". SEQUENCE {",
      ". . OBJECT IDENTIFIER ",
      ". .   1.2.840.113549.1.1.11",
      ". . [ANY]",
      ". . " + dump("05 00 ", ".."),
      ". }",
      ". BITSTRING",
      ".   (0 unused bits)",
      ". " + dump("C0 00 ", ".."),
      "}",
  };
  EXPECT_EQ(expected, trace_lines([&] {
              CertificateRecord(decode(asn1_Certificate_d, certificate(full().tbs()), 0, 1).record);
            }));
}

TEST(CertificateTrace, IsSilentAtDepthZero) {
  EXPECT_EQ(Lines{}, trace_lines([&] {
              CertificateRecord(decode(asn1_Certificate_d, certificate(full().tbs())).record);
            }));
}

TEST(CertificateTrace, HasNoClosingLineOfWhatFailed) {
  const Lines all =
      trace_lines([] { TbsRecord(decode(asn1_Certificate_TBS_d, full().tbs(), 0, 1).record); });
  ASSERT_EQ("}", all.back());

  // The version test fails at the first optional field, before its header.
  Parts parts = full();
  parts.version = {};
  const Lines failed = trace_lines([&] { decode(asn1_Certificate_TBS_d, parts.tbs(), 0, 1); });
  ASSERT_LT(3U, failed.size());
  EXPECT_EQ(". }", failed.back());
  EXPECT_EQ(". INTEGER", failed[1]);
  EXPECT_EQ(0,
            std::count(failed.begin(), failed.end(), ". CONTEXT-SPECIFIC PRIMITIVE [1] BITSTRING"));
}

TEST(CertificateTrace, TellsOfAnOuterLengthBehindTheEnd) {
  Bytes octets = certificate(full().tbs());
  octets.pop_back();
  const Lines expected = {"SEQUENCE {", "z larger than end!"};
  EXPECT_EQ(expected, trace_lines([&] { decode(asn1_Certificate_d, octets, 0, 1); }));
}

TEST(CertificateTrace, ShowsThePlaceOfAnInnerLengthBehindItsEnd) {
  // The value of the extension extends past the extension, though not past the input.
  const Bytes bad = sequence(key_usage + hex("04 03 AB CD"));
  const Lines expected = {"SEQUENCE {",      ". SEQUENCE {",    ". . OBJECT IDENTIFIER ",
                          ". .   2.5.29.15", ". . OCTETSTRING", ". . z larger than end!"};
  EXPECT_EQ(expected,
            trace_lines([&] { decode(asn1_Extensions_d, sequence(bad + extension({})), 0, 1); }));
}

// ------------------------------------------------------------------------------ ends of the process

TEST(CertificateDeathTest, ANameWithATagOfThreeDigitsEndsTheProcess) {
  Parts parts = full();
  parts.issuer = name(country, 0xC0, text("DE"));
  EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decode(asn1_Certificate_TBS_d, parts.tbs()));
  EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decode(asn1_Certificate_d, certificate(parts.tbs())));
  parts = full();
  parts.subject = name(country, 0x80, text("DE"));
  EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decode(asn1_Certificate_d, certificate(parts.tbs())));
}

TEST(CertificateDeathTest, DecodersAssertTheirCursors) {
  const uint8_t octets[] = {0x30, 0x00};
  const uint8_t *end = octets + 2;
  const auto expect_asserts = [&]<class T>(Decoder<T> element_d) {
    T *place = nullptr;
    EXPECT_ASSERT(element_d(nullptr, end, 0, &place, 0), "asn1_Tag_d", "z != NULL");
    EXPECT_ASSERT(element_d(octets, nullptr, 0, &place, 0), "asn1_Tag_d", "end != NULL");
  };
  expect_asserts(&asn1_Validity_d);
  expect_asserts(&asn1_SubjectPKI_d);
  expect_asserts(&asn1_Extension_d);
  expect_asserts(&asn1_Certificate_TBS_d);
  expect_asserts(&asn1_Certificate_d);
  EXPECT_ASSERT(asn1_Extensions_d(octets, end, 0, nullptr, 0), "asn1_List_d", "ppList != NULL");
}

TEST(CertificateDeathTest, EncodersEndTheProcessWithoutARecord) {
  EXPECT_EXIT(asn1_Validity_e(nullptr, nullptr), testing::KilledBySignal(SIGABRT), any_line);
  EXPECT_EXIT(asn1_SubjectPKI_e(nullptr, nullptr), testing::KilledBySignal(SIGABRT), any_line);
  EXPECT_EXIT(asn1_Extension_e(nullptr, nullptr), testing::KilledBySignal(SIGABRT), any_line);
  EXPECT_EXIT(asn1_Certificate_TBS_e(nullptr, nullptr), testing::KilledBySignal(SIGABRT), any_line);
  EXPECT_EXIT(asn1_Certificate_e(nullptr, nullptr), testing::KilledBySignal(SIGABRT), any_line);

  // A required record field is NULL.
  const CertificateRecord empty(asn1_Certificate_new());
  EXPECT_EXIT(asn1_Certificate_e(nullptr, empty.get()), testing::KilledBySignal(SIGABRT), any_line);
  const KeyRecord key(asn1_SubjectPKI_new());
  EXPECT_EXIT(asn1_SubjectPKI_e(nullptr, key.get()), testing::KilledBySignal(SIGABRT), any_line);
}

// --------------------------------------------------------------------------------- exhausted memory

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(CertificateMemory, EachFailingAllocationFailsTheDecoder) {
  const support::Input input(certificate(full().tbs()));
  const long allocations = support::expect_failure_at_each_allocation([&] {
    Certificate *place = nullptr;
    const bool succeeded = asn1_Certificate_d(input.z(), input.end(), 0, &place, 0) != nullptr;
    EXPECT_EQ(succeeded, place != nullptr);
    asn1_Certificate_free(place);
    return succeeded;
  });
  EXPECT_LT(0, allocations);
}

TEST(CertificateMemory, EachFailingAllocationFailsTheClone) {
  const CertificateRecord record = cert(certificate(full().tbs()));
  const long allocations = support::expect_failure_at_each_allocation([&] {
    Certificate *copy = asn1_Certificate_clone(record.get());
    const bool succeeded = copy != nullptr;
    asn1_Certificate_free(copy);
    return succeeded;
  });
  EXPECT_LT(0, allocations);
}

#endif

}  // namespace

}  // namespace certificate_test
