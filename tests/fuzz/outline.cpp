// A fuzz target for the tool's outlines: an input is outlined without a type, and as each of the types
// that a file may hold. A broken law ends the process.
#include <cstdio>
#include <cstdlib>

#include "model/outline_path.h"
#include "model/outline_text.h"
#include "mutator.h"

extern "C" {
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t max_size);
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t max_size, unsigned seed);
}

namespace {

using namespace tool;
using Kind = OutlineLine::Kind;

constexpr const char *types[] = {"pki_Certificate",     "pki_CertificateRevocationList",
                                 "pki_OCSPResponse",    "pki_CertificationRequest",
                                 "pki_ContentInfo",     "pki_PFX",
                                 "pki_OneAsymmetricKey"};

void expect(bool holds, const char *law) {
  if (holds) return;
  std::fprintf(stderr, "\nBroken law: %s\n", law);
  std::abort();
}

/// Holds the lines against the laws of outlines.
class Laws {
 public:
  explicit Laws(Octets input) : input_(input), write_(input.size(), {false, true, false, true}) {}

  void see(const OutlineLine &line) {
    for (const char c : write_(line))
      expect(c == '\n' || (static_cast<unsigned char>(c) >= 0x20 && c != 0x7F),
             "no control character is printed");
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
  Laws laws(input);
  OutlineSearch search(
      *OutlinePath::parse("tbsCertificate.extensions[subjectAltName].extnValue[0]"));
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
    return;
  }
  pki_Fault found;
  const bool is_refused =
      pki_explain(type, input.data(), input.data() + input.size(), &found) != 0 ||
      found.offset != input.size();
  expect(fault || !is_refused || input.empty(), "what a type refuses has a fault");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const Octets input(data, size);
  outline_as(input, nullptr);
  for (const char *type : types) outline_as(input, pki_Type_find(type));
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
