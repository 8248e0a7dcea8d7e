/* Makes a name of a text as in RFC 4514, prints its octets, and its texts again. */
#include <orvelpki.h>
#include <stdlib.h>

int main(int argc, char **argv) {
  RDNSequence *name = argc == 2 ? pki_name_parse_rfc4514(argv[1]) : NULL;
  const uint32_t size = pki_RDNSequence_e(NULL, name); /* 0 for NULL */
  uint8_t *octets = size != 0 ? malloc(size) : NULL;
  uint8_t *cursor = octets;
  char *rfc4514 = pki_name_rfc4514(name);
  Name *own = pki_RDNSequence_text(name);
  int status = EXIT_FAILURE;
  if (octets != NULL && rfc4514 != NULL && own != NULL) {
    pki_RDNSequence_e(&cursor, name);
    for (uint32_t i = 0; i < size; ++i) printf("%02X", octets[i]);
    printf("\n%s\n%s\n", rfc4514, own);
    status = EXIT_SUCCESS;
  }
  asn1_Name_free(own);
  free(rfc4514);
  free(octets);
  pki_RDNSequence_free(name);
  return status;
}
