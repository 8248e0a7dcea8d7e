// The values of attributes, which requests, keys and messages carry undecoded.
#ifndef ORVELASN1_TOOL_RECORDS_ATTRIBUTE_VALUES_H
#define ORVELASN1_TOOL_RECORDS_ATTRIBUTE_VALUES_H

#include "model/node.h"

namespace tool {

/// The values of an attribute whose syntax is known and followed; nothing otherwise. A single
/// value stands for itself, others are a list.
Node read_attribute(const Attribute *attribute, const View &view);

}  // namespace tool

#endif
