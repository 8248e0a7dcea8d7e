// Every input of some octets, held against the laws with its end at an unreadable page.
#ifndef ORVELASN1_TESTS_ATTACK_EXHAUSTION_H
#define ORVELASN1_TESTS_ATTACK_EXHAUSTION_H

#include "family.h"
#include "pages.h"

namespace attack {

/// The families with a decoder of octets. What stands in for a decoder that refuses everything is
/// replaced by that decoder.
std::vector<Family> decoders();

class Exhaustion {
 public:
  explicit Exhaustion(const Family &family) : family_(family) {}

  /// Holds every input of `size` octets that begins with `start` against the laws: no decoder and
  /// no explanation reads past the end, and they agree. Returns the law that does not hold for one
  /// of them, which is then input(), or an empty text.
  ///
  /// The octets from some place on are not readable at first, although the input goes on there. A
  /// call that returns all the same has not looked at them, and does the same whatever they are.
  /// Where it reads one, every value of the first of them is tried.
  std::string every(Octets start, size_t size);

  /// Holds one input against the laws, all of it readable.
  std::string one(Octets input);

  const Bytes &input() const { return input_; }
  uint64_t inputs() const { return inputs_; }
  uint64_t calls() const { return calls_; }

 private:
  /// Holds the inputs that begin with the octets of input_ against the laws, where these alone are
  /// readable. Stores whether another octet was read.
  std::string broken_law_of(size_t size, bool *read_on);
  std::string every_from_here(size_t size);

  const Family &family_;
  const Pages pages_;
  Bytes input_;
  uint64_t inputs_ = 0;
  uint64_t calls_ = 0;
};

}  // namespace attack

#endif
