#include "records/distinguished_names.h"

#include <orvelpki.h>

#include <algorithm>

#include "input/der.h"
#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// Returns the value of an attribute: the characters of a string, the octets of anything else.
std::string value_text(const AttributeValueAssertion *attribute, std::string_view also_escaped) {
  const uint8_t tag = static_cast<uint8_t>(attribute->valueTag);
  if (const auto text = from_string(tag, octets(attribute->value)))
    return printable(*text, also_escaped);
  return tag_name(tag) + " " + hex(octets(attribute->value));
}

}  // namespace

void add_name(Page &page, const RDNSequence *name, const View &view) {
  if (List_len(name) == 0) page.row("(empty)", std::vector<std::string>());
  for (const auto *rdn : elements<RelativeDistinguishedName>(name)) {
    bool first = true;
    for (const auto *attribute : elements<AttributeValueAssertion>(rdn)) {
      page.row((first ? "" : "+ ") + label(attribute->type, view), value_text(attribute, ""));
      first = false;
    }
  }
}

std::string attribute_text(const AttributeValueAssertion *attribute, const View &view) {
  return label(attribute->type, view) + "=" + value_text(attribute, ",+");
}

std::string one_line(const RDNSequence *name, const View &view) {
  if (List_len(name) == 0) return "(empty)";
  std::string out;
  for (const auto *rdn : elements<RelativeDistinguishedName>(name)) {
    const char *separator = out.empty() ? "" : ", ";
    for (const auto *attribute : elements<AttributeValueAssertion>(rdn)) {
      out += separator + attribute_text(attribute, view);
      separator = " + ";
    }
  }
  return out;
}

std::string directory_text(const Name *text, const View &view) {
  const Owned<RDNSequence> name(asn1_Name_to_RDNSequence(text), asn1_RDNSequence_free);
  return name ? one_line(name.get(), view) : printable(std::string_view(text));
}

namespace {

/// Returns the value of an attribute as utf8_text() has it.
std::string value_for_text(const AttributeValueAssertion *attribute) {
  const Octets value = octets(attribute->value);
  auto text = utf8_from_string(static_cast<uint32_t>(attribute->valueTag), value);
  if (!text) return "#" + hex(value);
  for (size_t at = 0; (at = text->characters.find('\0', at)) != std::string::npos;)
    text->characters.replace(at, 1, "\uFFFD");
  return std::move(text->characters);
}

}  // namespace

// Nearly all names have no value but in UTF-8, so that nothing is copied.
std::string utf8_text(const RDNSequence *name) {
  Owned<RDNSequence> copy(nullptr, pki_RDNSequence_free);
  for (int32_t i = 0; i < List_len(name); ++i) {
    const auto *const rdn = static_cast<const RelativeDistinguishedName *>(List_get(name, i));
    for (int32_t j = 0; j < List_len(rdn); ++j) {
      const auto *const attribute = static_cast<const AttributeValueAssertion *>(List_get(rdn, j));
      const std::string text = value_for_text(attribute);
      if (text == text_of(octets(attribute->value))) continue;
      if (!copy) copy.reset(pki_RDNSequence_clone(name));
      auto *const changed = static_cast<AttributeValueAssertion *>(
          List_get(static_cast<const List *>(List_get(copy.get(), i)), j));
      asn1_ASN1String_free(changed->value);
      changed->value = asn1_ASN1String_new(static_cast<uint32_t>(text.size()), text.data());
    }
  }
  const Owned<Name> text(pki_RDNSequence_text(copy ? copy.get() : name), asn1_Name_free);
  return text ? valid_utf8(text.get()) : "";
}

void append_attribute(std::string &out, const AttributeValueAssertion *attribute) {
  const Octets value = octets(attribute->value);
  const auto text = utf8_from_string(static_cast<uint32_t>(attribute->valueTag), value);
  JsonObject object(out);
  append_oid(out, "type", attribute->type);
  object.put("valueTag", attribute->valueTag);
  if (text)
    object.put("value", text->characters);
  else
    object.put("value", nullptr);
  if (!text || !text->is_clean) object.put("valueOctets", value);
}

void append_attributes(std::string &out, const RelativeDistinguishedName *attributes) {
  append_array(out, elements<AttributeValueAssertion>(attributes),
               [&](const AttributeValueAssertion *attribute) { append_attribute(out, attribute); });
}

void append_name(std::string &out, const RDNSequence *name) {
  append_array(out, elements<RelativeDistinguishedName>(name),
               [&](const RelativeDistinguishedName *rdn) { append_attributes(out, rdn); });
}

}  // namespace tool
