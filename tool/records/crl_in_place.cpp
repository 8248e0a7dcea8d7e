#include "records/crl_in_place.h"

#include <algorithm>

#include "records/private_keys.h"
#include "records/type.h"

namespace tool {

namespace {

/// Returns the CRL without its list of entries.
Bytes without_entries(const pki_CrlReader &reader) {
  const Octets fields = octets_of(pki_view_content(reader.tbsCertList));
  const Octets list = octets_of(reader.revokedCertificates);
  const auto before = static_cast<size_t>(list.data() - fields.data());
  const Bytes signed_part =
      element_of(tag::sequence, {fields.first(before), fields.subspan(before + list.size())});
  return element_of(tag::sequence, {signed_part, octets_of(reader.signatureAlgorithm),
                                    octets_of(reader.signatureValue)});
}

/// Returns where each of the entries begins, and where the last one ends.
std::vector<const uint8_t *> places_of(const pki_Octets &list) {
  std::vector<const uint8_t *> places;
  pki_Octets rest = pki_view_content(list);
  pki_Octets entry{};
  places.push_back(rest.data);
  while (pki_view_next(&rest, &entry) == 1) places.push_back(entry.data + entry.length);
  return places;
}

Node list_in_place(const pki_Octets &list, const View &view) {
  const auto places = std::make_shared<const std::vector<const uint8_t *>>(places_of(list));
  const auto octets = [places](size_t i) { return Octets((*places)[i], (*places)[i + 1]); };
  Node node;
  node.value = Node::Items{places->size() - 1,
                           [octets, view](size_t i) {
                             auto entry = decoded(pki_CRLEntry_d, pki_CRLEntry_free, octets(i));
                             Node described = describe(entry.get(), view);
                             return owning(std::move(described), std::move(entry));
                           },
                           octets};
  return node;
}

}  // namespace

std::optional<Node> crl_in_place(Octets octets, const View &view) {
  static const Syntax syntax("pki_CertificateRevocationList");
  pki_CrlReader reader;
  if (syntax.refusal(octets) ||
      pki_crl_open(&reader, octets.data(), octets.data() + octets.size()) == 0)
    return std::nullopt;
  if (reader.revokedCertificates.data == nullptr) reader.revokedCertificates = {};
  const bool has_list = reader.revokedCertificates.length != 0;
  const Bytes frame = has_list ? without_entries(reader) : Bytes(octets.begin(), octets.end());
  auto record =
      decoded(pki_CertificateRevocationList_d, pki_CertificateRevocationList_free, Octets(frame));
  if (!record) return std::nullopt;
  Node node = row_of(syntax.type)->describe(record.get(), view);
  if (has_list) {
    auto &fields = std::get<Node::Fields>(node.value);
    auto &signed_fields = std::get<Node::Fields>(
        std::ranges::find(fields, std::string("tbsCertList"), &Node::name)->value);
    Node list = list_in_place(reader.revokedCertificates, view);
    list.name = "revokedCertificates";
    signed_fields.insert(
        std::ranges::find(signed_fields, std::string("crlExtensions"), &Node::name),
        std::move(list));
  }
  return owning(std::move(node), std::move(record));
}

}  // namespace tool
