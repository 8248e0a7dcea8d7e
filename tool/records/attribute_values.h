// The values of attributes, which requests, keys and messages carry undecoded.
#ifndef ORVELASN1_TOOL_RECORDS_ATTRIBUTE_VALUES_H
#define ORVELASN1_TOOL_RECORDS_ATTRIBUTE_VALUES_H

#include "model/node.h"

namespace tool {

/// Reads the values of an attribute: a single value as itself, several as a list. Returns an empty
/// node if the syntax of the attribute is not known or not followed.
Node read_attribute(const Attribute *attribute, const View &view);

}  // namespace tool

#endif
