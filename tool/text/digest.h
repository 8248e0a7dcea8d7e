// Digests, by the library nettle.
#ifndef ORVELASN1_TOOL_TEXT_DIGEST_H
#define ORVELASN1_TOOL_TEXT_DIGEST_H

#include <array>

#include "text/octets.h"

namespace tool {

/// Returns the digest of octets (FIPS 180-4).
std::array<uint8_t, 20> sha1(Octets octets);
std::array<uint8_t, 32> sha256(Octets octets);

}  // namespace tool

#endif
