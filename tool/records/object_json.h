// An object as one line of JSON.
#ifndef ORVELASN1_TOOL_RECORDS_OBJECT_JSON_H
#define ORVELASN1_TOOL_RECORDS_OBJECT_JSON_H

#include "records/fields.h"

namespace tool {

/// Returns the JSON object of an element. It starts with the identifier that came with the element,
/// if one did. Of one that was read it has the members that all types have, and the fields of the
/// record; a type without a PEM label has its octets in hexadecimal. Octets that may hold a private
/// key are left out unless the view asks for secrets, and all of them from a compact object. Of one
/// that is refused it has what is wrong.
std::string json_of_object(const Object &object, const View &view);

/// Adds what is wrong to an object: "error", "offset" and "path".
void put_fault(Json &object, const Fault &fault);

}  // namespace tool

#endif
