#include "stack.h"

#include <pthread.h>

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
};

thread_local Bounds bounds;
thread_local uintptr_t reading_limit = 0;

uintptr_t here() { return reinterpret_cast<uintptr_t>(__builtin_frame_address(0)); }

// The lowest address that the stack may reach.
uintptr_t lowest(uintptr_t position) {
  if (bounds.high == 0) {
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
      void *address = nullptr;
      size_t size = 0;
      if (pthread_attr_getstack(&attributes, &address, &size) == 0) {
        bounds.low = reinterpret_cast<uintptr_t>(address);
        bounds.high = bounds.low + size;
      }
      pthread_attr_destroy(&attributes);
    }
  }
  const bool known = bounds.low <= position && position < bounds.high;
  return known ? bounds.low + reserve : position - assumed;
}

}  // namespace

asn1::ReadingNested::ReadingNested() : outermost_(reading_limit == 0) {
  const uintptr_t position = here();
  if (outermost_) {
    const uintptr_t low = lowest(position);
    reading_limit = position > low ? position - (position - low) / 3 : position;
  }
  fits_ = position >= reading_limit;
}

asn1::ReadingNested::~ReadingNested() {
  if (outermost_) reading_limit = 0;
}

bool asn1::stack_for_nested() {
  const uintptr_t position = here();
  return position > lowest(position);
}
