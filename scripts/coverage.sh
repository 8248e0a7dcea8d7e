#!/bin/sh
# Runs all tests and prints the lines and the branches of the libraries that no test reaches. Fails where the
# tests reach fewer than 98 of 100 lines or fewer than 95 of 100 branches, where tests/branches.txt has no
# reason for a branch that is left, and where it has one that is not needed.
#
#   sh scripts/coverage.sh
#
# A branch is an outcome of a condition as it stands in the source: each operand of && and ||, each condition
# of an if, a loop or a ?:, each case, once true and once false. Clang's coverage of the source has them by line
# and column. A template and an inline function are counted once, by what all their copies take together, and
# a condition that the compiler decides is none.
#
# A call that a test leaves by longjmp() counts as if it had gone on: the compiler counts one outcome, and
# takes it from the calls for the other.
#
# That is not what gcov counts, nor gcovr: the jumps of the object code, once more for each copy of a template
# and with what the compiler adds of its own. gcovr's own decisions are guessed from the text of a line, and
# left out where && and || are in it.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_coverage_tools() {
  want clang has clang++
  want libclang-rt-dev links clang++ -fprofile-instr-generate
  want llvm has llvm-profdata
  want llvm has llvm-cov
  want python3 has python3
}
provide want_coverage_tools

build=build/coverage
rm -rf $build/profiles
# The processes that run a program or a library add to its file.
LLVM_PROFILE_FILE=$PWD/$build/profiles/%2m.profraw sh scripts/check.sh coverage
# The tests' own allocators run while their counters are written: these overflow, with a line each.
llvm-profdata merge -sparse $build/profiles/*.profraw -o $build/all.profdata 2>$build/merge.log ||
  fail "$(cat $build/merge.log)"
set --
for library in $build/lib/lib*.so; do set -- "$@" --object "$library"; done
# It warns of functions of the public headers that the sources have and do not call.
llvm-cov export --instr-profile=$build/all.profdata "$@" >$build/coverage.json
python3 scripts/coverage.py $build/coverage.json
