// Encoded elements, read only to tell them apart and to say where an input goes wrong. What an element
// means is for the library to decide.
#ifndef ORVELASN1_TOOL_INPUT_DER_H
#define ORVELASN1_TOOL_INPUT_DER_H

#include "model/ber.h"

namespace tool {

/// What is wrong with an input, and its offset, if it has one.
struct Fault {
  std::optional<size_t> offset;  ///< counted from the first octet of the element
  std::string text;
  std::string path{};  ///< the field that it is in, as the text has it; empty where no field is
};

/// Returns the text of a fault, after "offset 12: " where it has an offset.
std::string text_with_offset(const Fault &fault);

using ber::Header;
using ber::read_header;

/// Returns the number of octets of the element with this header, at the start of `rest`. Fails
/// where the header has a fault, and where its length is indefinite and its end-of-contents is not
/// found. What is inside an element of definite length is not looked at.
std::optional<size_t> element_size(Octets rest, const Header &header);

/// Splits the first element into its components: as many as can be told apart, at most `most`.
std::vector<Octets> components(Octets element, size_t most = SIZE_MAX);

/// Returns the component of this number; no octets where there is no such component.
Octets component(Octets element, size_t number);

/// Returns the name and the digits of an identifier octet: "INTEGER (02)", "[0] (A0)".
std::string tag_name(uint8_t tag);

}  // namespace tool

#endif
