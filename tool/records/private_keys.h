// The public part of private keys, as a SubjectPublicKeyInfo.
#ifndef ORVELASN1_TOOL_RECORDS_PRIVATE_KEYS_H
#define ORVELASN1_TOOL_RECORDS_PRIVATE_KEYS_H

#include <initializer_list>

#include "input/der.h"

namespace tool {

/// A public key, or why it is not known.
struct PublicPart {
  Bytes spki;
  std::string why;
};

// Each takes a whole element of its form.
PublicPart public_part_of_pkcs8(Octets element);                    ///< OneAsymmetricKey (RFC 5958)
PublicPart public_part_of_ec(Octets element);                       ///< ECPrivateKey (RFC 5915)
PublicPart public_part_of_rsa(Octets element);                      ///< RSAPrivateKey (RFC 8017)
PublicPart public_part_of_dsa(Octets element);                      ///< version, p, q, g, y, x
PublicPart public_part_of_rsa_public(Octets modulus_and_exponent);  ///< RSAPublicKey

/// Returns the content of an element of definite length; no octets of any other.
Octets content_of(Octets element);

/// Returns an element of definite length around the parts.
Bytes element_of(uint8_t identifier, std::initializer_list<Octets> parts);

}  // namespace tool

#endif
