// Builds deeply nested values in linear time; element by element it would take too long.
#ifndef ORVELASN1_TESTS_NEST_H
#define ORVELASN1_TESTS_NEST_H

#include "support.h"

namespace support {

/// Octets that grow at both ends, in linear time.
class Nest {
 public:
  explicit Nest(const Bytes &core) : behind_(core) {}

  Nest &before(const Bytes &octets) {
    before_reversed_.insert(before_reversed_.end(), octets.rbegin(), octets.rend());
    return *this;
  }
  Nest &behind(const Bytes &octets) {
    behind_.insert(behind_.end(), octets.begin(), octets.end());
    return *this;
  }

  /// Puts an identifier and the shortest length before all octets.
  Nest &wrap(uint8_t tag) {
    const size_t size = before_reversed_.size() + behind_.size();
    size_t octets = 0;
    for (size_t rest = size; rest != 0; rest >>= 8) {
      if (size >= 0x80) before_reversed_.push_back(static_cast<uint8_t>(rest));
      ++octets;
    }
    before_reversed_.push_back(static_cast<uint8_t>(size < 0x80 ? size : 0x80 | octets));
    before_reversed_.push_back(tag);
    return *this;
  }
  Nest &wrap_indefinite(uint8_t tag) { return before({tag, 0x80}).behind({0, 0}); }

  Bytes octets() const {
    return Bytes(before_reversed_.rbegin(), before_reversed_.rend()) + behind_;
  }

 private:
  Bytes before_reversed_;
  Bytes behind_;
};

}  // namespace support

#endif
