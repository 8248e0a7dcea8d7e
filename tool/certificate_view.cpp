#include "certificate_view.h"

#include <algorithm>

#include "extensions.h"
#include "keys.h"
#include "names.h"
#include "page.h"
#include "syntax.h"
#include "text.h"

namespace tool {

namespace {

Tone tone_of(const Standing &standing) {
  constexpr int64_t soon = 30;
  if (standing.state != Standing::State::valid) return Tone::alarm;
  return standing.days_left < soon ? Tone::warning : Tone::plain;
}

std::string time_text(const Time *time) {
  if (time == nullptr || time->value == nullptr) return "none";
  const auto seconds = seconds_of(time);
  return seconds ? calendar(*seconds) : in_quotes(time->value);
}

std::string version_text(const Integer *version) {
  const uint32_t number = version == nullptr ? 0 : asn1_Integer_get(version);
  const bool usual = number < 3 && (version == nullptr || version->negative == 0);
  return usual ? std::to_string(number + 1) : "unknown, encoded as " + integer_text(version);
}

/// The signature's algorithm; both, where the signed part names another one.
std::vector<std::string> signature_text(const Certificate *certificate, const View &view) {
  const AlgId *const outer = certificate->signatureAlgorithm;
  const AlgId *const inner = certificate->tbsCertificate->signature;
  std::vector<std::string> lines{label(outer->algorithm, view)};
  if (asn1_ObjId_cmp(outer->algorithm, inner->algorithm) != 0)
    lines.push_back("but " + label(inner->algorithm, view) + " in the signed part");
  return lines;
}

/// The first and the last octets of a long serial number.
std::string short_serial(const Integer *serial) {
  constexpr size_t most = 16;
  std::string digits = integer_text(serial);
  if (digits.size() <= most) return digits;
  return digits.substr(0, most / 2) + "..." + digits.substr(digits.size() - most / 4);
}

}  // namespace

std::string CertificateView::show(const Certificate *certificate, const std::string &where,
                                  const View &view) {
  const Certificate_TBS &tbs = *certificate->tbsCertificate;
  Page page(view.colour);
  page.section("Certificate", where);
  page.row("version", version_text(tbs.version));
  page.row("serialNumber", integer_text(tbs.serialNumber));
  page.row("key", key_text(tbs.subjectPublicKeyInfo, view));
  page.row("signature", signature_text(certificate, view));

  page.section("Subject");
  add_name(page, tbs.subjectSequence, view);
  page.section("Issuer");
  add_name(page, tbs.issuerSequence, view);

  const Standing state = standing(tbs.validity, view.moment);
  page.section("Validity (UTC)");
  page.row("notBefore", time_text(tbs.validity->notBefore));
  page.row("notAfter", time_text(tbs.validity->notAfter) + ", " + state.text, tone_of(state));

  add_extensions(page, tbs.extensions, view);

  if (tbs.issuerUniqueID != nullptr || tbs.subjectUniqueID != nullptr || view.full) {
    page.section("Octets");
    if (tbs.issuerUniqueID != nullptr)
      page.row("issuerUniqueID", dump(octets(tbs.issuerUniqueID), view.full));
    if (tbs.subjectUniqueID != nullptr)
      page.row("subjectUniqueID", dump(octets(tbs.subjectUniqueID), view.full));
    if (view.full) {
      page.row("subjectPublicKey", dump(octets(tbs.subjectPublicKeyInfo->subjectPublicKey), true));
      page.row("signatureValue", dump(octets(certificate->signatureValue), true));
    }
  }
  return page.text();
}

std::string CertificateView::show_short(const Certificate *certificate, const View &view) {
  const Certificate_TBS &tbs = *certificate->tbsCertificate;
  const Standing state = standing(tbs.validity, view.moment);
  const auto quiet = [&view](const char *word) { return toned(word, Tone::quiet, view.colour); };
  return toned("Certificate", Tone::heading, view.colour) + "  " +
         short_key_text(tbs.subjectPublicKeyInfo, view) + ", serial " +
         short_serial(tbs.serialNumber) + "\n" + quiet("  subject  ") +
         one_line(tbs.subjectSequence, view) + "\n" + quiet("  issuer   ") +
         one_line(tbs.issuerSequence, view) + "\n" + quiet("  valid    ") +
         time_text(tbs.validity->notBefore) + " to " + time_text(tbs.validity->notAfter) +
         " UTC, " + toned(state.text, tone_of(state), view.colour) + "\n";
}

void CertificateView::put_json(Json &object, const Certificate *certificate, const View &view) {
  const Certificate_TBS &tbs = *certificate->tbsCertificate;
  object["tbsEncoded"] = hex(octets(certificate->tbsEncoded));
  Json &out = object["tbsCertificate"];
  if (tbs.version != nullptr) out["version"] = json_of_number(tbs.version);
  out["serialNumber"] = integer_text(tbs.serialNumber);
  out["signature"] = json_of(tbs.signature);
  const auto put_name = [&out](const std::string &key, const Name *text, const RDNSequence *name,
                               const OctetString *encoded) {
    out[key + "Sequence"] = json_of_name(name);
    out[key] = to_utf8(from_utf8(octets_of(text == nullptr ? "" : text)));
    out[key + "Encoded"] = hex(octets(encoded));
  };
  put_name("issuer", tbs.issuer, tbs.issuerSequence, tbs.issuerEncoded);
  out["validity"] = json_of(tbs.validity);
  const Standing state = standing(tbs.validity, view.moment);
  out["validity"]["state"] = name_of(state.state);
  if (state.state != Standing::State::unknown) out["validity"]["daysLeft"] = state.days_left;
  put_name("subject", tbs.subject, tbs.subjectSequence, tbs.subjectEncoded);
  out["subjectPublicKeyInfo"] = json_of(tbs.subjectPublicKeyInfo);
  if (tbs.issuerUniqueID != nullptr) out["issuerUniqueID"] = json_of(tbs.issuerUniqueID);
  if (tbs.subjectUniqueID != nullptr) out["subjectUniqueID"] = json_of(tbs.subjectUniqueID);
  if (tbs.extensions != nullptr) out["extensions"] = json_of_extensions(tbs.extensions);
  object["signatureAlgorithm"] = json_of(certificate->signatureAlgorithm);
  object["signatureValue"] = json_of(certificate->signatureValue);
}

void CertificateView::forget_encodings(Certificate *certificate) {
  const auto forget = [](OctetString *&encoding) {
    asn1_OctetString_free(encoding);
    encoding = nullptr;
  };
  forget(certificate->tbsEncoded);
  forget(certificate->tbsCertificate->issuerEncoded);
  forget(certificate->tbsCertificate->subjectEncoded);
}

namespace {

constexpr Field version_fields[] = {{"", &integer_syntax}};
constexpr Syntax version_syntax{.tag = 0xA0, .fields = version_fields};

constexpr Field extensions_fields[] = {{"", &extensions_syntax}};
constexpr Syntax tagged_extensions_syntax{.tag = 0xA3, .fields = extensions_fields};

constexpr Field validity_fields[] = {{"notBefore", &time_syntax}, {"notAfter", &time_syntax}};
constexpr Syntax validity_syntax{.tag = 0x30, .fields = validity_fields};

constexpr Field key_fields[] = {{"algorithm", &algorithm_syntax},
                                {"subjectPublicKey", &bit_string_syntax}};
constexpr Syntax key_syntax{.tag = 0x30, .fields = key_fields};

constexpr Field tbs_fields[] = {{"version", &version_syntax, true},
                                {"serialNumber", &integer_syntax},
                                {"signature", &algorithm_syntax},
                                {"issuer", &name_syntax},
                                {"validity", &validity_syntax},
                                {"subject", &name_syntax},
                                {"subjectPublicKeyInfo", &key_syntax},
                                {"issuerUniqueID", &bit_string_syntax, true, 0x81},
                                {"subjectUniqueID", &bit_string_syntax, true, 0x82},
                                {"extensions", &tagged_extensions_syntax, true}};
constexpr Syntax tbs_syntax{.tag = 0x30, .fields = tbs_fields};

constexpr Field certificate_fields[] = {{"tbsCertificate", &tbs_syntax},
                                        {"signatureAlgorithm", &algorithm_syntax},
                                        {"signatureValue", &bit_string_syntax}};
constexpr Syntax certificate_syntax{.tag = 0x30, .fields = certificate_fields};

/// Whether the content of the version field is an INTEGER that the decoder takes for above 0.
bool allows_extensions(Octets content) {
  const auto version = decoded(asn1_Integer_d, asn1_Integer_free, content);
  return version && version->length != 0 && version->data[0] != 0;
}

/// What is wrong with a certificate of sound syntax: unique identifiers and extensions need a
/// version above 1.
std::optional<Fault> version_fault(Octets octets) {
  constexpr uint8_t first_tag_that_needs_one = 0x81;
  const Header outer = read_header(octets);
  if (!outer.fault.empty() || outer.indefinite) return std::nullopt;
  const Header tbs = read_header(octets.subspan(outer.size));
  if (!tbs.fault.empty() || tbs.indefinite) return std::nullopt;
  size_t at = outer.size + tbs.size;
  const size_t stop = at + tbs.length;
  bool allowed = false;
  while (at < stop) {
    const Octets rest = octets.subspan(at, stop - at);
    const Header field = read_header(rest);
    if (!field.fault.empty() || field.indefinite) return std::nullopt;
    if (field.tag == version_syntax.tag)
      allowed = allows_extensions(rest.subspan(field.size, field.length));
    else if (field.tag >= first_tag_that_needs_one && !allowed)
      return Fault{
          at, "tbsCertificate: found " + tag_name(field.tag) + ", which needs a version above 1"};
    at += field.size + field.length;
  }
  return std::nullopt;
}

}  // namespace

std::optional<Fault> CertificateView::explain(Octets octets) {
  if (auto fault = syntax_fault(octets, certificate_syntax)) return fault;
  return version_fault(octets);
}

}  // namespace tool
