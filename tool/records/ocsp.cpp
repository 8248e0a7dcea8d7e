// The Online Certificate Status Protocol (RFC 6960).
#include "records/values.h"
#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

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

// CertStatus ::= CHOICE { good [0], revoked [1], unknown [2] }
Node describe(const OCSPCertStatus *status, const View &view) {
  static constexpr const char *words[] = {"good", "revoked", "unknown"};
  constexpr uint8_t revoked = 1;
  const std::string word = status->kind < std::size(words) ? words[status->kind] : "";
  Description fields(view);
  fields.field("status", text(word, word));
  if (status->kind != revoked || status->value == nullptr)
    return shown_as(fields.node(), text(word, nullptr));
  Node revoked_node = Description(view).all("pki_RevokedInfo", status->value).node();
  std::string line = word;
  for (const Node &node : std::get<Node::Fields>(revoked_node.value))
    line += ", " + lines_of(node, view)->front();
  fields.field("revoked", std::move(revoked_node));
  return shown_as(fields.node(), text(std::move(line), nullptr, Tone::alarm));
}

// ResponseBytes ::= SEQUENCE { responseType, response OCTET STRING }
//
// The octets of a basic response are decoded.
Node describe(const ResponseBytes *bytes, const View &view) {
  Description fields(view);
  fields.field("responseType", bytes->responseType).brief();
  if (!is(bytes->responseType, asn1_Get_id_pkix_ocsp_basic))
    return fields.field("response", bytes->response).node();
  const Octets content = octets(bytes->response);
  return add_inside(fields, "response", describe(bytes->response, view),
                    read_value(content, "pki_BasicOCSPResponse", view))
      .brief()
      .node();
}

namespace {

Node response_status(const uint32_t *number) {
  static constexpr const char *words[] = {"successful",  "malformedRequest", "internalError",
                                          "tryLater",    "status 4",         "sigRequired",
                                          "unauthorized"};
  const std::string word = word_of(words, *number, "status");
  return text(word, word, *number == 0 ? Tone::plain : Tone::alarm);
}

}  // namespace

std::vector<Type> ocsp_types() {
  return {
      {.syntax = "pki_OCSPRequest",
       .about = "a request for the status of certificates",
       .labels = {"OCSP REQUEST"},
       .stands_alone = true},
      {.syntax = "pki_OCSPResponse",
       .about = "a response about the status of certificates",
       .labels = {"OCSP RESPONSE"},
       .stands_alone = true,
       .hints = {brief("responseStatus", as<response_status>)}},
      {.syntax = "pki_BasicOCSPResponse",
       .about = "the signed response inside an OCSP response",
       .stands_alone = true,
       .hints = {{.field = "tbsResponseData", .kept = "tbsResponseDataBytes"}}},
      {.syntax = "pki_TBSRequest",
       .about = "the signed part of an OCSP request",
       .hints = {{"version", as<version>}, brief("requestorName"), brief("requestList")}},
      {.syntax = "pki_Request", .about = "one certificate in an OCSP request"},
      {.syntax = "pki_CertID", .about = "which certificate OCSP refers to"},
      {.syntax = "pki_OCSPSignature",
       .about = "the signature of an OCSP request",
       .name = "ocsp-signature",
       .hints = {brief("signatureAlgorithm")}},
      {.syntax = "pki_ResponseBytes",
       .about = "an OCSP response that is not decoded, and its type",
       .by_hand = as<ResponseBytes>},
      {.syntax = "pki_ResponseData",
       .about = "the signed part of a basic OCSP response",
       .hints = {{"version", as<version>},
                 brief("responderID"),
                 brief("producedAt"),
                 brief("responses")}},
      {.syntax = "pki_ResponderID",
       .about = "who signed an OCSP response",
       .by_hand = as<ResponderID>},
      {.syntax = "pki_SingleResponse",
       .about = "the status of one certificate",
       .hints = {period("thisUpdate")}},
      {.syntax = "pki_OCSPCertStatus",
       .about = "good, revoked or unknown",
       .by_hand = as<OCSPCertStatus>},
      {.syntax = "pki_RevokedInfo",
       .about = "when and why a certificate was revoked",
       .hints = {{"revocationReason", as<revocation_reason>}}},
  };
}

}  // namespace tool
