#include "guard.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// The linker's names for what the library's calls come to, and for what they would have come to.
extern "C" {
void *real_malloc(size_t size) __asm__("__real_malloc");
void *real_calloc(size_t count, size_t size) __asm__("__real_calloc");
void *real_realloc(void *block, size_t size) __asm__("__real_realloc");
void real_free(void *block) __asm__("__real_free");
[[noreturn]] void real_abort() __asm__("__real_abort");

void *guarded_malloc(size_t size) __asm__("__wrap_malloc");
void *guarded_calloc(size_t count, size_t size) __asm__("__wrap_calloc");
void *guarded_realloc(void *block, size_t size) __asm__("__wrap_realloc");
void *guarded_strdup(const char *text) __asm__("__wrap_strdup");
void guarded_free(void *block) __asm__("__wrap_free");
[[noreturn]] void guarded_abort() __asm__("__wrap_abort");
}

namespace attack {

// ---------------------------------------------------------------------------------------------
// Blocks: a table with open addressing, because the number of blocks may be large
// ---------------------------------------------------------------------------------------------

BlockSet::~BlockSet() { real_free(static_cast<void *>(slots_)); }

size_t BlockSet::home(const void *block) const {
  const auto address = reinterpret_cast<uintptr_t>(block);
  return static_cast<size_t>((address >> 4) * 0x9E3779B1U) & (capacity_ - 1);
}

void BlockSet::grow() {
  void **const old = slots_;
  const size_t old_capacity = capacity_;
  capacity_ = capacity_ == 0 ? 1024 : capacity_ * 2;
  slots_ = static_cast<void **>(real_calloc(capacity_, sizeof(void *)));
  if (slots_ == nullptr) real_abort();
  size_ = 0;
  for (size_t i = 0; i < old_capacity; ++i)
    if (old[i] != nullptr) insert(old[i]);
  real_free(static_cast<void *>(old));
}

void BlockSet::insert(void *block) {
  if (block == nullptr) return;
  if (size_ * 2 >= capacity_) grow();
  size_t at = home(block);
  while (slots_[at] != nullptr) at = (at + 1) & (capacity_ - 1);
  slots_[at] = block;
  ++size_;
}

bool BlockSet::erase(void *block) {
  if (size_ == 0) return false;
  const size_t mask = capacity_ - 1;
  size_t at = home(block);
  while (slots_[at] != block) {
    if (slots_[at] == nullptr) return false;
    at = (at + 1) & mask;
  }
  // What stands after the gap moves up, unless that would put it before its home.
  for (size_t next = (at + 1) & mask; slots_[next] != nullptr; next = (next + 1) & mask) {
    if (((next - home(slots_[next])) & mask) < ((next - at) & mask)) continue;
    slots_[at] = slots_[next];
    at = next;
  }
  slots_[at] = nullptr;
  --size_;
  return true;
}

void BlockSet::release_all() {
  for (size_t i = 0; size_ != 0 && i < capacity_; ++i) {
    if (slots_[i] == nullptr) continue;
    real_free(slots_[i]);
    slots_[i] = nullptr;
    --size_;
  }
}

// ---------------------------------------------------------------------------------------------
// Calls
// ---------------------------------------------------------------------------------------------

namespace {

thread_local Guard *running = nullptr;

ssize_t to_guard(void *, const char *words, size_t size) {
  if (running != nullptr) running->hear(words, size);
  return static_cast<ssize_t>(size);
}

/// A stream in place of standard error, whose words the running guard keeps.
FILE *ear() {
  static FILE *const stream = [] {
    FILE *const made = fopencookie(nullptr, "w", {nullptr, to_guard, nullptr, nullptr});
    if (made == nullptr) real_abort();
    std::setvbuf(made, nullptr, _IONBF, 0);
    return made;
  }();
  return stream;
}

}  // namespace

Guard *Guard::current() { return running; }

bool Guard::call(void (*function)(void *), void *argument) {
  FILE *const error = stderr;
  last_words_.clear();
  stderr = ear();
  running = this;
  const bool returned = _setjmp(exit_) == 0;
  if (returned) function(argument);
  running = nullptr;
  stderr = error;
  return returned;
}

void Guard::released(void *block) {
  if (!blocks_.erase(block)) released_a_stranger_ = true;
}

void Guard::leave() { longjmp(exit_, 1); }

}  // namespace attack

using attack::Guard;

void *guarded_malloc(size_t size) {
  Guard *const guard = Guard::current();
  if (guard == nullptr) return real_malloc(size);
  if (guard->fails_now()) {
    errno = ENOMEM;
    return nullptr;
  }
  void *const block = real_malloc(size);
  guard->made(block);
  return block;
}

void *guarded_calloc(size_t count, size_t size) {
  if (size != 0 && count > SIZE_MAX / size) return nullptr;
  void *const block = guarded_malloc(count * size);
  return block == nullptr ? nullptr : std::memset(block, 0, count * size);
}

void *guarded_realloc(void *block, size_t size) {
  Guard *const guard = Guard::current();
  if (guard == nullptr) return real_realloc(block, size);
  if (guard->fails_now()) {
    errno = ENOMEM;
    return nullptr;
  }
  if (block != nullptr) guard->released(block);
  void *const moved = real_realloc(block, size);
  guard->made(moved == nullptr ? block : moved);
  return moved;
}

void *guarded_strdup(const char *text) {
  const size_t size = std::strlen(text) + 1;
  void *const copy = guarded_malloc(size);
  return copy == nullptr ? nullptr : std::memcpy(copy, text, size);
}

void guarded_free(void *block) {
  Guard *const guard = Guard::current();
  if (guard != nullptr && block != nullptr) guard->released(block);
  real_free(block);
}

void guarded_abort() {
  Guard *const guard = Guard::current();
  if (guard != nullptr) guard->leave();
  real_abort();
}
