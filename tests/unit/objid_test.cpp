// Tests OBJECT IDENTIFIER: arcs in a record, both directions, and the dotted text form.
#include <algorithm>
#include <cstring>
#include <random>
#include <regex>

#include "allocator.h"
#include "support.h"

namespace objid_test {

namespace {

using support::Bytes;
using support::decode;
using support::encode;
using support::hex;
using support::Input;
using support::trace_lines;
using support::operator+;
using Lines = std::vector<std::string>;
using Arcs = std::vector<uint32_t>;

struct FreeObjId {
  void operator()(ObjId *oid) const { asn1_ObjId_free(oid); }
};
using Owned = std::unique_ptr<ObjId, FreeObjId>;

Owned make(const Arcs &arcs) {
  Owned oid(asn1_ObjId_new(static_cast<uint32_t>(arcs.size())));
  std::copy(arcs.begin(), arcs.end(), oid->arcs);
  return oid;
}

Arcs arcs_of(const ObjId *oid) { return Arcs(oid->arcs, oid->arcs + oid->count); }

Bytes encoded(const Arcs &arcs) { return encode(asn1_ObjId_e, make(arcs).get()); }

// -- Records ------------------------------------------------------------------------------------

TEST(ObjIdNew, HasZeroArcs) {
  const Owned oid(asn1_ObjId_new(3));
  ASSERT_NE(nullptr, oid);
  EXPECT_EQ((Arcs{0, 0, 0}), arcs_of(oid.get()));
}

TEST(ObjIdNew, OfNoArcsHasNone) {
  const Owned oid(asn1_ObjId_new(0));
  ASSERT_NE(nullptr, oid);
  EXPECT_EQ(0U, oid->count);
  EXPECT_EQ(nullptr, oid->arcs);
}

TEST(ObjIdFree, IgnoresNull) { asn1_ObjId_free(nullptr); }

TEST(ObjIdClone, CopiesTheArcs) {
  const Owned oid = make({2, 5, 4, 3});
  const Owned copy(asn1_ObjId_clone(oid.get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ((Arcs{2, 5, 4, 3}), arcs_of(copy.get()));
  EXPECT_NE(oid->arcs, copy->arcs);
}

TEST(ObjIdClone, OfNullIsNullAndOfNoArcsHasNone) {
  EXPECT_EQ(nullptr, asn1_ObjId_clone(nullptr));
  const Owned copy(asn1_ObjId_clone(make({}).get()));
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(0U, copy->count);
  EXPECT_EQ(nullptr, copy->arcs);
}

TEST(ObjIdCmp, GivesZeroForTheSameArcsAndOneForOthers) {
  const struct {
    Arcs a, b;
    int32_t result;
  } rows[] = {
      {{1, 2, 840}, {1, 2, 840}, 0},
      {{7}, {7}, 0},
      {{}, {}, 0},
      {{1, 2}, {1, 2, 3}, 1},
      {{1, 2, 3}, {1, 2}, 1},
      {{}, {1}, 1},
      {{1, 2, 3}, {1, 2, 4}, 1},
      {{1, 2, 4}, {1, 2, 3}, 1},
      {{2, 2, 3}, {1, 2, 3}, 1},
      {{1, 2, 0x80000000}, {1, 2, 0}, 1},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.result, asn1_ObjId_cmp(make(row.a).get(), make(row.b).get()));
  }
}

TEST(ObjIdCmp, GivesOneWhereArcsAreNotThere) {
  const ObjId hollow{2, nullptr};
  EXPECT_EQ(1, asn1_ObjId_cmp(&hollow, make({1, 2}).get()));
  EXPECT_EQ(1, asn1_ObjId_cmp(make({1, 2}).get(), &hollow));
}

TEST(ObjIdClone, OfArcsThatAreNotThereIsNull) {
  const ObjId hollow{2, nullptr};
  EXPECT_EQ(nullptr, asn1_ObjId_clone(&hollow));
}

TEST(ObjIdParser, FailsWithoutAText) {
  const char *none = nullptr;
  EXPECT_EQ(nullptr, asn1_ObjId_parse(nullptr));
  EXPECT_EQ(nullptr, asn1_ObjId_parse(&none));
}

TEST(ObjIdDeathTest, CmpWithoutARecord) {
  const Owned oid = make({1, 2});
  EXPECT_ASSERT(asn1_ObjId_cmp(nullptr, oid.get()), "asn1_ObjId_cmp", "oid1 != NULL");
  EXPECT_ASSERT(asn1_ObjId_cmp(oid.get(), nullptr), "asn1_ObjId_cmp", "oid2 != NULL");
  EXPECT_ASSERT(asn1_ObjId_cmp(nullptr, nullptr), "asn1_ObjId_cmp", "oid1 != NULL");
}

// -- Writing ------------------------------------------------------------------------------------

TEST(ObjIdEncoder, WritesEachArcInBase128) {
  EXPECT_EQ(hex("06 06 2A 86 48 86 F7 0D"), encoded({1, 2, 840, 113549}));
  EXPECT_EQ(hex("06 03 55 04 03"), encoded({2, 5, 4, 3}));
  EXPECT_EQ(hex("06 01 00"), encoded({0, 0}));
}

TEST(ObjIdEncoder, WritesTheShortestFormOfEveryArc) {
  const struct {
    uint32_t arc;
    const char *octets;
  } rows[] = {
      {0, "00"},
      {0x7F, "7F"},
      {0x80, "81 00"},
      {0x3FFF, "FF 7F"},
      {0x4000, "81 80 00"},
      {0x1FFFFF, "FF FF 7F"},
      {0x200000, "81 80 80 00"},
      {0xFFFFFFF, "FF FF FF 7F"},
      {0x10000000, "81 80 80 80 00"},
      {0x80000000, "88 80 80 80 00"},
      {0xFFFFFFFF, "8F FF FF FF 7F"},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(support::element(0x06, hex("2A") + hex(row.octets)), encoded({1, 2, row.arc}))
        << row.arc;
  }
}

TEST(ObjIdEncoder, FoldsTheFirstTwoArcsWithoutALookAtTheirRange) {
  EXPECT_EQ(hex("06 01 77"), encoded({2, 39}));
  EXPECT_EQ(hex("06 02 81 34"), encoded({2, 100}));
  EXPECT_EQ(hex("06 02 81 2A"), encoded({3, 50}));
  EXPECT_EQ(hex("06 01 32"), encoded({0, 50}));
  // 0x10000000 * 40 is 0x280000000, whose low 32 bits are 0x80000000.
  EXPECT_EQ(hex("06 05 88 80 80 80 05"), encoded({0x10000000, 5}));
  EXPECT_EQ(hex("06 01 00"), encoded({1, 0xFFFFFFD8}));
}

TEST(ObjIdEncoder, FailsForNullAndForFewerThanTwoArcs) {
  uint8_t room[] = {0xAA};
  uint8_t *cursor = room;
  EXPECT_EQ(0U, asn1_ObjId_e(nullptr, nullptr));
  EXPECT_EQ(0U, asn1_ObjId_e(&cursor, nullptr));
  for (const Arcs &arcs : {Arcs{}, Arcs{1}}) {
    EXPECT_EQ(0U, asn1_ObjId_e(nullptr, make(arcs).get()));
    EXPECT_EQ(0U, asn1_ObjId_e(&cursor, make(arcs).get()));
  }
  EXPECT_EQ(room, cursor);
  EXPECT_EQ(0xAA, room[0]);
}

TEST(ObjIdEncoder, WritesALongLengthWhereTheArcsAreMany) {
  const Arcs arcs(129, 1);  // 1.1 and 127 more
  EXPECT_EQ(hex("06 81 80 29") + Bytes(127, 0x01), encoded(arcs));
}

// -- Reading ------------------------------------------------------------------------------------

TEST(ObjIdDecoder, ReadsTheArcsAndTheCursorBehindThem) {
  const struct {
    const char *octets;
    long consumed;
    Arcs arcs;
  } rows[] = {
      {"06 06 2A 86 48 86 F7 0D", 8, {1, 2, 840, 113549}},
      {"06 03 55 04 03", 5, {2, 5, 4, 3}},
      {"06 01 00", 3, {0, 0}},
      {"06 01 27", 3, {0, 39}},
      {"06 01 28", 3, {1, 0}},
      {"06 01 50", 3, {2, 0}},
      // The root arc 2 has no rule of its own (X.690, 8.19.4): 2.100 is read as 4.20.
      {"06 02 81 34", 4, {4, 20}},
      {"06 05 8F FF FF FF 7F", 7, {107374182, 15}},
      {"06 06 2A 8F FF FF FF 7F", 8, {1, 2, 0xFFFFFFFF}},
      {"06 06 2A 88 80 80 80 00", 8, {1, 2, 0x80000000}},
      // Subidentifiers and lengths are in longer forms than needed (X.690, 8.19.2).
      {"06 03 2A 80 05", 5, {1, 2, 5}},
      {"06 06 2A 80 80 80 80 05", 8, {1, 2, 5}},
      {"06 05 80 80 80 80 2A", 7, {1, 2}},
      {"06 81 01 2A", 4, {1, 2}},
      // No subidentifier ends: the record has one arc of value 0, and the content is not consumed.
      {"06 00", 2, {0}},
      {"06 01 80", 2, {0}},
      {"06 03 81 80 FF", 2, {0}},
      // A last subidentifier that does not end is not read.
      {"06 02 2A 81", 3, {1, 2}},
      {"06 04 2A 05 81 82", 4, {1, 2, 5}},
      // A sixth octet begins the next subidentifier, as far as the number of arcs allows.
      {"06 06 81 80 80 80 80 01", 7, {6710886, 16}},
      {"06 07 81 80 80 80 80 01 02", 8, {6710886, 16, 1}},
      {"06 07 2A 81 80 80 80 80 01", 8, {1, 2, 0x10000000}},
      {"06 08 2A 81 80 80 80 80 01 03", 9, {1, 2, 0x10000000, 1}},
      {"06 07 80 80 80 80 80 2A 03", 8, {0, 0, 42}},
  };
  for (const auto &row : rows) {
    const auto decoded = decode(asn1_ObjId_d, hex(row.octets) + hex("7F 7F"));
    ASSERT_EQ(row.consumed, decoded.consumed) << row.octets;
    EXPECT_EQ(row.arcs, arcs_of(decoded.record)) << row.octets;
    asn1_ObjId_free(decoded.record);
    const auto at_end = decode(asn1_ObjId_d, hex(row.octets));
    EXPECT_EQ(row.consumed, at_end.consumed) << row.octets;
    asn1_ObjId_free(at_end.record);
  }
}

TEST(ObjIdDecoder, ReadsWhatTheEncoderWrites) {
  for (const Arcs &arcs : {Arcs{1, 2, 840, 113549}, Arcs{0, 39}, Arcs{2, 5, 29, 15},
                           Arcs{1, 3, 6, 1, 4, 1, 311, 0, 0x7F, 0x80, 0x3FFF, 0x4000, 0x1FFFFF,
                                0x200000, 0xFFFFFFF, 0x10000000, 0xFFFFFFFF}}) {
    const auto decoded = decode(asn1_ObjId_d, encoded(arcs));
    ASSERT_TRUE(decoded.ok());
    EXPECT_EQ(arcs, arcs_of(decoded.record));
    asn1_ObjId_free(decoded.record);
  }
}

TEST(ObjIdDecoder, WritesTheOctetsOfATwoHundredthArcBackUnchanged) {
  const auto decoded = decode(asn1_ObjId_d, hex("06 03 81 34 03"));  // 2.100.3
  ASSERT_TRUE(decoded.ok());
  EXPECT_EQ((Arcs{4, 20, 3}), arcs_of(decoded.record));
  EXPECT_EQ(hex("06 03 81 34 03"), encode(asn1_ObjId_e, decoded.record));
  asn1_ObjId_free(decoded.record);
}

TEST(ObjIdDecoder, ReadsManyArcs) {
  const Bytes octets = support::element(0x06, hex("2A") + Bytes(1000, 0x07));
  const auto decoded = decode(asn1_ObjId_d, octets);
  ASSERT_EQ(static_cast<long>(octets.size()), decoded.consumed);
  Arcs expected(1002, 7);
  expected[0] = 1;
  expected[1] = 2;
  EXPECT_EQ(expected, arcs_of(decoded.record));
  asn1_ObjId_free(decoded.record);
}

/// Checks that the decoder returns NULL and stores NULL.
void expect_refused(const char *octets) {
  SCOPED_TRACE(octets);
  const Input input(hex(octets));
  ObjId sentinel{};
  ObjId *place = &sentinel;
  EXPECT_EQ(nullptr, asn1_ObjId_d(input.z(), input.end(), 0, &place, 0));
  EXPECT_EQ(nullptr, place);
}

TEST(ObjIdDecoder, FailsOnAnArcOfMoreThan32Bits) {
  for (const char *octets : {
           "06 05 FF FF FF FF 7F",
           "06 06 2A FF FF FF FF 7F",
           "06 06 2A 90 80 80 80 00",
           "06 06 2A C0 80 80 80 00",
           "06 07 2A 90 80 80 80 80 00",  // found at the fifth octet of six
           "06 0B 2A 90 80 80 80 00 2A 2A 2A 2A 2A",
       }) {
    expect_refused(octets);
  }
}

TEST(ObjIdDecoder, RefusesOtherHeaders) {
  for (const char *octets : {
           "26 01 2A",        // constructed
           "06 80 2A 00 00",  // indefinite
           "02 01 2A",        // another tag
           "06 02 2A",        // past the end
           "06 82 00",        // length octets past the end
           "06 85 00 00 00 00 01 2A",
           "06",
           "",
       }) {
    expect_refused(octets);
  }
}

TEST(ObjIdDecoder, TakesATopBitLengthForAnEmptyContent) {
  for (const char *length : {"84 80 00 00 00", "84 80 00 00 02", "84 FF FF FF FF"}) {
    for (const char *content : {"", "2A 03"}) {
      const auto decoded = decode(asn1_ObjId_d, hex("06") + hex(length) + hex(content));
      ASSERT_EQ(6, decoded.consumed) << length;
      EXPECT_EQ(Arcs{0}, arcs_of(decoded.record));
      asn1_ObjId_free(decoded.record);
    }
  }
}

TEST(ObjIdDecoder, TakesAnImplicitTag) {
  for (const uint32_t impl_tag : {0x88U, 0x188U}) {
    const auto decoded = decode(asn1_ObjId_d, hex("88 01 2A"), impl_tag);
    EXPECT_EQ(3, decoded.consumed);
    asn1_ObjId_free(decoded.record);
    EXPECT_FALSE(decode(asn1_ObjId_d, hex("06 01 2A"), impl_tag).ok());
  }
  const auto own = decode(asn1_ObjId_d, hex("06 01 2A"), 0x100);
  EXPECT_EQ(3, own.consumed);
  asn1_ObjId_free(own.record);
}

TEST(ObjIdDecoder, GivesNothingWithoutACursorOrAPlaceAndLeavesThePlaceAlone) {
  const uint8_t octets[] = {0x06, 0x01, 0x2A};
  ObjId sentinel{};
  ObjId *place = &sentinel;
  EXPECT_EQ(nullptr, asn1_ObjId_d(nullptr, octets + 3, 0, &place, 0));
  EXPECT_EQ(&sentinel, place);
  EXPECT_EQ(nullptr, asn1_ObjId_d(octets, octets + 3, 0, nullptr, 0));
}

TEST(ObjIdDeathTest, DecoderWithoutAnEnd) {
  const uint8_t octets[] = {0x06, 0x01, 0x2A};
  ObjId *place = nullptr;
  EXPECT_ASSERT(asn1_ObjId_d(octets, nullptr, 0, &place, 0), "asn1_Tag_d", "end != NULL");
}

Lines trace_of(const char *octets, uint32_t depth = 1, uint32_t impl_tag = 0) {
  return trace_lines(
      [&] { asn1_ObjId_free(decode(asn1_ObjId_d, hex(octets), impl_tag, depth).record); });
}

TEST(ObjIdTrace, ShowsTheTagAndTheDottedArcs) {
  const std::string tag = "OBJECT IDENTIFIER ";
  EXPECT_EQ((Lines{tag, "  1.2.840.113549"}), trace_of("06 06 2A 86 48 86 F7 0D"));
  EXPECT_EQ((Lines{". . " + tag, ". .   2.5.4.3"}), trace_of("06 03 55 04 03", 3));
  EXPECT_EQ((Lines{tag, "  1.2.-1"}), trace_of("06 06 2A 8F FF FF FF 7F"));
  EXPECT_EQ((Lines{tag, "  0"}), trace_of("06 00"));
  EXPECT_EQ((Lines{tag, "  0"}), trace_of("06 02 80 81"));
  EXPECT_EQ((Lines{tag, "  0"}), trace_of("06 84 80 00 00 00 2A"));
  EXPECT_EQ((Lines{"CONTEXT-SPECIFIC PRIMITIVE [8] " + tag, "  1.2"}),
            trace_of("88 01 2A", 1, 0x88));
  EXPECT_EQ(Lines{}, trace_of("06 03 55 04 03", 0));
}

TEST(ObjIdTrace, ShowsNoArcsThatWereRefused) {
  EXPECT_EQ(Lines{"OBJECT IDENTIFIER "}, trace_of("06 06 2A FF FF FF FF 7F"));
  EXPECT_EQ((Lines{"OBJECT IDENTIFIER ", "z larger than end!"}), trace_of("06 02 2A"));
  EXPECT_EQ(Lines{}, trace_of("02 01 2A"));
}

// -- Dotted text --------------------------------------------------------------------------------

const struct {
  Arcs arcs;
  const char *text;
} texts[] = {
    {{1, 2, 3}, "1.2.3"},
    {{7}, "7"},
    {{1, 2, 840, 113549}, "1.2.840.113549"},
    {{1, 0x7FFFFFFF}, "1.2147483647"},
    {{0x80000000, 0xFFFFFFFF}, "-2147483648.-1"},
    {{0x80000000, 0x80000000, 0x80000000}, "-2147483648.-2147483648.-2147483648"},
    {{}, ""},
};

TEST(ObjIdSprint, MeasuresTheTextAndItsNul) {
  for (const auto &row : texts) {
    uint32_t length = 0;
    EXPECT_EQ(0, asn1_ObjId_sprint(make(row.arcs).get(), nullptr, &length)) << row.text;
    EXPECT_EQ(std::strlen(row.text) + 1, length) << row.text;
  }
  uint32_t length = 0;
  EXPECT_EQ(0, asn1_ObjId_sprint(make({1, 2, 3}).get(), nullptr, &length));
  EXPECT_EQ(6U, length);
}

TEST(ObjIdSprint, WritesTheTextWhereItFits) {
  for (const auto &row : texts) {
    const uint32_t size = static_cast<uint32_t>(std::strlen(row.text)) + 1;
    for (const uint32_t capacity : {size, size + 1, size + 100, 0xFFFFFFFFU}) {
      Bytes room(size + 1, 0xAA);
      uint32_t length = capacity;
      EXPECT_EQ(0, asn1_ObjId_sprint(make(row.arcs).get(), reinterpret_cast<char *>(room.data()),
                                     &length));
      EXPECT_EQ(size, length);
      EXPECT_EQ(support::text(row.text) + hex("00 AA"), room);
    }
  }
}

TEST(ObjIdSprint, FailsWhereTheTextDoesNotFitAndLeavesTheCapacity) {
  for (const auto &row : texts) {
    const uint32_t size = static_cast<uint32_t>(std::strlen(row.text)) + 1;
    for (const uint32_t capacity : {size - 1, 0U}) {
      Bytes room(size, 0xAA);
      uint32_t length = capacity;
      EXPECT_EQ(-1, asn1_ObjId_sprint(make(row.arcs).get(), reinterpret_cast<char *>(room.data()),
                                      &length));
      EXPECT_EQ(capacity, length);
      EXPECT_EQ(Bytes(size, 0xAA), room);
    }
  }
}

TEST(ObjIdDeathTest, SprintWithoutARecordOrALength) {
  const Owned oid = make({1, 2});
  uint32_t length = 0;
  EXPECT_ASSERT(asn1_ObjId_sprint(nullptr, nullptr, &length), "asn1_ObjId_sprint", "oid != NULL");
  EXPECT_ASSERT(asn1_ObjId_sprint(oid.get(), nullptr, nullptr), "asn1_ObjId_sprint",
                "length != NULL");
  EXPECT_ASSERT(asn1_ObjId_sprint(nullptr, nullptr, nullptr), "asn1_ObjId_sprint", "oid != NULL");
}

TEST(ObjIdFprint, WritesTheTextAndGivesTheOctetsOfItsLastPiece) {
  const struct {
    Arcs arcs;
    const char *text;
    int32_t result;
  } rows[] = {
      {{1, 2, 3}, "1.2.3", 2},
      {{25}, "25", 2},
      {{1, 2, 840, 113549}, "1.2.840.113549", 7},
      {{1, 2, 0xFFFFFFFF}, "1.2.-1", 3},
  };
  for (const auto &row : rows) {
    char *buffer = nullptr;
    size_t size = 0;
    FILE *stream = open_memstream(&buffer, &size);
    EXPECT_EQ(row.result, asn1_ObjId_fprint(make(row.arcs).get(), stream));
    std::fclose(stream);
    EXPECT_EQ(row.text, std::string(buffer, size));
    std::free(buffer);
  }
}

TEST(ObjIdFprint, FailsWithoutArcsAndWritesNothing) {
  char *buffer = nullptr;
  size_t size = 0;
  FILE *stream = open_memstream(&buffer, &size);
  EXPECT_GT(0, asn1_ObjId_fprint(make({}).get(), stream));
  std::fclose(stream);
  EXPECT_EQ(0U, size);
  std::free(buffer);
}

TEST(ObjIdFprint, GivesTheFailureOfTheStream) {
  FILE *full = std::fopen("/dev/full", "w");
  ASSERT_NE(nullptr, full);
  std::setvbuf(full, nullptr, _IONBF, 0);
  EXPECT_GT(0, asn1_ObjId_fprint(make({1, 2, 3}).get(), full));
  std::fclose(full);
}

TEST(ObjIdDeathTest, FprintWithoutARecordOrAStream) {
  const Owned oid = make({1, 2});
  EXPECT_ASSERT(asn1_ObjId_fprint(nullptr, stderr), "asn1_ObjId_fprint", "oid != NULL");
  EXPECT_ASSERT(asn1_ObjId_fprint(oid.get(), nullptr), "asn1_ObjId_fprint", "fp != NULL");
  EXPECT_ASSERT(asn1_ObjId_fprint(nullptr, nullptr), "asn1_ObjId_fprint", "oid != NULL");
}

/// The result of asn1_ObjId_parse for a text in a block of exactly its size.
struct Parsed {
  bool ok;
  Arcs arcs;
  std::string rest;
};

bool operator==(const Parsed &a, const Parsed &b) {
  return a.ok == b.ok && a.arcs == b.arcs && a.rest == b.rest;
}

std::ostream &operator<<(std::ostream &out, const Parsed &parsed) {
  if (!parsed.ok) out << "NULL";
  for (const uint32_t arc : parsed.arcs) out << arc << ' ';
  return out << "in front of \"" << parsed.rest << '"';
}

Parsed parse(const std::string &text) {
  Bytes terminated = support::text(text);
  terminated.push_back(0);
  const Input input(terminated);
  const char *const start = reinterpret_cast<const char *>(input.z());
  const char *cursor = start;
  const Owned oid(asn1_ObjId_parse(&cursor));
  const size_t moved = static_cast<size_t>(cursor - start);
  if (moved > text.size()) return {false, {}, "behind the closing NUL"};
  return {oid != nullptr, oid != nullptr ? arcs_of(oid.get()) : Arcs{}, text.substr(moved)};
}

struct ParseRow {
  const char *text;
  Arcs arcs;
  const char *rest;
};

void expect_parsed(const ParseRow &row) {
  EXPECT_EQ((Parsed{true, row.arcs, row.rest}), parse(row.text)) << row.text;
}

TEST(ObjIdParse, ReadsTheArcsAndStopsBehindThem) {
  const ParseRow rows[] = {
      {"2.5.4.3", {2, 5, 4, 3}, ""},
      {"2.5.4.3,", {2, 5, 4, 3}, ","},
      {"2.5.4.3(12)=text", {2, 5, 4, 3}, "(12)=text"},
      {"1.2 3", {1, 2}, " 3"},
      {"7", {7}, ""},
      {"7x", {7}, "x"},
      {"0", {0}, ""},
      {"1.2.2147483647", {1, 2, 2147483647}, ""},
      {"1.2.840.113549.1.1.11=", {1, 2, 840, 113549, 1, 1, 11}, "="},
  };
  for (const ParseRow &row : rows) expect_parsed(row);
}

TEST(ObjIdParse, ReadsArcsAsCReadsIntegers) {
  const ParseRow rows[] = {
      {"1.010", {1, 8}, ""},
      {"010.1", {8, 1}, ""},
      {"1.0x10", {1, 16}, ""},
      {"1.0XfFz", {1, 255}, "z"},
      {"1.00", {1, 0}, ""},
      // A blank and a sign may come before a number.
      {"1. 5", {1, 5}, ""},
      {"1.-5", {1, 0xFFFFFFFB}, ""},
      {"1.+5", {1, 5}, ""},
      // An octal number ends before an 8. The step over the dot then skips the 8.
      {"1.08.3", {1, 0, 0}, "3"},
      // 0x without digits is 0, and 0b is not a prefix, whatever the C library does.
      {"1.0x", {1, 0}, ""},
      {"1.0Xg", {1, 0}, "g"},
      {"1.-0x,", {1, 0}, ","},
      {"0x.1", {0}, ".1"},
      {"1.0b11", {1, 0}, "b11"},
      {"1.0B1", {1, 0}, "B1"},
      {"0b1.1", {0}, "b1.1"},
  };
  for (const ParseRow &row : rows) expect_parsed(row);
}

TEST(ObjIdParse, GivesAnArcWithoutANumberThatOfTheArcBefore) {
  const ParseRow rows[] = {
      {"1.2.", {1, 2, 2}, ""},         {"1.2.,x", {1, 2, 2}, "x"}, {"1.23.,xyz", {1, 23, 23}, "yz"},
      {"1.2..xyz", {1, 2, 2, 2}, "z"}, {"1..2x", {1, 1, 1}, ""},   {"12..345", {12, 12, 5}, ""},
  };
  for (const ParseRow &row : rows) expect_parsed(row);
}

TEST(ObjIdParse, NeverMovesBehindTheClosingNul) {
  const ParseRow rows[] = {
      {"1.", {1, 1}, ""},
      {"123456.", {123456, 123456}, ""},
      {"123456.,", {123456, 123456}, ""},
      {"1..", {1, 1, 1}, ""},
      {"12..", {12, 12, 12}, ""},
      {"1..2", {1, 1, 1}, ""},
      {"12....", {12, 12, 12, 12, 12}, ""},
      {"1.2.345...", {1, 2, 345, 345, 345, 345}, ""},
  };
  for (const ParseRow &row : rows) expect_parsed(row);
}

TEST(ObjIdParse, GivesNullForATextThatDoesNotBeginWithADigit) {
  for (const char *text : {"", "a", "CN=x", ".1", "-1", "+1", " 1", "(1", "x1.2", "\xB2.1", "\xFF",
                           "\x80", "/", ":"}) {
    EXPECT_EQ((Parsed{false, {}, text}), parse(text)) << text;
  }
}

TEST(ObjIdParse, GivesNullForANumberThatDoesNotFitAnInt) {
  for (const char *number : {"2147483647", "-2147483648", "0x7FFFFFFF", "017777777777"}) {
    EXPECT_TRUE(parse(std::string("1.") + number).ok) << number;
  }
  for (const char *number : {"2147483648", "-2147483649", "0x80000000", "020000000000",
                             "4294967295", "4294967297", "99999999999999999999999999"}) {
    for (const char *before : {"1.", "1.2.3."}) {
      const std::string text = std::string(before) + number + ".4";
      EXPECT_EQ((Parsed{false, {}, text}), parse(text));
    }
  }
  EXPECT_FALSE(parse("2147483648.1").ok);
}

TEST(ObjIdParse, ReadsNumbersOfAnyWidth) {
  const std::string zeros(100, '0');
  EXPECT_EQ((Parsed{true, {1, 8, 3}, ","}), parse("1." + zeros + "10.3,"));
  EXPECT_EQ((Parsed{true, {1, 31}, "."}), parse("1.0x" + zeros + "1F."));
  EXPECT_EQ((Parsed{true, {1, 5}, "x"}), parse("1." + std::string(100, ' ') + "5x"));
  // Blanks without a number after them, in which the third and the fourth arc begin.
  EXPECT_EQ((Parsed{true, {1, 1, 1, 1}, "   x"}), parse("1...      x"));
}

/// Returns the arcs and the rest that the conversion %i of the C runtime finds in a text.
Parsed parse_by_sscanf(const std::string &text) {
  const size_t digits_and_dots = std::min(text.find_first_not_of("0123456789."), text.size());
  const auto dots =
      std::count(text.begin(), text.begin() + static_cast<ptrdiff_t>(digits_and_dots), '.');
  Arcs arcs(static_cast<size_t>(dots) + 1);
  size_t at = 0;
  int number = 0;
  int width = 0;
  for (uint32_t &arc : arcs) {
    std::sscanf(text.c_str() + at, "%i%n", &number, &width);
    arc = static_cast<uint32_t>(number);
    at += static_cast<size_t>(width) + (&arc != &arcs.back() ? 1 : 0);
    at = std::min(at, text.size());
  }
  return {true, arcs, text.substr(at)};
}

TEST(ObjIdParse, AgreesWithSscanfOnRandomTexts) {
  std::mt19937 random(20260131);
  const std::string alphabet = "00112578999....xXaFb+- \t,=";
  const std::regex differing("0[bB]|0[xX]([^0-9a-fA-F]|$)");
  for (int i = 0; i < 20000; ++i) {
    std::string text = std::to_string(random() % 3);
    // The text is short enough for every number to fit an int. Otherwise sscanf is undefined.
    for (size_t length = random() % 9; length != 0; --length) {
      text += alphabet[random() % alphabet.size()];
    }
    // C libraries differ on these, which have rows of their own above.
    if (std::regex_search(text, differing)) continue;
    ASSERT_EQ(parse_by_sscanf(text), parse(text)) << text;
  }
}

TEST(ObjIdParse, ReadsWhatSprintWritesBack) {
  for (const Arcs &arcs : {Arcs{1, 2, 840, 113549}, Arcs{2, 5, 4, 3}, Arcs{5}, Arcs{1, 0xFFFFFFFF},
                           Arcs{1, 0x80000000}}) {
    char text[64];
    uint32_t length = sizeof text;
    ASSERT_EQ(0, asn1_ObjId_sprint(make(arcs).get(), text, &length));
    EXPECT_EQ((Parsed{true, arcs, ""}), parse(text)) << text;
  }
}

#ifndef ORVELASN1_TESTS_SANITIZED

// -- Exhausted memory ---------------------------------------------------------------------------

using support::expect_failure_at_each_allocation;

TEST(ObjIdMemory, NewAndCloneGiveNullWhereAnAllocationFails) {
  const auto succeeds = [](ObjId *oid) {
    asn1_ObjId_free(oid);
    return oid != nullptr;
  };
  const Owned oid = make({1, 2, 3});
  EXPECT_EQ(2, expect_failure_at_each_allocation([&] { return succeeds(asn1_ObjId_new(3)); }));
  EXPECT_EQ(
      2, expect_failure_at_each_allocation([&] { return succeeds(asn1_ObjId_clone(oid.get())); }));
}

TEST(ObjIdMemory, TheDecoderGivesAndStoresNullWhereAnAllocationFails) {
  const Input input(hex("06 03 55 04 03"));
  EXPECT_LT(0, expect_failure_at_each_allocation([&] {
              ObjId *oid = nullptr;
              const uint8_t *next = asn1_ObjId_d(input.z(), input.end(), 0, &oid, 0);
              EXPECT_EQ(next != nullptr, oid != nullptr);
              asn1_ObjId_free(oid);
              return next != nullptr;
            }));
}

TEST(ObjIdMemory, ParseLeavesTheTextAloneWhereAnAllocationFails) {
  EXPECT_LE(2, expect_failure_at_each_allocation([] {
              const char *const text = "1.2.840,";
              const char *cursor = text;
              const Owned oid(asn1_ObjId_parse(&cursor));
              EXPECT_EQ(oid != nullptr ? text + 7 : text, cursor);
              return oid != nullptr;
            }));
}

TEST(ObjIdMemory, ParseTakesNoneForANumberOfAnyWidth) {
  const std::string text = "1." + std::string(100, ' ') + "-" + std::string(100, '0') + "10";
  EXPECT_EQ(2, expect_failure_at_each_allocation([&] {
              const char *cursor = text.c_str();
              return Owned(asn1_ObjId_parse(&cursor)) != nullptr;
            }));
}

TEST(ObjIdMemory, SprintFailsAndLeavesTheCapacityWhereAnAllocationFails) {
  const Owned oid = make({1, 2, 3});
  EXPECT_LT(0, expect_failure_at_each_allocation([&] {
              char text[10];
              uint32_t length = sizeof text;
              const int32_t result = asn1_ObjId_sprint(oid.get(), text, &length);
              EXPECT_EQ(result == 0 ? 6U : sizeof text, length);
              EXPECT_TRUE(result == 0 || result == -1);
              return result == 0;
            }));
}

#endif

}  // namespace

}  // namespace objid_test
