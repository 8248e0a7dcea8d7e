#!/bin/sh
# Builds the benchmarks and runs them several times. Compare the medians. The last line says what the layer
# for C++ costs over the calls of C, in instructions; more than two in a hundred is a failure.
#
#   sh scripts/bench.sh [OPTION...]
#
# The options go to the benchmark program, such as --benchmark_filter=decode.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_benchmark() {
  want libbenchmark-dev has_header benchmark/benchmark.h
  want valgrind has valgrind
}
provide want_build_tools want_certificates want_benchmark

cmake --preset bench -DORVELASN1_TOOL=OFF
cmake --build --preset bench --target certificate_bench cpp_bench
build/bench/bin/certificate_bench --benchmark_repetitions=9 --benchmark_min_time=0.2 \
  --benchmark_report_aggregates_only=true --benchmark_enable_random_interleaving=true "$@"
sh bench/cpp_cost.sh build/bench/bin/cpp_bench
