#include "records/attribute_values.h"

#include <algorithm>

#include "records/values.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// The syntaxes, each under the display name of its attribute.
struct Row {
  std::string_view name;
  ValueReader read;
};

constexpr Row rows[] = {
    {"emailAddress", string_value},
    {"unstructuredName", string_value},
    {"unstructuredAddress", string_value},
    {"challengePassword", string_value},
    {"friendlyName", string_value},
    {"contentType", record_value<asn1_ObjId_d, asn1_ObjId_free>},
    {"messageDigest", record_value<asn1_OctetString_d, asn1_OctetString_free>},
    {"localKeyId", record_value<asn1_OctetString_d, asn1_OctetString_free>},
    {"randomNonce", record_value<asn1_OctetString_d, asn1_OctetString_free>},
    {"signingTime", record_value<asn1_Time_d, asn1_Time_free>},
    {"sequenceNumber", record_value<asn1_Integer_d, asn1_Integer_free>},
    {"smimeCapabilities", list_value<AlgId, asn1_AlgId_d, asn1_AlgId_free>},
    {"dateOfBirth", date_value},
    {"placeOfBirth", string_value},
    {"gender", string_value},
    {"countryOfCitizenship", string_value},
    {"countryOfResidence", string_value},
    {"extensionRequest", list_value<Extension, asn1_Extension_d, asn1_Extension_free>},
    {"ms-certificate-request-extensions",
     list_value<Extension, asn1_Extension_d, asn1_Extension_free>},
    {"ms-os-version", string_value},
};

}  // namespace

Node read_attribute(const Attribute *attribute, const View &view) {
  const auto *const row =
      std::ranges::find(rows, std::string_view(display_name(attribute->type)), &Row::name);
  const auto values = elements<Any>(attribute->values);
  const View deeper = view.inside();
  if (row == std::end(rows) || values.empty() || deeper.too_deep()) return {};
  auto nodes = std::make_shared<std::vector<Node>>();
  for (const Any *const value : values) {
    auto node = row->read(octets(value), deeper);
    if (!node) return {};
    nodes->push_back(std::move(*node));
  }
  if (nodes->size() == 1) return std::move(nodes->front());
  Node list;
  list.value = Node::Items{nodes->size(), [nodes](size_t i) { return (*nodes)[i]; }};
  return list;
}

}  // namespace tool
