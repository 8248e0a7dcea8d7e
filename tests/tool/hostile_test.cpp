// What each command says of inputs that are empty, cut, broken or hostile, as a whole.
#include "records.h"

namespace hostile_test {

namespace {

using namespace tool_tests;

/// A command that takes one file as its last word, and its status where it cannot read that.
struct Command {
  std::vector<std::string> words;
  int status;
};

const std::vector<Command> all_commands{{{"show"}, 1},
                                        {{"show", "--short"}, 1},
                                        {{"show", "--json"}, 1},
                                        {{"tree"}, 1},
                                        {{"trace"}, 1},
                                        {{"recode"}, 1},
                                        {{"name", "--der"}, 1},
                                        {{"crl"}, 2},
                                        {{"crl", "--serial", "0x1"}, 2},
                                        {{"crl", "--json"}, 2},
                                        {{"key"}, 2},
                                        {{"key", "--json"}, 2}};

bool is(const Command &command, const std::vector<std::string> &words) {
  return command.words == words;
}

class Hostile : public Records {
 protected:
  Outcome run_on(const Command &command, const std::string &file) const {
    std::vector<std::string> words = command.words;
    words.push_back(file);
    return run(std::move(words));
  }

  /// Expects each command to say this, and nothing else; show --json in a line.
  void expect_all(const std::string &file, const std::string &message, const json &line) const {
    for (const Command &command : all_commands) {
      const Outcome result = run_on(command, file);
      const std::string name = testing::PrintToString(command.words);
      EXPECT_EQ(command.status, result.status) << name;
      if (is(command, {"show", "--json"}) && !line.is_null()) {
        EXPECT_EQ("", result.err) << name;
        EXPECT_EQ(line, json::parse(result.out)) << name;
        continue;
      }
      EXPECT_EQ("", result.out) << name;
      EXPECT_EQ("orvelasn1: " + file + message + "\n", result.err) << name;
    }
  }
};

TEST_F(Hostile, AnEmptyInputIsSaidToBeEmpty) {
  const std::string empty = file("empty", std::string());
  expect_all(empty, ": element 1: the input is empty",
             {{"file", empty}, {"element", 1}, {"error", "the input is empty"}});
  const Outcome diff = run({"diff", empty, empty});
  EXPECT_EQ(2, diff.status);
  EXPECT_EQ("", diff.out);
  const std::string line = "orvelasn1: " + empty + ": element 1: the input is empty\n";
  EXPECT_EQ(line + line, diff.err);
}

TEST_F(Hostile, AFolderIsNoFile) {
  const std::string folder = path("folder");
  std::filesystem::create_directory(folder);
  const std::string message = ": Is a directory; name the files in it";
  expect_all(folder, message, nullptr);
  for (const auto &[a, b] : {std::pair(folder, path("none")), std::pair(file("a", ""), folder)}) {
    const Outcome diff = run({"diff", a, b});
    EXPECT_EQ(2, diff.status);
    EXPECT_EQ("", diff.out);
    EXPECT_EQ("orvelasn1: " + folder + message + "\n", diff.err);
  }
  const Outcome asked = run({"crl", "--certificate", folder}, "");
  EXPECT_EQ(2, asked.status);
  EXPECT_EQ("orvelasn1: " + folder + message + "\n", asked.err);
}

// The memory of a process begins with a page that nobody can read, not even root.
TEST_F(Hostile, AFileThatCannotBeReadIsSaid) {
  expect_all("/proc/self/mem", ": Input/output error", nullptr);
  expect_all(path("none"), ": No such file or directory", nullptr);
  const Outcome diff = run({"diff", "/proc/self/mem", "-"}, "");
  EXPECT_EQ(2, diff.status);
  EXPECT_EQ("orvelasn1: /proc/self/mem: Input/output error\n", diff.err);
}

TEST_F(Hostile, NamesOfFilesAreEscaped) {
  const std::string name = path("no\x1B[2Jsuch");
  for (const Command &command : all_commands) {
    const Outcome result = run_on(command, name);
    EXPECT_EQ("orvelasn1: " + path("no\\x1B[2Jsuch") + ": No such file or directory\n", result.err);
  }
  EXPECT_EQ("orvelasn1: " + path("no\\x1B[2Jsuch") + ": No such file or directory\n",
            run({"diff", name, name}).err);
}

// A SEQUENCE of three octets, of which two are there.
TEST_F(Hostile, ACutPemBlock) {
  const std::string cut = file("cut.pem", "-----BEGIN CERTIFICATE-----\nMAMCAQ\n");
  const std::string where = cut + ": element 1 (line 1)";
  const std::string why = "the PEM block has no END line; it may have been cut short";
  const std::string lines[] = {
      "0  2+3    Certificate: SEQUENCE\n",
      "0  fault  the header 30 03 promises 3 octets, but only 2 are left\n",
      "2  2+1      tbsCertificate: INTEGER\n"};
  for (const Command &command : all_commands) {
    if (command.words[0] == "trace") continue;  // what the library traces is not the tool's
    const Outcome result = run_on(command, cut);
    const std::string name = testing::PrintToString(command.words);
    EXPECT_EQ(command.status, result.status) << name;
    std::string out;
    std::string err = "orvelasn1: " + where + ": " + why + "\n";
    if (is(command, {"show"}))
      out = "Outline  " + where + "\n  " + lines[0] + "  " + lines[1] + "  " + lines[2] + "\n";
    if (is(command, {"tree"})) {
      out = lines[0] + lines[1] + lines[2];
      err = "orvelasn1: " + where +
            ", offset 0: the header 30 03 promises 3 octets, but only 2 are left\n";
    }
    if (is(command, {"show", "--json"})) {
      out = json({{"error", why}}).dump();
      out = "{\"file\":\"" + cut + "\",\"element\":1," + out.substr(1) + "\n";
      err = "";
    }
    EXPECT_EQ(out, result.out) << name;
    EXPECT_EQ(err, result.err) << name;
  }
}

TEST_F(Hostile, ALengthThatNoInputHas) {
  const std::string huge = file("huge.der", hex("30 84 FF FF FF FF 02 01 05"));
  const std::string where = huge + ": element 1";
  const std::string why =
      "the header 30 84 FF FF FF FF promises 4294967295 octets, but only 3 are left";
  const std::string lines[] = {"0  6+4294967295  SEQUENCE\n", "0  fault  " + why + "\n",
                               "6  2+1      INTEGER 5\n"};
  for (const Command &command : all_commands) {
    if (command.words[0] == "trace") continue;
    const Outcome result = run_on(command, huge);
    const std::string name = testing::PrintToString(command.words);
    EXPECT_EQ(command.status, result.status) << name;
    std::string out;
    std::string err = "orvelasn1: " + where + ", offset 0: " + why + "\n";
    if (is(command, {"show"}))
      out = "Outline  " + where + "\n  " + lines[0] + "  " + lines[1] + "  " + lines[2] + "\n";
    if (is(command, {"tree"})) out = lines[0] + lines[1] + lines[2];
    if (is(command, {"show", "--json"})) {
      out = "{\"file\":\"" + huge + "\",\"element\":1,\"error\":\"" + why + "\",\"offset\":0}\n";
      err = "";
    }
    EXPECT_EQ(out, result.out) << name;
    EXPECT_EQ(err, result.err) << name;
  }
}

TEST_F(Hostile, ElementsThatAreVeryDeep) {
  // Without a NULL these would be the characters of a text.
  Bytes octets = hex("30 80 05 00");
  for (int i = 0; i < 50000; ++i) octets.insert(octets.end(), {0x30, 0x80});
  const std::string deep = file("deep.der", octets);
  for (const Command &command : all_commands) {
    if (command.words[0] == "trace" || command.words[0] == "tree") continue;
    const Outcome result = run_on(command, deep);
    const std::string name = testing::PrintToString(command.words);
    EXPECT_EQ(command.status, result.status) << name;
    if (is(command, {"show", "--json"})) continue;
    EXPECT_EQ("orvelasn1: " + deep +
                  ": element 1, offset 0: an indefinite length without its end-of-contents\n",
              result.err)
        << name;
    // A page has a heading, 500 lines, the line that says that there are more, and an empty one.
    EXPECT_EQ(is(command, {"show"}) ? 503 : 0, std::ranges::count(result.out, '\n')) << name;
  }
}

// ---- Texts that a terminal would obey -----------------------------------------------------------

constexpr const char *hostile_name =
    "\x1B]0;x\x07\x7F\xC2\x9B"
    "2J\xE2\x80\xAE\xFF\n";
/// The same as it is printed: the override of directions by its number, what is no UTF-8 as octets.
constexpr const char *printed_name = "\\x1B]0;x\\x07\\x7F\\u{9B}2J\\u{202E}\\xFF\\x0A";

Bytes hostile_certificate() {
  return sequence(
      sequence(hex("A0 03 02 01 02") + integer("01") + hex(ed25519) + common_name(hostile_name) +
               sequence(element(0x17, support::text("200101000000Z")) +
                        element(0x17, support::text("300101000000Z"))) +
               common_name(hostile_name) + sequence(hex(ed25519) + element(0x03, hex("00 01")))) +
      hex(ed25519) + element(0x03, hex("00 01")));
}

Bytes hostile_crl() {
  const Bytes time = element(0x17, support::text("200101000000Z"));
  return sequence(sequence(hex("02 01 01") + hex(ed25519) + common_name(hostile_name) + time) +
                  hex(ed25519) + element(0x03, hex("00 01")));
}

TEST_F(Hostile, NamesAreEscapedInEachOutput) {
  const std::string one = file("one.der", hostile_certificate());
  const std::string list = file("list.crl", hostile_crl());
  const std::vector<std::pair<std::vector<std::string>, std::string>> rows{
      {{"show", one}, std::string("Issuer\n  commonName      ") + printed_name + "\n"},
      {{"show", "--short", one}, printed_name},
      {{"show", list}, std::string("commonName=") + printed_name + "\n"},
      {{"crl", list}, std::string("  issuer      commonName=") + printed_name + "\n"},
      {{"key", one, one}, std::string("Certificate, commonName=") + printed_name + "\n"},
      {{"crl", "--certificate", one, file("other", hostile_crl())},
       one + ": element 1: 01: not revoked\n"},
      {{"diff", one, file("plain.der", sequence(hex("05 00")))}, ""},
  };
  for (const auto &[words, line] : rows) {
    const Outcome result = run(words);
    EXPECT_NE(std::string::npos, result.out.find(line))
        << testing::PrintToString(words) << result.out << result.err;
    EXPECT_TRUE(std::ranges::all_of(result.out + result.err, [](char c) {
      return c == '\n' || (c >= 0x20 && c < 0x7F);
    })) << result.out;
  }
  for (const std::vector<std::string> &words : {std::vector<std::string>{"show", "--json", one},
                                                {"key", "--json", one},
                                                {"crl", "--json", list}}) {
    const Outcome result = run(words);
    EXPECT_EQ(1, std::ranges::count(result.out, '\n'));
    EXPECT_TRUE(std::ranges::all_of(
        result.out, [](char c) { return c == '\n' || static_cast<unsigned char>(c) >= 0x20; }));
    EXPECT_TRUE(json::parse(result.out).is_object());
  }
}

// ---- The list of types --------------------------------------------------------------------------

TEST_F(Hostile, TypesAreAlignedAndEndWithTheirLabels) {
  const Outcome result = run({"types"});
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("", result.err);
  std::istringstream lines(result.out);
  std::string first;
  std::getline(lines, first);
  const size_t column = first.find("an X.509 certificate");
  EXPECT_EQ("certificate" + std::string(column - std::string("certificate").size(), ' ') +
                "an X.509 certificate  [CERTIFICATE, X509 CERTIFICATE]",
            first);
  std::set<std::string> names;
  for (std::string line = first; !line.empty();) {
    const std::string name = line.substr(0, line.find(' '));
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_EQ(std::string(column - name.size(), ' '),
              line.substr(name.size(), column - name.size()));
    EXPECT_NE(' ', line[column]) << line;
    if (!std::getline(lines, line)) break;
  }
  EXPECT_LT(100U, names.size());
}

}  // namespace

}  // namespace hostile_test
