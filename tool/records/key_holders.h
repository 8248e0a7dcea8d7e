// The public keys of certificates, requests, keys and bundles of them, each as a
// SubjectPublicKeyInfo.
#ifndef ORVELASN1_TOOL_RECORDS_KEY_HOLDERS_H
#define ORVELASN1_TOOL_RECORDS_KEY_HOLDERS_H

#include "input/element.h"

namespace tool {

/// Something that has a key.
struct KeyHolder {
  std::string what;     ///< "Certificate", "private key (PKCS #8)"
  std::string subject;  ///< in one line; may be empty
  Bytes spki;           ///< its SubjectPublicKeyInfo; empty where that is not known
  bool stated = false;  ///< whether it stands there in this form
  std::string why;      ///< why the key is not known
};

/// Returns what has a key in an element: one holder, or those in a message or a PKCS #12 file.
/// Returns an empty list for an element that has no key.
std::vector<KeyHolder> key_holders(Octets element);

/// Returns a text that two SubjectPublicKeyInfo share where they are the same key: whether RSA has
/// NULL for parameters, and how a point is written, does not matter.
std::string key_identity(Octets spki);

/// Returns "RSA, 2048 bits, exponent 65537".
std::string kind_of_key(Octets spki);

}  // namespace tool

#endif
