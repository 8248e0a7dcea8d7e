// The signed public key and challenge of browser key enrolment.
#include "core/export.h"
#include "pkcs/pkcs.h"

using namespace asn1;

// clang-format off

// PublicKeyAndChallenge ::= SEQUENCE {
//   spki       SubjectPublicKeyInfo,
//   challenge  IA5String }
using PublicKeyAndChallengeTable = Sequence<PublicKeyAndChallenge,
    Required<&PublicKeyAndChallenge::spki, SubjectPKICodec>,
    Required<&PublicKeyAndChallenge::challenge, IA5StringCodec>>;
EXPORT_RECORD(PublicKeyAndChallenge, PublicKeyAndChallengeTable)

// SignedPublicKeyAndChallenge ::= SEQUENCE {
//   publicKeyAndChallenge  PublicKeyAndChallenge,
//   signatureAlgorithm     AlgorithmIdentifier,
//   signature              BIT STRING }
using Signed = SignedPublicKeyAndChallenge;
using SignedPublicKeyAndChallengeTable = Sequence<Signed,
    Stored<&Signed::tbsEncoded, Required<&Signed::publicKeyAndChallenge, PublicKeyAndChallengeCodec>>,
    Required<&Signed::signatureAlgorithm, AlgIdCodec>,
    Required<&Signed::signature, BitStringCodec>>;
EXPORT(SignedPublicKeyAndChallenge, SignedPublicKeyAndChallengeTable, NEW, DECODER, OWN_ENCODER, CLONE, FREE)
