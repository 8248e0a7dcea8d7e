// Personal information exchange (PKCS #12, RFC 7292).
#include <algorithm>

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

/// Adds the fields of a bag whose value is of a type that only the caller knows. The name of the
/// type is empty for a value of any type.
Description &add_bag(Description &fields, const char *id_name, const ObjId *id,
                     const char *value_name, const Any *value, std::string_view type,
                     Octets element, const View &view) {
  fields.field(id_name, id).brief();
  if (type.empty()) return fields.field(value_name, value);
  return add_inside(fields, value_name, describe(value, view), read_inside(element, type, view));
}

/// Returns the octets of an element that is an OCTET STRING.
Bytes unwrapped(const Any *element) {
  const auto string = decoded(asn1_OctetString_d, asn1_OctetString_free, octets(element));
  const Octets content = octets(string.get());
  return {content.begin(), content.end()};
}

// ---- Password-based encryption (PKCS #5, RFC 8018) ----------------------------------------------

/// Describes an algorithm with the values of its parameters, if they are read.
Node with_parameters(const AlgId *algorithm, Node values, const View &view) {
  if (values.empty()) return describe(algorithm, view);
  Node shown =
      Description(view).field("algorithm", algorithm->algorithm).field("parameters", values).node();
  return shown_as(Description(view)
                      .field("algorithm", algorithm->algorithm)
                      .brief()
                      .field("parameters", algorithm->parameters)
                      .field("decoded", std::move(values))
                      .node(),
                  std::move(shown));
}

// PBKDF2-params ::= SEQUENCE { salt, iterationCount, keyLength OPTIONAL, prf OPTIONAL }
Node pbkdf2(Octets parameters, const View &view) {
  const auto read = [&](size_t index, const char *type, Describe describe = nullptr) {
    return read_value(component(parameters, index), type, view, describe).node;
  };
  Node salt = read(0, "OctetString");
  Node count = read(1, "Integer", as<number>);
  if (salt.empty() || count.empty()) return {};
  Node length = read(2, "Integer", as<number>);
  Node prf = read(length.empty() ? 2 : 3, "AlgId");
  return Description(view)
      .field("salt", std::move(salt))
      .field("iterationCount", std::move(count))
      .field("keyLength", std::move(length))
      .field("prf", std::move(prf))
      .node();
}

// PBES2-params ::= SEQUENCE { keyDerivationFunc, encryptionScheme }
Node pbes2(Octets parameters, const View &view) {
  auto function = decoded(asn1_AlgId_d, asn1_AlgId_free, component(parameters, 0));
  Node scheme = read_value(component(parameters, 1), "AlgId", view).node;
  if (!function || scheme.empty()) return {};
  const bool known = display_name(function->algorithm) == "PBKDF2";
  Node derivation = with_parameters(
      function.get(), known ? pbkdf2(octets(function->parameters), view) : Node(), view);
  return Description(view)
      .field("keyDerivationFunc", owning(std::move(derivation), std::move(function)))
      .field("encryptionScheme", std::move(scheme))
      .node();
}

}  // namespace

Node encryption_algorithm(const AlgId *algorithm, const View &view) {
  const std::string name = display_name(algorithm->algorithm);
  const Octets parameters = octets(algorithm->parameters);
  if (name == "PBES2") return with_parameters(algorithm, pbes2(parameters, view), view);
  if (!name.starts_with("pbeWith")) return describe(algorithm, view);
  return with_parameters(algorithm, read_value(parameters, "PbeParams", view).node, view);
}

// CertBag ::= SEQUENCE { certId, certValue [0] }
Node describe(const CertBag *record, const View &view) {
  const bool known = is(record->certId, asn1_Get_x509Certificate);
  Description fields(view);
  return add_bag(fields, "certId", record->certId, "certValue", record->certValue,
                 known ? "certificate" : "", unwrapped(record->certValue), view)
      .node();
}

// CRLBag ::= SEQUENCE { crlId, crlValue [0] }
Node describe(const CRLBag *record, const View &view) {
  const bool known = is(record->crlId, asn1_Get_x509Crl);
  Description fields(view);
  return add_bag(fields, "crlId", record->crlId, "crlValue", record->crlValue, known ? "crl" : "",
                 unwrapped(record->crlValue), view)
      .node();
}

// SafeBag ::= SEQUENCE { bagId, bagValue [0], bagAttributes OPTIONAL }
Node describe(const SafeBag *record, const View &view) {
  const std::string kind = display_name(record->bagId);
  const auto *const known = std::ranges::find(bag_values, std::string_view(kind), &BagValue::kind);
  const std::string_view type = known == std::end(bag_values) ? "" : known->type;
  Description fields(view);
  return add_bag(fields, "bagId", record->bagId, "bagValue", record->bagValue, type,
                 octets(record->bagValue), view)
      .field("bagAttributes", list_of("Attribute", record->bagAttributes, view))
      .node();
}

namespace {

Node authenticated_safe(const ContentInfo *info, const View &view) {
  return message(info, "authenticated-safe", view);
}

Node messages_with_bags(const List *messages, const View &view) {
  const auto describe_message = [](const ContentInfo *info, const View &at) {
    return message(info, "safe-contents", at);
  };
  return list_of<ContentInfo>(messages, describe_message, view);
}

}  // namespace

std::vector<Type> exchange_types() {
  return {
      {.syntax = "PFX",
       .about = "keys and certificates under a password (PKCS #12)",
       .labels = {"PKCS12"},
       .stands_alone = true,
       .hints = {{"version", as<number>}, brief("authSafe", as<authenticated_safe>)}},
      {.syntax = "MacData",
       .about = "the integrity check of a PFX",
       .hints = {{"iterations", as<number>}}},
      {.syntax = {"ContentInfo", true},
       .about = "the messages in the data of a PFX",
       .heading = "AuthenticatedSafe",
       .by_hand = as<messages_with_bags>},
      {.syntax = {"SafeBag", true},
       .about = "the bags in the data of a message of a PFX",
       .heading = "SafeContents"},
      {.syntax = "SafeBag",
       .about = "a key, a certificate or another item in a PFX",
       .by_hand = as<SafeBag>},
      {.syntax = "CertBag", .about = "a certificate in a PFX", .by_hand = as<CertBag>},
      {.syntax = "CRLBag", .about = "a CRL in a PFX", .by_hand = as<CRLBag>},
      {.syntax = "SecretBag",
       .about = "a secret of any other kind in a PFX",
       .hints = {brief("secretTypeId")}},
      {.syntax = "PbeParams",
       .about = "the salt and the iterations of password-based encryption",
       .name = "pbe-params",
       .heading = "PbeParams",
       .hints = {{"iterations", as<number>}}},
  };
}

}  // namespace tool
