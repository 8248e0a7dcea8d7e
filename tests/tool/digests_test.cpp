// Fingerprints, pins and what else is said of keys and of the whole of an element; openssl is the
// judge.
#include "records.h"

namespace digests_test {

namespace {

using namespace tool_tests;

class ToolDigests : public Records {
 protected:
  /// The JSON of the one element of an input.
  json facts(const std::string &input) const {
    return json::parse(good({"show", "--json"}, input));
  }

  /// The digits after the "=" in what openssl prints, without colons and in capitals.
  static std::string digits(const std::string &printed) {
    std::string out;
    for (const char c : printed.substr(printed.find('=') + 1))
      if (std::isxdigit(static_cast<unsigned char>(c)) != 0)
        out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
  }

  /// The digest that openssl makes of octets.
  std::string digest(const std::string &algorithm, const std::string &octets) const {
    return digits(openssl({"dgst", "-" + algorithm, "-hex"}, octets));
  }

  /// The page has this row.
  static void expect_row(const std::string &page, const std::string &key, const std::string &line) {
    EXPECT_TRUE(matches(page, "\n  " + key + " +" + line + "\n")) << key << " " << line << page;
  }

  static std::string plain(const std::string &base64) {
    std::string out = base64;
    for (const char c : {'+', '/'})
      for (size_t at = out.find(c); at != std::string::npos; at = out.find(c, at + 2))
        out.insert(at, "\\");
    return out;
  }
};

TEST_F(ToolDigests, FingerprintsAreThoseOfOpenssl) {
  const std::string pem = make_certificate(ec_key);
  const json prints = facts(pem)["fingerprints"];
  const std::string page = good({"show"}, pem);
  for (const char *const name : {"sha256", "sha1"}) {
    const std::string judge =
        digits(openssl({"x509", "-noout", "-fingerprint", std::string("-") + name}, pem));
    EXPECT_EQ(judge, prints[name]);
    expect_row(page, name == std::string("sha1") ? "SHA-1" : "SHA-256", judge);
  }
}

TEST_F(ToolDigests, FingerprintsDoNotCountWhatFollowsTheCertificate) {
  const std::string der = to_der(make_certificate(ec_key));
  const Outcome result = run({"show", "--json"}, der + "\x05");
  const json first = json::parse(result.out.substr(0, result.out.find('\n')));
  EXPECT_EQ(digest("sha256", der), first["fingerprints"]["sha256"]);
}

// A length octet more than DER has, around a signed part that is the same: the fingerprint is that
// of the certificate in DER, as openssl has it.
TEST_F(ToolDigests, FingerprintsOfBerAreThoseOfDer) {
  const std::string der = to_der(make_certificate(ec_key));
  ASSERT_EQ('\x82', der[1]);
  std::string ber = der;
  ber[1] = '\x83';
  ber.insert(2, 1, '\0');
  EXPECT_EQ(digits(openssl({"x509", "-inform", "DER", "-noout", "-fingerprint", "-sha256"}, ber)),
            facts(ber)["fingerprints"]["sha256"]);
}

TEST_F(ToolDigests, PinsAreThoseOfThePublicKey) {
  const std::vector<std::vector<std::string>> keys{{"rsa:1024"}, ec_key, {"ed25519"}};
  for (const std::vector<std::string> &key : keys) {
    const std::string pem = make_certificate(key);
    const std::string spki =
        openssl({"pkey", "-pubin", "-outform", "DER"}, openssl({"x509", "-noout", "-pubkey"}, pem));
    const json said = facts(pem)["key"];
    EXPECT_EQ(digest("sha256", spki), said["sha256"]);
    std::string pin = "sha256//" + openssl({"enc", "-base64", "-A"},
                                           openssl({"dgst", "-sha256", "-binary"}, spki));
    EXPECT_EQ(pin, said["pin"]);
    expect_row(good({"show"}, pem), "pin", plain(pin));
  }
}

TEST_F(ToolDigests, ModulusIsThatOfOpenssl) {
  const std::string pem = make_certificate({"rsa:1024"});
  const std::string judge = digits(openssl({"x509", "-noout", "-modulus"}, pem));
  EXPECT_EQ(judge, facts(pem)["key"]["modulus"]);
  EXPECT_FALSE(facts(pem)["key"].contains("point"));
  expect_row(good({"show"}, pem), "modulus",
             judge.substr(0, 8) + " " + judge.substr(8, 8) + " " + judge.substr(16, 8) + " " +
                 judge.substr(24, 8));
}

// The bits of a P-256 key are the last 65 octets of its SubjectPublicKeyInfo, those of Ed25519 the
// last 32.
TEST_F(ToolDigests, PointsAndKeyIdentifiersAreThoseOfTheBits) {
  const std::vector<std::pair<std::vector<std::string>, size_t>> rows{{ec_key, 65},
                                                                      {{"ed25519"}, 32}};
  for (const auto &[key, size] : rows) {
    const std::string pem = make_certificate(key);
    const std::string spki =
        openssl({"pkey", "-pubin", "-outform", "DER"}, openssl({"x509", "-noout", "-pubkey"}, pem));
    const std::string bits = spki.substr(spki.size() - size);
    const json said = facts(pem);
    EXPECT_EQ(bits, characters(hex(said["key"]["point"].get<std::string>())));
    EXPECT_EQ(digest("sha1", bits), said["key"]["identifier"]);
    EXPECT_EQ(digits(openssl({"x509", "-noout", "-ext", "subjectKeyIdentifier"}, pem)
                         .substr(std::string("X509v3 Subject Key Identifier:").size())),
              said["subjectKeyIdentifier"]);
  }
}

TEST_F(ToolDigests, RequestsHaveThePinOfTheirKey) {
  std::vector<std::string> words{"req",     "-new",         "-nodes",
                                 "-subj",   "/CN=a",        "-newkey",
                                 "ec",      "-pkeyopt",     "ec_paramgen_curve:P-256",
                                 "-keyout", path("key.pem")};
  const std::string pem = openssl(words);
  const std::string spki = openssl({"pkey", "-pubout", "-outform", "DER", "-in", path("key.pem")});
  EXPECT_EQ(digest("sha256", spki), facts(pem)["key"]["sha256"]);
}

TEST_F(ToolDigests, RevocationListsHaveFingerprints) {
  const std::string certificate = make_certificate(ec_key);
  file("ca.pem", certificate);
  file("index.txt", std::string());
  file("ca.cnf", "[ca]\ndefault_ca=a\n[a]\ndatabase=" + path("index.txt") +
                     "\ndefault_md=sha256\ndefault_crl_days=30\n");
  const std::string pem = openssl({"ca", "-config", path("ca.cnf"), "-gencrl", "-cert",
                                   path("ca.pem"), "-keyfile", path("key.pem")});
  const json prints = facts(pem)["fingerprints"];
  for (const char *const name : {"sha256", "sha1"})
    EXPECT_EQ(digits(openssl({"crl", "-noout", "-fingerprint", std::string("-") + name}, pem)),
              prints[name]);
}

}  // namespace

}  // namespace digests_test
