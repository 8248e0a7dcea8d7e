/**
 * @file asn1_gdo.h
 * Global data objects of a smart card: a tree of typed objects in a format of its own.
 *
 * An object is a SEQUENCE of a one-octet `id` under the tag of OBJECT IDENTIFIER, and its content.
 * A leaf has its octets in an OCTET STRING. A container has a SET of objects in an OCTET STRING; at
 * a nested-set place, a SET of SETs of objects. An attribute holder has a SET of attributes under
 * the tag of BIT STRING, without an octet for the number of unused bits. An attribute's identifier
 * is little-endian: the encoder writes it as wide as an unsigned long, and the decoder reads four
 * octets.
 */
#ifndef ORVELASN1_ASN1_GDO_H
#define ORVELASN1_ASN1_GDO_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * A data object. Its `id` decides what it holds: 0x10 to 0x14 and 0x21 are containers with
 * `children`, 0x20 is an attribute holder with attributes in `children`, any other is a leaf with a
 * `value`.
 */
typedef struct GDOObject {
  unsigned long id;   /**< one octet in the encoding */
  OctetString *value; /**< owned, or NULL */
  List *children;     /**< owned, or NULL: GDOObject records at a plain place, lists of them at a
                         nested-set place */
} GDOObject;

/** An attribute: `id` is its identifier, `children` stays NULL. */
typedef GDOObject GDOObjectAttribute;

/** The objects of a card. */
typedef struct GDO {
  GDOObject *root; /**< at a plain place, owned */
  GDOObject *set1; /**< at a nested-set place, owned */
  GDOObject *set2; /**< at a nested-set place, owned */
  GDOObject *set3; /**< at a nested-set place, owned */
  GDOObject *set4; /**< at a nested-set place, owned; NULL where absent */
} GDO;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
GDO *asn1_GDO_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_GDO_free(GDO *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 when an object
 * fails. Only `set4` may be NULL: any other NULL object ends the process.
 */
uint32_t asn1_GDO_e(uint8_t **pp, const GDO *pElement);
/** Decodes a GDO. Returns the cursor past the last object, or NULL. */
const uint8_t *asn1_GDO_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, GDO **ppElement,
                          uint32_t depth);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
GDOObject *asn1_GDOObject_new(void);
/**
 * Encodes the object, which must not be NULL. Returns the number of octets, or 0 when it fails or
 * is nested deeper than the stack of the thread allows. `setOfSetOf` is not 0 for an object at a
 * nested-set place.
 */
uint32_t asn1_GDOObject_e(uint8_t **pp, uint32_t setOfSetOf, const GDOObject *o);
/**
 * Decodes an object. Returns the cursor past it, or NULL, also where it is nested deeper than the
 * stack of the thread allows. `o` must not be NULL. `impl_tag` is not used. `setOfSetOf` is not 0
 * for an object at a nested-set place.
 */
const uint8_t *asn1_GDOObject_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                uint32_t setOfSetOf, GDOObject **o, uint32_t depth);

/** Encodes an object at a plain place, as asn1_GDOObject_e(). */
uint32_t asn1_GDOObjectSetOf_e(uint8_t **pp, const GDOObject *o);
/** Decodes an object at a plain place, as asn1_GDOObject_d(). */
const uint8_t *asn1_GDOObjectSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     GDOObject **ppElement, uint32_t depth);
/** Releases an object of a plain place and everything below it. NULL is ignored. */
void asn1_GDOObjectSetOf_free(GDOObject *pElement);
/** Encodes an object at a nested-set place, as asn1_GDOObject_e(). */
uint32_t asn1_GDOObjectSetOfSetOf_e(uint8_t **pp, const GDOObject *o);
/** Decodes an object at a nested-set place, as asn1_GDOObject_d(). */
const uint8_t *asn1_GDOObjectSetOfSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          GDOObject **ppElement, uint32_t depth);
/** Releases an object of a nested-set place and everything below it. NULL is ignored. */
void asn1_GDOObjectSetOfSetOf_free(GDOObject *pElement);

/**
 * Encodes a SET OF SET OF. Returns the number of octets, or 0 when `element_e` returns 0 for an
 * element.
 */
uint32_t asn1_SetOfSetOf_e(uint8_t **pp, const List *list, asn1_encoder_function element_e);
/**
 * Decodes a SET OF SET OF into a new list of lists, which the caller owns. Returns the cursor past
 * it, or NULL. Lengths and failures are those of asn1_List_d(), but NULL is returned where `z` or
 * `ppList` is NULL.
 */
const uint8_t *asn1_SetOfSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 asn1_decoder_function element_d,
                                 List_destructor_function element_free, List **ppList,
                                 uint32_t depth);

#ifdef __cplusplus
}

/* The overloads for element functions, as orvelutils.h explains them. */
[[gnu::always_inline]] inline uint32_t asn1_SetOfSetOf_e(uint8_t **pp, const List *list,
                                                         asn1_encoder element_e) {
  return asn1_SetOfSetOf_e(pp, list, element_e.function);
}

[[gnu::always_inline]] inline const uint8_t *asn1_SetOfSetOf_d(const uint8_t *z, const uint8_t *end,
                                                               uint32_t impl_tag,
                                                               asn1_decoder element_d,
                                                               List_destructor element_free,
                                                               List **ppList, uint32_t depth) {
  return asn1_SetOfSetOf_d(z, end, impl_tag, element_d.function, element_free.function, ppList,
                           depth);
}
#else
/* The macros that convert element functions, as orvelutils.h explains them. */
#define asn1_SetOfSetOf_e(pp, list, element_e) asn1_SetOfSetOf_e(pp, list, asn1_encoder(element_e))
#define asn1_SetOfSetOf_d(z, end, impl_tag, element_d, element_free, ppList, depth)           \
  asn1_SetOfSetOf_d(z, end, impl_tag, asn1_decoder(element_d), List_destructor(element_free), \
                    ppList, depth)
#endif

#endif
