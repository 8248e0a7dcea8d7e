// Messages and personal information exchange: made by hand, or by the peer.
#include "records.h"

namespace messages_test {

namespace {

using namespace tool_tests;

using ToolMessages = Records;
using ToolExchange = Records;

constexpr const char *data_type = "2A 86 48 86 F7 0D 01 07 01";
constexpr const char *signed_type = "2A 86 48 86 F7 0D 01 07 02";
constexpr const char *encrypted_type = "2A 86 48 86 F7 0D 01 07 06";

Bytes content_info(const char *type, const Bytes &content) {
  return sequence(oid(type) + element(0xA0, content));
}
Bytes data(const Bytes &octets) { return content_info(data_type, octet_string(octets)); }

/// SET OF SHA-1.
const Bytes digests = set(hex("30 09 06 05 2B 0E 03 02 1A 05 00"));
const Bytes signing_time = sequence(oid("2A 86 48 86 F7 0D 01 09 05") +
                                    set(element(0x17, support::text("200101000000Z"))));
const Bytes signer =
    sequence(hex("02 01 01") + sequence(common_name("CA") + hex("02 01 07")) +
             hex("30 09 06 05 2B 0E 03 02 1A 05 00") +
             element(0xA0, sequence(oid("2A 86 48 86 F7 0D 01 09 03") + set(oid(data_type))) +
                               signing_time) +
             hex(ed25519) + octet_string(hex("0A 0B")));

Bytes signed_data(const Bytes &content, const Bytes &between) {
  return sequence(hex("02 01 01") + digests + content + between + set(signer));
}

const Bytes certificate =
    sequence(sequence(hex("02 01 07") + hex(ed25519) + common_name("CA") +
                      sequence(element(0x17, support::text("200101000000Z")) +
                               element(0x17, support::text("300101000000Z"))) +
                      common_name("Someone") +
                      sequence(hex(ed25519) + element(0x03, Bytes(1, 0x00) + Bytes(32, 0x01)))) +
             hex(ed25519) + element(0x03, hex("00 0A")));

const Bytes encrypted_data = sequence(
    hex("02 01 00") + sequence(oid(data_type) + hex(password_based) + element(0x80, hex("0A 0B"))));

const char *const page_of_certificate =
    "tbsCertificate\n"
    "serialNumber 07\n"
    "signature Ed25519\n"
    "issuer commonName=CA\n"
    "validity\n"
    "notBefore 2020-01-01 00:00:00 UTC\n"
    "notAfter 2030-01-01 00:00:00 UTC, 31 days left\n"
    "subject commonName=Someone\n"
    "subjectPublicKeyInfo Ed25519\n"
    "signatureAlgorithm Ed25519\n"
    "signatureValue 0A\n";

/// A page without its columns: one blank between key and value, and no blank in front.
std::string without_columns(const std::string &page) {
  std::istringstream lines(page);
  std::string out;
  for (std::string line; std::getline(lines, line); out += '\n') {
    std::istringstream words(line);
    bool first = true;
    for (std::string word; words >> word; first = false) out += (first ? "" : " ") + word;
  }
  return out;
}

// ---- Messages -----------------------------------------------------------------------------------

TEST_F(ToolMessages, ShowTheTextOfData) {
  const Bytes message = data(support::text("hello"));
  EXPECT_EQ(
      "ContentInfo  standard input: element 1\n"
      "  contentType  data\n"
      "  content      68656C6C6F  \"hello\"\n",
      page(message));
  EXPECT_EQ(json::parse(R"({"contentType": "1.2.840.113549.1.7.1", "contentTypeName": "data",
                            "content": "68656C6C6F"})"),
            fields(message, "content-info"));
  expect_recodes(message, "content-info");
}

TEST_F(ToolMessages, ShowEverythingThatIsSigned) {
  const Bytes message =
      content_info(signed_type, signed_data(data(hex("00")), element(0xA0, certificate)));
  EXPECT_EQ(
      "ContentInfo  standard input: element 1\n"
      "  contentType                   signedData\n"
      "  content\n"
      "    version                     1\n"
      "    digestAlgorithms            sha1\n"
      "    encapContentInfo\n"
      "      eContentType              data\n"
      "      eContent                  00\n"
      "    certificates                1 element\n"
      "      [0]\n"
      "        tbsCertificate\n"
      "          serialNumber          07\n"
      "          signature             Ed25519\n"
      "          issuer                commonName=CA\n"
      "          validity\n"
      "            notBefore           2020-01-01 00:00:00 UTC\n"
      "            notAfter            2030-01-01 00:00:00 UTC, 31 days left\n"
      "          subject               commonName=Someone\n"
      "          subjectPublicKeyInfo  Ed25519\n"
      "        signatureAlgorithm      Ed25519\n"
      "        signatureValue          0A\n"
      "    signerInfos                 1 element\n"
      "      [0]\n"
      "        version                 1\n"
      "        sid\n"
      "          issuer                commonName=CA\n"
      "          serialNumber          07\n"
      "        digestAlgorithm         sha1\n"
      "        signedAttrs             2 elements\n"
      "          contentType           data\n"
      "          signingTime           2020-01-01 00:00:00 UTC\n"
      "        signatureAlgorithm      Ed25519\n"
      "        signature               0A0B\n",
      page(message));
  EXPECT_EQ(
      "standard input      ContentInfo            contentType signedData\n"
      "    eContentType data, certificates 1 element, signerInfos 1 element\n",
      good({"show", "--short"}, message));
  const json object = fields(message)["decoded"];
  EXPECT_EQ("07", object["certificates"][0]["certificate"]["tbsCertificate"]["serialNumber"]);
  expect_recodes(message, "content-info");
}

TEST_F(ToolMessages, ShowWhatStandsBesideAMalformedCertificate) {
  const Bytes message = content_info(
      signed_type,
      signed_data(data(hex("00")), element(0xA0, certificate + hex("05 00") + certificate)));
  // In front of the certificates: the header of the content, its version, the digests, the data,
  // and the header of their list. Both headers have three octets of length.
  const size_t offset = 4 + 3 + digests.size() + data(hex("00")).size() + 4 + certificate.size();
  const std::string why = "offset " + std::to_string(offset) +
                          ": certificates[1]: expected one of SEQUENCE (30), [0] (A0), [1] (A1), "
                          "[2] (A2), [3] (A3), found NULL (05)";
  const json object = fields(message);
  EXPECT_EQ(why, object["malformed"]);
  const json &certificates = object["decoded"]["certificates"];
  ASSERT_EQ(3U, certificates.size());
  EXPECT_EQ(json({{"malformed", why}, {"octets", "0500"}}), certificates[1]);
  EXPECT_EQ(certificates[0], certificates[2]);
  EXPECT_EQ("07", certificates[0]["certificate"]["tbsCertificate"]["serialNumber"]);
  const std::string text = page(message);
  EXPECT_NE(std::string::npos, text.find("malformed: " + why + "\n"));
  EXPECT_NE(std::string::npos, text.find("      [2]\n        tbsCertificate\n"));
  EXPECT_NE(std::string::npos, text.find("    signerInfos                 1 element\n"));
}

TEST_F(ToolMessages, ShowTheCrlsInside) {
  const Bytes crl = sequence(sequence(hex("02 01 01") + hex(ed25519) + common_name("CA") +
                                      element(0x17, support::text("200101000000Z"))) +
                             hex(ed25519) + element(0x03, hex("00 0A")));
  const Bytes message =
      content_info(signed_type, signed_data(sequence(oid(data_type)), element(0xA1, crl)));
  const json object = fields(message)["decoded"];
  EXPECT_FALSE(object.contains("certificates"));
  EXPECT_FALSE(object["encapContentInfo"].contains("eContent"));
  EXPECT_EQ("/cn(12)=CA", object["crls"][0]["crl"]["tbsCertList"]["issuer"]);
  expect_recodes(message, "content-info");
}

TEST_F(ToolMessages, ShowWhatIsEncryptedAndHow) {
  const Bytes message = content_info(encrypted_type, encrypted_data);
  EXPECT_EQ(
      "ContentInfo  standard input: element 1\n"
      "  contentType                     encryptedData\n"
      "  content\n"
      "    version                       0\n"
      "    encryptedContentInfo\n"
      "      contentType                 data\n"
      "      contentEncryptionAlgorithm\n"
      "        algorithm                 pbeWithSHA1And3-KeyTripleDES-CBC\n"
      "        parameters\n"
      "          salt                    01020304\n"
      "          iterations              2048\n"
      "      encryptedContent            encrypted, 2 octets\n",
      page(message));
  fields(message);
  expect_recodes(message, "content-info");
}

TEST_F(ToolMessages, LeaveOtherContentsAsTheyAre) {
  const Bytes message = content_info("2A 03 04", sequence(hex("02 01 05")));
  EXPECT_EQ(
      "ContentInfo  standard input: element 1\n"
      "  contentType  1.2.3.4\n"
      "  content      3003020105\n",
      page(message));
  fields(message);
}

TEST_F(ToolMessages, SayWhatThePeerSays) {
  const std::string signer_certificate = file("c.pem", make_certificate(ec_key));
  const std::string text = file("text", "hello");
  const std::string message =
      openssl({"cms", "-sign", "-in", text, "-binary", "-nodetach", "-signer", signer_certificate,
               "-inkey", path("key.pem"), "-outform", "PEM"});
  const json object = fields(message, "content-info")["decoded"];
  EXPECT_EQ("68656C6C6F", object["encapContentInfo"]["eContent"]);
  ASSERT_EQ(1U, object["certificates"].size());
  const std::string serial = openssl({"x509", "-noout", "-serial", "-in", signer_certificate});
  EXPECT_EQ(serial, "serial=" +
                        object["signerInfos"][0]["sid"]["issuerAndSerialNumber"]["serialNumber"]
                            .get<std::string>() +
                        "\n");
  const std::string digest = openssl({"dgst", "-sha256", "-r", text}).substr(0, 64);
  std::string found;
  for (const json &attribute : object["signerInfos"][0]["signedAttrs"])
    if (attribute["typeName"] == "messageDigest") found = attribute["decoded"];
  std::ranges::transform(found, found.begin(), [](char c) {
    return c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  EXPECT_EQ(digest, found);
  EXPECT_EQ(0, run({"recode", "--fresh"}, message).status);
}

TEST_F(ToolMessages, MayBeOfIndefiniteLength) {
  const Bytes message =
      hex("30 80 06 09 2A 86 48 86 F7 0D 01 07 01 A0 80 24 80 04 01 41 04 01 42"
          "00 00 00 00 00 00");
  EXPECT_EQ(
      "ContentInfo  standard input: element 1\n"
      "  contentType  data\n"
      "  content      4142  \"AB\"\n",
      page(message));
}

TEST_F(ToolMessages, MayBeNestedDeeply) {
  Bytes message = data(hex("00"));
  for (int i = 0; i < 200; ++i) message = content_info(signed_type, signed_data(message, {}));
  const std::string text = page(message, "content-info");
  EXPECT_NE(std::string::npos, text.find("(nested more deeply than is shown)\n"));
  json object = fields(message)["decoded"];
  size_t levels = 0;
  for (; object.is_object(); ++levels) {
    const json inner = object["encapContentInfo"]["decoded"];
    object = inner;
  }
  EXPECT_EQ(32U, levels);
  EXPECT_TRUE(object.is_null());
}

TEST_F(ToolMessages, WithoutATypeAreRefused) {
  const Outcome result =
      run({"show", "--type", "content-info"}, characters(hex("30 03 04 01 00") + data(hex("00"))));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(
      "orvelasn1: standard input: element 1, offset 2: contentType: expected OBJECT IDENTIFIER "
      "(06), found OCTET STRING (04)\n",
      result.err);
  EXPECT_NE(std::string::npos, result.out.find("ContentInfo  standard input: element 2\n"));
}

TEST_F(ToolMessages, AreWrittenWithoutAContentToo) {
  const Bytes empty = sequence(oid("2A 86 48 86 F7 0D 01 07 01") + sequence(oid("2A 03 04")));
  const Bytes full =
      sequence(oid("2A 86 48 86 F7 0D 01 07 01") + sequence(oid("2A 03 04")) + hex("80 01 41"));
  const Outcome result =
      run({"recode", "--type", "encrypted-content-info"}, characters(empty + full));
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("", result.err);
  EXPECT_EQ(
      "standard input: element 1: same, 20 octets\n"
      "standard input: element 2: same, 23 octets\n",
      result.out);
}

TEST_F(ToolMessages, AreMarkedWhereTheirContentIsMalformed) {
  const Bytes message = content_info(signed_type, sequence(hex("02 01 01") + digests));
  const std::string why =
      "offset 18: encapContentInfo: expected SEQUENCE (30), but the enclosing element ends";
  EXPECT_EQ(
      "ContentInfo  standard input: element 1\n"
      "  contentType         signedData\n"
      "  content\n"
      "    version           1\n"
      "    digestAlgorithms  sha1\n"
      "    encapContentInfo  malformed: " +
          why +
          "\n"
          "    signerInfos       malformed: offset 18: signerInfos: expected SET (31), but the "
          "enclosing element ends\n",
      page(message));
  EXPECT_EQ(why, fields(message)["malformed"]);
}

TEST_F(ToolMessages, AreNotSeenInEverySequenceThatBeginsWithAnIdentifier) {
  EXPECT_TRUE(message({"show"}, hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 01 05 00"))
                  .starts_with(": it has the structure of no type"));
}

TEST_F(ToolMessages, OfEveryPartCanBeShown) {
  fields(signer, "signer-info");
  fields(sequence(common_name("CA") + hex("02 01 07")), "issuer-and-serial-number");
  fields(encrypted_data, "encrypted-data");
  fields(signed_data(data(hex("00")), {}), "signed-data");
  expect_recodes(signer, "signer-info");
  expect_recodes(signed_data(data(hex("00")), {}), "signed-data");
}

// ---- Personal information exchange --------------------------------------------------------------

const Bytes friendly_name =
    sequence(oid("2A 86 48 86 F7 0D 01 09 14") + set(element(0x1E, hex("00 4D 00 65"))));
const Bytes local_key =
    sequence(oid("2A 86 48 86 F7 0D 01 09 15") + set(octet_string(hex("0A 0B"))));

Bytes bag(const char *kind, const Bytes &value, const Bytes &attributes = {}) {
  return sequence(element(0x06, hex("2A 86 48 86 F7 0D 01 0C 0A 01") + hex(kind)) +
                  element(0xA0, value) + (attributes.empty() ? Bytes() : set(attributes)));
}

const Bytes certificate_bag =
    sequence(oid("2A 86 48 86 F7 0D 01 09 16 01") + element(0xA0, octet_string(certificate)));
const Bytes mac_data =
    sequence(sequence(hex("30 09 06 05 2B 0E 03 02 1A 05 00") + octet_string(hex("0C"))) +
             octet_string(hex("0D")) + hex("02 02 08 00"));

Bytes pfx(const Bytes &safe) { return sequence(hex("02 01 03") + data(sequence(safe)) + mac_data); }

TEST_F(ToolExchange, ShowsEverythingThatIsNotEncrypted) {
  const Bytes bags = bag("01", private_key_info(), friendly_name + local_key) +
                     bag("03", certificate_bag) +
                     bag("02", sequence(hex(password_based) + octet_string(hex("0A"))));
  const Bytes input = pfx(data(sequence(bags)) + content_info(encrypted_type, encrypted_data));
  const std::string text = good({"show", "--secrets"}, input);
  EXPECT_EQ(std::string("PFX standard input: element 1\n"
                        "version 3\n"
                        "authSafe\n"
                        "contentType data\n"
                        "content 2 elements\n"
                        "[0]\n"
                        "contentType data\n"
                        "content 3 elements\n"
                        "[0]\n"
                        "bagId keyBag\n"
                        "bagValue\n"
                        "version 0 (v1)\n"
                        "privateKeyAlgorithm rsaEncryption\n"
                        "privateKey\n"
                        "version 0\n"
                        "modulus 0CA1\n"
                        "publicExponent 17\n"
                        "privateExponent 019D\n"
                        "prime1 3D\n"
                        "prime2 35\n"
                        "exponent1 35\n"
                        "exponent2 31\n"
                        "coefficient 26\n"
                        "keyBits 12\n"
                        "bagAttributes 2 elements\n"
                        "friendlyName Me\n"
                        "localKeyId 0A0B\n"
                        "[1]\n"
                        "bagId certBag\n"
                        "bagValue\n"
                        "certId x509Certificate\n"
                        "certValue\n") +
                page_of_certificate +
                "[2]\n"
                "bagId pkcs-8ShroudedKeyBag\n"
                "bagValue\n"
                "encryptionAlgorithm\n"
                "algorithm pbeWithSHA1And3-KeyTripleDES-CBC\n"
                "parameters\n"
                "salt 01020304\n"
                "iterations 2048\n"
                "encryptedData encrypted, 1 octet\n"
                "[1]\n"
                "contentType encryptedData\n"
                "content\n"
                "version 0\n"
                "encryptedContentInfo\n"
                "contentType data\n"
                "contentEncryptionAlgorithm\n"
                "algorithm pbeWithSHA1And3-KeyTripleDES-CBC\n"
                "parameters\n"
                "salt 01020304\n"
                "iterations 2048\n"
                "encryptedContent encrypted, 2 octets\n"
                "macData\n"
                "mac\n"
                "digestAlgorithm sha1\n"
                "digest 0C\n"
                "macSalt 0D\n"
                "iterations 2048\n"
                "\n",
            without_columns(text));
  const json bag_of_key = fields(input, "pfx")["authSafe"]["decoded"][0]["decoded"][0];
  EXPECT_EQ("Me", bag_of_key["bagAttributes"][0]["decoded"]);
  EXPECT_EQ("0CA1", bag_of_key["decoded"]["decoded"]["modulus"]);
  EXPECT_EQ("(secret; --secrets shows it)", bag_of_key["bagValue"]);
  expect_recodes(input, "pfx");
}

TEST_F(ToolExchange, ShowsBagsOfOtherKinds) {
  const Bytes secret = sequence(oid("2A 03 04") + element(0xA0, hex("05 00")));
  const Bytes bags =
      bag("05", secret) + bag("06", sequence(bag("05", secret))) + bag("63", hex("05 00"));
  const json decoded = fields(sequence(bags), "safe-contents")["value"];
  EXPECT_EQ("(secret; --secrets shows it)", decoded[0]["decoded"]["secretValue"]);
  EXPECT_EQ("(secret; --secrets shows it)", decoded[1]["decoded"][0]["decoded"]["secretValue"]);
  EXPECT_EQ("0500", decoded[2]["bagValue"]);
  EXPECT_FALSE(decoded[2].contains("decoded"));
}

TEST_F(ToolExchange, MarksAMessageWithoutAType) {
  const Bytes input = pfx(hex("30 03 04 01 00"));
  EXPECT_EQ(
      "PFX standard input: element 1\n"
      "version 3\n"
      "authSafe\n"
      "contentType data\n"
      "content 1 element\n"
      "[0]\n"
      "contentType malformed: offset 4: [0].contentType: expected OBJECT IDENTIFIER (06), found "
      "OCTET STRING (04)\n"
      "0 2+1 OCTET STRING 00\n"
      "macData\n"
      "mac\n"
      "digestAlgorithm sha1\n"
      "digest 0C\n"
      "macSalt 0D\n"
      "iterations 2048\n",
      without_columns(page(input)));
}

TEST_F(ToolExchange, MarksASignedMessageWithoutAType) {
  const Bytes bad = content_info(signed_type, signed_data(hex("30 03 04 01 00"), {}));
  const std::string why = fields(pfx(bad))["authSafe"]["decoded"][0]["malformed"];
  EXPECT_TRUE(
      why.ends_with("eContentType: expected OBJECT IDENTIFIER (06), found OCTET STRING (04)"))
      << why;
}

// 80 is no identifier octet of a string. liborvelasn1 ends the process for it.
TEST_F(ToolExchange, ReadsACertificateWhoseNameHasAValueOfAnyType) {
  Bytes bad = certificate;
  const Bytes tag = hex("0C 02 43 41");  // the value of the issuer's name
  const auto found = std::search(bad.begin(), bad.end(), tag.begin(), tag.end());
  ASSERT_NE(bad.end(), found);
  *found = 0x80;
  const Bytes bag_of_it =
      sequence(oid("2A 86 48 86 F7 0D 01 09 16 01") + element(0xA0, octet_string(bad)));
  const json value =
      fields(bag_of_it, "cert-bag")["decoded"]["tbsCertificate"]["issuerSequence"][0][0];
  EXPECT_EQ(0x80, value["valueTag"]);
  EXPECT_EQ("4341", value["valueOctets"]);
}

TEST_F(ToolExchange, SaysWhatThePeerSays) {
  const std::string certificate_file = file("c.pem", make_certificate(ec_key));
  const std::string exchange =
      openssl({"pkcs12", "-export", "-in", certificate_file, "-inkey", path("key.pem"), "-name",
               "My Key", "-passout", "pass:x", "-keypbe", "PBE-SHA1-3DES", "-certpbe", "NONE",
               "-iter", "3000", "-maciter", "-macalg", "sha256"});
  const json object = fields(exchange, "pfx");
  EXPECT_EQ("sha256", object["macData"]["mac"]["digestAlgorithm"]["algorithmName"]);
  EXPECT_EQ(3000, object["macData"]["iterations"]);
  json certificate_found;
  json key_found;
  for (const json &message : object["authSafe"]["decoded"])
    for (const json &one : message["decoded"])
      (one["bagIdName"] == "certBag" ? certificate_found : key_found) = one;
  EXPECT_EQ("My Key", key_found["bagAttributes"][0]["decoded"]);
  const json &algorithm = key_found["decoded"]["encryptionAlgorithm"];
  EXPECT_EQ("pbeWithSHA1And3-KeyTripleDES-CBC", algorithm["algorithmName"]);
  EXPECT_EQ(3000, algorithm["decoded"]["iterations"]);
  const json shown = json::parse(good({"show", "--json"}, read_file(certificate_file)));
  EXPECT_EQ(shown["tbsCertificate"], certificate_found["decoded"]["decoded"]["tbsCertificate"]);
  EXPECT_EQ(0, run({"recode"}, exchange).status);
}

TEST_F(ToolExchange, OfEveryPartCanBeShown) {
  fields(mac_data, "mac-data");
  fields(bag("05", hex("30 07 06 01 2A A0 02 05 00")), "safe-bag");
  fields(certificate_bag, "cert-bag");
  fields(sequence(oid("2A 86 48 86 F7 0D 01 09 17 01") + element(0xA0, octet_string({}))),
         "crl-bag");
  fields(sequence(oid("2A 03 04") + element(0xA0, hex("05 00"))), "secret-bag");
  fields(sequence(data(hex("00"))), "authenticated-safe");
  const Bytes parameters = hex("30 0A 04 04 01 02 03 04 02 02 08 00");
  EXPECT_EQ(json::parse(R"({"salt": "01020304", "iterations": 2048})"),
            fields(parameters, "pbe-params"));
  expect_recodes(parameters, "pbe-params");
  expect_recodes(sequence(data(hex("00"))), "authenticated-safe");
}

TEST_F(ToolExchange, TheSchemaRefusesWhatItDoesNotDescribe) {
  const std::string line = good({"show", "--json"}, pfx(data(sequence({}))));
  EXPECT_EQ("", record_violation(line));
  json extra = json::parse(line);
  extra["macData"]["mac"]["more"] = 1;
  EXPECT_EQ("$.macData.mac.more is not described", record_violation(extra.dump()));
  json missing = json::parse(line);
  missing["macData"].erase("macSalt");
  EXPECT_EQ("$.macData lacks macSalt", record_violation(missing.dump()));
  json other = json::parse(line);
  other["type"] = "mac-data";
  EXPECT_NE("", record_violation(other.dump()));
}

}  // namespace

}  // namespace messages_test
