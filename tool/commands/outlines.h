// The outlines of elements, for the commands that show them.
#ifndef ORVELASN1_TOOL_COMMANDS_OUTLINES_H
#define ORVELASN1_TOOL_COMMANDS_OUTLINES_H

#include "input/element.h"
#include "model/outline_text.h"
#include "records/type.h"

namespace tool {

/// Collects text and writes it to standard output in large pieces.
class Output {
 public:
  Output() = default;
  Output(const Output &) = delete;
  Output &operator=(const Output &) = delete;
  ~Output();

  void add(std::string_view text);

 private:
  std::string text_;
};

/// Tells the lines of an element's outline until `tell` returns false, with the names of the type
/// that the element is taken for, or else of the one that fits. Returns the first fault.
std::optional<Fault> each_line(const Element &element, const Type *wanted,
                               const std::function<bool(const OutlineLine &)> &tell);

/// Prints the outline of an element that is not read as a type. Cuts a long one unless
/// `style.full`.
void print_outline(const Element &element, const Type *wanted, const std::string &where,
                   const OutlineStyle &style);

}  // namespace tool

#endif
