#!/bin/sh
# Measures what the tests notice: changes one place of the libraries at a time and runs the unit tests, the
# comparison with docs/fields.md and the attack tests, until one fails. Survivors are tried once more under
# the address sanitizer where build/asan has the test programs.
#
#   sh scripts/mutate.sh [--seed N] [COUNT] [FILE...]   COUNT places (100 by default), drawn by the seed
#   sh scripts/mutate.sh --changed [BASE]               at most 30 of the lines that differ from BASE
#   sh scripts/mutate.sh --listed                       what tests/mutants.txt excuses
#
# Prints each survivor as a difference of lines. The status is not 0 where one is not in tests/mutants.txt.
# A second run with the same seed goes on where the first one stopped: build/mutants/results.jsonl has the
# outcomes.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_googletest() {
  want googletest test -e /usr/src/googletest/CMakeLists.txt
}

want_python() {
  want python3 has python3
  want git has git
}

provide want_build_tools want_tool_libraries want_googletest want_python

cmake --preset release >/dev/null
cmake --build --preset release --target unit_tests attack_tests orvelutils_tests fields
if [ -e build/asan/bin/attack_tests ]; then
  cmake --build --preset asan --target unit_tests attack_tests orvelutils_tests
fi
exec nice python3 scripts/mutate.py "$@"
