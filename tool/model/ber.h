// Elements of BER (X.690, 8.1) under any tag and of any depth, read without recursion.
#ifndef ORVELASN1_TOOL_MODEL_BER_H
#define ORVELASN1_TOOL_MODEL_BER_H

#include <orvelpki.h>

#include <deque>

#include "text/octets.h"

namespace tool::ber {

/// The identifier and length octets of an element.
struct Header {
  uint8_t identifier = 0;  ///< the first identifier octet
  uint64_t number = 0;     ///< of the tag
  size_t size = 0;         ///< of the header itself; 0 where the octets are no header
  size_t length = 0;       ///< of the content, as the length octets have it
  bool indefinite = false;
  bool overlong = false;  ///< whether the content is longer than what is left
  std::string fault;      ///< why the octets are not a header, or why the content is not there

  bool constructed() const { return (identifier & tag::constructed) != 0; }
  bool is_universal() const { return (identifier & tag::class_bits) == 0; }
  /// Returns the number of a universal tag, or 0.
  uint8_t universal_number() const {
    return is_universal() && number < tag::number_bits ? static_cast<uint8_t>(number) : uint8_t{0};
  }
};

/// Reads the header at the start of `rest`. Its content should lie inside `rest`.
Header read_header(Octets rest);

/// Returns the name of a tag: "SEQUENCE", "[0]", "[APPLICATION 33]".
std::string tag_name(const Header &header);

inline bool ends_contents(Octets rest) { return rest.size() >= 2 && rest[0] == 0 && rest[1] == 0; }

/// The elements that are open around a place, each of which ends inside the one around it. What is
/// kept of each grows with the octets that stand past it, so that all of them together take less
/// than the input.
class Levels {
 public:
  struct Level {
    size_t end = 0;           ///< where the content ends, or at the latest where it is indefinite
    bool indefinite = false;  ///< whether an end-of-contents ends it
  };

  explicit Levels(size_t end) { top_.end = end; }

  void open(const Level &inner);
  void close();
  const Level &top() const { return top_; }
  /// Returns the number of open elements.
  size_t depth() const { return depth_; }

 private:
  std::deque<uint8_t> outer_;  ///< numbers of seven bits an octet, the last octet of each marked
  Level top_;
  size_t depth_ = 0;
};

/// Returns the number of octets of the element at the start of `rest`. Fails where it, or an
/// element in it, is not well-formed.
std::optional<size_t> element_size(Octets rest);

/// Whether the content of a string is likely to be an element: it is exactly one, well-formed,
/// under a tag that stands by itself, and a primitive one has a content that fits its tag.
bool is_element(Octets content);

/// Decodes the content of an OBJECT IDENTIFIER, with arcs of any size. Returns null where it is
/// none, or longer than any in use.
Owned<ObjId> record_of(Octets identifier);

}  // namespace tool::ber

#endif
