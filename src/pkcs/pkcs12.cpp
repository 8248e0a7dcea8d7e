// Personal information exchange (PKCS #12, RFC 7292), and its identifiers.
#include "registry/identifiers.h"
#include "x509/codecs.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// MacData ::= SEQUENCE {
//   mac         DigestInfo,
//   macSalt     OCTET STRING,
//   iterations  INTEGER DEFAULT 1 }
//
// The default is applied in neither direction.
using MacDataSyntax = Sequence<MacData,
    Required<&MacData::mac, DigestInfoCodec>,
    Required<&MacData::macSalt, OctetStringCodec>,
    Optional<&MacData::iterations, IntegerCodec>>;
using MacDataCodec = ORVELASN1_FAMILY(0x30, MacData);

// PFX ::= SEQUENCE {
//   version   INTEGER,
//   authSafe  ContentInfo,
//   macData   MacData OPTIONAL }
using PFXSyntax = Sequence<PFX,
    Required<&PFX::version, IntegerCodec>,
    Required<&PFX::authSafe, ContentInfoCodec>,
    Optional<&PFX::macData, MacDataCodec>>;

// PBEParameter ::= SEQUENCE {
//   salt        OCTET STRING,
//   iterations  INTEGER }
using PbeParamsSyntax = Sequence<PbeParams,
    Required<&PbeParams::salt, OctetStringCodec>,
    Required<&PbeParams::iterations, IntegerCodec>>;

// SafeBag ::= SEQUENCE {
//   bagId              OBJECT IDENTIFIER,
//   bagValue       [0] EXPLICIT ANY DEFINED BY bagId,
//   bagAttributes      SET OF Attribute OPTIONAL }
using SafeBagSyntax = Sequence<SafeBag,
    Required<&SafeBag::bagId, ObjIdCodec>,
    Required<&SafeBag::bagValue, Explicit<0, AnyCodec>>,
    Optional<&SafeBag::bagAttributes, AttributesCodec, Presence::anything_left>>;

// CertBag ::= SEQUENCE {
//   certId           OBJECT IDENTIFIER,
//   certValue    [0] EXPLICIT ANY DEFINED BY certId }
using CertBagSyntax = Sequence<CertBag,
    Required<&CertBag::certId, ObjIdCodec>,
    Required<&CertBag::certValue, Explicit<0, AnyCodec>>>;

// CRLBag ::= SEQUENCE {
//   crlId            OBJECT IDENTIFIER,
//   crlValue     [0] EXPLICIT ANY DEFINED BY crlId }
using CRLBagSyntax = Sequence<CRLBag,
    Required<&CRLBag::crlId, ObjIdCodec>,
    Required<&CRLBag::crlValue, Explicit<0, AnyCodec>>>;

// SecretBag ::= SEQUENCE {
//   secretTypeId     OBJECT IDENTIFIER,
//   secretValue  [0] EXPLICIT ANY DEFINED BY secretTypeId }
using SecretBagSyntax = Sequence<SecretBag,
    Required<&SecretBag::secretTypeId, ObjIdCodec>,
    Required<&SecretBag::secretValue, Explicit<0, AnyCodec>>>;

// clang-format on

}  // namespace

PFX *asn1_PFX_new() { return PFXSyntax::create(); }
void asn1_PFX_free(PFX *pElement) { PFXSyntax::free(pElement); }
PFX *asn1_PFX_clone(const PFX *pElement) { return PFXSyntax::clone(pElement); }
uint32_t asn1_PFX_e(uint8_t **pp, const PFX *pElement) { return PFXSyntax::encode(pp, pElement); }
const uint8_t *asn1_PFX_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, PFX **ppElement,
                          uint32_t depth) {
  return PFXSyntax::decode_any_length(z, end, impl_tag, ppElement, depth);
}

MacData *asn1_MacData_new() { return MacDataSyntax::create(); }
void asn1_MacData_free(MacData *pElement) { MacDataSyntax::free(pElement); }
MacData *asn1_MacData_clone(const MacData *pElement) { return MacDataSyntax::clone(pElement); }
uint32_t asn1_MacData_e(uint8_t **pp, const MacData *pElement) {
  return MacDataSyntax::encode(pp, pElement);
}
const uint8_t *asn1_MacData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              MacData **ppElement, uint32_t depth) {
  return MacDataSyntax::decode(z, end, impl_tag, ppElement, depth);
}

PbeParams *asn1_PbeParams_new() { return PbeParamsSyntax::create(); }
void asn1_PbeParams_free(PbeParams *pElement) { PbeParamsSyntax::free(pElement); }
PbeParams *asn1_PbeParams_clone(const PbeParams *pElement) {
  return PbeParamsSyntax::clone(pElement);
}
uint32_t asn1_PbeParams_e(uint8_t **pp, const PbeParams *pElement) {
  return PbeParamsSyntax::encode(pp, pElement);
}
const uint8_t *asn1_PbeParams_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                PbeParams **ppElement, uint32_t depth) {
  return PbeParamsSyntax::decode(z, end, impl_tag, ppElement, depth);
}

SafeBag *asn1_SafeBag_new() { return SafeBagSyntax::create(); }
void asn1_SafeBag_free(SafeBag *pElement) { SafeBagSyntax::free(pElement); }
SafeBag *asn1_SafeBag_clone(const SafeBag *pElement) { return SafeBagSyntax::clone(pElement); }
uint32_t asn1_SafeBag_e(uint8_t **pp, const SafeBag *pElement) {
  return SafeBagSyntax::encode(pp, pElement);
}
const uint8_t *asn1_SafeBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              SafeBag **ppElement, uint32_t depth) {
  return SafeBagSyntax::decode(z, end, impl_tag, ppElement, depth);
}

CertBag *asn1_CertBag_new() { return CertBagSyntax::create(); }
void asn1_CertBag_free(CertBag *pElement) { CertBagSyntax::free(pElement); }
CertBag *asn1_CertBag_clone(const CertBag *pElement) { return CertBagSyntax::clone(pElement); }
uint32_t asn1_CertBag_e(uint8_t **pp, const CertBag *pElement) {
  return CertBagSyntax::encode(pp, pElement);
}
const uint8_t *asn1_CertBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              CertBag **ppElement, uint32_t depth) {
  return CertBagSyntax::decode(z, end, impl_tag, ppElement, depth);
}

CRLBag *asn1_CRLBag_new() { return CRLBagSyntax::create(); }
void asn1_CRLBag_free(CRLBag *pElement) { CRLBagSyntax::free(pElement); }
CRLBag *asn1_CRLBag_clone(const CRLBag *pElement) { return CRLBagSyntax::clone(pElement); }
uint32_t asn1_CRLBag_e(uint8_t **pp, const CRLBag *pElement) {
  return CRLBagSyntax::encode(pp, pElement);
}
const uint8_t *asn1_CRLBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             CRLBag **ppElement, uint32_t depth) {
  return CRLBagSyntax::decode(z, end, impl_tag, ppElement, depth);
}

SecretBag *asn1_SecretBag_new() { return SecretBagSyntax::create(); }
void asn1_SecretBag_free(SecretBag *pElement) { SecretBagSyntax::free(pElement); }
SecretBag *asn1_SecretBag_clone(const SecretBag *pElement) {
  return SecretBagSyntax::clone(pElement);
}
uint32_t asn1_SecretBag_e(uint8_t **pp, const SecretBag *pElement) {
  return SecretBagSyntax::encode(pp, pElement);
}
const uint8_t *asn1_SecretBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                SecretBag **ppElement, uint32_t depth) {
  return SecretBagSyntax::decode(z, end, impl_tag, ppElement, depth);
}

OBJECT_IDENTIFIER(pkcs_12, 1, 2, 840, 113549, 1, 12)
OBJECT_IDENTIFIER(pkcs_12PbeIds, 1, 2, 840, 113549, 1, 12, 1)
OBJECT_IDENTIFIER(pbeWithSHA1And128BitRC4, 1, 2, 840, 113549, 1, 12, 1, 1)
OBJECT_IDENTIFIER(pbeWithSHA1And40BitRC4, 1, 2, 840, 113549, 1, 12, 1, 2)
OBJECT_IDENTIFIER(pbeWithSHA1And3_KeyTripleDES_CBC, 1, 2, 840, 113549, 1, 12, 1, 3)
OBJECT_IDENTIFIER(pbeWithSHA1And2_KeyTripleDES_CBC, 1, 2, 840, 113549, 1, 12, 1, 4)
OBJECT_IDENTIFIER(pbeWithSHA1And128BitRC2, 1, 2, 840, 113549, 1, 12, 1, 5)
OBJECT_IDENTIFIER(pbeWithSHA1And40BitRC2, 1, 2, 840, 113549, 1, 12, 1, 6)
OBJECT_IDENTIFIER(pkcs_12Version1, 1, 2, 840, 113549, 1, 12, 10)
OBJECT_IDENTIFIER(pkcs_12BagIds, 1, 2, 840, 113549, 1, 12, 10, 1)
OBJECT_IDENTIFIER(keyBag, 1, 2, 840, 113549, 1, 12, 10, 1, 1)
OBJECT_IDENTIFIER(pkcs_8ShroudedKeyBag, 1, 2, 840, 113549, 1, 12, 10, 1, 2)
OBJECT_IDENTIFIER(certBag, 1, 2, 840, 113549, 1, 12, 10, 1, 3)
OBJECT_IDENTIFIER(crlBag, 1, 2, 840, 113549, 1, 12, 10, 1, 4)
OBJECT_IDENTIFIER(secretBag, 1, 2, 840, 113549, 1, 12, 10, 1, 5)
OBJECT_IDENTIFIER(safeContentBag, 1, 2, 840, 113549, 1, 12, 10, 1, 6)
OBJECT_IDENTIFIER(x509Certificate, 1, 2, 840, 113549, 1, 9, 22, 1)
OBJECT_IDENTIFIER(sdsiCertificate, 1, 2, 840, 113549, 1, 9, 22, 2)
OBJECT_IDENTIFIER(x509Crl, 1, 2, 840, 113549, 1, 9, 23, 1)
