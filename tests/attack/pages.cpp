#include "pages.h"

#include <sys/mman.h>

#include <algorithm>
#include <stdexcept>

namespace attack {

namespace {

constexpr size_t page = 4096;
constexpr size_t room = 2 * page;
constexpr size_t whole = page + room + page;

void *reserve(void *wish) {
  constexpr int flags = MAP_PRIVATE | MAP_ANONYMOUS;
  const int fixed = wish == nullptr ? 0 : MAP_FIXED_NOREPLACE;
  void *const got = mmap(wish, whole, PROT_NONE, flags | fixed, -1, 0);
  return got == MAP_FAILED ? nullptr : got;
}

/// The highest place that the system gives, looked for page by page from the last address down.
void *reserve_at_top() {
  constexpr size_t tries = 65536;
  if constexpr (sizeof(void *) > 4) return reserve(nullptr);
  for (size_t i = 0; i < tries; ++i) {
    const uintptr_t wish = UINTPTR_MAX - (page - 1) - whole - i * page;
    void *const got = reserve(reinterpret_cast<void *>(wish));
    if (got != nullptr) return got;
  }
  return nullptr;
}

}  // namespace

Pages::Pages(Place place)
    : start_(static_cast<uint8_t *>(place == Place::top ? reserve_at_top() : reserve(nullptr))) {
  if (start_ == nullptr || mprotect(start_ + page, room, PROT_READ | PROT_WRITE) != 0)
    throw std::runtime_error("no pages");
}

Pages::~Pages() { munmap(start_, whole); }

const uint8_t *Pages::at_end(Octets octets) const {
  if (octets.size() > room) throw std::length_error("more octets than room");
  uint8_t *const copy = start_ + page + room - octets.size();
  std::ranges::copy(octets, copy);
  return copy;
}

const uint8_t *Pages::at_start(Octets octets) const {
  if (octets.size() > room) throw std::length_error("more octets than room");
  std::ranges::copy(octets, start_ + page);
  return start_ + page;
}

bool Pages::is_after(const void *address) const {
  const auto offset = reinterpret_cast<uintptr_t>(address) - reinterpret_cast<uintptr_t>(start_);
  return offset >= page + room && offset < whole;
}

TextAtEdge::~TextAtEdge() {
  if (start_ != nullptr) munmap(start_, room_ + page);
}

const char *TextAtEdge::copy(Octets text) {
  const auto stop = std::ranges::find(text, 0);
  const auto size = static_cast<size_t>(stop - text.begin()) + 1;
  if (size > room_) {
    if (start_ != nullptr) munmap(start_, room_ + page);
    room_ = (size + page - 1) / page * page;
    void *const got = mmap(nullptr, room_ + page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    start_ = got == MAP_FAILED ? nullptr : static_cast<char *>(got);
    if (start_ == nullptr || mprotect(start_, room_, PROT_READ | PROT_WRITE) != 0)
      throw std::runtime_error("no pages");
  }
  char *const edge = start_ + room_;
  std::copy(text.begin(), stop, edge - size);
  edge[-1] = '\0';
  return edge - size;
}

}  // namespace attack
