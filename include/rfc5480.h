/**
 * @file rfc5480.h
 * Parameters of elliptic-curve keys, and their signatures (RFC 5480, RFC 3279). rfc5280.h says what
 * the functions promise.
 */
#ifndef ORVELPKI_RFC5480_H
#define ORVELPKI_RFC5480_H

#include "rfc5280.h"

#ifdef __cplusplus
extern "C" {
#endif

/** ECParameters. */
typedef struct pki_ECParameters {
  uint8_t kind; /**< 6, 5 or 16 */
  void *value;  /**< owned */
} pki_ECParameters;

/** ECDSA-Sig-Value. */
typedef struct pki_ECDSA_Sig_Value {
  Integer *r; /**< owned */
  Integer *s; /**< owned */
} pki_ECDSA_Sig_Value;

/**
 * ECParameters ::= CHOICE (2.1.1). `kind` is the number of the tag, and says what `value` points
 * to:
 *
 * | kind | alternative | value |
 * |---|---|---|
 * | 6 | namedCurve | ObjId |
 * | 5 | implicitCurve | nothing: NULL |
 * | 16 | specifiedCurve | Any: the whole SpecifiedECDomain |
 */
pki_ECParameters *pki_ECParameters_new(void);
void pki_ECParameters_free(pki_ECParameters *pElement);
uint32_t pki_ECParameters_e(uint8_t **pp, const pki_ECParameters *pElement);
const uint8_t *pki_ECParameters_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  pki_ECParameters **ppElement, uint32_t depth);
pki_ECParameters *pki_ECParameters_clone(const pki_ECParameters *pElement);

/**
 * ECDSA-Sig-Value ::= SEQUENCE { r INTEGER, s INTEGER } (appendix A), in the BIT STRING of a
 * signature.
 */
pki_ECDSA_Sig_Value *pki_ECDSA_Sig_Value_new(void);
void pki_ECDSA_Sig_Value_free(pki_ECDSA_Sig_Value *pElement);
uint32_t pki_ECDSA_Sig_Value_e(uint8_t **pp, const pki_ECDSA_Sig_Value *pElement);
const uint8_t *pki_ECDSA_Sig_Value_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     pki_ECDSA_Sig_Value **ppElement, uint32_t depth);
pki_ECDSA_Sig_Value *pki_ECDSA_Sig_Value_clone(const pki_ECDSA_Sig_Value *pElement);

#ifdef __cplusplus
}
#endif

#endif
