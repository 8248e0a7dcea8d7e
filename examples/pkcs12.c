/* Lists the bags of a PKCS #12 file that are not encrypted. */
#include <orvelpki.h>

#include "file.h"

/* Decodes the list that the OCTET STRING in an element holds. Returns NULL where it does not. */
static List *list_in(const Any *element, const uint8_t *(*decode)(const uint8_t *, const uint8_t *,
                                                                  uint32_t, List **, uint32_t)) {
  OctetString *octets = NULL;
  List *list = NULL;
  if (element == NULL) return NULL;
  asn1_OctetString_d(element->data, element->data + element->length, 0, &octets, 0);
  if (octets != NULL) decode(octets->data, octets->data + octets->length, 0, &list, 0);
  asn1_OctetString_free(octets);
  return list;
}

static void print_bag(const SafeBag *bag) {
  const pki_Type *type = pki_Type_defined_by(bag->bagId);
  char *identifier = pki_ObjId_text(bag->bagId);
  printf("  %s of %u octets, with %d attributes\n", type != NULL ? pki_Type_name(type) : identifier,
         (unsigned)bag->bagValue->length, (int)List_len(bag->bagAttributes));
  free(identifier);
}

int main(int argc, char **argv) {
  size_t size = 0;
  uint8_t *der = argc == 2 ? read_file(argv[1], &size) : NULL;
  pki_PFX *pfx = NULL;
  List *safe;
  if (der != NULL) pki_PFX_d(der, der + size, 0, &pfx, 0);
  free(der);
  if (pfx == NULL) return EXIT_FAILURE;
  safe = list_in(pfx->authSafe->content, pki_AuthenticatedSafe_d);
  for (int32_t i = 0; i < List_len(safe); ++i) {
    const pki_ContentInfo *info = (const pki_ContentInfo *)List_get(safe, i);
    /* What is encrypted is no OCTET STRING, and holds no list. */
    List *bags = list_in(info->content, pki_SafeContents_d);
    printf("content %d: %s\n", (int)i + 1, bags != NULL ? "open" : "encrypted");
    for (int32_t j = 0; j < List_len(bags); ++j) print_bag((const SafeBag *)List_get(bags, j));
    pki_SafeContents_free(bags);
  }
  pki_AuthenticatedSafe_free(safe);
  pki_PFX_free(pfx);
  return EXIT_SUCCESS;
}
