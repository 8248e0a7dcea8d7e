/**
 * @file asn1_gdo.h
 * Global data objects of a smart card: a tree of typed objects in a format of its own.
 *
 * An object is a SEQUENCE of a one-octet `id` under the tag of OBJECT IDENTIFIER, and its content:
 * a leaf's octets in an OCTET STRING; a container's SET of objects in an OCTET STRING; an attribute
 * holder's SET of attributes under the tag of BIT STRING, with no unused-bits octet. At a
 * nested-set place a container holds a SET of SETs of objects. An attribute's identifier is
 * little-endian, as wide as an unsigned long where it is written, and four octets where it is read.
 */
#ifndef ORVELASN1_ASN1_GDO_H
#define ORVELASN1_ASN1_GDO_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * A data object. What it holds follows from `id`: 0x10 to 0x14 and 0x21 are containers with
 * `children`, 0x20 holds attributes in `children`, any other is a leaf with a `value`.
 */
typedef struct GDOObject {
  unsigned long id;   /**< one octet on the wire */
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

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
GDO *asn1_GDO_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_GDO_free(GDO *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when an object fails. Only
 * `set4` may be NULL: without one of the others the process ends.
 */
uint32_t asn1_GDO_e(uint8_t **pp, const GDO *pElement);
/** Gives the cursor behind the last object, or NULL. */
const uint8_t *asn1_GDO_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, GDO **ppElement,
                          uint32_t depth);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
GDOObject *asn1_GDOObject_new(void);
/** Gives the number of octets of the object, which must not be NULL; 0 when it fails or is nested
 * deeper than the stack of the thread allows. `setOfSetOf` says whether it stands at a nested-set
 * place.
 */
uint32_t asn1_GDOObject_e(uint8_t **pp, uint32_t setOfSetOf, const GDOObject *o);
/** Gives the cursor behind the object, or NULL, also where it is nested deeper than the stack of
 * the thread allows. `o` must not be NULL. `impl_tag` is not used. `setOfSetOf` says whether it
 * stands at a nested-set place. */
const uint8_t *asn1_GDOObject_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                uint32_t setOfSetOf, GDOObject **o, uint32_t depth);

/** Gives asn1_GDOObject_e() at a plain place. */
uint32_t asn1_GDOObjectSetOf_e(uint8_t **pp, const GDOObject *o);
/** Gives asn1_GDOObject_d() at a plain place. */
const uint8_t *asn1_GDOObjectSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     GDOObject **ppElement, uint32_t depth);
/** Gives nothing; releases an object of a plain place and everything below it. NULL is ignored. */
void asn1_GDOObjectSetOf_free(GDOObject *pElement);
/** Gives asn1_GDOObject_e() at a nested-set place. */
uint32_t asn1_GDOObjectSetOfSetOf_e(uint8_t **pp, const GDOObject *o);
/** Gives asn1_GDOObject_d() at a nested-set place. */
const uint8_t *asn1_GDOObjectSetOfSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          GDOObject **ppElement, uint32_t depth);
/** Gives nothing; releases an object of a nested-set place and everything below it. NULL is
 * ignored. */
void asn1_GDOObjectSetOfSetOf_free(GDOObject *pElement);

/** Gives the number of octets of a SET OF SET OF; 0 when `element_e` gives 0 for an element. */
uint32_t asn1_SetOfSetOf_e(uint8_t **pp, const List *list, asn1_encoder element_e);
/** Gives the cursor behind a SET OF SET OF, which is stored as a new list of lists that the caller
 * owns,
 * or NULL; lengths and failures as for asn1_List_d(). NULL also where `z` or `ppList` is NULL. */
const uint8_t *asn1_SetOfSetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 asn1_decoder element_d, asn1_destructor element_free,
                                 List **ppList, uint32_t depth);

#ifdef __cplusplus
}
#else
/* The macros that convert element functions, as orvelutils.h explains them. */
#define asn1_SetOfSetOf_e(pp, list, element_e) asn1_SetOfSetOf_e(pp, list, asn1_encoder(element_e))
#define asn1_SetOfSetOf_d(z, end, impl_tag, element_d, element_free, ppList, depth)           \
  asn1_SetOfSetOf_d(z, end, impl_tag, asn1_decoder(element_d), List_destructor(element_free), \
                    ppList, depth)
#endif

#endif
