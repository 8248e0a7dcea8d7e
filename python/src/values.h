/*
 * What Python holds of a decoded record, and reads from it.
 *
 * A py_Value is a place in a tree of records: the whole, or a part that keeps the whole alive. It
 * knows
 * its own type, and each function checks what it is asked for against that type: no value and no
 * number that Python passes makes one read outside the tree. Nothing changes a tree once it is
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
 * times
 * two, plus one where it is negative, above PY_OTHER. */
static const int64_t PY_NUMBERS = INT64_MIN + ((int64_t)1 << 40);

/**
 * Decodes the value at `z`. Returns it, to be released with py_release(). Returns NULL where the
 * octets are no value of the type, and when memory is exhausted. `*taken` is the number of its
 * octets; where `taken` is NULL, octets past the value are refused.
 */
py_Value *py_decode(const pki_Type *type, const uint8_t *z, size_t size, size_t *taken);

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
 */

/** Tells whether the part is there. */
int32_t py_has(const py_Value *value, uint32_t index);

/** Returns a SEQUENCE, CHOICE or list as a value of its own, to be released with py_release(). NULL
 * where it is not there or something else, and when memory is exhausted. */
py_Value *py_part(const py_Value *value, uint32_t index);

/** Returns a BOOLEAN, ENUMERATED or INTEGER; PY_ABSENT, or what PY_NUMBERS says. */
int64_t py_number(const py_Value *value, uint32_t index);

/** Returns a time in seconds since 1970 in UTC; PY_ABSENT, or PY_OTHER. */
int64_t py_seconds(const py_Value *value, uint32_t index);

/** Returns the number of octets of an INTEGER, in two's complement where it is negative, a string,
 * the text of a time, or the arcs of an
 * identifier; PY_ABSENT. */
int64_t py_length(const py_Value *value, uint32_t index);

/** Returns these octets, which live as long as the value; NULL where there are none. */
const char *py_octets(const py_Value *value, uint32_t index);

/** Returns the number of bits of a BIT STRING; PY_ABSENT. */
int64_t py_bits(const py_Value *value, uint32_t index);

/** Returns the identifier octet of a string or a time; 0 where there is none. */
uint32_t py_identifier(const py_Value *value, uint32_t index);

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
 * is
 * no such name. */
py_Value *py_name_parse(const char *text);

/** Releases a text. Takes NULL. */
void py_free_text(char *text);

/** Returns the type of the values that an identifier, given as text, stands in front of; or NULL.
 */
const pki_Type *py_defined_by(const char *identifier);

/** Writes the text of an identifier in its one form. Returns NULL where it is none. */
char *py_identifier_parse(const char *text);

/** The library's named identifiers: their number, the name of each, and its text, to be released
 * with
 * py_free_text(). */
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

#endif
