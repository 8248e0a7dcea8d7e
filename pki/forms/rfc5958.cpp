// Private keys (RFC 5958).
#include "pki/forms/rfc5652.h"

using namespace pki;

// clang-format off

// OneAsymmetricKey ::= SEQUENCE {
//   version                  INTEGER,
//   privateKeyAlgorithm      AlgorithmIdentifier,
//   privateKey               OCTET STRING,
//   attributes           [0] IMPLICIT SET OF Attribute OPTIONAL,
//   publicKey            [1] IMPLICIT BIT STRING OPTIONAL }
using Key = pki_OneAsymmetricKey;
using OneAsymmetricKeyTable = Sequence<Key,
    Required<&Key::version, IntegerCodec>,
    Required<&Key::privateKeyAlgorithm, AlgIdCodec>,
    Wiped<Required<&Key::privateKey, OctetStringCodec>>,
    Optional<&Key::attributes, Implicit<0, AttributesCodec>>,
    Optional<&Key::publicKey, Implicit<1, BitStringCodec>>>;
EXPORT_FORM(OneAsymmetricKey, Key, "OneAsymmetricKey", OneAsymmetricKeyTable)

// EncryptedPrivateKeyInfo ::= SEQUENCE {
//   encryptionAlgorithm  AlgorithmIdentifier,
//   encryptedData        OCTET STRING }
using Encrypted = EncryptedPrivateKeyInfo;
using EncryptedPrivateKeyInfoTable = Sequence<Encrypted,
    Required<&Encrypted::encryptionAlgorithm, AlgIdCodec>,
    Required<&Encrypted::encryptedData, OctetStringCodec>>;
EXPORT_FORM(EncryptedPrivateKeyInfo, Encrypted, "EncryptedPrivateKeyInfo",
            EncryptedPrivateKeyInfoTable)
