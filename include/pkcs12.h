/**
 * @file pkcs12.h
 * Personal information exchange (PKCS #12, RFC 7292).
 *
 * The value of a bag is one whole element, not decoded: look at the identifier of the bag, then
 * decode the value. AuthenticatedSafe and SafeContents have no record of their own; they are lists
 * of ContentInfo and SafeBag.
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
  Integer *iterations;  /**< owned; NULL where absent, which means 1 */
} MacData;

/** PFX ::= SEQUENCE { version INTEGER, authSafe ContentInfo, macData OPTIONAL }. */
typedef struct PFX {
  Integer *version;      /**< owned */
  ContentInfo *authSafe; /**< owned */
  MacData *macData;      /**< owned; NULL where absent */
} PFX;

/** pkcs-12PbeParams ::= SEQUENCE { salt OCTET STRING, iterations INTEGER } (RFC 7292, C). */
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
  List *bagAttributes; /**< Attribute records, owned; NULL where absent */
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

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
PFX *asn1_PFX_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_PFX_free(PFX *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_PFX_e(uint8_t **pp, const PFX *pElement);
/**
 * Decodes a PFX. Returns the cursor past the last field that it recognises, and past the
 * end-of-contents where the length is indefinite. Returns NULL on failure. What authSafe holds may
 * end the process, as asn1_ContentInfo_d() says.
 */
const uint8_t *asn1_PFX_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, PFX **ppElement,
                          uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL, or ends the process, where
 * asn1_ContentInfo_clone() does.
 */
PFX *asn1_PFX_clone(const PFX *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
MacData *asn1_MacData_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_MacData_free(MacData *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_MacData_e(uint8_t **pp, const MacData *pElement);
/** Decodes a MacData. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_MacData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              MacData **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
MacData *asn1_MacData_clone(const MacData *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
PbeParams *asn1_PbeParams_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_PbeParams_free(PbeParams *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_PbeParams_e(uint8_t **pp, const PbeParams *pElement);
/** Decodes a PbeParams. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_PbeParams_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                PbeParams **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
PbeParams *asn1_PbeParams_clone(const PbeParams *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
SafeBag *asn1_SafeBag_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_SafeBag_free(SafeBag *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. An
 * identifier with a NULL value ends the process.
 */
uint32_t asn1_SafeBag_e(uint8_t **pp, const SafeBag *pElement);
/** Decodes a SafeBag. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_SafeBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              SafeBag **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
SafeBag *asn1_SafeBag_clone(const SafeBag *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
CertBag *asn1_CertBag_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_CertBag_free(CertBag *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. An
 * identifier with a NULL value ends the process.
 */
uint32_t asn1_CertBag_e(uint8_t **pp, const CertBag *pElement);
/** Decodes a CertBag. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_CertBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              CertBag **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
CertBag *asn1_CertBag_clone(const CertBag *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
CRLBag *asn1_CRLBag_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_CRLBag_free(CRLBag *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. An
 * identifier with a NULL value ends the process.
 */
uint32_t asn1_CRLBag_e(uint8_t **pp, const CRLBag *pElement);
/** Decodes a CRLBag. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_CRLBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             CRLBag **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
CRLBag *asn1_CRLBag_clone(const CRLBag *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
SecretBag *asn1_SecretBag_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_SecretBag_free(SecretBag *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. An
 * identifier with a NULL value ends the process.
 */
uint32_t asn1_SecretBag_e(uint8_t **pp, const SecretBag *pElement);
/** Decodes a SecretBag. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_SecretBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                SecretBag **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
SecretBag *asn1_SecretBag_clone(const SecretBag *pElement);

/* Object identifiers. Each getter returns the same constant record on every call. The library owns
 * it: never release it. In a record that will be released, store a copy of asn1_ObjId_clone(). */

/** Returns pkcs_12, 1.2.840.113549.1.12. */
const ObjId *asn1_Get_pkcs_12(void);
/** Returns pkcs_12PbeIds, 1.2.840.113549.1.12.1. */
const ObjId *asn1_Get_pkcs_12PbeIds(void);
/** Returns pbeWithSHA1And128BitRC4, 1.2.840.113549.1.12.1.1. */
const ObjId *asn1_Get_pbeWithSHA1And128BitRC4(void);
/** Returns pbeWithSHA1And40BitRC4, 1.2.840.113549.1.12.1.2. */
const ObjId *asn1_Get_pbeWithSHA1And40BitRC4(void);
/** Returns pbeWithSHA1And3_KeyTripleDES_CBC, 1.2.840.113549.1.12.1.3. */
const ObjId *asn1_Get_pbeWithSHA1And3_KeyTripleDES_CBC(void);
/** Returns pbeWithSHA1And2_KeyTripleDES_CBC, 1.2.840.113549.1.12.1.4. */
const ObjId *asn1_Get_pbeWithSHA1And2_KeyTripleDES_CBC(void);
/** Returns pbeWithSHA1And128BitRC2, 1.2.840.113549.1.12.1.5. */
const ObjId *asn1_Get_pbeWithSHA1And128BitRC2(void);
/** Returns pbeWithSHA1And40BitRC2, 1.2.840.113549.1.12.1.6. */
const ObjId *asn1_Get_pbeWithSHA1And40BitRC2(void);
/** Returns pkcs_12Version1, 1.2.840.113549.1.12.10. */
const ObjId *asn1_Get_pkcs_12Version1(void);
/** Returns pkcs_12BagIds, 1.2.840.113549.1.12.10.1. */
const ObjId *asn1_Get_pkcs_12BagIds(void);
/** Returns keyBag, 1.2.840.113549.1.12.10.1.1. */
const ObjId *asn1_Get_keyBag(void);
/** Returns pkcs_8ShroudedKeyBag, 1.2.840.113549.1.12.10.1.2. */
const ObjId *asn1_Get_pkcs_8ShroudedKeyBag(void);
/** Returns certBag, 1.2.840.113549.1.12.10.1.3. */
const ObjId *asn1_Get_certBag(void);
/** Returns crlBag, 1.2.840.113549.1.12.10.1.4. */
const ObjId *asn1_Get_crlBag(void);
/** Returns secretBag, 1.2.840.113549.1.12.10.1.5. */
const ObjId *asn1_Get_secretBag(void);
/** Returns safeContentBag, 1.2.840.113549.1.12.10.1.6. */
const ObjId *asn1_Get_safeContentBag(void);
/** Returns x509Certificate, 1.2.840.113549.1.9.22.1. */
const ObjId *asn1_Get_x509Certificate(void);
/** Returns sdsiCertificate, 1.2.840.113549.1.9.22.2. */
const ObjId *asn1_Get_sdsiCertificate(void);
/** Returns x509Crl, 1.2.840.113549.1.9.23.1. */
const ObjId *asn1_Get_x509Crl(void);

#ifdef __cplusplus
}
#endif

#endif
