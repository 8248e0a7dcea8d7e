/**
 * @file asn1_ocsp.h
 * The Online Certificate Status Protocol (RFC 6960): requests in both directions, responses read
 * only.
 *
 * The caller compares `responseType` with asn1_Get_id_pkix_ocsp_basic() and hands the octets of
 * `response` to asn1_BasicOCSPResponse_d().
 */
#ifndef ORVELASN1_ASN1_OCSP_H
#define ORVELASN1_ASN1_OCSP_H

#include "asn1_x509v3.h"
#include "certificate.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * CertID ::= SEQUENCE { hashAlgorithm, issuerNameHash, issuerKeyHash OCTET STRING, serialNumber
 * INTEGER }.
 */
typedef struct CertID {
  AlgId *hashAlgorithm;        /**< owned */
  OctetString *issuerNameHash; /**< owned */
  OctetString *issuerKeyHash;  /**< owned */
  Integer *serialNumber;       /**< owned */
} CertID;

/**
 * Request ::= SEQUENCE { reqCert CertID, singleRequestExtensions OPTIONAL }. The extensions are
 * written under the octet 20 and cannot be read back.
 */
typedef struct Request {
  CertID *reqCert;                     /**< owned */
  Extensions *singleRequestExtensions; /**< owned; NULL where the field is not there */
} Request;

/**
 * TBSRequest ::= SEQUENCE { version [0], requestorName [1], requestList, requestExtensions [2] },
 * explicit tags.
 */
typedef struct TBSRequest {
  Integer *version;              /**< owned; NULL where the field is not there */
  GeneralName *requestorName;    /**< owned; NULL where the field is not there */
  List *requestList;             /**< Request records, owned; must not be NULL when encoding */
  Extensions *requestExtensions; /**< owned; NULL where the field is not there */
} TBSRequest;

/**
 * Signature ::= SEQUENCE { signatureAlgorithm, signature BIT STRING, certs [0] OPTIONAL }. A
 * signature with certificates can neither be read nor written.
 */
typedef struct OCSPSignature {
  AlgId *signatureAlgorithm; /**< owned */
  BitString *signature;      /**< owned */
  List *certs;               /**< Certificate records, owned, or NULL */
} OCSPSignature;

/** OCSPRequest ::= SEQUENCE { tbsRequest, optionalSignature [0] EXPLICIT OPTIONAL }. */
typedef struct OCSPRequest {
  TBSRequest *tbsRequest;           /**< owned */
  OCSPSignature *optionalSignature; /**< owned; NULL where the field is not there */
} OCSPRequest;

/** ResponseBytes ::= SEQUENCE { responseType OBJECT IDENTIFIER, response OCTET STRING }. */
typedef struct ResponseBytes {
  ObjId *responseType; /**< owned */
  OctetString
      *response; /**< for the type id_pkix_ocsp_basic a BasicOCSPResponse, not decoded; owned */
} ResponseBytes;

/** OCSPResponse ::= SEQUENCE { responseStatus ENUMERATED, responseBytes [0] EXPLICIT OPTIONAL }. */
typedef struct OCSPResponse {
  uint32_t responseStatus;      /**< 0 for successful */
  ResponseBytes *responseBytes; /**< owned; NULL where the field is not there */
} OCSPResponse;

/** ResponderID ::= CHOICE { byName [1] EXPLICIT Name, byKey [2] EXPLICIT OCTET STRING }. */
typedef struct ResponderID {
  uint8_t kind; /**< 1: byName; 2: byKey */
  void *value;  /**< an RDNSequence or an OctetString, owned */
} ResponderID;

/**
 * RevokedInfo ::= SEQUENCE { revocationTime GeneralizedTime, revocationReason [0] EXPLICIT
 * ENUMERATED OPTIONAL }.
 */
typedef struct RevokedInfo {
  GeneralizedTime *revocationTime; /**< owned */
  uint32_t revocationReason;       /**< 0 where absent */
} RevokedInfo;

/**
 * CertStatus ::= CHOICE { good [0] NULL, revoked [1] RevokedInfo, unknown [2] NULL }, implicit
 * tags.
 */
typedef struct OCSPCertStatus {
  uint8_t kind; /**< 0: good; 1: revoked; 2: unknown */
  void *value;  /**< a RevokedInfo for revoked, otherwise NULL; owned */
} OCSPCertStatus;

/**
 * SingleResponse ::= SEQUENCE { certID, certStatus, thisUpdate, nextUpdate [0] EXPLICIT OPTIONAL,
 * singleExtensions [1] EXPLICIT OPTIONAL }.
 */
typedef struct SingleResponse {
  CertID *certID;               /**< owned */
  OCSPCertStatus *certStatus;   /**< owned */
  GeneralizedTime *thisUpdate;  /**< owned */
  GeneralizedTime *nextUpdate;  /**< owned; NULL where the field is not there */
  Extensions *singleExtensions; /**< owned; NULL where the field is not there */
} SingleResponse;

/**
 * ResponseData ::= SEQUENCE { version [0] EXPLICIT DEFAULT v1, responderID, producedAt, responses
 * SEQUENCE OF SingleResponse, responseExtensions [1] EXPLICIT OPTIONAL }.
 */
typedef struct ResponseData {
  Integer *version;               /**< owned; NULL where the field is not there */
  ResponderID *responderID;       /**< owned */
  GeneralizedTime *producedAt;    /**< owned */
  List *responses;                /**< SingleResponse records, owned */
  Extensions *responseExtensions; /**< owned; NULL where the field is not there */
} ResponseData;

/**
 * BasicOCSPResponse ::= SEQUENCE { tbsResponseData, signatureAlgorithm, signature BIT STRING }. A
 * response with certificates is refused.
 */
typedef struct BasicOCSPResponse {
  ResponseData *tbsResponseData;     /**< owned */
  OctetString *tbsResponseDataBytes; /**< the signed element as read, header included: the caller's,
                                        not released with the record */
  AlgId *signatureAlgorithm;         /**< owned */
  BitString *signature;              /**< owned */
  List *certs;                       /**< NULL after decoding */
} BasicOCSPResponse;

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
OCSPRequest *asn1_OCSPRequest_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_OCSPRequest_free(OCSPRequest *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_OCSPRequest_e(uint8_t **pp, const OCSPRequest *pElement);
/** Gives the cursor behind the last field of the OCSPRequest that was recognised, or NULL. */
const uint8_t *asn1_OCSPRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  OCSPRequest **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
OCSPRequest *asn1_OCSPRequest_clone(const OCSPRequest *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
TBSRequest *asn1_TBSRequest_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_TBSRequest_free(TBSRequest *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_TBSRequest_e(uint8_t **pp, const TBSRequest *pElement);
/** Gives the cursor behind the last field of the TBSRequest that was recognised, or NULL. */
const uint8_t *asn1_TBSRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 TBSRequest **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
TBSRequest *asn1_TBSRequest_clone(const TBSRequest *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
Request *asn1_Request_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_Request_free(Request *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_Request_e(uint8_t **pp, const Request *pElement);
/** Gives the cursor behind the last field of the Request that was recognised, or NULL. */
const uint8_t *asn1_Request_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              Request **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
Request *asn1_Request_clone(const Request *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
CertID *asn1_CertID_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_CertID_free(CertID *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_CertID_e(uint8_t **pp, const CertID *pElement);
/** Gives the cursor behind the last field of the CertID that was recognised, or NULL. */
const uint8_t *asn1_CertID_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             CertID **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
CertID *asn1_CertID_clone(const CertID *pElement);

/**
 * Gives 0 when both records have the same hash algorithm (parameters aside), serial number and
 * issuer key hash, otherwise 1; 1 also where a record or one of these is NULL. A hash algorithm
 * without an identifier ends the process. The issuer name hash is not compared.
 */
int32_t asn1_CertID_cmp(const CertID *a, const CertID *b);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
OCSPSignature *asn1_OCSPSignature_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_OCSPSignature_free(OCSPSignature *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails, or when
 * `certs` has elements.
 */
uint32_t asn1_OCSPSignature_e(uint8_t **pp, const OCSPSignature *pElement);
/** Gives the cursor behind the last field of the OCSPSignature that was recognised, or NULL. */
const uint8_t *asn1_OCSPSignature_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    OCSPSignature **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
OCSPSignature *asn1_OCSPSignature_clone(const OCSPSignature *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
OCSPResponse *asn1_OCSPResponse_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_OCSPResponse_free(OCSPResponse *pElement);
/** Gives the cursor behind the last field of the OCSPResponse that was recognised, or NULL. */
const uint8_t *asn1_OCSPResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   OCSPResponse **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
OCSPResponse *asn1_OCSPResponse_clone(const OCSPResponse *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
ResponseBytes *asn1_ResponseBytes_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_ResponseBytes_free(ResponseBytes *pElement);
/** Gives the cursor behind the last field of the ResponseBytes that was recognised, or NULL. */
const uint8_t *asn1_ResponseBytes_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    ResponseBytes **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
ResponseBytes *asn1_ResponseBytes_clone(const ResponseBytes *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
BasicOCSPResponse *asn1_BasicOCSPResponse_new(void);
/**
 * Gives nothing; releases the record and what it owns, but not `tbsResponseDataBytes`: take it out
 * and release it with asn1_OctetString_free() first. NULL is ignored.
 */
void asn1_BasicOCSPResponse_free(BasicOCSPResponse *pElement);
/** Gives the cursor behind the last field of the BasicOCSPResponse that was recognised, or NULL. */
const uint8_t *asn1_BasicOCSPResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        BasicOCSPResponse **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns, with `tbsResponseDataBytes` NULL; NULL for NULL, or
 * when memory is exhausted.
 */
BasicOCSPResponse *asn1_BasicOCSPResponse_clone(const BasicOCSPResponse *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
ResponseData *asn1_ResponseData_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_ResponseData_free(ResponseData *pElement);
/** Gives the cursor behind the last field of the ResponseData that was recognised, or NULL. */
const uint8_t *asn1_ResponseData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   ResponseData **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
ResponseData *asn1_ResponseData_clone(const ResponseData *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
ResponderID *asn1_ResponderID_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_ResponderID_free(ResponderID *pElement);
/**
 * Gives the cursor behind the name or the hash inside the explicit tag, or NULL. `impl_tag` must be
 * 0.
 */
const uint8_t *asn1_ResponderID_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  ResponderID **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, an unknown kind, or when memory is
 * exhausted.
 */
ResponderID *asn1_ResponderID_clone(const ResponderID *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
SingleResponse *asn1_SingleResponse_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_SingleResponse_free(SingleResponse *pElement);
/** Gives the cursor behind the last field of the SingleResponse that was recognised, or NULL. */
const uint8_t *asn1_SingleResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     SingleResponse **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
SingleResponse *asn1_SingleResponse_clone(const SingleResponse *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
OCSPCertStatus *asn1_OCSPCertStatus_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_OCSPCertStatus_free(OCSPCertStatus *pElement);
/**
 * Gives the cursor behind the status, or NULL: behind its header for good and unknown, behind the
 * last field that was recognised for revoked. `impl_tag` must be 0.
 */
const uint8_t *asn1_OCSPCertStatus_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     OCSPCertStatus **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, an unknown kind, or when memory is
 * exhausted.
 */
OCSPCertStatus *asn1_OCSPCertStatus_clone(const OCSPCertStatus *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
RevokedInfo *asn1_RevokedInfo_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_RevokedInfo_free(RevokedInfo *pElement);
/** Gives the cursor behind the last field of the RevokedInfo that was recognised, or NULL. */
const uint8_t *asn1_RevokedInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  RevokedInfo **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
RevokedInfo *asn1_RevokedInfo_clone(const RevokedInfo *pElement);

/* Object identifiers. Each getter gives the same constant record on every call. It belongs to the
 * library: it is never released, nor stored in a record that will be. */

/** Gives id_pkix_ocsp, 1.3.6.1.5.5.7.48.1. */
const ObjId *asn1_Get_id_pkix_ocsp(void);
/** Gives id_pkix_ocsp_basic, 1.3.6.1.5.5.7.48.1.1. */
const ObjId *asn1_Get_id_pkix_ocsp_basic(void);
/** Gives id_pkix_ocsp_nonce, 1.3.6.1.5.5.7.48.1.2. */
const ObjId *asn1_Get_id_pkix_ocsp_nonce(void);
/** Gives id_pkix_ocsp_crl, 1.3.6.1.5.5.7.48.1.3. */
const ObjId *asn1_Get_id_pkix_ocsp_crl(void);
/** Gives id_pkix_ocsp_response, 1.3.6.1.5.5.7.48.1.4. */
const ObjId *asn1_Get_id_pkix_ocsp_response(void);
/** Gives id_pkix_ocsp_nocheck, 1.3.6.1.5.5.7.48.1.5. */
const ObjId *asn1_Get_id_pkix_ocsp_nocheck(void);
/** Gives id_pkix_ocsp_archive_cutoff, 1.3.6.1.5.5.7.48.1.6. */
const ObjId *asn1_Get_id_pkix_ocsp_archive_cutoff(void);
/** Gives id_pkix_ocsp_service_locator, 1.3.6.1.5.5.7.48.1.7. */
const ObjId *asn1_Get_id_pkix_ocsp_service_locator(void);

#ifdef __cplusplus
}
#endif

#endif
