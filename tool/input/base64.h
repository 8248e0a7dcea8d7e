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

  /// Takes blanks. Returns whether there are any.
  bool skip_blanks();

  /// Takes groups of four digits, at most `most`, up to one that has another character. Writes the
  /// three octets of each to `out`, which has room for `most`, or is where the text itself stands.
  /// Returns how many groups they are. May write over an octet past theirs, within that room.
  size_t groups(size_t most, uint8_t *out);

  /// Returns the number of characters taken.
  size_t at() const { return at_; }

  /// Returns the number of line ends among them. A carriage return with a newline after it is none.
  size_t line_ends() const { return line_ends_; }

 private:
  std::string_view text_;
  size_t at_ = 0;
  size_t line_ends_ = 0;
};

/// What was decoded of a text.
struct Base64Text {
  Octets octets;     ///< without one that is not complete
  size_t digits;     ///< that were taken
  size_t end;        ///< characters up to what is no digit, or past the last digit
  size_t line_ends;  ///< in front of that; a carriage return with a newline after it is none
};

/// Decodes the digits at the start of a text into octets, at most `most`. `out` has room for so
/// many, or is where the text itself stands, of which nothing past the end is written over.
Base64Text take_base64(std::string_view text, size_t most, uint8_t *out);

}  // namespace tool

#endif
