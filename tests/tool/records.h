// What the tests of all record types share: elements made by hand, and the tool run on them.
#ifndef ORVELASN1_TESTS_TOOL_RECORDS_H
#define ORVELASN1_TESTS_TOOL_RECORDS_H

#include "schema.h"

namespace tool_tests {

inline Bytes integer(const char *value) { return element(0x02, hex(value)); }
inline Bytes octet_string(const Bytes &value) { return element(0x04, value); }
inline Bytes set(const Bytes &content) { return element(0x31, content); }
inline Bytes oid(const char *content) { return element(0x06, hex(content)); }

/// The textbook key of RSA: p = 61, q = 53, e = 17, d = 413.
inline Bytes rsa_private_key() {
  return sequence(
      hex("02 01 00  02 02 0C A1  02 01 11  02 02 01 9D  02 01 3D  02 01 35  02 01 35"
          "02 01 31  02 01 26"));
}
inline Bytes private_key_info() {
  return sequence(hex("02 01 00  30 0D 06 09 2A 86 48 86 F7 0D 01 01 01 05 00") +
                  octet_string(rsa_private_key()));
}

/// pbeWithSHA1And3-KeyTripleDES-CBC with the salt 01020304 and 2048 iterations.
inline constexpr const char *password_based =
    "30 18 06 0A 2A 86 48 86 F7 0D 01 0C 01 03 30 0A 04 04 01 02 03 04 02 02 08 00";

class Records : public Tool {
 protected:
  /// What a command prints about an input with which all must be well. What is shown is shown as of
  /// one moment: by the clock the days that are left may change from one run to the next.
  std::string good(std::vector<std::string> words, const std::string &input) const {
    if (words[0] == "show") words.insert(words.end(), {"--at", "2029-12-01"});
    const Outcome result = run(std::move(words), input);
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("", result.err);
    return result.out;
  }
  std::string good(std::vector<std::string> words, const Bytes &input) const {
    return good(std::move(words), characters(input));
  }

  /// The page of an element, without its last line, which is empty.
  std::string page(const Bytes &input, const std::string &type = "",
                   const std::vector<std::string> &more = {}) const {
    std::vector<std::string> words{"show"};
    if (!type.empty()) words.insert(words.end(), {"--type", type});
    words.insert(words.end(), more.begin(), more.end());
    const std::string text = good(words, input);
    return text.substr(0, text.size() - 1);
  }

  /// The JSON of an element, which must follow the schema, without what all types begin with.
  json fields(const std::string &input, const std::string &type = "") const {
    std::vector<std::string> words{"show", "--json"};
    if (!type.empty()) words.insert(words.end(), {"--type", type});
    const std::string line = good(words, input);
    EXPECT_EQ("", record_violation(line)) << line;
    json object = json::parse(line);
    EXPECT_EQ(type.empty() ? object["type"].get<std::string>() : type, object["type"]);
    for (const char *const key : {"type", "file", "element", "pem", "octets"}) object.erase(key);
    return object;
  }
  json fields(const Bytes &input, const std::string &type = "") const {
    return fields(characters(input), type);
  }

  /// The type that an element without a label is taken for.
  std::string type_of(const Bytes &input) const {
    return json::parse(good({"show", "--json"}, input))["type"];
  }

  /// What is said of an input that is not well, without the name of the input.
  std::string message(std::vector<std::string> words, const Bytes &input) const {
    const Outcome result = run(std::move(words), characters(input));
    EXPECT_EQ(1, result.status);
    const std::string start = "orvelasn1: standard input: element 1";
    EXPECT_TRUE(result.err.starts_with(start)) << result.err;
    return result.err.substr(std::min(start.size(), result.err.size()));
  }

  /// Expects recode to return the same octets, as they are and from the fields alone.
  void expect_recodes(const Bytes &input, const std::string &type) const {
    const std::string same =
        "standard input: element 1: same, " + std::to_string(input.size()) + " octets\n";
    EXPECT_EQ(same, good({"recode", "--type", type}, input));
    EXPECT_EQ(same, good({"recode", "--fresh", "--type", type}, input));
  }
};

}  // namespace tool_tests

#endif
