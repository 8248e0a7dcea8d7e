/**
 * @file pki_view.h
 * Reading without records: the fields of a value as octets of the input, with nothing allocated.
 * For programs that look at one thing in millions of certificates, or at lists of any size.
 *
 * A view is an element as it stands in the input, identifier and length octets included, unless a
 * comment says that it is the content. It points into the input, which must outlive it. A field
 * that is not there has no octets: `length` 0, `data` NULL.
 *
 * A view takes what stands on its own level: each field begins with the identifier octet that its
 * type has there, and together they use the value up. What stands inside a field is not looked at,
 * so that a view may exist of what pki_Certificate_d() refuses. Elements of more than 2^31 - 1
 * content octets are refused.
 *
 * No input and no null pointer ends the process. All of this may be used from any thread.
 */
#ifndef ORVELPKI_VIEW_H
#define ORVELPKI_VIEW_H

#include <stdint.h>

#include "pki_type.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Octets of an input. */
typedef struct pki_Octets {
  const uint8_t *data; /**< NULL where there are none */
  uint32_t length;     /**< number of octets */
} pki_Octets;

/**
 * Finds the fields of a SEQUENCE at `z`, which ends at or in front of `end`. `type` is one of the
 * RFCs' forms, such as pki_Type_find("pki_Validity"). Fills in a view for each of its fields, in
 * the order of pki_Type_field(); `fields` has room for `count` views, which must be their number.
 * Of a field with an explicit tag, the view is the tagged element.
 *
 * Returns the cursor past the value; NULL where the octets are no such SEQUENCE, and where the type
 * is no form of a SEQUENCE with `count` fields.
 */
const uint8_t *pki_view(const pki_Type *type, const uint8_t *z, const uint8_t *end,
                        pki_Octets *fields, uint32_t count);

/** Returns the content of an element, without its identifier and length octets; none of a broken
 * one. */
pki_Octets pki_view_content(pki_Octets element);

/**
 * Takes the next element out of the content of a list, or of any constructed element. Moves
 * `*content` past it. Returns 1; 0 at the end of the content; -1 where the octets there are no
 * element, and then nothing moves.
 */
int32_t pki_view_next(pki_Octets *content, pki_Octets *element);

/** Views of a Certificate (RFC 5280, 4.1). */
typedef struct pki_CertificateView {
  pki_Octets tbsCertificate;       /**< what is signed */
  pki_Octets signatureAlgorithm;   /**< the outer AlgorithmIdentifier */
  pki_Octets signatureValue;       /**< a BIT STRING */
  pki_Octets version;              /**< [0], around an INTEGER; or none */
  pki_Octets serialNumber;         /**< an INTEGER */
  pki_Octets signature;            /**< the inner AlgorithmIdentifier */
  pki_Octets issuer;               /**< a Name */
  pki_Octets validity;             /**< a SEQUENCE of two times */
  pki_Octets subject;              /**< a Name */
  pki_Octets subjectPublicKeyInfo; /**< a SubjectPublicKeyInfo */
  pki_Octets issuerUniqueID;       /**< [1], or none */
  pki_Octets subjectUniqueID;      /**< [2], or none */
  pki_Octets extensions;           /**< [3], around a SEQUENCE OF Extension; or none */
} pki_CertificateView;

/**
 * Finds the fields of a certificate at `z`, and of its tbsCertificate. Returns the cursor past the
 * certificate, or NULL, with all views empty, where the octets are none.
 */
const uint8_t *pki_certificate_view(const uint8_t *z, const uint8_t *end,
                                    pki_CertificateView *view);

/** Views of an Extension (RFC 5280, 4.1.2.9). */
typedef struct pki_ExtensionView {
  pki_Octets extnID;    /**< an OBJECT IDENTIFIER */
  pki_Octets critical;  /**< a BOOLEAN, or none for FALSE */
  pki_Octets extnValue; /**< an OCTET STRING */
} pki_ExtensionView;

/**
 * Finds the first extension with an identifier, given as the content octets of its OBJECT
 * IDENTIFIER, such as 55 1D 11 for subjectAltName. `extensions` is the member of a view: an element
 * around a SEQUENCE OF Extension, or that SEQUENCE itself. Returns 1; 0 where no extension has the
 * identifier; -1 where the octets up to there are no list of extensions.
 */
int32_t pki_extension_view(pki_Octets extensions, const uint8_t *identifier, uint32_t length,
                           pki_ExtensionView *view);

#ifdef __cplusplus
}
#endif

#endif
