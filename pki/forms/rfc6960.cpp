// The Online Certificate Status Protocol (RFC 6960, 4, B.1), a module with explicit tags.
#include "pki/export.h"
#include "pki/forms/renamed.h"
#include "pki/forms/rfc5280.h"
#include "pki/forms/rfc5280_extensions.h"

using namespace pki;

// clang-format off

// CertID ::= SEQUENCE {
//   hashAlgorithm   AlgorithmIdentifier,
//   issuerNameHash  OCTET STRING,
//   issuerKeyHash   OCTET STRING,
//   serialNumber    CertificateSerialNumber }
using CertIDTable = Sequence<CertID,
    Required<&CertID::hashAlgorithm, AlgIdCodec>,
    Required<&CertID::issuerNameHash, OctetStringCodec>,
    Required<&CertID::issuerKeyHash, OctetStringCodec>,
    Required<&CertID::serialNumber, IntegerCodec>>;
EXPORT_FORM(CertID, CertID, "CertID", CertIDTable)

// Request ::= SEQUENCE {
//   reqCert                      CertID,
//   singleRequestExtensions  [0] EXPLICIT Extensions OPTIONAL }
using RequestTable = Sequence<Request,
    Required<&Request::reqCert, CertIDCodec>,
    Optional<&Request::singleRequestExtensions, Explicit<0, ExtensionsCodec>>>;
EXPORT_FORM(Request, Request, "Request", RequestTable)

// TBSRequest ::= SEQUENCE {
//   version            [0] EXPLICIT Version DEFAULT v1,
//   requestorName      [1] EXPLICIT GeneralName OPTIONAL,
//   requestList            SEQUENCE OF Request,
//   requestExtensions  [2] EXPLICIT Extensions OPTIONAL }
using TBSRequestTable = Sequence<TBSRequest,
    Optional<&TBSRequest::version, Explicit<0, IntegerCodec>>,
    Optional<&TBSRequest::requestorName, Explicit<1, GeneralNameCodec>>,
    Required<&TBSRequest::requestList, SequenceOf<RequestCodec>>,
    Optional<&TBSRequest::requestExtensions, Explicit<2, ExtensionsCodec>>>;
EXPORT_FORM(TBSRequest, TBSRequest, "TBSRequest", TBSRequestTable)

// Signature ::= SEQUENCE {
//   signatureAlgorithm      AlgorithmIdentifier,
//   signature               BIT STRING,
//   certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }
using OCSPSignatureTable = Sequence<OCSPSignature,
    Required<&OCSPSignature::signatureAlgorithm, AlgIdCodec>,
    Required<&OCSPSignature::signature, BitStringCodec>,
    Optional<&OCSPSignature::certs, Explicit<0, SequenceOf<CertificateCodec>>>>;
EXPORT_FORM(OCSPSignature, OCSPSignature, "Signature", OCSPSignatureTable)

// OCSPRequest ::= SEQUENCE {
//   tbsRequest             TBSRequest,
//   optionalSignature  [0] EXPLICIT Signature OPTIONAL }
using OCSPRequestTable = Sequence<OCSPRequest,
    Required<&OCSPRequest::tbsRequest, TBSRequestCodec>,
    Optional<&OCSPRequest::optionalSignature, Explicit<0, OCSPSignatureCodec>>>;
EXPORT_FORM(OCSPRequest, OCSPRequest, "OCSPRequest", OCSPRequestTable)

// ResponseBytes ::= SEQUENCE {
//   responseType  OBJECT IDENTIFIER,
//   response      OCTET STRING }
using ResponseBytesTable = Sequence<ResponseBytes,
    Required<&ResponseBytes::responseType, ObjIdCodec>,
    Required<&ResponseBytes::response, OctetStringCodec>>;
EXPORT_FORM(ResponseBytes, ResponseBytes, "ResponseBytes", ResponseBytesTable)

// OCSPResponse ::= SEQUENCE {
//   responseStatus      OCSPResponseStatus,
//   responseBytes   [0] EXPLICIT ResponseBytes OPTIONAL }
//
// OCSPResponseStatus ::= ENUMERATED
using OCSPResponseTable = Sequence<OCSPResponse,
    Required<&OCSPResponse::responseStatus, EnumeratedCodec>,
    Optional<&OCSPResponse::responseBytes, Explicit<0, ResponseBytesCodec>>>;
EXPORT_FORM(OCSPResponse, OCSPResponse, "OCSPResponse", OCSPResponseTable)

// ResponderID ::= CHOICE {
//   byName  [1] EXPLICIT Name,
//   byKey   [2] EXPLICIT OCTET STRING }
using ResponderIDTable = Choice<ResponderID,
    Alternative<1, "byName", Explicit<1, RDNSequenceCodec>>,
    Alternative<2, "byKey", Explicit<2, OctetStringCodec>>>;
EXPORT_FORM(ResponderID, ResponderID, "ResponderID", ResponderIDTable)

// RevokedInfo ::= SEQUENCE {
//   revocationTime        GeneralizedTime,
//   revocationReason  [0] EXPLICIT CRLReason OPTIONAL }
//
// CRLReason ::= ENUMERATED
using RevokedInfoTable = Sequence<pki_RevokedInfo,
    Required<&pki_RevokedInfo::revocationTime, GeneralizedTimeCodec>,
    Optional<&pki_RevokedInfo::revocationReason, Explicit<0, OptionalEnumeratedCodec>>>;
EXPORT_FORM(RevokedInfo, pki_RevokedInfo, "RevokedInfo", RevokedInfoTable)

// CertStatus ::= CHOICE {
//   good     [0] IMPLICIT NULL,
//   revoked  [1] IMPLICIT RevokedInfo,
//   unknown  [2] IMPLICIT NULL }
using OCSPCertStatusTable = Choice<OCSPCertStatus,
    Alternative<0, "good", Implicit<0, NullCodec>>,
    Alternative<1, "revoked", Implicit<1, RevokedInfoCodec>>,
    Alternative<2, "unknown", Implicit<2, NullCodec>>>;
EXPORT_FORM(OCSPCertStatus, OCSPCertStatus, "CertStatus", OCSPCertStatusTable)

// SingleResponse ::= SEQUENCE {
//   certID                CertID,
//   certStatus            CertStatus,
//   thisUpdate            GeneralizedTime,
//   nextUpdate        [0] EXPLICIT GeneralizedTime OPTIONAL,
//   singleExtensions  [1] EXPLICIT Extensions OPTIONAL }
using SingleResponseTable = Sequence<SingleResponse,
    Required<&SingleResponse::certID, CertIDCodec>,
    Required<&SingleResponse::certStatus, OCSPCertStatusCodec>,
    Required<&SingleResponse::thisUpdate, GeneralizedTimeCodec>,
    Optional<&SingleResponse::nextUpdate, Explicit<0, GeneralizedTimeCodec>>,
    Optional<&SingleResponse::singleExtensions, Explicit<1, ExtensionsCodec>>>;
EXPORT_FORM(SingleResponse, SingleResponse, "SingleResponse", SingleResponseTable)

// ResponseData ::= SEQUENCE {
//   version             [0] EXPLICIT Version DEFAULT v1,
//   responderID             ResponderID,
//   producedAt              GeneralizedTime,
//   responses               SEQUENCE OF SingleResponse,
//   responseExtensions  [1] EXPLICIT Extensions OPTIONAL }
using ResponseDataTable = Sequence<ResponseData,
    Optional<&ResponseData::version, Explicit<0, IntegerCodec>>,
    Required<&ResponseData::responderID, ResponderIDCodec>,
    Required<&ResponseData::producedAt, GeneralizedTimeCodec>,
    Required<&ResponseData::responses, SequenceOf<SingleResponseCodec>>,
    Optional<&ResponseData::responseExtensions, Explicit<1, ExtensionsCodec>>>;
EXPORT_FORM(ResponseData, ResponseData, "ResponseData", ResponseDataTable)

// BasicOCSPResponse ::= SEQUENCE {
//   tbsResponseData         ResponseData,
//   signatureAlgorithm      AlgorithmIdentifier,
//   signature               BIT STRING,
//   certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }
using Basic = BasicOCSPResponse;
using BasicOCSPResponseTable = Sequence<Basic,
    Stored<&Basic::tbsResponseDataBytes, Required<&Basic::tbsResponseData, ResponseDataCodec>>,
    Required<&Basic::signatureAlgorithm, AlgIdCodec>,
    Required<&Basic::signature, BitStringCodec>,
    Optional<&Basic::certs, Explicit<0, SequenceOf<CertificateCodec>>>>;
EXPORT_FORM(BasicOCSPResponse, BasicOCSPResponse, "BasicOCSPResponse", BasicOCSPResponseTable)

// Nonce ::= OCTET STRING
using NonceTable = Renamed<OctetStringCodec, Kind::octet_string>;
EXPORT_FORM_LIST(Nonce, OctetString, "Nonce", NonceTable)

// CrlID ::= SEQUENCE {
//   crlUrl   [0] EXPLICIT IA5String OPTIONAL,
//   crlNum   [1] EXPLICIT INTEGER OPTIONAL,
//   crlTime  [2] EXPLICIT GeneralizedTime OPTIONAL }
using CrlIDTable = Sequence<pki_CrlID,
    Optional<&pki_CrlID::crlUrl, Explicit<0, IA5StringCodec>>,
    Optional<&pki_CrlID::crlNum, Explicit<1, IntegerCodec>>,
    Optional<&pki_CrlID::crlTime, Explicit<2, GeneralizedTimeCodec>>>;
EXPORT_FORM(CrlID, pki_CrlID, "CrlID", CrlIDTable)

// AcceptableResponses ::= SEQUENCE OF OBJECT IDENTIFIER
using AcceptableResponsesTable = SequenceOf<ObjIdCodec>;
EXPORT_FORM_LIST(AcceptableResponses, List, "AcceptableResponses", AcceptableResponsesTable)

// ArchiveCutoff ::= GeneralizedTime
using ArchiveCutoffTable = Renamed<GeneralizedTimeCodec, Kind::generalized_time>;
EXPORT_FORM_LIST(ArchiveCutoff, GeneralizedTime, "ArchiveCutoff", ArchiveCutoffTable)

// ServiceLocator ::= SEQUENCE {
//   issuer   Name,
//   locator  AuthorityInfoAccessSyntax OPTIONAL }
using ServiceLocatorTable = Sequence<pki_ServiceLocator,
    Required<&pki_ServiceLocator::issuer, RDNSequenceCodec>,
    Optional<&pki_ServiceLocator::locator, AuthorityInfoAccessSyntaxCodec>>;
EXPORT_FORM(ServiceLocator, pki_ServiceLocator, "ServiceLocator", ServiceLocatorTable)

// PreferredSignatureAlgorithm ::= SEQUENCE {
//   sigIdentifier        AlgorithmIdentifier,
//   pubKeyAlgIdentifier  SMIMECapability OPTIONAL }
using Preferred = pki_PreferredSignatureAlgorithm;
using PreferredSignatureAlgorithmTable = Sequence<Preferred,
    Required<&Preferred::sigIdentifier, AlgIdCodec>,
    Optional<&Preferred::pubKeyAlgIdentifier, AlgIdCodec>>;
EXPORT_FORM(PreferredSignatureAlgorithm, pki_PreferredSignatureAlgorithm,
            "PreferredSignatureAlgorithm", PreferredSignatureAlgorithmTable)

// PreferredSignatureAlgorithms ::= SEQUENCE OF PreferredSignatureAlgorithm
using PreferredSignatureAlgorithmsTable = SequenceOf<PreferredSignatureAlgorithmCodec>;
EXPORT_FORM_LIST(PreferredSignatureAlgorithms, List, "PreferredSignatureAlgorithms",
                 PreferredSignatureAlgorithmsTable)

// clang-format on

BasicOCSPResponse *pki_OCSPResponse_basic(const OCSPResponse *response) {
  const ResponseBytes *const bytes = response == nullptr ? nullptr : response->responseBytes;
  if (bytes == nullptr || bytes->responseType == nullptr || bytes->response == nullptr ||
      bytes->response->data == nullptr ||
      asn1_ObjId_cmp(bytes->responseType, asn1_Get_id_pkix_ocsp_basic()) != 0) {
    return nullptr;
  }
  const uint8_t *const z = bytes->response->data;
  const uint8_t *const end = z + bytes->response->length;
  BasicOCSPResponse *basic = nullptr;
  if (pki_BasicOCSPResponse_d(z, end, 0, &basic, 0) == end) return basic;
  pki_BasicOCSPResponse_free(basic);
  return nullptr;
}
