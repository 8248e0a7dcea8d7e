// Short inputs, all of them: to every decoder, and to the functions of the frame. scripts/exhaust.sh tries
// more of them.
#include "exhaustion.h"

#include <gtest/gtest.h>
#include <sanitizers.h>

#include <chrono>
#include <cstdio>
#include <random>

#include "frame.h"
#include "guard.h"
#include "share.h"

namespace exhaustion_test {

namespace {

using namespace attack;
using Clock = std::chrono::steady_clock;

#ifdef ORVELASN1_TESTS_SANITIZED
constexpr size_t most_octets = 2;  // a sanitizer takes ten times the time
constexpr uint8_t most_octets_of_a_length = 2;
#else
constexpr size_t most_octets = 3;
constexpr uint8_t most_octets_of_a_length = 3;
#endif

void expect_laws(Exhaustion &exhaustion, const Family &family, const std::string &law) {
  EXPECT_EQ("", law) << family.name << " on " << testing::PrintToString(exhaustion.input());
}

TEST(Exhaustion, OfEveryShortInput) {
  uint64_t inputs = 0, calls = 0;
  for (const Family &family : decoders()) {
    Exhaustion exhaustion(family);
    for (size_t size = 0; size <= most_octets; ++size)
      expect_laws(exhaustion, family, exhaustion.every({}, size));
    inputs += exhaustion.inputs();
    calls += exhaustion.calls();
  }
  std::printf("%llu inputs by %llu calls\n", static_cast<unsigned long long>(inputs),
              static_cast<unsigned long long>(calls));
}

// Other inputs of four octets and five each day, for two seconds.
TEST(Exhaustion, OfASliceOfLongerInputs) {
  const unsigned seed = today();
  RecordProperty("seed", std::to_string(seed));
  std::printf("seed %u\n", seed);
  std::mt19937 random(seed);
  const auto octet = [&] { return static_cast<uint8_t>(random()); };
  const std::vector<Family> all = decoders();
  const Clock::time_point stop = Clock::now() + std::chrono::seconds(2);
  uint64_t inputs = 0;
  while (Clock::now() < stop) {
    const Family &family = all[random() % all.size()];
    Exhaustion exhaustion(family);
    // An identifier octet that the decoder looks past, where there is a sample that begins with it.
    Bytes start{octet(), static_cast<uint8_t>(octet() % 8), octet()};
    if (!family.samples.empty()) start[0] = family.samples[octet() % family.samples.size()][0];
    if (octet() % 2 == 0) start.push_back(octet());
    expect_laws(exhaustion, family, exhaustion.every(start, start.size() + 1));
    inputs += exhaustion.inputs();
  }
  std::printf("%llu inputs\n", static_cast<unsigned long long>(inputs));
}

// The laws hold, too, where every octet of the input can be read from the start.
TEST(Exhaustion, OfAFewInputsThatAreReadableWhole) {
  std::mt19937 random(today());
  for (const Family &family : decoders()) {
    Exhaustion exhaustion(family);
    for (int i = 0; i < 64; ++i) {
      const auto number = static_cast<uint32_t>(random());
      const Bytes input{static_cast<uint8_t>(number), static_cast<uint8_t>(number >> 8),
                        static_cast<uint8_t>(number >> 16)};
      expect_laws(exhaustion, family, exhaustion.one(input));
    }
    EXPECT_EQ(64U, exhaustion.inputs());
  }
}

/// A decoder of the tests, with a mistake that only an unreadable page shows.
Family mistaken(decltype(Family::decode) decode) {
  Family family{};
  family.name = "mistaken";
  family.decode = decode;
  family.free = [](void *) {};
  return family;
}

TEST(Exhaustion, FindsAReadPastTheEnd) {
  const Family family =
      mistaken([](const uint8_t *z, const uint8_t *end, uint32_t, void **, uint32_t) {
        if (z == end || *z != 0x30) return static_cast<const uint8_t *>(nullptr);
        const uint8_t next = *static_cast<const volatile uint8_t *>(z + 1);
        return next == 5 ? z + 1 : nullptr;
      });
  Exhaustion exhaustion(family);
  EXPECT_EQ("", exhaustion.every({}, 0));
  EXPECT_EQ("nothing is read past the end", exhaustion.every({}, 1));
  EXPECT_EQ(Bytes{0x30}, exhaustion.input());
  EXPECT_EQ("", exhaustion.every({}, 2));
}

TEST(Exhaustion, TriesEveryValueOfAnOctetThatIsRead) {
  const Family family =
      mistaken([](const uint8_t *z, const uint8_t *end, uint32_t, void **, uint32_t) {
        if (end - z < 3 || z[0] != 0x30 || z[1] != 0x80 || z[2] != 0xAB)
          return static_cast<const uint8_t *>(nullptr);
        return end + 1;
      });
  Exhaustion exhaustion(family);
  EXPECT_EQ("", exhaustion.every({}, 2));
  EXPECT_EQ(1U, exhaustion.calls());
  EXPECT_EQ(65536U, exhaustion.inputs());
  EXPECT_EQ("the cursor stays in the range", exhaustion.every({}, 3));
  EXPECT_EQ((Bytes{0x30, 0x80, 0xAB}), exhaustion.input());
}

TEST(Exhaustion, OfTagsAndEndsOfContents) {
  Frame frame;
  frame.every_end_of_contents();
#ifndef ORVELASN1_TESTS_SANITIZED
  frame.every_tag();
#endif
  EXPECT_EQ("", frame.mistake());
}

TEST(Exhaustion, OfLengths) {
  Frame frame;
  for (unsigned first = 0; first < 256; ++first) {
    if (first == 0x84 || first == 0x80U + most_octets_of_a_length + 1) continue;
    frame.every_length(static_cast<uint8_t>(first));
  }
  EXPECT_EQ("", frame.mistake());
}

TEST(Exhaustion, OfASliceOfLengths) {
  std::mt19937 random(today());
  Frame frame;
  const unsigned slice = random() % 256;
  std::printf("slice %02X\n", slice);
  frame.every_header(static_cast<uint8_t>(random()), 0x83, slice, slice + 1);
  frame.every_two_octets_of_a_header(static_cast<uint8_t>(random()));
#ifndef ORVELASN1_TESTS_SANITIZED
  frame.every_length(0x84, slice, slice + 1);
#endif
  EXPECT_EQ("", frame.mistake());
}

}  // namespace

}  // namespace exhaustion_test
