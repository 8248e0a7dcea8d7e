/*
 * What Python holds of a decoded record, and reads from it; and views, for which nothing is
 * decoded.
 *
 * A py_Value is a place in a tree of records: the whole, or a part that keeps the whole alive. It
 * knows its own type, and each function checks what it is asked for against that type: no value and
 * no number that Python passes makes one read outside the tree. Nothing changes a tree once it is
 * decoded, so that all of this may be used from any thread.
 */
#ifndef ORVELASN1_PYTHON_VALUES_H
#define ORVELASN1_PYTHON_VALUES_H

#include <orvelpki.h>
#include <stddef.h>
#include <stdint.h>

typedef struct py_Value py_Value;

/** The index of the value itself, where a function takes that of a part. */
static const uint32_t PY_SELF = 0xFFFFFFFF;
/** What a number, a length or a time is where the part is not there. */
static const int64_t PY_ABSENT = INT64_MIN;
/** What a time is that is none. */
static const int64_t PY_OTHER = INT64_MIN + 1;
/** Below it are no numbers: of an INTEGER of more than seven octets, it is the number of its octets
 * times two, plus one where it is negative, above PY_OTHER. */
static const int64_t PY_NUMBERS = INT64_MIN + ((int64_t)1 << 40);

/** The objects of a card in which one more may be. Any thread may release a value, also one with
 * less
 * stack than that which decoded it. */
static const uint32_t PY_DEEPEST = 32;

/**
 * Decodes the value at `z`. Returns it, to be released with py_release(). Returns NULL where the
 * octets are no value of the type, when memory is exhausted, and for card objects in more than
 * PY_DEEPEST others. `*taken` is the number of its octets; where `taken` is NULL, octets past the
 * value are refused.
 */
py_Value *py_decode(const pki_Type *type, const uint8_t *z, size_t size, size_t *taken);

/** Tells whether octets in which pki_explain() finds no fault are refused for objects in more than
 * PY_DEEPEST others, or in more than the stack has room for. */
int32_t py_nests_too_deeply(const pki_Type *type, const uint8_t *z, size_t size);

/** Tells whether there are values of a type by themselves, and whether they can be encoded. */
int32_t py_is_decoded(const pki_Type *type);
int32_t py_is_encoded(const pki_Type *type);

/** Releases a value; the tree with the last one of it. Takes NULL. */
void py_release(py_Value *value);

/** Returns the type of a value. */
const pki_Type *py_type(const py_Value *value);

/** Returns the number of elements of a list; 0 for anything else. */
uint32_t py_count(const py_Value *value);

/** Returns the index of the alternative that a CHOICE has; PY_SELF where it has none. */
uint32_t py_alternative(const py_Value *value);

/*
 * The functions below take a value, and the index of a field of a SEQUENCE, of an alternative of a
 * CHOICE, or of an element of a list; or PY_SELF.
 *
 * The index of a field of a SEQUENCE in a SEQUENCE has several levels of PY_LEVEL bits, of which
 * there
 * are five at the most. The lowest one is the number of the field; those above it are the numbers
 * plus
 * one of the fields that lead there, the first of them highest.
 */
enum { PY_LEVEL = 6, PY_MOST_FIELDS = 63 };

/** Tells whether the part is there. */
int32_t py_has(const py_Value *value, uint32_t index);

/** Returns a SEQUENCE, CHOICE, list or card object as a value of its own, to be released with
 * py_release(). NULL where it is not there or something else, and when memory is exhausted. */
py_Value *py_part(const py_Value *value, uint32_t index);

/** Returns a BOOLEAN, ENUMERATED or INTEGER; PY_ABSENT, or what PY_NUMBERS says. */
int64_t py_number(const py_Value *value, uint32_t index);

/** Returns a time in seconds since 1970 in UTC; PY_ABSENT, or PY_OTHER. */
int64_t py_seconds(const py_Value *value, uint32_t index);

/** Returns the number of octets of an INTEGER, in two's complement where it is negative, a string,
 * the text of a time, or the arcs of an identifier; PY_ABSENT. */
int64_t py_length(const py_Value *value, uint32_t index);

/** Returns these octets, which live as long as the value; NULL where there are none. */
const char *py_octets(const py_Value *value, uint32_t index);

/** Returns the number of bits of a BIT STRING; PY_ABSENT. */
int64_t py_bits(const py_Value *value, uint32_t index);

/** Returns the identifier octet of a string or a time; 0 where there is none. */
uint32_t py_identifier(const py_Value *value, uint32_t index);

/** Returns a number below PY_MOST_KNOWN, by which the same identifier is known from now on; -1 for
 * one
 * that is too long, or when too many are known. */
enum { PY_MOST_KNOWN = 8192 };
int32_t py_known(const py_Value *value, uint32_t index);

/** Makes the text of an identifier, to be released with py_free_text(). Returns NULL where there is
 * none. */
char *py_identifier_text(const py_Value *value, uint32_t index);

/** Returns the number of octets in which a field is kept beside its value; PY_ABSENT. */
int64_t py_kept_length(const py_Value *value, uint32_t index);

/** Returns these octets; NULL where there are none. */
const char *py_kept_octets(const py_Value *value, uint32_t index);

/** Makes the text of a name (RFC 4514), to be released with py_free_text(). Returns NULL where the
 * value is no name or has no such text. */
char *py_name_text(const py_Value *value);

/** Makes the text of a name as the records keep it, to be released with py_free_text(). */
char *py_name_own_text(const py_Value *value);

/** Makes a name of its text (RFC 4514), to be released with py_release(). Returns NULL where there
 * is no such name. */
py_Value *py_name_parse(const char *text);

/** Releases a text. Takes NULL. */
void py_free_text(char *text);

/** Returns the type of the values that an identifier, given as text, stands in front of; or NULL.
 */
const pki_Type *py_defined_by(const char *identifier);

/** Writes the text of an identifier in its one form. Returns NULL where it is none. */
char *py_identifier_parse(const char *text);

/** The library's named identifiers: their number, the name of each, and its text, to be released
 * with py_free_text(). */
uint32_t py_name_count(void);
const char *py_name(uint32_t index);
char *py_name_identifier(uint32_t index);

/** Returns the number of octets that a value is encoded in; 0 where it cannot be encoded. */
uint32_t py_size(const py_Value *value);

/** Encodes a value at `out`, which has room for py_size() octets. Returns their number, or 0. */
uint32_t py_encode(const py_Value *value, uint8_t *out);

/** Says why a value cannot be encoded, as pki_find_missing() does. */
int32_t py_find_missing(const py_Value *value, pki_Fault *fault);

/** A signed certificate timestamp (RFC 6962, 3.2), as pki_SignedCertificateTimestamp has it. Octets
 * that are not there are NULL. */
typedef struct py_Timestamp {
  uint32_t version;
  uint32_t hashAlgorithm;
  uint32_t signatureAlgorithm;
  uint64_t timestamp;
  char logID[32];
  pki_Octets extensions;
  pki_Octets signature;
  pki_Octets opaque;
} py_Timestamp;

/** Fills in the timestamp of an index in a list of such. Returns 1, or 0 where there is none. */
int32_t py_timestamp(const py_Value *list, uint32_t index, py_Timestamp *timestamp);

/*
 * Objects of a card. What is asked of any other value is -1, 0 or NULL.
 */

/** What an object holds. */
typedef enum py_Role { PY_LEAF, PY_CONTAINER, PY_ATTRIBUTES } py_Role;

/** Returns the identifier of an object. */
int64_t py_object_id(const py_Value *object);

/** Returns what an object holds, a py_Role. */
int32_t py_object_role(const py_Value *object);

/** Tells whether the objects in this one stand in sets. */
int32_t py_object_has_sets(const py_Value *object);

/** Returns the number of sets, objects or attributes in an object; or that of the objects in the
 * set
 * of an index, unless that is PY_SELF. */
uint32_t py_object_count(const py_Value *object, uint32_t set);

/** Returns the object of an index, in the set of an index or PY_SELF, to be released with
 * py_release(). */
py_Value *py_object_child(const py_Value *object, uint32_t set, uint32_t index);

/** Returns the identifier of an attribute. */
int64_t py_object_attribute(const py_Value *object, uint32_t index);

/** Returns the octets of an attribute; of the object itself for PY_SELF. They live as long as the
 * value. `data` is NULL where there are none. */
pki_Octets py_object_octets(const py_Value *object, uint32_t index);

/*
 * The questions of pki_certificate.h. Any other value than a certificate is asked in vain: the
 * answer
 * is -1, 0 or NULL.
 */

/** What there is a list of. */
typedef enum py_List {
  PY_DNS_NAMES,
  PY_MAIL_ADDRESSES,
  PY_URIS,
  PY_IP_ADDRESSES,
  PY_CRL_PLACES,
  PY_OCSP_PLACES,
  PY_ISSUER_PLACES
} py_List;

/** Makes a list, to be released with py_free_list(). Returns NULL when memory is exhausted. */
List *py_list(const py_Value *certificate, uint32_t which, uint32_t *unreadable);
uint32_t py_list_count(const List *list);
pki_Octets py_list_octets(const List *list, uint32_t index);
void py_free_list(List *list);

int32_t py_key_usage(const py_Value *certificate, uint32_t *usage);
int32_t py_allows_purpose(const py_Value *certificate, const char *purpose);
int32_t py_may_issue(const py_Value *certificate, uint32_t *path_length);
/** The identifier of the subject's key, or of the issuer's, which lives as long as the certificate.
 */
pki_Octets py_key_identifier(const py_Value *certificate, int32_t of_issuer);

/*
 * Views: places in the octets from `z`, of which there are `size`. Nothing is decoded.
 */

/** A place in octets. */
typedef struct py_Place {
  uint64_t offset; /* from `z` */
  uint64_t length; /* 0 where there is none */
} py_Place;

/** Finds the element at `z`, and its content. Returns 1; 0 where there are no octets; -1 where they
 * are
 * no element. Any place may be NULL. */
int32_t py_view_element(const uint8_t *z, size_t size, py_Place *element, py_Place *content);

/** Finds the fields of the SEQUENCE that the octets are, as pki_view() does. Returns 1 or 0. */
int32_t py_view_fields(const pki_Type *type, const uint8_t *z, size_t size, py_Place *fields,
                       uint32_t count);

/** Finds the first extension with an identifier, given as its content octets, in the SEQUENCE OF
 * Extension that the octets are. Returns 1; 0 where there is none; -1 where the octets are no such
 * list. */
int32_t py_view_extension(const uint8_t *z, size_t size, const uint8_t *identifier, uint32_t length,
                          py_Place *extension);

/** An entry of a revocation list. */
typedef struct py_Entry {
  py_Place serialNumber; /* its content */
  py_Place revocationDate;
  py_Place extensions;
  int64_t revoked; /* PY_OTHER for what is no time */
  int32_t reason;
} py_Entry;

/**
 * Reads the entry of the CertificateList at `z` that stands at an offset, of which 0 is that of the
 * first one, and moves the offset past it. Returns 1; 0 past the last one; -1 where the octets are
 * no
 * list, or those there no entry.
 */
int32_t py_crl_next(const uint8_t *z, size_t size, uint64_t *offset, py_Entry *entry);

/** Finds the entry of a serial number, given as content octets. Returns 1, 0, or -1. */
int32_t py_crl_find(const uint8_t *z, size_t size, const uint8_t *serial, uint32_t length,
                    py_Entry *entry);

#endif
