// Reads numbers out of texts.
#ifndef ORVELASN1_SCAN_H
#define ORVELASN1_SCAN_H

#include <cstddef>
#include <cstdint>

namespace asn1 {

/// Whether `c` is a decimal digit; never for a character with its top bit set.
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// What a text begins with. A number that no int32_t holds is a failure.
enum class Scan { number, no_number, failure };

/// Reads numbers as the conversion %i of sscanf does in the C locale (C17, 7.21.6.2 and 7.22.1.4):
/// white space, a sign, decimal, octal after a leading 0, hexadecimal after a leading 0x. A 0x
/// without digits is read whole, as 0. No other prefix is known.
class IntegerScanner {
 public:
  /// Sets `*value`, and `*width`, the characters read, where there is a number.
  ///
  /// As long as they go forward in the text, the cost of all calls together is linear in it.
  Scan scan(const char *text, int32_t *value, size_t *width);

 private:
  // White space up to here is known to have no number after it.
  const char *barren_ = nullptr;
};

}  // namespace asn1

#endif
