// Inputs taken apart and put together, and the changes that the fuzz targets make to them.
#include "mutator.h"

#include <gtest/gtest.h>
#include <octets.h>

#include <algorithm>

#include "laws.h"

namespace {

using fuzz::Bytes;
using fuzz::Mutator;
using fuzz::Octets;
using fuzz::Piece;
using fuzz::put_together;
using fuzz::take_apart;
using fuzz::Tree;
using support::element;
using support::hex;
using support::operator+;

// ---------------------------------------------------------------------------------------------
// Trees
// ---------------------------------------------------------------------------------------------

class RightOrWrong : public testing::TestWithParam<const char *> {};

TEST_P(RightOrWrong, IsPutTogetherAsItWas) {
  const Bytes input = hex(GetParam());
  EXPECT_EQ(input, put_together(take_apart(input)));
}

INSTANTIATE_TEST_SUITE_P(Inputs, RightOrWrong,
                         testing::Values("",                               // nothing
                                         "30",                             // half a header
                                         "30 00",                          // an empty element
                                         "30 03 02 01 05",                 // one in the other
                                         "30 03 02 01 05 04 01 FF",        // one behind the other
                                         "30 81 03 02 01 05",              // a needless octet
                                         "30 84 00 00 00 03 02 01 05",     // needless octets
                                         "30 80 02 01 05 00 00",           // indefinite
                                         "30 80 24 80 04 00 00 00 00 00",  // twice
                                         "30 80 02 01 05",                 // without its end
                                         "30 09 02 01 05",                 // a claim of too much
                                         "30 84 FF FF FF FF 02 01 05",     // of far too much
                                         "30 03 02 05 05",                 // inside
                                         "30 85 01 00 00 00 00 02 01 05",  // no length
                                         "30 82 01",                       // half a length
                                         "04 05 30 03 02 01 05",           // in a string
                                         "03 06 00 30 03 02 01 05",        // in a string of bits
                                         "04 03 30 07 05"));               // only like an element

TEST(Tree, OfEverySampleIsPutTogetherAsItWas) {
  for (const attack::Family &family : attack::families())
    for (const Bytes &sample : family.samples)
      EXPECT_EQ(sample, put_together(take_apart(sample))) << family.name;
}

TEST(Tree, LooksIntoStringsOfWholeElements) {
  const Tree tree = take_apart(hex("04 05 30 03 02 01 05 03 03 00 05 00 04 02 30 05"));
  ASSERT_EQ(3U, tree.size());
  ASSERT_EQ(1U, tree[0].parts.size());
  ASSERT_EQ(1U, tree[0].parts[0].parts.size());
  EXPECT_EQ(hex("05"), tree[0].parts[0].parts[0].octets);
  EXPECT_EQ(hex("00"), tree[1].octets);
  ASSERT_EQ(1U, tree[1].parts.size());
  EXPECT_EQ(5, tree[1].parts[0].tag);
  EXPECT_TRUE(tree[2].parts.empty());
  EXPECT_EQ(hex("30 05"), tree[2].octets);
}

TEST(Tree, HasRightLengthsAfterItsContentGrew) {
  for (const size_t size : {size_t{0}, size_t{0x7D}, size_t{0x7E}, size_t{0xFC}, size_t{0x10000}}) {
    Tree tree = take_apart(hex("30 05 A0 03 04 01 FF"));
    Bytes &octets = tree[0].parts[0].parts[0].octets;
    octets.assign(size, 0x55);
    EXPECT_EQ(element(0x30, element(0xA0, element(4, octets))), put_together(tree)) << size;
  }
}

TEST(Tree, KeepsTheFormOfALengthAndAFalseOne) {
  Tree tree = take_apart(hex("30 81 02 05 00 30 09 05 00"));
  tree[0].parts.clear();
  tree[1].parts.clear();
  EXPECT_EQ(hex("30 81 00 30 09"), put_together(tree));
}

// ---------------------------------------------------------------------------------------------
// Changes
// ---------------------------------------------------------------------------------------------

const Bytes sample = hex("30 0D 02 01 05 A0 03 0A 01 01 04 03 01 02 03");

size_t put_a_zero_behind(uint8_t *octets, size_t size, size_t room) {
  if (size == room) return size;
  octets[size] = 0;
  return size + 1;
}

Mutator mutator() { return Mutator({sample}, put_a_zero_behind); }

constexpr uint32_t seeds = 2000;

TEST(Mutator, ChangesNearlyAlwaysAndInTheSameWayForTheSameSeed) {
  uint32_t same = 0;
  for (uint32_t seed = 0; seed < seeds; ++seed) {
    const Bytes changed = mutator().changed(sample, 4096, seed);
    EXPECT_EQ(changed, mutator().changed(sample, 4096, seed));
    if (changed == sample) ++same;
  }
  EXPECT_LT(same, seeds / 4);
}

TEST(Mutator, KeepsLengthsRightMoreOftenThanNot) {
  uint32_t right = 0;
  for (uint32_t seed = 0; seed < seeds; ++seed) {
    const Tree tree = take_apart(mutator().changed(sample, 4096, seed));
    if (std::ranges::all_of(tree, [](const Piece &piece) {
          return piece.form != Piece::Form::octets && !piece.false_length;
        }))
      ++right;
  }
  EXPECT_GT(right, seeds / 2);
}

TEST(Mutator, StaysInItsRoom) {
  for (uint32_t seed = 0; seed < seeds; ++seed)
    for (const size_t room : {size_t{0}, size_t{1}, sample.size(), sample.size() + 4})
      ASSERT_LE(mutator().changed(sample, room, seed).size(), room);
}

TEST(Mutator, TakesAnyInput) {
  for (size_t size = 0; size < sample.size(); ++size)
    for (uint32_t seed = 0; seed < seeds / 10; ++seed)
      ASSERT_LE(mutator().changed(Octets(sample).first(size), 4096, seed).size(), 4096U);
}

TEST(Mutator, NeedsNoSamples) {
  const Mutator without({}, put_a_zero_behind);
  for (uint32_t seed = 0; seed < seeds; ++seed)
    ASSERT_LE(without.changed(sample, 4096, seed).size(), 4096U);
}

TEST(Mutator, PutsAPieceOfOneInputIntoAnother) {
  // What is grafted is the whole other input, in place of either element or in front of it.
  const Bytes other = hex("06 01 2A");
  const std::vector<Bytes> expected{other, hex("30 03 06 01 2A"), other + hex("30 02 05 00"),
                                    hex("30 05 06 01 2A 05 00")};
  std::vector<bool> found(expected.size());
  for (uint32_t seed = 0; seed < seeds; ++seed) {
    const Bytes crossed = Mutator::crossed(hex("30 02 05 00"), other, 4096, seed);
    const auto it = std::ranges::find(expected, crossed);
    ASSERT_NE(expected.end(), it) << testing::PrintToString(crossed);
    found[static_cast<size_t>(it - expected.begin())] = true;
  }
  EXPECT_EQ(std::vector<bool>(expected.size(), true), found);
  EXPECT_TRUE(Mutator::crossed(hex("30 02 05 00"), other, 2, 1).empty());
}

}  // namespace
