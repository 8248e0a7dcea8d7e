/**
 * @file pkcs1.h
 * RSA keys and digests (PKCS #1, RFC 8017).
 */
#ifndef ORVELASN1_PKCS1_H
#define ORVELASN1_PKCS1_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** DigestInfo ::= SEQUENCE { digestAlgorithm AlgorithmIdentifier, digest OCTET STRING }. */
typedef struct DigestInfo {
  AlgId *digestAlgorithm; /**< owned */
  OctetString *digest;    /**< owned */
} DigestInfo;

/** RSAPublicKey ::= SEQUENCE { modulus, publicExponent INTEGER }. */
typedef struct RSAPublicKey {
  Integer *modulus;        /**< owned */
  Integer *publicExponent; /**< owned */
} RSAPublicKey;

/**
 * RSAPrivateKey ::= SEQUENCE of nine INTEGERs (RFC 8017, A.1.2). Keys of more than two primes are
 * not supported.
 */
typedef struct RSAPrivateKey {
  Integer *version;         /**< owned */
  Integer *modulus;         /**< owned */
  Integer *publicExponent;  /**< owned */
  Integer *privateExponent; /**< owned */
  Integer *prime1;          /**< owned */
  Integer *prime2;          /**< owned */
  Integer *exponent1;       /**< owned */
  Integer *exponent2;       /**< owned */
  Integer *coefficient;     /**< owned */
} RSAPrivateKey;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
DigestInfo *asn1_DigestInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_DigestInfo_free(DigestInfo *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_DigestInfo_e(uint8_t **pp, const DigestInfo *pElement);
/** Decodes a DigestInfo. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_DigestInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 DigestInfo **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
DigestInfo *asn1_DigestInfo_clone(const DigestInfo *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
RSAPublicKey *asn1_RSAPublicKey_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_RSAPublicKey_free(RSAPublicKey *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_RSAPublicKey_e(uint8_t **pp, const RSAPublicKey *pElement);
/** Decodes an RSAPublicKey. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_RSAPublicKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   RSAPublicKey **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
RSAPublicKey *asn1_RSAPublicKey_clone(const RSAPublicKey *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
RSAPrivateKey *asn1_RSAPrivateKey_new(void);
/** Releases the record and what it owns, without wiping it. NULL is ignored. */
void asn1_RSAPrivateKey_free(RSAPrivateKey *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_RSAPrivateKey_e(uint8_t **pp, const RSAPrivateKey *pElement);
/**
 * Decodes an RSAPrivateKey. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_RSAPrivateKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    RSAPrivateKey **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
RSAPrivateKey *asn1_RSAPrivateKey_clone(const RSAPrivateKey *pElement);

#ifdef __cplusplus
}
#endif

#endif
