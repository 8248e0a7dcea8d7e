#include "records/extension_values.h"

#include <algorithm>

#include "records/values.h"
#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

// ---- Values of universal types -------------------------------------------------------------------

Node extended_key_usage(const List *purposes, const View &view) {
  std::vector<std::string> words;
  std::vector<Json> objects;
  for (const auto *purpose : elements<ObjId>(purposes)) {
    words.push_back(label(purpose, view));
    put_oid(objects.emplace_back(Json::object()), "keyPurposeId", purpose);
  }
  return text(view.oids ? words : std::vector<std::string>{joined(words)}, Json::array(objects));
}

Node reason(Octets value, const View &) {
  if (value.empty()) return {};
  const uint8_t *const end = value.data() + value.size();
  uint32_t code = 0;
  if (asn1_Enumerated_d(value.data(), end, 0, &code, 0) != end) return {};
  return revocation_reason(&code);
}

Node presence(Octets value, const View &) {
  return std::ranges::equal(value, octets(asn1_Any_NULL())) ? text("present", true) : Node();
}

/// Returns the names of the bits that are set in a BIT STRING.
Node named_bits(const BitString *bits, std::span<const char *const> names) {
  std::vector<std::string> words;
  for (uint32_t i = 0; i < bits->length; ++i)
    if (asn1_BitString_test(bits, i) != 0) words.push_back(word_of(names, i, "bit"));
  return text(words.empty() ? "none" : joined(words),
              Json::array(std::vector<Json>(words.begin(), words.end())));
}

Node key_usage(const BitString *bits) {
  static constexpr const char *names[] = {"digitalSignature", "nonRepudiation", "keyEncipherment",
                                          "dataEncipherment", "keyAgreement",   "keyCertSign",
                                          "cRLSign",          "encipherOnly",   "decipherOnly"};
  return named_bits(bits, names);
}

Node netscape_cert_type(const BitString *bits) {
  static constexpr const char *names[] = {"sslClient", "sslServer", "smime",   "objectSigning",
                                          "reserved",  "sslCA",     "smimeCA", "objectSigningCA"};
  return named_bits(bits, names);
}

/// Reads a nonce: an OCTET STRING, or its bare octets, as older programs send them.
Node nonce(Octets value, const View &view) {
  Inside string = read_value(value, Syntax("OctetString"), view);
  if (!string.node.empty()) return std::move(string.node);
  return text(hex(value) + " (bare octets)", hex(value));
}

Node policies(Octets value, const View &view) {
  if (Syntax("Any", true).fault(value)) return {};
  std::vector<std::string> lines;
  std::vector<Json> objects;
  for (const Octets policy : components(value)) {
    const auto identifier = decoded(asn1_ObjId_d, asn1_ObjId_free, component(policy, 0));
    if (policy[0] != tag::sequence || !identifier) return {};
    const Octets qualifiers = component(policy, 1);
    const bool qualified = !qualifiers.empty() && qualifiers[0] == tag::sequence;
    lines.push_back(label(identifier.get(), view) + (qualified ? ", qualified" : ""));
    put_oid(objects.emplace_back(Json::object()), "policyIdentifier", identifier.get());
  }
  return text(std::move(lines), Json::array(objects));
}

/// Describes a PrivateKeyUsagePeriod of the public form, whose times are GeneralizedTimes.
Node public_usage_period(const PrivateKeyUsagePeriod *period, const View &view) {
  return usage_period(generalized_time, period->notBefore, period->notAfter, view);
}

// ---- The list -----------------------------------------------------------------------------------

constexpr bool sequence_of = true;

/// The syntaxes, each under the display name of its extension.
constexpr ValueRow rows[] = {
    {"keyUsage", "BitString", !sequence_of, as<key_usage>},
    {"subjectKeyIdentifier", "OctetString"},
    {"extKeyUsage", "ObjId", sequence_of, as<extended_key_usage>},
    {"basicConstraints", "BasicConstraints"},
    {"nameConstraints", "NameConstraints"},
    {"subjectAltName", "GeneralName", sequence_of},
    {"issuerAltName", "GeneralName", sequence_of},
    {"certificateIssuer", "GeneralName", sequence_of},
    {"authorityInfoAccess", "AccessDescription", sequence_of},
    {"subjectInfoAccess", "AccessDescription", sequence_of},
    {"cRLDistributionPoints", "DistributionPoint", sequence_of},
    {"freshestCRL", "DistributionPoint", sequence_of},
    {.name = "authorityKeyIdentifier",
     .type = "AuthorityKeyIdentifier",
     .describe_public = as<AuthorityKeyIdentifier>},
    {.name = "certificatePolicies", .type = "Any", .list = true, .read = policies},
    {.name = "policyConstraints",
     .type = "PolicyConstraints",
     .describe_public = as<PolicyConstraints>},
    {"policyMappings", "PolicyMapping", sequence_of},
    {.name = "privateKeyUsagePeriod",
     .type = "PrivateKeyUsagePeriod",
     .describe_public = as<public_usage_period>},
    {"subjectDirectoryAttributes", "Attribute", sequence_of},
    {"logotype", "LogotypeExtn"},
    {"inhibitAnyPolicy", "Integer", !sequence_of, as<number>},
    {"cRLNumber", "Integer", !sequence_of, as<number>},
    {"deltaCRLIndicator", "Integer", !sequence_of, as<number>},
    {.name = "cRLReason", .type = "Enumerated", .read = reason},
    {"holdInstructionCode", "ObjId"},
    {"invalidityDate", "GeneralizedTime"},
    {.name = "ocsp-nonce", .type = "OctetString", .read = nonce},
    {.name = "ocsp-nocheck", .type = "Null", .read = presence},
    {"ocsp-archive-cutoff", "GeneralizedTime"},
    {.name = "precertificatePoison", .type = "Null", .read = presence},
    {"netscape-cert-type", "BitString", !sequence_of, as<netscape_cert_type>},
    string_row("netscape-base-url"),
    string_row("netscape-revocation-url"),
    string_row("netscape-ca-revocation-url"),
    string_row("netscape-cert-renewal-url"),
    string_row("netscape-ca-policy-url"),
    string_row("netscape-ssl-server-name"),
    string_row("netscape-comment"),
    string_row("ms-certificate-template-name"),
    {"ms-ca-key-cert-index-pair", "Integer", !sequence_of, as<number>},
};

}  // namespace

ExtensionValue read_extension(const Extension *extension, const View &view) {
  const Octets value = octets(extension->extnValue);
  const std::string name = display_name(extension->extnID);
  const auto *const row = std::ranges::find(rows, std::string_view(name), &ValueRow::name);
  auto lines = dump(value, view.full);
  if (row == std::end(rows)) return {text(std::move(lines), nullptr), false, ""};
  Inside inside = read_value(value, *row, view);
  if (!inside.node.empty()) return {std::move(inside.node)};
  lines.insert(lines.begin(), "not in a form that this library reads: " + inside.why);
  return {text(std::move(lines), nullptr), false, std::move(inside.why)};
}

void add_extensions(Page &page, const Extensions *extensions, const View &view) {
  if (List_len(extensions) == 0) return;
  page.section("Extensions");
  for (const auto *extension : elements<Extension>(extensions)) {
    const Node node = describe(extension, view);
    add_node(page, node.name, node, view);
  }
}

}  // namespace tool
