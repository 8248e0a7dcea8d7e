// Tests the forms of RFC 6960 against the openssl tool: what the tool makes is read and written back
// octet for octet, certificates included, and what the library writes the tool prints and verifies.
#include <orvelpki.h>

#include "revocation.h"

namespace rfc6960_test {

namespace {

using namespace support;

using RequestPointer = Owned<OCSPRequest, pki_OCSPRequest_free>;
using ResponsePointer = Owned<OCSPResponse, pki_OCSPResponse_free>;
using BasicPointer = Owned<BasicOCSPResponse, pki_BasicOCSPResponse_free>;

/// Returns the octets of the authority's certificate, and those of its subject.
Bytes authority_octets(const std::string &kind) {
  openssl("x509 -outform DER -out authority.der -in " + authority(kind));
  return read_file("authority.der");
}
Bytes authority_subject(const std::string &kind) {
  authority_octets(kind);
  return take_apart("authority.der").parts.at(0).parts.at(5).whole;
}

/// Releases the octets that were kept, so that the encoder writes the fields.
void forget_stored(List *certificates) {
  for (const Certificate *certificate : elements_of<Certificate>(certificates)) {
    auto *const record = const_cast<Certificate *>(certificate);
    release(asn1_OctetString_free, record->tbsEncoded);
    release(asn1_OctetString_free, record->tbsCertificate->issuerEncoded);
    release(asn1_OctetString_free, record->tbsCertificate->subjectEncoded);
  }
}

/// Checks that the tool's signature covers these octets.
void expect_verified(const Bytes &octets, const BitString *signature, const std::string &kind,
                     const std::string &options) {
  write_file("signed_octets", octets);
  write_file("signature", value(signature));
  EXPECT_EQ(
      "Signature Verified Successfully\n",
      openssl("pkeyutl -verify -rawin -in signed_octets -sigfile signature -pubin -keyform DER"
              " -inkey " +
              kind + ".spki " + options));
}

Lines identifier_lines(const CertID *id) {
  static const std::map<std::string, std::string> hashes = {{"1.3.14.3.2.26", "sha1"},
                                                            {"2.16.840.1.101.3.4.2.1", "sha256"},
                                                            {"2.16.840.1.101.3.4.2.2", "sha384"},
                                                            {"2.16.840.1.101.3.4.2.3", "sha512"}};
  return {"Certificate ID:",
          "Hash Algorithm: " + hashes.at(identifier_text(id->hashAlgorithm->algorithm)),
          "Issuer Name Hash: " + upper_hex(value(id->issuerNameHash)),
          "Issuer Key Hash: " + upper_hex(value(id->issuerKeyHash)),
          "Serial Number: " + serial_text(id->serialNumber)};
}

/* ------------------------------------------------------------------------------------------- */
/* Requests                                                                                      */
/* ------------------------------------------------------------------------------------------- */

struct Asked {
  const char *name;
  const char *key;
  const char *arguments;
  int32_t requests;
  int32_t certificates;  ///< of the signature; -1 where there is none
};

void PrintTo(const Asked &asked, std::ostream *out) { *out << asked.name; }

const Asked asked[] = {
    {"OneSerialNumber", "ec", "-no_nonce -serial 1", 1, -1},
    {"Nonce", "ec", "-nonce -serial 1", 1, -1},
    {"SerialNumbersAndHashes", "ec",
     "-nonce -serial 0 -sha256 -serial 128 -sha384 -serial -129 -sha512 -serial"
     " 0xFFEEDDCCBBAA99887766554433221100FFEEDDCC",
     4, -1},
    {"SignedWithoutCertificates", "ec",
     "-nonce -serial 1 -signer ec_authority.pem -signkey ec.pem"
     " -no_certs",
     1, 0},
    {"SignedWithItsCertificate", "ec",
     "-nonce -serial 1 -serial 2 -signer ec_authority.pem -signkey ec.pem", 2, 1},
    {"SignedWithMoreCertificates", "rsa",
     "-no_nonce -serial 1 -signer rsa_authority.pem -signkey rsa.pem -sign_other ec_authority.pem",
     1, 2},
};

class RequestFormOfOpenssl : public testing::TestWithParam<Asked> {};

TEST_P(RequestFormOfOpenssl, ReadsAsItIsReportedAndComesBack) {
  const Asked &row = GetParam();
  authority("ec");
  openssl("ocsp -issuer " + authority(row.key) + " -reqout request.der " + row.arguments);
  const Bytes der = read_file("request.der");
  const RequestPointer request = record_of<pki_OCSPRequest_free>(pki_OCSPRequest_d, der);
  const RequestPointer copy(pki_OCSPRequest_clone(request.get()));

  const TBSRequest *const tbs = request->tbsRequest;
  EXPECT_EQ(row.requests, List_len(tbs->requestList));
  Lines lines;
  for (const Request *single : elements_of<Request>(tbs->requestList))
    lines = lines + identifier_lines(single->reqCert);
  expect_same_lines(section("Requestor List:", openssl("ocsp -req_text -reqin request.der"),
                            {"Request Extensions:", "Signature Algorithm:"}),
                    lines);

  const OCSPSignature *const signature = request->optionalSignature;
  ASSERT_EQ(row.certificates >= 0, signature != nullptr);
  if (signature != nullptr) {
    ASSERT_EQ(4, tbs->requestorName->kind);
    EXPECT_EQ(
        authority_subject(row.key),
        encode(pki_RDNSequence_e, static_cast<const RDNSequence *>(tbs->requestorName->value)));
    const auto certificates = elements_of<Certificate>(signature->certs);
    ASSERT_EQ(static_cast<size_t>(row.certificates), certificates.size());
    if (!certificates.empty()) {
      EXPECT_EQ(authority_octets(row.key), encode(pki_Certificate_e, certificates[0]));
    }
    expect_verified(encode(pki_TBSRequest_e, tbs), signature->signature, row.key, "-digest sha256");
    forget_stored(signature->certs);
  }
  EXPECT_EQ(der, encode(pki_OCSPRequest_e, request.get()));
  EXPECT_EQ(der, encode(pki_OCSPRequest_e, copy.get()));
}

INSTANTIATE_TEST_SUITE_P(Shapes, RequestFormOfOpenssl, testing::ValuesIn(asked),
                         [](const auto &row) { return std::string(row.param.name); });

/// Returns the identifier of a serial number under the authority, as the tool makes it.
CertID *identifier_by_the_tool(const std::string &kind, const std::string &serial) {
  openssl("ocsp -no_nonce -issuer " + authority(kind) + " -reqout identifier.der -serial " +
          serial);
  const RequestPointer request =
      record_of<pki_OCSPRequest_free>(pki_OCSPRequest_d, read_file("identifier.der"));
  return pki_CertID_clone(elements_of<Request>(request->tbsRequest->requestList).at(0)->reqCert);
}

Extensions *extensions_of(std::initializer_list<std::pair<const ObjId *, Bytes>> values) {
  Extensions *const list = List_new(0);
  for (const auto &[id, octets] : values)
    EXPECT_EQ(1, List_append(list, extension(id, 0, octets), 0));
  return list;
}

RDNSequence *subject_of(const std::string &kind) {
  return record_of<pki_RDNSequence_free>(pki_RDNSequence_d, authority_subject(kind)).release();
}

List *certificates_of(const std::string &kind) {
  return owning_list(
      {record_of<pki_Certificate_free>(pki_Certificate_d, authority_octets(kind)).release()});
}

const Bytes nonce_octets = hex("00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F");

Bytes nonce_value() {
  const Owned<OctetString, pki_Nonce_free> nonce(octet_string(nonce_octets));
  return encode(pki_Nonce_e, nonce.get());
}

Bytes locator_value() {
  const Owned<pki_ServiceLocator, pki_ServiceLocator_free> locator(pki_ServiceLocator_new());
  AccessDescription *const access = pki_AccessDescription_new();
  access->accessMethod = asn1_ObjId_clone(asn1_Get_id_pkix_ocsp());
  access->accessLocation = pki_GeneralName_new();
  access->accessLocation->kind = 6;
  access->accessLocation->value = octet_string(text("http://ocsp.example/"));
  locator->issuer = subject_of("ec");
  locator->locator = owning_list({access});
  return encode(pki_ServiceLocator_e, locator.get());
}

Bytes acceptable_value() {
  const Owned<List, pki_AcceptableResponses_free> list(
      owning_list({asn1_ObjId_clone(asn1_Get_id_pkix_ocsp_basic())}));
  return encode(pki_AcceptableResponses_e, list.get());
}

/// Makes a signed request with everything that there may be in one.
RequestPointer full_request() {
  Request *const single = pki_Request_new();
  single->reqCert = identifier_by_the_tool("ec", "0x4711");
  single->singleRequestExtensions =
      extensions_of({{asn1_Get_id_pkix_ocsp_service_locator(), locator_value()}});
  RequestPointer request(pki_OCSPRequest_new());
  TBSRequest *const tbs = request->tbsRequest = pki_TBSRequest_new();
  tbs->requestorName = pki_GeneralName_new();
  tbs->requestorName->kind = 4;
  tbs->requestorName->value = subject_of("ec");
  tbs->requestList = owning_list({single});
  tbs->requestExtensions = extensions_of({{asn1_Get_id_pkix_ocsp_nonce(), nonce_value()},
                                          {asn1_Get_id_pkix_ocsp_response(), acceptable_value()}});
  request->optionalSignature = pki_OCSPSignature_new();
  request->optionalSignature->signatureAlgorithm = signature_algorithm("ec");
  request->optionalSignature->signature =
      bit_string(signature_over(encode(pki_TBSRequest_e, tbs), "ec"));
  request->optionalSignature->certs = certificates_of("ec");
  return request;
}

TEST(RequestFormForOpenssl, IsPrintedAsItWasFilled) {
  const RequestPointer request = full_request();
  write_file("request.der", encode(pki_OCSPRequest_e, request.get()));
  const std::string report = openssl("ocsp -req_text -reqin request.der");
  EXPECT_EQ("1 (0x0)", after("Version: ", report));
  EXPECT_EQ("DirName:C = DE, O = Example, CN = Authority", after("Requestor Name: ", report));
  EXPECT_EQ("4711", after("Serial Number: ", report));
  EXPECT_EQ((Lines{"OCSP Service Locator:", "Issuer: C = DE, O = Example, CN = Authority",
                   "OCSP - URI:http://ocsp.example/"}),
            section("Request Single Extensions:", report, {"Request Extensions:"}));
  EXPECT_EQ((Lines{"OCSP Nonce:", "0410" + upper_hex(nonce_octets),
                   "Acceptable OCSP Responses:", "Basic OCSP Response"}),
            section("Request Extensions:", report, {"Signature Algorithm:"}));
  EXPECT_EQ("ecdsa-with-SHA256", after("Signature Algorithm: ", report));
  write_file("pem", text(report.substr(report.find("-----BEGIN"))));
  openssl("x509 -in pem -outform DER -out printed.der");
  EXPECT_EQ(authority_octets("ec"), read_file("printed.der"));
}

TEST(RequestFormForOpenssl, IsAnswered) {
  const RequestPointer request = full_request();
  write_file("request.der", encode(pki_OCSPRequest_e, request.get()));
  write_index({{"", "4711"}});
  openssl("ocsp -index index.txt -reqin request.der -respout response.der -ndays 1 -CA " +
          authority("ec") + " -rsigner " + authority("ec") + " -rkey " + key("ec"));
  const ResponsePointer response =
      record_of<pki_OCSPResponse_free>(pki_OCSPResponse_d, read_file("response.der"));
  const BasicPointer basic(pki_OCSPResponse_basic(response.get()));
  ASSERT_NE(nullptr, basic);
  const auto singles = elements_of<SingleResponse>(basic->tbsResponseData->responses);
  ASSERT_EQ(1U, singles.size());
  EXPECT_EQ(0, singles[0]->certStatus->kind);
  EXPECT_EQ(
      encode(pki_CertID_e, elements_of<Request>(request->tbsRequest->requestList).at(0)->reqCert),
      encode(pki_CertID_e, singles[0]->certID));
  const auto returned = elements_of<Extension>(basic->tbsResponseData->responseExtensions);
  ASSERT_EQ(1U, returned.size());
  const auto nonce = record_of<pki_Nonce_free>(pki_Nonce_d, value(returned[0]->extnValue));
  EXPECT_EQ(nonce_octets, value(nonce.get()));
}

/* ------------------------------------------------------------------------------------------- */
/* Responses                                                                                     */
/* ------------------------------------------------------------------------------------------- */

Lines status_lines(const OCSPCertStatus *status) {
  if (status->kind != 1) {
    EXPECT_EQ(nullptr, status->value);
    return {status->kind == 0 ? "Cert Status: good" : "Cert Status: unknown"};
  }
  static const Lines reasons = {"unspecified (0x0)",     "keyCompromise (0x1)",
                                "cACompromise (0x2)",    "affiliationChanged (0x3)",
                                "superseded (0x4)",      "cessationOfOperation (0x5)",
                                "certificateHold (0x6)", "",
                                "removeFromCRL (0x8)"};
  const auto *const info = static_cast<const pki_RevokedInfo *>(status->value);
  Lines lines = {"Cert Status: revoked", "Revocation Time: " + gmt_text(info->revocationTime)};
  if (info->revocationReason == nullptr) return lines;
  const Bytes reason = value(info->revocationReason);
  lines.push_back("Revocation Reason: " + reasons.at(reason.empty() ? 0 : reason.at(0)));
  return lines;
}

struct Answer {
  const char *name;
  const char *key;
  uint8_t responder;  ///< 1: by name; 2: by key
  const char *arguments;
  int32_t certificates;
  const char *signature_options;  ///< with which the tool verifies
};

void PrintTo(const Answer &answer, std::ostream *out) { *out << answer.name; }

const Answer answers[] = {
    {"ByName", "ec", 1, "", 1, "-digest sha256"},
    {"ByKey", "ec", 2, "-resp_key_id", 1, "-digest sha256"},
    {"NextUpdate", "ec", 1, "-ndays 3", 1, "-digest sha256"},
    {"NoCertificates", "ec", 2, "-resp_key_id -resp_no_certs", 0, "-digest sha256"},
    {"MoreCertificates", "rsa", 1, "-nmin 5 -rother ec_authority.pem", 2, "-digest sha256"},
    {"RsaPss", "rsa", 2, "-resp_key_id -rsigopt rsa_padding_mode:pss", 1,
     "-digest sha256 -pkeyopt rsa_padding_mode:pss"},
};

class ResponseFormOfOpenssl : public testing::TestWithParam<Answer> {};

// Asks for certificates that are revoked, for all reasons that the tool has and for none, for a good
// one, and for an unknown one.
TEST_P(ResponseFormOfOpenssl, ReadsAsItIsReportedAndComesBack) {
  const Answer &answer = GetParam();
  authority("ec");
  std::vector<Indexed> index = revoked_for_all_reasons;
  index.push_back({"", "4711"});
  write_index(index);
  std::string arguments = "ocsp -nonce -reqout request.der -issuer " + authority(answer.key);
  for (const Indexed &certificate : index) arguments += " -serial 0x" + certificate.serial;
  openssl(arguments + " -serial 0x4712");
  const std::string report =
      openssl("ocsp -index index.txt -reqin request.der -respout response.der -resp_text -CA " +
              authority(answer.key) + " -rsigner " + authority(answer.key) + " -rkey " +
              key(answer.key) + " " + answer.arguments);

  const Bytes der = read_file("response.der");
  const ResponsePointer response = record_of<pki_OCSPResponse_free>(pki_OCSPResponse_d, der);
  EXPECT_EQ(0U, response->responseStatus);
  EXPECT_EQ(der, encode(pki_OCSPResponse_e, response.get()));
  const Bytes octets = value(response->responseBytes->response);
  const BasicPointer basic(pki_OCSPResponse_basic(response.get()));
  ASSERT_NE(nullptr, basic);
  const BasicPointer copy(pki_BasicOCSPResponse_clone(basic.get()));

  const ResponseData *const data = basic->tbsResponseData;
  ASSERT_EQ(answer.responder, data->responderID->kind);
  if (answer.responder == 1) {
    EXPECT_EQ(
        authority_subject(answer.key),
        encode(pki_RDNSequence_e, static_cast<const RDNSequence *>(data->responderID->value)));
  } else {
    EXPECT_EQ(after("Responder Id: ", report),
              upper_hex(value(static_cast<const OctetString *>(data->responderID->value))));
  }
  EXPECT_EQ(after("Produced At: ", report), gmt_text(data->producedAt));
  Lines lines;
  for (const SingleResponse *single : elements_of<SingleResponse>(data->responses)) {
    lines = lines + identifier_lines(single->certID) + status_lines(single->certStatus);
    lines.push_back("This Update: " + gmt_text(single->thisUpdate));
    if (single->nextUpdate != nullptr)
      lines.push_back("Next Update: " + gmt_text(single->nextUpdate));
    lines = lines + extension_lines("Response Single Extensions:", single->singleExtensions);
  }
  expect_same_lines(section("Responses:", report, {"Response Extensions:"}), lines);

  expect_verified(value(basic->tbsResponseDataBytes), basic->signature, answer.key,
                  answer.signature_options);
  const auto certificates = elements_of<Certificate>(basic->certs);
  ASSERT_EQ(static_cast<size_t>(answer.certificates), certificates.size());
  if (!certificates.empty()) {
    EXPECT_EQ(authority_octets(answer.key), encode(pki_Certificate_e, certificates[0]));
  }

  EXPECT_EQ(octets, encode(pki_BasicOCSPResponse_e, basic.get()));
  EXPECT_EQ(octets, encode(pki_BasicOCSPResponse_e, copy.get()));
  release(asn1_OctetString_free, basic->tbsResponseDataBytes);
  forget_stored(basic->certs);
  EXPECT_EQ(octets, encode(pki_BasicOCSPResponse_e, basic.get()));
}

INSTANTIATE_TEST_SUITE_P(Shapes, ResponseFormOfOpenssl, testing::ValuesIn(answers),
                         [](const auto &answer) { return std::string(answer.param.name); });

Bytes crl_id_value() {
  const Owned<pki_CrlID, pki_CrlID_free> id(pki_CrlID_new());
  id->crlUrl = octet_string(text("http://crl.example/"));
  id->crlNum = record_of<asn1_Integer_free>(asn1_Integer_d, hex("02 02 12 67")).release();
  id->crlTime = asn1_GeneralizedTime_clone("20200131120000Z");
  return encode(pki_CrlID_e, id.get());
}

Bytes cutoff_value() { return encode(pki_ArchiveCutoff_e, "19990131120000Z"); }

SingleResponse *single_response(const std::string &serial, const Bytes &status) {
  SingleResponse *const single = pki_SingleResponse_new();
  single->certID = identifier_by_the_tool("ec", serial);
  single->certStatus = record_of<pki_OCSPCertStatus_free>(pki_OCSPCertStatus_d, status).release();
  single->thisUpdate = asn1_GeneralizedTime_clone("20200131120000Z");
  single->nextUpdate = asn1_GeneralizedTime_clone("20490131120000Z");
  return single;
}

TEST(ResponseFormForOpenssl, IsVerifiedAndPrintedAsItWasFilled) {
  SingleResponse *const revoked = single_response(
      "1", element(0xA1, element(0x18, text("20200131120000Z")) + hex("A0 03 0A 01 00")));
  revoked->singleExtensions =
      extensions_of({{asn1_Get_id_pkix_ocsp_crl(), crl_id_value()},
                     {asn1_Get_id_pkix_ocsp_archive_cutoff(), cutoff_value()}});
  const BasicPointer basic(pki_BasicOCSPResponse_new());
  ResponseData *const data = basic->tbsResponseData = pki_ResponseData_new();
  data->responderID = pki_ResponderID_new();
  data->responderID->kind = 1;
  data->responderID->value = subject_of("ec");
  data->producedAt = asn1_GeneralizedTime_clone("20200131120000Z");
  data->responses = owning_list(
      {revoked, single_response("2", hex("80 00")), single_response("3", hex("82 00"))});
  data->responseExtensions = extensions_of({{asn1_Get_id_pkix_ocsp_nonce(), nonce_value()}});
  basic->signatureAlgorithm = signature_algorithm("ec");
  basic->signature = bit_string(signature_over(encode(pki_ResponseData_e, data), "ec"));
  basic->certs = certificates_of("ec");
  const ResponsePointer response(pki_OCSPResponse_new());
  response->responseBytes = pki_ResponseBytes_new();
  response->responseBytes->responseType = asn1_ObjId_clone(asn1_Get_id_pkix_ocsp_basic());
  response->responseBytes->response = octet_string(encode(pki_BasicOCSPResponse_e, basic.get()));
  write_file("written.der", encode(pki_OCSPResponse_e, response.get()));

  const std::string report =
      openssl("ocsp -resp_text -respin written.der -issuer " + authority("ec") +
              " -serial 1 -serial 2 -serial 3 -no_nonce"
              " -CAfile " +
              authority("ec"));
  EXPECT_NE(std::string::npos, report.find("Response verify OK\n"));
  EXPECT_EQ("successful (0x0)", after("OCSP Response Status: ", report));
  EXPECT_EQ("C = DE, O = Example, CN = Authority", after("Responder Id: ", report));
  EXPECT_EQ("Jan 31 12:00:00 2020 GMT", after("Produced At: ", report));
  EXPECT_EQ("unspecified (0x0)", after("Revocation Reason: ", report));
  EXPECT_EQ((Lines{"OCSP CRL ID:", "crlUrl: http://crl.example/", "crlNum: 1267",
                   "crlTime: Jan 31 12:00:00 2020 GMT",
                   "OCSP Archive Cutoff:", "Jan 31 12:00:00 1999 GMT"}),
            section("Response Single Extensions:", report, {"Certificate ID:"}));
  EXPECT_EQ((Lines{"OCSP Nonce:", "0410" + upper_hex(nonce_octets)}),
            section("Response Extensions:", report, {"Signature Algorithm:"}));
  EXPECT_NE(std::string::npos, report.find("\n1: revoked\n"));
  EXPECT_NE(std::string::npos, report.find("\n2: good\n"));
  EXPECT_NE(std::string::npos, report.find("\n3: unknown\n"));
}

/* ------------------------------------------------------------------------------------------- */
/* Extensions that the tool does not print                                                       */
/* ------------------------------------------------------------------------------------------- */

TEST(PreferredSignatureAlgorithmsForm, AreThoseThatTheToolMakes) {
  write_file("preferred.cnf", text(R"(asn1=SEQUENCE:preferred
[preferred]
first=SEQUENCE:first
second=SEQUENCE:second
[first]
signature=SEQUENCE:ecdsa
key=SEQUENCE:p256
[second]
signature=SEQUENCE:rsa
[ecdsa]
algorithm=OID:1.2.840.10045.4.3.2
[p256]
algorithm=OID:1.2.840.10045.2.1
parameters=OID:1.2.840.10045.3.1.7
[rsa]
algorithm=OID:1.2.840.113549.1.1.11
parameters=NULL
)"));
  openssl("asn1parse -genconf preferred.cnf -noout -out preferred.der");
  const Bytes der = read_file("preferred.der");
  const auto list =
      record_of<pki_PreferredSignatureAlgorithms_free>(pki_PreferredSignatureAlgorithms_d, der);
  const auto pairs = elements_of<pki_PreferredSignatureAlgorithm>(list.get());
  ASSERT_EQ(2U, pairs.size());
  EXPECT_EQ("1.2.840.10045.4.3.2", identifier_text(pairs[0]->sigIdentifier->algorithm));
  EXPECT_EQ("1.2.840.10045.2.1", identifier_text(pairs[0]->pubKeyAlgIdentifier->algorithm));
  EXPECT_EQ("1.2.840.113549.1.1.11", identifier_text(pairs[1]->sigIdentifier->algorithm));
  EXPECT_EQ(nullptr, pairs[1]->pubKeyAlgIdentifier);
  EXPECT_EQ(der, encode(pki_PreferredSignatureAlgorithms_e, list.get()));
}

}  // namespace

}  // namespace rfc6960_test
