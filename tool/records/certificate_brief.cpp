// The short form of a certificate.
#include <arpa/inet.h>

#include <array>

#include "records/certificate_page.h"
#include "records/describe.h"
#include "records/distinguished_names.h"
#include "records/public_key.h"
#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// Returns the last common name of a distinguished name, or else the whole name.
std::string short_name(const RDNSequence *name, const View &view) {
  std::string found;
  for (const auto *rdn : elements<RelativeDistinguishedName>(name))
    for (const auto *attribute : elements<AttributeValueAssertion>(rdn)) {
      if (!is(attribute->type, asn1_Get_id_at_commonName)) continue;
      const Octets value = octets(attribute->value);
      const auto text = from_string(static_cast<uint32_t>(attribute->valueTag), value);
      found = text ? printable(*text) : attribute_text(attribute, view);
    }
  if (found.empty()) found = one_line(name, view);
  return found.empty() ? "(empty name)" : found;
}

std::string address_text(Octets address) {
  constexpr size_t ipv4 = 4;
  std::array<char, INET6_ADDRSTRLEN> text{};
  inet_ntop(address.size() == ipv4 ? AF_INET : AF_INET6, address.data(), text.data(), text.size());
  return text.data();
}

/// Returns the alternative names of the subject. They are told apart by what they look like.
std::vector<std::string> alternative_names(const Certificate *certificate) {
  std::vector<std::string> names;
  uint32_t unreadable = 0;
  for (const auto list : {pki_dns_names, pki_mail_addresses, pki_uris, pki_ip_addresses}) {
    List *const found = list(certificate, &unreadable);
    if (found == nullptr) continue;
    for (const auto *name : elements<OctetString>(found))
      names.push_back(list == pki_ip_addresses ? address_text(octets(name))
                                               : printable(text_of(octets(name))));
    List_free(found, asn1_IA5String_free);
  }
  if (unreadable != 0) names.push_back(counted(unreadable, "unreadable name"));
  return names;
}

}  // namespace

Brief certificate_short_form(const void *record, const View &view) {
  const auto *const certificate = static_cast<const Certificate *>(record);
  const Certificate_TBS &tbs = *certificate->tbsCertificate;
  const Standing state = standing(tbs.validity, view.moment);
  Brief brief;
  brief.state = state.text();
  brief.tone = tone_of(state);
  brief.title = short_name(tbs.subjectSequence, view);
  if (pki_may_issue(certificate, nullptr) == 1) brief.details.push_back("CA");
  brief.details.push_back(short_key_text(tbs.subjectPublicKeyInfo));
  const std::string issuer = one_line(tbs.issuerSequence, view);
  brief.details.push_back("by " + (issuer == one_line(tbs.subjectSequence, view)
                                       ? "itself"
                                       : short_name(tbs.issuerSequence, view)));
  brief.names = alternative_names(certificate);
  return brief;
}

}  // namespace tool
