// Inputs that are much larger than what is read of them at once: what is said of them is as of small
// ones, and takes no more memory.
#include <sys/resource.h>

#include "pem.h"
#include "records.h"
#include "sanitizers.h"

namespace large_test {

namespace {

using namespace tool_tests;

class Large : public Tool {
 protected:
  /// The certificates that the system trusts, so often that they are so many octets.
  static std::string bundle(size_t size) {
    const std::string one = read_file(support::trust_store);
    std::string all;
    while (all.size() < size) all += one;
    return all;
  }

  /// The most memory of the tool and of its processes, each for itself, in KiB.
  static size_t memory_of(const std::vector<std::string> &words, const std::string &file) {
    std::string command = std::string("exec '") + ORVELASN1_TOOL_PATH + "'";
    for (const std::string &word : words) command += " " + word;
    command += " '" + file + "' >/dev/null";
    const char *const arguments[] = {"sh", "-c", command.c_str(), nullptr};
    pid_t child = 0;
    EXPECT_EQ(
        0, posix_spawnp(&child, "sh", nullptr, nullptr, const_cast<char **>(arguments), environ));
    rusage usage{};
    int status = 0;
    EXPECT_EQ(child, wait4(child, &status, 0, &usage));
    EXPECT_EQ(0, status);
    return static_cast<size_t>(usage.ru_maxrss);
  }
};

TEST_F(Large, InputsTakeNoMoreMemory) {
  const std::string small = file("small.pem", bundle(size_t{2} << 20));
  const std::string large = file("large.pem", bundle(size_t{8} << 20));
  const std::string der = file("large.der", [] {
    Bytes all;
    while (all.size() < size_t{8} << 20)
      for (const Bytes &one : support::certificates_of_pem(read_file(support::trust_store)))
        all.insert(all.end(), one.begin(), one.end());
    return all;
  }());
  const size_t usual = memory_of({"recode"}, small);
  EXPECT_LT(0U, usual);
  std::vector<size_t> all;
  for (const std::vector<std::string> &words :
       {std::vector<std::string>{"recode"}, {"show", "--short", "--at", "2030-01-01"}, {"trace"}})
    all.push_back(memory_of(words, large));
  all.push_back(memory_of({"recode"}, der));
  for (const size_t one : all) {
    EXPECT_LT(0U, one);
#ifndef ORVELASN1_TESTS_SANITIZED
    EXPECT_GT(usual + (size_t{4} << 10), one);
#endif
  }
}

TEST_F(Large, InputsMayBeTheOutput) {
  const std::string text = bundle(size_t{3} << 20);
  const std::string both = file("large.pem", text);
  EXPECT_EQ(0, run({"recode", "-o", both, both}).status);
  Bytes all;
  for (const Bytes &one : support::certificates_of_pem(text)) all = std::move(all) + one;
  EXPECT_TRUE(characters(all) == read_file(both));
}

TEST_F(Large, InputsHaveNumbersLinesAndOffsets) {
  const std::string one = read_file(support::trust_store);
  const auto elements = support::certificates_of_pem(one).size();
  const auto lines = static_cast<size_t>(std::ranges::count(one, '\n'));
  constexpr size_t copies = 12;  // more than two megabytes
  std::string all;
  for (size_t i = 0; i < copies; ++i) all += one;
  // A text that is longer than what is read at once, too.
  all += std::string(size_t{3} << 20, 'x') + "\n";
  const std::string input =
      file("large.pem", all + "-----BEGIN CERTIFICATE-----\nMAMCAQ*F\n-----END CERTIFICATE-----\n");
  const Outcome result = run({"recode", input});
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(copies * elements, static_cast<size_t>(std::ranges::count(result.out, '\n')));
  const size_t line = copies * lines + 2;
  EXPECT_EQ("orvelasn1: " + input + ": element " + std::to_string(copies * elements + 1) +
                " (line " + std::to_string(line) + "): line " + std::to_string(line + 1) +
                ": \"*\" is not a base64 character\n",
            result.err);

  // Elements of 3 MB and of 5 octets, and one that is cut short.
  const Bytes large = element(0x04, Bytes(3000000, 0xA5));
  const Bytes small = element(0x04, hex("01 02 03"));
  const std::string der = file("large.der", large + small + large + small + hex("04 03 01"));
  const Outcome of_der = run({"recode", "--type", "octet-string", der});
  EXPECT_EQ(1, of_der.status);
  EXPECT_EQ(4, std::ranges::count(of_der.out, '\n')) << of_der.out;
  EXPECT_EQ("orvelasn1: " + der + ": element 5, offset " +
                std::to_string(2 * large.size() + 2 * small.size()) +
                ": the header 04 03 promises 3 octets, but only 1 is left\n",
            of_der.err);
}

}  // namespace

}  // namespace large_test
