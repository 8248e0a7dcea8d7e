// RSA keys and digests (PKCS #1, RFC 8017), private keys (PKCS #8, RFC 5208), DSA and
// Diffie-Hellman parameters (RFC 3279), and the key challenges of browsers.
#include "records/values.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// Describes a record, and adds the number of bits of its modulus or prime.
Node with_bits(const char *type, const void *record, const Integer *modulus, const View &view) {
  const uint64_t bits = bit_length(modulus);
  return Description(view)
      .all(type, record)
      .field("keyBits", text(std::to_string(bits), bits))
      .brief()
      .node();
}

}  // namespace

Node describe(const RSAPublicKey *key, const View &view) {
  return with_bits("RSAPublicKey", key, key->modulus, view);
}

Node describe(const RSAPrivateKey *key, const View &view) {
  return with_bits("RSAPrivateKey", key, key->modulus, view);
}

Node describe(const DssParms *parameters, const View &view) {
  return with_bits("DssParms", parameters, parameters->p, view);
}

Node describe(const DomainParameters *parameters, const View &view) {
  return with_bits("DomainParameters", parameters, parameters->p, view);
}

// PrivateKeyInfo ::= SEQUENCE { version, privateKeyAlgorithm, privateKey, attributes [0] }
//
// The octets of an RSA key are decoded. The library has no types for other keys.
Node describe(const PrivateKeyInfo *info, const View &view) {
  Description fields(view);
  fields.field("version", version(info->version))
      .field("privateKeyAlgorithm", info->privateKeyAlgorithm)
      .brief();
  if (is(info->privateKeyAlgorithm->algorithm, asn1_Get_rsaEncryption))
    add_inside(fields, "privateKey", describe(info->privateKey, view),
               read_inside(octets(info->privateKey), "rsa-private-key", view));
  else
    fields.field("privateKey", info->privateKey);
  return fields.field("attributes", list_of("Attribute", info->attributes, view)).node();
}

std::vector<Type> key_types() {
  return {
      {.syntax = "RSAPublicKey",
       .about = "an RSA public key (PKCS #1)",
       .labels = {"RSA PUBLIC KEY"},
       .stands_alone = true,
       .hints = {brief("publicExponent", as<number>)},
       .by_hand = as<RSAPublicKey>},
      {.syntax = "RSAPrivateKey",
       .about = "an RSA private key of two primes (PKCS #1)",
       .labels = {"RSA PRIVATE KEY"},
       .stands_alone = true,
       .hints = {{"version", as<number>}, brief("publicExponent", as<number>)},
       .by_hand = as<RSAPrivateKey>},
      {.syntax = "DigestInfo",
       .about = "a digest and its algorithm (PKCS #1)",
       .hints = {brief("digestAlgorithm")}},
      {.syntax = "PrivateKeyInfo",
       .about = "a private key and its algorithm (PKCS #8)",
       .labels = {"PRIVATE KEY"},
       .stands_alone = true,
       .by_hand = as<PrivateKeyInfo>},
      {.syntax = "EncryptedPrivateKeyInfo",
       .about = "an encrypted private key (PKCS #8)",
       .labels = {"ENCRYPTED PRIVATE KEY"},
       .stands_alone = true,
       .hints = {brief("encryptionAlgorithm", as<encryption_algorithm>),
                 brief("encryptedData", as<encrypted>)}},
      {.syntax = "DssParms",
       .about = "the parameters of DSA",
       .labels = {"DSA PARAMETERS"},
       .stands_alone = true,
       .by_hand = as<DssParms>},
      {.syntax = "DssSigValue",
       .about = "a signature of DSA or of elliptic curves",
       .stands_alone = true},
      {.syntax = "DomainParameters",
       .about = "the parameters of X9.42 Diffie-Hellman",
       .labels = {"X9.42 DH PARAMETERS"},
       .stands_alone = true,
       .by_hand = as<DomainParameters>},
      {.syntax = "ValidationParms",
       .about = "how a prime of Diffie-Hellman was found",
       .hints = {{"pgenCounter", as<number>}}},
      {.syntax = "PublicKeyAndChallenge",
       .about = "the signed part of a signed public key and challenge",
       .hints = {brief("spki"), brief("challenge")}},
      {.syntax = "SignedPublicKeyAndChallenge",
       .about = "what a browser signs to enrol a key (SPKAC)",
       .stands_alone = true},
  };
}

}  // namespace tool
