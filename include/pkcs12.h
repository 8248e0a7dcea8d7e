/**
 * @file pkcs12.h
 * Personal information exchange (PKCS #12, RFC 7292).
 *
 * The value of a bag stays one whole element: the caller looks at its identifier and decodes it.
 * There is no record for the AuthenticatedSafe or SafeContents; they are lists of ContentInfo and
 * SafeBag.
 */
#ifndef ORVELASN1_PKCS12_H
#define ORVELASN1_PKCS12_H

#include "pkcs1.h"
#include "pkcs7.h"
#include "pkcs9.h"

#ifdef __cplusplus
extern "C" {
#endif

/** MacData ::= SEQUENCE { mac DigestInfo, macSalt OCTET STRING, iterations INTEGER DEFAULT 1 }. */
typedef struct MacData {
  DigestInfo *mac;      /**< owned */
  OctetString *macSalt; /**< owned */
  Integer *iterations;  /**< owned; NULL where absent, which stands for 1 */
} MacData;

/** PFX ::= SEQUENCE { version INTEGER, authSafe ContentInfo, macData OPTIONAL }. */
typedef struct PFX {
  Integer *version;      /**< owned */
  ContentInfo *authSafe; /**< owned */
  MacData *macData;      /**< owned; NULL where the field is not there */
} PFX;

/** PBEParameter ::= SEQUENCE { salt OCTET STRING, iterations INTEGER }. */
typedef struct PbeParams {
  OctetString *salt;   /**< owned */
  Integer *iterations; /**< owned */
} PbeParams;

/**
 * SafeBag ::= SEQUENCE { bagId OBJECT IDENTIFIER, bagValue [0] EXPLICIT ANY, bagAttributes SET OF
 * Attribute OPTIONAL }.
 */
typedef struct SafeBag {
  ObjId *bagId;        /**< owned */
  Any *bagValue;       /**< one whole element, owned */
  List *bagAttributes; /**< Attribute records, owned; NULL where the field is not there */
} SafeBag;

/** CertBag ::= SEQUENCE { certId OBJECT IDENTIFIER, certValue [0] EXPLICIT ANY }. */
typedef struct CertBag {
  ObjId *certId;  /**< owned */
  Any *certValue; /**< one whole element, owned */
} CertBag;

/** CRLBag ::= SEQUENCE { crlId OBJECT IDENTIFIER, crlValue [0] EXPLICIT ANY }. */
typedef struct CRLBag {
  ObjId *crlId;  /**< owned */
  Any *crlValue; /**< one whole element, owned */
} CRLBag;

/** SecretBag ::= SEQUENCE { secretTypeId OBJECT IDENTIFIER, secretValue [0] EXPLICIT ANY }. */
typedef struct SecretBag {
  ObjId *secretTypeId; /**< owned */
  Any *secretValue;    /**< one whole element, owned */
} SecretBag;

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
PFX *asn1_PFX_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_PFX_free(PFX *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_PFX_e(uint8_t **pp, const PFX *pElement);
/**
 * Gives the cursor behind the last field of the PFX that was recognised, and behind the
 * end-of-contents where the length is indefinite; or NULL. What authSafe holds may end the process,
 * as asn1_ContentInfo_d() says.
 */
const uint8_t *asn1_PFX_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, PFX **ppElement,
                          uint32_t depth);
/** Gives a deep copy, which the caller owns, or NULL; as asn1_ContentInfo_clone(). */
PFX *asn1_PFX_clone(const PFX *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
MacData *asn1_MacData_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_MacData_free(MacData *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_MacData_e(uint8_t **pp, const MacData *pElement);
/** Gives the cursor behind the last field of the MacData that was recognised, or NULL. */
const uint8_t *asn1_MacData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              MacData **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
MacData *asn1_MacData_clone(const MacData *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
PbeParams *asn1_PbeParams_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_PbeParams_free(PbeParams *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_PbeParams_e(uint8_t **pp, const PbeParams *pElement);
/** Gives the cursor behind the last field of the PbeParams that was recognised, or NULL. */
const uint8_t *asn1_PbeParams_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                PbeParams **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
PbeParams *asn1_PbeParams_clone(const PbeParams *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
SafeBag *asn1_SafeBag_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_SafeBag_free(SafeBag *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails. A NULL
 * value beside an identifier ends the process.
 */
uint32_t asn1_SafeBag_e(uint8_t **pp, const SafeBag *pElement);
/** Gives the cursor behind the last field of the SafeBag that was recognised, or NULL. */
const uint8_t *asn1_SafeBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              SafeBag **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
SafeBag *asn1_SafeBag_clone(const SafeBag *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
CertBag *asn1_CertBag_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_CertBag_free(CertBag *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails. A NULL
 * value beside an identifier ends the process.
 */
uint32_t asn1_CertBag_e(uint8_t **pp, const CertBag *pElement);
/** Gives the cursor behind the last field of the CertBag that was recognised, or NULL. */
const uint8_t *asn1_CertBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              CertBag **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
CertBag *asn1_CertBag_clone(const CertBag *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
CRLBag *asn1_CRLBag_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_CRLBag_free(CRLBag *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails. A NULL
 * value beside an identifier ends the process.
 */
uint32_t asn1_CRLBag_e(uint8_t **pp, const CRLBag *pElement);
/** Gives the cursor behind the last field of the CRLBag that was recognised, or NULL. */
const uint8_t *asn1_CRLBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             CRLBag **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
CRLBag *asn1_CRLBag_clone(const CRLBag *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
SecretBag *asn1_SecretBag_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_SecretBag_free(SecretBag *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails. A NULL
 * value beside an identifier ends the process.
 */
uint32_t asn1_SecretBag_e(uint8_t **pp, const SecretBag *pElement);
/** Gives the cursor behind the last field of the SecretBag that was recognised, or NULL. */
const uint8_t *asn1_SecretBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                SecretBag **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
SecretBag *asn1_SecretBag_clone(const SecretBag *pElement);

/* Object identifiers. Each getter gives the same constant record on every call. It belongs to the
 * library: it is never released, nor stored in a record that will be. */

/** Gives pkcs_12, 1.2.840.113549.1.12. */
const ObjId *asn1_Get_pkcs_12(void);
/** Gives pkcs_12PbeIds, 1.2.840.113549.1.12.1. */
const ObjId *asn1_Get_pkcs_12PbeIds(void);
/** Gives pbeWithSHA1And128BitRC4, 1.2.840.113549.1.12.1.1. */
const ObjId *asn1_Get_pbeWithSHA1And128BitRC4(void);
/** Gives pbeWithSHA1And40BitRC4, 1.2.840.113549.1.12.1.2. */
const ObjId *asn1_Get_pbeWithSHA1And40BitRC4(void);
/** Gives pbeWithSHA1And3_KeyTripleDES_CBC, 1.2.840.113549.1.12.1.3. */
const ObjId *asn1_Get_pbeWithSHA1And3_KeyTripleDES_CBC(void);
/** Gives pbeWithSHA1And2_KeyTripleDES_CBC, 1.2.840.113549.1.12.1.4. */
const ObjId *asn1_Get_pbeWithSHA1And2_KeyTripleDES_CBC(void);
/** Gives pbeWithSHA1And128BitRC2, 1.2.840.113549.1.12.1.5. */
const ObjId *asn1_Get_pbeWithSHA1And128BitRC2(void);
/** Gives pbeWithSHA1And40BitRC2, 1.2.840.113549.1.12.1.6. */
const ObjId *asn1_Get_pbeWithSHA1And40BitRC2(void);
/** Gives pkcs_12Version1, 1.2.840.113549.1.12.10. */
const ObjId *asn1_Get_pkcs_12Version1(void);
/** Gives pkcs_12BagIds, 1.2.840.113549.1.12.10.1. */
const ObjId *asn1_Get_pkcs_12BagIds(void);
/** Gives keyBag, 1.2.840.113549.1.12.10.1.1. */
const ObjId *asn1_Get_keyBag(void);
/** Gives pkcs_8ShroudedKeyBag, 1.2.840.113549.1.12.10.1.2. */
const ObjId *asn1_Get_pkcs_8ShroudedKeyBag(void);
/** Gives certBag, 1.2.840.113549.1.12.10.1.3. */
const ObjId *asn1_Get_certBag(void);
/** Gives crlBag, 1.2.840.113549.1.12.10.1.4. */
const ObjId *asn1_Get_crlBag(void);
/** Gives secretBag, 1.2.840.113549.1.12.10.1.5. */
const ObjId *asn1_Get_secretBag(void);
/** Gives safeContentBag, 1.2.840.113549.1.12.10.1.6. */
const ObjId *asn1_Get_safeContentBag(void);
/** Gives x509Certificate, 1.2.840.113549.1.9.22.1. */
const ObjId *asn1_Get_x509Certificate(void);
/** Gives sdsiCertificate, 1.2.840.113549.1.9.22.2. */
const ObjId *asn1_Get_sdsiCertificate(void);
/** Gives x509Crl, 1.2.840.113549.1.9.23.1. */
const ObjId *asn1_Get_x509Crl(void);

#ifdef __cplusplus
}
#endif

#endif
