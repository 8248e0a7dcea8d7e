#!/bin/sh
# Measures this project beside what else there is, and prints tables of ratios.
#
#   sh scripts/peers.sh libraries    other libraries read the same certificates and revocation lists
#
# ORVELASN1_CORPUS may name a folder with more certificates than those that the system trusts.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_benchmark() {
  want libbenchmark-dev has_header benchmark/benchmark.h
}

want_peers() {
  want pkg-config has pkg-config
  want libssl-dev pkg-config --exists libcrypto
  want libgnutls28-dev pkg-config --exists gnutls
  want libnss3-dev pkg-config --exists nss
  want libksba-dev pkg-config --exists ksba
  want libmbedtls-dev has_header mbedtls/x509_crt.h
}

build() { # TARGET...
  cmake --preset bench
  cmake --build --preset bench --target "$@"
}

# Each library reads everything once a round. The rounds are interleaved.
libraries() {
  provide want_build_tools want_tool_libraries want_certificates want_benchmark want_peers
  build peers
  build/bench/bin/peers --benchmark_repetitions=9 --benchmark_min_time=0.1 \
    --benchmark_report_aggregates_only=true --benchmark_enable_random_interleaving=true
}

case ${1-} in
libraries) "$1" ;;
*) fail "usage: sh scripts/peers.sh libraries" ;;
esac
