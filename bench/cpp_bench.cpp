// Measures what the layer for C++ costs: the certificates that this system trusts are decoded, walked
// and released, in C and in C++. Without arguments to the library, prints the times of both.
//
//   cpp_bench [OPTION...]     the times
//   cpp_bench --once          each certificate once in C and once in C++, for a tool that counts
#include <benchmark/benchmark.h>
#include <pem.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string_view>

#include "walk.h"

namespace {

const std::vector<bench::Octets> &certificates() {
  static const std::vector<bench::Octets> all = [] {
    std::ifstream in(support::trust_store, std::ios::binary);
    return support::certificates_of_pem(std::string(std::istreambuf_iterator<char>(in), {}));
  }();
  return all;
}

void run(benchmark::State &state, uint64_t (*read)(const bench::Octets &)) {
  for ([[maybe_unused]] const auto iteration : state) {
    for (const bench::Octets &der : certificates()) benchmark::DoNotOptimize(read(der));
  }
  state.counters["per_certificate"] = benchmark::Counter(
      static_cast<double>(certificates().size()),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// Returns whether both read each certificate, and see the same.
bool read_once() {
  for (const bench::Octets &der : certificates()) {
    const uint64_t in_c = bench::read_in_c(der);
    if (in_c == 0 || in_c != bench::read_in_cpp(der)) return false;
  }
  return true;
}

}  // namespace

int main(int argc, char **argv) {
  if (certificates().empty() || !read_once()) {
    std::fprintf(stderr, "%s is not read alike in C and in C++\n", support::trust_store);
    return 1;
  }
  if (argc == 2 && std::string_view(argv[1]) == "--once") return 0;
  benchmark::RegisterBenchmark("C", run, bench::read_in_c);
  benchmark::RegisterBenchmark("C++", run, bench::read_in_cpp);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
