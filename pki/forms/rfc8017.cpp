// RSA keys and digests (RFC 8017).
#include "pki/forms/rfc8017.h"

using namespace pki;

// clang-format off

// RSAPublicKey ::= SEQUENCE {
//   modulus         INTEGER,
//   publicExponent  INTEGER }
using RSAPublicKeyTable = Sequence<RSAPublicKey,
    Required<&RSAPublicKey::modulus, IntegerCodec>,
    Required<&RSAPublicKey::publicExponent, IntegerCodec>>;
EXPORT_FORM(RSAPublicKey, RSAPublicKey, "RSAPublicKey", RSAPublicKeyTable)

// OtherPrimeInfo ::= SEQUENCE {
//   prime        INTEGER,
//   exponent     INTEGER,
//   coefficient  INTEGER }
using Other = pki_OtherPrimeInfo;
using OtherPrimeInfoTable = Sequence<Other,
    Wiped<Required<&Other::prime, IntegerCodec>>,
    Wiped<Required<&Other::exponent, IntegerCodec>>,
    Wiped<Required<&Other::coefficient, IntegerCodec>>>;
EXPORT_FORM(OtherPrimeInfo, Other, "OtherPrimeInfo", OtherPrimeInfoTable)

// RSAPrivateKey ::= SEQUENCE {
//   version          INTEGER,
//   modulus          INTEGER,
//   publicExponent   INTEGER,
//   privateExponent  INTEGER,
//   prime1           INTEGER,
//   prime2           INTEGER,
//   exponent1        INTEGER,
//   exponent2        INTEGER,
//   coefficient      INTEGER,
//   otherPrimeInfos  SEQUENCE OF OtherPrimeInfo OPTIONAL }
using Key = pki_RSAPrivateKey;
using RSAPrivateKeyTable = Sequence<Key,
    Required<&Key::version, IntegerCodec>,
    Required<&Key::modulus, IntegerCodec>,
    Required<&Key::publicExponent, IntegerCodec>,
    Wiped<Required<&Key::privateExponent, IntegerCodec>>,
    Wiped<Required<&Key::prime1, IntegerCodec>>,
    Wiped<Required<&Key::prime2, IntegerCodec>>,
    Wiped<Required<&Key::exponent1, IntegerCodec>>,
    Wiped<Required<&Key::exponent2, IntegerCodec>>,
    Wiped<Required<&Key::coefficient, IntegerCodec>>,
    Optional<&Key::otherPrimeInfos, SequenceOf<OtherPrimeInfoCodec>>>;
EXPORT_FORM(RSAPrivateKey, Key, "RSAPrivateKey", RSAPrivateKeyTable)

// DigestInfo ::= SEQUENCE {
//   digestAlgorithm  AlgorithmIdentifier,
//   digest           OCTET STRING }
using DigestInfoTable = Sequence<DigestInfo,
    Required<&DigestInfo::digestAlgorithm, AlgIdCodec>,
    Required<&DigestInfo::digest, OctetStringCodec>>;
EXPORT_FORM(DigestInfo, DigestInfo, "DigestInfo", DigestInfoTable)
