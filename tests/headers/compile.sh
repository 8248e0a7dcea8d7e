#!/bin/sh
# Each public header compiles alone and twice over, and SOURCE, which uses every function that they
# declare, compiles too, all without a warning. The headers define no macro but their guards, their version
# and, in C, the functions and types that they declare. An element function of the wrong shape is refused.
#
#   compile.sh COMPILER LANGUAGE STANDARD INCLUDE_DIRECTORY SOURCE
set -eu
compiler=$1 language=$2 standard=$3 include=$4 source=$5
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export LC_ALL=C

fail() { # LINE
  echo "$1" >&2
  exit 1
}

# Clang's -Wcast-function-type objects to more casts than that of -Wextra, and that of Clang 16 and later
# has a stricter one.
warnings='-Wall -Wextra -Wpedantic -Wcast-function-type -Werror'
if [ "$language" = c ]; then warnings="$warnings -Wstrict-prototypes"; fi
strict=-Wcast-function-type-strict
if "$compiler" -Werror $strict -x "$language" -fsyntax-only /dev/null 2>/dev/null; then
  warnings="$warnings $strict"
fi

compile() { # FILE OPTION...
  file=$1
  shift
  # shellcheck disable=SC2086
  "$compiler" -x "$language" -std="$standard" $warnings -I"$include" "$@" "$file"
}

for header in "$include"/*.h; do
  name=${header##*/}
  printf '#include <%s>\n#include <%s>\nextern int declared;\n' "$name" "$name" >"$folder/alone"
  compile "$folder/alone" -fsyntax-only || fail "$name does not compile alone"
done

compile "$source" -c -o "$folder/object"
nm -u "$folder/object" | awk '$NF ~ /^(asn1|List|pki)_/ { print $NF }' | sort -u >"$folder/used"
sh "$(dirname "$0")/../declared_functions.sh" "$compiler" "$include" >"$folder/declared"
test -s "$folder/declared"
diff "$folder/declared" "$folder/used" ||
  fail "the functions declared (<) and those that $source uses (>) differ"

# The names of the macros that are defined once the headers are included.
macros() { # HEADER...
  printf '#include <%s>\n' "$@" >"$folder/macros"
  compile "$folder/macros" -dM -E | sed 's/^#define \([A-Za-z0-9_]*\).*/\1/' | sort
}
headers=$(cd "$include" && echo *.h)
echo "$headers" | tr ' a-z.' '\nA-Z_' | sed 's/^PKI/ORVELPKI/; s/^RFC/ORVELPKI_RFC/; /^ORVEL/!s/^/ORVELASN1_/' >"$folder/expected"
printf '%s\n' ORVELASN1_VERSION ORVELASN1_VERSION_NUMBER >>"$folder/expected"
if [ "$language" = c ]; then
  printf '%s\n' List_destructor List_cloner List_comparison asn1_encoder asn1_decoder \
    List_contains List_clone List_free asn1_implicit_e asn1_explicit_e asn1_explicit_d \
    asn1_List_e asn1_List_d asn1_expl_List_e asn1_expl_List_d asn1_SetOf_e asn1_SetOf_d \
    asn1_SeqOf_e asn1_SeqOf_d asn1_expl_SetOf_e asn1_expl_SetOf_d asn1_expl_SeqOf_e \
    asn1_expl_SeqOf_d asn1_SetOfSetOf_e asn1_SetOfSetOf_d >>"$folder/expected"
fi
sort -o "$folder/expected" "$folder/expected"
macros stdint.h stdio.h string.h time.h >"$folder/before"
# shellcheck disable=SC2086
macros stdint.h stdio.h string.h time.h $headers >"$folder/after"
comm -13 "$folder/before" "$folder/after" | diff "$folder/expected" - ||
  fail "the macros expected (<) and those of the headers (>) differ"

accepts() { # STATEMENT
  printf '#include <orvelasn1.h>\nList *f(const uint8_t *z, List *list);\n%s\n%s\nreturn list; }\n' \
    'List *f(const uint8_t *z, List *list) { (void)z;' "$1" >"$folder/statement"
  compile "$folder/statement" -fsyntax-only 2>"$folder/messages"
}
accepts 'asn1_SeqOf_d(z, z, 0, asn1_Integer_d, asn1_Integer_free, &list, 0);' || {
  cat "$folder/messages"
  exit 1
}
for statement in \
  'asn1_SeqOf_d(z, z, 0, asn1_Integer_free, asn1_Integer_d, &list, 0);' \
  'asn1_SeqOf_e(NULL, list, asn1_Integer_d);' \
  'asn1_SeqOf_e(NULL, list, &list);' \
  'List_contains(list, z, asn1_Integer_clone);' \
  'List_clone(list, asn1_Integer_free, asn1_Integer_free);' \
  'List_free(list, asn1_Integer_clone);' \
  'List_free(list, 5);'; do
  if accepts "$statement"; then fail "accepted: $statement"; fi
done
