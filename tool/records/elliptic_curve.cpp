// Keys of elliptic curves in the form of SEC 1 (RFC 5915), and their parameters (RFC 5480).
#include "records/type.h"

namespace tool {

std::vector<Type> elliptic_curve_types() {
  return {
      {.syntax = "pki_ECPrivateKey",
       .about = "a private key of an elliptic curve (RFC 5915)",
       .labels = {"EC PRIVATE KEY"},
       .stands_alone = true,
       .hints = {{"version", as<number>}, brief("publicKey")}},
      {.syntax = "pki_ECParameters",
       .about = "the curve of a key (RFC 5480)",
       .labels = {"EC PARAMETERS"}},
  };
}

}  // namespace tool
