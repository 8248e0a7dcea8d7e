// RSA keys and digests (PKCS #1, RFC 8017). Nothing is wiped when a private key is released.
#include "x509/codecs.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// DigestInfo ::= SEQUENCE {
//   digestAlgorithm  AlgorithmIdentifier,
//   digest           OCTET STRING }
using DigestInfoSyntax = Sequence<DigestInfo,
    Required<&DigestInfo::digestAlgorithm, AlgIdCodec>,
    Required<&DigestInfo::digest, OctetStringCodec>>;

// RSAPublicKey ::= SEQUENCE {
//   modulus         INTEGER,
//   publicExponent  INTEGER }
using RSAPublicKeySyntax = Sequence<RSAPublicKey,
    Required<&RSAPublicKey::modulus, IntegerCodec>,
    Required<&RSAPublicKey::publicExponent, IntegerCodec>>;

// RSAPrivateKey ::= SEQUENCE {
//   version          INTEGER,
//   modulus          INTEGER,
//   publicExponent   INTEGER,
//   privateExponent  INTEGER,
//   prime1           INTEGER,
//   prime2           INTEGER,
//   exponent1        INTEGER,
//   exponent2        INTEGER,
//   coefficient      INTEGER }
using RSAPrivateKeySyntax = Sequence<RSAPrivateKey,
    Required<&RSAPrivateKey::version, IntegerCodec>,
    Required<&RSAPrivateKey::modulus, IntegerCodec>,
    Required<&RSAPrivateKey::publicExponent, IntegerCodec>,
    Required<&RSAPrivateKey::privateExponent, IntegerCodec>,
    Required<&RSAPrivateKey::prime1, IntegerCodec>,
    Required<&RSAPrivateKey::prime2, IntegerCodec>,
    Required<&RSAPrivateKey::exponent1, IntegerCodec>,
    Required<&RSAPrivateKey::exponent2, IntegerCodec>,
    Required<&RSAPrivateKey::coefficient, IntegerCodec>>;

// clang-format on

}  // namespace

DigestInfo *asn1_DigestInfo_new() { return DigestInfoSyntax::create(); }
void asn1_DigestInfo_free(DigestInfo *pElement) { DigestInfoSyntax::free(pElement); }
DigestInfo *asn1_DigestInfo_clone(const DigestInfo *pElement) {
  return DigestInfoSyntax::clone(pElement);
}
uint32_t asn1_DigestInfo_e(uint8_t **pp, const DigestInfo *pElement) {
  return DigestInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_DigestInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 DigestInfo **ppElement, uint32_t depth) {
  return DigestInfoSyntax::decode(z, end, impl_tag, ppElement, depth);
}

RSAPublicKey *asn1_RSAPublicKey_new() { return RSAPublicKeySyntax::create(); }
void asn1_RSAPublicKey_free(RSAPublicKey *pElement) { RSAPublicKeySyntax::free(pElement); }
RSAPublicKey *asn1_RSAPublicKey_clone(const RSAPublicKey *pElement) {
  return RSAPublicKeySyntax::clone(pElement);
}
uint32_t asn1_RSAPublicKey_e(uint8_t **pp, const RSAPublicKey *pElement) {
  return RSAPublicKeySyntax::encode(pp, pElement);
}
const uint8_t *asn1_RSAPublicKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   RSAPublicKey **ppElement, uint32_t depth) {
  return RSAPublicKeySyntax::decode(z, end, impl_tag, ppElement, depth);
}

RSAPrivateKey *asn1_RSAPrivateKey_new() { return RSAPrivateKeySyntax::create(); }
void asn1_RSAPrivateKey_free(RSAPrivateKey *pElement) { RSAPrivateKeySyntax::free(pElement); }
RSAPrivateKey *asn1_RSAPrivateKey_clone(const RSAPrivateKey *pElement) {
  return RSAPrivateKeySyntax::clone(pElement);
}
uint32_t asn1_RSAPrivateKey_e(uint8_t **pp, const RSAPrivateKey *pElement) {
  return RSAPrivateKeySyntax::encode(pp, pElement);
}
const uint8_t *asn1_RSAPrivateKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    RSAPrivateKey **ppElement, uint32_t depth) {
  return RSAPrivateKeySyntax::decode(z, end, impl_tag, ppElement, depth);
}
