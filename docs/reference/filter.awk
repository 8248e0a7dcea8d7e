# Writes a header as Doxygen reads it: each function with what its parameters are, what it returns and the
# topic that it belongs to, each header with its units. Says what words.txt does not have, and fails.
#
#   awk -v words=words.txt -f filter.awk HEADER

BEGIN {
  while ((getline line < words) > 0) {
    if (line ~ /^(#|$)/) continue
    split(line, word, /  */)
    rest = line
    sub(/^[^ ]+ +[^ ]+ +/, "", rest)
    if (word[1] == "topic") {
      topics[++topic_count] = word[2]
      expressions[topic_count] = rest
    } else if (word[1] == "unit") {
      count = split(rest, headers, / +/)
      for (i = 1; i <= count; i++) units[headers[i]] = units[headers[i]] " " word[2]
    } else {
      known[word[1], word[2]] = rest
    }
  }
}

function complain(text) {
  print FILENAME ":" FNR ": " text >"/dev/stderr"
  failed = 1
}

# The first of three texts that there is.
function text_for(kind, name, suffix, word) {
  if ((kind, name "." word) in known) return known[kind, name "." word]
  if ((kind, suffix "." word) in known) return known[kind, suffix "." word]
  return known[kind, word]
}

function topic_of(name, i) {
  for (i = 1; i <= topic_count; i++) if (name ~ expressions[i]) return topics[i]
  complain("no topic for " name)
}

# The texts of a function: what its comment says, and the rest.
function describe(comment, declaration,   name, type, suffix, list, parameters, count, i, word, text) {
  name = declaration
  sub(/\(.*/, "", name)
  is_void = name ~ /^void [^*]*$/
  sub(/.*[ *]/, "", name)
  type = suffix = name
  sub(/^(asn1|pki)_/, "", type)
  if (!sub(/_(d|e|new|free|clone|cmp)$/, "", type) || name ~ /^(List_|asn1_Get_)/) {
    suffix = ""
  } else {
    sub(/.*_/, "", suffix)
  }

  if (comment == "") {
    if (owner_type != type) complain(name " has no comment")
    text = known["does", suffix]
    sub(/ T/, " " type, text)
    comment = text " Its ASN.1 stands at " owner "."
  } else if (name ~ /^pki_/ && suffix != "" && comment !~ /(Makes|Releases|Decodes|Encodes|Copies)/) {
    text = known["does", suffix]
    sub(/ T/, " " type, text)
    comment = comment "\n\n" text
    owner = name "()"
    owner_type = type
  }
  topic = topic_of(name)
  if (!is_void && comment !~ /(^|[.:\n] *)Returns/) {
    text = ("return", suffix) in known ? known["return", suffix] : known["return", topic]
    if (text != "") comment = comment "\n\nReturns " text "."
  }
  # The first sentence that begins so, and what follows it.
  if (!is_void && match(comment, /(^|[.:][ \n]+|\n)Returns[ \n]/)) {
    text = substr(comment, RSTART + RLENGTH)
    comment = substr(comment, 1, RSTART + RLENGTH - 9)
    sub(/[ \n]*$/, "", comment)
    comment = comment "\n\n@return " text
  }

  list = declaration
  sub(/^[^(]*\(/, "", list)
  sub(/\).*/, "", list)
  count = split(list, parameters, /,/)
  for (i = 1; i <= count; i++) {
    word = parameters[i]
    sub(/[ \n]*$/, "", word)
    sub(/.*[ *]/, "", word)
    if (word == "void" || word == "..." || comment ~ ("@param +" word "[ \n]")) continue
    text = text_for("param", name, suffix, word)
    if (text == "") complain("nothing says what " word " of " name " is")
    comment = comment "\n@param " word " " text
  }
  return comment "\n@ingroup " topic
}

function print_comment() {
  if (comment_lines != "") printf "%s", comment_lines
  comment = comment_lines = ""
}

# A comment for Doxygen is kept until it is known what it is about.
!in_comment && !in_declaration && /^\/\*\*/ {
  print_comment()
  in_comment = 1
}
in_comment {
  comment_lines = comment_lines $0 "\n"
  line = $0
  sub(/^\/\*\* ?/, "", line)
  sub(/ *\*\/$/, "", line)
  sub(/^ \* ?/, "", line)
  sub(/^ \*?$/, "", line)
  comment = comment (comment == "" ? "" : "\n") line
  if ($0 ~ /\*\/$/) in_comment = 0
  if ($0 ~ /@file/) {
    file = $0
    sub(/.*@file /, "", file)
    if (!(file in units)) complain("no unit for " file)
    comment_lines = comment_lines " * @ingroup" units[file] "\n"
  }
  next
}

# The macros that C has beside functions are these functions.
/^#define [A-Za-z0-9_]+\(/ { in_macro = 1 }
in_macro {
  if ($0 !~ /\\$/) in_macro = 0
  next
}

!in_declaration && /^(const )?[A-Za-z0-9_]+ \**(asn1|pki|List)_[A-Za-z0-9_]+\(/ {
  in_declaration = 1
  declaration = ""
}
in_declaration {
  declaration = declaration $0 "\n"
  if ($0 ~ /;$/) {
    in_declaration = 0
    print "/**\n" describe(comment, declaration) "\n*/"
    comment = comment_lines = ""
    printf "%s", declaration
  }
  next
}

# A second name of a type needs no comment.
comment == "" && /^typedef [A-Za-z0-9_]+ [A-Za-z0-9_]+;$/ { print "/** The same as " $2 ". */" }

# A record that has the ASN.1 in its comment.
/^typedef struct pki_[A-Za-z0-9_]+ {$/ {
  owner = owner_type = $3
  sub(/^pki_/, "", owner_type)
}

{
  print_comment()
  print
}

END { exit failed }
