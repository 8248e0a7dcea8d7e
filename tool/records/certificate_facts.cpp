#include "records/certificate_facts.h"

#include <cstdlib>

#include "input/der.h"
#include "records/general_names.h"
#include "text/characters.h"
#include "text/digest.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

using Names = std::vector<std::string>;

/// Returns the SubjectPublicKeyInfo that stands in the signed part of a certificate or a request,
/// or else the one that its record is encoded to.
Bytes spki_of(Octets signed_part, const SubjectPKI *info) {
  for (const Octets field : components(signed_part)) {
    const auto inside = components(field, 2);
    if (field[0] == tag::sequence && inside.size() == 2 && inside[0][0] == tag::sequence &&
        inside[1][0] == tag::bit_string)
      return {field.begin(), field.end()};
  }
  return encoded([info](uint8_t **pp) { return pki_SubjectPKI_e(pp, info); });
}

/// Returns a value of the first extension with an identifier. Returns null where the extension is
/// not there or no such value.
Owned<List> list_in(const Certificate *certificate, const ObjId *identifier, Decoder<List> decode,
                    void (*release)(List *)) {
  const Extension *const extension =
      pki_find_extension(certificate->tbsCertificate->extensions, identifier);
  return extension == nullptr ? Owned<List>(nullptr, release)
                              : decoded(decode, release, octets(extension->extnValue));
}

/// One of the calls of pki_certificate.h that list names.
using Call = List *(*)(const Certificate *, uint32_t *);

template <class Text>
Names listed(Call call, const Certificate *certificate, uint32_t &unreadable, Text text) {
  Names names;
  const Owned<List> list(call(certificate, &unreadable),
                         [](List *made) { List_free(made, asn1_IA5String_free); });
  for (const auto *name : elements<IA5String>(list.get())) names.push_back(text(octets(name)));
  return names;
}

std::string utf8(Octets octets) { return valid_utf8(text_of(octets)); }

// ---- As JSON ------------------------------------------------------------------------------------

void append(std::string &out, const Fingerprints &prints) {
  JsonObject(out).put("sha256", prints.sha256).put("sha1", prints.sha1);
}

void append(std::string &out, const AlternativeNames &names) {
  JsonObject(out)
      .put("dns", names.dns)
      .put("ip", names.ip)
      .put("mail", names.mail)
      .put("uri", names.uri)
      .put("directory", names.directory)
      .put("other", names.other)
      .put("unreadable", names.unreadable);
}

void append(std::string &out, const KeyFacts &facts) {
  JsonObject object(out);
  object.put("kind", facts.key.kind);
  if (facts.key.bits) object.put("bits", *facts.key.bits);
  if (!facts.key.curve.empty()) object.put("curve", facts.key.curve);
  if (!facts.key.exponent.empty()) object.put("exponent", facts.key.exponent);
  if (!facts.key.modulus.empty()) object.put("modulus", facts.key.modulus);
  if (!facts.key.point.empty()) object.put("point", facts.key.point);
  object.put("sha256", facts.sha256).put("pin", facts.pin).put("identifier", facts.identifier);
}

void append(std::string &out, pki_Octets octets) {
  append_value(out, octets.data == nullptr ? std::nullopt
                                           : std::optional(Octets(octets.data, octets.length)));
}

template <class T>
void append(std::string &out, const std::optional<T> &value) {
  append_value(out, value);
}

/// Appends what `fact` returns for a part of a record.
template <auto fact, class Part>
void append_fact(std::string &out, const Part *part) {
  append(out, fact(part));
}

/// Adds what `fact` returns for a part of a record, which is asked when it is written.
template <auto fact, class Part>
void put(Description &fields, const char *name, const Part *part) {
  fields.hidden(name, Json::of_part<append_fact<fact, Part>>(part));
}

std::optional<std::string> moment(const Time *time) {
  const auto seconds = seconds_of(time);
  return seconds ? std::optional(iso(*seconds)) : std::nullopt;
}

/// Adds what a certificate and a request have.
void add_shared(Description &fields, const Certificate *certificate) {
  put<alternative_names>(fields, "sans", certificate);
  put<is_issuer>(fields, "isCA", certificate);
  put<key_usage_names>(fields, "keyUsage", certificate);
  put<purpose_names>(fields, "extKeyUsage", certificate);
  put<key_facts>(fields, "key", certificate);
  put<pki_subject_key_identifier>(fields, "subjectKeyIdentifier", certificate);
}

/// Returns the extensions that a request asks for; null where it asks for none.
Owned<Extensions> requested_extensions(const CertRequestInfo *info) {
  for (const auto *attribute : elements<Attribute>(info->attributes)) {
    if (!is(attribute->type, asn1_Get_extensionRequest)) continue;
    const auto values = elements<Any>(attribute->values);
    if (!values.empty())
      return decoded(pki_Extensions_d, pki_Extensions_free, octets(values.front()));
  }
  return {nullptr, pki_Extensions_free};
}

/// The certificate that a request asks for. It owns nothing but its extensions.
struct Wanted {
  explicit Wanted(const CertificationRequest &request)
      : extensions(requested_extensions(request.certificationRequestInfo)) {
    tbs.subjectSequence = request.certificationRequestInfo->subjectSequence;
    tbs.subjectPublicKeyInfo = request.certificationRequestInfo->subjectPKInfo;
    tbs.extensions = extensions.get();
    certificate.tbsEncoded = request.tbsEncoded;
    certificate.tbsCertificate = &tbs;
  }
  Wanted(const Wanted &) = delete;
  Wanted &operator=(const Wanted &) = delete;

  Owned<Extensions> extensions;
  Certificate_TBS tbs{};
  Certificate certificate{};
};

Fingerprints fingerprints_of_crl(const CertificateRevocationList *crl) {
  return fingerprints_of(
      encoded([=](uint8_t **pp) { return pki_CertificateRevocationList_e(pp, crl); }));
}

}  // namespace

Fingerprints fingerprints_of(Octets octets) { return {hex(sha256(octets)), hex(sha1(octets))}; }

Fingerprints fingerprints_of(const Certificate *certificate) {
  return fingerprints_of(encoded([=](uint8_t **pp) { return pki_Certificate_e(pp, certificate); }));
}

KeyFacts key_facts(const Certificate *certificate) {
  const SubjectPKI *const info = certificate->tbsCertificate->subjectPublicKeyInfo;
  const auto digest = sha256(spki_of(octets(certificate->tbsEncoded), info));
  return {read_key(info), hex(digest), "sha256//" + base64_line(digest),
          hex(sha1(octets(info->subjectPublicKey)))};
}

AlternativeNames alternative_names(const Certificate *certificate) {
  AlternativeNames names;
  uint32_t &bad = names.unreadable;
  names.dns = listed(pki_dns_names, certificate, bad, utf8);
  names.ip = listed(pki_ip_addresses, certificate, bad, address_text);
  names.mail = listed(pki_mail_addresses, certificate, bad, utf8);
  names.uri = listed(pki_uris, certificate, bad, utf8);
  const Extension *const extension =
      pki_find_extension(certificate->tbsCertificate->extensions, asn1_Get_id_ce_subjectAltName());
  if (extension == nullptr) return names;
  const Octets value = octets(extension->extnValue);
  for (const Octets element : components(value)) {
    enum : uint8_t { mail = 1, dns = 2, directory = 4, uri = 6, ip = 7 };
    const auto name = decoded(pki_GeneralName_d, pki_GeneralName_free, element);
    if (!name) continue;
    switch (name->kind) {
      case mail:
      case dns:
      case uri:
      case ip:
        break;
      case directory:
        if (auto text = rfc4514_text(static_cast<const RDNSequence *>(name->value)))
          names.directory.push_back(std::move(*text));
        break;
      default:
        names.other.push_back(json_of(describe(name.get(), View())));
    }
  }
  return names;
}

std::optional<Names> key_usage_names(const Certificate *certificate) {
  static constexpr const char *words[] = {"digitalSignature", "nonRepudiation", "keyEncipherment",
                                          "dataEncipherment", "keyAgreement",   "keyCertSign",
                                          "cRLSign",          "encipherOnly",   "decipherOnly"};
  uint32_t usage = 0;
  if (pki_key_usage(certificate, &usage) != 1) return std::nullopt;
  Names names;
  for (uint32_t bit = 0; bit < std::size(words); ++bit)
    if ((usage >> bit & 1) != 0) names.emplace_back(words[bit]);
  return names;
}

std::optional<Names> purpose_names(const Certificate *certificate) {
  const auto purposes = list_in(certificate, asn1_Get_id_ce_extKeyUsage(), pki_ExtKeyUsageSyntax_d,
                                pki_ExtKeyUsageSyntax_free);
  if (!purposes) return std::nullopt;
  Names names;
  for (const auto *purpose : elements<ObjId>(purposes.get()))
    names.push_back(label(purpose, View()));
  return names;
}

std::optional<bool> is_issuer(const Certificate *certificate) {
  const int32_t answer = pki_may_issue(certificate, nullptr);
  return answer < 0 ? std::nullopt : std::optional(answer == 1);
}

std::optional<std::string> rfc4514_text(const RDNSequence *name) {
  const Owned<Name> text(pki_name_rfc4514(name), asn1_Name_free);
  return text ? std::optional(valid_utf8(text.get())) : std::nullopt;
}

std::optional<uint32_t> version_for_people(const Integer *version) {
  if (version == nullptr) return 1;
  const uint32_t number = asn1_Integer_get(version);
  return version->negative == 0 && number < 3 ? std::optional(number + 1) : std::nullopt;
}

Description &add_facts(Description &fields, const Certificate *certificate) {
  constexpr Fingerprints (*prints)(const Certificate *) = fingerprints_of;
  const Certificate_TBS &tbs = *certificate->tbsCertificate;
  put<version_for_people>(fields, "version", tbs.version);
  put<rfc4514_text>(fields, "subjectRfc4514", tbs.subjectSequence);
  put<rfc4514_text>(fields, "issuerRfc4514", tbs.issuerSequence);
  put<moment>(fields, "notBefore", tbs.validity->notBefore);
  put<moment>(fields, "notAfter", tbs.validity->notAfter);
  add_shared(fields, certificate);
  put<pki_authority_key_identifier>(fields, "authorityKeyIdentifier", certificate);
  put<prints>(fields, "fingerprints", certificate);
  return fields;
}

Description &add_facts(Description &fields, const CertificationRequest *request) {
  const CertRequestInfo &info = *request->certificationRequestInfo;
  const auto wanted = std::make_shared<const Wanted>(*request);
  put<version_for_people>(fields, "version", info.version);
  put<rfc4514_text>(fields, "subjectRfc4514", info.subjectSequence);
  add_shared(fields, &wanted->certificate);
  return fields.keep(wanted);
}

Description &add_facts(Description &fields, const CertificateRevocationList *crl) {
  put<rfc4514_text>(fields, "issuerRfc4514", crl->tbsCertList->issuerSequence);
  put<fingerprints_of_crl>(fields, "fingerprints", crl);
  return fields;
}

}  // namespace tool
