// Public keys: kind, size and digests.
#ifndef ORVELASN1_TOOL_RECORDS_PUBLIC_KEY_H
#define ORVELASN1_TOOL_RECORDS_PUBLIC_KEY_H

#include "model/view.h"

namespace tool {

/// The kind of a public key and what is known of its size.
struct Key {
  std::string kind;              ///< "RSA", "EC", "Ed25519", or the name of its algorithm
  std::optional<uint64_t> bits;  ///< of the modulus, the prime or the curve
  std::string curve;             ///< the name of its curve, or its dotted identifier
  std::string exponent;          ///< of RSA, in decimal, or in hexadecimal if it is long
  std::string modulus;           ///< of RSA, in hexadecimal digits without leading zeros
  std::string point;             ///< the octets of any other key, in hexadecimal digits
};

Key read_key(const SubjectPKI *info);

/// Returns "RSA, 2048 bits, exponent 65537".
std::string key_text(const SubjectPKI *info, const View &view);

/// Returns "RSA 2048 bits".
std::string short_key_text(const SubjectPKI *info);

}  // namespace tool

#endif
