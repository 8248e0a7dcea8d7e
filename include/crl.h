/**
 * @file crl.h
 * X.509 certificate revocation lists (RFC 5280, 5.1).
 *
 * A decoded CRL keeps, beside the decoded fields, the octets that its signature covers
 * (`tbsEncoded`) and those of its issuer (`issuerEncoded`). Where these octets are set, the
 * encoders write them and ignore the decoded form. Release them and set them to NULL before you
 * change the decoded form.
 */
#ifndef ORVELASN1_CRL_H
#define ORVELASN1_CRL_H

#include "certificate.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * CRLEntry ::= SEQUENCE { userCertificate INTEGER, revocationDate Time, crlEntryExtensions
 * Extensions OPTIONAL }.
 */
typedef struct CRLEntry {
  Integer *userCertificate;       /**< the revoked serial number, owned */
  Time *revocationDate;           /**< owned */
  Extensions *crlEntryExtensions; /**< owned; NULL where absent */
} CRLEntry;

/** TBSCertList: what the signature of a CRL covers. */
typedef struct CertificateList_TBS {
  Integer *version;            /**< owned; NULL where absent */
  AlgId *signature;            /**< the inner algorithm, owned */
  RDNSequence *issuerSequence; /**< owned, or NULL */
  Name *issuer;                /**< owned, or NULL */
  OctetString *issuerEncoded;  /**< the element as read, header included; owned, or NULL */
  Time *thisUpdate;            /**< owned */
  Time *nextUpdate;            /**< owned; NULL where absent */
  List *revokedCertificates;   /**< CRLEntry records, owned; NULL where absent */
  Extensions *crlExtensions;   /**< owned; NULL where absent */
} CertificateList_TBS;

/** CertificateList ::= SEQUENCE { tbsCertList, signatureAlgorithm, signatureValue BIT STRING }. */
typedef struct CertificateRevocationList {
  OctetString *tbsEncoded; /**< the signed element as read, header included; owned, or NULL */
  CertificateList_TBS *tbsCertList; /**< the same, decoded; owned */
  AlgId *signatureAlgorithm;        /**< the outer algorithm, owned */
  BitString *signatureValue;        /**< owned */
} CertificateRevocationList;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
CRLEntry *asn1_CRLEntry_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_CRLEntry_free(CRLEntry *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_CRLEntry_e(uint8_t **pp, const CRLEntry *pElement);
/** Decodes a CRLEntry. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_CRLEntry_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               CRLEntry **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for a time of unknown kind in
 * the record, or when memory is exhausted.
 */
CRLEntry *asn1_CRLEntry_clone(const CRLEntry *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
CertificateList_TBS *asn1_CertificateList_TBS_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_CertificateList_TBS_free(CertificateList_TBS *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. The
 * issuer is written from its encoded form; without that, from its sequence; without both, from its
 * text.
 */
uint32_t asn1_CertificateList_TBS_e(uint8_t **pp, const CertificateList_TBS *pElement);
/**
 * Decodes a TBSCertList. Returns the cursor past the last field that it recognises, or NULL. An
 * empty issuer fails. Extensions need no version. A value in the issuer under an identifier octet
 * of 100 or more ends the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_CertificateList_TBS_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          CertificateList_TBS **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for a time of unknown kind in
 * the record, or when memory is exhausted.
 */
CertificateList_TBS *asn1_CertificateList_TBS_clone(const CertificateList_TBS *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
CertificateRevocationList *asn1_CertificateRevocationList_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_CertificateRevocationList_free(CertificateRevocationList *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. The
 * signed part is written from `tbsEncoded` or, without that, from `tbsCertList`.
 */
uint32_t asn1_CertificateRevocationList_e(uint8_t **pp, const CertificateRevocationList *pElement);
/**
 * Decodes a CertificateList. Returns the cursor past the signature, or NULL. A value in the issuer
 * under an identifier octet of 100 or more ends the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_CertificateRevocationList_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                CertificateRevocationList **ppElement,
                                                uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for a time of unknown kind in
 * the record, or when memory is exhausted.
 */
CertificateRevocationList *asn1_CertificateRevocationList_clone(
    const CertificateRevocationList *pElement);

#ifdef __cplusplus
}
#endif

#endif
