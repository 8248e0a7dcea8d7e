/**
 * @file pki_type.h
 * The types of liborvelasn1 and the forms of the RFCs as data: what each is called, what its fields
 * are, where they stand in its record and on the wire, and by which functions it is read and
 * written.
 *
 * Everything that these functions return is constant, lives as long as the library, and may be used
 * from any thread. No function allocates memory or ends the process.
 */
#ifndef ORVELPKI_TYPE_H
#define ORVELPKI_TYPE_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A type; opaque. */
typedef struct pki_Type pki_Type;

/** What a type is. */
typedef enum pki_Kind {
  PKI_ANY,               /**< any element, kept whole */
  PKI_BOOLEAN,           /**< a number inside the record, 0 for FALSE */
  PKI_INTEGER,           /**< INTEGER */
  PKI_ENUMERATED,        /**< a number inside the record */
  PKI_NULL,              /**< NULL, which has no value */
  PKI_OBJECT_IDENTIFIER, /**< OBJECT IDENTIFIER */
  PKI_BIT_STRING,        /**< BIT STRING */
  PKI_OCTET_STRING,      /**< OCTET STRING */
  PKI_CHARACTER_STRING,  /**< one of the character strings, by its identifier octet */
  PKI_UTC_TIME,          /**< UTCTime, a text */
  PKI_GENERALIZED_TIME,  /**< GeneralizedTime, a text */
  PKI_SEQUENCE,          /**< a record of fields */
  PKI_SEQUENCE_OF,       /**< a List of elements */
  PKI_SET_OF,            /**< a List of elements */
  PKI_CHOICE,            /**< a record of `kind`, which picks the alternative, and `value` */
  PKI_NAME,              /**< a SEQUENCE OF RelativeDistinguishedName whose record is a text */
  PKI_ATTRIBUTE_VALUE,   /**< a string of any identifier octet, which its record keeps */
  PKI_TYPED_CONTENT,     /**< of the type that the record's first field says */
  PKI_CARD_OBJECT,       /**< an object of a smart card */
  PKI_CARD_IDENTIFIER,   /**< the identifier of a card object's attribute */
  PKI_TLS_LIST           /**< an OCTET STRING with a list in the encoding of TLS; a List */
} pki_Kind;

/** How a field is tagged (X.680, 31.2). */
typedef enum pki_Tagging { PKI_UNTAGGED, PKI_IMPLICIT, PKI_EXPLICIT } pki_Tagging;

/** How the decoder finds out that a field is there. */
typedef enum pki_Presence {
  PKI_ALWAYS,         /**< it is read without a look */
  PKI_NEXT_OCTET,     /**< the next octet of the content begins it */
  PKI_OCTET_OF_INPUT, /**< the next octet begins it, even where it stands past the content */
  PKI_EITHER_FORM,    /**< the next octet begins it, in primitive or constructed form */
  PKI_ANYTHING_LEFT,  /**< the content is not used up */
  PKI_ANY_ELEMENT     /**< an element follows, whatever its identifier octet */
} pki_Presence;

enum {
  /** The offset of a member that there is not. */
  PKI_NO_MEMBER = 0xFFFF
};

/** A component of a SEQUENCE, or an alternative of a CHOICE. */
typedef struct pki_Field {
  const char *name;     /**< as the ASN.1 has it */
  const pki_Type *type; /**< of the value inside the tag */
  uint32_t offset;      /**< octets of the record in front of the value: a pointer, or a number */
  uint32_t text_offset; /**< those in front of a name's text, or PKI_NO_MEMBER */
  uint32_t encoded_offset; /**< those in front of the kept octets, or PKI_NO_MEMBER */
  pki_Tagging tagging;     /**< how the field is tagged */
  uint8_t tag;             /**< the identifier octet of the tag; 0 without one */
  pki_Presence presence;   /**< how the decoder finds it */
  uint8_t found_by; /**< the identifier octet by which the decoder finds it; 0 for any. Of a Time,
                         that of either alternative */
  uint8_t kind;     /**< the number of the alternative, in the record of a CHOICE */
} pki_Field;

/**
 * The functions of a type, as its header declares them, over pointers to void. A function that the
 * type does not have is NULL; that goes for one, too, that exists by name only.
 */
typedef struct pki_Functions {
  /** Makes an empty record. Returns NULL when memory is exhausted. */
  void *(*create)(void);
  /** Decodes a value. Where it fails, `*place` may be left as it was, or hold an empty list. */
  const uint8_t *(*decode)(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **place,
                           uint32_t depth);
  /** Encodes a value; measures it where `pp` is NULL. */
  uint32_t (*encode)(uint8_t **pp, const void *record);
  /** Copies a value. */
  void *(*clone)(const void *record);
  /** Releases a value and all that it owns; takes NULL. */
  void (*free)(void *record);
  /** Compares two values. Returns 0 where they are alike. */
  int32_t (*compare)(const void *a, const void *b);
} pki_Functions;

/** Returns the number of types that there are. */
uint32_t pki_Type_count(void);

/** Returns the type of a number below pki_Type_count(), or NULL. */
const pki_Type *pki_Type_get(uint32_t index);

/**
 * Finds a type by the name that the ASN.1 gives it, such as "TBSCertificate", or by that of its
 * functions, as pki_Type_record() returns it. Where liborvelasn1 and an RFC's form share a name,
 * that of the ASN.1 finds liborvelasn1's: "pki_Certificate" finds the form. Returns NULL where
 * there is none.
 */
const pki_Type *pki_Type_find(const char *name);

/** Returns the name that the ASN.1 gives the type; "" for a list that has none. */
const char *pki_Type_name(const pki_Type *type);

/**
 * Returns the name of the type's functions: the T of asn1_T_d, which is that of its record, too; or
 * the whole pki_T of pki_T_d for the form of an RFC. Returns "" where it has none.
 */
const char *pki_Type_record(const pki_Type *type);

/** Returns what the type is. */
pki_Kind pki_Type_kind(const pki_Type *type);

/**
 * Returns the identifier octet (X.690, 8.1.2) of the type, or 0 where it has none in particular.
 * Time has that of its first alternative.
 */
uint8_t pki_Type_identifier(const pki_Type *type);

/**
 * Returns the octets of the type's record, or of the number that BOOLEAN and ENUMERATED are inside
 * one; 0 for a list, a text, another universal type.
 */
uint32_t pki_Type_size(const pki_Type *type);

/** Returns the type of a list's elements, or NULL. */
const pki_Type *pki_Type_element(const pki_Type *type);

/** Returns the number of a type's fields; 0 for one that is neither SEQUENCE nor CHOICE. */
uint32_t pki_Type_field_count(const pki_Type *type);

/**
 * Fills in the field of a number below pki_Type_field_count(), in the order of the wire. Returns 1,
 * or 0 where there is none.
 */
int32_t pki_Type_field(const pki_Type *type, uint32_t index, pki_Field *field);

/** Returns the functions of a type. */
const pki_Functions *pki_Type_functions(const pki_Type *type);

#ifdef __cplusplus
}
#endif

#endif
