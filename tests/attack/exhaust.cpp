// Every input of up to some octets, to every decoder of both libraries; and every length of up to five
// octets, to the functions of the frame.
//
//   exhaust inputs OCTETS PART PARTS    every PARTS-th decoder, beginning with number PART
//   exhaust frame PART PARTS            the same of the lengths
#include <cstdio>
#include <cstdlib>

#include "exhaustion.h"
#include "frame.h"

namespace {

using namespace attack;

void print_input(const Bytes &input) {
  for (const uint8_t octet : input) std::printf(" %02X", octet);
  std::printf("\n");
}

/// Tries every input of up to so many octets. Returns whether all laws hold.
bool try_inputs(unsigned octets, unsigned part, unsigned parts) {
  uint64_t inputs = 0, calls = 0;
  size_t families = 0;
  bool good = true;
  const std::vector<Family> all = decoders();
  for (size_t i = part; i < all.size(); i += parts) {
    Exhaustion exhaustion(all[i]);
    ++families;
    for (unsigned size = 0; size <= octets; ++size) {
      const std::string law = exhaustion.every({}, size);
      if (law.empty()) continue;
      std::printf("%s: broken law of %u octets: %s:", std::string(all[i].name).c_str(), size,
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

/// Tries every length of up to five octets, those of four and more in parts, and every identifier
/// octet with every length of up to four; one identifier with those of five. Returns whether the
/// functions of the frame do as their rules say.
bool try_frame(unsigned part, unsigned parts) {
  const unsigned low = 256 * part / parts, high = 256 * (part + 1) / parts;
  Frame frame;
  if (part == 0) {
    frame.every_tag();
    frame.every_end_of_contents();
  }
  for (unsigned first = 0; first < 256; ++first) {
    frame.every_length(static_cast<uint8_t>(first), low, high);
    for (unsigned identifier = 0; identifier < 256; ++identifier) {
      if (first != 0x84 || identifier == 0x30)
        frame.every_header(static_cast<uint8_t>(identifier), static_cast<uint8_t>(first), low,
                           high);
      else if (part == 0)
        frame.every_two_octets_of_a_header(static_cast<uint8_t>(identifier));
    }
  }
  std::printf("frame: %llu calls\n", static_cast<unsigned long long>(frame.calls()));
  if (frame.mistake().empty()) return true;
  std::printf("frame: wrong result: %s\n", frame.mistake().c_str());
  return false;
}

unsigned number(const char *text) { return static_cast<unsigned>(std::strtoul(text, nullptr, 10)); }

}  // namespace

int main(int argc, char **argv) {
  const std::string_view what = argc > 1 ? argv[1] : "";
  bool good = false;
  if (what == "inputs" && argc == 5) {
    good = try_inputs(number(argv[2]), number(argv[3]), number(argv[4]));
  } else if (what == "frame" && argc == 4) {
    good = try_frame(number(argv[2]), number(argv[3]));
  } else {
    std::fputs("exhaust inputs OCTETS PART PARTS\nexhaust frame PART PARTS\n", stderr);
    return 2;
  }
  return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
