// Tests the trace: prefix, indentation, messages, object identifiers and hex dumps, as whole lines.
#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <clocale>
#include <ctime>
#include <thread>

#include "support.h"

// Replaces the functions that return the time. They call those of the C runtime, and count the
// calls.
namespace {

std::atomic<int> clock_calls{0};

template <class Function>
Function *counted(const char *name) {
  ++clock_calls;
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

time_t time(time_t *seconds) noexcept { return counted<time_t(time_t *)>("time")(seconds); }

int clock_gettime(clockid_t clock, timespec *now) noexcept {
  return counted<int(clockid_t, timespec *)>("clock_gettime")(clock, now);
}

tm *localtime(const time_t *seconds) noexcept {
  return counted<tm *(const time_t *)>("localtime")(seconds);
}

tm *localtime_r(const time_t *__restrict seconds, tm *__restrict parts) noexcept {
  return counted<tm *(const time_t *, tm *)>("localtime_r")(seconds, parts);
}

}  // extern "C"

namespace {

using support::Bytes;
using support::hex;
using support::Input;
using support::text;
using support::trace_lines;
using support::trace_text;
using Lines = std::vector<std::string>;

/// Returns the start of each line: the process id and the low 32 bits of the calling thread's
/// handle.
std::string process_and_thread() {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%04d:%04d ", static_cast<int>(getpid()),
                static_cast<int>(static_cast<uint32_t>(pthread_self())));
  return buffer;
}

/// Returns whether `all` is one line: the prefix of this thread, any time of day, then `message`.
testing::AssertionResult is_line(const std::string &all, const std::string &message) {
  const std::string start = process_and_thread();
  std::string clock = all.substr(std::min(start.size(), all.size()), 9);
  for (char &c : clock) c = c >= '0' && c <= '9' ? '0' : c;
  if (clock == "00:00:00 " && all.starts_with(start) &&
      all.substr(start.size() + 9) == "ASN.1: " + message + "\n") {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "not a line of \"" << message << "\": \"" << all << '"';
}

std::string object_identifier(std::vector<uint32_t> arcs, uint32_t depth = 1) {
  const ObjId oid{static_cast<uint32_t>(arcs.size()), arcs.data()};
  return trace_text([&] { asn1_LogObjId(depth, &oid); });
}

std::string dump(const Bytes &octets, uint32_t depth = 1) {
  const Input input(octets);
  return trace_text(
      [&] { asn1_LogByteArray(depth, input.z(), static_cast<int32_t>(octets.size())); });
}

Lines dump_lines(const Bytes &octets, uint32_t depth = 1) {
  const Input input(octets);
  return trace_lines(
      [&] { asn1_LogByteArray(depth, input.z(), static_cast<int32_t>(octets.size())); });
}

std::string repeat(const char *piece, size_t count) {
  std::string out;
  for (size_t i = 0; i < count; ++i) out += piece;
  return out;
}

// -- Messages -----------------------------------------------------------------------------------

TEST(TraceMessage, IsProcessThreadTimeAndText) {
  EXPECT_TRUE(is_line(trace_text([] { asn1_LogMessage(1, "hello\n"); }), "hello"));
}

TEST(TraceMessage, HasTheCurrentLocalTime) {
  const time_t before = time(nullptr);
  const std::string line = trace_text([] { asn1_LogMessage(1, "hello\n"); });
  const time_t after = time(nullptr);
  bool found = false;
  for (time_t now = before; now <= after; ++now) {
    tm parts{};
    localtime_r(&now, &parts);
    char clock[40];
    std::snprintf(clock, sizeof clock, "%02i:%02i:%02i ", parts.tm_hour, parts.tm_min,
                  parts.tm_sec);
    found = found || line == process_and_thread() + clock + "ASN.1: hello\n";
  }
  EXPECT_TRUE(found) << line;
}

TEST(TraceMessage, FollowsTheTimeZoneOfTheProcess) {
  const char *const old = std::getenv("TZ");
  const std::string kept = old != nullptr ? old : "";
  const auto hour_in = [](const char *zone) {
    setenv("TZ", zone, 1);
    const std::string line = trace_text([] { asn1_LogMessage(1, "x\n"); });
    return std::stoi(line.substr(process_and_thread().size(), 2));
  };
  const int west = hour_in("WWW+05");
  const int east = hour_in("EEE-05");
  if (old != nullptr) {
    setenv("TZ", kept.c_str(), 1);
  } else {
    unsetenv("TZ");
  }
  tzset();
  const int difference = (east - west + 24) % 24;
  EXPECT_TRUE(difference == 10 || difference == 11) << "11 only when an hour passed between";
}

TEST(TraceMessage, BearsTheHandleOfTheCallingThread) {
  std::string expected;
  const std::string line = trace_text([&] {
    std::thread([&] {
      expected = process_and_thread();
      asn1_LogMessage(1, "from a thread\n");
    }).join();
  });
  EXPECT_TRUE(line.starts_with(expected)) << line;
  EXPECT_TRUE(line.ends_with(" ASN.1: from a thread\n")) << line;
  EXPECT_NE(expected, process_and_thread());
}

TEST(TraceMessage, TakesArgumentsAsPrintfDoes) {
  EXPECT_TRUE(
      is_line(trace_text([] { asn1_LogMessage(1, "%s %i %02X\n", "a", -7, 0xBU); }), "a -7 0B"));
}

TEST(TraceMessage, AtDepthOneHasNoDots) {
  const std::string line = trace_text([] { asn1_LogMessage(1, "top\n"); });
  EXPECT_TRUE(line.ends_with(" ASN.1: top\n")) << line;
}

TEST(TraceMessage, HasADotAndABlankForEachLevelBelowTheFirst) {
  EXPECT_TRUE(is_line(trace_text([] { asn1_LogMessage(2, "x\n"); }), ". x"));
  EXPECT_TRUE(is_line(trace_text([] { asn1_LogMessage(3, "x\n"); }), ". . x"));
  EXPECT_TRUE(is_line(trace_text([] { asn1_LogMessage(10, "x\n"); }), ". . . . . . . . . x"));
  EXPECT_EQ(Lines{repeat(". ", 65534) + "x"}, trace_lines([] { asn1_LogMessage(65535, "x\n"); }));
}

TEST(TraceMessage, WritesNothingAtDepthZero) {
  EXPECT_EQ("", trace_text([] { asn1_LogMessage(0, "x\n"); }));
}

TEST(TraceMessage, TakesTheLowSixteenBitsOfTheDepth) {
  EXPECT_EQ("", trace_text([] { asn1_LogMessage(65536, "x\n"); }));
  EXPECT_TRUE(is_line(trace_text([] { asn1_LogMessage(65537, "x\n"); }), "x"));
  EXPECT_EQ("", trace_text([] { asn1_LogMessage(0xFFFF0000, "x\n"); }));
  EXPECT_TRUE(is_line(trace_text([] { asn1_LogMessage(0xFFFF0002, "x\n"); }), ". x"));
}

TEST(TraceMessage, WithoutANewlineLeavesTheLineOpen) {
  char *buffer = nullptr;
  size_t size = 0;
  FILE *stream = open_memstream(&buffer, &size);
  asn1_LogStart(stream);
  asn1_LogMessage(1, "begun");
  std::fputs(", ended\n", stream);
  asn1_LogStart(nullptr);
  std::fclose(stream);
  EXPECT_TRUE(is_line(buffer, "begun, ended"));
  std::free(buffer);
}

TEST(TraceMessage, IsFlushed) {
  char *buffer = nullptr;
  size_t size = 0;
  FILE *stream = open_memstream(&buffer, &size);
  asn1_LogStart(stream);
  asn1_LogMessage(1, "at once\n");
  asn1_LogStart(nullptr);
  EXPECT_TRUE(is_line(std::string(buffer, size), "at once"));
  std::fclose(stream);
  std::free(buffer);
}

// -- Starting and stopping ----------------------------------------------------------------------

TEST(TraceStream, StaysOpenAndSilentAfterTheTraceIsTurnedOff) {
  char *buffer = nullptr;
  size_t size = 0;
  FILE *stream = open_memstream(&buffer, &size);
  asn1_LogStart(stream);
  asn1_LogStart(nullptr);
  asn1_LogMessage(1, "lost\n");
  EXPECT_LE(0, std::fputs("mine\n", stream));
  std::fclose(stream);
  EXPECT_STREQ("mine\n", buffer);
  std::free(buffer);
}

TEST(TraceStream, IsNotRewound) {
  char *buffer = nullptr;
  size_t size = 0;
  FILE *stream = open_memstream(&buffer, &size);
  std::fputs("before\n", stream);
  asn1_LogStart(stream);
  asn1_LogMessage(1, "x\n");
  asn1_LogStart(nullptr);
  std::fclose(stream);
  const std::string all(buffer, size);
  std::free(buffer);
  ASSERT_TRUE(all.starts_with("before\n"));
  EXPECT_TRUE(is_line(all.substr(7), "x"));
}

TEST(TraceStream, MayBeChanged) {
  const std::string second = trace_text([] {
    asn1_LogStart(nullptr);
    EXPECT_TRUE(is_line(trace_text([] { asn1_LogMessage(1, "inner\n"); }), "inner"));
  });
  EXPECT_EQ("", second);
}

TEST(TraceStream, ThatFailsToWriteChangesNoResult) {
  FILE *full = std::fopen("/dev/full", "w");
  ASSERT_NE(nullptr, full);
  asn1_LogStart(full);
  const auto decoded = support::decode(asn1_Integer_d, hex("02 05 01 02 03 04 05"), 0, 1);
  asn1_LogStart(nullptr);
  EXPECT_NE(0, std::ferror(full));
  std::fclose(full);
  EXPECT_EQ(7, decoded.consumed);
  asn1_Integer_free(decoded.record);
}

TEST(TraceStream, GetsNothingFromEncoders) {
  EXPECT_EQ("", trace_text([] {
              EXPECT_EQ(hex("02 01 01"), support::encode(asn1_Integer_e, asn1_Integer_1()));
              EXPECT_EQ(hex("05 00"), support::encode(asn1_Any_e, asn1_Any_NULL()));
            }));
}

TEST(TraceOff, NoFunctionReadsTheClock) {
  uint32_t arcs[] = {1, 2, 3};
  const ObjId oid{3, arcs};
  const Bytes octets(40);
  const auto write_all = [&](uint32_t depth) {
    clock_calls = 0;
    asn1_LogMessage(depth, "x\n");
    const int message = clock_calls.exchange(0);
    asn1_LogObjId(depth, &oid);
    const int object_id = clock_calls.exchange(0);
    asn1_LogByteArray(depth, octets.data(), 40);
    return std::vector<int>{message, object_id, clock_calls.exchange(0)};
  };
  const std::vector<int> none{0, 0, 0};

  trace_text([&] {
    for (const int calls : write_all(1)) EXPECT_LT(0, calls) << "the count sees no call";
    EXPECT_EQ(none, write_all(0));
    EXPECT_EQ(none, write_all(65536));
  });
  asn1_LogStart(nullptr);
  EXPECT_EQ(none, write_all(1));
}

TEST(TraceOff, RecordsAreNotLookedAt) {
  asn1_LogStart(nullptr);
  asn1_LogObjId(1, nullptr);
  asn1_LogByteArray(1, nullptr, 16);
  EXPECT_EQ("", trace_text([] { asn1_LogObjId(0, nullptr); }));
  EXPECT_EQ("", trace_text([] { asn1_LogObjId(65536, nullptr); }));
}

// -- Object identifiers -------------------------------------------------------------------------

TEST(TraceObjId, IsOneLineOfDottedArcsBehindTwoBlanks) {
  EXPECT_TRUE(is_line(object_identifier({1, 2, 840, 113549}), "  1.2.840.113549"));
  EXPECT_TRUE(is_line(object_identifier({7}), "  7"));
  EXPECT_TRUE(is_line(object_identifier({2, 5, 4, 3}, 3), ". .   2.5.4.3"));
}

TEST(TraceObjId, PrintsArcsAsSignedNumbers) {
  EXPECT_TRUE(is_line(object_identifier({0x80000000, 0xFFFFFFFF, 0x7FFFFFFF}),
                      "  -2147483648.-1.2147483647"));
}

TEST(TraceObjId, WithoutArcsIsABareNewline) {
  EXPECT_EQ("\n", object_identifier({}));
  EXPECT_EQ("\n", object_identifier({}, 5));
}

TEST(TraceObjId, WritesNothingAtDepthZero) {
  for (const uint32_t depth : {0U, 65536U}) {
    EXPECT_EQ("", object_identifier({1, 2}, depth));
    EXPECT_EQ("", object_identifier({}, depth));
  }
  EXPECT_TRUE(is_line(object_identifier({1, 2}, 65537), "  1.2"));
}

// -- Hex dumps ----------------------------------------------------------------------------------

TEST(TraceDump, OfNoOctetsWritesNothing) { EXPECT_EQ("", dump({})); }

TEST(TraceDump, OfOneOctetPadsTheTextColumn) {
  EXPECT_TRUE(
      is_line(dump(text("A")), "  0x00000000 41                                              A"));
}

TEST(TraceDump, OfSixteenOctetsIsOneLine) {
  EXPECT_TRUE(is_line(dump(text("ABCDEFGHIJKLMNOP")),
                      "  0x00000000 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 "
                      "ABCDEFGHIJKLMNOP"));
}

TEST(TraceDump, OfSeventeenOctetsIsTwoLinesTheSecondOfOneOctet) {
  const Lines expected{
      "  0x00000000 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 ABCDEFGHIJKLMNOP",
      "  0x00000010 51 " + repeat("   ", 15) + "Q"};
  EXPECT_EQ(expected, dump_lines(text("ABCDEFGHIJKLMNOPQ")));
}

TEST(TraceDump, OfThirtyTwoOctetsIsTwoLines) {
  const Lines expected{
      "  0x00000000 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 0000000000000000",
      "  0x00000010 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 30 0000000000000000"};
  EXPECT_EQ(expected, dump_lines(text(std::string(32, '0'))));
}

TEST(TraceDump, CountsOffsetsInHexAcrossManyLines) {
  const Lines lines = dump_lines(Bytes(0x1235, 0x20));
  ASSERT_EQ(0x124U, lines.size());
  EXPECT_TRUE(lines[0x00A].starts_with("  0x000000A0 20 "));
  EXPECT_TRUE(lines[0x100].starts_with("  0x00001000 20 "));
  EXPECT_EQ("  0x00001230 20 20 20 20 20 " + repeat("   ", 11) + "     ", lines[0x123]);
}

TEST(TraceDump, IndentsEveryLine) {
  const Lines expected{
      ". .   0x00000000 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 " + std::string(16, '.'),
      ". .   0x00000010 00 " + repeat("   ", 15) + "."};
  EXPECT_EQ(expected, dump_lines(Bytes(17), 3));
}

TEST(TraceDump, PrefixesEveryLine) {
  const std::string all = dump(Bytes(17));
  const size_t first = all.find('\n') + 1;
  EXPECT_TRUE(is_line(all.substr(0, first),
                      "  0x00000000 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
                      "................"));
  EXPECT_TRUE(is_line(all.substr(first), "  0x00000010 00 " + repeat("   ", 15) + "."));
}

TEST(TraceDump, ShowsPrintableOctetsAndDotsForTheOthers) {
  Bytes octets;
  for (unsigned octet = 0; octet < 256; ++octet) octets.push_back(static_cast<uint8_t>(octet));
  const Lines lines = dump_lines(octets);
  ASSERT_EQ(16U, lines.size());
  const char *const columns[] = {"................", "................", " !\"#$%&'()*+,-./",
                                 "0123456789:;<=>?", "@ABCDEFGHIJKLMNO", "PQRSTUVWXYZ[\\]^_",
                                 "`abcdefghijklmno", "pqrstuvwxyz{|}~."};
  for (size_t i = 0; i < 16; ++i) {
    ASSERT_LE(16U, lines[i].size());
    EXPECT_EQ(i < 8 ? columns[i] : "................", lines[i].substr(lines[i].size() - 16)) << i;
  }
  EXPECT_TRUE(
      lines[15].starts_with("  0x000000F0 F0 F1 F2 F3 F4 F5 F6 F7 F8 F9 FA FB FC FD FE FF "));
}

TEST(TraceDump, AsksTheCurrentLocaleWhatIsPrintable) {
  const std::string folder = testing::TempDir() + "orvelasn1_locale_" + std::to_string(getpid());
  // The program localedef may be that of another processor.
  std::string localedef = "localedef --little-endian";
  if constexpr (std::endian::native == std::endian::big) localedef = "localedef --big-endian";
  const std::string make = "mkdir -p " + folder + " && " + localedef + " -i en_US -f ISO-8859-1 " +
                           folder + "/latin1 >/dev/null 2>&1";
  const bool made = std::system(make.c_str()) == 0;
  std::string column;
  if (made) {
    setenv("LOCPATH", folder.c_str(), 1);
    EXPECT_NE(nullptr, std::setlocale(LC_CTYPE, "latin1"));
    column = dump_lines(hex("C4 85 E9 7F 41")).at(0);
    std::setlocale(LC_CTYPE, "C");
    unsetenv("LOCPATH");
  }
  EXPECT_EQ(0, std::system(("rm -rf " + folder).c_str()));
  if (!made) GTEST_SKIP() << "no sources of locales here (Debian package locales)";
  EXPECT_EQ("  0x00000000 C4 85 E9 7F 41 " + repeat("   ", 11) + "\xC4.\xE9.A", column);
}

TEST(TraceDump, IgnoresANullPointerAndADepthOfZero) {
  const uint8_t octets[16] = {};
  EXPECT_EQ("", trace_text([] { asn1_LogByteArray(1, nullptr, 16); }));
  EXPECT_EQ("", trace_text([&] { asn1_LogByteArray(0, octets, 16); }));
  EXPECT_EQ("", trace_text([&] { asn1_LogByteArray(65536, octets, 16); }));
  EXPECT_NE("", trace_text([&] { asn1_LogByteArray(65537, octets, 16); }));
}

TEST(TraceDump, OfANegativeLengthWritesNothing) {
  const uint8_t octets[1] = {};
  for (const int32_t length : {-1, -16, -17, -32, INT32_MIN}) {
    EXPECT_EQ("", trace_text([&] { asn1_LogByteArray(1, octets, length); })) << length;
  }
}

// -- A whole picture ----------------------------------------------------------------------------

/// An element decoder for OBJECT IDENTIFIER and INTEGER, whose records it does not keep.
const uint8_t *oid_or_integer_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **,
                                uint32_t depth) {
  if (*z == 0x06) {
    ObjId *oid = nullptr;
    z = asn1_ObjId_d(z, end, impl_tag, &oid, depth);
    asn1_ObjId_free(oid);
  } else {
    Integer *integer = nullptr;
    z = asn1_Integer_d(z, end, impl_tag, &integer, depth);
    asn1_Integer_free(integer);
  }
  return z;
}

Lines picture(uint32_t depth) {
  const Input input(hex("30 07 06 02 2A 03 02 01 05"));
  return trace_lines([&] {
    List *list = nullptr;
    EXPECT_EQ(input.end(),
              asn1_SeqOf_d(input.z(), input.end(), 0, oid_or_integer_d, nullptr, &list, depth));
    List_free(list, nullptr);
  });
}

TEST(TraceOfDecoders, ShowsASequenceWithItsValuesOneLevelDeeper) {
  const Lines expected{"SEQUENCE {", ". OBJECT IDENTIFIER ", ".   1.2.3", ". INTEGER", ".  5", "}"};
  EXPECT_EQ(expected, picture(1));
}

TEST(TraceOfDecoders, StartsAtTheDepthOfTheCall) {
  const Lines expected{". . SEQUENCE {", ". . . OBJECT IDENTIFIER ",
                       ". . .   1.2.3",  ". . . INTEGER",
                       ". . .  5",       ". . }"};
  EXPECT_EQ(expected, picture(3));
}

TEST(TraceOfDecoders, IsSilentThroughoutAtDepthZero) { EXPECT_EQ(Lines{}, picture(0)); }

TEST(TraceOfDecoders, CountTheDepthInThirtyTwoBits) {
  // The children of depth 65535 are at 65536, whose low 16 bits are silent; those of 65536 are
  // visible again.
  const std::string dots = repeat(". ", 65534);
  EXPECT_EQ((Lines{dots + "SEQUENCE {", dots + "}"}), picture(65535));
  EXPECT_EQ((Lines{"OBJECT IDENTIFIER ", "  1.2.3", "INTEGER", " 5"}), picture(65536));
}

}  // namespace
