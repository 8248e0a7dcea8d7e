#!/bin/sh
# The manual pages: orvelasn1(1) has the commands, arguments and options that the help of the tool has,
# and no others; orvelasn1(7) has the short names of attributes; the examples of the libraries' pages
# compile; none has a mistake of markup.
#
#   manual.sh TOOL SOURCE COMPILER
#
# SOURCE is the top folder of the sources.
set -eu
tool=$1 source=$2 compiler=$3
for program in scdoc mandoc man; do
  command -v $program >/dev/null || {
    echo "$program is missing: apt-get install scdoc mandoc man-db"
    exit 1
  }
done
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
failed=0
same() { # EXPECTED FOUND WHAT
  diff "$1" "$2" >difference || {
    echo "$3"
    cat difference
    failed=1
  }
}

# The help: a line "usage ARGUMENT..." and a line for each option, such as "-o, --output OUT". Words after
# the argument are about other options.
of_help() {
  "$tool" "$@" --help | awk -F '  +' '
    /^Usage: / {
      sub(/.*\[OPTIONS\] ?/, "")
      print "usage " $0
    }
    /^  -/ {
      count = split($2, word, " ")
      sub(/,/, ", ", word[1])
      sub(/:.*/, "", word[2])
      print word[1] (word[2] ~ /^[A-Z]+$/ ? " " word[2] : "")
    }'
}

# The same of the section of the page that begins with the line $1.
of_page() {
  awk -v section="$1" '
    /^#/ { inside = $0 == section }
    inside && /^\*orvelasn1 [a-z]+\*/ {
      gsub(/[*_]/, "")
      sub(/^orvelasn1 [a-z]+ \[OPTIONS\] ?/, "")
      print "usage " $0
    }
    inside && /^\*-.*[*_]$/ {
      gsub(/[*_]/, "")
      print
    }' "$source/man/orvelasn1.1.scd"
}

# "  show    Print what elements hold" and "## show", below which the first paragraph but one is the same.
"$tool" --help | sed -n 's/^  \([a-z]\{1,\}\)   *\(.*\)/\1: \2./p' >of_help
awk '/^## / { command = $2; paragraph = 0 }
  command != "" && $0 == "" { ++paragraph }
  command != "" && $0 != "" && paragraph == 2 { print command ": " $0 }' \
  "$source/man/orvelasn1.1.scd" >of_page
same of_help of_page "The help (<) and the page (>) have other commands"
test -s of_help
of_help | sed '/^usage /d' >of_help_alone
of_page '# OPTIONS' >of_page_alone
same of_help_alone of_page_alone "The help (<) and the page (>) have other options"
for command in $(sed 's/:.*//' of_help); do
  of_help "$command" >help
  of_page "## $command" >page
  test "$(grep -c . help)" -gt 1
  same help page "The help (<) and the page (>) of $command differ"
done

# Each short name is what the tool writes for the identifier. Of "sn", it says that nothing reads it.
sed -n 's/^\([a-z]*\)  *\([0-9][0-9.]*\)  *[A-Za-z]*$/\1 \2/p' "$source/man/orvelasn1.7.scd" >names
while read -r name identifier; do
  "$tool" name -o name.der "/$identifier(12)=x" >/dev/null
  "$tool" name --der name.der 2>>messages | sed "s/.*\/\([a-z0-9.]*\)(12)=x.*/\1 $identifier/"
done <names >written
same names written "The page (<) and the tool (>) have other short names"
# The names of the table, in the order in which they are read.
sed -n '/oidNameAttributes\[\]/,/^};/s/.*"\([a-z]*\)"}.*/\1/p' \
  "$source/src/registry/name_attributes.h" >in_source
sed 's/ .*//' names >in_page
same in_source in_page "The source (<) and the page (>) have other short names"
test -s names

# The examples, of which the function is left out, and in which a literal backslash is two.
for page in "$source"/man/*.7.scd; do
  {
    printf '#include <orvelpki.h>\nint f(const uint8_t *der, size_t size);\n'
    printf 'int f(const uint8_t *der, size_t size) {\n'
    awk '/^#/ { inside = /^# EXAMPLE$/ }
      inside && !/^(#|```)/ { gsub(/\\\\/, "\\"); print }' "$page"
    printf 'return 1;\n}\n'
  } >example.c
  grep -q free example.c
  "$compiler" -std=c11 -Wall -Wextra -Wpedantic -Werror -fsyntax-only -I "$source/include" example.c ||
    failed=1
done

for page in "$source"/man/*.scd; do
  name=$(basename "$page" .scd)
  scdoc <"$page" >"$name"
  # scdoc itself writes the empty paragraphs.
  mandoc -T lint -W warning "$name" | grep -v 'skipping paragraph macro' >warnings || :
  LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$name" \
    2>>warnings >/dev/null || echo "man fails" >>warnings
  if [ -s warnings ]; then
    echo "$name has mistakes of markup:"
    cat warnings
    failed=1
  fi
done
exit $failed
