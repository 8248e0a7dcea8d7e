// Inputs of gigabytes.
#ifndef ORVELASN1_TESTS_ZEROS_H
#define ORVELASN1_TESTS_ZEROS_H

#include <sys/mman.h>

#include "octets.h"

namespace support {

/// Octets that are all zero, and take no memory but for those that are written.
class Zeros {
 public:
  explicit Zeros(size_t size)
      : size_(size),
        octets_(mmap(nullptr, size, PROT_READ | PROT_WRITE,
                     MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {}
  ~Zeros() { munmap(octets_, size_); }
  Zeros(const Zeros &) = delete;
  Zeros &operator=(const Zeros &) = delete;

  bool are_there() const { return octets_ != MAP_FAILED; }
  uint8_t *begin() const { return static_cast<uint8_t *>(octets_); }

 private:
  size_t size_;
  void *octets_;
};

}  // namespace support

#endif
