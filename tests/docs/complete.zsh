# Prints the words by which an interactive zsh with the completions of FOLDER completes LINE, one a line.
#
#   zsh -f complete.zsh FOLDER LINE
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "PROMPT=; stty -echo; unset zle_bracketed_paste; fpath=(${(q)1} \$fpath)
autoload -Uz compinit; compinit -u -d \$HOME/zcompdump; bindkey '^I' complete-word"
# Words are what is added to the list, also by the functions that describe them. The calls with -O, -A or
# -D only ask which words match.
zpty -w shell 'compadd() {
  if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then
    builtin compadd "$@"
    return
  fi
  local -a words
  builtin compadd -A words "$@"
  for word in $words; do print -r -- "<$IPREFIX${(Q)word}>"; done
}
close_list() {
  print "</words>"
  compstate[insert]= compstate[list]=
}
comppostfuncs=(close_list)
print "<re""ady>"'
zpty -r -m shell output '*<ready>*'
zpty -w -n shell "$2"$'\t'
zpty -r -m shell output '*</words>*'
zpty -d shell
print -r -- "$output" | grep -o '<[^</>]*>' | tr -d '<>'
