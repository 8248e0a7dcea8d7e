// Every family under every small change of its samples, each held against the laws.
#include <gtest/gtest.h>

#include "changes.h"
#include "pages.h"
#include "parameters.h"

namespace small_attacks_test {

namespace {

using namespace attack;
using SmallAttacks = OfAGroup;

/// Holds an input against the laws; gives whether to go on.
bool withstands(const Family &family, Octets input) {
  const std::string law = broken_law(family, input);
  EXPECT_EQ("", law) << testing::PrintToString(Bytes(input.begin(), input.end()));
  return law.empty();
}

TEST_P(SmallAttacks, EveryFamilyHasSamples) {
  for (const Family *family : families_of(GetParam()))
    EXPECT_FALSE(family->samples.empty()) << family->name;
}

TEST_P(SmallAttacks, SamplesComeBack) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    void *record = nullptr;
    const uint8_t *const end = sample.data() + sample.size();
    ASSERT_EQ(end, family.decode(sample.data(), end, 0, &record, 0));
    if (family.encode != nullptr && !family.has(is_not_written) && !family.has(is_not_read_back)) {
      Bytes out(family.encode(nullptr, record));
      uint8_t *cursor = out.data();
      family.encode(&cursor, record);
      EXPECT_EQ(sample, out);
    }
    family.free(record);
    EXPECT_TRUE(withstands(family, sample));
  });
}

TEST_P(SmallAttacks, EveryTruncation) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    for_each_truncation(sample, [&](Octets input) { return withstands(family, input); });
  });
}

TEST_P(SmallAttacks, EveryValueOfTheFirstOctetsAndEveryBitOfTheOthers) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    for_each_changed_octet(sample, [&](Octets input) { return withstands(family, input); });
  });
}

TEST_P(SmallAttacks, EveryNastyLengthInEveryPlace) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    for_each_nasty_length(sample, [&](Octets input) { return withstands(family, input); });
  });
}

/// Decodes what stands between unreadable pages, and releases it.
void expect_decoded_between_guards(const Family &family, Octets input, const Pages &pages) {
  for (const uint8_t *const z : {pages.at_end(input), pages.at_start(input)})
    EXPECT_EQ("", broken_law_in_place(family, {z, input.size()}));
}

void expect_truncations_decoded_between_guards(const Family &family, Octets sample,
                                               const Pages &pages) {
  for (size_t size = 0; size <= sample.size(); ++size)
    expect_decoded_between_guards(family, sample.first(size), pages);
}

TEST_P(SmallAttacks, UnreadablePagesAroundEveryTruncation) {
  const Pages pages;
  for_each_sample([&](const Family &family, const Bytes &sample) {
    expect_truncations_decoded_between_guards(family, sample, pages);
  });
}

// A pointer plus a length that came from the input would wrap here, where addresses have 32 bits.
TEST_P(SmallAttacks, TheTopOfTheAddressSpace) {
  const Pages pages(Pages::Place::top);
  for_each_sample([&](const Family &family, const Bytes &sample) {
    expect_truncations_decoded_between_guards(family, sample, pages);
    for (const LengthPlace &place : lengths(sample)) {
      Bytes changed = sample;
      changed[place.offset] = 0x84;
      const size_t room = std::min<size_t>(4, changed.size() - place.offset - 1);
      for (const uint8_t filling : {uint8_t{0xFF}, uint8_t{0x7F}, uint8_t{0x80}}) {
        std::fill_n(changed.begin() + static_cast<std::ptrdiff_t>(place.offset) + 1, room, filling);
        expect_decoded_between_guards(family, changed, pages);
      }
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Of, SmallAttacks, testing::ValuesIn(groups()), title);

}  // namespace

}  // namespace small_attacks_test
