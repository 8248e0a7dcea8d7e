/**
 * @file pki_crl.h
 * Certificate revocation lists of any size, entry by entry: the list stays where it is, and nothing
 * is allocated. The views are those of pki_view.h.
 */
#ifndef ORVELPKI_CRL_H
#define ORVELPKI_CRL_H

#include <stdint.h>

#include "pki_view.h"

#ifdef __cplusplus
extern "C" {
#endif

/** A revocation list that is read (RFC 5280, 5.1). The members up to `extensions` are for the
 * caller. */
typedef struct pki_CrlReader {
  pki_Octets tbsCertList;         /**< what is signed */
  pki_Octets signatureAlgorithm;  /**< the outer AlgorithmIdentifier */
  pki_Octets signatureValue;      /**< a BIT STRING */
  pki_Octets version;             /**< an INTEGER, or none */
  pki_Octets signature;           /**< the inner AlgorithmIdentifier */
  pki_Octets issuer;              /**< a Name */
  pki_Octets thisUpdate;          /**< a Time */
  pki_Octets nextUpdate;          /**< a Time, or none */
  pki_Octets revokedCertificates; /**< a SEQUENCE OF entries, or none */
  pki_Octets extensions;          /**< [0], around a SEQUENCE OF Extension; or none */
  pki_Octets rest;                /**< entries that were not read yet; the reader's own */
} pki_CrlReader;

enum {
  /** No reason is given, or none that is an ENUMERATED of one octet. */
  PKI_NO_REASON = -1
};

/** An entry of a revocation list. */
typedef struct pki_CrlEntry {
  pki_Octets serialNumber;   /**< the content of the INTEGER, in two's complement */
  pki_Octets revocationDate; /**< the content of the time, its characters */
  pki_Octets extensions;     /**< a SEQUENCE OF Extension, or none */
  int64_t revoked; /**< the same date in seconds since 1970 in UTC; 0 where it is no time */
  int32_t reason;  /**< CRLReason (5.3.1), or PKI_NO_REASON */
} pki_CrlEntry;

/**
 * Opens the revocation list at `z`. Returns 1, or 0 where the octets up to `end` are none. The
 * reader owns nothing, and needs no closing.
 */
int32_t pki_crl_open(pki_CrlReader *reader, const uint8_t *z, const uint8_t *end);

/**
 * Reads the next entry. Returns 1; 0 past the last one; -1 where the octets there are no entry, and
 * then the reader stays in front of them.
 */
int32_t pki_crl_next(pki_CrlReader *reader, pki_CrlEntry *entry);

/**
 * Finds the entry of a serial number, given as the content octets of its INTEGER in the shortest
 * form (X.690, 8.3.2), from the first entry on, wherever pki_crl_next() is. Returns 1; 0 where no
 * entry has the number; -1 where the octets up to there are no list of entries. The time is linear
 * in the list.
 */
int32_t pki_crl_find(const pki_CrlReader *reader, const uint8_t *serial, uint32_t length,
                     pki_CrlEntry *entry);

#ifdef __cplusplus
}
#endif

#endif
