// Tests INTEGER: content octets in a record, both directions, and as small numbers.
#include "allocator.h"
#include "support.h"
#include "zeros.h"

namespace integer_test {

namespace {

using support::Bytes;
using support::decode;
using support::encode;
using support::encode_with;
using support::hex;
using support::Input;
using support::trace_lines;
using support::operator+;
using Lines = std::vector<std::string>;

struct FreeInteger {
  void operator()(Integer *integer) const { asn1_Integer_free(integer); }
};
using Owned = std::unique_ptr<Integer, FreeInteger>;

/// Returns a record that the library makes, with this content.
Owned make(const Bytes &content, uint32_t negative = 0) {
  Owned integer(asn1_Integer_new(static_cast<uint32_t>(content.size())));
  std::copy(content.begin(), content.end(), integer->data);
  integer->negative = negative;
  return integer;
}

Bytes encoded(const char *content, uint32_t negative) {
  return encode(asn1_Integer_e, make(hex(content), negative).get());
}

// -- Records ------------------------------------------------------------------------------------

TEST(IntegerNew, HasZeroOctets) {
  const Owned integer(asn1_Integer_new(3));
  ASSERT_NE(nullptr, integer);
  EXPECT_EQ(3U, integer->length);
  EXPECT_EQ(hex("00 00 00"), support::value(integer.get()));
  EXPECT_EQ(0U, integer->negative);
}

TEST(IntegerNew, OfNoOctetsHasNoData) {
  const Owned integer(asn1_Integer_new(0));
  ASSERT_NE(nullptr, integer);
  EXPECT_EQ(0U, integer->length);
  EXPECT_EQ(nullptr, integer->data);
  EXPECT_EQ(0U, integer->negative);
}

TEST(IntegerFree, IgnoresNull) { asn1_Integer_free(nullptr); }

TEST(IntegerClone, OfNullIsNull) { EXPECT_EQ(nullptr, asn1_Integer_clone(nullptr)); }

TEST(IntegerClone, CopiesOctetsAndSign) {
  const Owned integer = make(hex("FF 00 01"), 1);
  const Owned copy(asn1_Integer_clone(integer.get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(hex("FF 00 01"), support::value(copy.get()));
  EXPECT_EQ(1U, copy->negative);
  EXPECT_NE(integer->data, copy->data);
  EXPECT_EQ(0, asn1_Integer_cmp(integer.get(), copy.get()));
}

TEST(IntegerClone, OfNoOctetsHasNoData) {
  const Owned copy(asn1_Integer_clone(make({}).get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(0U, copy->length);
  EXPECT_EQ(nullptr, copy->data);
}

TEST(IntegerClone, OfOctetsThatAreNotThereIsNull) {
  const Integer integer{3, nullptr, 0};
  EXPECT_EQ(nullptr, asn1_Integer_clone(&integer));
}

TEST(IntegerConstants, AreOneOctetEach) {
  const struct {
    const Integer *(*get)();
    uint8_t octet;
  } rows[] = {{asn1_Integer_0, 0}, {asn1_Integer_1, 1}, {asn1_Integer_2, 2}, {asn1_Integer_3, 3}};
  for (const auto &row : rows) {
    const Integer *constant = row.get();
    EXPECT_EQ(Bytes{row.octet}, support::value(constant));
    EXPECT_EQ(0U, constant->negative);
    EXPECT_EQ(constant, row.get());
    EXPECT_EQ(row.octet, asn1_Integer_get(constant));
    EXPECT_EQ((Bytes{0x02, 0x01, row.octet}), encode(asn1_Integer_e, constant));
  }
}

TEST(IntegerConstants, ZeroDiffersFromADecodedZero) {
  const auto decoded = decode(asn1_Integer_d, hex("02 01 00"));
  ASSERT_TRUE(decoded.ok());
  EXPECT_NE(0, asn1_Integer_cmp(asn1_Integer_0(), decoded.record));
  asn1_Integer_free(decoded.record);
}

// -- Writing ------------------------------------------------------------------------------------

TEST(IntegerEncoder, FailsForNull) {
  EXPECT_EQ(0U, asn1_Integer_e(nullptr, nullptr));
  uint8_t room[] = {0xAA};
  uint8_t *cursor = room;
  EXPECT_EQ(0U, asn1_Integer_e(&cursor, nullptr));
  EXPECT_EQ(room, cursor);
  EXPECT_EQ(0xAA, room[0]);
}

TEST(IntegerEncoder, PutsAZeroOctetBeforeAMagnitudeWithItsTopBitSet) {
  EXPECT_EQ(hex("02 02 00 80"), encoded("80", 0));
  EXPECT_EQ(hex("02 02 00 FF"), encoded("FF", 0));
  EXPECT_EQ(hex("02 03 00 80 00"), encoded("80 00", 0));
  EXPECT_EQ(hex("02 04 00 FF FF 80"), encoded("FF FF 80", 0));
  EXPECT_EQ(hex("02 02 00 80"), encoded("00 80", 0));
  EXPECT_EQ(hex("02 02 00 80"), encoded("00 00 80", 0));
}

TEST(IntegerEncoder, WritesAMagnitudeWithoutItsTopBitAsItStands) {
  EXPECT_EQ(hex("02 01 7F"), encoded("7F", 0));
  EXPECT_EQ(hex("02 02 01 00"), encoded("01 00", 0));
}

TEST(IntegerEncoder, WritesATwosComplementAsItStands) {
  EXPECT_EQ(hex("02 01 80"), encoded("80", 1));
  EXPECT_EQ(hex("02 01 FF"), encoded("FF", 1));
  EXPECT_EQ(hex("02 02 80 00"), encoded("80 00", 1));
  EXPECT_EQ(hex("02 01 7F"), encoded("7F", 1));
}

TEST(IntegerEncoder, StripsLeadingZerosOfEitherSign) {
  EXPECT_EQ(hex("02 01 7F"), encoded("00 00 7F", 0));
  EXPECT_EQ(hex("02 01 7F"), encoded("00 00 7F", 1));
  EXPECT_EQ(hex("02 01 80"), encoded("00 80", 1));
  EXPECT_EQ(hex("02 02 01 00"), encoded("00 00 00 01 00", 0));
}

TEST(IntegerEncoder, NeverStripsLeadingOnes) {
  EXPECT_EQ(hex("02 03 FF FF 80"), encoded("FF FF 80", 1));
  EXPECT_EQ(hex("02 02 FF FF"), encoded("FF FF", 1));
}

TEST(IntegerEncoder, WritesOneZeroOctetForEveryZero) {
  for (const char *content : {"", "00", "00 00", "00 00 00 00 00"}) {
    EXPECT_EQ(hex("02 01 00"), encoded(content, 0)) << content;
    EXPECT_EQ(hex("02 01 00"), encoded(content, 1)) << content;
  }
}

TEST(IntegerEncoder, WritesOneZeroOctetWithoutDataWhateverTheLength) {
  for (const uint32_t length : {0U, 1U, 5U, 0x80000000U, 0xFFFFFFFFU}) {
    const Integer integer{length, nullptr, 0};
    EXPECT_EQ(hex("02 01 00"), encode(asn1_Integer_e, &integer)) << length;
  }
}

TEST(IntegerEncoder, WritesOneZeroOctetForALengthOfZeroWhateverTheData) {
  for (const uint8_t octet : Bytes{0x55, 0x00}) {
    uint8_t data[] = {octet, 0x01};
    const Integer integer{0, data, 0};
    EXPECT_EQ(hex("02 01 00"), encode(asn1_Integer_e, &integer)) << int{octet};
  }
}

TEST(IntegerEncoder, WritesALongLengthWhereTheContentIsLong) {
  Bytes content(127, 0x11);
  EXPECT_EQ(hex("02 7F") + content, encode(asn1_Integer_e, make(content).get()));
  content[0] = 0x91;  // the zero octet makes it 128
  EXPECT_EQ(hex("02 81 80 00") + content, encode(asn1_Integer_e, make(content).get()));
  EXPECT_EQ(hex("02 7F") + content, encode(asn1_Integer_e, make(content, 1).get()));
  content.resize(256, 0x22);
  EXPECT_EQ(hex("02 82 01 00") + content, encode(asn1_Integer_e, make(content, 1).get()));
}

TEST(IntegerEncoder, CountsTheOctetsOfTheLongestLength) {
  const struct {
    uint8_t first;
    uint32_t negative, whole;
  } rows[] = {{0x01, 0, 0x80000005},
              {0x7F, 1, 0x80000005},
              {0x80, 1, 0x80000005},
              {0x80, 0, 0x80000006}};  // with a zero octet in front
  for (const auto &row : rows) {
    uint8_t first = row.first;  // no other is looked at
    const Integer integer{0x7FFFFFFF, &first, row.negative};
    EXPECT_EQ(row.whole, asn1_Integer_e(nullptr, &integer)) << int{row.first};
  }
}

TEST(IntegerEncoder, WritesTheHeaderAloneForALengthWithItsTopBitSet) {
  uint8_t data[] = {0x55};
  const struct {
    uint32_t length;
    const char *octets;
  } rows[] = {{0x80000000, "02 84 80 00 00 00"}, {0xFFFFFFFF, "02 84 FF FF FF FF"}};
  for (const auto &row : rows) {
    const Integer integer{row.length, data, 0};
    uint8_t room[8] = {};
    uint8_t *cursor = room;
    EXPECT_EQ(6U, asn1_Integer_e(nullptr, &integer));
    EXPECT_EQ(6U, asn1_Integer_e(&cursor, &integer));
    EXPECT_EQ(hex(row.octets), Bytes(room, cursor));
  }
}

// -- Reading ------------------------------------------------------------------------------------

TEST(IntegerDecoder, KeepsTheContentAndTheSign) {
  const struct {
    const char *octets, *content;
    uint32_t negative;
    const char *again;  // the encoded record
  } rows[] = {
      {"02 01 05", "05", 0, "02 01 05"},
      {"02 01 7F", "7F", 0, "02 01 7F"},
      {"02 02 01 00", "01 00", 0, "02 02 01 00"},
      // One leading zero octet is dropped. It is written where the top bit of the next octet is
      // set.
      {"02 01 00", "", 0, "02 01 00"},
      {"02 02 00 80", "80", 0, "02 02 00 80"},
      {"02 02 00 7F", "7F", 0, "02 01 7F"},
      {"02 02 00 00", "00", 0, "02 01 00"},
      {"02 03 00 00 01", "00 01", 0, "02 01 01"},
      {"02 03 00 80 00", "80 00", 0, "02 03 00 80 00"},
      {"02 03 00 00 80", "00 80", 0, "02 02 00 80"},
      // Negative values are written as they were read.
      {"02 01 80", "80", 1, "02 01 80"},
      {"02 01 FF", "FF", 1, "02 01 FF"},
      {"02 02 FF 00", "FF 00", 1, "02 02 FF 00"},
      {"02 02 FF FF", "FF FF", 1, "02 02 FF FF"},
      // The length is in a longer form than needed.
      {"02 81 01 05", "05", 0, "02 01 05"},
      {"02 84 00 00 00 02 00 80", "80", 0, "02 02 00 80"},
  };
  for (const auto &row : rows) {
    const Bytes octets = hex(row.octets);
    const auto decoded = decode(asn1_Integer_d, octets + hex("55"));
    ASSERT_EQ(static_cast<long>(octets.size()), decoded.consumed) << row.octets;
    EXPECT_EQ(hex(row.content), support::value(decoded.record)) << row.octets;
    EXPECT_EQ(row.negative, decoded.record->negative) << row.octets;
    EXPECT_EQ(hex(row.again), encode(asn1_Integer_e, decoded.record)) << row.octets;
    asn1_Integer_free(decoded.record);
  }
}

TEST(IntegerDecoder, GivesZeroWithoutData) {
  const auto decoded = decode(asn1_Integer_d, hex("02 01 00"));
  ASSERT_TRUE(decoded.ok());
  EXPECT_EQ(0U, decoded.record->length);
  EXPECT_EQ(nullptr, decoded.record->data);
  EXPECT_EQ(0U, decoded.record->negative);
  EXPECT_EQ(0U, asn1_Integer_get(decoded.record));
  EXPECT_EQ(hex("02 01 00"), encode(asn1_Integer_e, decoded.record));
  asn1_Integer_free(decoded.record);
}

TEST(IntegerDecoder, CarriesALongContent) {
  Bytes content(300, 0xC3);
  content[0] = 0x00;
  const Bytes octets = support::element(0x02, content);
  const auto decoded = decode(asn1_Integer_d, octets);
  EXPECT_EQ(static_cast<long>(octets.size()), decoded.consumed);
  EXPECT_EQ(Bytes(299, 0xC3), support::value(decoded.record));
  EXPECT_EQ(octets, encode(asn1_Integer_e, decoded.record));
  asn1_Integer_free(decoded.record);
}

TEST(IntegerDecoder, TakesAnImplicitTag) {
  for (const uint32_t impl_tag : {0x81U, 0x181U}) {
    const auto decoded = decode(asn1_Integer_d, hex("81 01 05"), impl_tag);
    EXPECT_EQ(3, decoded.consumed);
    asn1_Integer_free(decoded.record);
    EXPECT_FALSE(decode(asn1_Integer_d, hex("02 01 05"), impl_tag).ok());
    EXPECT_FALSE(decode(asn1_Integer_d, hex("A1 01 05"), impl_tag).ok());
  }
  const auto own = decode(asn1_Integer_d, hex("02 01 05"), 0x100);
  EXPECT_EQ(3, own.consumed);
  asn1_Integer_free(own.record);
}

TEST(IntegerDecoder, RefusesAndLeavesThePlaceAlone) {
  for (const char *octets : {
           "02 00",                    // no content
           "02 81 00",                 // no content
           "22 01 05",                 // constructed
           "02 80 05 00 00",           // indefinite
           "03 01 05",                 // another tag
           "02 02 05",                 // past the end
           "02 82 00",                 // length octets past the end
           "02 85 00 00 00 00 01 05",  // five length octets
           "02",
           "",
       }) {
    const Input input(hex(octets));
    Integer sentinel{};
    Integer *place = &sentinel;
    EXPECT_EQ(nullptr, asn1_Integer_d(input.z(), input.end(), 0, &place, 0)) << octets;
    EXPECT_EQ(&sentinel, place) << octets;
  }
}

TEST(IntegerDecoder, RefusesALengthWithItsTopBitSet) {
  for (const char *length : {"84 80 00 00 00", "84 80 00 00 01", "84 FF FF FF FF"}) {
    for (const char *content : {"", "05", "00 05", "80 05"}) {
      const Input input(hex("02") + hex(length) + hex(content));
      Integer sentinel{};
      Integer *place = &sentinel;
      EXPECT_EQ(nullptr, asn1_Integer_d(input.z(), input.end(), 0, &place, 0)) << length;
      EXPECT_EQ(&sentinel, place);
    }
  }
}

TEST(IntegerDecoder, GivesNothingWithoutACursorAnEndOrAPlace) {
  const uint8_t octets[] = {0x02, 0x01, 0x05};
  Integer sentinel{};
  Integer *place = &sentinel;
  EXPECT_EQ(nullptr, asn1_Integer_d(nullptr, octets + 3, 0, &place, 0));
  EXPECT_EQ(nullptr, asn1_Integer_d(octets, nullptr, 0, &place, 0));
  EXPECT_EQ(nullptr, asn1_Integer_d(octets + 3, octets + 3, 0, &place, 0));
  EXPECT_EQ(nullptr, asn1_Integer_d(octets + 3, octets, 0, &place, 0));
  EXPECT_EQ(&sentinel, place);
  EXPECT_EQ(nullptr, asn1_Integer_d(octets, octets + 3, 0, nullptr, 0));
}

Lines trace_of(const char *octets, uint32_t depth = 1, uint32_t impl_tag = 0) {
  return trace_lines(
      [&] { asn1_Integer_free(decode(asn1_Integer_d, hex(octets), impl_tag, depth).record); });
}

TEST(IntegerTrace, ShowsUpToFourOctetsAsANumber) {
  const struct {
    const char *octets, *line;
  } rows[] = {
      {"02 01 05", " 5"},
      {"02 01 00", " 0"},
      {"02 01 FF", " 255"},
      {"02 02 00 80", " 128"},
      {"02 03 01 00 00", " 65536"},
      {"02 04 7F FF FF FF", " 2147483647"},
      {"02 04 80 00 00 00", " -2147483648"},
      {"02 05 00 FF FF FF FF", " -1"},
      {"02 05 00 00 00 00 07", " 7"},
  };
  for (const auto &row : rows) {
    EXPECT_EQ((Lines{"INTEGER", row.line}), trace_of(row.octets)) << row.octets;
  }
}

TEST(IntegerTrace, DumpsMoreThanFourOctets) {
  EXPECT_EQ((Lines{"INTEGER", "  0x00000000 01 02 03 41 FF " + std::string(33, ' ') + "...A."}),
            trace_of("02 05 01 02 03 41 FF"));
  EXPECT_EQ((Lines{"INTEGER", "  0x00000000 00 00 00 00 07 " + std::string(33, ' ') + "....."}),
            trace_of("02 06 00 00 00 00 00 07"));
  EXPECT_EQ((Lines{"INTEGER",
                   "  0x00000000 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 ABCDEFGHIJKLMNOP",
                   "  0x00000010 51 " + std::string(45, ' ') + "Q"}),
            trace_of("02 12 00 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 51"));
}

TEST(IntegerTrace, StandsAtTheDepthGiven) {
  EXPECT_EQ((Lines{". . INTEGER", ". .  5"}), trace_of("02 01 05", 3));
  EXPECT_EQ(Lines{}, trace_of("02 01 05", 0));
  EXPECT_EQ(Lines{}, trace_of("02 05 01 02 03 04 05", 0));
}

TEST(IntegerTrace, BearsTheImplicitTag) {
  EXPECT_EQ((Lines{"CONTEXT-SPECIFIC PRIMITIVE [1] INTEGER", " 5"}), trace_of("81 01 05", 1, 0x81));
}

TEST(IntegerTrace, ShowsNoValueThatWasRefused) {
  EXPECT_EQ(Lines{"INTEGER"}, trace_of("02 00"));
  EXPECT_EQ(Lines{"INTEGER"}, trace_of("02 84 80 00 00 00 05"));
  EXPECT_EQ((Lines{"INTEGER", "z larger than end!"}), trace_of("02 02 05"));
  EXPECT_EQ(Lines{}, trace_of("22 01 05"));
}

// -- Small numbers ------------------------------------------------------------------------------

TEST(IntegerGet, ReadsUpToFourSignificantOctets) {
  const struct {
    const char *content;
    uint32_t value;
  } rows[] = {
      {"", 0},
      {"00", 0},
      {"01", 1},
      {"FF", 255},
      {"00 01", 1},
      {"01 00", 256},
      {"12 34 56", 0x123456},
      {"12 34 56 78", 0x12345678},
      {"80 00 00 00", 0x80000000},
      {"FF FF FF FE", 0xFFFFFFFE},
      {"00 FF FF FF FF", 0xFFFFFFFF},
      {"00 00 00 00 00 00 00 07", 7},
      {"00 00 00 00 00 00 00 00", 0},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.value, asn1_Integer_get(make(hex(row.content)).get())) << row.content;
    EXPECT_EQ(row.value, asn1_Integer_get(make(hex(row.content), 1).get())) << row.content;
  }
}

TEST(IntegerGet, GivesAllOnesForMoreThanFourSignificantOctets) {
  for (const char *content :
       {"01 00 00 00 00", "FF FF FF FF FF", "00 01 00 00 00 00", "01 00 00 00 00 00 00 00 00"}) {
    EXPECT_EQ(0xFFFFFFFFU, asn1_Integer_get(make(hex(content)).get())) << content;
  }
}

TEST(IntegerGet, GivesZeroWithoutOctets) {
  uint8_t data[] = {0x55};
  const Integer no_data{5, nullptr, 0};
  const Integer no_length{0, data, 0};
  EXPECT_EQ(0U, asn1_Integer_get(&no_data));
  EXPECT_EQ(0U, asn1_Integer_get(&no_length));
}

TEST(IntegerGet, ReadsADecodedNegativeValueAsItsOctets) {
  const auto decoded = decode(asn1_Integer_d, hex("02 01 FF"));
  ASSERT_TRUE(decoded.ok());
  EXPECT_EQ(1U, decoded.record->negative);
  EXPECT_EQ(255U, asn1_Integer_get(decoded.record));
  asn1_Integer_free(decoded.record);
}

TEST(IntegerDeathTest, GetWithoutARecord) {
  EXPECT_ASSERT(asn1_Integer_get(nullptr), "asn1_Integer_get", "integer != NULL");
}

TEST(IntegerSet, HoldsTheSignificantOctetsOfAPositiveNumber) {
  const struct {
    uint32_t value;
    const char *content, *octets;
  } rows[] = {
      {0, "", "02 01 00"},
      {1, "01", "02 01 01"},
      {0x7F, "7F", "02 01 7F"},
      {0x80, "80", "02 02 00 80"},
      {0xFF, "FF", "02 02 00 FF"},
      {0x100, "01 00", "02 02 01 00"},
      {0xFFFF, "FF FF", "02 03 00 FF FF"},
      {0x10000, "01 00 00", "02 03 01 00 00"},
      {0xFFFFFF, "FF FF FF", "02 04 00 FF FF FF"},
      {0x1000000, "01 00 00 00", "02 04 01 00 00 00"},
      {0x80000000, "80 00 00 00", "02 05 00 80 00 00 00"},
      {0xFFFFFFFF, "FF FF FF FF", "02 05 00 FF FF FF FF"},
  };
  for (const auto &row : rows) {
    const Owned integer(asn1_Integer_set(row.value));
    ASSERT_NE(nullptr, integer);
    EXPECT_EQ(hex(row.content), support::value(integer.get())) << row.value;
    EXPECT_EQ(0U, integer->negative);
    EXPECT_EQ(hex(row.octets), encode(asn1_Integer_e, integer.get())) << row.value;
    EXPECT_EQ(row.value, asn1_Integer_get(integer.get()));
  }
}

TEST(IntegerSet, HoldsZeroWithoutData) {
  const Owned integer(asn1_Integer_set(0));
  EXPECT_EQ(0U, integer->length);
  EXPECT_EQ(nullptr, integer->data);
}

// -- Comparison ---------------------------------------------------------------------------------

TEST(IntegerCmp, GivesZeroForTheSameOctetsAndSign) {
  EXPECT_EQ(0, asn1_Integer_cmp(make(hex("01 02")).get(), make(hex("01 02")).get()));
  EXPECT_EQ(0, asn1_Integer_cmp(make(hex("FF"), 1).get(), make(hex("FF"), 1).get()));
  EXPECT_EQ(0, asn1_Integer_cmp(make({}).get(), make({}).get()));
}

TEST(IntegerCmp, GivesOneForDifferentSignsOrLengths) {
  EXPECT_EQ(1, asn1_Integer_cmp(make(hex("80"), 1).get(), make(hex("80"), 0).get()));
  EXPECT_EQ(1, asn1_Integer_cmp(make(hex("80"), 0).get(), make(hex("80"), 1).get()));
  EXPECT_EQ(1, asn1_Integer_cmp(make(hex("01")).get(), make(hex("01 02")).get()));
  EXPECT_EQ(1, asn1_Integer_cmp(make(hex("01 02")).get(), make(hex("01")).get()));
  EXPECT_EQ(1, asn1_Integer_cmp(make({}).get(), make(hex("00")).get()));
}

TEST(IntegerCmp, GivesOneWithoutARecordOrItsOctets) {
  const Owned integer = make(hex("00 00 00"));
  EXPECT_EQ(1, asn1_Integer_cmp(integer.get(), nullptr));
  EXPECT_EQ(1, asn1_Integer_cmp(nullptr, integer.get()));
  EXPECT_EQ(1, asn1_Integer_cmp(nullptr, nullptr));
  const Integer hollow{3, nullptr, 0};
  EXPECT_EQ(1, asn1_Integer_cmp(integer.get(), &hollow));
  EXPECT_EQ(1, asn1_Integer_cmp(&hollow, integer.get()));
}

TEST(IntegerCmp, OrdersOctetsOfTheSameLength) {
  EXPECT_LT(asn1_Integer_cmp(make(hex("01 02")).get(), make(hex("01 03")).get()), 0);
  EXPECT_GT(asn1_Integer_cmp(make(hex("80 00")).get(), make(hex("7F FF")).get()), 0);
}

TEST(IntegerCmp, DoesNotNormalise) {
  const auto padded = decode(asn1_Integer_d, hex("02 03 00 00 01"));
  ASSERT_TRUE(padded.ok());
  const Owned one = make(hex("01"));
  EXPECT_EQ(hex("00 01"), support::value(padded.record));
  EXPECT_NE(0, asn1_Integer_cmp(padded.record, one.get()));
  EXPECT_EQ(1U, asn1_Integer_get(padded.record));
  EXPECT_EQ(1U, asn1_Integer_get(one.get()));
  asn1_Integer_free(padded.record);
}

// A length of 2^31 passes the decoder of lengths, and is refused where the octets would be taken.
TEST(IntegerDecoder, RefusesTwoGibibytes) {
  if constexpr (sizeof(void *) > 4) {
    constexpr size_t size = 6 + (size_t{1} << 31);
    const support::Zeros input(size);
    ASSERT_TRUE(input.are_there());
    uint8_t *const z = input.begin();
    const Bytes header = hex("02 84 80 00 00 00");
    std::copy(header.begin(), header.end(), z);
    Integer *made = nullptr;
    EXPECT_EQ(nullptr, asn1_Integer_d(z, z + size, 0, &made, 0));
    EXPECT_EQ(nullptr, made);
    // The content of such a record is empty, and so lacks the first of its times.
    *z = 0x30;
    Validity *period = nullptr;
    EXPECT_EQ(nullptr, asn1_Validity_d(z, z + size, 0, &period, 0));
    EXPECT_EQ(nullptr, period);
  }
}

#ifndef ORVELASN1_TESTS_SANITIZED

// -- Exhausted memory ---------------------------------------------------------------------------

TEST(IntegerMemory, NewSetAndCloneGiveNullWhereAnAllocationFails) {
  const auto succeeds = [](Integer *integer) {
    asn1_Integer_free(integer);
    return integer != nullptr;
  };
  using support::expect_failure_at_each_allocation;
  EXPECT_EQ(2, expect_failure_at_each_allocation([&] { return succeeds(asn1_Integer_new(3)); }));
  EXPECT_EQ(2, expect_failure_at_each_allocation([&] { return succeeds(asn1_Integer_set(9)); }));
  EXPECT_EQ(2, expect_failure_at_each_allocation(
                   [&] { return succeeds(asn1_Integer_clone(asn1_Integer_3())); }));
}

TEST(IntegerMemory, TheDecoderGivesAndStoresNullWhereAnAllocationFails) {
  const Input input(hex("02 03 01 02 03"));
  EXPECT_LT(0, support::expect_failure_at_each_allocation([&] {
              Integer sentinel{};
              Integer *place = &sentinel;
              const bool read = asn1_Integer_d(input.z(), input.end(), 0, &place, 0) == input.end();
              EXPECT_NE(&sentinel, place);
              EXPECT_EQ(read, place != nullptr);
              asn1_Integer_free(place);
              return read;
            }));
}

#endif

}  // namespace

}  // namespace integer_test
