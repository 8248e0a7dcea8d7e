/* Prints whose a certificate in DER is, who issued it, its number, and until when it is valid. */
#include <orvelpki.h>
#include <time.h>

#include "file.h"

static void print_name(const char *label, const RDNSequence *name) {
  char *text = pki_name_rfc4514(name);
  printf("%s %s\n", label, text != NULL ? text : "(no text)");
  free(text);
}

int main(int argc, char **argv) {
  size_t size = 0;
  uint8_t *der = argc == 2 ? read_file(argv[1], &size) : NULL;
  Certificate *certificate = NULL;
  int64_t not_after;
  const uint8_t *past;
  if (der == NULL) return EXIT_FAILURE;
  past = pki_Certificate_d(der, der + size, 0, &certificate, 0);
  /* Octets that follow are the caller's to look at. */
  if (past != NULL && past != der + size) puts("octets follow the certificate");
  free(der); /* the record holds no pointer into them */
  if (certificate == NULL) return EXIT_FAILURE;

  print_name("subject", certificate->tbsCertificate->subjectSequence);
  print_name("issuer ", certificate->tbsCertificate->issuerSequence);
  printf("serial  ");
  for (uint32_t i = 0; i < certificate->tbsCertificate->serialNumber->length; ++i) {
    printf("%02X", certificate->tbsCertificate->serialNumber->data[i]);
  }
  if (pki_validity(certificate, NULL, &not_after) == 1) {
    const time_t seconds = (time_t)not_after;
    char date[32];
    strftime(date, sizeof date, "%Y-%m-%d", gmtime(&seconds));
    printf("\nuntil   %s\n", date);
  }
  pki_Certificate_free(certificate);
  return EXIT_SUCCESS;
}
