// The lines of show --json: one object for each element.
#ifndef ORVELASN1_TOOL_COMMANDS_JSON_LINES_H
#define ORVELASN1_TOOL_COMMANDS_JSON_LINES_H

#include "input/input.h"
#include "records/type.h"

namespace tool {

/// Returns one JSON object: the members that all types have, and the fields of the record. A type
/// without a PEM label has its octets in hexadecimal. Octets that may hold a private key are left
/// out unless the view asks for secrets, and all of them from a compact object.
std::string json_line(const Input &input, const Element &element, const Type &type,
                      const Record &record, const View &view);

/// Returns one JSON object in the place of an element that is refused.
std::string json_line(const Input &input, const Element &element, const Fault &fault);

}  // namespace tool

#endif
