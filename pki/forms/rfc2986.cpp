// Certification requests (RFC 2986).
#include "pki/forms/rfc5652.h"

using namespace pki;

// clang-format off

// CertificationRequestInfo ::= SEQUENCE {
//   version            INTEGER,
//   subject            Name,
//   subjectPKInfo      SubjectPublicKeyInfo,
//   attributes     [0] IMPLICIT SET OF Attribute }
//
// Old requests leave out the attributes where there are none.
using Info = CertRequestInfo;
using CertRequestInfoTable = Sequence<Info,
    Required<&Info::version, IntegerCodec>,
    Stored<&Info::subjectEncoded, NameForms<&Info::subjectSequence, &Info::subject>>,
    Required<&Info::subjectPKInfo, SubjectPKICodec>,
    Optional<&Info::attributes, Implicit<0, AttributesCodec>>>;
EXPORT_FORM(CertRequestInfo, CertRequestInfo, "CertificationRequestInfo", CertRequestInfoTable)

// CertificationRequest ::= SEQUENCE {
//   certificationRequestInfo  CertificationRequestInfo,
//   signatureAlgorithm        AlgorithmIdentifier,
//   signature                 BIT STRING }
using CertRequest = CertificationRequest;
using CertificationRequestTable = Sequence<CertRequest,
    Stored<&CertRequest::tbsEncoded, Required<&CertRequest::certificationRequestInfo, CertRequestInfoCodec>>,
    Required<&CertRequest::signatureAlgorithm, AlgIdCodec>,
    Required<&CertRequest::signature, BitStringCodec>>;
EXPORT_FORM(CertificationRequest, CertRequest, "CertificationRequest", CertificationRequestTable)
