#include "text/object_identifiers.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tool {

namespace {

/// Made from the headers of the library.
constexpr RegistryEntry registry_table[] = {
#include "registry.inc"
};

/// A name that the registry lacks.
struct ExtraName {
  std::string_view dotted;
  std::string_view name;
  uint32_t curve_bits = 0;
};

constexpr ExtraName extra_names[] = {
    // keys and curves
    {"1.3.101.110", "X25519"},
    {"1.3.101.111", "X448"},
    {"1.3.101.112", "Ed25519"},
    {"1.3.101.113", "Ed448"},
    {"1.2.840.10045.3.1.1", "secp192r1", 192},
    {"1.2.840.10045.3.1.7", "secp256r1", 256},
    {"1.3.132.0.10", "secp256k1", 256},
    {"1.3.132.0.33", "secp224r1", 224},
    {"1.3.132.0.34", "secp384r1", 384},
    {"1.3.132.0.35", "secp521r1", 521},
    {"1.3.36.3.3.2.8.1.1.7", "brainpoolP256r1", 256},
    {"1.3.36.3.3.2.8.1.1.11", "brainpoolP384r1", 384},
    {"1.3.36.3.3.2.8.1.1.13", "brainpoolP512r1", 512},
    {"1.2.156.10197.1.301", "sm2", 256},
    // signatures and digests
    {"1.2.840.113549.1.1.3", "md4WithRSAEncryption"},
    {"1.2.840.113549.1.1.7", "rsaes-oaep"},
    {"1.2.840.113549.1.1.8", "mgf1"},
    {"1.2.840.113549.1.1.10", "rsassa-pss"},
    {"1.2.840.113549.1.1.14", "sha224WithRSAEncryption"},
    {"1.2.840.10045.4.1", "ecdsa-with-SHA1"},
    {"1.2.840.10045.4.3.1", "ecdsa-with-SHA224"},
    {"1.2.840.10045.4.3.2", "ecdsa-with-SHA256"},
    {"1.2.840.10045.4.3.3", "ecdsa-with-SHA384"},
    {"1.2.840.10045.4.3.4", "ecdsa-with-SHA512"},
    {"2.16.840.1.101.3.4.3.1", "dsa-with-sha224"},
    {"2.16.840.1.101.3.4.3.2", "dsa-with-sha256"},
    {"1.2.156.10197.1.501", "sm2-with-sm3"},
    {"1.3.14.3.2.29", "sha1WithRSASignature"},
    {"2.16.840.1.101.3.4.2.1", "sha256"},
    {"2.16.840.1.101.3.4.2.2", "sha384"},
    {"2.16.840.1.101.3.4.2.3", "sha512"},
    {"2.16.840.1.101.3.4.2.4", "sha224"},
    {"1.2.840.113549.1.3.1", "dhKeyAgreement"},
    // encryption
    {"1.2.840.113549.1.5.1", "pbeWithMD2AndDES-CBC"},
    {"1.2.840.113549.1.5.3", "pbeWithMD5AndDES-CBC"},
    {"1.2.840.113549.1.5.10", "pbeWithSHA1AndDES-CBC"},
    {"1.2.840.113549.1.5.11", "pbeWithSHA1AndRC2-CBC"},
    {"1.2.840.113549.1.5.12", "PBKDF2"},
    {"1.2.840.113549.1.5.13", "PBES2"},
    {"1.2.840.113549.1.5.14", "PBMAC1"},
    {"1.2.840.113549.2.7", "hmacWithSHA1"},
    {"1.2.840.113549.2.9", "hmacWithSHA256"},
    {"1.2.840.113549.2.10", "hmacWithSHA384"},
    {"1.2.840.113549.2.11", "hmacWithSHA512"},
    {"1.2.840.113549.3.2", "rc2-CBC"},
    {"1.2.840.113549.3.7", "des-EDE3-CBC"},
    {"1.3.14.3.2.7", "des-CBC"},
    {"2.16.840.1.101.3.4.1.2", "aes128-CBC"},
    {"2.16.840.1.101.3.4.1.22", "aes192-CBC"},
    {"2.16.840.1.101.3.4.1.42", "aes256-CBC"},
    // attributes of names
    {"0.9.2342.19200300.100.1.1", "userId"},
    {"0.9.2342.19200300.100.1.25", "domainComponent"},
    {"2.5.4.15", "businessCategory"},
    {"2.5.4.16", "postalAddress"},
    {"2.5.4.17", "postalCode"},
    {"2.5.4.18", "postOfficeBox"},
    {"2.5.4.20", "telephoneNumber"},
    {"2.5.4.65", "pseudonym"},
    {"2.5.4.72", "role"},
    {"2.5.4.97", "organizationIdentifier"},
    {"1.3.6.1.4.1.311.60.2.1.1", "jurisdictionLocalityName"},
    {"1.3.6.1.4.1.311.60.2.1.2", "jurisdictionStateOrProvinceName"},
    {"1.3.6.1.4.1.311.60.2.1.3", "jurisdictionCountryName"},
    // extensions
    {"2.5.29.1", "authorityKeyIdentifier (old)"},
    {"2.5.29.54", "inhibitAnyPolicy"},
    {"1.3.6.1.5.5.7.1.2", "biometricInfo"},
    {"1.3.6.1.5.5.7.1.3", "qcStatements"},
    {"1.3.6.1.5.5.7.1.11", "subjectInfoAccess"},
    {"1.3.6.1.5.5.7.1.12", "logotype"},
    {"1.3.6.1.5.5.7.1.24", "tlsFeature"},
    {"1.3.6.1.4.1.11129.2.4.2", "signedCertificateTimestamps"},
    {"1.3.6.1.4.1.11129.2.4.3", "precertificatePoison"},
    {"1.3.6.1.4.1.311.21.7", "ms-certificate-template"},
    {"1.3.6.1.4.1.311.21.10", "ms-application-policies"},
    {"1.2.840.113533.7.65.0", "entrustVersionInfo"},
    // purposes of keys
    {"1.3.6.1.5.5.7.3.5", "ipsecEndSystem"},
    {"1.3.6.1.5.5.7.3.6", "ipsecTunnel"},
    {"1.3.6.1.5.5.7.3.7", "ipsecUser"},
    {"1.3.6.1.5.5.7.3.17", "ipsecIKE"},
    {"1.3.6.1.5.5.7.3.36", "documentSigning"},
    {"1.3.6.1.5.2.3.5", "pkinitKDC"},
    {"1.3.6.1.4.1.311.10.3.3", "ms-server-gated-crypto"},
    {"1.3.6.1.4.1.311.10.3.4", "ms-encrypted-file-system"},
    {"1.3.6.1.4.1.311.20.2.2", "ms-smartcard-logon"},
    {"2.16.840.1.113730.4.1", "netscape-server-gated-crypto"},
    {"1.3.6.1.5.5.7.2.2", "unotice"},
};

const ExtraName *extra_name(const ObjId *oid) {
  const std::string text = dotted(oid);
  const auto *const found =
      std::ranges::find_if(extra_names, [&](const ExtraName &e) { return e.dotted == text; });
  return found == std::end(extra_names) ? nullptr : found;
}

/// Returns the name of a getter without the arc of its family, and with the hyphens of the ASN.1
/// module in place of the underscores of C.
std::string readable(std::string_view name) {
  for (const std::string_view arc :
       {"id_at_", "id_ce_", "id_kp_", "id_pe_", "id_ad_", "id_qt_", "id_pkix_"})
    if (name.starts_with(arc)) {
      name.remove_prefix(arc.size());
      break;
    }
  std::string out(name);
  std::ranges::replace(out, '_', '-');
  return out;
}

bool same_word(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

}  // namespace

std::string dotted(const ObjId *oid) {
  if (oid == nullptr || oid->count == 0 || oid->arcs == nullptr) return "";
  const std::span<const uint32_t> arcs(oid->arcs, oid->count);
  std::string out;
  size_t next = 0;
  if (arcs.size() > 1 && arcs[0] > 2) {
    out = "2." + std::to_string(uint64_t{arcs[0]} * 40 + arcs[1] - 80);
    next = 2;
  }
  for (; next < arcs.size(); ++next) {
    if (next != 0) out += '.';
    out += std::to_string(arcs[next]);
  }
  return out;
}

Owned<ObjId> from_dotted(std::string_view text) {
  Owned<ObjId> none(nullptr, asn1_ObjId_free);
  std::vector<uint32_t> arcs;
  const char *at = text.data();
  const char *const end = at + text.size();
  for (;;) {
    uint32_t arc = 0;
    const auto [stop, error] = std::from_chars(at, end, arc);
    if (error != std::errc() || (*at == '0' && stop != at + 1)) return none;
    arcs.push_back(arc);
    if (stop == end) break;
    if (*stop != '.') return none;
    at = stop + 1;
  }
  if (arcs.size() < 2 || arcs[0] > 2 || (arcs[0] < 2 && arcs[1] > 39)) return none;
  if (arcs[1] > 0xFFFFFFFF - 80) return none;
  Owned<ObjId> oid(asn1_ObjId_new(static_cast<uint32_t>(arcs.size())), asn1_ObjId_free);
  if (oid) std::ranges::copy(arcs, oid->arcs);
  return oid;
}

std::vector<std::string_view> registry_names(const ObjId *oid) {
  std::vector<std::string_view> names;
  for (const RegistryEntry &entry : registry_table)
    if (oid != nullptr && asn1_ObjId_cmp(entry.get(), oid) == 0) names.push_back(entry.name);
  return names;
}

std::string display_name(const ObjId *oid) {
  if (oid == nullptr) return "";
  for (const RegistryEntry &entry : registry_table)
    if (asn1_ObjId_cmp(entry.get(), oid) == 0) return readable(entry.name);
  const ExtraName *const extra = extra_name(oid);
  return extra == nullptr ? "" : std::string(extra->name);
}

std::vector<Owned<ObjId>> named(std::string_view name) {
  std::vector<Owned<ObjId>> found;
  const auto add = [&found](ObjId *oid) {
    Owned<ObjId> owned(oid, asn1_ObjId_free);
    for (const auto &other : found)
      if (!owned || asn1_ObjId_cmp(other.get(), oid) == 0) return;
    found.push_back(std::move(owned));
  };
  for (const RegistryEntry &entry : registry_table)
    if (same_word(entry.name, name) || same_word(readable(entry.name), name))
      add(asn1_ObjId_clone(entry.get()));
  for (const ExtraName &extra : extra_names)
    if (same_word(extra.name, name)) add(from_dotted(extra.dotted).release());
  return found;
}

void put_oid(Json &object, const std::string &key, const ObjId *oid) {
  object.put(key, dotted(oid));
  const std::string name = display_name(oid);
  if (!name.empty()) object.put(key + "Name", name);
}

std::span<const RegistryEntry> registry() { return registry_table; }

std::optional<uint32_t> curve_bits(const ObjId *oid) {
  const ExtraName *const extra = extra_name(oid);
  if (extra == nullptr || extra->curve_bits == 0) return std::nullopt;
  return extra->curve_bits;
}

}  // namespace tool
