#!/bin/sh
# Runs all tests and prints the lines of the libraries that no test reaches. Fails where the tests reach
# fewer than 98 of 100 lines.
#
#   sh scripts/coverage.sh
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_gcovr() {
  want gcovr has gcovr
}
provide want_gcovr

sh scripts/check.sh coverage
set --
for folder in $(library_folders); do set -- "$@" --filter "$folder/"; done
for folder in $(library_folders); do set -- "$@" "build/coverage/$folder"; done
gcovr --root . --object-directory build/coverage --exclude '.*_test[.]cpp' --fail-under-line 98 "$@"
