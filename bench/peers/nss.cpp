#include <cert.h>
#include <nss.h>

#include "peer.h"

// The header declares it without the underscores, by which the library exports it.
extern "C" CERTCertificate *decode_certificate(SECItem *der, PRBool copy, char *nickname) __asm__(
    "__CERT_DecodeDERCertificate");

namespace {

bool read(std::span<const uint8_t> der) {
  SECItem octets{siDERCertBuffer, const_cast<unsigned char *>(der.data()),
                 static_cast<unsigned>(der.size())};
  CERTCertificate *const certificate = decode_certificate(&octets, PR_FALSE, nullptr);
  if (certificate == nullptr) return false;
  CERT_DestroyCertificate(certificate);
  return true;
}

const bool is_ready = NSS_NoDB_Init(nullptr) == SECSuccess;

const bench::Peer nss(is_ready
                          ? std::vector<bench::Way>{{"NSS " + std::string(NSS_GetVersion()), read}}
                          : std::vector<bench::Way>());

}  // namespace
