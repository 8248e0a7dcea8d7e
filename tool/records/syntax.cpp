#include "records/syntax.h"

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
  if (expected == 0) return syntax.tag_limit == 0 || tag < syntax.tag_limit;
  if (tag == expected || (syntax.other_tag != 0 && tag == syntax.other_tag)) return true;
  // The library reads a primitive identifier octet where a constructed one is expected.
  if ((expected & constructed_bit) != 0) return tag == (expected & ~constructed_bit);
  return syntax.segments && tag == (expected | constructed_bit);
}

/// Whether an optional field is there, for which the library looks at the very octet.
bool is_there(const Field &field, uint8_t expected, uint8_t tag) {
  return expected == 0 || tag == expected || (field.tag == 0 && tag == field.syntax->other_tag);
}

std::string expected_name(const Syntax &syntax, uint8_t expected) {
  if (expected == 0)
    return syntax.tag_limit == 0 ? "an element"
                                 : "an identifier octet below " + std::to_string(syntax.tag_limit);
  std::string name = tag_name(expected);
  if (syntax.other_tag != 0) name += " or " + tag_name(syntax.other_tag);
  return name;
}

Found find(const Place &place, const Syntax &syntax, uint8_t implicit_tag);

/// `to_end` says whether nothing may follow the fields.
Found find_fields(const Place &content, std::span<const Field> fields, bool to_end) {
  Found found;
  size_t at = 0;
  for (const Field &field : fields) {
    const Place place{content.rest.subspan(at), content.offset + at,
                      content.path.empty() ? std::string(field.name)
                      : field.name.empty() ? content.path
                                           : content.path + "." + std::string(field.name)};
    const uint8_t expected = field.tag != 0 ? field.tag : field.syntax->tag;
    const bool there = !place.rest.empty();
    if (field.optional && (!there || !is_there(field, expected, place.rest[0]))) continue;
    if (!there) {
      found.fault = place.fault("expected " + expected_name(*field.syntax, expected) +
                                ", but the enclosing element ends");
      return found;
    }
    Found inner = find(place, *field.syntax, field.tag);
    if (inner.fault || inner.open) return inner;
    at += inner.size;
  }
  if (to_end && at != content.rest.size()) {
    const Place place{content.rest.subspan(at), content.offset + at, content.path};
    found.fault = place.fault("expected the end, found " + tag_name(place.rest[0]));
  }
  return found;
}

/// The alternative of a CHOICE that the identifier octet picks.
Found find_choice(const Place &place, std::span<const Field> choice) {
  Found found;
  if (place.rest.empty()) {
    found.fault = place.fault("expected one of several alternatives, but the input ends");
    return found;
  }
  std::string expected;
  for (const Field &field : choice) {
    const uint8_t tag = field.tag != 0 ? field.tag : field.syntax->tag;
    if (takes(*field.syntax, tag, place.rest[0])) {
      const Place inside{place.rest, place.offset,
                         place.path + (place.path.empty() ? "" : ".") + std::string(field.name)};
      return find(inside, *field.syntax, field.tag);
    }
    expected += (expected.empty() ? "" : ", ") + tag_name(tag);
  }
  found.fault = place.fault("expected one of " + expected + ", found " + tag_name(place.rest[0]));
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
  if (!syntax.choice.empty()) return find_choice(place, syntax.choice);
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
    if (syntax.element == nullptr && !syntax.segments && !syntax.indefinite)
      found.fault = place.fault("an indefinite length, which the library does not take here");
    else if (!syntax.fields.empty())
      found.fault =
          find_fields({place.rest.subspan(header.size), place.offset + header.size, place.path},
                      syntax.fields, false)
              .fault;
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
  if (!syntax.fields.empty()) inside = find_fields(content, syntax.fields, true);
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

const char *enumerated_fault(Octets content) {
  return content.size() != 1 ? "an ENUMERATED that is not one octet" : nullptr;
}

const char *x400_fault(Octets) { return "an X.400 address, which the library refuses"; }
const char *edi_fault(Octets) { return "an EDI party name, which the library refuses"; }

constexpr Field algorithm_fields[] = {{"algorithm", &oid_syntax},
                                      {"parameters", &any_syntax, true}};

constexpr Field assertion_fields[] = {{"type", &oid_syntax}, {"value", &any_syntax}};

/// A value of a name that is kept as a text, which has two digits for the identifier octet.
constexpr Syntax text_value_syntax{.tag_limit = 100};
constexpr Field text_assertion_fields[] = {{"type", &oid_syntax}, {"value", &text_value_syntax}};
constexpr Syntax text_assertion_syntax{.tag = 0x30, .fields = text_assertion_fields};
constexpr Syntax text_rdn_syntax{.tag = 0x31, .element = &text_assertion_syntax};

constexpr Field key_fields[] = {{"algorithm", &algorithm_syntax},
                                {"subjectPublicKey", &bit_string_syntax}};

constexpr Field extension_fields[] = {{"extnID", &oid_syntax},
                                      {"critical", &boolean_syntax, true},
                                      {"extnValue", &octet_string_syntax}};

constexpr Field wrapped_any[] = {{"", &any_syntax}};
constexpr Field other_name_fields[] = {{"type", &oid_syntax}, {"value", &wrapped_any_syntax}};
constexpr Syntax other_name_syntax{.tag = 0xA0, .fields = other_name_fields};
constexpr Syntax x400_syntax{.tag = 0xA3, .content_fault = x400_fault};
constexpr Syntax directory_name_syntax{.tag = 0xA4, .element = &rdn_syntax, .non_empty = true};
constexpr Syntax edi_syntax{.tag = 0xA5, .content_fault = edi_fault};
constexpr Field general_names[] = {{"otherName", &other_name_syntax},
                                   {"rfc822Name", &ia5_string_syntax, false, 0x81},
                                   {"dNSName", &ia5_string_syntax, false, 0x82},
                                   {"x400Address", &x400_syntax},
                                   {"directoryName", &directory_name_syntax},
                                   {"ediPartyName", &edi_syntax},
                                   {"uniformResourceIdentifier", &ia5_string_syntax, false, 0x86},
                                   {"iPAddress", &octet_string_syntax, false, 0x87},
                                   {"registeredID", &oid_syntax, false, 0x88}};

constexpr Syntax attribute_values_syntax{.tag = 0x31, .element = &any_syntax};
constexpr Field attribute_fields[] = {{"type", &oid_syntax}, {"values", &attribute_values_syntax}};

constexpr Field digest_info_fields[] = {{"digestAlgorithm", &algorithm_syntax},
                                        {"digest", &octet_string_syntax}};

constexpr Field wrapped_integer[] = {{"", &integer_syntax}};

}  // namespace

constexpr Syntax any_syntax{};
constexpr Syntax boolean_syntax{.tag = 0x01, .content_fault = boolean_fault};
constexpr Syntax integer_syntax{.tag = 0x02, .content_fault = integer_fault};
constexpr Syntax enumerated_syntax{.tag = 0x0A, .content_fault = enumerated_fault};
constexpr Syntax bit_string_syntax{
    .tag = 0x03, .segments = true, .content_fault = bit_string_fault};
constexpr Syntax octet_string_syntax{.tag = 0x04, .segments = true};
constexpr Syntax oid_syntax{.tag = 0x06, .content_fault = oid_fault};
constexpr Syntax ia5_string_syntax{.tag = 0x16, .segments = true};
constexpr Syntax utc_time_syntax{.tag = 0x17};
constexpr Syntax generalized_time_syntax{.tag = 0x18};
constexpr Syntax time_syntax{.tag = 0x17, .other_tag = 0x18};
constexpr Syntax algorithm_syntax{.tag = 0x30, .fields = algorithm_fields};
constexpr Syntax assertion_syntax{.tag = 0x30, .fields = assertion_fields};
constexpr Syntax rdn_syntax{.tag = 0x31, .element = &assertion_syntax};
constexpr Syntax rdn_sequence_syntax{.tag = 0x30, .element = &rdn_syntax};
constexpr Syntax name_syntax{.tag = 0x30, .element = &text_rdn_syntax, .non_empty = true};
constexpr Syntax key_syntax{.tag = 0x30, .fields = key_fields};
constexpr Syntax extension_syntax{.tag = 0x30, .fields = extension_fields};
constexpr Syntax extensions_syntax{.tag = 0x30, .element = &extension_syntax};
constexpr Syntax general_name_syntax{.choice = general_names};
constexpr Syntax general_names_syntax{.tag = 0x30, .element = &general_name_syntax};
constexpr Syntax attribute_syntax{.tag = 0x30, .fields = attribute_fields};
constexpr Syntax digest_info_syntax{.tag = 0x30, .fields = digest_info_fields};
constexpr Syntax attributes_0_syntax{.tag = 0xA0, .element = &attribute_syntax};
constexpr Syntax wrapped_integer_syntax{.tag = 0xA0, .fields = wrapped_integer};
constexpr Syntax wrapped_any_syntax{.tag = 0xA0, .fields = wrapped_any};

std::optional<Fault> syntax_fault(Octets octets, const Syntax &syntax) {
  return find(Place{octets, 0, ""}, syntax, 0).fault;
}

std::string why_unread(Octets value, const Syntax &syntax) {
  const auto fault = syntax_fault(value, syntax);
  return fault ? text_with_offset(*fault) : "its decoder does not take all of it";
}

}  // namespace tool
