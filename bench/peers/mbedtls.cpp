#include <mbedtls/version.h>
#include <mbedtls/x509_crl.h>
#include <mbedtls/x509_crt.h>

#include "peer.h"

namespace {

/// Decodes a certificate that stays where it is, and hands it to `use`.
template <class Use>
bool read(std::span<const uint8_t> der, Use use) {
  mbedtls_x509_crt certificate;
  mbedtls_x509_crt_init(&certificate);
  const bool taken = mbedtls_x509_crt_parse_der_nocopy(&certificate, der.data(), der.size()) == 0 &&
                     use(certificate);
  mbedtls_x509_crt_free(&certificate);
  return taken;
}

bool read_certificate(std::span<const uint8_t> der) {
  return read(der, [](const mbedtls_x509_crt &) { return true; });
}

bool read_with_names(std::span<const uint8_t> der) {
  return read(der, [](const mbedtls_x509_crt &certificate) {
    char text[4096];
    return mbedtls_x509_dn_gets(text, sizeof text, &certificate.issuer) >= 0 &&
           mbedtls_x509_dn_gets(text, sizeof text, &certificate.subject) >= 0;
  });
}

bool read_crl(std::span<const uint8_t> der) {
  mbedtls_x509_crl crl;
  mbedtls_x509_crl_init(&crl);
  const bool taken = mbedtls_x509_crl_parse_der(&crl, der.data(), der.size()) == 0;
  mbedtls_x509_crl_free(&crl);
  return taken;
}

const std::string name = "mbedTLS " MBEDTLS_VERSION_STRING;

const bench::Peer mbedtls({{name, read_certificate},
                           {name + ", and both names into text", read_with_names}},
                          {{name, read_crl}});

}  // namespace
