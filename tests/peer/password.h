// Encryption with a password, done by the openssl tool with the parameters of an algorithm.
#ifndef ORVELASN1_TESTS_PEER_PASSWORD_H
#define ORVELASN1_TESTS_PEER_PASSWORD_H

#include "by_hand.h"

namespace support {

constexpr const char *password = "secret";

/// Two octets for each character.
inline Bytes bmp_octets(std::string_view characters) {
  Bytes octets;
  for (const char c : characters) octets = octets + Bytes{0, static_cast<uint8_t>(c)};
  return octets;
}

inline Bytes derived(size_t length, const std::string &options) {
  openssl("kdf -keylen " + std::to_string(length) + " -binary -out derived " + options);
  return read_file("derived");
}

inline std::string salt_and_iterations(const Bytes &salt, uint32_t iterations) {
  return " -kdfopt hexsalt:" + upper_hex(salt) + " -kdfopt iter:" + std::to_string(iterations);
}

/// Derives octets from the password (RFC 7292, B.2): a key for `purpose` 1, an initialisation
/// vector for 2, a key for a MAC for 3. The password is hashed as a terminated BMPString.
inline Bytes derived_pkcs12(char purpose, size_t length, const std::string &digest,
                            const Bytes &salt, uint32_t iterations) {
  return derived(length, "-kdfopt digest:" + digest +
                             " -kdfopt hexpass:" + upper_hex(bmp_octets(password) + Bytes{0, 0}) +
                             salt_and_iterations(salt, iterations) + " -kdfopt id:" + purpose +
                             " PKCS12KDF");
}

constexpr const char *pbes2 = "1.2.840.113549.1.5.13";
constexpr const char *pbkdf2 = "1.2.840.113549.1.5.12";
constexpr const char *aes_256_cbc = "2.16.840.1.101.3.4.1.42";
constexpr const char *hmac_with_sha256 = "1.2.840.113549.2.9";
constexpr const char *triple_des = "1.2.840.113549.1.12.1.3";
constexpr const char *triple_des_of_two_keys = "1.2.840.113549.1.12.1.4";
constexpr const char *rc2_of_40_bits = "1.2.840.113549.1.12.1.6";

/// The parameters of a scheme: those of PBES2 as the tool finds them, others as PbeParams.
struct Scheme {
  std::string name;
  Bytes salt;
  uint32_t iterations;
  std::string function;  // of PBES2 only; so is the vector
  std::string cipher;
  Bytes vector;

  explicit Scheme(const AlgId *algorithm) : name(identifier_text(algorithm->algorithm)) {
    const Bytes parameters = value(algorithm->parameters);
    if (name != pbes2) {
      const auto pbe = record_of<asn1_PbeParams_free>(asn1_PbeParams_d, parameters);
      salt = value(pbe->salt);
      iterations = asn1_Integer_get(pbe->iterations);
      cipher = name;
      return;
    }
    write_file("parameters.der", parameters);
    const Element both = take_apart("parameters.der");
    const std::vector<Element> &derivation = both.parts.at(0).parts.at(1).parts;
    const std::vector<Element> &encryption = both.parts.at(1).parts;
    const auto dotted = [](const Element &id) {
      return identifier_text(record_of<asn1_ObjId_free>(asn1_ObjId_d, id.whole).get());
    };
    salt = derivation.at(0).content;
    iterations = asn1_Integer_get(
        record_of<asn1_Integer_free>(asn1_Integer_d, derivation.at(1).whole).get());
    function = dotted(derivation.at(2).parts.at(0));
    cipher = dotted(encryption.at(0));
    vector = encryption.at(1).content;
  }
};

/// Lets the tool encrypt (direction "-e") or decrypt ("-d") octets with the password.
inline Bytes through_cipher(const std::string &direction, const AlgId *algorithm,
                            const Bytes &octets) {
  struct Cipher {
    const char *name;
    size_t key_length;
  };
  static const std::map<std::string, Cipher> ciphers = {
      {triple_des, {"des-ede3-cbc", 24}},
      {triple_des_of_two_keys, {"des-ede-cbc", 16}},
      {rc2_of_40_bits, {"rc2-40-cbc -provider legacy -provider default", 5}},
      {"2.16.840.1.101.3.4.1.2", {"aes-128-cbc", 16}},
      {aes_256_cbc, {"aes-256-cbc", 32}},
      {"1.2.840.113549.3.7", {"des-ede3-cbc", 24}}};
  static const std::map<std::string, const char *> digests = {{hmac_with_sha256, "SHA256"},
                                                              {"1.2.840.113549.2.11", "SHA512"}};
  const Scheme scheme(algorithm);
  const auto [name, key_length] = ciphers.at(scheme.cipher);
  Bytes key_octets, vector = scheme.vector;
  if (scheme.name == pbes2) {
    key_octets =
        derived(key_length, std::string("-kdfopt pass:") + password +
                                salt_and_iterations(scheme.salt, scheme.iterations) +
                                " -kdfopt digest:" + digests.at(scheme.function) + " PBKDF2");
  } else {
    key_octets = derived_pkcs12('1', key_length, "SHA1", scheme.salt, scheme.iterations);
    vector = derived_pkcs12('2', 8, "SHA1", scheme.salt, scheme.iterations);
  }
  write_file("cipher.in", octets);
  openssl("enc " + direction + " -" + name + " -K " + upper_hex(key_octets) + " -iv " +
          upper_hex(vector) + " -in cipher.in -out cipher.out");
  return read_file("cipher.out");
}

/// A scheme of encryption with the password, put together by hand.
struct SchemeShape {
  const char *name;
  const char *dotted;
  AlgId *made() const;
};
inline void PrintTo(const SchemeShape &shape, std::ostream *out) { *out << shape.name; }

inline const SchemeShape scheme_shapes[] = {
    {"Pbes2", pbes2},
    {"LegacyTripleDes", triple_des},
    {"LegacyTripleDesOfTwoKeys", triple_des_of_two_keys},
};

inline AlgId *SchemeShape::made() const {
  const Bytes salt = hex("5A 17 5A 17 5A 17 5A 17");
  if (dotted != std::string_view(pbes2)) {
    const Owned<PbeParams, asn1_PbeParams_free> parameters(asn1_PbeParams_new());
    parameters->salt = octet_string(salt);
    parameters->iterations = asn1_Integer_set(1000);
    return algorithm(identifier(dotted), whole_element(encode(asn1_PbeParams_e, parameters.get())));
  }
  const auto part = [](const char *id, const Bytes &parameters) {
    const Owned<AlgId, asn1_AlgId_free> made(algorithm(identifier(id), whole_element(parameters)));
    return encode(asn1_AlgId_e, made.get());
  };
  const Bytes derivation =
      element(4, salt) + hex("02 02 03 E8") + part(hmac_with_sha256, hex("05 00"));
  return algorithm(identifier(pbes2),
                   whole_element(sequence(part(pbkdf2, sequence(derivation)) +
                                          part(aes_256_cbc, element(4, Bytes(16, 0x1F))))));
}

}  // namespace support

#endif
