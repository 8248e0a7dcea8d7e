#!/bin/sh
# Makes the reference in build/docs/html, from the headers, docs/reference/ and the examples. Fails where a
# function, a parameter or a member is without a description.
#
#   sh scripts/docs.sh
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_doxygen() {
  want doxygen has doxygen
}
provide want_doxygen

# Doxygen does not look whether the filter fails.
status=0
for header in include/*.h; do
  awk -v words=docs/reference/words.txt -f docs/reference/filter.awk "$header" >/dev/null || status=1
done
for header in include/orvelasn1_cpp/*.hpp; do
  awk -v words=docs/reference/words.txt -f docs/reference/filter_cpp.awk "$header" >/dev/null || status=1
done
[ $status = 0 ] || fail "docs/reference/words.txt lacks something"

rm -rf build/docs
mkdir -p build/docs
doxygen Doxyfile
say "The reference: build/docs/html/index.html"
