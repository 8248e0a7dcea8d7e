// Octets that a record keeps undecoded and that are an element of a type of their own.
#ifndef ORVELASN1_TOOL_RECORDS_INSIDE_H
#define ORVELASN1_TOOL_RECORDS_INSIDE_H

#include "records/type.h"

namespace tool {

/// What such octets are.
struct Inside {
  Node node;        ///< the record, which the node keeps; empty where the octets are not read
  std::string why;  ///< why they are not read
};

/// Reads octets that must be exactly one element of the type of this name. Checks its syntax first:
/// for some inputs a decoder ends the process.
Inside read_inside(Octets octets, std::string_view type, const View &view);

/// Adds octets under their name, and after them the field "decoded" with what they are. A page
/// shows that field only. If the octets are not read, a page shows them and the reason.
Description &add_inside(Description &fields, std::string name, Node octets, Inside inside);

/// Reads a list of ANY, each of which must be an element of the type of this name.
Node list_inside(const List *elements, std::string_view type, const View &view);

}  // namespace tool

#endif
