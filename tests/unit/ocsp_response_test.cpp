// Tests OCSP responses, which are only read, and the records in them.
#include "records.h"

namespace ocsp_response_test {

namespace {

using namespace support;

/// Releases a response and its signed octets, which the caller must release.
void release_with_signed_octets(BasicOCSPResponse *response) {
  if (response != nullptr) asn1_OctetString_free(response->tbsResponseDataBytes);
  asn1_BasicOCSPResponse_free(response);
}

constexpr RecordFamily<OCSPResponse> responses = {asn1_OCSPResponse_new, asn1_OCSPResponse_free,
                                                  nullptr, asn1_OCSPResponse_d,
                                                  asn1_OCSPResponse_clone};
constexpr RecordFamily<ResponseBytes> response_bytes = {
    asn1_ResponseBytes_new, asn1_ResponseBytes_free, nullptr, asn1_ResponseBytes_d,
    asn1_ResponseBytes_clone};
constexpr RecordFamily<BasicOCSPResponse> basic_responses = {
    asn1_BasicOCSPResponse_new, release_with_signed_octets, nullptr, asn1_BasicOCSPResponse_d,
    asn1_BasicOCSPResponse_clone};
constexpr RecordFamily<ResponseData> response_data = {asn1_ResponseData_new, asn1_ResponseData_free,
                                                      nullptr, asn1_ResponseData_d,
                                                      asn1_ResponseData_clone};
constexpr RecordFamily<ResponderID> responder_ids = {asn1_ResponderID_new, asn1_ResponderID_free,
                                                     nullptr, asn1_ResponderID_d,
                                                     asn1_ResponderID_clone};
constexpr RecordFamily<SingleResponse> single_responses = {
    asn1_SingleResponse_new, asn1_SingleResponse_free, nullptr, asn1_SingleResponse_d,
    asn1_SingleResponse_clone};
constexpr RecordFamily<OCSPCertStatus> cert_statuses = {
    asn1_OCSPCertStatus_new, asn1_OCSPCertStatus_free, nullptr, asn1_OCSPCertStatus_d,
    asn1_OCSPCertStatus_clone};
constexpr RecordFamily<RevokedInfo> revoked_infos = {asn1_RevokedInfo_new, asn1_RevokedInfo_free,
                                                     nullptr, asn1_RevokedInfo_d,
                                                     asn1_RevokedInfo_clone};

const Bytes time_1 = element(0x18, text("20260101000000Z"));
const Bytes time_2 = element(0x18, text("20270101000000Z"));
const Bytes utc_time = element(0x17, text("260101000000Z"));

const Bytes sha1 = hex("30 09 06 05 2B 0E 03 02 1A 05 00");
const Bytes five = hex("02 01 05");
const Bytes cert_id = sequence(sha1 + hex("04 02 A1 A2 04 02 B1 B2") + five);
const Bytes good = hex("80 00");
const Bytes next_update = element(0xA0, time_2);
const Bytes nonce = hex("30 0F 06 09 2B 06 01 05 05 07 30 01 02 04 02 AB CD");
const Bytes extensions = element(0xA1, sequence(nonce));
const Bytes single = sequence(cert_id + good + time_1);
const Bytes full_single = sequence(cert_id + good + time_1 + next_update + extensions);

const Bytes version_1 = hex("A0 03 02 01 00");
const Bytes by_key = hex("A2 04 04 02 AB CD");
const Bytes name = hex("30 0C 31 0A 30 08 06 03 55 04 03 0C 01 78");
const Bytes by_name = element(0xA1, name);
const Bytes data_content = version_1 + by_key + time_1 + sequence(full_single) + extensions;
const Bytes data = sequence(data_content);

const Bytes ecdsa = hex("30 0A 06 08 2A 86 48 CE 3D 04 03 02");
const Bytes signature = hex("03 03 00 AB C0");
const Bytes basic_content = data + ecdsa + signature;

const Bytes id_basic = hex("06 09 2B 06 01 05 05 07 30 01 01");
const Bytes bytes_content = id_basic + element(0x04, sequence(basic_content));

// A certificate that is just large enough to be one.
const Bytes ed25519 = hex("30 05 06 03 2B 65 70");
const Bytes certificate = sequence(sequence(five + ed25519 + name + sequence(utc_time + utc_time) +
                                            name + sequence(ed25519 + hex("03 03 00 AB CD"))) +
                                   ed25519 + signature);

// -------------------------------------------------------------------------------------- OCSPResponse

TEST(OcspResponse, OfAnErrorIsAStatusAlone) {
  const auto record = decoded(responses, hex("30 03 0A 01 06"));
  EXPECT_EQ(6U, record->responseStatus);
  EXPECT_EQ(nullptr, record->responseBytes);
}

TEST(OcspResponse, MayBeEmptyAndIsSuccessfulThen) {
  for (const char *octets : {"30 00", "30 84 80 00 00 00", "30 84 FF FF FF FF"}) {
    const auto record = decoded(responses, hex(octets));
    EXPECT_EQ(0U, record->responseStatus) << octets;
    EXPECT_EQ(nullptr, record->responseBytes) << octets;
  }
}

TEST(OcspResponse, TakesAnyStatusOfOneOctet) {
  for (const uint8_t status : Bytes{0, 1, 5, 127, 128, 255}) {
    EXPECT_EQ(status, decoded(responses, hex("30 03 0A 01") + Bytes{status})->responseStatus);
  }
  for (const char *octets : {"0A 00", "0A 02 00 01", "2A 01 06", "02 01 06", "8A 01 06", "0A"}) {
    expect_refused(responses, sequence(hex(octets)));
  }
}

TEST(OcspResponse, HoldsResponseBytesUnderA0) {
  const Bytes octets = sequence(hex("0A 01 00") + element(0xA0, sequence(bytes_content)));
  const auto record = decoded(responses, octets);
  EXPECT_EQ(0U, record->responseStatus);
  ASSERT_NE(nullptr, record->responseBytes);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_pkix_ocsp_basic(), record->responseBytes->responseType));
  EXPECT_EQ(sequence(basic_content), value(record->responseBytes->response));
}

TEST(OcspResponse, IsASequenceOfDefiniteLength) {
  const Bytes status = hex("0A 01 00");
  const Bytes content = status + element(0xA0, sequence(bytes_content));
  expect_sequence_of_definite_length(responses, content);
  expect_every_cut_refused(responses, content, {0, status.size()});

  const auto record = created(responses);
  EXPECT_EQ(0U, record->responseStatus);
  EXPECT_EQ(nullptr, record->responseBytes);
  asn1_OCSPResponse_free(nullptr);
}

TEST(OcspResponse, LeavesUnreadWhatIsNoResponse) {
  for (const Bytes &rest : {element(0x80, sequence(bytes_content)), hex("A1 00"),
                            sequence(bytes_content), hex("0A 01 00")}) {
    const auto record = decoded(responses, sequence(hex("0A 01 06") + rest), rest.size());
    EXPECT_EQ(nullptr, record->responseBytes);
  }
  decoded(responses, hex("30 03 0A 01 06 A0 00"), 2);
}

TEST(OcspResponse, IsRefusedWithABadResponse) {
  for (const char *bad : {"A0", "A0 00", "A0 02 30 00", "A0 02 05 00", "A0 80 30 00 00 00"}) {
    expect_refused(responses, sequence(hex("0A 01 00") + hex(bad)));
  }
  // The status may be missing only at the end of the input.
  expect_refused(responses, sequence(element(0xA0, sequence(bytes_content))));
}

TEST(OcspResponse, IsClonedWithItsStatus) {
  EXPECT_EQ(nullptr, asn1_OCSPResponse_clone(nullptr));
  const auto error = cloned(responses, decoded(responses, hex("30 03 0A 01 06")));
  EXPECT_EQ(6U, error->responseStatus);
  EXPECT_EQ(nullptr, error->responseBytes);

  auto record =
      decoded(responses, sequence(hex("0A 01 05") + element(0xA0, sequence(bytes_content))));
  const auto copy = cloned(responses, record);
  record.reset();
  EXPECT_EQ(5U, copy->responseStatus);
  EXPECT_EQ(id_basic, encode(asn1_ObjId_e, copy->responseBytes->responseType));
  EXPECT_EQ(sequence(basic_content), value(copy->responseBytes->response));
}

// ------------------------------------------------------------------------------------- ResponseBytes

TEST(OcspResponseBytes, AreATypeAndOctets) {
  expect_new_record_is_zero(response_bytes);
  expect_sequence_of_definite_length(response_bytes, bytes_content);
  expect_every_cut_refused(response_bytes, bytes_content);
  expect_huge_lengths_refused(response_bytes, bytes_content);
  for (const char *content : {"04 00", "04 00 06 01 2A", "06 01 2A", "06 01 2A 03 01 00"}) {
    expect_refused(response_bytes, sequence(hex(content)));
  }
}

TEST(OcspResponseBytes, MayBeOfAnyTypeAndHoldAnything) {
  const auto record = decoded(response_bytes, hex("30 07 06 01 2A 04 02 FF 00"));
  EXPECT_EQ(hex("06 01 2A"), encode(asn1_ObjId_e, record->responseType));
  EXPECT_EQ(hex("FF 00"), value(record->response));
}

TEST(OcspResponseBytes, AreJoinedFromSegments) {
  const auto record = decoded(response_bytes, hex("30 0B 06 01 2A 24 06 04 01 FF 04 01 00"));
  EXPECT_EQ(hex("FF 00"), value(record->response));
}

TEST(OcspResponseBytes, AreClonedHalfFilled) {
  EXPECT_EQ(nullptr, asn1_ResponseBytes_clone(nullptr));
  const auto record = created(response_bytes);
  record->response = asn1_OctetString_new(2);
  const auto copy = cloned(response_bytes, record);
  EXPECT_EQ(nullptr, copy->responseType);
  EXPECT_NE(record->response, copy->response);
  EXPECT_EQ(hex("00 00"), value(copy->response));
}

// --------------------------------------------------------------------------------- BasicOCSPResponse

TEST(BasicOcspResponse, KeepsTheSignedElementAsItCame) {
  const auto record = decoded(basic_responses, sequence(basic_content));
  ASSERT_NE(nullptr, record->tbsResponseDataBytes);
  EXPECT_EQ(data, value(record->tbsResponseDataBytes));
  EXPECT_EQ(1, List_len(record->tbsResponseData->responses));
  EXPECT_EQ(ecdsa, encode(asn1_AlgId_e, record->signatureAlgorithm));
  EXPECT_EQ(16U, record->signature->length);
  EXPECT_EQ(hex("AB C0"), value(record->signature));
  EXPECT_EQ(nullptr, record->certs);
}

TEST(BasicOcspResponse, KeepsALengthInALongForm) {
  const Bytes long_form =
      hex("30 82") + Bytes{0, static_cast<uint8_t>(data_content.size())} + data_content;
  const auto record = decoded(basic_responses, sequence(long_form + ecdsa + signature));
  EXPECT_EQ(long_form, value(record->tbsResponseDataBytes));
}

TEST(BasicOcspResponse, KeepsOnlyWhatWasReadOfTheSignedElement) {
  // Algorithm and signature are inside the data, after its last field, and are found there.
  const Bytes octets = sequence(sequence(data_content + ecdsa + signature));
  const auto record = decoded(basic_responses, octets);
  const Bytes kept = value(record->tbsResponseDataBytes);
  EXPECT_EQ(Bytes(octets.begin() + 3, octets.end() - 12 - 5), kept);
}

TEST(BasicOcspResponse, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(basic_responses);
  asn1_BasicOCSPResponse_free(nullptr);
  expect_sequence_of_definite_length(basic_responses, basic_content);
  expect_every_cut_refused(basic_responses, basic_content);
  expect_huge_lengths_refused(basic_responses, basic_content);
  for (const Bytes &content : {data + signature, data + signature + ecdsa, ecdsa + signature,
                               data + ecdsa + hex("03 02 08 AB"), data + ecdsa + hex("04 01 AB")}) {
    expect_refused(basic_responses, sequence(content));
  }
}

TEST(BasicOcspResponse, FailsWithCertificatesInThePublicForm) {
  for (const Bytes &certs : {element(0xA0, sequence(certificate)), hex("A0 02 30 00"), hex("A0 00"),
                             element(0xA0, element(0x20, sequence(certificate))), hex("A0")}) {
    expect_refused(basic_responses, sequence(basic_content + certs));
  }
}

TEST(BasicOcspResponse, LeavesUnreadWhatIsNoCertificateField) {
  for (const Bytes &rest : {element(0x20, sequence(certificate)),
                            element(0x80, sequence(certificate)), hex("A1 02 30 00")}) {
    const auto record = decoded(basic_responses, sequence(basic_content + rest), rest.size());
    EXPECT_EQ(nullptr, record->certs);
  }
}

TEST(BasicOcspResponse, LeavesTheSignedOctetsToTheCaller) {
  auto *record = decode(asn1_BasicOCSPResponse_d, sequence(basic_content)).record;
  OctetString *octets = record->tbsResponseDataBytes;
  const ReleaseWatch watch(octets, sizeof *octets);
  asn1_BasicOCSPResponse_free(record);
  EXPECT_FALSE(watch.released());
  EXPECT_EQ(data, value(octets));
  asn1_OctetString_free(octets);
}

TEST(BasicOcspResponse, ReleasesTheSignedOctetsWhenItsDecoderFails) {
  for (const Bytes &octets :
       {sequence(data), sequence(data + ecdsa), sequence(data + ecdsa + hex("03 00")),
        sequence(basic_content + hex("A0 02 30 00"))}) {
    expect_nothing_kept([&] { expect_refused(basic_responses, octets); });
  }
}

TEST(BasicOcspResponse, IsClonedWithoutTheSignedOctets) {
  EXPECT_EQ(nullptr, asn1_BasicOCSPResponse_clone(nullptr));

  auto record = decoded(basic_responses, sequence(basic_content));
  record->certs = list_of({decode(asn1_Certificate_d, certificate).record});
  const auto copy = cloned(basic_responses, record);
  record.reset();
  EXPECT_EQ(nullptr, copy->tbsResponseDataBytes);
  EXPECT_STREQ("20260101000000Z", copy->tbsResponseData->producedAt);
  EXPECT_EQ(ecdsa, encode(asn1_AlgId_e, copy->signatureAlgorithm));
  EXPECT_EQ(hex("AB C0"), value(copy->signature));
  ASSERT_EQ(1, List_len(copy->certs));
  EXPECT_EQ(certificate,
            encode(asn1_Certificate_e, static_cast<Certificate *>(List_get(copy->certs, 0))));

  const auto empty = cloned(basic_responses, created(basic_responses));
  EXPECT_EQ(nullptr, empty->tbsResponseData);
  EXPECT_EQ(nullptr, empty->certs);
}

// -------------------------------------------------------------------------------------- ResponseData

TEST(OcspResponseData, HoldsWhatEachFieldSays) {
  const auto record = decoded(response_data, data);
  EXPECT_EQ(0U, asn1_Integer_get(record->version));
  EXPECT_EQ(2, record->responderID->kind);
  EXPECT_EQ(hex("AB CD"), value(static_cast<OctetString *>(record->responderID->value)));
  EXPECT_STREQ("20260101000000Z", record->producedAt);
  ASSERT_EQ(1, List_len(record->responses));
  const auto *first = static_cast<SingleResponse *>(List_get(record->responses, 0));
  EXPECT_EQ(cert_id, encode(asn1_CertID_e, first->certID));
  EXPECT_EQ(sequence(nonce), encode(asn1_Extensions_e, record->responseExtensions));
}

TEST(OcspResponseData, TakesEachCombinationOfOptionalFields) {
  for (unsigned present = 0; present < 8; ++present) {
    const bool version = (present & 1) != 0, named = (present & 2) != 0, ext = (present & 4) != 0;
    const auto record = decoded(
        response_data, sequence((version ? version_1 : Bytes()) + (named ? by_name : by_key) +
                                time_1 + sequence(single) + (ext ? extensions : Bytes())));
    EXPECT_EQ(version, record->version != nullptr);
    EXPECT_EQ(named ? 1 : 2, record->responderID->kind);
    EXPECT_EQ(ext, record->responseExtensions != nullptr);
  }
}

TEST(OcspResponseData, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(response_data);
  expect_sequence_of_definite_length(response_data, data_content);
  expect_every_cut_refused(response_data, data_content, {data_content.size() - extensions.size()});
  expect_huge_lengths_refused(response_data, data_content);
}

TEST(OcspResponseData, TakesAnyVersionAndAnyNumberOfResponses) {
  for (const char *version : {"A0 03 02 01 01", "A0 03 02 01 FF", "A0 04 02 02 01 00"}) {
    decoded(response_data, sequence(hex(version) + by_key + time_1 + sequence(single)));
  }
  for (int count : {0, 2, 5}) {
    Bytes list;
    for (int i = 0; i < count; ++i) list = list + (i % 2 == 0 ? single : full_single);
    const auto record = decoded(response_data, sequence(by_key + time_1 + sequence(list)));
    ASSERT_NE(nullptr, record->responses);
    EXPECT_EQ(count, List_len(record->responses));
  }
}

TEST(OcspResponseData, KeepsALongTimeWhole) {
  const std::string long_time(40, '7');
  const auto record =
      decoded(response_data, sequence(by_key + element(0x18, text(long_time)) + sequence(single)));
  EXPECT_EQ(long_time, record->producedAt);
}

TEST(OcspResponseData, MayEndWithAListOfIndefiniteLength) {
  const Bytes list = hex("30 80") + single + hex("00 00");
  const auto record = decoded(response_data, sequence(by_key + time_1 + list));
  EXPECT_EQ(1, List_len(record->responses));
  expect_refused(response_data, sequence(by_key + time_1 + list + extensions));
  expect_refused(response_data, sequence(by_key + time_1 + hex("30 80") + single));

  const Bytes open_extensions = element(0xA1, hex("30 80") + nonce + hex("00 00"));
  decoded(response_data, sequence(by_key + time_1 + sequence(single) + open_extensions));
}

TEST(OcspResponseData, IsRefusedWithABadOrMisplacedField) {
  for (const Bytes &content : {
           hex("80 03 02 01 00") + by_key + time_1 + sequence(single),  // compared with A0, whole
           hex("A0 00") + by_key + time_1 + sequence(single),
           by_key + version_1 + time_1 + sequence(single),
           hex("04 02 AB CD") + time_1 + sequence(single),
           hex("A3 04 04 02 AB CD") + time_1 + sequence(single),
           by_key + utc_time + sequence(single),
           by_key + sequence(single),
           by_key + time_1 + element(0x31, single),
           by_key + time_1 + single,
           by_key + time_1 + sequence(single + hex("05 00")),
           by_key + time_1 + sequence(single) + hex("A1 00"),
           by_key + time_1 + sequence(single) + hex("A1 02 31 00"),
           by_key + time_1 + sequence(single) + hex("A1 04 30 02 05 00"),
           by_key + time_1 + sequence(single) + hex("A1 80 30 00 00 00"),
       }) {
    expect_refused(response_data, sequence(content));
  }
}

TEST(OcspResponseData, FailsWithEachBadSingleResponse) {
  const Bytes bad = sequence(cert_id + hex("83 00") + time_1);
  for (const Bytes &list : {bad, bad + single, single + bad, single + single + bad}) {
    expect_refused(response_data, sequence(by_key + time_1 + sequence(list)));
    expect_refused(basic_responses,
                   sequence(sequence(by_key + time_1 + sequence(list)) + ecdsa + signature));
  }
}

TEST(OcspResponseData, LooksForItsExtensionsUnderA1Only) {
  for (const Bytes &rest : {hex("81 02 30 00"), hex("A0 02 30 00"), hex("A2 02 30 00")}) {
    const auto record =
        decoded(response_data, sequence(by_key + time_1 + sequence(single) + rest), rest.size());
    EXPECT_EQ(nullptr, record->responseExtensions);
  }
}

TEST(OcspResponseData, LooksForNoFieldBehindItsContent) {
  expect_refused(response_data, hex("30 00"));
  expect_refused(response_data, hex("30 00") + version_1 + by_key);
  decoded(response_data, sequence(by_key + time_1 + sequence(single)) + extensions,
          extensions.size());
}

TEST(OcspResponseData, IsClonedDeeplyAndHalfFilled) {
  EXPECT_EQ(nullptr, asn1_ResponseData_clone(nullptr));

  auto record = decoded(response_data, data);
  const auto copy = cloned(response_data, record);
  record.reset();
  EXPECT_EQ(0U, asn1_Integer_get(copy->version));
  EXPECT_EQ(2, copy->responderID->kind);
  EXPECT_STREQ("20260101000000Z", copy->producedAt);
  ASSERT_EQ(1, List_len(copy->responses));
  const auto *first = static_cast<SingleResponse *>(List_get(copy->responses, 0));
  EXPECT_STREQ("20270101000000Z", first->nextUpdate);
  EXPECT_EQ(sequence(nonce), encode(asn1_Extensions_e, copy->responseExtensions));

  const auto half = created(response_data);
  half->producedAt = asn1_GeneralizedTime_clone("x");
  half->responses = List_new(0);
  const auto copy_of_half = cloned(response_data, half);
  EXPECT_EQ(nullptr, copy_of_half->version);
  EXPECT_EQ(nullptr, copy_of_half->responderID);
  EXPECT_STREQ("x", copy_of_half->producedAt);
  EXPECT_EQ(0, List_len(copy_of_half->responses));
}

TEST(OcspResponseData, IsNotClonedWithAResponderOfNoKind) {
  const auto record = created(response_data);
  record->producedAt = asn1_GeneralizedTime_clone("x");
  record->responderID = asn1_ResponderID_new();
  EXPECT_EQ(nullptr, asn1_ResponseData_clone(record.get()));
}

// --------------------------------------------------------------------------------------- ResponderID

TEST(OcspResponder, IsANameOrAKey) {
  const auto named = decoded(responder_ids, by_name);
  EXPECT_EQ(1, named->kind);
  EXPECT_EQ(name, encode(asn1_RDNSequence_e, static_cast<RDNSequence *>(named->value)));

  const auto keyed = decoded(responder_ids, by_key);
  EXPECT_EQ(2, keyed->kind);
  EXPECT_EQ(hex("AB CD"), value(static_cast<OctetString *>(keyed->value)));
}

TEST(OcspResponder, MayHaveItsTagInPrimitiveFormAndAnEmptyName) {
  EXPECT_EQ(2, decoded(responder_ids, hex("82 04 04 02 AB CD"))->kind);
  const auto named = decoded(responder_ids, hex("81 02 30 00"));
  EXPECT_EQ(1, named->kind);
  EXPECT_EQ(0, List_len(static_cast<RDNSequence *>(named->value)));
}

TEST(OcspResponder, MayLeaveOctetsInsideItsTag) {
  decoded(responder_ids, hex("A2 06 04 02 AB CD 05 00"), 2);
}

TEST(OcspResponder, IsRefusedForAnyOtherTagOrContent) {
  for (const char *octets : {"",
                             "A0 04 04 02 AB CD",
                             "A3 04 04 02 AB CD",
                             "BF 04 04 02 AB CD",
                             "02 01 05",
                             "04 02 AB CD",
                             "01 01 FF",
                             "42 04 04 02 AB CD",
                             "E2 04 04 02 AB CD",
                             "22 04 04 02 AB CD",
                             "A1",
                             "A1 00",
                             "A2 00",
                             "A1 02 31 00",
                             "A2 02 30 00",
                             "A1 02 04 00",
                             "A2 80 04 00 00 00",
                             "A2 05 04 02 AB CD",
                             "A2 04 04 03 AB CD",
                             "A2 06 04 84 80 00 00 00"}) {
    SCOPED_TRACE(octets);
    expect_refused(responder_ids, hex(octets));
  }
}

TEST(OcspResponder, TakesAnImplicitTagWhoseLowOctetIsZero) {
  EXPECT_EQ(2, decoded(responder_ids, by_key, 0, 0x100)->kind);
}

TEST(OcspResponder, IsClonedByItsKind) {
  EXPECT_EQ(nullptr, asn1_ResponderID_clone(nullptr));

  auto keyed = decoded(responder_ids, by_key);
  const auto copy = cloned(responder_ids, keyed);
  keyed.reset();
  EXPECT_EQ(2, copy->kind);
  EXPECT_EQ(hex("AB CD"), value(static_cast<OctetString *>(copy->value)));

  // The copy of a structured name has its structure, but not the tags of its values.
  auto named = decoded(responder_ids, by_name);
  const auto copy_of_named = cloned(responder_ids, named);
  named.reset();
  EXPECT_EQ(1, copy_of_named->kind);
  EXPECT_EQ(hex("30 0C 31 0A 30 08 06 03 55 04 03 00 01 78"),
            encode(asn1_RDNSequence_e, static_cast<RDNSequence *>(copy_of_named->value)));
}

TEST(OcspResponder, WithoutAValueIsClonedWithItsKindOnly) {
  const auto record = created(responder_ids);
  for (const uint8_t kind : Bytes{1, 2}) {
    record->kind = kind;
    const auto copy = cloned(responder_ids, record);
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(kind, copy->kind);
    EXPECT_EQ(nullptr, copy->value);
  }
}

TEST(OcspResponder, OfAnUnknownKindIsNotClonedAndKeepsItsValueWhenReleased) {
  uint8_t not_owned = 7;
  for (const uint8_t kind : Bytes{0, 3, 255}) {
    const auto record = created(responder_ids);
    EXPECT_EQ(0, record->kind);
    EXPECT_EQ(nullptr, record->value);
    record->kind = kind;
    record->value = &not_owned;
    EXPECT_EQ(nullptr, asn1_ResponderID_clone(record.get()));
  }
  EXPECT_EQ(7, not_owned);
  asn1_ResponderID_free(nullptr);
}

// ------------------------------------------------------------------------------------ OCSPCertStatus

const Bytes revoked_content = time_1 + hex("A0 03 0A 01 01");

TEST(OcspCertStatus, OfEachKindInBothFormsOfItsTag) {
  const struct {
    Bytes octets;
    uint8_t kind;
  } rows[] = {
      {hex("80 00"), 0},
      {hex("A0 00"), 0},
      {hex("82 00"), 2},
      {hex("A2 00"), 2},
      {element(0xA1, revoked_content), 1},
      {element(0x81, revoked_content), 1},
  };
  for (const auto &row : rows) {
    const auto record = decoded(cert_statuses, row.octets);
    EXPECT_EQ(row.kind, record->kind);
    EXPECT_EQ(row.kind == 1, record->value != nullptr);
    if (record->value == nullptr) continue;
    const auto *info = static_cast<RevokedInfo *>(record->value);
    EXPECT_STREQ("20260101000000Z", info->revocationTime);
    EXPECT_EQ(1U, info->revocationReason);
  }
}

TEST(OcspCertStatus, DoesNotLookAtTheLengthOfNull) {
  EXPECT_EQ(0, decoded(cert_statuses, hex("80 01 FF"), 1)->kind);
  EXPECT_EQ(2, decoded(cert_statuses, hex("82 02 05 00"), 2)->kind);
}

TEST(OcspCertStatus, IsRefusedForAnyOtherTagOrContent) {
  for (const char *octets : {"",      "83 00", "A3 00", "84 00", "9F 00", "05 00", "00 00",
                             "02 00", "C0 00", "40 00", "E2 00", "20 00", "80",    "80 01",
                             "80 80", "82 85", "A1",    "A1 00", "A1 80", "21 00", "01 01 00"}) {
    SCOPED_TRACE(octets);
    expect_refused(cert_statuses, hex(octets));
  }
  expect_refused(cert_statuses, element(0xA1, utc_time));
  expect_refused(cert_statuses, element(0xA1, sequence(revoked_content)));
}

TEST(OcspCertStatus, DoesNotLookAtTheTextOfATime) {
  const auto record = decoded(cert_statuses, hex("A1 02 18 00"));
  EXPECT_STREQ("", static_cast<RevokedInfo *>(record->value)->revocationTime);
}

TEST(OcspCertStatus, TakesAnImplicitTagWhoseLowOctetIsZero) {
  EXPECT_EQ(0, decoded(cert_statuses, good, 0, 0xA000)->kind);
}

TEST(OcspCertStatus, IsClonedByItsKind) {
  EXPECT_EQ(nullptr, asn1_OCSPCertStatus_clone(nullptr));

  auto revoked = decoded(cert_statuses, element(0xA1, revoked_content));
  const auto copy = cloned(cert_statuses, revoked);
  revoked.reset();
  EXPECT_EQ(1, copy->kind);
  EXPECT_STREQ("20260101000000Z", static_cast<RevokedInfo *>(copy->value)->revocationTime);
  EXPECT_EQ(1U, static_cast<RevokedInfo *>(copy->value)->revocationReason);

  const auto empty = created(cert_statuses);
  EXPECT_EQ(0, empty->kind);
  EXPECT_EQ(nullptr, empty->value);
  empty->kind = 1;
  const auto copy_of_empty = cloned(cert_statuses, empty);
  EXPECT_EQ(1, copy_of_empty->kind);
  EXPECT_EQ(nullptr, copy_of_empty->value);
}

TEST(OcspCertStatus, WithoutAValueTypeKeepsToItsKind) {
  // Good and unknown have no value: the pointer is neither copied nor released.
  uint8_t not_owned = 7;
  for (const uint8_t kind : Bytes{0, 2}) {
    const auto record = created(cert_statuses);
    record->kind = kind;
    record->value = &not_owned;
    const auto copy = cloned(cert_statuses, record);
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(kind, copy->kind);
    EXPECT_EQ(nullptr, copy->value);
  }
  EXPECT_EQ(7, not_owned);
}

TEST(OcspCertStatus, OfAnUnknownKindIsNotClonedAndKeepsItsValueWhenReleased) {
  uint8_t not_owned = 7;
  for (const uint8_t kind : Bytes{3, 4, 255}) {
    const auto record = created(cert_statuses);
    record->kind = kind;
    record->value = &not_owned;
    EXPECT_EQ(nullptr, asn1_OCSPCertStatus_clone(record.get()));
  }
  EXPECT_EQ(7, not_owned);
  asn1_OCSPCertStatus_free(nullptr);
}

// --------------------------------------------------------------------------------------- RevokedInfo

TEST(OcspRevokedInfo, HoldsAReasonOfZeroWhereThereIsNone) {
  const struct {
    const char *octets;
    uint32_t reason;
  } rows[] = {
      {"", 0}, {"A0 03 0A 01 00", 0}, {"A0 00", 0}, {"A0 03 0A 01 01", 1}, {"A0 03 0A 01 FF", 255}};
  for (const auto &row : rows) {
    const auto record = decoded(revoked_infos, sequence(time_1 + hex(row.octets)));
    EXPECT_STREQ("20260101000000Z", record->revocationTime) << row.octets;
    EXPECT_EQ(row.reason, record->revocationReason) << row.octets;
  }
}

TEST(OcspRevokedInfo, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(revoked_infos, revoked_content);
  expect_every_cut_refused(revoked_infos, revoked_content, {time_1.size()});
  expect_huge_lengths_refused(revoked_infos, revoked_content);

  const auto record = created(revoked_infos);
  EXPECT_EQ(nullptr, record->revocationTime);
  EXPECT_EQ(0U, record->revocationReason);
  asn1_RevokedInfo_free(nullptr);
}

TEST(OcspRevokedInfo, IsRefusedWithABadField) {
  for (const Bytes &content :
       {utc_time, hex("A0 03 0A 01 01"), time_1 + hex("A0"), time_1 + hex("A0 04 0A 02 00 01"),
        time_1 + hex("A0 02 0A 00"), time_1 + hex("A0 03 02 01 01"), time_1 + hex("A0 80"),
        hex("38 00"), hex("18 80 00 00"), hex("18 84 80 00 00 00")}) {
    expect_refused(revoked_infos, sequence(content));
  }
}

TEST(OcspRevokedInfo, LeavesUnreadWhatIsNoReason) {
  for (const char *rest : {"80 03 0A 01 01", "A1 03 0A 01 01", "0A 01 01"}) {
    const auto record = decoded(revoked_infos, sequence(time_1 + hex(rest)), hex(rest).size());
    EXPECT_EQ(0U, record->revocationReason) << rest;
  }
}

TEST(OcspRevokedInfo, IsClonedWithItsReason) {
  EXPECT_EQ(nullptr, asn1_RevokedInfo_clone(nullptr));
  auto record = decoded(revoked_infos, sequence(revoked_content));
  const auto copy = cloned(revoked_infos, record);
  record.reset();
  EXPECT_STREQ("20260101000000Z", copy->revocationTime);
  EXPECT_EQ(1U, copy->revocationReason);

  const auto half = created(revoked_infos);
  half->revocationReason = 300;
  const auto copy_of_half = cloned(revoked_infos, half);
  EXPECT_EQ(nullptr, copy_of_half->revocationTime);
  EXPECT_EQ(300U, copy_of_half->revocationReason);
}

// ------------------------------------------------------------------------------------ SingleResponse

TEST(OcspSingleResponse, TakesEachCombinationOfOptionalFields) {
  for (unsigned present = 0; present < 4; ++present) {
    const bool next = (present & 1) != 0, ext = (present & 2) != 0;
    const auto record = decoded(single_responses,
                                sequence(cert_id + good + time_1 + (next ? next_update : Bytes()) +
                                         (ext ? extensions : Bytes())));
    EXPECT_EQ(cert_id, encode(asn1_CertID_e, record->certID));
    EXPECT_EQ(0, record->certStatus->kind);
    EXPECT_STREQ("20260101000000Z", record->thisUpdate);
    EXPECT_STREQ(next ? "20270101000000Z" : nullptr, record->nextUpdate);
    EXPECT_EQ(ext, record->singleExtensions != nullptr);
    if (ext) {
      EXPECT_EQ(sequence(nonce), encode(asn1_Extensions_e, record->singleExtensions));
    }
  }
}

TEST(OcspSingleResponse, TellsTheStatusByItsOctet) {
  const auto status = [](const Bytes &octets) {
    const auto record = decoded(single_responses, sequence(cert_id + octets + time_1));
    EXPECT_EQ(record->certStatus->kind == 1, record->certStatus->value != nullptr);
    return record->certStatus->kind;
  };
  EXPECT_EQ(0, status(hex("80 00")));
  EXPECT_EQ(0, status(hex("A0 00")));
  EXPECT_EQ(1, status(element(0xA1, revoked_content)));
  EXPECT_EQ(2, status(hex("82 00")));
  for (const Bytes &octets : {hex("83 00"), hex("81 00"), hex("05 00"), hex("80 01 FF"), Bytes()}) {
    expect_refused(single_responses, sequence(cert_id + octets + time_1));
  }
}

TEST(OcspSingleResponse, IsASequenceOfDefiniteLength) {
  const Bytes required = cert_id + good + time_1;
  const Bytes content = required + next_update + extensions;
  expect_new_record_is_zero(single_responses);
  expect_sequence_of_definite_length(single_responses, content);
  expect_every_cut_refused(single_responses, content,
                           {required.size(), required.size() + next_update.size()});
  expect_huge_lengths_refused(single_responses, content);
}

TEST(OcspSingleResponse, IsRefusedWithABadField) {
  const Bytes required = cert_id + good + time_1;
  for (const Bytes &content :
       {good + time_1, cert_id + time_1, cert_id + good, cert_id + good + utc_time,
        cert_id + good + next_update, required + hex("A0"), required + hex("A0 00"),
        required + element(0xA0, utc_time), required + hex("A1 00"), required + hex("A1 02 31 00"),
        required + hex("A1 04 30 02 05 00"), required + hex("A1 80 30 00 00 00"),
        required + next_update + hex("A1 00")}) {
    expect_refused(single_responses, sequence(content));
  }
}

TEST(OcspSingleResponse, LeavesUnreadWhatComesOutOfOrderOrIsUnknown) {
  const Bytes required = cert_id + good + time_1;
  const struct {
    Bytes known, rest;
  } rows[] = {
      {{}, element(0x80, time_2)},
      {{}, hex("A2 00")},
      {extensions, next_update},
      {extensions, extensions},
      {next_update, next_update},
      {next_update, element(0x81, sequence(nonce))},
      {next_update + extensions, hex("00")},
  };
  for (const auto &row : rows) {
    decoded(single_responses, sequence(required + row.known + row.rest), row.rest.size());
  }
  // The decoder does not check whether the time fills the tag around it.
  const auto record =
      decoded(single_responses, sequence(required + element(0xA0, time_2 + extensions)));
  EXPECT_NE(nullptr, record->nextUpdate);
  EXPECT_NE(nullptr, record->singleExtensions);
}

TEST(OcspSingleResponse, LooksForNoFieldBehindItsContent) {
  const auto record = decoded(single_responses, single + next_update + extensions,
                              next_update.size() + extensions.size());
  EXPECT_EQ(nullptr, record->nextUpdate);
  EXPECT_EQ(nullptr, record->singleExtensions);
}

TEST(OcspSingleResponse, IsClonedDeeplyAndHalfFilled) {
  EXPECT_EQ(nullptr, asn1_SingleResponse_clone(nullptr));

  auto record = decoded(single_responses, full_single);
  const auto copy = cloned(single_responses, record);
  record.reset();
  EXPECT_EQ(cert_id, encode(asn1_CertID_e, copy->certID));
  EXPECT_EQ(0, copy->certStatus->kind);
  EXPECT_STREQ("20260101000000Z", copy->thisUpdate);
  EXPECT_STREQ("20270101000000Z", copy->nextUpdate);
  EXPECT_EQ(sequence(nonce), encode(asn1_Extensions_e, copy->singleExtensions));

  const auto half = created(single_responses);
  half->nextUpdate = asn1_GeneralizedTime_clone("x");
  const auto copy_of_half = cloned(single_responses, half);
  EXPECT_EQ(nullptr, copy_of_half->certID);
  EXPECT_EQ(nullptr, copy_of_half->certStatus);
  EXPECT_STREQ("x", copy_of_half->nextUpdate);
}

TEST(OcspSingleResponse, IsNotClonedWithAStatusOfNoKind) {
  const auto record = decoded(single_responses, full_single);
  record->certStatus->kind = 9;
  EXPECT_EQ(nullptr, asn1_SingleResponse_clone(record.get()));
}

// -------------------------------------------------------------------------------- response of a peer

// Made by the openssl command for a revoked certificate, without certificates of its own.
const Bytes made_by_openssl = hex(
    "308201410a0100a082013a3082013606092b060105050730010104820127308201233081caa21604144d06455a9d"
    "6716dc64a20ec0ca7d7dc35d272d78180f32303236313132313139353931305a307a3078303a300906052b0e0302"
    "1a0500041411048cd20cb3592307d019fd0889562b62d3649204144d06455a9d6716dc64a20ec0ca7d7dc35d272d"
    "78020105a116180f32303236303130313030303030305aa0030a0101180f32303236313132313139353931305aa0"
    "11180f32303236313132313230353931305aa1233021301f06092b060105050730010204120410c8215a72fb7384"
    "23724f1eedcf7c46c0300a06082a8648ce3d04030203480030450221008d29e209c14c045872a9beb2a92af5cfce"
    "1cbc2e3ff501237a67a23a3320aba8022063289b69e743ea0d094c2e8811809f169b30db220434a074fc4f3dd8f9"
    "8989ac");

TEST(PeerOcspResponse, OfOpensslHoldsWhatItsMakerPutIn) {
  const auto response = decoded(responses, made_by_openssl);
  EXPECT_EQ(0U, response->responseStatus);
  const auto *bytes = response->responseBytes;
  ASSERT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_pkix_ocsp_basic(), bytes->responseType));

  const auto basic = decoded(basic_responses, value(bytes->response));
  const ResponseData *signed_data = basic->tbsResponseData;
  const Bytes key = hex("4D06455A9D6716DC64A20EC0CA7D7DC35D272D78");
  EXPECT_EQ(nullptr, signed_data->version);
  EXPECT_EQ(2, signed_data->responderID->kind);
  EXPECT_EQ(key, value(static_cast<OctetString *>(signed_data->responderID->value)));
  EXPECT_STREQ("20261121195910Z", signed_data->producedAt);
  EXPECT_EQ(1, List_len(signed_data->responseExtensions));
  EXPECT_EQ(71U * 8, basic->signature->length);

  ASSERT_EQ(1, List_len(signed_data->responses));
  const auto *about = static_cast<SingleResponse *>(List_get(signed_data->responses, 0));
  EXPECT_EQ(key, value(about->certID->issuerKeyHash));
  EXPECT_EQ(5U, asn1_Integer_get(about->certID->serialNumber));
  ASSERT_EQ(1, about->certStatus->kind);
  const auto *info = static_cast<RevokedInfo *>(about->certStatus->value);
  EXPECT_STREQ("20260101000000Z", info->revocationTime);
  EXPECT_EQ(1U, info->revocationReason);  // keyCompromise
  EXPECT_STREQ("20261121195910Z", about->thisUpdate);
  EXPECT_STREQ("20261121205910Z", about->nextUpdate);
  EXPECT_EQ(nullptr, about->singleExtensions);

  // The signed element has 202 octets of content after a header of three.
  const Bytes octets = value(bytes->response);
  EXPECT_EQ(Bytes(octets.begin() + 4, octets.begin() + 4 + 205),
            value(basic->tbsResponseDataBytes));
}

// --------------------------------------------------------------------------------------------- trace

TEST(OcspResponseTrace, ShowsEveryField) {
  const Bytes revoked = sequence(cert_id + element(0xA1, revoked_content) + time_1 + next_update);
  const Bytes octets =
      sequence(sequence(version_1 + by_key + time_1 + sequence(revoked + single) + extensions) +
               ecdsa + signature);
  const Lines id = {
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
  };
  Lines expected = {
      "SEQUENCE {",
      ". SEQUENCE {",
      ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . INTEGER",
      ". .  0",
      ". . . CONTEXT-SPECIFIC CONSTRUCTED [2] {",
      ". . . OCTETSTRING",
      ". . . " + dump("AB CD ", ".."),
      ". . }",
      ". . GENERALIZEDTIME ",
      ". .   \"20260101000000Z\"",
      ". . SEQUENCE {",
      ". . . SEQUENCE {",
  };
  const auto append = [&](const Lines &lines) {
    expected.insert(expected.end(), lines.begin(), lines.end());
  };
  append(id);
  append({
      ". . . . . CONTEXT-SPECIFIC CONSTRUCTED [1] {",
      ". . . . . . GENERALIZEDTIME ",
      ". . . . . .   \"20260101000000Z\"",
      ". . . . . . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . . . . . ENUMERATED ",
      ". . . . . .   1",
      ". . . . . }",
      ". . . . }",
      ". . . . GENERALIZEDTIME ",
      ". . . .   \"20260101000000Z\"",
      ". . . . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . . . GENERALIZEDTIME ",
      ". . . .   \"20270101000000Z\"",
      ". . . }",
      ". . . SEQUENCE {",
  });
  append(id);
  append({
      ". . . . . CONTEXT-SPECIFIC PRIMITIVE [0] NULL",
      ". . . . }",
      ". . . . GENERALIZEDTIME ",
      ". . . .   \"20260101000000Z\"",
      ". . . }",
      ". . }",
      ". . CONTEXT-SPECIFIC CONSTRUCTED [1] {",
      ". . SEQUENCE {",
      ". . . SEQUENCE {",
      ". . . . OBJECT IDENTIFIER ",
      ". . . .   1.3.6.1.5.5.7.48.1.2",
      ". . . . OCTETSTRING",
      ". . . . " + dump("AB CD ", ".."),
      ". . . }",
      ". . }",
      ". }",
      ". SEQUENCE {",
      ". . OBJECT IDENTIFIER ",
      ". .   1.2.840.10045.4.3.2",
      ". }",
      ". BITSTRING",
      ".   (0 unused bits)",
      ". " + dump("AB C0 ", ".."),
      "}",
  });
  EXPECT_EQ(expected, traced(basic_responses, octets));
}

TEST(OcspResponseTrace, ShowsAStatusThatIsNotThere) {
  EXPECT_EQ((Lines{"SEQUENCE {", ".   0", "}"}), traced(responses, hex("30 00")));
  EXPECT_EQ((Lines{"SEQUENCE {", ". ENUMERATED ", ".   6", "}"}),
            traced(responses, hex("30 03 0A 01 06")));
}

TEST(OcspResponseTrace, ShowsTheOctetsOfAResponse) {
  const Lines expected = {
      "SEQUENCE {",
      ". ENUMERATED ",
      ".   0",
      ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". SEQUENCE {",
      ". . OBJECT IDENTIFIER ",
      ". .   1.2",
      ". . OCTETSTRING",
      ". . " + dump("41 42 ", "AB"),
      ". }",
      "}",
  };
  EXPECT_EQ(expected, traced(responses, hex("30 0E 0A 01 00 A0 09 30 07 06 01 2A 04 02 41 42")));
}

TEST(OcspResponseTrace, ClosesAChoiceOneLevelAboveItsAlternative) {
  EXPECT_EQ((Lines{". CONTEXT-SPECIFIC CONSTRUCTED [1] {", ". SEQUENCE {", ". }", "}"}),
            traced(responder_ids, hex("A1 02 30 00")));
  EXPECT_EQ((Lines{". CONTEXT-SPECIFIC CONSTRUCTED [2] NULL", "}"}),
            traced(cert_statuses, hex("A2 00")));
}

TEST(OcspResponseTrace, SaysNothingOfARefusedChoice) {
  EXPECT_EQ(Lines{}, traced(responder_ids, hex("A3 00")));
  EXPECT_EQ(Lines{}, traced(responder_ids, hex("02 00")));
  EXPECT_EQ(Lines{}, traced(cert_statuses, hex("83 00")));
}

TEST(OcspResponseTrace, SaysNothingOfCertificatesThatAreRefused) {
  Lines expected = traced(basic_responses, sequence(basic_content));
  ASSERT_EQ("}", expected.back());
  expected.pop_back();
  ASSERT_EQ(". " + dump("AB C0", ".."), expected.back());
  for (const Bytes &certs : {element(0xA0, sequence(certificate)), hex("A0 02 30 00"), hex("A0"),
                             element(0xA0, element(0x20, sequence(certificate)))}) {
    EXPECT_EQ(expected, traced(basic_responses, sequence(basic_content + certs)));
  }
}

TEST(OcspResponseTrace, IsSilentAtDepthZero) {
  EXPECT_EQ(Lines{}, traced(basic_responses, sequence(basic_content), 0));
  EXPECT_EQ(Lines{}, traced(responses, made_by_openssl, 0));
}

// ------------------------------------------------------------------------------- ends of the process

TEST(OcspResponseDeathTest, ChoicesAssertThatNoImplicitTagIsGiven) {
  const testing::KilledBySignal aborted(SIGABRT);
  const Input key(by_key);
  const Input status(good);
  ResponderID *responder = nullptr;
  OCSPCertStatus *of_cert = nullptr;
  for (const uint32_t impl_tag : {1U, 0x80U, 0xA2U, 0x1FFU}) {
    EXPECT_EXIT(asn1_ResponderID_d(key.z(), key.end(), impl_tag, &responder, 0), aborted,
                assert_line("asn1_ResponderID_d", "impl_tag == 0", "asn1_ocsp"));
    EXPECT_EXIT(asn1_OCSPCertStatus_d(status.z(), status.end(), impl_tag, &of_cert, 0), aborted,
                assert_line("asn1_OCSPCertStatus_d", "impl_tag == 0", "asn1_ocsp"));
  }
}

TEST(OcspResponseDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(responses);
  expect_decoder_asserts_its_cursors(response_bytes);
  expect_decoder_asserts_its_cursors(basic_responses);
  expect_decoder_asserts_its_cursors(response_data);
  expect_decoder_asserts_its_cursors(single_responses);
  expect_decoder_asserts_its_cursors(revoked_infos);
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(OcspResponseMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(
      responses, sequence(hex("0A 01 00") + element(0xA0, sequence(bytes_content))));
  expect_exhausted_memory_to_fail(response_bytes, sequence(bytes_content));
  expect_exhausted_memory_to_fail(basic_responses, sequence(basic_content));
  expect_exhausted_memory_to_fail(response_data, data);
  expect_exhausted_memory_to_fail(responder_ids, by_name);
  expect_exhausted_memory_to_fail(single_responses, full_single);
  expect_exhausted_memory_to_fail(cert_statuses, element(0xA1, revoked_content));
  expect_exhausted_memory_to_fail(revoked_infos, sequence(revoked_content));
}

}  // namespace

}  // namespace ocsp_response_test
