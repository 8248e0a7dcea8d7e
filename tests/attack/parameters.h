// Tests with a group of families as their parameter.
#ifndef ORVELASN1_TESTS_ATTACK_PARAMETERS_H
#define ORVELASN1_TESTS_ATTACK_PARAMETERS_H

#include <gtest/gtest.h>

#include <string>

#include "family.h"

namespace attack {

class OfAGroup : public testing::TestWithParam<std::string_view> {
 protected:
  /// Calls `f(family, sample)` for every sample of every family of the group, until one fails.
  template <class F>
  static void for_each_sample(F f) {
    for (const Family *family : families_of(GetParam())) {
      for (const Bytes &sample : family->samples) {
        SCOPED_TRACE(family->name);
        f(*family, sample);
        if (HasFailure()) return;
      }
    }
  }
};

inline std::string title(const testing::TestParamInfo<std::string_view> &info) {
  return std::string(info.param);
}

}  // namespace attack

#endif
