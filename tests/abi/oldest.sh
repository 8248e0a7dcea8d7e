#!/bin/sh
# Runs a program that was built against the oldest interface with the libraries of today.
#
#   oldest.sh COMPILER FOLDER [EMULATOR...]
#
# FOLDER holds the libraries; the emulator runs the program. The program is linked to libraries that have nothing
# but the functions of the oldest files beside this script, each with its version, and knows the records from there
# alone.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
compiler=$1 libraries=$2
shift 2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

oldest=$(find "$here" -mindepth 1 -maxdepth 1 -type d | sort -V | head -n 1)
python3 "$here/oldest.py" "$oldest" "$folder"
for library in orvelutils orvelasn1 orvelpki; do
  "$compiler" -shared -fPIC "$folder/$library.c" -Wl,-soname,"$(cat "$folder/$library.soname")" \
    -Wl,--version-script="$folder/$library.map" -o "$folder/lib$library.so"
done
"$compiler" -std=c11 -Wall -Wextra -Werror -I "$folder" "$here/oldest.c" "$folder/functions.c" -L "$folder" -Wl,-z,now \
  -Wl,--no-as-needed -lorvelpki -lorvelasn1 -lorvelutils -o "$folder/oldest"
LD_LIBRARY_PATH=$libraries "$@" "$folder/oldest"
