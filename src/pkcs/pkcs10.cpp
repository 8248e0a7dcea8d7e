// Certification requests (PKCS #10, RFC 2986).
#include "x509/codecs.h"
#include "x509/names.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// CertificationRequestInfo ::= SEQUENCE {
//   version            INTEGER,
//   subject            Name,
//   subjectPKInfo      SubjectPublicKeyInfo,
//   attributes     [0] IMPLICIT SET OF Attribute OPTIONAL }
using Info = CertRequestInfo;
using CertRequestInfoSyntax = Sequence<Info,
    Required<&Info::version, IntegerCodec>,
    Stored<&Info::subjectEncoded, NameForms<&Info::subjectSequence, &Info::subject>>,
    Required<&Info::subjectPKInfo, SubjectPKICodec>,
    Optional<&Info::attributes, Implicit<0, AttributesCodec>>>;
using CertRequestInfoCodec = ORVELASN1_FAMILY(0x30, CertRequestInfo);

// CertificationRequest ::= SEQUENCE {
//   certificationRequestInfo  CertificationRequestInfo,
//   signatureAlgorithm        AlgorithmIdentifier,
//   signature                 BIT STRING }
//
// The signature is written without the zero bits at its end, unlike that of a certificate.
using CertificationRequestSyntax = Sequence<CertificationRequest,
    Stored<&CertificationRequest::tbsEncoded, Required<&CertificationRequest::certificationRequestInfo, CertRequestInfoCodec>>,
    Required<&CertificationRequest::signatureAlgorithm, AlgIdCodec>,
    Required<&CertificationRequest::signature, BitStringCodec>>;

// clang-format on

}  // namespace

CertRequestInfo *asn1_CertRequestInfo_new() { return CertRequestInfoSyntax::create(); }
void asn1_CertRequestInfo_free(CertRequestInfo *pElement) { CertRequestInfoSyntax::free(pElement); }
CertRequestInfo *asn1_CertRequestInfo_clone(const CertRequestInfo *pElement) {
  return CertRequestInfoSyntax::clone(pElement);
}
uint32_t asn1_CertRequestInfo_e(uint8_t **pp, const CertRequestInfo *pElement) {
  return CertRequestInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_CertRequestInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      CertRequestInfo **ppElement, uint32_t depth) {
  return CertRequestInfoSyntax::decode(z, end, impl_tag, ppElement, depth);
}

CertificationRequest *asn1_CertificationRequest_new() {
  return CertificationRequestSyntax::create();
}
void asn1_CertificationRequest_free(CertificationRequest *pElement) {
  CertificationRequestSyntax::free(pElement);
}
CertificationRequest *asn1_CertificationRequest_clone(const CertificationRequest *pElement) {
  return CertificationRequestSyntax::clone(pElement);
}
uint32_t asn1_CertificationRequest_e(uint8_t **pp, const CertificationRequest *pElement) {
  return CertificationRequestSyntax::encode(pp, pElement);
}
const uint8_t *asn1_CertificationRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           CertificationRequest **ppElement, uint32_t depth) {
  return CertificationRequestSyntax::decode(z, end, impl_tag, ppElement, depth);
}
