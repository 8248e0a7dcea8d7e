/* Says why a file is no value of a type, such as pki_Certificate. */
#include <orvelpki.h>

#include "file.h"

int main(int argc, char **argv) {
  size_t size = 0;
  const pki_Type *type = argc == 3 ? pki_Type_find(argv[1]) : NULL;
  uint8_t *der = type != NULL ? read_file(argv[2], &size) : NULL;
  pki_Fault fault;
  int32_t is_wrong;
  if (der == NULL) return EXIT_FAILURE;
  is_wrong = pki_explain(type, der, der + size, &fault);
  if (is_wrong) {
    printf("offset %u, %s: %s\n", (unsigned)fault.offset, fault.path, fault.sentence);
  } else if (fault.offset != size) {
    printf("offset %u: octets follow the %s\n", (unsigned)fault.offset, pki_Type_name(type));
    is_wrong = 1;
  } else {
    printf("a %s\n", pki_Type_name(type));
  }
  free(der);
  return is_wrong ? EXIT_FAILURE : EXIT_SUCCESS;
}
