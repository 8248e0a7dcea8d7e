// Reads an input as its decoder does, through the same cursor and the same tables, without making
// records; says where and why it stops.
#include <cstdarg>
#include <cstdio>

#include "card/gdo.h"
#include "core/engine.h"
#include "core/stack.h"
#include "pkcs/pkcs.h"
#include "pki/forms/timestamps.h"
#include "pki/type.h"
#include "universal/content.h"

using namespace asn1;

namespace {

// ---------------------------------------------------------------------------------------------
// Words
// ---------------------------------------------------------------------------------------------

constexpr const char *universal_types[] = {"end-of-contents",
                                           "BOOLEAN",
                                           "INTEGER",
                                           "BIT STRING",
                                           "OCTET STRING",
                                           "NULL",
                                           "OBJECT IDENTIFIER",
                                           "ObjectDescriptor",
                                           "EXTERNAL",
                                           "REAL",
                                           "ENUMERATED",
                                           "EMBEDDED PDV",
                                           "UTF8String",
                                           "RELATIVE-OID",
                                           "TIME",
                                           "[UNIVERSAL 15]",
                                           "SEQUENCE",
                                           "SET",
                                           "NumericString",
                                           "PrintableString",
                                           "TeletexString",
                                           "VideotexString",
                                           "IA5String",
                                           "UTCTime",
                                           "GeneralizedTime",
                                           "GraphicString",
                                           "VisibleString",
                                           "GeneralString",
                                           "UniversalString",
                                           "CHARACTER STRING",
                                           "BMPString",
                                           "long tag"};
constexpr const char *tag_classes[] = {"", "[APPLICATION ", "[", "[PRIVATE "};

/// The name of an identifier octet.
struct TagName {
  char text[48];

  explicit TagName(uint8_t octet) { pki_identifier_name(octet, text, sizeof text); }
};

/// The way to a value: the names of fields and the numbers of elements, from the inside out.
struct Path {
  const Path *outer;
  const char *name = nullptr;  ///< of a field; a null pointer for an element
  uint32_t index = 0;          ///< of an element
};

/// Writes a path into a buffer; what does not fit is left out at its start.
template <size_t Size>
void write_path(const Path *path, char (&buffer)[Size]) {
  size_t start = Size - 1;
  buffer[start] = '\0';
  for (; path != nullptr; path = path->outer) {
    char number[16];
    const char *part = path->name;
    if (part == nullptr) {
      std::snprintf(number, sizeof number, "[%u]", path->index);
      part = number;
    }
    const size_t length = std::strlen(part);
    const size_t dot = buffer[start] != '\0' && buffer[start] != '[' ? 1 : 0;
    if (length + dot > start) break;
    start -= length + dot;
    std::memcpy(buffer + start, part, length);
    if (dot != 0) buffer[start + length] = '.';
  }
  std::memmove(buffer, buffer + start, Size - start);
}

// ---------------------------------------------------------------------------------------------
// The reading
// ---------------------------------------------------------------------------------------------

/// Octets of stack that are there for the first levels of any reading.
constexpr uintptr_t stack_for_granted = 0x2000;

class Explanation {
 public:
  Explanation(const uint8_t *start, pki_Fault *fault)
      : start_(start), fault_(fault), entry_(here()) {}

  /// Reads a value. Returns the cursor past it, or a null pointer with the fault filled in.
  const uint8_t *value(const Type &type, const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                       const Path *path);

 private:
  /// The numbers that a condition may ask for, of the fields that were read.
  struct Numbers {
    Integer views[2];
    uint16_t members[2];
    uint32_t count = 0;
  };

  static uintptr_t here() { return reinterpret_cast<uintptr_t>(__builtin_frame_address(0)); }

  [[gnu::format(printf, 4, 5)]] const uint8_t *fail(const uint8_t *at, const Path *path,
                                                    const char *format, ...);
  const uint8_t *fail_at_end(const uint8_t *at, const Path *path, const char *expected) {
    return fail(at, path, "expected %s, but the enclosing element ends", expected);
  }

  [[gnu::noinline]] const uint8_t *fail_expected(const Reader &in, const Path *path,
                                                 uint8_t expected, uint8_t or_else = 0);
  [[gnu::noinline]] const uint8_t *fail_found(const Reader &in, const Path *path, const char *why);

  bool header(Reader &in, uint32_t impl_tag, uint8_t own_tag, Forms forms, Header *header,
              const Path *path);
  void refuse_header(const Reader &in, uint8_t effective, Forms forms, const Path *path);
  void refuse_length(const Reader &in, const Path *path);
  bool has_stack(const uint8_t *at, const Path *path);

  // The same for exact types, the forms of the RFCs.
  bool exact_header(Reader &in, uint32_t impl_tag, uint8_t own_tag, Forms forms, Header *header,
                    const Path *path);
  bool close(ContentReader &in, const Header &header, const Path *path);
  [[gnu::noinline]] const uint8_t *exact_value(const Type &type, Reader in, uint32_t impl_tag,
                                               const Path *path);
  [[gnu::noinline]] const uint8_t *exact_primitive(const Type &type, Reader in, uint32_t impl_tag,
                                                   const Path *path);
  [[gnu::noinline]] const uint8_t *exact_string(const Type &type, Reader in, uint32_t impl_tag,
                                                const Path *path);
  [[gnu::noinline]] const uint8_t *exact_any(const Type &type, Reader in, const Path *path);
  [[gnu::noinline]] const uint8_t *exact_elements(const Type &type, Reader in, uint32_t impl_tag,
                                                  const Path *path);

  // Each level of a nesting has the frames of value() and of the functions that enter it again. They
  // are small: no function is inlined into value(), and a buffer for a refusal is in none of them.
  [[gnu::noinline]] const uint8_t *number(const Type &type, Reader in, uint32_t impl_tag,
                                          const Path *path);
  [[gnu::noinline]] const uint8_t *integer(Reader in, uint32_t impl_tag, const Path *path);
  [[gnu::noinline]] const uint8_t *null(Reader in, uint32_t impl_tag, const Path *path);
  [[gnu::noinline]] const uint8_t *any(Reader in, const Path *path);
  [[gnu::noinline]] const uint8_t *identifier(Reader in, uint32_t impl_tag, const Path *path);
  [[gnu::noinline]] const uint8_t *time(const Type &type, Reader in, uint32_t impl_tag,
                                        const Path *path);
  template <class Content>
  [[gnu::noinline]] const uint8_t *string(Reader in, uint32_t impl_tag, uint8_t own_tag,
                                          const Path *path);
  [[gnu::noinline]] const uint8_t *attribute_value(Reader in, const Path *path);
  [[gnu::noinline]] const uint8_t *elements(const Type &type, Reader in, uint32_t impl_tag,
                                            const Path *path);
  [[gnu::noinline]] const uint8_t *name(const Type &type, Reader in, uint32_t impl_tag,
                                        const Path *path);
  [[gnu::noinline]] const uint8_t *choice(const Type &type, Reader in, const Path *path);
  [[gnu::noinline]] const uint8_t *sequence(const Type &type, Reader in, uint32_t impl_tag,
                                            const Path *path);
  [[gnu::noinline]] const uint8_t *message(Reader in, uint32_t impl_tag, const Path *path);
  [[gnu::noinline]] const uint8_t *card_object(const Type &type, Reader in, const Path *path);
  [[gnu::noinline]] const uint8_t *card_identifier(Reader in, const Path *path);

  template <class Content>
  const uint8_t *segments(const Reader &in, const Header &header, uint8_t own_tag, const Path *path,
                          uint32_t *octets);
  template <class Content>
  bool take(Reader &in, const Header &header, const Path *path, Octets *octets);
  const uint8_t *tagged(const Field &field, Reader in, const Path *path);
  bool field(const Type &type, const Field &field, ContentReader &in, Numbers *numbers,
             const Path *path);
  [[gnu::noinline]] static bool allowed(const Type &type, const Field &field,
                                        const Numbers &numbers);
  [[gnu::noinline]] const uint8_t *refuse_choice(const Type &type, const Reader &in,
                                                 const Path *path);

  const uint8_t *const start_;
  pki_Fault *const fault_;
  const uintptr_t entry_;
  bool in_text_ = false;  ///< inside a name that becomes a text
};

// The compiler checks the arguments against the format.
// NOLINTNEXTLINE(cert-dcl50-cpp)
const uint8_t *Explanation::fail(const uint8_t *at, const Path *path, const char *format, ...) {
  const auto offset = static_cast<size_t>(at - start_);
  fault_->offset = offset > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(offset);
  write_path(path, fault_->path);
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(fault_->sentence, sizeof fault_->sentence, format, arguments);
  va_end(arguments);
  return nullptr;
}

/// Refuses the identifier octet that comes next, or the end, where another is expected.
const uint8_t *Explanation::fail_expected(const Reader &in, const Path *path, uint8_t expected,
                                          uint8_t or_else) {
  const TagName first(expected), second(or_else);
  char names[sizeof first.text + sizeof second.text + 4];
  std::snprintf(names, sizeof names, "%s%s%s", first.text, or_else != 0 ? " or " : "",
                or_else != 0 ? second.text : "");
  if (in.at_end()) return fail_at_end(in.position(), path, names);
  return fail(in.position(), path, "expected %s, found %s", names,
              TagName(static_cast<uint8_t>(in.peek())).text);
}

/// Refuses an element that may not be there.
const uint8_t *Explanation::fail_found(const Reader &in, const Path *path, const char *why) {
  return fail(in.position(), path, "found %s, %s", TagName(static_cast<uint8_t>(in.peek())).text,
              why);
}

// What nests is refused where the stack of the thread is used up. The C library is asked for its
// bounds only when some of it was used.
bool Explanation::has_stack(const uint8_t *at, const Path *path) {
  if (entry_ - here() < stack_for_granted || stack_for_nested()) return true;
  fail(at, path, "values nested more deeply than the stack allows");
  return false;
}

// ---------------------------------------------------------------------------------------------
// Headers
// ---------------------------------------------------------------------------------------------

bool Explanation::header(Reader &in, uint32_t impl_tag, uint8_t own_tag, Forms forms,
                         Header *header, const Path *path) {
  if (in.read_header(impl_tag, own_tag, forms, header, 0)) return true;
  const auto implicit = static_cast<uint8_t>(impl_tag);
  refuse_header(
      in, static_cast<uint8_t>((implicit != 0 ? implicit : own_tag) | (own_tag & tag::constructed)),
      forms, path);
  return false;
}

void Explanation::refuse_header(const Reader &in, uint8_t effective, Forms forms,
                                const Path *path) {
  const int found = in.peek();
  const bool other_form = ((found & ~effective) & tag::constructed) != 0 && forms != Forms::any;
  if (found < 0 || ((found ^ effective) & ~tag::constructed) != 0 || other_form) {
    fail_expected(in, path, effective);
    return;
  }
  refuse_length(in, path);
}

/// Says what is wrong with the length of an element whose identifier octet is taken. An indefinite
/// length is refused only where none is taken.
void Explanation::refuse_length(const Reader &in, const Path *path) {
  const uint8_t *const at = in.position();
  Reader rest = in;
  rest.skip(1);
  uint8_t first = 0;
  if (!rest.read_octet(&first)) {
    fail(at, path, "the input ends after the identifier octet %02X",
         static_cast<unsigned>(in.peek()));
    return;
  }
  const unsigned count = first & 0x7F;
  if (first == 0x80) {
    fail(at, path, "an indefinite length, which the library does not take here");
    return;
  }
  if (first >= 0x80 && count > 4) {
    fail(at, path, "a length of %u octets, where four are the most", count);
    return;
  }
  uint32_t length = first;
  if (first >= 0x80) {
    if (rest.left() < count) {
      fail(at, path, "the input ends inside the length octets");
      return;
    }
    length = 0;
    for (unsigned i = 0; i < count; ++i) {
      uint8_t octet = 0;
      rest.read_octet(&octet);
      length = length << 8 | octet;
    }
  }
  char octets[3 * 6 + 1];
  size_t written = 0;
  for (const uint8_t *octet = at; octet != rest.position(); ++octet) {
    written += static_cast<size_t>(std::snprintf(octets + written, sizeof octets - written,
                                                 "%s%02X", written == 0 ? "" : " ", *octet));
  }
  fail(at, path, "the header %s promises %u octets, but only %zu are left", octets, length,
       rest.left());
}

// ---------------------------------------------------------------------------------------------
// The forms of the RFCs
// ---------------------------------------------------------------------------------------------

bool Explanation::exact_header(Reader &in, uint32_t impl_tag, uint8_t own_tag, Forms forms,
                               Header *header, const Path *path) {
  const Reader from = in;
  if (!in.at_end() && !in.has_form_of(own_tag)) {
    const auto implicit = static_cast<uint8_t>(impl_tag);
    fail_expected(in, path,
                  static_cast<uint8_t>((implicit != 0 ? implicit : own_tag) | tag::constructed));
    return false;
  }
  if (!this->header(in, impl_tag, own_tag, forms, header, path)) return false;
  if (header->length <= INT32_MAX) return true;
  fail(from.position(), path, "a length of %u octets", header->length);
  return false;
}

/// Whether the content is used up.
bool Explanation::close(ContentReader &in, const Header &header, const Path *path) {
  if (in.close(header)) return true;
  if (in.at_end()) {
    fail_at_end(in.position(), path, "the end-of-contents");
  } else {
    fail_found(in, path, "where the value ends");
  }
  return false;
}

const uint8_t *Explanation::exact_value(const Type &type, Reader in, uint32_t impl_tag,
                                        const Path *path) {
  const auto is = [&type](auto... kinds) { return ((type.kind == kinds) || ...); };
  if (is(Kind::any, Kind::attribute_value)) return exact_any(type, in, path);
  if (is(Kind::bit_string, Kind::octet_string, Kind::character_string)) {
    return exact_string(type, in, impl_tag, path);
  }
  if (is(Kind::sequence_of, Kind::set_of)) return exact_elements(type, in, impl_tag, path);
  return exact_primitive(type, in, impl_tag, path);
}

/// Why the content of a primitive value is refused. `*at`, which is where it begins, may be moved
/// to where it goes wrong.
pki::Refusal refuse_content(const Type &type, pki::View content, const uint8_t **at) {
  const Kind kind = type.kind;
  if (kind == Kind::boolean) return pki::refuse_boolean(content);
  if (kind == Kind::enumerated) return pki::refuse_enumerated(content);
  if (kind == Kind::integer) return pki::refuse_integer(content);
  if (kind == Kind::null) return pki::refuse_null(content);
  if (kind == Kind::object_identifier) return pki::refuse_identifier(content, type.most);
  if (kind == Kind::utc_time || kind == Kind::generalized_time) return pki::refuse_time(content);
  return pki::refuse_timestamps(content, at);
}

const uint8_t *Explanation::exact_primitive(const Type &type, Reader in, uint32_t impl_tag,
                                            const Path *path) {
  Header head;
  if (!exact_header(in, impl_tag, type.identifier, Forms::one, &head, path)) return nullptr;
  const uint8_t *at = in.position();
  const pki::View content{at, head.length};
  in.skip(head.length);  // which the header was held against
  const pki::Refusal refusal = refuse_content(type, content, &at);
  return refusal == nullptr ? in.position() : fail(at, path, "%s", refusal);
}

const uint8_t *Explanation::exact_string(const Type &type, Reader in, uint32_t impl_tag,
                                         const Path *path) {
  Header head;
  if (!exact_header(in, impl_tag, type.identifier, Forms::any, &head, path)) return nullptr;
  pki::StringSize size;
  pki::Refusal refusal = nullptr;
  const uint8_t *at = in.position();
  const uint8_t *const next = pki::take_string(in, head, type.kind == Kind::bit_string, &size,
                                               &refusal, &at, [](pki::View) {});
  return next != nullptr ? next : fail(at, path, "%s", refusal);
}

const uint8_t *Explanation::exact_any(const Type &type, Reader in, const Path *path) {
  if (type.kind == Kind::attribute_value) {
    const pki::Refusal refusal = pki::refuse_attribute_value(in);
    if (refusal != nullptr) return fail(in.position(), path, "%s", refusal);
  } else if (type.identifier != tag::any && in.peek() != type.identifier) {
    return fail_expected(in, path, type.identifier);
  }
  const uint8_t *at = in.position();
  const pki::Refusal refusal = pki::take_any(in, &at);
  return refusal == nullptr ? in.position() : fail(at, path, "%s", refusal);
}

const uint8_t *Explanation::exact_elements(const Type &type, Reader in, uint32_t impl_tag,
                                           const Path *path) {
  Header head;
  if (!exact_header(in, impl_tag, type.identifier, Forms::indefinite, &head, path)) return nullptr;
  ContentReader content = in.exact_content(head);
  Path inner{path};
  for (; content.element_follows(); ++inner.index) {
    const uint8_t *const next = value(*type.element, content.position(), content.end(), 0, &inner);
    if (next == nullptr) return nullptr;
    content.move_to(next);
  }
  return close(content, head, path) ? content.position() : nullptr;
}

// ---------------------------------------------------------------------------------------------
// Universal types
// ---------------------------------------------------------------------------------------------

/// BOOLEAN or ENUMERATED. At the end of the range nothing is read and nothing is wrong.
const uint8_t *Explanation::number(const Type &type, Reader in, uint32_t impl_tag,
                                   const Path *path) {
  if (in.at_end()) return in.position();
  Header head;
  if (!header(in, impl_tag, type.identifier, Forms::one, &head, path)) return nullptr;
  if (head.length != 1) {
    return fail(in.position(), path, "%s that is not one octet",
                type.kind == Kind::boolean ? "a BOOLEAN" : "an ENUMERATED");
  }
  in.skip(head.length);  // which the header was held against
  return in.position();
}

const uint8_t *Explanation::integer(Reader in, uint32_t impl_tag, const Path *path) {
  Header head;
  if (!header(in, impl_tag, tag::integer, Forms::one, &head, path)) return nullptr;
  if (head.length == 0) return fail(in.position(), path, "an INTEGER without content");
  if (!in.skip(head.length)) return fail(in.position(), path, "a length of %u octets", head.length);
  return in.position();
}

const uint8_t *Explanation::null(Reader in, uint32_t impl_tag, const Path *path) {
  Header head;
  return header(in, impl_tag, tag::null, Forms::one, &head, path) ? in.position() : nullptr;
}

const uint8_t *Explanation::any(Reader in, const Path *path) {
  const Reader element = in;
  if (!in.skip(1)) return fail_at_end(in.position(), path, "an element");
  uint32_t length = 0;
  if (!in.read_length(&length, nullptr, 0)) {
    refuse_length(element, path);
    return nullptr;
  }
  if (!in.skip(length)) return fail(in.position(), path, "a length of %u octets", length);
  return in.position();
}

const uint8_t *Explanation::identifier(Reader in, uint32_t impl_tag, const Path *path) {
  Header head;
  if (!header(in, impl_tag, tag::object_identifier, Forms::one, &head, path)) return nullptr;
  for (uint32_t numbers = arcs_of(in.content(head.length)) - 1; numbers != 0; --numbers) {
    uint32_t arc = 0;
    const uint8_t *const at = in.position();
    if (!read_subidentifier(&in, &arc)) {
      return fail(at, path, "an OBJECT IDENTIFIER with an arc of more than 32 bits");
    }
  }
  return in.position();
}

const uint8_t *Explanation::time(const Type &type, Reader in, uint32_t impl_tag, const Path *path) {
  Header head;
  if (!header(in, impl_tag, type.identifier, Forms::one, &head, path)) return nullptr;
  if (!in.skip(head.length)) return fail(in.position(), path, "a length of %u octets", head.length);
  return in.position();
}

/// Takes the content of a primitive string.
template <class Content>
bool Explanation::take(Reader &in, const Header &header, const Path *path, Octets *octets) {
  const Reader from = in;
  Content content;
  if (content.take(&in, header, 0, octets)) return true;
  constexpr bool is_bits = Content::units != 1;
  const int first = from.peek();
  if (is_bits && (first < 0 || (!header.indefinite && header.length == 0))) {
    fail(from.position(), path, "a BIT STRING without its count of unused bits");
  } else if (is_bits && first > 7) {
    fail(from.position(), path, "a BIT STRING with more than seven unused bits");
  } else if (is_bits && header.length == 1) {
    fail(from.position(), path, "a BIT STRING with unused bits and no others");
  } else if (header.indefinite) {
    fail(from.position(), path, "a string of indefinite length without its end-of-contents");
  } else {
    fail(from.position(), path, "a length of %u octets", header.length);
  }
  return false;
}

template <class Content>
const uint8_t *Explanation::string(Reader in, uint32_t impl_tag, uint8_t own_tag,
                                   const Path *path) {
  Header head;
  if (!header(in, impl_tag, own_tag, Forms::any, &head, path)) return nullptr;
  uint32_t joined = 0;
  if (head.constructed) return segments<Content>(in, head, own_tag, path, &joined);
  Octets octets;
  return take<Content>(in, head, path, &octets) ? in.position() : nullptr;
}

/// The segments of a constructed string, which carry `own_tag` and may be constructed in turn.
template <class Content>
const uint8_t *Explanation::segments(const Reader &in, const Header &header, uint8_t own_tag,
                                     const Path *path, uint32_t *octets) {
  if (!has_stack(in.position(), path)) return nullptr;
  if (header.indefinite && in.left() < 2) {
    return fail(in.position(), path,
                "expected the end-of-contents, but the enclosing element ends");
  }
  ContentReader rest = in.content(header);
  while (!(header.indefinite ? rest.read_outer_eoc() : rest.at_end())) {
    Header segment;
    if (!this->header(rest, 0, own_tag, Forms::any, &segment, path)) return nullptr;
    if (segment.constructed) {
      const uint8_t *const next = segments<Content>(rest, segment, own_tag, path, octets);
      if (next == nullptr) return nullptr;
      rest.move_to(next);
      continue;
    }
    Octets taken;
    if (!take<Content>(rest, segment, path, &taken)) return nullptr;
    if (taken.count > Content::limit - *octets) {
      return fail(rest.position(), path, "segments of more octets than the library counts");
    }
    *octets += taken.count;
  }
  return rest.position();
}

// ---------------------------------------------------------------------------------------------
// Names and lists
// ---------------------------------------------------------------------------------------------

/// A string under any identifier octet. The text of a name has two digits for it.
const uint8_t *Explanation::attribute_value(Reader in, const Path *path) {
  constexpr int too_large_for_a_text = 100;
  const int octet = in.peek();
  if (octet < 0) return fail_at_end(in.position(), path, "an element");
  const auto own_tag = static_cast<uint8_t>(octet);
  if (in_text_ && octet >= too_large_for_a_text) {
    return fail(in.position(), path, "expected an identifier octet below %d, found %s",
                too_large_for_a_text, TagName(own_tag).text);
  }
  return string<OctetContent>(in, 0, own_tag, path);
}

const uint8_t *Explanation::elements(const Type &type, Reader in, uint32_t impl_tag,
                                     const Path *path) {
  Header head;
  if (!header(in, impl_tag, type.identifier, Forms::indefinite, &head, path)) return nullptr;
  ContentReader content = in.content(head);
  Path inner{path};
  for (; !content.at_end(); ++inner.index) {
    const uint8_t *const next = value(*type.element, content.position(), content.end(), 0, &inner);
    if (next == nullptr) return nullptr;
    content.move_to(next);
  }
  if (head.indefinite && !content.read_outer_eoc()) {
    return fail(content.position(), path, "expected the end-of-contents");
  }
  return content.position();
}

const uint8_t *Explanation::name(const Type &type, Reader in, uint32_t impl_tag, const Path *path) {
  const bool outer = in_text_;
  in_text_ = true;
  const uint8_t *const next = elements(type, in, impl_tag, path);
  in_text_ = outer;
  if (next == nullptr) return nullptr;
  Reader list = in;
  Header head;
  list.read_header(impl_tag, type.identifier, Forms::indefinite, &head, 0);
  if (list.content(head).at_end()) {
    return fail(in.position(), path, "the list is empty, and at least one element is needed");
  }
  return next;
}

// ---------------------------------------------------------------------------------------------
// SEQUENCE and CHOICE
// ---------------------------------------------------------------------------------------------

const uint8_t *Explanation::tagged(const Field &field, Reader in, const Path *path) {
  if (field.tagging != Tagging::explicit_tag) {
    return value(*field.type, in.position(), in.end(), field.tag, path);
  }
  // A tag of 0 is found by another octet, and then read as one that never stands there.
  if (field.tag == 0) {
    return fail_found(in, path, "which the library refuses here");
  }
  Header head;
  const auto wrapper = static_cast<uint8_t>(field.tag | tag::constructed);
  if (field.type->exact) {
    if (!exact_header(in, 0, wrapper, Forms::indefinite, &head, path)) return nullptr;
    ContentReader inside = in.exact_content(head);
    const uint8_t *const next = value(*field.type, inside.position(), inside.end(), 0, path);
    if (next == nullptr) return nullptr;
    inside.move_to(next);
    return close(inside, head, path) ? inside.position() : nullptr;
  }
  if (!header(in, 0, wrapper, Forms::one, &head, path)) return nullptr;
  const Reader content = in.content(head.length);
  return value(*field.type, content.position(), content.end(), 0, path);
}

const uint8_t *Explanation::choice(const Type &type, Reader in, const Path *path) {
  const int octet = in.peek();
  if (octet < 0) return fail_at_end(in.position(), path, "one of several alternatives");
  // The record of liborvelasn1's Time has the whole identifier octet for its kind.
  const int kind = type.other_identifier != 0 && !type.exact ? octet : octet & tag::number;
  for (uint16_t i = 0; i < type.count; ++i) {
    const Path inner{path, type.fields[i].name};
    if (type.fields[i].kind == kind) return tagged(type.fields[i], in, &inner);
  }
  return refuse_choice(type, in, path);
}

const uint8_t *Explanation::refuse_choice(const Type &type, const Reader &in, const Path *path) {
  char expected[160];
  size_t written = 0;
  for (uint16_t i = 0; i < type.count && written < sizeof expected; ++i) {
    const TagName one(type.fields[i].found_by);
    written += static_cast<size_t>(std::snprintf(expected + written, sizeof expected - written,
                                                 "%s%s", i == 0 ? "" : ", ", one.text));
  }
  return fail(in.position(), path, "expected one of %s, found %s", expected,
              TagName(static_cast<uint8_t>(in.peek())).text);
}

/// Whether a field may be there, by what its condition says of the numbers read before.
bool Explanation::allowed(const Type &type, const Field &field, const Numbers &numbers) {
  alignas(void *) char record[256] = {};
  if (type.size > sizeof record) return true;
  for (uint32_t i = 0; i < numbers.count; ++i) {
    const void *const view = &numbers.views[i];
    std::memcpy(record + numbers.members[i], &view, sizeof view);
  }
  return field.condition->holds(record);
}

bool Explanation::field(const Type &type, const Field &field, ContentReader &in, Numbers *numbers,
                        const Path *path) {
  if (!is_there(field, in)) return true;
  const uint8_t *const from = in.position();
  const Path inner{path, field.name};
  if (field.condition != nullptr && !allowed(type, field, *numbers)) {
    fail_found(in, &inner, field.condition->otherwise);
    return false;
  }
  const uint8_t *const next = tagged(field, in, &inner);
  if (next == nullptr) return false;
  in.move_to(next);
  if (field.kept != no_member && next == from) {
    fail(from, &inner, "no octets to keep");
    return false;
  }
  if (field.type->kind == Kind::integer && numbers->count < std::size(numbers->views)) {
    // An explicit tag may have more content than the number.
    Reader rest(from, in.end());
    uint32_t length = 0;
    if (field.tagging == Tagging::explicit_tag) rest.read_header(0, field.found_by, &length, 0);
    if (rest.read_header(0, tag::integer, &length, 0) && length != 0) {
      const bool zero_first = rest.peek() == 0;
      numbers->members[numbers->count] = field.member;
      numbers->views[numbers->count++] = {
          zero_first ? length - 1 : length,
          const_cast<uint8_t *>(zero_first ? rest.position() + 1 : rest.position()), 0};
    }
  }
  return true;
}

const uint8_t *Explanation::sequence(const Type &type, Reader in, uint32_t impl_tag,
                                     const Path *path) {
  Header head;
  const bool taken =
      type.exact ? exact_header(in, impl_tag, type.identifier, Forms::indefinite, &head, path)
                 : header(in, impl_tag, tag::sequence,
                          type.any_length ? Forms::indefinite : Forms::one, &head, path);
  if (!taken) return nullptr;
  ContentReader content = type.exact ? in.exact_content(head) : in.content(head);
  Numbers numbers;
  for (uint16_t i = 0; i < type.count; ++i) {
    if (!field(type, type.fields[i], content, &numbers, path)) return nullptr;
  }
  if (type.exact) return close(content, head, path) ? content.position() : nullptr;
  if (head.indefinite && !content.read_outer_eoc()) {
    return fail(content.position(), path, "expected the end-of-contents");
  }
  return content.position();
}

// ---------------------------------------------------------------------------------------------
// Messages
// ---------------------------------------------------------------------------------------------

/// Whether a well-formed identifier is the registry's `wanted`.
bool is_identifier(Reader in, const ObjId *wanted) {
  uint32_t length = 0;
  in.read_header(0, tag::object_identifier, &length, 0);
  const uint32_t arcs = arcs_of(in.content(length));
  if (arcs != wanted->count) return false;
  for (uint32_t i = 1; i < arcs; ++i) {
    uint32_t value = 0;
    read_subidentifier(&in, &value);
    if (i == 1 && value / 40 != wanted->arcs[0]) return false;
    if ((i == 1 ? value % 40 : value) != wanted->arcs[i]) return false;
  }
  return true;
}

const Type &type_of_content(const Reader &identifier) {
  if (is_identifier(identifier, asn1_Get_data())) return OctetStringType;
  if (is_identifier(identifier, asn1_Get_signedData())) return SignedDataType;
  if (is_identifier(identifier, asn1_Get_encryptedData())) return EncryptedDataType;
  return AnyType;
}

/// ContentInfo: the [0] around the content may have an indefinite length of its own.
const uint8_t *Explanation::message(Reader in, uint32_t impl_tag, const Path *path) {
  constexpr uint8_t wrapper = tag::context | tag::constructed;
  if (!has_stack(in.position(), path)) return nullptr;
  Header head;
  if (!header(in, impl_tag, tag::sequence, Forms::indefinite, &head, path)) return nullptr;
  ContentReader content = in.content(head);
  const Reader type = content;
  const Path type_path{path, "contentType"};
  const uint8_t *next = identifier(content, 0, &type_path);
  if (next == nullptr) return nullptr;
  content.move_to(next);
  if (content.peek() == wrapper) {
    const Path content_path{path, "content"};
    Header wrapped;
    if (!header(content, 0, wrapper, Forms::indefinite, &wrapped, &content_path)) return nullptr;
    ContentReader inner = content.content(wrapped);
    next = value(type_of_content(type), inner.position(), inner.end(), 0, &content_path);
    if (next == nullptr) return nullptr;
    inner.move_to(next);
    if (wrapped.indefinite && !inner.read_outer_eoc()) {
      return fail(inner.position(), &content_path, "expected the end-of-contents");
    }
    content.move_to(inner.position());
  }
  if (head.indefinite && !content.read_outer_eoc()) {
    return fail(content.position(), path, "expected the end-of-contents");
  }
  return content.position();
}

// ---------------------------------------------------------------------------------------------
// Card objects
// ---------------------------------------------------------------------------------------------

const uint8_t *Explanation::card_object(const Type &type, Reader in, const Path *path) {
  if (!has_stack(in.position(), path)) return nullptr;
  const uint8_t *const from = in.position();
  Header head;
  while (in.peek() != tag::object_identifier) {
    const int octet = in.peek();
    if (octet != tag::sequence && octet != tag::set) {
      return fail_expected(in, path, tag::sequence);
    }
    if (!header(in, static_cast<uint32_t>(octet), tag::sequence, Forms::one, &head, path)) {
      return nullptr;
    }
  }
  if (in.position() == from) return fail_expected(in, path, tag::sequence);
  ContentReader content = in.content(head.length);
  uint8_t id = 0;
  const Path id_path{path, "id"};
  if (!content.at_end()) {
    Header id_head;
    if (!header(content, 0, tag::object_identifier, Forms::one, &id_head, &id_path)) return nullptr;
    if (id_head.length != 1) {
      return fail(content.position(), &id_path, "an identifier that is not one octet");
    }
    content.read_octet(&id);  // which the header was held against
  }
  const GdoRole role = gdo_role(id);
  const Path value_path{path, role == GdoRole::leaf ? "value" : "children"};
  if (role == GdoRole::leaf)
    return string<OctetContent>(content, 0, tag::octet_string, &value_path);
  uint32_t wrapper = 0;
  if (role == GdoRole::attribute_holder && content.peek() == tag::bit_string) {
    wrapper = tag::bit_string;
  }
  const int octet = content.peek();
  if (role == GdoRole::attribute_holder && octet != tag::bit_string && octet != tag::octet_string) {
    return fail_expected(content, &value_path, tag::bit_string, tag::octet_string);
  }
  Header wrapped;
  if (!header(content, wrapper, tag::octet_string, Forms::one, &wrapped, &value_path)) {
    return nullptr;
  }
  const Reader inside = content.content(wrapped.length);
  return value(gdo_children(id, type), inside.position(), inside.end(), 0, &value_path);
}

/// The identifier of an attribute. A content without one leaves it 0.
const uint8_t *Explanation::card_identifier(Reader in, const Path *path) {
  if (in.at_end()) return in.position();
  Header head;
  if (!header(in, 0, tag::object_identifier, Forms::one, &head, path)) return nullptr;
  if (head.length != 4) {
    return fail(in.position(), path, "an identifier that is not four octets");
  }
  in.skip(head.length);  // which the header was held against
  return in.position();
}

// ---------------------------------------------------------------------------------------------
// Any value
// ---------------------------------------------------------------------------------------------

const uint8_t *Explanation::value(const Type &type, const uint8_t *z, const uint8_t *end,
                                  uint32_t impl_tag, const Path *path) {
  const Reader in(z, end);
  if (type.functions.decode == nullptr && type.functions.encode != nullptr) {
    return fail(z, path, "a type that the library writes and never reads");
  }
  const bool has_parts = type.kind == Kind::sequence || type.kind == Kind::choice;
  if (type.exact && !has_parts) return exact_value(type, in, impl_tag, path);
  switch (type.kind) {
    case Kind::any:
      return any(in, path);
    case Kind::boolean:
    case Kind::enumerated:
      return number(type, in, impl_tag, path);
    case Kind::integer:
      return integer(in, impl_tag, path);
    case Kind::null:
      return null(in, impl_tag, path);
    case Kind::object_identifier:
      return identifier(in, impl_tag, path);
    case Kind::bit_string:
      return string<BitContent>(in, impl_tag, tag::bit_string, path);
    case Kind::octet_string:
    case Kind::character_string:
      return string<OctetContent>(in, impl_tag, type.identifier, path);
    case Kind::utc_time:
    case Kind::generalized_time:
      return time(type, in, impl_tag, path);
    case Kind::sequence:
      return type.nests ? message(in, impl_tag, path) : sequence(type, in, impl_tag, path);
    case Kind::sequence_of:
    case Kind::set_of:
      return elements(type, in, impl_tag, path);
    case Kind::choice:
      return choice(type, in, path);
    case Kind::name:
      return name(type, in, impl_tag, path);
    case Kind::attribute_value:
      return attribute_value(in, path);
    case Kind::typed_content:
      break;  // only in messages, which read it
    case Kind::card_object:
      return card_object(type, in, path);
    case Kind::card_identifier:
      return card_identifier(in, path);
    case Kind::tls_list:
      break;  // a form of an RFC, which exact_value() reads
  }
  return fail(z, path, "a type that stands in no input by itself");
}

// ---------------------------------------------------------------------------------------------
// Records that are not filled
// ---------------------------------------------------------------------------------------------

void say_missing(pki_Fault *fault, const Path *path, const char *sentence) {
  write_path(path, fault->path);
  std::snprintf(fault->sentence, sizeof fault->sentence, "%s", sentence);
}

void find_missing(const Type &type, const void *value, const Path *path, pki_Fault *fault);

/// Whether a field of this value has no encoding. NULL has one without a value.
bool is_missing(const Field &field, const void *value, const Path *path, pki_Fault *fault) {
  if (measure_tagged(field, value) != 0) return false;
  if (value == nullptr) {
    say_missing(fault, path, "is missing");
  } else {
    find_missing(*field.type, value, path, fault);
  }
  return true;
}

bool is_field_missing(const Field &field, const void *record, const Path *path, pki_Fault *fault) {
  const Path inner{path, field.name};
  if (field.kept != no_member && kept_octets(field, record) != nullptr) return false;
  if (field.by_hand != nullptr && field.by_hand->measure != nullptr) {
    Measure size;
    if (field.by_hand->measure(field, record, size)) return false;
    say_missing(fault, &inner, "is missing, or has no encoding");
    return true;
  }
  const void *const member = member_of(record, field.member);
  if (field.is_number) return is_missing(field, member, &inner, fault);
  const void *const value = load(member);
  return (value != nullptr || !field.optional) && is_missing(field, value, &inner, fault);
}

/// Finds the first part without an encoding in a value that has none. The depth is that of the
/// types, none of which nests.
void find_missing(const Type &type, const void *value, const Path *path, pki_Fault *fault) {
  if (type.kind == Kind::sequence) {
    for (uint16_t i = 0; i < type.count; ++i) {
      if (is_field_missing(type.fields[i], value, path, fault)) return;
    }
  } else if (type.kind == Kind::choice) {
    const auto *const choice = static_cast<const GeneralName *>(value);
    for (uint16_t i = 0; i < type.count; ++i) {
      const Path inner{path, type.fields[i].name};
      if (type.fields[i].kind == choice->kind) {
        is_missing(type.fields[i], choice->value, &inner, fault);
        return;
      }
    }
    return say_missing(fault, path, "its kind is that of no alternative");
  } else if (type.element != nullptr) {
    const auto *const list = static_cast<const List *>(value);
    for (int32_t i = 0; i < List_len(list); ++i) {
      const void *const element = List_get(list, i);
      const Path inner{path, nullptr, static_cast<uint32_t>(i)};
      if (element == nullptr) return say_missing(fault, &inner, "is missing");
      if (measure(element, *type.element) == 0) {
        return find_missing(*type.element, element, &inner, fault);
      }
    }
  }
  say_missing(fault, path, "holds no value that can be encoded");
}

}  // namespace

int32_t pki_find_missing(const pki_Type *type, const void *record, pki_Fault *fault) {
  *fault = {};
  const Type &form = type_of(type);
  if (!form.exact) {
    say_missing(fault, nullptr, "its type is no form of an RFC");
  } else if (record == nullptr) {
    say_missing(fault, nullptr, "is missing");
  } else if (measure(record, form) != 0) {
    return 0;
  } else {
    find_missing(form, record, nullptr, fault);
  }
  return 1;
}

int32_t pki_explain(const pki_Type *type, const uint8_t *z, const uint8_t *end, pki_Fault *fault) {
  static constexpr uint8_t nothing = 0;
  if (z == nullptr || end == nullptr) z = end = &nothing;
  *fault = {};
  Explanation explanation(z, fault);
  const uint8_t *const next = explanation.value(type_of(type), z, end, 0, nullptr);
  if (next == nullptr) return 1;
  const auto taken = static_cast<size_t>(next - z);
  fault->offset = taken > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(taken);
  return 0;
}

const char *pki_identifier_name(uint8_t octet, char *buffer, uint32_t size) {
  const int number = octet & tag::number;
  if (octet >> 6 != 0) {
    std::snprintf(buffer, size, "%s%d] (%02X)", tag_classes[octet >> 6], number, octet);
  } else {
    const bool marked = (octet & tag::constructed) != 0 &&
                        number != (tag::sequence & tag::number) &&
                        number != (tag::set & tag::number);
    std::snprintf(buffer, size, "%s%s (%02X)", marked ? "constructed " : "",
                  universal_types[number], octet);
  }
  return buffer;
}
