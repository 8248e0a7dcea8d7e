// Changes of an input that keep it made of elements: what a change of single octets seldom finds.
#ifndef ORVELASN1_TESTS_FUZZ_MUTATOR_H
#define ORVELASN1_TESTS_FUZZ_MUTATOR_H

#include "tree.h"

namespace fuzz {

class Mutator {
 public:
  /// Changes the first `size` octets of a block of `room`, and gives how many there are then: the
  /// fuzzer's own mutation, or any other.
  using Plain = size_t (*)(uint8_t *octets, size_t size, size_t room);

  /// `samples` are what foreign pieces are taken from.
  Mutator(const std::vector<Bytes> &samples, Plain plain);

  /// The input after a few changes, in at most `room` octets; no octets where it does not fit.
  Bytes changed(Octets input, size_t room, uint32_t seed) const;

  /// `a` with a piece of `b` in it, in at most `room` octets; no octets where it does not fit.
  static Bytes crossed(Octets a, Octets b, size_t room, uint32_t seed);

 private:
  Tree samples_;
  Plain plain_;
};

}  // namespace fuzz

#endif
