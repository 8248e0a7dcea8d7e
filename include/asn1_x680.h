/**
 * @file asn1_x680.h
 * The encoding frame and the universal types of ASN.1 (ITU-T X.680, X.690).
 *
 * Every record type `T` of the library has functions of the same shapes:
 *
 * - `T *asn1_T_new(void)` gives a new record, all fields zero, or NULL when memory is exhausted.
 * - `void asn1_T_free(T *)` releases a record and everything that it owns; NULL is ignored.
 * - `uint32_t asn1_T_e(uint8_t **pp, const T *)` encodes. With `pp` NULL it measures: it gives the
 *   number of octets that the encoding takes, header included. Otherwise it writes them at `*pp`,
 *   moves `*pp` behind them and gives the same number. 0 is failure. There is no output limit:
 *   measure first, allocate, then write.
 * - `const uint8_t *asn1_T_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
 *   T **ppElement, uint32_t depth)` decodes the element at `z` and reads no octet at or behind
 *   `end`. It stores a new record, which the caller owns and which holds no pointer into the input,
 *   and gives the cursor behind what it read; NULL is failure, and then nothing stays allocated.
 *   `impl_tag` is 0, or the identifier octet that stands in place of the type's own. `depth` is the
 *   depth of the trace (see asn1_LogStart()); 0 keeps the call and everything below it silent.
 * - `T *asn1_T_clone(const T *)` gives a deep copy, which the caller owns; NULL for NULL, or when
 *   memory is exhausted.
 * - `int32_t asn1_T_cmp(const T *, const T *)` gives 0 for records that are alike.
 *
 * A tag is one identifier octet: class, constructed bit and number together. There is no form of
 * more than one identifier octet. Only the low 8 bits of a tag argument count.
 *
 * A programmer's error, such as a NULL where a pointer is required, ends the process: a decoder
 * without its cursors, a list decoder without a place, an encoder without the record that it needs
 * end it with one line on standard error. Bad input never does, but for two things wherever they
 * stand in it: a name with a value under an identifier octet of 100 or more, see asn1_Name_d(), and
 * a ContentInfo without a well-formed identifier, see asn1_ContentInfo_d().
 */
#ifndef ORVELASN1_ASN1_X680_H
#define ORVELASN1_ASN1_X680_H

#include <stdint.h>
#include <stdio.h>
#include <time.h>

#include "orvelutils.h"

#ifdef __cplusplus
/* More element functions, as orvelutils.h has them: classes that hold one function pointer. */

/** An encoder `uint32_t f(uint8_t **pp, const Element *)`. */
struct asn1_encoder {
  uint32_t (*function)(uint8_t **, const void *);
  asn1_encoder(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Element>
  asn1_encoder(uint32_t (*f)(uint8_t **, const Element *)) noexcept : function(nullptr) {
    memcpy(&function, &f, sizeof function);
  }
};

/**
 * A decoder `const uint8_t *f(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
 * Place *, uint32_t depth)`.
 */
struct asn1_decoder {
  const uint8_t *(*function)(const uint8_t *, const uint8_t *, uint32_t, void *, uint32_t);
  asn1_decoder(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Place>
  asn1_decoder(const uint8_t *(*f)(const uint8_t *, const uint8_t *, uint32_t, Place *,
                                   uint32_t)) noexcept
      : function(nullptr) {
    memcpy(&function, &f, sizeof function);
  }
};

extern "C" {
#else
/** An encoder `uint32_t f(uint8_t **pp, const Element *)`. */
typedef uint32_t (*asn1_encoder)(uint8_t **, const void *);

/**
 * A decoder `const uint8_t *f(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
 * Element **ppElement, uint32_t depth)`.
 */
typedef const uint8_t *(*asn1_decoder)(const uint8_t *, const uint8_t *, uint32_t, void *,
                                       uint32_t);
#endif

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
 * of the last octet are stored as they arrived.
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
  Any *parameters;  /**< one whole element, owned; NULL when nothing stands behind the identifier */
} AlgId;

/* -------------------------------------------------------------------------------------------- */
/* Trace                                                                                          */
/* -------------------------------------------------------------------------------------------- */

/**
 * Gives nothing; from now on decoders that are called with a depth other than 0 write a picture of
 * what they read to `stream`, which stays the caller's. NULL turns the trace off, as it is at the
 * start. The stream is one for the whole process and is not guarded by a lock: set it before other
 * threads decode.
 */
void asn1_LogStart(FILE *stream);

/**
 * Gives nothing; writes one message to the trace: process id, thread, local time, ". " for each
 * level of `depth` below the first, then the text that `format` and its arguments make as for
 * printf, which brings its own newline. The low 16 bits of `depth` count; with 0, or no stream,
 * nothing is written.
 */
void asn1_LogMessage(uint32_t depth, const char *format, ...)
#ifdef __GNUC__
    __attribute__((__format__(__printf__, 2, 3)))
#endif
    ;

/** Gives nothing; writes the dotted arcs of `oid` to the trace, or a bare newline if it has none.
 */
void asn1_LogObjId(uint32_t depth, const ObjId *oid);

/**
 * Gives nothing; writes a hex dump of `length` octets at `bytes` to the trace, 16 octets a line.
 * NULL is ignored.
 */
void asn1_LogByteArray(uint32_t depth, const uint8_t *bytes, int32_t length);

/* -------------------------------------------------------------------------------------------- */
/* Tag and length                                                                                 */
/* -------------------------------------------------------------------------------------------- */

/** Gives 1, the number of octets that the identifier octet takes; writes it unless `pp` is NULL. */
uint32_t asn1_Tag_e(uint8_t **pp, uint32_t tag);

/**
 * Gives the number of octets, 1 to 5, that `length` takes in the shortest definite form; writes
 * them unless `pp` is NULL.
 */
uint32_t asn1_Length_e(uint8_t **pp, uint32_t length);

/** Gives the number of octets of a header, 2 to 6; writes it unless `pp` is NULL. */
uint32_t asn1_TagLength_e(uint8_t **pp, uint32_t tag, uint32_t length);

/** Gives 2, the number of octets of an end-of-contents; writes it unless `pp` is NULL. */
uint32_t asn1_eoc_e(uint8_t **pp);

/**
 * Gives the cursor behind the identifier octet at `z`, or NULL when it is not the expected one or
 * `end` is reached. `z` and `end` must not be NULL.
 *
 * The octet must equal `impl_tag`, or `tag` where the low 8 bits of `impl_tag` are 0, but for the
 * constructed bit 0x20. That bit must not be set where neither `impl_tag` nor `tag` has it, unless
 * `constructed` is given; a primitive octet is always accepted.
 *
 * @param constructed where to store 1 when the octet has the constructed bit and 0 when not; NULL
 *                    where the type has one form only.
 */
const uint8_t *asn1_Tag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                          uint32_t *constructed, uint32_t depth);

/**
 * Gives the cursor behind the length octets at `z`, or NULL when they are malformed, more than four
 * octets long, or reach with the content behind `end`. `z`, `end` and `length` must not be NULL.
 * Longer forms than needed are accepted. A length with its top bit set is not compared with `end`:
 * a caller checks what it copies.
 *
 * @param length     where to store the number of content octets; 0 for the indefinite form.
 * @param indefinite where to store 1 for the indefinite form and 0 otherwise; NULL where that form
 *                   is not allowed.
 */
const uint8_t *asn1_Length_d(const uint8_t *z, const uint8_t *end, uint32_t *length,
                             uint32_t *indefinite, uint32_t depth);

/** Gives the cursor at the first content octet, or NULL: asn1_Tag_d(), then asn1_Length_d(). */
const uint8_t *asn1_TagLength_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                uint32_t tag, uint32_t *constructed, uint32_t *length,
                                uint32_t *indefinite, uint32_t depth);

/** Gives `z` plus 2 when two zero octets stand there in front of `end`, otherwise NULL. */
const uint8_t *asn1_eoc_d(const uint8_t *z, const uint8_t *end);

/* -------------------------------------------------------------------------------------------- */
/* Tagging wrappers and lists                                                                     */
/* -------------------------------------------------------------------------------------------- */

/**
 * Gives the number of octets of the element under an implicit tag, or 0 when `element_e` gives 0.
 * The constructed bit is the element's own, whatever `tag` says. `pElement` and `element_e` must
 * not be NULL.
 */
uint32_t asn1_implicit_e(uint8_t **pp, uint32_t tag, const void *pElement, asn1_encoder element_e);

/**
 * Gives the number of octets of the element inside an explicit tag, or 0 when `element_e` gives 0.
 * The constructed bit of `tag` is set here. `pElement` and `element_e` must not be NULL.
 */
uint32_t asn1_explicit_e(uint8_t **pp, uint32_t tag, const void *pElement, asn1_encoder element_e);

/**
 * Gives the cursor behind the element inside an explicit tag, or NULL. The wrapper must have a
 * definite length; that the element fills it is not checked. `z`, `ppElement` and `element_d` must
 * not be NULL.
 *
 * @param ppElement the place that `element_d` fills.
 */
const uint8_t *asn1_explicit_d(const uint8_t *z, const uint8_t *end, uint32_t tag,
                               asn1_decoder element_d, void *ppElement, uint32_t depth);

/**
 * Gives the number of octets of a constructed value that holds the elements of `list` in list
 * order, or 0 when `element_e` gives 0 for one of them. An empty list has an empty value.
 */
uint32_t asn1_List_e(uint8_t **pp, uint32_t tag, const List *list, asn1_encoder element_e);

/**
 * Gives the cursor behind a constructed value of elements, which are stored as a new list that the
 * caller owns, or NULL. `ppList` must not be NULL. The length may be indefinite where the
 * end-of-contents is the last thing in front of `end`. When the header is refused an empty list
 * stays in `*ppList`, for the caller to release; after any later failure `*ppList` is NULL.
 */
const uint8_t *asn1_List_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                           asn1_decoder element_d, asn1_destructor element_free, List **ppList,
                           uint32_t depth);

/**
 * Gives the number of octets of asn1_List_e() under `list_tag` inside an explicit tag, or 0; 0 also
 * for a NULL list.
 */
uint32_t asn1_expl_List_e(uint8_t **pp, uint32_t explicit_tag, uint32_t list_tag, const List *list,
                          asn1_encoder element_e);

/**
 * Gives the cursor behind asn1_List_d() under `list_tag` inside an explicit tag of definite length,
 * or NULL; NULL also where `z` or `ppList` is NULL.
 */
const uint8_t *asn1_expl_List_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                uint32_t list_tag, asn1_decoder element_d,
                                asn1_destructor element_free, List **ppList, uint32_t depth);

/** Gives asn1_List_e() with the tag 17; the order of the list is kept, not sorted as DER wants. */
uint32_t asn1_SetOf_e(uint8_t **pp, const List *list, asn1_encoder element_e);

/** Gives asn1_List_e() with the tag 16. */
uint32_t asn1_SeqOf_e(uint8_t **pp, const List *list, asn1_encoder element_e);

/** Gives asn1_List_d() with the tag 17. */
const uint8_t *asn1_SetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            asn1_decoder element_d, asn1_destructor element_free, List **ppList,
                            uint32_t depth);

/** Gives asn1_List_d() with the tag 16. */
const uint8_t *asn1_SeqOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            asn1_decoder element_d, asn1_destructor element_free, List **ppList,
                            uint32_t depth);

/** Gives asn1_expl_List_e() with the list tag 17. */
uint32_t asn1_expl_SetOf_e(uint8_t **pp, uint32_t explicit_tag, const List *list,
                           asn1_encoder element_e);

/** Gives asn1_expl_List_e() with the list tag 16. */
uint32_t asn1_expl_SeqOf_e(uint8_t **pp, uint32_t explicit_tag, const List *list,
                           asn1_encoder element_e);

/** Gives asn1_expl_List_d() with the list tag 17. */
const uint8_t *asn1_expl_SetOf_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                 asn1_decoder element_d, asn1_destructor element_free,
                                 List **ppList, uint32_t depth);

/** Gives asn1_expl_List_d() with the list tag 16. */
const uint8_t *asn1_expl_SeqOf_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                 asn1_decoder element_d, asn1_destructor element_free,
                                 List **ppList, uint32_t depth);

/* -------------------------------------------------------------------------------------------- */
/* INTEGER                                                                                        */
/* -------------------------------------------------------------------------------------------- */

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
Integer *asn1_Integer_new(uint32_t length);

/** Gives nothing; releases the record. NULL is ignored. */
void asn1_Integer_free(Integer *pElement);

/** Gives a new record that holds `value`, never negative; NULL when memory is exhausted. */
Integer *asn1_Integer_set(uint32_t value);

/**
 * Gives the octets of `integer`, which must not be NULL, read as an unsigned number; 0xFFFFFFFF
 * when it does not fit 32 bits. `negative` is not looked at: the content FF gives 255.
 */
uint32_t asn1_Integer_get(const Integer *integer);

/**
 * Gives the number of octets of the encoded INTEGER; 0 for NULL. Leading zero octets are left out,
 * and one is put in front where `negative` is 0 and the top bit is set.
 */
uint32_t asn1_Integer_e(uint8_t **pp, const Integer *pElement);

/** Gives the cursor behind an INTEGER, or NULL. One leading zero octet of the content is dropped.
 */
const uint8_t *asn1_Integer_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              Integer **ppElement, uint32_t depth);

/**
 * Gives 0 when the two records hold the same octets and sign, otherwise another number; 1 where a
 * record is NULL. The octets 00 01 and 01 are different.
 */
int32_t asn1_Integer_cmp(const Integer *a, const Integer *b);

/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
Integer *asn1_Integer_clone(const Integer *pElement);

/** Gives the library's constant record of the value 0; never to be released. */
const Integer *asn1_Integer_0(void);

/** Gives the library's constant record of the value 1; never to be released. */
const Integer *asn1_Integer_1(void);

/** Gives the library's constant record of the value 2; never to be released. */
const Integer *asn1_Integer_2(void);

/** Gives the library's constant record of the value 3; never to be released. */
const Integer *asn1_Integer_3(void);

/* -------------------------------------------------------------------------------------------- */
/* BOOLEAN, ENUMERATED, NULL, ANY                                                                 */
/* -------------------------------------------------------------------------------------------- */

/**
 * Gives 3, the number of octets of a BOOLEAN; the content is the low octet of `value` as it stands,
 * so that 1 is written as 01 and not as the FF of DER.
 */
uint32_t asn1_Boolean_e(uint8_t **pp, uint32_t value);

/**
 * Gives the cursor behind a BOOLEAN, or NULL. `*value` becomes the content octet. Where `z` has
 * reached `end`, or one of them is NULL, nothing is read, `*value` stays and `z` is the result.
 */
const uint8_t *asn1_Boolean_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              uint32_t *value, uint32_t depth);

/** Gives 3, the number of octets of an ENUMERATED with the low octet of `value` as its content. */
uint32_t asn1_Enumerated_e(uint8_t **pp, uint32_t value);

/** Gives the cursor behind an ENUMERATED of one content octet, or NULL; as asn1_Boolean_d(). */
const uint8_t *asn1_Enumerated_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 uint32_t *value, uint32_t depth);

/** Gives 2, the number of octets of a NULL. */
uint32_t asn1_Null_e(uint8_t **pp);

/**
 * Gives the cursor behind the header of a NULL, or NULL. The content length is not looked at, and
 * no content is skipped. `ppElement` is not used.
 */
const uint8_t *asn1_Null_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           void **ppElement, uint32_t depth);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
Any *asn1_Any_new(uint32_t length);

/** Gives nothing; releases the record. NULL is ignored. */
void asn1_Any_free(Any *pElement);

/** Gives the number of octets of the element, which is written as it stands; 0 for NULL. */
uint32_t asn1_Any_e(uint8_t **pp, const Any *pElement);

/**
 * Gives the cursor behind one element of any tag and definite length, or NULL. `impl_tag` must be
 * 0.
 * The record has the size of the element in its shortest form: an element whose length octets are
 * longer than needed loses as many octets at its end.
 */
const uint8_t *asn1_Any_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, Any **ppElement,
                          uint32_t depth);

/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
Any *asn1_Any_clone(const Any *pElement);

/** Gives 0 when the octets of both records are the same, otherwise another number; 1 where a record
 * is NULL. */
int32_t asn1_Any_cmp(const Any *a, const Any *b);

/** Gives the library's constant record of the octets 05 00; never to be released. */
const Any *asn1_Any_NULL(void);

/* -------------------------------------------------------------------------------------------- */
/* OBJECT IDENTIFIER                                                                              */
/* -------------------------------------------------------------------------------------------- */

/** Gives a new record of `count` zero arcs, or NULL when memory is exhausted. */
ObjId *asn1_ObjId_new(uint32_t count);

/** Gives nothing; releases the record. NULL is ignored. */
void asn1_ObjId_free(ObjId *pElement);

/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
ObjId *asn1_ObjId_clone(const ObjId *pElement);

/** Gives 0 when both identifiers, which must not be NULL, have the same arcs, otherwise 1. */
int32_t asn1_ObjId_cmp(const ObjId *oid1, const ObjId *oid2);

/**
 * Gives the number of octets of the encoded identifier; 0 for NULL or fewer than two arcs. The
 * first two arcs a and b are written as a * 40 + b, without a look at their range.
 */
uint32_t asn1_ObjId_e(uint8_t **pp, const ObjId *oid);

/**
 * Gives the cursor behind an OBJECT IDENTIFIER, or NULL. The first number V of the content becomes
 * the arcs V / 40 and V % 40, so that 2.100 comes back as 4.20. An arc of more than 32 bits fails.
 */
const uint8_t *asn1_ObjId_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            ObjId **ppElement, uint32_t depth);

/**
 * Gives 0 when the dotted form of `oid` was made, or -1 when it does not fit or memory is
 * exhausted. `oid` and `length` must not be NULL. Arcs above 0x7FFFFFFF print as negative numbers.
 *
 * @param s      where to write the text; NULL to learn its size only.
 * @param length in: the octets that `s` has room for; out: the octets of the text, its closing NUL
 *               included. Not changed by a failure.
 */
int32_t asn1_ObjId_sprint(const ObjId *oid, char *s, uint32_t *length);

/**
 * Gives the result of the last fprintf() of printing the dotted form of `oid`, of at least one arc,
 * to `fp`. Neither may be NULL. No newline follows.
 */
int32_t asn1_ObjId_fprint(const ObjId *oid, FILE *fp);

/**
 * Gives a new identifier, which the caller owns, from the dotted text at `*text`, and moves `*text`
 * behind it; NULL, with `*text` left alone, when there is no text or it does not begin with a
 * digit, the number of an arc does not fit 32 bits with a sign, or memory is exhausted. Arcs are
 * read as C reads integers: 0x10 is 16, 010 is 8. An arc without a number is the one before it
 * again: 1..2 is 1.1.1.
 */
ObjId *asn1_ObjId_parse(const char **text);

/* -------------------------------------------------------------------------------------------- */
/* BIT STRING                                                                                     */
/* -------------------------------------------------------------------------------------------- */

/** Gives a new record of `length` zero bits, or NULL when memory is exhausted. */
BitString *asn1_BitString_new(uint32_t length);

/** Gives nothing; releases the record. NULL is ignored. */
void asn1_BitString_free(BitString *pElement);

/**
 * Gives the number of octets of the BIT STRING as DER writes a named bit list: zero octets and zero
 * bits at the end are left out. 0 for NULL. The padding bits of the last octet count as bits.
 */
uint32_t asn1_BitString_e(uint8_t **pp, const BitString *pElement);

/** Gives the number of octets of the BIT STRING written as it stands; 0 for NULL. */
uint32_t asn1_BitString_BER_e(uint8_t **pp, const BitString *pElement);

/**
 * Gives the cursor behind a BIT STRING of any form, or NULL. Segments of a constructed value are
 * joined as whole octets. `z`, `end` and `s` must not be NULL.
 */
const uint8_t *asn1_BitString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                BitString **s, uint32_t depth);

/** Gives a copy, padding bits included; NULL for NULL, or when memory is exhausted. */
BitString *asn1_BitString_clone(const BitString *pElement);

/**
 * Gives 0 when both records have the same length and octets, padding bits included, otherwise
 * another number; 1 where a record is NULL.
 */
int32_t asn1_BitString_cmp(const BitString *a, const BitString *b);

/**
 * Gives `bs`, which must not be NULL, after setting bit number `bit` where `value` is not 0 and
 * clearing it where it is 0. Setting grows the string as far as needed; NULL when that fails, and
 * the string is then as before. Clearing never changes the length.
 */
BitString *asn1_BitString_set(BitString *bs, uint32_t bit, uint32_t value);

/** Gives 1 when bit number `bit` is set, 0 when it is not, lies behind the end, or `bs` is NULL. */
int32_t asn1_BitString_test(const BitString *bs, uint32_t bit);

/**
 * Gives `s`, which must not be NULL, with `count` octets of `bytes` behind its last octet, whose
 * padding becomes part of the value; NULL when growth fails, and `s` is then as before. Where
 * `bytes` is NULL the new octets are undefined.
 */
BitString *asn1_BitString_append(BitString *s, uint32_t count, const void *bytes);

/* -------------------------------------------------------------------------------------------- */
/* Strings                                                                                        */
/* -------------------------------------------------------------------------------------------- */

/**
 * Gives a new record of `length` octets, copied from `bytes` or zero where that is NULL; NULL when
 * memory is exhausted. With `length` 0, `bytes` is taken as a terminated text and copied without
 * its NUL.
 */
ASN1String *asn1_ASN1String_new(uint32_t length, const void *bytes);

/** Gives nothing; releases the record. NULL is ignored. */
void asn1_ASN1String_free(ASN1String *pElement);

/**
 * Gives the number of octets of the string under `tag`; 0 for NULL. The tag 3 is that of BIT
 * STRING: `length` then counts bits, and the value is written as by asn1_BitString_e().
 */
uint32_t asn1_ASN1String_e(uint8_t **pp, uint32_t tag, const ASN1String *pElement);

/**
 * Gives the cursor behind a string of any form under `tag`, or NULL. Segments of a constructed
 * value carry `tag` themselves and are joined. `z`, `end` and `s` must not be NULL.
 */
const uint8_t *asn1_ASN1String_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 uint32_t tag, ASN1String **s, uint32_t depth);

/**
 * Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. Where `length`
 * is 0 and `data` is not NULL, that is copied as a terminated text, as asn1_ASN1String_new() does.
 */
ASN1String *asn1_ASN1String_clone(const ASN1String *pElement);

/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_ASN1String_cmp(const ASN1String *a, const ASN1String *b);

/**
 * Gives `s`, which must not be NULL, with `count` octets of `bytes` behind its value; NULL when
 * growth fails, and `s` is then as before. Where `bytes` is NULL the new octets are undefined.
 */
ASN1String *asn1_ASN1String_append(ASN1String *s, uint32_t count, const void *bytes);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
OctetString *asn1_OctetString_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_OctetString_free(OctetString *pElement);
/** Gives the number of octets of an OCTET STRING (tag 4); 0 for NULL. */
uint32_t asn1_OctetString_e(uint8_t **pp, const OctetString *pElement);
/** Gives the cursor behind an OCTET STRING (tag 4) of any form, or NULL; no character is checked.
 */
const uint8_t *asn1_OctetString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  OctetString **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
OctetString *asn1_OctetString_clone(const OctetString *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_OctetString_cmp(const OctetString *a, const OctetString *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
UTF8String *asn1_UTF8String_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_UTF8String_free(UTF8String *pElement);
/** Gives the number of octets of a UTF8String (tag 12); 0 for NULL. */
uint32_t asn1_UTF8String_e(uint8_t **pp, const UTF8String *pElement);
/** Gives the cursor behind a UTF8String (tag 12) of any form, or NULL; no character is checked. */
const uint8_t *asn1_UTF8String_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 UTF8String **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
UTF8String *asn1_UTF8String_clone(const UTF8String *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_UTF8String_cmp(const UTF8String *a, const UTF8String *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
NumericString *asn1_NumericString_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_NumericString_free(NumericString *pElement);
/** Gives the number of octets of a NumericString (tag 18); 0 for NULL. */
uint32_t asn1_NumericString_e(uint8_t **pp, const NumericString *pElement);
/** Gives the cursor behind a NumericString (tag 18) of any form, or NULL; no character is checked.
 */
const uint8_t *asn1_NumericString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    NumericString **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
NumericString *asn1_NumericString_clone(const NumericString *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_NumericString_cmp(const NumericString *a, const NumericString *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
PrintableString *asn1_PrintableString_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_PrintableString_free(PrintableString *pElement);
/** Gives the number of octets of a PrintableString (tag 19); 0 for NULL. */
uint32_t asn1_PrintableString_e(uint8_t **pp, const PrintableString *pElement);
/** Gives the cursor behind a PrintableString (tag 19) of any form, or NULL; no character is
 * checked. */
const uint8_t *asn1_PrintableString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      PrintableString **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
PrintableString *asn1_PrintableString_clone(const PrintableString *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_PrintableString_cmp(const PrintableString *a, const PrintableString *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
TeletexString *asn1_TeletexString_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_TeletexString_free(TeletexString *pElement);
/** Gives the number of octets of a TeletexString (tag 20); 0 for NULL. */
uint32_t asn1_TeletexString_e(uint8_t **pp, const TeletexString *pElement);
/** Gives the cursor behind a TeletexString (tag 20) of any form, or NULL; no character is checked.
 */
const uint8_t *asn1_TeletexString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    TeletexString **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
TeletexString *asn1_TeletexString_clone(const TeletexString *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_TeletexString_cmp(const TeletexString *a, const TeletexString *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
VideotextString *asn1_VideotextString_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_VideotextString_free(VideotextString *pElement);
/** Gives the number of octets of a VideotexString (tag 21); 0 for NULL. */
uint32_t asn1_VideotextString_e(uint8_t **pp, const VideotextString *pElement);
/** Gives the cursor behind a VideotexString (tag 21) of any form, or NULL; no character is checked.
 */
const uint8_t *asn1_VideotextString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      VideotextString **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
VideotextString *asn1_VideotextString_clone(const VideotextString *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_VideotextString_cmp(const VideotextString *a, const VideotextString *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
IA5String *asn1_IA5String_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_IA5String_free(IA5String *pElement);
/** Gives the number of octets of an IA5String (tag 22); 0 for NULL. */
uint32_t asn1_IA5String_e(uint8_t **pp, const IA5String *pElement);
/** Gives the cursor behind an IA5String (tag 22) of any form, or NULL; no character is checked. */
const uint8_t *asn1_IA5String_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                IA5String **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
IA5String *asn1_IA5String_clone(const IA5String *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_IA5String_cmp(const IA5String *a, const IA5String *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
GraphicString *asn1_GraphicString_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_GraphicString_free(GraphicString *pElement);
/** Gives the number of octets of a GraphicString (tag 25); 0 for NULL. */
uint32_t asn1_GraphicString_e(uint8_t **pp, const GraphicString *pElement);
/** Gives the cursor behind a GraphicString (tag 25) of any form, or NULL; no character is checked.
 */
const uint8_t *asn1_GraphicString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    GraphicString **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
GraphicString *asn1_GraphicString_clone(const GraphicString *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_GraphicString_cmp(const GraphicString *a, const GraphicString *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
VisibleString *asn1_VisibleString_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_VisibleString_free(VisibleString *pElement);
/** Gives the number of octets of a VisibleString (tag 26); 0 for NULL. */
uint32_t asn1_VisibleString_e(uint8_t **pp, const VisibleString *pElement);
/** Gives the cursor behind a VisibleString (tag 26) of any form, or NULL; no character is checked.
 */
const uint8_t *asn1_VisibleString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    VisibleString **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
VisibleString *asn1_VisibleString_clone(const VisibleString *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_VisibleString_cmp(const VisibleString *a, const VisibleString *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
GeneralString *asn1_GeneralString_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_GeneralString_free(GeneralString *pElement);
/** Gives the number of octets of a GeneralString (tag 27); 0 for NULL. */
uint32_t asn1_GeneralString_e(uint8_t **pp, const GeneralString *pElement);
/** Gives the cursor behind a GeneralString (tag 27) of any form, or NULL; no character is checked.
 */
const uint8_t *asn1_GeneralString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    GeneralString **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
GeneralString *asn1_GeneralString_clone(const GeneralString *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_GeneralString_cmp(const GeneralString *a, const GeneralString *b);

/** Gives a new record of `length` zero octets, or NULL when memory is exhausted. */
UniversalString *asn1_UniversalString_new(uint32_t length);
/** Gives nothing; releases the record. NULL is ignored. */
void asn1_UniversalString_free(UniversalString *pElement);
/** Gives the number of octets of a UniversalString (tag 28); 0 for NULL. */
uint32_t asn1_UniversalString_e(uint8_t **pp, const UniversalString *pElement);
/** Gives the cursor behind a UniversalString (tag 28) of any form, or NULL; no character is
 * checked. */
const uint8_t *asn1_UniversalString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      UniversalString **ppElement, uint32_t depth);
/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
UniversalString *asn1_UniversalString_clone(const UniversalString *pElement);
/** Gives 0 when the octets of both records, which must not be NULL, are the same. */
int32_t asn1_UniversalString_cmp(const UniversalString *a, const UniversalString *b);

/* -------------------------------------------------------------------------------------------- */
/* UTCTime, GeneralizedTime, Time                                                                 */
/* -------------------------------------------------------------------------------------------- */

/** Gives a new record of kind 0, or NULL when memory is exhausted. */
Time *asn1_Time_new(void);

/** Gives a zeroed buffer of 18 octets for a UTCTime, or NULL when memory is exhausted. */
UTCTime *asn1_UTCTime_new(void);

/** Gives a zeroed buffer of 27 octets for a GeneralizedTime, or NULL when memory is exhausted. */
GeneralizedTime *asn1_GeneralizedTime_new(void);

/** Gives nothing; releases the record, and its text where `kind` is 23 or 24. NULL is ignored. */
void asn1_Time_free(Time *pElement);

/** Gives nothing; releases the text. NULL is ignored. */
void asn1_UTCTime_free(UTCTime *pElement);

/** Gives nothing; releases the text. NULL is ignored. */
void asn1_GeneralizedTime_free(GeneralizedTime *pElement);

/** Gives a copy, which the caller owns; NULL for NULL, an unknown `kind`, or exhausted memory. */
Time *asn1_Time_clone(const Time *pElement);

/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
UTCTime *asn1_UTCTime_clone(const UTCTime *pElement);

/** Gives a copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
GeneralizedTime *asn1_GeneralizedTime_clone(const GeneralizedTime *pElement);

/** Gives the number of octets of the time; 0 for NULL, an unknown `kind`, an empty or no text. */
uint32_t asn1_Time_e(uint8_t **pp, const Time *pElement);

/** Gives the number of octets of a UTCTime; 0 for a NULL or empty text. */
uint32_t asn1_UTCTime_e(uint8_t **pp, const UTCTime *pElement);

/** Gives the number of octets of a GeneralizedTime; 0 for a NULL or empty text. */
uint32_t asn1_GeneralizedTime_e(uint8_t **pp, const GeneralizedTime *pElement);

/** Gives the cursor behind a UTCTime or GeneralizedTime under its universal tag, or NULL. */
const uint8_t *asn1_Time_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           Time **ppElement, uint32_t depth);

/** Gives the cursor behind a primitive UTCTime, or NULL; the text is not checked. */
const uint8_t *asn1_UTCTime_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              UTCTime **ppElement, uint32_t depth);

/** Gives the cursor behind a primitive GeneralizedTime, or NULL; the text is not checked. */
const uint8_t *asn1_GeneralizedTime_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      GeneralizedTime **ppElement, uint32_t depth);

/**
 * Gives 0 when the times are equal, 1 when `a` is later, 2 when `a` is earlier, and -1 when one of
 * them is NULL or cannot be read.
 */
int32_t asn1_Time_cmp(const Time *a, const Time *b);

/** Gives the order of two UTCTime texts, as asn1_Time_cmp(). */
int32_t asn1_UTCTime_cmp(const UTCTime *a, const UTCTime *b);

/** Gives the order of two GeneralizedTime texts, as asn1_Time_cmp(). */
int32_t asn1_GeneralizedTime_cmp(const GeneralizedTime *a, const GeneralizedTime *b);

/**
 * Gives 0 when the time was read and its seconds since 1970 are stored, or -1, and nothing is
 * stored. The seconds are those of the text taken as standard time of the process's own zone
 * (mktime): they are off by that zone's offset unless the process runs in UTC.
 */
int32_t asn1_Time2Seconds(time_t *pSeconds, const Time *t);

/** Gives 0 or -1: the seconds of a UTCTime text, as asn1_Time2Seconds(). */
int32_t asn1_UTCTime2Seconds(time_t *pSeconds, const UTCTime *t);

/** Gives 0 or -1: the seconds of a GeneralizedTime text, as asn1_Time2Seconds(). */
int32_t asn1_GeneralizedTime2Seconds(time_t *pSeconds, const GeneralizedTime *t);

/**
 * Gives `t` with its text set to `seconds` since 1970 in UTC, by its `kind`; a new GeneralizedTime,
 * which the caller owns, where `t` is NULL; NULL for an unknown `kind`, exhausted memory, or
 * seconds that no date has. A `t` whose `value` is NULL comes back unchanged.
 */
Time *asn1_Seconds2Time(Time *t, time_t seconds);

/**
 * Gives `buffer`, of at least 18 octets, with the text of `seconds` since 1970 in UTC; a new text,
 * which the caller owns, where `buffer` is NULL; NULL for exhausted memory, or seconds that no date
 * has. The year is cut to two digits.
 */
UTCTime *asn1_Seconds2UTCTime(UTCTime *buffer, time_t seconds);

/**
 * Gives a GeneralizedTime text as asn1_Seconds2UTCTime() does; `buffer` has at least 27 octets.
 * NULL also for a year that no int holds.
 */
GeneralizedTime *asn1_Seconds2GeneralizedTime(GeneralizedTime *buffer, time_t seconds);

/** Gives asn1_Seconds2Time() of the current time. */
Time *asn1_Time_get(Time *t);

/** Gives asn1_Seconds2UTCTime() of the current time. */
UTCTime *asn1_UTCTime_get(UTCTime *buffer);

/** Gives asn1_Seconds2GeneralizedTime() of the current time. */
GeneralizedTime *asn1_GeneralizedTime_get(GeneralizedTime *buffer);

/* -------------------------------------------------------------------------------------------- */
/* AlgorithmIdentifier                                                                            */
/* -------------------------------------------------------------------------------------------- */

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
AlgId *asn1_AlgId_new(void);

/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_AlgId_free(AlgId *pElement);

/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_AlgId_e(uint8_t **pp, const AlgId *pElement);

/** Gives the cursor behind the AlgorithmIdentifier, or NULL. */
const uint8_t *asn1_AlgId_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            AlgId **ppElement, uint32_t depth);

/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
AlgId *asn1_AlgId_clone(const AlgId *pElement);

#ifdef __cplusplus
}
#else
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
