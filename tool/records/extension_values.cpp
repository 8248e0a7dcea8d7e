#include "records/extension_values.h"

#include <algorithm>

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

constexpr bool sequence_of = true;

/// The types that pki_Type_defined_by() does not know, each under the display name of its
/// extension.
constexpr ValueRow rows[] = {
    {"holdInstructionCode", "ObjId"},
    {.name = "ocsp-nonce", .type = "pki_Nonce", .read = bare_nonce},
    {"ocsp-crl", "pki_CrlID"},
    {"ocsp-response", "pki_AcceptableResponses"},
    {.name = "ocsp-nocheck", .type = "Null", .read = presence},
    {"ocsp-archive-cutoff", "pki_ArchiveCutoff"},
    {"ocsp-service-locator", "pki_ServiceLocator"},
    {"ocsp-pref-sig-algs", "pki_PreferredSignatureAlgorithms"},
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

Inside read_extension(const Extension *extension, const View &view) {
  const Octets value = octets(extension->extnValue);
  if (const pki_Type *const type = pki_Type_defined_by(extension->extnID))
    return read_value(value, type, view);
  const std::string name = display_name(extension->extnID);
  const auto *const row = std::ranges::find(rows, std::string_view(name), &ValueRow::name);
  if (row != std::end(rows)) return read_value(value, *row, view);
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
