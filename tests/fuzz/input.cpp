// A fuzz target for inputs that are read piece by piece: their elements are those of the whole. The first
// octet says how many octets are read at once.
#include "input/input.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdio>

#include "tool_target.h"

namespace {

using namespace tool;
using fuzz::expect;

/// A file in memory with these octets.
class File {
 public:
  explicit File(Octets octets) : descriptor_(memfd_create("input", MFD_CLOEXEC)) {
    const ssize_t written = write(descriptor_.get(), octets.data(), octets.size());
    expect(written == std::ssize(octets), "the input is written");
  }
  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor_.get()); }

 private:
  Descriptor descriptor_;
};

void expect_same(const Element &one, const Element &other) {
  expect(one.number == other.number && one.line == other.line && one.offset == other.offset,
         "an element has its place");
  expect(one.label == other.label && one.remark == other.remark, "an element has its words");
  expect(std::ranges::equal(one.octets, other.octets), "an element has its octets");
  expect(one.fault.has_value() == other.fault.has_value() &&
             (!one.fault ||
              (one.fault->text == other.fault->text && one.fault->offset == other.fault->offset)),
         "an element has its fault");
}

}  // namespace

void fuzz::hold(Octets input) {
  const size_t step = input.empty() ? 1 : input[0] + size_t{1};
  const Octets data = input.subspan(std::min<size_t>(1, input.size()));
  Input whole("input", data);
  const File file(data);
  Input pieces(file.name(), step);
  const size_t at_once = step % 5 + 1;
  for (size_t octets = step; true; octets = octets * 3 % 1000) {
    const auto some = pieces.take(at_once, octets);
    const auto same = whole.take(std::max<size_t>(some.size(), 1));
    expect(some.size() == same.size(), "there are as many elements");
    for (size_t i = 0; i < some.size(); ++i) expect_same(some[i], same[i]);
    if (some.empty()) break;
  }
}
