// Tests AlgorithmIdentifier, as an example of every record over a SEQUENCE.
#include <csignal>

#include "allocator.h"
#include "support.h"

namespace algid_test {

namespace {

using namespace support;

struct Release {
  void operator()(AlgId *a) const { asn1_AlgId_free(a); }
};
using Record = std::unique_ptr<AlgId, Release>;

// 1.2.840.113549 and sha256WithRSAEncryption, 1.2.840.113549.1.1.11.
const Bytes rsadsi = hex("06 06 2A 86 48 86 F7 0D");
const Bytes sha256_rsa = hex("06 09 2A 86 48 86 F7 0D 01 01 0B");
const Bytes null = hex("05 00");
const Bytes five = hex("02 01 05");

Bytes sequence(const Bytes &content) { return element(0x30, content); }

/// Returns a record whose fields are copies of these octets. A field without octets stays NULL.
Record record(const Bytes &algorithm, const Bytes &parameters) {
  Record a(asn1_AlgId_new());
  if (!algorithm.empty()) a->algorithm = decode(asn1_ObjId_d, algorithm).record;
  if (!parameters.empty()) a->parameters = decode(asn1_Any_d, parameters).record;
  return a;
}

std::vector<uint32_t> arcs(const AlgId *a) {
  return {a->algorithm->arcs, a->algorithm->arcs + a->algorithm->count};
}

/// Decodes a record and checks what was consumed. Returns the record.
Record decoded(long consumed, const Bytes &input, uint32_t impl_tag = 0) {
  const auto result = decode(asn1_AlgId_d, input, impl_tag);
  EXPECT_EQ(consumed, result.consumed);
  return Record(result.record);
}

/// Checks that the header is refused: the place for the record does not change.
void expect_header_refused(const Bytes &input, uint32_t impl_tag = 0) {
  AlgId before{};
  EXPECT_EQ(&before, left_by_refusal(asn1_AlgId_d, input, &before, impl_tag));
}

/// Checks that the octets are refused after the header: the place for the record is set to NULL.
void expect_content_refused(const Bytes &input) {
  AlgId before{};
  EXPECT_EQ(nullptr, left_by_refusal(asn1_AlgId_d, input, &before));
}

using Lines = std::vector<std::string>;

Lines traced(const Bytes &input, uint32_t depth, uint32_t impl_tag = 0) {
  return trace_lines([&] { Record(decode(asn1_AlgId_d, input, impl_tag, depth).record); });
}

/// The blanks that a dump has in place of the octets missing from its last line.
std::string blanks(size_t octets) { return std::string(3 * octets, ' '); }

// ---- the record ---------------------------------------------------------------------------------

TEST(AlgId, NewRecordIsZeroFilled) {
  const Record a(asn1_AlgId_new());
  ASSERT_NE(nullptr, a);
  EXPECT_EQ(nullptr, a->algorithm);
  EXPECT_EQ(nullptr, a->parameters);
}

TEST(AlgId, FreeIgnoresNullAndMissingFields) {
  asn1_AlgId_free(nullptr);
  record({}, {});
  record(rsadsi, {});
  record({}, null);
}

TEST(AlgId, CloneOfNullIsNull) { EXPECT_EQ(nullptr, asn1_AlgId_clone(nullptr)); }

TEST(AlgId, CloneIsDeep) {
  Record original = record(sha256_rsa, five);
  const Record copy(asn1_AlgId_clone(original.get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_NE(original->algorithm, copy->algorithm);
  EXPECT_NE(original->parameters, copy->parameters);
  original.reset();
  EXPECT_EQ(sequence(sha256_rsa + five), encode(asn1_AlgId_e, copy.get()));
}

TEST(AlgId, CloneKeepsAbsentParametersAbsent) {
  const Record copy(asn1_AlgId_clone(record(rsadsi, {}).get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ((std::vector<uint32_t>{1, 2, 840, 113549}), arcs(copy.get()));
  EXPECT_EQ(nullptr, copy->parameters);
}

TEST(AlgId, CloneTakesAHalfFilledRecord) {
  const Record only_parameters(asn1_AlgId_clone(record({}, null).get()));
  ASSERT_NE(nullptr, only_parameters);
  EXPECT_EQ(nullptr, only_parameters->algorithm);
  EXPECT_EQ(null, value(only_parameters->parameters));

  const Record empty(asn1_AlgId_clone(record({}, {}).get()));
  ASSERT_NE(nullptr, empty);
  EXPECT_EQ(nullptr, empty->algorithm);
  EXPECT_EQ(nullptr, empty->parameters);
}

// ---- encoder ------------------------------------------------------------------------------------

TEST(AlgIdEncoder, WritesParametersWhereThereAreSome) {
  EXPECT_EQ(hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00"),
            encode(asn1_AlgId_e, record(sha256_rsa, null).get()));
  EXPECT_EQ(hex("30 0B 06 09 2A 86 48 86 F7 0D 01 01 0B"),
            encode(asn1_AlgId_e, record(sha256_rsa, {}).get()));
}

TEST(AlgIdEncoder, WritesTheParametersAsTheyStand) {
  const Record a = record(rsadsi, null);
  const Bytes odd = hex("FF 7F 00");
  ASSERT_NE(nullptr, asn1_ASN1String_append(a->parameters, 3, odd.data()));
  EXPECT_EQ(sequence(rsadsi + null + odd), encode(asn1_AlgId_e, a.get()));
}

TEST(AlgIdEncoder, WritesALongSequence) {
  const Bytes parameters = element(4, Bytes(300, 0xA5));
  EXPECT_EQ(hex("30 82 01 38") + rsadsi + parameters,
            encode(asn1_AlgId_e, record(rsadsi, parameters).get()));
}

TEST(AlgIdEncoder, IsWrittenUnderAnImplicitTag) {
  const Record a = record(rsadsi, null);
  EXPECT_EQ(hex("A0 0A") + rsadsi + null, encode_with([&](uint8_t **pp) {
              return asn1_implicit_e(pp, 0x80, a.get(), asn1_AlgId_e);
            }));
}

/// Checks that the record fails in both passes, and that nothing is written.
void expect_failure(const AlgId *a) {
  uint8_t octets[64] = {};
  uint8_t *cursor = octets;
  EXPECT_EQ(0u, asn1_AlgId_e(nullptr, a));
  EXPECT_EQ(0u, asn1_AlgId_e(&cursor, a));
  EXPECT_EQ(octets, cursor);
  EXPECT_EQ(Bytes(64, 0), Bytes(octets, octets + 64));
}

TEST(AlgIdEncoder, FailsWithoutAnAlgorithm) {
  expect_failure(record({}, {}).get());
  expect_failure(record({}, null).get());
}

TEST(AlgIdEncoder, FailsForAnAlgorithmOfFewerThanTwoArcs) {
  const Record a = record({}, null);
  a->algorithm = asn1_ObjId_new(1);
  expect_failure(a.get());
}

TEST(AlgIdEncoder, FailsForEmptyParametersAndWritesNothing) {
  const Record a = record(rsadsi, {});
  a->parameters = asn1_Any_new(0);
  expect_failure(a.get());
}

// ---- decoder ------------------------------------------------------------------------------------

TEST(AlgIdDecoder, TakesAnIdentifierAlone) {
  const Record a = decoded(10, sequence(rsadsi) + null);
  ASSERT_NE(nullptr, a);
  EXPECT_EQ((std::vector<uint32_t>{1, 2, 840, 113549}), arcs(a.get()));
  EXPECT_EQ(nullptr, a->parameters);
  EXPECT_EQ(sequence(rsadsi), encode(asn1_AlgId_e, a.get()));
}

TEST(AlgIdDecoder, KeepsNullParametersApartFromAbsentOnes) {
  const Record a = decoded(15, sequence(sha256_rsa + null));
  ASSERT_NE(nullptr, a);
  EXPECT_EQ((std::vector<uint32_t>{1, 2, 840, 113549, 1, 1, 11}), arcs(a.get()));
  ASSERT_NE(nullptr, a->parameters);
  EXPECT_EQ(null, value(a->parameters));
  EXPECT_EQ(sequence(sha256_rsa + null), encode(asn1_AlgId_e, a.get()));
}

TEST(AlgIdDecoder, TakesAnyOneElementForTheParameters) {
  for (const Bytes &parameters :
       {five, hex("30 00"), hex("A3 02 AB CD"), hex("5F 00"), element(4, Bytes(200, 0xA5))}) {
    const Bytes whole = sequence(rsadsi + parameters);
    const Record a = decoded(static_cast<long>(whole.size()), whole);
    ASSERT_NE(nullptr, a);
    ASSERT_NE(nullptr, a->parameters);
    EXPECT_EQ(parameters, value(a->parameters));
  }
}

TEST(AlgIdDecoder, KeepsNoPointerIntoTheInput) {
  Bytes input = sequence(rsadsi + five);
  AlgId *a = nullptr;
  ASSERT_NE(nullptr, asn1_AlgId_d(input.data(), input.data() + input.size(), 0, &a, 0));
  const Record released(a);
  std::fill(input.begin(), input.end(), uint8_t{0});
  EXPECT_EQ(sequence(rsadsi + five), encode(asn1_AlgId_e, a));
}

TEST(AlgIdDecoder, StopsInsideTheSequenceInFrontOfAThirdElement) {
  const Record a = decoded(12, sequence(rsadsi + null + five));
  ASSERT_NE(nullptr, a);
  EXPECT_EQ(null, value(a->parameters));
}

TEST(AlgIdDecoder, StopsInsideTheSequenceWhateverIsLeft) {
  const Record a = decoded(12, sequence(rsadsi + null + hex("FF FF FF FF FF")) + five);
  ASSERT_NE(nullptr, a);
  EXPECT_EQ(null, value(a->parameters));
}

TEST(AlgIdDecoder, LosesTheEndOfParametersWithALongerLengthThanNeeded) {
  const Record a = decoded(16, sequence(rsadsi + hex("04 81 03 AA BB CC")));
  ASSERT_NE(nullptr, a);
  EXPECT_EQ(hex("04 81 03 AA BB"), value(a->parameters));
}

TEST(AlgIdDecoder, TakesAnUnfinishedIdentifierAgainForTheParameters) {
  const Record a = decoded(8, sequence(hex("06 01 85 02 AA BB")));
  ASSERT_NE(nullptr, a);
  EXPECT_EQ((std::vector<uint32_t>{0}), arcs(a.get()));
  EXPECT_EQ(hex("85 02 AA BB"), value(a->parameters));
}

TEST(AlgIdDecoder, TakesThePrimitiveFormAndALongerLengthThanNeeded) {
  EXPECT_NE(nullptr, decoded(12, hex("10 0A") + rsadsi + null));
  EXPECT_NE(nullptr, decoded(15, hex("30 83 00 00 0A") + rsadsi + null));
}

TEST(AlgIdDecoder, TakesAnImplicitTag) {
  const Bytes content = rsadsi + null;
  for (const uint32_t tag : {0x80u, 0xA0u, 0x180u, 0xFFFFFFA0u}) {
    EXPECT_NE(nullptr, decoded(12, element(0xA0, content), tag)) << tag;
    EXPECT_NE(nullptr, decoded(12, element(0x80, content), tag)) << tag;
    expect_header_refused(sequence(content), tag);
    expect_header_refused(element(0xA1, content), tag);
  }
  EXPECT_NE(nullptr, decoded(12, sequence(content), 0x100));
}

TEST(AlgIdDecoder, LeavesThePlaceAloneWhereTheHeaderIsRefused) {
  const Bytes content = rsadsi + null;
  expect_header_refused({});
  expect_header_refused(hex("30"));
  for (const uint8_t tag : {uint8_t{0x31}, uint8_t{0x02}, uint8_t{0xA0}, uint8_t{0x70}})
    expect_header_refused(element(tag, content));
  expect_header_refused(hex("30 0B") + content);
  expect_header_refused(hex("30 85 00 00 00 00 0A") + content);
  expect_header_refused(hex("30 82 00"));
}

TEST(AlgIdDecoder, RefusesIndefiniteLengthSilentlyAndLeavesThePlaceAlone) {
  const Bytes input = hex("30 80") + rsadsi + null + hex("00 00");
  expect_header_refused(input);
  EXPECT_EQ((Lines{"SEQUENCE {"}), traced(input, 1));
}

TEST(AlgIdDecoder, RefusesAnEmptySequenceAndClearsThePlace) {
  expect_content_refused(hex("30 00"));
  expect_content_refused(hex("30 00") + rsadsi);
}

TEST(AlgIdDecoder, ClearsThePlaceWhereAFieldIsRefused) {
  expect_content_refused(sequence(five));                                  // no identifier
  expect_content_refused(sequence(hex("26 01 2A")));                       // constructed
  expect_content_refused(sequence(hex("06 05 FF FF FF FF 7F")));           // an arc above 32 bits
  expect_content_refused(hex("30 07") + rsadsi);                           // beyond the SEQUENCE
  expect_content_refused(sequence(rsadsi + hex("05")));                    // no length
  expect_content_refused(sequence(rsadsi + hex("04 02 AA")) + hex("BB"));  // beyond the SEQUENCE
  expect_content_refused(sequence(rsadsi + hex("30 80 00 00")));           // indefinite
  expect_content_refused(sequence(rsadsi + hex("04 84 80 00 00 00")));     // top-bit lengths
  expect_content_refused(sequence(rsadsi + hex("04 84 FF FF FF FF AA BB")));
  expect_content_refused(sequence(rsadsi + hex("04 82 01")));  // length octets cut
}

TEST(AlgIdDecoder, FindsNothingInASequenceWhoseLengthHasItsTopBitSet) {
  expect_content_refused(hex("30 84 80 00 00 00") + rsadsi + null);
  expect_content_refused(hex("30 84 FF FF FF FF") + rsadsi + null);
}

// ---- trace --------------------------------------------------------------------------------------

TEST(AlgIdTrace, ShowsTheWholeRecordAtDepth1) {
  EXPECT_EQ((Lines{"SEQUENCE {",                                     //
                   ". OBJECT IDENTIFIER ",                           //
                   ".   1.2.840.113549",                             //
                   ". [ANY]",                                        //
                   ".   0x00000000 02 01 05 " + blanks(13) + "...",  //
                   "}"}),
            traced(sequence(rsadsi + five), 1));
}

TEST(AlgIdTrace, ShowsTheWholeRecordAtDepth3) {
  EXPECT_EQ((Lines{". . SEQUENCE {",                                         //
                   ". . . OBJECT IDENTIFIER ",                               //
                   ". . .   1.2.840.113549",                                 //
                   ". . . [ANY]",                                            //
                   ". . .   0x00000000 04 02 41 42 " + blanks(12) + "..AB",  //
                   ". . }"}),
            traced(sequence(rsadsi + hex("04 02 41 42")), 3));
}

TEST(AlgIdTrace, ShowsNoParametersWhereThereAreNone) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549", "}"}),
            traced(sequence(rsadsi), 1));
}

TEST(AlgIdTrace, ShowsAnImplicitTag) {
  EXPECT_EQ((Lines{". CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". . OBJECT IDENTIFIER ",
                   ". .   1.2.840.113549", ". }"}),
            traced(element(0xA0, rsadsi), 2, 0x80));
  EXPECT_EQ((Lines{"CONTEXT-SPECIFIC PRIMITIVE [0] {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549",
                   "}"}),
            traced(element(0x80, rsadsi), 1, 0x80));
}

TEST(AlgIdTrace, OpensNoBraceForThePrimitiveForm) {
  EXPECT_EQ((Lines{"SEQUENCE", ". OBJECT IDENTIFIER ", ".   1.2.840.113549", "}"}),
            traced(element(0x10, rsadsi), 1));
}

TEST(AlgIdTrace, ClosesInFrontOfLeftovers) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549", ". [ANY]",
                   ".   0x00000000 05 00 " + blanks(14) + "..", "}"}),
            traced(sequence(rsadsi + null + five), 1));
}

TEST(AlgIdTrace, IsSilentAtDepth0) {
  EXPECT_EQ(Lines{}, traced(sequence(rsadsi + null), 0));
  EXPECT_EQ(Lines{}, traced(hex("30 05 06 01"), 0));
  EXPECT_EQ(Lines{}, traced(sequence(rsadsi + hex("04 05 AA")), 0));
}

TEST(AlgIdTrace, IsSilentForAnotherTag) {
  EXPECT_EQ(Lines{}, traced(element(0x31, rsadsi + null), 1));
}

TEST(AlgIdTrace, CountsTheDepthIn32BitsAndCutsItOnlyToWrite) {
  // The header is at a depth at which nothing is written. Its fields are one deeper.
  EXPECT_EQ((Lines{"OBJECT IDENTIFIER ", "  1.2.840.113549"}), traced(sequence(rsadsi), 65536));
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549", "}"}),
            traced(sequence(rsadsi), 65537));
  // Here the header is written and its fields are not.
  std::string dots;
  for (int level = 1; level < 65535; ++level) dots += ". ";
  EXPECT_EQ((Lines{dots + "SEQUENCE {", dots + "}"}), traced(sequence(rsadsi), 65535));
}

TEST(AlgIdTrace, TellsASequenceThatIsCut) {
  EXPECT_EQ((Lines{"SEQUENCE {", "z larger than end!"}), traced(hex("30 05 06"), 1));
  EXPECT_EQ((Lines{". SEQUENCE {", ". z larger than end!"}), traced(hex("30 82 00"), 2));
  expect_header_refused(hex("30 05 06"));
}

TEST(AlgIdTrace, TellsAFieldThatIsCutAtItsOwnDepth) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ". z larger than end!"}),
            traced(sequence(hex("06 06 2A")) + hex("86 48 86 F7 0D"), 1));
  EXPECT_EQ(
      (Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549", ". z larger than end!"}),
      traced(sequence(rsadsi + hex("04 02 AA")) + hex("BB"), 1));
}

TEST(AlgIdTrace, ClosesNothingAfterAFailure) {
  EXPECT_EQ((Lines{"SEQUENCE {"}), traced(hex("30 00"), 1));
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549"}),
            traced(sequence(rsadsi + hex("30 80 00 00")), 1));
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.840.113549"}),
            traced(sequence(rsadsi + hex("04 84 80 00 00 00")), 1));
}

// ---- ends of the process and of memory ----------------------------------------------------------

TEST(AlgIdDeathTest, EncoderEndsTheProcessForNull) {
  const testing::KilledBySignal aborted(SIGABRT);
  uint8_t octets[16] = {};
  uint8_t *cursor = octets;
  EXPECT_EXIT(asn1_AlgId_e(nullptr, nullptr), aborted, any_line);
  EXPECT_EXIT(asn1_AlgId_e(&cursor, nullptr), aborted, any_line);
}

TEST(AlgIdDeathTest, DecoderNeedsAnInput) {
  const Bytes input = sequence(rsadsi);
  AlgId *a = nullptr;
  EXPECT_ASSERT(asn1_AlgId_d(nullptr, input.data(), 0, &a, 0), "asn1_Tag_d", "z != NULL");
  EXPECT_ASSERT(asn1_AlgId_d(input.data(), nullptr, 0, &a, 0), "asn1_Tag_d", "end != NULL");
}

#ifndef ORVELASN1_TESTS_SANITIZED
TEST(AlgIdMemory, IsReleasedWhenItIsExhausted) {
  const Record original = record(sha256_rsa, five);
  const Bytes input = sequence(sha256_rsa + five);
  expect_failure_at_each_allocation([] { return Record(asn1_AlgId_new()) != nullptr; });
  expect_failure_at_each_allocation(
      [&] { return Record(asn1_AlgId_clone(original.get())) != nullptr; });
  AlgId before{};
  expect_failure_at_each_allocation([&] {
    AlgId *a = &before;
    const bool read = asn1_AlgId_d(input.data(), input.data() + input.size(), 0, &a, 0);
    EXPECT_EQ(read, a != nullptr);
    asn1_AlgId_free(a);
    return read;
  });
}
#endif

}  // namespace

}  // namespace algid_test
