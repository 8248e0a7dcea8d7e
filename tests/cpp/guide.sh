#!/bin/sh
# Each program of the guide compiles alone, without a warning.
#
#   guide.sh COMPILER STANDARD INCLUDE_DIRECTORY GUIDE
set -eu
compiler=$1 standard=$2 include=$3 guide=$4
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

awk -v folder="$folder" '
  $0 == "```cpp" { file = folder "/" ++count ".cpp"; next }
  /^```/ { file = "" }
  file != "" { print >file }
  END { if (count < 3) exit 1 }' "$guide"
for program in "$folder"/*.cpp; do
  "$compiler" -std="$standard" -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow \
    -Wold-style-cast -Werror -fsyntax-only -I"$include" "$program"
done
