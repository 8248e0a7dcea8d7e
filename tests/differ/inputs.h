// The inputs of the differential program: real and hostile certificates, and endless changes of them.
#ifndef ORVELASN1_TESTS_DIFFER_INPUTS_H
#define ORVELASN1_TESTS_DIFFER_INPUTS_H

#include <mutator.h>

#include "library.h"

namespace differ {

class Inputs {
 public:
  /// Reads the certificates that the system trusts, and those of the folder that the environment
  /// variable ORVELASN1_CORPUS names, the hostile ones too.
  Inputs();

  /// Returns an input, which depends on nothing but its number, the seed and the samples: first the
  /// samples as they are, then their changes.
  Bytes get(uint64_t number, uint64_t seed) const;

  size_t samples() const { return samples_.size(); }

  /// Returns a number that other samples do not have.
  uint64_t sum() const;

 private:
  std::vector<Bytes> samples_;
  fuzz::Mutator mutator_;
};

}  // namespace differ

#endif
