// Reads inputs: a file or standard input, PEM, DER or base64, with one or many elements.
#ifndef ORVELASN1_TOOL_INPUT_INPUT_H
#define ORVELASN1_TOOL_INPUT_INPUT_H

#include <functional>

#include "input/element.h"
#include "system/shared_memory.h"

namespace tool {

/// A whole input, which is cut into elements when they are taken.
class Input {
 public:
  /// Reads a file, or standard input if the name is "-".
  /// @throws std::system_error when that fails.
  explicit Input(const std::string &file);

  /// Takes octets for those of a file of this name.
  Input(std::string name, Octets data);

  /// Returns the name of the file, or "standard input".
  const std::string &name() const { return name_; }

  /// Takes the next elements, at most `most`. Returns an empty list past the last one. The elements
  /// are views of the input.
  std::vector<Element> take(size_t most);

  /// Returns the input and the element as a message names them: "certs.pem: element 2 (line 31)".
  std::string where(const Element &element) const;

  /// Returns the same with the place of a fault: ", offset 212".
  std::string where(const Element &element, const Fault &fault) const;

 private:
  std::string name_;
  SharedMemory data_;
  std::function<std::optional<Element>()> next_;
};

}  // namespace tool

#endif
