// Personal information exchange (PKCS #12, RFC 7292).
#include <algorithm>

#include "records/inside.h"
#include "records/messages.h"
#include "records/values.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// The types of the values that bags of each kind hold, under the display name of the kind.
struct BagValue {
  std::string_view kind;
  std::string_view type;
};

constexpr BagValue bag_values[] = {
    {"keyBag", "private-key-info"}, {"pkcs-8ShroudedKeyBag", "encrypted-private-key-info"},
    {"certBag", "cert-bag"},        {"crlBag", "crl-bag"},
    {"secretBag", "secret-bag"},    {"safeContentBag", "safe-contents"}};

/// Describes a bag whose value is of a type that only the caller knows. The name of the type is
/// empty for a value of any type.
Node bag(const char *id_name, const ObjId *id, const char *value_name, const Any *value,
         std::string_view type, Octets element, const View &view) {
  Description fields(view);
  fields.field(id_name, id).brief();
  if (type.empty()) return fields.field(value_name, value).node();
  return add_inside(fields, value_name, describe(value, view), read_inside(element, type, view))
      .node();
}

/// Returns the octets of an element that is an OCTET STRING.
Bytes unwrapped(const Any *element) {
  const auto string = decoded(asn1_OctetString_d, asn1_OctetString_free, octets(element));
  const Octets content = octets(string.get());
  return {content.begin(), content.end()};
}

// ---- Password-based encryption (PKCS #5, RFC 8018) ----------------------------------------------

/// Describes an algorithm with the values of its parameters, if they are read.
Node with_parameters(const AlgId *algorithm, std::optional<Node> values, const View &view) {
  if (!values) return describe(algorithm, view);
  Node shown = Description(view)
                   .field("algorithm", algorithm->algorithm)
                   .field("parameters", *values)
                   .node();
  return shown_as(Description(view)
                      .field("algorithm", algorithm->algorithm)
                      .brief()
                      .field("parameters", algorithm->parameters)
                      .field("decoded", std::move(*values))
                      .node(),
                  std::move(shown));
}

constexpr ValueReader read_algorithm = record_value<asn1_AlgId_d, asn1_AlgId_free>;

// PBKDF2-params ::= SEQUENCE { salt, iterationCount, keyLength OPTIONAL, prf OPTIONAL }
std::optional<Node> pbkdf2(Octets parameters, const View &view) {
  auto salt =
      record_value<asn1_OctetString_d, asn1_OctetString_free>(component(parameters, 0), view);
  auto count = number_value(component(parameters, 1), view);
  if (!salt || !count) return std::nullopt;
  Description fields(view);
  fields.field("salt", std::move(*salt)).field("iterationCount", std::move(*count));
  size_t next = 2;
  if (auto length = number_value(component(parameters, next), view)) {
    fields.field("keyLength", std::move(*length));
    ++next;
  }
  if (auto prf = read_algorithm(component(parameters, next), view))
    fields.field("prf", std::move(*prf));
  return fields.node();
}

// PBES2-params ::= SEQUENCE { keyDerivationFunc, encryptionScheme }
std::optional<Node> pbes2(Octets parameters, const View &view) {
  auto function = decoded(asn1_AlgId_d, asn1_AlgId_free, component(parameters, 0));
  auto scheme = read_algorithm(component(parameters, 1), view);
  if (!function || !scheme) return std::nullopt;
  const bool known = display_name(function->algorithm) == "PBKDF2";
  Node derivation = with_parameters(
      function.get(), known ? pbkdf2(octets(function->parameters), view) : std::nullopt, view);
  return Description(view)
      .field("keyDerivationFunc", owning(std::move(derivation), std::move(function)))
      .field("encryptionScheme", std::move(*scheme))
      .node();
}

}  // namespace

Node encryption_algorithm(const AlgId *algorithm, const View &view) {
  const std::string name = display_name(algorithm->algorithm);
  const Octets parameters = octets(algorithm->parameters);
  if (name == "PBES2") return with_parameters(algorithm, pbes2(parameters, view), view);
  if (!name.starts_with("pbeWith")) return describe(algorithm, view);
  return with_parameters(
      algorithm, record_value<asn1_PbeParams_d, asn1_PbeParams_free>(parameters, view), view);
}

// PBEParameter ::= SEQUENCE { salt, iterations }
Node describe(const PbeParams *parameters, const View &view) {
  return Description(view)
      .field("salt", parameters->salt)
      .small("iterations", parameters->iterations)
      .node();
}

// MacData ::= SEQUENCE { mac, macSalt, iterations DEFAULT 1 }
Node describe(const MacData *mac, const View &view) {
  return Description(view)
      .field("mac", mac->mac)
      .field("macSalt", mac->macSalt)
      .small("iterations", mac->iterations)
      .node();
}

// CertBag ::= SEQUENCE { certId, certValue [0] }
Node describe(const CertBag *record, const View &view) {
  const bool known = is(record->certId, asn1_Get_x509Certificate);
  return bag("certId", record->certId, "certValue", record->certValue, known ? "certificate" : "",
             unwrapped(record->certValue), view);
}

// CRLBag ::= SEQUENCE { crlId, crlValue [0] }
Node describe(const CRLBag *record, const View &view) {
  const bool known = is(record->crlId, asn1_Get_x509Crl);
  return bag("crlId", record->crlId, "crlValue", record->crlValue, known ? "crl" : "",
             unwrapped(record->crlValue), view);
}

// SecretBag ::= SEQUENCE { secretTypeId, secretValue [0] }
Node describe(const SecretBag *record, const View &view) {
  return bag("secretTypeId", record->secretTypeId, "secretValue", record->secretValue, "", {},
             view);
}

// SafeBag ::= SEQUENCE { bagId, bagValue [0], bagAttributes OPTIONAL }
Node describe(const SafeBag *record, const View &view) {
  const std::string kind = display_name(record->bagId);
  const auto *const known = std::ranges::find(bag_values, std::string_view(kind), &BagValue::kind);
  Description fields(view);
  fields.field("bagId", record->bagId).brief();
  if (known == std::end(bag_values))
    fields.field("bagValue", record->bagValue);
  else
    add_inside(fields, "bagValue", describe(record->bagValue, view),
               read_inside(octets(record->bagValue), known->type, view));
  return fields.list<Attribute>("bagAttributes", record->bagAttributes).node();
}

// PFX ::= SEQUENCE { version, authSafe, macData OPTIONAL }
Node describe(const PFX *pfx, const View &view) {
  return Description(view)
      .small("version", pfx->version)
      .field("authSafe", message(pfx->authSafe, "authenticated-safe", view))
      .brief()
      .field("macData", pfx->macData)
      .node();
}

namespace {

// ---- AuthenticatedSafe and SafeContents, for which the library has no functions ------------------

using Messages = ListOf<asn1_ContentInfo_d, asn1_ContentInfo_free, asn1_ContentInfo_e>;
using Bags = ListOf<asn1_SafeBag_d, asn1_SafeBag_free, asn1_SafeBag_e>;

Node describe_safe(const List *messages, const View &view) {
  const auto describe_message = [](const ContentInfo *info, const View &at) {
    return message(info, "safe-contents", at);
  };
  return list_of<ContentInfo>(messages, describe_message, view);
}

Node describe_bags(const List *bags, const View &view) { return list_of<SafeBag>(bags, view); }

std::optional<Fault> safe_fault(Octets octets) {
  for (const Octets message : components(octets))
    if (auto fault = message_fault(message))
      return fault_of_part(std::move(fault), message, octets);
  return std::nullopt;
}

std::optional<Fault> auth_safe_fault(Octets octets) {
  const Octets message = component(octets, 1);
  return fault_of_part(message_fault(message), message, octets);
}

// ---- The types ----------------------------------------------------------------------------------

constexpr Field pbe_fields[] = {{"salt", &octet_string_syntax}, {"iterations", &integer_syntax}};
constexpr Syntax pbe_syntax{.tag = 0x30, .fields = pbe_fields};

constexpr Field mac_fields[] = {{"mac", &digest_info_syntax},
                                {"macSalt", &octet_string_syntax},
                                {"iterations", &integer_syntax, true}};
constexpr Syntax mac_syntax{.tag = 0x30, .fields = mac_fields};

constexpr Field pfx_fields[] = {{"version", &integer_syntax},
                                {"authSafe", &content_info_syntax},
                                {"macData", &mac_syntax, true}};
constexpr Syntax pfx_syntax{.tag = 0x30, .indefinite = true, .fields = pfx_fields};

constexpr Syntax safe_syntax{.tag = 0x30, .element = &content_info_syntax};

constexpr Syntax bag_attributes_syntax{.tag = 0x31, .element = &attribute_syntax};
constexpr Field safe_bag_fields[] = {{"bagId", &oid_syntax},
                                     {"bagValue", &wrapped_any_syntax},
                                     {"bagAttributes", &bag_attributes_syntax, true}};
constexpr Syntax safe_bag_syntax{.tag = 0x30, .fields = safe_bag_fields};
constexpr Syntax safe_bags_syntax{.tag = 0x30, .element = &safe_bag_syntax};

constexpr Field cert_bag_fields[] = {{"certId", &oid_syntax}, {"certValue", &wrapped_any_syntax}};
constexpr Syntax cert_bag_syntax{.tag = 0x30, .fields = cert_bag_fields};
constexpr Field crl_bag_fields[] = {{"crlId", &oid_syntax}, {"crlValue", &wrapped_any_syntax}};
constexpr Syntax crl_bag_syntax{.tag = 0x30, .fields = crl_bag_fields};
constexpr Field secret_bag_fields[] = {{"secretTypeId", &oid_syntax},
                                       {"secretValue", &wrapped_any_syntax}};
constexpr Syntax secret_bag_syntax{.tag = 0x30, .fields = secret_bag_fields};

constexpr std::string_view pfx_labels[] = {"PKCS12"};

constexpr Type rows[] = {
    type<asn1_PFX_d, asn1_PFX_e, asn1_PFX_free>(
        {.name = "pfx",
         .heading = "PFX",
         .about = "keys and certificates under a password (PKCS #12)",
         .labels = pfx_labels,
         .syntax = &pfx_syntax,
         .stands_alone = true,
         .explain = auth_safe_fault,
         .forget_encodings =
             [](void *record) { forget_encodings_of(static_cast<PFX *>(record)->authSafe); }}),
    type<asn1_MacData_d, asn1_MacData_e, asn1_MacData_free>(
        {.name = "mac-data",
         .heading = "MacData",
         .about = "the integrity check of a PFX",
         .syntax = &mac_syntax}),
    type<Messages::decode, Messages::encode, Messages::free, describe_safe>(
        {.name = "authenticated-safe",
         .heading = "AuthenticatedSafe",
         .about = "the messages in the data of a PFX",
         .syntax = &safe_syntax,
         .explain = safe_fault}),
    type<Bags::decode, Bags::encode, Bags::free, describe_bags>(
        {.name = "safe-contents",
         .heading = "SafeContents",
         .about = "the bags in the data of a message of a PFX",
         .syntax = &safe_bags_syntax}),
    type<asn1_SafeBag_d, asn1_SafeBag_e, asn1_SafeBag_free>(
        {.name = "safe-bag",
         .heading = "SafeBag",
         .about = "a key, a certificate or another thing in a PFX",
         .syntax = &safe_bag_syntax}),
    type<asn1_CertBag_d, asn1_CertBag_e, asn1_CertBag_free>({.name = "cert-bag",
                                                             .heading = "CertBag",
                                                             .about = "a certificate in a PFX",
                                                             .syntax = &cert_bag_syntax}),
    type<asn1_CRLBag_d, asn1_CRLBag_e, asn1_CRLBag_free>({.name = "crl-bag",
                                                          .heading = "CRLBag",
                                                          .about = "a CRL in a PFX",
                                                          .syntax = &crl_bag_syntax}),
    type<asn1_SecretBag_d, asn1_SecretBag_e, asn1_SecretBag_free>(
        {.name = "secret-bag",
         .heading = "SecretBag",
         .about = "a secret of any other kind in a PFX",
         .syntax = &secret_bag_syntax}),
    type<asn1_PbeParams_d, asn1_PbeParams_e, asn1_PbeParams_free>(
        {.name = "pbe-params",
         .heading = "PbeParams",
         .about = "the salt and the iterations of password-based encryption",
         .syntax = &pbe_syntax}),
};

}  // namespace

std::span<const Type> exchange_types() { return rows; }

}  // namespace tool
