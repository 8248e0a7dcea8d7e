// Elliptic-curve private keys (RFC 5915).
#include "pki/forms/rfc5480.h"

using namespace pki;

// clang-format off

// ECPrivateKey ::= SEQUENCE {
//   version         INTEGER,
//   privateKey      OCTET STRING,
//   parameters  [0] EXPLICIT ECParameters OPTIONAL,
//   publicKey   [1] EXPLICIT BIT STRING OPTIONAL }
using ECKey = pki_ECPrivateKey;
using ECPrivateKeyTable = Sequence<ECKey,
    Required<&ECKey::version, IntegerCodec>,
    Wiped<Required<&ECKey::privateKey, OctetStringCodec>>,
    Optional<&ECKey::parameters, Explicit<0, ECParametersCodec>>,
    Optional<&ECKey::publicKey, Explicit<1, BitStringCodec>>>;
EXPORT_FORM(ECPrivateKey, ECKey, "ECPrivateKey", ECPrivateKeyTable)
