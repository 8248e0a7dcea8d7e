// The types beside certificates: whole pages, short forms and JSON, how a type is recognised, and
// what is said of values that are in no form that the library reads.
#include "records.h"

namespace types_test {

namespace {

using namespace tool_tests;

// ---- Hand-made elements -------------------------------------------------------------------------

const Bytes issuer = common_name("Example CA");

Bytes utc(const char *text) { return element(0x17, support::text(text)); }
Bytes general(const char *text) { return element(0x18, support::text(text)); }

Bytes extension(const char *identifier, const char *value) {
  return sequence(element(0x06, hex(identifier)) + element(0x04, hex(value)));
}

Bytes crl_entry(const char *serial, const Bytes &extensions = {}) {
  return sequence(element(0x02, hex(serial)) + utc("200102030405Z") +
                  (extensions.empty() ? Bytes() : sequence(extensions)));
}

/// A CRL of version 2 with the number 4096.
Bytes crl(const Bytes &entries, const Bytes &name = issuer) {
  const Bytes extensions = sequence(extension("55 1D 14", "02 02 10 00"));
  return sequence(sequence(hex("02 01 01") + hex(ed25519) + name + utc("200101000000Z") +
                           utc("300101000000Z") + sequence(entries) + element(0xA0, extensions)) +
                  hex(ed25519) + element(0x03, hex("00 01 02 03 05")));
}

Bytes three_entries() {
  return crl_entry("10 00", extension("55 1D 15", "0A 01 01")) + crl_entry("10 01") +
         crl_entry("10 02",
                   extension("55 1D 15", "0A 01 06") + extension("55 1D 17", "06 03 2A 03 04"));
}

const Bytes certificate_id =
    sequence(hex("30 09 06 05 2B 0E 03 02 1A 05 00") + element(0x04, hex("0A 0B")) +
             element(0x04, hex("0C 0D")) + hex("02 02 10 00"));

const Bytes nonce = sequence(extension("2B 06 01 05 05 07 30 01 02", "04 04 01 02 03 04"));

Bytes ocsp_request() {
  return sequence(sequence(sequence(sequence(certificate_id)) + element(0xA2, nonce)));
}

Bytes basic_response(const Bytes &behind = {}) {
  const Bytes revoked = element(0xA1, general("20200102030405Z") + element(0xA0, hex("0A 01 01")));
  const Bytes single = sequence(certificate_id + revoked + general("20200101000000Z") +
                                element(0xA0, general("20300101000000Z")));
  const Bytes data = sequence(element(0xA2, element(0x04, hex("AA BB"))) +
                              general("20200101000000Z") + sequence(single) + element(0xA1, nonce));
  return sequence(data + hex(ed25519) + element(0x03, hex("00 01 02 03 05")) + behind);
}

Bytes ocsp_response(const Bytes &basic) {
  const Bytes bytes = sequence(hex("06 09 2B 06 01 05 05 07 30 01 01") + element(0x04, basic));
  return sequence(hex("0A 01 00") + element(0xA0, bytes));
}

Bytes certification_request() {
  const Bytes password = sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 07") +
                                  element(0x31, element(0x0C, support::text("secret"))));
  const Bytes wanted = sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 0E") +
                                element(0x31, sequence(extension("55 1D 0F", "03 02 05 A0"))));
  const Bytes key = sequence(hex(ed25519) + element(0x03, Bytes(1, 0x00) + Bytes(32, 0x01)));
  return sequence(sequence(hex("02 01 00") + common_name("www.example.org") + key +
                           element(0xA0, password + wanted)) +
                  hex(ed25519) + element(0x03, hex("00 01 02 03 05")));
}

Bytes certificate() {
  const Bytes key = sequence(hex(ed25519) + element(0x03, Bytes(1, 0x00) + Bytes(32, 0x01)));
  return sequence(sequence(hex("A0 03 02 01 02 02 01 07") + hex(ed25519) + issuer +
                           sequence(utc("200101000000Z") + utc("300101000000Z")) + issuer + key) +
                  hex(ed25519) + element(0x03, hex("00 01 02 03 05")));
}

class ToolTypes : public Records {
 protected:
  /// The types of all elements, as JSON names them.
  std::vector<std::string> recognised(const std::string &input) const {
    std::vector<std::string> names;
    std::istringstream lines(run({"show", "--json"}, input).out);
    for (std::string line; std::getline(lines, line);) names.push_back(json::parse(line)["type"]);
    return names;
  }

  json first_json(const Bytes &input, const std::string &type = "") const {
    std::vector<std::string> words{"show", "--json"};
    if (!type.empty()) words.insert(words.end(), {"--type", type});
    return json::parse(good(words, input));
  }

  /// A page without its first line, which is the heading, and its last one, which is empty.
  std::string rows(const std::string &page) const {
    const size_t start = page.find('\n') + 1;
    return page.substr(start, page.size() - start - 1);
  }

  std::string label(const std::string &pem, const std::string &from, const std::string &to) const {
    std::string out = pem;
    for (size_t at = 0; (at = out.find(from, at)) != std::string::npos; at += to.size())
      out.replace(at, from.size(), to);
    return out;
  }
};

// ---- CRLs ---------------------------------------------------------------------------------------

using ToolCrl = ToolTypes;

TEST_F(ToolCrl, HasAPageWithALineForEachEntry) {
  EXPECT_EQ(
      R"(CertificateRevocationList  standard input: element 1
  tbsCertList
    version              1 (v2)
    signature            Ed25519
    issuer               commonName=Example CA
    thisUpdate           2020-01-01 00:00:00 UTC
    nextUpdate           2030-01-01 00:00:00 UTC, 31 days left
    revokedCertificates  3 elements
      1000               2020-01-02 03:04:05 UTC
                         cRLReason keyCompromise
      1001               2020-01-02 03:04:05 UTC
      1002               2020-01-02 03:04:05 UTC
                         cRLReason certificateHold
                         holdInstructionCode 1.2.3.4
    crlExtensions        1 element
      cRLNumber          4096
  signatureAlgorithm     Ed25519
  signatureValue         01020305

)",
      good({"show"}, crl(three_entries())));
}

TEST_F(ToolCrl, HasAShortForm) {
  EXPECT_EQ(
      "standard input      CertificateRevocationList  issuer commonName=Example CA\n"
      "    nextUpdate 2030-01-01 00:00:00 UTC, 31 days left, revokedCertificates 3 elements\n",
      good({"show", "--short"}, crl(three_entries())));
}

TEST_F(ToolCrl, HasJson) {
  json object = first_json(crl(crl_entry("10 00", extension("55 1D 15", "0A 01 01"))));
  EXPECT_TRUE(object["pem"].get<std::string>().starts_with("-----BEGIN X509 CRL-----\n"));
  EXPECT_EQ(json::parse(R"([{
    "userCertificate": "1000",
    "revocationDate": {"kind": 23, "value": "200102030405Z", "time": "2020-01-02T03:04:05Z"},
    "crlEntryExtensions": [{"extnID": "2.5.29.21", "extnIDName": "cRLReason", "critical": false,
                            "extnValue": "0A0101", "decoded": "keyCompromise"}]}])"),
            object["tbsCertList"]["revokedCertificates"]);
  EXPECT_EQ("CN=Example CA", object["issuerRfc4514"]);
  for (const char *const key : {"pem", "tbsEncoded", "issuerRfc4514", "fingerprints"})
    object.erase(key);
  object["tbsCertList"].erase("revokedCertificates");
  EXPECT_EQ(json::parse(R"({
    "type": "crl", "file": "standard input", "element": 1,
    "tbsCertList": {
      "version": 1,
      "signature": {"algorithm": "1.3.101.112", "algorithmName": "Ed25519"},
      "issuerSequence": [[{"type": "2.5.4.3", "typeName": "commonName", "valueTag": 12,
                           "value": "Example CA"}]],
      "issuer": "/cn(12)=Example CA",
      "issuerEncoded": "301531133011060355040)"
                        R"(30C0A4578616D706C65204341",
      "thisUpdate": {"kind": 23, "value": "200101000000Z", "time": "2020-01-01T00:00:00Z"},
      "nextUpdate": {"kind": 23, "value": "300101000000Z", "time": "2030-01-01T00:00:00Z"},
      "state": "valid", "daysLeft": 31,
      "crlExtensions": [{"extnID": "2.5.29.20", "extnIDName": "cRLNumber", "critical": false,
                         "extnValue": "02021000", "decoded": "1000"}]},
    "signatureAlgorithm": {"algorithm": "1.3.101.112", "algorithmName": "Ed25519"},
    "signatureValue": {"length": 32, "data": "01020305"}})"),
            object);
}

TEST_F(ToolCrl, SaysWhatThePeerSays) {
  write_file(path("index.txt"),
             "R\t300101000000Z\t200202030405Z,keyCompromise\t1000\tunknown\t/CN=a\n"
             "R\t300101000000Z\t210202030405Z\tFEDCBA9876543210\tunknown\t/CN=b\n");
  write_file(path("crlnumber"), "1F\n");
  write_file(path("config"), "[ca]\ndefault_ca=d\n[d]\ndatabase=" + path("index.txt") +
                                 "\ncrlnumber=" + path("crlnumber") +
                                 "\ndefault_md=sha256\ncrl_extensions=e\n"
                                 "[e]\nauthorityKeyIdentifier=keyid\n");
  write_file(path("ca.pem"), make_certificate(ec_key));
  const std::string pem = openssl({"ca", "-config", path("config"), "-gencrl", "-crldays", "30",
                                   "-keyfile", path("key.pem"), "-cert", path("ca.pem")});
  const std::string report = openssl({"crl", "-noout", "-text"}, pem);
  const Outcome result = run({"show", "--json"}, pem);
  ASSERT_EQ(0, result.status) << result.err;
  const json object = json::parse(result.out);
  const json &tbs = object["tbsCertList"];
  EXPECT_EQ(pem, object["pem"]);
  ASSERT_EQ(2U, tbs["revokedCertificates"].size());
  for (const json &entry : tbs["revokedCertificates"])
    EXPECT_NE(std::string::npos,
              report.find("Serial Number: " + entry["userCertificate"].get<std::string>() + "\n"));
  EXPECT_EQ("2020-02-02T03:04:05Z", tbs["revokedCertificates"][0]["revocationDate"]["time"]);
  EXPECT_EQ("2021-02-02T03:04:05Z", tbs["revokedCertificates"][1]["revocationDate"]["time"]);
  EXPECT_EQ("keyCompromise", tbs["revokedCertificates"][0]["crlEntryExtensions"][0]["decoded"]);
  std::string identifier = tbs["crlExtensions"][0]["decoded"]["keyIdentifier"];
  for (size_t at = 2; at < identifier.size(); at += 3) identifier.insert(at, 1, ':');
  EXPECT_NE(std::string::npos, report.find(identifier));
  EXPECT_EQ("1F", tbs["crlExtensions"][1]["decoded"]);
  EXPECT_EQ(0, run({"recode", "--fresh"}, pem).status);
}

TEST_F(ToolCrl, IsCutUnlessAskedForInFull) {
  Bytes entries;
  for (int i = 0; i < 20; ++i) entries = entries + crl_entry("05");
  const std::string entry = "      05                 2020-01-02 03:04:05 UTC\n";
  const std::string cut = good({"show"}, crl(entries));
  EXPECT_NE(std::string::npos, cut.find(entry + "      ...                and 4 more\n"));
  const std::string full = good({"show", "--full"}, crl(entries));
  EXPECT_EQ(std::string::npos, full.find("and 4 more"));
  EXPECT_EQ(4 * entry.size() - std::string("      ...                and 4 more\n").size(),
            full.size() - cut.size());
}

TEST_F(ToolCrl, MayBeLong) {
  const size_t count = 100000;
  const Bytes entry = crl_entry("05");
  Bytes entries;
  entries.reserve(count * entry.size());
  for (size_t i = 0; i < count; ++i) entries.insert(entries.end(), entry.begin(), entry.end());
  const std::string input = file("long.crl", crl(entries));
  EXPECT_NE(std::string::npos, run({"show", input}).out.find("and 99984 more\n"));
  EXPECT_NE(std::string::npos, run({"show", "--short", input}).out.find("100000 elements\n"));
  const std::string line = run({"show", "--json", input}).out;
  size_t found = 0;
  for (size_t at = 0; (at = line.find("\"userCertificate\"", at)) != std::string::npos; ++at)
    ++found;
  EXPECT_EQ(count, found);
}

// ---- Certification requests ---------------------------------------------------------------------

using ToolRequest = ToolTypes;

TEST_F(ToolRequest, HasAPageWithItsAttributes) {
  EXPECT_EQ(R"(CertificationRequest  standard input: element 1
  certificationRequestInfo
    version                 0 (v1)
    subject                 commonName=www.example.org
    subjectPKInfo           Ed25519
    attributes              2 elements
      challengePassword     secret
      extensionRequest      1 element
        keyUsage            digitalSignature, keyEncipherment
  signatureAlgorithm        Ed25519
  signature                 01020305

)",
            good({"show"}, certification_request()));
}

TEST_F(ToolRequest, HasAShortForm) {
  EXPECT_EQ(
      "standard input      CertificationRequest   subject commonName=www.example.org\n"
      "    subjectPKInfo Ed25519, attributes 2 elements\n",
      good({"show", "--short"}, certification_request()));
}

TEST_F(ToolRequest, HasTheKeyInFullWhereAskedFor) {
  EXPECT_NE(std::string::npos, good({"show", "--full"}, certification_request())
                                   .find("    subjectPKInfo\n"
                                         "      algorithm             Ed25519\n"
                                         "      subjectPublicKey      01010101 01010101 01010101 "
                                         "01010101\n"
                                         "                            01010101 01010101 01010101 "
                                         "01010101\n"
                                         "      keyKind               Ed25519\n"));
}

TEST_F(ToolRequest, HasItsAttributesInJson) {
  EXPECT_EQ(json::parse(R"([
    {"type": "1.2.840.113549.1.9.7", "typeName": "challengePassword",
     "values": ["0C06736563726574"], "decoded": "secret"},
    {"type": "1.2.840.113549.1.9.14", "typeName": "extensionRequest",
     "values": ["300D300B0603551D0F0404030205A0"],
     "decoded": [{"extnID": "2.5.29.15", "extnIDName": "keyUsage", "critical": false,
                  "extnValue": "030205A0",
                  "decoded": ["digitalSignature", "keyEncipherment"]}]}])"),
            first_json(certification_request())["certificationRequestInfo"]["attributes"]);
}

TEST_F(ToolRequest, SaysWhatThePeerSays) {
  const std::string pem =
      openssl({"req", "-new", "-nodes", "-newkey", "rsa:1024", "-keyout", path("key.pem"), "-subj",
               "/C=DE/CN=www.example.org", "-addext", "subjectAltName=DNS:a.example,IP:192.0.2.1"});
  const Outcome result = run({"show", "--json"}, pem);
  ASSERT_EQ(0, result.status) << result.err;
  const json object = json::parse(result.out);
  const json &info = object["certificationRequestInfo"];
  EXPECT_EQ("certification-request", object["type"]);
  EXPECT_EQ(pem, object["pem"]);
  EXPECT_EQ("/c(19)=DE/cn(12)=www.example.org", info["subject"]);
  const std::string modulus = openssl({"req", "-noout", "-modulus"}, pem);
  EXPECT_NE(std::string::npos,
            info["subjectPKInfo"]["subjectPublicKey"]["data"].get<std::string>().find(
                modulus.substr(8, 256)));
  EXPECT_EQ(1024, info["subjectPKInfo"]["keyBits"]);
  EXPECT_EQ(json::parse(R"([{"kind": 2, "kindName": "DNS", "value": "a.example"},
                            {"kind": 7, "kindName": "IP", "value": "192.0.2.1"}])"),
            info["attributes"][0]["decoded"][0]["decoded"]);
}

// ---- OCSP ---------------------------------------------------------------------------------------

using ToolOcsp = ToolTypes;

TEST_F(ToolOcsp, HasAPageForARequest) {
  EXPECT_EQ(R"(OCSPRequest  standard input: element 1
  tbsRequest
    requestList           1 element
      [0]
        reqCert
          hashAlgorithm   sha1
          issuerNameHash  0A0B
          issuerKeyHash   0C0D
          serialNumber    1000
    requestExtensions     1 element
      ocsp-nonce          01020304

)",
            good({"show"}, ocsp_request()));
}

TEST_F(ToolOcsp, HasAPageForAResponseDownToTheStatus) {
  EXPECT_EQ(R"(OCSPResponse  standard input: element 1
  responseStatus              successful
  responseBytes
    responseType              ocsp-basic
    response
      tbsResponseData
        responderID           key AABB
        producedAt            2020-01-01 00:00:00 UTC
        responses             1 element
          [0]
            certID
              hashAlgorithm   sha1
              issuerNameHash  0A0B
              issuerKeyHash   0C0D
              serialNumber    1000
            certStatus        revoked, 2020-01-02 03:04:05 UTC, keyCompromise
            thisUpdate        2020-01-01 00:00:00 UTC
            nextUpdate        2030-01-01 00:00:00 UTC, 31 days left
        responseExtensions    1 element
          ocsp-nonce          01020304
      signatureAlgorithm      Ed25519
      signature               01020305

)",
            good({"show"}, ocsp_response(basic_response())));
}

TEST_F(ToolOcsp, HasAShortForm) {
  EXPECT_EQ(
      "standard input      OCSPResponse           responseStatus successful\n"
      "    responseType ocsp-basic, responderID key AABB, producedAt 2020-01-01 00:00:00 UTC, "
      "responses 1 element\n",
      good({"show", "--short"}, ocsp_response(basic_response())));
}

TEST_F(ToolOcsp, HasTheStatusInJson) {
  const json object = first_json(ocsp_response(basic_response()));
  EXPECT_EQ("successful", object["responseStatus"]);
  const json &data = object["responseBytes"]["decoded"]["tbsResponseData"];
  EXPECT_EQ(json::parse(R"({"byKey": "AABB"})"), data["responderID"]);
  EXPECT_EQ(json::parse(R"({"status": "revoked", "revoked": {
              "revocationTime": {"kind": 24, "value": "20200102030405Z",
                                 "time": "2020-01-02T03:04:05Z"},
              "revocationReason": "keyCompromise"}})"),
            data["responses"][0]["certStatus"]);
  EXPECT_EQ("01020304", data["responseExtensions"][0]["decoded"]);
}

TEST_F(ToolOcsp, ShowsTheCertificatesOfAResponse) {
  const Bytes response =
      ocsp_response(basic_response(element(0xA0, sequence(certificate() + certificate()))));
  const json certificates = first_json(response)["responseBytes"]["decoded"]["certs"];
  ASSERT_EQ(2U, certificates.size());
  EXPECT_EQ("07", certificates[1]["tbsCertificate"]["serialNumber"]);
  const std::string page = good({"show"}, response);
  EXPECT_NE(std::string::npos, page.find("      certs  "));
  EXPECT_NE(std::string::npos, page.find("            serialNumber  "));
}

TEST_F(ToolOcsp, ShowsWhatStandsBesideAMalformedCertificate) {
  const Bytes basic = basic_response(element(0xA0, sequence(hex("05 00") + certificate())));
  const json object = first_json(ocsp_response(basic))["responseBytes"];
  // The list and its tag have headers of three octets each.
  const size_t offset = basic.size() - certificate().size() - 2;
  const std::string why =
      "offset " + std::to_string(offset) + ": certs[0]: expected SEQUENCE (30), found NULL (05)";
  EXPECT_EQ(why, object["malformed"]);
  EXPECT_EQ(json({{"malformed", why}, {"octets", "0500"}}), object["decoded"]["certs"][0]);
  EXPECT_EQ("07", object["decoded"]["certs"][1]["tbsCertificate"]["serialNumber"]);
  EXPECT_EQ("revoked",
            object["decoded"]["tbsResponseData"]["responses"][0]["certStatus"]["status"]);
}

TEST_F(ToolOcsp, KnowsTheStatusOfAResponseWithoutContent) {
  EXPECT_EQ("  responseStatus  tryLater\n", rows(good({"show"}, hex("30 03 0A 01 03"))));
  EXPECT_EQ("unauthorized", first_json(hex("30 03 0A 01 06"))["responseStatus"]);
}

TEST_F(ToolOcsp, SaysWhatThePeerSays) {
  const std::string ca = file("ca.pem", make_certificate(ec_key));
  write_file(path("index.txt"),
             "R\t300101000000Z\t200202030405Z,superseded\t1000\tunknown\t/CN=a\n");
  openssl({"ocsp", "-issuer", ca, "-serial", "0x1000", "-reqout", path("q.der")});
  openssl({"ocsp", "-index", path("index.txt"), "-CA", ca, "-rsigner", ca, "-rkey", path("key.pem"),
           "-reqin", path("q.der"), "-respout", path("a.der"), "-resp_no_certs", "-ndays", "7"});
  const Outcome question = run({"show", "--json", path("q.der")});
  const Outcome answer = run({"show", "--json", path("a.der")});
  ASSERT_EQ(0, question.status + answer.status) << question.err << answer.err;
  const json asked = json::parse(question.out)["tbsRequest"];
  const json data = json::parse(answer.out)["responseBytes"]["decoded"]["tbsResponseData"];
  const json &status = data["responses"][0];
  EXPECT_EQ(asked["requestList"][0]["reqCert"], status["certID"]);
  EXPECT_EQ("1000", status["certID"]["serialNumber"]);
  EXPECT_EQ("revoked", status["certStatus"]["status"]);
  EXPECT_EQ("superseded", status["certStatus"]["revoked"]["revocationReason"]);
  EXPECT_EQ("2020-02-02T03:04:05Z", status["certStatus"]["revoked"]["revocationTime"]["time"]);
  const std::string report = openssl({"ocsp", "-respin", path("a.der"), "-resp_text", "-noverify"});
  EXPECT_NE(std::string::npos, report.find("Issuer Name Hash: " +
                                           status["certID"]["issuerNameHash"].get<std::string>()));
  EXPECT_NE(std::string::npos, report.find("Issuer Key Hash: " +
                                           status["certID"]["issuerKeyHash"].get<std::string>()));
  EXPECT_EQ(asked["requestExtensions"][0]["decoded"], data["responseExtensions"][0]["decoded"]);
}

// ---- What an element is -------------------------------------------------------------------------

using ToolDetection = ToolTypes;

TEST_F(ToolDetection, GoesByStructureAlsoInMixedFiles) {
  const Bytes all = crl(three_entries()) + ocsp_request() + certificate() +
                    ocsp_response(basic_response()) + certification_request() + basic_response() +
                    sequence(hex(ed25519) + element(0x03, hex("00 01")));
  EXPECT_EQ((std::vector<std::string>{"crl", "ocsp-request", "certificate", "ocsp-response",
                                      "certification-request", "basic-ocsp-response",
                                      "subject-public-key-info"}),
            recognised(characters(all)));
}

TEST_F(ToolDetection, GoesByThePemLabelFirst) {
  const std::string certificate_pem = to_pem(certificate());
  EXPECT_EQ(std::vector<std::string>{"certificate"}, recognised(certificate_pem));
  const Outcome result =
      run({"show"}, label(certificate_pem, "CERTIFICATE", "CERTIFICATE REQUEST"));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(
      "orvelasn1: standard input: element 1 (line 1), offset 6: certificationRequestInfo.version: "
      "expected INTEGER (02), found [0] (A0)\n",
      result.err);
}

TEST_F(ToolDetection, TakesTheTypeThatIsAskedForWhateverTheLabel) {
  const std::string pem = label(to_pem(certificate()), "CERTIFICATE", "SOMETHING");
  const Outcome result = run({"recode", "--type", "certificate"}, pem);
  EXPECT_EQ(0, result.status) << result.err;
  EXPECT_EQ(", offset 6: tbsCertList.signature: expected SEQUENCE (30), found [0] (A0)\n",
            message({"show", "--type", "crl"}, certificate()));
}

TEST_F(ToolDetection, SaysWhereItsBestGuessGoesWrong) {
  Bytes broken = ocsp_request();
  const Bytes number = hex("02 02 10 00");
  *std::search(broken.begin(), broken.end(), number.begin(), number.end()) = 0x04;
  EXPECT_EQ(
      ", offset 29: tbsRequest.requestList[0].reqCert.serialNumber: expected INTEGER "
      "(02), found OCTET STRING (04)\n",
      message({"show"}, broken));
}

TEST_F(ToolDetection, LetsEachTypeSpeakThatComesAsFar) {
  // Up to the issuer a CRL looks like a certificate without a version.
  EXPECT_EQ(
      ", offset 18: as certificate: tbsCertificate.issuer[0]: expected SET (31), found SEQUENCE "
      "(30); as crl: tbsCertList.issuer[0]: expected SET (31), found SEQUENCE (30)\n",
      message({"show"}, crl(three_entries(), sequence(sequence({})))));
}

// The text of a name has no room for the identifier octet 84: the decoder of liborvelasn1, which this
// type is read by, ends its process.
TEST_F(ToolDetection, KeepsElementsApartThatEndTheirProcess) {
  const Bytes ending = common_name("x", 0x84);
  const Bytes good = common_name("x");
  const Outcome result =
      run({"recode", "--type", "name"}, characters(ending + good + ending + good));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(
      "standard input: element 2: same, 14 octets\nstandard input: element 4: same, 14 octets\n",
      result.out);
  EXPECT_TRUE(matches(result.err,
                      "^orvelasn1: standard input: element 1: the library ended its process: "
                      "[^\n]+\norvelasn1: standard input: element 3: the library ended its "
                      "process: [^\n]+\n$"))
      << result.err;
}

TEST_F(ToolDetection, TakesElementsOfDifferentTagsBehindEachOther) {
  EXPECT_EQ(
      "standard input      GeneralName            DNS ab\n"
      "standard input #2   GeneralName            IP 192.0.2.1\n"
      "standard input #3   GeneralName            directory countryName=DE\n",
      good({"show", "--short", "--type", "general-name"},
           hex("82 02 61 62 87 04 C0 00 02 01 "
               "A4 0F 30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45")));
}

TEST_F(ToolDetection, RefusesRubbishBehindAnElement) {
  for (const char *const rubbish : {"00 00 00", "0A 00 00"})
    EXPECT_EQ("orvelasn1: standard input: element 1, offset " +
                  std::to_string(ocsp_request().size()) +
                  ": 3 octets after it are not DER: skipped (" + rubbish + ")\n",
              run({"show"}, characters(ocsp_request() + hex(rubbish))).err);
}

TEST_F(ToolDetection, NamesTheCommandThatListsTheTypes) {
  const Outcome result = run({"show", "--type", "nothing"});
  EXPECT_EQ(2, result.status);
  EXPECT_TRUE(result.err.starts_with(
      "orvelasn1: --type: no type has the name \"nothing\" (\"orvelasn1 types\" lists them all)\n"))
      << result.err;
}

TEST_F(ToolDetection, ListsTypesThatAllCommandsTake) {
  const Outcome list = run({"types"});
  EXPECT_EQ(0, list.status);
  EXPECT_NE(std::string::npos, list.out.find("  [X509 CRL, CRL]\n"));
  std::istringstream lines(list.out);
  size_t count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    const std::string name = line.substr(0, line.find(' '));
    // The octet FF begins no element.
    const Outcome result = run({"trace", "--type", name}, "\xFF\xFF");
    EXPECT_EQ(1, result.status) << name;
    EXPECT_TRUE(result.err.starts_with("orvelasn1: standard input: element 1")) << result.err;
  }
  EXPECT_LT(60U, count);
}

// ---- Parts --------------------------------------------------------------------------------------

using ToolParts = ToolTypes;

TEST_F(ToolParts, HavePagesOfTheirOwn) {
  struct Row {
    const char *type;
    const char *octets;
    const char *rows;
  };
  const std::vector<Row> table{
      {"algorithm-identifier", "30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00",
       "  algorithm   sha256WithRSAEncryption\n"
       "  parameters  0500\n"},
      {"validity",
       "30 1E 17 0D 32 30 30 31 30 31 30 30 30 30 30 30 5A "
       "17 0D 33 30 30 31 30 31 30 30 30 30 30 30 5A",
       "  notBefore  2020-01-01 00:00:00 UTC\n"
       "  notAfter   2030-01-01 00:00:00 UTC, 31 days left\n"},
      {"extension", "30 0E 06 03 55 1D 0F 01 01 FF 04 04 03 02 05 A0",
       "  extnID     keyUsage\n"
       "  critical   TRUE\n"
       "  extnValue  030205A0\n"
       "  decoded    digitalSignature, keyEncipherment\n"},
      {"extensions", "30 0D 30 0B 06 03 55 1D 0F 04 04 03 02 05 A0",
       "  keyUsage  digitalSignature, keyEncipherment\n"},
      {"name", "30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45", "  value  countryName=DE\n"},
      {"rdn-sequence", "30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45", "  value  countryName=DE\n"},
      {"relative-distinguished-name", "31 0B 30 09 06 03 55 04 06 13 02 44 45",
       "  [0]  countryName=DE\n"},
      {"attribute-type-and-value", "30 09 06 03 55 04 06 13 02 44 45", "  value  countryName=DE\n"},
      {"attribute", "30 0C 06 03 2A 03 04 31 05 02 01 07 05 00",
       "  type    1.2.3.4\n"
       "  values  020107\n"
       "          0500\n"},
      {"crl-entry", "30 14 02 02 10 00 18 0E 31 39 30 30 30 31 30 31 30 30 30 30 30 5A",
       "  userCertificate  1000\n"
       "  revocationDate   \"1900010100000Z\"\n"},
      {"another-name", "30 09 06 03 2A 03 04 A0 02 05 00",
       "  type   1.2.3.4\n"
       "  value  0500\n"},
      {"authority-key-identifier", "30 0A 80 02 0A 0B 82 04 00 80 00 01",
       "  keyIdentifier              0A0B\n"
       "  authorityCertSerialNumber  800001\n"},
      {"basic-constraints", "30 06 01 01 FF 02 01 03",
       "  cA                 TRUE\n"
       "  pathLenConstraint  3\n"},
      {"name-constraints", "30 10 A0 06 30 04 82 02 61 62 A1 06 30 04 81 02 63 40",
       "  permittedSubtrees  DNS ab\n"
       "  excludedSubtrees   email c@\n"},
      {"general-subtree", "30 07 82 02 61 62 81 01 02",
       "  base     DNS ab\n"
       "  maximum  2\n"},
      {"policy-constraints", "30 06 80 01 02 81 01 00",
       "  requireExplicitPolicy  2\n"
       "  inhibitPolicyMapping   0\n"},
      {"policy-mapping", "30 0B 06 04 55 1D 20 00 06 03 2A 03 04",
       "  issuerDomainPolicy   anyPolicy\n"
       "  subjectDomainPolicy  1.2.3.4\n"},
      {"private-key-usage-period", "30 11 81 0F 32 30 33 30 30 31 30 31 30 30 30 30 30 30 5A",
       "  notAfter  2030-01-01 00:00:00 UTC\n"},
      {"distribution-point-name", "A0 04 82 02 61 62", "  fullName  DNS ab\n"},
      {"distribution-point", "30 0C A0 06 A0 04 82 02 61 62 81 02 06 40",
       "  fullName  DNS ab\n"
       "  reasons   keyCompromise\n"},
      {"access-description", "30 0E 06 08 2B 06 01 05 05 07 30 01 86 02 78 3A",
       "  accessMethod    ocsp\n"
       "  accessLocation  URI x:\n"},
      {"authority-info-access-syntax", "30 10 30 0E 06 08 2B 06 01 05 05 07 30 01 86 02 78 3A",
       "  [0]  ocsp, URI x:\n"},
      {"responder-id", "A1 0F 30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45",
       "  byName  countryName=DE\n"},
      {"cert-status", "82 00", "  status  unknown\n"},
      {"revoked-info", "30 11 18 0F 32 30 32 30 30 31 30 32 30 33 30 34 30 35 5A",
       "  revocationTime  2020-01-02 03:04:05 UTC\n"},
      {"revoked-info", "30 16 18 0F 32 30 32 30 30 31 30 32 30 33 30 34 30 35 5A A0 03 0A 01 00",
       "  revocationTime    2020-01-02 03:04:05 UTC\n"
       "  revocationReason  unspecified\n"},
      {"inhibit-any-policy", "02 01 02", "  value  inhibits anyPolicy after 2 certificates\n"},
      {"key-usage", "03 02 05 A0", "  value  digitalSignature, keyEncipherment\n"},
      {"integer", "02 02 00 FF", "  value  FF\n"},
      {"object-identifier", "06 03 55 04 06", "  value  countryName\n"},
      {"bit-string", "03 02 04 A0", "  value  A0, 4 bits\n"},
      {"octet-string", "04 00", "  value  (empty)\n"},
      {"utf8-string", "0C 03 41 C3 A9", "  value  A\u00E9\n"},
      {"time", "17 0D 32 30 30 31 30 31 30 30 30 30 30 30 5A",
       "  value  2020-01-01 00:00:00 UTC\n"},
      {"any", "05 00", "  value  0500\n"},
  };
  for (const Row &row : table)
    EXPECT_EQ(row.rows, rows(good({"show", "--type", row.type}, hex(row.octets)))) << row.type;
}

TEST_F(ToolParts, HaveTheirOctetsInJsonWhereThereIsNoLabel) {
  EXPECT_EQ(json::parse(R"({"type": "policy-constraints", "file": "standard input", "element": 1,
                            "octets": "3003800102", "requireExplicitPolicy": 2})"),
            first_json(hex("30 03 80 01 02"), "policy-constraints"));
}

TEST_F(ToolParts, AreAMemberOfTheirOwnInJsonWhereNamesWouldClash) {
  EXPECT_EQ(json::parse(R"({"type": "attribute", "file": "standard input", "element": 1,
                            "octets": "300A06032A03043103020107",
                            "value": {"type": "1.2.3.4", "values": ["020107"]}})"),
            first_json(hex("30 0A 06 03 2A 03 04 31 03 02 01 07"), "attribute"));
  EXPECT_EQ("countryName",
            first_json(hex("06 03 55 04 06"), "object-identifier").value("valueName", ""));
}

TEST_F(ToolParts, SayWhereTheyDepartFromTheirSyntax) {
  for (const auto &[type, octets, why] : std::vector<std::array<const char *, 3>>{
           {"general-name", "A9 02 05 00",
            "offset 0: expected one of [0] (A0), [1] (81), [2] (82), [3] (A3), [4] (A4), [5] (A5), "
            "[6] (86), [7] (87), [8] (88), found [9] (A9)"},
           {"cert-status", "84 00",
            "offset 0: expected one of [0] (80), [1] (A1), [2] (82), found [4] (84)"},
           {"request",
            "30 19 30 13 30 05 06 03 2A 03 04 04 02 0A 0B 04 02 0C 0D 02 02 10 00 A1 02 "
            "30 00",
            "offset 23: found [1] (A1), where the value ends"},
       })
    EXPECT_EQ(", " + std::string(why) + "\n", message({"show", "--type", type}, hex(octets)))
        << type;
}

// ---- Extension values ---------------------------------------------------------------------------

using ToolExtensions = ToolTypes;

TEST_F(ToolExtensions, AreReadAsTheRfcsHaveThem) {
  struct Row {
    const char *identifier;
    const char *value;
    const char *rows;
    const char *decoded;
  };
  const std::vector<Row> table{
      {"55 1D 23", "30 0A 80 02 0A 0B 82 04 00 80 00 01",
       "  authorityKeyIdentifier  0A0B\n"
       "                          serial 800001\n",
       R"({"keyIdentifier": "0A0B", "authorityCertSerialNumber": "800001"})"},
      {"55 1D 24", "30 03 80 01 00", "  policyConstraints  requires explicit policy\n",
       R"({"requireExplicitPolicy": 0})"},
      {"55 1D 24", "30 06 80 01 01 81 01 02",
       "  policyConstraints  requires explicit policy after 1 certificate\n"
       "                     inhibits policy mapping after 2 certificates\n",
       R"({"requireExplicitPolicy": 1, "inhibitPolicyMapping": 2})"},
      {"55 1D 36", "02 01 00", "  inhibitAnyPolicy  inhibits anyPolicy\n", "0"},
      {"55 1D 1E",
       "30 1E A0 06 30 04 82 02 61 62 A1 14 30 0A 87 08 0A 00 00 00 FF 00 00 00"
       "30 06 81 04 2E 61 2E 62",
       "  nameConstraints  permitted DNS ab\n"
       "                   excluded IP 10.0.0.0/8\n"
       "                   excluded email .a.b\n",
       R"({"permittedSubtrees": [{"base": {"kind": 2, "kindName": "DNS", "value": "ab"}}],
           "excludedSubtrees": [{"base": {"kind": 7, "kindName": "IP", "value": "10.0.0.0/8"}},
                                {"base": {"kind": 1, "kindName": "email", "value": ".a.b"}}]})"},
      {"55 1D 1E", "30 0E A1 0C 30 0A 87 08 0A 00 01 00 FF 00 FF 00",
       "  nameConstraints  excluded IP 10.0.1.0/255.0.255.0\n",
       R"({"excludedSubtrees": [{"base": {"kind": 7, "kindName": "IP",
                                          "value": "10.0.1.0/255.0.255.0"}}]})"},
      {"55 1D 10", "30 11 80 0F 32 30 32 30 30 31 30 31 30 30 30 30 30 30 5A",
       "  privateKeyUsagePeriod  from  2020-01-01 00:00:00 UTC\n",
       R"({"notBefore": {"kind": 24, "value": "20200101000000Z", "time": "2020-01-01T00:00:00Z"}})"},
      {"55 1D 21", "30 0D 30 0B 06 04 55 1D 20 00 06 03 2A 03 04",
       "  policyMappings  anyPolicy is 1.2.3.4\n",
       R"([{"issuerDomainPolicy": "2.5.29.32.0", "issuerDomainPolicyName": "anyPolicy",
            "subjectDomainPolicy": "1.2.3.4"}])"},
      {"55 1D 1F", "30 0C 30 0A A0 02 A0 00 A2 04 82 02 61 62",
       "  cRLDistributionPoints  (empty)\n"
       "                           issued by DNS ab\n",
       R"([{"fullName": [], "cRLIssuer": [{"kind": 2, "kindName": "DNS", "value": "ab"}]}])"},
      {"55 1D 1F", "30 0D 30 0B A0 09 A1 07 30 05 06 01 2A 0C 00",
       "  cRLDistributionPoints  relative to the issuer 1.2=\n",
       R"([{"nameRelativeToCRLIssuer": [{"type": "1.2", "valueTag": 12, "value": ""}]}])"},
      {"55 1D 1C", "30 12 A0 06 A0 04 86 02 78 3A 81 01 FF 83 02 05 60 84 01 FF",
       "  issuingDistributionPoint  URI x:\n"
       "                            only user certificates\n"
       "                            only for keyCompromise, cACompromise\n"
       "                            an indirect CRL\n",
       R"({"distributionPoint": {"fullName": [{"kind": 6, "kindName": "URI", "value": "x:"}]},
           "onlyContainsUserCerts": true, "onlyContainsCACerts": false,
           "onlySomeReasons": ["keyCompromise", "cACompromise"], "indirectCRL": true,
           "onlyContainsAttributeCerts": false})"},
      {"55 1D 11",
       "30 2C A0 1B 06 0A 2B 06 01 04 01 82 37 14 02 03 A0 0D 0C 0B 6D 65 40 61 2E 65 78 61 6D 70"
       "6C A5 0D A0 04 0C 02 42 79 A1 05 13 03 45 44 49",
       "  subjectAltName  other name userPrincipalName, me@a.exampl\n"
       "                  EDI party EDI, assigned by By\n",
       R"([{"kind": 0, "kindName": "other name", "type": "1.3.6.1.4.1.311.20.2.3",
            "typeName": "userPrincipalName", "value": "0C0B6D6540612E6578616D706C",
            "text": "me@a.exampl"},
           {"kind": 5, "kindName": "EDI party", "value": "A50DA0040C024279A1051303454449",
            "text": "EDI, assigned by By"}])"},
      {"55 1D 11",
       "30 25 A3 23 30 21 61 04 13 02 44 45 62 03 13 01 41 83 03 4F 72 67 A5 09 80 03 44 6F 65 81"
       "02 4A 6F A6 04 13 02 4F 55",
       "  subjectAltName  X.400 C=DE; A=A; O=Org; S=Doe; G=Jo; OU1=OU\n", nullptr},
      {"2B 06 01 05 05 07 01 18", "30 06 02 01 05 02 01 11",
       "  tlsFeature  status_request, status_request_v2\n", "[5, 17]"},
      // A nonce as it ought to be, and without its OCTET STRING.
      {"2B 06 01 05 05 07 30 01 02", "04 02 01 02", "  ocsp-nonce  0102\n", R"("0102")"},
      {"2B 06 01 05 05 07 30 01 02", "01 02 03", "  ocsp-nonce  010203 (bare octets)\n",
       R"("010203")"},
  };
  for (const Row &row : table) {
    const Bytes list = sequence(extension(row.identifier, row.value));
    if (row.rows != nullptr) {
      EXPECT_EQ(row.rows, rows(good({"show", "--type", "extensions"}, list))) << row.value;
    }
    if (row.decoded != nullptr) {
      EXPECT_EQ(json::parse(row.decoded), first_json(list, "extensions")["value"][0]["decoded"]);
    }
  }
}

/// What a page and JSON have of a list of one extension.
struct Shown {
  std::string rows;
  json decoded;
};

class ToolExtension : public ToolTypes {
 protected:
  Shown shown(const char *identifier, const Bytes &value) const {
    const Bytes list = sequence(sequence(element(0x06, hex(identifier)) + element(0x04, value)));
    return {rows(good({"show", "--type", "extensions"}, list)),
            first_json(list, "extensions")["value"][0]["decoded"]};
  }
};

TEST_F(ToolExtension, ThatNobodyKnowsIsAnOutline) {
  // 1.2.3.4: SEQUENCE { INTEGER 5, [0] { UTF8String "a" } }, and octets that are no element.
  // Offsets are as wide as the size of the value, 10.
  EXPECT_EQ(
      "  1.2.3.4   0  2+8    SEQUENCE\n"
      "            2  2+1      INTEGER 5\n"
      "            5  2+3      [0]\n"
      "            7  2+1        UTF8String \"a\"\n",
      shown("2A 03 04", hex("30 08 02 01 05 A0 03 0C 01 61")).rows);
  EXPECT_EQ("  1.2.3.4  0102\n", shown("2A 03 04", hex("01 02")).rows);
}

TEST_F(ToolExtension, PoliciesHaveTheirQualifiers) {
  const Bytes place = sequence(hex("06 08 2B 06 01 05 05 07 02 01") +
                               element(0x16, support::text("https://a.example")));
  const Bytes notice = sequence(
      hex("06 08 2B 06 01 05 05 07 02 02") +
      sequence(sequence(element(0x0C, support::text("Org")) + sequence(hex("02 01 01 02 01 02"))) +
               element(0x1E, hex("00 48 20 AC"))));
  const Bytes unread = sequence(hex("06 08 2B 06 01 05 05 07 02 02") + hex("05 00"));
  const Shown policies =
      shown("55 1D 20", sequence(sequence(hex("06 06 67 81 0C 01 02 01") + sequence(place)) +
                                 sequence(hex("06 03 2A 03 04") + sequence(unread + notice))));
  EXPECT_EQ(
      "  certificatePolicies  cabf-domain-validated\n"
      "                         CPS https://a.example\n"
      "                       1.2.3.4\n"
      "                         malformed: offset 0: expected SEQUENCE (30), found NULL (05)\n"
      "                           0  2+0    NULL\n"
      "                         notice \"H\u20AC\"\n"
      "                         notice 1, 2 of \"Org\"\n",
      policies.rows);
  EXPECT_EQ("https://a.example", policies.decoded[0]["policyQualifiers"][0]["decoded"]);
  EXPECT_EQ("H\u20AC", policies.decoded[1]["policyQualifiers"][1]["decoded"]["explicitText"]);
}

TEST_F(ToolExtension, AddressesAndNumbersAreReadable) {
  // 10.0.0.0/8, then from 192.0.2.0 to 192.0.2.255, whose last octet is all ones; IPv6 is inherited.
  const Bytes range = sequence(hex("03 04 00 C0 00 02  03 04 00 C0 00 02"));
  const Shown blocks =
      shown("2B 06 01 05 05 07 01 07",
            sequence(sequence(hex("04 02 00 01") + sequence(hex("03 02 00 0A") + range)) +
                     sequence(hex("04 02 00 02 05 00"))));
  EXPECT_EQ(
      "  ipAddrBlocks  IPv4\n"
      "                  10.0.0.0/8\n"
      "                  192.0.2.0-192.0.2.255\n"
      "                IPv6\n"
      "                  inherit\n",
      blocks.rows);
  EXPECT_EQ(json({"10.0.0.0/8", "192.0.2.0-192.0.2.255"}), blocks.decoded[0]["addresses"]);
  const Shown numbers = shown(
      "2B 06 01 05 05 07 01 08",
      sequence(
          element(0xA0, sequence(hex("02 03 00 FB F0") + sequence(hex("02 01 05  02 02 00 FF")))) +
          hex("A1 02 05 00")));
  EXPECT_EQ(
      "  autonomousSysIds  AS 64496, 5-255\n"
      "                    routing domain inherit\n",
      numbers.rows);
}

TEST_F(ToolExtension, TimestampsHaveTheirLogAndTime) {
  // 1577836800123 milliseconds are 2020-01-01 00:00:00.123; the signature 0A0B by sha256 and ecdsa.
  const Bytes timestamp =
      hex("00") + Bytes(32, 0x0C) + hex("00 00 01 6F 5E 66 E8 7B  00 00  04 03  00 02 0A 0B");
  const Bytes list = Bytes{0, static_cast<uint8_t>(timestamp.size() + 2), 0,
                           static_cast<uint8_t>(timestamp.size())} +
                     timestamp;
  const Shown timestamps = shown("2B 06 01 04 01 D6 79 02 04 02", octet_string(list));
  std::string log;
  for (int i = 0; i < 32; ++i) log += "0C";
  EXPECT_EQ(
      "  signedCertificateTimestamps  2020-01-01 00:00:00.123 UTC, ecdsa with sha256\n"
      "                                 log " +
          log + "\n",
      timestamps.rows);
  EXPECT_EQ(1577836800123, timestamps.decoded[0]["timestamp"]);
  EXPECT_EQ("0A0B", timestamps.decoded[0]["signature"]);
}

TEST_F(ToolExtension, StatementsAreReadable) {
  const Bytes limit = sequence(hex("06 06 04 00 8E 46 01 02") +
                               sequence(hex("13 03 45 55 52  02 01 05  02 01 03")));
  const Bytes type =
      sequence(hex("06 06 04 00 8E 46 01 06") + sequence(hex("06 07 04 00 8E 46 01 06 03")));
  const Bytes place = sequence(
      hex("06 06 04 00 8E 46 01 05") +
      sequence(sequence(element(0x16, support::text("https://a.example")) + hex("13 02 65 6E"))));
  EXPECT_EQ(
      "  qcStatements  qcCompliance\n"
      "                qcLimitValue, 5 * 10^3 EUR\n"
      "                qcType, qcTypeWeb\n"
      "                qcPDS, https://a.example (en)\n",
      shown("2B 06 01 05 05 07 01 03",
            sequence(sequence(hex("06 06 04 00 8E 46 01 01")) + limit + type + place))
          .rows);
}

// ---- recode and trace ---------------------------------------------------------------------------

using ToolOtherCommands = ToolTypes;

TEST_F(ToolOtherCommands, GiveBackEveryOctet) {
  for (const Bytes &octets :
       {crl(three_entries()), ocsp_request(), certification_request(), certificate()})
    for (const bool fresh : {false, true}) {
      std::vector<std::string> words{"recode"};
      if (fresh) words.emplace_back("--fresh");
      const Outcome result = run(words, characters(octets));
      EXPECT_EQ(0, result.status);
      EXPECT_EQ("standard input: element 1: same, " + std::to_string(octets.size()) + " octets\n",
                result.out);
    }
}

TEST_F(ToolOtherCommands, WriteAResponse) {
  const Bytes response = ocsp_response(basic_response());
  EXPECT_EQ("standard input: element 1: same, " + std::to_string(response.size()) + " octets\n",
            good({"recode", "--fresh"}, response));
}

TEST_F(ToolOtherCommands, TraceWhatTheDecoderReads) {
  const Outcome result = run({"trace"}, characters(ocsp_request()));
  EXPECT_EQ(0, result.status) << result.err;
  EXPECT_NE(std::string::npos, result.out.find("ASN.1: SEQUENCE"));
}

}  // namespace

}  // namespace types_test
