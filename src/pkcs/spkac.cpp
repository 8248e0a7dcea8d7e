// The signed public key and challenge of browser key enrolment.
#include "x509/codecs.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// PublicKeyAndChallenge ::= SEQUENCE {
//   spki       SubjectPublicKeyInfo,
//   challenge  IA5String }
using PublicKeyAndChallengeSyntax = Sequence<PublicKeyAndChallenge,
    Required<&PublicKeyAndChallenge::spki, SubjectPKICodec>,
    Required<&PublicKeyAndChallenge::challenge, IA5StringCodec>>;
using PublicKeyAndChallengeCodec = ORVELASN1_FAMILY(0x30, PublicKeyAndChallenge);

// SignedPublicKeyAndChallenge ::= SEQUENCE {
//   publicKeyAndChallenge  PublicKeyAndChallenge,
//   signatureAlgorithm     AlgorithmIdentifier,
//   signature              BIT STRING }
using Signed = SignedPublicKeyAndChallenge;
using SignedSyntax = Sequence<Signed,
    Stored<&Signed::tbsEncoded, Required<&Signed::publicKeyAndChallenge, PublicKeyAndChallengeCodec>>,
    Required<&Signed::signatureAlgorithm, AlgIdCodec>,
    Required<&Signed::signature, BitStringCodec>>;

// clang-format on

}  // namespace

PublicKeyAndChallenge *asn1_PublicKeyAndChallenge_new() {
  return PublicKeyAndChallengeSyntax::create();
}
void asn1_PublicKeyAndChallenge_free(PublicKeyAndChallenge *pElement) {
  PublicKeyAndChallengeSyntax::free(pElement);
}
PublicKeyAndChallenge *asn1_PublicKeyAndChallenge_clone(const PublicKeyAndChallenge *pElement) {
  return PublicKeyAndChallengeSyntax::clone(pElement);
}
uint32_t asn1_PublicKeyAndChallenge_e(uint8_t **pp, const PublicKeyAndChallenge *pElement) {
  return PublicKeyAndChallengeSyntax::encode(pp, pElement);
}
const uint8_t *asn1_PublicKeyAndChallenge_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            PublicKeyAndChallenge **ppElement, uint32_t depth) {
  return PublicKeyAndChallengeSyntax::decode(z, end, impl_tag, ppElement, depth);
}

SignedPublicKeyAndChallenge *asn1_SignedPublicKeyAndChallenge_new() {
  return SignedSyntax::create();
}
void asn1_SignedPublicKeyAndChallenge_free(SignedPublicKeyAndChallenge *pElement) {
  SignedSyntax::free(pElement);
}
SignedPublicKeyAndChallenge *asn1_SignedPublicKeyAndChallenge_clone(
    const SignedPublicKeyAndChallenge *pElement) {
  return SignedSyntax::clone(pElement);
}
const uint8_t *asn1_SignedPublicKeyAndChallenge_d(const uint8_t *z, const uint8_t *end,
                                                  uint32_t impl_tag,
                                                  SignedPublicKeyAndChallenge **ppElement,
                                                  uint32_t depth) {
  return SignedSyntax::decode(z, end, impl_tag, ppElement, depth);
}

// A record with stored octets can be measured, but not written: the caller clears them first.
uint32_t asn1_SignedPublicKeyAndChallenge_e(uint8_t **pp,
                                            const SignedPublicKeyAndChallenge *pElement) {
  if (pp != nullptr && pElement != nullptr && pElement->tbsEncoded != nullptr) return 0;
  return SignedSyntax::encode(pp, pElement);
}
