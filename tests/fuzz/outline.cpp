// A fuzz target for the tool's outlines: an input is outlined without a type, and as each of the types
// that a file may hold.
#include "model/outline_path.h"
#include "model/outline_text.h"
#include "tool_target.h"

namespace {

using namespace tool;
using fuzz::expect;
using fuzz::expect_printable;
using Kind = OutlineLine::Kind;

/// Holds the lines against the laws of outlines.
class Laws {
 public:
  explicit Laws(Octets input) : input_(input), write_(input.size(), {false, true, false, true}) {}

  void see(const OutlineLine &line) {
    expect_printable(write_(line));
    if (line.kind == Kind::fault) return;
    expect(line.offset <= input_.size() && line.octets.size() <= input_.size() - line.offset &&
               line.octets.data() == input_.data() + line.offset,
           "the octets of a line are of the input");
    // A BIT STRING has one octet in front of what it holds.
    expect(line.offset == next_ || (after_string_ && line.offset == next_ + 1),
           "each octet belongs to one line");
    const bool goes_in = line.header.constructed() || line.holds || line.header.overlong;
    after_string_ = line.holds;
    next_ = line.offset +
            (line.kind == Kind::element && goes_in ? line.header.size : line.octets.size());
  }

  void end() const {
    expect(next_ == input_.size() || (after_string_ && next_ + 1 == input_.size()),
           "each octet belongs to a line");
  }

 private:
  Octets input_;
  OutlineWriter write_;
  size_t next_ = 0;
  bool after_string_ = false;
};

void outline_as(Octets input, const pki_Type *type) {
  static const auto &path = *new OutlinePath(
      *OutlinePath::parse("tbsCertificate.extensions[subjectAltName].extnValue[0]"));
  Laws laws(input);
  OutlineSearch search(path);
  const auto fault = outline(input, type, [&](const OutlineLine &line) {
    laws.see(line);
    search(line);
    return true;
  });
  laws.end();
  if (!search.is_found()) expect(!search.why_not().empty(), "a search says why it fails");
  if (type == nullptr) {
    const bool is_sound = !input.empty() && ber::element_size(input) == input.size();
    expect(!is_sound || !fault, "nothing is wrong with a sound element");
  } else {
    const bool is_refused = Syntax(type).refusal(input).has_value();
    expect(fault || !is_refused || input.empty(), "what a type refuses has a fault");
  }
}

}  // namespace

void fuzz::hold(Octets input) {
  outline_as(input, nullptr);
  for (const Type *const type : types_worth_trying(input)) outline_as(input, type->syntax.type);
}
