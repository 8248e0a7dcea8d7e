/**
 * @file pkcs7.h
 * Cryptographic message syntax (PKCS #7, RFC 2315).
 *
 * Nothing is signed, verified or decrypted. Certificates and CRLs in a message are whole elements,
 * not decoded.
 */
#ifndef ORVELASN1_PKCS7_H
#define ORVELASN1_PKCS7_H

#include "asn1_x501.h"
#include "pkcs9.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The value of a ContentInfo, whose `contentType` decides the type of `value`. */
typedef struct Content {
  void *value; /**< an OctetString for data, a SignedData, an EncryptedData, for any other type an
                  Any; owned by the ContentInfo; or NULL */
} Content;

/**
 * ContentInfo ::= SEQUENCE { contentType OBJECT IDENTIFIER, content [0] EXPLICIT ANY DEFINED BY
 * contentType OPTIONAL }.
 */
typedef struct ContentInfo {
  ObjId *contentType; /**< owned */
  Content *content;   /**< owned; asn1_ContentInfo_new() makes it */
} ContentInfo;

/** IssuerAndSerialNumber ::= SEQUENCE { issuer Name, serialNumber INTEGER }. */
typedef struct IssuerAndSerialNumber {
  Name *issuer;               /**< owned */
  OctetString *issuerEncoded; /**< the element as read, header included; owned, or NULL */
  Integer *serialNumber;      /**< owned */
} IssuerAndSerialNumber;

/** SignerInfo ::= SEQUENCE (RFC 2315, 9.2). */
typedef struct SignerInfo {
  Integer *version;                             /**< owned */
  IssuerAndSerialNumber *issuerAndSerialNumber; /**< owned */
  AlgId *digestAlgorithm;                       /**< owned */
  List *authenticatedAttributes;                /**< [0], Attribute records, owned, or NULL */
  AlgId *digestEncryptionAlgorithm;             /**< owned */
  OctetString *encryptedDigest;                 /**< owned */
  List *unauthenticatedAttributes;              /**< [1], Attribute records, owned, or NULL */
} SignerInfo;

/** SignedData ::= SEQUENCE (RFC 2315, 9.1). */
typedef struct SignedData {
  Integer *version;         /**< owned */
  List *digestAlgorithms;   /**< AlgId records, owned */
  ContentInfo *contentInfo; /**< owned */
  List *certificates;       /**< [0], Any records, owned, or NULL */
  List *crls;               /**< [1], Any records, owned, or NULL */
  List *signerInfos;        /**< SignerInfo records, owned */
} SignedData;

/**
 * EncryptedContentInfo ::= SEQUENCE { contentType, contentEncryptionAlgorithm, encryptedContent [0]
 * IMPLICIT OCTET STRING OPTIONAL }.
 */
typedef struct EncryptedContentInfo {
  ObjId *contentType;                /**< owned */
  AlgId *contentEncryptionAlgorithm; /**< owned */
  OctetString *encryptedContent;     /**< owned; NULL where absent, which cannot be encoded */
} EncryptedContentInfo;

/** EncryptedData ::= SEQUENCE { version INTEGER, encryptedContentInfo }. */
typedef struct EncryptedData {
  Integer *version;                           /**< owned */
  EncryptedContentInfo *encryptedContentInfo; /**< owned */
} EncryptedData;

/**
 * Makes a record with an empty `content`. Returns NULL when there is no memory for the record. When
 * there is no memory for `content` the process ends. The record cannot be released before
 * `contentType` is set.
 */
ContentInfo *asn1_ContentInfo_new(void);
/**
 * Releases the record and what it owns. NULL is ignored. A record without a `contentType` or
 * without a `content` ends the process.
 */
void asn1_ContentInfo_free(ContentInfo *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 when a field fails
 * or the nesting is deeper than the stack of the thread allows.
 */
uint32_t asn1_ContentInfo_e(uint8_t **pp, const ContentInfo *pElement);
/**
 * Decodes a ContentInfo. Returns the cursor past the last field that it recognises, and past the
 * end-of-contents where the length is indefinite. Returns NULL on failure, also where the nesting
 * is deeper than the stack of the thread allows. An input that opens as a ContentInfo but has no
 * well-formed identifier in it ends the process. So does exhausted memory where that identifier is
 * read. A value in the name of a signer's issuer may end the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_ContentInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  ContentInfo **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, when memory is exhausted, or
 * where the nesting is deeper than the stack of the thread allows. A record with a `content` and
 * without a `contentType` ends the process. So does exhausted memory before the type is copied.
 */
ContentInfo *asn1_ContentInfo_clone(const ContentInfo *pElement);

/** Makes a slot without a value. Returns NULL when memory is exhausted. */
Content *asn1_Content_new(void);
/** Releases the slot, but not its value. NULL is ignored. */
void asn1_Content_free(Content *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
SignedData *asn1_SignedData_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_SignedData_free(SignedData *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_SignedData_e(uint8_t **pp, const SignedData *pElement);
/**
 * Decodes a SignedData. Returns the cursor past the last field that it recognises, or NULL. What
 * contentInfo and signerInfos hold may end the process, as asn1_ContentInfo_d() says.
 */
const uint8_t *asn1_SignedData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 SignedData **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL, or ends the process, where
 * asn1_ContentInfo_clone() does.
 */
SignedData *asn1_SignedData_clone(const SignedData *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
SignerInfo *asn1_SignerInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_SignerInfo_free(SignerInfo *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_SignerInfo_e(uint8_t **pp, const SignerInfo *pElement);
/**
 * Decodes a SignerInfo. Returns the cursor past the last field that it recognises, or NULL. A value
 * in the name of the issuer may end the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_SignerInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 SignerInfo **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
SignerInfo *asn1_SignerInfo_clone(const SignerInfo *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
IssuerAndSerialNumber *asn1_IssuerAndSerialNumber_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_IssuerAndSerialNumber_free(IssuerAndSerialNumber *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. The
 * issuer is written from its encoded form or, without that, from its text.
 */
uint32_t asn1_IssuerAndSerialNumber_e(uint8_t **pp, const IssuerAndSerialNumber *pElement);
/**
 * Decodes an IssuerAndSerialNumber. Returns the cursor past the last field that it recognises, or
 * NULL. A value in the name may end the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_IssuerAndSerialNumber_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            IssuerAndSerialNumber **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
IssuerAndSerialNumber *asn1_IssuerAndSerialNumber_clone(const IssuerAndSerialNumber *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
EncryptedData *asn1_EncryptedData_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_EncryptedData_free(EncryptedData *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_EncryptedData_e(uint8_t **pp, const EncryptedData *pElement);
/**
 * Decodes an EncryptedData. Returns the cursor past the last field that it recognises, and past the
 * end-of-contents where the length is indefinite. Returns NULL on failure.
 */
const uint8_t *asn1_EncryptedData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    EncryptedData **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
EncryptedData *asn1_EncryptedData_clone(const EncryptedData *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
EncryptedContentInfo *asn1_EncryptedContentInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_EncryptedContentInfo_free(EncryptedContentInfo *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. A NULL
 * `encryptedContent` ends the process.
 */
uint32_t asn1_EncryptedContentInfo_e(uint8_t **pp, const EncryptedContentInfo *pElement);
/**
 * Decodes an EncryptedContentInfo. Returns the cursor past the last field that it recognises, and
 * past the end-of-contents where the length is indefinite. Returns NULL on failure.
 */
const uint8_t *asn1_EncryptedContentInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           EncryptedContentInfo **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
EncryptedContentInfo *asn1_EncryptedContentInfo_clone(const EncryptedContentInfo *pElement);

/* Object identifiers. Each getter returns the same constant record on every call. The library owns
 * it: never release it. In a record that will be released, store a copy of asn1_ObjId_clone(). */

/** Returns data, 1.2.840.113549.1.7.1. */
const ObjId *asn1_Get_data(void);
/** Returns signedData, 1.2.840.113549.1.7.2. */
const ObjId *asn1_Get_signedData(void);
/** Returns envelopedData, 1.2.840.113549.1.7.3. */
const ObjId *asn1_Get_envelopedData(void);
/** Returns signedAndEnvelopedData, 1.2.840.113549.1.7.4. */
const ObjId *asn1_Get_signedAndEnvelopedData(void);
/** Returns digestedData, 1.2.840.113549.1.7.5. */
const ObjId *asn1_Get_digestedData(void);
/** Returns encryptedData, 1.2.840.113549.1.7.6. */
const ObjId *asn1_Get_encryptedData(void);

#ifdef __cplusplus
}
#endif

#endif
