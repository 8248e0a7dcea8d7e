#include "core/stack.h"

#include <pthread.h>
#include <sys/auxv.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>

namespace {

// What is kept for everything but the nested values themselves.
constexpr uintptr_t reserve = 0x4000;

// Where the stack is one that the thread library does not know, such as a coroutine's.
constexpr uintptr_t assumed = 0x8000;

struct Bounds {
  uintptr_t low = 0;
  uintptr_t high = 0;

  bool hold(uintptr_t position) const { return low <= position && position < high; }
};

struct Reading {
  uintptr_t start = 0;  ///< where the outermost value was entered; 0 where none is read
  uintptr_t limit = 0;  ///< the lowest position for a value in it
};

// In the block that every thread has from its start: looking them up calls and allocates nothing.
[[gnu::tls_model("initial-exec")]] thread_local Bounds bounds;
[[gnu::tls_model("initial-exec")]] thread_local Reading reading;

uintptr_t here() { return reinterpret_cast<uintptr_t>(__builtin_frame_address(0)); }

// The stack of the main thread ends after the name of the program, which the kernel puts there, and
// may grow as far as the process's limit allows. The thread library would read a file to find out.
Bounds bounds_of_main_thread() {
  // The limit may be none, or raised since the program began, when the kernel left a gap of at least
  // about 128 MiB below the stack: half of that is there, whatever the limit says.
  constexpr rlim_t most = 64 << 20;
  rlimit limit = {};
  if (getrlimit(RLIMIT_STACK, &limit) != 0) return {};
  const auto high = (static_cast<uintptr_t>(getauxval(AT_EXECFN)) | 0xFFF) + 1;
  return {high - static_cast<uintptr_t>(std::min(limit.rlim_cur, most)), high};
}

// Asks once for each thread. Fails where memory is exhausted.
bool find_bounds() {
  if (bounds.high != 0) return true;
  if (getpid() == gettid()) {
    bounds = bounds_of_main_thread();
    return true;
  }
  pthread_attr_t attributes;
  const int error = pthread_getattr_np(pthread_self(), &attributes);
  if (error != 0) return error != ENOMEM;
  void *address = nullptr;
  size_t size = 0;
  if (pthread_attr_getstack(&attributes, &address, &size) == 0) {
    const auto low = reinterpret_cast<uintptr_t>(address);
    bounds = {low, low + size};
  }
  pthread_attr_destroy(&attributes);
  return true;
}

// The lowest address that the stack may reach, as far as it is known.
uintptr_t lowest(uintptr_t position) {
  return bounds.hold(position) ? bounds.low + reserve : position - assumed;
}

}  // namespace

asn1::ReadingNested::ReadingNested() : outermost_(here() >= reading.start), fits_(true) {
  const uintptr_t position = here();
  if (outermost_) {
    fits_ = find_bounds();
    const uintptr_t low = lowest(position);
    reading = {position, position > low ? position - (position - low) / 3 : position};
  }
  fits_ = fits_ && position >= reading.limit;
}

asn1::ReadingNested::~ReadingNested() {
  if (outermost_) reading = {};
}

void asn1::forget_reading() { reading = {}; }

bool asn1::stack_for_nested() {
  find_bounds();
  const uintptr_t position = here();
  return position > lowest(position);
}
