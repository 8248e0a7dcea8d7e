/**
 * @file asn1_x501.h
 * Distinguished names (ITU-T X.501, RFC 5280 4.1.2.4) as a structure and as a text.
 *
 * The structure is an RDNSequence: a list of RelativeDistinguishedName lists of
 * AttributeValueAssertion records. The text, a Name, is a form of this library's own:
 *
 *     /c(19)=DE/o(12)=A//B/,C/2.5.4.9(20)=Main St,cn(19)=Some One
 *
 * Each RDN opens with "/", the assertions of one RDN are separated by ",". An assertion is a short
 * name or a dotted identifier, the identifier octet of the value in parentheses, "=", and the
 * octets of the value, with a "/" in front of each "/" and ",". The reader takes short names in any
 * case, and 19 (PrintableString) where there are no parentheses.
 *
 * The short names, in the order in which the reader tries them as a prefix: gid, cn, gn, ou, sp, c,
 * g, i, l, m, n, o, s, t, sn. "sn" (serial number) can be written but not read back, since "s"
 * comes first.
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

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
AttributeValueAssertion *asn1_AttributeValueAssertion_new(void);

/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_AttributeValueAssertion_free(AttributeValueAssertion *pElement);

/**
 * Gives the number of octets of the record, which must not be NULL; 0 when `type` or `value` fails.
 * The low 8 bits of `valueTag` are the identifier octet of the value.
 */
uint32_t asn1_AttributeValueAssertion_e(uint8_t **pp, const AttributeValueAssertion *pElement);

/** Gives the cursor behind the value of the assertion, or NULL. Any tag is taken for the value. */
const uint8_t *asn1_AttributeValueAssertion_d(const uint8_t *z, const uint8_t *end,
                                              uint32_t impl_tag,
                                              AttributeValueAssertion **ppElement, uint32_t depth);

/**
 * Gives a copy, which the caller owns, with `valueTag` 0; NULL for NULL, or when memory is
 * exhausted.
 */
AttributeValueAssertion *asn1_AttributeValueAssertion_clone(
    const AttributeValueAssertion *pElement);

/**
 * Gives 0 when both records have the same type, tag and octets, otherwise 1; 1 also where a record
 * or its value is NULL. A type that is NULL ends the process.
 */
int32_t asn1_AttributeValueAssertion_cmp(const AttributeValueAssertion *a,
                                         const AttributeValueAssertion *b);

/**
 * Gives a new assertion, which the caller owns, from the text at `*text`, and moves `*text` to the
 * NUL, "," or "/" that ends it; NULL, with `*text` left alone, when the text is no assertion or
 * memory is exhausted.
 */
AttributeValueAssertion *asn1_AttributeValueAssertion_parse(const char **text);

/** Gives nothing; releases the list and its assertions. NULL is ignored. */
void asn1_RelativeDistinguishedName_free(RelativeDistinguishedName *pElement);

/** Gives the number of octets of the SET, in list order; 0 when an assertion fails. */
uint32_t asn1_RelativeDistinguishedName_e(uint8_t **pp, const RelativeDistinguishedName *pElement);

/** Gives the cursor behind the SET, or NULL; as asn1_SetOf_d(). */
const uint8_t *asn1_RelativeDistinguishedName_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                RelativeDistinguishedName **ppElement,
                                                uint32_t depth);

/** Gives a copy whose assertions have `valueTag` 0; NULL when memory is exhausted. */
RelativeDistinguishedName *asn1_RelativeDistinguishedName_clone(
    const RelativeDistinguishedName *pElement);

/**
 * Gives 0 when both lists have the same length and every assertion of `a` is in `b`, otherwise 1.
 * The order does not count, nor how often an assertion occurs.
 */
int32_t asn1_RelativeDistinguishedName_cmp(const RelativeDistinguishedName *a,
                                           const RelativeDistinguishedName *b);

/** Gives nothing; releases the sequence and everything in it. NULL is ignored. */
void asn1_RDNSequence_free(RDNSequence *pElement);

/** Gives the number of octets of the SEQUENCE; 0 when an RDN fails. */
uint32_t asn1_RDNSequence_e(uint8_t **pp, const RDNSequence *pElement);

/** Gives the cursor behind the SEQUENCE, or NULL; as asn1_SeqOf_d(). */
const uint8_t *asn1_RDNSequence_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  RDNSequence **ppElement, uint32_t depth);

/** Gives a copy whose assertions have `valueTag` 0; NULL when memory is exhausted. */
RDNSequence *asn1_RDNSequence_clone(const RDNSequence *pElement);

/**
 * Gives 0 when both sequences have the same length and every RDN of `a` is in `b`, otherwise 1. The
 * order does not count, nor how often an RDN occurs.
 */
int32_t asn1_RDNSequence_cmp(const RDNSequence *a, const RDNSequence *b);

/**
 * Gives the first assertion of the type `oid`, which stays in the sequence, or NULL; `*ppElement`
 * becomes the result too.
 */
AttributeValueAssertion *asn1_RDNSequence_getAttr(const RDNSequence *sequence, const ObjId *oid,
                                                  AttributeValueAssertion **ppElement);

/**
 * Gives the text of a name, which the caller owns, or NULL when the sequence has no RDN or memory
 * is exhausted. A value is cut at its first NUL octet. A `valueTag` that takes more than two
 * characters in decimal ends the process.
 */
Name *asn1_RDNSequence_to_Name(const RDNSequence *sequence);

/**
 * Gives the structure of a text, which must not be NULL; the caller owns it. NULL when the text is
 * no name or memory is exhausted.
 */
RDNSequence *asn1_Name_to_RDNSequence(const Name *name);

/** Gives a zeroed buffer of `length` + 1 octets, or NULL when memory is exhausted. */
Name *asn1_Name_new(uint32_t length);

/** Gives nothing; releases the text. NULL is ignored. */
void asn1_Name_free(Name *pElement);

/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
Name *asn1_Name_clone(const Name *pElement);

/** Gives the number of octets of the RDNSequence that the text stands for; 0 when it is no name. */
uint32_t asn1_Name_e(uint8_t **pp, const Name *name);

/**
 * Gives the cursor behind an RDNSequence, which is stored as a text, or NULL. A name without an RDN
 * (30 00) fails. A value whose identifier octet is 100 or more ends the process.
 */
const uint8_t *asn1_Name_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           Name **ppElement, uint32_t depth);

#ifdef __cplusplus
}
#endif

#endif
