// Certificates and certificate revocation lists (RFC 5280, 4.1, 5.1).
#include "pki/export.h"
#include "pki/forms/rfc5280.h"

using namespace pki;

// clang-format off

// Validity ::= SEQUENCE {
//   notBefore  Time,
//   notAfter   Time }
using ValidityTable = Unrolled<Sequence<Validity,
    Required<&Validity::notBefore, TimeCodec>,
    Required<&Validity::notAfter, TimeCodec>>>;
EXPORT_FORM(Validity, Validity, "Validity", ValidityTable)

// SubjectPublicKeyInfo ::= SEQUENCE {
//   algorithm         AlgorithmIdentifier,
//   subjectPublicKey  BIT STRING }
//
// Public as it is, the key is wiped like a secret.
using SubjectPKITable = Unrolled<Sequence<SubjectPKI,
    Required<&SubjectPKI::algorithm, AlgIdCodec>,
    Wiped<Required<&SubjectPKI::subjectPublicKey, BitStringCodec>>>>;
EXPORT_FORM(SubjectPKI, SubjectPKI, "SubjectPublicKeyInfo", SubjectPKITable)

// Extension ::= SEQUENCE {
//   extnID     OBJECT IDENTIFIER,
//   critical   BOOLEAN DEFAULT FALSE,
//   extnValue  OCTET STRING }
using ExtensionTable = Unrolled<Sequence<Extension,
    Required<&Extension::extnID, ObjIdCodec>,
    Optional<&Extension::critical, BooleanCodec>,
    Required<&Extension::extnValue, OctetStringCodec>>>;
EXPORT_FORM(Extension, Extension, "Extension", ExtensionTable)

// Extensions ::= SEQUENCE OF Extension
using ExtensionsTable = UnrolledList<SequenceOf<ExtensionCodec>>;
EXPORT_FORM_LIST(Extensions, Extensions, "Extensions", ExtensionsTable)

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
    Optional<&TBS::version, Explicit<0, IntegerCodec>>,
    Required<&TBS::serialNumber, IntegerCodec>,
    Required<&TBS::signature, AlgIdCodec>,
    Stored<&TBS::issuerEncoded, NameForms<&TBS::issuerSequence, &TBS::issuer>>,
    Required<&TBS::validity, ValidityCodec>,
    Stored<&TBS::subjectEncoded, NameForms<&TBS::subjectSequence, &TBS::subject>>,
    Required<&TBS::subjectPublicKeyInfo, SubjectPKICodec>,
    Optional<&TBS::issuerUniqueID, Implicit<1, BitStringCodec>>,
    Optional<&TBS::subjectUniqueID, Implicit<2, BitStringCodec>>,
    Optional<&TBS::extensions, Explicit<3, ExtensionsCodec>>>>;
EXPORT_FORM(Certificate_TBS, Certificate_TBS, "TBSCertificate", Certificate_TBSTable)

// Certificate ::= SEQUENCE {
//   tbsCertificate      TBSCertificate,
//   signatureAlgorithm  AlgorithmIdentifier,
//   signatureValue      BIT STRING }
using CertificateTable = Unrolled<Sequence<Certificate,
    Stored<&Certificate::tbsEncoded, Required<&Certificate::tbsCertificate, Certificate_TBSCodec>>,
    Required<&Certificate::signatureAlgorithm, AlgIdCodec>,
    Required<&Certificate::signatureValue, BitStringCodec>>>;
EXPORT_FORM(Certificate, Certificate, "Certificate", CertificateTable)

// An element of revokedCertificates:
// SEQUENCE {
//   userCertificate     CertificateSerialNumber,
//   revocationDate      Time,
//   crlEntryExtensions  Extensions OPTIONAL }
using CRLEntryTable = Unrolled<Sequence<CRLEntry,
    Required<&CRLEntry::userCertificate, IntegerCodec>,
    Required<&CRLEntry::revocationDate, TimeCodec>,
    Optional<&CRLEntry::crlEntryExtensions, ExtensionsCodec>>>;
EXPORT_FORM(CRLEntry, CRLEntry, "CRLEntry", CRLEntryTable)

// TBSCertList ::= SEQUENCE {
//   version                  INTEGER OPTIONAL,
//   signature                AlgorithmIdentifier,
//   issuer                   Name,
//   thisUpdate               Time,
//   nextUpdate               Time OPTIONAL,
//   revokedCertificates      SEQUENCE OF CRLEntry OPTIONAL,
//   crlExtensions        [0] EXPLICIT Extensions OPTIONAL }
using ListTBS = CertificateList_TBS;
using CertificateList_TBSTable = Sequence<ListTBS,
    Optional<&ListTBS::version, IntegerCodec>,
    Required<&ListTBS::signature, AlgIdCodec>,
    Stored<&ListTBS::issuerEncoded, NameForms<&ListTBS::issuerSequence, &ListTBS::issuer>>,
    Required<&ListTBS::thisUpdate, TimeCodec>,
    Optional<&ListTBS::nextUpdate, TimeCodec>,
    Optional<&ListTBS::revokedCertificates, SequenceOf<CRLEntryCodec>>,
    Optional<&ListTBS::crlExtensions, Explicit<0, ExtensionsCodec>>>;
EXPORT_FORM(CertificateList_TBS, CertificateList_TBS, "TBSCertList", CertificateList_TBSTable)

// CertificateList ::= SEQUENCE {
//   tbsCertList         TBSCertList,
//   signatureAlgorithm  AlgorithmIdentifier,
//   signatureValue      BIT STRING }
using CRL = CertificateRevocationList;
using CertificateRevocationListTable = Sequence<CRL,
    Stored<&CRL::tbsEncoded, Required<&CRL::tbsCertList, CertificateList_TBSCodec>>,
    Required<&CRL::signatureAlgorithm, AlgIdCodec>,
    Required<&CRL::signatureValue, BitStringCodec>>;
EXPORT_FORM(CertificateRevocationList, CertificateRevocationList, "CertificateList",
            CertificateRevocationListTable)
