// Where the records of a stream end, found as the octets come.
#ifndef ORVELASN1_TOOL_INPUT_CUTTER_H
#define ORVELASN1_TOOL_INPUT_CUTTER_H

#include <functional>

#include "text/octets.h"

namespace tool {

/// Takes the next octets of a record. Returns how many of them belong to it where it ends among
/// them, and is ready for the next record then; else `goes_on`. A record keeps what is between it
/// and the one before.
using Cutter = std::function<size_t(std::string_view octets)>;
constexpr size_t goes_on = SIZE_MAX;

/// Records are lines.
Cutter cut_at_lines();

/// Records are lines, but that a line end between quotation marks is none (RFC 4180).
Cutter cut_at_csv_lines();

/// Records end with the first closing brace after an opening one: objects that hold no other.
Cutter cut_at_objects();

/// Records end with the line of an END of PEM (RFC 7468).
Cutter cut_at_pem_blocks();

/// Records are elements of definite length (X.690, 8.1.3). What is no such element does not end.
Cutter cut_at_elements();

}  // namespace tool

#endif
