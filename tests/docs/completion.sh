#!/bin/sh
# The completions of orvelasn1 in a shell: bash, zsh or fish.
#
#   completion.sh SHELL TOOL SOURCE
#
# SOURCE is the top folder of the sources.
set -eu
shell=$1 tool=$2 source=$3
command -v "$shell" >/dev/null || {
  echo "$shell is missing; its Debian package has its name"
  exit 1
}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
mkdir bin home inputs
ln -s "$tool" bin/orvelasn1
PATH=$folder/bin:$PATH HOME=$folder/home TERM=dumb
export PATH HOME TERM
unset XDG_CONFIG_HOME XDG_DATA_HOME ZDOTDIR PAGER

openssl req -new -newkey ed25519 -nodes -keyout inputs/key.pem -out inputs/request.pem \
  -subj /C=DE/CN=x 2>errors || { cat errors; exit 1; }
cd inputs

# Print the words that complete a line, sorted.
complete_in_bash() {
  # "=" breaks words in bash.
  # shellcheck disable=SC2016
  bash --norc -c 'compopt() { :; }
    . "$1/completions/orvelasn1.bash"
    read -ra COMP_WORDS <<<"${2//=/ = }"
    if [[ $2 == *" " ]]; then COMP_WORDS+=(""); fi
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _orvelasn1 orvelasn1 "${COMP_WORDS[-1]}" "${COMP_WORDS[-2]}"
    if [[ ${#COMPREPLY[@]} != 0 ]]; then printf "%s\n" "${COMPREPLY[@]}"; fi' - "$source" "$1"
}
complete_in_zsh() {
  zsh -f "$source/tests/docs/complete.zsh" "$source/completions" "$1"
}
complete_in_fish() {
  # shellcheck disable=SC2016
  fish --no-config -c 'source $argv[1]/completions/orvelasn1.fish; complete --do-complete $argv[2]' \
    "$source" "$1" | cut -f 1
}

failed=0
expect() { # LINE WORD...
  line=$1
  shift
  "complete_in_$shell" "$line" | sed 's/.*=//' | LC_ALL=C sort -u >../words
  # No word is a line by itself.
  printf '%s\n' "$@" | sed '/^$/d' | LC_ALL=C sort >../expected
  diff ../expected ../words >../difference || {
    echo "\"$line\" is completed by other words (>) than expected (<):"
    cat ../difference
    failed=1
  }
}

files="key.pem request.pem"
# The sections of the manual page are the commands.
commands=$(sed -n 's/^## \([a-z]*\)$/\1/p' "$source/man/orvelasn1.1.scd")
# The words must be split.
# shellcheck disable=SC2086
expect 'orvelasn1 ' $commands $files
expect 'orvelasn1 ty' types
expect 'orvelasn1 --' --help --version
expect 'orvelasn1 show --s' --secrets --short --sort
expect 'orvelasn1 tree --' --help --path --extract --content --hex --oids --full --color --type
expect 'orvelasn1 crl --ser' --serial
expect 'orvelasn1 show --type certificate-' certificate-choices certificate-policies
expect 'orvelasn1 show --type=certificate-' certificate-choices certificate-policies
expect 'orvelasn1 show --color ' always auto never
expect 'orvelasn1 show --color=n' never
expect 'orvelasn1 show --sort ' notAfter
expect 'orvelasn1 show --at '
expect 'orvelasn1 show --short k' key.pem
expect 'orvelasn1 recode -o r' request.pem
# shellcheck disable=SC2086
expect 'orvelasn1 diff key.pem ' $files
# shellcheck disable=SC2086
expect 'orvelasn1 crl key.pem --certificate ' $files
expect 'orvelasn1 oid id_ce_k' id_ce_keyUsage
expect 'orvelasn1 name '
expect 'orvelasn1 types '
expect 'orvelasn1 tree --path '
expect 'orvelasn1 tree request.pem --path ' \
  certificationRequestInfo signatureAlgorithm signature
expect 'orvelasn1 tree request.pem --path=sig' signatureAlgorithm signature
expect 'orvelasn1 tree request.pem --path certificationRequestInfo.s' \
  certificationRequestInfo.subject certificationRequestInfo.subjectPKInfo
# In zsh, a bracket has a meaning of its own.
case $shell in zsh) bracket='\[' ;; *) bracket='[' ;; esac
expect "orvelasn1 tree request.pem --path certificationRequestInfo.subject$bracket" \
  'certificationRequestInfo.subject[commonName]' 'certificationRequestInfo.subject[countryName]'
exit $failed
