#include "records/extension_values.h"

#include <algorithm>

#include "records/components.h"
#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

Node presence(Octets value, const View &) {
  return std::ranges::equal(value, octets(asn1_Any_NULL())) ? text("present", true) : Node();
}

Node netscape_cert_type(const BitString *bits) {
  static constexpr const char *names[] = {"sslClient", "sslServer", "smime",   "objectSigning",
                                          "reserved",  "sslCA",     "smimeCA", "objectSigningCA"};
  return named_bits(bits, names);
}

/// Reads a nonce without its OCTET STRING, as older programs send it.
Node bare_nonce(Octets value, const View &) {
  if (!Syntax("pki_Nonce").refusal(value)) return {};
  return text(hex(value) + " (bare octets)", hex(value));
}

// CertificateTemplate ::= SEQUENCE { templateID, templateMajorVersion OPTIONAL, templateMinorVersion
//   OPTIONAL }
Node template_of_microsoft(Octets value, const View &view) {
  return Components(value, view)
      .take("templateID", "ObjId")
      .take("templateMajorVersion", "Integer", as<number>)
      .take("templateMinorVersion", "Integer", as<number>)
      .node();
}

// EntrustVersInfo ::= SEQUENCE { entrustVers, entrustInfoFlags }
Node entrust_version(Octets value, const View &view) {
  return Components(value, view)
      .take("entrustVers", "GeneralString")
      .take("entrustInfoFlags", "BitString")
      .node();
}

constexpr bool sequence_of = true;

/// The types that pki_Type_defined_by() does not know, and one that older programs write otherwise,
/// each under the display name of its extension.
constexpr ValueRow rows[] = {
    {"holdInstructionCode", "ObjId"},
    {.name = "ocsp-nonce", .type = "pki_Nonce", .read = bare_nonce},
    {.name = "ocsp-nocheck", .type = "Null", .read = presence},
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
    {"ms-previous-ca-certificate-hash", "pki_SubjectKeyIdentifier"},
    {"ms-crl-virtual-base", "Integer", !sequence_of, as<number>},
    {"ms-crl-next-publish", "Time"},
    {.name = "ms-certificate-template", .type = "Any", .read = template_of_microsoft},
    {"ms-application-policies", "pki_CertificatePolicies"},
    {"ms-application-policy-mappings", "pki_PolicyMappings"},
    {"ms-application-policy-constraints", "pki_PolicyConstraints"},
    {"ms-ntds-ca-security", "pki_GeneralNames"},
    {"smimeCapabilities", "pki_AlgId", sequence_of},
    {"acmeIdentifier", "pki_SubjectKeyIdentifier"},
    {.name = "entrustVersionInfo", .type = "Any", .read = entrust_version},
};

}  // namespace

Inside read_extension(const Extension *extension, const View &view) {
  const Octets value = octets(extension->extnValue);
  const std::string name = display_name(extension->extnID);
  const auto *const row = std::ranges::find(rows, std::string_view(name), &ValueRow::name);
  if (row != std::end(rows)) return read_value(value, *row, view);
  if (const pki_Type *const type = pki_Type_defined_by(extension->extnID))
    return read_value(value, type, view);
  return {unknown_octets(value, view), "", false};
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
