#!/bin/sh
# Counts the instructions of bench::read_in_c() and bench::read_in_cpp() with valgrind. Fails where the
# layer for C++ takes more than two in a hundred more.
#
#   cpp_cost.sh CPP_BENCH
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
valgrind --tool=callgrind --callgrind-out-file="$folder/out" "$1" --once >"$folder/log" 2>&1 ||
  { cat "$folder/log" >&2; exit 1; }
callgrind_annotate --inclusive=yes "$folder/out" >"$folder/functions"
instructions() { # FUNCTION
  awk -v name="$1" 'index($0, name "(") { gsub(",", "", $1); print $1; exit }' "$folder/functions"
}
c=$(instructions bench::read_in_c) cpp=$(instructions bench::read_in_cpp)
echo "C $c instructions, C++ $cpp"
test $((cpp * 100)) -le $((c * 102))
