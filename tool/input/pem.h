// PEM (RFC 7468): base64 between BEGIN and END lines, with any text around the blocks.
#ifndef ORVELASN1_TOOL_INPUT_PEM_H
#define ORVELASN1_TOOL_INPUT_PEM_H

#include "input/element.h"

namespace tool {

/// Whether a line begins with "-----BEGIN " and all in front of it is text. The header of a DER
/// element is not text, so a DER input with such a line inside a string is still DER.
bool is_pem(Octets data);

/// Takes the blocks of a PEM text one by one. Writes the octets of each over its base64 text, so
/// that no second buffer is needed.
class PemReader {
 public:
  explicit PemReader(std::span<uint8_t> data) : data_(data) {}

  std::optional<Element> operator()();

 private:
  bool next_line();
  std::string_view line() const { return text_of(data_).substr(start_, stop_ - start_); }
  Element take_block(std::string label);

  std::span<uint8_t> data_;
  size_t start_ = 0;  ///< of the current line
  size_t stop_ = 0;   ///< its newline, or the end
  size_t next_ = 0;   ///< the start of the next line
  size_t line_number_ = 0;
  size_t count_ = 0;
};

/// Returns the PEM block of an element, with its newline.
std::string pem(std::string_view label, Octets octets);

}  // namespace tool

#endif
