#include "syntax.h"

namespace tool {

namespace {

constexpr uint8_t constructed_bit = 0x20;

/// A place in the input, by its offset, and the names of the fields that lead to it.
struct Place {
  Octets rest;
  size_t offset;
  std::string path;

  Fault fault(const std::string &text) const {
    return Fault{offset, path.empty() ? text : path + ": " + text};
  }
};

/// What was found at a place.
struct Found {
  std::optional<Fault> fault;
  size_t size = 0;    ///< the octets that the element takes, where there is no fault
  bool open = false;  ///< an indefinite length, behind which nothing can be told
};

bool takes(const Syntax &syntax, uint8_t expected, uint8_t tag) {
  if (expected == 0) return true;
  if (tag == expected || (syntax.other_tag != 0 && tag == syntax.other_tag)) return true;
  // The library reads a primitive identifier octet where a constructed one is expected.
  if ((expected & constructed_bit) != 0) return tag == (expected & ~constructed_bit);
  return syntax.segments && tag == (expected | constructed_bit);
}

std::string expected_name(const Syntax &syntax, uint8_t expected) {
  if (expected == 0) return "an element";
  std::string name = tag_name(expected);
  if (syntax.other_tag != 0) name += " or " + tag_name(syntax.other_tag);
  return name;
}

Found find(const Place &place, const Syntax &syntax, uint8_t implicit_tag);

Found find_fields(const Place &content, std::span<const Field> fields) {
  Found found;
  size_t at = 0;
  for (const Field &field : fields) {
    const Place place{content.rest.subspan(at), content.offset + at,
                      content.path.empty() ? std::string(field.name)
                      : field.name.empty() ? content.path
                                           : content.path + "." + std::string(field.name)};
    const uint8_t expected = field.tag != 0 ? field.tag : field.syntax->tag;
    const bool there = !place.rest.empty();
    if (field.optional && (!there || (expected != 0 && place.rest[0] != expected))) continue;
    if (!there) {
      found.fault = place.fault("expected " + expected_name(*field.syntax, expected) +
                                ", but the enclosing element ends");
      return found;
    }
    Found inner = find(place, *field.syntax, field.tag);
    if (inner.fault || inner.open) return inner;
    at += inner.size;
  }
  if (at != content.rest.size()) {
    const Place place{content.rest.subspan(at), content.offset + at, content.path};
    found.fault = place.fault("expected the end, found " + tag_name(place.rest[0]));
  }
  return found;
}

Found find_elements(const Place &content, const Syntax &element) {
  Found found;
  size_t at = 0;
  size_t number = 0;
  while (at < content.rest.size()) {
    const Place place{content.rest.subspan(at), content.offset + at,
                      content.path + "[" + std::to_string(number++) + "]"};
    Found inner = find(place, element, 0);
    if (inner.fault || inner.open) return inner;
    at += inner.size;
  }
  return found;
}

Found find(const Place &place, const Syntax &syntax, uint8_t implicit_tag) {
  Found found;
  const uint8_t expected = implicit_tag != 0 ? implicit_tag : syntax.tag;
  const Header header = read_header(place.rest);
  const bool readable = !place.rest.empty() && (header.tag & 0x1F) != 0x1F;
  if (readable && !takes(syntax, expected, header.tag)) {
    found.fault = place.fault("expected " + expected_name(syntax, expected) + ", found " +
                              tag_name(header.tag));
    return found;
  }
  if (!header.fault.empty()) {
    found.fault = place.fault(header.fault);
    return found;
  }
  if (header.indefinite) {
    if (syntax.element == nullptr && !syntax.segments)
      found.fault = place.fault("an indefinite length, which only a list or a string may have");
    found.open = true;
    return found;
  }
  const Place content{place.rest.subspan(header.size, header.length), place.offset + header.size,
                      place.path};
  found.size = header.size + header.length;
  const bool whole = (header.tag & constructed_bit) == 0 || !syntax.segments;
  if (syntax.content_fault != nullptr && whole)
    if (const char *const wrong = syntax.content_fault(content.rest)) {
      found.fault = content.fault(wrong);
      return found;
    }
  if (syntax.non_empty && content.rest.empty()) {
    found.fault = place.fault("the list is empty, and at least one element is needed");
    return found;
  }
  Found inside;
  if (syntax.element != nullptr) inside = find_elements(content, *syntax.element);
  if (!syntax.fields.empty()) inside = find_fields(content, syntax.fields);
  found.fault = inside.fault;
  found.open = inside.open;
  return found;
}

const char *integer_fault(Octets content) {
  return content.empty() ? "an INTEGER without content" : nullptr;
}

const char *boolean_fault(Octets content) {
  return content.size() != 1 ? "a BOOLEAN that is not one octet" : nullptr;
}

const char *bit_string_fault(Octets content) {
  if (content.empty()) return "a BIT STRING without its count of unused bits";
  return content[0] > 7 ? "a BIT STRING with more than seven unused bits" : nullptr;
}

const char *oid_fault(Octets content) {
  uint64_t arc = 0;
  for (const uint8_t octet : content) {
    arc = arc << 7 | (octet & 0x7F);
    if (arc > 0xFFFFFFFF) return "an OBJECT IDENTIFIER with an arc of more than 32 bits";
    if (octet < 0x80) arc = 0;
  }
  return !content.empty() && content.back() >= 0x80 ? "an OBJECT IDENTIFIER that ends inside an arc"
                                                    : nullptr;
}

constexpr Field algorithm_fields[] = {{"algorithm", &oid_syntax},
                                      {"parameters", &any_syntax, true}};

constexpr Field assertion_fields[] = {{"type", &oid_syntax}, {"value", &any_syntax}};
constexpr Syntax assertion_syntax{.tag = 0x30, .fields = assertion_fields};
constexpr Syntax rdn_syntax{.tag = 0x31, .element = &assertion_syntax};

constexpr Field extension_fields[] = {{"extnID", &oid_syntax},
                                      {"critical", &boolean_syntax, true},
                                      {"extnValue", &octet_string_syntax}};
constexpr Syntax extension_syntax{.tag = 0x30, .fields = extension_fields};

}  // namespace

constexpr Syntax any_syntax{};
constexpr Syntax boolean_syntax{.tag = 0x01, .content_fault = boolean_fault};
constexpr Syntax integer_syntax{.tag = 0x02, .content_fault = integer_fault};
constexpr Syntax bit_string_syntax{
    .tag = 0x03, .segments = true, .content_fault = bit_string_fault};
constexpr Syntax octet_string_syntax{.tag = 0x04, .segments = true};
constexpr Syntax oid_syntax{.tag = 0x06, .content_fault = oid_fault};
constexpr Syntax time_syntax{.tag = 0x17, .other_tag = 0x18};
constexpr Syntax algorithm_syntax{.tag = 0x30, .fields = algorithm_fields};
constexpr Syntax name_syntax{.tag = 0x30, .element = &rdn_syntax, .non_empty = true};
constexpr Syntax extensions_syntax{.tag = 0x30, .element = &extension_syntax};

std::optional<Fault> syntax_fault(Octets octets, const Syntax &syntax) {
  return find(Place{octets, 0, ""}, syntax, 0).fault;
}

}  // namespace tool
