/**
 * @file pkcs12.h
 * Object identifiers: personal information exchange (PKCS #12, RFC 7292).
 *
 * Each getter gives the same constant record on every call. It belongs to the library: it is never
 * released, nor stored in a record that will be.
 */
#ifndef PKCS12_H
#define PKCS12_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

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
