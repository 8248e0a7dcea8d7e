// Private keys (PKCS #8, RFC 5208). Nothing is wiped when one is released.
#include "core/export.h"
#include "pkcs/pkcs.h"

using namespace asn1;

// clang-format off

// PrivateKeyInfo ::= SEQUENCE {
//   version                  INTEGER,
//   privateKeyAlgorithm      AlgorithmIdentifier,
//   privateKey               OCTET STRING,
//   attributes           [0] IMPLICIT SET OF Attribute OPTIONAL }
using PrivateKeyInfoTable = Sequence<PrivateKeyInfo,
    Required<&PrivateKeyInfo::version, IntegerCodec>,
    Required<&PrivateKeyInfo::privateKeyAlgorithm, AlgIdCodec>,
    Required<&PrivateKeyInfo::privateKey, OctetStringCodec>,
    Optional<&PrivateKeyInfo::attributes, Implicit<0, AttributesCodec>>>;
EXPORT_RECORD(PrivateKeyInfo, PrivateKeyInfoTable)

// EncryptedPrivateKeyInfo ::= SEQUENCE {
//   encryptionAlgorithm  AlgorithmIdentifier,
//   encryptedData        OCTET STRING }
using EncryptedPrivateKeyInfoTable = Sequence<EncryptedPrivateKeyInfo,
    Required<&EncryptedPrivateKeyInfo::encryptionAlgorithm, AlgIdCodec>,
    Required<&EncryptedPrivateKeyInfo::encryptedData, OctetStringCodec>>;
EXPORT_RECORD(EncryptedPrivateKeyInfo, EncryptedPrivateKeyInfoTable)
