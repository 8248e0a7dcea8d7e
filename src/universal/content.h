// The contents of universal types: what of an input belongs to a value, for whoever reads it.
#ifndef ORVELASN1_UNIVERSAL_CONTENT_H
#define ORVELASN1_UNIVERSAL_CONTENT_H

#include <algorithm>

#include "core/cursor.h"

namespace asn1 {

// ---------------------------------------------------------------------------------------------
// Strings
// ---------------------------------------------------------------------------------------------

/// Counts the octets before the first pair of zero octets: the value of a primitive of indefinite
/// length. Fails without such a pair.
inline bool find_zero_pair(const Reader &in, uint32_t *count) {
  const uint8_t *const octets = in.position();
  for (size_t i = 0; i + 1 < in.left() && i <= UINT32_MAX; ++i) {
    if (octets[i] == 0 && octets[i + 1] == 0) {
      *count = static_cast<uint32_t>(i);
      return true;
    }
  }
  return false;
}

/// Octets of the input.
struct Octets {
  const uint8_t *data = nullptr;
  uint32_t count = 0;
};

/// The content of an OCTET STRING or character string.
struct OctetContent {
  static constexpr uint32_t units = 1;  ///< of the record's length in an octet
  static constexpr uint32_t limit = UINT32_MAX;
  static constexpr uint32_t unused = 0;

  /// Takes the content of one primitive value.
  static bool take(Reader *in, const Header &header, uint32_t, Octets *octets) {
    octets->count = header.length;
    if (header.indefinite && !find_zero_pair(*in, &octets->count)) return false;
    if (!in->take(octets->count, &octets->data)) return false;
    return !header.indefinite || in->read_eoc();
  }
};

/// The content of a BIT STRING.
struct BitContent {
  static constexpr uint32_t units = 8;
  static constexpr uint32_t limit = UINT32_MAX / units;  // the bits are counted in 32 bits

  bool take(Reader *in, const Header &header, uint32_t depth, Octets *octets) {
    uint8_t octet;
    if ((!header.indefinite && header.length == 0) || !in->read_octet(&octet)) return false;
    if (depth != 0) [[unlikely]] {
      asn1_LogMessage(depth, "  (%d unused bits)\n", octet);
    }
    octets->count = header.length - 1;
    if (header.indefinite && !find_zero_pair(*in, &octets->count)) return false;
    if (!in->take(octets->count, &octets->data) || octets->count > limit) return false;
    if (octet > 7 || (octets->count == 0 && octet != 0)) return false;
    unused = octet;
    return !header.indefinite || in->read_eoc();
  }

  uint32_t unused = 0;  ///< bits of the value that was taken
};

// ---------------------------------------------------------------------------------------------
// OBJECT IDENTIFIER (X.690, 8.19)
// ---------------------------------------------------------------------------------------------

/// The arcs of a content: every number ends in an octet below 0x80, and the first makes two arcs.
inline uint32_t arcs_of(const Reader &content) {
  return 1 + static_cast<uint32_t>(std::count_if(content.position(), content.end(),
                                                 [](uint8_t octet) { return octet < 0x80; }));
}

/// Reads one number of an OBJECT IDENTIFIER's content, of at most five octets. Octets that go on
/// past the fifth are left for the next number. False where the number needs more than 32 bits.
[[gnu::always_inline]] inline bool read_subidentifier(Reader *in, uint32_t *value) {
  uint8_t octet = 0;
  if (!in->read_octet(&octet)) return false;
  *value = octet & 0x7F;
  if (octet < 0x80) [[likely]] {
    return true;
  }
  const uint32_t head = *value;
  for (int position = 2; position <= 5 && octet >= 0x80 && in->read_octet(&octet); ++position) {
    *value = *value << 7 | (octet & 0x7F);
    if (position == 5 && (head & 0xF0) != 0) return false;
  }
  return true;
}

}  // namespace asn1

#endif
