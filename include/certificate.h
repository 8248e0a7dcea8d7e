/**
 * @file certificate.h
 * X.509 certificates (RFC 5280, 4.1).
 *
 * A decoded certificate keeps, beside the decoded fields, the octets that its signature covers
 * (`tbsEncoded`) and those of its names (`issuerEncoded`, `subjectEncoded`). Where these octets are
 * set, the encoders write them and ignore the decoded form. To change a decoded certificate, first
 * release `tbsEncoded`, and for a name also `issuerEncoded` or `subjectEncoded`, and set them to
 * NULL.
 *
 * Nothing is verified. The value of an extension is not decoded.
 */
#ifndef ORVELASN1_CERTIFICATE_H
#define ORVELASN1_CERTIFICATE_H

#include "asn1_x501.h"
#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Validity ::= SEQUENCE { notBefore Time, notAfter Time }. */
typedef struct Validity {
  Time *notBefore; /**< owned */
  Time *notAfter;  /**< owned */
} Validity;

/** SubjectPublicKeyInfo ::= SEQUENCE { algorithm, subjectPublicKey BIT STRING }. */
typedef struct SubjectPKI {
  AlgId *algorithm;            /**< owned */
  BitString *subjectPublicKey; /**< owned; its octets are zeroed before it is released */
} SubjectPKI;

/**
 * Extension ::= SEQUENCE { extnID OBJECT IDENTIFIER, critical BOOLEAN DEFAULT FALSE,
 *   extnValue OCTET STRING }.
 */
typedef struct Extension {
  ObjId *extnID;          /**< owned */
  uint32_t critical;      /**< 0 where absent, otherwise the content octet as read, such as 255 */
  OctetString *extnValue; /**< the content, not decoded; owned */
} Extension;

/** Extensions ::= SEQUENCE OF Extension; List_new(0) makes one. */
typedef List Extensions;

/** TBSCertificate: what the signature of a certificate covers. */
typedef struct Certificate_TBS {
  Integer *version;                 /**< owned; NULL where absent */
  Integer *serialNumber;            /**< owned */
  AlgId *signature;                 /**< the inner algorithm, owned */
  RDNSequence *issuerSequence;      /**< owned, or NULL */
  Name *issuer;                     /**< owned, or NULL */
  OctetString *issuerEncoded;       /**< the element as read, header included; owned, or NULL */
  Validity *validity;               /**< owned */
  RDNSequence *subjectSequence;     /**< owned, or NULL */
  Name *subject;                    /**< owned, or NULL */
  OctetString *subjectEncoded;      /**< the element as read, header included; owned, or NULL */
  SubjectPKI *subjectPublicKeyInfo; /**< owned */
  BitString *issuerUniqueID;        /**< owned, or NULL */
  BitString *subjectUniqueID;       /**< owned, or NULL */
  Extensions *extensions;           /**< owned; NULL where absent */
} Certificate_TBS;

/** Certificate ::= SEQUENCE { tbsCertificate, signatureAlgorithm, signatureValue BIT STRING }. */
typedef struct Certificate {
  OctetString *tbsEncoded; /**< the signed element as read, header included; owned, or NULL */
  Certificate_TBS *tbsCertificate; /**< the same, decoded; owned */
  AlgId *signatureAlgorithm;       /**< the outer algorithm, owned */
  BitString *signatureValue;       /**< owned */
} Certificate;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
Validity *asn1_Validity_new(void);

/** Releases the record and what it owns. NULL is ignored. */
void asn1_Validity_free(Validity *pElement);

/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_Validity_e(uint8_t **pp, const Validity *pElement);

/** Decodes a Validity. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_Validity_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Validity **ppElement, uint32_t depth);

/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for a time of unknown kind in
 * the record, or when memory is exhausted.
 */
Validity *asn1_Validity_clone(const Validity *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
SubjectPKI *asn1_SubjectPKI_new(void);

/** Zeroes the key's octets, then releases the record and what it owns. NULL is ignored. */
void asn1_SubjectPKI_free(SubjectPKI *pElement);

/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. The key
 * goes through asn1_BitString_e(), which shortens one that ends in zero bits.
 */
uint32_t asn1_SubjectPKI_e(uint8_t **pp, const SubjectPKI *pElement);

/** Decodes a SubjectPKI. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_SubjectPKI_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 SubjectPKI **ppElement, uint32_t depth);

/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
SubjectPKI *asn1_SubjectPKI_clone(const SubjectPKI *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
Extension *asn1_Extension_new(void);

/** Releases the record and what it owns. NULL is ignored. */
void asn1_Extension_free(Extension *pElement);

/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure.
 * `critical` is written, as its low octet, where it is not 0.
 */
uint32_t asn1_Extension_e(uint8_t **pp, const Extension *pElement);

/** Decodes an Extension. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_Extension_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                Extension **ppElement, uint32_t depth);

/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
Extension *asn1_Extension_clone(const Extension *pElement);

/** Releases the list and its records. NULL is ignored. */
void asn1_Extensions_free(Extensions *pElement);

/** Encodes the SEQUENCE. Returns the number of octets, or 0 when an extension fails. */
uint32_t asn1_Extensions_e(uint8_t **pp, const Extensions *pElement);

/** Decodes the SEQUENCE, as asn1_SeqOf_d(). Returns the cursor past it, or NULL. */
const uint8_t *asn1_Extensions_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 Extensions **ppElement, uint32_t depth);

/** Makes a deep copy, which the caller owns. Returns NULL when memory is exhausted. */
Extensions *asn1_Extensions_clone(const Extensions *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
Certificate_TBS *asn1_Certificate_TBS_new(void);

/** Releases the record and what it owns. NULL is ignored. */
void asn1_Certificate_TBS_free(Certificate_TBS *pElement);

/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. A name
 * is written from its encoded form; without that, from its sequence; without both, from its text.
 */
uint32_t asn1_Certificate_TBS_e(uint8_t **pp, const Certificate_TBS *pElement);

/**
 * Decodes a TBSCertificate. Returns the cursor past the last field that it recognises, or NULL. An
 * empty issuer or subject fails. So do unique identifiers or extensions without a version, or with
 * version 0. A value in a name under an identifier octet of 100 or more ends the process, as
 * asn1_Name_d() says.
 */
const uint8_t *asn1_Certificate_TBS_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      Certificate_TBS **ppElement, uint32_t depth);

/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for a time of unknown kind in
 * the record, or when memory is exhausted.
 */
Certificate_TBS *asn1_Certificate_TBS_clone(const Certificate_TBS *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
Certificate *asn1_Certificate_new(void);

/** Releases the record and what it owns. NULL is ignored. */
void asn1_Certificate_free(Certificate *pElement);

/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. The
 * signed part is written from `tbsEncoded` or, without that, from `tbsCertificate`.
 */
uint32_t asn1_Certificate_e(uint8_t **pp, const Certificate *pElement);

/**
 * Decodes a Certificate. Returns the cursor past the signature, or NULL. A value in a name under an
 * identifier octet of 100 or more ends the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_Certificate_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  Certificate **ppElement, uint32_t depth);

/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for a time of unknown kind in
 * the record, or when memory is exhausted.
 */
Certificate *asn1_Certificate_clone(const Certificate *pElement);

#ifdef __cplusplus
}
#endif

#endif
