// Certification requests (PKCS #10, RFC 2986) and attributes (PKCS #9, RFC 2985).
#include "records/attribute_values.h"
#include "records/type.h"

namespace tool {

// Attribute ::= SEQUENCE { type, values SET OF ANY }
//
// In a list the type takes the place of the number, and the values are all that is shown.
Node describe(const Attribute *attribute, const View &view) {
  Node values = list_of<Any>(attribute->values, view);
  Node readable = read_attribute(attribute, view);
  Description fields(view);
  fields.field("type", attribute->type).field("values", values);
  const bool read = !readable.empty();
  if (read) fields.field("decoded", readable);
  Node record = shown_as(fields.node(), read ? std::move(readable) : std::move(values));
  record.name = label(attribute->type, view);
  return record;
}

// CertificationRequestInfo ::= SEQUENCE { version, subject, subjectPKInfo, attributes [0] }
Node describe(const CertRequestInfo *info, const View &view) {
  return Description(view)
      .version("version", info->version)
      .name("subject", info->subjectSequence, info->subject, info->subjectEncoded)
      .brief()
      .field("subjectPKInfo", info->subjectPKInfo)
      .brief()
      .list<Attribute>("attributes", info->attributes)
      .brief()
      .node();
}

// CertificationRequest ::= SEQUENCE { certificationRequestInfo, signatureAlgorithm, signature }
Node describe(const CertificationRequest *request, const View &view) {
  return Description(view)
      .field("certificationRequestInfo", request->certificationRequestInfo)
      .encoding("tbsEncoded", request->tbsEncoded)
      .field("signatureAlgorithm", request->signatureAlgorithm)
      .field("signature", request->signature)
      .node();
}

namespace {

constexpr Field info_fields[] = {{"version", &integer_syntax},
                                 {"subject", &name_syntax},
                                 {"subjectPKInfo", &key_syntax},
                                 {"attributes", &attributes_0_syntax, true}};
constexpr Syntax info_syntax{.tag = 0x30, .fields = info_fields};

constexpr Field request_fields[] = {{"certificationRequestInfo", &info_syntax},
                                    {"signatureAlgorithm", &algorithm_syntax},
                                    {"signature", &bit_string_syntax}};
constexpr Syntax request_syntax{.tag = 0x30, .fields = request_fields};

constexpr std::string_view request_labels[] = {"CERTIFICATE REQUEST", "NEW CERTIFICATE REQUEST"};

constexpr Type rows[] = {
    type<asn1_CertificationRequest_d, asn1_CertificationRequest_e, asn1_CertificationRequest_free>(
        {.name = "certification-request",
         .heading = "CertificationRequest",
         .about = "a request for a certificate (PKCS #10)",
         .labels = request_labels,
         .syntax = &request_syntax,
         .stands_alone = true,
         .forget_encodings =
             [](void *record) {
               auto *const request = static_cast<CertificationRequest *>(record);
               forget(request->tbsEncoded);
               forget(request->certificationRequestInfo->subjectEncoded);
             }}),
    type<asn1_CertRequestInfo_d, asn1_CertRequestInfo_e, asn1_CertRequestInfo_free>(
        {.name = "certification-request-info",
         .heading = "CertificationRequestInfo",
         .about = "the signed part of a request for a certificate",
         .syntax = &info_syntax,
         .forget_encodings =
             [](void *record) { forget(static_cast<CertRequestInfo *>(record)->subjectEncoded); }}),
    type<asn1_Attribute_d, asn1_Attribute_e, asn1_Attribute_free>(
        {.name = "attribute",
         .heading = "Attribute",
         .about = "an attribute of a request, a key or a message (PKCS #9)",
         .syntax = &attribute_syntax}),
};

}  // namespace

std::span<const Type> request_types() { return rows; }

}  // namespace tool
