// The one reader of inputs: a file or standard input, PEM or DER, with one or many elements.
#ifndef ORVELASN1_TOOL_INPUT_INPUT_H
#define ORVELASN1_TOOL_INPUT_INPUT_H

#include <functional>

#include "input/element.h"
#include "system/shared_memory.h"

namespace tool {

/// A whole input, which is cut into elements as they are asked for.
class Input {
 public:
  /// Reads a file, or standard input where the name is "-".
  /// @throws std::system_error when that fails.
  explicit Input(const std::string &file);

  /// The name of the file, or "standard input".
  const std::string &name() const { return name_; }

  /// The next elements, at most `most`; none behind the last. They are views of the input.
  std::vector<Element> take(size_t most);

  /// The input and the element as a message names them: "certs.pem: element 2 (line 31)".
  std::string where(const Element &element) const;

  /// As above, with the place of a fault: ", offset 212".
  std::string where(const Element &element, const Fault &fault) const;

 private:
  std::string name_;
  SharedMemory data_;
  std::function<std::optional<Element>()> next_;
};

}  // namespace tool

#endif
