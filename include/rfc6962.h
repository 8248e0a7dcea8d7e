/**
 * @file rfc6962.h
 * Lists of signed certificate timestamps (RFC 6962), in the functions that rfc5280.h describes.
 */
#ifndef ORVELPKI_RFC6962_H
#define ORVELPKI_RFC6962_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * SignedCertificateTimestamp (3.2). Of a version other than v1 only `version` and `opaque` are
 * used.
 */
typedef struct pki_SignedCertificateTimestamp {
  uint8_t version;            /**< 0: v1 */
  uint8_t hashAlgorithm;      /**< of the signature (RFC 5246, 7.4.1.4.1) */
  uint8_t signatureAlgorithm; /**< of the signature (RFC 5246, 7.4.1.4.1) */
  uint8_t logID[32];          /**< the SHA-256 hash of the log's public key */
  uint64_t timestamp;         /**< milliseconds since 1970 in UTC, without leap seconds */
  OctetString *extensions;    /**< owned, or NULL where there are none */
  OctetString *signature;     /**< owned */
  OctetString *opaque;        /**< what follows another version, owned; NULL for v1 */
} pki_SignedCertificateTimestamp;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
pki_SignedCertificateTimestamp *pki_SignedCertificateTimestamp_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void pki_SignedCertificateTimestamp_free(pki_SignedCertificateTimestamp *pElement);
/** Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
pki_SignedCertificateTimestamp *pki_SignedCertificateTimestamp_clone(
    const pki_SignedCertificateTimestamp *pElement);

/**
 * SignedCertificateTimestampList ::= OCTET STRING (3.3), the extension 1.3.6.1.4.1.11129.2.4.2 of
 * a certificate and 1.3.6.1.4.1.11129.2.4.5 of an OCSP response: a List of
 * pki_SignedCertificateTimestamp records.
 *
 * The content is in the encoding of TLS. Neither the list nor an element is empty, each has fewer
 * than 2^16 octets, and each element is used up. A string in segments is refused.
 */
void pki_SignedCertificateTimestampList_free(List *pElement);
uint32_t pki_SignedCertificateTimestampList_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_SignedCertificateTimestampList_d(const uint8_t *z, const uint8_t *end,
                                                    uint32_t impl_tag, List **ppElement,
                                                    uint32_t depth);
List *pki_SignedCertificateTimestampList_clone(const List *pElement);

#ifdef __cplusplus
}
#endif

#endif
