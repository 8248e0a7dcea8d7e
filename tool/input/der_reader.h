// The elements of a DER input, one after the other.
#ifndef ORVELASN1_TOOL_INPUT_DER_READER_H
#define ORVELASN1_TOOL_INPUT_DER_READER_H

#include "input/element.h"
#include "input/window.h"

namespace tool {

/// Takes one DER element after the other. After a broken header the next element cannot be found,
/// and an identifier octet that no element of the file would have is rubbish. All that is left then
/// becomes one element with a fault.
class DerReader {
 public:
  std::optional<Element> operator()(Window &window);

 private:
  /// Whether an element after the first may have this identifier octet: that of the first, any
  /// constructed one, or, after a tagged one, another of the same class.
  bool may_follow(uint8_t tag) const;

  uint8_t first_ = 0;  ///< octet of the input
  size_t count_ = 0;
};

}  // namespace tool

#endif
