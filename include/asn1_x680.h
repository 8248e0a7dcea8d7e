/**
 * @file asn1_x680.h
 * The encoding frame and the universal types of ASN.1 (ITU-T X.680, X.690).
 *
 * Every record type `T` of the library has functions of the same shapes:
 *
 * - `T *asn1_T_new(void)` makes a record with all fields zero. It returns NULL when memory is
 *   exhausted.
 * - `void asn1_T_free(T *)` releases a record and everything that it owns. NULL is ignored.
 * - `uint32_t asn1_T_e(uint8_t **pp, const T *)` encodes. With `pp` NULL it measures: it returns
 *   the number of octets of the encoding, header included. Otherwise it writes them at `*pp`, moves
 *   `*pp` past them and returns the same number. It returns 0 on failure: a record fails when one
 *   of its fields does. The room at `*pp` is not checked: measure first, allocate, then write.
 * - `const uint8_t *asn1_T_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
 *   T **ppElement, uint32_t depth)` decodes the element at `z`. It reads no octet at or past `end`.
 *   It stores a new record, which the caller owns and which holds no pointer into the input, and
 *   returns the cursor past what it read. It returns NULL on failure, and then leaves nothing
 *   allocated. `impl_tag` is 0, or the identifier octet that replaces the type's own. `depth` is
 *   the depth of the trace (see asn1_LogStart()); 0 keeps the call and everything below it silent.
 * - `T *asn1_T_clone(const T *)` makes a deep copy, which the caller owns. It returns NULL for
 *   NULL, or when memory is exhausted.
 * - `int32_t asn1_T_cmp(const T *, const T *)` compares two records. It returns 0 when they are
 *   equal.
 *
 * A tag is one identifier octet: class, constructed bit and number together (X.690, 8.1.2). Tag
 * numbers above 30, which take more identifier octets, are not supported. Only the low 8 bits of a
 * tag argument count.
 *
 * A programmer's error, such as a NULL where a pointer is required, ends the process with one line
 * on standard error. Bad input never does, with two exceptions: a name with a value under an
 * identifier octet of 100 or more, see asn1_Name_d(), and a ContentInfo without a well-formed
 * identifier, see asn1_ContentInfo_d(). Both can be anywhere in the input.
 */
#ifndef ORVELASN1_ASN1_X680_H
#define ORVELASN1_ASN1_X680_H

#include <stdint.h>
#include <stdio.h>
#include <time.h>

#include "orvelutils.h"

#ifdef __cplusplus
extern "C" {
#endif

/** An encoder `uint32_t f(uint8_t **pp, const Element *)`. */
typedef uint32_t (*asn1_encoder_function)(uint8_t **, const void *);

/**
 * A decoder `const uint8_t *f(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
 * Element **ppElement, uint32_t depth)`.
 */
typedef const uint8_t *(*asn1_decoder_function)(const uint8_t *, const uint8_t *, uint32_t, void *,
                                                uint32_t);

/** A destructor `void f(Element *)`, which must accept NULL. */
typedef List_destructor asn1_destructor;

/* -------------------------------------------------------------------------------------------- */
/* Records                                                                                        */
/* -------------------------------------------------------------------------------------------- */

/** INTEGER of any size, as its content octets. */
typedef struct Integer {
  uint32_t length;   /**< number of octets in `data`; 0 for the value zero as decoded */
  uint8_t *data;     /**< the content, most significant octet first; NULL when `length` is 0 */
  uint32_t negative; /**< 1: `data` is two's complement with its top bit set; 0: plain magnitude */
} Integer;

/** OBJECT IDENTIFIER. */
typedef struct ObjId {
  uint32_t count; /**< number of arcs */
  uint32_t *arcs; /**< the arcs, first arc first; NULL when `count` is 0 */
} ObjId;

/**
 * BIT STRING. Bit number i is the bit of mask 0x80 >> (i % 8) in the octet i / 8. The padding bits
 * of the last octet are stored as they are read.
 */
typedef struct BitString {
  uint32_t length; /**< number of bits, not of octets */
  uint8_t *data;   /**< (`length` + 7) / 8 octets; NULL when no buffer was ever needed */
} BitString;

/** A counted run of octets, never terminated: OCTET STRING, the character strings, ANY. */
typedef struct ASN1String {
  uint32_t length; /**< number of octets */
  uint8_t *data;   /**< the octets; NULL when `length` is 0 */
} ASN1String;

typedef ASN1String OctetString;     /**< OCTET STRING, tag 4 */
typedef ASN1String UTF8String;      /**< UTF8String, tag 12 */
typedef ASN1String NumericString;   /**< NumericString, tag 18 */
typedef ASN1String PrintableString; /**< PrintableString, tag 19 */
typedef ASN1String TeletexString;   /**< TeletexString (T61String), tag 20 */
typedef ASN1String VideotextString; /**< VideotexString, tag 21 */
typedef ASN1String IA5String;       /**< IA5String, tag 22 */
typedef ASN1String GraphicString;   /**< GraphicString, tag 25 */
typedef ASN1String VisibleString;   /**< VisibleString, tag 26 */
typedef ASN1String GeneralString;   /**< GeneralString, tag 27 */
typedef ASN1String UniversalString; /**< UniversalString, tag 28 */

/** ANY: one whole encoded element, identifier and length octets included. */
typedef ASN1String Any;

/** UTCTime as a terminated text, such as "260131120000Z". */
typedef char UTCTime;

/** GeneralizedTime as a terminated text, such as "20260131120000Z". */
typedef char GeneralizedTime;

/** Time ::= CHOICE { utcTime UTCTime, generalTime GeneralizedTime } (RFC 5280, 4.1). */
typedef struct Time {
  uint8_t kind; /**< the universal tag: 23 for UTCTime, 24 for GeneralizedTime; 0 in a new record */
  char *value;  /**< the text, owned; or NULL */
} Time;

/**
 * AlgorithmIdentifier ::= SEQUENCE { algorithm OBJECT IDENTIFIER,
 *   parameters ANY DEFINED BY algorithm OPTIONAL } (RFC 5280, 4.1.1.2).
 */
typedef struct AlgId {
  ObjId *algorithm; /**< owned */
  Any *parameters;  /**< one whole element, owned; NULL where nothing follows the identifier */
} AlgId;

/* -------------------------------------------------------------------------------------------- */
/* Trace                                                                                          */
/* -------------------------------------------------------------------------------------------- */

/**
 * Turns the trace on: decoders that are called with a depth other than 0 write a picture of what
 * they read to `stream`, which the caller still owns. NULL turns the trace off, as it is at the
 * start. The whole process has one stream, which no lock guards: set it before other threads
 * decode.
 */
void asn1_LogStart(FILE *stream);

/**
 * Writes one message to the trace: process id, thread, local time, ". " for each level of `depth`
 * below the first, then the text of `format` and its arguments, as for printf(). The text brings
 * its own newline. Only the low 16 bits of `depth` count. Nothing is written where they are 0, or
 * while the trace is off.
 */
void asn1_LogMessage(uint32_t depth, const char *format, ...)
#ifdef __GNUC__
    __attribute__((__format__(__printf__, 2, 3)))
#endif
    ;

/**
 * Writes the dotted arcs of `oid` and a newline to the trace. An identifier without arcs makes a
 * bare newline.
 */
void asn1_LogObjId(uint32_t depth, const ObjId *oid);

/**
 * Writes a hex dump of `length` octets at `bytes` to the trace, 16 octets a line. NULL is ignored.
 */
void asn1_LogByteArray(uint32_t depth, const uint8_t *bytes, int32_t length);

/* -------------------------------------------------------------------------------------------- */
/* Tag and length                                                                                 */
/* -------------------------------------------------------------------------------------------- */

/** Writes the identifier octet, unless `pp` is NULL. Returns 1, the number of octets. */
uint32_t asn1_Tag_e(uint8_t **pp, uint32_t tag);

/**
 * Writes `length` in the shortest definite form (X.690, 10.1), unless `pp` is NULL. Returns the
 * number of octets, 1 to 5.
 */
uint32_t asn1_Length_e(uint8_t **pp, uint32_t length);

/**
 * Writes a header, asn1_Tag_e() and then asn1_Length_e(), unless `pp` is NULL. Returns the number
 * of octets, 2 to 6.
 */
uint32_t asn1_TagLength_e(uint8_t **pp, uint32_t tag, uint32_t length);

/**
 * Writes an end-of-contents (X.690, 8.1.5), unless `pp` is NULL. Returns 2, the number of octets.
 */
uint32_t asn1_eoc_e(uint8_t **pp);

/**
 * Decodes the identifier octet at `z` (X.690, 8.1.2). Returns the cursor past it, or NULL when it
 * is not the expected one or `z` has reached `end`. `z` and `end` must not be NULL.
 *
 * The octet must equal `impl_tag`, or `tag` where the low 8 bits of `impl_tag` are 0. The
 * constructed bit, 0x20, is not part of that comparison. It may be set only where `impl_tag` or
 * `tag` has it, or where `constructed` is given. An octet without it is always accepted.
 *
 * @param constructed where to store 1 when the octet has the constructed bit and 0 when not; NULL
 *                    where the type has one form only.
 */
const uint8_t *asn1_Tag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                          uint32_t *constructed, uint32_t depth);

/**
 * Decodes the length octets at `z` (X.690, 8.1.3). Returns the cursor past them, or NULL when they
 * are malformed, when the length takes more than four octets, or when the content would reach past
 * `end`. `z`, `end` and `length` must not be NULL. A longer form than needed is accepted. A length
 * with its top bit set is not compared with `end`: check it before you copy content.
 *
 * @param length     where to store the number of content octets; 0 for the indefinite form.
 * @param indefinite where to store 1 for the indefinite form and 0 otherwise; NULL where that form
 *                   is not allowed.
 */
const uint8_t *asn1_Length_d(const uint8_t *z, const uint8_t *end, uint32_t *length,
                             uint32_t *indefinite, uint32_t depth);

/**
 * Decodes a header, as asn1_Tag_d() and then asn1_Length_d(). Returns the cursor at the first
 * content octet, or NULL.
 */
const uint8_t *asn1_TagLength_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                uint32_t tag, uint32_t *constructed, uint32_t *length,
                                uint32_t *indefinite, uint32_t depth);

/**
 * Decodes an end-of-contents. Returns `z` plus 2 when the two octets at `z`, before `end`, are
 * zero, otherwise NULL.
 */
const uint8_t *asn1_eoc_d(const uint8_t *z, const uint8_t *end);

/* -------------------------------------------------------------------------------------------- */
/* Tagging wrappers and lists                                                                     */
/* -------------------------------------------------------------------------------------------- */

/**
 * Encodes the element under an implicit tag (X.690, 8.14). Returns the number of octets, or 0 when
 * `element_e` returns 0. The constructed bit is the element's own, whatever `tag` says. `pElement`
 * and `element_e` must not be NULL.
 */
uint32_t asn1_implicit_e(uint8_t **pp, uint32_t tag, const void *pElement,
                         asn1_encoder_function element_e);

/**
 * Encodes the element inside an explicit tag (X.690, 8.14). Returns the number of octets, or 0 when
 * `element_e` returns 0. The function sets the constructed bit of `tag`. `pElement` and `element_e`
 * must not be NULL.
 */
uint32_t asn1_explicit_e(uint8_t **pp, uint32_t tag, const void *pElement,
                         asn1_encoder_function element_e);

/**
 * Decodes the element inside an explicit tag. Returns the cursor past the element, or NULL. The
 * wrapper must have a definite length. Whether the element fills it is not checked. `z`,
 * `ppElement` and `element_d` must not be NULL.
 *
 * @param ppElement the place that `element_d` fills.
 */
const uint8_t *asn1_explicit_d(const uint8_t *z, const uint8_t *end, uint32_t tag,
                               asn1_decoder_function element_d, void *ppElement, uint32_t depth);

/**
 * Encodes a constructed value of the elements of `list`, in list order. Returns the number of
 * octets, or 0 when `element_e` returns 0 for an element. An empty list makes an empty value.
 */
uint32_t asn1_List_e(uint8_t **pp, uint32_t tag, const List *list, asn1_encoder_function element_e);

/**
 * Decodes a constructed value of elements into a new list, which the caller owns. Returns the
 * cursor past the value, or NULL. `ppList` must not be NULL. The length may be indefinite if the
 * end-of-contents ends at `end`. When the header is refused, `*ppList` holds an empty list, which
 * the caller releases. After any later failure `*ppList` is NULL.
 */
const uint8_t *asn1_List_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                           asn1_decoder_function element_d, List_destructor_function element_free,
                           List **ppList, uint32_t depth);

/**
 * Encodes a list inside an explicit tag, as asn1_List_e() under `list_tag`. Returns the number of
 * octets, or 0 when an element fails or the list is NULL.
 */
uint32_t asn1_expl_List_e(uint8_t **pp, uint32_t explicit_tag, uint32_t list_tag, const List *list,
                          asn1_encoder_function element_e);

/**
 * Decodes a list inside an explicit tag of definite length, as asn1_List_d() under `list_tag`.
 * Returns the cursor past the list, or NULL, also where `z` or `ppList` is NULL. When the header of
 * the explicit tag is refused, `*ppList` is left alone.
 */
const uint8_t *asn1_expl_List_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                uint32_t list_tag, asn1_decoder_function element_d,
                                List_destructor_function element_free, List **ppList,
                                uint32_t depth);

/**
 * Encodes a SET OF: asn1_List_e() with the tag 17. The elements keep the order of the list, where
 * DER sorts them (X.690, 11.6).
 */
uint32_t asn1_SetOf_e(uint8_t **pp, const List *list, asn1_encoder_function element_e);

/** Encodes a SEQUENCE OF: asn1_List_e() with the tag 16. */
uint32_t asn1_SeqOf_e(uint8_t **pp, const List *list, asn1_encoder_function element_e);

/** Decodes a SET OF: asn1_List_d() with the tag 17. */
const uint8_t *asn1_SetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            asn1_decoder_function element_d, List_destructor_function element_free,
                            List **ppList, uint32_t depth);

/** Decodes a SEQUENCE OF: asn1_List_d() with the tag 16. */
const uint8_t *asn1_SeqOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            asn1_decoder_function element_d, List_destructor_function element_free,
                            List **ppList, uint32_t depth);

/** Encodes a SET OF inside an explicit tag: asn1_expl_List_e() with the list tag 17. */
uint32_t asn1_expl_SetOf_e(uint8_t **pp, uint32_t explicit_tag, const List *list,
                           asn1_encoder_function element_e);

/** Encodes a SEQUENCE OF inside an explicit tag: asn1_expl_List_e() with the list tag 16. */
uint32_t asn1_expl_SeqOf_e(uint8_t **pp, uint32_t explicit_tag, const List *list,
                           asn1_encoder_function element_e);

/** Decodes a SET OF inside an explicit tag: asn1_expl_List_d() with the list tag 17. */
const uint8_t *asn1_expl_SetOf_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                 asn1_decoder_function element_d,
                                 List_destructor_function element_free, List **ppList,
                                 uint32_t depth);

/** Decodes a SEQUENCE OF inside an explicit tag: asn1_expl_List_d() with the list tag 16. */
const uint8_t *asn1_expl_SeqOf_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                 asn1_decoder_function element_d,
                                 List_destructor_function element_free, List **ppList,
                                 uint32_t depth);

/* -------------------------------------------------------------------------------------------- */
/* INTEGER                                                                                        */
/* -------------------------------------------------------------------------------------------- */

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
Integer *asn1_Integer_new(uint32_t length);

/** Releases the record. NULL is ignored. */
void asn1_Integer_free(Integer *pElement);

/** Makes a record of `value`, which is never negative. Returns NULL when memory is exhausted. */
Integer *asn1_Integer_set(uint32_t value);

/**
 * Reads the octets of `integer`, which must not be NULL, as an unsigned number. Returns the number,
 * or 0xFFFFFFFF when it does not fit 32 bits. `negative` is ignored: the content FF is 255.
 */
uint32_t asn1_Integer_get(const Integer *integer);

/**
 * Encodes an INTEGER. Returns the number of octets, or 0 for NULL. Leading zero octets are left out
 * (X.690, 8.3.2). One is written first where `negative` is 0 and the top bit is set.
 */
uint32_t asn1_Integer_e(uint8_t **pp, const Integer *pElement);

/**
 * Decodes an INTEGER. Returns the cursor past it, or NULL. One leading zero octet of the content is
 * dropped.
 */
const uint8_t *asn1_Integer_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              Integer **ppElement, uint32_t depth);

/**
 * Compares two records. Returns 0 when they hold the same octets and sign, otherwise another
 * number, and 1 where a record is NULL. The octets 00 01 and 01 differ.
 */
int32_t asn1_Integer_cmp(const Integer *a, const Integer *b);

/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
Integer *asn1_Integer_clone(const Integer *pElement);

/** Returns the constant record of the value 0. The library owns it: never release it. */
const Integer *asn1_Integer_0(void);

/** Returns the constant record of the value 1. The library owns it: never release it. */
const Integer *asn1_Integer_1(void);

/** Returns the constant record of the value 2. The library owns it: never release it. */
const Integer *asn1_Integer_2(void);

/** Returns the constant record of the value 3. The library owns it: never release it. */
const Integer *asn1_Integer_3(void);

/* -------------------------------------------------------------------------------------------- */
/* BOOLEAN, ENUMERATED, NULL, ANY                                                                 */
/* -------------------------------------------------------------------------------------------- */

/**
 * Encodes a BOOLEAN. Returns 3, the number of octets. The content is the low octet of `value`,
 * unchanged: 1 is written as 01, where DER has FF (X.690, 11.1).
 */
uint32_t asn1_Boolean_e(uint8_t **pp, uint32_t value);

/**
 * Decodes a BOOLEAN and stores its content octet in `*value`. Returns the cursor past it, or NULL.
 * Where `z` has reached `end`, or one of them is NULL, the function reads nothing, leaves `*value`
 * alone and returns `z`.
 */
const uint8_t *asn1_Boolean_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              uint32_t *value, uint32_t depth);

/**
 * Encodes an ENUMERATED with the low octet of `value` as its content. Returns 3, the number of
 * octets.
 */
uint32_t asn1_Enumerated_e(uint8_t **pp, uint32_t value);

/**
 * Decodes an ENUMERATED of one content octet, as asn1_Boolean_d() decodes a BOOLEAN. Returns the
 * cursor past it, or NULL.
 */
const uint8_t *asn1_Enumerated_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 uint32_t *value, uint32_t depth);

/** Encodes a NULL. Returns 2, the number of octets. */
uint32_t asn1_Null_e(uint8_t **pp);

/**
 * Decodes the header of a NULL. Returns the cursor past it, or a null pointer on failure. The
 * length is not checked to be 0 (X.690, 8.8.2), and no content is skipped. `ppElement` is not used.
 */
const uint8_t *asn1_Null_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           void **ppElement, uint32_t depth);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
Any *asn1_Any_new(uint32_t length);

/** Releases the record. NULL is ignored. */
void asn1_Any_free(Any *pElement);

/** Writes the element unchanged. Returns the number of octets, or 0 for NULL. */
uint32_t asn1_Any_e(uint8_t **pp, const Any *pElement);

/**
 * Decodes one element of any tag and of definite length. Returns the cursor past it, or NULL.
 * `impl_tag` must be 0. The record has the size that the element has with the shortest length
 * octets: with longer ones the element loses as many octets at its end.
 */
const uint8_t *asn1_Any_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, Any **ppElement,
                          uint32_t depth);

/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
Any *asn1_Any_clone(const Any *pElement);

/**
 * Compares the octets of two records. Returns 0 when they are the same, otherwise another number,
 * and 1 where a record is NULL.
 */
int32_t asn1_Any_cmp(const Any *a, const Any *b);

/** Returns the constant record of the octets 05 00. The library owns it: never release it. */
const Any *asn1_Any_NULL(void);

/* -------------------------------------------------------------------------------------------- */
/* OBJECT IDENTIFIER                                                                              */
/* -------------------------------------------------------------------------------------------- */

/** Makes a record of `count` zero arcs. Returns NULL when memory is exhausted. */
ObjId *asn1_ObjId_new(uint32_t count);

/** Releases the record. NULL is ignored. */
void asn1_ObjId_free(ObjId *pElement);

/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
ObjId *asn1_ObjId_clone(const ObjId *pElement);

/**
 * Compares two identifiers, which must not be NULL. Returns 0 when they have the same arcs,
 * otherwise 1.
 */
int32_t asn1_ObjId_cmp(const ObjId *oid1, const ObjId *oid2);

/**
 * Encodes an OBJECT IDENTIFIER. Returns the number of octets, or 0 for NULL and for fewer than two
 * arcs. The first two arcs a and b are written as a * 40 + b (X.690, 8.19.4); their range is not
 * checked.
 */
uint32_t asn1_ObjId_e(uint8_t **pp, const ObjId *oid);

/**
 * Decodes an OBJECT IDENTIFIER. Returns the cursor past it, or NULL. The first number V of the
 * content becomes the arcs V / 40 and V % 40 for every V, where X.690, 8.19.4 limits the first arc
 * to 2: the octets of 2.100 decode to 4.20. An arc of more than 32 bits fails.
 */
const uint8_t *asn1_ObjId_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            ObjId **ppElement, uint32_t depth);

/**
 * Writes the dotted form of `oid`. Returns 0, or -1 when the text does not fit or memory is
 * exhausted. `oid` and `length` must not be NULL. Arcs above 0x7FFFFFFF print as negative numbers.
 *
 * @param s      where to write the text; NULL to learn its size only.
 * @param length in: the octets that `s` has room for; out: the octets of the text, its closing NUL
 *               included. A failure does not change it.
 */
int32_t asn1_ObjId_sprint(const ObjId *oid, char *s, uint32_t *length);

/**
 * Prints the dotted form of `oid`, which has at least one arc, to `fp`, without a newline. Returns
 * the result of the last fprintf(). Neither argument may be NULL.
 */
int32_t asn1_ObjId_fprint(const ObjId *oid, FILE *fp);

/**
 * Parses the dotted text at `*text` and moves `*text` past it. Returns a new identifier, which the
 * caller owns. Returns NULL and leaves `*text` alone when there is no text, when the text does not
 * begin with a digit, when the number of an arc does not fit 32 bits with a sign, or when memory is
 * exhausted. Arcs are read as C reads integers: 0x10 is 16, 010 is 8. An arc without a number
 * repeats the one before it: 1..2 is 1.1.1.
 */
ObjId *asn1_ObjId_parse(const char **text);

/* -------------------------------------------------------------------------------------------- */
/* BIT STRING                                                                                     */
/* -------------------------------------------------------------------------------------------- */

/** Makes a record of `length` zero bits. Returns NULL when memory is exhausted. */
BitString *asn1_BitString_new(uint32_t length);

/** Releases the record. NULL is ignored. */
void asn1_BitString_free(BitString *pElement);

/**
 * Encodes a BIT STRING as DER encodes a named bit list (X.690, 11.2.2): trailing zero octets and
 * zero bits are left out. Returns the number of octets, or 0 for NULL. The padding bits of the last
 * octet count as bits.
 */
uint32_t asn1_BitString_e(uint8_t **pp, const BitString *pElement);

/** Encodes a BIT STRING with all its bits. Returns the number of octets, or 0 for NULL. */
uint32_t asn1_BitString_BER_e(uint8_t **pp, const BitString *pElement);

/**
 * Decodes a BIT STRING of any form. Returns the cursor past it, or NULL. The segments of a
 * constructed value (X.690, 8.6.4) are joined as whole octets, whatever their numbers of unused
 * bits. `z`, `end` and `s` must not be NULL.
 */
const uint8_t *asn1_BitString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                BitString **s, uint32_t depth);

/**
 * Makes a copy, padding bits included, which the caller owns. Returns NULL for NULL, or when memory
 * is exhausted.
 */
BitString *asn1_BitString_clone(const BitString *pElement);

/**
 * Compares two records. Returns 0 when they have the same length and octets, padding bits included,
 * otherwise another number, and 1 where a record is NULL.
 */
int32_t asn1_BitString_cmp(const BitString *a, const BitString *b);

/**
 * Sets bit number `bit` where `value` is not 0, and clears it where `value` is 0. Returns `bs`,
 * which must not be NULL. Setting grows the string as far as needed: when that fails, returns NULL
 * and leaves the string unchanged. Clearing never changes the length.
 */
BitString *asn1_BitString_set(BitString *bs, uint32_t bit, uint32_t value);

/**
 * Tests bit number `bit`. Returns 1 when it is set, and 0 when it is not, when it is past the end,
 * or when `bs` is NULL.
 */
int32_t asn1_BitString_test(const BitString *bs, uint32_t bit);

/**
 * Appends `count` octets of `bytes` after the last octet of `s`, whose padding bits become part of
 * the value. Returns `s`, which must not be NULL. When growth fails, returns NULL and leaves `s`
 * unchanged. Where `bytes` is NULL the new octets are undefined.
 */
BitString *asn1_BitString_append(BitString *s, uint32_t count, const void *bytes);

/* -------------------------------------------------------------------------------------------- */
/* Strings                                                                                        */
/* -------------------------------------------------------------------------------------------- */

/**
 * Makes a record of `length` octets: a copy of `bytes`, or zeros where that is NULL. Returns NULL
 * when memory is exhausted. Where `length` is 0 and `bytes` is not NULL, copies `bytes` as a
 * terminated text without its NUL.
 */
ASN1String *asn1_ASN1String_new(uint32_t length, const void *bytes);

/** Releases the record. NULL is ignored. */
void asn1_ASN1String_free(ASN1String *pElement);

/**
 * Encodes the string under `tag`. Returns the number of octets, or 0 for NULL. The tag 3 is that of
 * BIT STRING: `length` then counts bits, and the value is encoded as by asn1_BitString_e().
 */
uint32_t asn1_ASN1String_e(uint8_t **pp, uint32_t tag, const ASN1String *pElement);

/**
 * Decodes a string of any form under `tag`. Returns the cursor past it, or NULL. The segments of a
 * constructed value are joined; they must have `tag` themselves, also where `impl_tag` replaces it
 * outside. `z`, `end` and `s` must not be NULL.
 */
const uint8_t *asn1_ASN1String_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 uint32_t tag, ASN1String **s, uint32_t depth);

/**
 * Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. Where
 * `length` is 0 and `data` is not NULL, copies `data` as a terminated text, as
 * asn1_ASN1String_new() does.
 */
ASN1String *asn1_ASN1String_clone(const ASN1String *pElement);

/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_ASN1String_cmp(const ASN1String *a, const ASN1String *b);

/**
 * Appends `count` octets of `bytes` to the value of `s`. Returns `s`, which must not be NULL. When
 * growth fails, returns NULL and leaves `s` unchanged. Where `bytes` is NULL the new octets are
 * undefined.
 */
ASN1String *asn1_ASN1String_append(ASN1String *s, uint32_t count, const void *bytes);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
OctetString *asn1_OctetString_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_OctetString_free(OctetString *pElement);
/** Encodes an OCTET STRING (tag 4). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_OctetString_e(uint8_t **pp, const OctetString *pElement);
/** Decodes an OCTET STRING (tag 4) of any form. Returns the cursor past it, or NULL. */
const uint8_t *asn1_OctetString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  OctetString **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
OctetString *asn1_OctetString_clone(const OctetString *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_OctetString_cmp(const OctetString *a, const OctetString *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
UTF8String *asn1_UTF8String_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_UTF8String_free(UTF8String *pElement);
/** Encodes a UTF8String (tag 12). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_UTF8String_e(uint8_t **pp, const UTF8String *pElement);
/** Decodes a UTF8String (tag 12) of any form, unchecked. Returns the cursor past it, or NULL. */
const uint8_t *asn1_UTF8String_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 UTF8String **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
UTF8String *asn1_UTF8String_clone(const UTF8String *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_UTF8String_cmp(const UTF8String *a, const UTF8String *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
NumericString *asn1_NumericString_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_NumericString_free(NumericString *pElement);
/** Encodes a NumericString (tag 18). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_NumericString_e(uint8_t **pp, const NumericString *pElement);
/**
 * Decodes a NumericString (tag 18) of any form, unchecked. Returns the cursor past it, or NULL.
 */
const uint8_t *asn1_NumericString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    NumericString **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
NumericString *asn1_NumericString_clone(const NumericString *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_NumericString_cmp(const NumericString *a, const NumericString *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
PrintableString *asn1_PrintableString_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_PrintableString_free(PrintableString *pElement);
/** Encodes a PrintableString (tag 19). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_PrintableString_e(uint8_t **pp, const PrintableString *pElement);
/**
 * Decodes a PrintableString (tag 19) of any form, unchecked. Returns the cursor past it, or NULL.
 */
const uint8_t *asn1_PrintableString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      PrintableString **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
PrintableString *asn1_PrintableString_clone(const PrintableString *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_PrintableString_cmp(const PrintableString *a, const PrintableString *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
TeletexString *asn1_TeletexString_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_TeletexString_free(TeletexString *pElement);
/** Encodes a TeletexString (tag 20). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_TeletexString_e(uint8_t **pp, const TeletexString *pElement);
/**
 * Decodes a TeletexString (tag 20) of any form, unchecked. Returns the cursor past it, or NULL.
 */
const uint8_t *asn1_TeletexString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    TeletexString **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
TeletexString *asn1_TeletexString_clone(const TeletexString *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_TeletexString_cmp(const TeletexString *a, const TeletexString *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
VideotextString *asn1_VideotextString_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_VideotextString_free(VideotextString *pElement);
/** Encodes a VideotexString (tag 21). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_VideotextString_e(uint8_t **pp, const VideotextString *pElement);
/**
 * Decodes a VideotexString (tag 21) of any form, unchecked. Returns the cursor past it, or NULL.
 */
const uint8_t *asn1_VideotextString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      VideotextString **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
VideotextString *asn1_VideotextString_clone(const VideotextString *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_VideotextString_cmp(const VideotextString *a, const VideotextString *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
IA5String *asn1_IA5String_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_IA5String_free(IA5String *pElement);
/** Encodes an IA5String (tag 22). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_IA5String_e(uint8_t **pp, const IA5String *pElement);
/** Decodes an IA5String (tag 22) of any form, unchecked. Returns the cursor past it, or NULL. */
const uint8_t *asn1_IA5String_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                IA5String **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
IA5String *asn1_IA5String_clone(const IA5String *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_IA5String_cmp(const IA5String *a, const IA5String *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
GraphicString *asn1_GraphicString_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_GraphicString_free(GraphicString *pElement);
/** Encodes a GraphicString (tag 25). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_GraphicString_e(uint8_t **pp, const GraphicString *pElement);
/**
 * Decodes a GraphicString (tag 25) of any form, unchecked. Returns the cursor past it, or NULL.
 */
const uint8_t *asn1_GraphicString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    GraphicString **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
GraphicString *asn1_GraphicString_clone(const GraphicString *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_GraphicString_cmp(const GraphicString *a, const GraphicString *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
VisibleString *asn1_VisibleString_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_VisibleString_free(VisibleString *pElement);
/** Encodes a VisibleString (tag 26). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_VisibleString_e(uint8_t **pp, const VisibleString *pElement);
/**
 * Decodes a VisibleString (tag 26) of any form, unchecked. Returns the cursor past it, or NULL.
 */
const uint8_t *asn1_VisibleString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    VisibleString **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
VisibleString *asn1_VisibleString_clone(const VisibleString *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_VisibleString_cmp(const VisibleString *a, const VisibleString *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
GeneralString *asn1_GeneralString_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_GeneralString_free(GeneralString *pElement);
/** Encodes a GeneralString (tag 27). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_GeneralString_e(uint8_t **pp, const GeneralString *pElement);
/**
 * Decodes a GeneralString (tag 27) of any form, unchecked. Returns the cursor past it, or NULL.
 */
const uint8_t *asn1_GeneralString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    GeneralString **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
GeneralString *asn1_GeneralString_clone(const GeneralString *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_GeneralString_cmp(const GeneralString *a, const GeneralString *b);

/** Makes a record of `length` zero octets. Returns NULL when memory is exhausted. */
UniversalString *asn1_UniversalString_new(uint32_t length);
/** Releases the record. NULL is ignored. */
void asn1_UniversalString_free(UniversalString *pElement);
/** Encodes a UniversalString (tag 28). Returns the number of octets, or 0 for NULL. */
uint32_t asn1_UniversalString_e(uint8_t **pp, const UniversalString *pElement);
/**
 * Decodes a UniversalString (tag 28) of any form, unchecked. Returns the cursor past it, or NULL.
 */
const uint8_t *asn1_UniversalString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      UniversalString **ppElement, uint32_t depth);
/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
UniversalString *asn1_UniversalString_clone(const UniversalString *pElement);
/** Compares two records. Returns 0 for equal octets, otherwise not 0, and 1 where one is NULL. */
int32_t asn1_UniversalString_cmp(const UniversalString *a, const UniversalString *b);

/* -------------------------------------------------------------------------------------------- */
/* UTCTime, GeneralizedTime, Time                                                                 */
/* -------------------------------------------------------------------------------------------- */

/** Makes a record of kind 0. Returns NULL when memory is exhausted. */
Time *asn1_Time_new(void);

/** Makes a zeroed buffer of 18 octets for a UTCTime. Returns NULL when memory is exhausted. */
UTCTime *asn1_UTCTime_new(void);

/**
 * Makes a zeroed buffer of 27 octets for a GeneralizedTime. Returns NULL when memory is exhausted.
 */
GeneralizedTime *asn1_GeneralizedTime_new(void);

/** Releases the record, and its text where `kind` is 23 or 24. NULL is ignored. */
void asn1_Time_free(Time *pElement);

/** Releases the text. NULL is ignored. */
void asn1_UTCTime_free(UTCTime *pElement);

/** Releases the text. NULL is ignored. */
void asn1_GeneralizedTime_free(GeneralizedTime *pElement);

/**
 * Makes a copy, which the caller owns. Returns NULL for NULL, for an unknown `kind`, or when memory
 * is exhausted.
 */
Time *asn1_Time_clone(const Time *pElement);

/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
UTCTime *asn1_UTCTime_clone(const UTCTime *pElement);

/** Makes a copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted. */
GeneralizedTime *asn1_GeneralizedTime_clone(const GeneralizedTime *pElement);

/**
 * Encodes a UTCTime or GeneralizedTime, by `kind`. Returns the number of octets, or 0 for NULL, for
 * an unknown `kind`, and for a NULL or empty text.
 */
uint32_t asn1_Time_e(uint8_t **pp, const Time *pElement);

/** Encodes a UTCTime. Returns the number of octets, or 0 for a NULL or empty text. */
uint32_t asn1_UTCTime_e(uint8_t **pp, const UTCTime *pElement);

/** Encodes a GeneralizedTime. Returns the number of octets, or 0 for a NULL or empty text. */
uint32_t asn1_GeneralizedTime_e(uint8_t **pp, const GeneralizedTime *pElement);

/**
 * Decodes a UTCTime or GeneralizedTime under its universal tag. Returns the cursor past it, or
 * NULL.
 */
const uint8_t *asn1_Time_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           Time **ppElement, uint32_t depth);

/**
 * Decodes a primitive UTCTime, without a check of its text. Returns the cursor past it, or NULL.
 */
const uint8_t *asn1_UTCTime_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              UTCTime **ppElement, uint32_t depth);

/**
 * Decodes a primitive GeneralizedTime, without a check of its text. Returns the cursor past it, or
 * NULL.
 */
const uint8_t *asn1_GeneralizedTime_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      GeneralizedTime **ppElement, uint32_t depth);

/**
 * Compares two times. Returns 0 when they are equal, 1 when `a` is later, 2 when `a` is earlier,
 * and -1 when one of them is NULL or cannot be read.
 */
int32_t asn1_Time_cmp(const Time *a, const Time *b);

/** Compares two UTCTime texts. Returns what asn1_Time_cmp() returns. */
int32_t asn1_UTCTime_cmp(const UTCTime *a, const UTCTime *b);

/** Compares two GeneralizedTime texts. Returns what asn1_Time_cmp() returns. */
int32_t asn1_GeneralizedTime_cmp(const GeneralizedTime *a, const GeneralizedTime *b);

/**
 * Reads the time and stores its seconds since 1970. Returns 0, or -1 on failure, and then stores
 * nothing. The text is taken as standard time of the process's own zone (mktime): unless the
 * process runs in UTC, the seconds are off by that zone's offset.
 */
int32_t asn1_Time2Seconds(time_t *pSeconds, const Time *t);

/**
 * Stores the seconds of a UTCTime text, as asn1_Time2Seconds() does. Returns 0, or -1 on failure.
 */
int32_t asn1_UTCTime2Seconds(time_t *pSeconds, const UTCTime *t);

/**
 * Stores the seconds of a GeneralizedTime text, as asn1_Time2Seconds() does. Returns 0, or -1 on
 * failure.
 */
int32_t asn1_GeneralizedTime2Seconds(time_t *pSeconds, const GeneralizedTime *t);

/**
 * Sets the text of `t`, by its `kind`, to `seconds` since 1970 in UTC. Returns `t`; where `t` is
 * NULL, returns a new GeneralizedTime, which the caller owns. Returns NULL for an unknown `kind`,
 * for seconds that no date has, or when memory is exhausted. Returns a `t` whose `value` is NULL
 * unchanged.
 */
Time *asn1_Seconds2Time(Time *t, time_t seconds);

/**
 * Writes the UTCTime text of `seconds` since 1970 in UTC to `buffer`, of at least 18 octets.
 * Returns `buffer`; where `buffer` is NULL, returns a new text, which the caller owns. Returns NULL
 * for seconds that no date has, or when memory is exhausted. The year is cut to two digits.
 */
UTCTime *asn1_Seconds2UTCTime(UTCTime *buffer, time_t seconds);

/**
 * Writes a GeneralizedTime text as asn1_Seconds2UTCTime() writes a UTCTime; `buffer` has at least
 * 27 octets. Returns NULL also for a year that no int holds.
 */
GeneralizedTime *asn1_Seconds2GeneralizedTime(GeneralizedTime *buffer, time_t seconds);

/** Calls asn1_Seconds2Time() with the current time. Returns what that returns. */
Time *asn1_Time_get(Time *t);

/** Calls asn1_Seconds2UTCTime() with the current time. Returns what that returns. */
UTCTime *asn1_UTCTime_get(UTCTime *buffer);

/** Calls asn1_Seconds2GeneralizedTime() with the current time. Returns what that returns. */
GeneralizedTime *asn1_GeneralizedTime_get(GeneralizedTime *buffer);

/* -------------------------------------------------------------------------------------------- */
/* AlgorithmIdentifier                                                                            */
/* -------------------------------------------------------------------------------------------- */

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
AlgId *asn1_AlgId_new(void);

/** Releases the record and what it owns. NULL is ignored. */
void asn1_AlgId_free(AlgId *pElement);

/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_AlgId_e(uint8_t **pp, const AlgId *pElement);

/**
 * Decodes an AlgorithmIdentifier. Returns the cursor past the last field that it recognises, or
 * NULL.
 */
const uint8_t *asn1_AlgId_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            AlgId **ppElement, uint32_t depth);

/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
AlgId *asn1_AlgId_clone(const AlgId *pElement);

#ifdef __cplusplus
}

/* More classes for element functions, and the overloads that take them, as orvelutils.h explains. */

/** An encoder of any type of element. */
struct asn1_encoder {
  asn1_encoder_function function;
  asn1_encoder(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Element>
  asn1_encoder(uint32_t (*f)(uint8_t **, const Element *)) noexcept : function(nullptr) {
    memcpy(&function, &f, sizeof function);
  }
};

/** A decoder of any type of element. */
struct asn1_decoder {
  asn1_decoder_function function;
  asn1_decoder(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Place>
  asn1_decoder(const uint8_t *(*f)(const uint8_t *, const uint8_t *, uint32_t, Place *,
                                   uint32_t)) noexcept
      : function(nullptr) {
    memcpy(&function, &f, sizeof function);
  }
};

[[gnu::always_inline]] inline uint32_t asn1_implicit_e(uint8_t **pp, uint32_t tag,
                                                       const void *pElement,
                                                       asn1_encoder element_e) {
  return asn1_implicit_e(pp, tag, pElement, element_e.function);
}

[[gnu::always_inline]] inline uint32_t asn1_explicit_e(uint8_t **pp, uint32_t tag,
                                                       const void *pElement,
                                                       asn1_encoder element_e) {
  return asn1_explicit_e(pp, tag, pElement, element_e.function);
}

[[gnu::always_inline]] inline const uint8_t *asn1_explicit_d(const uint8_t *z, const uint8_t *end,
                                                             uint32_t tag, asn1_decoder element_d,
                                                             void *ppElement, uint32_t depth) {
  return asn1_explicit_d(z, end, tag, element_d.function, ppElement, depth);
}

[[gnu::always_inline]] inline uint32_t asn1_List_e(uint8_t **pp, uint32_t tag, const List *list,
                                                   asn1_encoder element_e) {
  return asn1_List_e(pp, tag, list, element_e.function);
}

[[gnu::always_inline]] inline const uint8_t *asn1_List_d(const uint8_t *z, const uint8_t *end,
                                                         uint32_t impl_tag, uint32_t tag,
                                                         asn1_decoder element_d,
                                                         List_destructor element_free,
                                                         List **ppList, uint32_t depth) {
  return asn1_List_d(z, end, impl_tag, tag, element_d.function, element_free.function, ppList,
                     depth);
}

[[gnu::always_inline]] inline uint32_t asn1_expl_List_e(uint8_t **pp, uint32_t explicit_tag,
                                                        uint32_t list_tag, const List *list,
                                                        asn1_encoder element_e) {
  return asn1_expl_List_e(pp, explicit_tag, list_tag, list, element_e.function);
}

[[gnu::always_inline]] inline const uint8_t *asn1_expl_List_d(
    const uint8_t *z, const uint8_t *end, uint32_t explicit_tag, uint32_t list_tag,
    asn1_decoder element_d, List_destructor element_free, List **ppList, uint32_t depth) {
  return asn1_expl_List_d(z, end, explicit_tag, list_tag, element_d.function, element_free.function,
                          ppList, depth);
}

[[gnu::always_inline]] inline uint32_t asn1_SetOf_e(uint8_t **pp, const List *list,
                                                    asn1_encoder element_e) {
  return asn1_SetOf_e(pp, list, element_e.function);
}

[[gnu::always_inline]] inline uint32_t asn1_SeqOf_e(uint8_t **pp, const List *list,
                                                    asn1_encoder element_e) {
  return asn1_SeqOf_e(pp, list, element_e.function);
}

[[gnu::always_inline]] inline const uint8_t *asn1_SetOf_d(const uint8_t *z, const uint8_t *end,
                                                          uint32_t impl_tag, asn1_decoder element_d,
                                                          List_destructor element_free,
                                                          List **ppList, uint32_t depth) {
  return asn1_SetOf_d(z, end, impl_tag, element_d.function, element_free.function, ppList, depth);
}

[[gnu::always_inline]] inline const uint8_t *asn1_SeqOf_d(const uint8_t *z, const uint8_t *end,
                                                          uint32_t impl_tag, asn1_decoder element_d,
                                                          List_destructor element_free,
                                                          List **ppList, uint32_t depth) {
  return asn1_SeqOf_d(z, end, impl_tag, element_d.function, element_free.function, ppList, depth);
}

[[gnu::always_inline]] inline uint32_t asn1_expl_SetOf_e(uint8_t **pp, uint32_t explicit_tag,
                                                         const List *list, asn1_encoder element_e) {
  return asn1_expl_SetOf_e(pp, explicit_tag, list, element_e.function);
}

[[gnu::always_inline]] inline uint32_t asn1_expl_SeqOf_e(uint8_t **pp, uint32_t explicit_tag,
                                                         const List *list, asn1_encoder element_e) {
  return asn1_expl_SeqOf_e(pp, explicit_tag, list, element_e.function);
}

[[gnu::always_inline]] inline const uint8_t *asn1_expl_SetOf_d(const uint8_t *z, const uint8_t *end,
                                                               uint32_t explicit_tag,
                                                               asn1_decoder element_d,
                                                               List_destructor element_free,
                                                               List **ppList, uint32_t depth) {
  return asn1_expl_SetOf_d(z, end, explicit_tag, element_d.function, element_free.function, ppList,
                           depth);
}

[[gnu::always_inline]] inline const uint8_t *asn1_expl_SeqOf_d(const uint8_t *z, const uint8_t *end,
                                                               uint32_t explicit_tag,
                                                               asn1_decoder element_d,
                                                               List_destructor element_free,
                                                               List **ppList, uint32_t depth) {
  return asn1_expl_SeqOf_d(z, end, explicit_tag, element_d.function, element_free.function, ppList,
                           depth);
}
#else
typedef asn1_encoder_function asn1_encoder;
typedef asn1_decoder_function asn1_decoder;

/* The macros that convert element functions, as orvelutils.h explains them. */
#define asn1_encoder(f) \
  _Generic(_Generic(1 ? (f) : (void *)0, void *: (asn1_encoder)0, default: (f))( \
               List_get(0, 0), List_get(0, 0)), \
           uint32_t: (asn1_encoder)(uintptr_t)(1 ? (f) : (void *)0))
#define asn1_decoder(f) \
  _Generic(_Generic(1 ? (f) : (void *)0, void *: (asn1_decoder)0, default: (f))( \
               List_get(0, 0), List_get(0, 0), 0, List_get(0, 0), 0), \
           const uint8_t *: (asn1_decoder)(uintptr_t)(1 ? (f) : (void *)0))

#define asn1_implicit_e(pp, tag, pElement, element_e) \
  asn1_implicit_e(pp, tag, pElement, asn1_encoder(element_e))
#define asn1_explicit_e(pp, tag, pElement, element_e) \
  asn1_explicit_e(pp, tag, pElement, asn1_encoder(element_e))
#define asn1_explicit_d(z, end, tag, element_d, ppElement, depth) \
  asn1_explicit_d(z, end, tag, asn1_decoder(element_d), ppElement, depth)
#define asn1_List_e(pp, tag, list, element_e) asn1_List_e(pp, tag, list, asn1_encoder(element_e))
#define asn1_List_d(z, end, impl_tag, tag, element_d, element_free, ppList, depth)           \
  asn1_List_d(z, end, impl_tag, tag, asn1_decoder(element_d), List_destructor(element_free), \
              ppList, depth)
#define asn1_expl_List_e(pp, explicit_tag, list_tag, list, element_e) \
  asn1_expl_List_e(pp, explicit_tag, list_tag, list, asn1_encoder(element_e))
#define asn1_expl_List_d(z, end, explicit_tag, list_tag, element_d, element_free, ppList, depth) \
  asn1_expl_List_d(z, end, explicit_tag, list_tag, asn1_decoder(element_d),                      \
                   List_destructor(element_free), ppList, depth)
#define asn1_SetOf_e(pp, list, element_e) asn1_SetOf_e(pp, list, asn1_encoder(element_e))
#define asn1_SeqOf_e(pp, list, element_e) asn1_SeqOf_e(pp, list, asn1_encoder(element_e))
#define asn1_SetOf_d(z, end, impl_tag, element_d, element_free, ppList, depth)                   \
  asn1_SetOf_d(z, end, impl_tag, asn1_decoder(element_d), List_destructor(element_free), ppList, \
               depth)
#define asn1_SeqOf_d(z, end, impl_tag, element_d, element_free, ppList, depth)                   \
  asn1_SeqOf_d(z, end, impl_tag, asn1_decoder(element_d), List_destructor(element_free), ppList, \
               depth)
#define asn1_expl_SetOf_e(pp, explicit_tag, list, element_e) \
  asn1_expl_SetOf_e(pp, explicit_tag, list, asn1_encoder(element_e))
#define asn1_expl_SeqOf_e(pp, explicit_tag, list, element_e) \
  asn1_expl_SeqOf_e(pp, explicit_tag, list, asn1_encoder(element_e))
#define asn1_expl_SetOf_d(z, end, explicit_tag, element_d, element_free, ppList, depth)           \
  asn1_expl_SetOf_d(z, end, explicit_tag, asn1_decoder(element_d), List_destructor(element_free), \
                    ppList, depth)
#define asn1_expl_SeqOf_d(z, end, explicit_tag, element_d, element_free, ppList, depth)           \
  asn1_expl_SeqOf_d(z, end, explicit_tag, asn1_decoder(element_d), List_destructor(element_free), \
                    ppList, depth)
#endif

#endif
