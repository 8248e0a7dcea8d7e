/* Prints the fields of a value of one of the RFCs' types, by the type's description. */
#include <orvelpki.h>

#include "file.h"

static void print_value(pki_Kind kind, const void *value) {
  if (kind == PKI_BOOLEAN || kind == PKI_ENUMERATED) {
    printf(" %u", (unsigned)*(const uint32_t *)value);
  } else if (kind == PKI_OBJECT_IDENTIFIER) {
    char *text = pki_ObjId_text((const ObjId *)value);
    printf(" %s", text != NULL ? text : "");
    free(text);
  } else if (kind == PKI_UTC_TIME || kind == PKI_GENERALIZED_TIME) {
    printf(" %s", (const char *)value);
  } else { /* these records begin alike: the number of octets or bits, and the octets */
    const ASN1String *string = (const ASN1String *)value;
    const uint32_t unit = kind == PKI_BIT_STRING ? 8 : 1;
    for (uint32_t i = 0; i * unit < string->length; ++i) printf(" %02X", string->data[i]);
  }
}

static void walk(const char *name, const pki_Type *type, const void *value, int depth) {
  const pki_Kind kind = pki_Type_kind(type);
  const int is_list = kind == PKI_SEQUENCE_OF || kind == PKI_SET_OF;
  printf("%*s%s", 2 * depth, "", name);
  if (!is_list && pki_Type_field_count(type) == 0) print_value(kind, value);
  putchar('\n');
  for (int32_t i = 0; is_list && i < List_len((const List *)value); ++i) {
    walk("-", pki_Type_element(type), List_get((const List *)value, i), depth + 1);
  }
  for (uint32_t i = 0; i < pki_Type_field_count(type); ++i) {
    pki_Field field;
    const void *inside;
    pki_Type_field(type, i, &field);
    if (kind == PKI_CHOICE && *(const uint8_t *)value != field.kind) continue;
    inside = (const char *)value + field.offset; /* a number, or a pointer to the value */
    if (pki_Type_kind(field.type) != PKI_BOOLEAN && pki_Type_kind(field.type) != PKI_ENUMERATED) {
      inside = *(void *const *)inside;
    }
    if (inside != NULL) walk(field.name, field.type, inside, depth + 1);
  }
}

int main(int argc, char **argv) {
  size_t size = 0;
  const pki_Type *type = argc == 3 ? pki_Type_find(argv[1]) : NULL;
  uint8_t *der = type != NULL ? read_file(argv[2], &size) : NULL;
  void *record = NULL;
  if (der != NULL) pki_Type_functions(type)->decode(der, der + size, 0, &record, 0);
  free(der);
  if (record == NULL) return EXIT_FAILURE;
  walk(pki_Type_name(type), type, record, 0);
  pki_Type_functions(type)->free(record);
  return EXIT_SUCCESS;
}
