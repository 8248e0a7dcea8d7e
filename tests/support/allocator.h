// Watches the allocator: shows what a block holds when it is released, and makes an allocation
// fail. The latter works only without a sanitizer, because a sanitizer has its own allocator.
#ifndef ORVELASN1_TESTS_ALLOCATOR_H
#define ORVELASN1_TESTS_ALLOCATOR_H

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdlib>

#include "sanitizers.h"
#include "support.h"

namespace support {

/// Copies the first 64 octets of a block at the moment of its release.
class ReleaseWatch {
 public:
  ReleaseWatch(const void *block, size_t size);
  ~ReleaseWatch() { active = nullptr; }
  ReleaseWatch(const ReleaseWatch &) = delete;
  ReleaseWatch &operator=(const ReleaseWatch &) = delete;

  bool released() const { return released_; }
  Bytes octets() const { return Bytes(octets_, octets_ + size_); }

  /// Must be called for each block before its release.
  static void on_release(const volatile void *block) {
    ReleaseWatch *watch = active;
    if (watch == nullptr || block == nullptr || watch->block_ != block) return;
    const auto *octets = static_cast<const volatile uint8_t *>(block);
    for (size_t i = 0; i < watch->size_; ++i) watch->octets_[i] = octets[i];
    watch->released_ = true;
    active = nullptr;
  }

 private:
  inline static std::atomic<ReleaseWatch *> active{nullptr};
  const volatile void *block_;
  size_t size_;
  uint8_t octets_[64] = {};
  bool released_ = false;
};

#ifdef ORVELASN1_TESTS_SANITIZED

extern "C" int install_hooks(
    void (*on_allocation)(const volatile void *, size_t),
    void (*on_release)(const volatile void *)) __asm__("__sanitizer_install_malloc_and_free_hooks");

inline ReleaseWatch::ReleaseWatch(const void *block, size_t size)
    : block_(block), size_(std::min(size, sizeof octets_)) {
  static const int installed =
      install_hooks([](const volatile void *, size_t) {}, &ReleaseWatch::on_release);
  EXPECT_NE(0, installed);
  active = this;
}

/// Calls `f`, which must release all that it allocates: the sanitizer checks that.
template <class F>
void expect_nothing_kept(F f) {
  f();
}

#else

inline ReleaseWatch::ReleaseWatch(const void *block, size_t size)
    : block_(block), size_(std::min(size, sizeof octets_)) {
  active = this;
}

/// While it lives, makes one allocation of this thread fail and counts the blocks that stay.
class FailingAllocation {
 public:
  /// @param successes the number of allocations that succeed before the one that fails
  explicit FailingAllocation(long successes) {
    until_failure = successes;
    blocks = 0;
  }
  ~FailingAllocation() { until_failure = -1; }
  FailingAllocation(const FailingAllocation &) = delete;
  FailingAllocation &operator=(const FailingAllocation &) = delete;

  bool happened() const { return until_failure < 0; }
  long blocks_left() const { return blocks; }

  /// Sets errno as the allocator does that it replaces.
  static bool fails_now() {
    const bool fails = until_failure >= 0 && until_failure-- == 0;
    if (fails) errno = ENOMEM;
    return fails;
  }
  static void *count(void *block) {
    if (block != nullptr) ++blocks;
    return block;
  }
  static void uncount(const void *block) {
    if (block != nullptr) --blocks;
  }

 private:
  inline static thread_local long until_failure = -1;
  inline static thread_local long blocks = 0;
};

extern "C" {
void *libc_malloc(size_t size) noexcept __asm__("__libc_malloc");
void *libc_calloc(size_t count, size_t size) noexcept __asm__("__libc_calloc");
void *libc_realloc(void *block, size_t size) noexcept __asm__("__libc_realloc");
void libc_free(void *block) noexcept __asm__("__libc_free");
}

/// Calls `f` again and again: its first allocation fails, then its second, and so on until none
/// does. `f` returns whether it succeeded. It must fail each time, and keep nothing allocated.
/// Returns the number of failures.
template <class F>
long expect_failure_at_each_allocation(F f) {
  for (long successes = 0;; ++successes) {
    FailingAllocation failing(successes);
    const bool succeeded = f();
    const long blocks_left = failing.blocks_left();
    const bool happened = failing.happened();
    if (!happened) {
      EXPECT_TRUE(succeeded);
      return successes;
    }
    EXPECT_FALSE(succeeded) << "allocation " << successes;
    EXPECT_EQ(0, blocks_left) << "allocation " << successes;
  }
}

/// Calls `f`, which must release all that it allocates.
template <class F>
void expect_nothing_kept(F f) {
  const FailingAllocation counting(LONG_MAX);
  f();
  EXPECT_EQ(0, counting.blocks_left());
}

#endif

}  // namespace support

#ifndef ORVELASN1_TESTS_SANITIZED
// The allocator of this program. It is weak because every test that includes this header defines
// it.
extern "C" {
[[gnu::weak]] void *malloc(size_t size) noexcept {
  using namespace support;
  return FailingAllocation::fails_now() ? nullptr : FailingAllocation::count(libc_malloc(size));
}

[[gnu::weak]] void *calloc(size_t count, size_t size) noexcept {
  using namespace support;
  return FailingAllocation::fails_now() ? nullptr
                                        : FailingAllocation::count(libc_calloc(count, size));
}

[[gnu::weak]] void *realloc(void *block, size_t size) noexcept {
  using namespace support;
  if (FailingAllocation::fails_now()) return nullptr;
  void *result = libc_realloc(block, size);
  return block == nullptr ? FailingAllocation::count(result) : result;
}

[[gnu::weak]] void free(void *block) noexcept {
  support::ReleaseWatch::on_release(block);
  support::FailingAllocation::uncount(block);
  support::libc_free(block);
}
}
#endif

#endif
