// An element of an input.
#ifndef ORVELASN1_TOOL_INPUT_ELEMENT_H
#define ORVELASN1_TOOL_INPUT_ELEMENT_H

#include "input/der.h"

namespace tool {

/// An element of an input, or a fault in place of one.
struct Element {
  size_t number = 0;           ///< counted from 1
  size_t line = 0;             ///< of its BEGIN, counted from 1; 0 where the input is DER
  size_t offset = 0;           ///< of its first octet in a DER input
  std::string label;           ///< of its PEM block; empty where the input is DER
  Octets octets;               ///< a view of the input
  std::optional<Fault> fault;  ///< what the reader found wrong; the octets are then not complete
  std::string remark;          ///< what is worth a message and no fault; may be empty
};

}  // namespace tool

#endif
