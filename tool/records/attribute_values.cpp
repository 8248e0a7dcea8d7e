#include "records/attribute_values.h"

#include <algorithm>

#include "records/values.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

constexpr bool sequence_of = true;

/// A syntax, and whether an attribute may have several values of it (RFC 2985).
struct AttributeRow {
  ValueRow value;
  bool many = false;
};

constexpr bool many = true;

/// The syntaxes, each under the display name of its attribute.
constexpr AttributeRow rows[] = {
    {string_row("emailAddress"), many},
    {string_row("unstructuredName"), many},
    {string_row("unstructuredAddress"), many},
    {string_row("challengePassword")},
    {string_row("friendlyName")},
    {{"contentType", "ObjId"}},
    {{"messageDigest", "OctetString"}},
    {{"localKeyId", "OctetString"}},
    {{"randomNonce", "OctetString"}},
    {{"signingTime", "Time"}},
    {{"sequenceNumber", "Integer"}},
    {{"smimeCapabilities", "pki_AlgId", sequence_of}},
    {{"dateOfBirth", "GeneralizedTime"}},
    {string_row("placeOfBirth")},
    {string_row("gender")},
    {string_row("countryOfCitizenship"), many},
    {string_row("countryOfResidence"), many},
    {{"extensionRequest", "pki_Extensions"}},
    {{"ms-certificate-request-extensions", "pki_Extensions"}},
    {string_row("ms-os-version")},
};

}  // namespace

AttributeValues read_attribute(const Attribute *attribute, const View &view) {
  const std::string name = display_name(attribute->type);
  const auto *const row = std::ranges::find_if(
      rows, [&name](const AttributeRow &one) { return one.value.name == name; });
  const auto values = elements<Any>(attribute->values);
  const View deeper = view.inside();
  if (row == std::end(rows) || values.empty() || deeper.too_deep()) return {};
  auto nodes = std::make_shared<std::vector<Node>>();
  for (const Any *const value : values) {
    Inside inside = read_value(octets(value), row->value, deeper);
    if (inside.node.empty()) return {};
    nodes->push_back(std::move(inside.node));
  }
  if (nodes->size() == 1 && !row->many) return {nodes->front(), nodes->front()};
  Node list;
  list.value = Node::Items{nodes->size(), [nodes](size_t i) { return (*nodes)[i]; }};
  return {row->many ? list : Node(), list};
}

}  // namespace tool
