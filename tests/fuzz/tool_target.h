// What the fuzz targets for the tool share. Any octets are an input.
#ifndef ORVELASN1_TESTS_FUZZ_TOOL_TARGET_H
#define ORVELASN1_TESTS_FUZZ_TOOL_TARGET_H

#include <string_view>

#include "records/type.h"

namespace fuzz {

/// Holds an input against the laws of a target. Each target defines it.
void hold(tool::Octets input);

/// Ends the process where a law is broken, and says which.
void expect(bool holds, const char *law);

/// Expects a text of whole lines that a terminal shows as they are.
void expect_printable(std::string_view text);

/// Expects one JSON object in a line of valid UTF-8, no member of which stands there twice.
void expect_json_line(std::string_view line);

/// Returns the types that a file may hold without --type, and that octets follow past their header;
/// and one of the others, which all say the same of the octets.
std::vector<const tool::Type *> types_worth_trying(tool::Octets input);

}  // namespace fuzz

#endif
