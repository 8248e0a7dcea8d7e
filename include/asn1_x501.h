/**
 * @file asn1_x501.h
 * Distinguished names (ITU-T X.501, RFC 5280 4.1.2.4) as a structure and as a text.
 *
 * The structure is an RDNSequence: a list of RelativeDistinguishedName lists of
 * AttributeValueAssertion records. The text, a Name, is a form of this library's own:
 *
 *     /c(19)=DE/o(12)=A//B/,C/2.5.4.9(20)=Main St,cn(19)=Some One
 *
 * Each RDN begins with "/"; the assertions of one RDN are separated by ",". An assertion is a short
 * name or a dotted identifier, the identifier octet of the value in parentheses, "=", and the
 * octets of the value, with a "/" before each "/" and ",". The reader accepts short names in any
 * case. Without parentheses it takes the identifier octet to be 19 (PrintableString).
 *
 * The reader tries the short names as a prefix in this order: gid, cn, gn, ou, sp, c, g, i, l, m,
 * n, o, s, t, sn. "sn" (serial number) can be written but not read back, since "s" comes first.
 */
#ifndef ORVELASN1_ASN1_X501_H
#define ORVELASN1_ASN1_X501_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** AttributeTypeAndValue ::= SEQUENCE { type OBJECT IDENTIFIER, value ANY DEFINED BY type }. */
typedef struct AttributeValueAssertion {
  ObjId *type;       /**< the attribute type, owned */
  int32_t valueTag;  /**< the identifier octet of the value; 0 to 255 after decoding */
  ASN1String *value; /**< the content octets of the value, owned */
} AttributeValueAssertion;

/** RelativeDistinguishedName ::= SET OF AttributeTypeAndValue; List_new(0) makes one. */
typedef List RelativeDistinguishedName;

/** RDNSequence ::= SEQUENCE OF RelativeDistinguishedName; List_new(0) makes one. */
typedef List RDNSequence;

/** A distinguished name as a terminated text. */
typedef char Name;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
AttributeValueAssertion *asn1_AttributeValueAssertion_new(void);

/** Releases the record and what it owns. NULL is ignored. */
void asn1_AttributeValueAssertion_free(AttributeValueAssertion *pElement);

/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 when `type` or
 * `value` fails. The low 8 bits of `valueTag` are the identifier octet of the value.
 */
uint32_t asn1_AttributeValueAssertion_e(uint8_t **pp, const AttributeValueAssertion *pElement);

/**
 * Decodes an assertion. Returns the cursor past its value, or NULL. The value may have any tag.
 */
const uint8_t *asn1_AttributeValueAssertion_d(const uint8_t *z, const uint8_t *end,
                                              uint32_t impl_tag,
                                              AttributeValueAssertion **ppElement, uint32_t depth);

/**
 * Makes a copy with `valueTag` 0, which the caller owns. Returns NULL for NULL, or when memory is
 * exhausted.
 */
AttributeValueAssertion *asn1_AttributeValueAssertion_clone(
    const AttributeValueAssertion *pElement);

/**
 * Compares two records. Returns 0 when they have the same type, tag and octets, otherwise 1, also
 * where a record or its value is NULL. A type that is NULL ends the process.
 */
int32_t asn1_AttributeValueAssertion_cmp(const AttributeValueAssertion *a,
                                         const AttributeValueAssertion *b);

/**
 * Parses the assertion at `*text` and moves `*text` to the NUL, "," or "/" that ends it. Returns a
 * new assertion, which the caller owns. Returns NULL and leaves `*text` alone when the text is not
 * an assertion or memory is exhausted.
 */
AttributeValueAssertion *asn1_AttributeValueAssertion_parse(const char **text);

/** Releases the list and its assertions. NULL is ignored. */
void asn1_RelativeDistinguishedName_free(RelativeDistinguishedName *pElement);

/** Encodes the SET in list order. Returns the number of octets, or 0 when an assertion fails. */
uint32_t asn1_RelativeDistinguishedName_e(uint8_t **pp, const RelativeDistinguishedName *pElement);

/** Decodes the SET, as asn1_SetOf_d(). Returns the cursor past it, or NULL. */
const uint8_t *asn1_RelativeDistinguishedName_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                RelativeDistinguishedName **ppElement,
                                                uint32_t depth);

/**
 * Makes a copy whose assertions have `valueTag` 0, which the caller owns. Returns NULL for NULL, or
 * when memory is exhausted.
 */
RelativeDistinguishedName *asn1_RelativeDistinguishedName_clone(
    const RelativeDistinguishedName *pElement);

/**
 * Compares two lists. Returns 0 when they have the same length and every assertion of `a` is in
 * `b`, otherwise 1. The order does not count, nor how often an assertion occurs.
 */
int32_t asn1_RelativeDistinguishedName_cmp(const RelativeDistinguishedName *a,
                                           const RelativeDistinguishedName *b);

/** Releases the sequence and everything in it. NULL is ignored. */
void asn1_RDNSequence_free(RDNSequence *pElement);

/** Encodes the SEQUENCE. Returns the number of octets, or 0 when an RDN fails. */
uint32_t asn1_RDNSequence_e(uint8_t **pp, const RDNSequence *pElement);

/** Decodes the SEQUENCE, as asn1_SeqOf_d(). Returns the cursor past it, or NULL. */
const uint8_t *asn1_RDNSequence_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  RDNSequence **ppElement, uint32_t depth);

/**
 * Makes a copy whose assertions have `valueTag` 0, which the caller owns. Returns NULL for NULL, or
 * when memory is exhausted.
 */
RDNSequence *asn1_RDNSequence_clone(const RDNSequence *pElement);

/**
 * Compares two sequences. Returns 0 when they have the same length and every RDN of `a` is in `b`,
 * otherwise 1. The order does not count, nor how often an RDN occurs.
 */
int32_t asn1_RDNSequence_cmp(const RDNSequence *a, const RDNSequence *b);

/**
 * Finds the first assertion of the type `oid`, which the sequence still owns. Returns it, or NULL,
 * and stores the result in `*ppElement` too.
 */
AttributeValueAssertion *asn1_RDNSequence_getAttr(const RDNSequence *sequence, const ObjId *oid,
                                                  AttributeValueAssertion **ppElement);

/**
 * Makes the text of a name, which the caller owns. Returns NULL when the sequence has no RDN, when
 * an assertion has no value, or when memory is exhausted. A value is cut at its first NUL octet. A
 * `valueTag` that takes more than two characters in decimal ends the process.
 */
Name *asn1_RDNSequence_to_Name(const RDNSequence *sequence);

/**
 * Makes the structure of a text, which the caller owns. Returns NULL for NULL, when the text is not
 * a name, or when memory is exhausted.
 */
RDNSequence *asn1_Name_to_RDNSequence(const Name *name);

/** Makes a zeroed buffer of `length` + 1 octets. Returns NULL when memory is exhausted. */
Name *asn1_Name_new(uint32_t length);

/** Releases the text. NULL is ignored. */
void asn1_Name_free(Name *pElement);

/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
Name *asn1_Name_clone(const Name *pElement);

/**
 * Encodes the RDNSequence of the text. Returns the number of octets, or 0 when the text is not a
 * name.
 */
uint32_t asn1_Name_e(uint8_t **pp, const Name *name);

/**
 * Decodes an RDNSequence to a text. Returns the cursor past it, or NULL. A name without an RDN (30
 * 00) fails. A value whose identifier octet is 100 or more ends the process.
 */
const uint8_t *asn1_Name_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           Name **ppElement, uint32_t depth);

#ifdef __cplusplus
}
#endif

#endif
