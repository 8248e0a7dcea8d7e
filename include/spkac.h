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

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
PublicKeyAndChallenge *asn1_PublicKeyAndChallenge_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_PublicKeyAndChallenge_free(PublicKeyAndChallenge *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_PublicKeyAndChallenge_e(uint8_t **pp, const PublicKeyAndChallenge *pElement);
/**
 * Gives the cursor behind the last field of the PublicKeyAndChallenge that was recognised, or NULL.
 */
const uint8_t *asn1_PublicKeyAndChallenge_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            PublicKeyAndChallenge **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
PublicKeyAndChallenge *asn1_PublicKeyAndChallenge_clone(const PublicKeyAndChallenge *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
SignedPublicKeyAndChallenge *asn1_SignedPublicKeyAndChallenge_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_SignedPublicKeyAndChallenge_free(SignedPublicKeyAndChallenge *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails. Where
 * `tbsEncoded` is set it only measures: with `pp` it gives 0 and writes nothing. Release that field
 * and set it to NULL to write.
 */
uint32_t asn1_SignedPublicKeyAndChallenge_e(uint8_t **pp,
                                            const SignedPublicKeyAndChallenge *pElement);
/**
 * Gives the cursor behind the last field of the SignedPublicKeyAndChallenge that was recognised, or
 * NULL.
 */
const uint8_t *asn1_SignedPublicKeyAndChallenge_d(const uint8_t *z, const uint8_t *end,
                                                  uint32_t impl_tag,
                                                  SignedPublicKeyAndChallenge **ppElement,
                                                  uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
SignedPublicKeyAndChallenge *asn1_SignedPublicKeyAndChallenge_clone(
    const SignedPublicKeyAndChallenge *pElement);

#ifdef __cplusplus
}
#endif

#endif
