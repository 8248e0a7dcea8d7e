// Measures how long the library takes for a certificate, over those that this system trusts. Times
// are for one certificate. The floor is the cost of the blocks alone: the program's own malloc and
// its relatives note them while one certificate is decoded and released, and the floor allocates
// and frees the same sizes in the same order, through the same functions.
#include <benchmark/benchmark.h>
#include <orvelasn1.h>
#include <pem.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

/* ------------------------------------------------------------------------------------------- */
/* The allocator, which takes notes                                                              */
/* ------------------------------------------------------------------------------------------- */

namespace {

struct Step {
  enum Kind : uint8_t { Allocate, Resize, Release };
  Kind kind;
  uint32_t slot;  // the number of the block
  size_t size;
};

// The notes of one certificate, in static memory: taking them must not allocate.
bool noting = false;
std::array<Step, 1 << 16> steps;
size_t step_count = 0;
std::array<const void *, 1 << 16> blocks;
uint32_t block_count = 0;

void note(Step::Kind kind, uint32_t slot, size_t size) {
  if (step_count == steps.size()) std::abort();
  steps[step_count++] = {kind, slot, size};
}

void note_new(const void *block, size_t size) {
  if (block == nullptr) return;
  if (block_count == blocks.size()) std::abort();
  note(Step::Allocate, block_count, size);
  blocks[block_count++] = block;
}

uint32_t slot_of(const void *block) {
  uint32_t slot = block_count;
  while (slot-- > 0)
    if (blocks[slot] == block) return slot;
  std::abort();
}

void note_old(Step::Kind kind, const void *block, const void *moved, size_t size) {
  const uint32_t slot = slot_of(block);
  note(kind, slot, size);
  blocks[slot] = moved;
}

}  // namespace

extern "C" {
// The allocator of glibc by its other names.
void *system_malloc(size_t size) __asm__("__libc_malloc");
void *system_calloc(size_t count, size_t size) __asm__("__libc_calloc");
void *system_realloc(void *block, size_t size) __asm__("__libc_realloc");
void system_free(void *block) __asm__("__libc_free");

void *malloc(size_t size) noexcept {
  void *block = system_malloc(size);
  if (noting) [[unlikely]]
    note_new(block, size);
  return block;
}

void *calloc(size_t count, size_t size) noexcept {
  void *block = system_calloc(count, size);
  if (noting) [[unlikely]]
    note_new(block, count * size);
  return block;
}

void *realloc(void *old, size_t size) noexcept {
  void *block = system_realloc(old, size);
  if (noting) [[unlikely]] {
    if (old == nullptr)
      note_new(block, size);
    else
      note_old(Step::Resize, old, block, size);
  }
  return block;
}

void free(void *block) noexcept {
  if (noting && block != nullptr) [[unlikely]]
    note_old(Step::Release, block, nullptr, 0);
  system_free(block);
}
}

namespace {

/* ------------------------------------------------------------------------------------------- */
/* The certificates                                                                              */
/* ------------------------------------------------------------------------------------------- */

using Octets = std::vector<uint8_t>;

Certificate *decode(const Octets &der) {
  Certificate *certificate = nullptr;
  asn1_Certificate_d(der.data(), der.data() + der.size(), 0, &certificate, 0);
  return certificate;
}

/// The calls that decoding and releasing makes to the allocator, as runs of steps of one kind:
/// walking these costs next to nothing.
class Blocks {
 public:
  explicit Blocks(const Octets &der) {
    step_count = block_count = 0;
    noting = true;
    asn1_Certificate_free(decode(der));
    noting = false;
    for (const Step &step : std::vector<Step>(steps.data(), steps.data() + step_count)) {
      if (runs_.empty() || runs_.back().kind != step.kind) runs_.push_back({step.kind, {}});
      runs_.back().uses.push_back({step.slot, step.size});
    }
  }

  size_t allocations() const {
    size_t sum = 0;
    for (const Run &run : runs_)
      if (run.kind == Step::Allocate) sum += run.uses.size();
    return sum;
  }

  void replay(std::vector<void *> &slots) const {
    for (const Run &run : runs_) {
      switch (run.kind) {
        case Step::Allocate:
          for (const Use &use : run.uses) slots[use.slot] = std::malloc(use.size);
          break;
        case Step::Resize:
          for (const Use &use : run.uses) slots[use.slot] = std::realloc(slots[use.slot], use.size);
          break;
        case Step::Release:
          for (const Use &use : run.uses) std::free(slots[use.slot]);
          break;
      }
    }
  }

 private:
  struct Use {
    uint32_t slot;
    size_t size;
  };
  struct Run {
    Step::Kind kind;
    std::vector<Use> uses;
  };

  std::vector<Run> runs_;
};

/// Returns the certificates of the trust store that the library decodes.
const std::vector<Octets> &certificates() {
  static const std::vector<Octets> all = [] {
    std::ifstream in(support::trust_store, std::ios::binary);
    std::vector<Octets> read =
        support::certificates_of_pem(std::string(std::istreambuf_iterator<char>(in), {}));
    std::erase_if(read, [](const Octets &der) {
      Certificate *certificate = decode(der);
      asn1_Certificate_free(certificate);
      return certificate == nullptr;
    });
    return read;
  }();
  return all;
}

/// Returns the certificates, decoded. They stay until the program ends.
const std::vector<Certificate *> &decoded() {
  static const std::vector<Certificate *> all = [] {
    std::vector<Certificate *> made;
    for (const Octets &der : certificates()) made.push_back(decode(der));
    return made;
  }();
  return all;
}

/// Returns the calls to the allocator for each certificate.
const std::vector<Blocks> &all_blocks() {
  static const std::vector<Blocks> all(certificates().begin(), certificates().end());
  return all;
}

/* ------------------------------------------------------------------------------------------- */
/* The benchmarks                                                                                */
/* ------------------------------------------------------------------------------------------- */

constexpr const char *decode_and_free = "decode+free";
constexpr const char *floor_of_its_blocks = "floor";

/// Runs `one` for each element of `all` in each iteration. Counts the time of one element.
template <class All, class One>
void for_each(benchmark::State &state, const All &all, One one) {
  for ([[maybe_unused]] const auto iteration : state)
    for (const auto &element : all) one(element);
  state.counters["per_certificate"] = benchmark::Counter(
      static_cast<double>(all.size()),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void decode_benchmark(benchmark::State &state) {
  for_each(state, certificates(), [](const Octets &der) { asn1_Certificate_free(decode(der)); });
}

void floor_benchmark(benchmark::State &state) {
  std::vector<void *> slots(blocks.size());
  for_each(state, all_blocks(), [&](const Blocks &one) {
    one.replay(slots);
    benchmark::ClobberMemory();
  });
}

void measure_benchmark(benchmark::State &state) {
  for_each(state, decoded(), [](const Certificate *certificate) {
    benchmark::DoNotOptimize(asn1_Certificate_e(nullptr, certificate));
  });
}

void encode_benchmark(benchmark::State &state) {
  Octets out(1 << 20);
  for_each(state, decoded(), [&](const Certificate *certificate) {
    uint8_t *cursor = out.data();
    benchmark::DoNotOptimize(asn1_Certificate_e(&cursor, certificate));
    benchmark::ClobberMemory();
  });
}

void clone_benchmark(benchmark::State &state) {
  for_each(state, decoded(), [](const Certificate *certificate) {
    asn1_Certificate_free(asn1_Certificate_clone(certificate));
  });
}

void name_to_text_benchmark(benchmark::State &state) {
  for_each(state, decoded(), [](const Certificate *certificate) {
    asn1_Name_free(asn1_RDNSequence_to_Name(certificate->tbsCertificate->subjectSequence));
  });
}

void text_to_name_benchmark(benchmark::State &state) {
  for_each(state, decoded(), [](const Certificate *certificate) {
    asn1_RDNSequence_free(asn1_Name_to_RDNSequence(certificate->tbsCertificate->subject));
  });
}

/// Prints, after the table, how far decoding is above its floor.
class Reporter : public benchmark::ConsoleReporter {
 public:
  Reporter() : ConsoleReporter(isatty(STDOUT_FILENO) != 0 ? OO_ColorTabular : OO_Tabular) {}

  void ReportRuns(const std::vector<Run> &runs) override {
    for (const Run &run : runs)
      if (run.run_type == Run::RT_Iteration || run.aggregate_name == "median")
        times_[run.run_name.function_name] = run.GetAdjustedCPUTime();
    ConsoleReporter::ReportRuns(runs);
  }

  void Finalize() override {
    if (times_.count(decode_and_free) == 0 || times_.count(floor_of_its_blocks) == 0) return;
    size_t allocations = 0;
    for (const Blocks &one : all_blocks()) allocations += one.allocations();
    std::printf(
        "decode+free takes %.2f times the floor of its blocks, %.1f for each of %zu certificates\n",
        times_[decode_and_free] / times_[floor_of_its_blocks],
        static_cast<double>(allocations) / static_cast<double>(all_blocks().size()),
        all_blocks().size());
  }

 private:
  std::map<std::string, double> times_;
};

}  // namespace

int main(int argc, char **argv) {
  if (certificates().empty()) {
    std::fprintf(stderr, "there are no certificates in %s\n", support::trust_store);
    return 1;
  }
  benchmark::RegisterBenchmark(decode_and_free, decode_benchmark);
  benchmark::RegisterBenchmark(floor_of_its_blocks, floor_benchmark);
  benchmark::RegisterBenchmark("measure", measure_benchmark);
  benchmark::RegisterBenchmark("encode", encode_benchmark);
  benchmark::RegisterBenchmark("clone+free", clone_benchmark);
  benchmark::RegisterBenchmark("subject to text", name_to_text_benchmark);
  benchmark::RegisterBenchmark("text to subject", text_to_name_benchmark);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  Reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  for (Certificate *certificate : decoded()) asn1_Certificate_free(certificate);
  return 0;
}
