// X.509 certificate revocation lists (RFC 5280, 5.1).
#include "x509/codecs.h"
#include "x509/names.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// CRLEntry ::= SEQUENCE {
//   userCertificate     INTEGER,
//   revocationDate      Time,
//   crlEntryExtensions  Extensions OPTIONAL }
using CRLEntrySyntax = Sequence<CRLEntry,
    Required<&CRLEntry::userCertificate, IntegerCodec>,
    Required<&CRLEntry::revocationDate, TimeCodec>,
    Optional<&CRLEntry::crlEntryExtensions, ExtensionsCodec>>;
using CRLEntryCodec = ORVELASN1_FAMILY(0x30, CRLEntry);

// TBSCertList ::= SEQUENCE {
//   version                  INTEGER OPTIONAL,
//   signature                AlgorithmIdentifier,
//   issuer                   Name,
//   thisUpdate               Time,
//   nextUpdate               Time OPTIONAL,
//   revokedCertificates      SEQUENCE OF CRLEntry OPTIONAL,
//   crlExtensions        [0] EXPLICIT Extensions OPTIONAL }
//
// Unlike a certificate, a CRL may have extensions and no version.
using TBS = CertificateList_TBS;
using CertificateListTBSSyntax = Sequence<TBS,
    Optional<&TBS::version, IntegerCodec, Presence::octet_of_input>,
    Required<&TBS::signature, AlgIdCodec>,
    Stored<&TBS::issuerEncoded, NameForms<&TBS::issuerSequence, &TBS::issuer>>,
    Required<&TBS::thisUpdate, TimeCodec>,
    Optional<&TBS::nextUpdate, TimeCodec>,
    Optional<&TBS::revokedCertificates, SequenceOf<CRLEntryCodec>>,
    Optional<&TBS::crlExtensions, Explicit<0, ExtensionsCodec>>>;
using CertificateListTBSCodec = ORVELASN1_FAMILY(0x30, CertificateList_TBS);

// CertificateList ::= SEQUENCE {
//   tbsCertList         TBSCertList,
//   signatureAlgorithm  AlgorithmIdentifier,
//   signatureValue      BIT STRING }
using CRL = CertificateRevocationList;
using CRLSyntax = Sequence<CRL,
    Stored<&CRL::tbsEncoded, Required<&CRL::tbsCertList, CertificateListTBSCodec>>,
    Required<&CRL::signatureAlgorithm, AlgIdCodec>,
    Required<&CRL::signatureValue, BitStringAsStoredCodec>>;

// clang-format on

}  // namespace

CRLEntry *asn1_CRLEntry_new() { return CRLEntrySyntax::create(); }
void asn1_CRLEntry_free(CRLEntry *pElement) { CRLEntrySyntax::free(pElement); }
CRLEntry *asn1_CRLEntry_clone(const CRLEntry *pElement) { return CRLEntrySyntax::clone(pElement); }
uint32_t asn1_CRLEntry_e(uint8_t **pp, const CRLEntry *pElement) {
  return CRLEntrySyntax::encode(pp, pElement);
}
const uint8_t *asn1_CRLEntry_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               CRLEntry **ppElement, uint32_t depth) {
  return CRLEntrySyntax::decode(z, end, impl_tag, ppElement, depth);
}

CertificateList_TBS *asn1_CertificateList_TBS_new() { return CertificateListTBSSyntax::create(); }
void asn1_CertificateList_TBS_free(CertificateList_TBS *pElement) {
  CertificateListTBSSyntax::free(pElement);
}
CertificateList_TBS *asn1_CertificateList_TBS_clone(const CertificateList_TBS *pElement) {
  return CertificateListTBSSyntax::clone(pElement);
}
uint32_t asn1_CertificateList_TBS_e(uint8_t **pp, const CertificateList_TBS *pElement) {
  return CertificateListTBSSyntax::encode(pp, pElement);
}
const uint8_t *asn1_CertificateList_TBS_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          CertificateList_TBS **ppElement, uint32_t depth) {
  return CertificateListTBSSyntax::decode(z, end, impl_tag, ppElement, depth);
}

CertificateRevocationList *asn1_CertificateRevocationList_new() { return CRLSyntax::create(); }
void asn1_CertificateRevocationList_free(CertificateRevocationList *pElement) {
  CRLSyntax::free(pElement);
}
CertificateRevocationList *asn1_CertificateRevocationList_clone(
    const CertificateRevocationList *pElement) {
  return CRLSyntax::clone(pElement);
}
uint32_t asn1_CertificateRevocationList_e(uint8_t **pp, const CertificateRevocationList *pElement) {
  return CRLSyntax::encode(pp, pElement);
}
const uint8_t *asn1_CertificateRevocationList_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                CertificateRevocationList **ppElement,
                                                uint32_t depth) {
  return CRLSyntax::decode(z, end, impl_tag, ppElement, depth);
}
