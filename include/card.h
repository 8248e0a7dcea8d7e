/**
 * @file card.h
 * Two flat records of a smart card.
 */
#ifndef ORVELASN1_CARD_H
#define ORVELASN1_CARD_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** CardInfo ::= SEQUENCE of six OCTET STRINGs, whose meaning is the caller's. */
typedef struct CardInfo {
  OctetString *octets1; /**< owned */
  OctetString *octets2; /**< owned */
  OctetString *octets3; /**< owned */
  OctetString *octets4; /**< owned */
  OctetString *octets5; /**< owned */
  OctetString *octets6; /**< owned */
} CardInfo;

/** PublicKeyMAC ::= SEQUENCE of two OCTET STRINGs, whose meaning is the caller's. */
typedef struct PublicKeyMAC {
  OctetString *octets1; /**< owned */
  OctetString *octets2; /**< owned */
} PublicKeyMAC;

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
CardInfo *asn1_CardInfo_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_CardInfo_free(CardInfo *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_CardInfo_e(uint8_t **pp, const CardInfo *pElement);
/** Gives the cursor behind the last field of the CardInfo that was recognised, or NULL. */
const uint8_t *asn1_CardInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               CardInfo **ppElement, uint32_t depth);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
PublicKeyMAC *asn1_PublicKeyMAC_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_PublicKeyMAC_free(PublicKeyMAC *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_PublicKeyMAC_e(uint8_t **pp, const PublicKeyMAC *pElement);
/** Gives the cursor behind the last field of the PublicKeyMAC that was recognised, or NULL. */
const uint8_t *asn1_PublicKeyMAC_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   PublicKeyMAC **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
PublicKeyMAC *asn1_PublicKeyMAC_clone(const PublicKeyMAC *pElement);

#ifdef __cplusplus
}
#endif

#endif
