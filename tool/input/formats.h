// What an input is that holds nothing for this tool, or not in a form that it reads. Each answer
// says what to do.
#ifndef ORVELASN1_TOOL_INPUT_FORMATS_H
#define ORVELASN1_TOOL_INPUT_FORMATS_H

#include "text/octets.h"

namespace tool {

/// Says what data of another format are; an empty text where they are of none that is known.
std::string foreign_format(Octets data);

/// Says what a PEM block with this label is, if it does not hold DER; else an empty text.
std::string foreign_label(std::string_view label);

/// Returns what a text is, by its start: "an HTML page", "JSON", "XML" or "a text".
std::string kind_of_text(Octets data);

}  // namespace tool

#endif
