/* Prints what an OCSP response says of a certificate; both are in DER. The signature of the response, and
 * whether the hashes in it are those of the issuer, is another program's to check. */
#include <orvelpki.h>

#include "file.h"

static int print_status(const BasicOCSPResponse *basic, const Certificate *certificate) {
  static const char *const statuses[] = {"good", "revoked", "unknown"};
  const Integer *serial = certificate->tbsCertificate->serialNumber;
  const List *responses = basic->tbsResponseData->responses;
  for (int32_t i = 0; i < List_len(responses); ++i) {
    const SingleResponse *single = (const SingleResponse *)List_get(responses, i);
    if (asn1_Integer_cmp(single->certID->serialNumber, serial) != 0) continue;
    printf("%s, as of %s", statuses[single->certStatus->kind], single->thisUpdate);
    if (single->certStatus->kind == 1) {
      printf(", on %s", ((const pki_RevokedInfo *)single->certStatus->value)->revocationTime);
    }
    putchar('\n');
    return EXIT_SUCCESS;
  }
  puts("not asked for");
  return EXIT_FAILURE;
}

int main(int argc, char **argv) {
  size_t size = 0, length = 0;
  uint8_t *der = argc == 3 ? read_file(argv[1], &size) : NULL;
  uint8_t *octets = argc == 3 ? read_file(argv[2], &length) : NULL;
  OCSPResponse *response = NULL;
  BasicOCSPResponse *basic = NULL;
  Certificate *certificate = NULL;
  int status = EXIT_FAILURE;
  if (der != NULL && octets != NULL) {
    pki_OCSPResponse_d(der, der + size, 0, &response, 0);
    pki_Certificate_d(octets, octets + length, 0, &certificate, 0);
    basic = pki_OCSPResponse_basic(response); /* NULL where there is none */
  }
  if (basic != NULL && certificate != NULL) {
    status = print_status(basic, certificate);
  } else {
    puts("no response with a status, or no certificate");
  }
  pki_Certificate_free(certificate);
  pki_BasicOCSPResponse_free(basic);
  pki_OCSPResponse_free(response);
  free(octets);
  free(der);
  return status;
}
