// Certificates (RFC 5280, 4.1), and the names (X.501) and other parts that they are made of.
#include "records/certificate_page.h"
#include "records/distinguished_names.h"
#include "records/extension_values.h"
#include "records/public_key.h"
#include "records/type.h"

namespace tool {

// AttributeTypeAndValue ::= SEQUENCE { type, value }
Node describe(const AttributeValueAssertion *assertion, const View &view) {
  return text(attribute_text(assertion, view), json_of(assertion));
}

// Validity ::= SEQUENCE { notBefore, notAfter }
Node describe(const Validity *validity, const View &view) {
  return Description(view)
      .period("notBefore", validity->notBefore, "notAfter", validity->notAfter)
      .node();
}

// SubjectPublicKeyInfo ::= SEQUENCE { algorithm, subjectPublicKey }
//
// What the key tells without arithmetic follows its fields.
Node describe(const SubjectPKI *info, const View &view) {
  const Key key = read_key(info);
  Description fields(view);
  fields.field("algorithm", info->algorithm)
      .field("subjectPublicKey", info->subjectPublicKey)
      .field("keyKind", text(key_text(info, view), key.kind))
      .brief();
  if (key.bits) fields.hidden("keyBits", text("", *key.bits));
  if (!key.curve.empty()) fields.hidden("keyCurve", text("", key.curve));
  if (!key.exponent.empty()) fields.hidden("keyExponent", text("", key.exponent));
  Node record = fields.node();
  return view.full ? record : shown_as(std::move(record), text(key_text(info, view), nullptr));
}

// Extension ::= SEQUENCE { extnID, critical DEFAULT FALSE, extnValue }
//
// In a list the identifier takes the place of the number, and the value is all that is shown.
Node describe(const Extension *extension, const View &view) {
  const ExtensionValue value = read_extension(extension, view);
  Description fields(view);
  fields.field("extnID", extension->extnID)
      .field("critical", boolean(extension->critical))
      .field("extnValue", extension->extnValue);
  if (value.read)
    fields.field("decoded", value.node);
  else if (!value.why.empty())
    fields.field("unread", text(value.why, value.why));
  Node record = shown_as(fields.node(), value.node);
  record.name = label(extension->extnID, view) + (extension->critical != 0 ? ", critical" : "");
  return record;
}

// TBSCertificate ::= SEQUENCE { version [0], serialNumber, signature, issuer, validity, subject,
//   subjectPublicKeyInfo, issuerUniqueID [1], subjectUniqueID [2], extensions [3] }
Node describe(const Certificate_TBS *tbs, const View &view) {
  return Description(view)
      .version("version", tbs->version)
      .field("serialNumber", tbs->serialNumber)
      .field("signature", tbs->signature)
      .name("issuer", tbs->issuerSequence, tbs->issuer, tbs->issuerEncoded)
      .brief()
      .field("validity", tbs->validity)
      .name("subject", tbs->subjectSequence, tbs->subject, tbs->subjectEncoded)
      .brief()
      .field("subjectPublicKeyInfo", tbs->subjectPublicKeyInfo)
      .brief()
      .field("issuerUniqueID", tbs->issuerUniqueID)
      .field("subjectUniqueID", tbs->subjectUniqueID)
      .list<Extension>("extensions", tbs->extensions)
      .node();
}

// Certificate ::= SEQUENCE { tbsCertificate, signatureAlgorithm, signatureValue }
Node describe(const Certificate *certificate, const View &view) {
  return Description(view)
      .encoding("tbsEncoded", certificate->tbsEncoded)
      .field("tbsCertificate", certificate->tbsCertificate)
      .field("signatureAlgorithm", certificate->signatureAlgorithm)
      .field("signatureValue", certificate->signatureValue)
      .node();
}

namespace {

Node describe_rdn(const RelativeDistinguishedName *rdn, const View &view) {
  return list_of<AttributeValueAssertion>(rdn, view);
}

Node describe_rdn_sequence(const RDNSequence *name, const View &view) {
  return list_of<RelativeDistinguishedName>(name, describe_rdn, view);
}

Node describe_extensions(const Extensions *extensions, const View &view) {
  return list_of<Extension>(extensions, view);
}

constexpr Field extensions_fields[] = {{"", &extensions_syntax}};
constexpr Syntax tagged_extensions_syntax{.tag = 0xA3, .fields = extensions_fields};

constexpr Field validity_fields[] = {{"notBefore", &time_syntax}, {"notAfter", &time_syntax}};
constexpr Syntax validity_syntax{.tag = 0x30, .fields = validity_fields};

constexpr Field tbs_fields[] = {{"version", &wrapped_integer_syntax, true},
                                {"serialNumber", &integer_syntax},
                                {"signature", &algorithm_syntax},
                                {"issuer", &name_syntax},
                                {"validity", &validity_syntax},
                                {"subject", &name_syntax},
                                {"subjectPublicKeyInfo", &key_syntax},
                                {"issuerUniqueID", &bit_string_syntax, true, 0x81},
                                {"subjectUniqueID", &bit_string_syntax, true, 0x82},
                                {"extensions", &tagged_extensions_syntax, true}};
constexpr Syntax tbs_syntax{.tag = 0x30, .fields = tbs_fields};

constexpr Field certificate_fields[] = {{"tbsCertificate", &tbs_syntax},
                                        {"signatureAlgorithm", &algorithm_syntax},
                                        {"signatureValue", &bit_string_syntax}};
constexpr Syntax certificate_syntax{.tag = 0x30, .fields = certificate_fields};

/// Whether the version is an INTEGER that the decoder takes to be above 0.
bool allows_extensions(Octets integer) {
  const auto version = decoded(asn1_Integer_d, asn1_Integer_free, integer);
  return version && version->length != 0 && version->data[0] != 0;
}

/// Finds what is wrong with a certificate of sound syntax: unique identifiers and extensions need a
/// version above 1.
std::optional<Fault> version_fault(Octets octets) {
  constexpr uint8_t first_tag_that_needs_one = 0x81;
  bool allowed = false;
  for (const Octets field : components(component(octets, 0))) {
    if (read_header(field).indefinite) break;
    if (field[0] == wrapped_integer_syntax.tag)
      allowed = allows_extensions(component(field, 0));
    else if (field[0] >= first_tag_that_needs_one && !allowed)
      return Fault{
          static_cast<size_t>(field.data() - octets.data()),
          "tbsCertificate: found " + tag_name(field[0]) + ", which needs a version above 1"};
  }
  return std::nullopt;
}

void forget_names(Certificate_TBS *tbs) {
  forget(tbs->issuerEncoded);
  forget(tbs->subjectEncoded);
}

constexpr std::string_view certificate_labels[] = {"CERTIFICATE", "X509 CERTIFICATE"};
constexpr std::string_view key_labels[] = {"PUBLIC KEY"};

constexpr Type rows[] = {
    type<asn1_Certificate_d, asn1_Certificate_e, asn1_Certificate_free>(
        {.name = "certificate",
         .heading = "Certificate",
         .about = "an X.509 certificate",
         .labels = certificate_labels,
         .syntax = &certificate_syntax,
         .stands_alone = true,
         .explain = version_fault,
         .forget_encodings =
             [](void *record) {
               auto *const certificate = static_cast<Certificate *>(record);
               forget(certificate->tbsEncoded);
               forget_names(certificate->tbsCertificate);
             },
         .page = certificate_page,
         .short_form = certificate_short_form}),
    type<asn1_Certificate_TBS_d, asn1_Certificate_TBS_e, asn1_Certificate_TBS_free>(
        {.name = "tbs-certificate",
         .heading = "TBSCertificate",
         .about = "the signed part of a certificate",
         .syntax = &tbs_syntax,
         .forget_encodings =
             [](void *record) { forget_names(static_cast<Certificate_TBS *>(record)); }}),
    type<asn1_Validity_d, asn1_Validity_e, asn1_Validity_free>({.name = "validity",
                                                                .heading = "Validity",
                                                                .about = "from when and until when",
                                                                .syntax = &validity_syntax}),
    type<asn1_SubjectPKI_d, asn1_SubjectPKI_e, asn1_SubjectPKI_free>(
        {.name = "subject-public-key-info",
         .heading = "SubjectPublicKeyInfo",
         .about = "a public key and its algorithm",
         .labels = key_labels,
         .syntax = &key_syntax,
         .stands_alone = true}),
    type<asn1_Extension_d, asn1_Extension_e, asn1_Extension_free>(
        {.name = "extension",
         .heading = "Extension",
         .about = "an extension of a certificate, a CRL or a message",
         .syntax = &extension_syntax}),
    type<asn1_Extensions_d, asn1_Extensions_e, asn1_Extensions_free, describe_extensions>(
        {.name = "extensions",
         .heading = "Extensions",
         .about = "a list of extensions",
         .syntax = &extensions_syntax}),
    type<asn1_Name_d, asn1_Name_e, asn1_Name_free, name_text>(
        {.name = "name",
         .heading = "Name",
         .about = "a distinguished name, by way of the library's textual form",
         .syntax = &name_syntax}),
    type<asn1_RDNSequence_d, asn1_RDNSequence_e, asn1_RDNSequence_free, describe_rdn_sequence>(
        {.name = "rdn-sequence",
         .heading = "RDNSequence",
         .about = "a distinguished name as a structure",
         .syntax = &rdn_sequence_syntax}),
    type<asn1_RelativeDistinguishedName_d, asn1_RelativeDistinguishedName_e,
         asn1_RelativeDistinguishedName_free, describe_rdn>(
        {.name = "relative-distinguished-name",
         .heading = "RelativeDistinguishedName",
         .about = "the attributes of one level of a name",
         .syntax = &rdn_syntax}),
    type<asn1_AttributeValueAssertion_d, asn1_AttributeValueAssertion_e,
         asn1_AttributeValueAssertion_free>({.name = "attribute-type-and-value",
                                             .heading = "AttributeTypeAndValue",
                                             .about = "an attribute of a name",
                                             .syntax = &assertion_syntax}),
};

}  // namespace

std::span<const Type> certificate_types() { return rows; }

}  // namespace tool
