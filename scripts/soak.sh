#!/bin/sh
# Runs eight threads under a limit of memory, with allocations that fail, over objects of all types.
#
#   sh scripts/soak.sh [SECONDS [SEED]]
#
# Takes an hour by default. The seed is printed, and is that of the time by default. ORVELASN1_CORPUS may
# name a folder with more objects, as for scripts/seeds.sh.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

seconds=${1-3600} seed=${2-$(date +%s)}
want_googletest() {
  want googletest test -e /usr/src/googletest/CMakeLists.txt
}
provide want_build_tools want_tool_libraries want_googletest

cmake --preset release >/dev/null
cmake --build --preset release --target soak
say "=== $seconds seconds, seed $seed"
# Without TZ, the C runtime looks up the time zone for each line of the trace.
TZ=UTC build/release/bin/soak "$seconds" "$seed"
