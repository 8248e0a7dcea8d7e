# Completion of orvelasn1(1) for bash. All words come from the tool itself: commands and options from
# its help, types from "types", fields from the file on the command line.

# Prints the options of a command: name, tab, what it takes.
_orvelasn1_options() {
  orvelasn1 "$@" --help 2>/dev/null | awk -F '  +' '
    /^  -/ {
      sub(/, +-/, ",-")
      split($2, words, " ")
      if (words[2] !~ /^[A-Z]+(:|$)/) words[2] = ""
      count = split(words[1], names, ",")
      for (i = 1; i <= count; i++) print names[i] "\t" words[2]
    }'
}

# Prints the words for what an option or a command takes, such as NAME or WHEN:{auto,always,never}.
# Fails for a file.
_orvelasn1_values() {
  local word file base path
  case $1 in
    NAME) orvelasn1 types --no-pager 2>/dev/null | sed 's/ .*//' ;;
    OID) orvelasn1 oid --list 2>/dev/null | sed 's/ .*//' ;;
    PATH)
      for word in "${COMP_WORDS[@]:2}"; do
        if [[ -z $file && -f $word ]]; then file=$word; fi
      done
      if [[ $cur == *[.[]* ]]; then base=${cur%[.[]*}; fi
      path=${base:+$base.}
      # For a place that is not there, the tool says what is.
      if [[ $file ]]; then
        orvelasn1 tree --path "$path?" "$file" 2>&1 |
          sed -n 's/.*: there is no ? .*there is //p; s/.*: there is no ?; there is //p' |
          sed 's/, /\n/g' | sed "/\.\.\./d; /^\[/!s/^/$path/; /^\[/s/^/$base/"
      fi
      ;;
    *"{"*"}"*) printf '%s\n' "$1" | sed 's/.*{//; s/}.*//; s/,/\n/g' ;;
    FILE* | OUT* | A | B) return 1 ;;
  esac
}

_orvelasn1() {
  local cur=$2 previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]} kind=FILE words=
  # In --option=value, the sign is a word of its own.
  if [[ $cur == = ]]; then
    cur=
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  if ((COMP_CWORD == 1)); then
    command=
    words=$(orvelasn1 --help 2>/dev/null | sed -n 's/^  \([a-z]\{1,\}\)  .*/\1/p')
  else
    kind=$(_orvelasn1_options "$command" | awk -F '\t' -v name="$previous" '$1 == name { print $2 }')
    if [[ $kind ]]; then
      previous=
    else
      kind=$(orvelasn1 "$command" --help 2>/dev/null |
        sed -n 's/^Usage: .*\[OPTIONS\] *\[*\([A-Z]*\).*/\1/p')
    fi
  fi
  COMPREPLY=()
  if [[ $previous && $cur == -* ]]; then
    words=$(_orvelasn1_options ${command:+"$command"} | cut -f 1)
  elif ! words+=$'\n'$(_orvelasn1_values "$kind"); then
    mapfile -t COMPREPLY < <(compgen -f -- "$cur")
    compopt -o filenames
  fi
  if [[ $kind == PATH ]]; then compopt -o nospace; fi
  while read -r word; do
    if [[ $word && $word == "$cur"* ]]; then COMPREPLY+=("$word"); fi
  done <<<"$words"
}

complete -F _orvelasn1 orvelasn1
