// Memory that is exhausted at the first allocation of a call, at the second, and so on: the call
// fails as its family fails, keeps nothing, releases nothing twice, and the next call works.
#include <gtest/gtest.h>
#include <octets.h>

#include <memory>

#include "guard.h"
#include "laws.h"
#include "parameters.h"

namespace memory_test {

namespace {

using namespace attack;

/// Calls `f`, which says whether it succeeded and keeps nothing, with one allocation failing after
/// the other. Gives the number of failures. Where the process would end, that is a promised end.
template <class F>
long expect_failure_at_each_allocation(F f) {
  for (long successes = 0;; ++successes) {
    Guard guard;
    guard.fail_after(successes);
    bool succeeded = false;
    const bool returned = guard.run([&] { succeeded = f(); });
    EXPECT_FALSE(guard.released_a_stranger()) << "allocation " << successes;
    if (!returned) {
      EXPECT_PRED1(is_promised_ending, guard.last_words()) << "allocation " << successes;
      if (guard.has_failed()) continue;
      return successes;  // a new ContentInfo has no type, and so cannot be released
    }
    EXPECT_EQ(0U, guard.blocks()) << "allocation " << successes;
    if (!guard.has_failed()) {
      EXPECT_TRUE(succeeded);
      return successes;
    }
    EXPECT_FALSE(succeeded) << "allocation " << successes;
  }
}

using ExhaustedMemory = OfAGroup;

/// A record that its family releases.
using Held = std::unique_ptr<void, void (*)(void *)>;

Held decoded(const Family &family, const Bytes &octets) {
  void *record = nullptr;
  const uint8_t *const end = octets.data() + octets.size();
  EXPECT_NE(nullptr, family.decode(octets.data(), end, 0, &record, 0));
  return {record, family.free};
}

TEST_P(ExhaustedMemory, ConstructorFails) {
  for (const Family *family : families_of(GetParam())) {
    if (family->create == nullptr) continue;
    SCOPED_TRACE(family->name);
    const long allocations = expect_failure_at_each_allocation([&] {
      void *const record = family->create();
      family->free(record);
      return record != nullptr;
    });
    EXPECT_LE(1, allocations);
  }
}

TEST_P(ExhaustedMemory, DecoderFails) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    expect_failure_at_each_allocation([&] {
      void *record = nullptr;
      const bool succeeded =
          family.decode(sample.data(), sample.data() + sample.size(), 0, &record, 0) != nullptr;
      family.free(record);
      return succeeded;
    });
  });
}

TEST_P(ExhaustedMemory, EncoderFails) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    if (family.encode == nullptr) return;
    const Held record = decoded(family, sample);
    const uint32_t size = family.encode(nullptr, record.get());
    EXPECT_LT(0U, size);
    expect_failure_at_each_allocation([&] { return family.encode(nullptr, record.get()) == size; });
    if (family.has(is_not_written)) return;
    Bytes out(size);
    expect_failure_at_each_allocation([&] {
      uint8_t *cursor = out.data();
      return family.encode(&cursor, record.get()) == size;
    });
  });
}

TEST_P(ExhaustedMemory, CopyFails) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    if (family.clone == nullptr) return;
    const Held record = decoded(family, sample);
    const Held copy(family.clone(record.get()), family.free);
    if (copy == nullptr) {
      EXPECT_TRUE(family.has(may_lack_copies));
      return;
    }
    const long allocations = expect_failure_at_each_allocation([&] {
      void *const another = family.clone(record.get());
      family.free(another);
      return another != nullptr;
    });
    EXPECT_LE(1, allocations);
  });
}

INSTANTIATE_TEST_SUITE_P(Of, ExhaustedMemory, testing::ValuesIn(groups()), title);

// ---------------------------------------------------------------------------------------------
// What is no family
// ---------------------------------------------------------------------------------------------

constexpr std::string_view more = "more than there is room for in the block of the string before";
constexpr auto size_of_more = static_cast<uint32_t>(more.size());

TEST(ExhaustedMemoryOfOthers, IntegerSet) {
  const long allocations = expect_failure_at_each_allocation([] {
    Integer *const integer = asn1_Integer_set(0x12345678);
    asn1_Integer_free(integer);
    return integer != nullptr;
  });
  EXPECT_LE(1, allocations);
}

TEST(ExhaustedMemoryOfOthers, StringsThatDoNotGrowStayAsTheyWere) {
  const long allocations = expect_failure_at_each_allocation([] {
    OctetString *const string = asn1_OctetString_new(0);
    if (string == nullptr) return false;
    const bool grown = asn1_ASN1String_append(string, size_of_more, more.data()) != nullptr;
    EXPECT_EQ(grown ? size_of_more : 0, string->length);
    asn1_OctetString_free(string);
    return grown;
  });
  EXPECT_LE(2, allocations);
}

TEST(ExhaustedMemoryOfOthers, BitStringsThatDoNotGrowStayAsTheyWere) {
  const long allocations = expect_failure_at_each_allocation([] {
    BitString *const bits = asn1_BitString_new(8);
    if (bits == nullptr) return false;
    bool grown = asn1_BitString_append(bits, size_of_more, more.data()) != nullptr;
    EXPECT_EQ(8 + (grown ? 8 * size_of_more : 0), bits->length);
    if (grown) {
      const uint32_t before = bits->length;
      grown = asn1_BitString_set(bits, 4000, 1) != nullptr;
      EXPECT_EQ(grown ? 4001 : before, bits->length);
    }
    asn1_BitString_free(bits);
    return grown;
  });
  EXPECT_LE(3, allocations);
}

TEST(ExhaustedMemoryOfOthers, Times) {
  const long allocations = expect_failure_at_each_allocation([] {
    Time *const time = asn1_Time_get(nullptr);
    asn1_Time_free(time);
    UTCTime *const utc = asn1_Seconds2UTCTime(nullptr, 0);
    asn1_UTCTime_free(utc);
    GeneralizedTime *const generalized = asn1_Seconds2GeneralizedTime(nullptr, 0);
    asn1_GeneralizedTime_free(generalized);
    return time != nullptr && utc != nullptr && generalized != nullptr;
  });
  EXPECT_LE(4, allocations);
}

TEST(ExhaustedMemoryOfOthers, ListsThatDoNotGrowStayAsTheyWere) {
  constexpr int32_t elements = 40;
  const long allocations = expect_failure_at_each_allocation([] {
    List *const list = List_new(0);
    if (list == nullptr) return false;
    bool grown = true;
    for (int32_t i = 0; grown && i < elements; ++i) {
      Integer *const integer = asn1_Integer_set(7);
      grown = integer != nullptr && List_append(list, integer, 0) != 0;
      EXPECT_EQ(grown ? i + 1 : i, List_len(list));
      if (!grown) asn1_Integer_free(integer);
    }
    List *const copy = grown ? List_clone(list, asn1_Integer_clone, asn1_Integer_free) : nullptr;
    List_free(copy, asn1_Integer_free);
    List_free(list, asn1_Integer_free);
    return copy != nullptr;
  });
  EXPECT_LE(2 * elements, allocations);
}

// Elements that the list does not own, which are not released.
TEST(ExhaustedMemoryOfOthers, CopiesOfAListWithoutADestructor) {
  List *const list = List_new(0);
  for (int32_t i = 0; i < 40; ++i) ASSERT_EQ(1, List_append(list, list, 0));
  const auto same = [](const void *element) { return const_cast<void *>(element); };
  const long allocations = expect_failure_at_each_allocation([&] {
    List *const copy = List_clone(list, +same, nullptr);
    List_free(copy, nullptr);
    return copy != nullptr;
  });
  EXPECT_LE(2, allocations);
  List_free(list, nullptr);
}

}  // namespace

}  // namespace memory_test
