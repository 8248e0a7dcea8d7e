// X.509 certificates (RFC 5280, 4.1).
#include "core/export.h"
#include "x509/x509.h"

using namespace asn1;

namespace {

// Unique identifiers and extensions need a version that is not 0. No other version is refused: a
// version 2 certificate may have extensions.
constexpr Condition later_version{
    [](const void *tbs) {
      const Integer *const version = static_cast<const Certificate_TBS *>(tbs)->version;
      return version != nullptr && version->length != 0 && version->data[0] != 0;
    },
    "which needs a version above 1"};

}  // namespace

// clang-format off

// Validity ::= SEQUENCE {
//   notBefore  Time,
//   notAfter   Time }
using ValidityTable = Unrolled<Sequence<Validity,
    Required<&Validity::notBefore, TimeCodec>,
    Required<&Validity::notAfter, TimeCodec>>>;
EXPORT_RECORD(Validity, ValidityTable)

// SubjectPublicKeyInfo ::= SEQUENCE {
//   algorithm         AlgorithmIdentifier,
//   subjectPublicKey  BIT STRING }
//
// The key is written without the zero bits at its end: a key that ends in a zero octet comes out
// shorter than it came in. Public as it is, it is wiped like a secret.
using SubjectPKITable = Unrolled<Sequence<SubjectPKI,
    Required<&SubjectPKI::algorithm, AlgIdCodec>,
    Wiped<Required<&SubjectPKI::subjectPublicKey, BitStringCodec>>>>;
EXPORT_RECORD_AS(SubjectPKI, "SubjectPublicKeyInfo", SubjectPKITable)

// Extension ::= SEQUENCE {
//   extnID     OBJECT IDENTIFIER,
//   critical   BOOLEAN DEFAULT FALSE,
//   extnValue  OCTET STRING }
using ExtensionTable = Unrolled<Sequence<Extension,
    Required<&Extension::extnID, ObjIdCodec>,
    Optional<&Extension::critical, BooleanCodec, Presence::octet_of_input>,
    Required<&Extension::extnValue, OctetStringCodec>>>;
EXPORT_RECORD(Extension, ExtensionTable)

// Extensions ::= SEQUENCE OF Extension
using ExtensionsTable = SequenceOf<ExtensionCodec>;
EXPORT_LIST(Extensions, ExtensionsTable)

// TBSCertificate ::= SEQUENCE {
//   version               [0] EXPLICIT INTEGER DEFAULT v1,
//   serialNumber              INTEGER,
//   signature                 AlgorithmIdentifier,
//   issuer                    Name,
//   validity                  Validity,
//   subject                   Name,
//   subjectPublicKeyInfo      SubjectPublicKeyInfo,
//   issuerUniqueID        [1] IMPLICIT BIT STRING OPTIONAL,
//   subjectUniqueID       [2] IMPLICIT BIT STRING OPTIONAL,
//   extensions            [3] EXPLICIT Extensions OPTIONAL }
using TBS = Certificate_TBS;
using Certificate_TBSTable = Unrolled<Sequence<TBS,
    Optional<&TBS::version, Explicit<0, IntegerCodec>, Presence::octet_of_input>,
    Required<&TBS::serialNumber, IntegerCodec>,
    Required<&TBS::signature, AlgIdCodec>,
    Stored<&TBS::issuerEncoded, NameForms<&TBS::issuerSequence, &TBS::issuer>>,
    Required<&TBS::validity, ValidityCodec>,
    Stored<&TBS::subjectEncoded, NameForms<&TBS::subjectSequence, &TBS::subject>>,
    Required<&TBS::subjectPublicKeyInfo, SubjectPKICodec>,
    OnlyIf<later_version, Optional<&TBS::issuerUniqueID, Implicit<1, BitStringCodec>>>,
    OnlyIf<later_version, Optional<&TBS::subjectUniqueID, Implicit<2, BitStringCodec>>>,
    OnlyIf<later_version, Optional<&TBS::extensions, Explicit<3, ExtensionsCodec>>>>>;
EXPORT_RECORD_AS(Certificate_TBS, "TBSCertificate", Certificate_TBSTable)

// Certificate ::= SEQUENCE {
//   tbsCertificate      TBSCertificate,
//   signatureAlgorithm  AlgorithmIdentifier,
//   signatureValue      BIT STRING }
using CertificateTable = Unrolled<Sequence<Certificate,
    Stored<&Certificate::tbsEncoded, Required<&Certificate::tbsCertificate, Certificate_TBSCodec>>,
    Required<&Certificate::signatureAlgorithm, AlgIdCodec>,
    Required<&Certificate::signatureValue, BitStringAsStoredCodec>>>;
EXPORT_RECORD(Certificate, CertificateTable)
