// The records of a stream: lines and the like, with an element in each.
#ifndef ORVELASN1_TOOL_INPUT_RECORD_H
#define ORVELASN1_TOOL_INPUT_RECORD_H

#include "input/element.h"
#include "input/stream.h"

namespace tool {

/// What a record holds.
struct Contents {
  Element element;  ///< a view of the record
  std::string id;   ///< what stands before a tab, to be passed through
};

/// Reads a record, and writes over it. Returns nothing where it holds no element and needs none,
/// such as the text after the last END line of PEM.
std::optional<Contents> read_record(std::span<uint8_t> record, const Format &format);

/// Returns the fields of a line of CSV (RFC 4180).
std::vector<std::string> csv_fields(std::string_view line);

}  // namespace tool

#endif
