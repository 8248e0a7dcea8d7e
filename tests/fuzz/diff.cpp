// A fuzz target for the differences of two elements: the first two of an input, which are compared
// where they are of one type. An element without another is compared with itself.
#include <algorithm>

#include "commands/differences.h"
#include "records/recognise.h"
#include "tool_target.h"

namespace {

using namespace tool;
using Kind = Difference::Kind;

/// The path of a difference, and its kind.
using Found = std::vector<std::pair<std::string, Kind>>;

/// Returns the differences, and holds what is written of them against its laws.
Found differences(const Node &a, const Node &b) {
  Found found;
  static const DiffRequest as_text;
  static const DiffRequest as_json{.a = {}, .b = {}, .json = true, .view = {}};
  DifferenceWriter text(as_text, 1, "");
  DifferenceWriter json(as_json, 1, "");
  find_differences(a, b, [&](const Difference &difference) {
    fuzz::expect_printable(text(difference));
    fuzz::expect_json_line(json(difference));
    const bool has_a = difference.kind != Kind::order && difference.kind != Kind::only_b;
    const bool has_b = difference.kind != Kind::order && difference.kind != Kind::only_a;
    fuzz::expect(has_a == (difference.a != nullptr) && has_b == (difference.b != nullptr),
                 "a difference has the values that its kind says");
    found.emplace_back(difference.path, difference.kind);
  });
  return found;
}

void hold_pair(const Type &type, const Record &one, const Record &other) {
  View view;
  view.full = true;
  const Node a = type.describe(one.get(), view);
  const Node b = type.describe(other.get(), view);
  fuzz::expect(differences(a, a).empty() && differences(b, b).empty(),
               "nothing differs from itself");
  Found forth = differences(a, b);
  Found back = differences(b, a);
  for (auto &[path, kind] : back)
    kind = kind == Kind::only_a ? Kind::only_b : kind == Kind::only_b ? Kind::only_a : kind;
  std::ranges::sort(forth);
  std::ranges::sort(back);
  fuzz::expect(forth == back, "a differs from b where b differs from a");
}

Element element_of(Octets octets) {
  Element element;
  element.number = 1;
  element.octets = octets;
  return element;
}

}  // namespace

void fuzz::hold(Octets input) {
  const size_t size = ber::element_size(input).value_or(input.size());
  const Decoding one = decode(element_of(input.first(size)), nullptr);
  if (!one.record) return;
  const Octets rest = size < input.size() ? input.subspan(size) : input;
  const Decoding other = decode(element_of(rest), one.type);
  if (other.record) hold_pair(*one.type, *one.record, *other.record);
}
