// The values of attributes, which requests, keys and messages carry undecoded.
#ifndef ORVELASN1_TOOL_RECORDS_ATTRIBUTE_VALUES_H
#define ORVELASN1_TOOL_RECORDS_ATTRIBUTE_VALUES_H

#include "model/node.h"

namespace tool {

/// What the values of an attribute are; empty nodes where its syntax is not known or not followed.
struct AttributeValues {
  Node decoded;  ///< the one value, or a list where the syntax allows several; empty where there
                 ///< are several and must not be
  Node shown;    ///< for a page
};

AttributeValues read_attribute(const Attribute *attribute, const View &view);

}  // namespace tool

#endif
