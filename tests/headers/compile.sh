#!/bin/sh
# Each public header compiles alone and twice over, and SOURCE, which uses every function that they
# declare, compiles too, all without a warning.
#
#   compile.sh COMPILER LANGUAGE STANDARD INCLUDE_DIRECTORY SOURCE
set -eu
compiler=$1 language=$2 standard=$3 include=$4 source=$5
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

compile() { # FILE OPTION...
  file=$1
  shift
  "$compiler" -x "$language" -std="$standard" -Wall -Wextra -Wpedantic -Werror -I"$include" "$@" \
    "$file"
}

for header in "$include"/*.h; do
  name=${header##*/}
  printf '#include <%s>\n#include <%s>\n' "$name" "$name" >"$folder/alone"
  compile "$folder/alone" -fsyntax-only || {
    echo "$name does not compile alone"
    exit 1
  }
done

compile "$source" -c -o "$folder/object"
nm -u "$folder/object" | awk '$NF ~ /^(asn1|List)_/ { print $NF }' | LC_ALL=C sort -u >"$folder/used"
sh "$(dirname "$0")/../declared_functions.sh" "$compiler" "$include" >"$folder/declared"
test -s "$folder/declared"
diff "$folder/declared" "$folder/used" || {
  echo "the functions declared (<) and those that $source uses (>) differ"
  exit 1
}
