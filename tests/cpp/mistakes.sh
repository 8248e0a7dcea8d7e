#!/bin/sh
# Each wrong statement of MISTAKES is refused with the message that stands there, and all right ones
# compile, without a warning.
#
#   mistakes.sh COMPILER STANDARD INCLUDE_DIRECTORY MISTAKES
set -eu
compiler=$1 standard=$2 include=$3 mistakes=$4
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export LC_ALL=C

fail() { # LINE
  echo "$1" >&2
  exit 1
}

compile() { # OPTION...
  "$compiler" -std="$standard" -Wall -Wextra -Wpedantic -Werror -I"$include" "$@"
}

# The headers are compiled once.
cat >"$folder/all.hpp" <<'END'
#include <orvelasn1.hpp>
namespace pki = orvel::pki;
namespace asn1 = orvel::asn1;
using namespace orvel::literals;
END
compile -x c++-header "$folder/all.hpp" -o "$folder/all.hpp.gch"

program() { # STATEMENT
  printf '%s\n' "void f$count(const std::vector<std::byte> &octets, const pki::GeneralName &name," \
    "const orvel::Owned<pki::Certificate> &certificate);" \
    "void f$count([[maybe_unused]] const std::vector<std::byte> &octets," \
    "[[maybe_unused]] const pki::GeneralName &name," \
    "[[maybe_unused]] const orvel::Owned<pki::Certificate> &certificate) {" "$1" "}"
}

count=0
: >"$folder/right.cpp"
while IFS= read -r line; do
  case $line in
    'message: '*) message=${line#*: } ;;
    'wrong: '*)
      count=$((count + 1))
      program "${line#*: }" >"$folder/wrong.cpp"
      if compile -include "$folder/all.hpp" -fsyntax-only "$folder/wrong.cpp" 2>"$folder/messages"; then
        fail "compiles: ${line#*: }"
      fi
      grep -Eq "error: .*($message)" "$folder/messages" || {
        cat "$folder/messages" >&2
        fail "is refused without \"$message\": ${line#*: }"
      }
      ;;
    'right: '*)
      program "${line#*: }" >>"$folder/right.cpp"
      right=$count
      ;;
    '' | '#'*) ;;
    *) fail "neither message nor statement: $line" ;;
  esac
done <"$mistakes"
test "$count" -gt 20 && test "$right" = "$count" || fail "there are $count mistakes"
compile -include "$folder/all.hpp" -fsyntax-only "$folder/right.cpp"
