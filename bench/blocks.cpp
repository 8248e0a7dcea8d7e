#include "blocks.h"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <unordered_map>

namespace bench {

/// The notes of one piece of work.
class Notes {
 public:
  static Notes *current;

  explicit Notes(Blocks &blocks) : blocks_(blocks) {}

  void allocated(const void *block, size_t size) {
    if (block == nullptr) return;
    const uint32_t slot = blocks_.slots_++;
    slots_[block] = slot;
    add(Blocks::Kind::allocate, slot, size);
  }

  void resized(const void *old, const void *block, size_t size) {
    const uint32_t slot = take(old);
    slots_[block] = slot;
    add(Blocks::Kind::resize, slot, size);
  }

  void released(const void *block) { add(Blocks::Kind::release, take(block), 0); }

 private:
  uint32_t take(const void *block) {
    const auto found = slots_.find(block);
    if (found == slots_.end()) std::abort();
    const uint32_t slot = found->second;
    slots_.erase(found);
    return slot;
  }

  void add(Blocks::Kind kind, uint32_t slot, size_t size) {
    if (size > UINT32_MAX) std::abort();
    auto &runs = blocks_.runs_;
    if (runs.empty() || runs.back().kind != kind) runs.push_back({kind, 0});
    ++runs.back().uses;
    blocks_.uses_.push_back({slot, static_cast<uint32_t>(size)});
  }

  Blocks &blocks_;
  std::unordered_map<const void *, uint32_t> slots_;
};

Notes *Notes::current = nullptr;

Blocks::Blocks(const std::function<void()> &work) {
  Notes notes(*this);
  Notes::current = &notes;
  work();
  Notes::current = nullptr;
}

template <class Write>
void Blocks::replay(Write write) const {
  static std::vector<void *> all_slots;  // of whatever is replayed, so that they stay in the cache
  if (all_slots.size() < slots_) all_slots.resize(slots_);
  void **const slots = all_slots.data();
  const Use *use = uses_.data();
  for (const Run &run : runs_) {
    const Use *const end = use + run.uses;
    switch (run.kind) {
      case Kind::allocate:
        for (; use != end; ++use) write(slots[use->slot] = std::malloc(use->size), use->size);
        break;
      case Kind::resize:
        for (; use != end; ++use)
          write(slots[use->slot] = std::realloc(slots[use->slot], use->size), use->size);
        break;
      case Kind::release:
        for (; use != end; ++use) std::free(slots[use->slot]);
        break;
    }
  }
}

void Blocks::replay() const {
  replay([](void *, uint32_t) {});
}

void Blocks::replay_written() const {
  replay([](void *block, uint32_t size) { std::memset(block, 0, size); });
}

}  // namespace bench

/* ------------------------------------------------------------------------------------------- */
/* The allocator, which takes notes                                                              */
/* ------------------------------------------------------------------------------------------- */

// Each function calls its namesake of the next library, which may be an allocator that was preloaded.
// The pointers lead to that after the first call.

using bench::Notes;

namespace {

void find_next();

void *first_malloc(size_t size) {
  find_next();
  return std::malloc(size);
}
void *first_calloc(size_t count, size_t size) {
  find_next();
  return std::calloc(count, size);
}
void *first_realloc(void *block, size_t size) {
  find_next();
  return std::realloc(block, size);
}
void first_free(void *block) {
  find_next();
  std::free(block);
}

constinit decltype(first_malloc) *next_malloc = first_malloc;
constinit decltype(first_calloc) *next_calloc = first_calloc;
constinit decltype(first_realloc) *next_realloc = first_realloc;
constinit decltype(first_free) *next_free = first_free;

template <class Function>
void find(Function &function, const char *name) {
  void *const found = dlsym(RTLD_NEXT, name);
  if (found == nullptr) std::abort();
  std::memcpy(&function, &found, sizeof function);
}

void find_next() {
  find(next_malloc, "malloc");
  find(next_calloc, "calloc");
  find(next_realloc, "realloc");
  find(next_free, "free");
}

/// Takes no notes of what the notes take.
template <class Take>
[[gnu::cold]] void note(Take take) {
  Notes *const notes = Notes::current;
  Notes::current = nullptr;
  take(*notes);
  Notes::current = notes;
}

}  // namespace

extern "C" {

void *malloc(size_t size) noexcept {
  if (Notes::current == nullptr) [[likely]]
    return next_malloc(size);
  void *const block = next_malloc(size);
  note([=](Notes &notes) { notes.allocated(block, size); });
  return block;
}

void *calloc(size_t count, size_t size) noexcept {
  if (Notes::current == nullptr) [[likely]]
    return next_calloc(count, size);
  void *const block = next_calloc(count, size);
  note([=](Notes &notes) { notes.allocated(block, count * size); });
  return block;
}

void *realloc(void *old, size_t size) noexcept {
  if (Notes::current == nullptr) [[likely]]
    return next_realloc(old, size);
  void *const block = next_realloc(old, size);
  note([=](Notes &notes) {
    if (old == nullptr)
      notes.allocated(block, size);
    else
      notes.resized(old, block, size);
  });
  return block;
}

void free(void *block) noexcept {
  if (Notes::current != nullptr && block != nullptr) [[unlikely]]
    note([=](Notes &notes) { notes.released(block); });
  next_free(block);
}
}
