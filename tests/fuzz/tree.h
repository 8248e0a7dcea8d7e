// An input taken apart as the elements that it is made of, whatever is wrong with it, so that it can
// be changed and put together again.
#ifndef ORVELASN1_TESTS_FUZZ_TREE_H
#define ORVELASN1_TESTS_FUZZ_TREE_H

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace fuzz {

using Bytes = std::vector<uint8_t>;
using Octets = std::span<const uint8_t>;

struct Piece;
using Tree = std::vector<Piece>;

/// An element, or octets that are none.
struct Piece {
  enum class Form : uint8_t { octets, definite, indefinite };

  Form form = Form::octets;
  uint8_t tag = 0;
  uint8_t length_octets = 1;             ///< of a definite length: at least so many
  std::optional<uint32_t> false_length;  ///< is written in place of the right one
  Bytes octets;                          ///< the content in front of the parts
  Tree parts;  ///< the elements of the content; an indefinite length has its end-of-contents here

  bool operator==(const Piece &) const = default;
};

/// The pieces that an input is made of. What is constructed is looked into, and so are octet
/// strings and bit strings that hold nothing but whole elements. An element that claims more octets
/// than there are gets what is left, and keeps its claim.
Tree take_apart(Octets input);

/// The octets of the pieces, with lengths that are right but for the false ones.
Bytes put_together(const Tree &tree);

constexpr uint8_t constructed_bit = 0x20;
constexpr uint32_t largest_short_length = 0x7F;
constexpr uint8_t most_length_octets = 5;

}  // namespace fuzz

#endif
