#!/bin/sh
# Measures this project beside what else there is, and prints tables of ratios.
#
#   sh scripts/peers.sh libraries     other libraries read the same certificates and revocation lists
#   sh scripts/peers.sh programs      other programs print the same fields of certificates
#   sh scripts/peers.sh allocators    the library with other allocators
#
# Environment:
#   ORVELASN1_CORPUS    a folder with more certificates than those that the system trusts
#   COUNT               how many certificates programs read; 100000 if not set
#   ROUNDS              how often each thing is measured; 5 if not set
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

count=${COUNT-100000}
rounds=${ROUNDS-5}
tool=build/bench/bin/orvelasn1
fields=subject,issuer,serial,notBefore,notAfter,san.dns
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

want_benchmark() {
  want libbenchmark-dev has_header benchmark/benchmark.h
}

want_libraries() {
  want pkg-config has pkg-config
  want libssl-dev pkg-config --exists libcrypto
  want libgnutls28-dev pkg-config --exists gnutls
  want libnss3-dev pkg-config --exists nss
  want libksba-dev pkg-config --exists ksba
  want libmbedtls-dev has_header mbedtls/x509_crt.h
}

want_python() {
  want python3 has python3
}

want_programs() {
  want golang-go has go
  want python3-cryptography python3 -c 'import cryptography'
  want gnutls-bin has certtool
}

# is_loaded LIBRARY: succeeds where the loader finds it.
is_loaded() {
  ldconfig -p | grep -qF "$1 "
}

want_allocators() {
  want libmimalloc2.0 is_loaded libmimalloc.so.2
  want libjemalloc2 is_loaded libjemalloc.so.2
  want libtcmalloc-minimal4 is_loaded libtcmalloc_minimal.so.4
}

build() { # TARGET...
  cmake --preset bench >&2
  cmake --build --preset bench --target "$@" >&2
}

# bundle [COMMAND...]: makes a file of certificates that all libraries take, and the commands.
bundle() {
  mkdir "$folder/der"
  build/bench/bin/peers --write "$folder/der"
  python3 bench/programs/bundle.py "$folder/der" "$count" "$folder/bundle.pem" "$@"
}

libraries() {
  provide want_build_tools want_tool_libraries want_certificates want_benchmark want_libraries
  build peers
  build/bench/bin/peers --benchmark_repetitions="$rounds" --benchmark_min_time=0.1 \
    --benchmark_report_aggregates_only=true --benchmark_enable_random_interleaving=true
}

# All on one processor.
programs() {
  provide want_build_tools want_tool_libraries want_certificates want_openssl want_benchmark \
    want_libraries want_python want_programs
  build peers orvelasn1_tool
  go build -o "$folder/certificates" bench/programs/certificates.go
  bundle "$folder/certificates" "python3 bench/programs/certificates.py"
  go version
  python3 -c 'import cryptography; print("cryptography", cryptography.__version__)'
  openssl version
  certtool --version | head -n 1
  alone="exec taskset -c 0"
  in=$folder/bundle.pem
  python3 bench/measure.py "$rounds" "$count" \
    "orvelasn1 map --fields" "$alone $tool map --jobs 1 --fields $fields $in >$folder/out 2>$folder/log" \
    "Go, crypto/x509" "$alone $folder/certificates $in >$folder/out 2>$folder/log" \
    "Python, cryptography" "$alone python3 bench/programs/certificates.py $in >$folder/out 2>$folder/log" \
    "openssl storeutl" "$alone openssl storeutl -noout -certs -text $in >$folder/out 2>$folder/log" \
    "certtool" "$alone certtool --certificate-info --infile $in >$folder/out 2>$folder/log"
}

allocators() {
  provide want_build_tools want_tool_libraries want_certificates want_benchmark want_python \
    want_allocators
  build certificate_bench
  command="build/bench/bin/certificate_bench --decode 300000"
  set -- "$rounds" 300000 "as it is" "exec $command"
  for setting in GLIBC_TUNABLES=glibc.malloc.tcache_count=1000 LD_PRELOAD=libmimalloc.so.2 \
    LD_PRELOAD=libjemalloc.so.2 LD_PRELOAD=libtcmalloc_minimal.so.4; do
    set -- "$@" "$setting" "exec env $setting $command"
  done
  python3 bench/measure.py "$@"
}

case ${1-} in
libraries | programs | allocators) "$1" ;;
*) fail "usage: sh scripts/peers.sh libraries|programs|allocators" ;;
esac
