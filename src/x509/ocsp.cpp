// The Online Certificate Status Protocol (RFC 6960), and its identifiers.
#include "registry/identifiers.h"
#include "x509/codecs.h"
#include "x509/names.h"

using namespace asn1;

namespace {

constexpr const char *unit = "asn1_ocsp";

template <uint8_t Identifier, auto Decode, auto Clone, auto Free>
using ReadOnly = Family<Identifier, nullptr, Decode, Clone, Free>;

// [0] EXPLICIT as this protocol's decoders and encoders know it: it is looked for under A0, but its
// header is read, and written, as 20. So a field in the public form fails, and one that was written
// here is left unread.
template <class Codec>
struct MistaggedExplicit : Explicit<0, Codec> {
  static constexpr uint32_t tag = 0;

  static uint32_t encode(uint8_t **pp, typename Codec::Field value) {
    return encode_explicit(pp, tag, [&](uint8_t **to) { return Codec::encode(to, value); });
  }
  static const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t,
                               typename Codec::Field *place, uint32_t depth) {
    return decode_explicit(z, end, tag, depth, [&](const uint8_t *from, const uint8_t *limit) {
      return Codec::decode(from, limit, 0, place, depth);
    });
  }
};

// A table has a line for each field.
// clang-format off

// CertID ::= SEQUENCE {
//   hashAlgorithm   AlgorithmIdentifier,
//   issuerNameHash  OCTET STRING,
//   issuerKeyHash   OCTET STRING,
//   serialNumber    INTEGER }
using CertIDSyntax = Sequence<CertID,
    Required<&CertID::hashAlgorithm, AlgIdCodec>,
    Required<&CertID::issuerNameHash, OctetStringCodec>,
    Required<&CertID::issuerKeyHash, OctetStringCodec>,
    Required<&CertID::serialNumber, IntegerCodec>>;
using CertIDCodec = ORVELASN1_FAMILY(0x30, CertID);

// Request ::= SEQUENCE {
//   reqCert                      CertID,
//   singleRequestExtensions  [0] EXPLICIT Extensions OPTIONAL }
using RequestSyntax = Sequence<Request,
    Required<&Request::reqCert, CertIDCodec>,
    Optional<&Request::singleRequestExtensions, MistaggedExplicit<ExtensionsCodec>>>;

// TBSRequest ::= SEQUENCE {
//   version            [0] EXPLICIT INTEGER DEFAULT v1,
//   requestorName      [1] EXPLICIT GeneralName OPTIONAL,
//   requestList            SEQUENCE OF Request,
//   requestExtensions  [2] EXPLICIT Extensions OPTIONAL }
using TBSRequestSyntax = Sequence<TBSRequest,
    Optional<&TBSRequest::version, Explicit<0, IntegerCodec>, Presence::octet_of_input>,
    Optional<&TBSRequest::requestorName, Explicit<1, GeneralNameCodec>, Presence::octet_of_input>,
    Required<&TBSRequest::requestList, SequenceOf<ORVELASN1_FAMILY(0x30, Request)>>,
    Optional<&TBSRequest::requestExtensions, Explicit<2, ExtensionsCodec>>>;

// clang-format on

// The certificates of a signature cannot be read, as MistaggedExplicit says. Written is only a list
// without elements, and that under the right tag.
struct SignatureCertificates : MistaggedExplicit<SequenceOf<CertificateCodec>> {
  static uint32_t encode(uint8_t **pp, const List *certificates) {
    if (List_len(certificates) != 0) return 0;
    return asn1_expl_SeqOf_e(pp, 0x80, certificates, asn1_Certificate_e);
  }
};

// A table has a line for each field.
// clang-format off

// Signature ::= SEQUENCE {
//   signatureAlgorithm      AlgorithmIdentifier,
//   signature               BIT STRING,
//   certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }
using OCSPSignatureSyntax = Sequence<OCSPSignature,
    Required<&OCSPSignature::signatureAlgorithm, AlgIdCodec>,
    Required<&OCSPSignature::signature, BitStringCodec>,
    Optional<&OCSPSignature::certs, SignatureCertificates>>;

// OCSPRequest ::= SEQUENCE {
//   tbsRequest             TBSRequest,
//   optionalSignature  [0] EXPLICIT Signature OPTIONAL }
using TBSRequestCodec = ORVELASN1_FAMILY(0x30, TBSRequest);
using OCSPSignatureCodec = ORVELASN1_FAMILY(0x30, OCSPSignature);
using OCSPRequestSyntax = Sequence<OCSPRequest,
    Required<&OCSPRequest::tbsRequest, TBSRequestCodec>,
    Optional<&OCSPRequest::optionalSignature, Explicit<0, OCSPSignatureCodec>>>;

// ResponseBytes ::= SEQUENCE {
//   responseType  OBJECT IDENTIFIER,
//   response      OCTET STRING }
using ResponseBytesSyntax = Sequence<ResponseBytes,
    Required<&ResponseBytes::responseType, ObjIdCodec>,
    Required<&ResponseBytes::response, OctetStringCodec>>;
using ResponseBytesCodec =
    ReadOnly<0x30, asn1_ResponseBytes_d, asn1_ResponseBytes_clone, asn1_ResponseBytes_free>;

// OCSPResponse ::= SEQUENCE {
//   responseStatus      ENUMERATED,
//   responseBytes   [0] EXPLICIT ResponseBytes OPTIONAL }
using OCSPResponseSyntax = Sequence<OCSPResponse,
    Required<&OCSPResponse::responseStatus, EnumeratedCodec>,
    Optional<&OCSPResponse::responseBytes, Explicit<0, ResponseBytesCodec>>>;

// ResponderID ::= CHOICE {
//   byName  [1] EXPLICIT RDNSequence,
//   byKey   [2] EXPLICIT OCTET STRING }
using ResponderIDSyntax = Choice<ResponderID, UnknownKind::fails,
    Alternative<1, Explicit<1, RdnSequenceCodec>>,
    Alternative<2, Explicit<2, OctetStringCodec>>>;
using ResponderIDCodec =
    ReadOnly<0, asn1_ResponderID_d, asn1_ResponderID_clone, asn1_ResponderID_free>;

// RevokedInfo ::= SEQUENCE {
//   revocationTime        GeneralizedTime,
//   revocationReason  [0] EXPLICIT ENUMERATED OPTIONAL }
using RevokedInfoSyntax = Sequence<RevokedInfo,
    Required<&RevokedInfo::revocationTime, GeneralizedTimeCodec>,
    Optional<&RevokedInfo::revocationReason, Explicit<0, EnumeratedCodec>>>;
using RevokedInfoCodec =
    ReadOnly<0x30, asn1_RevokedInfo_d, asn1_RevokedInfo_clone, asn1_RevokedInfo_free>;

// CertStatus ::= CHOICE {
//   good     [0] IMPLICIT NULL,
//   revoked  [1] IMPLICIT RevokedInfo,
//   unknown  [2] IMPLICIT NULL }
using OCSPCertStatusSyntax = Choice<OCSPCertStatus, UnknownKind::fails,
    NullAlternative<0>,
    Alternative<1, Implicit<1, RevokedInfoCodec>>,
    NullAlternative<2>>;
using OCSPCertStatusCodec =
    ReadOnly<0, asn1_OCSPCertStatus_d, asn1_OCSPCertStatus_clone, asn1_OCSPCertStatus_free>;

// SingleResponse ::= SEQUENCE {
//   certID                CertID,
//   certStatus            CertStatus,
//   thisUpdate            GeneralizedTime,
//   nextUpdate        [0] EXPLICIT GeneralizedTime OPTIONAL,
//   singleExtensions  [1] EXPLICIT Extensions OPTIONAL }
using SingleResponseSyntax = Sequence<SingleResponse,
    Required<&SingleResponse::certID, CertIDCodec>,
    Required<&SingleResponse::certStatus, OCSPCertStatusCodec>,
    Required<&SingleResponse::thisUpdate, GeneralizedTimeCodec>,
    Optional<&SingleResponse::nextUpdate, Explicit<0, GeneralizedTimeCodec>>,
    Optional<&SingleResponse::singleExtensions, Explicit<1, ExtensionsCodec>>>;
using SingleResponseCodec =
    ReadOnly<0x30, asn1_SingleResponse_d, asn1_SingleResponse_clone, asn1_SingleResponse_free>;

// ResponseData ::= SEQUENCE {
//   version             [0] EXPLICIT INTEGER DEFAULT v1,
//   responderID             ResponderID,
//   producedAt              GeneralizedTime,
//   responses               SEQUENCE OF SingleResponse,
//   responseExtensions  [1] EXPLICIT Extensions OPTIONAL }
using ResponseDataSyntax = Sequence<ResponseData,
    Optional<&ResponseData::version, Explicit<0, IntegerCodec>, Presence::octet_of_input>,
    Required<&ResponseData::responderID, ResponderIDCodec>,
    Required<&ResponseData::producedAt, GeneralizedTimeCodec>,
    Required<&ResponseData::responses, SequenceOf<SingleResponseCodec>>,
    Optional<&ResponseData::responseExtensions, Explicit<1, ExtensionsCodec>>>;
using ResponseDataCodec =
    ReadOnly<0x30, asn1_ResponseData_d, asn1_ResponseData_clone, asn1_ResponseData_free>;

// clang-format on

// The signed octets of a response are the caller's from the moment that the decoder hands the
// record out: neither released nor copied with it.
struct SignedResponseData
    : Stored<&BasicOCSPResponse::tbsResponseDataBytes,
             Required<&BasicOCSPResponse::tbsResponseData, ResponseDataCodec>> {
  using Data = Required<&BasicOCSPResponse::tbsResponseData, ResponseDataCodec>;

  static void abandon(BasicOCSPResponse *record) { Stored::free(record); }
  static void free(BasicOCSPResponse *record) { Data::free(record); }
  static bool clone(BasicOCSPResponse *copy, const BasicOCSPResponse *source) {
    return Data::clone(copy, source);
  }
};

// A table has a line for each field.
// clang-format off

// BasicOCSPResponse ::= SEQUENCE {
//   tbsResponseData         ResponseData,
//   signatureAlgorithm      AlgorithmIdentifier,
//   signature               BIT STRING,
//   certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }
using BasicOCSPResponseSyntax = Sequence<BasicOCSPResponse,
    SignedResponseData,
    Required<&BasicOCSPResponse::signatureAlgorithm, AlgIdCodec>,
    Required<&BasicOCSPResponse::signature, BitStringCodec>,
    Optional<&BasicOCSPResponse::certs, MistaggedExplicit<SequenceOf<CertificateCodec>>>>;

// clang-format on

}  // namespace

OCSPRequest *asn1_OCSPRequest_new() { return OCSPRequestSyntax::create(); }
void asn1_OCSPRequest_free(OCSPRequest *pElement) { OCSPRequestSyntax::free(pElement); }
OCSPRequest *asn1_OCSPRequest_clone(const OCSPRequest *pElement) {
  return OCSPRequestSyntax::clone(pElement);
}
uint32_t asn1_OCSPRequest_e(uint8_t **pp, const OCSPRequest *pElement) {
  return OCSPRequestSyntax::encode(pp, pElement);
}
const uint8_t *asn1_OCSPRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  OCSPRequest **ppElement, uint32_t depth) {
  return OCSPRequestSyntax::decode(z, end, impl_tag, ppElement, depth);
}

TBSRequest *asn1_TBSRequest_new() { return TBSRequestSyntax::create(); }
void asn1_TBSRequest_free(TBSRequest *pElement) { TBSRequestSyntax::free(pElement); }
TBSRequest *asn1_TBSRequest_clone(const TBSRequest *pElement) {
  return TBSRequestSyntax::clone(pElement);
}
uint32_t asn1_TBSRequest_e(uint8_t **pp, const TBSRequest *pElement) {
  return TBSRequestSyntax::encode(pp, pElement);
}
const uint8_t *asn1_TBSRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 TBSRequest **ppElement, uint32_t depth) {
  return TBSRequestSyntax::decode(z, end, impl_tag, ppElement, depth);
}

Request *asn1_Request_new() { return RequestSyntax::create(); }
void asn1_Request_free(Request *pElement) { RequestSyntax::free(pElement); }
Request *asn1_Request_clone(const Request *pElement) { return RequestSyntax::clone(pElement); }
uint32_t asn1_Request_e(uint8_t **pp, const Request *pElement) {
  return RequestSyntax::encode(pp, pElement);
}
const uint8_t *asn1_Request_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              Request **ppElement, uint32_t depth) {
  return RequestSyntax::decode(z, end, impl_tag, ppElement, depth);
}

CertID *asn1_CertID_new() { return CertIDSyntax::create(); }
void asn1_CertID_free(CertID *pElement) { CertIDSyntax::free(pElement); }
CertID *asn1_CertID_clone(const CertID *pElement) { return CertIDSyntax::clone(pElement); }
uint32_t asn1_CertID_e(uint8_t **pp, const CertID *pElement) {
  return CertIDSyntax::encode(pp, pElement);
}
const uint8_t *asn1_CertID_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             CertID **ppElement, uint32_t depth) {
  return CertIDSyntax::decode(z, end, impl_tag, ppElement, depth);
}

// The issuer's name hash takes no part, nor do the parameters of the hash algorithm.
int32_t asn1_CertID_cmp(const CertID *a, const CertID *b) {
  if (a == nullptr || b == nullptr) return 1;
  if (a->hashAlgorithm == nullptr || b->hashAlgorithm == nullptr) return 1;
  return asn1_ObjId_cmp(a->hashAlgorithm->algorithm, b->hashAlgorithm->algorithm) == 0 &&
                 asn1_Integer_cmp(a->serialNumber, b->serialNumber) == 0 &&
                 asn1_OctetString_cmp(a->issuerKeyHash, b->issuerKeyHash) == 0
             ? 0
             : 1;
}

OCSPSignature *asn1_OCSPSignature_new() { return OCSPSignatureSyntax::create(); }
void asn1_OCSPSignature_free(OCSPSignature *pElement) { OCSPSignatureSyntax::free(pElement); }
OCSPSignature *asn1_OCSPSignature_clone(const OCSPSignature *pElement) {
  return OCSPSignatureSyntax::clone(pElement);
}
uint32_t asn1_OCSPSignature_e(uint8_t **pp, const OCSPSignature *pElement) {
  return OCSPSignatureSyntax::encode(pp, pElement);
}
const uint8_t *asn1_OCSPSignature_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    OCSPSignature **ppElement, uint32_t depth) {
  return OCSPSignatureSyntax::decode(z, end, impl_tag, ppElement, depth);
}

OCSPResponse *asn1_OCSPResponse_new() { return OCSPResponseSyntax::create(); }
void asn1_OCSPResponse_free(OCSPResponse *pElement) { OCSPResponseSyntax::free(pElement); }
OCSPResponse *asn1_OCSPResponse_clone(const OCSPResponse *pElement) {
  return OCSPResponseSyntax::clone(pElement);
}
const uint8_t *asn1_OCSPResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   OCSPResponse **ppElement, uint32_t depth) {
  return OCSPResponseSyntax::decode(z, end, impl_tag, ppElement, depth);
}

ResponseBytes *asn1_ResponseBytes_new() { return ResponseBytesSyntax::create(); }
void asn1_ResponseBytes_free(ResponseBytes *pElement) { ResponseBytesSyntax::free(pElement); }
ResponseBytes *asn1_ResponseBytes_clone(const ResponseBytes *pElement) {
  return ResponseBytesSyntax::clone(pElement);
}
const uint8_t *asn1_ResponseBytes_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    ResponseBytes **ppElement, uint32_t depth) {
  return ResponseBytesSyntax::decode(z, end, impl_tag, ppElement, depth);
}

BasicOCSPResponse *asn1_BasicOCSPResponse_new() { return BasicOCSPResponseSyntax::create(); }
void asn1_BasicOCSPResponse_free(BasicOCSPResponse *pElement) {
  BasicOCSPResponseSyntax::free(pElement);
}
BasicOCSPResponse *asn1_BasicOCSPResponse_clone(const BasicOCSPResponse *pElement) {
  return BasicOCSPResponseSyntax::clone(pElement);
}
const uint8_t *asn1_BasicOCSPResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        BasicOCSPResponse **ppElement, uint32_t depth) {
  return BasicOCSPResponseSyntax::decode(z, end, impl_tag, ppElement, depth);
}

ResponseData *asn1_ResponseData_new() { return ResponseDataSyntax::create(); }
void asn1_ResponseData_free(ResponseData *pElement) { ResponseDataSyntax::free(pElement); }
ResponseData *asn1_ResponseData_clone(const ResponseData *pElement) {
  return ResponseDataSyntax::clone(pElement);
}
const uint8_t *asn1_ResponseData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   ResponseData **ppElement, uint32_t depth) {
  return ResponseDataSyntax::decode(z, end, impl_tag, ppElement, depth);
}

ResponderID *asn1_ResponderID_new() { return ResponderIDSyntax::create(); }
void asn1_ResponderID_free(ResponderID *pElement) { ResponderIDSyntax::free(pElement); }
ResponderID *asn1_ResponderID_clone(const ResponderID *pElement) {
  return ResponderIDSyntax::clone(pElement);
}
const uint8_t *asn1_ResponderID_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  ResponderID **ppElement, uint32_t depth) {
  require((impl_tag & 0xFF) == 0, unit, __func__, "impl_tag == 0");
  return ResponderIDSyntax::decode(z, end, ppElement, depth);
}

SingleResponse *asn1_SingleResponse_new() { return SingleResponseSyntax::create(); }
void asn1_SingleResponse_free(SingleResponse *pElement) { SingleResponseSyntax::free(pElement); }
SingleResponse *asn1_SingleResponse_clone(const SingleResponse *pElement) {
  return SingleResponseSyntax::clone(pElement);
}
const uint8_t *asn1_SingleResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     SingleResponse **ppElement, uint32_t depth) {
  return SingleResponseSyntax::decode(z, end, impl_tag, ppElement, depth);
}

OCSPCertStatus *asn1_OCSPCertStatus_new() { return OCSPCertStatusSyntax::create(); }
void asn1_OCSPCertStatus_free(OCSPCertStatus *pElement) { OCSPCertStatusSyntax::free(pElement); }
OCSPCertStatus *asn1_OCSPCertStatus_clone(const OCSPCertStatus *pElement) {
  return OCSPCertStatusSyntax::clone(pElement);
}
const uint8_t *asn1_OCSPCertStatus_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     OCSPCertStatus **ppElement, uint32_t depth) {
  require((impl_tag & 0xFF) == 0, unit, __func__, "impl_tag == 0");
  return OCSPCertStatusSyntax::decode(z, end, ppElement, depth);
}

RevokedInfo *asn1_RevokedInfo_new() { return RevokedInfoSyntax::create(); }
void asn1_RevokedInfo_free(RevokedInfo *pElement) { RevokedInfoSyntax::free(pElement); }
RevokedInfo *asn1_RevokedInfo_clone(const RevokedInfo *pElement) {
  return RevokedInfoSyntax::clone(pElement);
}
const uint8_t *asn1_RevokedInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  RevokedInfo **ppElement, uint32_t depth) {
  return RevokedInfoSyntax::decode(z, end, impl_tag, ppElement, depth);
}

OBJECT_IDENTIFIER(id_pkix_ocsp, 1, 3, 6, 1, 5, 5, 7, 48, 1)
OBJECT_IDENTIFIER(id_pkix_ocsp_basic, 1, 3, 6, 1, 5, 5, 7, 48, 1, 1)
OBJECT_IDENTIFIER(id_pkix_ocsp_nonce, 1, 3, 6, 1, 5, 5, 7, 48, 1, 2)
OBJECT_IDENTIFIER(id_pkix_ocsp_crl, 1, 3, 6, 1, 5, 5, 7, 48, 1, 3)
OBJECT_IDENTIFIER(id_pkix_ocsp_response, 1, 3, 6, 1, 5, 5, 7, 48, 1, 4)
OBJECT_IDENTIFIER(id_pkix_ocsp_nocheck, 1, 3, 6, 1, 5, 5, 7, 48, 1, 5)
OBJECT_IDENTIFIER(id_pkix_ocsp_archive_cutoff, 1, 3, 6, 1, 5, 5, 7, 48, 1, 6)
OBJECT_IDENTIFIER(id_pkix_ocsp_service_locator, 1, 3, 6, 1, 5, 5, 7, 48, 1, 7)
