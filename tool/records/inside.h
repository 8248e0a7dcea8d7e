// Octets that stand undecoded inside a record and are an element of a type of their own.
#ifndef ORVELASN1_TOOL_RECORDS_INSIDE_H
#define ORVELASN1_TOOL_RECORDS_INSIDE_H

#include "records/type.h"

namespace tool {

/// What such octets turn out to be.
struct Inside {
  Node node;        ///< the record, which the node keeps; empty where the octets are not read
  std::string why;  ///< why they are not read
};

/// Reads octets that ought to be exactly one element of the type of this name. They must follow its
/// syntax first: there are inputs for which a decoder ends the process.
Inside read_inside(Octets octets, std::string_view type, const View &view);

/// Adds octets under their name, and behind them as the field "decoded" what they are; that is what
/// a page shows. Where they are not read, a page shows them and the reason.
Description &add_inside(Description &fields, std::string name, Node octets, Inside inside);

/// A list of ANY, each of which ought to be an element of the type of this name.
Node list_inside(const List *elements, std::string_view type, const View &view);

}  // namespace tool

#endif
