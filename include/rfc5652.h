/**
 * @file rfc5652.h
 * Cryptographic messages (CMS, RFC 5652), and those of PKCS #7 (RFC 2315). rfc5280.h says what the
 * functions promise.
 *
 * Nothing is signed, verified or decrypted.
 */
#ifndef ORVELPKI_RFC5652_H
#define ORVELPKI_RFC5652_H

#include "pkcs7.h"
#include "rfc5280.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -------------------------------------------------------------------------------------------- */
/* Attributes                                                                                   */
/* -------------------------------------------------------------------------------------------- */

/**
 * Attribute ::= SEQUENCE { attrType OBJECT IDENTIFIER, attrValues SET OF AttributeValue } (5.3),
 * also
 * of RFC 5280, appendix A.1, and RFC 2986, 4.1. Each value is an Any: one whole element.
 */
Attribute *pki_Attribute_new(void);
void pki_Attribute_free(Attribute *pElement);
uint32_t pki_Attribute_e(uint8_t **pp, const Attribute *pElement);
const uint8_t *pki_Attribute_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Attribute **ppElement, uint32_t depth);
Attribute *pki_Attribute_clone(const Attribute *pElement);

#ifdef __cplusplus
}
#endif

#endif
