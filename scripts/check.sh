#!/bin/sh
# Builds and runs all tests with one preset or more.
#
#   sh scripts/check.sh [PRESET...]
#
# The presets are release (where none is named), debug, asan, tsan, m32 and clang. The last line
# says how many tests passed and failed in all of them.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

if [ $# = 0 ]; then set -- release; fi

want_test_tools() {
  want googletest test -e /usr/src/googletest/CMakeLists.txt
  want openssl has openssl
  want binutils has readelf
  want locales test -e /usr/share/i18n/locales/C
  want libc6-dev links gcc
}

want_what_presets_need() {
  for preset in $presets; do
    case $preset in
      m32) want g++-multilib links g++ -m32 ;;
      clang)
        want clang has clang++
        want libclang-rt-dev links clang++ -fsanitize=address,undefined
        ;;
      asan) want g++ links g++ -fsanitize=address,undefined ;;
      tsan) want g++ links g++ -fsanitize=thread ;;
    esac
  done
}

presets=$*
provide want_build_tools want_tool_libraries want_certificates want_test_tools \
  want_what_presets_need

passed=0 failed=0 skipped=0

# count NAME: an attribute of the test suite in the results.
count() {
  sed '/<testcase/,$d' "$results" | tr '\n' ' ' | sed -n "s/.*[[:space:]]$1=\"\([0-9]*\)\".*/\1/p"
}

for preset in $presets; do
  say "=== $preset"
  results=$PWD/build/$preset/results.xml
  rm -f "$results"
  if ! { cmake --preset "$preset" && cmake --build --preset "$preset"; }; then
    say "$preset does not build"
    failed=$((failed + 1))
    continue
  fi
  status=0
  ctest --preset "$preset" --output-junit "$results" || status=1
  if [ ! -s "$results" ]; then
    say "$preset has no results"
    failed=$((failed + 1))
    continue
  fi
  failures=$(count failures)
  # What ctest could not even start is a failure too.
  if [ $status != 0 ] && [ "$failures" = 0 ]; then failures=1; fi
  unrun=$(($(count skipped) + $(count disabled)))
  failed=$((failed + failures))
  skipped=$((skipped + unrun))
  passed=$((passed + $(count tests) - failures - unrun))
done

closing="$passed passed, $failed failed"
if [ $skipped != 0 ]; then closing="$closing, $skipped skipped"; fi
say "$closing"
[ $failed = 0 ]
