/**
 * @file rfc3779.h
 * The addresses and autonomous system numbers of certificates (RFC 3779), in the functions that
 * rfc5280.h describes.
 */
#ifndef ORVELPKI_RFC3779_H
#define ORVELPKI_RFC3779_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -------------------------------------------------------------------------------------------- */
/* Blocks of addresses (RFC 3779, 2)                                                            */
/* -------------------------------------------------------------------------------------------- */

/** IPAddressRange ::= SEQUENCE { min IPAddress, max IPAddress }. */
typedef struct pki_IPAddressRange {
  BitString *min; /**< without the zero bits at its end, owned */
  BitString *max; /**< without the one bits at its end, owned */
} pki_IPAddressRange;

/**
 * IPAddressOrRange ::= CHOICE { addressPrefix IPAddress, addressRange IPAddressRange }. `kind` is
 * the number of the universal tag.
 */
typedef struct pki_IPAddressOrRange {
  uint8_t kind; /**< 3: addressPrefix; 16: addressRange */
  void *value;  /**< a BitString or a pki_IPAddressRange, owned */
} pki_IPAddressOrRange;

/**
 * IPAddressChoice ::= CHOICE { inherit NULL, addressesOrRanges SEQUENCE OF IPAddressOrRange }.
 * `kind` is the number of the universal tag.
 */
typedef struct pki_IPAddressChoice {
  uint8_t kind; /**< 5: inherit; 16: addressesOrRanges */
  void *value;  /**< NULL, or a List of pki_IPAddressOrRange records, owned */
} pki_IPAddressChoice;

/**
 * IPAddressFamily ::= SEQUENCE { addressFamily OCTET STRING, ipAddressChoice IPAddressChoice }.
 */
typedef struct pki_IPAddressFamily {
  OctetString *addressFamily;           /**< 00 01 for IPv4, 00 02 for IPv6, owned */
  pki_IPAddressChoice *ipAddressChoice; /**< owned */
} pki_IPAddressFamily;

/**
 * IPAddrBlocks ::= SEQUENCE OF IPAddressFamily (2.2.3.1), the extension 1.3.6.1.5.5.7.1.7: a List
 * of pki_IPAddressFamily records.
 */
void pki_IPAddrBlocks_free(List *pElement);
uint32_t pki_IPAddrBlocks_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_IPAddrBlocks_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  List **ppElement, uint32_t depth);
List *pki_IPAddrBlocks_clone(const List *pElement);

/** IPAddressFamily (2.2.3.2). */
pki_IPAddressFamily *pki_IPAddressFamily_new(void);
void pki_IPAddressFamily_free(pki_IPAddressFamily *pElement);
uint32_t pki_IPAddressFamily_e(uint8_t **pp, const pki_IPAddressFamily *pElement);
const uint8_t *pki_IPAddressFamily_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     pki_IPAddressFamily **ppElement, uint32_t depth);
pki_IPAddressFamily *pki_IPAddressFamily_clone(const pki_IPAddressFamily *pElement);

/** IPAddressChoice (2.2.3.4). */
pki_IPAddressChoice *pki_IPAddressChoice_new(void);
void pki_IPAddressChoice_free(pki_IPAddressChoice *pElement);
uint32_t pki_IPAddressChoice_e(uint8_t **pp, const pki_IPAddressChoice *pElement);
const uint8_t *pki_IPAddressChoice_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     pki_IPAddressChoice **ppElement, uint32_t depth);
pki_IPAddressChoice *pki_IPAddressChoice_clone(const pki_IPAddressChoice *pElement);

/** IPAddressOrRange (2.2.3.7). */
pki_IPAddressOrRange *pki_IPAddressOrRange_new(void);
void pki_IPAddressOrRange_free(pki_IPAddressOrRange *pElement);
uint32_t pki_IPAddressOrRange_e(uint8_t **pp, const pki_IPAddressOrRange *pElement);
const uint8_t *pki_IPAddressOrRange_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      pki_IPAddressOrRange **ppElement, uint32_t depth);
pki_IPAddressOrRange *pki_IPAddressOrRange_clone(const pki_IPAddressOrRange *pElement);

/** IPAddressRange (2.2.3.9). */
pki_IPAddressRange *pki_IPAddressRange_new(void);
void pki_IPAddressRange_free(pki_IPAddressRange *pElement);
uint32_t pki_IPAddressRange_e(uint8_t **pp, const pki_IPAddressRange *pElement);
const uint8_t *pki_IPAddressRange_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    pki_IPAddressRange **ppElement, uint32_t depth);
pki_IPAddressRange *pki_IPAddressRange_clone(const pki_IPAddressRange *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Autonomous system numbers (RFC 3779, 3)                                                      */
/* -------------------------------------------------------------------------------------------- */

/** ASRange ::= SEQUENCE { min ASId, max ASId }. */
typedef struct pki_ASRange {
  Integer *min; /**< owned */
  Integer *max; /**< owned */
} pki_ASRange;

/**
 * ASIdOrRange ::= CHOICE { id ASId, range ASRange }. `kind` is the number of the universal tag.
 */
typedef struct pki_ASIdOrRange {
  uint8_t kind; /**< 2: id; 16: range */
  void *value;  /**< an Integer or a pki_ASRange, owned */
} pki_ASIdOrRange;

/**
 * ASIdentifierChoice ::= CHOICE { inherit NULL, asIdsOrRanges SEQUENCE OF ASIdOrRange }. `kind` is
 * the number of the universal tag.
 */
typedef struct pki_ASIdentifierChoice {
  uint8_t kind; /**< 5: inherit; 16: asIdsOrRanges */
  void *value;  /**< NULL, or a List of pki_ASIdOrRange records, owned */
} pki_ASIdentifierChoice;

/**
 * ASIdentifiers ::= SEQUENCE { asnum [0] EXPLICIT ASIdentifierChoice OPTIONAL, rdi [1] EXPLICIT
 * ASIdentifierChoice OPTIONAL }.
 */
typedef struct pki_ASIdentifiers {
  pki_ASIdentifierChoice *asnum; /**< owned, or NULL */
  pki_ASIdentifierChoice *rdi;   /**< owned, or NULL */
} pki_ASIdentifiers;

/** ASIdentifiers (3.2.3.1), the extension 1.3.6.1.5.5.7.1.8. */
pki_ASIdentifiers *pki_ASIdentifiers_new(void);
void pki_ASIdentifiers_free(pki_ASIdentifiers *pElement);
uint32_t pki_ASIdentifiers_e(uint8_t **pp, const pki_ASIdentifiers *pElement);
const uint8_t *pki_ASIdentifiers_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   pki_ASIdentifiers **ppElement, uint32_t depth);
pki_ASIdentifiers *pki_ASIdentifiers_clone(const pki_ASIdentifiers *pElement);

/** ASIdentifierChoice (3.2.3.3). */
pki_ASIdentifierChoice *pki_ASIdentifierChoice_new(void);
void pki_ASIdentifierChoice_free(pki_ASIdentifierChoice *pElement);
uint32_t pki_ASIdentifierChoice_e(uint8_t **pp, const pki_ASIdentifierChoice *pElement);
const uint8_t *pki_ASIdentifierChoice_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        pki_ASIdentifierChoice **ppElement, uint32_t depth);
pki_ASIdentifierChoice *pki_ASIdentifierChoice_clone(const pki_ASIdentifierChoice *pElement);

/** ASIdOrRange (3.2.3.6). */
pki_ASIdOrRange *pki_ASIdOrRange_new(void);
void pki_ASIdOrRange_free(pki_ASIdOrRange *pElement);
uint32_t pki_ASIdOrRange_e(uint8_t **pp, const pki_ASIdOrRange *pElement);
const uint8_t *pki_ASIdOrRange_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 pki_ASIdOrRange **ppElement, uint32_t depth);
pki_ASIdOrRange *pki_ASIdOrRange_clone(const pki_ASIdOrRange *pElement);

/** ASRange (3.2.3.8). */
pki_ASRange *pki_ASRange_new(void);
void pki_ASRange_free(pki_ASRange *pElement);
uint32_t pki_ASRange_e(uint8_t **pp, const pki_ASRange *pElement);
const uint8_t *pki_ASRange_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             pki_ASRange **ppElement, uint32_t depth);
pki_ASRange *pki_ASRange_clone(const pki_ASRange *pElement);

#ifdef __cplusplus
}
#endif

#endif
