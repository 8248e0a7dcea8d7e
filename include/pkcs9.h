/**
 * @file pkcs9.h
 * Attributes (X.501, PKCS #9, RFC 2985), and the identifiers of PKCS #9 and personal data (RFC
 * 3739).
 */
#ifndef ORVELASN1_PKCS9_H
#define ORVELASN1_PKCS9_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Attribute ::= SEQUENCE { type OBJECT IDENTIFIER, values SET OF ANY }. */
typedef struct Attribute {
  ObjId *type;  /**< owned */
  List *values; /**< Any records, each one whole element; owned */
} Attribute;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
Attribute *asn1_Attribute_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_Attribute_free(Attribute *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_Attribute_e(uint8_t **pp, const Attribute *pElement);
/** Decodes an Attribute. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_Attribute_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                Attribute **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
Attribute *asn1_Attribute_clone(const Attribute *pElement);

/**
 * Finds the first Attribute of `attributes` whose type is `oid`. Returns the record, which the list
 * still owns, or NULL. `oid` must not be NULL, unless the list is empty.
 */
Attribute *asn1_Attributes_getAttribute(const List *attributes, const ObjId *oid);

/* Object identifiers. Each getter returns the same constant record on every call. The library owns
 * it: never release it. In a record that will be released, store a copy of asn1_ObjId_clone(). */

/** Returns emailAddress, 1.2.840.113549.1.9.1. */
const ObjId *asn1_Get_emailAddress(void);
/** Returns unstructuredName, 1.2.840.113549.1.9.2. */
const ObjId *asn1_Get_unstructuredName(void);
/** Returns contentType, 1.2.840.113549.1.9.3. */
const ObjId *asn1_Get_contentType(void);
/** Returns messageDigest, 1.2.840.113549.1.9.4. */
const ObjId *asn1_Get_messageDigest(void);
/** Returns signingTime, 1.2.840.113549.1.9.5. */
const ObjId *asn1_Get_signingTime(void);
/** Returns counterSignature, 1.2.840.113549.1.9.6. */
const ObjId *asn1_Get_counterSignature(void);
/** Returns challengePassword, 1.2.840.113549.1.9.7. */
const ObjId *asn1_Get_challengePassword(void);
/** Returns unstructuredAddress, 1.2.840.113549.1.9.8. */
const ObjId *asn1_Get_unstructuredAddress(void);
/** Returns extendedCertificateAttributes, 1.2.840.113549.1.9.9. */
const ObjId *asn1_Get_extendedCertificateAttributes(void);
/** Returns issuerAndSerialNumber, 1.2.840.113549.1.9.10. */
const ObjId *asn1_Get_issuerAndSerialNumber(void);
/** Returns passwordCheck, 1.2.840.113549.1.9.11. */
const ObjId *asn1_Get_passwordCheck(void);
/** Returns publicKey, 1.2.840.113549.1.9.12. */
const ObjId *asn1_Get_publicKey(void);
/** Returns signingDescription, 1.2.840.113549.1.9.13. */
const ObjId *asn1_Get_signingDescription(void);
/** Returns extensionRequest, 1.2.840.113549.1.9.14. */
const ObjId *asn1_Get_extensionRequest(void);
/** Returns smimeCapabilities, 1.2.840.113549.1.9.15. */
const ObjId *asn1_Get_smimeCapabilities(void);
/** Returns friendlyName, 1.2.840.113549.1.9.20. */
const ObjId *asn1_Get_friendlyName(void);
/** Returns localKeyId, 1.2.840.113549.1.9.21. */
const ObjId *asn1_Get_localKeyId(void);
/** Returns certTypes, 1.2.840.113549.1.9.22. */
const ObjId *asn1_Get_certTypes(void);
/** Returns crlTypes, 1.2.840.113549.1.9.23. */
const ObjId *asn1_Get_crlTypes(void);
/** Returns userPKCS12, 2.16.840.1.113730.3.1.216. */
const ObjId *asn1_Get_userPKCS12(void);
/** Returns pkcs15Token, 1.2.840.113549.1.9.25.1. */
const ObjId *asn1_Get_pkcs15Token(void);
/** Returns encryptedPrivateKeyInfo, 1.2.840.113549.1.9.25.2. */
const ObjId *asn1_Get_encryptedPrivateKeyInfo(void);
/** Returns randomNonce, 1.2.840.113549.1.9.25.3. */
const ObjId *asn1_Get_randomNonce(void);
/** Returns sequenceNumber, 1.2.840.113549.1.9.25.4. */
const ObjId *asn1_Get_sequenceNumber(void);
/** Returns pkcs7PDU, 1.2.840.113549.1.9.25.5. */
const ObjId *asn1_Get_pkcs7PDU(void);
/** Returns dateOfBirth, 1.3.6.1.5.5.7.9.1. */
const ObjId *asn1_Get_dateOfBirth(void);
/** Returns placeOfBirth, 1.3.6.1.5.5.7.9.2. */
const ObjId *asn1_Get_placeOfBirth(void);
/** Returns gender, 1.3.6.1.5.5.7.9.3. */
const ObjId *asn1_Get_gender(void);
/** Returns countryOfCitizenship, 1.3.6.1.5.5.7.9.4. */
const ObjId *asn1_Get_countryOfCitizenship(void);
/** Returns countryOfResidence, 1.3.6.1.5.5.7.9.5. */
const ObjId *asn1_Get_countryOfResidence(void);

#ifdef __cplusplus
}
#endif

#endif
