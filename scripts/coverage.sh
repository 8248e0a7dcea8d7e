#!/bin/sh
# Runs all tests and says which lines of the libraries none of them reaches. Fails where the lines
# reached are fewer than 98 of 100.
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
