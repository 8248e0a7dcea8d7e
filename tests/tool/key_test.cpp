// The command "key": what belongs together, pins, and its status. openssl makes the keys and says what
// their public keys and pins are.
#include "records.h"

namespace key_test {

namespace {

using namespace tool_tests;

Bytes bit_string(const Bytes &octets) { return element(0x03, hex("00") + octets); }

/// The textbook key of RSA as a SubjectPublicKeyInfo.
Bytes rsa_public_key(const char *algorithm) {
  return sequence(sequence(hex(algorithm)) + bit_string(sequence(hex("02 02 0C A1  02 01 11"))));
}
constexpr const char *rsa_with_null = "06 09 2A 86 48 86 F7 0D 01 01 01 05 00";
constexpr const char *rsa_alone = "06 09 2A 86 48 86 F7 0D 01 01 01";
constexpr const char *rsa_pss = "06 09 2A 86 48 86 F7 0D 01 01 0A";

constexpr const char *p256 = "06 07 2A 86 48 CE 3D 02 01  06 08 2A 86 48 CE 3D 03 01 07";
/// The generator of P-256 (SEC 2, 2.4.2), which is the public key of the private key 1.
constexpr const char *generator_x =
    "6B17D1F2E12C4247F8BCE6E563A440F277037D812DEB33A0F4A13945D898C296";
constexpr const char *generator_y =
    "4FE342E2FE1A7F9B8EE7EB4A7C0F9E162BCE33576B315ECECBB6406837BF51F5";
Bytes generator() { return hex("04") + hex(generator_x) + hex(generator_y); }
Bytes p256_public_key(const Bytes &point) {
  return sequence(sequence(hex(p256)) + bit_string(point));
}
Bytes p256_private_key(const Bytes &more = {}, const char *last = "01") {
  const Bytes key = sequence(hex("02 01 01") + octet_string(Bytes(31) + hex(last)) + more);
  return sequence(hex("02 01 00") + sequence(hex(p256)) + octet_string(key));
}

class Key : public Records {
 protected:
  /// What of the elements the tool says, as JSON, a line for each key, and its status.
  std::pair<int, std::vector<json>> sorted(const std::vector<std::string> &files,
                                           const std::string &input = "") const {
    std::vector<std::string> words{"key", "--json"};
    words.insert(words.end(), files.begin(), files.end());
    const Outcome result = run(words, input);
    EXPECT_EQ("", result.err);
    std::vector<json> lines;
    std::istringstream text(result.out);
    for (std::string line; std::getline(text, line);) lines.push_back(json::parse(line));
    return {result.status, lines};
  }

  int status_of(const Bytes &elements) const { return sorted({}, characters(elements)).first; }

  /// The pin of a public key, as openssl has it.
  std::string pin(const std::string &public_key) const {
    const std::string der = openssl({"pkey", "-pubin", "-outform", "DER"}, public_key);
    std::string digest = openssl({"dgst", "-sha256", "-r"}, der).substr(0, 64);
    std::ranges::transform(digest, digest.begin(),
                           [](char c) { return static_cast<char>(std::toupper(c)); });
    return digest;
  }

  /// Expects a private key to be that of a public key, in the forms that openssl writes.
  void expect_pair(const std::string &private_key, const std::string &kind) const {
    const std::string public_key = openssl({"pkey", "-pubout"}, private_key);
    const auto [status, lines] = sorted({}, private_key + public_key);
    EXPECT_EQ(0, status) << kind;
    ASSERT_EQ(1U, lines.size()) << kind;
    EXPECT_EQ(kind, lines[0]["key"]);
    EXPECT_EQ(json::array({pin(public_key)}), lines[0]["sha256"]) << kind;
    EXPECT_EQ(2U, lines[0]["elements"].size());
    const auto alone = sorted({}, private_key);
    EXPECT_EQ(0, alone.first) << kind;
    EXPECT_EQ(lines[0]["sha256"], alone.second.at(0)["sha256"]) << kind;
  }

  std::string generated(const std::vector<std::string> &options) const {
    std::vector<std::string> words{"genpkey"};
    words.insert(words.end(), options.begin(), options.end());
    return openssl(words);
  }
};

TEST_F(Key, OpensslAgreesOnThePublicKeyOfEachKind) {
  expect_pair(generated({"-algorithm", "RSA", "-pkeyopt", "rsa_keygen_bits:1024"}),
              "RSA, 1024 bits, exponent 65537");
  expect_pair(generated({"-algorithm", "RSA-PSS", "-pkeyopt", "rsa_keygen_bits:1024"}),
              "RSA (rsassa-pss), 1024 bits, exponent 65537");
  expect_pair(generated({"-algorithm", "ed25519"}), "Ed25519");
  expect_pair(generated({"-algorithm", "ed448"}), "Ed448");
  expect_pair(generated({"-algorithm", "x25519"}), "X25519");
  expect_pair(generated({"-algorithm", "x448"}), "X448");
  file("dh", openssl({"genpkey", "-genparam", "-algorithm", "DH", "-pkeyopt", "group:ffdhe2048"}));
  expect_pair(generated({"-paramfile", path("dh")}), "DH, 2048 bits");
  file("dhx", openssl({"genpkey", "-genparam", "-algorithm", "DHX", "-pkeyopt", "dh_rfc5114:1"}));
  expect_pair(generated({"-paramfile", path("dhx")}), "DH, 1024 bits");
  file("dsa", openssl({"genpkey", "-genparam", "-algorithm", "DSA", "-pkeyopt",
                       "dsa_paramgen_bits:1024"}));
  const std::string dsa = generated({"-paramfile", path("dsa")});
  expect_pair(dsa, "DSA, 1024 bits");
  expect_pair(openssl({"pkey", "-traditional"}, dsa), "DSA, 1024 bits");
}

TEST_F(Key, OpensslAgreesOnThePublicKeyOfEachCurve) {
  const std::vector<std::pair<std::string, std::string>> curves{{"P-192", "secp192r1, 192"},
                                                                {"P-224", "secp224r1, 224"},
                                                                {"P-256", "secp256r1, 256"},
                                                                {"P-384", "secp384r1, 384"},
                                                                {"P-521", "secp521r1, 521"}};
  for (const auto &[curve, name] : curves) {
    const std::string key =
        generated({"-algorithm", "EC", "-pkeyopt", "ec_paramgen_curve:" + curve});
    const std::string kind = "EC, " + name + " bits";
    expect_pair(key, kind);
    expect_pair(openssl({"ec"}, key), kind);
    expect_pair(openssl({"ec", "-no_public"}, key), kind);
  }
}

TEST_F(Key, AnotherCurveIsNotComputed) {
  const std::string key =
      generated({"-algorithm", "EC", "-pkeyopt", "ec_paramgen_curve:secp256k1"});
  expect_pair(key, "EC, secp256k1, 256 bits");
  const auto [status, lines] = sorted({}, openssl({"ec", "-no_public"}, key));
  EXPECT_EQ(2, status);
  EXPECT_EQ(
      "it does not hold its public key, which is not computed for its algorithm: give the public "
      "key",
      lines.at(0)["elements"][0]["why"]);
}

TEST_F(Key, ACertificateItsRequestAndItsKeyBelongTogether) {
  const std::string certificate = make_certificate(ec_key);
  const std::string key = read_file(path("key.pem"));
  const std::string request = openssl({"req", "-new", "-key", path("key.pem"), "-subj", "/CN=q"});
  const auto [status, lines] = sorted({}, certificate + request + key);
  EXPECT_EQ(0, status);
  ASSERT_EQ(1U, lines.size());
  EXPECT_EQ(json::parse(R"x([
    {"file": "standard input", "element": 1, "what": "Certificate",
     "subject": "countryName=DE, organizationName=Example\\, Ltd., commonName=www.example.org"},
    {"file": "standard input", "element": 2, "what": "CertificationRequest",
     "subject": "commonName=q"},
    {"file": "standard input", "element": 3, "what": "private key (PKCS #8)"}])x"),
            lines[0]["elements"]);
}

TEST_F(Key, AlgorithmsWithAndWithoutNullAreOneKey) {
  const auto [status, lines] =
      sorted({}, characters(rsa_public_key(rsa_with_null) + rsa_public_key(rsa_alone) +
                            rsa_public_key(rsa_pss) + rsa_private_key() + private_key_info() +
                            sequence(hex("02 02 0C A1  02 01 11"))));
  EXPECT_EQ(0, status);
  ASSERT_EQ(1U, lines.size());
  EXPECT_EQ(6U, lines[0]["elements"].size());
  EXPECT_EQ(3U, lines[0]["pins"].size());
}

TEST_F(Key, APointMayBeCompressed) {
  EXPECT_EQ(0, status_of(p256_public_key(generator()) +
                         p256_public_key(hex("03") + hex(generator_x)) + p256_private_key()));
  EXPECT_EQ(
      1, status_of(p256_public_key(generator()) + p256_public_key(hex("02") + hex(generator_x))));
  EXPECT_EQ(1, status_of(p256_public_key(generator()) + p256_private_key({}, "02")));
}

TEST_F(Key, AKeyWithThePublicKeyOfAnotherIsSaid) {
  const Bytes stated = element(0xA1, bit_string(generator()));
  EXPECT_EQ(0, status_of(p256_private_key(stated)));
  const auto [status, lines] = sorted({}, characters(p256_private_key(stated, "02")));
  EXPECT_EQ(2, status);
  EXPECT_EQ("the public key in it is not that of its private key",
            lines.at(0)["elements"][0]["why"]);
}

TEST_F(Key, NumbersThatNoKeyHasAreNotComputed) {
  EXPECT_EQ(2, status_of(p256_private_key({}, "00")));
  // p, q, g, y, x of DSA, where p is 0, even, 1, or not above x.
  for (const char *const p : {"02 01 00", "02 01 04", "02 01 01", "02 01 05"}) {
    const auto [status, lines] =
        sorted({}, characters(sequence(hex("02 01 00") + hex(p) +
                                       hex("02 01 03  02 01 02  02 01 00  02 01 07"))));
    EXPECT_EQ(0, status) << p;  // y is stated
    EXPECT_EQ(2, status_of(sequence(hex("02 01 00") +
                                    sequence(hex("06 07 2A 86 48 CE 38 04 01") +
                                             sequence(hex(p) + hex("02 01 03  02 01 02"))) +
                                    octet_string(hex("02 01 07")))))
        << p;
  }
}

TEST_F(Key, SeveralKeysAreSortedThoseAloneLast) {
  const std::string rsa = file("rsa.der", rsa_public_key(rsa_with_null));
  const std::string pair = file("ec.der", p256_private_key() + p256_public_key(generator()));
  const Outcome result = run({"key", rsa, pair});
  EXPECT_EQ(1, result.status);
  EXPECT_TRUE(result.out.starts_with("EC, secp256r1, 256 bits\n  pin (SHA-256)")) << result.out;
  EXPECT_TRUE(matches(result.out, "ec\\.der: element 1 *\n? *private key \\(PKCS #8\\)\n"))
      << result.out;
  EXPECT_TRUE(matches(result.out, "ec\\.der: element 2 *\n? *public key\n")) << result.out;
  EXPECT_TRUE(matches(result.out, "\n\nRSA, 12 bits, exponent 17  alone\n")) << result.out;
}

TEST_F(Key, WhatIsEncryptedIsListed) {
  const std::string key = generated({"-algorithm", "ed25519"});
  file("key.pem", key);
  const std::string encrypted =
      openssl({"pkey", "-in", path("key.pem"), "-aes128", "-passout", "pass:x"});
  const auto [status, lines] = sorted({}, key + encrypted);
  EXPECT_EQ(2, status);
  ASSERT_EQ(2U, lines.size());
  EXPECT_EQ(json::parse(R"({"key": null, "elements": [{"file": "standard input", "element": 2,
                            "what": "encrypted private key", "why": "decrypt it first"}]})"),
            lines[1]);
  const Outcome page = run({"key"}, encrypted);
  EXPECT_EQ(
      "Keys that are not known\n"
      "  standard input: element 1 (line 1)  encrypted private key: decrypt it first\n\n",
      page.out);
  EXPECT_EQ(2, page.status);
}

TEST_F(Key, WhatIsEncryptedInTheOldWayIsListedToo) {
  const std::string key = generated({"-algorithm", "RSA", "-pkeyopt", "rsa_keygen_bits:1024"});
  const std::string old = openssl({"rsa", "-traditional", "-aes128", "-passout", "pass:x"}, key);
  const auto [status, lines] = sorted({}, key + old);
  EXPECT_EQ(2, status);
  ASSERT_EQ(2U, lines.size());
  EXPECT_EQ("private key", lines[1]["elements"][0]["what"]);
  EXPECT_NE("", lines[1]["elements"][0]["why"]);
}

TEST_F(Key, RubbishIsSkipped) {
  const Outcome result = run({"key"}, std::string(1000, '\0'));
  EXPECT_EQ(2, result.status);
  EXPECT_EQ("", result.out);
  EXPECT_LE(std::ranges::count(result.err, '\n'), 17) << result.err;
}

TEST_F(Key, LooksIntoBundles) {
  const std::string certificate = file("c.pem", make_certificate(ec_key));
  openssl({"pkcs12", "-export", "-in", certificate, "-inkey", path("key.pem"), "-out", path("p12"),
           "-passout", "pass:", "-keypbe", "NONE", "-certpbe", "NONE"});
  const auto [status, lines] = sorted({path("p12"), certificate});
  EXPECT_EQ(0, status);
  ASSERT_EQ(1U, lines.size());
  EXPECT_EQ(3U, lines[0]["elements"].size());
  const std::string bundle = openssl({"crl2pkcs7", "-nocrl", "-certfile", certificate});
  EXPECT_EQ(0, sorted({path("key.pem"), "-"}, bundle).first);
  openssl({"pkcs12", "-export", "-in", certificate, "-inkey", path("key.pem"), "-out", path("p12"),
           "-passout", "pass:x"});
  EXPECT_EQ(2, sorted({path("p12")}).first);
}

TEST_F(Key, OtherElementsHaveNoKey) {
  const std::string parameters = openssl({"ecparam", "-name", "P-256", "-genkey"});
  EXPECT_EQ(0, sorted({}, parameters).first);  // the block of parameters beside the key
  const Outcome result = run({"key"}, characters(sequence(hex("02 01 01"))));
  EXPECT_EQ(2, result.status);
  EXPECT_EQ(
      "orvelasn1: standard input: element 1: it has no key: \"orvelasn1 show\" tells what it is\n",
      result.err);
  EXPECT_EQ(2, run({"key", "/nowhere"}).status);
  // A private key on no curve.
  EXPECT_EQ("it does not name its curve",
            sorted({}, characters(sequence(hex("02 01 01  04 01 01"))))
                .second.at(0)["elements"][0]["why"]);
}

}  // namespace

}  // namespace key_test
