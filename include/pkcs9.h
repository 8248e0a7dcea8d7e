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

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
Attribute *asn1_Attribute_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_Attribute_free(Attribute *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_Attribute_e(uint8_t **pp, const Attribute *pElement);
/** Gives the cursor behind the last field of the Attribute that was recognised, or NULL. */
const uint8_t *asn1_Attribute_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                Attribute **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
Attribute *asn1_Attribute_clone(const Attribute *pElement);

/** Gives the first Attribute of `attributes` whose type is `oid`, which stays with the list, or
 * NULL.
 * `oid` must not be NULL, unless the list is empty. */
Attribute *asn1_Attributes_getAttribute(const List *attributes, const ObjId *oid);

/* Object identifiers. Each getter gives the same constant record on every call. It belongs to the
 * library: it is never released, nor stored in a record that will be. */

/** Gives emailAddress, 1.2.840.113549.1.9.1. */
const ObjId *asn1_Get_emailAddress(void);
/** Gives unstructuredName, 1.2.840.113549.1.9.2. */
const ObjId *asn1_Get_unstructuredName(void);
/** Gives contentType, 1.2.840.113549.1.9.3. */
const ObjId *asn1_Get_contentType(void);
/** Gives messageDigest, 1.2.840.113549.1.9.4. */
const ObjId *asn1_Get_messageDigest(void);
/** Gives signingTime, 1.2.840.113549.1.9.5. */
const ObjId *asn1_Get_signingTime(void);
/** Gives counterSignature, 1.2.840.113549.1.9.6. */
const ObjId *asn1_Get_counterSignature(void);
/** Gives challengePassword, 1.2.840.113549.1.9.7. */
const ObjId *asn1_Get_challengePassword(void);
/** Gives unstructuredAddress, 1.2.840.113549.1.9.8. */
const ObjId *asn1_Get_unstructuredAddress(void);
/** Gives extendedCertificateAttributes, 1.2.840.113549.1.9.9. */
const ObjId *asn1_Get_extendedCertificateAttributes(void);
/** Gives issuerAndSerialNumber, 1.2.840.113549.1.9.10. */
const ObjId *asn1_Get_issuerAndSerialNumber(void);
/** Gives passwordCheck, 1.2.840.113549.1.9.11. */
const ObjId *asn1_Get_passwordCheck(void);
/** Gives publicKey, 1.2.840.113549.1.9.12. */
const ObjId *asn1_Get_publicKey(void);
/** Gives signingDescription, 1.2.840.113549.1.9.13. */
const ObjId *asn1_Get_signingDescription(void);
/** Gives extensionRequest, 1.2.840.113549.1.9.14. */
const ObjId *asn1_Get_extensionRequest(void);
/** Gives smimeCapabilities, 1.2.840.113549.1.9.15. */
const ObjId *asn1_Get_smimeCapabilities(void);
/** Gives friendlyName, 1.2.840.113549.1.9.20. */
const ObjId *asn1_Get_friendlyName(void);
/** Gives localKeyId, 1.2.840.113549.1.9.21. */
const ObjId *asn1_Get_localKeyId(void);
/** Gives certTypes, 1.2.840.113549.1.9.22. */
const ObjId *asn1_Get_certTypes(void);
/** Gives crlTypes, 1.2.840.113549.1.9.23. */
const ObjId *asn1_Get_crlTypes(void);
/** Gives userPKCS12, 2.16.840.1.113730.3.1.216. */
const ObjId *asn1_Get_userPKCS12(void);
/** Gives pkcs15Token, 1.2.840.113549.1.9.25.1. */
const ObjId *asn1_Get_pkcs15Token(void);
/** Gives encryptedPrivateKeyInfo, 1.2.840.113549.1.9.25.2. */
const ObjId *asn1_Get_encryptedPrivateKeyInfo(void);
/** Gives randomNonce, 1.2.840.113549.1.9.25.3. */
const ObjId *asn1_Get_randomNonce(void);
/** Gives sequenceNumber, 1.2.840.113549.1.9.25.4. */
const ObjId *asn1_Get_sequenceNumber(void);
/** Gives pkcs7PDU, 1.2.840.113549.1.9.25.5. */
const ObjId *asn1_Get_pkcs7PDU(void);
/** Gives dateOfBirth, 1.3.6.1.5.5.7.9.1. */
const ObjId *asn1_Get_dateOfBirth(void);
/** Gives placeOfBirth, 1.3.6.1.5.5.7.9.2. */
const ObjId *asn1_Get_placeOfBirth(void);
/** Gives gender, 1.3.6.1.5.5.7.9.3. */
const ObjId *asn1_Get_gender(void);
/** Gives countryOfCitizenship, 1.3.6.1.5.5.7.9.4. */
const ObjId *asn1_Get_countryOfCitizenship(void);
/** Gives countryOfResidence, 1.3.6.1.5.5.7.9.5. */
const ObjId *asn1_Get_countryOfResidence(void);

#ifdef __cplusplus
}
#endif

#endif
