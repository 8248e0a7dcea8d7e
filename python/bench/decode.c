/*
 * Decodes certificates, one after the other in a file, and reads three fields of each: its number,
 * its
 * end, the algorithm of its signature. Prints the microseconds that one takes, of the quickest of
 * some rounds:
 * with the fields, and without.
 */
#include <orvelpki.h>
#include <stdlib.h>
#include <time.h>

static double now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return (double)time.tv_sec * 1e6 + (double)time.tv_nsec / 1e3;
}

static uint64_t decode(const uint8_t *z, const uint8_t *end, int reads, uint32_t *count) {
  uint64_t sum = 0;
  for (*count = 0; z < end; ++*count) {
    Certificate *c = NULL;
    int64_t seconds = 0;
    z = pki_Certificate_d(z, end, 0, &c, 0);
    if (z == NULL) exit(EXIT_FAILURE);
    if (reads) {
      pki_Time_seconds(c->tbsCertificate->validity->notAfter, &seconds);
      sum += (uint64_t)seconds + c->tbsCertificate->serialNumber->length +
             c->signatureAlgorithm->algorithm->count;
    }
    pki_Certificate_free(c);
  }
  return sum;
}

int main(int argc, char **argv) {
  static uint8_t input[1 << 24];
  FILE *file = argc == 3 ? fopen(argv[1], "rb") : NULL;
  const size_t size = file != NULL ? fread(input, 1, sizeof input, file) : 0;
  const int rounds = argc == 3 ? atoi(argv[2]) : 0;
  int reads, round;
  if (size == 0 || size == sizeof input || rounds <= 0) return EXIT_FAILURE;
  fclose(file);
  for (reads = 1; reads >= 0; reads--) {
    double best = 0;
    uint32_t count = 0;
    for (round = 0; round < rounds; round++) {
      const double start = now();
      volatile uint64_t sum = decode(input, input + size, reads, &count);
      const double taken = (now() - start) / count;
      (void)sum;
      if (round == 0 || taken < best) best = taken;
    }
    printf("%.3f\n", best);
  }
  return EXIT_SUCCESS;
}
