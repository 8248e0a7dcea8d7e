// RSA keys and digests (PKCS #1, RFC 8017). Nothing is wiped when a private key is released.
#include "core/export.h"
#include "pkcs/pkcs.h"

using namespace asn1;

// clang-format off

// DigestInfo ::= SEQUENCE {
//   digestAlgorithm  AlgorithmIdentifier,
//   digest           OCTET STRING }
using DigestInfoTable = Sequence<DigestInfo,
    Required<&DigestInfo::digestAlgorithm, AlgIdCodec>,
    Required<&DigestInfo::digest, OctetStringCodec>>;
EXPORT_RECORD(DigestInfo, DigestInfoTable)

// RSAPublicKey ::= SEQUENCE {
//   modulus         INTEGER,
//   publicExponent  INTEGER }
using RSAPublicKeyTable = Sequence<RSAPublicKey,
    Required<&RSAPublicKey::modulus, IntegerCodec>,
    Required<&RSAPublicKey::publicExponent, IntegerCodec>>;
EXPORT_RECORD(RSAPublicKey, RSAPublicKeyTable)

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
using RSAPrivateKeyTable = Sequence<RSAPrivateKey,
    Required<&RSAPrivateKey::version, IntegerCodec>,
    Required<&RSAPrivateKey::modulus, IntegerCodec>,
    Required<&RSAPrivateKey::publicExponent, IntegerCodec>,
    Required<&RSAPrivateKey::privateExponent, IntegerCodec>,
    Required<&RSAPrivateKey::prime1, IntegerCodec>,
    Required<&RSAPrivateKey::prime2, IntegerCodec>,
    Required<&RSAPrivateKey::exponent1, IntegerCodec>,
    Required<&RSAPrivateKey::exponent2, IntegerCodec>,
    Required<&RSAPrivateKey::coefficient, IntegerCodec>>;
EXPORT_RECORD(RSAPrivateKey, RSAPrivateKeyTable)
