/**
 * @file crl.h
 * X.509 certificate revocation lists (RFC 5280, 5.1).
 *
 * A decoded CRL keeps as octets what its signature covers (`tbsEncoded`) and the issuer as it came
 * (`issuerEncoded`); the encoders write these where they are set. Release them and set them to NULL
 * before you change the decoded form.
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
  Extensions *crlEntryExtensions; /**< owned; NULL where the field is not there */
} CRLEntry;

/** TBSCertList: what the signature of a CRL covers. */
typedef struct CertificateList_TBS {
  Integer *version;            /**< owned; NULL where the field is not there */
  AlgId *signature;            /**< the inner algorithm, owned */
  RDNSequence *issuerSequence; /**< owned, or NULL */
  Name *issuer;                /**< owned, or NULL */
  OctetString *issuerEncoded;  /**< the element as read, header included; owned, or NULL */
  Time *thisUpdate;            /**< owned */
  Time *nextUpdate;            /**< owned; NULL where the field is not there */
  List *revokedCertificates;   /**< CRLEntry records, owned; NULL where the field is not there */
  Extensions *crlExtensions;   /**< owned; NULL where the field is not there */
} CertificateList_TBS;

/** CertificateList ::= SEQUENCE { tbsCertList, signatureAlgorithm, signatureValue BIT STRING }. */
typedef struct CertificateRevocationList {
  OctetString *tbsEncoded; /**< the signed element as read, header included; owned, or NULL */
  CertificateList_TBS *tbsCertList; /**< the same, decoded; owned */
  AlgId *signatureAlgorithm;        /**< the outer algorithm, owned */
  BitString *signatureValue;        /**< owned */
} CertificateRevocationList;

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
CRLEntry *asn1_CRLEntry_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_CRLEntry_free(CRLEntry *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_CRLEntry_e(uint8_t **pp, const CRLEntry *pElement);
/** Gives the cursor behind the last field of the CRLEntry that was recognised, or NULL. */
const uint8_t *asn1_CRLEntry_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               CRLEntry **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, a time of unknown kind in it, or when
 * memory is exhausted.
 */
CRLEntry *asn1_CRLEntry_clone(const CRLEntry *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
CertificateList_TBS *asn1_CertificateList_TBS_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_CertificateList_TBS_free(CertificateList_TBS *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails. The
 * issuer is written from its encoded form, else from its sequence, else from its text.
 */
uint32_t asn1_CertificateList_TBS_e(uint8_t **pp, const CertificateList_TBS *pElement);
/**
 * Gives the cursor behind the last field that was recognised, or NULL. An empty issuer fails. A
 * version is not needed for extensions. A value in the issuer under an identifier octet of 100 or
 * more ends the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_CertificateList_TBS_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          CertificateList_TBS **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, a time of unknown kind in it, or when
 * memory is exhausted.
 */
CertificateList_TBS *asn1_CertificateList_TBS_clone(const CertificateList_TBS *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
CertificateRevocationList *asn1_CertificateRevocationList_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_CertificateRevocationList_free(CertificateRevocationList *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails. The
 * signed part is written from `tbsEncoded`, else from `tbsCertList`.
 */
uint32_t asn1_CertificateRevocationList_e(uint8_t **pp, const CertificateRevocationList *pElement);
/**
 * Gives the cursor behind the signature, or NULL. A value in the issuer under an identifier octet
 * of 100 or more ends the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_CertificateRevocationList_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                CertificateRevocationList **ppElement,
                                                uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, a time of unknown kind in it, or when
 * memory is exhausted.
 */
CertificateRevocationList *asn1_CertificateRevocationList_clone(
    const CertificateRevocationList *pElement);

#ifdef __cplusplus
}
#endif

#endif
