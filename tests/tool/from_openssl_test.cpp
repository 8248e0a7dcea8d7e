// docs/from-openssl.md: each pair of commands says the same.
#include "bundles.h"

namespace from_openssl_test {

namespace {

using namespace tool_tests;

/// A pair of the document.
struct Pair {
  std::string title;
  std::vector<std::string> commands;
  std::string compared;
};

std::vector<Pair> pairs() {
  std::vector<Pair> found;
  std::istringstream document(read_file(ORVELASN1_DOCS_PATH "/from-openssl.md"));
  const std::string compared = "Compared: ";
  bool in_command = false;
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("## ")) found.push_back({line, {}, ""});
    if (found.empty()) continue;
    if (line == "```") in_command = false;
    if (in_command) found.back().commands.back() += line + "\n";
    if (line == "```sh") {
      in_command = true;
      found.back().commands.emplace_back();
    }
    if (line.starts_with(compared))
      found.back().compared = line.substr(compared.size(), line.size() - compared.size() - 1);
  }
  return found;
}

/// The texts between backquotes.
std::vector<std::string> quoted(const std::string &text) {
  std::vector<std::string> found;
  for (size_t at = text.find('`'); at != std::string::npos;) {
    const size_t end = text.find('`', at + 1);
    found.push_back(text.substr(at + 1, end - at - 1));
    at = text.find('`', end + 1);
  }
  return found;
}

std::string past(const std::string &mark, const std::string &text) {
  const size_t at = text.find(mark);
  return at == std::string::npos ? text : text.substr(at + mark.size());
}

/// The hexadecimal digits of a text, in capitals.
std::string digits(const std::string &text) {
  std::string out;
  for (const char c : text)
    if (std::isxdigit(static_cast<unsigned char>(c)) != 0)
      out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

class FromOpenssl : public Bundles {
 protected:
  /// Makes the files that the document names.
  FromOpenssl() {
    const Bundle made = bundle();
    file("server.der", to_der(made.server));
    file("bundle.pem", made.all());
    file("bundle.p7b", openssl({"crl2pkcs7", "-nocrl", "-certfile", path("bundle.pem")}));
    sign("revoked", request("revoked", "/CN=revoked", ec_key), "ca", "20200101000000Z",
         "20400101000000Z", "server");
    const std::vector<std::string> authority{"ca",           "-config",  path("ca.cnf"), "-cert",
                                             path("ca.pem"), "-keyfile", path("ca.key")};
    const auto ask = [&](std::vector<std::string> more) {
      more.insert(more.begin(), authority.begin(), authority.end());
      return openssl(more);
    };
    ask({"-revoke", path("revoked.pem")});
    file("ca.crl", ask({"-gencrl", "-crldays", "3650"}));
  }

  Outcome shell(const std::string &command) const {
    const std::string folder = std::filesystem::path(ORVELASN1_TOOL_PATH).parent_path();
    return run_program(
        {"sh", "-c", "PATH=" + folder + ":$PATH; cd " + path("") + " || exit 99\n" + command}, "",
        {});
  }
};

TEST_F(FromOpenssl, EachPairSaysTheSame) {
  const std::vector<Pair> all = pairs();
  ASSERT_LE(25U, all.size());
  for (const Pair &pair : all) {
    SCOPED_TRACE(pair.title);
    ASSERT_EQ(2U, pair.commands.size());
    const Outcome peer = shell(pair.commands[0]);
    const Outcome own = shell(pair.commands[1]);
    const std::string &what = pair.compared;
    const std::vector<std::string> marks = quoted(what);
    EXPECT_EQ(peer.status, own.status) << peer.err << own.err;
    EXPECT_EQ("", own.err);
    if (what == "the status") continue;
    EXPECT_EQ(0, own.status);
    EXPECT_NE("", own.out);
    if (what == "the output") {
      EXPECT_EQ(peer.out, own.out);
    } else if (what.starts_with("the text past ")) {
      EXPECT_EQ(past(marks.at(0), peer.out), own.out);
    } else if (what.starts_with("the digits past ")) {
      EXPECT_EQ(digits(past(marks.at(0), peer.out)), digits(own.out));
    } else if (what.starts_with("each line of the second")) {
      std::istringstream lines(own.out);
      for (std::string line; std::getline(lines, line);)
        EXPECT_NE(std::string::npos, peer.out.find(line)) << line;
    } else if (what.starts_with("both say ")) {
      EXPECT_FALSE(marks.empty());
      for (const std::string &mark : marks) {
        EXPECT_NE(std::string::npos, peer.out.find(mark)) << mark << peer.out;
        EXPECT_NE(std::string::npos, own.out.find(mark)) << mark << own.out;
      }
    } else {
      FAIL() << "nothing is compared by: " << what;
    }
  }
}

}  // namespace

}  // namespace from_openssl_test
