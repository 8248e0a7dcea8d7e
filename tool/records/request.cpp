// Certification requests (PKCS #10, RFC 2986) and attributes (PKCS #9, RFC 2985).
#include "records/attribute_values.h"
#include "records/certificate_facts.h"
#include "records/type.h"

namespace tool {

namespace {

// CertificationRequest ::= SEQUENCE { certificationRequestInfo, signatureAlgorithm, signature }
//
// The facts are in front of the fields.
Node request(const CertificationRequest *record, const View &view) {
  Description fields(view);
  return add_facts(fields, record).all("pki_CertificationRequest", record).node();
}

}  // namespace

// Attribute ::= SEQUENCE { type, values SET OF ANY }
//
// In a list the type replaces the number, and only the values are shown.
Node describe(const Attribute *attribute, const View &view) {
  Node values = list_of("Any", attribute->values, view);
  AttributeValues readable = read_attribute(attribute, view);
  Description fields(view);
  fields.field("type", attribute->type);
  const bool is_decoded = !readable.decoded.empty();
  if (!is_decoded || !view.compact) fields.field("values", values);
  if (is_decoded) fields.field("decoded", std::move(readable.decoded));
  Node record = shown_as(fields.node(),
                         readable.shown.empty() ? std::move(values) : std::move(readable.shown));
  record.name = label(attribute->type, view);
  return record;
}

std::vector<Type> request_types() {
  return {
      {.syntax = "pki_CertificationRequest",
       .about = "a request for a certificate (PKCS #10)",
       .labels = {"CERTIFICATE REQUEST", "NEW CERTIFICATE REQUEST"},
       .stands_alone = true,
       .by_hand = as<request>},
      {.syntax = "pki_CertRequestInfo",
       .about = "the signed part of a request for a certificate",
       .hints = {{"version", as<version>},
                 brief("subject"),
                 brief("subjectPKInfo"),
                 brief("attributes")}},
      {.syntax = "pki_Attribute",
       .about = "an attribute of a request, a key or a message (PKCS #9)",
       .by_hand = as<Attribute>},
  };
}

}  // namespace tool
