// Inputs that are text.
#ifndef ORVELASN1_TOOL_INPUT_TEXT_H
#define ORVELASN1_TOOL_INPUT_TEXT_H

#include "text/octets.h"

namespace tool {

/// Whether an input has the byte order mark of UTF-16.
bool is_utf16(Octets data);

/// Returns the input without a byte order mark. Writes UTF-16 as ASCII over itself, with "?" for
/// what ASCII lacks: PEM and base64 lack nothing then.
std::span<uint8_t> without_mark(std::span<uint8_t> data);

/// Whether the start of an input has no control character but blanks and line ends.
bool is_text(Octets data);

}  // namespace tool

#endif
