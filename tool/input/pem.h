// PEM (RFC 7468): base64 between BEGIN and END lines, with any text around the blocks.
#ifndef ORVELASN1_TOOL_INPUT_PEM_H
#define ORVELASN1_TOOL_INPUT_PEM_H

#include "input/element.h"
#include "input/window.h"

namespace tool {

/// Whether "-----BEGIN " stands in the data and all in front of it is text. The header of a DER
/// element is not text, so a DER input with these characters inside a string is still DER.
bool is_pem(Octets data);

/// Whether data are text, so that they may stand in front of "-----BEGIN ".
bool may_precede_pem(Octets data);

/// Takes the blocks of a PEM text one by one. Line ends may be of any kind, those of JSON ("\n")
/// among them, or blanks. Writes the octets of each block over its base64 text, so that no second
/// buffer is needed.
class PemReader {
 public:
  std::optional<Element> operator()(Window &window);

 private:
  struct Mark;
  std::optional<Mark> next_mark(size_t from) const;
  std::optional<Element> block(const Mark &begin);
  void count_lines(size_t to);
  std::string_view text() const { return text_of(window_.data); }

  Window window_;       ///< during a call
  size_t line_ = 1;     ///< the line of counted_
  size_t counted_ = 0;  ///< up to where lines of the window are counted
  size_t count_ = 0;
};

/// Returns the first block of a PEM text.
std::optional<Element> first_block(std::span<uint8_t> text);

/// Appends the PEM block of an element, with a line end after each line.
void append_pem(std::string &out, std::string_view label, Octets octets, std::string_view line_end);

}  // namespace tool

#endif
