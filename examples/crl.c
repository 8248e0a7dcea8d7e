/* Prints the entries of a revocation list of any size, in DER: no record is made of them. */
#include <orvelpki.h>

#include "file.h"

int main(int argc, char **argv) {
  size_t size = 0;
  uint8_t *der = argc == 2 ? read_file(argv[1], &size) : NULL;
  pki_CrlReader reader;
  pki_CrlEntry entry;
  int32_t found = -1;
  if (der == NULL) return EXIT_FAILURE;
  /* The reader and the entries point into the octets, which outlive them. */
  if (pki_crl_open(&reader, der, der + size) == 1) {
    while ((found = pki_crl_next(&reader, &entry)) == 1) {
      for (uint32_t i = 0; i < entry.serialNumber.length; ++i) {
        printf("%02X", entry.serialNumber.data[i]);
      }
      printf(" %.*s", (int)entry.revocationDate.length, (const char *)entry.revocationDate.data);
      if (entry.reason != PKI_NO_REASON) printf(" reason %d", (int)entry.reason);
      putchar('\n');
    }
  }
  if (found < 0) puts("octets that are no revocation list");
  free(der);
  return found == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
