/**
 * @file dsa_dh.h
 * DSA (FIPS 186) and X9.42 Diffie-Hellman parameters, and their identifiers.
 */
#ifndef ORVELASN1_DSA_DH_H
#define ORVELASN1_DSA_DH_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Dss-Parms ::= SEQUENCE { p, q, g INTEGER } (RFC 3279, 2.3.2). */
typedef struct DssParms {
  Integer *p; /**< owned */
  Integer *q; /**< owned */
  Integer *g; /**< owned */
} DssParms;

/** Dss-Sig-Value ::= SEQUENCE { r, s INTEGER } (RFC 3279, 2.2.2). */
typedef struct DssSigValue {
  Integer *r; /**< owned */
  Integer *s; /**< owned */
} DssSigValue;

/** ValidationParms ::= SEQUENCE { seed BIT STRING, pgenCounter INTEGER } (RFC 3279, 2.3.3). */
typedef struct ValidationParms {
  BitString *seed;      /**< owned */
  Integer *pgenCounter; /**< owned */
} ValidationParms;

/** DomainParameters ::= SEQUENCE { p, g, q, j INTEGER, validationParms } (RFC 3279, 2.3.3). */
typedef struct DomainParameters {
  Integer *p;                       /**< owned */
  Integer *g;                       /**< owned */
  Integer *q;                       /**< owned, or NULL */
  Integer *j;                       /**< owned, or NULL */
  ValidationParms *validationParms; /**< owned, or NULL */
} DomainParameters;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
DssParms *asn1_DssParms_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_DssParms_free(DssParms *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_DssParms_e(uint8_t **pp, const DssParms *pElement);
/** Decodes a DssParms. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_DssParms_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               DssParms **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
DssParms *asn1_DssParms_clone(const DssParms *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
DssSigValue *asn1_DssSigValue_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_DssSigValue_free(DssSigValue *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_DssSigValue_e(uint8_t **pp, const DssSigValue *pElement);
/** Decodes a DssSigValue. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_DssSigValue_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  DssSigValue **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
DssSigValue *asn1_DssSigValue_clone(const DssSigValue *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
ValidationParms *asn1_ValidationParms_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_ValidationParms_free(ValidationParms *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_ValidationParms_e(uint8_t **pp, const ValidationParms *pElement);
/**
 * Decodes a ValidationParms. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_ValidationParms_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      ValidationParms **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
ValidationParms *asn1_ValidationParms_clone(const ValidationParms *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
DomainParameters *asn1_DomainParameters_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_DomainParameters_free(DomainParameters *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_DomainParameters_e(uint8_t **pp, const DomainParameters *pElement);
/**
 * Decodes a DomainParameters. Returns the cursor past the last field that it recognises, or NULL.
 * After `q` there must be `j`, and only after that `validationParms`: the encoder also writes forms
 * that this decoder refuses.
 */
const uint8_t *asn1_DomainParameters_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       DomainParameters **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
DomainParameters *asn1_DomainParameters_clone(const DomainParameters *pElement);

/* Object identifiers. Each getter returns the same constant record on every call. The library owns
 * it: never release it. In a record that will be released, store a copy of asn1_ObjId_clone(). */

/** Returns dhpublicnumber, 1.2.840.10046.2.1. */
const ObjId *asn1_Get_dhpublicnumber(void);
/** Returns id_dsa_with_sha1, 1.2.840.10040.4.3. */
const ObjId *asn1_Get_id_dsa_with_sha1(void);
/** Returns id_dsa, 1.2.840.10040.4.1. */
const ObjId *asn1_Get_id_dsa(void);
/** Returns dsaWithSha, 1.3.14.3.2.13. */
const ObjId *asn1_Get_dsaWithSha(void);
/** Returns dsaWithSha1, 1.3.14.3.2.27. */
const ObjId *asn1_Get_dsaWithSha1(void);
/** Returns dsa, 1.3.14.3.2.12. */
const ObjId *asn1_Get_dsa(void);

#ifdef __cplusplus
}
#endif

#endif
