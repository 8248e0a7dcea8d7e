// Object identifiers as texts, with arcs of any size.
#include <algorithm>

#include "core/decimal.h"
#include "core/library.h"
#include "core/scan.h"
#include "pki/forms/text.h"

#pragma GCC visibility push(default)
#include "pki_x680.h"
#pragma GCC visibility pop

using namespace asn1;
using pki::Text;

namespace {

constexpr uint32_t root_arcs = 3;
constexpr uint32_t arcs_of_a_root = 40;  ///< second arcs under the root arcs 0 and 1

/// The words of a record that hold so many octets.
constexpr uint32_t words_of(uint32_t octets) { return octets / 4 + (octets % 4 != 0 ? 1 : 0); }

/// A natural number of any size, in words below Base, the lowest first.
template <uint32_t Base>
class Number {
 public:
  /// Takes memory for numbers of up to so many words.
  explicit Number(size_t words) : words_(new_array<uint32_t>(words)) {}
  ~Number() { std::free(words_); }
  Number(const Number &) = delete;
  Number &operator=(const Number &) = delete;

  bool has_memory() const { return words_ != nullptr; }
  size_t size() const { return size_; }
  uint32_t operator[](size_t i) const { return words_[i]; }

  void clear() { size_ = 0; }

  /// Both numbers are at most 2^30, so that no sum takes more than 64 bits.
  void multiply_add(uint32_t factor, uint32_t addend) {
    uint64_t carry = addend;
    for (size_t i = 0; i < size_; ++i) {
      carry += uint64_t{words_[i]} * factor;
      words_[i] = static_cast<uint32_t>(carry % Base);
      carry /= Base;
    }
    for (; carry != 0; carry /= Base) words_[size_++] = static_cast<uint32_t>(carry % Base);
  }

  /// Subtracts what is less than Base and not more than the number.
  void subtract(uint32_t subtrahend) {
    for (size_t i = 0; subtrahend != 0 && i < size_; ++i) {
      const bool borrows = words_[i] < subtrahend;
      words_[i] += (borrows ? Base : 0) - subtrahend;
      subtrahend = borrows ? 1 : 0;
    }
    while (size_ != 0 && words_[size_ - 1] == 0) --size_;
  }

 private:
  uint32_t *words_;
  size_t size_ = 0;
};

// ---------------------------------------------------------------------------------------------
// To a text
// ---------------------------------------------------------------------------------------------

void append_number(Text &text, uint64_t number) {
  const Decimal digits(number);
  text.append(digits.begin(), digits.size());
}

/// Nine decimal digits a word.
using DecimalNumber = Number<1'000'000'000>;

void append_number(Text &text, const DecimalNumber &number) {
  constexpr size_t digits_of_a_word = 9;
  if (number.size() == 0) {
    text.append('0');
    return;
  }
  append_number(text, number[number.size() - 1]);
  for (size_t i = number.size() - 1; i-- > 0;) {
    char digits[digits_of_a_word];
    uint32_t rest = number[i];
    for (size_t digit = digits_of_a_word; digit-- > 0; rest /= 10) {
      digits[digit] = static_cast<char>('0' + rest % 10);
    }
    text.append(digits, sizeof digits);
  }
}

/// Writes arcs as they are, and the first two as X.690, 8.19.4 has them where asn1_ObjId_d() split
/// their number otherwise, which makes root arcs above 2.
bool write_arcs(Text &text, const ObjId &oid) {
  uint64_t root = oid.arcs[0];
  uint64_t second = oid.arcs[1];
  if (root != root_arcs - 1 && second >= arcs_of_a_root) return false;
  if (root >= root_arcs) {
    second += (root - (root_arcs - 1)) * arcs_of_a_root;
    root = root_arcs - 1;
  }
  append_number(text, root);
  text.append('.');
  append_number(text, second);
  for (uint32_t i = 2; i < oid.count; ++i) {
    text.append('.');
    append_number(text, oid.arcs[i]);
  }
  return true;
}

/// The content octets in a record with large arcs.
class Content {
 public:
  explicit Content(const ObjId &oid) : words_(oid.arcs + 2), size_(oid.arcs[1]) {}

  uint32_t size() const { return size_; }
  uint8_t operator[](uint32_t i) const {
    return static_cast<uint8_t>(words_[i / 4] >> (24 - i % 4 * 8));
  }

  /// Whether the record has as many words as the octets take, and no subidentifier begins with 0x80
  /// or lacks its end (X.690, 8.19.2).
  bool is_valid(const ObjId &oid) const {
    if (size_ == 0 || oid.count - 2 != words_of(size_)) return false;
    bool begins = true;
    for (uint32_t i = 0; i < size_; ++i) {
      if (begins && (*this)[i] == 0x80) return false;
      begins = (*this)[i] < 0x80;
    }
    const uint32_t rest = size_ % 4;
    return begins && (rest == 0 || words_[size_ / 4] << (8 * rest) == 0);
  }

 private:
  const uint32_t *words_;
  uint32_t size_;
};

/// Reads the subidentifier at `*position` and moves past it.
void read_number(const Content &content, uint32_t *position, DecimalNumber &number) {
  constexpr uint32_t bits = 7, octets_at_once = 4;
  number.clear();
  for (bool goes_on = true; goes_on;) {
    uint32_t value = 0, count = 0;
    for (; goes_on && count < octets_at_once; ++count) {
      const uint8_t octet = content[(*position)++];
      value = value << bits | (octet & 0x7F);
      goes_on = octet >= 0x80;
    }
    number.multiply_add(uint32_t{1} << (bits * count), value);
  }
}

bool write_content(Text &text, const ObjId &oid) {
  const Content content(oid);
  if (!content.is_valid(oid)) return false;
  // Four octets are 28 bits, and a word holds 29.
  DecimalNumber number(content.size() / 4 + 1);
  if (!number.has_memory()) return false;
  uint32_t position = 0;
  read_number(content, &position, number);
  const uint32_t lowest = number.size() == 0 ? 0 : number[0];
  const uint32_t root =
      number.size() > 1 ? root_arcs - 1 : std::min(lowest / arcs_of_a_root, root_arcs - 1);
  number.subtract(root * arcs_of_a_root);
  append_number(text, root);
  text.append('.');
  append_number(text, number);
  while (position < content.size()) {
    text.append('.');
    read_number(content, &position, number);
    append_number(text, number);
  }
  return true;
}

// ---------------------------------------------------------------------------------------------
// From a text
// ---------------------------------------------------------------------------------------------

/// The digits of an arc.
struct Digits {
  const char *first;
  size_t count;

  /// Whether 32 bits hold the arc, which is then in `*value`.
  bool fits(uint32_t *value) const {
    uint64_t number = 0;
    for (const char *digit = first; digit != first + count; ++digit) {
      number = number * 10 + static_cast<uint32_t>(*digit - '0');
      if (number > UINT32_MAX) return false;
    }
    *value = static_cast<uint32_t>(number);
    return true;
  }
};

/// Reads the arcs of a text.
class Arcs {
 public:
  explicit Arcs(const char *text) : cursor_(text) {}

  bool at_end() const { return *cursor_ == '\0'; }

  /// Reads the next arc and the dot after it. Fails without an arc, or with nothing after the dot.
  bool next(Digits *digits) {
    const char *end = cursor_;
    while (is_digit(*end)) ++end;
    *digits = {cursor_, static_cast<size_t>(end - cursor_)};
    if (digits->count == 0 || (digits->count > 1 && *cursor_ == '0')) return false;
    if (*end != '\0' && *end != '.') return false;
    cursor_ = end;
    return *end == '\0' || *++cursor_ != '\0';
  }

 private:
  const char *cursor_;
};

struct Shape {
  uint32_t count = 0;
  bool is_large = false;
};

/// Whether a text is an identifier.
bool measure(const char *text, Shape *shape) {
  uint32_t root = 0;
  for (Arcs arcs(text); !arcs.at_end(); ++shape->count) {
    Digits digits;
    if (!arcs.next(&digits)) return false;
    uint32_t arc = 0;
    const bool fits = digits.fits(&arc);
    if (shape->count == 0) {
      if (!fits || arc >= root_arcs) return false;
      root = arc;
    } else if (shape->count == 1 && root != root_arcs - 1) {
      if (!fits || arc >= arcs_of_a_root) return false;
    }
    shape->is_large = shape->is_large || !fits;
  }
  return shape->count >= 2;
}

ObjId *identifier_of_arcs(const char *text, uint32_t count) {
  ObjId *const oid = asn1_ObjId_new(count);
  if (oid == nullptr) return nullptr;
  Arcs arcs(text);
  for (uint32_t i = 0; i < count; ++i) {
    Digits digits;
    arcs.next(&digits);
    digits.fits(&oid->arcs[i]);
  }
  return oid;
}

/// Four octets of seven bits a word.
using BinaryNumber = Number<(1U << 28)>;

void read_number(const Digits &digits, BinaryNumber &number) {
  constexpr size_t digits_at_once = 9;
  number.clear();
  for (size_t i = 0; i < digits.count;) {
    uint32_t value = 0, factor = 1;
    for (size_t count = 0; count < digits_at_once && i < digits.count; ++count, ++i) {
      value = value * 10 + static_cast<uint32_t>(digits.first[i] - '0');
      factor *= 10;
    }
    number.multiply_add(factor, value);
  }
}

/// Appends the octets of a subidentifier.
void append_octets(Text &octets, const BinaryNumber &number) {
  constexpr size_t octets_of_a_word = 4;
  bool begun = false;
  for (size_t i = number.size() * octets_of_a_word; i-- > 0;) {
    const uint32_t bits =
        number[i / octets_of_a_word] >> (7 * static_cast<uint32_t>(i % octets_of_a_word)) & 0x7F;
    begun = begun || bits != 0;
    if (begun) octets.append(static_cast<char>(i == 0 ? bits : 0x80 | bits));
  }
  if (!begun) octets.append('\0');
}

ObjId *record_of_content(const Text &octets) {
  if (octets.failed()) return nullptr;
  // No arc has more octets than digits, and a text is not longer than 32 bits count.
  const auto size = static_cast<uint32_t>(octets.size());
  ObjId *const oid = asn1_ObjId_new(2 + words_of(size));
  if (oid == nullptr) return nullptr;
  oid->arcs[0] = PKI_LARGE_ARCS;
  oid->arcs[1] = size;
  for (uint32_t i = 0; i < size; ++i) {
    oid->arcs[2 + i / 4] |= uint32_t{static_cast<uint8_t>(octets.data()[i])} << (24 - i % 4 * 8);
  }
  return oid;
}

ObjId *identifier_of_content(const char *text) {
  // Eight digits are less than 27 bits, a word holds 28; and what the root arc adds may carry.
  BinaryNumber number(std::strlen(text) / 8 + 2);
  if (!number.has_memory()) return nullptr;
  Text octets;
  Digits digits;
  Arcs arcs(text);
  uint32_t root = 0;
  arcs.next(&digits);
  digits.fits(&root);
  for (uint32_t first = root * arcs_of_a_root; !arcs.at_end() && !octets.failed(); first = 0) {
    arcs.next(&digits);
    read_number(digits, number);
    number.multiply_add(1, first);
    append_octets(octets, number);
  }
  return record_of_content(octets);
}

}  // namespace

char *pki_ObjId_text(const ObjId *oid) {
  if (oid == nullptr || oid->arcs == nullptr || oid->count < 2) return nullptr;
  Text text;
  const bool is_large = oid->arcs[0] == PKI_LARGE_ARCS;
  const bool written = is_large ? write_content(text, *oid) : write_arcs(text, *oid);
  return written ? text.release() : nullptr;
}

ObjId *pki_ObjId_parse(const char *text) {
  // The arcs are counted in 32 bits.
  if (text == nullptr || std::strlen(text) > UINT32_MAX) return nullptr;
  Shape shape;
  if (!measure(text, &shape)) return nullptr;
  return shape.is_large ? identifier_of_content(text) : identifier_of_arcs(text, shape.count);
}
