#include "frame.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace attack {

namespace {

constexpr uint8_t constructed_bit = 0x20;

/// What a reader of a length does, by X.690, 8.1.3, and the limits of the library: no more than
/// four octets follow the first, the content lies inside the input, and a length with its top bit
/// set counts as one that does.
struct Length {
  bool taken = false;
  bool indefinite = false;
  size_t octets = 0;   ///< that are taken
  uint32_t value = 0;  ///< that is stored, also where it is not taken
};

Length length_of(const uint8_t *octets, size_t left, bool may_be_indefinite) {
  Length read;
  if (left == 0) return read;
  const unsigned first = octets[0];
  const unsigned following = first < 0x80 ? 0 : first - 0x80;
  if (following > 4) return read;
  if (first == 0x80) {
    read.taken = read.indefinite = may_be_indefinite;
    read.octets = 1;
    return read;
  }
  if (first < 0x80) read.value = first;
  const size_t inside = std::min<size_t>(following, left - 1);
  for (size_t i = 1; i <= inside; ++i) read.value = read.value * 256 + octets[i];
  read.octets = 1 + following;
  read.taken =
      inside == following && (read.value >= 0x80000000 || read.value <= left - read.octets);
  return read;
}

/// The octets that follow the first one of a length.
size_t following(uint8_t first) { return first > 0x80 && first <= 0x84 ? first - 0x80U : 0; }

/// Calls `f()` for every value of octets that stand one after the other, the first of them from
/// `low` up to `high` only.
template <class F>
void for_each_value(uint8_t *octets, size_t count, unsigned low, unsigned high, F f) {
  if (count == 0) return f();
  for (unsigned value = low; value < high; ++value) {
    *octets = static_cast<uint8_t>(value);
    for_each_value(octets + 1, count - 1, 0, 256, f);
  }
}

/// The same for the part of the values that is so many 256ths from `low` on. Few octets are no work
/// to be divided: they are in the first part.
template <class F>
void for_each_value_of_part(uint8_t *octets, size_t count, unsigned low, unsigned high, F f) {
  if (count >= 3) return for_each_value(octets, count, low, high, f);
  if (low == 0) for_each_value(octets, count, 0, 256, f);
}

}  // namespace

Edge::Edge() {
  constexpr size_t mebi = size_t{1} << 20;
  // All that a length below 0x80000000 can reach, where addresses have 64 bits.
  beyond_ = sizeof(void *) > 4 ? 2049 * mebi : 256 * mebi;
  void *const got = mmap(nullptr, readable + beyond_, PROT_NONE,
                         MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (got == MAP_FAILED || mprotect(got, readable, PROT_READ | PROT_WRITE) != 0)
    throw std::runtime_error("no room");
  start_ = static_cast<uint8_t *>(got);
}

Edge::~Edge() { munmap(start_, readable + beyond_); }

void Frame::expect(bool right, const char *function, Octets input) {
  ++calls_;
  if (right || !mistake_.empty()) return;
  mistake_ = function;
  for (const uint8_t octet : input) {
    char digits[4];
    std::snprintf(digits, sizeof digits, " %02X", octet);
    mistake_ += digits;
  }
}

void Frame::every_tag() {
  uint8_t *const z = edge_.edge() - 1;
  for (unsigned octet = 0; octet < 256; ++octet) {
    *z = static_cast<uint8_t>(octet);
    for (unsigned impl_tag = 0; impl_tag < 256; ++impl_tag) {
      for (unsigned tag = 0; tag < 256; ++tag) {
        const unsigned effective = (impl_tag == 0 ? tag : impl_tag) | (tag & constructed_bit);
        const bool same = (octet | constructed_bit) == (effective | constructed_bit);
        const bool is_constructed = (octet & constructed_bit) != 0;
        const bool fits = same && (!is_constructed || (effective & constructed_bit) != 0);
        uint32_t constructed = 7;
        expect(asn1_Tag_d(z, z + 1, impl_tag, tag, nullptr, 0) == (fits ? z + 1 : nullptr),
               "asn1_Tag_d", {z, 1});
        const uint8_t *const next = asn1_Tag_d(z, z + 1, impl_tag, tag, &constructed, 0);
        expect(next == (same ? z + 1 : nullptr) && constructed == (same && is_constructed ? 1 : 0),
               "asn1_Tag_d, constructed", {z, 1});
        constructed = 7;
        expect(
            asn1_Tag_d(z + 1, z + 1, impl_tag, tag, &constructed, 0) == nullptr && constructed == 0,
            "asn1_Tag_d", {});
      }
    }
  }
}

void Frame::every_end_of_contents() {
  uint8_t *const edge = edge_.edge();
  expect(asn1_eoc_d(edge, edge) == nullptr, "asn1_eoc_d", {});
  for (unsigned first = 0; first < 256; ++first) {
    edge[-1] = static_cast<uint8_t>(first);
    expect(asn1_eoc_d(edge - 1, edge) == nullptr, "asn1_eoc_d", {edge - 1, 1});
    for (unsigned second = 0; second < 256; ++second) {
      edge[-2] = static_cast<uint8_t>(first);
      edge[-1] = static_cast<uint8_t>(second);
      const bool both = first == 0 && second == 0;
      expect(asn1_eoc_d(edge - 2, edge) == (both ? edge : nullptr), "asn1_eoc_d", {edge - 2, 2});
    }
  }
}

void Frame::length(Octets input) {
  const uint8_t *const z = input.data();
  const uint8_t *const end = z + input.size();
  uint32_t value = 7, indefinite = 7;
  const Length definite = length_of(z, input.size(), false);
  const uint8_t *next = asn1_Length_d(z, end, &value, nullptr, 0);
  expect(next == (definite.taken ? z + definite.octets : nullptr) && value == definite.value,
         "asn1_Length_d", input);
  const Length any = length_of(z, input.size(), true);
  value = 7;
  next = asn1_Length_d(z, end, &value, &indefinite, 0);
  expect(next == (any.taken ? z + any.octets : nullptr) && value == any.value &&
             indefinite == (any.indefinite ? 1 : 0),
         "asn1_Length_d, indefinite", input);
}

void Frame::length_with_content(Octets input) {
  const uint8_t *const z = input.data();
  const Length read = length_of(z, input.size(), false);
  if (read.octets != input.size() || read.value == 0 || read.value > 0x7FFFFFFF ||
      read.value > edge_.beyond()) {
    return;
  }
  uint32_t value = 7;
  const uint8_t *const content = z + read.octets;
  expect(
      asn1_Length_d(z, content + read.value, &value, nullptr, 0) == content && value == read.value,
      "asn1_Length_d, with content", input);
  expect(asn1_Length_d(z, content + read.value - 1, &value, nullptr, 0) == nullptr &&
             value == read.value,
         "asn1_Length_d, with less content", input);
}

void Frame::every_length(uint8_t first, unsigned low, unsigned high) {
  for (size_t inside = 0; inside <= following(first); ++inside) {
    uint8_t *const z = edge_.edge() - 1 - inside;
    *z = first;
    for_each_value_of_part(z + 1, inside, low, high, [&] {
      length({z, 1 + inside});
      if (inside == following(first)) length_with_content({z, 1 + inside});
    });
  }
}

void Frame::header(Octets input) {
  const uint8_t *const z = input.data();
  const uint8_t *const end = z + input.size();
  uint32_t constructed = 7, value = 7, indefinite = 7;
  const Length read = length_of(z + 1, input.size() - 1, true);
  const uint8_t *const next = asn1_TagLength_d(z, end, 0, *z, &constructed, &value, &indefinite, 0);
  expect(next == (read.taken ? z + 1 + read.octets : nullptr) && value == read.value &&
             indefinite == (read.indefinite ? 1 : 0) &&
             constructed == ((*z & constructed_bit) != 0 ? 1 : 0),
         "asn1_TagLength_d", input);
}

void Frame::every_header(uint8_t identifier, uint8_t first, unsigned low, unsigned high) {
  const size_t count = following(first);
  uint8_t *const z = edge_.edge() - 2 - count;
  z[0] = identifier;
  z[1] = first;
  for_each_value_of_part(z + 2, count, low, high, [&] { header({z, 2 + count}); });
}

void Frame::every_two_octets_of_a_header(uint8_t identifier) {
  constexpr size_t count = 4;
  uint8_t *const z = edge_.edge() - 2 - count;
  z[0] = identifier;
  z[1] = 0x80 + count;
  for (const uint8_t other : {uint8_t{0x00}, uint8_t{0xFF}}) {
    for (size_t i = 0; i < count; ++i) {
      for (size_t j = i + 1; j < count; ++j) {
        std::fill_n(z + 2, count, other);
        for (unsigned values = 0; values < 65536; ++values) {
          z[2 + i] = static_cast<uint8_t>(values >> 8);
          z[2 + j] = static_cast<uint8_t>(values);
          header({z, 2 + count});
        }
      }
    }
  }
}

}  // namespace attack
