// Tests BIT STRING: the record, its two encoders, the decoder in every form, and its trace.
#include <utility>

#include "allocator.h"
#include "support.h"
#include "zeros.h"

namespace bit_string_test {

namespace {

using namespace support;

struct Release {
  void operator()(BitString *b) const { asn1_BitString_free(b); }
};
using Bits = std::unique_ptr<BitString, Release>;

/// Returns a string of `length` bits in these octets.
Bits bits(uint32_t length, std::string_view octets) {
  Bits made(asn1_BitString_new(length));
  const Bytes bytes = hex(octets);
  std::copy(bytes.begin(), bytes.end(), made->data);
  return made;
}

void expect_bits(uint32_t length, std::string_view octets, const BitString *b) {
  ASSERT_NE(nullptr, b);
  ASSERT_EQ(length, b->length);
  EXPECT_EQ(hex(octets), value(b));
  EXPECT_EQ(length == 0, b->data == nullptr);
}

void expect_decoded(uint32_t length, std::string_view octets, long consumed, const Bytes &input,
                    uint32_t impl_tag = 0) {
  const auto decoded = decode(asn1_BitString_d, input, impl_tag);
  const Bits released(decoded.record);
  EXPECT_EQ(consumed, decoded.consumed);
  expect_bits(length, octets, decoded.record);
}

void expect_decoded(uint32_t length, std::string_view octets, long consumed, std::string_view input,
                    uint32_t impl_tag = 0) {
  SCOPED_TRACE(input);
  expect_decoded(length, octets, consumed, hex(input), impl_tag);
}

/// Checks that the octets are refused, and that the place for the record is set to NULL.
void expect_refused(const Bytes &input, uint32_t impl_tag = 0) {
  BitString before{};
  EXPECT_EQ(nullptr, left_by_refusal(asn1_BitString_d, input, &before, impl_tag));
}

void expect_refused(std::string_view input, uint32_t impl_tag = 0) {
  SCOPED_TRACE(input);
  expect_refused(hex(input), impl_tag);
}

using Lines = std::vector<std::string>;

Lines traced(std::string_view input, uint32_t depth, uint32_t impl_tag = 0) {
  return trace_lines(
      [&] { asn1_BitString_free(decode(asn1_BitString_d, hex(input), impl_tag, depth).record); });
}

/// The blanks that a dump has in place of the octets missing from its last line.
std::string blanks(size_t octets) { return std::string(3 * octets, ' '); }

Bytes zeros(size_t count) { return Bytes(count, 0); }

/// Returns `inner` inside `levels` constructed strings of indefinite length.
Bytes nested_indefinite(size_t levels, const Bytes &inner) {
  Bytes out;
  for (size_t i = 0; i < levels; ++i) out.insert(out.end(), {0x23, 0x80});
  return out + inner + zeros(2 * levels);
}

/// Returns `inner` inside `levels` constructed strings of definite length, with headers of five
/// octets.
Bytes nested_definite(size_t levels, const Bytes &inner) {
  Bytes out;
  for (size_t i = levels; i-- > 0;) {
    const size_t length = 5 * i + inner.size();
    out.insert(out.end(), {0x23, 0x83, static_cast<uint8_t>(length >> 16),
                           static_cast<uint8_t>(length >> 8), static_cast<uint8_t>(length)});
  }
  return out + inner;
}

// ---- the record ---------------------------------------------------------------------------------

TEST(BitString, NewOfZeroBitsHasNoBufferAndNoBitThatIsSet) {
  const Bits empty(asn1_BitString_new(0));
  expect_bits(0, "", empty.get());
  for (const uint32_t bit : {0u, 1u, 7u, 8u, 0x7FFFFFFFu, 0xFFFFFFFFu})
    EXPECT_EQ(0, asn1_BitString_test(empty.get(), bit)) << bit;
}

TEST(BitString, NewHasTheOctetsOfItsBitsAllZero) {
  expect_bits(1, "00", Bits(asn1_BitString_new(1)).get());
  expect_bits(8, "00", Bits(asn1_BitString_new(8)).get());
  expect_bits(9, "00 00", Bits(asn1_BitString_new(9)).get());
  expect_bits(32, "00 00 00 00", Bits(asn1_BitString_new(32)).get());
}

TEST(BitString, TheLongestStringHasABufferForAllItsBitsAndCannotGrow) {
  const Bits longest(asn1_BitString_new(0xFFFFFFFF));
  ASSERT_NE(nullptr, longest);
  EXPECT_EQ(0xFFFFFFFF, longest->length);
  EXPECT_EQ(longest.get(), asn1_BitString_set(longest.get(), 0xFFFFFFFE, 1));
  EXPECT_EQ(1, asn1_BitString_test(longest.get(), 0xFFFFFFFE));
  EXPECT_EQ(0x02, longest->data[0x1FFFFFFF]);

  const uint8_t *const data = longest->data;
  EXPECT_EQ(nullptr, asn1_BitString_set(longest.get(), 0xFFFFFFFF, 1));
  EXPECT_EQ(nullptr, asn1_BitString_append(longest.get(), 1, "x"));
  EXPECT_EQ(0xFFFFFFFF, longest->length);
  EXPECT_EQ(data, longest->data);
  EXPECT_EQ(0x02, longest->data[0x1FFFFFFF]);
}

TEST(BitString, FreeIgnoresNull) { asn1_BitString_free(nullptr); }

TEST(BitString, CloneOfNullIsNull) { EXPECT_EQ(nullptr, asn1_BitString_clone(nullptr)); }

TEST(BitString, CloneKeepsPaddingBitsInABufferOfItsOwn) {
  const Bits original = bits(11, "AB FF");
  const Bits copy(asn1_BitString_clone(original.get()));
  expect_bits(11, "AB FF", copy.get());
  original->data[0] = 0;
  expect_bits(11, "AB FF", copy.get());
}

TEST(BitString, CloneOfAnEmptyStringIsEmpty) {
  expect_bits(0, "", Bits(asn1_BitString_clone(bits(0, "").get())).get());
}

// ---- single bits --------------------------------------------------------------------------------

TEST(BitString, TestNumbersBitsFromTheTopOfTheFirstOctet) {
  const Bits b = bits(16, "80 41");
  for (uint32_t bit = 0; bit < 16; ++bit)
    EXPECT_EQ(bit == 0 || bit == 9 || bit == 15, asn1_BitString_test(b.get(), bit)) << bit;
}

TEST(BitString, TestBehindTheEndIsZeroWhateverThePaddingHolds) {
  const Bits b = bits(3, "FF");
  EXPECT_EQ(1, asn1_BitString_test(b.get(), 2));
  for (const uint32_t bit : {3u, 7u, 8u, 0x80000000u, 0xFFFFFFFFu})
    EXPECT_EQ(0, asn1_BitString_test(b.get(), bit)) << bit;
}

TEST(BitString, TestOfNullIsZero) { EXPECT_EQ(0, asn1_BitString_test(nullptr, 0)); }

TEST(BitString, SettingBit0AndThenBit9OfAnEmptyStringGrowsIt) {
  const Bits b = bits(0, "");
  EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), 0, 1));
  expect_bits(1, "80", b.get());
  EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), 9, 1));
  expect_bits(10, "80 40", b.get());
}

TEST(BitString, SettingFarBehindTheEndZeroesTheOctetsBetween) {
  const Bits b = bits(8, "FF");
  EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), 31, 1));
  expect_bits(32, "FF 00 00 01", b.get());
}

TEST(BitString, SettingTakesAnyValueThatIsNotZero) {
  const Bits b = bits(8, "00");
  EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), 3, 0x100));
  EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), 4, 0x80000000));
  expect_bits(8, "18", b.get());
}

TEST(BitString, SettingInsideTheStringKeepsItsLength) {
  const Bits b = bits(10, "00 00");
  EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), 4, 1));
  expect_bits(10, "08 00", b.get());
}

TEST(BitString, SettingInThePaddingRaisesTheLengthToThatBit) {
  const Bits b = bits(3, "E0");
  EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), 6, 1));
  expect_bits(7, "E2", b.get());
}

TEST(BitString, GrowingKeepsOldPaddingBitsAsTheyAre) {
  const Bits padding = bits(3, "FF");
  EXPECT_EQ(padding.get(), asn1_BitString_set(padding.get(), 5, 1));
  expect_bits(6, "FF", padding.get());
  EXPECT_EQ(padding.get(), asn1_BitString_set(padding.get(), 9, 1));
  expect_bits(10, "FF 40", padding.get());
}

TEST(BitString, ClearingBehindTheBufferChangesNothing) {
  const Bits b = bits(3, "FF");
  for (const uint32_t bit : {8u, 100u, 0x80000000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), bit, 0)) << bit;
    expect_bits(3, "FF", b.get());
  }
  const Bits empty = bits(0, "");
  EXPECT_EQ(empty.get(), asn1_BitString_set(empty.get(), 0, 0));
  expect_bits(0, "", empty.get());
}

TEST(BitString, ClearingReachesThePaddingAndKeepsTheLength) {
  const Bits b = bits(3, "FF");
  EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), 7, 0));
  expect_bits(3, "FE", b.get());
}

TEST(BitString, ClearingTheHighestSetBitShortensOnlyTheTrimmedEncoding) {
  const Bits b = bits(10, "80 40");
  EXPECT_EQ(b.get(), asn1_BitString_set(b.get(), 9, 0));
  expect_bits(10, "80 00", b.get());
  EXPECT_EQ(hex("03 02 07 80"), encode(asn1_BitString_e, b.get()));
  EXPECT_EQ(hex("03 03 06 80 00"), encode(asn1_BitString_BER_e, b.get()));
}

TEST(BitString, SettingTheBitThatNoLengthCountsFailsAndChangesNothing) {
  const Bits b = bits(8, "A5");
  EXPECT_EQ(nullptr, asn1_BitString_set(b.get(), 0xFFFFFFFF, 1));
  expect_bits(8, "A5", b.get());
}

// ---- append -------------------------------------------------------------------------------------

TEST(BitString, AppendOfNothingKeepsThePartialOctet) {
  const Bits b = bits(3, "FF");
  EXPECT_EQ(b.get(), asn1_BitString_append(b.get(), 0, "x"));
  EXPECT_EQ(b.get(), asn1_BitString_append(b.get(), 0, nullptr));
  expect_bits(3, "FF", b.get());
}

TEST(BitString, AppendMakesThePartialOctetWhole) {
  const Bits b = bits(3, "FF");
  EXPECT_EQ(b.get(), asn1_BitString_append(b.get(), 2, "\x12\x34"));
  expect_bits(24, "FF 12 34", b.get());
}

TEST(BitString, AppendFillsAnEmptyString) {
  const Bits b = bits(0, "");
  EXPECT_EQ(b.get(), asn1_BitString_append(b.get(), 3, "\0\x01\xFF"));
  expect_bits(24, "00 01 FF", b.get());
}

TEST(BitString, AppendWithoutASourceMakesRoom) {
  const Bits b = bits(8, "A5");
  EXPECT_EQ(b.get(), asn1_BitString_append(b.get(), 2, nullptr));
  ASSERT_EQ(24u, b->length);
  b->data[1] = 1;
  b->data[2] = 2;
  expect_bits(24, "A5 01 02", b.get());
}

TEST(BitString, AppendFailsWhereBitsOrOctetsDoNotFit32Bits) {
  const Bits empty = bits(0, "");
  const Bits one = bits(1, "80");
  for (const auto &[string, count] : {std::pair{empty.get(), 0x20000000u},
                                      {empty.get(), 0xFFFFFFFFu},
                                      {one.get(), 0x1FFFFFFFu},
                                      {one.get(), 0xFFFFFFFEu},
                                      {one.get(), 0xFFFFFFFFu}}) {
    EXPECT_EQ(nullptr, asn1_BitString_append(string, count, nullptr)) << count;
  }
  expect_bits(0, "", empty.get());
  expect_bits(1, "80", one.get());
}

// ---- more bits than 32 bits count ---------------------------------------------------------------

// 0x20000000 octets have 0x100000000 bits.
TEST(BitStringDecoder, RefusesMoreBitsThan32BitsCount) {
  constexpr size_t octets = 0x20000000;
  const support::Zeros input(octets + 16);
  ASSERT_TRUE(input.are_there());
  const Bytes headers[] = {hex("03 84 20 00 00 01 00"),
                           hex("23 84 20 00 00 07 03 84 20 00 00 01 00")};
  for (const Bytes &header : headers) {
    std::copy(header.begin(), header.end(), input.begin());
    BitString before{};
    BitString *place = &before;
    EXPECT_EQ(nullptr, asn1_BitString_d(input.begin(), input.begin() + header.size() + octets, 0,
                                        &place, 0));
    EXPECT_EQ(nullptr, place);
  }
}

// ---- comparison ---------------------------------------------------------------------------------

TEST(BitString, CmpIsZeroForEqualStrings) {
  EXPECT_EQ(0, asn1_BitString_cmp(bits(9, "AB 80").get(), bits(9, "AB 80").get()));
  EXPECT_EQ(0, asn1_BitString_cmp(bits(0, "").get(), bits(0, "").get()));
}

TEST(BitString, CmpOfDifferentLengthsIsOne) {
  const Bits a = bits(9, "AB 80"), b = bits(10, "AB 80");
  EXPECT_EQ(1, asn1_BitString_cmp(a.get(), b.get()));
  EXPECT_EQ(1, asn1_BitString_cmp(b.get(), a.get()));
  EXPECT_EQ(1, asn1_BitString_cmp(bits(0, "").get(), bits(1, "00").get()));
}

TEST(BitString, CmpWithoutARecordOrItsOctetsIsOne) {
  const Bits a = bits(9, "00 00");
  const BitString hollow{9, nullptr};
  EXPECT_EQ(1, asn1_BitString_cmp(a.get(), nullptr));
  EXPECT_EQ(1, asn1_BitString_cmp(nullptr, a.get()));
  EXPECT_EQ(1, asn1_BitString_cmp(nullptr, nullptr));
  EXPECT_EQ(1, asn1_BitString_cmp(a.get(), &hollow));
  EXPECT_EQ(1, asn1_BitString_cmp(&hollow, a.get()));
}

TEST(BitString, CloneOfOctetsThatAreNotThereIsNull) {
  const BitString hollow{9, nullptr};
  EXPECT_EQ(nullptr, asn1_BitString_clone(&hollow));
}

TEST(BitString, CmpTellsOctetsAndPaddingBitsApart) {
  EXPECT_NE(0, asn1_BitString_cmp(bits(9, "AB 80").get(), bits(9, "AA 80").get()));
  EXPECT_NE(0, asn1_BitString_cmp(bits(9, "AB 80").get(), bits(9, "AB 81").get()));
}

TEST(BitString, CmpComparesOnlyTheOctetsThatExist) {
  uint8_t first[9] = {0xAB, 0x80, 1};
  uint8_t second[9] = {0xAB, 0x80, 2};
  const BitString a{9, first}, b{9, second};
  EXPECT_EQ(0, asn1_BitString_cmp(&a, &b));
}

// ---- encoders -----------------------------------------------------------------------------------

TEST(BitStringEncoder, TrimsZeroOctetsAndZeroBitsAtTheEnd) {
  struct {
    uint32_t length;
    const char *octets, *encoded;
  } const rows[] = {
      {9, "80 00", "03 02 07 80"},
      {0, "", "03 01 00"},
      {16, "00 00", "03 01 00"},
      {1, "80", "03 02 07 80"},
      {8, "40", "03 02 06 40"},
      {8, "20", "03 02 05 20"},
      {8, "10", "03 02 04 10"},
      {8, "08", "03 02 03 08"},
      {8, "04", "03 02 02 04"},
      {8, "02", "03 02 01 02"},
      {8, "01", "03 02 00 01"},
      {8, "6C", "03 02 02 6C"},
      {24, "AA 00 00", "03 02 01 AA"},
      {24, "00 00 01", "03 04 00 00 00 01"},
      {20, "12 34 50", "03 04 04 12 34 50"},
  };
  for (const auto &row : rows)
    EXPECT_EQ(hex(row.encoded), encode(asn1_BitString_e, bits(row.length, row.octets).get()))
        << row.octets;
}

TEST(BitStringEncoder, TakesPaddingBitsForBits) {
  EXPECT_EQ(hex("03 02 00 FF"), encode(asn1_BitString_e, bits(3, "FF").get()));
  EXPECT_EQ(hex("03 02 04 10"), encode(asn1_BitString_e, bits(3, "10").get()));
}

TEST(BitStringEncoder, TrimsBeforeItChoosesTheFormOfTheLength) {
  const Bits b(asn1_BitString_new(8 * 128));
  b->data[126] = 1;
  EXPECT_EQ(hex("03 81 80 00") + zeros(126) + hex("01"), encode(asn1_BitString_e, b.get()));
  b->data[126] = 0;
  b->data[125] = 1;
  EXPECT_EQ(hex("03 7F 00") + zeros(125) + hex("01"), encode(asn1_BitString_e, b.get()));
}

TEST(BitStringEncoder, BerKeepsTheValueAsItStands) {
  struct {
    uint32_t length;
    const char *octets, *encoded;
  } const rows[] = {
      {9, "80 00", "03 03 07 80 00"},  {3, "FF", "03 02 05 FF"},        {0, "", "03 01 00"},
      {16, "00 00", "03 03 00 00 00"}, {1, "80", "03 02 07 80"},        {8, "80", "03 02 00 80"},
      {15, "12 34", "03 03 01 12 34"}, {12, "12 34", "03 03 04 12 34"},
  };
  for (const auto &row : rows)
    EXPECT_EQ(hex(row.encoded), encode(asn1_BitString_BER_e, bits(row.length, row.octets).get()))
        << row.octets;
}

TEST(BitStringEncoder, BerCountsTheUnusedBitsOctetInTheLength) {
  EXPECT_EQ(hex("03 7F 00") + zeros(126),
            encode(asn1_BitString_BER_e, Bits(asn1_BitString_new(8 * 126)).get()));
  EXPECT_EQ(hex("03 81 80 00") + zeros(127),
            encode(asn1_BitString_BER_e, Bits(asn1_BitString_new(8 * 127)).get()));
  EXPECT_EQ(hex("03 82 01 00 01") + zeros(255),
            encode(asn1_BitString_BER_e, Bits(asn1_BitString_new(8 * 255 - 1)).get()));
}

TEST(BitStringEncoder, WritesNothingForNull) {
  uint8_t octet = 0xA5;
  uint8_t *cursor = &octet;
  EXPECT_EQ(0u, asn1_BitString_e(nullptr, nullptr));
  EXPECT_EQ(0u, asn1_BitString_e(&cursor, nullptr));
  EXPECT_EQ(0u, asn1_BitString_BER_e(nullptr, nullptr));
  EXPECT_EQ(0u, asn1_BitString_BER_e(&cursor, nullptr));
  EXPECT_EQ(&octet, cursor);
  EXPECT_EQ(0xA5, octet);
}

// ---- decoder, primitive -------------------------------------------------------------------------

TEST(BitStringDecoder, RefusesMoreThanSevenUnusedBits) {
  expect_refused("03 02 08 FF");
  expect_refused("03 02 FF FF");
  expect_refused("03 01 08");
}

TEST(BitStringDecoder, RefusesUnusedBitsOfAnEmptyValue) {
  expect_refused("03 01 07");
  expect_refused("03 01 01");
}

TEST(BitStringDecoder, TakesAnEmptyValue) { expect_decoded(0, "", 3, "03 01 00"); }

TEST(BitStringDecoder, TakesOneBit) { expect_decoded(1, "80", 4, "03 02 07 80"); }

TEST(BitStringDecoder, KeepsPaddingBitsThatAreSet) {
  const auto decoded = decode(asn1_BitString_d, hex("03 02 07 FF"));
  const Bits b(decoded.record);
  expect_bits(1, "FF", b.get());
  EXPECT_EQ(hex("03 02 00 FF"), encode(asn1_BitString_e, b.get()));
  EXPECT_EQ(hex("03 02 07 FF"), encode(asn1_BitString_BER_e, b.get()));
}

TEST(BitStringDecoder, RefusesAContentWithoutTheUnusedBitsOctet) {
  expect_refused("03 00");
  expect_refused("03 00 00 AA");
  expect_refused("03 81 00 00");
  expect_refused("23 05 03 00 03 01 00");
}

TEST(BitStringDecoder, TakesEveryNumberOfUnusedBits) {
  for (uint8_t unused = 0; unused < 8; ++unused)
    expect_decoded(24u - unused, "AB CD EF", 6, Bytes{3, 4, unused, 0xAB, 0xCD, 0xEF});
}

TEST(BitStringDecoder, TakesLengthsLongerThanNeededAndStopsBehindTheValue) {
  expect_decoded(4, "B0", 5, "03 81 02 04 B0");
  expect_decoded(4, "B0", 8, "03 84 00 00 00 02 04 B0 FF FF");
}

TEST(BitStringDecoder, TakesALongValue) {
  const Bytes octets(300, 0x5A);
  const auto decoded = decode(asn1_BitString_d, hex("03 82 01 2D 03") + octets);
  const Bits b(decoded.record);
  EXPECT_EQ(305, decoded.consumed);
  ASSERT_EQ(2397u, b->length);
  EXPECT_EQ(octets, value(b.get()));
}

TEST(BitStringDecoder, RefusesAnotherTagABadLengthAndALengthBehindTheEnd) {
  for (const char *input : {"", "03", "04 02 00 AA", "13 02 00 AA", "83 02 00 AA", "24 00",
                            "03 85 00 00 00 00 02 00 AA", "03 FF 00 AA", "03 03 00 AA", "03 81",
                            "03 82 01", "23 05 03 02 00 AA"})
    expect_refused(input);
}

TEST(BitStringDecoder, TakesAnImplicitTagInPlaceOfItsOwn) {
  expect_decoded(8, "AA", 4, "81 02 00 AA", 0x81);
  expect_decoded(8, "AA", 4, "81 02 00 AA", 0xA1);
  expect_decoded(8, "AA", 4, "81 02 00 AA", 0x181);
  expect_decoded(8, "AA", 4, "03 02 00 AA", 0x100);
  expect_refused("03 02 00 AA", 0x81);
}

TEST(BitStringDecoder, TakesAPrimitiveValueOfIndefiniteLength) {
  expect_decoded(16, "AA BB", 7, "03 80 00 AA BB 00 00");
  expect_decoded(12, "AA B0", 7, "03 80 04 AA B0 00 00");
  expect_decoded(0, "", 5, "03 80 00 00 00");
}

TEST(BitStringDecoder, EndsAPrimitiveIndefiniteValueAtTheFirstTwoZeroOctets) {
  expect_decoded(8, "AA", 6, "03 80 00 AA 00 00 BB 00 00");
  expect_decoded(24, "AA 00 BB", 8, "03 80 00 AA 00 BB 00 00");
  expect_decoded(8, "AA", 6, "03 80 00 AA 00 00 00");
  expect_decoded(0, "", 5, "03 80 00 00 00 AA 00 00");
}

TEST(BitStringDecoder, RefusesAPrimitiveIndefiniteValueWithoutTwoZeroOctets) {
  for (const char *input : {"03 80", "03 80 00", "03 80 00 00", "03 80 00 AA", "03 80 00 AA BB",
                            "03 80 00 AA 00", "03 80 00 00 AA 00", "83 80 00 AA BB"})
    expect_refused(input);
}

TEST(BitStringDecoder, JudgesTheUnusedBitsOfAPrimitiveIndefiniteValueToo) {
  expect_refused("03 80 08 AA 00 00");
  expect_refused("03 80 01 00 00");
}

// ---- decoder, constructed -----------------------------------------------------------------------

TEST(BitStringDecoder, TakesAnEmptyConstructedValue) {
  expect_decoded(0, "", 2, "23 00");
  expect_decoded(0, "", 2, "23 00 03 01 00");
  expect_decoded(0, "", 4, "23 80 00 00");
}

TEST(BitStringDecoder, JoinsSegmentsAsWholeOctetsAndLosesTheirUnusedBits) {
  expect_decoded(16, "AA B0", 10, "23 08 03 02 00 AA 03 02 04 B0");
  expect_decoded(16, "AF B0", 10, "23 08 03 02 04 AF 03 02 04 B0");
  expect_decoded(8, "FF", 6, "23 04 03 02 07 FF");
}

TEST(BitStringDecoder, SkipsEmptySegments) {
  expect_decoded(8, "AA", 12, "23 0A 03 01 00 03 02 00 AA 03 01 00");
  expect_decoded(0, "", 7, "23 05 03 01 00 23 00");
}

TEST(BitStringDecoder, JoinsEveryCombinationOfForms) {
  struct {
    const char *input;
    long consumed;
    const char *octets;
  } const rows[] = {
      // Segments: primitive definite, primitive indefinite, constructed definite and indefinite.
      {"23 04 03 02 00 AA", 6, "AA"},
      {"23 06 03 80 00 AA 00 00", 8, "AA"},
      {"23 06 23 04 03 02 00 AA", 8, "AA"},
      {"23 08 23 80 03 02 00 AA 00 00", 10, "AA"},
      {"23 80 03 02 00 AA 00 00", 8, "AA"},
      {"23 80 03 80 00 AA 00 00 00 00", 10, "AA"},
      {"23 80 23 04 03 02 00 AA 00 00", 10, "AA"},
      {"23 80 23 80 03 02 00 AA 00 00 00 00", 12, "AA"},
      // All four in a row, in both forms of the whole, with more octets after it.
      {"23 18 03 02 00 AA 03 80 00 BB 00 00 23 04 03 02 00 CC 23 80 03 02 00 DD 00 00 EE", 26,
       "AA BB CC DD"},
      {"23 80 03 02 00 AA 03 80 00 BB 00 00 23 04 03 02 00 CC 23 80 03 02 00 DD 00 00 00 00 EE", 28,
       "AA BB CC DD"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.input);
    const Bytes octets = hex(row.octets);
    const auto decoded = decode(asn1_BitString_d, hex(row.input));
    const Bits b(decoded.record);
    EXPECT_EQ(row.consumed, decoded.consumed);
    ASSERT_NE(nullptr, b);
    ASSERT_EQ(8 * octets.size(), b->length);
    EXPECT_EQ(octets, value(b.get()));
  }
}

TEST(BitStringDecoder, NeedsNoEndOfContentsBehindAConstructedDefiniteValue) {
  expect_decoded(8, "AA", 6, "23 04 03 02 00 AA");
  expect_decoded(8, "AA", 6, "23 04 03 02 00 AA 00 00");
}

TEST(BitStringDecoder, RefusesAConstructedIndefiniteValueWithoutEndOfContents) {
  for (const char *input : {"23 80", "23 80 00", "23 80 03 02 00 AA", "23 80 03 02 00 AA 00",
                            "23 80 03 02 00 AA 00 01", "23 80 03 02 00 AA 03 02 00 BB",
                            "23 80 23 80 03 02 00 AA 00 00", "23 06 23 80 03 02 00 AA 00 00"})
    expect_refused(input);
}

TEST(BitStringDecoder, WantsTheUniversalTagInSegmentsUnderAnImplicitTag) {
  expect_decoded(16, "AA BB", 10, "A1 08 03 02 00 AA 03 02 00 BB", 0x81);
  expect_decoded(16, "AA BB", 10, "A1 08 03 02 00 AA 03 02 00 BB", 0xA1);
  expect_decoded(8, "AA", 8, "A1 80 03 02 00 AA 00 00", 0x81);
  expect_refused("A1 04 81 02 00 AA", 0x81);
}

TEST(BitStringDecoder, RefusesTheWholeForOneBadSegment) {
  for (const char *input : {"23 08 03 02 00 AA 04 02 00 BB",  // another tag
                            "23 08 03 02 00 AA 03 02 08 BB",  // unused bits
                            "23 07 03 02 00 AA 03 01 01",     // unused bits, but no octets
                            "23 06 03 02 00 AA 03 00",        // no unused-bits octet
                            "23 04 03 03 00 AA BB",           // past the end of the string
                            "23 05 03 02 00 AA 03",           // cut
                            "23 06 03 80 00 AA BB 00 00",     // no two zero octets inside
                            "23 80 03 02 00 AA 04 00 00 00"})
    expect_refused(input);
}

TEST(BitStringDecoder, RefusesAPrimitiveLengthWithItsTopBitSet) {
  for (const char *input :
       {"03 84 80 00 00 00", "03 84 80 00 00 02 00 AA", "03 84 FF FF FF FF 00 AA",
        "81 84 FF FF FF FE 00 AA", "23 08 03 84 80 00 00 02 00 AA"})
    expect_refused(input, input[0] == '8' ? 0x81 : 0);
}

TEST(BitStringDecoder, TakesAConstructedLengthWithItsTopBitSetForEmpty) {
  expect_decoded(0, "", 6, "23 84 80 00 00 00");
  expect_decoded(0, "", 6, "23 84 FF FF FF FF 03 02 00 AA");
  expect_decoded(8, "AA", 12, "23 0A 23 84 80 00 00 04 03 02 00 AA");
}

TEST(BitStringDecoder, JoinsDeepNestingOnASmallStack) {
  constexpr size_t mebibyte = size_t{1} << 20;
  const Bytes inner = hex("03 02 04 B0");
  for (const Bytes &input :
       {nested_indefinite(mebibyte / 2, inner), nested_definite(mebibyte / 5, inner)})
    on_small_stack([&] { expect_decoded(8, "B0", static_cast<long>(input.size()), input); });
}

TEST(BitStringDecoder, RefusesDeepNestingThatIsNotClosedOnASmallStack) {
  constexpr size_t mebibyte = size_t{1} << 20;
  Bytes one_octet_short = nested_indefinite(mebibyte / 2, hex("03 01 00"));
  one_octet_short.pop_back();
  for (const Bytes &input : {nested_definite(mebibyte / 5, hex("04 00")),
                             nested_indefinite(mebibyte / 2, hex("03 00")), one_octet_short})
    on_small_stack([&] { expect_refused(input); });
}

TEST(BitStringDecoder, JoinsManySegments) {
  constexpr size_t segments = 100'000;
  Bytes content;
  for (size_t i = 0; i < segments; ++i) content.insert(content.end(), {3, 2, 0, 0xAA});
  const Bits b(decode(asn1_BitString_d, element(0x23, content)).record);
  ASSERT_NE(nullptr, b);
  EXPECT_EQ(8 * segments, b->length);
  EXPECT_EQ(Bytes(segments, 0xAA), value(b.get()));
}

TEST(BitStringDecoder, JoinsALongValueInsideDeepNesting) {
  constexpr size_t levels = 320'000;
  const Bytes input = nested_indefinite(levels, element(3, hex("00") + Bytes(levels, 0xAA)));
  const Bits b(decode(asn1_BitString_d, input).record);
  ASSERT_NE(nullptr, b);
  EXPECT_EQ(8 * levels, b->length);
  EXPECT_EQ(Bytes(levels, 0xAA), value(b.get()));
}

// ---- trace --------------------------------------------------------------------------------------

TEST(BitStringTrace, ShowsHeaderUnusedBitsAndOctets) {
  EXPECT_EQ((Lines{"BITSTRING", "  (4 unused bits)", "  0x00000000 41 B0 " + blanks(14) + "A."}),
            traced("03 03 04 41 B0", 1));
  EXPECT_EQ((Lines{". . BITSTRING", ". .   (0 unused bits)",
                   ". .   0x00000000 30 31 32 33 34 35 36 37 38 39 3A 3B 3C 3D 3E 3F "
                   "0123456789:;<=>?",
                   ". .   0x00000010 40 " + blanks(15) + "@"}),
            traced("03 12 00 30 31 32 33 34 35 36 37 38 39 3A 3B 3C 3D 3E 3F 40", 3));
}

TEST(BitStringTrace, DumpsNothingForAnEmptyValue) {
  EXPECT_EQ((Lines{"BITSTRING", "  (0 unused bits)"}), traced("03 01 00", 1));
  EXPECT_EQ((Lines{"BITSTRING", "  (0 unused bits)"}), traced("03 80 00 00 00", 1));
}

TEST(BitStringTrace, ShowsAnImplicitTag) {
  EXPECT_EQ((Lines{"CONTEXT-SPECIFIC PRIMITIVE [1] BITSTRING", "  (0 unused bits)",
                   "  0x00000000 41 " + blanks(15) + "A"}),
            traced("81 02 00 41", 1, 0x81));
  EXPECT_EQ((Lines{". CONTEXT-SPECIFIC CONSTRUCTED [1] BITSTRING", "}"}), traced("A1 00", 2, 0x81));
  EXPECT_EQ((Lines{"APPLICATION PRIMITIVE [2] BITSTRING", "  (0 unused bits)"}),
            traced("42 01 00", 1, 0x42));
  EXPECT_EQ((Lines{"PRIVATE PRIMITIVE [3] {", "  (0 unused bits)"}), traced("C3 01 00", 1, 0xC3));
}

TEST(BitStringTrace, KeepsSegmentsAtTheDepthOfTheWholeAndClosesOneLevelAbove) {
  EXPECT_EQ((Lines{". . BITSTRING {",                          //
                   ". . BITSTRING",                            //
                   ". .   (0 unused bits)",                    //
                   ". .   0x00000000 41 " + blanks(15) + "A",  //
                   ". . BITSTRING {",                          //
                   ". . BITSTRING",                            //
                   ". .   (4 unused bits)",                    //
                   ". .   0x00000000 40 " + blanks(15) + "@",  //
                   ". }",                                      //
                   ". }"}),
            traced("23 0C 03 02 00 41 23 80 03 02 04 40 00 00", 3));
}

TEST(BitStringTrace, ClosesAtDepth1WithoutALine) {
  EXPECT_EQ((Lines{"BITSTRING {", "BITSTRING", "  (0 unused bits)"}), traced("23 03 03 01 00", 1));
  EXPECT_EQ((Lines{". BITSTRING {", "}"}), traced("23 80 00 00", 2));
}

TEST(BitStringTrace, CountsTheDepthIn32BitsAndCutsItOnlyToWrite) {
  const Lines lines = traced("23 00", 65536);
  ASSERT_EQ(1u, lines.size());
  EXPECT_EQ(2u * 65534 + 1, lines[0].size());
  EXPECT_EQ(". }", lines[0].substr(lines[0].size() - 3));
  EXPECT_EQ((Lines{"BITSTRING {"}), traced("23 00", 65537));
  EXPECT_EQ((Lines{". BITSTRING {", "}"}), traced("23 00", 65538));
}

TEST(BitStringTrace, IsSilentAtDepth0) {
  EXPECT_EQ(Lines{}, traced("23 04 03 02 00 AA", 0));
  EXPECT_EQ(Lines{}, traced("03 05 00 AA", 0));
}

TEST(BitStringTrace, ShowsARefusedNumberOfUnusedBits) {
  EXPECT_EQ((Lines{"BITSTRING", "  (8 unused bits)"}), traced("03 02 08 FF", 1));
  EXPECT_EQ((Lines{"BITSTRING", "  (255 unused bits)"}), traced("03 02 FF FF", 1));
  EXPECT_EQ((Lines{"BITSTRING", "  (7 unused bits)"}), traced("03 01 07", 1));
  EXPECT_EQ((Lines{"BITSTRING", "  (3 unused bits)"}), traced("03 80 03 AA BB", 1));
}

TEST(BitStringTrace, HasNoUnusedBitsLineWithoutTheOctet) {
  EXPECT_EQ((Lines{"BITSTRING"}), traced("03 00", 1));
  EXPECT_EQ((Lines{"BITSTRING"}), traced("03 00 04 AA", 1));
  EXPECT_EQ((Lines{"BITSTRING"}), traced("03 80", 1));
}

TEST(BitStringTrace, ClosesNothingAfterAFailure) {
  EXPECT_EQ((Lines{". BITSTRING {", ". BITSTRING", ".   (0 unused bits)"}),
            traced("23 05 03 01 00 04 00", 2));
  EXPECT_EQ((Lines{". BITSTRING {"}), traced("23 80 00", 2));
}

TEST(BitStringTrace, TellsALengthBehindTheEnd) {
  EXPECT_EQ((Lines{". BITSTRING", ". z larger than end!"}), traced("03 03 00 AA", 2));
  EXPECT_EQ((Lines{". BITSTRING", ". z larger than end!"}), traced("03 82 00", 2));
  EXPECT_EQ((Lines{". BITSTRING {", ". BITSTRING", ". z larger than end!"}),
            traced("23 04 03 03 00 AA BB", 2));
  EXPECT_EQ(Lines{}, traced("04 02 00 AA", 2));
}

// ---- ends of the process and of memory ----------------------------------------------------------

TEST(BitStringDeathTest, DecoderAssertsItsPointers) {
  const Bytes input = hex("03 01 00");
  const uint8_t *const z = input.data();
  BitString *b = nullptr;
  EXPECT_ASSERT(asn1_BitString_d(nullptr, z + 3, 0, &b, 0), "asn1_BitString_d", "z != NULL");
  EXPECT_ASSERT(asn1_BitString_d(z, nullptr, 0, &b, 0), "asn1_BitString_d", "end != NULL");
  EXPECT_ASSERT(asn1_BitString_d(z, z + 3, 0, nullptr, 0), "asn1_BitString_d", "s != NULL");
}

TEST(BitStringDeathTest, AppendAssertsItsRecord) {
  EXPECT_ASSERT(asn1_BitString_append(nullptr, 1, "x"), "asn1_BitString_append", "s != NULL");
  EXPECT_ASSERT(asn1_BitString_append(nullptr, 0, nullptr), "asn1_BitString_append", "s != NULL");
}

TEST(BitStringDeathTest, SetAssertsItsRecord) {
  for (const uint32_t set : {0u, 1u})
    EXPECT_ASSERT(asn1_BitString_set(nullptr, 0, set), "asn1_BitString_set", "bs");
}

#ifndef ORVELASN1_TESTS_SANITIZED
TEST(BitStringMemory, NewAndCloneFailWhenItIsExhausted) {
  const Bits original = bits(9, "AB 80");
  expect_failure_at_each_allocation([] { return Bits(asn1_BitString_new(9)) != nullptr; });
  expect_failure_at_each_allocation(
      [&] { return Bits(asn1_BitString_clone(original.get())) != nullptr; });
}

TEST(BitStringMemory, DecoderReleasesWhatItMadeWhenItIsExhausted) {
  for (const char *octets : {"03 02 04 B0", "03 80 04 B0 00 00", "23 04 03 02 00 AA",
                             "23 80 03 02 00 AA 23 04 03 02 00 BB 03 80 00 CC 00 00 00 00"}) {
    SCOPED_TRACE(octets);
    const Bytes input = hex(octets);
    BitString before{};
    expect_failure_at_each_allocation([&] {
      BitString *b = &before;
      const bool read = asn1_BitString_d(input.data(), input.data() + input.size(), 0, &b, 0);
      EXPECT_EQ(read, b != nullptr);
      asn1_BitString_free(b);
      return read;
    });
  }
}

TEST(BitStringMemory, FailedGrowthLeavesTheRecordAsItWas) {
  const Bits b = bits(3, "FF");
  {
    const FailingAllocation failing(0);
    EXPECT_EQ(nullptr, asn1_BitString_set(b.get(), 8, 1));
    EXPECT_TRUE(failing.happened());
  }
  {
    const FailingAllocation failing(0);
    EXPECT_EQ(nullptr, asn1_BitString_append(b.get(), 1, "x"));
    EXPECT_TRUE(failing.happened());
  }
  expect_bits(3, "FF", b.get());
}

// 32 bits count those of 0x1FFFFFFF octets. One is there.
TEST(BitStringMemory, AppendAsksForAsManyOctetsAs32BitsCountTheBitsOf) {
  const Bits b = bits(3, "FF");
  for (const auto &[count, asks] : {std::pair{0x1FFFFFFEU, true}, {0x1FFFFFFFU, false}}) {
    const FailingAllocation failing(0);
    EXPECT_EQ(nullptr, asn1_BitString_append(b.get(), count, nullptr));
    EXPECT_EQ(asks, failing.happened());
  }
}
#endif

}  // namespace

}  // namespace bit_string_test
