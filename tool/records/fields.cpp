#include "records/fields.h"

#include <algorithm>

#include "records/certificate_facts.h"
#include "records/general_names.h"
#include "text/characters.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

using Texts = std::vector<std::string>;

Value optional_text(std::optional<std::string> text) {
  return text ? Value(std::move(*text)) : Value();
}

/// A field of certificates.
template <auto answer>
Value of_certificate(const Object &object) {
  return object.certificate == nullptr ? Value() : answer(object.certificate);
}

const Certificate_TBS &tbs(const Certificate *certificate) { return *certificate->tbsCertificate; }

Value subject(const Certificate *certificate) {
  return optional_text(rfc4514_text(tbs(certificate).subjectSequence));
}
Value issuer(const Certificate *certificate) {
  return optional_text(rfc4514_text(tbs(certificate).issuerSequence));
}

/// Returns the values of the attributes of a name that have a type.
Value attributes(const RDNSequence *name, const ObjId *type) {
  Texts texts;
  for (const auto *set : elements<List>(name))
    for (const auto *attribute : elements<AttributeValueAssertion>(set))
      if (asn1_ObjId_cmp(attribute->type, type) == 0)
        if (const auto text =
                from_string(static_cast<uint32_t>(attribute->valueTag), octets(attribute->value)))
          texts.push_back(to_utf8(*text));
  return texts;
}
template <auto type>
Value of_subject(const Certificate *certificate) {
  return attributes(tbs(certificate).subjectSequence, type());
}
template <auto type>
Value of_issuer(const Certificate *certificate) {
  return attributes(tbs(certificate).issuerSequence, type());
}

Value serial(const Certificate *certificate) { return integer_text(tbs(certificate).serialNumber); }
Value version(const Certificate *certificate) {
  const auto number = version_for_people(tbs(certificate).version);
  return number ? Value(int64_t{*number}) : Value();
}

Value moment_of(const Time *time) {
  int64_t seconds = 0;
  return pki_Time_seconds(time, &seconds) == 1 ? Value(Moment{seconds}) : Value();
}
Value not_before(const Certificate *certificate) {
  return moment_of(tbs(certificate).validity->notBefore);
}
Value not_after(const Certificate *certificate) {
  return moment_of(tbs(certificate).validity->notAfter);
}

/// The calls of pki_certificate.h that list texts.
template <List *(*call)(const Certificate *, uint32_t *)>
Value listed(const Certificate *certificate) {
  const Owned<List> list(call(certificate, nullptr),
                         [](List *made) { List_free(made, asn1_IA5String_free); });
  Texts texts;
  for (const auto *text : elements<IA5String>(list.get()))
    texts.push_back(valid_utf8(text_of(octets(text))));
  return texts;
}
Value addresses(const Certificate *certificate) {
  const Owned<List> list(pki_ip_addresses(certificate, nullptr),
                         [](List *made) { List_free(made, asn1_OctetString_free); });
  Texts texts;
  for (const auto *address : elements<OctetString>(list.get()))
    texts.push_back(address_text(octets(address)));
  return texts;
}

Value signature_algorithm(const Certificate *certificate) {
  return label(tbs(certificate).signature->algorithm, View());
}

Key key_of(const Certificate *certificate) {
  return read_key(tbs(certificate).subjectPublicKeyInfo);
}
Value key_kind(const Certificate *certificate) { return key_of(certificate).kind; }
Value key_bits(const Certificate *certificate) {
  const auto bits = key_of(certificate).bits;
  return bits ? Value(static_cast<int64_t>(*bits)) : Value();
}
template <std::string Key::*member>
Value key_part(const Certificate *certificate) {
  const Key key = key_of(certificate);
  return (key.*member).empty() ? Value() : key.*member;
}
template <std::string KeyFacts::*member>
Value key_digest(const Certificate *certificate) {
  return key_facts(certificate).*member;
}

Value is_ca(const Certificate *certificate) {
  const auto answer = is_issuer(certificate);
  return answer ? Value(*answer) : Value();
}
Value path_length(const Certificate *certificate) {
  uint32_t length = 0;
  if (pki_may_issue(certificate, &length) != 1 || length == UINT32_MAX) return {};
  return int64_t{length};
}
Value self_issued(const Certificate *certificate) {
  return std::ranges::equal(octets(tbs(certificate).subjectEncoded),
                            octets(tbs(certificate).issuerEncoded));
}

Value optional_texts(std::optional<Texts> texts) {
  return texts ? Value(std::move(*texts)) : Value();
}
Value key_usage(const Certificate *certificate) {
  return optional_texts(key_usage_names(certificate));
}
Value purposes(const Certificate *certificate) {
  return optional_texts(purpose_names(certificate));
}

Value hex_or_none(pki_Octets octets) {
  return octets.data == nullptr ? Value() : hex({octets.data, octets.length});
}
Value ski(const Certificate *certificate) {
  return hex_or_none(pki_subject_key_identifier(certificate));
}
Value aki(const Certificate *certificate) {
  return hex_or_none(pki_authority_key_identifier(certificate));
}

Value extensions(const Certificate *certificate) {
  Texts texts;
  for (const auto *extension : elements<Extension>(tbs(certificate).extensions))
    texts.push_back(label(extension->extnID, View()));
  return texts;
}

template <std::string Fingerprints::*member>
Value print(const Object &object) {
  if (object.certificate != nullptr) return fingerprints_of(object.certificate).*member;
  return object.record == nullptr ? Value() : Value(fingerprints_of(object.octets).*member);
}

constexpr auto text_kind = ValueKind::text;
constexpr auto texts_kind = ValueKind::texts;
constexpr auto number_kind = ValueKind::number;
constexpr auto moment_kind = ValueKind::moment;
constexpr auto truth_kind = ValueKind::truth;

const Field all[] = {
    {"file", text_kind, "the name of the file",
     [](const Object &o) -> Value { return std::string(o.file); }},
    {"element", number_kind, "its number in the file, from 1",
     [](const Object &o) -> Value { return static_cast<int64_t>(o.number); }},
    {"id", text_kind, "what stands before a tab of the line",
     [](const Object &o) -> Value { return std::string(o.id); }},
    {"type", text_kind, "what it is: certificate, crl ...",
     [](const Object &o) { return o.type == nullptr ? Value() : Value(o.type->name); }},
    {"size", number_kind, "the octets of its encoding",
     [](const Object &o) -> Value { return static_cast<int64_t>(o.octets.size()); }},
    {"error", text_kind, "why it cannot be read",
     [](const Object &o) { return o.fault == nullptr ? Value() : Value(o.fault->text); }},
    {"sha256", text_kind, "the SHA-256 fingerprint", print<&Fingerprints::sha256>},
    {"sha1", text_kind, "the SHA-1 fingerprint", print<&Fingerprints::sha1>},
    {"version", number_kind, "as people count, from 1", of_certificate<version>},
    {"serial", text_kind, "the serial number, in hexadecimal digits", of_certificate<serial>},
    {"signature", text_kind, "the signature's algorithm", of_certificate<signature_algorithm>},
    {"issuer", text_kind, "as RFC 4514 has it", of_certificate<issuer>},
    {"issuer.cn", texts_kind, "its common names",
     of_certificate<of_issuer<asn1_Get_id_at_commonName>>},
    {"issuer.o", texts_kind, "its organizations",
     of_certificate<of_issuer<asn1_Get_id_at_organizationName>>},
    {"issuer.c", texts_kind, "its countries",
     of_certificate<of_issuer<asn1_Get_id_at_countryName>>},
    {"notBefore", moment_kind, "the start of its validity", of_certificate<not_before>},
    {"notAfter", moment_kind, "the end of its validity", of_certificate<not_after>},
    {"subject", text_kind, "as RFC 4514 has it", of_certificate<subject>},
    {"subject.cn", texts_kind, "its common names",
     of_certificate<of_subject<asn1_Get_id_at_commonName>>},
    {"subject.o", texts_kind, "its organizations",
     of_certificate<of_subject<asn1_Get_id_at_organizationName>>},
    {"subject.c", texts_kind, "its countries",
     of_certificate<of_subject<asn1_Get_id_at_countryName>>},
    {"selfIssued", truth_kind, "whether subject and issuer are the same",
     of_certificate<self_issued>},
    {"key.kind", text_kind, "RSA, EC, Ed25519 ...", of_certificate<key_kind>},
    {"key.bits", number_kind, "the size of the key", of_certificate<key_bits>},
    {"key.curve", text_kind, "the curve of the key", of_certificate<key_part<&Key::curve>>},
    {"key.exponent", text_kind, "the exponent of an RSA key",
     of_certificate<key_part<&Key::exponent>>},
    {"key.modulus", text_kind, "the modulus of an RSA key, in hexadecimal digits",
     of_certificate<key_part<&Key::modulus>>},
    {"key.point", text_kind, "the octets of any other key, in hexadecimal digits",
     of_certificate<key_part<&Key::point>>},
    {"key.sha256", text_kind, "SHA-256 of the SubjectPublicKeyInfo",
     of_certificate<key_digest<&KeyFacts::sha256>>},
    {"key.pin", text_kind, "the same, as curl takes it",
     of_certificate<key_digest<&KeyFacts::pin>>},
    {"key.identifier", text_kind, "SHA-1 of the key's bits",
     of_certificate<key_digest<&KeyFacts::identifier>>},
    {"san.dns", texts_kind, "its DNS names", of_certificate<listed<pki_dns_names>>},
    {"san.ip", texts_kind, "its IP addresses", of_certificate<addresses>},
    {"san.mail", texts_kind, "its mail addresses", of_certificate<listed<pki_mail_addresses>>},
    {"san.uri", texts_kind, "its URIs", of_certificate<listed<pki_uris>>},
    {"isCA", truth_kind, "whether it may issue certificates", of_certificate<is_ca>},
    {"pathLength", number_kind, "how many issuers may follow", of_certificate<path_length>},
    {"keyUsage", texts_kind, "what its key is for", of_certificate<key_usage>},
    {"extKeyUsage", texts_kind, "the same, by purpose", of_certificate<purposes>},
    {"ski", text_kind, "the subject key identifier", of_certificate<ski>},
    {"aki", text_kind, "the authority key identifier", of_certificate<aki>},
    {"crl", texts_kind, "where its revocation lists are", of_certificate<listed<pki_crl_places>>},
    {"ocsp", texts_kind, "where its OCSP responders are", of_certificate<listed<pki_ocsp_places>>},
    {"caIssuers", texts_kind, "where its issuer's certificates are",
     of_certificate<listed<pki_issuer_places>>},
    {"extensions", texts_kind, "the names of its extensions", of_certificate<extensions>},
};

void append_escaped(std::string &out, std::string_view text) {
  for (const char c : text) {
    if (c == ',' || c == '\\') out += '\\';
    out += c;
  }
}

}  // namespace

std::span<const Field> fields() { return all; }

const Field *field_named(std::string_view name) {
  const auto *const found = std::ranges::find(all, name, &Field::name);
  return found == std::end(all) ? nullptr : found;
}

std::string_view name_of(ValueKind kind) {
  static constexpr std::string_view names[] = {"", "text", "number", "date", "truth", "texts"};
  return names[static_cast<size_t>(kind)];
}

Json json_of(const Value &value) {
  return std::visit(
      [](const auto &one) {
        using One = std::decay_t<decltype(one)>;
        if constexpr (std::is_same_v<One, std::monostate>)
          return Json(nullptr);
        else if constexpr (std::is_same_v<One, Moment>)
          return Json(iso(static_cast<Seconds>(one)));
        else
          return Json(one);
      },
      value);
}

std::string_view text_of(const Value &value, std::string &room) {
  if (const auto *const text = std::get_if<std::string>(&value)) return *text;
  room.clear();
  if (const auto *const number = std::get_if<int64_t>(&value))
    append_number(room, *number);
  else if (const auto *const moment = std::get_if<Moment>(&value))
    append_iso(room, static_cast<Seconds>(*moment));
  else if (const auto *const truth = std::get_if<bool>(&value))
    room += *truth ? "true" : "false";
  else if (const auto *const texts = std::get_if<Texts>(&value))
    for (const std::string &text : *texts) {
      if (&text != &texts->front()) room += ',';
      append_escaped(room, text);
    }
  return room;
}

}  // namespace tool
