// Tests BOOLEAN, ENUMERATED, NULL and ANY.
#include "allocator.h"
#include "support.h"

namespace small_types_test {

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

const Lines no_lines;

// -- BOOLEAN and ENUMERATED ---------------------------------------------------------------------

/// The two types share everything but their tag and their trace.
struct NumberType {
  const char *name;
  uint8_t tag;
  uint32_t (*encode)(uint8_t **, uint32_t);
  const uint8_t *(*decode)(const uint8_t *, const uint8_t *, uint32_t, uint32_t *, uint32_t);
};

const NumberType number_types[] = {
    {"BOOLEAN", 0x01, asn1_Boolean_e, asn1_Boolean_d},
    {"ENUMERATED", 0x0A, asn1_Enumerated_e, asn1_Enumerated_d},
};

// The value of the caller's number before a call.
constexpr uint32_t before = 0x1234;

struct NumberResult {
  long consumed;
  uint32_t value;
};

NumberResult read_number(const NumberType &type, const Bytes &octets, uint32_t impl_tag = 0,
                         uint32_t depth = 0, uint32_t held = before) {
  const Input input(octets);
  NumberResult result{-1, held};
  const uint8_t *next = type.decode(input.z(), input.end(), impl_tag, &result.value, depth);
  if (next != nullptr) result.consumed = next - input.z();
  return result;
}

TEST(NumberEncoders, WriteTheLowOctetOfTheValueAsItStands) {
  const struct {
    uint32_t value;
    uint8_t octet;
  } rows[] = {{0, 0x00},   {1, 0x01},     {127, 0x7F},       {255, 0xFF},
              {300, 0x2C}, {0x100, 0x00}, {0xFFFFFF01, 0x01}};
  for (const NumberType &type : number_types) {
    for (const auto &row : rows) {
      EXPECT_EQ((Bytes{type.tag, 0x01, row.octet}),
                encode_with([&](uint8_t **pp) { return type.encode(pp, row.value); }))
          << type.name << ' ' << row.value;
      EXPECT_EQ(3U, type.encode(nullptr, row.value));
    }
  }
}

TEST(EnumeratedEncoder, CutsThreeHundredToItsLowOctet) {
  EXPECT_EQ(hex("0A 01 2C"), encode_with([](uint8_t **pp) { return asn1_Enumerated_e(pp, 300); }));
}

TEST(NumberDecoders, StoreTheContentOctetZeroExtended) {
  for (const NumberType &type : number_types) {
    for (const uint8_t octet :
         {uint8_t{0}, uint8_t{1}, uint8_t{0x7F}, uint8_t{0x80}, uint8_t{0xFF}}) {
      const NumberResult result = read_number(type, {type.tag, 0x01, octet, 0x55});
      EXPECT_EQ(3, result.consumed) << type.name;
      EXPECT_EQ(octet, result.value) << type.name;
    }
  }
}

TEST(NumberDecoders, AcceptALongerLengthThanNeeded) {
  for (const NumberType &type : number_types) {
    const NumberResult result = read_number(type, Bytes{type.tag} + hex("83 00 00 01 09"));
    EXPECT_EQ(6, result.consumed) << type.name;
    EXPECT_EQ(9U, result.value) << type.name;
  }
}

TEST(NumberDecoders, RefuseAndLeaveTheNumberAlone) {
  for (const NumberType &type : number_types) {
    for (const char *rest : {
             "00",              // no content
             "02 FF FF",        // two octets
             "81 02 FF FF",     // two octets
             "80 FF 00 00",     // indefinite
             "01",              // past the end
             "84 80 00 00 01",  // top bit set
             "84 FF FF FF FF 01",
             "85 00 00 00 00 01 FF",
             "",
         }) {
      const NumberResult result = read_number(type, Bytes{type.tag} + hex(rest));
      EXPECT_EQ(-1, result.consumed) << type.name << ' ' << rest;
      EXPECT_EQ(before, result.value) << type.name << ' ' << rest;
    }
    const Bytes constructed{static_cast<uint8_t>(type.tag | 0x20), 0x01, 0xFF};
    EXPECT_EQ(-1, read_number(type, constructed).consumed) << type.name;
    EXPECT_EQ(-1, read_number(type, hex("02 01 05")).consumed) << type.name;
  }
}

TEST(NumberDecoders, TakeAnImplicitTag) {
  for (const NumberType &type : number_types) {
    EXPECT_EQ(3, read_number(type, hex("81 01 05"), 0x81).consumed);
    EXPECT_EQ(3, read_number(type, hex("81 01 05"), 0x381).consumed);
    EXPECT_EQ(-1, read_number(type, {type.tag, 0x01, 0x05}, 0x81).consumed);
    EXPECT_EQ(3, read_number(type, {type.tag, 0x01, 0x05}, 0x100).consumed);
  }
}

TEST(NumberDecoders, AtOrBehindTheEndKeepTheNumberAndTheCursor) {
  const uint8_t octets[] = {0x01, 0x01, 0x05};
  for (const NumberType &type : number_types) {
    for (const uint8_t *end : {octets + 1, octets, static_cast<const uint8_t *>(nullptr)}) {
      uint32_t value = before;
      EXPECT_EQ(octets + 1, type.decode(octets + 1, end, 0, &value, 0)) << type.name;
      EXPECT_EQ(before, value);
    }
  }
}

TEST(NumberDecoders, WithoutACursorGiveNullAndKeepTheNumber) {
  const uint8_t octet = 0;
  for (const NumberType &type : number_types) {
    uint32_t value = before;
    EXPECT_EQ(nullptr, type.decode(nullptr, &octet, 0, &value, 0)) << type.name;
    EXPECT_EQ(nullptr, type.decode(nullptr, nullptr, 0, &value, 0)) << type.name;
    EXPECT_EQ(before, value);
  }
}

TEST(BooleanDecoder, KeepsAnyOctetAndWritesItBack) {
  const NumberResult result = read_number(number_types[0], hex("01 01 7F"));
  EXPECT_EQ(127U, result.value);
  EXPECT_EQ(hex("01 01 7F"),
            encode_with([&](uint8_t **pp) { return asn1_Boolean_e(pp, result.value); }));
}

TEST(BooleanDecoder, RefusesTwoOctets) {
  EXPECT_EQ(-1, read_number(number_types[0], hex("01 02 FF FF")).consumed);
}

Lines number_trace(const NumberType &type, const char *octets, uint32_t depth = 1,
                   uint32_t impl_tag = 0, uint32_t held = before) {
  return trace_lines([&] { read_number(type, hex(octets), impl_tag, depth, held); });
}

TEST(BooleanTrace, ShowsTrueForEveryOctetButZero) {
  const NumberType &boolean = number_types[0];
  EXPECT_EQ((Lines{"BOOLEAN ", "  TRUE (ff)"}), number_trace(boolean, "01 01 FF"));
  EXPECT_EQ((Lines{"BOOLEAN ", "  TRUE (7f)"}), number_trace(boolean, "01 01 7F"));
  EXPECT_EQ((Lines{"BOOLEAN ", "  TRUE (1)"}), number_trace(boolean, "01 01 01"));
  EXPECT_EQ((Lines{"BOOLEAN ", "  FALSE (0)"}), number_trace(boolean, "01 01 00"));
}

TEST(BooleanTrace, ShowsTheNumberThatIsHeldAtTheEnd) {
  const NumberType &boolean = number_types[0];
  EXPECT_EQ(Lines{"  TRUE (1234)"}, number_trace(boolean, ""));
  EXPECT_EQ(Lines{"  TRUE (ffffffff)"}, number_trace(boolean, "", 1, 0, 0xFFFFFFFF));
  EXPECT_EQ(Lines{". .   FALSE (0)"}, number_trace(boolean, "", 3, 0, 0));
  EXPECT_EQ(no_lines, number_trace(boolean, "", 0));
}

TEST(EnumeratedTrace, ShowsTheNumber) {
  const NumberType &enumerated = number_types[1];
  EXPECT_EQ((Lines{"ENUMERATED ", "  5"}), number_trace(enumerated, "0A 01 05"));
  EXPECT_EQ((Lines{"ENUMERATED ", "  255"}), number_trace(enumerated, "0A 01 FF"));
}

TEST(EnumeratedTrace, ShowsTheNumberThatIsHeldAtTheEnd) {
  const NumberType &enumerated = number_types[1];
  EXPECT_EQ(Lines{"  4660"}, number_trace(enumerated, ""));
  EXPECT_EQ(Lines{".   -1"}, number_trace(enumerated, "", 2, 0, 0xFFFFFFFF));
  EXPECT_EQ(no_lines, number_trace(enumerated, "", 0));
}

TEST(NumberTrace, ShowsTheNumberThatIsHeldWithoutACursorOrAnEnd) {
  const uint8_t octet = 0;
  const char *const lines[] = {"  TRUE (1234)", "  4660"};
  for (int i = 0; i < 2; ++i) {
    uint32_t value = before;
    EXPECT_EQ(Lines{lines[i]},
              trace_lines([&] { number_types[i].decode(nullptr, &octet, 0, &value, 1); }));
    EXPECT_EQ(Lines{lines[i]},
              trace_lines([&] { number_types[i].decode(&octet, nullptr, 0, &value, 1); }));
  }
}

TEST(NumberTrace, StandsAtTheDepthGivenAndBearsTheImplicitTag) {
  EXPECT_EQ((Lines{". . CONTEXT-SPECIFIC PRIMITIVE [1] BOOLEAN ", ". .   TRUE (ff)"}),
            number_trace(number_types[0], "81 01 FF", 3, 0x81));
  EXPECT_EQ((Lines{". APPLICATION PRIMITIVE [2] ENUMERATED ", ".   7"}),
            number_trace(number_types[1], "42 01 07", 2, 0x42));
  EXPECT_EQ(no_lines, number_trace(number_types[0], "01 01 FF", 0));
  EXPECT_EQ(no_lines, number_trace(number_types[1], "0A 01 FF", 0));
}

TEST(NumberTrace, ShowsNoValueThatWasRefused) {
  EXPECT_EQ(Lines{"BOOLEAN "}, number_trace(number_types[0], "01 02 FF FF"));
  EXPECT_EQ((Lines{"BOOLEAN ", "z larger than end!"}), number_trace(number_types[0], "01 01"));
  EXPECT_EQ(Lines{"ENUMERATED "}, number_trace(number_types[1], "0A 00"));
  EXPECT_EQ(no_lines, number_trace(number_types[1], "02 01 00"));
}

// -- NULL ---------------------------------------------------------------------------------------

TEST(NullEncoder, WritesTwoOctets) {
  EXPECT_EQ(hex("05 00"), encode_with(asn1_Null_e));
  EXPECT_EQ(2U, asn1_Null_e(nullptr));
}

long read_null(const char *octets, uint32_t impl_tag = 0, uint32_t depth = 0) {
  const Input input(hex(octets));
  const uint8_t *next = asn1_Null_d(input.z(), input.end(), impl_tag, nullptr, depth);
  return next != nullptr ? next - input.z() : -1;
}

TEST(NullDecoder, GivesTheCursorBehindTheHeaderWhateverTheContent) {
  EXPECT_EQ(2, read_null("05 00"));
  EXPECT_EQ(2, read_null("05 01 00"));
  EXPECT_EQ(3, read_null("05 81 00"));
  EXPECT_EQ(4, read_null("05 82 00 02 AA BB"));
  EXPECT_EQ(6, read_null("05 84 80 00 00 00"));
}

TEST(NullDecoder, RefusesOtherHeaders) {
  for (const char *octets : {"25 00", "05 80 00 00", "02 00", "05 01", "05", ""}) {
    EXPECT_EQ(-1, read_null(octets)) << octets;
  }
}

TEST(NullDecoder, TakesAnImplicitTag) {
  EXPECT_EQ(2, read_null("81 00", 0x81));
  EXPECT_EQ(-1, read_null("05 00", 0x81));
  EXPECT_EQ(2, read_null("05 00", 0x100));
}

TEST(NullDecoder, DoesNotTouchItsPlace) {
  const Input input(hex("05 00"));
  int sentinel = 0;
  void *place = &sentinel;
  EXPECT_EQ(input.end(), asn1_Null_d(input.z(), input.end(), 0, &place, 0));
  EXPECT_EQ(&sentinel, place);
}

TEST(NullTrace, ShowsTheTagAlone) {
  EXPECT_EQ(Lines{"NULL"}, trace_lines([] { read_null("05 00", 0, 1); }));
  EXPECT_EQ(Lines{". NULL"}, trace_lines([] { read_null("05 01 00", 0, 2); }));
  EXPECT_EQ(Lines{"CONTEXT-SPECIFIC PRIMITIVE [0] NULL"},
            trace_lines([] { read_null("80 00", 0x80, 1); }));
  EXPECT_EQ((Lines{"NULL", "z larger than end!"}), trace_lines([] { read_null("05 01", 0, 1); }));
  EXPECT_EQ(no_lines, trace_lines([] { read_null("05 00", 0, 0); }));
}

TEST(NullDeathTest, DecoderWithoutACursorOrAnEnd) {
  const uint8_t octets[] = {0x05, 0x00};
  EXPECT_ASSERT(asn1_Null_d(nullptr, octets + 2, 0, nullptr, 0), "asn1_Tag_d", "z != NULL");
  EXPECT_ASSERT(asn1_Null_d(octets, nullptr, 0, nullptr, 0), "asn1_Tag_d", "end != NULL");
}

// -- ANY ----------------------------------------------------------------------------------------

struct FreeAny {
  void operator()(Any *any) const { asn1_Any_free(any); }
};
using OwnedAny = std::unique_ptr<Any, FreeAny>;

OwnedAny make_any(const Bytes &octets) {
  OwnedAny any(asn1_Any_new(static_cast<uint32_t>(octets.size())));
  std::copy(octets.begin(), octets.end(), any->data);
  return any;
}

TEST(AnyNew, HasZeroOctets) {
  const OwnedAny any(asn1_Any_new(4));
  ASSERT_NE(nullptr, any);
  EXPECT_EQ(hex("00 00 00 00"), support::value(any.get()));
}

TEST(AnyNew, OfNoOctetsHasNoData) {
  const OwnedAny any(asn1_Any_new(0));
  ASSERT_NE(nullptr, any);
  EXPECT_EQ(0U, any->length);
  EXPECT_EQ(nullptr, any->data);
}

TEST(AnyFree, IgnoresNull) { asn1_Any_free(nullptr); }

TEST(AnyClone, CopiesTheOctets) {
  const OwnedAny any = make_any(hex("04 02 00 41"));
  const OwnedAny copy(asn1_Any_clone(any.get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(hex("04 02 00 41"), support::value(copy.get()));
  EXPECT_NE(any->data, copy->data);
  EXPECT_EQ(0, asn1_Any_cmp(any.get(), copy.get()));
}

TEST(AnyClone, OfNullIsNullAndOfAnEmptyRecordAnEmptyRecord) {
  EXPECT_EQ(nullptr, asn1_Any_clone(nullptr));
  const OwnedAny copy(asn1_Any_clone(make_any({}).get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(0U, copy->length);
  EXPECT_EQ(nullptr, copy->data);
}

TEST(AnyCmp, TellsEqualOctetsFromOthers) {
  EXPECT_EQ(0, asn1_Any_cmp(make_any(hex("05 00")).get(), asn1_Any_NULL()));
  EXPECT_EQ(0, asn1_Any_cmp(make_any({}).get(), make_any({}).get()));
  EXPECT_EQ(1, asn1_Any_cmp(make_any(hex("05 00")).get(), make_any(hex("05")).get()));
  EXPECT_EQ(1, asn1_Any_cmp(make_any(hex("05")).get(), make_any(hex("05 00")).get()));
  EXPECT_NE(0, asn1_Any_cmp(make_any(hex("05 00")).get(), make_any(hex("05 01")).get()));
}

TEST(AnyNull, IsTheElementNull) {
  const Any *null = asn1_Any_NULL();
  EXPECT_EQ(null, asn1_Any_NULL());
  EXPECT_EQ(hex("05 00"), support::value(null));
  EXPECT_EQ(hex("05 00"), encode(asn1_Any_e, null));
}

TEST(AnyEncoder, WritesTheOctetsAsTheyStand) {
  for (const char *octets : {"05 00", "FF", "30 80 00 00", "04 81 03 41 42 43"}) {
    EXPECT_EQ(hex(octets), encode(asn1_Any_e, make_any(hex(octets)).get())) << octets;
  }
}

TEST(AnyEncoder, FailsForNullAndForAnEmptyRecord) {
  uint8_t room[] = {0xAA};
  uint8_t *cursor = room;
  EXPECT_EQ(0U, asn1_Any_e(nullptr, nullptr));
  EXPECT_EQ(0U, asn1_Any_e(&cursor, nullptr));
  EXPECT_EQ(0U, asn1_Any_e(nullptr, make_any({}).get()));
  EXPECT_EQ(0U, asn1_Any_e(&cursor, make_any({}).get()));
  EXPECT_EQ(room, cursor);
  EXPECT_EQ(0xAA, room[0]);
}

TEST(AnyDecoder, KeepsOneWholeElementOfAnyTag) {
  for (const char *octets :
       {"05 00", "00 00", "02 01 05", "30 03 02 01 05", "A3 02 05 00", "FF 01 41", "1F 02 81 00"}) {
    const Bytes element = hex(octets);
    const auto decoded = decode(asn1_Any_d, element + hex("55 55"));
    ASSERT_EQ(static_cast<long>(element.size()), decoded.consumed) << octets;
    EXPECT_EQ(element, support::value(decoded.record)) << octets;
    EXPECT_EQ(element, encode(asn1_Any_e, decoded.record)) << octets;
    asn1_Any_free(decoded.record);
  }
}

TEST(AnyDecoder, KeepsElementsOfEveryShortestLengthForm) {
  for (const size_t size : {size_t{127}, size_t{128}, size_t{255}, size_t{256}, size_t{65536}}) {
    const Bytes element = support::element(0x04, Bytes(size, 0x41));
    const auto decoded = decode(asn1_Any_d, element);
    ASSERT_EQ(static_cast<long>(element.size()), decoded.consumed) << size;
    EXPECT_EQ(element, support::value(decoded.record)) << size;
    asn1_Any_free(decoded.record);
  }
}

TEST(AnyDecoder, LosesAnOctetAtTheEndForEachLengthOctetTooMany) {
  const struct {
    const char *octets, *kept;
  } rows[] = {
      {"04 81 03 AA BB CC", "04 81 03 AA BB"},
      {"04 82 00 03 AA BB CC", "04 82 00 03 AA"},
      {"04 84 00 00 00 01 AA", "04 84 00"},
      {"04 84 00 00 00 00", "04 84"},
  };
  for (const auto &row : rows) {
    const Bytes octets = hex(row.octets);
    const auto decoded = decode(asn1_Any_d, octets + hex("55"));
    ASSERT_EQ(static_cast<long>(octets.size()), decoded.consumed) << row.octets;
    EXPECT_EQ(hex(row.kept), support::value(decoded.record)) << row.octets;
    asn1_Any_free(decoded.record);
  }
}

TEST(AnyDecoder, DoesNotUnderstandAnIdentifierOfMoreOctets) {
  // The second identifier octet (X.690, 8.1.2.4) is read as a length octet.
  const auto decoded = decode(asn1_Any_d, hex("1F 81 01 05 55"));
  ASSERT_EQ(4, decoded.consumed);
  EXPECT_EQ(hex("1F 81 01"), support::value(decoded.record));
  asn1_Any_free(decoded.record);
}

/// Checks that the decoder returns NULL and stores NULL.
void expect_refused(const Bytes &octets) {
  const Input input(octets);
  Any sentinel{};
  Any *place = &sentinel;
  EXPECT_EQ(nullptr, asn1_Any_d(input.z(), input.end(), 0, &place, 0));
  EXPECT_EQ(nullptr, place);
}

TEST(AnyDecoder, RefusesAndClearsThePlace) {
  for (const char *octets : {
           "30 80",        // indefinite
           "30 80 00 00",  // indefinite
           "04 03 41 42",  // past the end
           "04 82 01",     // length octets past the end
           "04 85 00 00 00 00 01 41",
           "04",  // no length
           "",    // at the end
       }) {
    SCOPED_TRACE(octets);
    expect_refused(hex(octets));
  }
}

TEST(AnyDecoder, RefusesACursorBehindTheEnd) {
  const Input input(hex("05 00"));
  Any sentinel{};
  Any *place = &sentinel;
  EXPECT_EQ(nullptr, asn1_Any_d(input.end(), input.z(), 0, &place, 0));
  EXPECT_EQ(nullptr, place);
}

TEST(AnyDecoder, RefusesALengthWithItsTopBitSet) {
  for (const char *length : {"84 80 00 00 00", "84 80 00 00 01", "84 FF FF FF F9", "84 FF FF FF FA",
                             "84 FF FF FF FB", "84 FF FF FF FF"}) {
    SCOPED_TRACE(length);
    expect_refused(hex("04") + hex(length));
    expect_refused(hex("04") + hex(length) + hex("41 42 43 44 45 46 47 48"));
  }
}

TEST(AnyDecoder, GivesNothingWithoutACursorOrAPlaceAndLeavesThePlaceAlone) {
  const uint8_t octets[] = {0x05, 0x00};
  Any sentinel{};
  Any *place = &sentinel;
  EXPECT_EQ(nullptr, asn1_Any_d(nullptr, octets + 2, 0, &place, 0));
  EXPECT_EQ(&sentinel, place);
  EXPECT_EQ(nullptr, asn1_Any_d(octets, octets + 2, 0, nullptr, 0));
}

TEST(AnyDecoder, LooksAtTheLowByteOfItsImplicitTagOnly) {
  const auto decoded = decode(asn1_Any_d, hex("05 00"), 0x100);
  EXPECT_EQ(2, decoded.consumed);
  asn1_Any_free(decoded.record);
}

TEST(AnyDeathTest, DecoderWithAnImplicitTag) {
  const uint8_t octets[] = {0x05, 0x00};
  Any *place = nullptr;
  for (const uint32_t impl_tag : {5U, 0x80U, 0x101U}) {
    EXPECT_ASSERT(asn1_Any_d(octets, octets + 2, impl_tag, &place, 0), "asn1_Any_d",
                  "impl_tag == 0");
  }
  EXPECT_ASSERT(asn1_Any_d(nullptr, nullptr, 1, nullptr, 0), "asn1_Any_d", "impl_tag == 0");
}

TEST(AnyDeathTest, DecoderWithoutAnEnd) {
  const uint8_t octets[] = {0x05, 0x00};
  Any *place = nullptr;
  EXPECT_ASSERT(asn1_Any_d(octets, nullptr, 0, &place, 0), "asn1_Length_d", "end != NULL");
}

Lines any_trace(const char *octets, uint32_t depth) {
  return trace_lines([&] { asn1_Any_free(decode(asn1_Any_d, hex(octets), 0, depth).record); });
}

TEST(AnyTrace, DumpsTheElementAndNotItsTag) {
  EXPECT_EQ((Lines{"[ANY]", "  0x00000000 05 00 " + std::string(42, ' ') + ".."}),
            any_trace("05 00", 1));
  EXPECT_EQ((Lines{". . [ANY]", ". .   0x00000000 0C 02 68 69 " + std::string(36, ' ') + "..hi"}),
            any_trace("0C 02 68 69", 3));
  EXPECT_EQ(no_lines, any_trace("05 00", 0));
}

TEST(AnyTrace, DumpsTheOctetsThatWereKept) {
  EXPECT_EQ((Lines{"[ANY]", "  0x00000000 04 81 03 41 42 " + std::string(33, ' ') + "...AB"}),
            any_trace("04 81 03 41 42 43", 1));
}

TEST(AnyTrace, ShowsNothingOfARefusedElementButTheOverrun) {
  EXPECT_EQ(no_lines, any_trace("30 80", 1));
  EXPECT_EQ(no_lines, any_trace("04 84 80 00 00 00", 1));
  EXPECT_EQ(Lines{". z larger than end!"}, any_trace("04 03 41", 2));
}

TEST(OctetDecoder, FailsWithoutAPlaceForTheNumber) {
  const Input input(hex("01 01 FF"));
  EXPECT_EQ(nullptr, asn1_Boolean_d(input.z(), input.end(), 0, nullptr, 0));
  EXPECT_EQ(nullptr, asn1_Enumerated_d(input.z(), input.end(), 1, nullptr, 0));
}

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(AnyMemory, NewCloneAndDecoderGiveNullWhereAnAllocationFails) {
  const auto succeeds = [](Any *any) {
    asn1_Any_free(any);
    return any != nullptr;
  };
  using support::expect_failure_at_each_allocation;
  EXPECT_EQ(2, expect_failure_at_each_allocation([&] { return succeeds(asn1_Any_new(3)); }));
  EXPECT_EQ(2, expect_failure_at_each_allocation(
                   [&] { return succeeds(asn1_Any_clone(asn1_Any_NULL())); }));
  const Input input(hex("05 00"));
  EXPECT_EQ(2, expect_failure_at_each_allocation([&] {
              Any *any = nullptr;
              const uint8_t *next = asn1_Any_d(input.z(), input.end(), 0, &any, 0);
              EXPECT_EQ(next != nullptr, any != nullptr);
              return succeeds(any);
            }));
}

#endif

}  // namespace

}  // namespace small_types_test
