// Every input of up to some octets, to every decoder of both libraries; and every length of up to five
// octets, to the functions of the frame.
//
//   exhaust inputs OCTETS PART PARTS    every PARTS-th decoder, beginning with number PART
//   exhaust frame
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "exhaustion.h"

namespace {

using namespace attack;

void print_input(const Bytes &input) {
  for (const uint8_t octet : input) std::printf(" %02X", octet);
  std::printf("\n");
}

/// Tries every input of up to so many octets. Returns whether all laws hold.
bool try_inputs(size_t octets, size_t part, size_t parts) {
  uint64_t inputs = 0, calls = 0;
  size_t families = 0;
  bool good = true;
  const std::vector<Family> all = decoders();
  for (size_t i = part; i < all.size(); i += parts) {
    Exhaustion exhaustion(all[i]);
    ++families;
    for (size_t size = 0; size <= octets; ++size) {
      const std::string law = exhaustion.every({}, size);
      if (law.empty()) continue;
      std::printf("%s: broken law of %zu octets: %s:", std::string(all[i].name).c_str(), size,
                  law.c_str());
      print_input(exhaustion.input());
      good = false;
    }
    inputs += exhaustion.inputs();
    calls += exhaustion.calls();
  }
  std::printf("%zu decoders, %llu inputs by %llu calls\n", families,
              static_cast<unsigned long long>(inputs), static_cast<unsigned long long>(calls));
  return good;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc == 5 && std::strcmp(argv[1], "inputs") == 0)
    return try_inputs(std::strtoul(argv[2], nullptr, 10), std::strtoul(argv[3], nullptr, 10),
                      std::strtoul(argv[4], nullptr, 10))
               ? EXIT_SUCCESS
               : EXIT_FAILURE;
  std::fputs("exhaust inputs OCTETS PART PARTS\n", stderr);
  return 2;
}
