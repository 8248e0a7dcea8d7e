// Threads with records of their own, from octets that all of them share.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <thread>

#include "family.h"

namespace threads_test {

namespace {

using namespace attack;

/// Decodes, encodes, copies, compares and releases one record. Gives whether all went as it does
/// for a single thread.
bool use(const Family &family, const Bytes &sample, uint32_t depth) {
  void *record = nullptr;
  const uint8_t *const end = sample.data() + sample.size();
  if (family.decode(sample.data(), end, 0, &record, depth) != end) return false;
  bool good = true;
  if (family.encode != nullptr) {
    Bytes out(family.encode(nullptr, record));
    uint8_t *cursor = out.data();
    family.encode(&cursor, record);
    good = !out.empty() &&
           (family.has(is_not_written) || family.has(is_not_read_back) || out == sample);
  }
  if (family.clone != nullptr) {
    void *const copy = family.clone(record);
    good = good && (copy != nullptr || family.has(may_lack_copies));
    if (copy != nullptr && family.compare != nullptr && !family.has(copy_forgets_value_tags))
      good = good && family.compare(record, copy) == 0;
    family.free(copy);
  }
  if (family.compare != nullptr) good = good && family.compare(record, record) == 0;
  family.free(record);
  return good;
}

/// The number of samples that one of eight threads did not find as they are.
unsigned failures_of_eight_threads(uint32_t depth) {
  constexpr unsigned rounds = 20;
  // With a zone that is known, the C runtime does not look for one in each conversion of a time. It
  // would do so under a lock of its own, which ThreadSanitizer cannot see.
  setenv("TZ", "UTC", 1);
  tzset();
  std::atomic<unsigned> failures{0};
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < 8; ++i) {
    threads.emplace_back([&failures, depth, i] {
      const auto &all = families();
      for (unsigned round = 0; round < rounds; ++round) {
        for (size_t k = 0; k < all.size(); ++k) {
          // Each thread begins elsewhere.
          const Family &family = all[(k + i * all.size() / 8) % all.size()];
          for (const Bytes &sample : family.samples)
            if (!use(family, sample, depth)) ++failures;
        }
      }
    });
  }
  for (std::thread &thread : threads) thread.join();
  return failures;
}

TEST(EightThreads, WithTheTraceOff) {
  ASSERT_FALSE(families().empty());
  EXPECT_EQ(0U, failures_of_eight_threads(0));
}

// The stream is the caller's business: set once, ahead of the threads.
TEST(EightThreads, WithTheTraceOn) {
  const std::unique_ptr<FILE, int (*)(FILE *)> nowhere(std::fopen("/dev/null", "w"), std::fclose);
  ASSERT_NE(nullptr, nowhere);
  asn1_LogStart(nowhere.get());
  const unsigned failures = failures_of_eight_threads(1);
  asn1_LogStart(nullptr);
  EXPECT_EQ(0U, failures);
}

}  // namespace

}  // namespace threads_test
