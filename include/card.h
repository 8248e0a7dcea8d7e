/**
 * @file card.h
 * Two records of a smart card, whose fields are octets without structure.
 */
#ifndef ORVELASN1_CARD_H
#define ORVELASN1_CARD_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** CardInfo ::= SEQUENCE of six OCTET STRINGs. The caller decides what they mean. */
typedef struct CardInfo {
  OctetString *octets1; /**< owned */
  OctetString *octets2; /**< owned */
  OctetString *octets3; /**< owned */
  OctetString *octets4; /**< owned */
  OctetString *octets5; /**< owned */
  OctetString *octets6; /**< owned */
} CardInfo;

/** PublicKeyMAC ::= SEQUENCE of two OCTET STRINGs. The caller decides what they mean. */
typedef struct PublicKeyMAC {
  OctetString *octets1; /**< owned */
  OctetString *octets2; /**< owned */
} PublicKeyMAC;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
CardInfo *asn1_CardInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_CardInfo_free(CardInfo *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_CardInfo_e(uint8_t **pp, const CardInfo *pElement);
/** Decodes a CardInfo. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_CardInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               CardInfo **ppElement, uint32_t depth);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
PublicKeyMAC *asn1_PublicKeyMAC_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_PublicKeyMAC_free(PublicKeyMAC *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_PublicKeyMAC_e(uint8_t **pp, const PublicKeyMAC *pElement);
/** Decodes a PublicKeyMAC. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_PublicKeyMAC_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   PublicKeyMAC **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
PublicKeyMAC *asn1_PublicKeyMAC_clone(const PublicKeyMAC *pElement);

#ifdef __cplusplus
}
#endif

#endif
