// What the content of a universal type must be in the RFCs' forms. The decoders and the explanation
// share it: each rule stands once, and says what is wrong.
#ifndef ORVELPKI_FORMS_CONTENT_H
#define ORVELPKI_FORMS_CONTENT_H

#include "core/cursor.h"
#include "core/type.h"

namespace pki {

using asn1::ContentReader;
using asn1::Forms;
using asn1::Header;
using asn1::Reader;
using asn1::Type;
namespace tag = asn1::tag;

/// Octets of the input.
struct View {
  const uint8_t *data = nullptr;
  uint32_t length = 0;
};

/// Why a content is refused; a null pointer where it is not. The content is that of a primitive
/// value.
using Refusal = const char *;

/// One octet; the number of an ENUMERATED is not negative.
inline Refusal refuse_boolean(View content) {
  return content.length == 1 ? nullptr : "a BOOLEAN that is not one octet";
}
inline Refusal refuse_enumerated(View content) {
  return content.length == 1 && content.data[0] < 0x80 ? nullptr
                                                       : "an ENUMERATED that is not 0 to 127";
}

inline Refusal refuse_null(View content) {
  return content.length == 0 ? nullptr : "a NULL with content";
}

/// X.690, 8.3.1 and 8.3.2.
inline Refusal refuse_integer(View content) {
  if (content.length == 0) return "an INTEGER without content";
  if (content.length == 1) return nullptr;
  const bool all_zeros = content.data[0] == 0 && content.data[1] < 0x80;
  const bool all_ones = content.data[0] == 0xFF && content.data[1] >= 0x80;
  return all_zeros || all_ones ? "an INTEGER with needless octets" : nullptr;
}

/// X.690, 8.19.2. `most` is the number of octets that there may be, or 0.
inline Refusal refuse_identifier(View content, uint32_t most) {
  if (content.length == 0) return "an OBJECT IDENTIFIER without content";
  if (most != 0 && content.length > most) return "an OBJECT IDENTIFIER too long for a name";
  bool starts = true;
  for (uint32_t i = 0; i < content.length; ++i) {
    if (starts && content.data[i] == 0x80) return "an OBJECT IDENTIFIER with needless octets";
    starts = content.data[i] < 0x80;
  }
  return starts ? nullptr : "an OBJECT IDENTIFIER that does not end with its element";
}

/// Visible characters, so that the text of the record is the whole content.
inline Refusal refuse_time(View content) {
  if (content.length == 0) return "a time without characters";
  for (uint32_t i = 0; i < content.length; ++i) {
    if (content.data[i] < 0x20 || content.data[i] > 0x7E) return "a time with other characters";
  }
  return nullptr;
}

/// Takes the header and the content of a primitive value.
[[gnu::always_inline]] inline bool take_primitive(Reader &in, uint32_t impl_tag, uint8_t own_tag,
                                                  uint32_t depth, View *content) {
  Header header;
  if (!in.read_exact_header(impl_tag, own_tag, Forms::one, &header, depth)) return false;
  content->length = header.length;
  return in.take(header.length, &content->data);
}

/// The header of an element under any tag (X.690, 8.1.2 and 8.1.3): an identifier octet other than
/// 0, the further ones of a large tag number, and the length octets. An indefinite length needs the
/// constructed form.
inline Refusal take_any_header(Reader &in, Header *header) {
  Reader from = in;
  uint8_t octet = 0;
  if (!from.read_octet(&octet) || octet == 0) return "expected an element";
  if ((octet & tag::number) == tag::number) {
    uint8_t more = 0;
    do {
      if (!from.read_octet(&more)) return "the input ends inside the identifier octets";
    } while (more >= 0x80);
  }
  header->constructed = (octet & tag::constructed) != 0;
  header->indefinite = false;
  if (!from.read_length(&header->length, &header->indefinite, 0) || header->length > INT32_MAX) {
    return "a length that does not fit the input";
  }
  if (header->indefinite && !header->constructed) return "a primitive of indefinite length";
  in = from;
  return nullptr;
}

/// Takes the header of an element of one identifier octet and one length octet, which lies whole in
/// front of the end: most small ones. False, with nothing taken, for any other.
[[gnu::always_inline]] inline bool take_small_header(Reader &in, uint32_t *length) {
  if (in.left() < 2) return false;
  const uint8_t octet = in.position()[0];
  *length = in.position()[1];
  if (octet == 0 || (octet & tag::number) == tag::number || *length >= 0x80 ||
      in.left() - 2 < *length) {
    return false;
  }
  in.move_to(in.position() + 2);
  return true;
}

/// Takes an element that take_small_header() leaves to it.
[[gnu::noinline]] inline Refusal take_large(Reader &in, const uint8_t **at) {
  Reader from = in;
  uint64_t open = 0;  // elements of indefinite length
  do {
    *at = from.position();
    if (open != 0 && from.read_eoc()) {
      --open;
      continue;
    }
    Header header;
    if (const Refusal refusal = take_any_header(from, &header)) return refusal;
    if (header.indefinite) {
      ++open;
    } else {
      from.skip(header.length);  // which the length octets were held against
    }
  } while (open != 0);
  in = from;
  return nullptr;
}

/// Takes one element under any tag, whole. What stands in an element of definite length is not
/// looked at. `*at` is where it goes wrong.
[[gnu::always_inline]] inline Refusal take_any(Reader &in, const uint8_t **at) {
  uint32_t length = 0;
  if (take_small_header(in, &length)) {
    in.move_to(in.position() + length);
    return nullptr;
  }
  Reader from = in;  // whose address is taken: `in` stays in registers
  const Refusal refusal = take_large(from, at);
  in = from;
  return refusal;
}

/// The segments of a string, in order. A primitive string is one segment; the segments of a
/// constructed one (X.690, 8.6.3 and 8.7.3) may be constructed in turn, to a few levels.
class Segments {
 public:
  /// `segment_tag` is the identifier octet of a segment: that of BIT STRING, or of OCTET STRING for
  /// every string of octets (X.690, 8.23.6).
  Segments(const Reader &content, const Header &header, uint8_t segment_tag)
      : tag_(segment_tag), whole_(!header.constructed), at_(content.position()) {
    if (header.indefinite && whole_) refusal_ = "a primitive of indefinite length";
    open_[0] = {content.exact_content(header), header};
  }

  /// Takes the next segment. False past the last one, and where something is wrong.
  bool next(View *segment) {
    if (refusal_ != nullptr) return false;
    if (whole_) {
      if (levels_ == 0) return false;
      levels_ = 0;
      segment->length = open_[0].header.length;
      return open_[0].rest.take(segment->length, &segment->data);
    }
    while (levels_ != 0) {
      Open &value = open_[levels_ - 1];
      at_ = value.rest.position();
      if (!value.rest.element_follows()) {
        if (!value.rest.close(value.header)) return fail("expected the end-of-contents");
        const uint8_t *const past = value.rest.position();
        if (--levels_ != 0) open_[levels_ - 1].rest.move_to(past);
        continue;
      }
      Header header;
      if (!value.rest.read_exact_header(0, tag_, Forms::any, &header, 0)) {
        return fail("a segment with another header");
      }
      if (!header.constructed) {
        if (header.indefinite) return fail("a primitive of indefinite length");
        segment->length = header.length;
        return value.rest.take(header.length, &segment->data);
      }
      if (levels_ == max_levels) return fail("segments nested more deeply than is read");
      open_[levels_++] = {value.rest.exact_content(header), header};
    }
    return false;
  }

  /// What is wrong, and where; a null pointer where nothing is.
  Refusal refusal() const { return refusal_; }
  const uint8_t *at() const { return at_; }

  /// Past the string, when next() has returned false without a refusal.
  const uint8_t *end() const { return open_[0].rest.position(); }

 private:
  static constexpr unsigned max_levels = 8;

  struct Open {
    ContentReader rest{nullptr, nullptr, nullptr};
    Header header;
  };

  bool fail(Refusal refusal) {
    refusal_ = refusal;
    return false;
  }

  Open open_[max_levels];
  unsigned levels_ = 1;
  uint8_t tag_;
  bool whole_;
  Refusal refusal_ = nullptr;
  const uint8_t *at_;
};

/// The octets or bits of a string's segments, counted.
struct StringSize {
  uint32_t octets = 0;
  uint8_t unused = 0;  ///< bits at the end of a BIT STRING

  /// Adds the next segment, without the count of unused bits that stands in front of one of a BIT
  /// STRING: only the last segment may have some (X.690, 8.6.4).
  Refusal add(View *segment, bool bits) {
    if (bits) {
      if (segment->length == 0) return "a BIT STRING without its count of unused bits";
      if (unused != 0) return "unused bits in front of another segment";
      unused = segment->data[0];
      if (unused > 7) return "a BIT STRING with more than seven unused bits";
      if (segment->length == 1 && unused != 0) return "a BIT STRING with unused bits and no others";
      segment->data += 1;
      segment->length -= 1;
    }
    const uint32_t most = bits ? UINT32_MAX / 8 : UINT32_MAX;
    if (segment->length > most - octets) return "more octets than the library counts";
    octets += segment->length;
    return nullptr;
  }
};

/// Takes the content of a string whose header was taken. Returns the position past it, or a null
/// pointer with the reason and the place. `take(segment)` gets each segment's octets.
template <class Take>
const uint8_t *take_string(const Reader &content, const Header &header, bool bits, StringSize *size,
                           Refusal *refusal, const uint8_t **at, Take take) {
  Segments segments(content, header, bits ? tag::bit_string : tag::octet_string);
  View segment;
  *size = {};
  while (segments.next(&segment)) {
    *at = segment.data;
    *refusal = size->add(&segment, bits);
    if (*refusal != nullptr) return nullptr;
    take(segment);
  }
  *at = segments.at();
  *refusal = segments.refusal();
  return *refusal == nullptr ? segments.end() : nullptr;
}

/// The value of an attribute: an element of definite length under one identifier octet, whose
/// content is kept as it stands.
constexpr bool is_attribute_tag(int octet) {
  return octet > 0 && octet <= UINT8_MAX && (octet & tag::number) != tag::number;
}
inline Refusal refuse_attribute_value(Reader in) {
  if (in.peek() > 0 && !is_attribute_tag(in.peek())) {
    return "a tag number above 30, which the record cannot hold";
  }
  Header header;
  const Refusal refusal = take_any_header(in, &header);
  if (refusal != nullptr) return refusal;
  return header.indefinite ? "an indefinite length, which the library does not take here" : nullptr;
}

}  // namespace pki

#endif
