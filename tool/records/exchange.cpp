// Personal information exchange (PKCS #12, RFC 7292).
#include "records/values.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// Adds the fields of a bag: an identifier, and a value of a type that only the caller knows; null
/// for one of any type.
Description &add_bag(Description &fields, const char *id_name, const ObjId *id,
                     const char *value_name, Node value, Octets element, const pki_Type *type,
                     const View &view) {
  fields.field(id_name, id).brief();
  return add_inside(fields, value_name, std::move(value),
                    type == nullptr ? Inside() : read_value(element, type, view));
}

/// Describes a bag whose value is an OCTET STRING around an element of a type; null for a value of
/// any other kind.
Node bag_of_octets(const char *id_name, const ObjId *id, const char *value_name, const Any *value,
                   const char *type, const View &view) {
  auto string = octet_string(octets(value));
  const pki_Type *const inside = type == nullptr || !string ? nullptr : type_called(type);
  Description fields(view);
  add_bag(fields, id_name, id, value_name, describe(value, view), octets(string.get()), inside,
          view);
  return owning(fields.node(), std::move(string));
}

}  // namespace

// CertBag ::= SEQUENCE { certId, certValue [0] }
Node describe(const CertBag *record, const View &view) {
  const bool known = is(record->certId, asn1_Get_x509Certificate);
  return bag_of_octets("certId", record->certId, "certValue", record->certValue,
                       known ? "pki_Certificate" : nullptr, view);
}

// CRLBag ::= SEQUENCE { crlId, crlValue [0] }
Node describe(const CRLBag *record, const View &view) {
  const bool known = is(record->crlId, asn1_Get_x509Crl);
  return bag_of_octets("crlId", record->crlId, "crlValue", record->crlValue,
                       known ? "pki_CertificateRevocationList" : nullptr, view);
}

// SafeBag ::= SEQUENCE { bagId, bagValue [0], bagAttributes OPTIONAL }
Node describe(const SafeBag *record, const View &view) {
  const pki_Type *const type = pki_Type_defined_by(record->bagId);
  const Type *const row = type == nullptr ? nullptr : row_of(type);
  Node value = describe(record->bagValue, view);
  if (row != nullptr && row->secret) value = secret(std::move(value), view);
  Description fields(view);
  return add_bag(fields, "bagId", record->bagId, "bagValue", std::move(value),
                 octets(record->bagValue), type, view)
      .field("bagAttributes", list_of("pki_Attribute", record->bagAttributes, view))
      .node();
}

namespace {

Node authenticated_safe(const pki_ContentInfo *info, const View &view) {
  return message(info, "pki_AuthenticatedSafe", view);
}

Node messages_with_bags(const List *messages, const View &view) {
  const auto describe_message = [](const pki_ContentInfo *info, const View &at) {
    return message(info, "pki_SafeContents", at);
  };
  return list_of<pki_ContentInfo>(messages, describe_message, view);
}

Node secret_any(const Any *value, const View &view) { return secret(describe(value, view), view); }

}  // namespace

std::vector<Type> exchange_types() {
  return {
      {.syntax = "pki_PFX",
       .about = "keys and certificates under a password (PKCS #12)",
       .labels = {"PKCS12"},
       .stands_alone = true,
       .secret = true,
       .hints = {{"version", as<number>}, brief("authSafe", as<authenticated_safe>)}},
      {.syntax = "pki_MacData",
       .about = "the integrity check of a PFX",
       .hints = {{"iterations", as<number>}}},
      {.syntax = "pki_AuthenticatedSafe",
       .about = "the messages in the data of a PFX",
       .secret = true,
       .by_hand = as<messages_with_bags>},
      {.syntax = "pki_SafeContents",
       .about = "the bags in the data of a message of a PFX",
       .secret = true},
      {.syntax = "pki_SafeBag",
       .about = "a key, a certificate or another item in a PFX",
       .secret = true,
       .by_hand = as<SafeBag>},
      {.syntax = "pki_CertBag", .about = "a certificate in a PFX", .by_hand = as<CertBag>},
      {.syntax = "pki_CRLBag", .about = "a CRL in a PFX", .by_hand = as<CRLBag>},
      {.syntax = "pki_SecretBag",
       .about = "a secret of any other kind in a PFX",
       .secret = true,
       .hints = {brief("secretTypeId"), {"secretValue", as<secret_any>}}},
  };
}

}  // namespace tool
