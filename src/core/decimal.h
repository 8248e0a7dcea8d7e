// The decimal digits of a number. The standard library's own functions would leave symbols of the C++
// runtime in the static archives, which a program or library that links them exports.
#ifndef ORVELASN1_CORE_DECIMAL_H
#define ORVELASN1_CORE_DECIMAL_H

#include <concepts>
#include <cstddef>
#include <limits>
#include <type_traits>

namespace asn1 {

/// The digits, with a minus sign before them where the number is negative. No NUL follows.
template <std::integral Number>
class Decimal {
 public:
  explicit Decimal(Number number) {
    auto rest = static_cast<std::make_unsigned_t<Number>>(number);
    if (number < 0) rest = 0 - rest;
    do {
      *--first_ = static_cast<char>('0' + rest % 10);
      rest /= 10;
    } while (rest != 0);
    if (number < 0) *--first_ = '-';
  }
  Decimal(const Decimal &) = delete;
  Decimal &operator=(const Decimal &) = delete;

  const char *begin() const { return first_; }
  const char *end() const { return digits_ + sizeof digits_; }
  size_t size() const { return static_cast<size_t>(end() - begin()); }

 private:
  char digits_[std::numeric_limits<Number>::digits10 + 2] = {};
  char *first_ = digits_ + sizeof digits_;
};
template <std::integral Number>
Decimal(Number) -> Decimal<Number>;

}  // namespace asn1

#endif
