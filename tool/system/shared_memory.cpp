#include "system/shared_memory.h"

#include <sys/mman.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace tool {

SharedMemory::SharedMemory(size_t size) : start_(nullptr), size_(size) {
  if (size == 0) return;
  // Only what is written to takes memory.
  start_ = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS | MAP_NORESERVE,
                -1, 0);
  if (start_ == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
}

SharedMemory::SharedMemory(SharedMemory &&other) noexcept
    : start_(std::exchange(other.start_, nullptr)), size_(std::exchange(other.size_, 0)) {}

SharedMemory::~SharedMemory() {
  if (start_ != nullptr) munmap(start_, size_);
}

}  // namespace tool
