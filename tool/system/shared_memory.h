// Memory that a process shares with its children. Each sees what the others write, and a fork does
// not copy it.
#ifndef ORVELASN1_TOOL_SYSTEM_SHARED_MEMORY_H
#define ORVELASN1_TOOL_SYSTEM_SHARED_MEMORY_H

#include <cstddef>
#include <cstdint>
#include <span>

namespace tool {

class SharedMemory {
 public:
  /// @param size in octets, all of them zero at first.
  /// @throws std::system_error when there is no memory.
  explicit SharedMemory(size_t size);
  SharedMemory(SharedMemory &&other) noexcept;
  SharedMemory(const SharedMemory &) = delete;
  SharedMemory &operator=(const SharedMemory &) = delete;
  SharedMemory &operator=(SharedMemory &&) = delete;
  ~SharedMemory();

  std::span<uint8_t> octets() const { return {static_cast<uint8_t *>(start_), size_}; }
  void *start() const { return start_; }

 private:
  void *start_;
  size_t size_;
};

}  // namespace tool

#endif
