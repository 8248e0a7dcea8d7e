// Tests UTCTime, GeneralizedTime and the CHOICE of the two: texts, seconds and the clock.
#include <cstring>
#include <ctime>
#include <limits>
#include <optional>
#include <thread>
#include <utility>

#include "allocator.h"
#include "support.h"

namespace time_test {

namespace {

using namespace support;

constexpr uint8_t utc = 23, generalized = 24;

/// Whether time_t has values past the year 2038.
constexpr bool wide = sizeof(time_t) > 4;

template <auto free>
struct Release {
  template <class T>
  void operator()(T *p) const {
    free(p);
  }
};
using Record = std::unique_ptr<Time, Release<asn1_Time_free>>;
using UtcText = std::unique_ptr<UTCTime, Release<asn1_UTCTime_free>>;
using GeneralizedText = std::unique_ptr<GeneralizedTime, Release<asn1_GeneralizedTime_free>>;

/// Returns a record that owns a copy of `text`, of exactly its size.
Record time_of(uint8_t kind, const char *text) {
  Record t(asn1_Time_new());
  t->kind = kind;
  t->value = asn1_UTCTime_clone(text);
  return t;
}

/// Sets the time zone of the process while it lives.
class Zone {
 public:
  explicit Zone(const char *name) {
    if (const char *before = std::getenv("TZ")) before_ = before;
    enter(name);
  }
  ~Zone() { enter(before_ ? before_->c_str() : nullptr); }
  Zone(const Zone &) = delete;
  Zone &operator=(const Zone &) = delete;

 private:
  static void enter(const char *name) {
    if (name != nullptr) {
      setenv("TZ", name, 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }
  std::optional<std::string> before_;
};

const char *const zones[] = {"UTC0", "XXX-1", "EST5EDT"};

constexpr time_t untouched = 12345;

/// Returns the seconds of a text, read as a text and as a record. Returns nothing where it cannot
/// be read, and then checks that nothing was stored.
std::optional<int64_t> seconds_of(uint8_t kind, const char *text) {
  const auto checked = [](int32_t result, time_t seconds) -> std::optional<int64_t> {
    if (result == 0) return seconds;
    EXPECT_EQ(-1, result);
    EXPECT_EQ(untouched, seconds);
    return std::nullopt;
  };
  time_t from_text = untouched, from_record = untouched;
  const int32_t text_result = kind == utc ? asn1_UTCTime2Seconds(&from_text, text)
                                          : asn1_GeneralizedTime2Seconds(&from_text, text);
  const int32_t record_result = asn1_Time2Seconds(&from_record, time_of(kind, text).get());
  EXPECT_EQ(text_result, record_result) << text;
  EXPECT_EQ(from_text, from_record) << text;
  return checked(text_result, from_text);
}

std::optional<int64_t> utc_seconds(const char *text) { return seconds_of(utc, text); }
std::optional<int64_t> generalized_seconds(const char *text) {
  return seconds_of(generalized, text);
}

/// Returns the seconds where time_t holds them, otherwise nothing.
std::optional<int64_t> if_held(int64_t seconds) {
  if (static_cast<time_t>(seconds) != seconds) return std::nullopt;
  return seconds;
}

std::string utc_text(int64_t seconds) {
  const UtcText t(asn1_Seconds2UTCTime(nullptr, static_cast<time_t>(seconds)));
  return t ? t.get() : "nothing";
}

std::string generalized_text(int64_t seconds) {
  const GeneralizedText t(asn1_Seconds2GeneralizedTime(nullptr, static_cast<time_t>(seconds)));
  return t ? t.get() : "nothing";
}

/// The first second that has no broken-down time: a year more than an int counts, from 1900.
constexpr int64_t no_date = 67768036191676800;

using Lines = std::vector<std::string>;

// ---- the texts and the record -------------------------------------------------------------------

TEST(Time, NewRecordHasNoKindAndNoText) {
  const Record t(asn1_Time_new());
  EXPECT_EQ(0, t->kind);
  EXPECT_EQ(nullptr, t->value);
}

TEST(Time, NewTextsAreZeroedBuffersOf18And27Octets) {
  const UtcText u(asn1_UTCTime_new());
  EXPECT_EQ(std::string(18, '\0'), std::string(u.get(), 18));
  const GeneralizedText g(asn1_GeneralizedTime_new());
  EXPECT_EQ(std::string(27, '\0'), std::string(g.get(), 27));
}

TEST(Time, FreeIgnoresNullAndARecordWithoutAText) {
  asn1_Time_free(nullptr);
  asn1_UTCTime_free(nullptr);
  asn1_GeneralizedTime_free(nullptr);
  for (const uint8_t kind : {uint8_t{0}, utc, generalized}) time_of(kind, nullptr);
}

TEST(Time, FreeOfAnUnknownKindLeavesTheText) {
  for (const uint8_t kind : {uint8_t{0}, uint8_t{22}, uint8_t{0x97}}) {
    Record t = time_of(kind, "260131120000Z");
    const UtcText text(t->value);
    t.reset();
    EXPECT_STREQ("260131120000Z", text.get());
  }
}

TEST(Time, CloneHasATextOfItsOwn) {
  for (const uint8_t kind : {utc, generalized}) {
    const Record original = time_of(kind, "260131120000Z");
    const Record copy(asn1_Time_clone(original.get()));
    ASSERT_NE(nullptr, copy);
    original->value[0] = 'x';
    EXPECT_EQ(kind, copy->kind);
    EXPECT_STREQ("260131120000Z", copy->value);
  }
}

TEST(Time, CloneKeepsAMissingText) {
  const Record copy(asn1_Time_clone(time_of(utc, nullptr).get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(utc, copy->kind);
  EXPECT_EQ(nullptr, copy->value);
}

TEST(Time, CloneOfNullOrAnUnknownKindIsNull) {
  EXPECT_EQ(nullptr, asn1_Time_clone(nullptr));
  EXPECT_EQ(nullptr, asn1_Time_clone(time_of(0, nullptr).get()));
  Record t = time_of(22, "260131120000Z");
  EXPECT_EQ(nullptr, asn1_Time_clone(t.get()));
  t->kind = utc;
}

TEST(Time, CloneOfATextIsItsDuplicate) {
  const char text[] = "A text of any length, with nothing of a time in it";
  const UtcText u(asn1_UTCTime_clone(text));
  EXPECT_STREQ(text, u.get());
  EXPECT_NE(text, u.get());
  const GeneralizedText g(asn1_GeneralizedTime_clone(text));
  EXPECT_STREQ(text, g.get());
  EXPECT_NE(text, g.get());
  EXPECT_EQ(nullptr, asn1_UTCTime_clone(nullptr));
  EXPECT_EQ(nullptr, asn1_GeneralizedTime_clone(nullptr));
}

// ---- encoders -----------------------------------------------------------------------------------

TEST(TimeEncoder, WritesTheTextUnderItsTag) {
  EXPECT_EQ(hex("17 0D") + text("260131120000Z"), encode(asn1_UTCTime_e, "260131120000Z"));
  EXPECT_EQ(hex("18 0F") + text("20260131120000Z"),
            encode(asn1_GeneralizedTime_e, "20260131120000Z"));
  EXPECT_EQ(hex("17 0D") + text("260131120000Z"),
            encode(asn1_Time_e, time_of(utc, "260131120000Z").get()));
  EXPECT_EQ(hex("18 0F") + text("20260131120000Z"),
            encode(asn1_Time_e, time_of(generalized, "20260131120000Z").get()));
}

TEST(TimeEncoder, WritesAnyTextOfAnyLength) {
  const std::string longer(200, '7');
  EXPECT_EQ(hex("17 03 41 42 43"), encode(asn1_UTCTime_e, "ABC"));
  EXPECT_EQ(hex("17 81 C8") + text(longer), encode(asn1_UTCTime_e, longer.c_str()));
  EXPECT_EQ(hex("18 81 C8") + text(longer), encode(asn1_GeneralizedTime_e, longer.c_str()));
}

/// Checks that a time encoder returns 0 for the record in both passes, and writes nothing.
template <class T>
void expect_nothing(uint32_t (*element_e)(uint8_t **, const T *), const T *record) {
  uint8_t octet = 0xA5;
  uint8_t *cursor = &octet;
  EXPECT_EQ(0u, element_e(nullptr, record));
  EXPECT_EQ(0u, element_e(&cursor, record));
  EXPECT_EQ(&octet, cursor);
  EXPECT_EQ(0xA5, octet);
}

TEST(TimeEncoder, WritesNothingForNullOrAnEmptyText) {
  expect_nothing<UTCTime>(asn1_UTCTime_e, nullptr);
  expect_nothing<UTCTime>(asn1_UTCTime_e, "");
  expect_nothing<GeneralizedTime>(asn1_GeneralizedTime_e, nullptr);
  expect_nothing<GeneralizedTime>(asn1_GeneralizedTime_e, "");
  expect_nothing<Time>(asn1_Time_e, nullptr);
  for (const uint8_t kind : {utc, generalized}) {
    expect_nothing<Time>(asn1_Time_e, time_of(kind, "").get());
    expect_nothing<Time>(asn1_Time_e, time_of(kind, nullptr).get());
  }
}

TEST(TimeEncoder, WritesNothingForAnUnknownKind) {
  expect_nothing<Time>(asn1_Time_e, Record(asn1_Time_new()).get());
  for (const uint8_t kind : {uint8_t{0}, uint8_t{22}, uint8_t{25}, uint8_t{0x97}}) {
    Record t = time_of(kind, "260131120000Z");
    expect_nothing<Time>(asn1_Time_e, t.get());
    t->kind = utc;
  }
}

// ---- decoders -----------------------------------------------------------------------------------

TEST(TimeDecoder, TakesATextWithoutALookAtIt) {
  const auto u = decode(asn1_UTCTime_d, hex("17 03 41 42 43 FF"));
  const UtcText utc_released(u.record);
  EXPECT_EQ(5, u.consumed);
  EXPECT_STREQ("ABC", u.record);
  const auto g = decode(asn1_GeneralizedTime_d, hex("18 03 41 42 43 FF"));
  const GeneralizedText generalized_released(g.record);
  EXPECT_EQ(5, g.consumed);
  EXPECT_STREQ("ABC", g.record);

  time_t seconds = untouched;
  EXPECT_EQ(-1, asn1_UTCTime2Seconds(&seconds, u.record));
  EXPECT_EQ(-1, asn1_GeneralizedTime2Seconds(&seconds, g.record));
  EXPECT_EQ(untouched, seconds);
}

TEST(TimeDecoder, TakesAnEmptyText) {
  const auto u = decode(asn1_UTCTime_d, hex("17 00"));
  EXPECT_EQ(2, u.consumed);
  EXPECT_STREQ("", UtcText(u.record).get());
  const auto g = decode(asn1_GeneralizedTime_d, hex("18 81 00"));
  EXPECT_EQ(3, g.consumed);
  EXPECT_STREQ("", GeneralizedText(g.record).get());
}

TEST(TimeDecoder, FillsABufferOfTheUsualSize) {
  const UtcText u(decode(asn1_UTCTime_d, hex("17 03 41 42 43")).record);
  ASSERT_NE(nullptr, u);
  EXPECT_EQ("ABC" + std::string(15, '\0'), std::string(u.get(), 18));
  const GeneralizedText g(decode(asn1_GeneralizedTime_d, hex("18 03 41 42 43")).record);
  ASSERT_NE(nullptr, g);
  EXPECT_EQ("ABC" + std::string(24, '\0'), std::string(g.get(), 27));
}

TEST(TimeDecoder, KeepsATextThatIsLongerThanTheUsualBuffer) {
  for (const size_t length : {17u, 18u, 19u, 26u, 27u, 28u, 1000u}) {
    SCOPED_TRACE(length);
    std::string longer(length, '1');
    longer.back() = 'Z';
    const UtcText u(decode(asn1_UTCTime_d, element(utc, text(longer))).record);
    EXPECT_STREQ(longer.c_str(), u.get());
    const GeneralizedText g(
        decode(asn1_GeneralizedTime_d, element(generalized, text(longer))).record);
    EXPECT_STREQ(longer.c_str(), g.get());
    const Record t(decode(asn1_Time_d, element(utc, text(longer))).record);
    ASSERT_NE(nullptr, t);
    EXPECT_STREQ(longer.c_str(), t->value);
  }
}

TEST(TimeDecoder, KeepsOctetsBehindANulWhichEndsTheText) {
  const UtcText u(decode(asn1_UTCTime_d, hex("17 03 41 00 42")).record);
  ASSERT_NE(nullptr, u);
  EXPECT_EQ(std::string("A\0B\0", 4), std::string(u.get(), 4));
  EXPECT_EQ(hex("17 01 41"), encode(asn1_UTCTime_e, u.get()));
}

TEST(TimeDecoder, TakesAnImplicitTag) {
  const auto u = decode(asn1_UTCTime_d, hex("80 03 41 42 43"), 0x80);
  EXPECT_EQ(5, u.consumed);
  EXPECT_STREQ("ABC", UtcText(u.record).get());
  const auto g = decode(asn1_GeneralizedTime_d, hex("81 03 41 42 43"), 0x181);
  EXPECT_EQ(5, g.consumed);
  EXPECT_STREQ("ABC", GeneralizedText(g.record).get());
}

TEST(TimeDecoder, RefusesABadHeaderAndClearsThePlace) {
  const char *const rests[] = {
      "",                      // no length
      "80 41 42 00 00",        // indefinite
      "04 41 42 43",           // length past the end
      "82 01",                 // length octets past the end
      "85 00 00 00 00 01 41",  // more than four length octets
      "84 80 00 00 00",        // a top-bit length, with nothing
      "84 80 00 00 01 41",     // or something after it
      "84 FF FF FF FF 41 42",
  };
  char before;
  for (const char *rest : rests) {
    SCOPED_TRACE(rest);
    EXPECT_EQ(nullptr, left_by_refusal(asn1_UTCTime_d, hex("17") + hex(rest), &before));
    EXPECT_EQ(nullptr, left_by_refusal(asn1_GeneralizedTime_d, hex("18") + hex(rest), &before));
  }
  // The inputs are empty, have other tags, or the constructed form.
  for (const char *input : {"", "18 01 41", "97 01 41", "37 03 17 01 41", "37 80 00 00"})
    EXPECT_EQ(nullptr, left_by_refusal(asn1_UTCTime_d, hex(input), &before)) << input;
  for (const char *input : {"", "17 01 41", "98 01 41", "38 03 18 01 41", "38 80 00 00"})
    EXPECT_EQ(nullptr, left_by_refusal(asn1_GeneralizedTime_d, hex(input), &before)) << input;
  EXPECT_EQ(nullptr, left_by_refusal(asn1_UTCTime_d, hex("17 01 41"), &before, 0x80));
  EXPECT_EQ(nullptr, left_by_refusal(asn1_GeneralizedTime_d, hex("A0 01 41"), &before, 0x80));
}

TEST(TimeDecoder, LeavesThePlaceAloneWithoutAnInput) {
  const Bytes input = hex("17 01 41 18 01 41");
  const uint8_t *const z = input.data();
  char before;
  char *place = &before;
  EXPECT_EQ(nullptr, asn1_UTCTime_d(nullptr, z + 3, 0, &place, 0));
  EXPECT_EQ(nullptr, asn1_UTCTime_d(nullptr, nullptr, 0, &place, 0));
  EXPECT_EQ(nullptr, asn1_GeneralizedTime_d(nullptr, z + 6, 0, &place, 0));
  EXPECT_EQ(&before, place);
}

TEST(TimeDecoder, RefusesToReadIntoNoPlace) {
  const Bytes input = hex("17 01 41 18 01 41");
  const uint8_t *const z = input.data();
  const auto lines = trace_lines([&] {
    EXPECT_EQ(nullptr, asn1_UTCTime_d(z, z + 3, 0, nullptr, 1));
    EXPECT_EQ(nullptr, asn1_GeneralizedTime_d(z + 3, z + 6, 0, nullptr, 1));
    EXPECT_EQ(nullptr, asn1_Time_d(z, z + 3, 0, nullptr, 1));
  });
  EXPECT_EQ(Lines{}, lines);
}

TEST(TimeDecoder, ChoosesTheKindByTheIdentifierOctet) {
  const auto u = decode(asn1_Time_d, element(utc, text("260131120000Z")));
  const Record utc_released(u.record);
  EXPECT_EQ(15, u.consumed);
  ASSERT_NE(nullptr, u.record);
  EXPECT_EQ(utc, u.record->kind);
  EXPECT_STREQ("260131120000Z", u.record->value);

  const auto g = decode(asn1_Time_d, element(generalized, text("20260131120000Z")));
  const Record generalized_released(g.record);
  EXPECT_EQ(17, g.consumed);
  ASSERT_NE(nullptr, g.record);
  EXPECT_EQ(generalized, g.record->kind);
  EXPECT_STREQ("20260131120000Z", g.record->value);
}

TEST(TimeDecoder, RefusesEveryOtherIdentifierOctetOfAChoice) {
  Time before{};
  for (int octet = 0; octet < 256; ++octet) {
    if (octet == utc || octet == generalized) continue;
    const Bytes input{static_cast<uint8_t>(octet), 1, 0x41};
    EXPECT_EQ(nullptr, left_by_refusal(asn1_Time_d, input, &before)) << octet;
  }
}

TEST(TimeDecoder, RefusesAChoiceWithNothingOrABadHeader) {
  Time before{};
  for (const char *input : {"", "17", "17 04 41 42 43", "18 80 41 00 00", "18 84 80 00 00 01 41"})
    EXPECT_EQ(nullptr, left_by_refusal(asn1_Time_d, hex(input), &before)) << input;

  Time *place = &before;
  EXPECT_EQ(nullptr, asn1_Time_d(nullptr, nullptr, 0, &place, 0));
  EXPECT_EQ(nullptr, place);
}

TEST(TimeDecoder, HandsTheImplicitTagOfAChoiceToTheAlternative) {
  Time before{};
  EXPECT_EQ(nullptr, left_by_refusal(asn1_Time_d, hex("17 01 41"), &before, 0x80));
  EXPECT_EQ(nullptr, left_by_refusal(asn1_Time_d, hex("17 01 41"), &before, generalized));
  EXPECT_EQ(nullptr, left_by_refusal(asn1_Time_d, hex("80 01 41"), &before, 0x80));
  const auto same = decode(asn1_Time_d, hex("17 01 41"), utc);
  EXPECT_EQ(3, same.consumed);
  const Record released(same.record);
}

// ---- trace --------------------------------------------------------------------------------------

template <class T>
Lines traced(const uint8_t *(*element_d)(const uint8_t *, const uint8_t *, uint32_t, T **,
                                         uint32_t),
             void (*element_free)(T *), const Bytes &input, uint32_t depth, uint32_t impl_tag = 0) {
  return trace_lines([&] { element_free(decode(element_d, input, impl_tag, depth).record); });
}

TEST(TimeTrace, ShowsHeaderAndText) {
  const Bytes u = element(utc, text("260131120000Z"));
  const Bytes g = element(generalized, text("20260131120000Z"));
  EXPECT_EQ((Lines{"UTCTIME ", "  \"260131120000Z\""}),
            traced(asn1_UTCTime_d, asn1_UTCTime_free, u, 1));
  EXPECT_EQ((Lines{". . GENERALIZEDTIME ", ". .   \"20260131120000Z\""}),
            traced(asn1_GeneralizedTime_d, asn1_GeneralizedTime_free, g, 3));
  EXPECT_EQ((Lines{"UTCTIME ", "  \"A\""}),
            traced(asn1_UTCTime_d, asn1_UTCTime_free, hex("17 03 41 00 42"), 1));
}

TEST(TimeTrace, ShowsAnImplicitTag) {
  EXPECT_EQ((Lines{"CONTEXT-SPECIFIC PRIMITIVE [0] UTCTIME ", "  \"\""}),
            traced(asn1_UTCTime_d, asn1_UTCTime_free, hex("80 00"), 1, 0x80));
  EXPECT_EQ(
      (Lines{"CONTEXT-SPECIFIC PRIMITIVE [0] GENERALIZEDTIME ", "  \"ABC\""}),
      traced(asn1_GeneralizedTime_d, asn1_GeneralizedTime_free, hex("80 03 41 42 43"), 1, 0x80));
}

TEST(TimeTrace, ShowsAChoiceAtItsOwnDepthWithoutAClosingLine) {
  EXPECT_EQ((Lines{"UTCTIME ", "  \"ABC\""}),
            traced(asn1_Time_d, asn1_Time_free, hex("17 03 41 42 43"), 1));
  EXPECT_EQ((Lines{". . GENERALIZEDTIME ", ". .   \"ABC\""}),
            traced(asn1_Time_d, asn1_Time_free, hex("18 03 41 42 43"), 3));
}

TEST(TimeTrace, TellsALengthBehindTheEnd) {
  EXPECT_EQ((Lines{". UTCTIME ", ". z larger than end!"}),
            traced(asn1_UTCTime_d, asn1_UTCTime_free, hex("17 04 41 42 43"), 2));
  EXPECT_EQ((Lines{". GENERALIZEDTIME ", ". z larger than end!"}),
            traced(asn1_Time_d, asn1_Time_free, hex("18 82 01"), 2));
}

TEST(TimeTrace, IsSilentAtDepth0AndForAnOctetOfNoTime) {
  EXPECT_EQ(Lines{}, traced(asn1_Time_d, asn1_Time_free, hex("17 03 41 42 43"), 0));
  EXPECT_EQ(Lines{}, traced(asn1_Time_d, asn1_Time_free, hex("02 03 41 42 43"), 1));
}

// ---- text to seconds ----------------------------------------------------------------------------

/// Checks the seconds of a text, with UTC as the process's zone.
class TimeInUtc : public testing::Test {
 private:
  Zone zone_{"UTC0"};
};

TEST_F(TimeInUtc, TwoDigitYearsRunFrom1950To2049) {
  EXPECT_EQ(if_held(2524607999), utc_seconds("491231235959Z"));
  EXPECT_EQ(-631152000, utc_seconds("500101000000Z"));
  EXPECT_EQ(1893456000, utc_seconds("300101000000Z"));
  EXPECT_EQ(946684799, utc_seconds("991231235959Z"));
  EXPECT_EQ(951786123, utc_seconds("000229010203Z"));
}

TEST_F(TimeInUtc, FourDigitYearsRunFrom0To9999) {
  EXPECT_EQ(1577880000, generalized_seconds("20200101120000Z"));
  EXPECT_EQ(if_held(2524608000), generalized_seconds("20500101000000Z"));
  EXPECT_EQ(if_held(253402300799), generalized_seconds("99991231235959Z"));
  EXPECT_EQ(if_held(-62135596800), generalized_seconds("00010101000000Z"));
  EXPECT_EQ(if_held(-62167219200), generalized_seconds("00000101000000Z"));
  EXPECT_EQ(if_held(-2147483648), generalized_seconds("19011213204552Z"));
}

TEST_F(TimeInUtc, SecondsOfAUTCTimeMayBeLeftOut) {
  EXPECT_EQ(1577880000, utc_seconds("2001011200Z"));
  EXPECT_EQ(1577880000, utc_seconds("200101120000Z"));
  EXPECT_EQ(1577880007, utc_seconds("200101120007Z"));
}

TEST_F(TimeInUtc, AnOffsetIsTakenOff) {
  EXPECT_EQ(1577876400, utc_seconds("200101120000+0100"));
  EXPECT_EQ(1577880000 + 1800, utc_seconds("2001011200-0030"));
  EXPECT_EQ(1577880000 - 5400, generalized_seconds("20200101120000+0130"));
  EXPECT_EQ(1577880000, generalized_seconds("20200101120000-0000"));
}

TEST_F(TimeInUtc, AnOffsetHasNoRange) {
  constexpr int64_t most = 60 * (99 * 60 + 99);
  EXPECT_EQ(1577880000 - most, utc_seconds("200101120000+9999"));
  EXPECT_EQ(1577880000 + most, utc_seconds("200101120000-9999"));
  EXPECT_EQ(1577880000 + most, generalized_seconds("20200101120000-9999"));
}

TEST_F(TimeInUtc, FieldsOutOfRangeRollOver) {
  EXPECT_EQ(utc_seconds("210101010000Z"), utc_seconds("201301010000Z"));
  EXPECT_EQ(1575158400, utc_seconds("200001000000Z"));  // month 0: December 2019
  EXPECT_EQ(1577750400, utc_seconds("200100000000Z"));  // day 0: 31 December 2019
  EXPECT_EQ(utc_seconds("200201000000Z"), utc_seconds("200132000000Z"));
  EXPECT_EQ(utc_seconds("200102010000Z"), utc_seconds("200101250000Z"));
  EXPECT_EQ(utc_seconds("200101130100Z"), utc_seconds("200101126100Z"));
  EXPECT_EQ(utc_seconds("200101120101Z"), utc_seconds("200101120061Z"));
  EXPECT_EQ(generalized_seconds("20210101010000Z"), generalized_seconds("20201301010000Z"));
  EXPECT_EQ(1577880000 + 99, generalized_seconds("20200101120099Z"));
}

TEST_F(TimeInUtc, TheSecondBefore1970CannotBeTold) {
  EXPECT_EQ(std::nullopt, utc_seconds("691231235959Z"));
  EXPECT_EQ(std::nullopt, generalized_seconds("19691231235959Z"));
  EXPECT_EQ(std::nullopt, utc_seconds("691231235959+0100"));
  // An offset may lead there.
  EXPECT_EQ(-1, utc_seconds("700101005959+0100"));
  EXPECT_EQ(-1, utc_seconds("691231225959-0100"));
  EXPECT_EQ(0, utc_seconds("700101000000Z"));
  EXPECT_EQ(-2, utc_seconds("691231235958Z"));
}

TEST_F(TimeInUtc, SecondsThatTheTypeDoesNotHoldFail) {
  EXPECT_EQ(2147483647, utc_seconds("380119031407Z"));
  EXPECT_EQ(if_held(2147483648), utc_seconds("380119031408Z"));
  EXPECT_EQ(if_held(2147483707), utc_seconds("380119031407-0001"));
  EXPECT_EQ(if_held(-2147483708), generalized_seconds("19011213204552+0001"));
}

TEST_F(TimeInUtc, RefusesUTCTimesThatAreNone) {
  for (const char *text : {"",
                           "ABC",
                           "2",
                           "200101120",           // a digit short
                           "200101120Z",          //
                           "2001011200",          // no zone
                           "200101120000",        //
                           "20010112000Z",        // one digit of seconds
                           "2001011200000Z",      // three digits of seconds
                           "200101120000z",       //
                           "200101120000Z ",      // something after the zone
                           "200101120000ZZ",      //
                           "200101120000.5Z",     // a fraction
                           "200101120000 Z",      //
                           "200101120000+",       // short offsets
                           "200101120000+01",     //
                           "200101120000+010",    //
                           "200101120000-01:00",  //
                           "200101120000+01000",  //
                           "200101120000+0100Z",  //
                           "200101120000+01a0",   //
                           " 200101120000Z",      //
                           "20 101120000Z",       //
                           "-200101120000Z",      //
                           "2001O1120000Z"})      // a letter
    EXPECT_EQ(std::nullopt, utc_seconds(text)) << text;
}

TEST_F(TimeInUtc, RefusesGeneralizedTimesThatAreNone) {
  for (const char *text :
       {"", "ABC",
        "202001011200Z",       // no seconds
        "2020010112000Z",      //
        "2020010112000",       //
        "20200101120000",      // no zone
        "20200101120000z",     //
        "20200101120000.5Z",   // a fraction
        "20200101120000,5Z",   //
        "202001011200001Z",    // fifteen digits
        "20200101120000Z ",    // something after the zone
        "20200101120000+01",   // short offsets
        "20200101120000+010",  //
        "20200101120000+01000", "20200101120000+01:0", "-2020010112000Z", "200101120000Z"})
    EXPECT_EQ(std::nullopt, generalized_seconds(text)) << text;
}

TEST_F(TimeInUtc, RefusesDigitsOfOtherCharacterTables) {
  EXPECT_EQ(std::nullopt, utc_seconds("200101120\xB2Z"));  // superscript two in Latin-1
  EXPECT_EQ(std::nullopt, utc_seconds("2001011200\xB2\xB2Z"));
  EXPECT_EQ(std::nullopt, utc_seconds("20010112000\xB2Z"));
  EXPECT_EQ(std::nullopt, utc_seconds("200101120000+010\xFF"));
  EXPECT_EQ(std::nullopt, utc_seconds("\xD9\xA0"
                                      "0101120000Z"));  // an Arabic digit in UTF-8
  EXPECT_EQ(std::nullopt, generalized_seconds("2020010112000\x80Z"));
}

TEST_F(TimeInUtc, RefusesNullAnUnknownKindAndAMissingText) {
  const Record good = time_of(utc, "200101120000Z");
  time_t seconds = untouched;
  EXPECT_EQ(-1, asn1_Time2Seconds(nullptr, good.get()));
  EXPECT_EQ(-1, asn1_Time2Seconds(&seconds, nullptr));
  EXPECT_EQ(-1, asn1_UTCTime2Seconds(nullptr, "200101120000Z"));
  EXPECT_EQ(-1, asn1_GeneralizedTime2Seconds(nullptr, "20200101120000Z"));
  EXPECT_EQ(-1, asn1_UTCTime2Seconds(&seconds, nullptr));
  EXPECT_EQ(-1, asn1_GeneralizedTime2Seconds(&seconds, nullptr));
  EXPECT_EQ(-1, asn1_Time2Seconds(&seconds, time_of(utc, nullptr).get()));
  EXPECT_EQ(-1, asn1_Time2Seconds(&seconds, time_of(generalized, nullptr).get()));
  for (const uint8_t kind : {uint8_t{0}, uint8_t{22}, uint8_t{0x97}}) {
    good->kind = kind;
    EXPECT_EQ(-1, asn1_Time2Seconds(&seconds, good.get()));
  }
  good->kind = utc;
  EXPECT_EQ(untouched, seconds);
}

TEST_F(TimeInUtc, ReadsByTheKindAndNotByTheText) {
  EXPECT_EQ(std::nullopt, generalized_seconds("200101120000Z"));
  // As a UTCTime: 20-20-01 01:12:00, month 20 of 2020.
  EXPECT_EQ(utc_seconds("210801011200Z"), utc_seconds("202001011200Z"));
}

TEST(TimeInAnyZone, OffsetsGiveTheSameSecondsAsTheTimeTheyMean) {
  for (const char *zone : zones) {
    SCOPED_TRACE(zone);
    const Zone here(zone);
    ASSERT_NE(std::nullopt, utc_seconds("200101110000Z"));
    EXPECT_EQ(utc_seconds("200101110000Z"), utc_seconds("200101120000+0100"));
    EXPECT_EQ(utc_seconds("2001011230Z"), utc_seconds("2001011200-0030"));
    EXPECT_EQ(utc_seconds("200101120000Z"), generalized_seconds("20200101120000Z"));
  }
}

TEST(TimeInAnyZone, SecondsAreOffByTheStandardOffsetInSummerAndWinter) {
  struct {
    const char *zone;
    int64_t east;
  } const rows[] = {{"UTC0", 0}, {"XXX-1", 3600}, {"EST5EDT", -18000}};
  for (const auto &row : rows) {
    SCOPED_TRACE(row.zone);
    const Zone here(row.zone);
    EXPECT_EQ(1577880000 - row.east, utc_seconds("200101120000Z"));
    EXPECT_EQ(1593604800 - row.east, utc_seconds("200701120000Z"));
    EXPECT_EQ(1577880000 - row.east, generalized_seconds("20200101120000Z"));
    EXPECT_EQ(1593604800 - row.east, generalized_seconds("20200701120000Z"));
  }
}

// Irish standard time is that of the summer; in winter, daylight saving of minus one hour is in force.
// Standard time counts in both.
TEST(TimeInAnyZone, DaylightSavingMayBeNegative) {
  const Zone here("IST-1GMT0,M10.5.0,M3.5.0/1");
  const time_t january = 1577880000;
  struct tm local = {};
  ASSERT_NE(nullptr, localtime_r(&january, &local));
  ASSERT_LT(0, local.tm_isdst);
  ASSERT_EQ(12, local.tm_hour);  // which is that of UTC
  for (const char *text : {"200101120000Z", "200101130000+0100"}) {
    EXPECT_EQ(1577880000 - 3600, utc_seconds(text)) << text;
  }
  EXPECT_EQ(1593604800 - 3600, utc_seconds("200701120000Z"));
  EXPECT_EQ(1577880000 - 3600, generalized_seconds("20200101120000Z"));
  EXPECT_EQ(1593604800 - 3600, generalized_seconds("20200701120000Z"));
  EXPECT_EQ(1, asn1_UTCTime_cmp("200701120000Z", "200101120000Z"));
  EXPECT_EQ("200101120000Z", utc_text(1577880000));
}

TEST(TimeInAnyZone, AnHourEastOfUtcOneOClockIsZero) {
  const Zone here("XXX-1");
  EXPECT_EQ(0, utc_seconds("700101010000Z"));
  EXPECT_EQ(0, generalized_seconds("19700101010000Z"));
  EXPECT_EQ(std::nullopt, utc_seconds("700101005959Z"));
}

TEST(TimeInAnyZone, TextsOfSecondsAreInUtc) {
  for (const char *zone : zones) {
    SCOPED_TRACE(zone);
    const Zone here(zone);
    EXPECT_EQ("700101000000Z", utc_text(0));
    EXPECT_EQ("19700101000000Z", generalized_text(0));
    EXPECT_EQ("200701120000Z", utc_text(1593604800));
  }
}

// ---- comparison ---------------------------------------------------------------------------------

TEST(TimeComparison, TellsLaterFromEarlierInAnyZone) {
  for (const char *zone : zones) {
    SCOPED_TRACE(zone);
    const Zone here(zone);
    const Record early = time_of(utc, "200101120000Z"), late = time_of(utc, "200101120001Z");
    EXPECT_EQ(0, asn1_Time_cmp(early.get(), early.get()));
    EXPECT_EQ(2, asn1_Time_cmp(early.get(), late.get()));
    EXPECT_EQ(1, asn1_Time_cmp(late.get(), early.get()));
    EXPECT_EQ(0, asn1_UTCTime_cmp("200101120000+0100", "2001011100Z"));
    EXPECT_EQ(2, asn1_UTCTime_cmp("500101000000Z", "371231235959Z"));
    EXPECT_EQ(1, asn1_UTCTime_cmp("371231235959Z", "500101000000Z"));
    EXPECT_EQ(0, asn1_GeneralizedTime_cmp("20200101120000+0100", "20200101110000Z"));
    EXPECT_EQ(1, asn1_GeneralizedTime_cmp("20200101120001Z", "20200101120000Z"));
    EXPECT_EQ(2, asn1_GeneralizedTime_cmp("20200101120000Z", "20200101120001Z"));
  }
}

TEST(TimeComparison, ComparesTheTwoKindsWithEachOther) {
  const Record u = time_of(utc, "200101120000Z");
  EXPECT_EQ(0, asn1_Time_cmp(u.get(), time_of(generalized, "20200101120000Z").get()));
  EXPECT_EQ(1, asn1_Time_cmp(u.get(), time_of(generalized, "20200101115959Z").get()));
  EXPECT_EQ(2, asn1_Time_cmp(u.get(), time_of(generalized, "20200101120001Z").get()));
}

TEST(TimeComparison, FailsForNullAnUnknownKindAndATextThatIsNoTime) {
  const Record good = time_of(utc, "200101120000Z"), bad = time_of(utc, "ABC"),
               none = time_of(utc, nullptr), kind0 = time_of(0, nullptr);
  EXPECT_EQ(-1, asn1_Time_cmp(nullptr, nullptr));
  for (const Time *other :
       {static_cast<const Time *>(nullptr), static_cast<const Time *>(bad.get()),
        static_cast<const Time *>(none.get()), static_cast<const Time *>(kind0.get())}) {
    EXPECT_EQ(-1, asn1_Time_cmp(good.get(), other));
    EXPECT_EQ(-1, asn1_Time_cmp(other, good.get()));
  }
  EXPECT_EQ(-1, asn1_Time_cmp(bad.get(), bad.get()));
  EXPECT_EQ(-1, asn1_UTCTime_cmp("ABC", "200101120000Z"));
  EXPECT_EQ(-1, asn1_UTCTime_cmp("200101120000Z", nullptr));
  EXPECT_EQ(-1, asn1_UTCTime_cmp(nullptr, "200101120000Z"));
  EXPECT_EQ(-1, asn1_GeneralizedTime_cmp("20200101120000Z", "200101120000Z"));
  EXPECT_EQ(-1, asn1_GeneralizedTime_cmp(nullptr, "20200101120000Z"));
}

// ---- seconds to text ----------------------------------------------------------------------------

TEST(TimeFromSeconds, WritesSecondsAndZ) {
  EXPECT_EQ("491231235959Z", wide ? utc_text(2524607999) : "491231235959Z");
  EXPECT_EQ("000229010203Z", utc_text(951786123));
  EXPECT_EQ("691231235959Z", utc_text(-1));
  EXPECT_EQ("20000229010203Z", generalized_text(951786123));
  EXPECT_EQ("19691231235959Z", generalized_text(-1));
  EXPECT_EQ("19011213204552Z", generalized_text(-2147483648));
}

TEST(TimeFromSeconds, WritesAYearOf2050ThatReadsBackAs1950) {
  if constexpr (wide) {
    EXPECT_EQ("500101000000Z", utc_text(2524608000));
  }
  const Zone here("UTC0");
  EXPECT_EQ(-631152000, utc_seconds("500101000000Z"));
}

TEST(TimeFromSeconds, WritesYearsBefore1900WithASign) {
  if constexpr (wide) {
    EXPECT_EQ(
        "-01"
        "1231235959Z",
        utc_text(-2208988801));
    EXPECT_EQ(
        "-99"
        "0101000000Z",
        utc_text(-5333126400));
    EXPECT_EQ("18991231235959Z", generalized_text(-2208988801));
    EXPECT_EQ("00000101000000Z", generalized_text(-62167219200));
    EXPECT_EQ("-00010101000000Z", generalized_text(-62198755200));
  }
}

TEST(TimeFromSeconds, WritesYearsOfMoreThanFourDigits) {
  if constexpr (wide) {
    EXPECT_EQ("100000101000000Z", generalized_text(253402300800));
    EXPECT_EQ("000101000000Z", utc_text(253402300800));
    // The last year that an int holds, and those after it.
    EXPECT_EQ("21474836471231235959Z", generalized_text(67767976233532799));
    EXPECT_EQ(nullptr, asn1_Seconds2GeneralizedTime(nullptr, 67767976233532800));
    EXPECT_EQ(nullptr, asn1_Seconds2GeneralizedTime(nullptr, no_date - 1));
    // Two digits hold any year: the years 2147483648 and 2147485547 are 2147481748 and 2147483647
    // years after 1900.
    EXPECT_EQ("480101000000Z", utc_text(67767976233532800));
    EXPECT_EQ("471231235959Z", utc_text(no_date - 1));
  }
}

TEST(TimeFromSeconds, FillsTheBufferGiven) {
  char u[18], g[27];
  std::memset(u, 'x', sizeof u);
  std::memset(g, 'x', sizeof g);
  EXPECT_EQ(u, asn1_Seconds2UTCTime(u, 1577880000));
  EXPECT_STREQ("200101120000Z", u);
  EXPECT_EQ(g, asn1_Seconds2GeneralizedTime(g, 1577880000));
  EXPECT_STREQ("20200101120000Z", g);
}

TEST(TimeFromSeconds, MakesATextWithABufferOfTheUsualSize) {
  const UtcText u(asn1_Seconds2UTCTime(nullptr, 0));
  EXPECT_EQ("700101000000Z" + std::string(5, '\0'), std::string(u.get(), 18));
  const GeneralizedText g(asn1_Seconds2GeneralizedTime(nullptr, 0));
  EXPECT_EQ("19700101000000Z" + std::string(12, '\0'), std::string(g.get(), 27));
}

TEST(TimeFromSeconds, IsNullForSecondsWithoutABrokenDownTime) {
  if constexpr (wide) {
    char buffer[27] = "kept";
    for (const int64_t seconds :
         {no_date, std::numeric_limits<int64_t>::max(), std::numeric_limits<int64_t>::min()}) {
      const time_t none = static_cast<time_t>(seconds);
      EXPECT_EQ(nullptr, asn1_Seconds2UTCTime(nullptr, none));
      EXPECT_EQ(nullptr, asn1_Seconds2UTCTime(buffer, none));
      EXPECT_EQ(nullptr, asn1_Seconds2GeneralizedTime(nullptr, none));
      EXPECT_EQ(nullptr, asn1_Seconds2GeneralizedTime(buffer, none));
      EXPECT_EQ(nullptr, asn1_Seconds2Time(nullptr, none));
      for (const uint8_t kind : {utc, generalized}) {
        const Record t = time_of(kind, "20260131120000Z and room to write");
        EXPECT_EQ(nullptr, asn1_Seconds2Time(t.get(), none));
        EXPECT_EQ(kind, t->kind);
        EXPECT_EQ(nullptr, asn1_Seconds2Time(time_of(kind, nullptr).get(), none));
      }
    }
    EXPECT_STREQ("kept", buffer);
  }
}

TEST(TimeFromSeconds, MakesAGeneralizedTimeWhereNoRecordIsGiven) {
  const Record t(asn1_Seconds2Time(nullptr, 1577880000));
  ASSERT_NE(nullptr, t);
  EXPECT_EQ(generalized, t->kind);
  EXPECT_STREQ("20200101120000Z", t->value);
}

TEST(TimeFromSeconds, FillsARecordByItsKind) {
  const Record u(asn1_Time_new());
  u->kind = utc;
  u->value = asn1_UTCTime_new();
  EXPECT_EQ(u.get(), asn1_Seconds2Time(u.get(), 1577880000));
  EXPECT_EQ(utc, u->kind);
  EXPECT_STREQ("200101120000Z", u->value);

  const Record g(asn1_Time_new());
  g->kind = generalized;
  g->value = asn1_GeneralizedTime_new();
  EXPECT_EQ(g.get(), asn1_Seconds2Time(g.get(), 1577880000));
  EXPECT_EQ(generalized, g->kind);
  EXPECT_STREQ("20200101120000Z", g->value);
}

TEST(TimeFromSeconds, FillsADecodedRecordWhateverItsText) {
  const Record u(decode(asn1_Time_d, hex("17 03 41 42 43")).record);
  EXPECT_EQ(u.get(), asn1_Seconds2Time(u.get(), 1577880000));
  EXPECT_STREQ("200101120000Z", u->value);
  const Record g(decode(asn1_Time_d, hex("18 00")).record);
  EXPECT_EQ(g.get(), asn1_Seconds2Time(g.get(), 1577880000));
  EXPECT_STREQ("20200101120000Z", g->value);
}

TEST(TimeFromSeconds, FillsACloneWhoseTextIsShorter) {
  for (const auto &[kind, expected] :
       {std::pair{utc, "200101120000Z"}, {generalized, "20200101120000Z"}}) {
    for (const char *text : {"", "ABC", "2001011200Z"}) {
      const Record copy(asn1_Time_clone(time_of(kind, text).get()));
      ASSERT_NE(nullptr, copy);
      EXPECT_EQ(copy.get(), asn1_Seconds2Time(copy.get(), 1577880000));
      EXPECT_STREQ(expected, copy->value);

      const Record now(asn1_Time_clone(time_of(kind, text).get()));
      ASSERT_NE(nullptr, now);
      EXPECT_EQ(now.get(), asn1_Time_get(now.get()));
      EXPECT_EQ(std::strlen(expected), std::strlen(now->value));
    }
  }
}

TEST(TimeFromSeconds, KeepsARecordWithoutATextAsItIs) {
  for (const uint8_t kind : {utc, generalized}) {
    const Record t = time_of(kind, nullptr);
    EXPECT_EQ(t.get(), asn1_Seconds2Time(t.get(), 1577880000));
    EXPECT_EQ(nullptr, t->value);
    EXPECT_EQ(kind, t->kind);
    EXPECT_EQ(t.get(), asn1_Time_get(t.get()));
    EXPECT_EQ(nullptr, t->value);
  }
}

TEST(TimeFromSeconds, IsNullForAnUnknownKind) {
  for (const uint8_t kind : {uint8_t{0}, uint8_t{22}, uint8_t{0x97}}) {
    const Record t = time_of(kind, "20260131120000Z");
    EXPECT_EQ(nullptr, asn1_Seconds2Time(t.get(), 0));
    EXPECT_EQ(nullptr, asn1_Time_get(t.get()));
    EXPECT_EQ(kind, t->kind);
    EXPECT_STREQ("20260131120000Z", t->value);
    t->kind = utc;
  }
}

TEST(TimeFromSeconds, ReadsBackToTheSameSecondsInUtcOnly) {
  for (const auto &[zone, difference] : {std::pair{"UTC0", 0}, {"XXX-1", 3600}}) {
    const Zone here(zone);
    for (const int64_t seconds : {-631152000, 0, 951786123, 1577880000, 2147479999}) {
      EXPECT_EQ(seconds - difference, utc_seconds(utc_text(seconds).c_str()));
      EXPECT_EQ(seconds - difference, generalized_seconds(generalized_text(seconds).c_str()));
    }
  }
}

TEST(TimeFromSeconds, ThreadsDoNotDisturbEachOther) {
  const auto write = [](int64_t seconds, const char *expected) {
    for (int i = 0; i < 2000; ++i) ASSERT_EQ(expected, generalized_text(seconds));
  };
  std::thread first(write, 951786123, "20000229010203Z");
  std::thread second(write, 1577880000, "20200101120000Z");
  first.join();
  second.join();
}

// ---- the clock ----------------------------------------------------------------------------------

/// Runs `f`, which returns the seconds that it took from the clock. Compares them with the clock.
template <class F>
void expect_now(F f) {
  const int64_t before = time(nullptr);
  const std::optional<int64_t> now = f();
  const int64_t after = time(nullptr);
  ASSERT_NE(std::nullopt, now);
  EXPECT_LE(before, *now);
  EXPECT_GE(after, *now);
}

TEST(TimeFromClock, MakesAGeneralizedTimeWhereNoRecordIsGiven) {
  const Zone here("UTC0");
  expect_now([] {
    const Record t(asn1_Time_get(nullptr));
    EXPECT_EQ(generalized, t->kind);
    return generalized_seconds(t->value);
  });
}

TEST(TimeFromClock, FillsARecordByItsKind) {
  const Zone here("UTC0");
  expect_now([] {
    const Record t = time_of(utc, "a text longer than a time's");
    EXPECT_EQ(t.get(), asn1_Time_get(t.get()));
    EXPECT_EQ(utc, t->kind);
    return utc_seconds(t->value);
  });
  expect_now([] {
    const Record t = time_of(generalized, "a text longer than a time's");
    EXPECT_EQ(t.get(), asn1_Time_get(t.get()));
    EXPECT_EQ(generalized, t->kind);
    return generalized_seconds(t->value);
  });
}

TEST(TimeFromClock, FillsOrMakesATextOfEitherKind) {
  const Zone here("UTC0");
  char buffer[27];
  expect_now([&] {
    EXPECT_EQ(buffer, asn1_UTCTime_get(buffer));
    return utc_seconds(buffer);
  });
  expect_now([&] {
    EXPECT_EQ(buffer, asn1_GeneralizedTime_get(buffer));
    return generalized_seconds(buffer);
  });
  expect_now([] { return utc_seconds(UtcText(asn1_UTCTime_get(nullptr)).get()); });
  expect_now(
      [] { return generalized_seconds(GeneralizedText(asn1_GeneralizedTime_get(nullptr)).get()); });
}

// ---- ends of the process and of memory ----------------------------------------------------------

TEST(TimeDeathTest, DecodersNeedAnEnd) {
  const Bytes input = hex("17 00 18 00");
  const uint8_t *const z = input.data();
  char *place = nullptr;
  EXPECT_ASSERT(asn1_UTCTime_d(z, nullptr, 0, &place, 0), "asn1_Tag_d", "end != NULL");
  EXPECT_ASSERT(asn1_GeneralizedTime_d(z + 2, nullptr, 0, &place, 0), "asn1_Tag_d", "end != NULL");
}

#ifndef ORVELASN1_TESTS_SANITIZED
TEST(TimeMemory, IsReleasedWhenItIsExhausted) {
  const Zone here("UTC0");  // makes the runtime set up its time zone
  const Record original = time_of(utc, "260131120000Z");
  expect_failure_at_each_allocation([] { return Record(asn1_Time_new()) != nullptr; });
  expect_failure_at_each_allocation([] { return UtcText(asn1_UTCTime_new()) != nullptr; });
  expect_failure_at_each_allocation(
      [] { return GeneralizedText(asn1_GeneralizedTime_new()) != nullptr; });
  expect_failure_at_each_allocation(
      [&] { return Record(asn1_Time_clone(original.get())) != nullptr; });
  expect_failure_at_each_allocation([] { return UtcText(asn1_UTCTime_clone("7")) != nullptr; });
  expect_failure_at_each_allocation(
      [] { return GeneralizedText(asn1_GeneralizedTime_clone("7")) != nullptr; });
  expect_failure_at_each_allocation(
      [] { return Record(asn1_Seconds2Time(nullptr, 0)) != nullptr; });
  expect_failure_at_each_allocation([] { return Record(asn1_Time_get(nullptr)) != nullptr; });
  expect_failure_at_each_allocation(
      [] { return UtcText(asn1_Seconds2UTCTime(nullptr, 0)) != nullptr; });
  expect_failure_at_each_allocation(
      [] { return GeneralizedText(asn1_Seconds2GeneralizedTime(nullptr, 0)) != nullptr; });
}

TEST(TimeMemory, IsReleasedWhenADecoderExhaustsIt) {
  const Bytes input = hex("17 03 41 42 43 18 03 41 42 43");
  const uint8_t *const u = input.data(), *const g = u + 5;
  const auto expect_failures = [](auto element_d, auto element_free, const uint8_t *z,
                                  auto before) {
    expect_failure_at_each_allocation([&] {
      auto *place = before;
      const bool read = element_d(z, z + 5, 0, &place, 0) != nullptr;
      EXPECT_EQ(read, place != nullptr);
      element_free(place);
      return read;
    });
  };
  char text_before;
  Time record_before{};
  expect_failures(asn1_UTCTime_d, asn1_UTCTime_free, u, &text_before);
  expect_failures(asn1_GeneralizedTime_d, asn1_GeneralizedTime_free, g, &text_before);
  expect_failures(asn1_Time_d, asn1_Time_free, u, &record_before);
  expect_failures(asn1_Time_d, asn1_Time_free, g, &record_before);
}
#endif

}  // namespace

}  // namespace time_test
