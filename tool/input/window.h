// A part of an input, which is read piece by piece.
#ifndef ORVELASN1_TOOL_INPUT_WINDOW_H
#define ORVELASN1_TOOL_INPUT_WINDOW_H

#include "text/octets.h"

namespace tool {

/// What is in memory of an input. A reader takes elements from it and moves `at` past them. Where
/// it cannot do so for want of what follows, it takes none, and the window grows.
struct Window {
  std::span<uint8_t> data{};
  size_t at = 0;        ///< octets of the data that are taken
  size_t start = 0;     ///< offset of the data in the input
  bool is_last = true;  ///< whether the data are all that is left of the input

  std::span<uint8_t> rest() const { return data.subspan(at); }
};

}  // namespace tool

#endif
