#!/bin/sh
# Hands the same inputs to this library, OpenSSL, GnuTLS and mbedTLS, and prints in what classes they
# differ: whether the input is a certificate, and what stands in it. Then has them read certificates of
# random records, which must be written as DER and read as they were made: one for every hundred inputs.
#
#   sh scripts/differ.sh [COUNT]          goes on with the run for COUNT inputs, 1000000 if not given
#   sh scripts/differ.sh --show NUMBER    prints an input of the run and what each library says of it
#
# The run is kept in build/differ.table: remove it to start again. The last column of a row begins with
# what the class is of; the column before it is the number of the first such input.
#
# Environment:
#   ORVELASN1_CORPUS    a folder with more certificates than those that the system trusts
#   SEED                of a new run; 1 if not set
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

table=build/differ.table
differ=build/release/bin/differ

want_libraries() {
  want pkg-config has pkg-config
  want libssl-dev pkg-config --exists libcrypto
  want libgnutls28-dev pkg-config --exists gnutls
  want libmbedtls-dev has_header mbedtls/x509_crt.h
}

want_test_libraries() {
  want googletest test -s /usr/src/googletest/googletest/src/gtest-all.cc
}

provide want_build_tools want_tool_libraries want_certificates want_test_libraries want_libraries
cmake --preset release >/dev/null
cmake --build --preset release --target differ >&2

case ${1-1000000} in
--show)
  if [ $# != 2 ]; then fail "usage: sh scripts/differ.sh [COUNT | --show NUMBER]"; fi
  seed=${SEED-1}
  if [ -s $table ]; then read -r seed _ <$table; fi
  $differ show "$2" "$seed"
  ;;
*[!0-9]* | '') fail "usage: sh scripts/differ.sh [COUNT | --show NUMBER]" ;;
*)
  count=${1-1000000}
  nice -n 19 $differ run $table "$count" "${SEED-1}"
  $differ table $table
  nice -n 19 $differ write $((count / 100)) "${SEED-1}"
  # A broken law, an input that we alone refuse, and one that ends us, are ours to mend.
  if cut -f 3 $table | grep -E "^(LAW BROKEN|we alone refuse|the end of the process: we)"; then exit 1; fi
  ;;
esac
