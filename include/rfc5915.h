/**
 * @file rfc5915.h
 * Elliptic-curve private keys (RFC 5915). rfc5280.h says what the functions promise.
 */
#ifndef ORVELPKI_RFC5915_H
#define ORVELPKI_RFC5915_H

#include "rfc5480.h"

#ifdef __cplusplus
extern "C" {
#endif

/** ECPrivateKey. */
typedef struct pki_ECPrivateKey {
  Integer *version;             /**< owned */
  OctetString *privateKey;      /**< owned; its octets are zeroed before it is released */
  pki_ECParameters *parameters; /**< owned; NULL where absent */
  BitString *publicKey;         /**< owned; NULL where absent */
} pki_ECPrivateKey;

/**
 * ECPrivateKey ::= SEQUENCE { version INTEGER, privateKey OCTET STRING, parameters [0] EXPLICIT
 * ECParameters OPTIONAL, publicKey [1] EXPLICIT BIT STRING OPTIONAL } (3).
 */
pki_ECPrivateKey *pki_ECPrivateKey_new(void);
void pki_ECPrivateKey_free(pki_ECPrivateKey *pElement);
uint32_t pki_ECPrivateKey_e(uint8_t **pp, const pki_ECPrivateKey *pElement);
const uint8_t *pki_ECPrivateKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  pki_ECPrivateKey **ppElement, uint32_t depth);
pki_ECPrivateKey *pki_ECPrivateKey_clone(const pki_ECPrivateKey *pElement);

#ifdef __cplusplus
}
#endif

#endif
