// The fuzzer's mutations: half of them its own, the others those that know elements. The first octet
// of an input, which chooses the family, is left to the fuzzer's own.
#include <algorithm>

#include "family.h"
#include "mutator.h"

extern "C" {
size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t max_size);
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t max_size, unsigned seed);
size_t LLVMFuzzerCustomCrossOver(const uint8_t *data1, size_t size1, const uint8_t *data2,
                                 size_t size2, uint8_t *out, size_t max_size, unsigned seed);
}

namespace {

const fuzz::Mutator &mutator() {
  static const fuzz::Mutator made = [] {
    std::vector<fuzz::Bytes> samples;
    for (const attack::Family *family : attack::families_of(FUZZ_GROUP))
      samples.insert(samples.end(), family->samples.begin(), family->samples.end());
    return fuzz::Mutator(samples, LLVMFuzzerMutate);
  }();
  return made;
}

// The fuzzer chooses the mutator or the crossing, one as often as the other, and chooses again where
// the crossing gives nothing. With these shares a half stays its own, and a fifth are crossings.
bool is_for_elements(unsigned seed) { return seed % 8 < 3; }
bool is_for_crossing(unsigned seed) { return seed % 4 == 0; }

/// Writes the octets after the one that chooses. Returns 0 for no octets.
size_t write_behind(uint8_t choice, const fuzz::Bytes &octets, uint8_t *out) {
  if (octets.empty()) return 0;
  out[0] = choice;
  std::ranges::copy(octets, out + 1);
  return 1 + octets.size();
}

}  // namespace

size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t max_size, unsigned seed) {
  size_t changed = 0;
  if (size > 1 && is_for_elements(seed)) {
    const fuzz::Octets input(data + 1, size - 1);
    changed = write_behind(data[0], mutator().changed(input, max_size - 1, seed), data);
  }
  return changed != 0 ? changed : LLVMFuzzerMutate(data, size, max_size);
}

size_t LLVMFuzzerCustomCrossOver(const uint8_t *data1, size_t size1, const uint8_t *data2,
                                 size_t size2, uint8_t *out, size_t max_size, unsigned seed) {
  if (size1 < 2 || size2 < 2 || max_size < 2 || !is_for_crossing(seed)) return 0;
  return write_behind(
      data1[0],
      fuzz::Mutator::crossed({data1 + 1, size1 - 1}, {data2 + 1, size2 - 1}, max_size - 1, seed),
      out);
}
