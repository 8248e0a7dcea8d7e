// Tests OCTET STRING and the character strings: the functions that take a tag, and the eleven
// types, which differ only in their tags.
#include <utility>

#include "allocator.h"
#include "support.h"

namespace strings_test {

namespace {

using namespace support;

struct Release {
  void operator()(ASN1String *s) const { asn1_ASN1String_free(s); }
};
using String = std::unique_ptr<ASN1String, Release>;

/// Returns a string of these octets.
String string_of(const Bytes &octets) {
  return String(asn1_ASN1String_new(static_cast<uint32_t>(octets.size()),
                                    octets.empty() ? nullptr : octets.data()));
}

void expect_octets(const Bytes &octets, const ASN1String *s) {
  ASSERT_NE(nullptr, s);
  ASSERT_EQ(octets.size(), s->length);
  EXPECT_EQ(octets, value(s));
  EXPECT_EQ(octets.empty(), s->data == nullptr);
}

void expect_decoded(const Bytes &octets, long consumed, const Bytes &input, uint32_t impl_tag = 0) {
  const auto decoded = decode(asn1_OctetString_d, input, impl_tag);
  const String released(decoded.record);
  EXPECT_EQ(consumed, decoded.consumed);
  expect_octets(octets, decoded.record);
}

void expect_decoded(std::string_view octets, long consumed, std::string_view input,
                    uint32_t impl_tag = 0) {
  SCOPED_TRACE(input);
  expect_decoded(hex(octets), consumed, hex(input), impl_tag);
}

/// Checks that the octets are refused, and that the place for the record is set to NULL.
void expect_refused(const Bytes &input, uint32_t impl_tag = 0) {
  OctetString before{};
  EXPECT_EQ(nullptr, left_by_refusal(asn1_OctetString_d, input, &before, impl_tag));
}

void expect_refused(std::string_view input, uint32_t impl_tag = 0) {
  SCOPED_TRACE(input);
  expect_refused(hex(input), impl_tag);
}

/// asn1_ASN1String_e() and asn1_ASN1String_d() of one tag, as the functions of a type.
Bytes encode_under(uint32_t tag, const ASN1String *s) {
  return encode_with([&](uint8_t **pp) { return asn1_ASN1String_e(pp, tag, s); });
}

String decode_under(uint32_t tag, std::string_view octets, uint32_t impl_tag = 0,
                    uint32_t depth = 0) {
  const Input input(hex(octets));
  ASN1String *s = nullptr;
  asn1_ASN1String_d(input.z(), input.end(), impl_tag, tag, &s, depth);
  return String(s);
}

using Lines = std::vector<std::string>;

Lines traced(std::string_view input, uint32_t depth, uint32_t impl_tag = 0) {
  return trace_lines(
      [&] { String(decode(asn1_OctetString_d, hex(input), impl_tag, depth).record); });
}

/// The blanks that a dump has in place of the octets missing from its last line.
std::string blanks(size_t octets) { return std::string(3 * octets, ' '); }

/// Returns `inner` inside `levels` constructed strings of indefinite length.
Bytes nested_indefinite(size_t levels, const Bytes &inner) {
  Bytes out;
  for (size_t i = 0; i < levels; ++i) out.insert(out.end(), {0x24, 0x80});
  return out + inner + Bytes(2 * levels, 0);
}

/// Returns `inner` inside `levels` constructed strings of definite length, with headers of five
/// octets.
Bytes nested_definite(size_t levels, const Bytes &inner) {
  Bytes out;
  for (size_t i = levels; i-- > 0;) {
    const size_t length = 5 * i + inner.size();
    out.insert(out.end(), {0x24, 0x83, static_cast<uint8_t>(length >> 16),
                           static_cast<uint8_t>(length >> 8), static_cast<uint8_t>(length)});
  }
  return out + inner;
}

// ---- the record ---------------------------------------------------------------------------------

TEST(String, NewOfZeroTakesATerminatedText) {
  expect_octets({}, String(asn1_ASN1String_new(0, "")).get());
  expect_octets(text("abc"), String(asn1_ASN1String_new(0, "abc")).get());
}

TEST(String, NewOfZeroWithoutATextIsEmpty) {
  expect_octets({}, String(asn1_ASN1String_new(0, nullptr)).get());
}

TEST(String, NewWithoutOctetsIsZeroFilled) {
  expect_octets(hex("00 00 00"), String(asn1_ASN1String_new(3, nullptr)).get());
}

TEST(String, NewTakesExactlyTheOctetsAskedFor) {
  expect_octets(text("ab"), String(asn1_ASN1String_new(2, "abc")).get());
  expect_octets(hex("61 00 62 00"), String(asn1_ASN1String_new(4, "a\0b")).get());
}

TEST(String, NewCopiesTheOctets) {
  Bytes octets = text("abc");
  const String s(asn1_ASN1String_new(3, octets.data()));
  octets[0] = 'x';
  expect_octets(text("abc"), s.get());
}

TEST(String, FreeIgnoresNull) { asn1_ASN1String_free(nullptr); }

TEST(String, CloneOfNullIsNull) { EXPECT_EQ(nullptr, asn1_ASN1String_clone(nullptr)); }

TEST(String, CloneHasABufferOfItsOwn) {
  const String original = string_of(hex("00 41 00"));
  const String copy(asn1_ASN1String_clone(original.get()));
  original->data[1] = 0;
  expect_octets(hex("00 41 00"), copy.get());
  expect_octets({}, String(asn1_ASN1String_clone(string_of({}).get())).get());
}

TEST(String, CloneOfNoOctetsWithABufferTakesTheBufferForAText) {
  uint8_t buffer[] = {'a', 'b', 'c', 0};
  const ASN1String odd{0, buffer};
  expect_octets(text("abc"), String(asn1_ASN1String_clone(&odd)).get());
}

TEST(String, CmpOfEmptyStringsIsZeroWithoutALookAtTheOctets) {
  ASN1String a{0, nullptr}, b{0, nullptr};
  EXPECT_EQ(0, asn1_ASN1String_cmp(&a, &b));
  a.data = reinterpret_cast<uint8_t *>(uintptr_t{16});
  EXPECT_EQ(0, asn1_ASN1String_cmp(&a, &b));
  EXPECT_EQ(0, asn1_ASN1String_cmp(&b, &a));
}

TEST(String, CmpOfDifferentLengthsIsOneWhicheverIsLonger) {
  const String a = string_of(text("ab")), b = string_of(text("abc")), empty = string_of({});
  EXPECT_EQ(1, asn1_ASN1String_cmp(a.get(), b.get()));
  EXPECT_EQ(1, asn1_ASN1String_cmp(b.get(), a.get()));
  EXPECT_EQ(1, asn1_ASN1String_cmp(empty.get(), a.get()));
}

TEST(String, CmpWithoutARecordOrItsOctetsIsOne) {
  const String a = string_of(hex("00 00"));
  const ASN1String hollow{2, nullptr};
  EXPECT_EQ(1, asn1_ASN1String_cmp(a.get(), nullptr));
  EXPECT_EQ(1, asn1_ASN1String_cmp(nullptr, a.get()));
  EXPECT_EQ(1, asn1_ASN1String_cmp(nullptr, nullptr));
  EXPECT_EQ(1, asn1_ASN1String_cmp(a.get(), &hollow));
  EXPECT_EQ(1, asn1_ASN1String_cmp(&hollow, a.get()));
}

TEST(String, CmpComparesOctets) {
  const String a = string_of(hex("41 00 42"));
  EXPECT_EQ(0, asn1_ASN1String_cmp(a.get(), string_of(hex("41 00 42")).get()));
  EXPECT_NE(0, asn1_ASN1String_cmp(a.get(), string_of(hex("41 00 43")).get()));
  EXPECT_NE(0, asn1_ASN1String_cmp(string_of(hex("41 00 43")).get(), a.get()));
}

// ---- append -------------------------------------------------------------------------------------

TEST(String, AppendPutsOctetsBehindTheValue) {
  const String s = string_of({});
  EXPECT_EQ(s.get(), asn1_ASN1String_append(s.get(), 2, "ab"));
  EXPECT_EQ(s.get(), asn1_ASN1String_append(s.get(), 3, "\0cd"));
  expect_octets(hex("61 62 00 63 64"), s.get());
}

TEST(String, AppendOfNothingChangesNothing) {
  const String s = string_of(text("ab"));
  EXPECT_EQ(s.get(), asn1_ASN1String_append(s.get(), 0, "x"));
  EXPECT_EQ(s.get(), asn1_ASN1String_append(s.get(), 0, nullptr));
  expect_octets(text("ab"), s.get());
  const String empty = string_of({});
  EXPECT_EQ(empty.get(), asn1_ASN1String_append(empty.get(), 0, "x"));
  EXPECT_EQ(nullptr, empty->data);
}

TEST(String, AppendWithoutASourceMakesRoom) {
  const String s = string_of(text("ab"));
  EXPECT_EQ(s.get(), asn1_ASN1String_append(s.get(), 2, nullptr));
  ASSERT_EQ(4u, s->length);
  s->data[2] = 'c';
  s->data[3] = 'd';
  expect_octets(text("abcd"), s.get());
}

TEST(String, AppendFailsWhereTheLengthDoesNotFit32Bits) {
  const String s = string_of(text("ab"));
  for (const uint32_t count : {0xFFFFFFFEu, 0xFFFFFFFFu})
    EXPECT_EQ(nullptr, asn1_ASN1String_append(s.get(), count, nullptr)) << count;
  expect_octets(text("ab"), s.get());
}

// ---- encoder ------------------------------------------------------------------------------------

TEST(StringEncoder, WritesTheTagOctetAsItStands) {
  const String s = string_of(text("AB"));
  EXPECT_EQ(hex("04 02 41 42"), encode_under(4, s.get()));
  EXPECT_EQ(hex("24 02 41 42"), encode_under(0x24, s.get()));
  EXPECT_EQ(hex("9F 02 41 42"), encode_under(0x9F, s.get()));
  EXPECT_EQ(hex("00 02 41 42"), encode_under(0, s.get()));
  EXPECT_EQ(hex("0C 02 41 42"), encode_under(0x10C, s.get()));
}

TEST(StringEncoder, WritesAnEmptyValue) {
  EXPECT_EQ(hex("04 00"), encode_under(4, string_of({}).get()));
}

TEST(StringEncoder, WritesTheShortestLength) {
  for (const auto &[size, header] : {std::pair{size_t{127}, "04 7F"},
                                     {size_t{128}, "04 81 80"},
                                     {size_t{256}, "04 82 01 00"},
                                     {size_t{65536}, "04 83 01 00 00"}}) {
    const Bytes octets(size, 0xA5);
    EXPECT_EQ(hex(header) + octets, encode_under(4, string_of(octets).get())) << size;
  }
}

TEST(StringEncoder, WritesNothingForNull) {
  uint8_t octet = 0xA5;
  uint8_t *cursor = &octet;
  for (const uint32_t tag : {3u, 4u}) {
    EXPECT_EQ(0u, asn1_ASN1String_e(nullptr, tag, nullptr));
    EXPECT_EQ(0u, asn1_ASN1String_e(&cursor, tag, nullptr));
  }
  EXPECT_EQ(&octet, cursor);
  EXPECT_EQ(0xA5, octet);
}

TEST(StringEncoder, TreatsAnyStringUnderTag3AsABitString) {
  uint8_t octets[] = {0x80, 0x00};
  const ASN1String nine_bits{9, octets};
  EXPECT_EQ(hex("03 02 07 80"), encode_under(3, &nine_bits));
  EXPECT_EQ(hex("03 02 07 80"), encode_under(0x103, &nine_bits));
  const ASN1String no_bits{0, nullptr};
  EXPECT_EQ(hex("03 01 00"), encode_under(3, &no_bits));
}

TEST(StringEncoder, TreatsNoOtherTagAsABitString) {
  const String s = string_of(hex("80 00"));
  EXPECT_EQ(hex("23 02 80 00"), encode_under(0x23, s.get()));
  EXPECT_EQ(hex("83 02 80 00"), encode_under(0x83, s.get()));
}

// ---- decoder, primitive -------------------------------------------------------------------------

TEST(StringDecoder, TakesAnEmptyValueThatIsWrittenBackAsItCame) {
  const auto decoded = decode(asn1_OctetString_d, hex("04 00"));
  const String s(decoded.record);
  EXPECT_EQ(2, decoded.consumed);
  expect_octets({}, s.get());
  EXPECT_EQ(hex("04 00"), encode(asn1_OctetString_e, s.get()));
}

TEST(StringDecoder, TakesAPrimitiveValueAndStopsBehindIt) {
  expect_decoded("41 00 42", 5, "04 03 41 00 42");
  expect_decoded("41", 3, "04 01 41 04 01 42");
  expect_decoded("41 42", 5, "04 81 02 41 42");
  expect_decoded("41 42", 8, "04 84 00 00 00 02 41 42");
}

TEST(StringDecoder, TakesALongValue) {
  const Bytes octets(300, 0x5A);
  expect_decoded(octets, 304, hex("04 82 01 2C") + octets);
}

TEST(StringDecoder, RefusesAnotherTagABadLengthAndALengthBehindTheEnd) {
  for (const char *input :
       {"", "04", "03 01 41", "0C 01 41", "84 01 41", "23 00", "04 85 00 00 00 00 01 41",
        "04 FF 41", "04 02 41", "04 81", "04 82 01", "24 04 04 01 41"})
    expect_refused(input);
}

TEST(StringDecoder, TakesAPrimitiveValueOfIndefiniteLength) {
  expect_decoded("41 42", 6, "04 80 41 42 00 00");
  expect_decoded("", 4, "04 80 00 00");
}

TEST(StringDecoder, EndsAPrimitiveIndefiniteValueAtTheFirstTwoZeroOctets) {
  expect_decoded("41", 5, "04 80 41 00 00 42 00 00");
  expect_decoded("41 00 42", 7, "04 80 41 00 42 00 00");
  expect_decoded("41", 5, "04 80 41 00 00 00");
  expect_decoded("", 4, "04 80 00 00 41 00 00");
}

TEST(StringDecoder, RefusesAPrimitiveIndefiniteValueWithoutTwoZeroOctets) {
  for (const char *input :
       {"04 80", "04 80 00", "04 80 41", "04 80 41 42", "04 80 41 00", "04 80 00 41 00"})
    expect_refused(input);
}

TEST(StringDecoder, TakesATagArgumentOfAnyNumber) {
  expect_octets(hex("07 80"), decode_under(3, "03 02 07 80").get());
  expect_octets(hex("41"), decode_under(30, "1E 01 41").get());
  expect_octets(hex("41"), decode_under(0x1F, "1F 01 41").get());
  expect_octets(hex("41"), decode_under(0x104, "04 01 41").get());
  expect_octets(hex("41"), decode_under(4, "81 01 41", 0x181).get());
  expect_octets(hex("41"), decode_under(4, "04 01 41", 0x100).get());
}

// ---- decoder, constructed -----------------------------------------------------------------------

TEST(StringDecoder, TakesAnEmptyConstructedValue) {
  expect_decoded("", 2, "24 00");
  expect_decoded("", 4, "24 80 00 00");
  expect_decoded("", 6, "24 04 04 00 24 00");
}

TEST(StringDecoder, JoinsSegmentsInOrderAndFlattensNesting) {
  expect_decoded("41 42", 12, "24 80 04 01 41 24 03 04 01 42 00 00");
}

TEST(StringDecoder, WritesAConstructedValueBackInPrimitiveForm) {
  const String s(decode(asn1_OctetString_d, hex("24 80 04 01 41 24 03 04 01 42 00 00")).record);
  EXPECT_EQ(hex("04 02 41 42"), encode(asn1_OctetString_e, s.get()));
}

TEST(StringDecoder, JoinsEveryCombinationOfForms) {
  struct {
    const char *input;
    long consumed;
    const char *octets;
  } const rows[] = {
      // Segments: primitive definite, primitive indefinite, constructed definite and indefinite.
      {"24 03 04 01 41", 5, "41"},
      {"24 05 04 80 41 00 00", 7, "41"},
      {"24 05 24 03 04 01 41", 7, "41"},
      {"24 07 24 80 04 01 41 00 00", 9, "41"},
      {"24 80 04 01 41 00 00", 7, "41"},
      {"24 80 04 80 41 00 00 00 00", 9, "41"},
      {"24 80 24 03 04 01 41 00 00", 9, "41"},
      {"24 80 24 80 04 01 41 00 00 00 00", 11, "41"},
      // All four in a row, in both forms of the whole, with more octets after it.
      {"24 14 04 01 41 04 80 42 00 00 24 03 04 01 43 24 80 04 01 44 00 00 EE", 22, "41 42 43 44"},
      {"24 80 04 01 41 04 80 42 00 00 24 03 04 01 43 24 80 04 01 44 00 00 00 00 EE", 24,
       "41 42 43 44"},
  };
  for (const auto &row : rows) expect_decoded(row.octets, row.consumed, row.input);
}

TEST(StringDecoder, NeedsNoEndOfContentsBehindAConstructedDefiniteValue) {
  expect_decoded("41", 5, "24 03 04 01 41");
  expect_decoded("41", 5, "24 03 04 01 41 00 00");
}

TEST(StringDecoder, RefusesAConstructedIndefiniteValueWithoutEndOfContents) {
  for (const char *input :
       {"24 80", "24 80 00", "24 80 04 01 41", "24 80 04 01 41 00", "24 80 04 01 41 00 01",
        "24 80 04 01 41 04 01 42", "24 80 24 80 04 01 41 00 00", "24 05 24 80 04 01 41 00 00"})
    expect_refused(input);
}

TEST(StringDecoder, TakesAnImplicitTagOfAConstructedValue) {
  expect_decoded("41", 5, "A1 03 04 01 41", 0xA1);
  expect_decoded("41", 5, "A1 03 04 01 41", 0x81);
  expect_decoded("41", 3, "81 01 41", 0xA1);
  expect_decoded("41", 7, "A1 80 04 01 41 00 00", 0x81);
  expect_decoded("41 42", 10, "A1 08 24 03 04 01 41 04 01 42", 0x81);
}

TEST(StringDecoder, RefusesItsOwnTagUnderAnImplicitTagAndThatTagInSegments) {
  expect_refused("04 01 41", 0x81);
  expect_refused("A1 03 81 01 41", 0x81);
}

TEST(StringDecoder, RefusesTheWholeForASegmentWithAnotherTag) {
  expect_refused("24 06 04 01 41 0C 01 42");
  expect_refused("24 03 03 01 00");
  expect_refused("24 05 24 03 0C 01 41");
  expect_refused("24 80 04 01 41 0C 00 00 00");
}

TEST(StringDecoder, RefusesTheWholeForABadSegment) {
  for (const char *input : {"24 06 04 01 41 04 02 42 43",     // past the end of the string
                            "24 04 04 01 41 04",              // cut
                            "24 08 04 01 41 04 80 42 43 00",  // no two zero octets inside
                            "24 05 04 80 42 43 00 00",        // two zero octets outside
                            "24 80 04 01 41 04 80 42 00 00"})
    expect_refused(input);
}

TEST(StringDecoder, RefusesAPrimitiveLengthWithItsTopBitSet) {
  for (const char *input : {"04 84 80 00 00 00", "04 84 80 00 00 01 41", "04 84 FF FF FF FF 41",
                            "04 84 FF FF FF FA", "24 07 04 84 80 00 00 01 41"})
    expect_refused(input);
}

TEST(StringDecoder, TakesAConstructedLengthWithItsTopBitSetForEmpty) {
  expect_decoded("", 6, "24 84 80 00 00 00");
  expect_decoded("", 6, "24 84 FF FF FF FF 04 01 41");
  expect_decoded("41", 11, "24 09 24 84 80 00 00 03 04 01 41");
}

TEST(StringDecoder, JoinsDeepNestingOnASmallStack) {
  constexpr size_t mebibyte = size_t{1} << 20;
  const Bytes inner = hex("04 01 41");
  for (const Bytes &input :
       {nested_indefinite(mebibyte / 2, inner), nested_definite(mebibyte / 5, inner)}) {
    expect_decoded(hex("41"), static_cast<long>(input.size()), input);
    on_small_stack([&] { expect_decoded(hex("41"), static_cast<long>(input.size()), input); });
  }
}

TEST(StringDecoder, RefusesDeepNestingThatIsNotClosedOnASmallStack) {
  constexpr size_t mebibyte = size_t{1} << 20;
  Bytes one_octet_short = nested_indefinite(mebibyte / 2, hex("04 00"));
  one_octet_short.pop_back();
  for (const Bytes &input : {nested_definite(mebibyte / 5, hex("0C 00")),
                             nested_indefinite(mebibyte / 2, hex("0C 00")), one_octet_short})
    on_small_stack([&] { expect_refused(input); });
}

TEST(StringDecoder, JoinsManySegments) {
  constexpr size_t segments = 100'000;
  Bytes content;
  for (size_t i = 0; i < segments; ++i) content.insert(content.end(), {4, 1, 0x41});
  const Bytes input = element(0x24, content);
  expect_decoded(Bytes(segments, 0x41), static_cast<long>(input.size()), input);
}

TEST(StringDecoder, JoinsALongValueInsideDeepNesting) {
  constexpr size_t levels = 320'000;
  const Bytes octets(levels, 0x41);
  const Bytes input = nested_indefinite(levels, element(4, octets));
  expect_decoded(octets, static_cast<long>(input.size()), input);
}

// ---- trace --------------------------------------------------------------------------------------

TEST(StringTrace, DumpsTheOctets) {
  EXPECT_EQ((Lines{"OCTETSTRING", "  0x00000000 41 42 7F " + blanks(13) + "AB."}),
            traced("04 03 41 42 7F", 1));
  EXPECT_EQ((Lines{". . OCTETSTRING",
                   ". .   0x00000000 30 31 32 33 34 35 36 37 38 39 3A 3B 3C 3D 3E 3F "
                   "0123456789:;<=>?",
                   ". .   0x00000010 40 " + blanks(15) + "@"}),
            traced("04 11 30 31 32 33 34 35 36 37 38 39 3A 3B 3C 3D 3E 3F 40", 3));
  EXPECT_EQ((Lines{"OCTETSTRING", "  0x00000000 41 " + blanks(15) + "A"}),
            traced("04 80 41 00 00", 1));
}

TEST(StringTrace, DumpsNothingForAnEmptyValue) {
  EXPECT_EQ((Lines{"OCTETSTRING"}), traced("04 00", 1));
  EXPECT_EQ((Lines{"OCTETSTRING"}), traced("04 80 00 00", 1));
}

TEST(StringTrace, ShowsAnImplicitTag) {
  EXPECT_EQ((Lines{"CONTEXT-SPECIFIC PRIMITIVE [1] OCTETSTRING"}), traced("81 00", 1, 0x81));
  EXPECT_EQ((Lines{". CONTEXT-SPECIFIC CONSTRUCTED [0] OCTETSTRING", "}"}),
            traced("A0 00", 2, 0x80));
  EXPECT_EQ((Lines{"APPLICATION PRIMITIVE [2] OCTETSTRING"}), traced("42 00", 1, 0x42));
  EXPECT_EQ((Lines{"PRIVATE PRIMITIVE [3] {"}), traced("C3 00", 1, 0xC3));
}

TEST(StringTrace, PrintsAnEmptyWordForTag31) {
  EXPECT_EQ((Lines{" PRIMITIVE [31] "}),
            trace_lines([] { EXPECT_NE(nullptr, decode_under(0x1F, "1F 00", 0, 1)); }));
}

TEST(StringTrace, KeepsSegmentsAtTheDepthOfTheWholeAndClosesOneLevelAbove) {
  EXPECT_EQ((Lines{". . OCTETSTRING {",                        //
                   ". . OCTETSTRING",                          //
                   ". .   0x00000000 41 " + blanks(15) + "A",  //
                   ". . OCTETSTRING {",                        //
                   ". . OCTETSTRING",                          //
                   ". .   0x00000000 42 " + blanks(15) + "B",  //
                   ". }",                                      //
                   ". }"}),
            traced("24 80 04 01 41 24 03 04 01 42 00 00", 3));
}

TEST(StringTrace, ClosesAtDepth1WithoutALine) {
  EXPECT_EQ((Lines{"OCTETSTRING {", "OCTETSTRING"}), traced("24 02 04 00", 1));
  EXPECT_EQ((Lines{". OCTETSTRING {", "}"}), traced("24 80 00 00", 2));
}

TEST(StringTrace, CountsTheDepthIn32BitsAndCutsItOnlyToWrite) {
  const Lines lines = traced("24 00", 65536);
  ASSERT_EQ(1u, lines.size());
  EXPECT_EQ(2u * 65534 + 1, lines[0].size());
  EXPECT_EQ(". }", lines[0].substr(lines[0].size() - 3));
  EXPECT_EQ((Lines{"OCTETSTRING {"}), traced("24 00", 65537));
  EXPECT_EQ((Lines{". OCTETSTRING {", "}"}), traced("24 00", 65538));
}

TEST(StringTrace, IsSilentAtDepth0) {
  EXPECT_EQ(Lines{}, traced("24 03 04 01 41", 0));
  EXPECT_EQ(Lines{}, traced("04 05 41", 0));
}

TEST(StringTrace, ClosesAndDumpsNothingAfterAFailure) {
  EXPECT_EQ((Lines{". OCTETSTRING {", ". OCTETSTRING", ".   0x00000000 41 " + blanks(15) + "A"}),
            traced("24 05 04 01 41 0C 00", 2));
  EXPECT_EQ((Lines{". OCTETSTRING {"}), traced("24 80 00", 2));
  EXPECT_EQ((Lines{". OCTETSTRING"}), traced("04 80 41 42", 2));
  EXPECT_EQ((Lines{". OCTETSTRING"}), traced("04 84 80 00 00 01 41", 2));
}

TEST(StringTrace, TellsALengthBehindTheEnd) {
  EXPECT_EQ((Lines{". OCTETSTRING", ". z larger than end!"}), traced("04 02 41", 2));
  EXPECT_EQ((Lines{". OCTETSTRING", ". z larger than end!"}), traced("04 82 01", 2));
  EXPECT_EQ((Lines{". OCTETSTRING {", ". OCTETSTRING", ". z larger than end!"}),
            traced("24 03 04 02 41 42", 2));
  EXPECT_EQ(Lines{}, traced("0C 01 41", 2));
}

// ---- ends of the process and of memory ----------------------------------------------------------

TEST(StringDeathTest, DecoderAssertsItsPointers) {
  const Bytes input = hex("04 00");
  const uint8_t *const z = input.data();
  ASN1String *s = nullptr;
  EXPECT_ASSERT(asn1_ASN1String_d(nullptr, z + 2, 0, 4, &s, 0), "asn1_ASN1String_d", "z != NULL");
  EXPECT_ASSERT(asn1_ASN1String_d(z, nullptr, 0, 4, &s, 0), "asn1_ASN1String_d", "end != NULL");
  EXPECT_ASSERT(asn1_ASN1String_d(z, z + 2, 0, 4, nullptr, 0), "asn1_ASN1String_d", "s != NULL");
}

TEST(StringDeathTest, AppendAssertsItsRecord) {
  EXPECT_ASSERT(asn1_ASN1String_append(nullptr, 1, "x"), "asn1_ASN1String_append", "s != NULL");
  EXPECT_ASSERT(asn1_ASN1String_append(nullptr, 0, nullptr), "asn1_ASN1String_append", "s != NULL");
}

#ifndef ORVELASN1_TESTS_SANITIZED
TEST(StringMemory, NewAndCloneFailWhenItIsExhausted) {
  const String original = string_of(text("abc"));
  expect_failure_at_each_allocation(
      [] { return String(asn1_ASN1String_new(0, "abc")) != nullptr; });
  expect_failure_at_each_allocation([] { return String(asn1_OctetString_new(3)) != nullptr; });
  expect_failure_at_each_allocation(
      [&] { return String(asn1_ASN1String_clone(original.get())) != nullptr; });
}

TEST(StringMemory, DecoderReleasesWhatItMadeWhenItIsExhausted) {
  for (const char *octets : {"04 01 41", "04 80 41 00 00", "24 03 04 01 41",
                             "24 80 04 01 41 24 03 04 01 42 04 80 43 00 00 00 00"}) {
    SCOPED_TRACE(octets);
    const Bytes input = hex(octets);
    OctetString before{};
    expect_failure_at_each_allocation([&] {
      OctetString *s = &before;
      const bool read = asn1_OctetString_d(input.data(), input.data() + input.size(), 0, &s, 0);
      EXPECT_EQ(read, s != nullptr);
      asn1_OctetString_free(s);
      return read;
    });
  }
}

TEST(StringMemory, FailedGrowthLeavesTheRecordAsItWas) {
  const String s = string_of(text("ab"));
  {
    const FailingAllocation failing(0);
    EXPECT_EQ(nullptr, asn1_ASN1String_append(s.get(), 1, "c"));
    EXPECT_TRUE(failing.happened());
  }
  expect_octets(text("ab"), s.get());
}
#endif

// ---- the eleven types ---------------------------------------------------------------------------

struct Type {
  const char *name;
  uint8_t tag;
  const char *word;  // its name in the trace
  decltype(&asn1_OctetString_new) make;
  decltype(&asn1_OctetString_free) free;
  decltype(&asn1_OctetString_e) e;
  decltype(&asn1_OctetString_d) d;
  decltype(&asn1_OctetString_clone) clone;
  decltype(&asn1_OctetString_cmp) cmp;
};

#define TYPE(name, tag, word)                                                                  \
  Type {                                                                                       \
#name, tag, word, asn1_##name##_new, asn1_##name##_free, asn1_##name##_e, asn1_##name##_d, \
        asn1_##name##_clone, asn1_##name##_cmp                                                 \
  }

class StringType : public testing::TestWithParam<Type> {
 protected:
  /// Returns the octets under the identifier octet of the type, with these bits set in addition.
  static Bytes under(int bits, std::string_view rest) {
    return Bytes{static_cast<uint8_t>(GetParam().tag | bits)} + hex(rest);
  }
  static void expect_decoded(std::string_view octets, long consumed, const Bytes &input,
                             uint32_t impl_tag = 0) {
    const auto decoded = decode(GetParam().d, input, impl_tag);
    EXPECT_EQ(consumed, decoded.consumed);
    expect_octets(hex(octets), decoded.record);
    GetParam().free(decoded.record);
  }
  static void expect_refused(const Bytes &input, uint32_t impl_tag = 0) {
    ASN1String before{};
    EXPECT_EQ(nullptr, left_by_refusal(GetParam().d, input, &before, impl_tag));
  }
};

INSTANTIATE_TEST_SUITE_P(Of, StringType,
                         testing::Values(TYPE(OctetString, 4, "OCTETSTRING"),
                                         TYPE(UTF8String, 12, "UTF8STRING"),
                                         TYPE(NumericString, 18, "NUMERICSTRING "),
                                         TYPE(PrintableString, 19, "PRINTABLESTRING "),
                                         TYPE(TeletexString, 20, "TELETEXSTRING "),
                                         TYPE(VideotextString, 21, "VIDEOTEXTSTRING "),
                                         TYPE(IA5String, 22, "IA5STRING "),
                                         TYPE(GraphicString, 25, "GRAPHICSTRING "),
                                         TYPE(VisibleString, 26, "VISIBLESTRING "),
                                         TYPE(GeneralString, 27, "GENERALSTRING "),
                                         TYPE(UniversalString, 28, "UNIVERSALSTRING ")),
                         [](const auto &type) { return std::string(type.param.name); });

TEST_P(StringType, NewIsZeroFilledAndFreeIgnoresNull) {
  const String five(GetParam().make(5));
  expect_octets(hex("00 00 00 00 00"), five.get());
  ASN1String *const none = GetParam().make(0);
  expect_octets({}, none);
  GetParam().free(none);
  GetParam().free(nullptr);
}

TEST_P(StringType, EncodesAnyOctetsUnderItsTag) {
  EXPECT_EQ(under(0, "04 41 00 FF 2A"), encode(GetParam().e, string_of(hex("41 00 FF 2A")).get()));
  EXPECT_EQ(under(0, "00"), encode(GetParam().e, string_of({}).get()));
  EXPECT_EQ(0u, GetParam().e(nullptr, nullptr));
}

// Its octets are not looked at while they are counted.
TEST_P(StringType, CountsUpTo32Bits) {
  for (const auto &[length, whole] : {std::pair{0x7FFFFFF9U, 0x7FFFFFFFU},
                                      {0x80000000U, 0x80000006U},
                                      {0xFFFFFFF9U, 0xFFFFFFFFU}}) {
    const ASN1String string{length, nullptr};
    EXPECT_EQ(whole, GetParam().e(nullptr, &string)) << length;
  }
  for (const uint32_t length : {0xFFFFFFFAU, 0xFFFFFFFFU}) {
    const ASN1String string{length, nullptr};
    uint8_t octet = 0;
    uint8_t *cursor = &octet;
    EXPECT_EQ(0U, GetParam().e(nullptr, &string)) << length;
    EXPECT_EQ(0U, GetParam().e(&cursor, &string)) << length;
    EXPECT_EQ(&octet, cursor);
  }
}

TEST_P(StringType, DecodesAnyOctetsUnderItsTag) {
  expect_decoded("41 00 FF 2A", 6, under(0, "04 41 00 FF 2A"));
  expect_decoded("", 2, under(0, "00"));
}

TEST_P(StringType, RefusesEveryOtherTag) {
  for (int tag = 0; tag < 256; ++tag)
    if ((tag & ~0x20) != GetParam().tag) expect_refused(Bytes{static_cast<uint8_t>(tag), 0});
}

TEST_P(StringType, DecodesEveryForm) {
  expect_decoded("41 42", 6, under(0, "80 41 42 00 00"));
  const Bytes segments = under(0, "01 41") + under(0x20, "03") + under(0, "01 42");
  expect_decoded("41 42", 10, under(0x20, "08") + segments);
  expect_decoded("41 42", 12, under(0x20, "80") + segments + hex("00 00"));
}

TEST_P(StringType, RefusesASegmentWithAnotherTag) {
  expect_refused(under(0x20, "06") + under(0, "01 41") + hex("1E 01 42"));
}

TEST_P(StringType, DecodesUnderAnImplicitTag) {
  expect_decoded("41", 3, hex("81 01 41"), 0x81);
  expect_decoded("41", 5, hex("A1 03") + under(0, "01 41"), 0x81);
  expect_decoded("41", 5, hex("A1 03") + under(0, "01 41"), 0xA1);
  expect_refused(under(0, "01 41"), 0x81);
}

TEST_P(StringType, IsWrittenUnderAnImplicitTag) {
  const String s = string_of(text("A"));
  const auto write = [&](uint8_t **pp) { return asn1_implicit_e(pp, 0xA2, s.get(), GetParam().e); };
  EXPECT_EQ(hex("82 01 41"), encode_with(write));
}

TEST_P(StringType, ClonesDeep) {
  const String original = string_of(hex("41 00"));
  const String copy(GetParam().clone(original.get()));
  original->data[0] = 0;
  expect_octets(hex("41 00"), copy.get());
  EXPECT_EQ(nullptr, GetParam().clone(nullptr));
}

TEST_P(StringType, CmpIsZeroForEqualOctetsOnly) {
  const String a = string_of(hex("41 00")), b = string_of(hex("41 00"));
  EXPECT_EQ(0, GetParam().cmp(a.get(), b.get()));
  b->data[1] = 1;
  EXPECT_NE(0, GetParam().cmp(a.get(), b.get()));
  EXPECT_EQ(1, GetParam().cmp(a.get(), string_of(hex("41")).get()));
}

TEST_P(StringType, IsTracedUnderItsName) {
  const auto trace = [](const Bytes &input, uint32_t impl_tag) {
    return trace_lines([&] { String(decode(GetParam().d, input, impl_tag, 1).record); });
  };
  const std::string word = GetParam().word;
  EXPECT_EQ((Lines{word, "  0x00000000 41 " + blanks(15) + "A"}), trace(under(0, "01 41"), 0));
  EXPECT_EQ((Lines{word + " {"}), trace(under(0x20, "00"), 0));
  EXPECT_EQ((Lines{"CONTEXT-SPECIFIC PRIMITIVE [7] " + word}), trace(hex("87 00"), 0x87));
}

using StringTypeDeathTest = StringType;

INSTANTIATE_TEST_SUITE_P(Of, StringTypeDeathTest,
                         testing::Values(TYPE(OctetString, 4, "OCTETSTRING"),
                                         TYPE(UniversalString, 28, "UNIVERSALSTRING ")),
                         [](const auto &type) { return std::string(type.param.name); });

TEST_P(StringTypeDeathTest, DecoderAssertsItsPointers) {
  const Bytes input = under(0, "00");
  const uint8_t *const z = input.data();
  ASN1String *s = nullptr;
  EXPECT_ASSERT(GetParam().d(nullptr, z + 2, 0, &s, 0), "asn1_ASN1String_d", "z != NULL");
  EXPECT_ASSERT(GetParam().d(z, nullptr, 0, &s, 0), "asn1_ASN1String_d", "end != NULL");
  EXPECT_ASSERT(GetParam().d(z, z + 2, 0, nullptr, 0), "asn1_ASN1String_d", "s != NULL");
}

}  // namespace

}  // namespace strings_test
