// RSA keys and digests (PKCS #1, RFC 8017), private keys (PKCS #8, RFC 5958; RFC 5915), and the key
// challenges of browsers.
#include <algorithm>

#include "records/values.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

Node secret(Node node, const View &view) {
  return view.secrets ? std::move(node) : text(secret_text, secret_text);
}

Node secret_octets(const OctetString *octets, const View &view) {
  return secret(describe(octets, view), view);
}

namespace {

Node secret_number(const Integer *number, const View &view) {
  return secret(describe(number, view), view);
}

}  // namespace

Node describe(const RSAPublicKey *key, const View &view) {
  return with_bits("pki_RSAPublicKey", key, key->modulus, view);
}

Node describe(const pki_RSAPrivateKey *key, const View &view) {
  return with_bits("pki_RSAPrivateKey", key, key->modulus, view);
}

namespace {

/// The type of what the private keys of an algorithm hold, and how it is described.
struct KeyRow {
  std::string_view algorithm;  ///< its display name
  const char *type;
  Describe describe = nullptr;
};

constexpr KeyRow key_rows[] = {{"rsaEncryption", "pki_RSAPrivateKey"},
                               {"rsassa-pss", "pki_RSAPrivateKey"},
                               {"rsaes-oaep", "pki_RSAPrivateKey"},
                               {"id-ecPublicKey", "pki_ECPrivateKey"},
                               {"Ed25519", "OctetString", as<secret_octets>},
                               {"Ed448", "OctetString", as<secret_octets>},
                               {"X25519", "OctetString", as<secret_octets>},
                               {"X448", "OctetString", as<secret_octets>},
                               {"id-dsa", "Integer", as<secret_number>},
                               {"dhKeyAgreement", "Integer", as<secret_number>},
                               {"dhpublicnumber", "Integer", as<secret_number>}};

/// Reads the octets of a private key. Malformed ones may be secret in any place.
Inside read_key(const pki_OneAsymmetricKey *info, const View &view) {
  const std::string name = display_name(info->privateKeyAlgorithm->algorithm);
  const auto *const row = std::ranges::find(key_rows, std::string_view(name), &KeyRow::algorithm);
  if (row == std::end(key_rows)) return {};
  Inside inside = read_value(octets(info->privateKey), row->type, view, row->describe);
  if (inside.malformed.empty() || view.secrets) return inside;
  inside.read = false;
  inside.node = text({"malformed: " + inside.malformed, secret_text}, nullptr, Tone::alarm);
  return inside;
}

}  // namespace

// OneAsymmetricKey ::= SEQUENCE { version, privateKeyAlgorithm, privateKey, attributes [0], publicKey
//   [1] }
//
// The octets of a key whose type is known are decoded.
Node describe(const pki_OneAsymmetricKey *info, const View &view) {
  Description fields(view);
  fields.field("version", version(info->version))
      .field("privateKeyAlgorithm", info->privateKeyAlgorithm)
      .brief();
  add_inside(fields, "privateKey", secret_octets(info->privateKey, view), read_key(info, view));
  return fields.field("attributes", list_of("pki_Attribute", info->attributes, view))
      .field("publicKey", info->publicKey)
      .node();
}

std::vector<Type> key_types() {
  return {
      {.syntax = "pki_RSAPublicKey",
       .about = "an RSA public key (PKCS #1)",
       .labels = {"RSA PUBLIC KEY"},
       .stands_alone = true,
       .hints = {brief("publicExponent", as<number>)},
       .by_hand = as<RSAPublicKey>},
      {.syntax = "pki_RSAPrivateKey",
       .about = "an RSA private key (PKCS #1)",
       .labels = {"RSA PRIVATE KEY"},
       .stands_alone = true,
       .secret = true,
       .hints = {{"version", as<number>},
                 brief("publicExponent", as<number>),
                 {"privateExponent", as<secret_number>},
                 {"prime1", as<secret_number>},
                 {"prime2", as<secret_number>},
                 {"exponent1", as<secret_number>},
                 {"exponent2", as<secret_number>},
                 {"coefficient", as<secret_number>}},
       .by_hand = as<pki_RSAPrivateKey>},
      {.syntax = "pki_OtherPrimeInfo",
       .about = "a third prime of an RSA private key, or a further one",
       .secret = true,
       .hints = {{"prime", as<secret_number>},
                 {"exponent", as<secret_number>},
                 {"coefficient", as<secret_number>}}},
      {.syntax = "pki_ECPrivateKey",
       .about = "a private key of an elliptic curve (RFC 5915)",
       .labels = {"EC PRIVATE KEY"},
       .stands_alone = true,
       .secret = true,
       .hints = {{"version", as<number>}, {"privateKey", as<secret_octets>}, brief("parameters")}},
      {.syntax = "pki_DigestInfo",
       .about = "a digest and its algorithm (PKCS #1)",
       .hints = {brief("digestAlgorithm")}},
      {.syntax = "pki_OneAsymmetricKey",
       .about = "a private key and its algorithm (PKCS #8)",
       .name = "private-key-info",
       .heading = "PrivateKeyInfo",
       .labels = {"PRIVATE KEY"},
       .stands_alone = true,
       .secret = true,
       .by_hand = as<pki_OneAsymmetricKey>},
      {.syntax = "pki_EncryptedPrivateKeyInfo",
       .about = "an encrypted private key (PKCS #8)",
       .labels = {"ENCRYPTED PRIVATE KEY"},
       .stands_alone = true,
       .hints = {brief("encryptionAlgorithm"), brief("encryptedData", as<encrypted>)}},
      {.syntax = "DssSigValue",
       .about = "a signature of DSA or of elliptic curves",
       .stands_alone = true},
      {.syntax = "PublicKeyAndChallenge",
       .about = "the signed part of a signed public key and challenge",
       .hints = {brief("spki"), brief("challenge")}},
      {.syntax = "SignedPublicKeyAndChallenge",
       .about = "what a browser signs to enrol a key (SPKAC)",
       .stands_alone = true},
  };
}

}  // namespace tool
