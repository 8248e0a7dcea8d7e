#!/bin/sh
# The programs of the guide compile, without a warning.
#
#   guide.sh COMPILER STANDARD INCLUDE_DIRECTORY GUIDE
set -eu
compiler=$1 standard=$2 include=$3 guide=$4
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# All in one file, which is compiled once: each main() has a number. Only main() may end without a
# return, hence the last option.
awk '
  $0 == "```cpp" { inside = 1; ++count; next }
  /^```/ { inside = 0 }
  inside { sub(/^int main\(/, "int main" count "("); print }
  END { if (count < 3) exit 1 }' "$guide" >"$folder/programs.cpp"
"$compiler" -std="$standard" -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow \
  -Wold-style-cast -Werror -Wno-return-type -fsyntax-only -I"$include" "$folder/programs.cpp"
