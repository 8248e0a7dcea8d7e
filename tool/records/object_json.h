// An object as one line of JSON.
#ifndef ORVELASN1_TOOL_RECORDS_OBJECT_JSON_H
#define ORVELASN1_TOOL_RECORDS_OBJECT_JSON_H

#include "records/fields.h"

namespace tool {

/// Appends the JSON object of an element. It starts with the identifier that came with the element,
/// if one did. Of one that was read it has the members that all types have, and the fields of the
/// record; a type without a PEM label has its octets in hexadecimal. Octets that may hold a private
/// key are left out unless the view asks for secrets, and all of them from a compact object. Of one
/// that is refused it has what is wrong: "error", "offset" and "path".
void append_json(std::string &out, const Object &object, const View &view);

}  // namespace tool

#endif
