// Samples of the RFCs' forms: a file an RFC in forms/, each with a function that families.cpp calls.
#ifndef ORVELASN1_TESTS_ATTACK_FORMS_H
#define ORVELASN1_TESTS_ATTACK_FORMS_H

#include <octets.h>

#include "family.h"

namespace attack {

/// A type of liborvelpki, by the name of its functions, with samples in DER.
struct Form {
  const char *name;
  std::vector<Bytes> samples;
};

std::vector<Form> key_forms();
std::vector<Form> rfc3709_forms();
std::vector<Form> rfc3739_forms();
std::vector<Form> rfc3779_forms();
std::vector<Form> rfc5280_extension_forms();
std::vector<Form> rfc5280_forms();
std::vector<Form> rfc5652_forms();
std::vector<Form> rfc6960_forms();
std::vector<Form> rfc6962_forms();
std::vector<Form> rfc7292_forms();
std::vector<Form> rfc7633_forms();

}  // namespace attack

#endif
