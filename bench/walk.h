// The same work in C and in C++: a certificate is decoded, looked at in all its parts, and released.
#ifndef ORVELASN1_BENCH_WALK_H
#define ORVELASN1_BENCH_WALK_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <orvelasn1.hpp>
#include <vector>

namespace bench {

using Octets = std::vector<uint8_t>;

/// Adds up what there is to see in a certificate, by the functions of C.
[[gnu::noinline]] inline uint64_t walk_in_c(const Certificate *certificate) {
  const Certificate_TBS *const tbs = certificate->tbsCertificate;
  uint64_t sum = tbs->version != nullptr ? tbs->version->length : 0;
  sum += tbs->serialNumber->length;
  sum += std::strlen(tbs->validity->notBefore->value) + std::strlen(tbs->validity->notAfter->value);
  sum += tbs->subjectPublicKeyInfo->subjectPublicKey->length;
  sum += tbs->subjectPublicKeyInfo->algorithm->algorithm->count;
  for (const RDNSequence *const name : {tbs->issuerSequence, tbs->subjectSequence}) {
    const int32_t count = List_len(name);
    for (int32_t i = 0; i < count; ++i) {
      const auto *const rdn = static_cast<const List *>(List_get(name, i));
      const int32_t assertions = List_len(rdn);
      for (int32_t k = 0; k < assertions; ++k) {
        const auto *const assertion =
            static_cast<const AttributeValueAssertion *>(List_get(rdn, k));
        sum += assertion->type->count + assertion->value->length;
      }
    }
  }
  const int32_t count = List_len(tbs->extensions);
  for (int32_t i = 0; i < count; ++i) {
    const auto *const extension = static_cast<const Extension *>(List_get(tbs->extensions, i));
    sum += extension->extnID->count + (extension->critical != 0) + extension->extnValue->length;
  }
  return sum + certificate->signatureValue->length;
}

/// Adds up the same through the views.
[[gnu::noinline]] inline uint64_t walk_in_cpp(const orvel::pki::Certificate &certificate) {
  uint64_t sum = certificate.version() ? certificate.version()->octets().size() : 0;
  sum += certificate.serialNumber().octets().size();
  sum += certificate.validity().notBefore().text().size() +
         certificate.validity().notAfter().text().size();
  sum += certificate.subjectPublicKeyInfo().subjectPublicKey().size();
  sum += certificate.subjectPublicKeyInfo().algorithm().algorithm().arcs().size();
  for (const auto name : {certificate.issuer(), certificate.subject()}) {
    for (const auto rdn : name) {
      for (const auto assertion : rdn) {
        sum += assertion.type().arcs().size() + assertion.value().size();
      }
    }
  }
  for (const auto extension : certificate.extensions()) {
    sum += extension.extnID().arcs().size() + extension.critical() + extension.extnValue().size();
  }
  return sum + certificate.signatureValue().size();
}

/// Decodes, walks and releases a certificate. Returns 0 where it is refused.
[[gnu::noinline]] inline uint64_t read_in_c(const Octets &der) {
  const uint8_t *const end = der.data() + der.size();
  Certificate *certificate = nullptr;
  if (pki_Certificate_d(der.data(), end, 0, &certificate, 0) != end) {
    pki_Certificate_free(certificate);
    return 0;
  }
  const uint64_t sum = walk_in_c(certificate);
  pki_Certificate_free(certificate);
  return sum;
}

[[gnu::noinline]] inline uint64_t read_in_cpp(const Octets &der) {
  const auto certificate = orvel::decode<orvel::pki::Certificate>(der);
  return certificate ? walk_in_cpp(*certificate) : 0;
}

}  // namespace bench

#endif
