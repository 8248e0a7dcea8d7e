/**
 * @file pkcs7.h
 * Object identifiers: cryptographic message syntax (PKCS #7, RFC 2315).
 *
 * Each getter gives the same constant record on every call. It belongs to the library: it is never
 * released, nor stored in a record that will be.
 */
#ifndef PKCS7_H
#define PKCS7_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Gives data, 1.2.840.113549.1.7.1. */
const ObjId *asn1_Get_data(void);
/** Gives signedData, 1.2.840.113549.1.7.2. */
const ObjId *asn1_Get_signedData(void);
/** Gives envelopedData, 1.2.840.113549.1.7.3. */
const ObjId *asn1_Get_envelopedData(void);
/** Gives signedAndEnvelopedData, 1.2.840.113549.1.7.4. */
const ObjId *asn1_Get_signedAndEnvelopedData(void);
/** Gives digestedData, 1.2.840.113549.1.7.5. */
const ObjId *asn1_Get_digestedData(void);
/** Gives encryptedData, 1.2.840.113549.1.7.6. */
const ObjId *asn1_Get_encryptedData(void);

#ifdef __cplusplus
}
#endif

#endif
