/**
 * @file dsa_dh.h
 * Object identifiers: DSA (FIPS 186) and Diffie-Hellman (ANSI X9.42).
 *
 * Each getter gives the same constant record on every call. It belongs to the library: it is never
 * released, nor stored in a record that will be.
 */
#ifndef DSA_DH_H
#define DSA_DH_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Gives dhpublicnumber, 1.2.840.10046.2.1. */
const ObjId *asn1_Get_dhpublicnumber(void);
/** Gives id_dsa_with_sha1, 1.2.840.10040.4.3. */
const ObjId *asn1_Get_id_dsa_with_sha1(void);
/** Gives id_dsa, 1.2.840.10040.4.1. */
const ObjId *asn1_Get_id_dsa(void);
/** Gives dsaWithSha, 1.3.14.3.2.13. */
const ObjId *asn1_Get_dsaWithSha(void);
/** Gives dsaWithSha1, 1.3.14.3.2.27. */
const ObjId *asn1_Get_dsaWithSha1(void);
/** Gives dsa, 1.3.14.3.2.12. */
const ObjId *asn1_Get_dsa(void);

#ifdef __cplusplus
}
#endif

#endif
