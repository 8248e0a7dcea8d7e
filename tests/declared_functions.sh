#!/bin/sh
# Prints the name of every function that the public headers declare, one a line, sorted.
#
#   declared_functions.sh COMPILER INCLUDE_DIRECTORY
#
# The headers are read as C: once they are preprocessed, a name of the library before a "(" is that of
# a function.
set -eu
compiler=$1 include=$2
for header in "$include"/*.h; do
  printf '#include "%s"\n' "$header"
done | "$compiler" -E -P -x c - | grep -oE '(asn1|List|pki)_[A-Za-z0-9_]+ *\(' | tr -d ' (' |
  LC_ALL=C sort -u
