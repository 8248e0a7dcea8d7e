// Base64 (RFC 4648, 4), decoded in place.
#ifndef ORVELASN1_TOOL_INPUT_BASE64_H
#define ORVELASN1_TOOL_INPUT_BASE64_H

#include "text/octets.h"

namespace tool {

/// Whether a character is a digit of base64.
bool is_base64_digit(char c);

/// Returns the number of characters at the start of a text that stand for nothing: a blank, a line
/// end, or how JSON and XML write a line end. 0 where the text begins otherwise.
size_t blank_in_base64(std::string_view text);

/// The digits at the start of a text, up to the padding or another character.
class Base64Digits {
 public:
  explicit Base64Digits(std::string_view text) : text_(text) {}

  /// Takes the next digit. Returns its six bits, or -1 where there is none.
  int operator()();

  /// Takes groups of four digits, at most `most`, up to one that has another character. Writes the
  /// three octets of each to `out`, which may be null, or be where the text itself stands. Returns
  /// how many groups they are.
  size_t groups(size_t most, uint8_t *out);

  /// Returns the number of characters taken.
  size_t at() const { return at_; }

 private:
  std::string_view text_;
  size_t at_ = 0;
};

/// Decodes the digits at the start of a text into octets, at most `most`. Leaves out an octet that
/// is not complete. `out` has room for them, or is where the text itself stands.
Octets take_base64(std::string_view text, size_t most, uint8_t *out);

}  // namespace tool

#endif
