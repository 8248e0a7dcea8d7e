// Reading numbers out of texts.
#ifndef ORVELASN1_SCAN_H
#define ORVELASN1_SCAN_H

#include <cstddef>
#include <cstdint>

namespace asn1 {

/// Whether `c` is a decimal digit; never for a character with its top bit set.
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// A number that no int32_t holds is a failure, and so is exhausted memory.
enum class Scan { number, no_number, failure };

/// Reads numbers as the conversion %i of sscanf does: white space in front, a sign, decimal, octal
/// with a leading 0, hexadecimal with a leading 0x. The cost of all calls together does not grow
/// faster than the text, as long as they go forward in it.
class IntegerScanner {
 public:
  /// `*value`, and `*width`, the characters read, are set where there is a number.
  Scan scan(const char *text, int32_t *value, size_t *width);

 private:
  // White space up to here is known to have no number behind it.
  const char *barren_ = nullptr;
};

}  // namespace asn1

#endif
