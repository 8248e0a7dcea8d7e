// RSA keys and digests (PKCS #1, RFC 8017), private keys (PKCS #8, RFC 5208), DSA and
// Diffie-Hellman parameters (RFC 3279), and the key challenges of browsers.
#include "records/inside.h"
#include "records/public_key.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// Adds the size that a key is known by.
Description &add_bits(Description &fields, const Integer *modulus) {
  const uint64_t bits = bit_length(modulus);
  return fields.field("keyBits", text(std::to_string(bits), bits)).brief();
}

}  // namespace

// RSAPublicKey ::= SEQUENCE { modulus, publicExponent }
Node describe(const RSAPublicKey *key, const View &view) {
  Description fields(view);
  fields.field("modulus", key->modulus).small("publicExponent", key->publicExponent).brief();
  return add_bits(fields, key->modulus).node();
}

// RSAPrivateKey ::= SEQUENCE { version, modulus, publicExponent, privateExponent, prime1, prime2,
//   exponent1, exponent2, coefficient }
Node describe(const RSAPrivateKey *key, const View &view) {
  Description fields(view);
  fields.small("version", key->version)
      .field("modulus", key->modulus)
      .small("publicExponent", key->publicExponent)
      .brief()
      .field("privateExponent", key->privateExponent)
      .field("prime1", key->prime1)
      .field("prime2", key->prime2)
      .field("exponent1", key->exponent1)
      .field("exponent2", key->exponent2)
      .field("coefficient", key->coefficient);
  return add_bits(fields, key->modulus).node();
}

// DigestInfo ::= SEQUENCE { digestAlgorithm, digest }
Node describe(const DigestInfo *info, const View &view) {
  return Description(view)
      .field("digestAlgorithm", info->digestAlgorithm)
      .brief()
      .field("digest", info->digest)
      .node();
}

// PrivateKeyInfo ::= SEQUENCE { version, privateKeyAlgorithm, privateKey, attributes [0] }
//
// The octets of an RSA key are decoded; no family reads other keys.
Node describe(const PrivateKeyInfo *info, const View &view) {
  Description fields(view);
  fields.version("version", info->version)
      .field("privateKeyAlgorithm", info->privateKeyAlgorithm)
      .brief();
  if (is(info->privateKeyAlgorithm->algorithm, asn1_Get_rsaEncryption))
    add_inside(fields, "privateKey", describe(info->privateKey, view),
               read_inside(octets(info->privateKey), "rsa-private-key", view));
  else
    fields.field("privateKey", info->privateKey);
  return fields.list<Attribute>("attributes", info->attributes).node();
}

// EncryptedPrivateKeyInfo ::= SEQUENCE { encryptionAlgorithm, encryptedData }
Node describe(const EncryptedPrivateKeyInfo *info, const View &view) {
  return Description(view)
      .field("encryptionAlgorithm", encryption_algorithm(info->encryptionAlgorithm, view))
      .brief()
      .field("encryptedData", encrypted(info->encryptedData, view))
      .brief()
      .node();
}

// Dss-Parms ::= SEQUENCE { p, q, g }
Node describe(const DssParms *parameters, const View &view) {
  Description fields(view);
  fields.field("p", parameters->p).field("q", parameters->q).field("g", parameters->g);
  return add_bits(fields, parameters->p).node();
}

// Dss-Sig-Value ::= SEQUENCE { r, s }
Node describe(const DssSigValue *signature, const View &view) {
  return Description(view).field("r", signature->r).field("s", signature->s).node();
}

// ValidationParms ::= SEQUENCE { seed, pgenCounter }
Node describe(const ValidationParms *parameters, const View &view) {
  return Description(view)
      .field("seed", parameters->seed)
      .small("pgenCounter", parameters->pgenCounter)
      .node();
}

// DomainParameters ::= SEQUENCE { p, g, q, j OPTIONAL, validationParms OPTIONAL }
Node describe(const DomainParameters *parameters, const View &view) {
  Description fields(view);
  fields.field("p", parameters->p)
      .field("g", parameters->g)
      .field("q", parameters->q)
      .field("j", parameters->j)
      .field("validationParms", parameters->validationParms);
  return add_bits(fields, parameters->p).node();
}

// PublicKeyAndChallenge ::= SEQUENCE { spki, challenge IA5String }
Node describe(const PublicKeyAndChallenge *signed_part, const View &view) {
  constexpr uint8_t ia5_string = 0x16;
  return Description(view)
      .field("spki", signed_part->spki)
      .brief()
      .field("challenge", characters(ia5_string, signed_part->challenge))
      .brief()
      .node();
}

// SignedPublicKeyAndChallenge ::= SEQUENCE { publicKeyAndChallenge, signatureAlgorithm, signature }
Node describe(const SignedPublicKeyAndChallenge *record, const View &view) {
  return Description(view)
      .field("publicKeyAndChallenge", record->publicKeyAndChallenge)
      .encoding("tbsEncoded", record->tbsEncoded)
      .field("signatureAlgorithm", record->signatureAlgorithm)
      .field("signature", record->signature)
      .node();
}

namespace {

constexpr Field rsa_public_fields[] = {{"modulus", &integer_syntax},
                                       {"publicExponent", &integer_syntax}};
constexpr Syntax rsa_public_syntax{.tag = 0x30, .fields = rsa_public_fields};

constexpr Field rsa_private_fields[] = {
    {"version", &integer_syntax},        {"modulus", &integer_syntax},
    {"publicExponent", &integer_syntax}, {"privateExponent", &integer_syntax},
    {"prime1", &integer_syntax},         {"prime2", &integer_syntax},
    {"exponent1", &integer_syntax},      {"exponent2", &integer_syntax},
    {"coefficient", &integer_syntax}};
constexpr Syntax rsa_private_syntax{.tag = 0x30, .fields = rsa_private_fields};

constexpr Field private_key_fields[] = {{"version", &integer_syntax},
                                        {"privateKeyAlgorithm", &algorithm_syntax},
                                        {"privateKey", &octet_string_syntax},
                                        {"attributes", &attributes_0_syntax, true}};
constexpr Syntax private_key_syntax{.tag = 0x30, .fields = private_key_fields};

constexpr Field encrypted_key_fields[] = {{"encryptionAlgorithm", &algorithm_syntax},
                                          {"encryptedData", &octet_string_syntax}};
constexpr Syntax encrypted_key_syntax{.tag = 0x30, .fields = encrypted_key_fields};

constexpr Field dss_parms_fields[] = {
    {"p", &integer_syntax}, {"q", &integer_syntax}, {"g", &integer_syntax}};
constexpr Syntax dss_parms_syntax{.tag = 0x30, .fields = dss_parms_fields};

constexpr Field dss_signature_fields[] = {{"r", &integer_syntax}, {"s", &integer_syntax}};
constexpr Syntax dss_signature_syntax{.tag = 0x30, .fields = dss_signature_fields};

constexpr Field validation_fields[] = {{"seed", &bit_string_syntax},
                                       {"pgenCounter", &integer_syntax}};
constexpr Syntax validation_syntax{.tag = 0x30, .fields = validation_fields};

constexpr Field domain_fields[] = {{"p", &integer_syntax},
                                   {"g", &integer_syntax},
                                   {"q", &integer_syntax, true},
                                   {"j", &integer_syntax, true},
                                   {"validationParms", &validation_syntax, true}};
constexpr Syntax domain_syntax{.tag = 0x30, .fields = domain_fields};

constexpr Field challenge_fields[] = {{"spki", &key_syntax}, {"challenge", &ia5_string_syntax}};
constexpr Syntax challenge_syntax{.tag = 0x30, .fields = challenge_fields};

constexpr Field signed_challenge_fields[] = {{"publicKeyAndChallenge", &challenge_syntax},
                                             {"signatureAlgorithm", &algorithm_syntax},
                                             {"signature", &bit_string_syntax}};
constexpr Syntax signed_challenge_syntax{.tag = 0x30, .fields = signed_challenge_fields};

constexpr std::string_view rsa_public_labels[] = {"RSA PUBLIC KEY"};
constexpr std::string_view rsa_private_labels[] = {"RSA PRIVATE KEY"};
constexpr std::string_view private_key_labels[] = {"PRIVATE KEY"};
constexpr std::string_view encrypted_key_labels[] = {"ENCRYPTED PRIVATE KEY"};
constexpr std::string_view dss_labels[] = {"DSA PARAMETERS"};
constexpr std::string_view domain_labels[] = {"X9.42 DH PARAMETERS"};

constexpr Type rows[] = {
    type<asn1_RSAPublicKey_d, asn1_RSAPublicKey_e, asn1_RSAPublicKey_free>(
        {.name = "rsa-public-key",
         .heading = "RSAPublicKey",
         .about = "an RSA public key (PKCS #1)",
         .labels = rsa_public_labels,
         .syntax = &rsa_public_syntax,
         .stands_alone = true}),
    type<asn1_RSAPrivateKey_d, asn1_RSAPrivateKey_e, asn1_RSAPrivateKey_free>(
        {.name = "rsa-private-key",
         .heading = "RSAPrivateKey",
         .about = "an RSA private key of two primes (PKCS #1)",
         .labels = rsa_private_labels,
         .syntax = &rsa_private_syntax,
         .stands_alone = true}),
    type<asn1_DigestInfo_d, asn1_DigestInfo_e, asn1_DigestInfo_free>(
        {.name = "digest-info",
         .heading = "DigestInfo",
         .about = "a digest and its algorithm (PKCS #1)",
         .syntax = &digest_info_syntax}),
    type<asn1_PrivateKeyInfo_d, asn1_PrivateKeyInfo_e, asn1_PrivateKeyInfo_free>(
        {.name = "private-key-info",
         .heading = "PrivateKeyInfo",
         .about = "a private key and its algorithm (PKCS #8)",
         .labels = private_key_labels,
         .syntax = &private_key_syntax,
         .stands_alone = true}),
    type<asn1_EncryptedPrivateKeyInfo_d, asn1_EncryptedPrivateKeyInfo_e,
         asn1_EncryptedPrivateKeyInfo_free>({.name = "encrypted-private-key-info",
                                             .heading = "EncryptedPrivateKeyInfo",
                                             .about = "an encrypted private key (PKCS #8)",
                                             .labels = encrypted_key_labels,
                                             .syntax = &encrypted_key_syntax,
                                             .stands_alone = true}),
    type<asn1_DssParms_d, asn1_DssParms_e, asn1_DssParms_free>({.name = "dss-parms",
                                                                .heading = "DssParms",
                                                                .about = "the parameters of DSA",
                                                                .labels = dss_labels,
                                                                .syntax = &dss_parms_syntax,
                                                                .stands_alone = true}),
    type<asn1_DssSigValue_d, asn1_DssSigValue_e, asn1_DssSigValue_free>(
        {.name = "dss-sig-value",
         .heading = "DssSigValue",
         .about = "a signature of DSA or of elliptic curves",
         .syntax = &dss_signature_syntax,
         .stands_alone = true}),
    type<asn1_DomainParameters_d, asn1_DomainParameters_e, asn1_DomainParameters_free>(
        {.name = "domain-parameters",
         .heading = "DomainParameters",
         .about = "the parameters of X9.42 Diffie-Hellman",
         .labels = domain_labels,
         .syntax = &domain_syntax,
         .stands_alone = true}),
    type<asn1_ValidationParms_d, asn1_ValidationParms_e, asn1_ValidationParms_free>(
        {.name = "validation-parms",
         .heading = "ValidationParms",
         .about = "how a prime of Diffie-Hellman was found",
         .syntax = &validation_syntax}),
    type<asn1_PublicKeyAndChallenge_d, asn1_PublicKeyAndChallenge_e,
         asn1_PublicKeyAndChallenge_free>(
        {.name = "public-key-and-challenge",
         .heading = "PublicKeyAndChallenge",
         .about = "the signed part of a signed public key and challenge",
         .syntax = &challenge_syntax}),
    type<asn1_SignedPublicKeyAndChallenge_d, asn1_SignedPublicKeyAndChallenge_e,
         asn1_SignedPublicKeyAndChallenge_free>(
        {.name = "signed-public-key-and-challenge",
         .heading = "SignedPublicKeyAndChallenge",
         .about = "what a browser signs to enrol a key (SPKAC)",
         .syntax = &signed_challenge_syntax,
         .stands_alone = true,
         .forget_encodings =
             [](void *record) {
               forget(static_cast<SignedPublicKeyAndChallenge *>(record)->tbsEncoded);
             }}),
};

}  // namespace

std::span<const Type> key_types() { return rows; }

}  // namespace tool
