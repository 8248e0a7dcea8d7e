#!/bin/sh
# The example in the README's block of LANGUAGE is the text of FILE.
#
#   readme.sh README LANGUAGE FILE
set -eu
readme=$1 language=$2 file=$3
awk -v fence="\`\`\`$language" '
  $0 == "```" { inside = 0 }
  inside { print }
  $0 == fence { inside = 1 }' "$readme" | diff "$file" - || {
  echo "$file (<) and the \`\`\`$language block of $readme (>) differ"
  exit 1
}
