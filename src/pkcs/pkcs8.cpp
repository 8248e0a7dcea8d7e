// Private keys (PKCS #8, RFC 5208). Nothing is wiped when one is released.
#include "x509/codecs.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// PrivateKeyInfo ::= SEQUENCE {
//   version                  INTEGER,
//   privateKeyAlgorithm      AlgorithmIdentifier,
//   privateKey               OCTET STRING,
//   attributes           [0] IMPLICIT SET OF Attribute OPTIONAL }
using PrivateKeyInfoSyntax = Sequence<PrivateKeyInfo,
    Required<&PrivateKeyInfo::version, IntegerCodec>,
    Required<&PrivateKeyInfo::privateKeyAlgorithm, AlgIdCodec>,
    Required<&PrivateKeyInfo::privateKey, OctetStringCodec>,
    Optional<&PrivateKeyInfo::attributes, Implicit<0, AttributesCodec>>>;

// EncryptedPrivateKeyInfo ::= SEQUENCE {
//   encryptionAlgorithm  AlgorithmIdentifier,
//   encryptedData        OCTET STRING }
using EncryptedPrivateKeyInfoSyntax = Sequence<EncryptedPrivateKeyInfo,
    Required<&EncryptedPrivateKeyInfo::encryptionAlgorithm, AlgIdCodec>,
    Required<&EncryptedPrivateKeyInfo::encryptedData, OctetStringCodec>>;

// clang-format on

}  // namespace

PrivateKeyInfo *asn1_PrivateKeyInfo_new() { return PrivateKeyInfoSyntax::create(); }
void asn1_PrivateKeyInfo_free(PrivateKeyInfo *pElement) { PrivateKeyInfoSyntax::free(pElement); }
PrivateKeyInfo *asn1_PrivateKeyInfo_clone(const PrivateKeyInfo *pElement) {
  return PrivateKeyInfoSyntax::clone(pElement);
}
uint32_t asn1_PrivateKeyInfo_e(uint8_t **pp, const PrivateKeyInfo *pElement) {
  return PrivateKeyInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_PrivateKeyInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     PrivateKeyInfo **ppElement, uint32_t depth) {
  return PrivateKeyInfoSyntax::decode(z, end, impl_tag, ppElement, depth);
}

EncryptedPrivateKeyInfo *asn1_EncryptedPrivateKeyInfo_new() {
  return EncryptedPrivateKeyInfoSyntax::create();
}
void asn1_EncryptedPrivateKeyInfo_free(EncryptedPrivateKeyInfo *pElement) {
  EncryptedPrivateKeyInfoSyntax::free(pElement);
}
EncryptedPrivateKeyInfo *asn1_EncryptedPrivateKeyInfo_clone(
    const EncryptedPrivateKeyInfo *pElement) {
  return EncryptedPrivateKeyInfoSyntax::clone(pElement);
}
uint32_t asn1_EncryptedPrivateKeyInfo_e(uint8_t **pp, const EncryptedPrivateKeyInfo *pElement) {
  return EncryptedPrivateKeyInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_EncryptedPrivateKeyInfo_d(const uint8_t *z, const uint8_t *end,
                                              uint32_t impl_tag,
                                              EncryptedPrivateKeyInfo **ppElement, uint32_t depth) {
  return EncryptedPrivateKeyInfoSyntax::decode(z, end, impl_tag, ppElement, depth);
}
