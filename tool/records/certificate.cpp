// Certificates (RFC 5280, 4.1), and the names (X.501) and other parts that they are made of.
#include "records/certificate_facts.h"
#include "records/certificate_page.h"
#include "records/distinguished_names.h"
#include "records/extension_values.h"
#include "records/public_key.h"
#include "records/type.h"

namespace tool {

namespace {

// Certificate ::= SEQUENCE { tbsCertificate, signatureAlgorithm, signatureValue }
//
// The facts are in front of the fields.
Node certificate(const Certificate *record, const View &view) {
  Description fields(view);
  return add_facts(fields, record).all("pki_Certificate", record).node();
}

}  // namespace

// AttributeTypeAndValue ::= SEQUENCE { type, value }
Node describe(const AttributeValueAssertion *assertion, const View &view) {
  return text(
      view, [&] { return attribute_text(assertion, view); },
      Json::of_part<append_attribute>(assertion));
}

// SubjectPublicKeyInfo ::= SEQUENCE { algorithm, subjectPublicKey }
//
// The kind and the size of the key follow the fields.
Node describe(const SubjectPKI *info, const View &view) {
  const Key key = read_key(info);
  const auto line = [&] { return key_text(info, view); };
  Description fields(view);
  fields.all("pki_SubjectPKI", info).field("keyKind", text(view, line, key.kind)).brief();
  if (key.bits) fields.hidden("keyBits", *key.bits);
  if (!key.curve.empty()) fields.hidden("keyCurve", key.curve);
  if (!key.exponent.empty()) fields.hidden("keyExponent", key.exponent);
  if (view.full) return fields.node();
  return shown_as(view, fields.node(), [&] { return text(line(), nullptr); });
}

// Extension ::= SEQUENCE { extnID, critical DEFAULT FALSE, extnValue }
//
// In a list the identifier replaces the number, and only the value is shown.
Node describe(const Extension *extension, const View &view) {
  Inside value = read_extension(extension, view);
  Description fields(view);
  const bool complete = value.read && value.malformed.empty();
  if (view.compact && complete)
    fields.field("extnID", extension->extnID).field("critical", boolean(extension->critical));
  else
    fields.all("pki_Extension", extension);
  if (!value.malformed.empty()) fields.hidden("malformed", value.malformed);
  if (value.read)
    fields.field("decoded", value.node);
  else if (!value.malformed.empty())
    fields.page_only("decoded", value.node);
  if (!view.lines) return fields.node();
  Node record = shown_as(fields.node(), std::move(value.node));
  record.name = label(extension->extnID, view) + (extension->critical != 0 ? ", critical" : "");
  return record;
}

std::vector<Type> certificate_types() {
  return {
      {.syntax = "pki_Certificate",
       .about = "an X.509 certificate",
       .labels = {"CERTIFICATE", "X509 CERTIFICATE"},
       .stands_alone = true,
       .by_hand = as<certificate>,
       .own_page = certificate_page,
       .own_short_form = certificate_short_form},
      {.syntax = "pki_Certificate_TBS",
       .about = "the signed part of a certificate",
       .hints = {{"version", as<version>},
                 brief("issuer"),
                 brief("subject"),
                 brief("subjectPublicKeyInfo")}},
      {.syntax = "pki_Validity",
       .about = "from when and until when",
       .hints = {period("notBefore")}},
      {.syntax = "pki_SubjectPKI",
       .about = "a public key and its algorithm",
       .labels = {"PUBLIC KEY"},
       .stands_alone = true,
       .by_hand = as<SubjectPKI>},
      {.syntax = "pki_Extension",
       .about = "an extension of a certificate, a CRL or a message",
       .by_hand = as<Extension>},
      {.syntax = "pki_Extensions", .about = "a list of extensions"},
      {.syntax = "Name", .about = "a distinguished name, by way of the library's textual form"},
      {.syntax = "pki_RDNSequence",
       .about = "a distinguished name as a structure",
       .by_hand = as<rdn_sequence>},
      {.syntax = "pki_RelativeDistinguishedName", .about = "the attributes of one level of a name"},
      {.syntax = "pki_AttributeValueAssertion",
       .about = "an attribute of a name",
       .by_hand = as<AttributeValueAssertion>},
  };
}

}  // namespace tool
