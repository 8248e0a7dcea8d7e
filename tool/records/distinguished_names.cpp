#include "records/distinguished_names.h"

#include "input/der.h"
#include "text/characters.h"

namespace tool {

namespace {

/// The value of an attribute, as characters where it is a string and as octets where it is not.
std::string value_text(const AttributeValueAssertion *attribute, std::string_view also_escaped) {
  const uint8_t tag = static_cast<uint8_t>(attribute->valueTag);
  if (const auto text = from_string(tag, octets(attribute->value)))
    return printable(*text, also_escaped);
  return tag_name(tag) + " " + hex(octets(attribute->value));
}

}  // namespace

void add_name(Page &page, const RDNSequence *name, const View &view) {
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

}  // namespace tool
