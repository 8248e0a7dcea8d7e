// Measures how long the library takes for a certificate, over those that this system trusts and those
// of a corpus. Times are for one certificate. The floor is the cost of the blocks alone, and the
// written floor that of blocks that are written to as well.
//
//   certificate_bench [OPTION...]       the options of the benchmark library
//   certificate_bench --decode NUMBER   decodes so many certificates and releases them, for whoever
//                                       measures from outside
#include <benchmark/benchmark.h>
#include <orvelasn1.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "blocks.h"
#include "inputs.h"

namespace {

using bench::Blocks;
using bench::Octets;

/* ------------------------------------------------------------------------------------------- */
/* The certificates                                                                              */
/* ------------------------------------------------------------------------------------------- */

Certificate *decode(const Octets &der) {
  Certificate *certificate = nullptr;
  asn1_Certificate_d(der.data(), der.data() + der.size(), 0, &certificate, 0);
  return certificate;
}

/// Returns the certificates that the library decodes.
const std::vector<Octets> &certificates() {
  static const std::vector<Octets> all = [] {
    std::vector<Octets> read = bench::read_certificates();
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
  static const std::vector<Blocks> all = [] {
    std::vector<Blocks> noted;
    for (const Octets &der : certificates())
      noted.emplace_back([&] { asn1_Certificate_free(decode(der)); });
    return noted;
  }();
  return all;
}

/* ------------------------------------------------------------------------------------------- */
/* The benchmarks                                                                                */
/* ------------------------------------------------------------------------------------------- */

constexpr const char *decode_and_free = "decode+free";
constexpr const char *floor_of_its_blocks = "floor";
constexpr const char *written_floor = "written floor";

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
  for_each(state, all_blocks(), [](const Blocks &one) { one.replay(); });
}

void written_floor_benchmark(benchmark::State &state) {
  for_each(state, all_blocks(), [](const Blocks &one) { one.replay_written(); });
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
    for (const char *const needed : {decode_and_free, floor_of_its_blocks, written_floor})
      if (times_.count(needed) == 0) return;
    size_t allocations = 0;
    for (const Blocks &one : all_blocks()) allocations += one.allocations();
    std::printf(
        "decode+free takes %.2f times the floor of its blocks, %.2f times the written one; "
        "%.1f blocks for each of %zu certificates\n",
        times_[decode_and_free] / times_[floor_of_its_blocks],
        times_[decode_and_free] / times_[written_floor],
        static_cast<double>(allocations) / static_cast<double>(all_blocks().size()),
        all_blocks().size());
  }

 private:
  std::map<std::string, double> times_;
};

}  // namespace

int main(int argc, char **argv) {
  if (certificates().empty()) {
    std::fputs("there are no certificates\n", stderr);
    return 1;
  }
  if (argc == 3 && std::string_view(argv[1]) == "--decode") {
    const size_t number = std::strtoul(argv[2], nullptr, 10);
    for (size_t i = 0; i < number; ++i)
      asn1_Certificate_free(decode(certificates()[i % certificates().size()]));
    return 0;
  }
  benchmark::RegisterBenchmark(decode_and_free, decode_benchmark);
  benchmark::RegisterBenchmark(floor_of_its_blocks, floor_benchmark);
  benchmark::RegisterBenchmark(written_floor, written_floor_benchmark);
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
