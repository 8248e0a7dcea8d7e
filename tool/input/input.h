// Reads inputs: a file or standard input, PEM, DER or base64, with one or many elements.
#ifndef ORVELASN1_TOOL_INPUT_INPUT_H
#define ORVELASN1_TOOL_INPUT_INPUT_H

#include <functional>

#include "input/element.h"
#include "input/window.h"
#include "system/descriptor.h"

namespace tool {

/// An input, of which no more is in memory than the elements that were taken last. Only a text that
/// does not begin with PEM, and what follows a fault in DER, is read as a whole.
class Input {
 public:
  /// How many octets are read at once.
  static constexpr size_t usual_step = size_t{1} << 20;

  /// Opens a file, or standard input if the name is "-", and begins to read it.
  /// @throws std::system_error when that fails.
  explicit Input(const std::string &file, size_t step = usual_step);

  /// Takes octets for those of a file of this name.
  Input(std::string name, Octets data);

  /// Returns the name of the file, or "standard input".
  const std::string &name() const { return name_; }

  /// Takes the next elements: `most`, or fewer where they are many octets, but at least one.
  /// Returns an empty list past the last one. The elements are views of the input, until the next
  /// call.
  /// @throws std::system_error when the input cannot be read.
  std::vector<Element> take(size_t most, size_t octets = SIZE_MAX);

  /// Reads all that is left, so that the file may change after that.
  void read_all();

  /// Returns the input and the element as a message names them: "certs.pem: element 2 (line 31)".
  std::string where(const Element &element) const;

  /// Returns the same with the place of a fault: ", offset 212".
  std::string where(const Element &element, const Fault &fault) const;

 private:
  void read_more();
  void drop_taken();

  std::string name_;
  Descriptor descriptor_;  ///< none where all is read
  size_t step_ = usual_step;
  Bytes data_;
  Window window_;  ///< of the data
  std::function<std::optional<Element>(Window &)> next_;
};

}  // namespace tool

#endif
