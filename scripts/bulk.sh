#!/bin/sh
# Runs "orvelasn1 map" over very many certificates: those that the system trusts, again and again, each
# with a serial number of its own. Checks their count, their order, the sum of a field, and that the memory
# of all its processes together is flat and no more than 64 MiB.
#
#   sh scripts/bulk.sh [COUNT]
#
# There are a million of them by default, which takes a minute. Prints the rate and the memory.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

count=${1-1000000}

want_googletest() {
  want googletest test -e /usr/src/googletest/CMakeLists.txt
}

provide want_build_tools want_tool_libraries want_certificates want_openssl want_googletest

cmake --preset release
cmake --build --preset release --target tool_tests
ORVELASN1_BULK=$count build/release/bin/tool_tests --gtest_filter='MapBulk.Keeps*'
