// Tests attributes, and the certification requests that hold them.
#include "records.h"

namespace pkcs10_test {

namespace {

using namespace support;

constexpr RecordFamily<Attribute> attributes = {asn1_Attribute_new, asn1_Attribute_free,
                                                asn1_Attribute_e, asn1_Attribute_d,
                                                asn1_Attribute_clone};
constexpr RecordFamily<CertRequestInfo> infos = {
    asn1_CertRequestInfo_new, asn1_CertRequestInfo_free, asn1_CertRequestInfo_e,
    asn1_CertRequestInfo_d, asn1_CertRequestInfo_clone};
constexpr RecordFamily<CertificationRequest> requests = {
    asn1_CertificationRequest_new, asn1_CertificationRequest_free, asn1_CertificationRequest_e,
    asn1_CertificationRequest_d, asn1_CertificationRequest_clone};

const Bytes challenge_password = hex("06 09 2A 86 48 86 F7 0D 01 09 07");
const Bytes password_content = challenge_password + hex("31 04 0C 02 70 77");
const Bytes password = sequence(password_content);

const Bytes version_0 = hex("02 01 00");
const Bytes common_name = hex("06 03 55 04 03");
const Bytes subject = hex("30 0C 31 0A 30 08 06 03 55 04 03 0C 01 78");
const Bytes rsa = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 01 05 00");
const Bytes key = sequence(rsa + hex("03 03 00 AB CD"));
const Bytes with_password = element(0xA0, password);
const Bytes info_content = version_0 + subject + key + with_password;
const Bytes info = sequence(info_content);
const Bytes bare_info = sequence(version_0 + subject + key);

const Bytes algorithm = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00");
const Bytes signature = hex("03 03 00 C0 01");
const Bytes request_content = info + algorithm + signature;
const Bytes request = sequence(request_content);

void free_attributes(List *list) { List_free(list, asn1_Attribute_free); }

// ----------------------------------------------------------------------------------------- Attribute

TEST(AttributeRecord, IsATypeAndASetOfWholeElements) {
  const Bytes octets =
      sequence(challenge_password + element(0x31, hex("0C 02 70 77 30 03 02 01 05 05 00")));
  const auto record = decoded(attributes, octets);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_challengePassword(), record->type));
  ASSERT_EQ(3, List_len(record->values));
  EXPECT_EQ(hex("0C 02 70 77"), value(static_cast<Any *>(List_get(record->values, 0))));
  EXPECT_EQ(hex("30 03 02 01 05"), value(static_cast<Any *>(List_get(record->values, 1))));
  EXPECT_EQ(hex("05 00"), value(static_cast<Any *>(List_get(record->values, 2))));
  EXPECT_EQ(octets, encoded(attributes, record));
}

TEST(AttributeRecord, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(attributes);
  expect_sequence_of_definite_length(attributes, password_content);
  expect_every_cut_refused(attributes, password_content);
  expect_huge_lengths_refused(attributes, password_content);
  for (const char *content :
       {"31 00", "06 01 2A", "31 00 06 01 2A", "06 01 2A 30 00", "06 01 2A A1 00",
        "06 01 2A 31 02 05 01", "06 01 2A 31 01 05", "06 01 2A 31 03 30 80 00"}) {
    expect_refused(attributes, sequence(hex(content)));
  }
}

TEST(AttributeRecord, MayHaveAnEmptySet) {
  const Bytes octets = hex("30 05 06 01 2A 31 00");
  const auto record = decoded(attributes, octets);
  ASSERT_NE(nullptr, record->values);
  EXPECT_EQ(0, List_len(record->values));
  EXPECT_EQ(octets, encoded(attributes, record));
}

TEST(AttributeRecord, WithoutASetIsWrittenWithAnEmptyOne) {
  const auto record = created(attributes);
  record->type = asn1_ObjId_clone(asn1_Get_id_at());
  EXPECT_EQ(hex("30 06 06 02 55 04 31 00"), encoded(attributes, record));
}

TEST(AttributeRecord, KeepsTheOrderOfItsValues) {
  const Bytes octets = hex("30 0E 06 01 2A 31 09 02 01 05 02 01 04 02 01 05");
  EXPECT_EQ(octets, encoded(attributes, decoded(attributes, octets)));
}

TEST(AttributeRecord, MayHaveASetOfIndefiniteLength) {
  const auto record = decoded(attributes, hex("30 0A 06 01 2A 31 80 02 01 05 00 00"));
  EXPECT_EQ(hex("30 08 06 01 2A 31 03 02 01 05"), encoded(attributes, record));
  expect_refused(attributes, hex("30 0C 06 01 2A 31 80 02 01 05 00 00 05 00"));
}

TEST(AttributeRecord, IsNotEncodedWhenAFieldFails) {
  const auto record = decoded(attributes, password);
  List_append(record->values, asn1_Any_new(0), 0);  // an element cannot be empty
  expect_nothing_written(attributes, record.get());
  clear(record->type, asn1_ObjId_free);
  expect_nothing_written(attributes, record.get());
}

TEST(AttributeRecord, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(attributes, password);
  const auto half = created(attributes);
  half->values = List_new(0);
  const auto copy = cloned(attributes, half);
  EXPECT_EQ(nullptr, copy->type);
  ASSERT_NE(nullptr, copy->values);
  EXPECT_EQ(0, List_len(copy->values));
}

TEST(AttributeLookup, GivesTheFirstOfItsType) {
  auto *first = decode(asn1_Attribute_d, password).record;
  auto *second = decode(asn1_Attribute_d, password).record;
  auto *other = decode(asn1_Attribute_d, hex("30 05 06 01 2A 31 00")).record;
  const Held<List> list(list_of({other, first, second}), free_attributes);
  EXPECT_EQ(first, asn1_Attributes_getAttribute(list.get(), asn1_Get_challengePassword()));
  EXPECT_EQ(other, asn1_Attributes_getAttribute(list.get(), other->type));
  EXPECT_EQ(nullptr, asn1_Attributes_getAttribute(list.get(), asn1_Get_friendlyName()));
  EXPECT_EQ(3, List_len(list.get()));  // the lookup removes nothing
}

TEST(AttributeLookup, ComparesWholeIdentifiers) {
  auto *longer = decode(asn1_Attribute_d, hex("30 06 06 02 2A 03 31 00")).record;
  auto *shorter = decode(asn1_Attribute_d, hex("30 05 06 01 2A 31 00")).record;
  const Held<List> list(list_of({longer, shorter}), free_attributes);
  const Owned<ObjId, asn1_ObjId_free> type(asn1_ObjId_clone(shorter->type));
  EXPECT_EQ(shorter, asn1_Attributes_getAttribute(list.get(), type.get()));
}

TEST(AttributeLookup, OfAnEmptyListDoesNotLookAtTheType) {
  const Held<List> list(List_new(0), free_attributes);
  EXPECT_EQ(nullptr, asn1_Attributes_getAttribute(list.get(), asn1_Get_friendlyName()));
  EXPECT_EQ(nullptr, asn1_Attributes_getAttribute(list.get(), nullptr));
}

TEST(AttributeLookup, OfNoListFindsNothing) {
  EXPECT_EQ(nullptr, asn1_Attributes_getAttribute(nullptr, asn1_Get_friendlyName()));
  EXPECT_EQ(nullptr, asn1_Attributes_getAttribute(nullptr, nullptr));
}

TEST(AttributeLookupDeathTest, AssertsBothTypes) {
  auto *without = asn1_Attribute_new();
  const Held<List> list(list_of({without}), free_attributes);
  EXPECT_ASSERT(asn1_Attributes_getAttribute(list.get(), asn1_Get_friendlyName()), "asn1_ObjId_cmp",
                "oid1 != NULL");
  // The type of the attribute comes first.
  EXPECT_ASSERT(asn1_Attributes_getAttribute(list.get(), nullptr), "asn1_ObjId_cmp",
                "oid1 != NULL");
  without->type = asn1_ObjId_clone(asn1_Get_contentType());
  EXPECT_ASSERT(asn1_Attributes_getAttribute(list.get(), nullptr), "asn1_ObjId_cmp",
                "oid2 != NULL");
}

// ----------------------------------------------------------------------------------- CertRequestInfo

TEST(RequestInfo, HoldsTheSubjectThreeTimesAndEachOtherFieldOnce) {
  const auto record = decoded(infos, info);
  EXPECT_EQ(0U, asn1_Integer_get(record->version));
  EXPECT_EQ(subject, encode(asn1_RDNSequence_e, record->subjectSequence));
  EXPECT_STREQ("/cn(12)=x", record->subject);
  EXPECT_EQ(subject, value(record->subjectEncoded));
  EXPECT_EQ(key, encode(asn1_SubjectPKI_e, record->subjectPKInfo));
  ASSERT_EQ(1, List_len(record->attributes));
  EXPECT_EQ(password,
            encode(asn1_Attribute_e, static_cast<Attribute *>(List_get(record->attributes, 0))));
  EXPECT_EQ(info, encoded(infos, record));
}

TEST(RequestInfo, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(infos);
  expect_sequence_of_definite_length(infos, info_content);
  expect_every_cut_refused(infos, info_content, {info_content.size() - with_password.size()});
  expect_huge_lengths_refused(infos, info_content);
}

TEST(RequestInfo, KeepsAbsentAndEmptyAttributesApart) {
  const auto absent = decoded(infos, bare_info);
  EXPECT_EQ(nullptr, absent->attributes);
  EXPECT_EQ(bare_info, encoded(infos, absent));

  const Bytes octets = sequence(version_0 + subject + key + hex("A0 00"));
  const auto empty = decoded(infos, octets);
  ASSERT_NE(nullptr, empty->attributes);
  EXPECT_EQ(0, List_len(empty->attributes));
  EXPECT_EQ(octets, encoded(infos, empty));
}

TEST(RequestInfo, KeepsTheOrderOfItsAttributes) {
  const Bytes other = hex("30 05 06 01 2A 31 00");
  const Bytes octets =
      sequence(version_0 + subject + key + element(0xA0, password + other + password));
  EXPECT_EQ(octets, encoded(infos, decoded(infos, octets)));
}

TEST(RequestInfo, MayEndWithAttributesOfIndefiniteLength) {
  const Bytes open = hex("A0 80") + password + hex("00 00");
  EXPECT_EQ(info, encoded(infos, decoded(infos, sequence(version_0 + subject + key + open))));
  expect_refused(infos, sequence(version_0 + subject + key + open + hex("05 00")));
}

TEST(RequestInfo, LooksForAttributesUnderA0Only) {
  for (const Bytes &rest :
       {element(0x80, password), element(0xA1, password), element(0x31, password), hex("00")}) {
    const auto record = decoded(infos, sequence(version_0 + subject + key + rest), rest.size());
    EXPECT_EQ(nullptr, record->attributes);
  }
  decoded(infos, bare_info + with_password, with_password.size());
}

TEST(RequestInfo, TakesAnyVersion) {
  for (const char *version : {"02 01 01", "02 01 FF", "02 02 00 FF"}) {
    const Bytes octets = sequence(hex(version) + subject + key);
    EXPECT_EQ(octets, encoded(infos, decoded(infos, octets))) << version;
  }
}

TEST(RequestInfo, IsRefusedWithABadField) {
  for (const Bytes &content : {
           subject + key,
           version_0 + key,
           version_0 + subject,
           hex("02 00") + subject + key,
           version_0 + hex("31 00") + key,
           version_0 + hex("30 02 05 00") + key,
           version_0 + sequence(element(0x31, sequence(common_name))) + key,
           version_0 + subject + sequence(rsa),
           version_0 + subject + key + hex("A0"),
           version_0 + subject + key + hex("A0 01"),
           version_0 + subject + key + hex("A0 02 05 00"),
           version_0 + subject + key + hex("A0 02 30 00"),
           version_0 + subject + key + hex("A0 80 00"),
       }) {
    expect_refused(infos, sequence(content));
    expect_refused(requests, sequence(sequence(content) + algorithm + signature));
  }
}

TEST(RequestInfo, IsRefusedWithoutARelativeName) {
  expect_refused(infos, sequence(version_0 + hex("30 00") + key + with_password));
  expect_refused(requests,
                 sequence(sequence(version_0 + hex("30 00") + key) + algorithm + signature));
  // An RDN without an assertion makes a name.
  EXPECT_STREQ("/", decoded(infos, sequence(version_0 + hex("30 02 31 00") + key))->subject);
}

TEST(RequestInfo, KeepsASubjectThatIsNotInItsShortestForm) {
  const Bytes odd = hex("30 81 0E 31 81 0B 30 09 06 03 55 04 03 0C 81 01 78");
  const Bytes octets = sequence(version_0 + odd + key);
  const auto record = decoded(infos, octets);
  EXPECT_EQ(odd, value(record->subjectEncoded));
  EXPECT_EQ(octets, encoded(infos, record));
  clear(record->subjectEncoded, asn1_OctetString_free);
  EXPECT_EQ(bare_info, encoded(infos, record));
}

TEST(RequestInfo, WritesTheSubjectFromOctetsElseStructureElseText) {
  const auto record = decoded(infos, bare_info);
  const auto with_subject = [](const Bytes &octets) { return sequence(version_0 + octets + key); };

  // The three forms differ, and are not checked against each other.
  clear(record->subjectEncoded, asn1_OctetString_free);
  record->subjectEncoded = asn1_ASN1String_new(3, "\x05\x01\x02");
  clear(record->subject, asn1_Name_free);
  record->subject = asn1_Name_clone("/c(19)=DE");
  EXPECT_EQ(with_subject(hex("05 01 02")), encoded(infos, record));

  clear(record->subjectEncoded, asn1_OctetString_free);
  EXPECT_EQ(with_subject(subject), encoded(infos, record));

  clear(record->subjectSequence, asn1_RDNSequence_free);
  EXPECT_EQ(with_subject(hex("30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45")),
            encoded(infos, record));

  clear(record->subject, asn1_Name_free);
  expect_nothing_written(infos, record.get());
}

TEST(RequestInfo, WritesAStructureWithoutARelativeNameThoughThereIsAText) {
  const auto record = decoded(infos, bare_info);
  clear(record->subjectEncoded, asn1_OctetString_free);
  clear(record->subjectSequence, asn1_RDNSequence_free);
  record->subjectSequence = List_new(0);
  EXPECT_EQ(sequence(version_0 + hex("30 00") + key), encoded(infos, record));
}

TEST(RequestInfo, IsNotEncodedWhenAFieldFails) {
  const auto record = decoded(infos, info);
  List_append(record->attributes, asn1_Attribute_new(), 0);
  expect_nothing_written(infos, record.get());
  clear(record->attributes, free_attributes);

  clear(record->subjectEncoded, asn1_OctetString_free);
  record->subjectEncoded = asn1_OctetString_new(0);  // empty stored octets
  expect_nothing_written(infos, record.get());
  clear(record->subjectEncoded, asn1_OctetString_free);

  clear(record->version, asn1_Integer_free);
  expect_nothing_written(infos, record.get());
  // It fails before the key, which would end the process.
  clear(record->subjectPKInfo, asn1_SubjectPKI_free);
  expect_nothing_written(infos, record.get());
}

TEST(RequestInfo, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(infos, info);

  const auto half = created(infos);
  half->subject = asn1_Name_clone("/c(19)=DE");
  half->attributes = List_new(0);
  const auto copy = cloned(infos, half);
  EXPECT_EQ(nullptr, copy->version);
  EXPECT_EQ(nullptr, copy->subjectSequence);
  EXPECT_NE(half->subject, copy->subject);
  EXPECT_STREQ("/c(19)=DE", copy->subject);
  EXPECT_EQ(nullptr, copy->subjectEncoded);
  EXPECT_EQ(nullptr, copy->subjectPKInfo);
  EXPECT_EQ(0, List_len(copy->attributes));
}

TEST(RequestInfo, OfACloneLosesTheTagsOfTheStructureOfItsSubject) {
  const auto copy = cloned(infos, decoded(infos, bare_info));
  EXPECT_EQ(bare_info, encoded(infos, copy));
  clear(copy->subjectEncoded, asn1_OctetString_free);
  EXPECT_EQ(sequence(version_0 + hex("30 0C 31 0A 30 08 06 03 55 04 03 00 01 78") + key),
            encoded(infos, copy));
  clear(copy->subjectSequence, asn1_RDNSequence_free);
  EXPECT_EQ(bare_info, encoded(infos, copy));
}

// ------------------------------------------------------------------------------ CertificationRequest

TEST(CertRequest, KeepsTheSignedElementAsItCame) {
  const auto record = decoded(requests, request);
  EXPECT_EQ(info, value(record->tbsEncoded));
  EXPECT_STREQ("/cn(12)=x", record->certificationRequestInfo->subject);
  EXPECT_EQ(algorithm, encode(asn1_AlgId_e, record->signatureAlgorithm));
  EXPECT_EQ(16U, record->signature->length);
  EXPECT_EQ(hex("C0 01"), value(record->signature));
  EXPECT_EQ(request, encoded(requests, record));

  const Bytes long_form =
      hex("30 82 00") + Bytes{static_cast<uint8_t>(info_content.size())} + info_content;
  const Bytes octets = sequence(long_form + algorithm + signature);
  const auto odd = decoded(requests, octets);
  EXPECT_EQ(long_form, value(odd->tbsEncoded));
  EXPECT_EQ(octets, encoded(requests, odd));
}

TEST(CertRequest, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(requests);
  expect_sequence_of_definite_length(requests, request_content);
  expect_every_cut_refused(requests, request_content);
  expect_huge_lengths_refused(requests, request_content);
  for (const Bytes &content :
       {info + signature, algorithm + signature, info + algorithm, info + signature + algorithm,
        info + algorithm + hex("03 00"), info + algorithm + hex("03 02 08 AB"),
        hex("30 80") + info_content + hex("00 00") + algorithm + signature,
        element(0x31, info_content) + algorithm + signature}) {
    expect_refused(requests, sequence(content));
  }
}

TEST(CertRequest, WithoutAttributesIsWrittenWithoutThem) {
  const Bytes octets = sequence(bare_info + algorithm + signature);
  const auto record = decoded(requests, octets);
  EXPECT_EQ(nullptr, record->certificationRequestInfo->attributes);
  EXPECT_EQ(octets, encoded(requests, record));
  clear(record->tbsEncoded, asn1_OctetString_free);
  EXPECT_EQ(octets, encoded(requests, record));
}

TEST(CertRequest, WithEmptyAttributesIsWrittenWithThem) {
  const Bytes empty_info = sequence(version_0 + subject + key + hex("A0 00"));
  const Bytes octets = sequence(empty_info + algorithm + signature);
  const auto record = decoded(requests, octets);
  EXPECT_EQ(empty_info, value(record->tbsEncoded));
  EXPECT_EQ(octets, encoded(requests, record));
  clear(record->tbsEncoded, asn1_OctetString_free);
  EXPECT_EQ(octets, encoded(requests, record));
}

TEST(CertRequest, KeepsOnlyWhatWasReadOfTheSignedElement) {
  // Algorithm and signature lie inside the signed element, after its last field.
  const Bytes octets = sequence(sequence(info_content + algorithm + signature));
  const auto record = decoded(requests, octets);
  const auto rest = static_cast<std::ptrdiff_t>(algorithm.size() + signature.size());
  EXPECT_EQ(Bytes(octets.begin() + 2, octets.end() - rest), value(record->tbsEncoded));
  expect_refused(requests, sequence(sequence(info_content + hex("05 00")) + algorithm + signature));
}

TEST(CertRequest, IgnoresTheDecodedFormWhileItHasTheOctets) {
  const auto record = decoded(requests, request);
  clear(record->certificationRequestInfo->version, asn1_Integer_free);
  EXPECT_EQ(request, encoded(requests, record));
  clear(record->certificationRequestInfo, asn1_CertRequestInfo_free);
  EXPECT_EQ(request, encoded(requests, record));
}

TEST(CertRequest, WithBothStoredEncodingsClearedIsWrittenFromTheStructure) {
  const auto record = decoded(requests, request);
  clear(record->tbsEncoded, asn1_OctetString_free);
  CertRequestInfo *fields = record->certificationRequestInfo;
  clear(fields->subjectEncoded, asn1_OctetString_free);
  clear(fields->subject, asn1_Name_free);
  fields->subject = asn1_Name_clone("/c(19)=DE");
  EXPECT_EQ(request, encoded(requests, record));
}

/// Returns a signature of 2048 bits with these octets at its end and this unused-bits octet.
Bytes long_signature(uint8_t unused, size_t octets, const Bytes &end) {
  return element(0x03, Bytes{unused} + Bytes(octets - end.size(), 0xA5) + end);
}

TEST(CertRequest, LosesZeroBitsAtTheEndOfItsSignature) {
  const struct {
    Bytes read, written;
  } rows[] = {
      {long_signature(0, 256, hex("10")), long_signature(4, 256, hex("10"))},
      {long_signature(0, 256, hex("01")), long_signature(0, 256, hex("01"))},
      {long_signature(0, 256, hex("00")), long_signature(0, 255, hex("A5"))},
      {long_signature(0, 256, hex("80 00 00")), long_signature(7, 254, hex("80"))},
  };
  for (const auto &row : rows) {
    const auto record = decoded(requests, sequence(info + algorithm + row.read));
    EXPECT_EQ(sequence(info + algorithm + row.written), encoded(requests, record));
  }
}

TEST(CertRequest, IsNotEncodedWhenAFieldFails) {
  const auto record = decoded(requests, request);
  clear(record->tbsEncoded, asn1_OctetString_free);
  record->tbsEncoded = asn1_OctetString_new(0);  // empty stored octets
  expect_nothing_written(requests, record.get());
  clear(record->tbsEncoded, asn1_OctetString_free);

  clear(record->signature, asn1_BitString_free);
  expect_nothing_written(requests, record.get());
  // It fails before the algorithm, which would end the process.
  clear(record->signatureAlgorithm, asn1_AlgId_free);
  clear(record->certificationRequestInfo->version, asn1_Integer_free);
  expect_nothing_written(requests, record.get());
}

TEST(CertRequest, IsClonedWithItsStoredOctets) {
  expect_deep_clone(requests, request);

  const auto copy = cloned(requests, decoded(requests, request));
  EXPECT_EQ(info, value(copy->tbsEncoded));
  EXPECT_EQ(subject, value(copy->certificationRequestInfo->subjectEncoded));
  clear(copy->tbsEncoded, asn1_OctetString_free);
  EXPECT_EQ(request, encoded(requests, copy));

  const auto half = created(requests);
  half->tbsEncoded = asn1_OctetString_new(1);
  const auto copy_of_half = cloned(requests, half);
  EXPECT_EQ(nullptr, copy_of_half->certificationRequestInfo);
  EXPECT_EQ(hex("00"), value(copy_of_half->tbsEncoded));
}

// -------------------------------------------------------------------------------- requests of a peer

// Made by the openssl command: a P-256 key, three relative names, an extension request.
const Bytes made_by_openssl = hex(
    "3082010a3081b10201003030310b3009060355040613024445310e300c060355040a0c05412f422c433111300f06"
    "035504030c08536f6d65204f6e653059301306072a8648ce3d020106082a8648ce3d030107034200046a30218e82"
    "4319644f744832053e09d5fc698bc09f60fbea611c2b8fcf9d2fcbac562cce304fce7ebc1a87a9b52debeb610a62"
    "cb7032d08c98f9ce771f34d3cea01f301d06092a864886f70d01090e3110300e300c0603551d1104053003820161"
    "300a06082a8648ce3d0403020348003045022100d29d7b977239de63318ecdd32effcf4e3cf6126f684773db141f"
    "a97ed1d5bb3402207e8740fc908ca49fa3cd149cb0d458b86fbb8e6187bbc1e01fc3b013ac8f98a9");

TEST(PeerCertRequest, OfOpensslHoldsWhatItsMakerPutIn) {
  const auto record = decoded(requests, made_by_openssl);
  const CertRequestInfo *fields = record->certificationRequestInfo;
  EXPECT_STREQ("/c(19)=DE/o(12)=A//B/,C/cn(12)=Some One", fields->subject);
  const Attribute *wanted =
      asn1_Attributes_getAttribute(fields->attributes, asn1_Get_extensionRequest());
  ASSERT_NE(nullptr, wanted);
  ASSERT_EQ(1, List_len(wanted->values));
  EXPECT_EQ(hex("30 0E 30 0C 06 03 55 1D 11 04 05 30 03 82 01 61"),
            value(static_cast<Any *>(List_get(wanted->values, 0))));
  EXPECT_EQ(71U * 8, record->signature->length);
}

TEST(PeerCertRequest, OfOpensslIsWrittenBackAsItCame) {
  EXPECT_EQ(made_by_openssl, encoded(requests, decoded(requests, made_by_openssl)));
}

TEST(PeerCertRequest, OfOpensslIsWrittenFromStructureAndTextButForTheZeroBitOfItsKey) {
  // The key ends in CE, so that it is written with one unused bit.
  Bytes expected = made_by_openssl;
  ASSERT_EQ(hex("03 42 00 04"), Bytes(expected.begin() + 83, expected.begin() + 87));
  expected[85] = 1;

  const auto record = decoded(requests, made_by_openssl);
  CertRequestInfo *fields = record->certificationRequestInfo;
  clear(record->tbsEncoded, asn1_OctetString_free);
  EXPECT_EQ(expected, encoded(requests, record));
  clear(fields->subjectEncoded, asn1_OctetString_free);
  EXPECT_EQ(expected, encoded(requests, record));
  clear(fields->subjectSequence, asn1_RDNSequence_free);
  EXPECT_EQ(expected, encoded(requests, record));
}

// --------------------------------------------------------------------------------------------- trace

TEST(CertRequestTrace, ShowsEveryField) {
  const Lines expected = {
      "SEQUENCE {",
      ". SEQUENCE {",
      ". . INTEGER",
      ". .  0",
      ". . SEQUENCE {",
      ". . . SET {",
      ". . . . SEQUENCE {",
      ". . . . . OBJECT IDENTIFIER ",
      ". . . . .   2.5.4.3",
      ". . . . . UTF8STRING",
      ". . . . . " + dump("78 ", "x"),
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
      ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . . SEQUENCE {",
      ". . . . OBJECT IDENTIFIER ",
      ". . . .   1.2.840.113549.1.9.7",
      ". . . . SET {",
      ". . . . . [ANY]",
      ". . . . . " + dump("0C 02 70 77 ", "..pw"),
      ". . . . }",
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
      ". " + dump("C0 01 ", ".."),
      "}",
  };
  EXPECT_EQ(expected, traced(requests, request));
  EXPECT_EQ(Lines{}, traced(requests, request, 0));
}

TEST(CertRequestTrace, IsSilentAboutAnIndefiniteLength) {
  EXPECT_EQ((Lines{"SEQUENCE {"}), traced(requests, hex("30 80") + request_content + hex("00 00")));
}

// ------------------------------------------------------------------------------- ends of the process

TEST(CertRequestDeathTest, ASubjectWithATagOfThreeDigitsEndsTheProcess) {
  for (const uint8_t tag : Bytes{0x64, 0x80, 0xC0, 0xFF}) {
    const Bytes name = sequence(element(0x31, sequence(common_name + element(tag, {}))));
    const Bytes octets = sequence(version_0 + name + key);
    EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decoded(infos, octets));
    EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decoded(requests, sequence(octets + algorithm + signature)));
  }
}

TEST(CertRequest, TakesASubjectWithTheLargestTagOfTwoDigits) {
  const Bytes name = sequence(element(0x31, sequence(common_name + element(99, {}))));
  EXPECT_STREQ("/cn(99)=", decoded(infos, sequence(version_0 + name + key))->subject);
}

TEST(CertRequestDeathTest, EncodersEndTheProcessWithoutARecord) {
  expect_encoder_ends_the_process(attributes, nullptr);
  expect_encoder_ends_the_process(infos, nullptr);
  expect_encoder_ends_the_process(requests, nullptr);
}

TEST(CertRequestDeathTest, EncodersEndTheProcessWithoutARequiredRecord) {
  const auto without_key = decoded(infos, bare_info);
  clear(without_key->subjectPKInfo, asn1_SubjectPKI_free);
  expect_encoder_ends_the_process(infos, without_key.get());

  expect_encoder_ends_the_process(requests, created(requests).get());
  const auto without_algorithm = decoded(requests, request);
  clear(without_algorithm->signatureAlgorithm, asn1_AlgId_free);
  expect_encoder_ends_the_process(requests, without_algorithm.get());
}

TEST(CertRequestDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(attributes);
  expect_decoder_asserts_its_cursors(infos);
  expect_decoder_asserts_its_cursors(requests);
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(CertRequestMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(attributes, password);
  expect_exhausted_memory_to_fail(infos, info);
  expect_exhausted_memory_to_fail(requests, request);
}

}  // namespace

}  // namespace pkcs10_test
