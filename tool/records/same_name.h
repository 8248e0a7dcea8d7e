// Whether two distinguished names are the same (RFC 5280, 7.1), however their strings are encoded.
#ifndef ORVELASN1_TOOL_RECORDS_SAME_NAME_H
#define ORVELASN1_TOOL_RECORDS_SAME_NAME_H

#include "text/octets.h"

namespace tool {

/// Returns a text that two encoded Names share where they are the same: letters of ASCII in either
/// case, blanks in any number, the type of a string and the order in a relative name do not matter.
/// Octets that are no Name stand for themselves.
std::string name_identity(Octets name);

}  // namespace tool

#endif
