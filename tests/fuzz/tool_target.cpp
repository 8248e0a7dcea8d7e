#include "tool_target.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <set>

#include "mutator.h"
#include "text/characters.h"

extern "C" {
const char *sanitizer_options() asm("__asan_default_options");
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t max_size);
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t max_size, unsigned seed);
}

namespace fuzz {

void expect(bool holds, const char *law) {
  if (holds) return;
  std::fprintf(stderr, "\nBroken law: %s\nInput: see the file below\n", law);
  std::abort();
}

void expect_printable(std::string_view text) {
  expect(text.empty() || text.back() == '\n', "what is printed ends with a line");
  bool is_ascii = true;
  for (const char c : text) {
    const auto octet = static_cast<unsigned char>(c);
    expect(octet == '\n' || (octet >= 0x20 && octet != 0x7F), "no control character is printed");
    is_ascii = is_ascii && octet < 0x80;
  }
  if (is_ascii) return;
  std::string lines(text);
  std::erase(lines, '\n');
  expect(tool::is_safe(tool::from_utf8(tool::octets_of(lines))), "what is printed is safe");
}

void expect_json_line(std::string_view line) {
  using nlohmann::json;
  expect(line.find('\n') + 1 == line.size(), "an object is one line");
  line.remove_suffix(1);
  expect(std::ranges::none_of(line, [](char c) { return static_cast<unsigned char>(c) < 0x20; }),
         "no control character stands in an object");
  std::vector<std::set<std::string>> open;
  const auto note = [&open](int, json::parse_event_t event, const json &value) {
    if (event == json::parse_event_t::object_start) open.emplace_back();
    if (event == json::parse_event_t::object_end) open.pop_back();
    if (event == json::parse_event_t::key)
      expect(open.back().insert(value.get<std::string>()).second, "an object has no member twice");
    return true;
  };
  constexpr bool throws = false;
  const json object = json::parse(line, note, throws);
  expect(!object.is_discarded(), "an object is JSON in UTF-8");
  expect(object.is_object(), "a line is an object");
}

std::vector<const tool::Type *> types_worth_trying(tool::Octets input) {
  std::vector<const tool::Type *> types;
  const tool::Type *other = nullptr;
  const size_t header = tool::read_header(input).size;
  for (const tool::Type &type : tool::types()) {
    if (!type.stands_alone && type.labels.empty()) continue;
    if (type.syntax.read(input).reached > header)
      types.push_back(&type);
    else
      other = &type;
  }
  if (other != nullptr) types.push_back(other);
  return types;
}

}  // namespace fuzz

// Records are small and many: without these the sanitizer would keep 256 MiB of released ones, and
// the whole stack of each call.
const char *sanitizer_options() {
  return "detect_leaks=0:quarantine_size_mb=8:malloc_context_size=8";
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::hold({data, size});
  return 0;
}

// Half of the mutations are those that know elements.
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t max_size, unsigned seed) {
  static const fuzz::Mutator mutator({}, LLVMFuzzerMutate);
  if (seed % 2 != 0) return LLVMFuzzerMutate(data, size, max_size);
  const fuzz::Bytes changed = mutator.changed({data, size}, max_size, seed);
  std::ranges::copy(changed, data);
  return changed.empty() ? LLVMFuzzerMutate(data, size, max_size) : changed.size();
}
