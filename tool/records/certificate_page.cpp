#include "records/certificate_page.h"

#include "records/certificate_facts.h"
#include "records/describe.h"
#include "records/distinguished_names.h"
#include "records/extension_values.h"
#include "records/public_key.h"
#include "text/integers.h"

namespace tool {

namespace {

std::string version_text(const Integer *version) {
  const uint32_t number = version == nullptr ? 0 : asn1_Integer_get(version);
  const bool usual = number < 3 && (version == nullptr || version->negative == 0);
  return usual ? std::to_string(number + 1) : "unknown, encoded as " + integer_text(version);
}

/// Adds the signature's algorithm, or both if the signed part names another one.
void add_signature(Page &page, const Certificate *certificate, const View &view) {
  const AlgId *const outer = certificate->signatureAlgorithm;
  const AlgId *const inner = certificate->tbsCertificate->signature;
  add_node(page, "signature", describe(outer, view), view);
  if (asn1_ObjId_cmp(outer->algorithm, inner->algorithm) != 0)
    page.row("", "but " + label(inner->algorithm, view) + " in the signed part");
}

/// Adds the public key and its digests.
void add_key(Page &page, const Certificate *certificate, const View &view) {
  const KeyFacts facts = key_facts(certificate);
  page.section("Public key");
  page.row("SHA-256", facts.sha256);
  page.row("pin", facts.pin);
  page.row("key identifier", facts.identifier);
  const bool is_rsa = !facts.key.modulus.empty();
  if (const auto digits = from_hex(is_rsa ? facts.key.modulus : facts.key.point))
    page.row(is_rsa                    ? "modulus"
             : facts.key.curve.empty() ? "octets"
                                       : "point",
             dump(*digits, view.full));
}

}  // namespace

std::string certificate_page(const void *record, const std::string &where, const View &view) {
  const auto *const certificate = static_cast<const Certificate *>(record);
  const Certificate_TBS &tbs = *certificate->tbsCertificate;
  Page page(view);
  page.section("Certificate", where);
  page.row("version", version_text(tbs.version));
  page.row("serialNumber", integer_text(tbs.serialNumber));
  page.row("key", key_text(tbs.subjectPublicKeyInfo, view));
  add_signature(page, certificate, view);

  page.section("Subject");
  add_name(page, tbs.subjectSequence, view);
  page.section("Issuer");
  add_name(page, tbs.issuerSequence, view);

  const Standing state = standing(tbs.validity, view.moment);
  page.section("Validity (UTC)");
  page.row("notBefore", time_text(tbs.validity->notBefore));
  page.row("notAfter", time_text(tbs.validity->notAfter) + ", " + state.text(), tone_of(state));

  add_extensions(page, tbs.extensions, view);

  add_key(page, certificate, view);

  const Fingerprints prints = fingerprints_of(certificate);
  page.section("Fingerprints");
  page.row("SHA-256", prints.sha256);
  page.row("SHA-1", prints.sha1);

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

}  // namespace tool
