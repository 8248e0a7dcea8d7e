// The schemas of docs/ for the JSON of "crl", "key" and "diff", and for the types of "decoded".
#include "bundles.h"

namespace schema_test {

namespace {

using namespace tool_tests;

class Schemas : public Bundles {
 protected:
  /// The lines of a command, each of which must follow the schema.
  std::vector<json> lines(const std::string &schema, std::vector<std::string> words,
                          const Bytes &input = {}) const {
    const Outcome result = run(std::move(words), characters(input));
    std::vector<json> all;
    std::istringstream text(result.out);
    for (std::string line; std::getline(text, line);) {
      all.push_back(json::parse(line));
      EXPECT_EQ("", Schema(schema).violation(all.back())) << line;
    }
    return all;
  }
};

Bytes utc(const char *text) { return element(0x17, support::text(text)); }

Bytes extension(const Bytes &identifier, const Bytes &value) {
  return sequence(identifier + octet_string(value));
}

Bytes crl(const Bytes &entries, const Bytes &extensions) {
  return sequence(sequence(hex("02 01 01") + hex(ed25519) + common_name("CA") +
                           utc("200101000000Z") + utc("300101000000Z") + sequence(entries) +
                           element(0xA0, sequence(extensions))) +
                  hex(ed25519) + element(0x03, hex("00 01")));
}

const Bytes entries =
    sequence(
        integer("01") + utc("200102030405Z") +
        sequence(extension(oid("55 1D 15"), element(0x0A, hex("01"))) +
                 extension(oid("55 1D 18"), element(0x18, support::text("20200101000000Z"))))) +
    sequence(integer("02") + utc("201302030405Z"));
const Bytes number = extension(oid("55 1D 14"), hex("02 01 10"));

TEST_F(Schemas, HoldForAnswersAndSummariesOfLists) {
  const Bytes delta = number + extension(oid("55 1D 1B"), hex("02 01 0F")) +
                      extension(oid("55 1D 1C"), sequence(hex("81 01 FF")));
  EXPECT_EQ(1U, lines("crl.schema.json", {"crl", "--json"}, crl(entries, delta)).size());
  const auto answers = lines(
      "crl.schema.json", {"crl", "--json", "--serial", "1", "--serial", "0x2", "--serial", "0x33"},
      crl(entries, delta));
  ASSERT_EQ(3U, answers.size());
  EXPECT_EQ("2020-01-01T00:00:00Z", answers[0]["invalidityDate"]);
  EXPECT_TRUE(answers[1]["revocationDate"].is_null());
  EXPECT_EQ(json({"only user certificates"}), answers[2]["scope"]);
  // A summary is no answer, and an answer is no summary.
  json object = answers[0];
  object["entries"] = 1;
  EXPECT_NE("", Schema("crl.schema.json").violation(object));
  object = answers[0];
  object["serialNumber"] = 1;
  EXPECT_NE("", Schema("crl.schema.json").violation(object));
}

TEST_F(Schemas, HoldForKeys) {
  const Bundle made = bundle();
  file("encrypted.key", openssl({"pkcs8", "-topk8", "-passout", "pass:x", "-in", path("ca.key")}));
  const auto all =
      lines("key.schema.json", {"key", "--json", path("ca.pem"), path("ca.key"), path("server.pem"),
                                path("server.csr"), path("encrypted.key")});
  ASSERT_EQ(3U, all.size());
  EXPECT_EQ(2U, all[0]["elements"].size());
  EXPECT_EQ("commonName=Example CA", [](std::string subject) {
    return subject.substr(subject.rfind("commonName"));
  }(all[0]["elements"][0]["subject"]));
  EXPECT_TRUE(all[2]["key"].is_null());
  json object = all[0];
  object["pins"][0] = "sha256";
  EXPECT_NE("", Schema("key.schema.json").violation(object));
}

TEST_F(Schemas, HoldForDifferences) {
  const Bundle made = bundle();
  const auto all =
      lines("diff.schema.json", {"diff", "--json", path("ca.pem"), path("server.pem")});
  std::set<std::string> kinds;
  for (const json &one : all) kinds.insert(one["difference"].get<std::string>());
  EXPECT_EQ((std::set<std::string>{"value", "onlyA", "onlyB"}), kinds);
  const std::string list = file("list.crl", crl(entries, number));
  const auto types = lines("diff.schema.json", {"diff", "--json", path("ca.pem"), list});
  ASSERT_EQ(1U, types.size());
  EXPECT_EQ("type", types[0]["difference"]);
  const std::string both = file("both.pem", made.issuer + made.server);
  const auto alone = lines("diff.schema.json", {"diff", "--json", path("ca.pem"), both});
  ASSERT_EQ(1U, alone.size());
  EXPECT_EQ("only in the second file", alone[0]["difference"]);
  json object = alone[0];
  object["difference"] = "none";
  EXPECT_NE("", Schema("diff.schema.json").violation(object));
}

// ---- "decoded" ----------------------------------------------------------------------------------

TEST_F(Schemas, EachExtensionHasOneType) {
  const json list = json::parse(good({"show", "--json"}, crl(entries, number)));
  EXPECT_EQ("", record_violation(list.dump()));
  json wrong = list;
  json &decoded = wrong["tbsCertList"]["crlExtensions"][0]["decoded"];
  EXPECT_EQ("10", decoded);
  decoded = 16;
  EXPECT_NE("", record_violation(wrong.dump()));
}

// A number of 20 octets, the most that RFC 5280, 5.2.3 allows, is digits as any other.
TEST_F(Schemas, ALongNumberOfAListIsDigitsToo) {
  const std::string digits = "7F0102030405060708090A0B0C0D0E0F10111213";
  const Bytes long_number = extension(oid("55 1D 14"), integer(digits.c_str()));
  const json list = json::parse(good({"show", "--json"}, crl(entries, long_number)));
  EXPECT_EQ("", record_violation(list.dump()));
  EXPECT_EQ(digits, list["tbsCertList"]["crlExtensions"][0]["decoded"]);
  EXPECT_TRUE(
      matches(good({"show"}, crl(entries, long_number)), "\n +cRLNumber +0x" + digits + "\n"));
}

/// A request with one attribute.
Bytes request_with(const Bytes &attribute) {
  return sequence(sequence(integer("00") + common_name("a") +
                           sequence(hex(ed25519) + element(0x03, hex("00 01"))) +
                           element(0xA0, attribute)) +
                  hex(ed25519) + element(0x03, hex("00 01")));
}

// RFC 2985, 5.4.1 and 5.4.2: a challengePassword has one value, an unstructuredName any number.
TEST_F(Schemas, AnAttributeHasAListWhereItMayHaveSeveralValues) {
  const Bytes one = element(0x0C, support::text("one"));
  const Bytes two = element(0x0C, support::text("two"));
  const auto shown = [&](const char *type, const Bytes &values) {
    const std::string line =
        good({"show", "--json"}, request_with(sequence(oid(type) + set(values))));
    EXPECT_EQ("", record_violation(line));
    return json::parse(line)["certificationRequestInfo"]["attributes"][0];
  };
  constexpr const char *unstructured_name = "2A 86 48 86 F7 0D 01 09 02";
  constexpr const char *challenge_password = "2A 86 48 86 F7 0D 01 09 07";
  EXPECT_EQ(json({"one"}), shown(unstructured_name, one)["decoded"]);
  EXPECT_EQ(json({"one", "two"}), shown(unstructured_name, one + two)["decoded"]);
  EXPECT_EQ("one", shown(challenge_password, one)["decoded"]);
  const json several = shown(challenge_password, one + two);
  EXPECT_FALSE(several.contains("decoded"));
  EXPECT_EQ(json({"0C036F6E65", "0C0374776F"}), several["values"]);
  // A page shows them all the same.
  EXPECT_TRUE(
      matches(good({"show"}, request_with(sequence(oid(challenge_password) + set(one + two)))),
              "\n +challengePassword +one\n +two\n"));
}

// ---- The values of extensions by themselves -------------------------------------------------------

TEST_F(Schemas, HoldForTheValuesOfExtensionsAlone) {
  const std::vector<std::pair<const char *, const char *>> rows{
      {"general-names", "30 05 82 03 61 2E 62"},
      {"ext-key-usage-syntax", "30 0A 06 08 2B 06 01 05 05 07 03 01"},
      {"certificate-policies", "30 06 30 04 06 02 2A 03"},
      {"policy-mappings", "30 0A 30 08 06 02 2A 03 06 02 2A 04"},
      {"crl-distribution-points", "30 0B 30 09 A0 07 A0 05 86 03 78 3A 79"},
      {"ip-addr-blocks", "30 0E 30 0C 04 02 00 01 30 06 03 04 00 C0 00 02"},
      {"qc-statements", "30 0A 30 08 06 06 04 00 8E 46 01 01"},
      {"attributes", "31 10 30 0E 06 03 2A 03 04 31 07 02 01 05 02 02 01 00"},
      {"features", "30 03 02 01 05"},
      {"acceptable-responses", "30 04 06 02 2A 03"},
      {"key-usage", "03 02 05 A0"},
      {"as-identifier-choice", "30 03 02 01 05"},
      {"crl-number", "02 01 10"},
      {"base-crl-number", "02 01 10"},
      {"inhibit-any-policy", "02 01 00"},
      {"qc-eu-retention-period", "02 01 0A"},
      {"crl-reason", "0A 01 01"},
      {"cp-suri", "16 03 78 3A 79"},
      {"subject-key-identifier", "04 02 01 02"},
      {"nonce", "04 02 01 02"},
      {"invalidity-date", "18 0F 32 30 32 30 30 31 30 31 30 30 30 30 30 30 5A"},
      {"archive-cutoff", "18 0F 32 30 32 30 30 31 30 31 30 30 30 30 30 30 5A"},
      {"policy-information", "30 04 06 02 2A 03"},
      {"issuing-distribution-point",
       "30 13 A0 07 A0 05 86 03 78 3A 79 81 01 FF 83 02 06 40 84 01 FF"},
      {"ip-address-family", "30 0C 04 02 00 01 30 06 03 04 00 C0 00 02"},
      {"as-identifiers", "30 0E A0 05 30 03 02 01 05 A1 05 30 03 02 01 06"},
      {"qc-statement", "30 08 06 06 04 00 8E 46 01 01"},
      {"semantics-information", "30 06 06 04 2A 03 04 05"},
      {"monetary-value", "30 0B 13 03 45 55 52 02 01 0A 02 01 03"},
      {"pds-location", "30 09 16 03 78 3A 79 13 02 65 6E"},
  };
  for (const auto &[type, octets] : rows) {
    const std::string line = good({"show", "--json", "--type", type}, hex(octets));
    EXPECT_EQ("", record_violation(line)) << line;
    json wrong = json::parse(line);
    (wrong.contains("value") ? wrong["value"] : wrong["more"]) = json::object({{"no", 1}});
    EXPECT_NE("", record_violation(wrong.dump())) << type;
  }
}

}  // namespace

}  // namespace schema_test
