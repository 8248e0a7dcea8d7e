// The public part of private keys that do not hold it, by the library nettle.
#ifndef ORVELASN1_TOOL_RECORDS_COMPUTED_KEYS_H
#define ORVELASN1_TOOL_RECORDS_COMPUTED_KEYS_H

#include "text/octets.h"

namespace tool {

/// Returns the point of an elliptic curve, uncompressed (SEC 1, 2.3.3), for a private key. `curve`
/// is the content of its OBJECT IDENTIFIER. Fails for curves that nettle does not have, and for a
/// number that is no private key of the curve.
std::optional<Bytes> public_point(Octets curve, Octets private_key);

/// Returns the public key of X25519, X448, Ed25519 or Ed448 (RFC 8410). `algorithm` is the content
/// of its OBJECT IDENTIFIER. Fails for other algorithms and for keys of another size.
std::optional<Bytes> public_octets(Octets algorithm, Octets private_key);

/// Returns base to the power of the exponent modulo an odd prime, all of them the content of
/// positive INTEGERs, as DSA and Diffie-Hellman have it. The result is the content of an INTEGER.
/// Fails for numbers that no key has, and for primes of more than 8192 bits, which take too long.
std::optional<Bytes> public_power(Octets base, Octets exponent, Octets prime);

}  // namespace tool

#endif
