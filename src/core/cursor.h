// The cursor: every octet of the input is read, and every octet of the output written, through this
// file. What lies outside the range cannot be named, so it cannot be touched.
#ifndef ORVELASN1_CURSOR_H
#define ORVELASN1_CURSOR_H

#include "core/library.h"
#include "core/tags.h"

namespace asn1 {

/// A header as read from the input.
struct Header {
  uint32_t length = 0;       ///< number of content octets as written; 0 for the indefinite form
  bool constructed = false;  ///< the constructed bit of the identifier octet
  bool indefinite = false;   ///< the length is given by an end-of-contents
};

/// Which identifier octets and lengths a type takes.
enum class Forms {
  one,         ///< the form of its tag, definite length
  indefinite,  ///< the form of its tag, any length
  any          ///< primitive or constructed, any length
};

/// Writes the line of an identifier octet to the trace. `effective` is the tag that was expected at
/// this place, `tag` the one of the type.
void trace_tag(uint32_t depth, uint8_t octet, uint8_t effective, uint8_t own_tag);

class ContentReader;

/// The octets from the position up to, not including, the end. A function that reads moves the
/// position and fills its result, or fails and leaves both alone. An end below the position means
/// that nothing is left.
class Reader {
 public:
  Reader(const uint8_t *z, const uint8_t *end) : z_(z), end_(end) {}

  const uint8_t *position() const { return z_; }
  const uint8_t *end() const { return end_; }
  bool at_end() const { return z_ >= end_; }
  size_t left() const { return at_end() ? 0 : static_cast<size_t>(end_ - z_); }

  /// The next octet, or -1 at the end.
  int peek() const { return at_end() ? -1 : *z_; }

  bool read_octet(uint8_t *octet) {
    if (at_end()) return false;
    *octet = *z_++;
    return true;
  }

  /// Takes the next `count` octets. A count with its top bit set, which the length decoder lets
  /// pass, fails.
  bool take(uint32_t count, const uint8_t **octets) {
    if (left() < count || count > INT32_MAX) return false;
    *octets = z_;
    z_ += count;
    return true;
  }

  bool skip(uint32_t count) {
    const uint8_t *octets;
    return take(count, &octets);
  }

  /// Moves to where another decoder stopped, which read from this position on.
  void move_to(const uint8_t *z) { z_ = z; }

  /// The content after a header. A definite length with its top bit set leaves no octets; an
  /// indefinite one leaves all but the last two, which its end-of-contents needs.
  inline ContentReader content(const Header &header) const;
  inline ContentReader content(uint32_t length) const;

  /// Takes an identifier octet, which must be `impl_tag`, or `tag` where the low octet of
  /// `impl_tag` is 0, but for the constructed bit. `constructed` is given where the type takes both
  /// forms.
  [[gnu::always_inline]] bool read_tag(uint32_t impl_tag, uint8_t own_tag, bool *constructed,
                                       uint32_t depth) {
    require(z_ != nullptr, "asn1_x680", "asn1_Tag_d", "z != NULL");
    require(end_ != nullptr, "asn1_x680", "asn1_Tag_d", "end != NULL");
    if (constructed != nullptr) *constructed = false;
    if (at_end()) return false;
    // Not null, as required above, which the analyzer loses at some depth.
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
    const uint8_t octet = *z_;
    const auto implicit = static_cast<uint8_t>(impl_tag);
    const auto effective =
        static_cast<uint8_t>((implicit != 0 ? implicit : own_tag) | (own_tag & tag::constructed));
    if (((octet ^ effective) & ~tag::constructed) != 0) return false;
    if ((octet & tag::constructed) != 0) {
      if (constructed != nullptr) {
        *constructed = true;
      } else if ((effective & tag::constructed) == 0) {
        return false;
      }
    }
    if (depth != 0) [[unlikely]] {
      trace_tag(depth, octet, effective, own_tag);
    }
    ++z_;
    return true;
  }

  /// Takes length octets. `indefinite` is given where that form is allowed. `*length` holds what
  /// was read also when the content would reach past the end, which is a failure.
  [[gnu::always_inline]] bool read_length(uint32_t *length, bool *indefinite, uint32_t depth) {
    require(z_ != nullptr, "asn1_x680", "asn1_Length_d", "z != NULL");
    require(end_ != nullptr, "asn1_x680", "asn1_Length_d", "end != NULL");
    *length = 0;
    if (indefinite != nullptr) *indefinite = false;
    if (at_end()) return false;
    uint32_t value = *z_;
    const uint8_t *next = z_ + 1;
    if (value >= 0x80) {
      uint32_t octets = value & 0x7F;
      if (octets > 4) return false;
      if (octets == 0) {
        if (indefinite == nullptr) return false;
        *indefinite = true;
        z_ = next;
        return true;
      }
      value = 0;
      for (; octets != 0 && next < end_; --octets) value = value << 8 | *next++;
      *length = value;
      if (octets != 0) return overrun(depth);
    }
    *length = value;
    // A length with its top bit set counts as negative, and so as one that does not reach too far.
    const auto available = static_cast<size_t>(end_ - next);
    if (value > available && value <= INT32_MAX) return overrun(depth);
    z_ = next;
    return true;
  }

  /// Takes a header.
  [[gnu::always_inline]] bool read_header(uint32_t impl_tag, uint8_t own_tag, Forms forms,
                                          Header *header, uint32_t depth) {
    Reader in = *this;
    if (!in.read_tag(impl_tag, own_tag, forms == Forms::any ? &header->constructed : nullptr,
                     depth) ||
        !in.read_length(&header->length, forms == Forms::one ? nullptr : &header->indefinite,
                        depth)) {
      return false;
    }
    *this = in;
    return true;
  }

  /// Takes the header of a value of definite length in the one form of its tag.
  [[gnu::always_inline]] bool read_header(uint32_t impl_tag, uint8_t own_tag, uint32_t *length,
                                          uint32_t depth) {
    Header header;
    if (!read_header(impl_tag, own_tag, Forms::one, &header, depth)) return false;
    *length = header.length;
    return true;
  }

  /// Whether the next octet, which there must be, has the constructed bit where a tag has it.
  /// read_tag() does not ask for it.
  bool has_form_of(uint8_t own_tag) const {
    return (own_tag & tag::constructed) == 0 || (*z_ & tag::constructed) != 0;
  }

  /// Takes a header of an exact type, whose content lies whole in front of the end.
  [[gnu::always_inline]] bool read_exact_header(uint32_t impl_tag, uint8_t own_tag, Forms forms,
                                                Header *header, uint32_t depth) {
    Reader in = *this;
    if (!in.read_header(impl_tag, own_tag, forms, header, depth) || !has_form_of(own_tag) ||
        header->length > INT32_MAX) {
      return false;
    }
    *this = in;
    return true;
  }

  /// The content after a header of an exact type. An indefinite one ends with the first
  /// end-of-contents that stands where an element could begin.
  inline ContentReader exact_content(const Header &header) const;

  /// Takes an end-of-contents.
  bool read_eoc() {
    if (left() < 2 || z_[0] != 0 || z_[1] != 0) return false;
    z_ += 2;
    return true;
  }

 private:
  [[gnu::cold]] static bool overrun(uint32_t depth) {
    asn1_LogMessage(depth, "z larger than end!\n");
    return false;
  }

  const uint8_t *z_;
  const uint8_t *end_;
};

/// The content of an element, which also knows where the octets end that the element was read from:
/// some fields, and every end-of-contents, may stand past the content, but never past those.
class ContentReader : public Reader {
 public:
  ContentReader(const uint8_t *z, const uint8_t *end, const uint8_t *outer_end)
      : Reader(z, end), outer_end_(outer_end) {}

  /// The next octet, even where it lies past the content; -1 at the end of the input.
  int peek_outer() const { return Reader(position(), outer_end_).peek(); }

  /// Whether another element of an exact type follows: none has the identifier octet 0.
  bool element_follows() const { return peek() > 0; }

  /// Takes what ends the content of an exact type: nothing, or the end-of-contents.
  bool close(const Header &header) { return header.indefinite ? read_eoc() : at_end(); }

  /// Takes an end-of-contents, even where it lies past the content.
  bool read_outer_eoc() {
    Reader outer(position(), outer_end_);
    if (!outer.read_eoc()) return false;
    move_to(outer.position());
    return true;
  }

 private:
  const uint8_t *outer_end_;
};

inline ContentReader Reader::content(uint32_t length) const {
  return {z_, left() < length || length > INT32_MAX ? z_ : z_ + length, end_};
}

inline ContentReader Reader::content(const Header &header) const {
  if (!header.indefinite) return content(header.length);
  return {z_, left() < 2 ? z_ : end_ - 2, end_};
}

inline ContentReader Reader::exact_content(const Header &header) const {
  return header.indefinite ? ContentReader(z_, end_, end_) : content(header.length);
}

/// The number of length octets of the shortest definite form.
constexpr uint32_t length_octets(uint32_t length) {
  if (length < 0x80) return 1;
  if (length < 0x100) return 2;
  if (length < 0x10000) return 3;
  if (length < 0x1000000) return 4;
  return 5;
}

constexpr uint32_t header_octets(uint32_t length) { return 1 + length_octets(length); }

/// The octets of an element with `content` content octets; 0 where that does not fit 32 bits.
inline uint32_t element_octets(uint32_t content) {
  uint32_t whole;
  return __builtin_add_overflow(content, header_octets(content), &whole) ? 0 : whole;
}

/// The size of an encoding as its parts are measured. A part of no octets is a failure, and so is a
/// sum that does not fit 32 bits: what cannot be counted must not be written.
class Measure {
 public:
  bool add(uint32_t octets) { return octets != 0 && !__builtin_add_overflow(sum_, octets, &sum_); }
  uint32_t content() const { return sum_; }
  /// The content with a header in front of it; 0 where that does not fit 32 bits.
  uint32_t element() const { return element_octets(sum_); }

 private:
  uint32_t sum_ = 0;
};

/// Writes the elements of universal types, in a buffer that its caller has measured.
class Writer {
 public:
  explicit Writer(uint8_t **pp) : pp_(pp) {}

  void octet(uint8_t value) { *(*pp_)++ = value; }

  void octets(const void *bytes, uint32_t count) {
    if (count == 0) return;
    std::memcpy(*pp_, bytes, count);
    *pp_ += count;
  }

  void length(uint32_t length) {
    const uint32_t count = length_octets(length);
    if (count == 1) {
      octet(static_cast<uint8_t>(length));
      return;
    }
    octet(static_cast<uint8_t>(0x80 | (count - 1)));
    for (uint32_t i = count - 1; i != 0; --i) octet(static_cast<uint8_t>(length >> (8 * (i - 1))));
  }

  void header(uint8_t identifier, uint32_t content) {
    octet(identifier);
    length(content);
  }

 private:
  uint8_t **pp_;
};

/// Writes from the end of a measured buffer towards its beginning: the content of an element stands
/// before its header is written, so no length has to be measured again, whatever the depth. What
/// does not fit is not written, and fails.
class BackWriter {
 public:
  BackWriter(uint8_t *start, uint32_t octets) : start_(start), z_(start + octets) {}

  /// Makes room in front of what was written. Returns where it begins, or a null pointer.
  uint8_t *room(uint32_t count) {
    if (count > left()) {
      failed_ = true;
      return nullptr;
    }
    z_ -= count;
    return z_;
  }

  void octets(const void *bytes, uint32_t count) {
    if (count == 0) return;
    if (uint8_t *const to = room(count)) std::memcpy(to, bytes, count);
  }

  void header(uint8_t identifier, uint32_t content) {
    if (uint8_t *to = room(header_octets(content))) Writer(&to).header(identifier, content);
  }

  /// Writes what `encode(pp)` does, which writes forward and measures without `pp`.
  template <class Encode>
  void element(Encode encode) {
    const uint32_t count = encode(nullptr);  // 0 where memory has run out since the measuring
    uint8_t *to = count == 0 ? nullptr : room(count);
    if (to == nullptr || encode(&to) != count) failed_ = true;
  }

  /// Puts the class and number of `identifier` in place of those of the element written last.
  void retag(uint8_t identifier) {
    if (failed_) return;
    *z_ = static_cast<uint8_t>((identifier & ~tag::constructed) | (*z_ & tag::constructed));
  }

  /// The octets in front of what was written, which are the less the more is written.
  uint32_t left() const { return static_cast<uint32_t>(z_ - start_); }

  void fail() { failed_ = true; }

  /// Whether the buffer is full, and nothing failed.
  bool complete() const { return !failed_ && z_ == start_; }

 private:
  uint8_t *start_;
  uint8_t *z_;
  bool failed_ = false;
};

}  // namespace asn1

#endif
