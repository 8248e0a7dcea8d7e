#!/bin/sh
# Tries every short input: every input of up to OCTETS octets (3 by default) with every decoder of both
# libraries, each held against the laws with its end at an unreadable page; and every length of up to five
# octets with the functions of the frame.
#
#   sh scripts/exhaust.sh [OCTETS]
#
# The status is not 0 where a law does not hold. The tests of every build try a part of this: the suite
# "Exhaustion".
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

octets=${1-3}

want_googletest() {
  want googletest test -e /usr/src/googletest/CMakeLists.txt
}

provide want_build_tools want_tool_libraries want_googletest

cmake --preset release
cmake --build --preset release --target exhaust

logs=$(mktemp -d)
trap 'rm -rf "$logs"' EXIT
processors=$(nproc)

# all_parts WORD...: runs "exhaust WORD..." in as many parts as there are processors, and prints the time
# that it took.
all_parts() {
  start=$(date +%s)
  part=0
  while [ $part -lt "$processors" ]; do
    { build/release/bin/exhaust "$@" $part "$processors" || echo failed; } >"$logs/$part" 2>&1 &
    part=$((part + 1))
  done
  wait
  cat "$logs"/*
  if grep -qx failed "$logs"/*; then status=1; fi
  rm -f "$logs"/*
  say "$* in $processors processes: $(($(date +%s) - start)) seconds"
}

status=0
all_parts inputs "$octets"
all_parts frame
exit $status
