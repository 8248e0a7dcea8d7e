#!/bin/sh
# What a shared library shows to the world: the functions that the headers declare and nothing else,
# all of one version, a versioned name, no needless dependency, and the marks of hardening.
#
#   abi.sh COMPILER INCLUDE_DIRECTORY LIBRARY PREFIX NEEDED HARDENING...
#
# PREFIX begins the names of the library's functions. NEEDED is an extended regular expression for
# the libraries that it may need. Each HARDENING is one of: stack-protector, fortify, cet.
set -eu
compiler=$1 include=$2 library=$3 prefix=$4 needed=$5
shift 5
node=ORVELASN1_1.0
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=0

fail() {
  echo "${library##*/}: $1"
  failed=1
}

# The functions.
sh "$(dirname "$0")/../declared_functions.sh" "$compiler" "$include" | grep "^$prefix" \
  >"$folder/declared"
nm -D --defined-only "$library" >"$folder/symbols"
# The linker adds a symbol for the version itself.
grep -v " A $node\$" "$folder/symbols" >"$folder/functions"
awk '{ print $NF }' "$folder/functions" | sed "s/@@$node\$//" | LC_ALL=C sort >"$folder/exported"
diff "$folder/declared" "$folder/exported" || fail "declared (<) and exported (>) names differ"
awk '$(NF - 1) != "T"' "$folder/functions" >"$folder/objects"
test ! -s "$folder/objects" || fail "exports what is no function: $(cat "$folder/objects")"
grep -v "@@$node\$" "$folder/functions" >"$folder/unversioned" || true
test ! -s "$folder/unversioned" || fail "no version $node: $(cat "$folder/unversioned")"

# The names of the library and of those that it needs.
readelf -dW "$library" >"$folder/dynamic"
soname=$(sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p' "$folder/dynamic")
echo "$soname" | grep -qE '^lib[a-z0-9]+\.so\.[0-9]+$' || fail "no major version in \"$soname\""
sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' "$folder/dynamic" | grep -vxE "$needed" >"$folder/needless" ||
  true
test ! -s "$folder/needless" || fail "needs $(cat "$folder/needless")"

# Hardening.
readelf -lW "$library" >"$folder/segments"
grep -q GNU_RELRO "$folder/segments" || fail "no GNU_RELRO"
grep -qE '\(FLAGS(_1)?\).*NOW' "$folder/dynamic" || fail "no BIND_NOW"
grep -qE 'GNU_STACK .* RW ' "$folder/segments" || fail "an executable stack"
! grep -q TEXTREL "$folder/dynamic" || fail "relocations in its code"
for mark in "$@"; do
  case $mark in
    stack-protector)
      nm -D "$library" | grep -q __stack_chk_fail || fail "no stack protector"
      ;;
    fortify)
      nm -D "$library" | grep -q 'printf_chk' || fail "the C library checks no sizes"
      ;;
    cet)
      readelf -nW "$library" | grep -q 'x86 feature:.*SHSTK' || fail "no SHSTK"
      # Every exported function begins with a mark for indirect calls.
      objdump -d "$library" | awk -v prefix="$prefix" '
        /^[0-9a-f]+ <.*>:$/ { name = substr($2, 2, length($2) - 3); first = 1; next }
        first && NF { if (name ~ "^" prefix "[A-Za-z0-9_]*$" && $0 !~ /endbr64/) print name; first = 0 }' \
        >"$folder/unmarked"
      test ! -s "$folder/unmarked" || fail "no endbr64 in $(cat "$folder/unmarked")"
      ;;
    *)
      fail "no such mark: $mark"
      ;;
  esac
done
exit $failed
