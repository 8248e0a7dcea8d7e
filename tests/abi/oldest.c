/*
 * A program of the oldest version of the interface. It includes no header of the libraries: what it
 * knows
 * of records and functions was taken from the files of that version.
 */
#include "oldest.h"

#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* All functions of that version. The loader refuses to start the program where one is missing. */
typedef void (*Function)(void);
extern const Function functions[];
extern const size_t function_count;

/* Those that the program calls, by their types in that version. */
const void *pki_Type_find(const char *name);
uint32_t pki_Type_size(const void *type);
int32_t pki_Type_field(const void *type, uint32_t index, void *field);
const uint8_t *asn1_Certificate_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  void **place, uint32_t depth);
uint32_t asn1_Certificate_e(uint8_t **pp, const void *certificate);
void *asn1_Certificate_clone(const void *certificate);
void asn1_Certificate_free(void *certificate);

static const struct {
  const char *record;
  uint32_t size;
  const char *member;
  uint32_t place;
} members[] = {
#define MEMBER(record, size, member, place) {record, size, member, place},
    MEMBERS(MEMBER)};

/* The pointer that a member holds. */
#define POINTER(pointer, record, member) \
  (*(void *const *)((const char *)(pointer) + record##_##member##_PLACE))

static const uint32_t no_member = 0xFFFF;

static int failed = 0;

static void expect(int holds, const char *what) {
  if (holds) return;
  printf("oldest: %s\n", what);
  failed = 1;
}

/* Holds the members against what the library itself says of its records. Returns how many it names. */
static unsigned compare_records(void) {
  unsigned compared = 0;
  for (size_t i = 0; i < sizeof members / sizeof *members; ++i) {
    const void *const type = pki_Type_find(members[i].record);
    const uint32_t size = type ? pki_Type_size(type) : 0;
    if (size == 0) continue;
    if (size != members[i].size) {
      printf("oldest: %s has %u octets, not %u\n", members[i].record, size, members[i].size);
      failed = 1;
    }
    /* Of a size that the program does not rely on. */
    _Alignas(max_align_t) unsigned char field[1024];
    for (uint32_t k = 0; pki_Type_field(type, k, field); ++k) {
      uint32_t place;
      if (strcmp(POINTER(field, pki_Field, name), members[i].member) != 0) continue;
      /* Where a name is kept twice, the member with the field's name is its text. */
      memcpy(&place, field + pki_Field_text_offset_PLACE, sizeof place);
      if (place == no_member) memcpy(&place, field + pki_Field_offset_PLACE, sizeof place);
      ++compared;
      if (place == members[i].place) continue;
      printf("oldest: %s.%s stands at %u, not at %u\n", members[i].record, members[i].member, place,
             members[i].place);
      failed = 1;
    }
  }
  return compared;
}

/* Reads a certificate, looks into its records, copies it and writes it. */
static void use_a_certificate(void) {
  static const uint8_t der[] =
      "\x30\x69\x30\x5C\xA0\x03\x02\x01\x02\x02\x02\x12\x67\x30\x05\x06\x03\x2B\x65\x70"
      "\x30\x0D\x31\x0B\x30\x09\x06\x03\x55\x04\x06\x13\x02"
      "FR"
      "\x30\x1E\x17\x0D"
      "260101000000Z"
      "\x17\x0D"
      "270101000000Z"
      "\x30\x0D\x31\x0B\x30\x09\x06\x03\x55\x04\x06\x13\x02"
      "DE"
      "\x30\x0C\x30\x05\x06\x03\x2B\x65\x70\x03\x03\x00\x01\x02"
      "\x30\x05\x06\x03\x2B\x65\x70\x03\x02\x00\x8B";
  const uint32_t size = sizeof der - 1;
  void *certificate = NULL;
  const uint8_t *const next = asn1_Certificate_d(der, der + size, 0, &certificate, 0);
  expect(next == der + size && certificate != NULL, "a certificate is not read");
  if (failed) return;
  const void *const tbs = POINTER(certificate, Certificate, tbsCertificate);
  const void *const validity = POINTER(tbs, Certificate_TBS, validity);
  expect(strcmp(POINTER(tbs, Certificate_TBS, issuer), "/c(19)=FR") == 0, "the issuer is another");
  expect(strcmp(POINTER(tbs, Certificate_TBS, subject), "/c(19)=DE") == 0,
         "the subject is another");
  expect(strcmp(POINTER(POINTER(validity, Validity, notAfter), Time, value), "270101000000Z") == 0,
         "the end of the validity is another");
  void *const copy = asn1_Certificate_clone(certificate);
  asn1_Certificate_free(certificate);
  uint8_t out[sizeof der], *cursor = out;
  expect(copy != NULL && asn1_Certificate_e(NULL, copy) == size &&
             asn1_Certificate_e(&cursor, copy) == size && memcmp(out, der, size) == 0,
         "a copy is not written as it was read");
  asn1_Certificate_free(copy);
}

int main(void) {
  for (size_t i = 0; i < function_count; ++i) expect(functions[i] != NULL, "a function is missing");
  const unsigned compared = compare_records();
  expect(compared >= 300, "the library describes too few members");
  use_a_certificate();
  if (!failed) printf("%zu functions, %u members\n", function_count, compared);
  return failed ? EXIT_FAILURE : EXIT_SUCCESS;
}
