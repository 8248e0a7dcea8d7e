// Lines that are longer than the place for them.
#ifndef ORVELASN1_TOOL_MODEL_WRAP_H
#define ORVELASN1_TOOL_MODEL_WRAP_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Returns the number of columns that UTF-8 takes on a terminal: none for a combining character,
/// two for a wide one.
size_t width(std::string_view utf8);

/// Breaks a line into pieces of at most `columns` columns, at blanks; a word that is longer than
/// a piece, after a punctuation mark, or else anywhere. Each piece after the first begins with
/// `hang` blanks. A line of hexadecimal digits alone becomes pieces of one size, without blanks.
std::vector<std::string> wrapped(std::string_view line, size_t columns, size_t hang = 2);

}  // namespace tool

#endif
