/**
 * @file pkcs8.h
 * Private keys (PKCS #8, RFC 5208).
 */
#ifndef ORVELASN1_PKCS8_H
#define ORVELASN1_PKCS8_H

#include "pkcs9.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * PrivateKeyInfo ::= SEQUENCE { version INTEGER, privateKeyAlgorithm, privateKey OCTET STRING,
 * attributes [0] IMPLICIT SET OF Attribute OPTIONAL }.
 */
typedef struct PrivateKeyInfo {
  Integer *version;           /**< owned */
  AlgId *privateKeyAlgorithm; /**< owned */
  OctetString *privateKey;    /**< the key in the encoding of its algorithm, not decoded; owned */
  List *attributes;           /**< Attribute records, owned; NULL where absent */
} PrivateKeyInfo;

/** EncryptedPrivateKeyInfo ::= SEQUENCE { encryptionAlgorithm, encryptedData OCTET STRING }. */
typedef struct EncryptedPrivateKeyInfo {
  AlgId *encryptionAlgorithm; /**< owned */
  OctetString *encryptedData; /**< owned */
} EncryptedPrivateKeyInfo;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
PrivateKeyInfo *asn1_PrivateKeyInfo_new(void);
/** Releases the record and what it owns, without wiping it. NULL is ignored. */
void asn1_PrivateKeyInfo_free(PrivateKeyInfo *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_PrivateKeyInfo_e(uint8_t **pp, const PrivateKeyInfo *pElement);
/**
 * Decodes a PrivateKeyInfo. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_PrivateKeyInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     PrivateKeyInfo **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
PrivateKeyInfo *asn1_PrivateKeyInfo_clone(const PrivateKeyInfo *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
EncryptedPrivateKeyInfo *asn1_EncryptedPrivateKeyInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_EncryptedPrivateKeyInfo_free(EncryptedPrivateKeyInfo *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_EncryptedPrivateKeyInfo_e(uint8_t **pp, const EncryptedPrivateKeyInfo *pElement);
/**
 * Decodes an EncryptedPrivateKeyInfo. Returns the cursor past the last field that it recognises, or
 * NULL.
 */
const uint8_t *asn1_EncryptedPrivateKeyInfo_d(const uint8_t *z, const uint8_t *end,
                                              uint32_t impl_tag,
                                              EncryptedPrivateKeyInfo **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
EncryptedPrivateKeyInfo *asn1_EncryptedPrivateKeyInfo_clone(
    const EncryptedPrivateKeyInfo *pElement);

#ifdef __cplusplus
}
#endif

#endif
