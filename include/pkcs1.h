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

/** RSAPrivateKey ::= SEQUENCE of nine INTEGERs; keys of more than two primes are not known. */
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

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
DigestInfo *asn1_DigestInfo_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_DigestInfo_free(DigestInfo *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_DigestInfo_e(uint8_t **pp, const DigestInfo *pElement);
/** Gives the cursor behind the last field of the DigestInfo that was recognised, or NULL. */
const uint8_t *asn1_DigestInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 DigestInfo **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
DigestInfo *asn1_DigestInfo_clone(const DigestInfo *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
RSAPublicKey *asn1_RSAPublicKey_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_RSAPublicKey_free(RSAPublicKey *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_RSAPublicKey_e(uint8_t **pp, const RSAPublicKey *pElement);
/** Gives the cursor behind the last field of the RSAPublicKey that was recognised, or NULL. */
const uint8_t *asn1_RSAPublicKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   RSAPublicKey **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
RSAPublicKey *asn1_RSAPublicKey_clone(const RSAPublicKey *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
RSAPrivateKey *asn1_RSAPrivateKey_new(void);
/** Gives nothing; releases the record and what it owns, without wiping it. NULL is ignored. */
void asn1_RSAPrivateKey_free(RSAPrivateKey *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_RSAPrivateKey_e(uint8_t **pp, const RSAPrivateKey *pElement);
/** Gives the cursor behind the last field of the RSAPrivateKey that was recognised, or NULL. */
const uint8_t *asn1_RSAPrivateKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    RSAPrivateKey **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
RSAPrivateKey *asn1_RSAPrivateKey_clone(const RSAPrivateKey *pElement);

#ifdef __cplusplus
}
#endif

#endif
