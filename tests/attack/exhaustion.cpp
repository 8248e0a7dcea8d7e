#include "exhaustion.h"

#include <algorithm>
#include <csignal>

#include "guard.h"

namespace attack {

namespace {

/// The pages after which nothing can be read, and whether something was read there.
const Pages *watched = nullptr;
volatile std::sig_atomic_t read_there = 0;

/// Leaves a call of the library that reads the unreadable page. Any other fault ends the process:
/// it happens again once the handler is gone.
void leave(int, siginfo_t *fault, void *) {
  Guard *const guard = Guard::current();
  if (guard == nullptr || watched == nullptr || !watched->is_after(fault->si_addr)) {
    std::signal(SIGSEGV, SIG_DFL);
    return;
  }
  read_there = 1;
  guard->leave();
}

/// Sees the faults of the unreadable page after `pages` while it lives.
class Watch {
 public:
  explicit Watch(const Pages &pages) {
    struct sigaction action = {};
    action.sa_sigaction = leave;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigaction(SIGSEGV, &action, &before_);
    watched = &pages;
  }
  ~Watch() {
    watched = nullptr;
    sigaction(SIGSEGV, &before_, nullptr);
  }
  Watch(const Watch &) = delete;
  Watch &operator=(const Watch &) = delete;

 private:
  struct sigaction before_ = {};
};

std::string broken_law_of_decoder(const Family &family, Octets input) {
  std::string law;
  if (family.type != nullptr) law = broken_agreement(family, input);
  // The agreement does not call the decoder of what is never read.
  if (law.empty() && (family.type == nullptr || family.has(is_never_read)))
    law = broken_law_in_place(family, input);
  return law;
}

template <class T, auto Decode>
const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **place,
                      uint32_t depth) {
  T *made = static_cast<T *>(*place);
  const uint8_t *const next = Decode(z, end, impl_tag, &made, depth);
  *place = made;
  return next;
}

struct NamedDecoder {
  std::string_view name;
  decltype(Family::decode) decode;
};
#define NAMED(T) \
  NamedDecoder { #T, decode < T, asn1_##T##_d> }
constexpr NamedDecoder never_reading[] = {
    NAMED(HashAlgAndValue),   NAMED(LogotypeDetails),         NAMED(LogotypeReference),
    NAMED(LogotypeImageInfo), NAMED(LogotypeImageResolution), NAMED(LogotypeImage),
    NAMED(LogotypeAudioInfo), NAMED(LogotypeAudio),           NAMED(LogotypeData),
    NAMED(LogotypeInfo),      NAMED(OtherLogotypeInfo),       NAMED(LogotypeExtn),
};

}  // namespace

std::vector<Family> decoders() {
  std::vector<Family> found;
  for (const Family &family : families()) {
    if (family.group == "text") continue;  // whose input is a text, up to its NUL octet
    found.push_back(family);
    if (family.has(is_never_read))
      found.back().decode =
          std::ranges::find(never_reading, family.name, &NamedDecoder::name)->decode;
  }
  return found;
}

std::string Exhaustion::broken_law_of(size_t size, bool *read_on) {
  ++calls_;
  const Watch watch(pages_);
  read_there = 0;
  const std::string law = broken_law_of_decoder(family_, {pages_.at_end(input_), size});
  *read_on = read_there != 0;
  return *read_on ? std::string() : law;
}

std::string Exhaustion::every_from_here(size_t size) {
  bool read_on = false;
  const std::string law = broken_law_of(size, &read_on);
  if (!law.empty()) return law;
  const size_t unknown = size - input_.size();
  if (!read_on) {
    inputs_ += uint64_t{1} << (8 * unknown);
    return {};
  }
  if (unknown == 0) return "nothing is read past the end";
  input_.push_back(0);
  for (unsigned octet = 0; octet < 256; ++octet) {
    input_.back() = static_cast<uint8_t>(octet);
    const std::string inner = every_from_here(size);
    if (!inner.empty()) return inner;
  }
  input_.pop_back();
  return {};
}

std::string Exhaustion::every(Octets start, size_t size) {
  input_.assign(start.begin(), start.end());
  return every_from_here(size);
}

std::string Exhaustion::one(Octets input) { return every(input, input.size()); }

}  // namespace attack
