// Certificate revocation lists (RFC 5280, 5.1).
#include "records/extension_values.h"
#include "records/type.h"
#include "text/integers.h"

namespace tool {

// CRLEntry ::= SEQUENCE { userCertificate, revocationDate, crlEntryExtensions OPTIONAL }
//
// In a list the serial number takes the place of the number, and there is a line for the date and
// one for each extension.
Node describe(const CRLEntry *entry, const View &view) {
  Node record = Description(view)
                    .field("userCertificate", entry->userCertificate)
                    .field("revocationDate", entry->revocationDate)
                    .list<Extension>("crlEntryExtensions", entry->crlEntryExtensions)
                    .node();
  auto lines = lines_of(describe(entry->revocationDate, view), view);
  for (const auto *extension : elements<Extension>(entry->crlEntryExtensions)) {
    const Node node = describe(extension, view);
    for (const std::string &line : lines_of(node, view).value_or(std::vector<std::string>()))
      lines->push_back(node.name + " " + line);
  }
  record = shown_as(std::move(record), text(std::move(*lines), nullptr));
  record.name = integer_text(entry->userCertificate);
  return record;
}

// TBSCertList ::= SEQUENCE { version OPTIONAL, signature, issuer, thisUpdate, nextUpdate OPTIONAL,
//   revokedCertificates OPTIONAL, crlExtensions [0] }
Node describe(const CertificateList_TBS *tbs, const View &view) {
  return Description(view)
      .version("version", tbs->version)
      .field("signature", tbs->signature)
      .name("issuer", tbs->issuerSequence, tbs->issuer, tbs->issuerEncoded)
      .brief()
      .period("thisUpdate", tbs->thisUpdate, "nextUpdate", tbs->nextUpdate)
      .brief()
      .list<CRLEntry>("revokedCertificates", tbs->revokedCertificates)
      .brief()
      .list<Extension>("crlExtensions", tbs->crlExtensions)
      .node();
}

// CertificateList ::= SEQUENCE { tbsCertList, signatureAlgorithm, signatureValue }
Node describe(const CertificateRevocationList *crl, const View &view) {
  return Description(view)
      .encoding("tbsEncoded", crl->tbsEncoded)
      .field("tbsCertList", crl->tbsCertList)
      .field("signatureAlgorithm", crl->signatureAlgorithm)
      .field("signatureValue", crl->signatureValue)
      .node();
}

namespace {

constexpr Field entry_fields[] = {{"userCertificate", &integer_syntax},
                                  {"revocationDate", &time_syntax},
                                  {"crlEntryExtensions", &extensions_syntax, true}};
constexpr Syntax entry_syntax{.tag = 0x30, .fields = entry_fields};
constexpr Syntax entries_syntax{.tag = 0x30, .element = &entry_syntax};

constexpr Field wrapped_extensions[] = {{"", &extensions_syntax}};
constexpr Syntax tagged_extensions_syntax{.tag = 0xA0, .fields = wrapped_extensions};

constexpr Field tbs_fields[] = {{"version", &integer_syntax, true},
                                {"signature", &algorithm_syntax},
                                {"issuer", &name_syntax},
                                {"thisUpdate", &time_syntax},
                                {"nextUpdate", &time_syntax, true},
                                {"revokedCertificates", &entries_syntax, true},
                                {"crlExtensions", &tagged_extensions_syntax, true}};
constexpr Syntax tbs_syntax{.tag = 0x30, .fields = tbs_fields};

constexpr Field crl_fields[] = {{"tbsCertList", &tbs_syntax},
                                {"signatureAlgorithm", &algorithm_syntax},
                                {"signatureValue", &bit_string_syntax}};
constexpr Syntax crl_syntax{.tag = 0x30, .fields = crl_fields};

constexpr std::string_view crl_labels[] = {"X509 CRL", "CRL"};

constexpr Type rows[] = {
    type<asn1_CertificateRevocationList_d, asn1_CertificateRevocationList_e,
         asn1_CertificateRevocationList_free>(
        {.name = "crl",
         .heading = "CertificateRevocationList",
         .about = "an X.509 certificate revocation list",
         .labels = crl_labels,
         .syntax = &crl_syntax,
         .stands_alone = true,
         .forget_encodings =
             [](void *record) {
               auto *const crl = static_cast<CertificateRevocationList *>(record);
               forget(crl->tbsEncoded);
               forget(crl->tbsCertList->issuerEncoded);
             }}),
    type<asn1_CertificateList_TBS_d, asn1_CertificateList_TBS_e, asn1_CertificateList_TBS_free>(
        {.name = "tbs-cert-list",
         .heading = "TBSCertList",
         .about = "the signed part of a CRL",
         .syntax = &tbs_syntax,
         .forget_encodings =
             [](void *record) {
               forget(static_cast<CertificateList_TBS *>(record)->issuerEncoded);
             }}),
    type<asn1_CRLEntry_d, asn1_CRLEntry_e, asn1_CRLEntry_free>(
        {.name = "crl-entry",
         .heading = "CRLEntry",
         .about = "a revoked certificate in a CRL",
         .syntax = &entry_syntax}),
};

}  // namespace

std::span<const Type> crl_types() { return rows; }

}  // namespace tool
