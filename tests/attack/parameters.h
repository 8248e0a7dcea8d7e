// Tests with a family as their parameter.
#ifndef ORVELASN1_TESTS_ATTACK_PARAMETERS_H
#define ORVELASN1_TESTS_ATTACK_PARAMETERS_H

#include <gtest/gtest.h>

#include <cctype>
#include <ostream>

#include "family.h"

namespace attack {

/// "SetOfOctetString", for the name of a test.
inline std::string title(const testing::TestParamInfo<const Family *> &info) {
  std::string out;
  bool upper = true;
  for (const char c : info.param->name) {
    const auto letter = static_cast<unsigned char>(c);
    if (std::isalnum(letter) != 0) out += static_cast<char>(upper ? std::toupper(letter) : letter);
    upper = std::isalnum(letter) == 0;
  }
  return out;
}

inline void PrintTo(const Family *family, std::ostream *out) { *out << family->name; }

}  // namespace attack

#endif
