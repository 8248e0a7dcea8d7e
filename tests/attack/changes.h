// The small changes of a good input.
#ifndef ORVELASN1_TESTS_ATTACK_CHANGES_H
#define ORVELASN1_TESTS_ATTACK_CHANGES_H

#include <octets.h>

#include "laws.h"
#include "share.h"

namespace attack {

// Each calls `f(input)` for one change after the other, or for a share of them, until `f` returns false.

/// Every truncation, down to no octets.
template <class F>
void for_each_truncation(Octets sample, F f) {
  for (size_t size = 0; size < sample.size(); ++size)
    if (is_in_share() && !f(sample.first(size))) return;
}

/// Every value of each of the first 64 octets, and every bit of each of the others.
template <class F>
void for_each_changed_octet(Octets sample, F f) {
  Bytes changed(sample.begin(), sample.end());
  for (size_t at = 0; at < changed.size(); ++at) {
    for (unsigned change = 1; change < 256; change = at < 64 ? change + 1 : change * 2) {
      changed[at] = static_cast<uint8_t>(sample[at] ^ change);
      if (is_in_share() && !f(Octets(changed))) return;
    }
    changed[at] = sample[at];
  }
}

/// The length octets that no decoder should trust in this place.
inline std::vector<Bytes> nasty_lengths(const LengthPlace &place) {
  using support::hex;
  std::vector<Bytes> nasty{hex("80"),
                           hex("81 00"),
                           hex("84 80 00 00 00"),
                           hex("84 FF FF FF FF"),
                           hex("84 7F FF FF FF"),
                           hex("85"),
                           hex("85 01 00 00 00 00"),
                           hex("FF")};
  for (const uint32_t value : {place.value - 1, place.value + 1}) {
    nasty.push_back({0x84, static_cast<uint8_t>(value >> 24), static_cast<uint8_t>(value >> 16),
                     static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value)});
    if (value < 0x80) nasty.push_back({static_cast<uint8_t>(value)});
  }
  return nasty;
}

/// Every nasty length in the place of every length.
template <class F>
void for_each_nasty_length(Octets sample, F f) {
  using support::operator+;
  for (const LengthPlace &place : lengths(sample)) {
    const Octets before = sample.first(place.offset);
    const Octets after = sample.subspan(place.offset + place.octets);
    for (const Bytes &length : nasty_lengths(place)) {
      const Bytes changed =
          Bytes(before.begin(), before.end()) + length + Bytes(after.begin(), after.end());
      if (is_in_share() && !f(Octets(changed))) return;
    }
  }
}

}  // namespace attack

#endif
