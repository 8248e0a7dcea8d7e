/**
 * @file algorithms.h
 * Object identifiers: digest, signature and key algorithms.
 *
 * Each getter returns the same constant record on every call. The library owns it: never release
 * it. In a record that will be released, store a copy of asn1_ObjId_clone(): without it, a compiler
 * warns of the `const` that is lost.
 */
#ifndef ORVELASN1_ALGORITHMS_H
#define ORVELASN1_ALGORITHMS_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Returns rsaSignatureWithripemd160, 1.3.36.3.3.1.2. */
const ObjId *asn1_Get_rsaSignatureWithripemd160(void);
/** Returns ansi_X9_62, 1.2.840.10045. */
const ObjId *asn1_Get_ansi_X9_62(void);
/** Returns id_ecPublicKey, 1.2.840.10045.2.1. */
const ObjId *asn1_Get_id_ecPublicKey(void);
/** Returns RIPEMD_160, 1.3.36.3.2.1. */
const ObjId *asn1_Get_RIPEMD_160(void);
/** Returns rsaEncryption, 1.2.840.113549.1.1.1. */
const ObjId *asn1_Get_rsaEncryption(void);
/** Returns md2WithRSAEncryption, 1.2.840.113549.1.1.2. */
const ObjId *asn1_Get_md2WithRSAEncryption(void);
/** Returns md5WithRSAEncryption, 1.2.840.113549.1.1.4. */
const ObjId *asn1_Get_md5WithRSAEncryption(void);
/** Returns sha_1WithRSAEncryption, 1.2.840.113549.1.1.5. */
const ObjId *asn1_Get_sha_1WithRSAEncryption(void);
/** Returns sha256WithRSAEncryption, 1.2.840.113549.1.1.11. */
const ObjId *asn1_Get_sha256WithRSAEncryption(void);
/** Returns sha384WithRSAEncryption, 1.2.840.113549.1.1.12. */
const ObjId *asn1_Get_sha384WithRSAEncryption(void);
/** Returns sha512WithRSAEncryption, 1.2.840.113549.1.1.13. */
const ObjId *asn1_Get_sha512WithRSAEncryption(void);
/** Returns id_SHA1, 1.3.14.3.2.26. */
const ObjId *asn1_Get_id_SHA1(void);
/** Returns md2, 1.2.840.113549.2.2. */
const ObjId *asn1_Get_md2(void);
/** Returns md5, 1.2.840.113549.2.5. */
const ObjId *asn1_Get_md5(void);

#ifdef __cplusplus
}
#endif

#endif
