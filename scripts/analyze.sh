#!/bin/sh
# Runs clang-tidy, cppcheck and gcc's own analyzer. Fails where one of them finds a mistake. clang-tidy
# takes minutes; where FILEs are named, it looks at these only.
#
#   sh scripts/analyze.sh [FILE...]
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_analyzers() {
  want clang-tidy has clang-tidy
  want clang has clang++
  want cppcheck has cppcheck
  want googletest test -e /usr/src/googletest/CMakeLists.txt
}
provide want_build_tools want_tool_libraries want_analyzers

status=0
libraries=$(library_sources)
# The names must be split, here and below.
# shellcheck disable=SC2046,SC2086
if [ $# = 0 ]; then set -- $libraries $(find tool -name '*.cpp' | LC_ALL=C sort); fi

say "=== clang-tidy"
# Only the list of commands and the generated files of this build are used: the tool's registry and the
# list of types.
build=build/analyze
cmake --preset clang -B $build -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null
cmake --build $build --target tool/registry.inc pki/types.inc >/dev/null
printf '%s\n' "$@" | xargs -P "$(nproc)" -n 1 clang-tidy --quiet -p $build 2>/dev/null || status=1

say "=== cppcheck"
# noExplicitConstructor: a function must convert to the class around it.
# useStlAlgorithm: a loop with a way out is often plainer.
# duplInheritedMember: a table that is another one with a difference hides what differs.
# unusedStructMember: it does not see the members that templates read.
# shellcheck disable=SC2086
cppcheck -j "$(nproc)" --quiet --std=c++20 --language=c++ --inline-suppr --error-exitcode=1 \
  --enable=warning,performance,portability,style \
  --suppress=noExplicitConstructor --suppress=useStlAlgorithm --suppress=duplInheritedMember \
  --suppress=unusedStructMember \
  -I include -I src -I . $libraries || status=1

say "=== gcc -fanalyzer"
# malloc-leak: the analyzer does not follow a record that is stored through a caller's pointer.
# null-argument: a lambda without captures has no object, which the analyzer takes for a mistake.
printf '%s\n' "$libraries" | xargs -P "$(nproc)" -n 1 g++ -std=c++20 -O1 -fno-exceptions -fno-rtti \
  -I include -I src -I . -I $build/pki -DORVELASN1_DESCRIBES \
  -fanalyzer -Wno-analyzer-malloc-leak -Wno-analyzer-null-argument -Werror -o /dev/null -c || status=1
exit $status
