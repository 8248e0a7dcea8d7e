// Deep and wide inputs: they are read or refused without a crash, on a large stack and on a small one,
// and the time does not grow faster than the size.
#include <malloc.h>
#include <nest.h>
#include <sanitizers.h>
#include <support.h>
#include <sys/mman.h>
#include <ucontext.h>

#include <climits>
#include <cmath>
#include <ctime>
#include <functional>

#include "family.h"
#include "guard.h"
#include "laws.h"
#include "parameters.h"

namespace deep_test {

namespace {

using namespace attack;
using support::element;
using support::hex;
using support::Nest;
using support::on_small_stack;
using support::on_stack_of;
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

/// A value that holds values of its kind.
struct Nesting {
  std::string_view family;
  size_t level;  ///< octets of a level, about
  std::function<Bytes(size_t)> make;
};

const Nesting nestings[] = {{"ContentInfo", 32, [](size_t n) { return messages(n, false); }},
                            {"ContentInfo", 32, [](size_t n) { return messages(n, true); }},
                            {"GDOObject", 15, card_objects}};

// A decoder leaves most of the stack for what comes after it. The explanation, which needs more for
// each level, takes of that. The decoder refuses a level less for what is on the stack already: the
// levels are those that it takes with somewhat more in use than an agreement has.
TEST(Deep, WhatIsTakenOnASmallStackHasNoFaultThere) {
  for (const Nesting &one : nestings) {
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

constexpr size_t most_levels = 32768;

/// The levels of the deepest nesting that is taken on the stack that is left. What is taken is
/// written, copied and released.
[[gnu::noinline]] size_t deepest_levels(const Nesting &nesting) {
  const auto takes = [&](size_t levels) {
    return use(family_named(nesting.family), nesting.make(levels * nesting.level)) != -1;
  };
  size_t taken = 0, refused = 1;
  while (refused < most_levels && takes(refused)) {
    taken = refused;
    refused *= 2;
  }
  while (taken + 1 < refused) {
    const size_t between = (taken + refused) / 2;
    (takes(between) ? taken : refused) = between;
  }
  return taken;
}

TEST(Deep, AThreadWithALargerStackTakesMore) {
  for (const Nesting &nesting : nestings) {
    SCOPED_TRACE(nesting.family);
    size_t small = 0, middle = 0, large = 0;
    on_stack_of(64 * kibi, [&] { small = deepest_levels(nesting); });
    on_stack_of(256 * kibi, [&] { middle = deepest_levels(nesting); });
    on_stack_of(mebi, [&] { large = deepest_levels(nesting); });
    EXPECT_LT(0U, small);
    EXPECT_LT(3 * small, middle);
    EXPECT_LT(3 * middle, large);
    EXPECT_LT(large, most_levels - 1);
  }
}

/// Runs `f` on a stack that the thread library does not know, as a coroutine does. An unreadable
/// page is below it.
template <class F>
void on_unknown_stack(size_t octets, F f) {
  constexpr size_t page = 4096;
  static F *running = nullptr;
  void *const block =
      mmap(nullptr, page + octets, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
  ASSERT_NE(MAP_FAILED, block);
  char *const low = static_cast<char *>(block) + page;
  ASSERT_EQ(0, mprotect(low, octets, PROT_READ | PROT_WRITE));
  ucontext_t here, there;
  ASSERT_EQ(0, getcontext(&there));
  there.uc_stack.ss_sp = low;
  there.uc_stack.ss_size = octets;
  there.uc_link = &here;
  running = &f;
  makecontext(
      &there, [] { (*running)(); }, 0);
  ASSERT_EQ(0, swapcontext(&here, &there));
  munmap(block, page + octets);
}

// The library takes such a stack to have 32 KiB left. Messages in messages are taken there, and too many
// are refused; before and after calls on the stack of the thread.
TEST(Deep, AStackThatTheThreadLibraryDoesNotKnowTakesSomeDepth) {
  for (const Nesting &nesting : nestings) {
    SCOPED_TRACE(nesting.family);
    size_t small = 0, large = 0, own = 0, on_thread = 0, after_own = 0;
    on_unknown_stack(96 * kibi, [&] { small = deepest_levels(nesting); });
    on_unknown_stack(mebi, [&] { large = deepest_levels(nesting); });
    EXPECT_LT(1U, small);
    EXPECT_EQ(small, large);
    on_small_stack([&] {
      on_unknown_stack(96 * kibi, [&] { on_thread = deepest_levels(nesting); });
      own = deepest_levels(nesting);
      on_unknown_stack(96 * kibi, [&] { after_own = deepest_levels(nesting); });
    });
    EXPECT_EQ(small, on_thread);
    EXPECT_EQ(small, after_own);
    EXPECT_LT(small, own);
  }
}

/// Calls `f` where only so many octets of the stack of this thread are left, or somewhat more.
template <class F>
char with_stack_left(size_t octets, F f) {
  pthread_attr_t attributes;
  void *low = nullptr;
  size_t size = 0;
  EXPECT_EQ(0, pthread_getattr_np(pthread_self(), &attributes));
  EXPECT_EQ(0, pthread_attr_getstack(&attributes, &low, &size));
  pthread_attr_destroy(&attributes);
  const auto left = reinterpret_cast<uintptr_t>(&size) - reinterpret_cast<uintptr_t>(low);
  return further_down(left > octets ? (left - octets) / (kibi + 512) : 0, f);
}

// What is left of the stack counts, not what was left at a call before.
TEST(Deep, ACallNearTheEndOfTheStackTakesNoMoreThanFitsThere) {
  for (const Nesting &nesting : nestings) {
    SCOPED_TRACE(nesting.family);
    const Family &family = family_named(nesting.family);
    for (const size_t left : {32 * kibi, 64 * kibi, 128 * kibi}) {
      SCOPED_TRACE(left);
      size_t alone = 0, after_a_shallow_call = 0;
      on_small_stack([&] { with_stack_left(left, [&] { alone = deepest_levels(nesting); }); });
      on_small_stack([&] {
        EXPECT_NE(-1, use(family, family.samples[0]));
        with_stack_left(left, [&] { after_a_shallow_call = deepest_levels(nesting); });
      });
      EXPECT_LT(0U, alone);
      // The two calls stand some octets apart on their stacks, which may be a level's.
      EXPECT_NEAR(static_cast<double>(alone), static_cast<double>(after_a_shallow_call), 1);
    }
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

}  // namespace deep_test
