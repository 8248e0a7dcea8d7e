// Tests the encoding frame: identifier octet, length octets and end-of-contents, both directions.
#include "support.h"

namespace frame_test {

namespace {

using support::Bytes;
using support::encode_with;
using support::hex;
using support::Input;
using support::operator+;
using Lines = std::vector<std::string>;

// The value of results before a call, so that a test sees what the call stored and what it did not.
constexpr uint32_t untouched = 77;

/// A call of asn1_Tag_d: the octets consumed, or -1 for NULL, what it stored, and what it traced.
struct TagResult {
  long consumed;
  uint32_t constructed;
  Lines lines;
};

TagResult read_tag(const Bytes &octets, uint32_t impl_tag, uint32_t tag, bool both_forms,
                   uint32_t depth = 1) {
  const Input input(octets);
  TagResult result{-1, untouched, {}};
  result.lines = support::trace_lines([&] {
    const uint8_t *next = asn1_Tag_d(input.z(), input.end(), impl_tag, tag,
                                     both_forms ? &result.constructed : nullptr, depth);
    if (next != nullptr) result.consumed = next - input.z();
  });
  return result;
}

/// Returns the line of the trace for a tag of both forms.
Lines tag_trace(uint8_t octet, uint32_t impl_tag, uint32_t tag) {
  const TagResult result = read_tag({octet}, impl_tag, tag, true);
  EXPECT_EQ(1, result.consumed);
  return result.lines;
}

/// A call of asn1_Length_d.
struct LengthResult {
  long consumed;
  uint32_t length;
  uint32_t indefinite;
  Lines lines;
};

LengthResult read_length(const Bytes &octets, bool allow_indefinite = true, uint32_t depth = 1) {
  const Input input(octets);
  LengthResult result{-1, untouched, untouched, {}};
  result.lines = support::trace_lines([&] {
    const uint8_t *next = asn1_Length_d(input.z(), input.end(), &result.length,
                                        allow_indefinite ? &result.indefinite : nullptr, depth);
    if (next != nullptr) result.consumed = next - input.z();
  });
  return result;
}

const Lines no_lines;
const Lines overrun_line{"z larger than end!"};

// -- Writing ------------------------------------------------------------------------------------

struct LengthForm {
  uint32_t length;
  const char *octets;
};

const LengthForm length_forms[] = {
    {0, "00"},
    {1, "01"},
    {127, "7F"},
    {128, "81 80"},
    {255, "81 FF"},
    {256, "82 01 00"},
    {65535, "82 FF FF"},
    {65536, "83 01 00 00"},
    {0xFFFFFF, "83 FF FF FF"},
    {16777216, "84 01 00 00 00"},
    {0x12345678, "84 12 34 56 78"},
    {0x80000000, "84 80 00 00 00"},
    {0xFFFFFFFF, "84 FF FF FF FF"},
};

TEST(LengthEncoder, WritesTheShortestDefiniteForm) {
  for (const LengthForm &form : length_forms) {
    EXPECT_EQ(hex(form.octets),
              encode_with([&](uint8_t **pp) { return asn1_Length_e(pp, form.length); }))
        << form.length;
  }
}

TEST(LengthEncoder, MeasuresWithoutACursor) {
  for (const LengthForm &form : length_forms) {
    EXPECT_EQ(hex(form.octets).size(), asn1_Length_e(nullptr, form.length)) << form.length;
  }
}

TEST(TagEncoder, WritesTheLowEightBitsAsOneOctet) {
  for (const uint32_t tag : {0x02U, 0x1FU, 0x30U, 0xA1U, 0xFFU, 0x00U}) {
    const Bytes expected{static_cast<uint8_t>(tag)};
    EXPECT_EQ(expected, encode_with([&](uint8_t **pp) { return asn1_Tag_e(pp, tag); }));
    EXPECT_EQ(expected, encode_with([&](uint8_t **pp) { return asn1_Tag_e(pp, tag | 0x700); }));
  }
}

TEST(TagLengthEncoder, WritesTheTagAndThenTheLength) {
  const struct {
    uint32_t tag, length;
    const char *octets;
  } rows[] = {
      {0x02, 0, "02 00"},
      {0x30, 127, "30 7F"},
      {0xA0, 128, "A0 81 80"},
      {0x1A1, 256, "A1 82 01 00"},
      {0x04, 0xFFFFFFFF, "04 84 FF FF FF FF"},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(hex(row.octets),
              encode_with([&](uint8_t **pp) { return asn1_TagLength_e(pp, row.tag, row.length); }));
  }
}

TEST(EndOfContentsEncoder, WritesTwoZeroOctets) {
  EXPECT_EQ(hex("00 00"), encode_with(asn1_eoc_e));
  uint8_t buffer[] = {0xAA, 0xAA, 0xAA};
  uint8_t *cursor = buffer;
  EXPECT_EQ(2U, asn1_eoc_e(&cursor));
  EXPECT_EQ(hex("00 00 AA"), Bytes(buffer, buffer + 3));
}

// -- Reading a tag ------------------------------------------------------------------------------

struct TagRow {
  uint8_t octet;
  uint32_t impl_tag, tag;
  bool one_form;    // accepted where `constructed` is NULL
  bool both_forms;  // accepted where it is not NULL
};

const TagRow tag_rows[] = {
    // The type's own tag.
    {0x02, 0, 0x02, true, true},
    {0x22, 0, 0x02, false, true},
    {0x30, 0, 0x02, false, false},
    {0x30, 0, 0x30, true, true},
    {0x10, 0, 0x30, true, true},
    {0x31, 0, 0x30, false, false},
    {0x1F, 0, 0x1F, true, true},
    {0x3F, 0, 0x1F, false, true},
    {0xFF, 0, 0x1F, false, false},
    {0x00, 0, 0x00, true, true},
    {0x20, 0, 0x00, false, true},
    {0x20, 0, 0x20, true, true},
    {0x00, 0, 0x20, true, true},
    {0x61, 0, 0x61, true, true},
    // An implicit tag replaces it.
    {0x81, 0x81, 0x02, true, true},
    {0xA1, 0x81, 0x02, false, true},
    {0x02, 0x81, 0x02, false, false},
    {0x82, 0x81, 0x02, false, false},
    {0x41, 0x81, 0x02, false, false},
    {0xC1, 0x81, 0x02, false, false},
    {0x01, 0x81, 0x02, false, false},
    // The constructed bit of the type is kept, and that of the implicit tag counts, too.
    {0xA1, 0x81, 0x30, true, true},
    {0x81, 0x81, 0x30, true, true},
    {0xA1, 0xA1, 0x30, true, true},
    {0xA1, 0xA1, 0x02, true, true},
    {0x81, 0xA1, 0x02, true, true},
    // Only the low 8 bits of both count.
    {0x02, 0x100, 0x02, true, true},
    {0x81, 0x181, 0x02, true, true},
    {0x02, 0, 0x102, true, true},
    {0x30, 0x100, 0x130, true, true},
};

std::string describe(const TagRow &row) {
  char text[80];
  std::snprintf(text, sizeof text, "octet %02X impl_tag %02X tag %02X", unsigned{row.octet},
                row.impl_tag, row.tag);
  return text;
}

TEST(TagDecoder, AcceptsForATypeOfOneForm) {
  for (const TagRow &row : tag_rows) {
    const TagResult result = read_tag({row.octet, 0x55}, row.impl_tag, row.tag, false);
    EXPECT_EQ(row.one_form ? 1 : -1, result.consumed) << describe(row);
  }
}

TEST(TagDecoder, AcceptsForATypeOfBothFormsAndStoresTheForm) {
  for (const TagRow &row : tag_rows) {
    const TagResult result = read_tag({row.octet, 0x55}, row.impl_tag, row.tag, true);
    EXPECT_EQ(row.both_forms ? 1 : -1, result.consumed) << describe(row);
    const uint32_t form = row.both_forms && (row.octet & 0x20) != 0 ? 1 : 0;
    EXPECT_EQ(form, result.constructed) << describe(row);
  }
}

TEST(TagDecoder, RefusesWithoutATraceLine) {
  for (const TagRow &row : tag_rows) {
    if (!row.one_form) {
      EXPECT_EQ(no_lines, read_tag({row.octet}, row.impl_tag, row.tag, false).lines)
          << describe(row);
    }
    if (!row.both_forms) {
      EXPECT_EQ(no_lines, read_tag({row.octet}, row.impl_tag, row.tag, true).lines)
          << describe(row);
    }
  }
}

TEST(TagDecoder, RefusesASetForASequenceInSilence) {
  const TagResult result = read_tag(hex("31 00"), 0, 48, false);
  EXPECT_EQ(-1, result.consumed);
  EXPECT_EQ(no_lines, result.lines);
}

TEST(TagDecoder, MatchesEachOctetExactlyWithItselfButForTheConstructedBit) {
  for (uint32_t octet = 0; octet < 256; ++octet) {
    for (uint32_t tag = 0; tag < 256; ++tag) {
      const uint8_t one = static_cast<uint8_t>(octet);
      uint32_t constructed = untouched;
      const bool passes = asn1_Tag_d(&one, &one + 1, 0, tag, &constructed, 0) == &one + 1;
      ASSERT_EQ((octet | 0x20) == (tag | 0x20), passes) << octet << " for " << tag;
      ASSERT_EQ(passes && (octet & 0x20) != 0 ? 1U : 0U, constructed) << octet << " for " << tag;
    }
  }
}

TEST(TagDecoder, FailsAtAndBehindTheEndAndStoresThePrimitiveForm) {
  const Input input(hex("22 22"));
  uint32_t constructed = untouched;
  EXPECT_EQ(nullptr, asn1_Tag_d(input.end(), input.end(), 0, 2, &constructed, 0));
  EXPECT_EQ(0U, constructed);
  constructed = untouched;
  EXPECT_EQ(nullptr, asn1_Tag_d(input.end(), input.z(), 0, 2, &constructed, 0));
  EXPECT_EQ(0U, constructed);
}

TEST(TagDecoderTrace, UniversalTagsBearTheirNames) {
  const char *const names[] = {"BOOLEAN ",
                               "INTEGER",
                               "BITSTRING",
                               "OCTETSTRING",
                               "NULL",
                               "OBJECT IDENTIFIER ",
                               "",
                               "",
                               "REAL ",
                               "ENUMERATED ",
                               "",
                               "UTF8STRING",
                               "",
                               "",
                               "",
                               "SEQUENCE",
                               "SET",
                               "NUMERICSTRING ",
                               "PRINTABLESTRING ",
                               "TELETEXSTRING ",
                               "VIDEOTEXTSTRING ",
                               "IA5STRING ",
                               "UTCTIME ",
                               "GENERALIZEDTIME ",
                               "GRAPHICSTRING ",
                               "VISIBLESTRING ",
                               "GENERALSTRING ",
                               "UNIVERSALSTRING ",
                               "",
                               "BMPSTRING "};
  uint8_t tag = 0;
  for (const char *name : names) {
    ++tag;
    EXPECT_EQ(Lines{name}, tag_trace(tag, 0, tag)) << int{tag};
    const uint8_t constructed = tag | 0x20;
    EXPECT_EQ(Lines{std::string(name) + " {"}, tag_trace(constructed, 0, tag)) << int{tag};
  }
  EXPECT_EQ(30, tag);
}

TEST(TagDecoderTrace, TheFormIsThatOfTheInputAndNotOfTheType) {
  EXPECT_EQ(Lines{"SEQUENCE {"}, tag_trace(0x30, 0, 48));
  EXPECT_EQ(Lines{"SEQUENCE"}, tag_trace(0x10, 0, 48));
}

TEST(TagDecoderTrace, AnImplicitUniversalTagBearsItsOwnName) {
  EXPECT_EQ(Lines{"OCTETSTRING"}, tag_trace(0x04, 0x04, 0x02));
}

TEST(TagDecoderTrace, OtherTagsTellClassFormNumberAndExpectedType) {
  const struct {
    uint8_t octet;
    uint32_t impl_tag, tag;
    const char *line;
  } rows[] = {
      // Context-specific.
      {0x81, 0x81, 2, "CONTEXT-SPECIFIC PRIMITIVE [1] INTEGER"},
      {0xA1, 0x81, 48, "CONTEXT-SPECIFIC CONSTRUCTED [1] {"},
      {0x81, 0x81, 48, "CONTEXT-SPECIFIC PRIMITIVE [1] {"},
      {0x81, 0x81, 16, "CONTEXT-SPECIFIC PRIMITIVE [1] SEQUENCE"},
      {0xA1, 0x81, 4, "CONTEXT-SPECIFIC CONSTRUCTED [1] OCTETSTRING"},
      {0x80, 0x80, 1, "CONTEXT-SPECIFIC PRIMITIVE [0] BOOLEAN "},
      {0x9F, 0x9F, 6, "CONTEXT-SPECIFIC PRIMITIVE [31] OBJECT IDENTIFIER "},
      {0x82, 0x82, 7, "CONTEXT-SPECIFIC PRIMITIVE [2] "},
      {0x82, 0x82, 0, "CONTEXT-SPECIFIC PRIMITIVE [2] END OF CONTENTS"},
      {0xA0, 0, 0xA0, "CONTEXT-SPECIFIC CONSTRUCTED [0] {"},
      // Application.
      {0x41, 0x41, 2, "APPLICATION PRIMITIVE [1] INTEGER"},
      {0x61, 0, 0x61, "APPLICATION CONSTRUCTED [1] {"},
      {0x5E, 0x5E, 30, "APPLICATION PRIMITIVE [30] BMPSTRING "},
      // Private: the last word is the brace whatever the type.
      {0xC1, 0xC1, 2, "PRIVATE PRIMITIVE [1] {"},
      {0xE5, 0xC5, 48, "PRIVATE CONSTRUCTED [5] {"},
      {0xDF, 0, 0xDF, "PRIVATE PRIMITIVE [31] {"},
      // Universal 31 has no name: its word is empty.
      {0x1F, 0, 31, " PRIMITIVE [31] "},
      {0x3F, 0, 31, " CONSTRUCTED [31] "},
      {0x1F, 0x1F, 2, " PRIMITIVE [31] INTEGER"},
      {0x3F, 0x1F, 48, " CONSTRUCTED [31] {"},
      {0x81, 0x81, 31, "CONTEXT-SPECIFIC PRIMITIVE [1] "},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(Lines{row.line}, tag_trace(row.octet, row.impl_tag, row.tag));
  }
}

TEST(TagDecoderTrace, TagNumberZeroPassesWithoutALine) {
  EXPECT_EQ(no_lines, tag_trace(0x00, 0, 0));
  EXPECT_EQ(no_lines, tag_trace(0x20, 0, 0));
  EXPECT_EQ(no_lines, tag_trace(0x20, 0, 0x20));
}

TEST(TagDecoderTrace, StandsAtTheDepthGiven) {
  EXPECT_EQ(no_lines, read_tag(hex("02"), 0, 2, false, 0).lines);
  EXPECT_EQ(Lines{". . INTEGER"}, read_tag(hex("02"), 0, 2, false, 3).lines);
  EXPECT_EQ(Lines{". CONTEXT-SPECIFIC PRIMITIVE [1] INTEGER"},
            read_tag(hex("81"), 0x81, 2, false, 2).lines);
}

// -- Reading a length ---------------------------------------------------------------------------

TEST(LengthDecoder, ReadsEveryShortestForm) {
  for (const uint32_t length : {0U, 1U, 127U, 128U, 255U, 256U, 65535U, 65536U}) {
    const Bytes octets = encode_with([&](uint8_t **pp) { return asn1_Length_e(pp, length); });
    const LengthResult result = read_length(octets + Bytes(length));
    EXPECT_EQ(static_cast<long>(octets.size()), result.consumed) << length;
    EXPECT_EQ(length, result.length);
    EXPECT_EQ(0U, result.indefinite);
    EXPECT_EQ(no_lines, result.lines);
  }
}

TEST(LengthDecoder, ReadsFourOctetsMostSignificantFirst) {
  const LengthResult result = read_length(hex("84 00 01 02 03") + Bytes(0x010203));
  EXPECT_EQ(5, result.consumed);
  EXPECT_EQ(0x010203U, result.length);
  EXPECT_EQ(0x12345678U, read_length(hex("84 12 34 56 78")).length);
}

TEST(LengthDecoder, AcceptsLongerFormsThanNeeded) {
  for (const char *form : {"05", "81 05", "82 00 05", "83 00 00 05", "84 00 00 00 05"}) {
    const LengthResult result = read_length(hex(form) + Bytes(5));
    EXPECT_EQ(static_cast<long>(hex(form).size()), result.consumed) << form;
    EXPECT_EQ(5U, result.length);
    EXPECT_EQ(0U, result.indefinite);
  }
}

TEST(LengthDecoder, RefusesTheIndefiniteFormWhereItIsNotAllowed) {
  const LengthResult result = read_length(hex("80 00 00"), false);
  EXPECT_EQ(-1, result.consumed);
  EXPECT_EQ(0U, result.length);
  EXPECT_EQ(no_lines, result.lines);
}

TEST(LengthDecoder, TakesTheIndefiniteFormWhereItIsAllowed) {
  for (const char *octets : {"80 00 00", "80"}) {
    const LengthResult result = read_length(hex(octets));
    EXPECT_EQ(1, result.consumed) << octets;
    EXPECT_EQ(1U, result.indefinite);
    EXPECT_EQ(0U, result.length);
    EXPECT_EQ(no_lines, result.lines);
  }
}

TEST(LengthDecoder, RefusesMoreThanFourOctetsInSilence) {
  for (uint32_t first = 0x85; first <= 0xFF; ++first) {
    for (const Bytes &rest : {Bytes(), Bytes(200), hex("00 00 00 00 00")}) {
      const LengthResult result = read_length(Bytes{static_cast<uint8_t>(first)} + rest);
      EXPECT_EQ(-1, result.consumed) << first;
      EXPECT_EQ(0U, result.length);
      EXPECT_EQ(0U, result.indefinite);
      EXPECT_EQ(no_lines, result.lines);
    }
  }
}

TEST(LengthDecoder, PassesAContentThatEndsExactlyAtTheEnd) {
  for (const char *octets : {"03 AA BB CC", "81 03 AA BB CC", "00"}) {
    EXPECT_LT(0, read_length(hex(octets)).consumed) << octets;
  }
}

TEST(LengthDecoder, RefusesAContentOfOneOctetMoreWithALine) {
  for (const char *octets : {"04 AA BB CC", "81 04 AA BB CC", "84 00 00 00 04 AA BB CC"}) {
    const LengthResult result = read_length(hex(octets));
    EXPECT_EQ(-1, result.consumed) << octets;
    EXPECT_EQ(4U, result.length) << "the length that was read stays";
    EXPECT_EQ(0U, result.indefinite);
    EXPECT_EQ(overrun_line, result.lines);
  }
}

TEST(LengthDecoder, RefusesTheGreatestSignedLength) {
  const LengthResult result = read_length(hex("84 7F FF FF FF 00"));
  EXPECT_EQ(-1, result.consumed);
  EXPECT_EQ(0x7FFFFFFFU, result.length);
  EXPECT_EQ(overrun_line, result.lines);
}

TEST(LengthDecoder, ReadsNoLengthOctetBehindTheEnd) {
  const struct {
    const char *octets;
    uint32_t length;
  } rows[] = {
      {"81", 0},       {"82", 0},
      {"82 01", 1},    {"83 01 02", 0x0102},
      {"84", 0},       {"84 01 02 03", 0x010203},
      {"84 FF", 0xFF}, {"84 FF FF FF", 0xFFFFFF},
      {"83 00 00", 0},
  };
  for (const auto &row : rows) {
    const LengthResult result = read_length(hex(row.octets));
    EXPECT_EQ(-1, result.consumed) << row.octets;
    EXPECT_EQ(row.length, result.length) << row.octets;
    EXPECT_EQ(0U, result.indefinite);
    EXPECT_EQ(overrun_line, result.lines) << row.octets;
  }
}

TEST(LengthDecoder, ReadsNoLengthOctetBehindAnEndInsideABlock) {
  const Input input(hex("84 01 02 03 04 05"));
  uint32_t length = untouched;
  EXPECT_EQ(nullptr, asn1_Length_d(input.z(), input.z() + 3, &length, nullptr, 0));
  EXPECT_EQ(0x0102U, length);
}

TEST(LengthDecoder, PassesLengthsWithTheirTopBitSet) {
  for (const uint32_t length : {0x80000000U, 0x80000001U, 0xDEADBEEFU, 0xFFFFFFFFU}) {
    const Bytes octets = encode_with([&](uint8_t **pp) { return asn1_Length_e(pp, length); });
    for (const Bytes &content : {Bytes(), Bytes(9)}) {
      const LengthResult result = read_length(octets + content);
      EXPECT_EQ(5, result.consumed);
      EXPECT_EQ(length, result.length);
      EXPECT_EQ(0U, result.indefinite);
      EXPECT_EQ(no_lines, result.lines);
    }
  }
}

TEST(LengthDecoder, FailsAtAndBehindTheEndInSilence) {
  const LengthResult result = read_length({});
  EXPECT_EQ(-1, result.consumed);
  EXPECT_EQ(0U, result.length);
  EXPECT_EQ(0U, result.indefinite);
  EXPECT_EQ(no_lines, result.lines);

  const Input input(hex("00 00"));
  uint32_t length = untouched;
  EXPECT_EQ(nullptr, asn1_Length_d(input.end(), input.z(), &length, nullptr, 0));
  EXPECT_EQ(0U, length);
}

TEST(LengthDecoder, WritesItsLineAtTheDepthGiven) {
  EXPECT_EQ(no_lines, read_length(hex("01"), true, 0).lines);
  EXPECT_EQ(Lines{". . z larger than end!"}, read_length(hex("01"), true, 3).lines);
}

// -- Tag and length together --------------------------------------------------------------------

TEST(TagLengthDecoder, GivesTheCursorAtTheFirstContentOctet) {
  const Input input(hex("24 81 02 AA BB"));
  uint32_t constructed = untouched;
  uint32_t length = untouched;
  uint32_t indefinite = untouched;
  EXPECT_EQ(input.z() + 3,
            asn1_TagLength_d(input.z(), input.end(), 0, 4, &constructed, &length, &indefinite, 0));
  EXPECT_EQ(1U, constructed);
  EXPECT_EQ(2U, length);
  EXPECT_EQ(0U, indefinite);
}

TEST(TagLengthDecoder, HandsTheIndefiniteFormOn) {
  const Input input(hex("30 80"));
  uint32_t length = untouched;
  uint32_t indefinite = untouched;
  EXPECT_EQ(input.end(),
            asn1_TagLength_d(input.z(), input.end(), 0, 48, nullptr, &length, &indefinite, 0));
  EXPECT_EQ(0U, length);
  EXPECT_EQ(1U, indefinite);
  EXPECT_EQ(nullptr, asn1_TagLength_d(input.z(), input.end(), 0, 48, nullptr, &length, nullptr, 0));
}

TEST(TagLengthDecoder, CutsBothTagsToEightBits) {
  const Input input(hex("02 00"));
  uint32_t length = untouched;
  EXPECT_EQ(input.end(),
            asn1_TagLength_d(input.z(), input.end(), 0x4100, 0x3702, nullptr, &length, nullptr, 0));
  EXPECT_EQ(input.end(),
            asn1_TagLength_d(input.z(), input.end(), 0x4102, 0x3705, nullptr, &length, nullptr, 0));
  EXPECT_EQ(Lines{"INTEGER"}, support::trace_lines([&] {
              asn1_TagLength_d(input.z(), input.end(), 0, 0x3702, nullptr, &length, nullptr, 1);
            }));
}

TEST(TagLengthDecoder, ReadsNoLengthBehindARefusedTag) {
  const Input input(hex("04 01 00"));
  uint32_t length = untouched;
  uint32_t indefinite = untouched;
  EXPECT_EQ(nullptr,
            asn1_TagLength_d(input.z(), input.end(), 0, 2, nullptr, &length, &indefinite, 0));
  EXPECT_EQ(untouched, length);
  EXPECT_EQ(untouched, indefinite);
}

TEST(TagLengthDecoder, FailsWhereTheLengthIsMissing) {
  const Input input(hex("02"));
  uint32_t length = untouched;
  EXPECT_EQ(nullptr, asn1_TagLength_d(input.z(), input.end(), 0, 2, nullptr, &length, nullptr, 0));
  EXPECT_EQ(0U, length);
}

TEST(TagLengthDecoder, TracesTheTagAndThenTheOverrunAtOneDepth) {
  const Input input(hex("30 05 02 01 05"));
  uint32_t length = untouched;
  const Lines lines = support::trace_lines([&] {
    EXPECT_EQ(nullptr,
              asn1_TagLength_d(input.z(), input.end(), 0, 48, nullptr, &length, nullptr, 2));
  });
  EXPECT_EQ((Lines{". SEQUENCE {", ". z larger than end!"}), lines);
  EXPECT_EQ(5U, length);
}

TEST(TagLengthDecoder, PassesALengthWithItsTopBitSet) {
  const Input input(hex("02 84 80 00 00 00"));
  uint32_t length = untouched;
  EXPECT_EQ(input.end(),
            asn1_TagLength_d(input.z(), input.end(), 0, 2, nullptr, &length, nullptr, 0));
  EXPECT_EQ(0x80000000U, length);
}

// -- End of contents ----------------------------------------------------------------------------

TEST(EndOfContentsDecoder, TakesTwoZeroOctetsInsideTheEnd) {
  const struct {
    const char *octets;
    bool passes;
  } rows[] = {{"00 00", true},  {"00 00 00", true}, {"00 00 FF", true},
              {"", false},      {"00", false},      {"FF", false},
              {"00 01", false}, {"01 00", false},   {"80 00", false}};
  for (const auto &row : rows) {
    const Input input(hex(row.octets));
    const Lines lines = support::trace_lines([&] {
      EXPECT_EQ(row.passes ? input.z() + 2 : nullptr, asn1_eoc_d(input.z(), input.end()))
          << row.octets;
    });
    EXPECT_EQ(no_lines, lines);
  }
}

TEST(EndOfContentsDecoder, RefusesAPairWhoseSecondOctetIsBehindTheEnd) {
  const Input input(hex("00 00"));
  EXPECT_EQ(nullptr, asn1_eoc_d(input.z(), input.z() + 1));
  EXPECT_EQ(nullptr, asn1_eoc_d(input.end(), input.z()));
  EXPECT_EQ(nullptr, asn1_eoc_d(nullptr, input.end()));
  EXPECT_EQ(nullptr, asn1_eoc_d(nullptr, nullptr));
}

// -- Programmer's errors ------------------------------------------------------------------------

TEST(FrameDeathTest, TagDecoderWithoutACursorOrAnEnd) {
  const uint8_t octets[] = {0x02, 0x00};
  EXPECT_ASSERT(asn1_Tag_d(nullptr, octets + 2, 0, 2, nullptr, 0), "asn1_Tag_d", "z != NULL");
  EXPECT_ASSERT(asn1_Tag_d(octets, nullptr, 0, 2, nullptr, 0), "asn1_Tag_d", "end != NULL");
  EXPECT_ASSERT(asn1_Tag_d(nullptr, nullptr, 0, 2, nullptr, 0), "asn1_Tag_d", "z != NULL");
}

TEST(FrameDeathTest, LengthDecoderWithoutACursorAnEndOrAPlace) {
  const uint8_t octets[] = {0x00};
  uint32_t length = 0;
  EXPECT_ASSERT(asn1_Length_d(nullptr, octets + 1, &length, nullptr, 0), "asn1_Length_d",
                "z != NULL");
  EXPECT_ASSERT(asn1_Length_d(octets, nullptr, &length, nullptr, 0), "asn1_Length_d",
                "end != NULL");
  EXPECT_ASSERT(asn1_Length_d(octets, octets + 1, nullptr, nullptr, 0), "asn1_Length_d",
                "length != NULL");
  EXPECT_ASSERT(asn1_Length_d(nullptr, nullptr, nullptr, nullptr, 0), "asn1_Length_d", "z != NULL");
  EXPECT_ASSERT(asn1_Length_d(octets, nullptr, nullptr, nullptr, 0), "asn1_Length_d",
                "end != NULL");
}

TEST(FrameDeathTest, TagLengthDecoderFailsTheAssertsOfItsTwoSteps) {
  const uint8_t octets[] = {0x02, 0x00};
  uint32_t length = 0;
  EXPECT_ASSERT(asn1_TagLength_d(nullptr, octets + 2, 0, 2, nullptr, &length, nullptr, 0),
                "asn1_Tag_d", "z != NULL");
  EXPECT_ASSERT(asn1_TagLength_d(octets, nullptr, 0, 2, nullptr, &length, nullptr, 0), "asn1_Tag_d",
                "end != NULL");
  EXPECT_ASSERT(asn1_TagLength_d(octets, octets + 2, 0, 2, nullptr, nullptr, nullptr, 0),
                "asn1_Length_d", "length != NULL");
}

TEST(TagLengthDecoder, DoesNotMissAPlaceForTheLengthBehindARefusedTag) {
  const uint8_t octets[] = {0x04, 0x00};
  EXPECT_EQ(nullptr, asn1_TagLength_d(octets, octets + 2, 0, 2, nullptr, nullptr, nullptr, 0));
}

}  // namespace

}  // namespace frame_test
