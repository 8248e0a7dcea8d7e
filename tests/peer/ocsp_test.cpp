// Tests OCSP requests and responses against the openssl tool. The library reads those that the tool
// makes, and those by hand that the tool reads first, as the tool does, or refuses them as the
// header says. The tool reads and answers the requests of the library.
#include "revocation.h"

namespace ocsp_test {

namespace {

using namespace support;

using RequestPointer = Owned<OCSPRequest, asn1_OCSPRequest_free>;

RequestPointer decoded_request(const Bytes &der) {
  return record_of<asn1_OCSPRequest_free>(asn1_OCSPRequest_d, der);
}

/* ------------------------------------------------------------------------------------------- */
/* Records as the tool prints them                                                               */
/* ------------------------------------------------------------------------------------------- */

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

Lines request_lines(const List *requests) {
  Lines lines;
  for (const Request *request : elements_of<Request>(requests))
    lines = lines + identifier_lines(request->reqCert);
  return lines;
}

Lines printed_requests(const std::string &file) {
  return section("Requestor List:", openssl("ocsp -req_text -reqin " + file),
                 {"Request Extensions:", "Signature Algorithm:"});
}

Lines status_lines(const OCSPCertStatus *status) {
  if (status->kind != 1) {
    EXPECT_EQ(nullptr, status->value);
    return {status->kind == 0 ? "Cert Status: good" : "Cert Status: unknown"};
  }
  static const Lines reasons = {"",
                                "keyCompromise (0x1)",
                                "cACompromise (0x2)",
                                "affiliationChanged (0x3)",
                                "superseded (0x4)",
                                "cessationOfOperation (0x5)",
                                "certificateHold (0x6)",
                                "",
                                "removeFromCRL (0x8)"};
  const auto *info = static_cast<const RevokedInfo *>(status->value);
  Lines lines = {"Cert Status: revoked", "Revocation Time: " + gmt_text(info->revocationTime)};
  if (info->revocationReason != 0)
    lines.push_back("Revocation Reason: " + reasons.at(info->revocationReason));
  return lines;
}

Lines response_lines(const List *responses) {
  Lines lines;
  for (const SingleResponse *single : elements_of<SingleResponse>(responses)) {
    lines = lines + identifier_lines(single->certID) + status_lines(single->certStatus);
    lines.push_back("This Update: " + gmt_text(single->thisUpdate));
    if (single->nextUpdate != nullptr)
      lines.push_back("Next Update: " + gmt_text(single->nextUpdate));
    lines = lines + extension_lines("Response Single Extensions:", single->singleExtensions);
  }
  return lines;
}

/// Returns the tool's lines without a reason 0, which a record does not distinguish from no reason.
Lines printed_responses(const std::string &report) {
  Lines lines = section("Responses:", report, {"Response Extensions:", "Signature Algorithm:"});
  lines.erase(std::remove(lines.begin(), lines.end(), "Revocation Reason: unspecified (0x0)"),
              lines.end());
  return lines;
}

/* ------------------------------------------------------------------------------------------- */
/* Requests that the tool makes                                                                  */
/* ------------------------------------------------------------------------------------------- */

/// Checks that every field has the octets that `openssl asn1parse` finds in its place.
void expect_same_octets(const OCSPRequest *request, const std::string &file) {
  const Element whole = take_apart(file);
  const TBSRequest *tbs = request->tbsRequest;
  const std::vector<Element> &fields = whole.parts.at(0).parts;
  auto field = fields.begin();
  const auto next_is = [&](std::string_view type) {
    return field != fields.end() && field->type == type;
  };
  ASSERT_EQ(next_is("cont [ 0 ]"), tbs->version != nullptr);
  if (tbs->version != nullptr) {
    EXPECT_EQ(field++->content, encode(asn1_Integer_e, tbs->version));
  }
  ASSERT_EQ(next_is("cont [ 1 ]"), tbs->requestorName != nullptr);
  if (tbs->requestorName != nullptr) {
    EXPECT_EQ(field++->content, encode(asn1_GeneralName_e, tbs->requestorName));
  }
  ASSERT_TRUE(next_is("SEQUENCE"));
  const auto requests = elements_of<Request>(tbs->requestList);
  ASSERT_EQ(field->parts.size(), requests.size());
  for (size_t i = 0; i < requests.size(); ++i) {
    const CertID *id = requests[i]->reqCert;
    const std::vector<Element> &parts = field->parts[i].parts.at(0).parts;
    ASSERT_EQ(4U, parts.size());
    EXPECT_EQ(parts[0].whole, encode(asn1_AlgId_e, id->hashAlgorithm));
    EXPECT_EQ(parts[1].whole, encode(asn1_OctetString_e, id->issuerNameHash));
    EXPECT_EQ(parts[2].whole, encode(asn1_OctetString_e, id->issuerKeyHash));
    EXPECT_EQ(parts[3].whole, encode(asn1_Integer_e, id->serialNumber));
    EXPECT_EQ(nullptr, requests[i]->singleRequestExtensions);
  }
  ++field;
  ASSERT_EQ(next_is("cont [ 2 ]"), tbs->requestExtensions != nullptr);
  if (tbs->requestExtensions != nullptr)
    expect_same_extensions(field++->parts.at(0), tbs->requestExtensions);
  EXPECT_EQ(fields.end(), field);

  ASSERT_EQ(whole.parts.size() == 2, request->optionalSignature != nullptr);
  if (request->optionalSignature == nullptr) return;
  const std::vector<Element> &signature = whole.parts[1].parts.at(0).parts;
  EXPECT_EQ(signature.at(0).whole,
            encode(asn1_AlgId_e, request->optionalSignature->signatureAlgorithm));
  EXPECT_EQ(signature.at(1).whole,
            encode(asn1_BitString_BER_e, request->optionalSignature->signature));
}

void expect_round_trips(const OCSPRequest *request, const Bytes &der) {
  EXPECT_EQ(der, encode(asn1_OCSPRequest_e, request));
  const RequestPointer copy(asn1_OCSPRequest_clone(request));
  EXPECT_EQ(der, encode(asn1_OCSPRequest_e, copy.get()));
}

struct Asked {
  const char *name;
  const char *arguments;
  int32_t certificates;
};

void PrintTo(const Asked &asked, std::ostream *out) { *out << asked.name; }

const Asked asked[] = {
    {"OneCertificate", "-no_nonce -cert ec_authority.pem", 1},
    {"OneSerialNumber", "-no_nonce -serial 1", 1},
    {"SerialNumbersOfAllSigns",
     "-no_nonce -serial 0 -serial 127 -serial 128 -serial -1 -serial -128 -serial -129"
     " -serial 0x7F02030405060708090A0B0C0D0E0F1011121314"
     " -serial 0xFFEEDDCCBBAA99887766554433221100FFEEDDCC",
     8},
    {"AllHashes", "-no_nonce -sha1 -serial 1 -sha256 -serial 2 -sha384 -serial 3 -sha512 -serial 4",
     4},
    {"Nonce", "-nonce -cert ec_authority.pem -serial 5", 2},
};

class StatusRequestOfOpenssl : public testing::TestWithParam<Asked> {};

TEST_P(StatusRequestOfOpenssl, ReadsAsItIsReportedAndComesBack) {
  openssl("ocsp -issuer " + authority("ec") + " -reqout request.der " + GetParam().arguments);
  const Bytes der = read_file("request.der");
  const RequestPointer request = decoded_request(der);
  const TBSRequest *tbs = request->tbsRequest;
  EXPECT_EQ(GetParam().certificates, List_len(tbs->requestList));
  expect_same_lines(printed_requests("request.der"), request_lines(tbs->requestList));
  expect_same_octets(request.get(), "request.der");
  expect_round_trips(request.get(), der);
}

INSTANTIATE_TEST_SUITE_P(Shapes, StatusRequestOfOpenssl, testing::ValuesIn(asked),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(StatusRequestOfOpensslForMany, ReadsAsItIsReportedAndComesBack) {
  std::string arguments = "ocsp -nonce -reqout request.der -issuer " + authority("ec");
  for (int serial = 1; serial <= 1000; ++serial) arguments += " -serial " + std::to_string(serial);
  openssl(arguments);
  const Bytes der = read_file("request.der");
  const RequestPointer request = decoded_request(der);
  EXPECT_EQ(1000, List_len(request->tbsRequest->requestList));
  expect_same_lines(printed_requests("request.der"),
                    request_lines(request->tbsRequest->requestList));
  expect_round_trips(request.get(), der);
}

/* ------------------------------------------------------------------------------------------- */
/* Requests by hand, which the tool reads first                                                  */
/* ------------------------------------------------------------------------------------------- */

/// The pieces of a request that the tool makes.
struct Pieces {
  Bytes list;        ///< the list of requests
  Bytes request;     ///< the first of them
  Bytes extensions;  ///< of the whole request, with their tag
};

Pieces pieces_of_a_request() {
  openssl("ocsp -reqout pieces.der -issuer " + authority("ec") + " -nonce -serial 1 -serial 2");
  const Element tbs = take_apart("pieces.der").parts.at(0);
  return {tbs.parts.at(0).whole, tbs.parts.at(0).parts.at(0).content, tbs.parts.at(1).whole};
}

Bytes sequence(const Bytes &content) { return element(0x30, content); }

/// Returns a request that is a signed part with these fields.
Bytes unsigned_request(const Bytes &fields) { return sequence(sequence(fields)); }

struct Head {
  const char *name;
  Bytes octets;         ///< the fields before the list
  const char *printed;  ///< the requestor, as the tool prints it
};

void PrintTo(const Head &head, std::ostream *out) { *out << head.name; }

const Head heads[] = {
    {"VersionWritten", hex("A0 03 02 01 00"), ""},
    {"Mail", element(0xA1, element(0x81, text("a@b.example"))), "email:a@b.example"},
    {"Dns", element(0xA1, element(0x82, text("a.example"))), "DNS:a.example"},
    {"Uri", element(0xA1, element(0x86, text("http://a.example/"))), "URI:http://a.example/"},
    {"Address", element(0xA1, hex("87 04 C0 00 02 01")), "IP Address:192.0.2.1"},
    {"RegisteredIdentifier", element(0xA1, hex("88 03 2A 03 04")), "Registered ID:1.2.3.4"},
    {"OtherName", element(0xA1, hex("A0 0A 06 03 2A 03 04 A0 03 0C 01 78")), "othername:"},
    {"VersionAndRequestor", hex("A0 03 02 01 00 A1 03 82 01 61"), "DNS:a"},
};

class StatusRequestByHand : public testing::TestWithParam<Head> {};

TEST_P(StatusRequestByHand, ReadsAsItIsReportedAndComesBack) {
  const Pieces pieces = pieces_of_a_request();
  const Bytes der = unsigned_request(GetParam().octets + pieces.list + pieces.extensions);
  write_file("by_hand.der", der);
  const std::string requestor = GetParam().printed;
  const std::string report = openssl("ocsp -req_text -reqin by_hand.der");
  EXPECT_EQ("1 (0x0)", after("Version: ", report));
  EXPECT_EQ(requestor.empty(), report.find("Requestor Name: ") == std::string::npos);
  if (!requestor.empty()) {
    EXPECT_EQ(0U, after("Requestor Name: ", report).find(requestor));
  }

  const RequestPointer request = decoded_request(der);
  const TBSRequest *tbs = request->tbsRequest;
  EXPECT_EQ(requestor.empty(), tbs->requestorName == nullptr);
  expect_same_lines(printed_requests("by_hand.der"), request_lines(tbs->requestList));
  expect_same_octets(request.get(), "by_hand.der");
  EXPECT_EQ(der, encode(asn1_OCSPRequest_e, request.get()));
  // An other name cannot be copied, and neither can what holds one.
  const RequestPointer copy(asn1_OCSPRequest_clone(request.get()));
  ASSERT_EQ(GetParam().name != std::string("OtherName"), copy != nullptr);
  if (copy != nullptr) {
    EXPECT_EQ(der, encode(asn1_OCSPRequest_e, copy.get()));
  }
}

INSTANTIATE_TEST_SUITE_P(Requestors, StatusRequestByHand, testing::ValuesIn(heads),
                         [](const auto &head) { return std::string(head.param.name); });

TEST(StatusRequestRefusal, IsForExtensionsOfASingleRequest) {
  const Pieces pieces = pieces_of_a_request();
  const Bytes locator = hex("30 0F 06 09 2B 06 01 05 05 07 30 01 07 04 02 30 00");
  const Bytes extensions = element(0xA0, sequence(locator));
  const Bytes der = unsigned_request(sequence(sequence(pieces.request + extensions)));
  write_file("by_hand.der", der);
  EXPECT_NE(std::string::npos,
            openssl("ocsp -req_text -reqin by_hand.der").find("Request Single Extensions:"));
  EXPECT_EQ(nullptr, left_by_refusal<OCSPRequest>(asn1_OCSPRequest_d, der, nullptr));
  decoded_request(unsigned_request(sequence(sequence(pieces.request))));
}

TEST(StatusRequestRefusal, IsForADirectoryNameOfTheRequestor) {
  const Pieces pieces = pieces_of_a_request();
  openssl("x509 -outform DER -out authority.der -in " + authority("ec"));
  const Bytes subject = take_apart("authority.der").parts.at(0).parts.at(5).whole;
  const Bytes der =
      unsigned_request(element(0xA1, element(0xA4, subject)) + pieces.list + pieces.extensions);
  write_file("by_hand.der", der);
  EXPECT_NE(std::string::npos,
            openssl("ocsp -req_text -reqin by_hand.der").find("Requestor Name: DirName:"));
  EXPECT_EQ(nullptr, left_by_refusal<OCSPRequest>(asn1_OCSPRequest_d, der, nullptr));
}

/* ------------------------------------------------------------------------------------------- */
/* Signed requests                                                                               */
/* ------------------------------------------------------------------------------------------- */

/// Makes the tool sign a request. The tool always adds the requestor's directory name.
Element signed_by_the_tool(const std::string &arguments) {
  openssl("ocsp -no_nonce -issuer " + authority("ec") + " -serial 1 -signer " + authority("ec") +
          " -signkey " + key("ec") + " -reqout signed.der " + arguments);
  return take_apart("signed.der");
}

TEST(SignedStatusRequestOfOpenssl, IsRefusedForItsDirectoryName) {
  const Element whole = signed_by_the_tool("-no_certs");
  EXPECT_EQ(nullptr, left_by_refusal<OCSPRequest>(asn1_OCSPRequest_d, whole.whole, nullptr));

  // Only the name prevents reading: without it, the rest is read.
  const Bytes list = whole.parts.at(0).parts.at(1).whole;
  const Bytes rest = sequence(sequence(list) + whole.parts.at(1).whole);
  write_file("rest.der", rest);
  const RequestPointer request = decoded_request(rest);
  expect_same_lines(printed_requests("rest.der"), request_lines(request->tbsRequest->requestList));
  expect_same_octets(request.get(), "rest.der");
  EXPECT_EQ(nullptr, request->optionalSignature->certs);
}

TEST(SignedStatusRequestOfOpenssl, IsRefusedForItsCertificates) {
  const Element whole = signed_by_the_tool("");
  const Element &signature = whole.parts.at(1).parts.at(0);
  ASSERT_EQ(3U, signature.parts.size());
  EXPECT_EQ(nullptr,
            left_by_refusal<OCSPSignature>(asn1_OCSPSignature_d, signature.whole, nullptr));
  const Bytes list = whole.parts.at(0).parts.at(1).whole;
  const auto with = [&](const Bytes &given) {
    return sequence(sequence(list) + element(0xA0, given));
  };
  write_file("rest.der", with(signature.whole));
  EXPECT_NE(std::string::npos, openssl("ocsp -req_text -reqin rest.der").find("Certificate:\n"));
  EXPECT_EQ(nullptr,
            left_by_refusal<OCSPRequest>(asn1_OCSPRequest_d, with(signature.whole), nullptr));
  decoded_request(with(sequence(signature.parts[0].whole + signature.parts[1].whole)));
}

class SignatureOfAStatusRequest : public testing::TestWithParam<TrimmedBits> {};

// The zero bits at the end are left out.
TEST_P(SignatureOfAStatusRequest, IsWrittenWithoutTheZeroBitsAtItsEnd) {
  const Pieces pieces = pieces_of_a_request();
  const Bytes algorithm = hex("30 0A 06 08 2A 86 48 CE 3D 04 03 02");
  const auto with = [&](const char *bits) {
    return sequence(sequence(pieces.list) + element(0xA0, sequence(algorithm + hex(bits))));
  };
  const Bytes der = with(GetParam().read);
  write_file("by_hand.der", der);
  EXPECT_EQ("ecdsa-with-SHA256",
            after("Signature Algorithm: ", openssl("ocsp -req_text -reqin by_hand.der")));
  const RequestPointer request = decoded_request(der);
  expect_same_octets(request.get(), "by_hand.der");
  EXPECT_EQ(with(GetParam().written), encode(asn1_OCSPRequest_e, request.get()));
}

INSTANTIATE_TEST_SUITE_P(Bits, SignatureOfAStatusRequest, testing::ValuesIn(trimmed_bits));

/* ------------------------------------------------------------------------------------------- */
/* Responses that the tool makes                                                                 */
/* ------------------------------------------------------------------------------------------- */

/// A basic response, with the octets that are not released with it.
class Basic {
 public:
  explicit Basic(const Bytes &octets)
      : record(record_of<asn1_BasicOCSPResponse_free>(asn1_BasicOCSPResponse_d, octets)),
        signed_octets(record->tbsResponseDataBytes) {}
  Owned<BasicOCSPResponse, asn1_BasicOCSPResponse_free> record;
  Owned<OctetString, asn1_OctetString_free> signed_octets;
};

/// Returns the octets of the basic response that the tool wrote.
Bytes basic_octets(const std::string &file) {
  const auto response = record_of<asn1_OCSPResponse_free>(asn1_OCSPResponse_d, read_file(file));
  EXPECT_EQ(0U, response->responseStatus);
  const Owned<OCSPResponse, asn1_OCSPResponse_free> copy(asn1_OCSPResponse_clone(response.get()));
  EXPECT_EQ(value(response->responseBytes->response), value(copy->responseBytes->response));
  EXPECT_EQ(0,
            asn1_ObjId_cmp(asn1_Get_id_pkix_ocsp_basic(), response->responseBytes->responseType));
  return value(response->responseBytes->response);
}

/// Makes the authority with the key of a kind answer request.der. Returns the tool's report.
std::string respond(const std::string &kind, const std::string &arguments) {
  return openssl("ocsp -index index.txt -reqin request.der -respout response.der -resp_text -CA " +
                 authority(kind) + " -rsigner " + authority(kind) + " -rkey " + key(kind) + " " +
                 arguments);
}

/// Asks for all certificates of the index, and for one more.
void ask_for_all(const std::string &kind, const std::string &arguments) {
  std::vector<Indexed> index = revoked_for_all_reasons;
  index.push_back({"", "4711"});
  write_index(index);
  std::string request = "ocsp -reqout request.der -issuer " + authority(kind) + " " + arguments;
  for (const Indexed &certificate : index) request += " -serial 0x" + certificate.serial;
  openssl(request + " -serial 0x4712");
}

/// Checks that every field has the octets that `openssl asn1parse` finds in its place.
void expect_same_octets(const BasicOCSPResponse *basic, const Element &whole) {
  ASSERT_EQ(3U, whole.parts.size());
  EXPECT_EQ(whole.parts[0].whole, value(basic->tbsResponseDataBytes));
  EXPECT_EQ(whole.parts[1].whole, encode(asn1_AlgId_e, basic->signatureAlgorithm));
  EXPECT_EQ(whole.parts[2].whole, encode(asn1_BitString_BER_e, basic->signature));
  EXPECT_EQ(nullptr, basic->certs);

  const ResponseData *data = basic->tbsResponseData;
  const std::vector<Element> &fields = whole.parts[0].parts;
  auto field = fields.begin();
  ASSERT_EQ((data->version == nullptr ? 3U : 4U) + (data->responseExtensions == nullptr ? 0U : 1U),
            fields.size());
  if (data->version != nullptr) {
    EXPECT_EQ(field->type, "cont [ 0 ]");
    EXPECT_EQ(field++->content, encode(asn1_Integer_e, data->version));
  }
  const ResponderID *responder = data->responderID;
  EXPECT_EQ("cont [ " + std::to_string(responder->kind) + " ]", field->type);
  EXPECT_EQ(field++->content,
            responder->kind == 1
                ? encode(asn1_RDNSequence_e, static_cast<const RDNSequence *>(responder->value))
                : encode(asn1_OctetString_e, static_cast<const OctetString *>(responder->value)));
  EXPECT_EQ(field++->content, text(data->producedAt));
  const auto singles = elements_of<SingleResponse>(data->responses);
  ASSERT_EQ(field->parts.size(), singles.size());
  for (size_t i = 0; i < singles.size(); ++i) {
    const std::vector<Element> &parts = field->parts[i].parts;
    EXPECT_EQ(parts.at(0).whole, encode(asn1_CertID_e, singles[i]->certID));
    EXPECT_EQ(parts.at(2).content, text(singles[i]->thisUpdate));
    const bool extended = parts.back().type == "cont [ 1 ]";
    ASSERT_EQ(extended, singles[i]->singleExtensions != nullptr);
    if (extended) expect_same_extensions(parts.back().parts.at(0), singles[i]->singleExtensions);
  }
  ++field;
  if (data->responseExtensions != nullptr)
    expect_same_extensions(field->parts.at(0), data->responseExtensions);
}

struct Answer {
  const char *name;
  const char *key;
  uint8_t responder;    ///< 1: by name; 2: by key
  const char *request;  ///< arguments
  const char *response;
  const char *signature_options;  ///< with which the tool verifies
};

void PrintTo(const Answer &answer, std::ostream *out) { *out << answer.name; }

const Answer answers[] = {
    {"ByName", "ec", 1, "-no_nonce", "", "-digest sha256"},
    {"ByKey", "ec", 2, "-no_nonce", "-resp_key_id", "-digest sha256"},
    {"NextUpdate", "ec", 1, "-no_nonce", "-ndays 3", "-digest sha256"},
    {"NonceAndNextUpdate", "ec", 2, "-nonce", "-resp_key_id -nmin 5", "-digest sha256"},
    {"Sha512Identifiers", "ec", 1, "-no_nonce -sha512", "-rcid sha512", "-digest sha256"},
    {"Rsa", "rsa", 1, "-nonce", "-rmd sha384", "-digest sha384"},
    {"RsaPss", "rsa", 2, "-nonce", "-resp_key_id -rsigopt rsa_padding_mode:pss",
     "-digest sha256 -pkeyopt rsa_padding_mode:pss"},
};

class StatusResponseOfOpenssl : public testing::TestWithParam<Answer> {};

TEST_P(StatusResponseOfOpenssl, ReadsAsItIsReported) {
  const Answer &answer = GetParam();
  ask_for_all(answer.key, answer.request);
  const std::string report = respond(answer.key, std::string("-resp_no_certs ") + answer.response);
  const Bytes octets = basic_octets("response.der");
  const Basic basic(octets);
  const ResponseData *data = basic.record->tbsResponseData;
  EXPECT_EQ(revoked_for_all_reasons.size() + 2, static_cast<size_t>(List_len(data->responses)));
  EXPECT_EQ(answer.responder, data->responderID->kind);
  if (answer.responder == 2) {
    EXPECT_EQ(after("Responder Id: ", report),
              upper_hex(value(static_cast<const OctetString *>(data->responderID->value))));
  }
  EXPECT_EQ(after("Produced At: ", report), gmt_text(data->producedAt));
  expect_same_lines(printed_responses(report), response_lines(data->responses));
  write_file("basic.der", octets);
  expect_same_octets(basic.record.get(), take_apart("basic.der"));

  // A caller verifies over the octets that are kept.
  write_file("signed_octets", value(basic.record->tbsResponseDataBytes));
  write_file("signature", value(basic.record->signature));
  EXPECT_EQ("Signature Verified Successfully\n",
            openssl(std::string("pkeyutl -verify -rawin -in signed_octets -sigfile signature"
                                " -pubin -keyform DER -inkey ") +
                    answer.key + ".spki " + answer.signature_options));
}

TEST_P(StatusResponseOfOpenssl, HasACopyWithoutTheSignedOctets) {
  const Answer &answer = GetParam();
  ask_for_all(answer.key, answer.request);
  const std::string report = respond(answer.key, std::string("-resp_no_certs ") + answer.response);
  Owned<BasicOCSPResponse, asn1_BasicOCSPResponse_free> copy;
  {
    const Basic basic(basic_octets("response.der"));
    copy.reset(asn1_BasicOCSPResponse_clone(basic.record.get()));
    EXPECT_EQ(0, asn1_BitString_cmp(basic.record->signature, copy->signature));
  }
  EXPECT_EQ(nullptr, copy->tbsResponseDataBytes);
  const ResponseData *data = copy->tbsResponseData;
  EXPECT_EQ(answer.responder, data->responderID->kind);
  EXPECT_EQ(after("Produced At: ", report), gmt_text(data->producedAt));
  expect_same_lines(printed_responses(report), response_lines(data->responses));
}

INSTANTIATE_TEST_SUITE_P(Shapes, StatusResponseOfOpenssl, testing::ValuesIn(answers),
                         [](const auto &answer) { return std::string(answer.param.name); });

/// A signed part with fields that the tool does not write. One of them takes an identifier that the
/// tool made.
struct Data {
  const char *name;
  bool version_written;
  int32_t responses;
  Bytes (*octets)(const Bytes &identifier);
};

void PrintTo(const Data &data, std::ostream *out) { *out << data.name; }

const Bytes version_1 = hex("A0 03 02 01 00");
const Bytes by_key = element(0xA2, element(0x04, Bytes(20, 0xAB)));
const Bytes in_2020 = element(0x18, text("20200131120000Z"));
const Bytes until_2021 = element(0xA0, element(0x18, text("20210131120000Z")));
const Bytes cutoff =
    hex("30 1E 06 09 2B 06 01 05 05 07 30 01 06 04 11 18 0F") + text("19990131120000Z");
const Bytes reason = hex("30 0D 06 03 55 1D 15 01 01 FF 04 03 0A 01 09");

const Data data_by_hand[] = {
    {"VersionWritten", true, 1,
     [](const Bytes &identifier) {
       return version_1 + by_key + in_2020 +
              sequence(sequence(identifier + hex("80 00") + in_2020));
     }},
    {"NoResponses", false, 0, [](const Bytes &) { return by_key + in_2020 + hex("30 00"); }},
    {"ExtensionsOfASingleResponse", false, 2,
     [](const Bytes &identifier) {
       return by_key + in_2020 +
              sequence(sequence(identifier + hex("82 00") + in_2020 +
                                element(0xA1, sequence(cutoff + reason))) +
                       sequence(identifier + element(0xA1, in_2020 + hex("A0 03 0A 01 08")) +
                                in_2020 + until_2021 + element(0xA1, sequence(reason))));
     }},
    {"ExtensionsOfAll", true, 1,
     [](const Bytes &identifier) {
       return version_1 + by_key + in_2020 +
              sequence(sequence(identifier + hex("80 00") + in_2020 + until_2021)) +
              element(0xA1, sequence(reason + cutoff));
     }},
};

class StatusResponseByHand : public testing::TestWithParam<Data> {};

TEST_P(StatusResponseByHand, ReadsAsItIsReported) {
  write_file("request", pieces_of_a_request().request);
  const Bytes data = sequence(GetParam().octets(take_apart("request").whole));
  const Bytes octets =
      sequence(data + hex("30 0A 06 08 2A 86 48 CE 3D 04 03 02") + hex("03 04 00 30 00 00"));
  write_file("basic.der", octets);
  write_file(
      "response.der",
      sequence(hex("0A 01 00") + element(0xA0, sequence(hex("06 09 2B 06 01 05 05 07 30 01 01") +
                                                        element(0x04, octets)))));
  const std::string report = openssl("ocsp -noverify -resp_text -respin response.der");
  EXPECT_EQ("1 (0x0)", after("Version: ", report));

  const Basic basic(basic_octets("response.der"));
  const ResponseData *record = basic.record->tbsResponseData;
  EXPECT_EQ(GetParam().version_written, record->version != nullptr);
  EXPECT_EQ(GetParam().responses, List_len(record->responses));
  EXPECT_EQ(after("Responder Id: ", report),
            upper_hex(value(static_cast<const OctetString *>(record->responderID->value))));
  EXPECT_EQ(after("Produced At: ", report), gmt_text(record->producedAt));
  expect_same_lines(printed_responses(report), response_lines(record->responses));
  expect_same_octets(basic.record.get(), take_apart("basic.der"));
}

INSTANTIATE_TEST_SUITE_P(Shapes, StatusResponseByHand, testing::ValuesIn(data_by_hand),
                         [](const auto &data) { return std::string(data.param.name); });

TEST(StatusResponseRefusal, IsForItsCertificates) {
  ask_for_all("ec", "-no_nonce");
  respond("ec", "");
  const Bytes octets = basic_octets("response.der");
  EXPECT_EQ(nullptr, left_by_refusal<BasicOCSPResponse>(asn1_BasicOCSPResponse_d, octets, nullptr));

  // Only the certificates prevent reading: without them, the rest is read.
  write_file("basic.der", octets);
  const std::vector<Element> parts = take_apart("basic.der").parts;
  ASSERT_EQ(4U, parts.size());
  const Basic rest(sequence(parts[0].whole + parts[1].whole + parts[2].whole));
  EXPECT_EQ(parts[0].whole, value(rest.record->tbsResponseDataBytes));
}

TEST(StatusResponseWithoutAnAnswer, HasItsStatusOnly) {
  authority("ec");
  write_index({});
  // The tool does not answer an empty request.
  write_file("request.der", unsigned_request(sequence({})));
  EXPECT_EQ("malformedrequest (0x1)",
            after("OCSP Response Status: ", respond("ec", "-ignore_err")));
  EXPECT_EQ(hex("30 03 0A 01 01"), read_file("response.der"));
  static const std::pair<uint8_t, const char *> rows[] = {{1, "malformedrequest (0x1)"},
                                                          {2, "internalerror (0x2)"},
                                                          {3, "trylater (0x3)"},
                                                          {5, "sigrequired (0x5)"},
                                                          {6, "unauthorized (0x6)"}};
  for (const auto &[status, printed] : rows) {
    const Bytes der = hex("30 03 0A 01") + Bytes{status};
    write_file("response.der", der);
    // There is nothing to verify. The tool reports that as an error after it has printed the
    // response.
    const std::string report =
        openssl("ocsp -ignore_err -resp_text -respin response.der 2>&1 || true");
    EXPECT_EQ(printed, after("OCSP Response Status: ", report));
    const auto response = record_of<asn1_OCSPResponse_free>(asn1_OCSPResponse_d, der);
    EXPECT_EQ(status, response->responseStatus);
    EXPECT_EQ(nullptr, response->responseBytes);
  }
}

/* ------------------------------------------------------------------------------------------- */
/* Making what the tool reads and answers                                                        */
/* ------------------------------------------------------------------------------------------- */

/// Returns the octets after a label of a report.
Bytes hash_of(const std::string &label, const std::string &report) {
  return hex(after(label, report));
}

/// Identifies a certificate of the EC authority, with the hashes that the tool prints for it.
CertID *identifier(Integer *serial) {
  const std::string report = openssl("x509 -noout -ocspid -in " + authority("ec"));
  CertID *id = asn1_CertID_new();
  id->hashAlgorithm = asn1_AlgId_new();
  id->hashAlgorithm->algorithm = asn1_ObjId_clone(asn1_Get_id_SHA1());
  id->hashAlgorithm->parameters = asn1_Any_clone(asn1_Any_NULL());
  id->issuerNameHash = octet_string(hash_of("Subject OCSP hash: ", report));
  id->issuerKeyHash = octet_string(hash_of("Public key OCSP hash: ", report));
  id->serialNumber = serial;
  return id;
}

Request *request_for(uint32_t serial) {
  Request *request = asn1_Request_new();
  request->reqCert = identifier(asn1_Integer_set(serial));
  return request;
}

/// Asks for a good, a revoked and an unknown certificate.
RequestPointer request_for_three() {
  write_index({{"", "4711"}, {"260131120000Z,superseded", "FFFFFFFF"}});
  OCSPRequest *request = asn1_OCSPRequest_new();
  request->tbsRequest = asn1_TBSRequest_new();
  request->tbsRequest->requestList =
      owning_list({request_for(0x4711), request_for(0xFFFFFFFF), request_for(0)});
  return RequestPointer(request);
}

const Bytes nonce = element(0x04, hex("00 11 22 33 44 55 66 77 88 99 AA BB CC DD EE FF"));

GeneralName *requestor(const char *host) {
  GeneralName *name = asn1_GeneralName_new();
  name->kind = 2;
  name->value = asn1_ASN1String_new(0, reinterpret_cast<const uint8_t *>(host));
  return name;
}

void fill(TBSRequest *tbs) {
  tbs->version = asn1_Integer_set(0);
  tbs->requestorName = requestor("client.example");
  tbs->requestExtensions = owning_list({extension(asn1_Get_id_pkix_ocsp_nonce(), 0, nonce)});
}

Bytes written(const OCSPRequest *request) {
  const Bytes der = encode(asn1_OCSPRequest_e, request);
  write_file("request.der", der);
  return der;
}

void expect_three_printed() {
  const std::string report = openssl("x509 -noout -ocspid -in " + authority("ec"));
  Lines lines;
  for (const char *serial : {"4711", "FFFFFFFF", "00"})
    lines = lines + Lines{"Certificate ID:", "Hash Algorithm: sha1",
                          "Issuer Name Hash: " + after("Subject OCSP hash: ", report),
                          "Issuer Key Hash: " + after("Public key OCSP hash: ", report),
                          std::string("Serial Number: ") + serial};
  expect_same_lines(printed_requests("request.der"), lines);
}

/// Checks that the response is about the certificates that were asked for.
void expect_answered(const OCSPRequest *request) {
  respond("ec", "-resp_no_certs");
  const Basic basic(basic_octets("response.der"));
  const ResponseData *data = basic.record->tbsResponseData;
  const auto singles = elements_of<SingleResponse>(data->responses);
  const auto requests = elements_of<Request>(request->tbsRequest->requestList);
  ASSERT_EQ(3U, singles.size());
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(0, asn1_CertID_cmp(requests[i]->reqCert, singles[i]->certID));
    EXPECT_EQ(1, asn1_CertID_cmp(requests[(i + 1) % 3]->reqCert, singles[i]->certID));
    EXPECT_EQ(i, singles[i]->certStatus->kind);
  }
  const auto *revoked = static_cast<const RevokedInfo *>(singles[1]->certStatus->value);
  EXPECT_STREQ("20260131120000Z", revoked->revocationTime);
  EXPECT_EQ(4U, revoked->revocationReason);
  if (request->tbsRequest->requestExtensions == nullptr) return;
  const auto extensions = elements_of<Extension>(data->responseExtensions);
  ASSERT_EQ(1U, extensions.size());
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_pkix_ocsp_nonce(), extensions[0]->extnID));
  EXPECT_EQ(nonce, value(extensions[0]->extnValue));
}

TEST(StatusRequestForOpenssl, OfTheRequiredFieldsIsPrintedAndAnswered) {
  const RequestPointer request = request_for_three();
  written(request.get());
  const std::string report = openssl("ocsp -req_text -reqin request.der");
  EXPECT_EQ(std::string::npos, report.find("Requestor Name:"));
  EXPECT_EQ(std::string::npos, report.find("Request Extensions:"));
  expect_three_printed();
  expect_answered(request.get());
}

TEST(StatusRequestForOpenssl, OfAllFieldsIsPrintedAndAnswered) {
  const RequestPointer request = request_for_three();
  fill(request->tbsRequest);
  written(request.get());
  const std::string report = openssl("ocsp -req_text -reqin request.der");
  EXPECT_EQ("1 (0x0)", after("Version: ", report));
  EXPECT_EQ("DNS:client.example", after("Requestor Name: ", report));
  EXPECT_EQ(upper_hex(nonce), section("OCSP Nonce:", report, {}).at(0));
  expect_three_printed();
  expect_answered(request.get());
}

class SignedStatusRequestForOpenssl : public testing::TestWithParam<const char *> {};

TEST_P(SignedStatusRequestForOpenssl, IsPrintedVerifiedAndAnswered) {
  const std::string kind = GetParam();
  const RequestPointer request = request_for_three();
  fill(request->tbsRequest);
  OCSPSignature *signature = asn1_OCSPSignature_new();
  request->optionalSignature = signature;
  signature->signatureAlgorithm = signature_algorithm(kind);
  // Signs until the signature has no zero bit at its end, because that would not be written.
  for (uint32_t attempt = 0; signature->signature == nullptr; ++attempt) {
    release(asn1_Integer_free, request->tbsRequest->version);
    request->tbsRequest->version = asn1_Integer_set(attempt);
    const Bytes octets = signature_over(encode(asn1_TBSRequest_e, request->tbsRequest), kind);
    if (octets.back() % 2 != 0) signature->signature = bit_string(octets);
  }
  written(request.get());
  const std::string report = openssl("ocsp -req_text -reqin request.der");
  EXPECT_EQ(kind == "rsa"  ? "sha256WithRSAEncryption"
            : kind == "ec" ? "ecdsa-with-SHA256"
                           : "ED25519",
            after("Signature Algorithm: ", report));
  expect_three_printed();

  const Element whole = take_apart("request.der");
  write_file("signed_octets", whole.parts.at(0).whole);
  const Bytes bits = whole.parts.at(1).parts.at(0).parts.at(1).content;
  EXPECT_EQ(0, bits.at(0));
  write_file("signature", Bytes(bits.begin() + 1, bits.end()));
  EXPECT_EQ("Signature Verified Successfully\n",
            openssl("pkeyutl -verify -rawin -in signed_octets -sigfile signature -inkey " +
                    key(kind) + (kind == "ed25519" ? "" : " -digest sha256")));
  expect_answered(request.get());
}

INSTANTIATE_TEST_SUITE_P(Keys, SignedStatusRequestForOpenssl,
                         testing::Values("rsa", "ec", "ed25519"),
                         [](const auto &kind) { return std::string(kind.param); });

// These forms are this library's own.
TEST(StatusRequestForOpensslDeparture, IsInADirectoryName) {
  const RequestPointer request = request_for_three();
  GeneralName *name = asn1_GeneralName_new();
  name->kind = 4;
  name->value = asn1_Name_clone("/c(19)=DE");
  request->tbsRequest->requestorName = name;
  const Bytes der = written(request.get());
  const Element field = take_apart("request.der").parts.at(0).parts.at(0);
  EXPECT_EQ(hex("A1 0F A4 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45"), field.whole);
  EXPECT_THROW(openssl("ocsp -req_text -reqin request.der"), std::runtime_error);
  expect_same_octets(decoded_request(der).get(), "request.der");
}

TEST(StatusRequestForOpensslDeparture, IsInExtensionsOfASingleRequest) {
  const RequestPointer request = request_for_three();
  auto *first = static_cast<Request *>(List_get(request->tbsRequest->requestList, 0));
  first->singleRequestExtensions =
      owning_list({extension(asn1_Get_id_pkix_ocsp_service_locator(), 0, hex("30 00"))});
  const Bytes der = written(request.get());
  const Element one = take_apart("request.der").parts.at(0).parts.at(0).parts.at(0);
  EXPECT_EQ(encode(asn1_CertID_e, first->reqCert) +
                hex("20 13 30 11 30 0F 06 09 2B 06 01 05 05 07 30 01 07 04 02 30 00"),
            one.content);
  EXPECT_THROW(openssl("ocsp -req_text -reqin request.der"), std::runtime_error);
  EXPECT_EQ(nullptr, left_by_refusal<OCSPRequest>(asn1_OCSPRequest_d, der, nullptr));
}

}  // namespace

}  // namespace ocsp_test
