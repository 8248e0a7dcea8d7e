#include <cert.h>
#include <nss.h>

#include "peer.h"

namespace {

bool read(std::span<const uint8_t> der) {
  SECItem octets{siDERCertBuffer, const_cast<unsigned char *>(der.data()),
                 static_cast<unsigned>(der.size())};
  CERTCertificate *const certificate =
      CERT_NewTempCertificate(CERT_GetDefaultCertDB(), &octets, nullptr, PR_FALSE, PR_FALSE);
  if (certificate == nullptr) return false;
  CERT_DestroyCertificate(certificate);
  return true;
}

const bool is_ready = NSS_NoDB_Init(nullptr) == SECSuccess;

const bench::Peer nss(is_ready
                          ? std::vector<bench::Way>{{"NSS " + std::string(NSS_GetVersion()), read}}
                          : std::vector<bench::Way>());

}  // namespace
