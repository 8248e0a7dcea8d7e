// Certification requests in the form of RFC 2986. The octets are made by hand.
#include <forms.h>

namespace rfc2986_test {

namespace {

using namespace support;

const auto infos = FORM(CertRequestInfo, CertRequestInfo);
const auto requests = FORM(CertificationRequest, CertificationRequest);

const Bytes version = hex("02 01 00");
const Bytes ed25519 = sequence(hex("06 03 2B 65 70"));
const Bytes country = element(0x31, sequence(hex("06 03 55 04 06 13 02 44 45")));
const Bytes public_key = sequence(ed25519 + hex("03 03 00 AB 00"));  // ends in zero bits
const Bytes password =
    sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 07") + element(0x31, hex("0C 01 78")));
const Bytes info = sequence(version + sequence(country) + public_key + element(0xA0, password));

/// Releases the kept octets of the subject.
void forget_octets(CertRequestInfo &record) { clear(record.subjectEncoded, asn1_OctetString_free); }

TEST(RequestInfo, HasItsFieldsInTheirPlaces) {
  const auto record = expect_kept(infos, info);
  EXPECT_EQ(0U, asn1_Integer_get(record->version));
  EXPECT_STREQ("/c(19)=DE", record->subject);
  EXPECT_EQ(sequence(country), value(record->subjectEncoded));
  EXPECT_EQ(sequence(country), encode(pki_RDNSequence_e, record->subjectSequence));
  EXPECT_EQ(public_key, encode(pki_SubjectPKI_e, record->subjectPKInfo));
  ASSERT_EQ(1, List_len(record->attributes));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_challengePassword(),
                              element_of<const Attribute>(record->attributes, 0).type));
  forget_octets(*record);
  EXPECT_EQ(info, encoded(infos, record));
}

TEST(RequestInfo, MayHaveAnEmptySubject) {
  const Bytes octets = sequence(version + hex("30 00") + public_key + hex("A0 00"));
  const auto record = expect_kept(infos, octets);
  EXPECT_STREQ("", record->subject);
  EXPECT_EQ(0, List_len(record->subjectSequence));
  EXPECT_NE(nullptr, record->attributes);
  EXPECT_EQ(0, List_len(record->attributes));
  forget_octets(*record);
  EXPECT_EQ(octets, encoded(infos, record));
}

TEST(RequestInfo, MayLackItsAttributes) {
  const auto record = expect_kept(infos, sequence(version + sequence(country) + public_key));
  EXPECT_EQ(nullptr, record->attributes);
}

TEST(RequestInfo, IsRefused) {
  const Bytes start = version + sequence(country) + public_key;
  for (const Bytes &content :
       {version + sequence(country), sequence(country) + public_key, start + hex("A1 00"),
        start + password, start + element(0xA0, country), start + hex("A0 00 A0 00"),
        start + hex("80 00"), version + element(0x31, country) + public_key}) {
    expect_form_refused(infos, sequence(content));
  }
}

TEST(RequestInfo, IsWrittenFieldByField) {
  const auto record = created(infos);
  record->version = asn1_Integer_new(0);
  record->subjectSequence = List_new(0);
  expect_nothing_written(infos, record.get());
  record->subjectPKInfo = decode(pki_SubjectPKI_d, public_key).record;
  EXPECT_EQ(sequence(version + hex("30 00") + public_key), encoded(infos, record));
  record->attributes = List_new(0);
  EXPECT_EQ(sequence(version + hex("30 00") + public_key + hex("A0 00")), encoded(infos, record));
}

TEST(Request, KeepsTheSignedOctetsAndEveryBitOfItsSignature) {
  const Bytes octets = sequence(info + ed25519 + hex("03 04 00 AB CD 00"));
  const auto record = expect_kept(requests, octets);
  EXPECT_EQ(info, value(record->tbsEncoded));
  EXPECT_EQ(ed25519, encode(pki_AlgId_e, record->signatureAlgorithm));
  EXPECT_EQ(24U, record->signature->length);
  clear(record->tbsEncoded, asn1_OctetString_free);
  forget_octets(*record->certificationRequestInfo);
  EXPECT_EQ(octets, encoded(requests, record));
}

TEST(Request, KeepsSignedOctetsThatAreNoDer) {
  const Bytes long_form = hex("30 81 09") + version + hex("30 00") + hex("30 81 00");
  // The key is too short: what is kept must decode first.
  expect_form_refused(requests, sequence(long_form + ed25519 + hex("03 01 00")));

  const Bytes content = version + hex("30 81 00") + public_key;
  const Bytes signed_part = Bytes{0x30, 0x81, static_cast<uint8_t>(content.size())} + content;
  const auto record = expect_kept(requests, sequence(signed_part + ed25519 + hex("03 02 00 AB")));
  EXPECT_EQ(signed_part, value(record->tbsEncoded));
  clear(record->tbsEncoded, asn1_OctetString_free);
  forget_octets(*record->certificationRequestInfo);
  EXPECT_EQ(sequence(sequence(version + hex("30 00") + public_key) + ed25519 + hex("03 02 00 AB")),
            encoded(requests, record));
}

TEST(Request, IsRefused) {
  for (const Bytes &content :
       {info + ed25519, info + hex("03 02 00 AB"), info + ed25519 + hex("03 02 00 AB 05 00"),
        info + ed25519 + hex("03 02 08 AB"), info + ed25519 + hex("04 02 00 AB")}) {
    expect_form_refused(requests, sequence(content));
  }
}

}  // namespace

}  // namespace rfc2986_test
