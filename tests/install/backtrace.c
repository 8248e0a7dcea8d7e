/* An element function that a library calls finds the program's own functions in its backtrace. */
#include <execinfo.h>
#include <orvelpki.h>
#include <stdio.h>
#include <stdlib.h>

static void *wanted; /* where the function that called the library returns to */
static int found;

static void look_for_it(void) {
  void *frames[64];
  const int count = backtrace(frames, 64);
  int i;
  for (i = 0; i < count; i++) {
    if (frames[i] == wanted) found = 1;
  }
}

static int32_t compare(const Integer *a, const Integer *b) {
  (void)a;
  (void)b;
  look_for_it();
  return 0;
}

static const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             Integer **place, uint32_t depth) {
  look_for_it();
  return asn1_Integer_d(z, end, impl_tag, place, depth);
}

static __attribute__((noinline)) int list_shows_its_caller(void) {
  List *list = List_new(0);
  List_append(list, list, 0);
  wanted = __builtin_return_address(0);
  found = 0;
  List_contains(list, list, compare);
  List_free(list, NULL);
  return found;
}

static __attribute__((noinline)) int decoder_shows_its_caller(void) {
  static const uint8_t numbers[] = {0x30, 0x03, 0x02, 0x01, 0x05};
  List *list = NULL;
  wanted = __builtin_return_address(0);
  found = 0;
  asn1_SeqOf_d(numbers, numbers + sizeof numbers, 0, decode, asn1_Integer_free, &list, 0);
  List_free(list, asn1_Integer_free);
  return found;
}

int main(void) {
  const int list = list_shows_its_caller(), decoder = decoder_shows_its_caller();
  printf("through a list %d, through a decoder %d\n", list, decoder);
  return list && decoder ? EXIT_SUCCESS : EXIT_FAILURE;
}
