// The headers of encoded elements, read only to tell elements apart and to say where an input goes
// wrong. What an element means is for the library to decide.
#ifndef ORVELASN1_TOOL_INPUT_DER_H
#define ORVELASN1_TOOL_INPUT_DER_H

#include "text/octets.h"

namespace tool {

/// What is wrong with an input, and its offset, if it has one.
struct Fault {
  std::optional<size_t> offset;  ///< counted from the first octet of the element
  std::string text;
  std::string path{};  ///< the field that it is in, as the text has it; empty where no field is
};

/// Returns the text of a fault, after "offset 12: " where it has an offset.
std::string text_with_offset(const Fault &fault);

/// One identifier octet and the length octets after it.
struct Header {
  uint8_t tag = 0;
  size_t size = 0;  ///< of the header itself
  size_t length = 0;
  bool indefinite = false;
  std::string fault;  ///< why the octets are not a header, or why its content is not there
};

/// Reads the header at the start of `rest`. Its content must lie inside `rest`.
Header read_header(Octets rest);

/// Returns the number of octets of the element with this header, at the start of `rest`. Fails
/// where its length is indefinite and its end-of-contents is not found.
std::optional<size_t> element_size(Octets rest, const Header &header);

/// Splits the first element into its components: as many as can be told apart, at most `most`.
std::vector<Octets> components(Octets element, size_t most = SIZE_MAX);

/// Returns the component of this number; no octets where there is no such component.
Octets component(Octets element, size_t number);

/// Returns the name and the digits of an identifier octet: "INTEGER (02)", "[0] (A0)".
std::string tag_name(uint8_t tag);

}  // namespace tool

#endif
