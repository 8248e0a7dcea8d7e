#include "records/same_name.h"

#include <orvelpki.h>

#include <algorithm>

#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// Returns the characters with small letters, and one blank for several, none at the ends.
CodePoints folded(const CodePoints &text) {
  CodePoints out;
  for (const char32_t c : text) {
    if (c == U' ' && (out.empty() || out.back() == U' ')) continue;
    out += c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c;
  }
  if (!out.empty() && out.back() == U' ') out.pop_back();
  return out;
}

std::string identity(const AttributeValueAssertion *attribute) {
  const auto text =
      from_string(static_cast<uint8_t>(attribute->valueTag), octets(attribute->value));
  return dotted(attribute->type) + "=" +
         (text ? printable(folded(*text), "=,+")
               : "#" + std::to_string(attribute->valueTag) + "," + hex(octets(attribute->value)));
}

}  // namespace

std::string name_identity(Octets name) {
  const auto sequence = decoded(pki_RDNSequence_d, pki_RDNSequence_free, name);
  if (!sequence) return hex(name);
  std::string out = "/";
  for (const auto *rdn : elements<RelativeDistinguishedName>(sequence.get())) {
    std::vector<std::string> attributes;
    for (const auto *attribute : elements<AttributeValueAssertion>(rdn))
      attributes.push_back(identity(attribute));
    std::ranges::sort(attributes);
    out += joined(attributes, "+") + ",";
  }
  return out;
}

}  // namespace tool
