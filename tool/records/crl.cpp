// Certificate revocation lists (RFC 5280, 5.1).
#include "records/certificate_facts.h"
#include "records/extension_values.h"
#include "records/type.h"
#include "text/integers.h"

namespace tool {

namespace {

// CertificateList ::= SEQUENCE { tbsCertList, signatureAlgorithm, signatureValue }
//
// The facts are in front of the fields.
Node crl(const CertificateRevocationList *record, const View &view) {
  Description fields(view);
  return add_facts(fields, record).all("pki_CertificateRevocationList", record).node();
}

}  // namespace

// CRLEntry ::= SEQUENCE { userCertificate, revocationDate, crlEntryExtensions OPTIONAL }
//
// In a list the serial number replaces the number of the element. One line has the date, and one
// each extension.
Node describe(const CRLEntry *entry, const View &view) {
  Node record = Description(view).all("pki_CRLEntry", entry).node();
  if (!view.lines) return record;
  std::vector<std::string> lines{time_text(entry->revocationDate, " UTC")};
  for (const auto *extension : elements<Extension>(entry->crlEntryExtensions)) {
    const Node node = describe(extension, view);
    for (const std::string &line : lines_of(node, view).value_or(std::vector<std::string>()))
      lines.push_back(node.name + " " + line);
  }
  record = shown_as(std::move(record), text(std::move(lines), nullptr));
  record.name = integer_text(entry->userCertificate);
  return record;
}

std::vector<Type> crl_types() {
  return {
      {.syntax = "pki_CertificateRevocationList",
       .about = "an X.509 certificate revocation list",
       .name = "crl",
       .heading = "CertificateRevocationList",
       .labels = {"X509 CRL", "CRL"},
       .stands_alone = true,
       .by_hand = as<crl>},
      {.syntax = "pki_CertificateList_TBS",
       .about = "the signed part of a CRL",
       .hints = {{"version", as<version>},
                 brief("issuer"),
                 period("thisUpdate", true),
                 brief("revokedCertificates")}},
      {.syntax = "pki_CRLEntry",
       .about = "a revoked certificate in a CRL",
       .by_hand = as<CRLEntry>},
  };
}

}  // namespace tool
