/**
 * @file pki_explain.h
 * Why octets are not of a type: where, in which field, and what was expected there.
 */
#ifndef ORVELPKI_EXPLAIN_H
#define ORVELPKI_EXPLAIN_H

#include <stdint.h>

#include "pki_type.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * What is wrong with an input. Both texts end in a NUL octet. Where it is too long, a sentence is
 * cut at its end, and a path between two names at its start.
 */
typedef struct pki_Fault {
  uint32_t offset; /**< octets from the start of the input to where it goes wrong */
  char
      path[256]; /**< the field, as in "tbsCertificate.extensions[3].extnValue"; "" for the value */
  char sentence[256]; /**< what was expected and what was found, without a full stop */
} pki_Fault;

/**
 * Explains why the octets from `z` up to `end` are not a value of a type. Takes exactly what the
 * decoder of the type takes, octets past the value included, but for two things: an input that
 * would end the process has a fault, and so has a value whose parts nest deeper than the stack of
 * the calling thread allows.
 *
 * Returns 0 where nothing is wrong: `fault->offset` is then the number of octets that the value
 * takes. Returns 1 where something is, and `*fault` says what. The first octet that does not fit
 * counts.
 *
 * Allocates nothing, never ends the process, and takes no longer than reading the value. `type` and
 * `fault` must not be NULL; an input of no octets may have any `z`.
 */
int32_t pki_explain(const pki_Type *type, const uint8_t *z, const uint8_t *end, pki_Fault *fault);

/**
 * Finds the field for which a record of one of the RFCs' forms has no encoding: one that is
 * missing, or holds what no decoder would read. `type` is the form's, such as
 * pki_Type_find("pki_Certificate"), and `record` what its encoder takes.
 *
 * Returns 0 where the encoder writes the record. Returns 1 where it returns 0: `fault->path` is
 * then the first such field, as in "tbsCertificate.validity.notAfter", and `fault->sentence` says
 * what is wrong with it. Allocates nothing. `type` and `fault` must not be NULL.
 */
int32_t pki_find_missing(const pki_Type *type, const void *record, pki_Fault *fault);

/**
 * Writes the name of an identifier octet (X.690, 8.1.2) as faults have it, such as "SEQUENCE (30)"
 * or "[3] (A3)", into a buffer of `size` octets, 48 of which hold every name. Cuts a longer name,
 * and ends it with a NUL octet. Returns the buffer.
 */
const char *pki_identifier_name(uint8_t octet, char *buffer, uint32_t size);

#ifdef __cplusplus
}
#endif

#endif
