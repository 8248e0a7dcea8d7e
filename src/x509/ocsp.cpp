// The Online Certificate Status Protocol (RFC 6960).
#include "core/export.h"
#include "x509/x509.h"

using namespace asn1;

namespace {

[[maybe_unused]] constexpr const char *unit = "asn1_ocsp";

/// [0] EXPLICIT as this protocol's decoders and encoders know it: it is looked for under A0, but
/// its header is read, and written, as 20. So a field in the public form fails, and one that was
/// written here is left unread.
template <class C>
struct MistaggedExplicit : Explicit<0, C> {
  static constexpr uint8_t octet = 0;
};

/// [Number] IMPLICIT NULL, read in the constructed form of the tag, which takes the primitive one
/// too.
template <uint8_t Number>
struct ConstructedNull : Implicit<Number, NullCodec> {
  static constexpr uint8_t octet = tag::context | tag::constructed | Number;
};

/// The certificates of a signature cannot be read, as MistaggedExplicit says. Written is only a
/// list without elements, and that under the right tag.
constexpr FieldFunctions certificates_functions{
    .measure =
        [](const Field &field, const void *record, Measure &size) {
          const auto *const list = static_cast<const List *>(load(member_of(record, field.member)));
          return list == nullptr || (List_len(list) == 0 && size.add(header_octets(0) * 2));
        },
    .write =
        [](const Field &field, BackWriter &out, const void *record) {
          if (load(member_of(record, field.member)) == nullptr) return;
          out.header(tag::sequence, 0);
          out.header(tag::context | tag::constructed, header_octets(0));
        }};

}  // namespace

// clang-format off

// CertID ::= SEQUENCE {
//   hashAlgorithm   AlgorithmIdentifier,
//   issuerNameHash  OCTET STRING,
//   issuerKeyHash   OCTET STRING,
//   serialNumber    INTEGER }
using CertIDTable = Sequence<CertID,
    Required<&CertID::hashAlgorithm, AlgIdCodec>,
    Required<&CertID::issuerNameHash, OctetStringCodec>,
    Required<&CertID::issuerKeyHash, OctetStringCodec>,
    Required<&CertID::serialNumber, IntegerCodec>>;
EXPORT(CertID, CertIDTable, NEW, DECODER, ENCODER, CLONE, FREE, OWN_COMPARE)

// Request ::= SEQUENCE {
//   reqCert                      CertID,
//   singleRequestExtensions  [0] EXPLICIT Extensions OPTIONAL }
using RequestTable = Sequence<Request,
    Required<&Request::reqCert, CertIDCodec>,
    Optional<&Request::singleRequestExtensions, MistaggedExplicit<ExtensionsCodec>>>;
EXPORT_RECORD(Request, RequestTable)

// TBSRequest ::= SEQUENCE {
//   version            [0] EXPLICIT INTEGER DEFAULT v1,
//   requestorName      [1] EXPLICIT GeneralName OPTIONAL,
//   requestList            SEQUENCE OF Request,
//   requestExtensions  [2] EXPLICIT Extensions OPTIONAL }
using TBSRequestTable = Sequence<TBSRequest,
    Optional<&TBSRequest::version, Explicit<0, IntegerCodec>, Presence::octet_of_input>,
    Optional<&TBSRequest::requestorName, Explicit<1, GeneralNameCodec>, Presence::octet_of_input>,
    Required<&TBSRequest::requestList, SequenceOf<RequestCodec>>,
    Optional<&TBSRequest::requestExtensions, Explicit<2, ExtensionsCodec>>>;
EXPORT_RECORD(TBSRequest, TBSRequestTable)

// Signature ::= SEQUENCE {
//   signatureAlgorithm      AlgorithmIdentifier,
//   signature               BIT STRING,
//   certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }
using OCSPSignatureTable = Sequence<OCSPSignature,
    Required<&OCSPSignature::signatureAlgorithm, AlgIdCodec>,
    Required<&OCSPSignature::signature, BitStringCodec>,
    ByHand<Optional<&OCSPSignature::certs, MistaggedExplicit<SequenceOf<CertificateCodec>>>, certificates_functions>>;
EXPORT_RECORD_AS(OCSPSignature, "Signature", OCSPSignatureTable)

// OCSPRequest ::= SEQUENCE {
//   tbsRequest             TBSRequest,
//   optionalSignature  [0] EXPLICIT Signature OPTIONAL }
using OCSPRequestTable = Sequence<OCSPRequest,
    Required<&OCSPRequest::tbsRequest, TBSRequestCodec>,
    Optional<&OCSPRequest::optionalSignature, Explicit<0, OCSPSignatureCodec>>>;
EXPORT_RECORD(OCSPRequest, OCSPRequestTable)

// ResponseBytes ::= SEQUENCE {
//   responseType  OBJECT IDENTIFIER,
//   response      OCTET STRING }
using ResponseBytesTable = Sequence<ResponseBytes,
    Required<&ResponseBytes::responseType, ObjIdCodec>,
    Required<&ResponseBytes::response, OctetStringCodec>>;
EXPORT(ResponseBytes, ResponseBytesTable, NEW, DECODER, CLONE, FREE)

// OCSPResponse ::= SEQUENCE {
//   responseStatus      ENUMERATED,
//   responseBytes   [0] EXPLICIT ResponseBytes OPTIONAL }
using OCSPResponseTable = Sequence<OCSPResponse,
    Required<&OCSPResponse::responseStatus, EnumeratedCodec>,
    Optional<&OCSPResponse::responseBytes, Explicit<0, ResponseBytesCodec>>>;
EXPORT(OCSPResponse, OCSPResponseTable, NEW, DECODER, CLONE, FREE)

// ResponderID ::= CHOICE {
//   byName  [1] EXPLICIT RDNSequence,
//   byKey   [2] EXPLICIT OCTET STRING }
using ResponderIDTable = Choice<ResponderID, UnknownKind::fails,
    Alternative<1, "byName", Explicit<1, RDNSequenceCodec>>,
    Alternative<2, "byKey", Explicit<2, OctetStringCodec>>>;
EXPORT(ResponderID, ResponderIDTable, NEW, TAGLESS_DECODER, CLONE, FREE)

// RevokedInfo ::= SEQUENCE {
//   revocationTime        GeneralizedTime,
//   revocationReason  [0] EXPLICIT ENUMERATED OPTIONAL }
using RevokedInfoTable = Sequence<RevokedInfo,
    Required<&RevokedInfo::revocationTime, GeneralizedTimeCodec>,
    Optional<&RevokedInfo::revocationReason, Explicit<0, EnumeratedCodec>>>;
EXPORT(RevokedInfo, RevokedInfoTable, NEW, DECODER, CLONE, FREE)

// CertStatus ::= CHOICE {
//   good     [0] IMPLICIT NULL,
//   revoked  [1] IMPLICIT RevokedInfo,
//   unknown  [2] IMPLICIT NULL }
using OCSPCertStatusTable = Choice<OCSPCertStatus, UnknownKind::fails,
    Alternative<0, "good", ConstructedNull<0>>,
    Alternative<1, "revoked", Implicit<1, RevokedInfoCodec>>,
    Alternative<2, "unknown", ConstructedNull<2>>>;
EXPORT_NAMED(OCSPCertStatus, "CertStatus", OCSPCertStatusTable, NEW, TAGLESS_DECODER, CLONE, FREE)

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
EXPORT(SingleResponse, SingleResponseTable, NEW, DECODER, CLONE, FREE)

// ResponseData ::= SEQUENCE {
//   version             [0] EXPLICIT INTEGER DEFAULT v1,
//   responderID             ResponderID,
//   producedAt              GeneralizedTime,
//   responses               SEQUENCE OF SingleResponse,
//   responseExtensions  [1] EXPLICIT Extensions OPTIONAL }
using ResponseDataTable = Sequence<ResponseData,
    Optional<&ResponseData::version, Explicit<0, IntegerCodec>, Presence::octet_of_input>,
    Required<&ResponseData::responderID, ResponderIDCodec>,
    Required<&ResponseData::producedAt, GeneralizedTimeCodec>,
    Required<&ResponseData::responses, SequenceOf<SingleResponseCodec>>,
    Optional<&ResponseData::responseExtensions, Explicit<1, ExtensionsCodec>>>;
EXPORT(ResponseData, ResponseDataTable, NEW, DECODER, CLONE, FREE)

// BasicOCSPResponse ::= SEQUENCE {
//   tbsResponseData         ResponseData,
//   signatureAlgorithm      AlgorithmIdentifier,
//   signature               BIT STRING,
//   certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }
//
// The signed octets are the caller's from the moment that the decoder hands the record out: neither
// released nor copied with it.
using BasicOCSPResponseTable = Sequence<BasicOCSPResponse,
    Stored<&BasicOCSPResponse::tbsResponseDataBytes, Required<&BasicOCSPResponse::tbsResponseData, ResponseDataCodec>, Kept::by_the_caller>,
    Required<&BasicOCSPResponse::signatureAlgorithm, AlgIdCodec>,
    Required<&BasicOCSPResponse::signature, BitStringCodec>,
    Optional<&BasicOCSPResponse::certs, MistaggedExplicit<SequenceOf<CertificateCodec>>>>;
EXPORT(BasicOCSPResponse, BasicOCSPResponseTable, NEW, DECODER, CLONE, FREE)
