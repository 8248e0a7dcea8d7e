// A fuzz target for the families of one group: the first octet of an input chooses the family, the
// others are held against the laws. A broken law is told and ends the process.
#include <cstdio>
#include <cstdlib>

#include "laws.h"

extern "C" {
const char *sanitizer_options() asm("__asan_default_options");
int LLVMFuzzerInitialize(int *argc, char ***argv);
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
}

namespace {

using namespace attack;

const std::vector<const Family *> &group() {
  static const std::vector<const Family *> families = families_of(FUZZ_GROUP);
  return families;
}

Endings &endings() {
  static Endings counts;
  return counts;
}

void tell_endings() {
  unsigned long all = 0;
  for (const auto &[words, count] : endings()) {
    std::fprintf(stderr, "%10lu times: %s", count, words.c_str());
    all += count;
  }
  std::fprintf(stderr, "stat::promised_endings: %lu\n", all);
}

[[noreturn]] void tell_finding(const Family &family, Octets input, const std::string &law) {
  std::fprintf(stderr, "\nBroken law: %s\nFamily: %.*s\nInput:", law.c_str(),
               static_cast<int>(family.name.size()), family.name.data());
  for (const uint8_t octet : input) std::fprintf(stderr, " %02X", octet);
  std::fprintf(stderr, "\n");
  __builtin_trap();
}

}  // namespace

// Records are small and many: without these the sanitizer would keep 256 MiB of released ones, and
// the whole stack of each call.
const char *sanitizer_options() {
  return "detect_leaks=0:quarantine_size_mb=8:malloc_context_size=8";
}

int LLVMFuzzerInitialize(int *, char ***) {
  if (group().empty()) {
    std::fprintf(stderr, "There are no families in the group \"%s\"\n", FUZZ_GROUP);
    std::exit(1);
  }
  endings();
  std::atexit(tell_endings);
  return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size == 0) return 0;
  const Family &family = *group()[data[0] % group().size()];
  const Octets input(data + 1, size - 1);
  std::string law = broken_law(family, input, &endings());
  if (law.empty() && family.type != nullptr) law = broken_agreement(family, input);
  if (!law.empty()) tell_finding(family, input, law);
  return 0;
}
