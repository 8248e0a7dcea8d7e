#!/bin/sh
# Runs all tests and prints the lines and the branches of the libraries that no test reaches. Fails where the
# tests reach fewer than 98 of 100 lines, or fewer than 95 of 100 branches.
#
#   sh scripts/coverage.sh
#
# Branches that only an exception takes, and those that the compiler makes on lines without code, do not
# count.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_gcovr() {
  want gcovr has gcovr
}
provide want_gcovr

sh scripts/check.sh coverage
build=build/coverage
set --
for folder in $(library_folders); do set -- "$@" --filter "$folder/"; done
for folder in $(library_folders); do set -- "$@" "$build/$folder"; done
gcovr --root . --object-directory $build --exclude '.*_test[.]cpp' --exclude-throw-branches \
  --exclude-unreachable-branches --json $build/coverage.json "$@"
status=0
gcovr --root . --add-tracefile $build/coverage.json --fail-under-line 98 || status=1
gcovr --root . --add-tracefile $build/coverage.json --branches --fail-under-branch 95 || status=1
exit $status
