// JSON of what the records of all types share. Each field bears the name that it has in the
// record. Beside the dotted form of an identifier in the field F stands its name in FName.
#ifndef ORVELASN1_TOOL_TEXT_JSON_H
#define ORVELASN1_TOOL_TEXT_JSON_H

#include <nlohmann/json.hpp>

#include "text/octets.h"

namespace tool {

/// Objects keep their members in the order in which they were put in, which is that of the record.
using Json = nlohmann::ordered_json;

/// Puts the dotted form of an identifier under `key`, and its name, where it has one, under `key`
/// with "Name" behind.
void put_oid(Json &object, const std::string &key, const ObjId *oid);

/// The content of an INTEGER as hexadecimal digits, with a minus in front of the amount of a
/// negative one; "00" for zero.
std::string integer_text(const Integer *integer);

/// An INTEGER in decimal, or in hexadecimal behind 0x where it has 32 bits or more.
std::string number_text(const Integer *integer);

/// A small INTEGER as a JSON number; as integer_text() where it is negative or has 32 bits or more.
Json json_of_number(const Integer *integer);

Json json_of(const BitString *bits);
Json json_of(const Time *time);
Json json_of(const AttributeValueAssertion *attribute);
Json json_of_rdn(const RelativeDistinguishedName *rdn);
Json json_of_name(const RDNSequence *name);

}  // namespace tool

#endif
