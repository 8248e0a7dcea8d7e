// Tests OCSP requests and the records in them.
#include "records.h"

namespace ocsp_request_test {

namespace {

using namespace support;

constexpr RecordFamily<CertID> cert_ids = {asn1_CertID_new, asn1_CertID_free, asn1_CertID_e,
                                           asn1_CertID_d, asn1_CertID_clone};
constexpr RecordFamily<Request> requests = {asn1_Request_new, asn1_Request_free, asn1_Request_e,
                                            asn1_Request_d, asn1_Request_clone};
constexpr RecordFamily<TBSRequest> tbs_requests = {asn1_TBSRequest_new, asn1_TBSRequest_free,
                                                   asn1_TBSRequest_e, asn1_TBSRequest_d,
                                                   asn1_TBSRequest_clone};
constexpr RecordFamily<OCSPSignature> signatures = {asn1_OCSPSignature_new, asn1_OCSPSignature_free,
                                                    asn1_OCSPSignature_e, asn1_OCSPSignature_d,
                                                    asn1_OCSPSignature_clone};
constexpr RecordFamily<OCSPRequest> ocsp_requests = {asn1_OCSPRequest_new, asn1_OCSPRequest_free,
                                                     asn1_OCSPRequest_e, asn1_OCSPRequest_d,
                                                     asn1_OCSPRequest_clone};

const Bytes sha1 = hex("30 09 06 05 2B 0E 03 02 1A 05 00");
const Bytes sha1_without_parameters = hex("30 07 06 05 2B 0E 03 02 1A");
const Bytes name_hash = hex("04 02 A1 A2");
const Bytes key_hash = hex("04 02 B1 B2");
const Bytes five = hex("02 01 05");
const Bytes cert_id_content = sha1 + name_hash + key_hash + five;
const Bytes cert_id = sequence(cert_id_content);
const Bytes request = sequence(cert_id);

const Bytes nonce = hex("30 0F 06 09 2B 06 01 05 05 07 30 01 02 04 02 AB CD");
const Bytes version_1 = hex("A0 03 02 01 00");
const Bytes dns_requestor = hex("A1 03 82 01 61");
const Bytes nonce_extensions = element(0xA2, sequence(nonce));

const Bytes ecdsa = hex("30 0A 06 08 2A 86 48 CE 3D 04 03 02");
const Bytes signature_content = ecdsa + hex("03 03 00 AB CD");
const Bytes signature = element(0xA0, sequence(signature_content));

/// A tbsRequest with all fields, and a request with both of its fields.
const Bytes tbs_content = version_1 + dns_requestor + sequence(request) + nonce_extensions;
const Bytes full_content = sequence(tbs_content) + signature;

// A certificate that is just large enough to be one.
const Bytes ed25519 = hex("30 05 06 03 2B 65 70");
const Bytes common_name = hex("30 0C 31 0A 30 08 06 03 55 04 03 0C 01 61");
const Bytes certificate = sequence(
    sequence(five + ed25519 + common_name +
             sequence(element(0x17, text("260101000000Z")) + element(0x17, text("270101000000Z"))) +
             common_name + sequence(ed25519 + hex("03 03 00 AB CD"))) +
    ed25519 + hex("03 03 00 AB CD"));

// -------------------------------------------------------------------------------------------- CertID

TEST(CertId, HoldsTheHashesAndTheSerialNumber) {
  const auto id = decoded(cert_ids, cert_id);
  EXPECT_EQ(sha1, encode(asn1_AlgId_e, id->hashAlgorithm));
  EXPECT_EQ(hex("A1 A2"), value(id->issuerNameHash));
  EXPECT_EQ(hex("B1 B2"), value(id->issuerKeyHash));
  EXPECT_EQ(hex("05"), value(id->serialNumber));
  EXPECT_EQ(cert_id, encoded(cert_ids, id));
}

TEST(CertId, IsASequenceOfFourRequiredFields) {
  expect_new_record_is_zero(cert_ids);
  expect_sequence_of_definite_length(cert_ids, cert_id_content);
  expect_every_cut_refused(cert_ids, cert_id_content);
  expect_huge_lengths_refused(cert_ids, cert_id_content);
  for (const Bytes &content :
       {name_hash + key_hash + five, sha1 + key_hash + five, sha1 + name_hash + key_hash,
        sha1 + name_hash + five + key_hash, sha1 + name_hash + key_hash + hex("02 00")}) {
    expect_refused(cert_ids, sequence(content));
  }
}

TEST(CertId, JoinsHashesInSegments) {
  const auto id = decoded(cert_ids, sequence(sha1 + hex("24 06 04 01 A1 04 01 A2") +
                                             hex("24 80 04 01 B1 04 01 B2 00 00") + five));
  EXPECT_EQ(cert_id, encoded(cert_ids, id));
}

TEST(CertId, IsNotEncodedWithoutAHashOrASerialNumber) {
  for (OctetString *CertID::*hash : {&CertID::issuerNameHash, &CertID::issuerKeyHash}) {
    const auto id = decoded(cert_ids, cert_id);
    clear((*id).*hash, asn1_OctetString_free);
    expect_nothing_written(cert_ids, id.get());
  }
  const auto id = decoded(cert_ids, cert_id);
  clear(id->serialNumber, asn1_Integer_free);
  expect_nothing_written(cert_ids, id.get());
}

TEST(CertId, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(cert_ids, cert_id);

  const auto half = created(cert_ids);
  half->issuerKeyHash = asn1_OctetString_new(3);
  const auto copy = cloned(cert_ids, half);
  EXPECT_EQ(nullptr, copy->hashAlgorithm);
  EXPECT_EQ(nullptr, copy->issuerNameHash);
  EXPECT_EQ(hex("00 00 00"), value(copy->issuerKeyHash));
  EXPECT_EQ(nullptr, copy->serialNumber);
}

/// Compares in both orders, which must have the same result.
int32_t compared(const Bytes &a, const Bytes &b) {
  const auto first = decoded(cert_ids, a);
  const auto second = decoded(cert_ids, b);
  const int32_t result = asn1_CertID_cmp(first.get(), second.get());
  EXPECT_EQ(result, asn1_CertID_cmp(second.get(), first.get()));
  return result;
}

TEST(CertIdComparison, IsZeroForEqualRecords) { EXPECT_EQ(0, compared(cert_id, cert_id)); }

TEST(CertIdComparison, LeavesTheIssuerNameHashOut) {
  EXPECT_EQ(0, compared(cert_id, sequence(sha1 + hex("04 02 A1 A3") + key_hash + five)));
  EXPECT_EQ(0, compared(cert_id, sequence(sha1 + hex("04 00") + key_hash + five)));
}

TEST(CertIdComparison, LeavesTheParametersOfTheAlgorithmOut) {
  EXPECT_EQ(0, compared(cert_id, sequence(sha1_without_parameters + name_hash + key_hash + five)));
}

TEST(CertIdComparison, IsExactlyOneForAnyDifferenceThatCounts) {
  for (const Bytes &other : {
           ed25519 + name_hash + key_hash + five, sha1 + name_hash + hex("04 02 B1 B3") + five,
           sha1 + name_hash + hex("04 02 01 B2") + five, sha1 + name_hash + hex("04 01 B1") + five,
           sha1 + name_hash + key_hash + hex("02 01 06"),
           sha1 + name_hash + key_hash + hex("02 01 7F"),
           sha1 + name_hash + key_hash + hex("02 01 85"),        // negative
           sha1 + name_hash + key_hash + hex("02 02 01 05"),     //
           sha1 + name_hash + key_hash + hex("02 03 00 00 05"),  // one leading zero is kept
       }) {
    EXPECT_EQ(1, compared(cert_id, sequence(other)));
  }
}

TEST(CertIdComparison, FindsADifferenceWhereSomethingIsMissing) {
  const auto id = decoded(cert_ids, cert_id);
  const auto empty = created(cert_ids);
  const auto without_serial = decoded(cert_ids, cert_id);
  clear(without_serial->serialNumber, asn1_Integer_free);
  for (const CertID *other :
       {static_cast<const CertID *>(nullptr), static_cast<const CertID *>(empty.get()),
        static_cast<const CertID *>(without_serial.get())}) {
    EXPECT_EQ(1, asn1_CertID_cmp(id.get(), other));
    EXPECT_EQ(1, asn1_CertID_cmp(other, id.get()));
  }
}

TEST(CertIdDeathTest, ComparisonAssertsTheAlgorithms) {
  const auto id = decoded(cert_ids, cert_id);
  const auto without = decoded(cert_ids, cert_id);
  clear(without->hashAlgorithm->algorithm, asn1_ObjId_free);
  EXPECT_ASSERT(asn1_CertID_cmp(without.get(), id.get()), "asn1_ObjId_cmp", "oid1 != NULL");
  EXPECT_ASSERT(asn1_CertID_cmp(id.get(), without.get()), "asn1_ObjId_cmp", "oid2 != NULL");
}

// ------------------------------------------------------------------------------------------- Request

TEST(SingleRequest, IsACertIDAlone) {
  const auto record = decoded(requests, request);
  EXPECT_EQ(cert_id, encode(asn1_CertID_e, record->reqCert));
  EXPECT_EQ(nullptr, record->singleRequestExtensions);
  EXPECT_EQ(request, encoded(requests, record));

  expect_new_record_is_zero(requests);
  expect_sequence_of_definite_length(requests, cert_id);
  expect_every_cut_refused(requests, cert_id);
  expect_huge_lengths_refused(requests, cert_id);
}

TEST(SingleRequest, WritesItsExtensionsUnderTheOctet20) {
  const auto record = decoded(requests, request);
  record->singleRequestExtensions = List_new(0);
  EXPECT_EQ(sequence(cert_id + hex("20 02 30 00")), encoded(requests, record));

  asn1_Extensions_free(record->singleRequestExtensions);
  record->singleRequestExtensions = decode(asn1_Extensions_d, sequence(nonce)).record;
  EXPECT_EQ(sequence(cert_id + element(0x20, sequence(nonce))), encoded(requests, record));
}

TEST(SingleRequest, FailsWithExtensionsInThePublicForm) {
  for (const Bytes &extensions : {element(0xA0, sequence(nonce)), hex("A0 02 30 00"), hex("A0 00"),
                                  element(0xA0, element(0x20, sequence(nonce))), hex("A0")}) {
    const Bytes refused = sequence(cert_id + extensions);
    expect_refused(requests, refused);
    expect_refused(tbs_requests, sequence(sequence(refused)));
    expect_refused(ocsp_requests, sequence(sequence(sequence(refused))));
  }
}

TEST(SingleRequest, LeavesExtensionsUnreadInTheFormThatItWrites) {
  const Bytes extensions = element(0x20, sequence(nonce));
  const Bytes written = sequence(cert_id + extensions);
  const auto record = decoded(requests, written, extensions.size());
  EXPECT_EQ(nullptr, record->singleRequestExtensions);
  // The list continues at what was left, and fails.
  expect_refused(tbs_requests, sequence(sequence(written)));
  expect_refused(tbs_requests, sequence(sequence(written + request)));
  expect_refused(ocsp_requests, sequence(sequence(sequence(written))));
}

TEST(SingleRequest, LeavesUnreadWhatIsNoExtensionField) {
  for (const Bytes &rest : {hex("80 02 30 00"), hex("A1 02 30 00"), hex("30 00"), hex("00")}) {
    const auto record = decoded(requests, sequence(cert_id + rest), rest.size());
    EXPECT_EQ(nullptr, record->singleRequestExtensions);
  }
  // A field past the SEQUENCE does not belong to it.
  decoded(requests, request + hex("A0 02 30 00"), 4);
}

TEST(SingleRequest, IsNotEncodedWhenAFieldFails) {
  const auto record = decoded(requests, request);
  record->singleRequestExtensions = list_of({asn1_Extension_new()});
  expect_nothing_written(requests, record.get());
  clear(record->singleRequestExtensions, asn1_Extensions_free);
  clear(record->reqCert->serialNumber, asn1_Integer_free);
  expect_nothing_written(requests, record.get());
}

TEST(SingleRequest, IsClonedDeeplyWithItsExtensions) {
  expect_deep_clone(requests, request);

  const auto record = created(requests);
  record->singleRequestExtensions = decode(asn1_Extensions_d, sequence(nonce)).record;
  const auto copy = cloned(requests, record);
  EXPECT_EQ(nullptr, copy->reqCert);
  EXPECT_NE(record->singleRequestExtensions, copy->singleRequestExtensions);
  EXPECT_EQ(sequence(nonce), encode(asn1_Extensions_e, copy->singleRequestExtensions));
}

// ---------------------------------------------------------------------------------------- TBSRequest

TEST(TbsRequest, TakesAndWritesEachCombinationOfOptionalFields) {
  for (unsigned present = 0; present < 8; ++present) {
    const bool version = (present & 1) != 0, name = (present & 2) != 0, ext = (present & 4) != 0;
    const Bytes octets =
        sequence((version ? version_1 : Bytes()) + (name ? dns_requestor : Bytes()) +
                 sequence(request) + (ext ? nonce_extensions : Bytes()));
    const auto record = decoded(tbs_requests, octets);
    EXPECT_EQ(version, record->version != nullptr);
    EXPECT_EQ(name, record->requestorName != nullptr);
    EXPECT_EQ(1, List_len(record->requestList));
    EXPECT_EQ(ext, record->requestExtensions != nullptr);
    EXPECT_EQ(octets, encoded(tbs_requests, record));
  }
}

TEST(TbsRequest, HoldsWhatEachFieldSays) {
  const auto record = decoded(tbs_requests, sequence(tbs_content));
  EXPECT_EQ(0U, asn1_Integer_get(record->version));
  EXPECT_EQ(2, record->requestorName->kind);
  EXPECT_EQ(text("a"), value(static_cast<IA5String *>(record->requestorName->value)));
  const auto *single = static_cast<Request *>(List_get(record->requestList, 0));
  EXPECT_EQ(cert_id, encode(asn1_CertID_e, single->reqCert));
  ASSERT_EQ(1, List_len(record->requestExtensions));
  const auto *extension = static_cast<Extension *>(List_get(record->requestExtensions, 0));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_pkix_ocsp_nonce(), extension->extnID));
  EXPECT_EQ(hex("AB CD"), value(extension->extnValue));
}

TEST(TbsRequest, WithOneRequestAndNothingElseIsWrittenAsItCame) {
  const Bytes octets = sequence(sequence(request));
  EXPECT_EQ(octets, encoded(tbs_requests, decoded(tbs_requests, octets)));
}

TEST(TbsRequest, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(tbs_requests);
  expect_sequence_of_definite_length(tbs_requests, tbs_content);
  expect_every_cut_refused(tbs_requests, tbs_content,
                           {tbs_content.size() - nonce_extensions.size()});
  expect_huge_lengths_refused(tbs_requests, tbs_content);
}

TEST(TbsRequest, WritesAVersionThatEqualsTheDefault) {
  const auto record = decoded(tbs_requests, sequence(sequence(request)));
  record->version = asn1_Integer_set(0);
  EXPECT_EQ(sequence(hex("A0 03 02 01 00") + sequence(request)), encoded(tbs_requests, record));
}

TEST(TbsRequest, WithoutAListIsWrittenWithAnEmptyOne) {
  const auto record = created(tbs_requests);
  EXPECT_EQ(hex("30 02 30 00"), encoded(tbs_requests, record));
  record->version = asn1_Integer_set(0);
  EXPECT_EQ(sequence(version_1 + hex("30 00")), encoded(tbs_requests, record));
}

TEST(TbsRequest, TakesAnyVersion) {
  for (const char *version : {"A0 03 02 01 01", "A0 03 02 01 FF", "A0 06 02 04 12 34 56 78"}) {
    const Bytes octets = sequence(hex(version) + sequence(request));
    EXPECT_EQ(octets, encoded(tbs_requests, decoded(tbs_requests, octets))) << version;
  }
}

TEST(TbsRequest, KeepsTheOrderOfItsRequestsAndMayHaveNone) {
  const Bytes other = sequence(sequence(ed25519 + name_hash + key_hash + hex("02 01 06")));
  for (const Bytes &list : {Bytes(), other + request, request + other + request}) {
    const Bytes octets = sequence(sequence(list));
    EXPECT_EQ(octets, encoded(tbs_requests, decoded(tbs_requests, octets)));
  }
}

TEST(TbsRequest, MayEndWithAListOfIndefiniteLength) {
  const Bytes list = hex("30 80") + request + hex("00 00");
  EXPECT_EQ(sequence(sequence(request)),
            encoded(tbs_requests, decoded(tbs_requests, sequence(list))));
  expect_refused(tbs_requests, sequence(list + nonce_extensions));
  expect_refused(tbs_requests, sequence(hex("30 80") + request));
  decoded(tbs_requests,
          sequence(sequence(request) + element(0xA2, hex("30 80") + nonce + hex("00 00"))));
  expect_refused(tbs_requests, sequence(sequence(request) + hex("A2 80 30 00 00 00")));
}

TEST(TbsRequest, IsRefusedWithABadOrMisplacedField) {
  for (const Bytes &content : {
           hex("80 03 02 01 00") + sequence(request),  // compared with A0, whole
           hex("A0 00") + sequence(request),
           hex("A0 02 05 00") + sequence(request),
           hex("A0 80 02 01 00 00 00") + sequence(request),
           dns_requestor + version_1 + sequence(request),
           hex("81 03 82 01 61") + sequence(request),
           hex("A1 00") + sequence(request),
           hex("A1 03 83 01 61") + sequence(request),  // a name of a kind that has no type
           nonce_extensions + sequence(request),
           element(0x31, request),
           sequence(cert_id),  // not a request
           sequence(request + hex("05 00")),
           sequence(request) + hex("A2 00"),
           sequence(request) + hex("A2 02 31 00"),
           sequence(request) + hex("A2 02 05 00"),
           sequence(request) + hex("A2 04 30 02 30 00"),
       }) {
    expect_refused(tbs_requests, sequence(content));
  }
}

TEST(TbsRequest, ReadsADirectoryNameInTheImplicitFormOnly) {
  const Bytes names = hex("31 0A 30 08 06 03 55 04 03 0C 01 78");
  const Bytes octets = sequence(element(0xA1, element(0xA4, names)) + sequence(request));
  const auto record = decoded(tbs_requests, octets);
  EXPECT_EQ(4, record->requestorName->kind);
  EXPECT_STREQ("/cn(12)=x", static_cast<Name *>(record->requestorName->value));
  EXPECT_EQ(octets, encoded(tbs_requests, record));
  expect_refused(tbs_requests,
                 sequence(element(0xA1, element(0xA4, sequence(names))) + sequence(request)));
}

TEST(TbsRequest, LooksForItsExtensionsUnderA2Only) {
  for (const Bytes &rest : {hex("82 02 30 00"), hex("A1 02 30 00"), hex("A3 00"), hex("30 00")}) {
    const auto record = decoded(tbs_requests, sequence(sequence(request) + rest), rest.size());
    EXPECT_EQ(nullptr, record->requestExtensions);
  }
}

TEST(TbsRequest, MayHaveAnEmptyListOfExtensions) {
  const Bytes octets = sequence(sequence(request) + hex("A2 02 30 00"));
  const auto record = decoded(tbs_requests, octets);
  ASSERT_NE(nullptr, record->requestExtensions);
  EXPECT_EQ(0, List_len(record->requestExtensions));
  EXPECT_EQ(octets, encoded(tbs_requests, record));
}

TEST(TbsRequest, LooksForNoFieldBehindItsContent) {
  // The decoder looks past the SEQUENCE for the first two fields, but reads nothing there.
  expect_refused(tbs_requests, hex("30 00"));
  expect_refused(tbs_requests, hex("30 00") + version_1 + sequence(request));
  expect_refused(tbs_requests, hex("30 00") + dns_requestor + sequence(request));
  expect_refused(tbs_requests, sequence(version_1) + dns_requestor + sequence(request));
  decoded(tbs_requests, sequence(sequence(request)) + nonce_extensions, nonce_extensions.size());
}

TEST(TbsRequest, IsNotEncodedWhenAFieldFails) {
  const auto record = decoded(tbs_requests, sequence(tbs_content));
  List_append(record->requestExtensions, asn1_Extension_new(), 0);
  expect_nothing_written(tbs_requests, record.get());
  clear(record->requestExtensions, asn1_Extensions_free);

  auto *single = static_cast<Request *>(List_get(record->requestList, 0));
  clear(single->reqCert->serialNumber, asn1_Integer_free);
  expect_nothing_written(tbs_requests, record.get());
  single->reqCert->serialNumber = asn1_Integer_set(5);

  clear(record->requestorName, asn1_GeneralName_free);
  record->requestorName = asn1_GeneralName_new();
  record->requestorName->kind = 3;
  expect_nothing_written(tbs_requests, record.get());
}

TEST(TbsRequest, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(tbs_requests, sequence(tbs_content));

  const auto half = created(tbs_requests);
  half->requestList = List_new(0);
  const auto copy = cloned(tbs_requests, half);
  EXPECT_EQ(nullptr, copy->version);
  ASSERT_NE(nullptr, copy->requestList);
  EXPECT_EQ(0, List_len(copy->requestList));
}

TEST(TbsRequest, IsNotClonedWithARequestorWhoseNameCannotBe) {
  // An other name cannot be copied.
  const auto record = decoded(
      tbs_requests, sequence(hex("A1 0A A0 08 06 02 2A 03 A0 02 05 00") + sequence(request)));
  EXPECT_EQ(nullptr, asn1_TBSRequest_clone(record.get()));
}

// ------------------------------------------------------------------------------------- OCSPSignature

TEST(OcspSignature, IsAnAlgorithmAndBits) {
  const auto record = decoded(signatures, sequence(signature_content));
  EXPECT_EQ(ecdsa, encode(asn1_AlgId_e, record->signatureAlgorithm));
  EXPECT_EQ(16U, record->signature->length);
  EXPECT_EQ(hex("AB CD"), value(record->signature));
  EXPECT_EQ(nullptr, record->certs);
  EXPECT_EQ(sequence(signature_content), encoded(signatures, record));

  expect_new_record_is_zero(signatures);
  expect_sequence_of_definite_length(signatures, signature_content);
  expect_every_cut_refused(signatures, signature_content);
  expect_huge_lengths_refused(signatures, signature_content);
}

TEST(OcspSignature, LosesZeroBitsAtItsEndWhenItIsEncoded) {
  const struct {
    const char *read;
    const char *written;
  } rows[] = {
      {"03 03 00 C0 00", "03 02 06 C0"}, {"03 02 00 10", "03 02 04 10"}, {"03 01 00", "03 01 00"}};
  for (const auto &row : rows) {
    const auto record = decoded(signatures, sequence(ecdsa + hex(row.read)));
    EXPECT_EQ(sequence(ecdsa + hex(row.written)), encoded(signatures, record)) << row.read;
  }
}

TEST(OcspSignature, FailsWithCertificatesInThePublicForm) {
  for (const Bytes &certs : {element(0xA0, sequence(certificate)), hex("A0 02 30 00"), hex("A0 00"),
                             element(0xA0, element(0x20, sequence(certificate)))}) {
    const Bytes refused = sequence(signature_content + certs);
    expect_refused(signatures, refused);
    expect_refused(ocsp_requests, sequence(sequence(tbs_content) + element(0xA0, refused)));
  }
}

TEST(OcspSignature, LeavesCertificatesUnreadUnderTheOctet20) {
  const Bytes certs = element(0x20, sequence(certificate));
  const Bytes octets = sequence(signature_content + certs);
  EXPECT_EQ(nullptr, decoded(signatures, octets, certs.size())->certs);
  // The decoder does not check whether the signature fills the tag around it.
  decoded(ocsp_requests, sequence(sequence(tbs_content) + element(0xA0, octets)), certs.size());
}

TEST(OcspSignature, LeavesUnreadWhatIsNoCertificateField) {
  for (const Bytes &rest : {hex("80 02 30 00"), hex("A1 02 30 00"), hex("30 00")}) {
    EXPECT_EQ(nullptr, decoded(signatures, sequence(signature_content + rest), rest.size())->certs);
  }
}

TEST(OcspSignature, WritesAnEmptyListOfCertificates) {
  const auto record = decoded(signatures, sequence(signature_content));
  record->certs = List_new(0);
  EXPECT_EQ(sequence(signature_content + hex("A0 02 30 00")), encoded(signatures, record));
}

TEST(OcspSignature, IsNotEncodedWithCertificates) {
  const auto record = decoded(signatures, sequence(signature_content));
  record->certs = list_of({decode(asn1_Certificate_d, certificate).record});
  expect_nothing_written(signatures, record.get());
  List_append(record->certs, asn1_Certificate_new(), 0);
  expect_nothing_written(signatures, record.get());
  clear(record->certs, [](List *list) { List_free(list, asn1_Certificate_free); });
  record->certs = list_of({asn1_Certificate_new()});
  expect_nothing_written(signatures, record.get());
}

TEST(OcspSignature, IsNotEncodedWithoutBits) {
  const auto record = decoded(signatures, sequence(signature_content));
  clear(record->signature, asn1_BitString_free);
  expect_nothing_written(signatures, record.get());
}

TEST(OcspSignature, IsClonedDeeplyWithItsCertificates) {
  expect_deep_clone(signatures, sequence(signature_content));

  const auto record = created(signatures);
  record->certs = list_of({decode(asn1_Certificate_d, certificate).record});
  const auto copy = cloned(signatures, record);
  EXPECT_EQ(nullptr, copy->signature);
  ASSERT_EQ(1, List_len(copy->certs));
  const auto *copied = static_cast<Certificate *>(List_get(copy->certs, 0));
  EXPECT_NE(List_get(record->certs, 0), copied);
  EXPECT_EQ(certificate, encode(asn1_Certificate_e, copied));
}

// --------------------------------------------------------------------------------------- OCSPRequest

TEST(OcspRequest, MayHaveASignature) {
  for (const Bytes &content : {sequence(tbs_content), full_content}) {
    const auto record = decoded(ocsp_requests, sequence(content));
    EXPECT_EQ(sequence(tbs_content), encode(asn1_TBSRequest_e, record->tbsRequest));
    EXPECT_EQ(content == full_content, record->optionalSignature != nullptr);
    EXPECT_EQ(sequence(content), encoded(ocsp_requests, record));
  }
}

TEST(OcspRequest, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(ocsp_requests);
  expect_sequence_of_definite_length(ocsp_requests, full_content);
  expect_every_cut_refused(ocsp_requests, full_content, {full_content.size() - signature.size()});
  expect_huge_lengths_refused(ocsp_requests, full_content);
}

TEST(OcspRequest, LooksForASignatureUnderA0Only) {
  for (const Bytes &rest :
       {element(0x80, sequence(signature_content)), hex("A1 00"), sequence(signature_content)}) {
    const auto record = decoded(ocsp_requests, sequence(sequence(tbs_content) + rest), rest.size());
    EXPECT_EQ(nullptr, record->optionalSignature);
  }
  decoded(ocsp_requests, sequence(sequence(tbs_content)) + signature, signature.size());
}

TEST(OcspRequest, IsRefusedWithABadSignature) {
  for (const char *bad : {"A0 00", "A0 02 30 00", "A0 02 05 00", "A0 80 30 00 00 00"}) {
    expect_refused(ocsp_requests, sequence(sequence(tbs_content) + hex(bad)));
  }
}

TEST(OcspRequest, IsNotEncodedWhenAFieldFails) {
  const auto record = decoded(ocsp_requests, sequence(full_content));
  clear(record->optionalSignature->signature, asn1_BitString_free);
  expect_nothing_written(ocsp_requests, record.get());
  clear(record->optionalSignature, asn1_OCSPSignature_free);

  auto *single = static_cast<Request *>(List_get(record->tbsRequest->requestList, 0));
  clear(single->reqCert->serialNumber, asn1_Integer_free);
  expect_nothing_written(ocsp_requests, record.get());
}

TEST(OcspRequest, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(ocsp_requests, sequence(full_content));

  const auto half = created(ocsp_requests);
  half->optionalSignature = asn1_OCSPSignature_new();
  const auto copy = cloned(ocsp_requests, half);
  EXPECT_EQ(nullptr, copy->tbsRequest);
  EXPECT_NE(nullptr, copy->optionalSignature);
}

// --------------------------------------------------------------------------------- requests of a peer

TEST(PeerOcspRequest, OfOpensslWithANonceIsWrittenBackAsItCame) {
  const Bytes octets = hex(
      "30673065303e303c303a300906052b0e03021a0500041411048cd20cb3592307d019fd0889562b62d36492041"
      "44d06455a9d6716dc64a20ec0ca7d7dc35d272d78020105a2233021301f06092b060105050730010204120410"
      "c8215a72fb738423724f1eedcf7c46c0");
  const auto record = decoded(ocsp_requests, octets);
  EXPECT_EQ(octets, encoded(ocsp_requests, record));
  EXPECT_EQ(nullptr, record->tbsRequest->version);
  ASSERT_EQ(1, List_len(record->tbsRequest->requestList));
  const CertID *id = static_cast<Request *>(List_get(record->tbsRequest->requestList, 0))->reqCert;
  EXPECT_EQ(hex("11048CD20CB3592307D019FD0889562B62D36492"), value(id->issuerNameHash));
  EXPECT_EQ(hex("4D06455A9D6716DC64A20EC0CA7D7DC35D272D78"), value(id->issuerKeyHash));
  EXPECT_EQ(5U, asn1_Integer_get(id->serialNumber));
}

TEST(PeerOcspRequest, OfOpensslWithASignerIsRefusedForItsDirectoryName) {
  expect_refused(
      ocsp_requests,
      hex("3081ae3052a110a40e300c310a300806035504030c0178303e303c303a300906052b0e03021a05000414"
          "11048cd20cb3592307d019fd0889562b62d3649204144d06455a9d6716dc64a20ec0ca7d7dc35d272d78"
          "020105a0583056300a06082a8648ce3d0403020348003045022100d2df5760b1ff4b7b6fce593d2b3bc6"
          "3c936d9c4cd0d1db8e79b6d1d4ab9a3b82022008d4447b573c9463fa6486cc9e936ec0f39374e3aa85e4"
          "3ae8bb09480e8c6313"));
}

// --------------------------------------------------------------------------------------------- trace

TEST(OcspRequestTrace, ShowsEveryField) {
  const Lines expected = {
      "SEQUENCE {",
      ". SEQUENCE {",
      ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . INTEGER",
      ". .  0",
      ". . CONTEXT-SPECIFIC CONSTRUCTED [1] {",
      ". . . CONTEXT-SPECIFIC PRIMITIVE [2] IA5STRING ",
      ". . . " + dump("61 ", "a"),
      ". . }",
      ". . SEQUENCE {",
      ". . . SEQUENCE {",
      ". . . . SEQUENCE {",
      ". . . . . SEQUENCE {",
      ". . . . . . OBJECT IDENTIFIER ",
      ". . . . . .   1.3.14.3.2.26",
      ". . . . . . [ANY]",
      ". . . . . . " + dump("05 00 ", ".."),
      ". . . . . }",
      ". . . . . OCTETSTRING",
      ". . . . . " + dump("A1 A2 ", ".."),
      ". . . . . OCTETSTRING",
      ". . . . . " + dump("B1 B2 ", ".."),
      ". . . . . INTEGER",
      ". . . . .  5",
      ". . . . }",
      ". . . }",
      ". . }",
      ". . CONTEXT-SPECIFIC CONSTRUCTED [2] {",
      ". . SEQUENCE {",
      ". . . SEQUENCE {",
      ". . . . OBJECT IDENTIFIER ",
      ". . . .   1.3.6.1.5.5.7.48.1.2",
      ". . . . OCTETSTRING",
      ". . . . " + dump("AB CD ", ".."),
      ". . . }",
      ". . }",
      ". }",
      ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". SEQUENCE {",
      ". . SEQUENCE {",
      ". . . OBJECT IDENTIFIER ",
      ". . .   1.2.840.10045.4.3.2",
      ". . }",
      ". . BITSTRING",
      ". .   (0 unused bits)",
      ". . " + dump("AB CD ", ".."),
      ". }",
      "}",
  };
  EXPECT_EQ(expected, traced(ocsp_requests, sequence(full_content)));
}

TEST(OcspRequestTrace, IsSilentAtDepthZero) {
  EXPECT_EQ(Lines{}, traced(ocsp_requests, sequence(full_content), 0));
}

TEST(OcspRequestTrace, SaysNothingOfATagThatIsRefused) {
  // The wrapper of the extensions is refused without a line, and nothing is closed.
  const Lines lines = traced(requests, sequence(cert_id + hex("A0 02 30 00")));
  Lines expected = traced(requests, request);
  ASSERT_EQ("}", expected.back());
  expected.pop_back();
  EXPECT_EQ(expected, lines);
}

TEST(OcspRequestTrace, SaysNothingOfCertificatesThatAreRefused) {
  for (const Bytes &certs : {element(0xA0, sequence(certificate)), hex("A0 02 30 00"), hex("A0"),
                             element(0xA0, element(0x20, sequence(certificate)))}) {
    EXPECT_EQ(
        (Lines{"SEQUENCE {", ". SEQUENCE {", ". . OBJECT IDENTIFIER ", ". .   1.2.840.10045.4.3.2",
               ". }", ". BITSTRING", ".   (0 unused bits)", ". " + dump("AB CD", "..")}),
        traced(signatures, sequence(signature_content + certs)));
  }
}

// ------------------------------------------------------------------------------- ends of the process

TEST(OcspRequestDeathTest, EncodersEndTheProcessWithoutARecord) {
  expect_encoder_ends_the_process(cert_ids, nullptr);
  expect_encoder_ends_the_process(requests, nullptr);
  expect_encoder_ends_the_process(tbs_requests, nullptr);
  expect_encoder_ends_the_process(signatures, nullptr);
  expect_encoder_ends_the_process(ocsp_requests, nullptr);
}

TEST(OcspRequestDeathTest, EncodersEndTheProcessWithoutARequiredRecord) {
  expect_encoder_ends_the_process(cert_ids, created(cert_ids).get());
  expect_encoder_ends_the_process(requests, created(requests).get());
  expect_encoder_ends_the_process(signatures, created(signatures).get());
  expect_encoder_ends_the_process(ocsp_requests, created(ocsp_requests).get());
}

TEST(OcspRequestDeathTest, AssertsTheValueOfTheRequestorsName) {
  const auto record = decoded(tbs_requests, sequence(sequence(request)));
  record->requestorName = asn1_GeneralName_new();
  record->requestorName->kind = 2;
  EXPECT_ASSERT(asn1_TBSRequest_e(nullptr, record.get()), "asn1_implicit_e", "pElement");
}

TEST(OcspRequestDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(cert_ids);
  expect_decoder_asserts_its_cursors(requests);
  expect_decoder_asserts_its_cursors(tbs_requests);
  expect_decoder_asserts_its_cursors(signatures);
  expect_decoder_asserts_its_cursors(ocsp_requests);
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(OcspRequestMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(cert_ids, cert_id);
  expect_exhausted_memory_to_fail(requests, request);
  expect_exhausted_memory_to_fail(tbs_requests, sequence(tbs_content));
  expect_exhausted_memory_to_fail(signatures, sequence(signature_content));
  expect_exhausted_memory_to_fail(ocsp_requests, sequence(full_content));
}

}  // namespace

}  // namespace ocsp_request_test
