// The chain at the end of a bundle: who issued whom by names and key identifiers.
#include "records.h"

namespace chain_test {

namespace {

using namespace tool_tests;

class ToolChain : public Records {
 protected:
  /// A certificate in DER made by hand: a key identifier of one octet where `key` or `issuer_key`
  /// is not 0.
  static Bytes certificate(const std::string &subject, const std::string &issuer, uint8_t serial,
                           uint8_t key = 0, uint8_t issuer_key = 0) {
    Bytes extensions;
    if (key != 0)
      extensions = extensions + sequence(hex("06 03 55 1D 0E 04 03 04 01") + Bytes{key});
    if (issuer_key != 0)
      extensions =
          extensions + sequence(hex("06 03 55 1D 23 04 05 30 03 80 01") + Bytes{issuer_key});
    return sequence(sequence(hex("A0 03 02 01 02  02 01") + Bytes{serial} + hex(ed25519) +
                             common_name(issuer) +
                             sequence(element(0x17, support::text("200101000000Z")) +
                                      element(0x17, support::text("300101000000Z"))) +
                             common_name(subject) +
                             sequence(hex(ed25519) + element(0x03, hex("00 01 02 03 04"))) +
                             (extensions.empty() ? Bytes() : element(0xA3, sequence(extensions)))) +
                    hex(ed25519) + element(0x03, hex("00 01 02 03 04")));
  }

  /// The chain on the page of an input that is all well.
  std::string chain(const Bytes &input) const {
    const std::string out = good({"show"}, input);
    const size_t start = out.find("Chain  ");
    return start == std::string::npos ? "" : out.substr(start);
  }

  static inline const std::string heading =
      "Chain  standard input: by names and key identifiers, not verified\n";
};

TEST_F(ToolChain, ShowsWhoIssuedWhomInAnyOrder) {
  EXPECT_EQ(heading +
                "  element 3      commonName=Root, issued by itself\n"
                "    element 1    commonName=Middle\n"
                "      element 2  commonName=Leaf\n"
                "      element 4  commonName=Other\n\n",
            chain(certificate("Middle", "Root", 2, 2, 1) + certificate("Leaf", "Middle", 3, 0, 2) +
                  certificate("Root", "Root", 1, 1) + certificate("Other", "Middle", 4)));
}

TEST_F(ToolChain, SaysWhatIsMissing) {
  EXPECT_EQ(heading +
                "  missing      commonName=Root, key 07\n"
                "    element 1  commonName=a\n"
                "    element 2  commonName=b\n"
                "  missing      commonName=Root\n"
                "    element 3  commonName=c\n\n",
            chain(certificate("a", "Root", 1, 0, 7) + certificate("b", "Root", 2, 0, 7) +
                  certificate("c", "Root", 3)));
}

TEST_F(ToolChain, SaysWhatIsThereTwice) {
  const Bytes root = certificate("Root", "Root", 1);
  const Bytes leaf = certificate("Leaf", "Root", 2);
  EXPECT_EQ(heading +
                "  element 1    commonName=Root, issued by itself\n"
                "    element 2  commonName=Leaf\n"
                "  element 3    the same as element 1\n\n",
            chain(root + leaf + root));
}

TEST_F(ToolChain, TellsKeysOfOneNameApart) {
  // A new key of the root, signed with the old one.
  EXPECT_EQ(heading +
                "  element 1      commonName=Root, issued by itself\n"
                "    element 2    commonName=Root\n"
                "      element 3  commonName=Leaf\n\n",
            chain(certificate("Root", "Root", 1, 1, 1) + certificate("Root", "Root", 2, 2, 1) +
                  certificate("Leaf", "Root", 3, 0, 2)));
}

TEST_F(ToolChain, NamesAllWhoMayHaveIssued) {
  EXPECT_EQ(heading +
                "  element 1    commonName=Root, issued by itself\n"
                "    element 3  commonName=Leaf, or issued by element 2\n"
                "  element 2    commonName=Root, issued by itself\n\n",
            chain(certificate("Root", "Root", 1) + certificate("Root", "Root", 2) +
                  certificate("Leaf", "Root", 3)));
}

TEST_F(ToolChain, EndsInCircles) {
  EXPECT_EQ(heading +
                "  element 1    commonName=a, in a circle with element 2\n"
                "    element 2  commonName=b\n\n",
            chain(certificate("a", "b", 1) + certificate("b", "a", 2)));
}

TEST_F(ToolChain, EscapesNamesAndTakesEmptyOnes) {
  const std::string out = chain(certificate("\x1B[31m", "x", 1) + certificate("x", "x", 2));
  EXPECT_EQ(heading +
                "  element 2    commonName=x, issued by itself\n"
                "    element 1  commonName=\\x1B[31m\n\n",
            out);
}

TEST_F(ToolChain, IsOnlyForPagesOfBundles) {
  const Bytes one = certificate("a", "b", 1);
  EXPECT_EQ("", chain(one));
  for (const char *const form : {"--short", "--json"})
    EXPECT_EQ(std::string::npos, good({"show", form}, one + one).find("Chain")) << form;
}

TEST_F(ToolChain, IsOfEachInputByItself) {
  const std::string first = file("1.der", certificate("a", "b", 1) + certificate("b", "b", 2));
  const std::string second = file("2.der", certificate("c", "c", 3));
  const Outcome result = run({"show", first, second, first});
  const std::string tree = "Chain  " + first +
                           ": by names and key identifiers, not verified\n"
                           "  element 2    commonName=b, issued by itself\n"
                           "    element 1  commonName=a\n\n";
  const size_t at = result.out.find(tree);
  ASSERT_NE(std::string::npos, at) << result.out;
  EXPECT_NE(std::string::npos, result.out.find(tree, at + 1));
  EXPECT_EQ(std::string::npos, result.out.find("Chain  " + second));
}

TEST_F(ToolChain, IsLeftOutForMany) {
  Bytes input;
  for (uint8_t i = 1; i <= 65; ++i) input = input + certificate("a" + std::to_string(i), "b", i);
  EXPECT_EQ("Chain  standard input: 65 certificates, left out for more than 64\n\n", chain(input));
}

// A bundle as people have it, with extensions and names that openssl makes.
TEST_F(ToolChain, ReadsWhatOpensslMakes) {
  const std::string root = make_certificate(ec_key, {"-subj", "/CN=Root"});
  file("root.pem", root);
  std::filesystem::rename(path("key.pem"), path("root.key"));
  const std::string request = openssl({"req", "-new", "-nodes", "-newkey", "ed25519", "-keyout",
                                       path("leaf.key"), "-subj", "/CN=Leaf"});
  const std::string leaf = openssl(
      {"x509", "-req", "-CA", path("root.pem"), "-CAkey", path("root.key"), "-set_serial", "7"},
      request);
  const std::string out = good({"show"}, leaf + root);
  EXPECT_TRUE(out.ends_with(heading + "  element 2    commonName=Root, issued by itself\n"
                                      "    element 1  commonName=Leaf\n\n"))
      << out;
}

}  // namespace

}  // namespace chain_test
