// File descriptors that close themselves.
#ifndef ORVELASN1_TOOL_SYSTEM_DESCRIPTOR_H
#define ORVELASN1_TOOL_SYSTEM_DESCRIPTOR_H

#include <unistd.h>

#include <utility>

namespace tool {

/// A file descriptor, or none. Standard input stays open.
class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  Descriptor(Descriptor &&other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor(const Descriptor &) = delete;
  Descriptor &operator=(const Descriptor &) = delete;
  Descriptor &operator=(Descriptor &&other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  ~Descriptor() {
    if (fd_ > STDIN_FILENO) close(fd_);
  }

  int get() const { return fd_; }
  void reset() { *this = Descriptor(); }

 private:
  int fd_;
};

}  // namespace tool

#endif
