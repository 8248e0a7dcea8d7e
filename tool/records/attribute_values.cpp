#include "records/attribute_values.h"

#include <algorithm>

#include "records/values.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

constexpr bool sequence_of = true;

/// The syntaxes, each under the display name of its attribute.
constexpr ValueRow rows[] = {
    string_row("emailAddress"),
    string_row("unstructuredName"),
    string_row("unstructuredAddress"),
    string_row("challengePassword"),
    string_row("friendlyName"),
    {"contentType", "ObjId"},
    {"messageDigest", "OctetString"},
    {"localKeyId", "OctetString"},
    {"randomNonce", "OctetString"},
    {"signingTime", "Time"},
    {"sequenceNumber", "Integer"},
    {"smimeCapabilities", "pki_AlgId", sequence_of},
    {"dateOfBirth", "GeneralizedTime"},
    string_row("placeOfBirth"),
    string_row("gender"),
    string_row("countryOfCitizenship"),
    string_row("countryOfResidence"),
    {"extensionRequest", "pki_Extensions"},
    {"ms-certificate-request-extensions", "pki_Extensions"},
    string_row("ms-os-version"),
};

}  // namespace

Node read_attribute(const Attribute *attribute, const View &view) {
  const auto *const row =
      std::ranges::find(rows, std::string_view(display_name(attribute->type)), &ValueRow::name);
  const auto values = elements<Any>(attribute->values);
  const View deeper = view.inside();
  if (row == std::end(rows) || values.empty() || deeper.too_deep()) return {};
  auto nodes = std::make_shared<std::vector<Node>>();
  for (const Any *const value : values) {
    Inside inside = read_value(octets(value), *row, deeper);
    if (inside.node.empty()) return {};
    nodes->push_back(std::move(inside.node));
  }
  if (nodes->size() == 1) return std::move(nodes->front());
  Node list;
  list.value = Node::Items{nodes->size(), [nodes](size_t i) { return (*nodes)[i]; }};
  return list;
}

}  // namespace tool
