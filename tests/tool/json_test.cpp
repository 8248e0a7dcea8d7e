// JSON for other programs: the facts beside the fields, compact objects, refused elements, and the
// lines of docs/json.md.
#include <optional>
#include <set>

#include "bundles.h"

namespace json_test {

namespace {

using namespace tool_tests;

class ToolFacts : public Bundles {
 protected:
  std::vector<json> shown(const std::string &input) const {
    std::istringstream lines(good({"show", "--json"}, input));
    std::vector<json> objects;
    for (std::string line; std::getline(lines, line);) objects.push_back(json::parse(line));
    return objects;
  }

  /// What openssl says of a certificate, past the first "=", without the newline.
  std::string say(const std::string &pem, std::vector<std::string> words) const {
    words.insert(words.begin(), {"x509", "-noout"});
    const std::string said = openssl(words, pem);
    return said.substr(said.find('=') + 1, said.size() - said.find('=') - 2);
  }
};

TEST_F(ToolFacts, AreThoseOfOpenssl) {
  const Bundle made = bundle();
  const std::vector<json> all = shown(made.all());
  const std::vector<std::string> pems{made.server, made.issuer, made.old};
  ASSERT_EQ(pems.size(), all.size());
  for (size_t i = 0; i < pems.size(); ++i) {
    const json &one = all[i];
    EXPECT_EQ("", Schema("certificate.schema.json").violation(one));
    for (const char *const who : {"subject", "issuer"})
      EXPECT_EQ(say(pems[i], {"-" + std::string(who), "-nameopt", "RFC2253"}),
                one[std::string(who) + "Rfc4514"]);
    for (const auto &[member, option] :
         {std::pair("notBefore", "-startdate"), std::pair("notAfter", "-enddate")}) {
      std::string moment = say(pems[i], {option, "-dateopt", "iso_8601"});
      moment[10] = 'T';
      EXPECT_EQ(moment, one[member]);
    }
  }
  EXPECT_EQ(json::parse(R"({"dns": ["www.example.org", "example.org"],
                            "ip": ["192.0.2.1", "2001:db8::1"], "mail": ["admin@example.org"],
                            "uri": ["https://www.example.org/"],
                            "directory": ["CN=One\\, Some,C=DE"], "unreadable": 0})"),
            [](json sans) {
              EXPECT_EQ(1U, sans["other"].size());
              EXPECT_EQ("1.2.3", sans["other"][0]["value"]);
              sans.erase("other");
              return sans;
            }(all[0]["sans"]));
  EXPECT_EQ(json({"serverAuth", "1.2.3.4"}), all[0]["extKeyUsage"]);
  EXPECT_EQ(json({"digitalSignature", "keyEncipherment"}), all[0]["keyUsage"]);
  EXPECT_EQ(json({"keyCertSign", "cRLSign"}), all[1]["keyUsage"]);
  EXPECT_EQ(all[1]["subjectKeyIdentifier"], all[0]["authorityKeyIdentifier"]);
  EXPECT_EQ(all[1]["key"]["identifier"], all[1]["subjectKeyIdentifier"]);
  EXPECT_EQ(json({false, true, false}), json({all[0]["isCA"], all[1]["isCA"], all[2]["isCA"]}));
  EXPECT_EQ(json({3, 3, 1}), json({all[0]["version"], all[1]["version"], all[2]["version"]}));
  EXPECT_EQ(2, all[0]["tbsCertificate"]["version"]);
  for (const char *const absent : {"keyUsage", "extKeyUsage", "subjectKeyIdentifier"})
    EXPECT_TRUE(all[2][absent].is_null()) << absent;
}

TEST_F(ToolFacts, OfRequestsAreThoseOfTheCertificateThatIsAskedFor) {
  const std::string pem =
      openssl({"req", "-new", "-nodes", "-newkey", "ed25519", "-keyout", path("key.pem"), "-subj",
               "/O=A/CN=b", "-addext", "subjectAltName=DNS:b.example", "-addext",
               "keyUsage=digitalSignature", "-addext", "basicConstraints=CA:TRUE"});
  const std::string line = good({"show", "--json"}, pem);
  EXPECT_EQ("", record_violation(line));
  const json one = json::parse(line);
  EXPECT_EQ("CN=b,O=A", one["subjectRfc4514"]);
  EXPECT_EQ(json({"b.example"}), one["sans"]["dns"]);
  EXPECT_EQ(json({"digitalSignature"}), one["keyUsage"]);
  EXPECT_TRUE(one["extKeyUsage"].is_null());
  EXPECT_EQ(false, one["isCA"]);  // the key is not for that
  EXPECT_EQ(1, one["version"]);
  EXPECT_EQ("Ed25519", one["key"]["kind"]);
}

TEST_F(ToolFacts, AreNullOrCountedWhereTheyCannotBeRead) {
  // 3 octets of an address, a NUL in a DNS name, a keyUsage that is NULL, a time that is none.
  const Bytes der = sequence(
      sequence(hex("A0 03 02 01 02  02 01 01") + hex(ed25519) + common_name("a") +
               sequence(element(0x17, support::text("never")) +
                        element(0x17, support::text("300101000000Z"))) +
               common_name("a") + sequence(hex(ed25519) + element(0x03, hex("00 01"))) +
               element(0xA3, sequence(sequence(hex("06 03 55 1D 11 04 0D 30 0B 87 03 01 02 03"
                                                   "82 01 00 82 01 61")) +
                                      sequence(hex("06 03 55 1D 0F 04 02 05 00"))))) +
      hex(ed25519) + element(0x03, hex("00 01")));
  const json one = shown(characters(der))[0];
  EXPECT_EQ("", Schema("certificate.schema.json").violation(one));
  EXPECT_EQ(2, one["sans"]["unreadable"]);
  EXPECT_EQ(json({"a"}), one["sans"]["dns"]);
  EXPECT_EQ(json::array(), one["sans"]["ip"]);
  EXPECT_TRUE(one["keyUsage"].is_null());
  EXPECT_TRUE(one["notBefore"].is_null());
  EXPECT_EQ("2030-01-01T00:00:00Z", one["notAfter"]);
}

// ---- Compact objects ----------------------------------------------------------------------------

/// The names of all members, at any depth.
void collect(const json &value, std::set<std::string> &names) {
  if (value.is_object())
    for (const auto &member : value.items()) names.insert(member.key());
  if (value.is_structured())
    for (const json &inner : value) collect(inner, names);
}

TEST_F(ToolFacts, CompactObjectsHaveNoOctetsTwice) {
  const std::string input = bundle().server;
  const std::string whole = good({"show", "--json"}, input);
  const std::string line = good({"show", "--json", "--compact"}, input);
  EXPECT_LT(line.size() * 10, whole.size() * 7);
  const json compact = json::parse(line);
  EXPECT_EQ("", Schema("certificate.schema.json").violation(compact));
  std::set<std::string> names;
  collect(compact, names);
  for (const char *const gone :
       {"pem", "tbsEncoded", "issuerEncoded", "subjectEncoded", "extnValue"})
    EXPECT_FALSE(names.contains(gone)) << gone;
  // What is left is as it is in the whole object.
  json expected = json::parse(whole);
  for (const char *const gone : {"pem", "tbsEncoded"}) expected.erase(gone);
  for (const char *const gone : {"issuerEncoded", "subjectEncoded"})
    expected["tbsCertificate"].erase(gone);
  for (json &extension : expected["tbsCertificate"]["extensions"]) extension.erase("extnValue");
  expected = expected.flatten();
  json left = compact.flatten();
  for (auto member = expected.begin(); member != expected.end();)
    member = member.key().ends_with("/parameters") ? expected.erase(member) : std::next(member);
  for (auto member = left.begin(); member != left.end();)
    member = member.key().ends_with("/parameters") ? left.erase(member) : std::next(member);
  EXPECT_EQ(expected, left);
}

TEST_F(ToolFacts, CompactObjectsKeepOctetsThatAreNotDecoded) {
  const std::string config =
      "[req]\ndistinguished_name=d\n[d]\n[e]\n1.2.3.4=DER:0500\nkeyUsage=DER:0500\n";
  const std::string pem =
      openssl({"req", "-x509", "-nodes", "-newkey", "ed25519", "-keyout", path("key.pem"), "-subj",
               "/CN=a", "-config", file("c.cnf", config), "-extensions", "e"});
  json compact = json::parse(good({"show", "--json", "--compact"}, pem));
  size_t count = 0;
  for (json &extension : compact["tbsCertificate"]["extensions"]) {
    if (extension["extnIDName"] == "subjectKeyIdentifier") continue;  // which openssl adds
    EXPECT_EQ("0500", extension["extnValue"]);
    ++count;
  }
  EXPECT_EQ(2U, count);
}

TEST_F(ToolFacts, CompactIsForJson) { EXPECT_EQ(2, run({"show", "--compact"}, "").status); }

// ---- Refused elements ---------------------------------------------------------------------------

TEST_F(ToolFacts, RefusedElementsAreLines) {
  const std::string pem = make_certificate(ec_key);
  std::string der = to_der(pem);
  ASSERT_EQ("\xA0\x03\x02\x01\x02\x02", der.substr(8, 6));
  der[13] = '\x30';  // the serial number
  const std::string broken = "-----BEGIN CERTIFICATE-----\n" + openssl({"enc", "-base64"}, der) +
                             "-----END CERTIFICATE-----\n";
  const Outcome result = run({"show", "--json", file("b.pem", pem + broken + pem)});
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("", result.err);
  std::istringstream lines(result.out);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(pem, json::parse(line)["pem"]);
  std::getline(lines, line);
  const json refused = json::parse(line);
  EXPECT_EQ("", Schema("refused.schema.json").violation(refused));
  EXPECT_EQ(
      json({{"file", path("b.pem")},
            {"element", 2},
            {"offset", 13},
            {"path", "tbsCertificate.serialNumber"},
            {"error", "tbsCertificate.serialNumber: expected INTEGER (02), found SEQUENCE (30)"}}),
      refused);
  std::getline(lines, line);
  EXPECT_EQ(3, json::parse(line)["element"]);
  EXPECT_FALSE(std::getline(lines, line));
}

TEST_F(ToolFacts, OctetsLeftOverAreALineAfterTheElement) {
  const std::string der = to_der(make_certificate(ec_key));
  const std::string pem = "-----BEGIN CERTIFICATE-----\n" +
                          openssl({"enc", "-base64"}, der + characters(hex("05 80"))) +
                          "-----END CERTIFICATE-----\n";
  const Outcome result = run({"show", "--json"}, pem);
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("", result.err);
  std::istringstream lines(result.out);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ("certificate", json::parse(line)["type"]);
  std::getline(lines, line);
  EXPECT_EQ(json({{"file", "standard input"},
                  {"element", 1},
                  {"offset", der.size()},
                  {"error", "2 octets left over after the certificate"}}),
            json::parse(line));
}

TEST_F(ToolFacts, InputsWithoutAnElementAreALineWithoutAPlace) {
  const Outcome result = run({"show", "--json"}, "no certificate");
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("", result.err);
  const json refused = json::parse(result.out);
  EXPECT_EQ("", Schema("refused.schema.json").violation(refused));
  EXPECT_FALSE(refused.contains("path"));
  EXPECT_FALSE(refused.contains("offset"));
}

// ---- docs/json.md -------------------------------------------------------------------------------

/// A question of the document: the line of jq, and the answer, if it stands there.
struct Question {
  std::string title;
  std::string line;
  std::optional<std::string> answer;
};

std::vector<Question> questions() {
  std::vector<Question> found;
  std::istringstream document(read_file(ORVELASN1_DOCS_PATH "/json.md"));
  bool in_answer = false;
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("### ")) found.push_back({line, "", std::nullopt});
    if (found.empty()) continue;
    if (line.starts_with("jq ")) found.back().line = line;
    if (in_answer && line == "```") in_answer = false;
    if (in_answer) *found.back().answer += line + "\n";
    if (line == "```text") {
      in_answer = true;
      found.back().answer = "";
    }
  }
  return found;
}

TEST_F(ToolFacts, AnswerTheQuestionsOfTheDocument) {
  const Bundle made = bundle();
  const std::string objects = good({"show", "--json"}, made.all());
  const std::vector<Question> all = questions();
  ASSERT_EQ(20U, all.size());
  std::map<std::string, std::string> answers;
  for (const std::string &pem : {made.server, made.issuer, made.old}) {
    answers["### 15. What are the pins of their keys?"] +=
        "sha256//" +
        openssl({"enc", "-base64", "-A"},
                openssl({"dgst", "-sha256", "-binary"},
                        openssl({"pkey", "-pubin", "-outform", "DER"},
                                openssl({"x509", "-pubkey", "-noout"}, pem)))) +
        "\n";
    answers["### 16. What are their fingerprints, with colons?"] +=
        say(pem, {"-fingerprint", "-sha256"}) + "\n";
  }
  answers["### 20. Which PEM block has a serial number?"] = made.server + "\n";
  for (const Question &question : all) {
    ASSERT_TRUE(question.line.starts_with("jq -r '")) << question.title;
    const Outcome result = run_program({"sh", "-c", question.line}, objects, {});
    EXPECT_EQ(0, result.status) << question.title << result.err;
    const std::string expected = question.answer ? *question.answer : answers.at(question.title);
    EXPECT_EQ(expected, result.out) << question.title;
    EXPECT_NE("", result.out) << question.title;
  }
}

// A BasicConstraints with a NULL inside, where it ends, and another NULL after it.
TEST_F(ToolFacts, HasNoMemberTwiceForWhatIsLeftOver) {
  const Outcome result =
      run({"show", "--json", "--type", "extensions"},
          characters(hex("30 12 30 10 06 03 55 1D 13 04 09 30 05 01 01 FF 05 00 05 00")));
  const auto count = [&](const std::string &text) {
    size_t number = 0;
    for (size_t at = 0; (at = result.out.find(text, at)) != std::string::npos; ++at) ++number;
    return number;
  };
  EXPECT_EQ(1U, count("\"unexpected\":")) << result.out;
  EXPECT_EQ(1U, count("\"unexpectedAfter\":")) << result.out;
}

// A DistributionPoint whose distributionPoint, which is in an explicit tag, has more octets than are
// left.
TEST_F(ToolFacts, MarksAnExplicitTagThatIsTooLong) {
  const Outcome result =
      run({"show", "--json", "--type", "extensions"},
          characters(hex("30 11 30 0F 06 03 55 1D 1F 04 08 30 06 30 04 A0 7F 30 00")));
  EXPECT_NE(std::string::npos, result.out.find("\"octets\":\"A07F3000\"")) << result.out;
}

}  // namespace

}  // namespace json_test
