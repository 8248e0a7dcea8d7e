// The headers of encoded elements, read only to say where an input ends or goes wrong. What an
// element means is for the library to decide.
#ifndef ORVELASN1_TOOL_INPUT_DER_H
#define ORVELASN1_TOOL_INPUT_DER_H

#include <cstddef>
#include <string>

#include "text/octets.h"

namespace tool {

/// What is wrong with an input, and where that can be told, the offset of it.
struct Fault {
  std::optional<size_t> offset;  ///< counted from the first octet of the element
  std::string text;
};

/// One identifier octet and the length octets behind it.
struct Header {
  uint8_t tag = 0;
  size_t size = 0;  ///< of the header itself
  size_t length = 0;
  bool indefinite = false;
  std::string fault;  ///< why the octets are no header, or why its content is not there
};

/// The header at the start of `rest`, whose content must lie inside `rest`.
Header read_header(Octets rest);

/// The number of octets that the element with this header, at the start of `rest`, takes; nothing
/// where its length is indefinite and its end-of-contents is not found.
std::optional<size_t> element_size(Octets rest, const Header &header);

/// The name and the digits of an identifier octet: "INTEGER (02)", "[0] (A0)".
std::string tag_name(uint8_t tag);

}  // namespace tool

#endif
