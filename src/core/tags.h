// Identifier octets (X.690, 8.1.2): the class in the top two bits, the form in the next, the number
// of the tag in the low five.
#ifndef ORVELASN1_CORE_TAGS_H
#define ORVELASN1_CORE_TAGS_H

#include <cstdint>

namespace asn1::tag {

constexpr uint8_t constructed = 0x20;  ///< the bit of the constructed form
constexpr uint8_t context = 0x80;      ///< the class of the context-specific tags
constexpr uint8_t number = 0x1F;       ///< the bits of the tag's number

// The universal types (X.680, 8.6), in the form that DER gives them.
constexpr uint8_t any = 0;  ///< no octet in particular
constexpr uint8_t end_of_contents = 0;
constexpr uint8_t boolean = 1;
constexpr uint8_t integer = 2;
constexpr uint8_t bit_string = 3;
constexpr uint8_t octet_string = 4;
constexpr uint8_t null = 5;
constexpr uint8_t object_identifier = 6;
constexpr uint8_t enumerated = 10;
constexpr uint8_t utf8_string = 12;
constexpr uint8_t numeric_string = 18;
constexpr uint8_t printable_string = 19;
constexpr uint8_t teletex_string = 20;
constexpr uint8_t videotex_string = 21;
constexpr uint8_t ia5_string = 22;
constexpr uint8_t utc_time = 23;
constexpr uint8_t generalized_time = 24;
constexpr uint8_t graphic_string = 25;
constexpr uint8_t visible_string = 26;
constexpr uint8_t general_string = 27;
constexpr uint8_t universal_string = 28;
constexpr uint8_t bmp_string = 30;
constexpr uint8_t sequence = 0x30;
constexpr uint8_t set = 0x31;

}  // namespace asn1::tag

#endif
