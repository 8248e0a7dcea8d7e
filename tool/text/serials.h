// Serial numbers as people write them.
#ifndef ORVELASN1_TOOL_TEXT_SERIALS_H
#define ORVELASN1_TOOL_TEXT_SERIALS_H

#include "text/octets.h"

namespace tool {

/// Reads a serial number: hexadecimal digits, "0a1b", "0A:1B" or "0x0A1B", or decimal ones after
/// "dec:"; with a minus in front where it is negative. Returns the content octets of its INTEGER in
/// the shortest form (X.690, 8.3.2). Fails on any other text.
std::optional<Bytes> serial_of(std::string_view text);

/// Returns the content octets of an INTEGER without those that the shortest form does not have.
Octets shortest(Octets content);

}  // namespace tool

#endif
