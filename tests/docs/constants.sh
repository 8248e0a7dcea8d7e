#!/bin/sh
# A constant record that is stored where a record of its own is due does not compile where warnings are errors.
# A copy does.
#
#   constants.sh COMPILER LANGUAGE SOURCE
#
# SOURCE is the top folder of the sources.
set -eu
compiler=$1 language=$2 source=$3
stores() { # TYPE EXPRESSION
  printf '#include <orvelasn1.h>\nvoid f(%s **to);\nvoid f(%s **to) { *to = %s; }\n' "$1" "$1" "$2" |
    "$compiler" -x "$language" -Wall -Werror -fsyntax-only -I "$source/include" - 2>errors
}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
failed=0
check() { # TYPE CALL
  stores "$1" "$2" && {
    echo "$2 is stored without a warning"
    failed=1
  }
  stores "$1" "asn1_$1_clone($2)" || {
    cat errors
    failed=1
  }
}
check ObjId 'asn1_Get_id_at_commonName()'
check Integer 'asn1_Integer_2()'
check Any 'asn1_Any_NULL()'
# All others are declared alike.
grep -h '[*]asn1_Get_[A-Za-z0-9_]*(void)' "$source"/include/*.h | grep -v '^const ObjId [*]' && failed=1
exit $failed
