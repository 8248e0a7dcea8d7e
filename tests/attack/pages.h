// Memory with an unreadable page right before it and right after it.
#ifndef ORVELASN1_TESTS_ATTACK_PAGES_H
#define ORVELASN1_TESTS_ATTACK_PAGES_H

#include "laws.h"

namespace attack {

class Pages {
 public:
  enum class Place : uint8_t { anywhere, top };

  /// Room for 8 KiB. `top` is as near to the end of the address space as there is room, where
  /// addresses have 32 bits.
  explicit Pages(Place place = Place::anywhere);
  Pages(const Pages &) = delete;
  Pages &operator=(const Pages &) = delete;
  ~Pages();

  /// A copy whose last octet stands right in front of the unreadable page.
  const uint8_t *at_end(Octets octets) const;
  /// A copy whose first octet stands right after the unreadable page.
  const uint8_t *at_start(Octets octets) const;
  /// Whether an address lies in the unreadable page after the room.
  bool is_after(const void *address) const;

 private:
  uint8_t *start_;  ///< of the first unreadable page
};

/// Texts of any length, each with its closing NUL as the last octet in front of an unreadable page.
class TextAtEdge {
 public:
  TextAtEdge() = default;
  TextAtEdge(const TextAtEdge &) = delete;
  TextAtEdge &operator=(const TextAtEdge &) = delete;
  ~TextAtEdge();

  /// A copy of the octets up to a NUL octet, in place of the one before.
  const char *copy(Octets text);

 private:
  char *start_ = nullptr;
  size_t room_ = 0;
};

}  // namespace attack

#endif
