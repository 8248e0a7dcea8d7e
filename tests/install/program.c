/*
 * Calls functions of the three libraries: decodes a Validity, encodes it again, copies its times in
 * a
 * list. Valid as C and as C++.
 */
#include <orvelpki.h>
#include <stdio.h>
#include <string.h>

int main(void) {
  static const char times[] =
      "\x17\x0D"
      "260101000000Z"
      "\x17\x0D"
      "270101000000Z";
  uint8_t der[2 + sizeof times - 1] = {0x30, sizeof times - 1}, out[sizeof der], *cursor = out;
  Validity *validity = NULL;
  List *list = List_new(0), *copy;
  int good;
  memcpy(der + 2, times, sizeof times - 1);
  if (pki_Validity_d(der, der + sizeof der, 0, &validity, 0) != der + sizeof der) return 1;
  good = asn1_Validity_e(&cursor, validity) == sizeof der && memcmp(der, out, sizeof der) == 0 &&
         List_append(list, asn1_Time_clone(validity->notBefore), 0) == 1 &&
         List_append(list, asn1_Time_clone(validity->notAfter), 0) == 1;
  copy = List_clone(list, asn1_Time_clone, asn1_Time_free);
  good = good && List_contains(copy, validity->notAfter, asn1_Time_cmp) == 1;
  List_free(copy, asn1_Time_free);
  List_free(list, asn1_Time_free);
  asn1_Validity_free(validity);
  puts(good ? "works, " ORVELASN1_VERSION : "does not work");
  return good ? 0 : 1;
}
