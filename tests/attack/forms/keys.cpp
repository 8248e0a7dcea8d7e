// RSA keys and parameters (RFC 8017, RFC 4055), elliptic-curve keys (RFC 5480, RFC 5915), private keys
// (RFC 5958) and certification requests (RFC 2986).
#include "forms.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::text;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }

const Bytes sha256 = sequence(hex("06 09 60 86 48 01 65 03 04 02 01 05 00"));
const Bytes mgf1 = sequence(hex("06 09 2A 86 48 86 F7 0D 01 01 08") + sha256);
const Bytes label = sequence(hex("06 09 2A 86 48 86 F7 0D 01 01 09 04 02 01 02"));
const Bytes rsa = sequence(hex("06 09 2A 86 48 86 F7 0D 01 01 01 05 00"));
const Bytes ed25519 = sequence(hex("06 03 2B 65 70"));

const Bytes p256 = hex("06 08 2A 86 48 CE 3D 03 01 07");
const Bytes no_curve = hex("05 00");
const Bytes own_curve = sequence(hex("02 01 01 30 03 06 01 2A"));
const Bytes ec = sequence(hex("06 07 2A 86 48 CE 3D 02 01") + p256);

// A public key that ends in zero bits.
const Bytes point = hex("03 04 00 04 02 00");
// Modulus, exponents and primes.
const Bytes numbers = hex("02 02 00 8F 02 01 03 02 01 2B 02 01 0B 02 01 0D 02 01 00");
const Bytes one_prime = sequence(hex("02 01 07 02 01 03 02 01 02"));

const Bytes friendly_name =
    sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 14") + element(0x31, hex("1E 02 00 41")));
const Bytes no_values = sequence(hex("06 03 2A 03 04 31 00"));
const Bytes attributes = friendly_name + no_values;

const Bytes name = sequence(element(0x31, sequence(hex("06 03 55 04 06 13 02 44 45"))));
const Bytes public_key = sequence(ed25519 + hex("03 03 00 02 00"));
const Bytes info = sequence(hex("02 01 00") + name + public_key + element(0xA0, attributes));
const Bytes empty_info = sequence(hex("02 01 00 30 00") + public_key + hex("A0 00"));
const Bytes old_info = sequence(hex("02 01 00") + name + public_key);

}  // namespace

std::vector<Form> key_forms() {
  return {
      {"pki_RSASSA_PSS_params",
       {sequence({}), sequence(element(0xA0, sha256) + element(0xA1, mgf1) +
                               hex("A2 03 02 01 20 A3 03 02 01 01"))}},
      {"pki_RSAES_OAEP_params",
       {sequence({}),
        sequence(element(0xA0, sha256) + element(0xA1, mgf1) + element(0xA2, label))}},
      {"pki_ECParameters", {p256, no_curve, own_curve}},
      {"pki_ECDSA_Sig_Value",
       {sequence(hex("02 02 00 80 02 01 01")), sequence(hex("02 01 00 02 01 FF"))}},
      {"pki_ECPrivateKey",
       {sequence(hex("02 01 01 04 02 AB CD")),
        sequence(hex("02 01 01 04 02 AB CD") + element(0xA0, p256) + element(0xA1, point)),
        sequence(hex("02 01 01 04 00") + element(0xA0, no_curve))}},
      {"pki_OneAsymmetricKey",
       {sequence(hex("02 01 00") + ed25519 + hex("04 04 04 02 AB CD")),
        sequence(hex("02 01 01") + ec + hex("04 02 30 00") + element(0xA0, attributes) +
                 hex("81 04 00 04 02 00"))}},
      {"pki_EncryptedPrivateKeyInfo",
       {sequence(ed25519 + hex("04 00")), sequence(rsa + hex("04 03 01 02 03"))}},
      {"pki_RSAPublicKey",
       {sequence(hex("02 02 00 8F 02 01 03")), sequence(hex("02 01 00 02 01 FF"))}},
      {"pki_OtherPrimeInfo", {one_prime}},
      {"pki_RSAPrivateKey",
       {sequence(hex("02 01 00") + numbers + hex("02 01 05 02 01 06")),
        sequence(hex("02 01 01") + numbers + hex("02 01 05 02 01 06") +
                 sequence(one_prime + one_prime))}},
      {"pki_DigestInfo", {sequence(sha256 + hex("04 02 AB CD"))}},
      {"pki_CertRequestInfo", {info, empty_info, old_info}},
      {"pki_CertificationRequest",
       {sequence(info + ed25519 + hex("03 03 00 AB 00")),
        sequence(empty_info + ed25519 + hex("03 03 04 AB F0"))}},
  };
}

}  // namespace attack
