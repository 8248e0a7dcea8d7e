// What pki_explain() says of an input, and what the decoder does with it.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "changes.h"
#include "pages.h"
#include "parameters.h"

namespace agreement_test {

namespace {

using namespace attack;

/// Counts the inputs, and prints their number in the end.
class Agreement : public OfAGroup {
 protected:
  static void TearDownTestSuite() { std::printf("%lu inputs\n", inputs_); }

  /// Calls `f(family, sample)` for the samples of the families that are types.
  template <class F>
  static void for_each_sample_of_a_type(F f) {
    for_each_sample([&](const Family &family, const Bytes &sample) {
      if (family.type != nullptr) f(family, sample);
    });
  }

  /// Explains and decodes an input; gives whether to go on.
  static bool agrees(const Family &family, Octets input) {
    ++inputs_;
    const std::string law = broken_agreement(family, input);
    EXPECT_EQ("", law) << testing::PrintToString(Bytes(input.begin(), input.end())) << "\n"
                       << explanation(family, input);
    return law.empty();
  }

  static std::string explanation(const Family &family, Octets input) {
    pki_Fault fault{};
    const int32_t found =
        pki_explain(family.type, input.data(), input.data() + input.size(), &fault);
    return std::to_string(found) + " at " + std::to_string(fault.offset) + ", \"" + fault.path +
           "\": " + fault.sentence;
  }

 private:
  static inline unsigned long inputs_ = 0;
};

TEST_P(Agreement, OverEverySample) {
  for_each_sample_of_a_type(
      [](const Family &family, const Bytes &sample) { agrees(family, sample); });
}

TEST_P(Agreement, OverEveryTruncation) {
  for_each_sample_of_a_type([](const Family &family, const Bytes &sample) {
    for_each_truncation(sample, [&](Octets input) { return agrees(family, input); });
  });
}

TEST_P(Agreement, OverEveryChangedOctet) {
  for_each_sample_of_a_type([](const Family &family, const Bytes &sample) {
    for_each_changed_octet(sample, [&](Octets input) { return agrees(family, input); });
  });
}

TEST_P(Agreement, OverEveryNastyLength) {
  for_each_sample_of_a_type([](const Family &family, const Bytes &sample) {
    for_each_nasty_length(sample, [&](Octets input) { return agrees(family, input); });
  });
}

TEST_P(Agreement, RightInFrontOfAnUnreadablePage) {
  const Pages pages;
  for_each_sample_of_a_type([&](const Family &family, const Bytes &sample) {
    const auto agrees_there = [&](Octets input) {
      return agrees(family, {pages.at_end(input), input.size()});
    };
    agrees_there(sample);
    for_each_truncation(sample, agrees_there);
    for_each_changed_octet(sample, agrees_there);
    for_each_nasty_length(sample, agrees_there);
  });
}

// Every type reads what is another's.
TEST_P(Agreement, OverTheSamplesOfAllOthers) {
  for (const Family *family : families_of(GetParam())) {
    if (family->type == nullptr) continue;
    SCOPED_TRACE(family->name);
    for (const Family &other : families())
      for (const Bytes &sample : other.samples)
        if (!agrees(*family, sample)) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Of, Agreement, testing::ValuesIn(groups()), title);

/// The folders of a corpus, and every type that is found there.
class CorpusAgreement : public testing::TestWithParam<const char *> {};

TEST_P(CorpusAgreement, OverEveryFile) {
  const char *const corpus = std::getenv("ORVELASN1_CORPUS");
  if (corpus == nullptr)
    GTEST_SKIP() << "set ORVELASN1_CORPUS to a folder with certificates and hostile inputs";
  unsigned long files = 0;
  for (const auto &file :
       std::filesystem::directory_iterator(std::filesystem::path(corpus) / GetParam())) {
    std::ifstream in(file.path(), std::ios::binary);
    const Bytes octets(std::istreambuf_iterator<char>(in), {});
    for (const Family &family : families()) {
      if (family.type == nullptr) continue;
      EXPECT_EQ("", broken_agreement(family, octets)) << family.name << " on " << file.path();
    }
    ++files;
  }
  EXPECT_LT(0U, files);
  std::printf("%lu files\n", files);
}

INSTANTIATE_TEST_SUITE_P(Of, CorpusAgreement,
                         testing::Values("certificates", "crls", "ocsp-requests", "ocsp-responses",
                                         "hostile-certificates", "hostile-crls"),
                         [](const auto &folder) {
                           std::string words(folder.param);
                           std::erase(words, '-');
                           return words;
                         });

}  // namespace

}  // namespace agreement_test
