#include <orvelpki.h>
#include <stdlib.h>
#include <string.h>

int main(int argc, char **argv) {
  uint8_t der[65536], *out, *cursor;
  FILE *file = argc == 2 ? fopen(argv[1], "rb") : NULL;
  const size_t size = file != NULL ? fread(der, 1, sizeof der, file) : 0;
  Certificate *c = NULL;
  int same = 0;
  if (file == NULL || fclose(file) != 0) return EXIT_FAILURE;
  if (pki_Certificate_d(der, der + size, 0, &c, 0) == NULL) return EXIT_FAILURE;
  printf("subject  %s\nissuer   %s\nnotAfter %s\n", c->tbsCertificate->subject,
         c->tbsCertificate->issuer, c->tbsCertificate->validity->notAfter->value);
  out = cursor = malloc(pki_Certificate_e(NULL, c));
  if (out != NULL) same = pki_Certificate_e(&cursor, c) == size && memcmp(out, der, size) == 0;
  puts(same ? "encodes to the same octets" : "does not encode to the same octets");
  free(out);
  pki_Certificate_free(c);
  return EXIT_SUCCESS;
}
