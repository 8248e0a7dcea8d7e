// The word that was meant.
#ifndef ORVELASN1_TOOL_TEXT_NEAREST_H
#define ORVELASN1_TOOL_TEXT_NEAREST_H

#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Returns `; did you mean "show"?` with the known word that is nearest to `word`; an empty text
/// where none is near. Words are near where a third of the characters has to be added, left out,
/// replaced, or swapped with its neighbour.
std::string did_you_mean(std::string_view word, const std::vector<std::string> &known);

}  // namespace tool

#endif
