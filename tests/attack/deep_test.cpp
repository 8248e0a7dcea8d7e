// Deep and wide inputs: they are read or refused without a crash, on a large stack and on a small one,
// and the time does not grow faster than the size.
#include <malloc.h>
#include <nest.h>
#include <sanitizers.h>
#include <support.h>

#include <climits>
#include <cmath>
#include <ctime>
#include <functional>

#include "family.h"
#include "guard.h"
#include "laws.h"
#include "parameters.h"

namespace {

using namespace attack;
using support::element;
using support::hex;
using support::Nest;
using support::on_small_stack;
using support::text;
using support::operator+;

constexpr size_t kibi = size_t{1} << 10;
constexpr size_t mebi = size_t{1} << 20;
#ifdef ORVELASN1_TESTS_SANITIZED
constexpr size_t less = 8;  // a sanitizer takes several times the time and the memory
#else
constexpr size_t less = 1;
#endif

const Family &family_named(std::string_view name) {
  return *std::ranges::find(families(), name, &Family::name);
}

/// Decodes, encodes, copies and releases. Gives the octets that were taken, or -1.
long use(const Family &family, const Bytes &octets) {
  void *record = nullptr;
  const uint8_t *const z = octets.data();
  const uint8_t *const next = family.decode(z, z + octets.size(), 0, &record, 0);
  if (next != nullptr && family.encode != nullptr) {
    Bytes out(family.encode(nullptr, record));
    uint8_t *cursor = out.data();
    EXPECT_EQ(out.size(), family.encode(&cursor, record));
  }
  if (next != nullptr && family.clone != nullptr) family.free(family.clone(record));
  family.free(record);  // after a failure, of a list that may be left
  return next == nullptr ? -1 : next - z;
}

// ---------------------------------------------------------------------------------------------
// Inputs of about so many octets
// ---------------------------------------------------------------------------------------------

Bytes repeated(size_t size, const Bytes &unit) {
  Bytes out;
  out.reserve(size + unit.size());
  while (out.size() < size) out.insert(out.end(), unit.begin(), unit.end());
  return out;
}

Bytes strings(size_t size, uint8_t tag, const Bytes &core) {
  Nest nest(core);
  for (size_t levels = size / 5; levels != 0; --levels) nest.wrap(tag);
  return nest.octets();
}

Bytes indefinite_strings(size_t size, uint8_t tag, const Bytes &core) {
  Nest nest(core);
  for (size_t levels = size / 4; levels != 0; --levels) nest.wrap_indefinite(tag);
  return nest.octets();
}

Bytes messages(size_t size, bool indefinite) {
  Nest nest(hex("30 0B 06 09 2A 86 48 86 F7 0D 01 07 01"));
  const auto wrap = [&](uint8_t tag) {
    if (indefinite)
      nest.wrap_indefinite(tag);
    else
      nest.wrap(tag);
  };
  for (size_t levels = size / 32; levels != 0; --levels) {
    nest.before(hex("02 01 01 31 00")).behind(hex("31 00")).wrap(0x30);
    wrap(0xA0);
    nest.before(hex("06 09 2A 86 48 86 F7 0D 01 07 02"));
    wrap(0x30);
  }
  return nest.octets();
}

Bytes card_objects(size_t size) {
  Nest nest(hex("30 06 06 01 05 04 01 41"));
  for (size_t levels = size / 15; levels != 0; --levels)
    nest.wrap(0x31).wrap(4).before(hex("06 01 10")).wrap(0x30);
  return nest.octets();
}

Bytes card_headers(size_t size) {
  Nest nest(hex("06 01 05 04 01 41"));
  for (size_t levels = size / 10; levels != 0; --levels) nest.wrap(0x30).wrap(0x31);
  return nest.octets();
}

Bytes list_of_tiny(size_t size) { return element(0x30, repeated(size, hex("02 01 07"))); }
Bytes list_of_empty(size_t size) { return element(0x31, repeated(size, hex("04 00"))); }
Bytes segments(size_t size) { return element(0x24, repeated(size, hex("04 01 AA"))); }
Bytes nested_value(size_t size) {
  return indefinite_strings(size / 2, 0x24, element(4, Bytes(size / 2, 0xAA)));
}
Bytes nested_bits(size_t size) {
  return indefinite_strings(size / 2, 0x23, element(3, Bytes(1, 0) + Bytes(size / 2, 0xAA)));
}
Bytes bit_segments(size_t size) { return element(0x23, repeated(size, hex("03 02 00 AA"))); }

Bytes certificate_list(size_t size) {
  const Bytes algorithm = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00");
  const Bytes name = hex("30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45");
  const Bytes time = element(23, text("260101000000Z"));
  const Bytes entry = element(0x30, hex("02 02 12 67") + time);
  return element(0x30,
                 element(0x30, algorithm + name + time + element(0x30, repeated(size, entry))) +
                     algorithm + hex("03 02 00 8B"));
}

Bytes name(size_t size) {
  return element(0x30, repeated(size, hex("31 0B 30 09 06 03 55 04 06 13 02 44 45")));
}
Bytes name_of_one_value(size_t size) {
  return element(
      0x30, element(0x31, element(0x30, hex("06 03 55 04 03") + element(12, Bytes(size, 'a')))));
}
Bytes name_of_one_rdn(size_t size) {
  return element(0x30, element(0x31, repeated(size, hex("30 09 06 03 55 04 06 13 02 44 45"))));
}
Bytes name_of_zero_octets(size_t size) {
  return element(0x30, repeated(size, hex("31 0D 30 0B 06 03 55 04 06 1E 04 00 44 00 45")));
}
Bytes textual_name(size_t size) { return repeated(size, text("/c(19)=DE,o(12)=A//B")); }
Bytes dotted_textual_name(size_t size) { return repeated(size, text("/2.5.4.9(12)=a/,")); }
Bytes textual_value(size_t size) { return text("/cn(12)=") + Bytes(size, 'a'); }
Bytes textual_escapes(size_t size) { return text("/cn(12)=") + repeated(size, text("//")); }
Bytes identifier(size_t size) { return element(6, repeated(size, hex("81 01"))); }
Bytes dotted_identifier(size_t size) { return text("1.2") + repeated(size, text(".3")); }
Bytes dots_and_blanks(size_t size) {
  return text("1") + Bytes(size / 2, '.') + Bytes(size / 2, ' ');
}
Bytes number(size_t size) { return element(2, Bytes(size, 0x5A)); }

struct Shape {
  std::string_view title;
  std::string_view family;
  size_t size;  ///< the larger of the two that are compared
  std::function<Bytes(size_t)> make;
};

const Shape shapes[] = {
    {"NestedStrings", "OCTET STRING", mebi,
     [](size_t n) { return strings(n, 0x24, hex("04 01 AA")); }},
    {"NestedIndefiniteStrings", "OCTET STRING", mebi,
     [](size_t n) { return indefinite_strings(n, 0x24, hex("04 01 AA")); }},
    {"NestedBitStrings", "BIT STRING", mebi,
     [](size_t n) { return strings(n, 0x23, hex("03 02 00 AA")); }},
    {"NestedIndefiniteBitStrings", "BIT STRING", mebi,
     [](size_t n) { return indefinite_strings(n, 0x23, hex("03 02 00 AA")); }},
    {"NestedUnclosedStrings", "OCTET STRING", mebi,
     [](size_t n) { return repeated(n, hex("24 80")); }},
    {"NestedAroundALongString", "OCTET STRING", 2 * mebi, nested_value},
    {"NestedAroundALongBitString", "BIT STRING", 2 * mebi, nested_bits},
    {"NestedMessages", "ContentInfo", 4 * mebi, [](size_t n) { return messages(n, false); }},
    {"NestedIndefiniteMessages", "ContentInfo", 4 * mebi,
     [](size_t n) { return messages(n, true); }},
    {"NestedCardObjects", "GDOObject", 4 * mebi, card_objects},
    {"NestedHeadersOfACardObject", "GDOObject", 4 * mebi, card_headers},
    {"AMillionTinyElements", "SEQUENCE OF INTEGER", 3'000'000, list_of_tiny},
    {"AMillionEmptyElements", "SET OF OCTET STRING", 2'000'000, list_of_empty},
    {"ACrlOf64MiB", "CertificateList", 64 * mebi / less, certificate_list},
    {"ANameOfManyRdns", "Name", mebi, name},
    {"ANameOfOneValue", "Name", mebi, name_of_one_value},
    {"ANameOfOneRdn", "Name", mebi, name_of_one_rdn},
    {"ANameThatZeroOctetsCut", "Name", mebi, name_of_zero_octets},
    {"ATextualNameOfManyRdns", "textual name", mebi, textual_name},
    {"ATextualNameOfDottedTypes", "textual name", mebi, dotted_textual_name},
    {"ATextualNameOfOneValue", "textual name", mebi, textual_value},
    {"ATextualNameOfEscapes", "textual name", mebi, textual_escapes},
    {"AHundredThousandSegments", "OCTET STRING", 300'000, segments},
    {"AHundredThousandBitSegments", "BIT STRING", 400'000, bit_segments},
    {"AnIdentifierOfManyArcs", "OBJECT IDENTIFIER", mebi, identifier},
    {"ADottedIdentifierOfManyArcs", "dotted identifier", mebi, dotted_identifier},
    {"ADottedIdentifierOfDotsAndBlanks", "dotted identifier", mebi, dots_and_blanks},
    {"ALongInteger", "INTEGER", 64 * mebi / less, number},
};

void PrintTo(const Shape &shape, std::ostream *out) { *out << shape.title; }

class Large : public testing::TestWithParam<Shape> {};

/// The processor's milliseconds for the quickest of three runs. The later ones use the memory of
/// the first again: a large block fresh from the system costs a fault a page, a small one does not.
double milliseconds(const Family &family, const Bytes &octets) {
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, INT_MAX);
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  };
  double best = HUGE_VAL;
  for (int run = 0; run < 3; ++run) {
    const double start = now();
    use(family, octets);
    best = std::min(best, now() - start);
  }
  return best;
}

/// The larger input takes less than `limit` times as long; prints both times and their ratio. A
/// slow moment of the machine gets a second chance, and a third.
void expect_ratio_below(double limit, std::string_view title, const Family &family,
                        const Bytes &small, const Bytes &large) {
  double ratio = 0;
  for (int attempt = 0; attempt < 3; ++attempt) {
    const double one = milliseconds(family, small);
    const double other = milliseconds(family, large);
    ratio = other / one;
    std::printf("%-32s %9zu octets: %9.3f ms   %9zu octets: %9.3f ms   ratio %.1f\n",
                std::string(title).c_str(), small.size(), one, large.size(), other, ratio);
    if (ratio < limit) return;
  }
  ADD_FAILURE() << "ratio " << ratio << ", limit " << limit;
}

// Four times the size takes four times the time, or somewhat more where the caches end: a quadratic
// step would take sixteen times.
TEST_P(Large, TheTimeGrowsAsTheSize) {
  const Shape &shape = GetParam();
  expect_ratio_below(8, shape.title, family_named(shape.family), shape.make(shape.size / 4),
                     shape.make(shape.size));
}

TEST_P(Large, ASmallStackIsEnough) {
  const Shape &shape = GetParam();
  const Family &family = family_named(shape.family);
  const Bytes octets = shape.make(std::min(shape.size, mebi));
  const long taken = use(family, octets);
  long taken_there = 0;
  on_small_stack([&] { taken_there = use(family, octets); });
  // Less stack may mean that less depth is taken.
  if (taken_there != -1) {
    EXPECT_EQ(taken, taken_there);
  }
}

INSTANTIATE_TEST_SUITE_P(Input, Large, testing::ValuesIn(shapes),
                         [](const auto &shape) { return std::string(shape.param.title); });

// ---------------------------------------------------------------------------------------------
// Depth
// ---------------------------------------------------------------------------------------------

/// About the largest size, up to 64 KiB, whose input is taken.
size_t deepest(const Family &family, const std::function<Bytes(size_t)> &make) {
  size_t taken = 0;
  for (size_t size = 64; size <= 64 * kibi && use(family, make(size)) != -1; size += size / 2)
    taken = size;
  return taken;
}

TEST(Deep, WhatIsTakenOnASmallStackIsWrittenCopiedAndReleasedThere) {
  for (const auto &[title, make] :
       {std::pair{"ContentInfo", std::function([](size_t n) { return messages(n, false); })},
        std::pair{"ContentInfo", std::function([](size_t n) { return messages(n, true); })},
        std::pair{"GDOObject", std::function(card_objects)}}) {
    const Family &family = family_named(title);
    size_t on_small = 0;
    on_small_stack([&, &input = make] { on_small = deepest(family, input); });
    EXPECT_LT(0U, on_small);
    EXPECT_NE(-1, use(family, make(on_small)));
  }
}

/// Calls `f` with so much of the stack in use. Reads its room in the end, so that it is there.
template <class F>
char further_down(size_t kibibytes, F f) {
  volatile char room[kibi];
  room[0] = 0;
  if (kibibytes == 0)
    f();
  else
    further_down(kibibytes - 1, f);
  return room[0];
}

// A decoder leaves most of the stack for what comes after it. The explanation, which needs more for
// each level, takes of that. The decoder refuses a level less for what is on the stack already: the
// levels are those that it takes with somewhat more in use than an agreement has.
TEST(Deep, WhatIsTakenOnASmallStackHasNoFaultThere) {
  struct Case {
    std::string_view family;
    size_t level;  ///< octets of a level of the nesting
    std::function<Bytes(size_t)> make;
  };
  const Case cases[] = {{"ContentInfo", 32, [](size_t n) { return messages(n, false); }},
                        {"ContentInfo", 32, [](size_t n) { return messages(n, true); }},
                        {"GDOObject", 15, card_objects}};
  for (const Case &one : cases) {
    const Family &family = family_named(one.family);
    size_t taken = 0;
    on_small_stack([&] {
      size_t refused = 64 * kibi / one.level;
      while (taken + 1 < refused) {
        const size_t between = (taken + refused) / 2;
        const auto read = [&] {
          (use(family, one.make(between * one.level)) != -1 ? taken : refused) = between;
        };
        further_down(4, read);
      }
      ASSERT_LT(8U, taken);
      for (size_t levels = taken - 8; levels <= taken; ++levels) {
        EXPECT_EQ("", broken_agreement(family, one.make(levels * one.level)))
            << family.name << " of " << levels << " levels";
      }
    });
    EXPECT_LT(taken, 64 * kibi / one.level - 1);
  }
}

// A message without a type ends the process while it is read. A program that jumps out of that goes
// on with the stack that it has then.
TEST(Deep, AReadingThatAJumpLeftInTheMiddleDoesNotCount) {
  const Family &family = family_named("ContentInfo");
  const auto deepest_message = [&] {
    return deepest(family, [](size_t n) { return messages(n, false); });
  };
  const Bytes without_a_type = hex("30 00");
  const auto jump_out_of_a_reading = [&] {
    Guard guard;
    EXPECT_FALSE(guard.run([&] { use(family, without_a_type); }));
    EXPECT_PRED1(is_promised_ending, guard.last_words());
  };
  struct Case {
    size_t jump_at, read_at;  ///< KiB of the stack in use
  };
  for (const Case one : {Case{128, 0}, Case{0, 128}}) {
    size_t expected = 0, after_a_jump = 0;
    on_small_stack([&] { further_down(one.read_at, [&] { expected = deepest_message(); }); });
    on_small_stack([&] {
      further_down(one.jump_at, jump_out_of_a_reading);
      further_down(one.read_at, [&] { after_a_jump = deepest_message(); });
    });
    EXPECT_LT(0U, expected);
    EXPECT_EQ(expected, after_a_jump) << one.read_at << " KiB down";
  }
}

// An encoder measures once, and writes once from the end. Four times the depth takes four times the
// time, where a step that did all that is inside at each level anew would take 16 times.
TEST(Deep, TheTimeIsLinearInTheDepth) {
  for (const auto &[title, make] :
       {std::pair{"ContentInfo", std::function([](size_t n) { return messages(n, false); })},
        std::pair{"ContentInfo", std::function([](size_t n) { return messages(n, true); })},
        std::pair{"GDOObject", std::function(card_objects)}}) {
    const Family &family = family_named(title);
    const size_t size = deepest(family, make);
    expect_ratio_below(8, title, family, make(size / 4), make(size));
  }
}

}  // namespace
