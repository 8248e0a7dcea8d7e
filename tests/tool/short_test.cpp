// The short form of many objects, its order, and what expires soon.
#include "records.h"

namespace short_test {

namespace {

using namespace tool_tests;

/// A certificate with these times and names, and no extension but subjectAltName.
Bytes certificate(const std::string &subject, const std::string &not_after,
                  const Bytes &names = {}) {
  const Bytes algorithm = hex(ed25519);
  Bytes extensions;
  if (!names.empty())
    extensions =
        element(0xA3, sequence(sequence(hex("06 03 55 1D 11") + octet_string(sequence(names)))));
  return sequence(sequence(hex("A0 03 02 01 02  02 01 07") + algorithm + common_name("Example CA") +
                           sequence(element(0x17, support::text("200101000000Z")) +
                                    element(0x17, support::text(not_after))) +
                           common_name(subject) +
                           sequence(algorithm + element(0x03, Bytes(33, 0x01))) + extensions) +
                  algorithm + hex("03 02 00 01"));
}

Bytes dns(const std::string &name) { return element(0x82, support::text(name)); }

/// A revocation list that is to be updated on 2029-12-20.
Bytes revocation_list() {
  return sequence(sequence(hex(ed25519) + common_name("Example CA") +
                           element(0x17, support::text("291101000000Z")) +
                           element(0x17, support::text("291220000000Z"))) +
                  hex(ed25519) + hex("03 02 00 01"));
}

class Short : public Tool {
 protected:
  Short() {
    file("b.der", certificate("late", "310101000000Z"));
    file("long.der", certificate("soon", "291215000000Z"));
    file("a.der", certificate("gone", "291101000000Z") + rsa_private_key());
  }

  /// What `show` prints with these words, run in the folder of the files.
  Outcome in_folder(const std::string &words, const std::string &columns = "80") const {
    return run_program(
        {"sh", "-c",
         "cd '" + path(".") + "' && '" ORVELASN1_TOOL_PATH "' show --at 2029-12-01 " + words},
        "", {"COLUMNS=" + columns});
  }
};

TEST_F(Short, AlignsManyFiles) {
  const Outcome result = in_folder("--short b.der long.der a.der");
  EXPECT_EQ(0, result.status) << result.err;
  EXPECT_EQ(
      "b.der         396 days left          late\n"
      "    Ed25519, by Example CA\n"
      "long.der      14 days left           soon\n"
      "    Ed25519, by Example CA\n"
      "a.der         EXPIRED 30 days ago    gone\n"
      "    Ed25519, by Example CA\n"
      "a.der #2      RSAPrivateKey          publicExponent 17\n"
      "    keyBits 12\n",
      result.out);
}

TEST_F(Short, HasAsManyNamesAsThereIsRoomFor) {
  Bytes names = element(0x81, support::text("a@example.org")) + element(0x87, hex("C0 00 02 01")) +
                dns("x\x1B[31m");
  for (int i = 1; i <= 9; ++i) names = names + dns("www" + std::to_string(i) + ".example.org");
  file("c.der", certificate("x", "310101000000Z", names));
  EXPECT_EQ(
      "c.der      396 days left          x\n"
      "    Ed25519, by Example CA: x\\x1B[31m, www1.example.org and 10 more\n",
      in_folder("--short c.der").out);
  EXPECT_EQ(
      "c.der      396 days left          x\n"
      "    Ed25519, by Example CA: x\\x1B[31m, www1.example.org, www2.example.org, "
      "www3.example.org, www4.example.org, www5.example.org, www6.example.org, www7.example.org, "
      "www8.example.org, www9.example.org, a@example.org, 192.0.2.1\n",
      in_folder("--short c.der", "1000").out);
}

TEST_F(Short, PutsALongTitleIntoTheSecondLine) {
  const std::string title(50, 't');
  file("c.der", certificate(title, "310101000000Z"));
  EXPECT_EQ("c.der      396 days left\n    " + title + "; Ed25519, by Example CA\n",
            in_folder("--short c.der").out);
}

TEST_F(Short, SortsByTheEndOfValidity) {
  file("crl.der", revocation_list());
  const Outcome result = in_folder("--sort notAfter --json b.der a.der crl.der long.der none.der");
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("orvelasn1: none.der: No such file or directory\n", result.err);
  std::vector<std::string> order;
  std::istringstream lines(result.out);
  for (std::string line; std::getline(lines, line);) {
    const json object = json::parse(line);
    order.push_back(object["file"].get<std::string>() + " " + object["element"].dump());
  }
  EXPECT_EQ((std::vector<std::string>{"a.der 1", "long.der 1", "crl.der 1", "b.der 1", "a.der 2"}),
            order);
}

TEST_F(Short, ShowsOnlyWhatExpires) {
  const std::string files = " b.der long.der a.der";
  const std::string gone =
      "a.der         EXPIRED 30 days ago    gone\n    Ed25519, by Example CA\n";
  const std::string soon =
      "long.der      14 days left           soon\n    Ed25519, by Example CA\n";
  const Outcome month = in_folder("--short --expires-within 30d" + files);
  EXPECT_EQ(1, month.status);
  EXPECT_EQ("", month.err);
  EXPECT_EQ(soon + gone, month.out);
  // 14 days are 2 weeks, or 336 hours, to the second.
  for (const char *const time : {"14d", "2w", "336h"})
    EXPECT_EQ(soon + gone, in_folder("--short --expires-within " + std::string(time) + files).out);
  for (const char *const time : {"13d", "1w", "335h"})
    EXPECT_EQ(gone, in_folder("--short --expires-within " + std::string(time) + files).out);
  EXPECT_EQ(gone + soon, in_folder("--short --sort notAfter --expires-within 30d" + files).out);
  EXPECT_EQ(3, std::ranges::count(in_folder("--json --expires-within 2y" + files).out, '\n'));
  const Outcome none = in_folder("--short --expires-within 1y b.der");
  EXPECT_EQ(0, none.status);
  EXPECT_EQ("", none.out + none.err);
  // What cannot be read is never well.
  EXPECT_EQ(1, in_folder("--short --expires-within 1y b.der none.der").status);
}

TEST_F(Short, RefusesTimesAndOrdersThatAreNone) {
  for (const std::string words :
       {"--expires-within 30", "--expires-within d", "--expires-within 3m",
        "--expires-within 1234567d", "--expires-within=-1d", "--sort size"}) {
    const Outcome result = in_folder(words + " b.der");
    EXPECT_EQ(2, result.status) << words;
    EXPECT_EQ("", result.out);
  }
}

}  // namespace

}  // namespace short_test
