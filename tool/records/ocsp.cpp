// The Online Certificate Status Protocol (RFC 6960).
#include "records/type.h"
#include "records/values.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

Node general_time(const GeneralizedTime *value) { return time_of(generalized_time, value); }

}  // namespace

// CertID ::= SEQUENCE { hashAlgorithm, issuerNameHash, issuerKeyHash, serialNumber }
Node describe(const CertID *id, const View &view) {
  return Description(view)
      .field("hashAlgorithm", id->hashAlgorithm)
      .field("issuerNameHash", id->issuerNameHash)
      .field("issuerKeyHash", id->issuerKeyHash)
      .field("serialNumber", id->serialNumber)
      .node();
}

// Request ::= SEQUENCE { reqCert, singleRequestExtensions [0] }
Node describe(const Request *request, const View &view) {
  return Description(view)
      .field("reqCert", request->reqCert)
      .list<Extension>("singleRequestExtensions", request->singleRequestExtensions)
      .node();
}

// TBSRequest ::= SEQUENCE { version [0], requestorName [1], requestList, requestExtensions [2] }
Node describe(const TBSRequest *tbs, const View &view) {
  return Description(view)
      .version("version", tbs->version)
      .field("requestorName", tbs->requestorName)
      .brief()
      .list<Request>("requestList", tbs->requestList)
      .brief()
      .list<Extension>("requestExtensions", tbs->requestExtensions)
      .node();
}

// Signature ::= SEQUENCE { signatureAlgorithm, signature, certs [0] }
//
// No decoder reads certificates here.
Node describe(const OCSPSignature *signature, const View &view) {
  return Description(view)
      .field("signatureAlgorithm", signature->signatureAlgorithm)
      .brief()
      .field("signature", signature->signature)
      .node();
}

// OCSPRequest ::= SEQUENCE { tbsRequest, optionalSignature [0] }
Node describe(const OCSPRequest *request, const View &view) {
  return Description(view)
      .field("tbsRequest", request->tbsRequest)
      .field("optionalSignature", request->optionalSignature)
      .node();
}

// ResponderID ::= CHOICE { byName [1], byKey [2] }
Node describe(const ResponderID *responder, const View &view) {
  constexpr uint8_t by_name = 1;
  if (responder->kind == by_name) {
    const auto *const name = static_cast<const RDNSequence *>(responder->value);
    return shown_as(Description(view).field("byName", rdn_sequence(name, view)).node(),
                    rdn_sequence(name, view));
  }
  const auto *const key = static_cast<const OctetString *>(responder->value);
  return shown_as(Description(view).field("byKey", key).node(),
                  text("key " + hex(octets(key)), nullptr));
}

// RevokedInfo ::= SEQUENCE { revocationTime, revocationReason [0] }
//
// The record has the reason 0, unspecified, if the input has no reason.
Node describe(const RevokedInfo *info, const View &view) {
  return Description(view)
      .field("revocationTime", general_time(info->revocationTime))
      .field("revocationReason", revocation_reason(info->revocationReason))
      .node();
}

// CertStatus ::= CHOICE { good [0], revoked [1], unknown [2] }
Node describe(const OCSPCertStatus *status, const View &view) {
  static constexpr const char *words[] = {"good", "revoked", "unknown"};
  constexpr uint8_t revoked = 1;
  const std::string word = status->kind < std::size(words) ? words[status->kind] : "";
  Description fields(view);
  fields.field("status", text(word, word));
  if (status->kind != revoked || status->value == nullptr)
    return shown_as(fields.node(), text(word, nullptr));
  const auto *const info = static_cast<const RevokedInfo *>(status->value);
  fields.field("revoked", info);
  std::string line = word;
  for (const Node &node :
       {general_time(info->revocationTime), revocation_reason(info->revocationReason)})
    line += ", " + lines_of(node, view)->front();
  return shown_as(fields.node(), text(std::move(line), nullptr, Tone::alarm));
}

// SingleResponse ::= SEQUENCE { certID, certStatus, thisUpdate, nextUpdate [0],
//   singleExtensions [1] }
Node describe(const SingleResponse *single, const View &view) {
  Time from{generalized_time, single->thisUpdate};
  Time until{generalized_time, single->nextUpdate};
  return Description(view)
      .field("certID", single->certID)
      .field("certStatus", single->certStatus)
      .period("thisUpdate", &from, "nextUpdate", until.value == nullptr ? nullptr : &until)
      .list<Extension>("singleExtensions", single->singleExtensions)
      .node();
}

// ResponseData ::= SEQUENCE { version [0], responderID, producedAt, responses,
//   responseExtensions [1] }
Node describe(const ResponseData *data, const View &view) {
  return Description(view)
      .version("version", data->version)
      .field("responderID", data->responderID)
      .brief()
      .field("producedAt", general_time(data->producedAt))
      .brief()
      .list<SingleResponse>("responses", data->responses)
      .brief()
      .list<Extension>("responseExtensions", data->responseExtensions)
      .node();
}

// BasicOCSPResponse ::= SEQUENCE { tbsResponseData, signatureAlgorithm, signature, certs [0] }
//
// No decoder reads certificates here.
Node describe(const BasicOCSPResponse *response, const View &view) {
  return Description(view)
      .field("tbsResponseData", response->tbsResponseData)
      .encoding("tbsResponseDataBytes", response->tbsResponseDataBytes)
      .field("signatureAlgorithm", response->signatureAlgorithm)
      .field("signature", response->signature)
      .node();
}

namespace {

constexpr Field wrapped_extensions[] = {{"", &extensions_syntax}};
constexpr Syntax extensions_1_syntax{.tag = 0xA1, .fields = wrapped_extensions};
constexpr Syntax extensions_2_syntax{.tag = 0xA2, .fields = wrapped_extensions};

const char *extensions_fault(Octets) { return "extensions, which the library refuses here"; }
constexpr Syntax refused_extensions_syntax{.tag = 0xA0, .content_fault = extensions_fault};

const char *certificates_fault(Octets) { return "certificates, which the library refuses here"; }
constexpr Syntax refused_certificates_syntax{.tag = 0xA0, .content_fault = certificates_fault};

constexpr Field id_fields[] = {{"hashAlgorithm", &algorithm_syntax},
                               {"issuerNameHash", &octet_string_syntax},
                               {"issuerKeyHash", &octet_string_syntax},
                               {"serialNumber", &integer_syntax}};
constexpr Syntax id_syntax{.tag = 0x30, .fields = id_fields};

constexpr Field single_request_fields[] = {
    {"reqCert", &id_syntax}, {"singleRequestExtensions", &refused_extensions_syntax, true}};
constexpr Syntax single_request_syntax{.tag = 0x30, .fields = single_request_fields};
constexpr Syntax requests_syntax{.tag = 0x30, .element = &single_request_syntax};

constexpr Field wrapped_name[] = {{"", &general_name_syntax}};
constexpr Syntax requestor_syntax{.tag = 0xA1, .fields = wrapped_name};
constexpr Field tbs_request_fields[] = {{"version", &wrapped_integer_syntax, true},
                                        {"requestorName", &requestor_syntax, true},
                                        {"requestList", &requests_syntax},
                                        {"requestExtensions", &extensions_2_syntax, true}};
constexpr Syntax tbs_request_syntax{.tag = 0x30, .fields = tbs_request_fields};

constexpr Field signature_fields[] = {{"signatureAlgorithm", &algorithm_syntax},
                                      {"signature", &bit_string_syntax},
                                      {"certs", &refused_certificates_syntax, true}};
constexpr Syntax signature_syntax{.tag = 0x30, .fields = signature_fields};
constexpr Field wrapped_signature[] = {{"", &signature_syntax}};
constexpr Syntax optional_signature_syntax{.tag = 0xA0, .fields = wrapped_signature};
constexpr Field request_fields[] = {{"tbsRequest", &tbs_request_syntax},
                                    {"optionalSignature", &optional_signature_syntax, true}};
constexpr Syntax request_syntax{.tag = 0x30, .fields = request_fields};

constexpr Field bytes_fields[] = {{"responseType", &oid_syntax},
                                  {"response", &octet_string_syntax}};
constexpr Syntax bytes_syntax{.tag = 0x30, .fields = bytes_fields};
constexpr Field wrapped_bytes[] = {{"", &bytes_syntax}};
constexpr Syntax response_bytes_syntax{.tag = 0xA0, .fields = wrapped_bytes};
constexpr Field response_fields[] = {{"responseStatus", &enumerated_syntax},
                                     {"responseBytes", &response_bytes_syntax, true}};
constexpr Syntax response_syntax{.tag = 0x30, .fields = response_fields};

constexpr Field wrapped_rdn_sequence[] = {{"", &rdn_sequence_syntax}};
constexpr Field wrapped_octets[] = {{"", &octet_string_syntax}};
constexpr Syntax by_name_syntax{.tag = 0xA1, .fields = wrapped_rdn_sequence};
constexpr Syntax by_key_syntax{.tag = 0xA2, .fields = wrapped_octets};
constexpr Field responders[] = {{"byName", &by_name_syntax}, {"byKey", &by_key_syntax}};
constexpr Syntax responder_syntax{.choice = responders};

constexpr Field wrapped_reason[] = {{"", &enumerated_syntax}};
constexpr Syntax revocation_reason_syntax{.tag = 0xA0, .fields = wrapped_reason};
constexpr Field revoked_fields[] = {{"revocationTime", &generalized_time_syntax},
                                    {"revocationReason", &revocation_reason_syntax, true}};
constexpr Syntax revoked_syntax{.tag = 0x30, .fields = revoked_fields};
constexpr Syntax good_syntax{.tag = 0x80};
constexpr Syntax unknown_syntax{.tag = 0x82};
constexpr Field statuses[] = {{"good", &good_syntax},
                              {"revoked", &revoked_syntax, false, 0xA1},
                              {"unknown", &unknown_syntax}};
constexpr Syntax status_syntax{.choice = statuses};

constexpr Field wrapped_time[] = {{"", &generalized_time_syntax}};
constexpr Syntax next_update_syntax{.tag = 0xA0, .fields = wrapped_time};
constexpr Field single_fields[] = {{"certID", &id_syntax},
                                   {"certStatus", &status_syntax},
                                   {"thisUpdate", &generalized_time_syntax},
                                   {"nextUpdate", &next_update_syntax, true},
                                   {"singleExtensions", &extensions_1_syntax, true}};
constexpr Syntax single_syntax{.tag = 0x30, .fields = single_fields};
constexpr Syntax singles_syntax{.tag = 0x30, .element = &single_syntax};

constexpr Field data_fields[] = {{"version", &wrapped_integer_syntax, true},
                                 {"responderID", &responder_syntax},
                                 {"producedAt", &generalized_time_syntax},
                                 {"responses", &singles_syntax},
                                 {"responseExtensions", &extensions_1_syntax, true}};
constexpr Syntax data_syntax{.tag = 0x30, .fields = data_fields};

constexpr Field basic_fields[] = {{"tbsResponseData", &data_syntax},
                                  {"signatureAlgorithm", &algorithm_syntax},
                                  {"signature", &bit_string_syntax},
                                  {"certs", &refused_certificates_syntax, true}};
constexpr Syntax basic_syntax{.tag = 0x30, .fields = basic_fields};

/// Releases the signed octets, too, which the library leaves to the caller.
void free_basic_response(BasicOCSPResponse *response) {
  if (response == nullptr) return;
  forget(response->tbsResponseDataBytes);
  asn1_BasicOCSPResponse_free(response);
}

}  // namespace

// ResponseBytes ::= SEQUENCE { responseType, response OCTET STRING }
//
// The octets of a basic response are decoded.
Node describe(const ResponseBytes *bytes, const View &view) {
  Description fields(view);
  fields.field("responseType", bytes->responseType).brief();
  if (!is(bytes->responseType, asn1_Get_id_pkix_ocsp_basic))
    return fields.field("response", bytes->response).node();
  const Octets content = octets(bytes->response);
  if (auto basic = record_value<asn1_BasicOCSPResponse_d, free_basic_response>(content, view))
    return fields.hidden("response", describe(bytes->response, view))
        .field("decoded", std::move(*basic))
        .node();
  const std::string why = why_unread(content, basic_syntax);
  return fields.field("response", bytes->response)
      .field("unread", text("not in a form that this library reads: " + why, why))
      .brief()
      .node();
}

// OCSPResponse ::= SEQUENCE { responseStatus, responseBytes [0] }
Node describe(const OCSPResponse *response, const View &view) {
  static constexpr const char *words[] = {"successful",  "malformedRequest", "internalError",
                                          "tryLater",    "status 4",         "sigRequired",
                                          "unauthorized"};
  const uint32_t status = response->responseStatus;
  const std::string word =
      status < std::size(words) ? words[status] : "status " + std::to_string(status);
  return Description(view)
      .field("responseStatus", text(word, word, status == 0 ? Tone::plain : Tone::alarm))
      .brief()
      .field("responseBytes", response->responseBytes)
      .node();
}

namespace {

constexpr std::string_view request_labels[] = {"OCSP REQUEST"};
constexpr std::string_view response_labels[] = {"OCSP RESPONSE"};

constexpr Type rows[] = {
    type<asn1_OCSPRequest_d, asn1_OCSPRequest_e, asn1_OCSPRequest_free>(
        {.name = "ocsp-request",
         .heading = "OCSPRequest",
         .about = "a question for the status of certificates",
         .labels = request_labels,
         .syntax = &request_syntax,
         .stands_alone = true}),
    type<asn1_OCSPResponse_d, nullptr, asn1_OCSPResponse_free>(
        {.name = "ocsp-response",
         .heading = "OCSPResponse",
         .about = "an answer about the status of certificates",
         .labels = response_labels,
         .syntax = &response_syntax,
         .stands_alone = true}),
    type<asn1_BasicOCSPResponse_d, nullptr, free_basic_response>(
        {.name = "basic-ocsp-response",
         .heading = "BasicOCSPResponse",
         .about = "the signed answer inside an OCSP response",
         .syntax = &basic_syntax,
         .stands_alone = true}),
    type<asn1_TBSRequest_d, asn1_TBSRequest_e, asn1_TBSRequest_free>(
        {.name = "tbs-request",
         .heading = "TBSRequest",
         .about = "the signed part of an OCSP request",
         .syntax = &tbs_request_syntax}),
    type<asn1_Request_d, asn1_Request_e, asn1_Request_free>(
        {.name = "request",
         .heading = "Request",
         .about = "one certificate in an OCSP request",
         .syntax = &single_request_syntax}),
    type<asn1_CertID_d, asn1_CertID_e, asn1_CertID_free>(
        {.name = "cert-id",
         .heading = "CertID",
         .about = "which certificate OCSP speaks of",
         .syntax = &id_syntax}),
    type<asn1_OCSPSignature_d, asn1_OCSPSignature_e, asn1_OCSPSignature_free>(
        {.name = "ocsp-signature",
         .heading = "Signature",
         .about = "the signature of an OCSP request",
         .syntax = &signature_syntax}),
    type<asn1_ResponseBytes_d, nullptr, asn1_ResponseBytes_free>(
        {.name = "response-bytes",
         .heading = "ResponseBytes",
         .about = "an OCSP answer that is not decoded, and its type",
         .syntax = &bytes_syntax}),
    type<asn1_ResponseData_d, nullptr, asn1_ResponseData_free>(
        {.name = "response-data",
         .heading = "ResponseData",
         .about = "the signed part of a basic OCSP response",
         .syntax = &data_syntax}),
    type<asn1_ResponderID_d, nullptr, asn1_ResponderID_free>({.name = "responder-id",
                                                              .heading = "ResponderID",
                                                              .about = "who gave an OCSP response",
                                                              .syntax = &responder_syntax}),
    type<asn1_SingleResponse_d, nullptr, asn1_SingleResponse_free>(
        {.name = "single-response",
         .heading = "SingleResponse",
         .about = "the status of one certificate",
         .syntax = &single_syntax}),
    type<asn1_OCSPCertStatus_d, nullptr, asn1_OCSPCertStatus_free>(
        {.name = "cert-status",
         .heading = "CertStatus",
         .about = "good, revoked or unknown",
         .syntax = &status_syntax}),
    type<asn1_RevokedInfo_d, nullptr, asn1_RevokedInfo_free>(
        {.name = "revoked-info",
         .heading = "RevokedInfo",
         .about = "when and why a certificate was revoked",
         .syntax = &revoked_syntax}),
};

}  // namespace

std::span<const Type> ocsp_types() { return rows; }

}  // namespace tool
