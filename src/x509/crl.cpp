// X.509 certificate revocation lists (RFC 5280, 5.1).
#include "core/export.h"
#include "x509/x509.h"

using namespace asn1;

// clang-format off

// CRLEntry ::= SEQUENCE {
//   userCertificate     INTEGER,
//   revocationDate      Time,
//   crlEntryExtensions  Extensions OPTIONAL }
using CRLEntryTable = Unrolled<Sequence<CRLEntry,
    Required<&CRLEntry::userCertificate, IntegerCodec>,
    Required<&CRLEntry::revocationDate, TimeCodec>,
    Optional<&CRLEntry::crlEntryExtensions, ExtensionsCodec>>>;
EXPORT_RECORD(CRLEntry, CRLEntryTable)

// TBSCertList ::= SEQUENCE {
//   version                  INTEGER OPTIONAL,
//   signature                AlgorithmIdentifier,
//   issuer                   Name,
//   thisUpdate               Time,
//   nextUpdate               Time OPTIONAL,
//   revokedCertificates      SEQUENCE OF CRLEntry OPTIONAL,
//   crlExtensions        [0] EXPLICIT Extensions OPTIONAL }
//
// Unlike a certificate, a CRL may have extensions and no version.
using TBS = CertificateList_TBS;
using CertificateList_TBSTable = Sequence<TBS,
    Optional<&TBS::version, IntegerCodec, Presence::octet_of_input>,
    Required<&TBS::signature, AlgIdCodec>,
    Stored<&TBS::issuerEncoded, NameForms<&TBS::issuerSequence, &TBS::issuer>>,
    Required<&TBS::thisUpdate, TimeCodec>,
    Optional<&TBS::nextUpdate, TimeCodec>,
    Optional<&TBS::revokedCertificates, SequenceOf<CRLEntryCodec>>,
    Optional<&TBS::crlExtensions, Explicit<0, ExtensionsCodec>>>;
EXPORT_RECORD_AS(CertificateList_TBS, "TBSCertList", CertificateList_TBSTable)

// CertificateList ::= SEQUENCE {
//   tbsCertList         TBSCertList,
//   signatureAlgorithm  AlgorithmIdentifier,
//   signatureValue      BIT STRING }
using CRL = CertificateRevocationList;
using CertificateRevocationListTable = Sequence<CRL,
    Stored<&CRL::tbsEncoded, Required<&CRL::tbsCertList, CertificateList_TBSCodec>>,
    Required<&CRL::signatureAlgorithm, AlgIdCodec>,
    Required<&CRL::signatureValue, BitStringAsStoredCodec>>;
EXPORT_RECORD_AS(CertificateRevocationList, "CertificateList", CertificateRevocationListTable)
