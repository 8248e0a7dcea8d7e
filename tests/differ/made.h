// Certificates of random records that this library encodes, and what stands in them.
#ifndef ORVELASN1_TESTS_DIFFER_MADE_H
#define ORVELASN1_TESTS_DIFFER_MADE_H

#include "library.h"

namespace differ {

struct Made {
  Bytes octets;    ///< what the encoders of liborvelpki wrote
  Bytes der;       ///< the same certificate, written here element by element (X.690, 10 and 11)
  Answer content;  ///< what was put into the records
};

/// Makes a certificate that depends on nothing but the number and the seed.
Made make(uint64_t number, uint64_t seed);

}  // namespace differ

#endif
