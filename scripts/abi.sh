#!/bin/sh
# Compares the records, functions and symbol versions of the libraries with the files in tests/abi, and
# fails on any change.
#
#   sh scripts/abi.sh            compares, and runs a program that was linked to the oldest files
#   sh scripts/abi.sh --write    writes the files of the version that CMakeLists.txt names
#
# Each version of the interface has a folder there, which stays: a library must still have all of what an
# older version of the same major number has. The files describe x86-64. The libraries are built with debug
# information in build/abi.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

write=''
case ${1-} in
  '') ;;
  --write) write=yes ;;
  *) fail "abi.sh [--write]" ;;
esac
[ "$(uname -m)" = x86_64 ] || fail "The files in tests/abi describe x86-64: run this there."

want_abi_tools() {
  want abigail-tools has abidw
  want python3-minimal has python3
}
provide want_build_tools want_abi_tools

build=build/abi
libraries='orvelutils orvelasn1 orvelpki'
version=$(sed -n 's/^project(orvelasn1 VERSION \([0-9]*[.][0-9]*\).*/\1/p' CMakeLists.txt)
cmake -S . -B $build -G Ninja -DCMAKE_C_COMPILER=gcc -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
  -DORVELASN1_TOOL=OFF >/dev/null
cmake --build $build --target orvelutils_shared orvelasn1_shared orvelpki_shared

# describe LIBRARY: writes what it shows to the world to build/abi/LIBRARY.abi. What depends on the machine,
# such as paths, and on where a record is declared is left out.
describe() {
  abidw --no-architecture --no-comp-dir-path --no-corpus-path --no-elf-needed --no-show-locs \
    --no-parameter-names --type-id-style hash --exported-interfaces-only --drop-undefined-syms \
    --drop-private-types --headers-dir include --suppressions tests/abi/foreign.suppr \
    --out-file "$build/$1.whole" "$build/lib/lib$1.so"
  sed "s# path='[^']*/\(src\|pki\|utils\)/# path='\1/#" "$build/$1.whole" >"$build/$1.abi"
}

for library in $libraries; do describe "$library"; done

if [ -n "$write" ]; then
  mkdir -p "tests/abi/$version"
  for library in $libraries; do cp "$build/$library.abi" "tests/abi/$version/"; done
  say "Wrote tests/abi/$version"
  exit
fi
[ -d "tests/abi/$version" ] ||
  fail "There is no tests/abi/$version: run sh scripts/abi.sh --write, and commit what it writes."

# differs OPTION... OLD NEW: shows what differs, and succeeds where anything does. A renamed member changes
# no program that is built, but the sources of all.
differs() {
  status=0
  abidiff --harmless --leaf-changes-only --no-show-locs "$@" >$build/difference 2>&1 || status=$?
  [ $status != 0 ]
}

broken=''
added=''
for folder in tests/abi/"${version%.*}".*; do
  for library in $libraries; do
    old=$folder/$library.abi new=$build/$library.abi
    if differs --no-added-syms "$old" "$new"; then
      say "=== $library is not as in $folder:"
      cat $build/difference
      broken=yes
    elif [ "$folder" = "tests/abi/$version" ] && differs "$old" "$new"; then
      say "=== $library has more than in $folder:"
      cat $build/difference
      added=yes
    fi
  done
done

if [ -n "$broken" ]; then
  say "Programs that are built against a library of version ${version%.*} do not run with this one, or their" \
    "sources no longer compile. Take the change back, or give the libraries a new soname: raise the major" \
    "number of the version in CMakeLists.txt, utils/CMakeLists.txt and include/orvelasn1_version.h, rename" \
    "the nodes of the version scripts (*.map), then run sh scripts/abi.sh --write."
fi
if [ -n "$added" ]; then
  say "A new function needs a new node: raise the minor number of the version in CMakeLists.txt," \
    "utils/CMakeLists.txt and include/orvelasn1_version.h, put the function into a node of that version in" \
    "the library's version script (*.map) that inherits from the last one, then run" \
    "sh scripts/abi.sh --write. The files of the older versions stay as they are."
fi
[ -z "$broken$added" ] || exit 1

sh tests/abi/oldest.sh gcc $build/lib
say "The interface is that of tests/abi/$version."
