/**
 * @file rfc7633.h
 * The TLS feature extension of certificates (RFC 7633), in the functions that rfc5280.h
 * describes.
 */
#ifndef ORVELPKI_RFC7633_H
#define ORVELPKI_RFC7633_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -------------------------------------------------------------------------------------------- */
/* The TLS feature extension                                                                    */
/* -------------------------------------------------------------------------------------------- */

/**
 * Features ::= SEQUENCE OF INTEGER (RFC 7633, 4.1), the extension 1.3.6.1.5.5.7.1.24: a List of
 * Integer records, each the number of a TLS extension.
 */
void pki_Features_free(List *pElement);
uint32_t pki_Features_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_Features_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              List **ppElement, uint32_t depth);
List *pki_Features_clone(const List *pElement);

#ifdef __cplusplus
}
#endif

#endif
