/**
 * @file pkcs10.h
 * Certification requests (PKCS #10, RFC 2986).
 *
 * A decoded request keeps as octets what its signature covers (`tbsEncoded`) and the subject as it
 * came (`subjectEncoded`); the encoders write these where they are set.
 */
#ifndef ORVELASN1_PKCS10_H
#define ORVELASN1_PKCS10_H

#include "certificate.h"
#include "pkcs9.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * CertificationRequestInfo ::= SEQUENCE { version INTEGER, subject Name, subjectPKInfo, attributes
 * [0] IMPLICIT SET OF Attribute OPTIONAL }.
 */
typedef struct CertRequestInfo {
  Integer *version;             /**< owned */
  RDNSequence *subjectSequence; /**< owned, or NULL */
  Name *subject;                /**< owned, or NULL */
  OctetString *subjectEncoded;  /**< the element as read, header included; owned, or NULL */
  SubjectPKI *subjectPKInfo;    /**< owned */
  List *attributes;             /**< Attribute records, owned; NULL where the field is not there */
} CertRequestInfo;

/**
 * CertificationRequest ::= SEQUENCE { certificationRequestInfo, signatureAlgorithm, signature BIT
 * STRING }.
 */
typedef struct CertificationRequest {
  CertRequestInfo *certificationRequestInfo; /**< owned */
  OctetString *tbsEncoded;   /**< the signed element as read, header included; owned, or NULL */
  AlgId *signatureAlgorithm; /**< owned */
  BitString *signature;      /**< owned */
} CertificationRequest;

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
CertRequestInfo *asn1_CertRequestInfo_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_CertRequestInfo_free(CertRequestInfo *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails. The
 * subject is written from its encoded form, else from its sequence, else from its text.
 */
uint32_t asn1_CertRequestInfo_e(uint8_t **pp, const CertRequestInfo *pElement);
/**
 * Gives the cursor behind the last field that was recognised, or NULL. An empty subject fails. A
 * value in the subject under an identifier octet of 100 or more ends the process, as asn1_Name_d()
 * says.
 */
const uint8_t *asn1_CertRequestInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      CertRequestInfo **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
CertRequestInfo *asn1_CertRequestInfo_clone(const CertRequestInfo *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
CertificationRequest *asn1_CertificationRequest_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_CertificationRequest_free(CertificationRequest *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails. The
 * signed part is written from `tbsEncoded`, else from the decoded form. The signature goes through
 * asn1_BitString_e(), which leaves out zero bits at its end.
 */
uint32_t asn1_CertificationRequest_e(uint8_t **pp, const CertificationRequest *pElement);
/**
 * Gives the cursor behind the signature, or NULL. A value in the subject under an identifier octet
 * of 100 or more ends the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_CertificationRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           CertificationRequest **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
CertificationRequest *asn1_CertificationRequest_clone(const CertificationRequest *pElement);

#ifdef __cplusplus
}
#endif

#endif
