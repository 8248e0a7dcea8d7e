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

std::string utf8_text(const RDNSequence *name) {
  const Owned<RDNSequence> copy(pki_RDNSequence_clone(name), pki_RDNSequence_free);
  for (const auto *rdn : elements<RelativeDistinguishedName>(copy.get()))
    for (int32_t i = 0; i < List_len(rdn); ++i) {
      auto *const attribute = static_cast<AttributeValueAssertion *>(List_get(rdn, i));
      const Octets value = octets(attribute->value);
      auto characters = from_string(static_cast<uint32_t>(attribute->valueTag), value);
      if (characters) std::ranges::replace(*characters, U'\0', U'\uFFFD');
      const std::string text = characters ? to_utf8(*characters) : "#" + hex(value);
      asn1_ASN1String_free(attribute->value);
      attribute->value = asn1_ASN1String_new(static_cast<uint32_t>(text.size()), text.data());
    }
  const Owned<Name> text(pki_RDNSequence_text(copy.get()), asn1_Name_free);
  return text ? valid_utf8(text.get()) : "";
}

Json json_of(const AttributeValueAssertion *attribute) {
  Json object = Json::object();
  put_oid(object, "type", attribute->type);
  const Octets value = octets(attribute->value);
  const auto text = from_string(static_cast<uint32_t>(attribute->valueTag), value);
  object.put("valueTag", attribute->valueTag).put("value", text ? Json(to_utf8(*text)) : nullptr);
  if (!text || !is_clean(*text)) object.put("valueOctets", hex(value));
  return object;
}

Json json_of_name(const RDNSequence *name) {
  std::string out(1, '[');
  for (const auto *rdn : elements<RelativeDistinguishedName>(name)) {
    out += out.size() == 1 ? "[" : ",[";
    for (const auto *attribute : elements<AttributeValueAssertion>(rdn)) {
      if (out.back() != '[') out += ',';
      json_of(attribute).append_to(out);
    }
    out += ']';
  }
  return Json::of_text(out += ']');
}

}  // namespace tool
