#include <openssl/crypto.h>
#include <openssl/x509.h>

#include "peer.h"

namespace {

template <auto Decode, auto Free>
bool read(std::span<const uint8_t> der) {
  const unsigned char *cursor = der.data();
  auto *const made = Decode(nullptr, &cursor, static_cast<long>(der.size()));
  Free(made);
  return made != nullptr;
}

const std::string name = "OpenSSL " + std::string(OpenSSL_version(OPENSSL_VERSION_STRING));

const bench::Peer openssl({{name, read<d2i_X509, X509_free>}},
                          {{name, read<d2i_X509_CRL, X509_CRL_free>}});

}  // namespace
