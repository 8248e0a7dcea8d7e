/**
 * @file asn1_ocsp.h
 * The Online Certificate Status Protocol (RFC 6960). Requests can be encoded and decoded, responses
 * only decoded.
 *
 * The value of a response stays octets: compare `responseType` with asn1_Get_id_pkix_ocsp_basic()
 * and pass the octets of `response` to asn1_BasicOCSPResponse_d().
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
 * Request ::= SEQUENCE { reqCert CertID, singleRequestExtensions OPTIONAL } (RFC 6960, 4.1.1). The
 * extensions are written under the octet 20 and cannot be read back.
 */
typedef struct Request {
  CertID *reqCert;                     /**< owned */
  Extensions *singleRequestExtensions; /**< owned; NULL where absent */
} Request;

/**
 * TBSRequest ::= SEQUENCE { version [0], requestorName [1], requestList, requestExtensions [2] },
 * explicit tags.
 */
typedef struct TBSRequest {
  Integer *version;              /**< owned; NULL where absent */
  GeneralName *requestorName;    /**< owned; NULL where absent */
  List *requestList;             /**< Request records, owned; must not be NULL when encoding */
  Extensions *requestExtensions; /**< owned; NULL where absent */
} TBSRequest;

/**
 * Signature ::= SEQUENCE { signatureAlgorithm, signature BIT STRING, certs [0] OPTIONAL } (RFC
 * 6960, 4.1.1). A signature with certificates can be neither decoded nor encoded.
 */
typedef struct OCSPSignature {
  AlgId *signatureAlgorithm; /**< owned */
  BitString *signature;      /**< owned */
  List *certs;               /**< Certificate records, owned, or NULL */
} OCSPSignature;

/** OCSPRequest ::= SEQUENCE { tbsRequest, optionalSignature [0] EXPLICIT OPTIONAL }. */
typedef struct OCSPRequest {
  TBSRequest *tbsRequest;           /**< owned */
  OCSPSignature *optionalSignature; /**< owned; NULL where absent */
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
  ResponseBytes *responseBytes; /**< owned; NULL where absent */
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
  GeneralizedTime *nextUpdate;  /**< owned; NULL where absent */
  Extensions *singleExtensions; /**< owned; NULL where absent */
} SingleResponse;

/**
 * ResponseData ::= SEQUENCE { version [0] EXPLICIT DEFAULT v1, responderID, producedAt, responses
 * SEQUENCE OF SingleResponse, responseExtensions [1] EXPLICIT OPTIONAL }.
 */
typedef struct ResponseData {
  Integer *version;               /**< owned; NULL where absent */
  ResponderID *responderID;       /**< owned */
  GeneralizedTime *producedAt;    /**< owned */
  List *responses;                /**< SingleResponse records, owned */
  Extensions *responseExtensions; /**< owned; NULL where absent */
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

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
OCSPRequest *asn1_OCSPRequest_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_OCSPRequest_free(OCSPRequest *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_OCSPRequest_e(uint8_t **pp, const OCSPRequest *pElement);
/** Decodes an OCSPRequest. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_OCSPRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  OCSPRequest **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
OCSPRequest *asn1_OCSPRequest_clone(const OCSPRequest *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
TBSRequest *asn1_TBSRequest_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_TBSRequest_free(TBSRequest *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_TBSRequest_e(uint8_t **pp, const TBSRequest *pElement);
/** Decodes a TBSRequest. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_TBSRequest_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 TBSRequest **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
TBSRequest *asn1_TBSRequest_clone(const TBSRequest *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
Request *asn1_Request_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_Request_free(Request *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_Request_e(uint8_t **pp, const Request *pElement);
/** Decodes a Request. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_Request_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              Request **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
Request *asn1_Request_clone(const Request *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
CertID *asn1_CertID_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_CertID_free(CertID *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_CertID_e(uint8_t **pp, const CertID *pElement);
/** Decodes a CertID. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_CertID_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             CertID **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
CertID *asn1_CertID_clone(const CertID *pElement);

/**
 * Compares two records. Returns 0 when they have the same hash algorithm (parameters aside), serial
 * number and issuer key hash, otherwise 1, also where a record or one of these is NULL. A hash
 * algorithm without an identifier ends the process. The issuer name hash is not compared.
 */
int32_t asn1_CertID_cmp(const CertID *a, const CertID *b);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
OCSPSignature *asn1_OCSPSignature_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_OCSPSignature_free(OCSPSignature *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 when a field fails
 * or when `certs` has elements.
 */
uint32_t asn1_OCSPSignature_e(uint8_t **pp, const OCSPSignature *pElement);
/**
 * Decodes an OCSPSignature. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_OCSPSignature_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    OCSPSignature **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
OCSPSignature *asn1_OCSPSignature_clone(const OCSPSignature *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
OCSPResponse *asn1_OCSPResponse_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_OCSPResponse_free(OCSPResponse *pElement);
/** Decodes an OCSPResponse. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_OCSPResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   OCSPResponse **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
OCSPResponse *asn1_OCSPResponse_clone(const OCSPResponse *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
ResponseBytes *asn1_ResponseBytes_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_ResponseBytes_free(ResponseBytes *pElement);
/** Decodes a ResponseBytes. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_ResponseBytes_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    ResponseBytes **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
ResponseBytes *asn1_ResponseBytes_clone(const ResponseBytes *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
BasicOCSPResponse *asn1_BasicOCSPResponse_new(void);
/**
 * Releases the record and what it owns, but not `tbsResponseDataBytes`: first take that field and
 * release it with asn1_OctetString_free(). NULL is ignored.
 */
void asn1_BasicOCSPResponse_free(BasicOCSPResponse *pElement);
/**
 * Decodes a BasicOCSPResponse. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_BasicOCSPResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        BasicOCSPResponse **ppElement, uint32_t depth);
/**
 * Makes a deep copy with `tbsResponseDataBytes` NULL, which the caller owns. Returns NULL for NULL,
 * or when memory is exhausted.
 */
BasicOCSPResponse *asn1_BasicOCSPResponse_clone(const BasicOCSPResponse *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
ResponseData *asn1_ResponseData_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_ResponseData_free(ResponseData *pElement);
/** Decodes a ResponseData. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_ResponseData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   ResponseData **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
ResponseData *asn1_ResponseData_clone(const ResponseData *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
ResponderID *asn1_ResponderID_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_ResponderID_free(ResponderID *pElement);
/**
 * Decodes a ResponderID. Returns the cursor past the name or the hash inside the explicit tag, or
 * NULL. `impl_tag` must be 0.
 */
const uint8_t *asn1_ResponderID_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  ResponderID **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for an unknown kind, or when
 * memory is exhausted.
 */
ResponderID *asn1_ResponderID_clone(const ResponderID *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
SingleResponse *asn1_SingleResponse_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_SingleResponse_free(SingleResponse *pElement);
/**
 * Decodes a SingleResponse. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_SingleResponse_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     SingleResponse **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
SingleResponse *asn1_SingleResponse_clone(const SingleResponse *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
OCSPCertStatus *asn1_OCSPCertStatus_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_OCSPCertStatus_free(OCSPCertStatus *pElement);
/**
 * Decodes a CertStatus. Returns the cursor past its header for good and unknown, and past the last
 * field that it recognises for revoked. Returns NULL on failure. `impl_tag` must be 0.
 */
const uint8_t *asn1_OCSPCertStatus_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     OCSPCertStatus **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for an unknown kind, or when
 * memory is exhausted.
 */
OCSPCertStatus *asn1_OCSPCertStatus_clone(const OCSPCertStatus *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
RevokedInfo *asn1_RevokedInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_RevokedInfo_free(RevokedInfo *pElement);
/** Decodes a RevokedInfo. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_RevokedInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  RevokedInfo **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
RevokedInfo *asn1_RevokedInfo_clone(const RevokedInfo *pElement);

/* Object identifiers. Each getter returns the same constant record on every call. The library owns
 * it: never release it. In a record that will be released, store a copy of asn1_ObjId_clone(). */

/** Returns id_pkix_ocsp, 1.3.6.1.5.5.7.48.1. */
const ObjId *asn1_Get_id_pkix_ocsp(void);
/** Returns id_pkix_ocsp_basic, 1.3.6.1.5.5.7.48.1.1. */
const ObjId *asn1_Get_id_pkix_ocsp_basic(void);
/** Returns id_pkix_ocsp_nonce, 1.3.6.1.5.5.7.48.1.2. */
const ObjId *asn1_Get_id_pkix_ocsp_nonce(void);
/** Returns id_pkix_ocsp_crl, 1.3.6.1.5.5.7.48.1.3. */
const ObjId *asn1_Get_id_pkix_ocsp_crl(void);
/** Returns id_pkix_ocsp_response, 1.3.6.1.5.5.7.48.1.4. */
const ObjId *asn1_Get_id_pkix_ocsp_response(void);
/** Returns id_pkix_ocsp_nocheck, 1.3.6.1.5.5.7.48.1.5. */
const ObjId *asn1_Get_id_pkix_ocsp_nocheck(void);
/** Returns id_pkix_ocsp_archive_cutoff, 1.3.6.1.5.5.7.48.1.6. */
const ObjId *asn1_Get_id_pkix_ocsp_archive_cutoff(void);
/** Returns id_pkix_ocsp_service_locator, 1.3.6.1.5.5.7.48.1.7. */
const ObjId *asn1_Get_id_pkix_ocsp_service_locator(void);

#ifdef __cplusplus
}
#endif

#endif
