/**
 * @file spkac.h
 * The signed public key and challenge of browser key enrolment.
 */
#ifndef ORVELASN1_SPKAC_H
#define ORVELASN1_SPKAC_H

#include "certificate.h"

#ifdef __cplusplus
extern "C" {
#endif

/** PublicKeyAndChallenge ::= SEQUENCE { spki SubjectPublicKeyInfo, challenge IA5String }. */
typedef struct PublicKeyAndChallenge {
  SubjectPKI *spki;     /**< owned */
  IA5String *challenge; /**< owned */
} PublicKeyAndChallenge;

/**
 * SignedPublicKeyAndChallenge ::= SEQUENCE { publicKeyAndChallenge, signatureAlgorithm, signature
 * BIT STRING }.
 */
typedef struct SignedPublicKeyAndChallenge {
  PublicKeyAndChallenge *publicKeyAndChallenge; /**< owned */
  OctetString *tbsEncoded;   /**< the signed element as read, header included; owned, or NULL */
  AlgId *signatureAlgorithm; /**< owned */
  BitString *signature;      /**< owned */
} SignedPublicKeyAndChallenge;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
PublicKeyAndChallenge *asn1_PublicKeyAndChallenge_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_PublicKeyAndChallenge_free(PublicKeyAndChallenge *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_PublicKeyAndChallenge_e(uint8_t **pp, const PublicKeyAndChallenge *pElement);
/**
 * Decodes a PublicKeyAndChallenge. Returns the cursor past the last field that it recognises, or
 * NULL.
 */
const uint8_t *asn1_PublicKeyAndChallenge_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            PublicKeyAndChallenge **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
PublicKeyAndChallenge *asn1_PublicKeyAndChallenge_clone(const PublicKeyAndChallenge *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
SignedPublicKeyAndChallenge *asn1_SignedPublicKeyAndChallenge_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_SignedPublicKeyAndChallenge_free(SignedPublicKeyAndChallenge *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 when a field fails.
 * Where `tbsEncoded` is set the function only measures: with `pp` it writes nothing and returns 0.
 * To write, first release that field and set it to NULL.
 */
uint32_t asn1_SignedPublicKeyAndChallenge_e(uint8_t **pp,
                                            const SignedPublicKeyAndChallenge *pElement);
/**
 * Decodes a SignedPublicKeyAndChallenge. Returns the cursor past the last field that it recognises,
 * or NULL.
 */
const uint8_t *asn1_SignedPublicKeyAndChallenge_d(const uint8_t *z, const uint8_t *end,
                                                  uint32_t impl_tag,
                                                  SignedPublicKeyAndChallenge **ppElement,
                                                  uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
SignedPublicKeyAndChallenge *asn1_SignedPublicKeyAndChallenge_clone(
    const SignedPublicKeyAndChallenge *pElement);

#ifdef __cplusplus
}
#endif

#endif
