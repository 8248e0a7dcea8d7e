#include "text/digest.h"

#include <nettle/sha1.h>
#include <nettle/sha2.h>

namespace tool {

std::array<uint8_t, 20> sha1(Octets octets) {
  std::array<uint8_t, SHA1_DIGEST_SIZE> digest;
  sha1_ctx context;
  sha1_init(&context);
  sha1_update(&context, octets.size(), octets.data());
  sha1_digest(&context, digest.size(), digest.data());
  return digest;
}

std::array<uint8_t, 32> sha256(Octets octets) {
  std::array<uint8_t, SHA256_DIGEST_SIZE> digest;
  sha256_ctx context;
  sha256_init(&context);
  sha256_update(&context, octets.size(), octets.data());
  sha256_digest(&context, digest.size(), digest.data());
  return digest;
}

}  // namespace tool
