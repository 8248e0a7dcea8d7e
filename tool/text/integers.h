// INTEGERs of any size as text and as JSON.
#ifndef ORVELASN1_TOOL_TEXT_INTEGERS_H
#define ORVELASN1_TOOL_TEXT_INTEGERS_H

#include "text/json.h"
#include "text/octets.h"

namespace tool {

/// Returns the content as hexadecimal digits, with a minus in front of the amount of a negative
/// INTEGER; "00" for zero.
std::string integer_text(const Integer *integer);

/// Returns the INTEGER in decimal; from 0xFFFFFFFF on, and a negative one, in hexadecimal after 0x.
std::string number_text(const Integer *integer);

/// Returns the INTEGER as a JSON number; from 0xFFFFFFFF on, and a negative one, as the string of
/// integer_text().
Json json_of_number(const Integer *integer);

/// Returns the number of bits of the amount of a positive INTEGER.
uint64_t bit_length(const Integer *integer);

}  // namespace tool

#endif
