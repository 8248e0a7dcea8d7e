#include <gnutls/gnutls.h>
#include <gnutls/x509.h>

#include "peer.h"

namespace {

bool read(std::span<const uint8_t> der) {
  const gnutls_datum_t octets{const_cast<unsigned char *>(der.data()),
                              static_cast<unsigned>(der.size())};
  gnutls_x509_crt_t certificate;
  if (gnutls_x509_crt_init(&certificate) != 0) return false;
  const bool taken = gnutls_x509_crt_import(certificate, &octets, GNUTLS_X509_FMT_DER) == 0;
  gnutls_x509_crt_deinit(certificate);
  return taken;
}

const bench::Peer gnutls({{"GnuTLS " + std::string(gnutls_check_version(nullptr)), read}});

}  // namespace
