/**
 * @file rfc6960.h
 * The Online Certificate Status Protocol (RFC 6960), in the functions that rfc5280.h describes:
 * requests and responses with the certificates of their signatures, and the syntaxes of their
 * extensions.
 */
#ifndef ORVELPKI_RFC6960_H
#define ORVELPKI_RFC6960_H

#include "asn1_ocsp.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -------------------------------------------------------------------------------------------- */
/* Requests                                                                                     */
/* -------------------------------------------------------------------------------------------- */

/**
 * CertID ::= SEQUENCE { hashAlgorithm AlgorithmIdentifier, issuerNameHash OCTET STRING,
 * issuerKeyHash OCTET STRING, serialNumber CertificateSerialNumber } (4.1.1).
 */
CertID *pki_CertID_new(void);
void pki_CertID_free(CertID *pElement);
uint32_t pki_CertID_e(uint8_t **pp, const CertID *pElement);
const uint8_t *pki_CertID_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            CertID **ppElement, uint32_t depth);
CertID *pki_CertID_clone(const CertID *pElement);

/**
 * Request ::= SEQUENCE { reqCert CertID, singleRequestExtensions [0] EXPLICIT Extensions OPTIONAL
 * } (4.1.1).
 */
Request *pki_Request_new(void);
void pki_Request_free(Request *pElement);
uint32_t pki_Request_e(uint8_t **pp, const Request *pElement);
const uint8_t *pki_Request_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             Request **ppElement, uint32_t depth);
Request *pki_Request_clone(const Request *pElement);

/**
 * TBSRequest ::= SEQUENCE { version [0] EXPLICIT Version DEFAULT v1, requestorName [1] EXPLICIT
 * GeneralName OPTIONAL, requestList SEQUENCE OF Request, requestExtensions [2] EXPLICIT Extensions
 * OPTIONAL } (4.1.1). A signature of the request covers what pki_TBSRequest_e() writes.
 */
TBSRequest *pki_TBSRequest_new(void);
void pki_TBSRequest_free(TBSRequest *pElement);
uint32_t pki_TBSRequest_e(uint8_t **pp, const TBSRequest *pElement);
const uint8_t *pki_TBSRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                TBSRequest **ppElement, uint32_t depth);
TBSRequest *pki_TBSRequest_clone(const TBSRequest *pElement);

/**
 * Signature ::= SEQUENCE { signatureAlgorithm AlgorithmIdentifier, signature BIT STRING, certs [0]
 * EXPLICIT SEQUENCE OF Certificate OPTIONAL } (4.1.1). `certs` is a List of Certificate records.
 */
OCSPSignature *pki_OCSPSignature_new(void);
void pki_OCSPSignature_free(OCSPSignature *pElement);
uint32_t pki_OCSPSignature_e(uint8_t **pp, const OCSPSignature *pElement);
const uint8_t *pki_OCSPSignature_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   OCSPSignature **ppElement, uint32_t depth);
OCSPSignature *pki_OCSPSignature_clone(const OCSPSignature *pElement);

/**
 * OCSPRequest ::= SEQUENCE { tbsRequest TBSRequest, optionalSignature [0] EXPLICIT Signature
 * OPTIONAL } (4.1.1).
 */
OCSPRequest *pki_OCSPRequest_new(void);
void pki_OCSPRequest_free(OCSPRequest *pElement);
uint32_t pki_OCSPRequest_e(uint8_t **pp, const OCSPRequest *pElement);
const uint8_t *pki_OCSPRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 OCSPRequest **ppElement, uint32_t depth);
OCSPRequest *pki_OCSPRequest_clone(const OCSPRequest *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Responses                                                                                    */
/* -------------------------------------------------------------------------------------------- */

/**
 * ResponseBytes ::= SEQUENCE { responseType OBJECT IDENTIFIER, response OCTET STRING } (4.2.1).
 */
ResponseBytes *pki_ResponseBytes_new(void);
void pki_ResponseBytes_free(ResponseBytes *pElement);
uint32_t pki_ResponseBytes_e(uint8_t **pp, const ResponseBytes *pElement);
const uint8_t *pki_ResponseBytes_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   ResponseBytes **ppElement, uint32_t depth);
ResponseBytes *pki_ResponseBytes_clone(const ResponseBytes *pElement);

/**
 * OCSPResponse ::= SEQUENCE { responseStatus OCSPResponseStatus, responseBytes [0] EXPLICIT
 * ResponseBytes OPTIONAL } (4.2.1). The status may be any number from 0 to 127.
 */
OCSPResponse *pki_OCSPResponse_new(void);
void pki_OCSPResponse_free(OCSPResponse *pElement);
uint32_t pki_OCSPResponse_e(uint8_t **pp, const OCSPResponse *pElement);
const uint8_t *pki_OCSPResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  OCSPResponse **ppElement, uint32_t depth);
OCSPResponse *pki_OCSPResponse_clone(const OCSPResponse *pElement);

/**
 * ResponderID ::= CHOICE { byName [1] EXPLICIT Name, byKey [2] EXPLICIT KeyHash } (4.2.1). `value`
 * is an RDNSequence for kind 1, and an OctetString for kind 2.
 */
ResponderID *pki_ResponderID_new(void);
void pki_ResponderID_free(ResponderID *pElement);
uint32_t pki_ResponderID_e(uint8_t **pp, const ResponderID *pElement);
const uint8_t *pki_ResponderID_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 ResponderID **ppElement, uint32_t depth);
ResponderID *pki_ResponderID_clone(const ResponderID *pElement);

/**
 * RevokedInfo ::= SEQUENCE { revocationTime GeneralizedTime, revocationReason [0] EXPLICIT
 * CRLReason OPTIONAL } (4.2.1).
 */
typedef struct pki_RevokedInfo {
  GeneralizedTime *revocationTime; /**< owned */
  Integer *revocationReason;       /**< owned, or NULL; 0, which is unspecified, is a reason too */
} pki_RevokedInfo;

pki_RevokedInfo *pki_RevokedInfo_new(void);
void pki_RevokedInfo_free(pki_RevokedInfo *pElement);
uint32_t pki_RevokedInfo_e(uint8_t **pp, const pki_RevokedInfo *pElement);
const uint8_t *pki_RevokedInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 pki_RevokedInfo **ppElement, uint32_t depth);
pki_RevokedInfo *pki_RevokedInfo_clone(const pki_RevokedInfo *pElement);

/**
 * CertStatus ::= CHOICE { good [0] IMPLICIT NULL, revoked [1] IMPLICIT RevokedInfo, unknown [2]
 * IMPLICIT UnknownInfo } (4.2.1). `value` is a pki_RevokedInfo for revoked, where liborvelasn1 has
 * a RevokedInfo, and NULL for the others.
 */
OCSPCertStatus *pki_OCSPCertStatus_new(void);
void pki_OCSPCertStatus_free(OCSPCertStatus *pElement);
uint32_t pki_OCSPCertStatus_e(uint8_t **pp, const OCSPCertStatus *pElement);
const uint8_t *pki_OCSPCertStatus_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    OCSPCertStatus **ppElement, uint32_t depth);
OCSPCertStatus *pki_OCSPCertStatus_clone(const OCSPCertStatus *pElement);

/**
 * SingleResponse ::= SEQUENCE { certID CertID, certStatus CertStatus, thisUpdate GeneralizedTime,
 * nextUpdate [0] EXPLICIT GeneralizedTime OPTIONAL, singleExtensions [1] EXPLICIT Extensions
 * OPTIONAL } (4.2.1).
 */
SingleResponse *pki_SingleResponse_new(void);
void pki_SingleResponse_free(SingleResponse *pElement);
uint32_t pki_SingleResponse_e(uint8_t **pp, const SingleResponse *pElement);
const uint8_t *pki_SingleResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    SingleResponse **ppElement, uint32_t depth);
SingleResponse *pki_SingleResponse_clone(const SingleResponse *pElement);

/**
 * ResponseData ::= SEQUENCE { version [0] EXPLICIT Version DEFAULT v1, responderID ResponderID,
 * producedAt GeneralizedTime, responses SEQUENCE OF SingleResponse, responseExtensions [1]
 * EXPLICIT Extensions OPTIONAL } (4.2.1).
 */
ResponseData *pki_ResponseData_new(void);
void pki_ResponseData_free(ResponseData *pElement);
uint32_t pki_ResponseData_e(uint8_t **pp, const ResponseData *pElement);
const uint8_t *pki_ResponseData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  ResponseData **ppElement, uint32_t depth);
ResponseData *pki_ResponseData_clone(const ResponseData *pElement);

/**
 * BasicOCSPResponse ::= SEQUENCE { tbsResponseData ResponseData, signatureAlgorithm
 * AlgorithmIdentifier, signature BIT STRING, certs [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }
 * (4.2.1). `certs` is a List of Certificate records.
 *
 * `tbsResponseDataBytes`, the signed element as it was read, belongs to the record here: it is
 * copied and released with it. The encoder writes it in place of `tbsResponseData` where it is
 * set.
 */
BasicOCSPResponse *pki_BasicOCSPResponse_new(void);
void pki_BasicOCSPResponse_free(BasicOCSPResponse *pElement);
uint32_t pki_BasicOCSPResponse_e(uint8_t **pp, const BasicOCSPResponse *pElement);
const uint8_t *pki_BasicOCSPResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       BasicOCSPResponse **ppElement, uint32_t depth);
BasicOCSPResponse *pki_BasicOCSPResponse_clone(const BasicOCSPResponse *pElement);

/**
 * Decodes the basic response that a response holds. Returns NULL where there is none, or one of
 * another type than id_pkix_ocsp_basic, where its octets are not of a BasicOCSPResponse and nothing
 * else, and when memory is exhausted. The caller releases the record with
 * pki_BasicOCSPResponse_free().
 */
BasicOCSPResponse *pki_OCSPResponse_basic(const OCSPResponse *response);

/* -------------------------------------------------------------------------------------------- */
/* Extensions                                                                                   */
/* -------------------------------------------------------------------------------------------- */

/** Nonce ::= OCTET STRING (4.4.1): the value of id_pkix_ocsp_nonce. */
void pki_Nonce_free(OctetString *pElement);
uint32_t pki_Nonce_e(uint8_t **pp, const OctetString *pElement);
const uint8_t *pki_Nonce_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           OctetString **ppElement, uint32_t depth);
OctetString *pki_Nonce_clone(const OctetString *pElement);

/**
 * CrlID ::= SEQUENCE { crlUrl [0] EXPLICIT IA5String OPTIONAL, crlNum [1] EXPLICIT INTEGER
 * OPTIONAL, crlTime [2] EXPLICIT GeneralizedTime OPTIONAL } (4.4.2): the value of
 * id_pkix_ocsp_crl.
 */
typedef struct pki_CrlID {
  IA5String *crlUrl;        /**< owned, or NULL */
  Integer *crlNum;          /**< owned, or NULL */
  GeneralizedTime *crlTime; /**< owned, or NULL */
} pki_CrlID;

pki_CrlID *pki_CrlID_new(void);
void pki_CrlID_free(pki_CrlID *pElement);
uint32_t pki_CrlID_e(uint8_t **pp, const pki_CrlID *pElement);
const uint8_t *pki_CrlID_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           pki_CrlID **ppElement, uint32_t depth);
pki_CrlID *pki_CrlID_clone(const pki_CrlID *pElement);

/**
 * AcceptableResponses ::= SEQUENCE OF OBJECT IDENTIFIER (4.4.3): the value of
 * id_pkix_ocsp_response, a List of ObjId records.
 */
void pki_AcceptableResponses_free(List *pElement);
uint32_t pki_AcceptableResponses_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_AcceptableResponses_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                         List **ppElement, uint32_t depth);
List *pki_AcceptableResponses_clone(const List *pElement);

/** ArchiveCutoff ::= GeneralizedTime (4.4.4): the value of id_pkix_ocsp_archive_cutoff. */
void pki_ArchiveCutoff_free(GeneralizedTime *pElement);
uint32_t pki_ArchiveCutoff_e(uint8_t **pp, const GeneralizedTime *pElement);
const uint8_t *pki_ArchiveCutoff_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   GeneralizedTime **ppElement, uint32_t depth);
GeneralizedTime *pki_ArchiveCutoff_clone(const GeneralizedTime *pElement);

/**
 * ServiceLocator ::= SEQUENCE { issuer Name, locator AuthorityInfoAccessSyntax } (4.4.6): the value
 * of id_pkix_ocsp_service_locator. The locator may be left out, as RFC 2560 has it.
 */
typedef struct pki_ServiceLocator {
  RDNSequence *issuer;                /**< owned */
  AuthorityInfoAccessSyntax *locator; /**< AccessDescription records, owned, or NULL */
} pki_ServiceLocator;

pki_ServiceLocator *pki_ServiceLocator_new(void);
void pki_ServiceLocator_free(pki_ServiceLocator *pElement);
uint32_t pki_ServiceLocator_e(uint8_t **pp, const pki_ServiceLocator *pElement);
const uint8_t *pki_ServiceLocator_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    pki_ServiceLocator **ppElement, uint32_t depth);
pki_ServiceLocator *pki_ServiceLocator_clone(const pki_ServiceLocator *pElement);

/**
 * PreferredSignatureAlgorithm ::= SEQUENCE { sigIdentifier AlgorithmIdentifier, pubKeyAlgIdentifier
 * SMIMECapability OPTIONAL } (4.4.7.1). An SMIMECapability (RFC 5751, 2.5.2) has the fields of an
 * AlgorithmIdentifier.
 */
typedef struct pki_PreferredSignatureAlgorithm {
  AlgId *sigIdentifier;       /**< owned */
  AlgId *pubKeyAlgIdentifier; /**< owned, or NULL */
} pki_PreferredSignatureAlgorithm;

pki_PreferredSignatureAlgorithm *pki_PreferredSignatureAlgorithm_new(void);
void pki_PreferredSignatureAlgorithm_free(pki_PreferredSignatureAlgorithm *pElement);
uint32_t pki_PreferredSignatureAlgorithm_e(uint8_t **pp,
                                           const pki_PreferredSignatureAlgorithm *pElement);
const uint8_t *pki_PreferredSignatureAlgorithm_d(const uint8_t *z, const uint8_t *end,
                                                 uint32_t impl_tag,
                                                 pki_PreferredSignatureAlgorithm **ppElement,
                                                 uint32_t depth);
pki_PreferredSignatureAlgorithm *pki_PreferredSignatureAlgorithm_clone(
    const pki_PreferredSignatureAlgorithm *pElement);

/**
 * PreferredSignatureAlgorithms ::= SEQUENCE OF PreferredSignatureAlgorithm (4.4.7.1): the value of
 * id-pkix-ocsp-pref-sig-algs, 1.3.6.1.5.5.7.48.1.8, a List of pki_PreferredSignatureAlgorithm
 * records.
 */
void pki_PreferredSignatureAlgorithms_free(List *pElement);
uint32_t pki_PreferredSignatureAlgorithms_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_PreferredSignatureAlgorithms_d(const uint8_t *z, const uint8_t *end,
                                                  uint32_t impl_tag, List **ppElement,
                                                  uint32_t depth);
List *pki_PreferredSignatureAlgorithms_clone(const List *pElement);

#ifdef __cplusplus
}
#endif

#endif
