/**
 * @file rfc5958.h
 * Private keys (RFC 5958), which takes the place of PKCS #8 (RFC 5208). rfc5280.h says what the
 * functions promise.
 */
#ifndef ORVELPKI_RFC5958_H
#define ORVELPKI_RFC5958_H

#include "pkcs8.h"
#include "rfc5652.h"

#ifdef __cplusplus
extern "C" {
#endif

/** OneAsymmetricKey. */
typedef struct pki_OneAsymmetricKey {
  Integer *version;           /**< owned: 0, or 1 with a public key */
  AlgId *privateKeyAlgorithm; /**< owned */
  OctetString *privateKey;    /**< the key in the encoding of its algorithm, not decoded; owned; its
                                 octets are zeroed before it is released */
  List *attributes;           /**< Attribute records, owned; NULL where absent */
  BitString *publicKey;       /**< owned; NULL where absent */
} pki_OneAsymmetricKey;

/**
 * OneAsymmetricKey ::= SEQUENCE { version INTEGER, privateKeyAlgorithm AlgorithmIdentifier,
 * privateKey OCTET STRING, attributes [0] IMPLICIT SET OF Attribute OPTIONAL, publicKey [1]
 * IMPLICIT BIT STRING OPTIONAL } (2). PrivateKeyInfo is the same.
 *
 * What privateKey holds: a pki_RSAPrivateKey for rsaEncryption, a pki_ECPrivateKey for id-
 * ecPublicKey, an OCTET STRING for the algorithms of RFC 8410 such as Ed25519.
 */
pki_OneAsymmetricKey *pki_OneAsymmetricKey_new(void);
void pki_OneAsymmetricKey_free(pki_OneAsymmetricKey *pElement);
uint32_t pki_OneAsymmetricKey_e(uint8_t **pp, const pki_OneAsymmetricKey *pElement);
const uint8_t *pki_OneAsymmetricKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      pki_OneAsymmetricKey **ppElement, uint32_t depth);
pki_OneAsymmetricKey *pki_OneAsymmetricKey_clone(const pki_OneAsymmetricKey *pElement);

/**
 * EncryptedPrivateKeyInfo ::= SEQUENCE { encryptionAlgorithm AlgorithmIdentifier, encryptedData
 * OCTET STRING } (3). What was encrypted is a OneAsymmetricKey.
 */
EncryptedPrivateKeyInfo *pki_EncryptedPrivateKeyInfo_new(void);
void pki_EncryptedPrivateKeyInfo_free(EncryptedPrivateKeyInfo *pElement);
uint32_t pki_EncryptedPrivateKeyInfo_e(uint8_t **pp, const EncryptedPrivateKeyInfo *pElement);
const uint8_t *pki_EncryptedPrivateKeyInfo_d(const uint8_t *z, const uint8_t *end,
                                             uint32_t impl_tag, EncryptedPrivateKeyInfo **ppElement,
                                             uint32_t depth);
EncryptedPrivateKeyInfo *pki_EncryptedPrivateKeyInfo_clone(const EncryptedPrivateKeyInfo *pElement);

#ifdef __cplusplus
}
#endif

#endif
