// Parameters of RSA algorithms (RFC 4055).
#include "pki/export.h"

using namespace pki;

// clang-format off

// RSASSA-PSS-params ::= SEQUENCE {
//   hashAlgorithm     [0] EXPLICIT AlgorithmIdentifier DEFAULT sha1Identifier,
//   maskGenAlgorithm  [1] EXPLICIT AlgorithmIdentifier DEFAULT mgf1SHA1Identifier,
//   saltLength        [2] EXPLICIT INTEGER DEFAULT 20,
//   trailerField      [3] EXPLICIT INTEGER DEFAULT 1 }
using PSS = pki_RSASSA_PSS_params;
using RSASSA_PSS_paramsTable = Sequence<PSS,
    Optional<&PSS::hashAlgorithm, Explicit<0, AlgIdCodec>>,
    Optional<&PSS::maskGenAlgorithm, Explicit<1, AlgIdCodec>>,
    Optional<&PSS::saltLength, Explicit<2, IntegerCodec>>,
    Optional<&PSS::trailerField, Explicit<3, IntegerCodec>>>;
EXPORT_FORM(RSASSA_PSS_params, PSS, "RSASSA-PSS-params", RSASSA_PSS_paramsTable)

// RSAES-OAEP-params ::= SEQUENCE {
//   hashFunc     [0] EXPLICIT AlgorithmIdentifier DEFAULT sha1Identifier,
//   maskGenFunc  [1] EXPLICIT AlgorithmIdentifier DEFAULT mgf1SHA1Identifier,
//   pSourceFunc  [2] EXPLICIT AlgorithmIdentifier DEFAULT pSpecifiedEmptyIdentifier }
using OAEP = pki_RSAES_OAEP_params;
using RSAES_OAEP_paramsTable = Sequence<OAEP,
    Optional<&OAEP::hashFunc, Explicit<0, AlgIdCodec>>,
    Optional<&OAEP::maskGenFunc, Explicit<1, AlgIdCodec>>,
    Optional<&OAEP::pSourceFunc, Explicit<2, AlgIdCodec>>>;
EXPORT_FORM(RSAES_OAEP_params, OAEP, "RSAES-OAEP-params", RSAES_OAEP_paramsTable)
