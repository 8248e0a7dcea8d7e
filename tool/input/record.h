// The records of a stream: lines and the like, with an element in each.
#ifndef ORVELASN1_TOOL_INPUT_RECORD_H
#define ORVELASN1_TOOL_INPUT_RECORD_H

#include "input/element.h"
#include "input/stream.h"

namespace tool {

/// Returns the octets of a record up to the last tab and with it: a label, which is passed through.
/// 0 where there is none; only lines of base64 may have one.
size_t label_size(Octets record, const Format &format);

/// Reads a record without its label, and writes over it. Returns a view of it, or nothing where it
/// holds no element and needs none, such as the text after the last END line of PEM.
std::optional<Element> read_record(std::span<uint8_t> record, const Format &format);

/// Returns the fields of a line of CSV (RFC 4180).
std::vector<std::string> csv_fields(std::string_view line);

}  // namespace tool

#endif
