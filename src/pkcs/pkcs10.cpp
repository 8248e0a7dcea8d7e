// Certification requests (PKCS #10, RFC 2986).
#include "core/export.h"
#include "pkcs/pkcs.h"

using namespace asn1;

// clang-format off

// CertificationRequestInfo ::= SEQUENCE {
//   version            INTEGER,
//   subject            Name,
//   subjectPKInfo      SubjectPublicKeyInfo,
//   attributes     [0] IMPLICIT SET OF Attribute OPTIONAL }
using CertRequestInfoTable = Sequence<CertRequestInfo,
    Required<&CertRequestInfo::version, IntegerCodec>,
    Stored<&CertRequestInfo::subjectEncoded, NameForms<&CertRequestInfo::subjectSequence, &CertRequestInfo::subject>>,
    Required<&CertRequestInfo::subjectPKInfo, SubjectPKICodec>,
    Optional<&CertRequestInfo::attributes, Implicit<0, AttributesCodec>>>;
EXPORT_RECORD_AS(CertRequestInfo, "CertificationRequestInfo", CertRequestInfoTable)

// CertificationRequest ::= SEQUENCE {
//   certificationRequestInfo  CertificationRequestInfo,
//   signatureAlgorithm        AlgorithmIdentifier,
//   signature                 BIT STRING }
//
// The signature is written without the zero bits at its end, unlike that of a certificate.
using CertificationRequestTable = Sequence<CertificationRequest,
    Stored<&CertificationRequest::tbsEncoded, Required<&CertificationRequest::certificationRequestInfo, CertRequestInfoCodec>>,
    Required<&CertificationRequest::signatureAlgorithm, AlgIdCodec>,
    Required<&CertificationRequest::signature, BitStringCodec>>;
EXPORT_RECORD(CertificationRequest, CertificationRequestTable)
