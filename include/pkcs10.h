/**
 * @file pkcs10.h
 * Certification requests (PKCS #10, RFC 2986).
 *
 * A decoded request keeps, beside the decoded fields, the octets that its signature covers
 * (`tbsEncoded`) and those of its subject (`subjectEncoded`). Where these octets are set, the
 * encoders write them and ignore the decoded form.
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
  List *attributes;             /**< Attribute records, owned; NULL where absent */
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

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
CertRequestInfo *asn1_CertRequestInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_CertRequestInfo_free(CertRequestInfo *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. The
 * subject is written from its encoded form; without that, from its sequence; without both, from its
 * text.
 */
uint32_t asn1_CertRequestInfo_e(uint8_t **pp, const CertRequestInfo *pElement);
/**
 * Decodes a CertificationRequestInfo. Returns the cursor past the last field that it recognises, or
 * NULL. An empty subject fails. A value in the subject under an identifier octet of 100 or more
 * ends the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_CertRequestInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      CertRequestInfo **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
CertRequestInfo *asn1_CertRequestInfo_clone(const CertRequestInfo *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
CertificationRequest *asn1_CertificationRequest_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_CertificationRequest_free(CertificationRequest *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. The
 * signed part is written from `tbsEncoded` or, without that, from the decoded form. The signature
 * goes through asn1_BitString_e(), which leaves out trailing zero bits.
 */
uint32_t asn1_CertificationRequest_e(uint8_t **pp, const CertificationRequest *pElement);
/**
 * Decodes a CertificationRequest. Returns the cursor past the signature, or NULL. A value in the
 * subject under an identifier octet of 100 or more ends the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_CertificationRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           CertificationRequest **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
CertificationRequest *asn1_CertificationRequest_clone(const CertificationRequest *pElement);

#ifdef __cplusplus
}
#endif

#endif
