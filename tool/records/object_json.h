// An object as one line of JSON.
#ifndef ORVELASN1_TOOL_RECORDS_OBJECT_JSON_H
#define ORVELASN1_TOOL_RECORDS_OBJECT_JSON_H

#include "records/fields.h"

namespace tool {

/// Returns the object of an element that was read: the members that all types have, and the fields
/// of its record. A type without a PEM label has its octets in hexadecimal. Octets that may hold a
/// private key are left out unless the view asks for secrets, and all of them from a compact
/// object.
Json json_of_object(const Object &object, const View &view);

/// Returns the object in the place of an element that is refused.
Json json_of_refused(const Object &object);

/// Adds what is wrong to an object: "error", "offset" and "path".
void put_fault(Json &object, const Fault &fault);

}  // namespace tool

#endif
