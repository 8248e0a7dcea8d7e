// Digests on a page that is narrower than they are.
#include "tool.h"

namespace digest_lines_test {

namespace {

using namespace tool_tests;

using ToolDigestLines = Tool;

/// The row of a page that begins with these words, and the lines after it that belong to it.
std::string row(const std::string &page, const std::string &section, const std::string &key) {
  const size_t start = page.find("\n  " + key + " ", page.find("\n" + section + "\n"));
  size_t stop = page.find('\n', start + 1);
  while (page.substr(stop + 1, 4) == "    ") stop = page.find('\n', stop + 1);
  return page.substr(start + 1, stop - start);
}

// The widest key of the page is "basicConstraints (critical)", so that the values begin in column 30: 64
// digits do not fit into 80 columns.
TEST_F(ToolDigestLines, AreBrokenInTheMiddle) {
  const std::string pem = make_certificate(ec_key);
  std::string print = openssl({"x509", "-noout", "-fingerprint", "-sha256"}, pem);
  print = print.substr(print.find('=') + 1, 95);
  std::erase(print, ':');
  const Outcome result = run({"show"}, pem, {"COLUMNS=80"});
  EXPECT_EQ(0, result.status);
  const std::string gap(30 - 2 - std::string("SHA-256").size(), ' ');
  EXPECT_EQ("  SHA-256" + gap + print.substr(0, 32) + "\n" + std::string(30, ' ') +
                print.substr(32) + "\n",
            row(result.out, "Fingerprints", "SHA-256"));
  const Outcome wide = run({"show"}, pem, {"COLUMNS=94"});
  EXPECT_EQ("  SHA-256" + gap + print + "\n", row(wide.out, "Fingerprints", "SHA-256"));
}

TEST_F(ToolDigestLines, TheKeyIdentifierIsWhatOpensslMakesOfTheKey) {
  const std::string pem = make_certificate(ec_key);
  std::string identifier = openssl({"x509", "-noout", "-ext", "subjectKeyIdentifier"}, pem);
  identifier = identifier.substr(identifier.find_last_of(' ') + 1, 59);
  std::erase(identifier, ':');
  const Outcome result = run({"show"}, pem);
  EXPECT_EQ("  key identifier              " + identifier + "\n",
            row(result.out, "Public key", "key identifier"));
}

}  // namespace

}  // namespace digest_lines_test
