/* Who owns what: a list of strings, an element that is looked for, and a copy. */
#include <orvelpki.h>
#include <stdlib.h>

/* The list owns the string from where it returns 1. Otherwise the caller would still own it. */
static int append(List *list, const char *text) {
  IA5String *string = asn1_ASN1String_new(0, text);
  if (string != NULL && List_append(list, string, 0) == 1) return 1;
  asn1_IA5String_free(string);
  return 0;
}

static int begins_alike(const IA5String *element, const IA5String *wanted) {
  return element->length != 0 && wanted->length != 0 && element->data[0] == wanted->data[0] ? 0 : 1;
}

int main(void) {
  List *list = List_new(0);
  IA5String *wanted = asn1_ASN1String_new(0, "banana");
  List *copy = NULL;
  if (list != NULL && wanted != NULL && append(list, "apple") && append(list, "blueberry")) {
    /* The comparison gets the element first, then what is looked for, which stays the caller's. */
    const int32_t place = List_contains(list, wanted, begins_alike);
    const IA5String *found = (const IA5String *)List_get(list, place); /* still the list's */
    printf("%d: %.*s\n", (int)place, (int)found->length, (const char *)found->data);
    /* Copies the elements, too. The destructor releases those made so far where one fails. */
    copy = List_clone(list, asn1_IA5String_clone, asn1_IA5String_free);
  }
  List_free(list, asn1_IA5String_free); /* with its elements; NULL would leave them alone */
  printf("%d in the copy\n", (int)List_len(copy));
  List_free(copy, asn1_IA5String_free);
  asn1_IA5String_free(wanted);
  return EXIT_SUCCESS;
}
