/**
 * @file rfc2986.h
 * Certification requests (RFC 2986). rfc5280.h says what the functions promise.
 */
#ifndef ORVELPKI_RFC2986_H
#define ORVELPKI_RFC2986_H

#include "pkcs10.h"
#include "rfc5652.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * CertificationRequestInfo ::= SEQUENCE { version INTEGER, subject Name, subjectPKInfo
 * SubjectPublicKeyInfo, attributes [0] IMPLICIT SET OF Attribute } (4.1).
 *
 * The subject may be empty, and is written from `subjectSequence` where there are no kept octets.
 * An empty list of attributes is written as one. NULL, which old requests need, leaves them out.
 */
CertRequestInfo *pki_CertRequestInfo_new(void);
void pki_CertRequestInfo_free(CertRequestInfo *pElement);
uint32_t pki_CertRequestInfo_e(uint8_t **pp, const CertRequestInfo *pElement);
const uint8_t *pki_CertRequestInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     CertRequestInfo **ppElement, uint32_t depth);
CertRequestInfo *pki_CertRequestInfo_clone(const CertRequestInfo *pElement);

/**
 * CertificationRequest ::= SEQUENCE { certificationRequestInfo CertificationRequestInfo,
 * signatureAlgorithm AlgorithmIdentifier, signature BIT STRING } (4.2). The signature is written
 * as it stands.
 */
CertificationRequest *pki_CertificationRequest_new(void);
void pki_CertificationRequest_free(CertificationRequest *pElement);
uint32_t pki_CertificationRequest_e(uint8_t **pp, const CertificationRequest *pElement);
const uint8_t *pki_CertificationRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          CertificationRequest **ppElement, uint32_t depth);
CertificationRequest *pki_CertificationRequest_clone(const CertificationRequest *pElement);

#ifdef __cplusplus
}
#endif

#endif
