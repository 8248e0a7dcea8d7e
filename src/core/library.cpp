#include "core/library.h"

#include <cstdio>

#include "core/stack.h"

void asn1::fatal(const char *unit, const char *function, const char *finding) {
  std::fprintf(stderr, "%s: %s: %s\n", unit, function, finding);
  forget_reading();
  std::abort();
}

void asn1::assertion_failed(const char *unit, const char *function, const char *test) {
  std::fprintf(stderr, "%s: %s: assertion \"%s\" failed\n", unit, function, test);
  forget_reading();
  std::abort();
}
