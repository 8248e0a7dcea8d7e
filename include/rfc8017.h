/**
 * @file rfc8017.h
 * RSA keys and digests (PKCS #1, RFC 8017). rfc5280.h says what the functions promise.
 */
#ifndef ORVELPKI_RFC8017_H
#define ORVELPKI_RFC8017_H

#include "pkcs1.h"
#include "rfc5280.h"

#ifdef __cplusplus
extern "C" {
#endif

/** OtherPrimeInfo. The octets of its numbers are zeroed before they are released. */
typedef struct pki_OtherPrimeInfo {
  Integer *prime;       /**< owned */
  Integer *exponent;    /**< owned */
  Integer *coefficient; /**< owned */
} pki_OtherPrimeInfo;

/** RSAPrivateKey. The octets of its secret numbers are zeroed before they are released. */
typedef struct pki_RSAPrivateKey {
  Integer *version;         /**< owned: 0, or 1 with other primes */
  Integer *modulus;         /**< owned */
  Integer *publicExponent;  /**< owned */
  Integer *privateExponent; /**< owned */
  Integer *prime1;          /**< owned */
  Integer *prime2;          /**< owned */
  Integer *exponent1;       /**< owned */
  Integer *exponent2;       /**< owned */
  Integer *coefficient;     /**< owned */
  List *otherPrimeInfos;    /**< pki_OtherPrimeInfo records, owned; NULL where absent */
} pki_RSAPrivateKey;

/** RSAPublicKey ::= SEQUENCE { modulus INTEGER, publicExponent INTEGER } (A.1.1). */
RSAPublicKey *pki_RSAPublicKey_new(void);
void pki_RSAPublicKey_free(RSAPublicKey *pElement);
uint32_t pki_RSAPublicKey_e(uint8_t **pp, const RSAPublicKey *pElement);
const uint8_t *pki_RSAPublicKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  RSAPublicKey **ppElement, uint32_t depth);
RSAPublicKey *pki_RSAPublicKey_clone(const RSAPublicKey *pElement);

/**
 * OtherPrimeInfo ::= SEQUENCE { prime INTEGER, exponent INTEGER, coefficient INTEGER } (A.1.2).
 */
pki_OtherPrimeInfo *pki_OtherPrimeInfo_new(void);
void pki_OtherPrimeInfo_free(pki_OtherPrimeInfo *pElement);
uint32_t pki_OtherPrimeInfo_e(uint8_t **pp, const pki_OtherPrimeInfo *pElement);
const uint8_t *pki_OtherPrimeInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    pki_OtherPrimeInfo **ppElement, uint32_t depth);
pki_OtherPrimeInfo *pki_OtherPrimeInfo_clone(const pki_OtherPrimeInfo *pElement);

/**
 * RSAPrivateKey ::= SEQUENCE { version INTEGER, modulus INTEGER, publicExponent INTEGER,
 * privateExponent INTEGER, prime1 INTEGER, prime2 INTEGER, exponent1 INTEGER, exponent2 INTEGER,
 * coefficient INTEGER, otherPrimeInfos SEQUENCE OF OtherPrimeInfo OPTIONAL } (A.1.2).
 */
pki_RSAPrivateKey *pki_RSAPrivateKey_new(void);
void pki_RSAPrivateKey_free(pki_RSAPrivateKey *pElement);
uint32_t pki_RSAPrivateKey_e(uint8_t **pp, const pki_RSAPrivateKey *pElement);
const uint8_t *pki_RSAPrivateKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   pki_RSAPrivateKey **ppElement, uint32_t depth);
pki_RSAPrivateKey *pki_RSAPrivateKey_clone(const pki_RSAPrivateKey *pElement);

/**
 * DigestInfo ::= SEQUENCE { digestAlgorithm AlgorithmIdentifier, digest OCTET STRING } (A.2.4).
 */
DigestInfo *pki_DigestInfo_new(void);
void pki_DigestInfo_free(DigestInfo *pElement);
uint32_t pki_DigestInfo_e(uint8_t **pp, const DigestInfo *pElement);
const uint8_t *pki_DigestInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                DigestInfo **ppElement, uint32_t depth);
DigestInfo *pki_DigestInfo_clone(const DigestInfo *pElement);

#ifdef __cplusplus
}
#endif

#endif
