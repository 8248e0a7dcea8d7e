// X.509 certificates (RFC 5280, 4.1).
#include "x509/codecs.h"
#include "x509/names.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// Validity ::= SEQUENCE {
//   notBefore  Time,
//   notAfter   Time }
using ValiditySyntax = Sequence<Validity,
    Required<&Validity::notBefore, TimeCodec>,
    Required<&Validity::notAfter, TimeCodec>>;
using ValidityCodec = ORVELASN1_FAMILY(0x30, Validity);

// SubjectPublicKeyInfo ::= SEQUENCE {
//   algorithm         AlgorithmIdentifier,
//   subjectPublicKey  BIT STRING }
//
// The key is written without the zero bits at its end: a key that ends in a zero octet comes out
// shorter than it came in. Public as it is, it is wiped like a secret.
using SubjectPKISyntax = Sequence<SubjectPKI,
    Required<&SubjectPKI::algorithm, AlgIdCodec>,
    Wiped<&SubjectPKI::subjectPublicKey, BitStringCodec>>;

// Extension ::= SEQUENCE {
//   extnID     OBJECT IDENTIFIER,
//   critical   BOOLEAN DEFAULT FALSE,
//   extnValue  OCTET STRING }
using ExtensionSyntax = Sequence<Extension,
    Required<&Extension::extnID, ObjIdCodec>,
    Optional<&Extension::critical, BooleanCodec, Presence::octet_of_input>,
    Required<&Extension::extnValue, OctetStringCodec>>;

// clang-format on

// Extensions ::= SEQUENCE OF Extension
using ExtensionsSyntax = ExtensionsCodec;

// Unique identifiers and extensions need a version that is not 0. No other version is refused: a
// version 2 certificate may have extensions.
bool has_later_version(const Certificate_TBS *tbs) {
  const Integer *const version = tbs->version;
  return version != nullptr && version->length != 0 && version->data[0] != 0;
}

// A table has a line for each field.
// clang-format off

// TBSCertificate ::= SEQUENCE {
//   version               [0] EXPLICIT INTEGER DEFAULT v1,
//   serialNumber              INTEGER,
//   signature                 AlgorithmIdentifier,
//   issuer                    Name,
//   validity                  Validity,
//   subject                   Name,
//   subjectPublicKeyInfo      SubjectPublicKeyInfo,
//   issuerUniqueID        [1] IMPLICIT BIT STRING OPTIONAL,
//   subjectUniqueID       [2] IMPLICIT BIT STRING OPTIONAL,
//   extensions            [3] EXPLICIT Extensions OPTIONAL }
using TBS = Certificate_TBS;
using CertificateTBSSyntax = Sequence<TBS,
    Optional<&TBS::version, Explicit<0, IntegerCodec>, Presence::octet_of_input>,
    Required<&TBS::serialNumber, IntegerCodec>,
    Required<&TBS::signature, AlgIdCodec>,
    Stored<&TBS::issuerEncoded, NameForms<&TBS::issuerSequence, &TBS::issuer>>,
    Required<&TBS::validity, ValidityCodec>,
    Stored<&TBS::subjectEncoded, NameForms<&TBS::subjectSequence, &TBS::subject>>,
    Required<&TBS::subjectPublicKeyInfo, SubjectPKICodec>,
    OnlyIf<has_later_version, Optional<&TBS::issuerUniqueID, Implicit<1, BitStringCodec>>>,
    OnlyIf<has_later_version, Optional<&TBS::subjectUniqueID, Implicit<2, BitStringCodec>>>,
    OnlyIf<has_later_version, Optional<&TBS::extensions, Explicit<3, ExtensionsSyntax>>>>;
using CertificateTBSCodec = ORVELASN1_FAMILY(0x30, Certificate_TBS);

// Certificate ::= SEQUENCE {
//   tbsCertificate      TBSCertificate,
//   signatureAlgorithm  AlgorithmIdentifier,
//   signatureValue      BIT STRING }
using CertificateSyntax = Sequence<Certificate,
    Stored<&Certificate::tbsEncoded, Required<&Certificate::tbsCertificate, CertificateTBSCodec>>,
    Required<&Certificate::signatureAlgorithm, AlgIdCodec>,
    Required<&Certificate::signatureValue, BitStringAsStoredCodec>>;

// clang-format on

}  // namespace

Validity *asn1_Validity_new() { return ValiditySyntax::create(); }
void asn1_Validity_free(Validity *pElement) { ValiditySyntax::free(pElement); }
Validity *asn1_Validity_clone(const Validity *pElement) { return ValiditySyntax::clone(pElement); }
uint32_t asn1_Validity_e(uint8_t **pp, const Validity *pElement) {
  return ValiditySyntax::encode(pp, pElement);
}
const uint8_t *asn1_Validity_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Validity **ppElement, uint32_t depth) {
  return ValiditySyntax::decode(z, end, impl_tag, ppElement, depth);
}

SubjectPKI *asn1_SubjectPKI_new() { return SubjectPKISyntax::create(); }
void asn1_SubjectPKI_free(SubjectPKI *pElement) { SubjectPKISyntax::free(pElement); }
SubjectPKI *asn1_SubjectPKI_clone(const SubjectPKI *pElement) {
  return SubjectPKISyntax::clone(pElement);
}
uint32_t asn1_SubjectPKI_e(uint8_t **pp, const SubjectPKI *pElement) {
  return SubjectPKISyntax::encode(pp, pElement);
}
const uint8_t *asn1_SubjectPKI_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 SubjectPKI **ppElement, uint32_t depth) {
  return SubjectPKISyntax::decode(z, end, impl_tag, ppElement, depth);
}

Extension *asn1_Extension_new() { return ExtensionSyntax::create(); }
void asn1_Extension_free(Extension *pElement) { ExtensionSyntax::free(pElement); }
Extension *asn1_Extension_clone(const Extension *pElement) {
  return ExtensionSyntax::clone(pElement);
}
uint32_t asn1_Extension_e(uint8_t **pp, const Extension *pElement) {
  return ExtensionSyntax::encode(pp, pElement);
}
const uint8_t *asn1_Extension_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                Extension **ppElement, uint32_t depth) {
  return ExtensionSyntax::decode(z, end, impl_tag, ppElement, depth);
}

void asn1_Extensions_free(Extensions *pElement) { ExtensionsSyntax::free(pElement); }
Extensions *asn1_Extensions_clone(const Extensions *pElement) {
  return ExtensionsSyntax::clone(pElement);
}
uint32_t asn1_Extensions_e(uint8_t **pp, const Extensions *pElement) {
  return ExtensionsSyntax::encode(pp, pElement);
}
const uint8_t *asn1_Extensions_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 Extensions **ppElement, uint32_t depth) {
  return ExtensionsSyntax::decode(z, end, impl_tag, ppElement, depth);
}

Certificate_TBS *asn1_Certificate_TBS_new() { return CertificateTBSSyntax::create(); }
void asn1_Certificate_TBS_free(Certificate_TBS *pElement) { CertificateTBSSyntax::free(pElement); }
Certificate_TBS *asn1_Certificate_TBS_clone(const Certificate_TBS *pElement) {
  return CertificateTBSSyntax::clone(pElement);
}
uint32_t asn1_Certificate_TBS_e(uint8_t **pp, const Certificate_TBS *pElement) {
  return CertificateTBSSyntax::encode(pp, pElement);
}
const uint8_t *asn1_Certificate_TBS_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      Certificate_TBS **ppElement, uint32_t depth) {
  return CertificateTBSSyntax::decode(z, end, impl_tag, ppElement, depth);
}

Certificate *asn1_Certificate_new() { return CertificateSyntax::create(); }
void asn1_Certificate_free(Certificate *pElement) { CertificateSyntax::free(pElement); }
Certificate *asn1_Certificate_clone(const Certificate *pElement) {
  return CertificateSyntax::clone(pElement);
}
uint32_t asn1_Certificate_e(uint8_t **pp, const Certificate *pElement) {
  return CertificateSyntax::encode(pp, pElement);
}
const uint8_t *asn1_Certificate_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  Certificate **ppElement, uint32_t depth) {
  return CertificateSyntax::decode(z, end, impl_tag, ppElement, depth);
}
