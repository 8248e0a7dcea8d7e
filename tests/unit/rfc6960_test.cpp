// Tests the Online Certificate Status Protocol in the form of RFC 6960: octets by hand, read and
// written.
#include "forms.h"

namespace rfc6960_test {

namespace {

using namespace support;

constexpr auto CertID_form = FORM(CertID, CertID);
constexpr auto Request_form = FORM(Request, Request);
constexpr auto TBSRequest_form = FORM(TBSRequest, TBSRequest);
constexpr auto OCSPSignature_form = FORM(OCSPSignature, OCSPSignature);
constexpr auto OCSPRequest_form = FORM(OCSPRequest, OCSPRequest);
constexpr auto ResponseBytes_form = FORM(ResponseBytes, ResponseBytes);
constexpr auto OCSPResponse_form = FORM(OCSPResponse, OCSPResponse);
constexpr auto ResponderID_form = FORM(ResponderID, ResponderID);
constexpr auto RevokedInfo_form = FORM(RevokedInfo, pki_RevokedInfo);
constexpr auto OCSPCertStatus_form = FORM(OCSPCertStatus, OCSPCertStatus);
constexpr auto SingleResponse_form = FORM(SingleResponse, SingleResponse);
constexpr auto ResponseData_form = FORM(ResponseData, ResponseData);
constexpr auto BasicOCSPResponse_form = FORM(BasicOCSPResponse, BasicOCSPResponse);
constexpr auto CrlID_form = FORM(CrlID, pki_CrlID);
constexpr auto ServiceLocator_form = FORM(ServiceLocator, pki_ServiceLocator);
constexpr auto PreferredSignatureAlgorithm_form =
    FORM(PreferredSignatureAlgorithm, pki_PreferredSignatureAlgorithm);
constexpr auto Nonce_form = FORM_LIST(Nonce, OctetString);
constexpr auto AcceptableResponses_form = FORM_LIST(AcceptableResponses, List);
constexpr auto ArchiveCutoff_form = FORM_LIST(ArchiveCutoff, GeneralizedTime);
constexpr auto PreferredSignatureAlgorithms_form = FORM_LIST(PreferredSignatureAlgorithms, List);

const Bytes sha1 = hex("30 09 06 05 2B 0E 03 02 1A 05 00");
const Bytes ed25519 = hex("30 05 06 03 2B 65 70");
const Bytes in_2026 = element(0x18, text("20260131120000Z"));
const Bytes in_2027 = element(0x18, text("20270131120000Z"));
const Bytes no_name = hex("30 00");
const Bytes name = hex("30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45");
const Bytes signature = hex("03 03 00 8B 10");

const Bytes name_hash = hex("04 02 A1 A2");
const Bytes key_hash = hex("04 02 B1 B2");
const Bytes serial = hex("02 02 12 67");
const Bytes id = sequence(sha1 + name_hash + key_hash + serial);
const Bytes nonce = hex("30 11 06 09 2B 06 01 05 05 07 30 01 02 04 04 04 02 AB CD");
const Bytes extensions = sequence(nonce);
const Bytes version_1 = hex("A0 03 02 01 00");

const Bytes validity = sequence(element(23, text("260101000000Z")) + in_2027);
const Bytes certificate = sequence(sequence(hex("02 01 05") + ed25519 + no_name + validity + name +
                                            sequence(ed25519 + signature)) +
                                   ed25519 + signature);
const Bytes certificates = element(0xA0, sequence(certificate));

// In the order of the fields, so that a test can leave one out.
const Bytes request = sequence(id + element(0xA0, extensions));
const Bytes requestor = element(0xA1, element(0xA4, name));
const Bytes requests = sequence(request);
const Bytes request_extensions = element(0xA2, extensions);
const Bytes tbs_request = sequence(version_1 + requestor + requests + request_extensions);
const Bytes signature_of_request = sequence(ed25519 + signature + certificates);

const Bytes good = hex("80 00");
const Bytes unknown = hex("82 00");
const Bytes revoked = element(0xA1, in_2026 + hex("A0 03 0A 01 01"));
const Bytes next_update = element(0xA0, in_2027);
const Bytes response_extensions = element(0xA1, extensions);
const Bytes single = sequence(id + revoked + in_2026 + next_update + response_extensions);
const Bytes by_name = element(0xA1, name);
const Bytes by_key = element(0xA2, key_hash);
const Bytes data = sequence(version_1 + by_name + in_2026 + sequence(single) + response_extensions);
const Bytes basic = sequence(data + ed25519 + signature + certificates);
const Bytes id_basic = hex("06 09 2B 06 01 05 05 07 30 01 01");
const Bytes response_bytes = sequence(id_basic + element(4, basic));
const Bytes response = sequence(hex("0A 01 00") + element(0xA0, response_bytes));

/// Returns the record of these octets, which the caller owns.
template <class T>
T *part(const uint8_t *(*element_d)(const uint8_t *, const uint8_t *, uint32_t, T **, uint32_t),
        const Bytes &octets) {
  const Decoded<T> result = decode(element_d, octets);
  EXPECT_EQ(static_cast<long>(octets.size()), result.consumed);
  return result.record;
}
AlgId *algorithm(const Bytes &octets) { return part(pki_AlgId_d, octets); }

/// Checks that octets are refused, and that a null pointer takes the place of what stood there.
template <class T>
void expect_refusal(const RecordFamily<T> &family, const Bytes &octets) {
  static void *other = nullptr;
  EXPECT_EQ(nullptr, left_by_refusal(family.decode, octets, reinterpret_cast<T *>(&other)));
}

/// Checks that octets are read and written back, by a copy too that outlives the record, and that
/// what is too short for them is refused.
template <class T>
void expect_to_come_back(const RecordFamily<T> &family, const Bytes &octets) {
  Held<T> record = decoded(family, octets);
  EXPECT_EQ(octets, encoded(family, record));
  const Held<T> copy = cloned(family, record);
  record.reset();
  EXPECT_EQ(octets, encoded(family, copy));

  decoded(family, octets + hex("05 00"), 2);
  for (size_t size = 0; size < octets.size(); ++size) {
    SCOPED_TRACE(size);
    const auto end = octets.begin() + static_cast<std::ptrdiff_t>(size);
    expect_refusal(family, Bytes(octets.begin(), end));
  }
  if (family.create != nullptr) expect_exhausted_memory_to_fail(family, octets);
}

/// Checks that a SEQUENCE of these fields, with a NULL before, between or after them, is refused.
template <class T>
void expect_nothing_between(const RecordFamily<T> &family, const std::vector<Bytes> &fields) {
  for (size_t at = 0; at <= fields.size(); ++at) {
    SCOPED_TRACE(at);
    Bytes content;
    for (size_t i = 0; i < fields.size(); ++i) {
      content = content + (i == at ? hex("05 00") : Bytes()) + fields[i];
    }
    expect_refusal(family, sequence(content + (at == fields.size() ? hex("05 00") : Bytes())));
  }
}

template <class T>
void expect_missing(const RecordFamily<T> &family, const char *type, const Held<T> &record,
                    const char *path) {
  pki_Fault fault;
  expect_nothing_written(family, record.get());
  ASSERT_EQ(1, pki_find_missing(pki_Type_find(type), record.get(), &fault));
  EXPECT_STREQ(path, fault.path);
}

// ------------------------------------------------------------------------------------------ Requests

CertID *filled_id() {
  CertID *const record = pki_CertID_new();
  record->hashAlgorithm = algorithm(sha1);
  record->issuerNameHash = asn1_ASN1String_new(2, "\xA1\xA2");
  record->issuerKeyHash = asn1_ASN1String_new(2, "\xB1\xB2");
  record->serialNumber = part(asn1_Integer_d, serial);
  return record;
}

TEST(OcspFormOfCertID, HasItsFields) {
  const auto record = decoded(CertID_form, id);
  EXPECT_EQ(sha1, encode(pki_AlgId_e, record->hashAlgorithm));
  EXPECT_EQ(hex("A1 A2"), value(record->issuerNameHash));
  EXPECT_EQ(hex("B1 B2"), value(record->issuerKeyHash));
  EXPECT_EQ(hex("12 67"), value(record->serialNumber));
  expect_to_come_back(CertID_form, id);
  expect_to_come_back(CertID_form, sequence(ed25519 + hex("04 00 04 00 02 01 80")));
  expect_nothing_between(CertID_form, {sha1, name_hash, key_hash, serial});
}

TEST(OcspFormOfCertID, IsWrittenFromItsFields) {
  Held<CertID> record(filled_id(), pki_CertID_free);
  EXPECT_EQ(id, encoded(CertID_form, record));
  clear(record->issuerKeyHash, asn1_OctetString_free);
  expect_missing(CertID_form, "pki_CertID", record, "issuerKeyHash");
}

TEST(OcspFormOfRequest, ReadsItsExtensionsUnderA0) {
  const auto record = decoded(Request_form, request);
  ASSERT_EQ(1, List_len(record->singleRequestExtensions));
  EXPECT_EQ(nonce, encode(pki_Extension_e, static_cast<const Extension *>(
                                               List_get(record->singleRequestExtensions, 0))));
  EXPECT_EQ(nullptr, decoded(Request_form, sequence(id))->singleRequestExtensions);
  expect_to_come_back(Request_form, request);
  expect_to_come_back(Request_form, sequence(id));
  expect_nothing_between(Request_form, {id, element(0xA0, extensions)});
  // Neither the octet under which liborvelasn1 looks for them nor an implicit tag.
  expect_refusal(Request_form, sequence(id + element(0x20, extensions)));
  expect_refusal(Request_form, sequence(id + element(0xA0, nonce)));
}

TEST(OcspFormOfTBSRequest, HasItsFields) {
  const auto record = decoded(TBSRequest_form, tbs_request);
  ASSERT_NE(nullptr, record->version);
  EXPECT_EQ(0U, record->version->length);
  ASSERT_EQ(4, record->requestorName->kind);
  EXPECT_EQ(name, encode(pki_RDNSequence_e,
                         static_cast<const RDNSequence *>(record->requestorName->value)));
  ASSERT_EQ(1, List_len(record->requestList));
  EXPECT_EQ(request,
            encode(pki_Request_e, static_cast<const Request *>(List_get(record->requestList, 0))));
  EXPECT_EQ(extensions, encode(pki_Extensions_e, record->requestExtensions));
  expect_nothing_between(TBSRequest_form, {version_1, requestor, requests, request_extensions});
}

// The version is v1 in all of them; a default that was written out stays.
TEST(OcspFormOfTBSRequest, MayLackAllButItsList) {
  for (const Bytes &octets :
       {tbs_request, sequence(requests), sequence(hex("30 00")), sequence(version_1 + requests),
        sequence(requestor + requests), sequence(requests + request_extensions)}) {
    expect_to_come_back(TBSRequest_form, octets);
  }
  const auto record = decoded(TBSRequest_form, sequence(requests));
  EXPECT_EQ(nullptr, record->version);
  EXPECT_EQ(nullptr, record->requestorName);
  EXPECT_EQ(nullptr, record->requestExtensions);
  expect_refusal(TBSRequest_form, sequence(version_1 + requestor + request_extensions));
  // In the other order, and twice.
  expect_refusal(TBSRequest_form, sequence(requestor + version_1 + requests));
  expect_refusal(TBSRequest_form, sequence(version_1 + version_1 + requests));
}

TEST(OcspFormOfSignature, HasCertificates) {
  const auto record = decoded(OCSPSignature_form, signature_of_request);
  EXPECT_EQ(ed25519, encode(pki_AlgId_e, record->signatureAlgorithm));
  EXPECT_EQ(hex("8B 10"), value(record->signature));
  EXPECT_EQ(16U, record->signature->length);
  ASSERT_EQ(1, List_len(record->certs));
  EXPECT_EQ(certificate, encode(pki_Certificate_e,
                                static_cast<const Certificate *>(List_get(record->certs, 0))));
  EXPECT_EQ(nullptr, decoded(OCSPSignature_form, sequence(ed25519 + signature))->certs);
  expect_to_come_back(OCSPSignature_form, signature_of_request);
  expect_to_come_back(OCSPSignature_form, sequence(ed25519 + signature));
  expect_to_come_back(OCSPSignature_form, sequence(ed25519 + signature + hex("A0 02 30 00")));
  expect_nothing_between(OCSPSignature_form, {ed25519, signature, certificates});
}

TEST(OcspFormOfARequest, HasASignature) {
  const Bytes octets = sequence(tbs_request + element(0xA0, signature_of_request));
  const auto record = decoded(OCSPRequest_form, octets);
  EXPECT_EQ(tbs_request, encode(pki_TBSRequest_e, record->tbsRequest));
  EXPECT_EQ(signature_of_request, encode(pki_OCSPSignature_e, record->optionalSignature));
  EXPECT_EQ(nullptr, decoded(OCSPRequest_form, sequence(tbs_request))->optionalSignature);
  expect_to_come_back(OCSPRequest_form, octets);
  expect_to_come_back(OCSPRequest_form, sequence(tbs_request));
  expect_nothing_between(OCSPRequest_form, {tbs_request, element(0xA0, signature_of_request)});
}

TEST(OcspFormOfARequest, IsWrittenFromItsFields) {
  auto *const asked = pki_Request_new();
  asked->reqCert = filled_id();
  asked->singleRequestExtensions = part(pki_Extensions_d, extensions);
  auto *const requestor_name = pki_GeneralName_new();
  requestor_name->kind = 4;
  requestor_name->value = part(pki_RDNSequence_d, name);
  const auto record = created(OCSPRequest_form);
  record->tbsRequest = pki_TBSRequest_new();
  record->tbsRequest->version = asn1_Integer_new(0);
  record->tbsRequest->requestorName = requestor_name;
  record->tbsRequest->requestList = list_of({asked});
  record->tbsRequest->requestExtensions = part(pki_Extensions_d, extensions);
  record->optionalSignature = pki_OCSPSignature_new();
  record->optionalSignature->signatureAlgorithm = algorithm(ed25519);
  record->optionalSignature->signature = part(asn1_BitString_d, signature);
  record->optionalSignature->certs = list_of({part(pki_Certificate_d, certificate)});
  EXPECT_EQ(sequence(tbs_request + element(0xA0, signature_of_request)),
            encoded(OCSPRequest_form, record));

  clear(asked->reqCert->serialNumber, asn1_Integer_free);
  expect_missing(OCSPRequest_form, "pki_OCSPRequest", record,
                 "tbsRequest.requestList[0].reqCert.serialNumber");
}

// ----------------------------------------------------------------------------------------- Responses

TEST(OcspFormOfResponderID, IsANameOrTheHashOfAKey) {
  const auto named = decoded(ResponderID_form, by_name);
  ASSERT_EQ(1, named->kind);
  EXPECT_EQ(name, encode(pki_RDNSequence_e, static_cast<const RDNSequence *>(named->value)));
  const auto keyed = decoded(ResponderID_form, by_key);
  ASSERT_EQ(2, keyed->kind);
  EXPECT_EQ(hex("B1 B2"), value(static_cast<const OctetString *>(keyed->value)));
  expect_to_come_back(ResponderID_form, by_name);
  expect_to_come_back(ResponderID_form, by_key);
  expect_to_come_back(ResponderID_form, hex("A1 02 30 00"));
  for (const char *octets : {"A0 02 30 00", "A3 02 30 00", "81 02 30 00", "82 02 B1 B2", "A1 00",
                             "A2 02 30 00", "A2 04 04 00 05 00", "02 01 05"}) {
    SCOPED_TRACE(octets);
    expect_refusal(ResponderID_form, hex(octets));
  }
}

TEST(OcspFormOfResponderID, IsWrittenFromItsFields) {
  auto record = created(ResponderID_form);
  expect_missing(ResponderID_form, "pki_ResponderID", record, "");
  record->kind = 2;
  expect_missing(ResponderID_form, "pki_ResponderID", record, "byKey");
  record->value = asn1_ASN1String_new(2, "\xB1\xB2");
  EXPECT_EQ(by_key, encoded(ResponderID_form, record));
}

TEST(OcspFormOfRevokedInfo, TellsUnspecifiedFromNoReason) {
  const auto without = decoded(RevokedInfo_form, sequence(in_2026));
  EXPECT_STREQ("20260131120000Z", without->revocationTime);
  EXPECT_EQ(nullptr, without->revocationReason);
  const auto unspecified = decoded(RevokedInfo_form, sequence(in_2026 + hex("A0 03 0A 01 00")));
  ASSERT_NE(nullptr, unspecified->revocationReason);
  EXPECT_EQ(0U, unspecified->revocationReason->length);
  const auto superseded = decoded(RevokedInfo_form, sequence(in_2026 + hex("A0 03 0A 01 04")));
  EXPECT_EQ(hex("04"), value(superseded->revocationReason));
  for (const char *reason : {"", "A0 03 0A 01 00", "A0 03 0A 01 0A", "A0 04 0A 02 00 80"}) {
    expect_to_come_back(RevokedInfo_form, sequence(in_2026 + hex(reason)));
  }
  for (const char *reason : {"80 01 01", "A0 03 02 01 01", "A0 02 0A 00", "A0 00", "0A 01 01"}) {
    SCOPED_TRACE(reason);
    expect_refusal(RevokedInfo_form, sequence(in_2026 + hex(reason)));
  }
  expect_nothing_between(RevokedInfo_form, {in_2026, hex("A0 03 0A 01 01")});
}

TEST(OcspFormOfCertStatus, IsOneOfThree) {
  const auto well = decoded(OCSPCertStatus_form, good);
  EXPECT_EQ(0, well->kind);
  EXPECT_EQ(nullptr, well->value);
  const auto unwell = decoded(OCSPCertStatus_form, revoked);
  ASSERT_EQ(1, unwell->kind);
  const auto *const info = static_cast<const pki_RevokedInfo *>(unwell->value);
  EXPECT_STREQ("20260131120000Z", info->revocationTime);
  EXPECT_EQ(hex("01"), value(info->revocationReason));
  const auto not_known = decoded(OCSPCertStatus_form, unknown);
  EXPECT_EQ(2, not_known->kind);
  EXPECT_EQ(nullptr, not_known->value);
  for (const Bytes &octets : {good, revoked, unknown, element(0xA1, in_2026)}) {
    expect_to_come_back(OCSPCertStatus_form, octets);
  }
  for (const char *octets : {"A0 00", "A2 00", "80 01 00", "82 01 00", "81 00", "A1 00", "83 00",
                             "00 00", "05 00", "A0 02 05 00", "40 00"}) {
    SCOPED_TRACE(octets);
    expect_refusal(OCSPCertStatus_form, hex(octets));
  }
}

TEST(OcspFormOfCertStatus, IsWrittenFromItsFields) {
  auto record = created(OCSPCertStatus_form);
  EXPECT_EQ(good, encoded(OCSPCertStatus_form, record));
  record->kind = 2;
  EXPECT_EQ(unknown, encoded(OCSPCertStatus_form, record));
  record->kind = 3;
  expect_missing(OCSPCertStatus_form, "pki_OCSPCertStatus", record, "");
  record->kind = 1;
  expect_missing(OCSPCertStatus_form, "pki_OCSPCertStatus", record, "revoked");
  auto *const info = pki_RevokedInfo_new();
  record->value = info;
  expect_missing(OCSPCertStatus_form, "pki_OCSPCertStatus", record, "revoked.revocationTime");
  info->revocationTime = asn1_GeneralizedTime_clone("20260131120000Z");
  EXPECT_EQ(element(0xA1, in_2026), encoded(OCSPCertStatus_form, record));
  // 0 has no octets in the record of an INTEGER.
  info->revocationReason = asn1_Integer_new(0);
  EXPECT_EQ(element(0xA1, in_2026 + hex("A0 03 0A 01 00")), encoded(OCSPCertStatus_form, record));
}

TEST(OcspFormOfSingleResponse, HasItsFields) {
  const auto record = decoded(SingleResponse_form, single);
  EXPECT_EQ(id, encode(pki_CertID_e, record->certID));
  EXPECT_EQ(revoked, encode(pki_OCSPCertStatus_e, record->certStatus));
  EXPECT_STREQ("20260131120000Z", record->thisUpdate);
  EXPECT_STREQ("20270131120000Z", record->nextUpdate);
  EXPECT_EQ(extensions, encode(pki_Extensions_e, record->singleExtensions));
  const auto least = decoded(SingleResponse_form, sequence(id + good + in_2026));
  EXPECT_EQ(nullptr, least->nextUpdate);
  EXPECT_EQ(nullptr, least->singleExtensions);
  for (const Bytes &octets :
       {single, sequence(id + good + in_2026), sequence(id + unknown + in_2026 + next_update),
        sequence(id + good + in_2026 + response_extensions)}) {
    expect_to_come_back(SingleResponse_form, octets);
  }
  expect_nothing_between(SingleResponse_form,
                         {id, good, in_2026, next_update, response_extensions});
}

TEST(OcspFormOfResponseData, HasItsFields) {
  const auto record = decoded(ResponseData_form, data);
  ASSERT_NE(nullptr, record->version);
  EXPECT_EQ(by_name, encode(pki_ResponderID_e, record->responderID));
  EXPECT_STREQ("20260131120000Z", record->producedAt);
  ASSERT_EQ(1, List_len(record->responses));
  EXPECT_EQ(single, encode(pki_SingleResponse_e,
                           static_cast<const SingleResponse *>(List_get(record->responses, 0))));
  EXPECT_EQ(extensions, encode(pki_Extensions_e, record->responseExtensions));
  const Bytes least = sequence(by_key + in_2026 + hex("30 00"));
  EXPECT_EQ(nullptr, decoded(ResponseData_form, least)->version);
  EXPECT_EQ(nullptr, decoded(ResponseData_form, least)->responseExtensions);
  expect_to_come_back(ResponseData_form, data);
  expect_to_come_back(ResponseData_form, least);
  expect_nothing_between(ResponseData_form,
                         {version_1, by_name, in_2026, sequence(single), response_extensions});
}

TEST(OcspFormOfABasicResponse, HasItsFields) {
  const auto record = decoded(BasicOCSPResponse_form, basic);
  EXPECT_EQ(data, encode(pki_ResponseData_e, record->tbsResponseData));
  EXPECT_EQ(data, value(record->tbsResponseDataBytes));
  EXPECT_EQ(ed25519, encode(pki_AlgId_e, record->signatureAlgorithm));
  EXPECT_EQ(hex("8B 10"), value(record->signature));
  ASSERT_EQ(1, List_len(record->certs));
  EXPECT_EQ(certificate, encode(pki_Certificate_e,
                                static_cast<const Certificate *>(List_get(record->certs, 0))));
  expect_to_come_back(BasicOCSPResponse_form, basic);
  expect_to_come_back(BasicOCSPResponse_form, sequence(data + ed25519 + signature));
  expect_nothing_between(BasicOCSPResponse_form, {data, ed25519, signature, certificates});
}

TEST(OcspFormOfABasicResponse, KeepsTheSignedOctets) {
  // The same in BER: an indefinite length.
  const Bytes content(data.begin() + 3, data.end());
  ASSERT_EQ(data, sequence(content));
  const Bytes in_ber = hex("30 80") + content + hex("00 00");
  const Bytes octets = sequence(in_ber + ed25519 + signature);
  const auto record = decoded(BasicOCSPResponse_form, octets);
  EXPECT_EQ(in_ber, value(record->tbsResponseDataBytes));
  EXPECT_EQ(octets, encoded(BasicOCSPResponse_form, record));
  const auto copy = cloned(BasicOCSPResponse_form, record);
  ASSERT_NE(nullptr, copy->tbsResponseDataBytes);
  EXPECT_NE(record->tbsResponseDataBytes, copy->tbsResponseDataBytes);
  EXPECT_EQ(in_ber, value(copy->tbsResponseDataBytes));
  clear(copy->tbsResponseDataBytes, asn1_OctetString_free);
  EXPECT_EQ(sequence(data + ed25519 + signature), encoded(BasicOCSPResponse_form, copy));
}

TEST(OcspFormOfABasicResponse, IsWrittenFromItsFields) {
  auto *const answer = pki_SingleResponse_new();
  answer->certID = filled_id();
  answer->certStatus = part(pki_OCSPCertStatus_d, revoked);
  answer->thisUpdate = asn1_GeneralizedTime_clone("20260131120000Z");
  answer->nextUpdate = asn1_GeneralizedTime_clone("20270131120000Z");
  answer->singleExtensions = part(pki_Extensions_d, extensions);
  const auto record = created(BasicOCSPResponse_form);
  ResponseData *const to_be_signed = record->tbsResponseData = pki_ResponseData_new();
  to_be_signed->version = asn1_Integer_new(0);
  to_be_signed->responderID = pki_ResponderID_new();
  to_be_signed->responderID->kind = 1;
  to_be_signed->responderID->value = part(pki_RDNSequence_d, name);
  to_be_signed->producedAt = asn1_GeneralizedTime_clone("20260131120000Z");
  to_be_signed->responses = list_of({answer});
  to_be_signed->responseExtensions = part(pki_Extensions_d, extensions);
  record->signatureAlgorithm = algorithm(ed25519);
  record->signature = part(asn1_BitString_d, signature);
  record->certs = list_of({part(pki_Certificate_d, certificate)});
  EXPECT_EQ(basic, encoded(BasicOCSPResponse_form, record));

  clear(answer->certStatus, pki_OCSPCertStatus_free);
  expect_missing(BasicOCSPResponse_form, "pki_BasicOCSPResponse", record,
                 "tbsResponseData.responses[0].certStatus");
}

TEST(OcspFormOfAResponse, IsAStatusAndMaybeOctets) {
  const auto record = decoded(OCSPResponse_form, response);
  EXPECT_EQ(0U, record->responseStatus);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_pkix_ocsp_basic(), record->responseBytes->responseType));
  EXPECT_EQ(basic, value(record->responseBytes->response));
  const auto later = decoded(OCSPResponse_form, hex("30 03 0A 01 03"));
  EXPECT_EQ(3U, later->responseStatus);
  EXPECT_EQ(nullptr, later->responseBytes);
  expect_to_come_back(OCSPResponse_form, response);
  expect_to_come_back(OCSPResponse_form, hex("30 03 0A 01 06"));
  expect_to_come_back(OCSPResponse_form, hex("30 03 0A 01 7F"));
  expect_to_come_back(ResponseBytes_form, response_bytes);
  expect_to_come_back(ResponseBytes_form, hex("30 06 06 02 2A 03 04 00"));
  expect_nothing_between(OCSPResponse_form, {hex("0A 01 00"), element(0xA0, response_bytes)});
  expect_nothing_between(ResponseBytes_form, {id_basic, element(4, basic)});
  for (const char *octets : {"30 00", "30 02 0A 00", "30 03 0A 01 80", "30 04 0A 02 00 01",
                             "30 03 02 01 06", "30 03 8A 01 06"}) {
    SCOPED_TRACE(octets);
    expect_refusal(OCSPResponse_form, hex(octets));
  }
}

TEST(OcspFormOfAResponse, IsWrittenFromItsFields) {
  const auto record = created(OCSPResponse_form);
  EXPECT_EQ(hex("30 03 0A 01 00"), encoded(OCSPResponse_form, record));
  record->responseBytes = pki_ResponseBytes_new();
  expect_missing(OCSPResponse_form, "pki_OCSPResponse", record, "responseBytes.responseType");
  record->responseBytes->responseType = asn1_ObjId_clone(asn1_Get_id_pkix_ocsp_basic());
  expect_missing(OCSPResponse_form, "pki_OCSPResponse", record, "responseBytes.response");
  record->responseBytes->response =
      asn1_ASN1String_new(static_cast<uint32_t>(basic.size()), basic.data());
  EXPECT_EQ(response, encoded(OCSPResponse_form, record));
  record->responseStatus = 128;
  expect_missing(OCSPResponse_form, "pki_OCSPResponse", record, "responseStatus");
}

// ------------------------------------------------------------------------- From a response to its parts

using BasicPointer = Owned<BasicOCSPResponse, pki_BasicOCSPResponse_free>;

/// Returns the basic response in a response that holds these octets.
BasicPointer basic_of(const Bytes &type, const Bytes &octets) {
  const auto record =
      decoded(OCSPResponse_form,
              sequence(hex("0A 01 00") + element(0xA0, sequence(type + element(4, octets)))));
  return BasicPointer(pki_OCSPResponse_basic(record.get()));
}

TEST(OcspBasicOfAResponse, IsARecordOfItsOwn) {
  const BasicPointer record = basic_of(id_basic, basic);
  ASSERT_NE(nullptr, record);
  EXPECT_EQ(basic, encode(pki_BasicOCSPResponse_e, record.get()));
  EXPECT_EQ(data, value(record->tbsResponseDataBytes));
}

TEST(OcspBasicOfAResponse, IsNoneWhereThereIsNone) {
  EXPECT_EQ(nullptr, pki_OCSPResponse_basic(nullptr));
  EXPECT_EQ(nullptr,
            pki_OCSPResponse_basic(decoded(OCSPResponse_form, hex("30 03 0A 01 06")).get()));
  const auto record = created(OCSPResponse_form);
  record->responseBytes = pki_ResponseBytes_new();
  EXPECT_EQ(nullptr, pki_OCSPResponse_basic(record.get()));
  record->responseBytes->responseType = asn1_ObjId_clone(asn1_Get_id_pkix_ocsp_basic());
  EXPECT_EQ(nullptr, pki_OCSPResponse_basic(record.get()));
  record->responseBytes->response = asn1_ASN1String_new(0, nullptr);
  EXPECT_EQ(nullptr, pki_OCSPResponse_basic(record.get()));
}

TEST(OcspBasicOfAResponse, IsRefused) {
  EXPECT_EQ(nullptr, basic_of(hex("06 09 2B 06 01 05 05 07 30 01 02"), basic));
  // The identifier with an arc that 32 bits do not hold.
  EXPECT_EQ(nullptr, basic_of(hex("06 0E 2B 06 01 05 05 07 30 01 90 80 80 80 80 01"), basic));
  EXPECT_EQ(nullptr, basic_of(id_basic, {}));
  EXPECT_EQ(nullptr, basic_of(id_basic, basic + hex("00")));
  EXPECT_EQ(nullptr, basic_of(id_basic, Bytes(basic.begin(), basic.end() - 1)));
  EXPECT_EQ(nullptr, basic_of(id_basic, sequence(ed25519 + signature)));
}

TEST(OcspBasicOfAResponse, IsReadWithoutATrace) {
  EXPECT_EQ("", trace_text([] { EXPECT_NE(nullptr, basic_of(id_basic, basic)); }));
}

#ifndef ORVELASN1_TESTS_SANITIZED
TEST(OcspBasicOfAResponse, FailsAtEachAllocation) {
  const auto record = decoded(OCSPResponse_form, response);
  const long allocations = expect_failure_at_each_allocation([&] {
    BasicOCSPResponse *const made = pki_OCSPResponse_basic(record.get());
    pki_BasicOCSPResponse_free(made);
    return made != nullptr;
  });
  EXPECT_LE(1, allocations);
}
#endif

// ---------------------------------------------------------------------------------------- Extensions

TEST(OcspFormOfNonce, IsOctets) {
  const auto record = decoded(Nonce_form, hex("04 02 AB CD"));
  EXPECT_EQ(hex("AB CD"), value(record.get()));
  expect_to_come_back(Nonce_form, hex("04 02 AB CD"));
  expect_to_come_back(Nonce_form, hex("04 00"));
  expect_refusal(Nonce_form, hex("02 02 AB CD"));
  // Without the OCTET STRING that RFC 6960 asks for inside the extension's own.
  expect_refusal(Nonce_form, hex("AB CD"));
}

TEST(OcspFormOfCrlID, HasItsFields) {
  const Bytes url = element(0xA0, element(0x16, text("http://a/")));
  const Bytes number = hex("A1 03 02 01 05");
  const Bytes time = element(0xA2, in_2026);
  const auto record = decoded(CrlID_form, sequence(url + number + time));
  EXPECT_EQ(text("http://a/"), value(record->crlUrl));
  EXPECT_EQ(hex("05"), value(record->crlNum));
  EXPECT_STREQ("20260131120000Z", record->crlTime);
  for (const Bytes &content : {url + number + time, url, number, time, Bytes()}) {
    expect_to_come_back(CrlID_form, sequence(content));
  }
  expect_nothing_between(CrlID_form, {url, number, time});
  expect_refusal(CrlID_form, sequence(hex("81 01 05")));

  const auto filled = created(CrlID_form);
  EXPECT_EQ(hex("30 00"), encoded(CrlID_form, filled));
  filled->crlUrl = asn1_ASN1String_new(9, "http://a/");
  filled->crlNum = part(asn1_Integer_d, hex("02 01 05"));
  filled->crlTime = asn1_GeneralizedTime_clone("20260131120000Z");
  EXPECT_EQ(sequence(url + number + time), encoded(CrlID_form, filled));
}

TEST(OcspFormOfAcceptableResponses, IsAListOfIdentifiers) {
  const Bytes octets = sequence(id_basic + hex("06 02 2A 03"));
  const auto record = decoded(AcceptableResponses_form, octets);
  ASSERT_EQ(2, List_len(record.get()));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_pkix_ocsp_basic(),
                              static_cast<const ObjId *>(List_get(record.get(), 0))));
  expect_to_come_back(AcceptableResponses_form, octets);
  expect_to_come_back(AcceptableResponses_form, hex("30 00"));
  expect_nothing_between(AcceptableResponses_form, {id_basic, hex("06 02 2A 03")});
}

TEST(OcspFormOfArchiveCutoff, IsATime) {
  EXPECT_STREQ("20260131120000Z", decoded(ArchiveCutoff_form, in_2026).get());
  expect_to_come_back(ArchiveCutoff_form, in_2026);
  expect_refusal(ArchiveCutoff_form, element(0x17, text("260131120000Z")));
  expect_refusal(ArchiveCutoff_form, hex("18 00"));
}

TEST(OcspFormOfServiceLocator, HasItsFields) {
  const Bytes access =
      sequence(hex("06 08 2B 06 01 05 05 07 30 01") + element(0x86, text("http://a/")));
  const auto record = decoded(ServiceLocator_form, sequence(name + sequence(access)));
  EXPECT_EQ(name, encode(pki_RDNSequence_e, record->issuer));
  ASSERT_EQ(1, List_len(record->locator));
  EXPECT_EQ(access, encode(pki_AccessDescription_e,
                           static_cast<const AccessDescription *>(List_get(record->locator, 0))));
  EXPECT_EQ(nullptr, decoded(ServiceLocator_form, sequence(name))->locator);
  for (const Bytes &content : {name + sequence(access), no_name + hex("30 00"), name}) {
    expect_to_come_back(ServiceLocator_form, sequence(content));
  }
  expect_nothing_between(ServiceLocator_form, {name, sequence(access)});
  expect_missing(ServiceLocator_form, "pki_ServiceLocator", created(ServiceLocator_form), "issuer");
}

TEST(OcspFormOfPreferredSignatureAlgorithms, IsAListOfPairs) {
  const Bytes pair = sequence(ed25519 + sha1);
  const Bytes octets = sequence(pair + sequence(sha1));
  const auto record = decoded(PreferredSignatureAlgorithms_form, octets);
  ASSERT_EQ(2, List_len(record.get()));
  const auto *const first =
      static_cast<const pki_PreferredSignatureAlgorithm *>(List_get(record.get(), 0));
  EXPECT_EQ(ed25519, encode(pki_AlgId_e, first->sigIdentifier));
  EXPECT_EQ(sha1, encode(pki_AlgId_e, first->pubKeyAlgIdentifier));
  const auto *const second =
      static_cast<const pki_PreferredSignatureAlgorithm *>(List_get(record.get(), 1));
  EXPECT_EQ(sha1, encode(pki_AlgId_e, second->sigIdentifier));
  EXPECT_EQ(nullptr, second->pubKeyAlgIdentifier);
  expect_to_come_back(PreferredSignatureAlgorithms_form, octets);
  expect_to_come_back(PreferredSignatureAlgorithms_form, hex("30 00"));
  expect_to_come_back(PreferredSignatureAlgorithm_form, pair);
  expect_nothing_between(PreferredSignatureAlgorithm_form, {ed25519, sha1});
  expect_nothing_between(PreferredSignatureAlgorithms_form, {pair, sequence(sha1)});
  expect_missing(PreferredSignatureAlgorithm_form, "pki_PreferredSignatureAlgorithm",
                 created(PreferredSignatureAlgorithm_form), "sigIdentifier");
}

// ----------------------------------------------------------------------------------- Null pointers

template <class T>
void expect_null_pointers_to_fail(const RecordFamily<T> &family) {
  const uint8_t octets[] = {0x30, 0x00};
  T *place = nullptr;
  EXPECT_EQ(nullptr, family.decode(nullptr, octets + 2, 0, &place, 0));
  EXPECT_EQ(nullptr, family.decode(octets, nullptr, 0, &place, 0));
  EXPECT_EQ(nullptr, family.decode(octets, octets + 2, 0, nullptr, 0));
  expect_nothing_written(family, nullptr);
  EXPECT_EQ(nullptr, family.clone(nullptr));
  family.free(nullptr);
}

template <class... T>
void expect_no_end_of_the_process(const RecordFamily<T> &...families) {
  (expect_null_pointers_to_fail(families), ...);
}

TEST(OcspForms, DoNotEndTheProcessForANullPointer) {
  expect_no_end_of_the_process(
      CertID_form, Request_form, TBSRequest_form, OCSPSignature_form, OCSPRequest_form,
      ResponseBytes_form, OCSPResponse_form, ResponderID_form, RevokedInfo_form,
      OCSPCertStatus_form, SingleResponse_form, ResponseData_form, BasicOCSPResponse_form,
      Nonce_form, CrlID_form, AcceptableResponses_form, ArchiveCutoff_form, ServiceLocator_form,
      PreferredSignatureAlgorithm_form, PreferredSignatureAlgorithms_form);
}

}  // namespace

}  // namespace rfc6960_test
