#!/bin/sh
# Builds the fuzz targets and runs them, as many at a time as there are processors.
#
#   sh scripts/fuzz.sh [SECONDS [GROUP...]]
#
# Runs the targets of the groups, or all of them, each for so many seconds (60 by default). Inputs that
# cover more stay in build/fuzz/corpus/GROUP, and the next run starts from them. The status is not 0 where
# a target found a mistake. Its input is then in build/fuzz/findings.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

seconds=${1-60}
if [ $# != 0 ]; then shift; fi

want_fuzz_tools() {
  want clang has clang++
  want libclang-rt-dev links clang++ -fsanitize=fuzzer-no-link,address,undefined
  want openssl has openssl
}

provide want_build_tools want_tool_libraries want_fuzz_tools

cmake --preset fuzz
cmake --build --preset fuzz

build=build/fuzz
rm -rf $build/seeds
sh scripts/seeds.sh $build/seeds
mkdir -p $build/findings $build/logs

if [ $# = 0 ]; then
  for group in "$build"/bin/fuzz_*; do
    group=${group##*/fuzz_}
    if [ "$group" != seeds ]; then set -- "$@" "$group"; fi
  done
fi

# run GROUP: runs its target. Writes its output to a log and its status to a file next to that.
run() {
  dictionary=
  if [ -f "tests/fuzz/$1.dict" ]; then dictionary=-dict=tests/fuzz/$1.dict; fi
  mkdir -p "$build/corpus/$1" "$build/seeds/$1"
  status=0
  # Without TZ, the C runtime looks up the time zone for each line of the trace. The dictionary is one
  # option or empty.
  # shellcheck disable=SC2086
  TZ=UTC "$build/bin/fuzz_$1" -max_total_time="$seconds" -max_len=4096 -timeout=10 -rss_limit_mb=2048 \
    -detect_leaks=0 -print_final_stats=1 -artifact_prefix="$build/findings/$1-" $dictionary \
    "$build/corpus/$1" "$build/seeds/$1" >"$build/logs/$1" 2>&1 || status=$?
  echo $status >"$build/logs/$1.status"
}

say "=== $# targets, $seconds seconds each"
processors=$(nproc)
running=0
for group in "$@"; do
  run "$group" &
  running=$((running + 1))
  if [ $running = "$processors" ]; then
    wait
    running=0
  fi
done
wait

# number NAME LOG: prints a number from the end of a log, or 0 where the target did not get there.
number() {
  value=$(sed -n "s/^stat::$1: *//p" "$2")
  echo "${value:-0}"
}

all=0 findings=0
for group in "$@"; do
  log=$build/logs/$group
  executions=$(number number_of_executed_units "$log")
  all=$((all + executions))
  say "$group: $executions executions, $(number average_exec_per_sec "$log") a second," \
    "$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -n 1) edges," \
    "$(number promised_endings "$log") promised endings"
  if [ "$(cat "$log.status")" != 0 ]; then
    findings=$((findings + 1))
    sed -n '/^Broken law/,/^Input/p; /^SUMMARY/p' "$log"
    artifact=$(sed -n 's/.*Test unit written to //p' "$log" | tail -n 1)
    say "  the whole story: $log"
    if [ -n "$artifact" ]; then
      say "  the input:       $artifact"
      say "  again:           $build/bin/fuzz_$group $artifact"
    fi
  fi
done
say "$all executions, $findings findings"
[ $findings = 0 ]
