# Writes a header of the layer for C++ as Doxygen reads it: what a program may use, each function without
# its body, with what its parameters are and what it returns. What has no comment has the text of words.txt
# for its name, or is said to lack one. Left out are namespaces "detail", what is not public, friends,
# operators and constructors without a comment, and the data by which the layer knows a type.
#
#   awk -v words=words.txt -f filter_cpp.awk HEADER

BEGIN {
  while ((getline line < words) > 0) {
    if (line !~ /^cpp/) continue
    split(line, word, /  */)
    rest = line
    sub(/^[^ ]+ +[^ ]+ +/, "", rest)
    known[word[1], word[2]] = rest
  }
  # Functions that do something say what they return; the first sentence of any other is what it returns.
  verbs = "^(Makes|Decodes|Encodes|Finds|Copies|Calls|Sets|Takes|Starts|Releases|Reads|Opens|Writes|Appends) "
}

function complain(text) {
  print FILENAME ":" FNR ": " text >"/dev/stderr"
  failed = 1
}

# Texts and characters become blanks, so that no brace is in them; what follows "//" goes.
function plain(line) {
  gsub(/\\./, "  ", line)
  while (match(line, /"[^"]*"/) || match(line, /'[^']'/) || match(line, /'  '/)) {
    line = substr(line, 1, RSTART - 1) sprintf("%" RLENGTH "s", "") substr(line, RSTART + RLENGTH)
  }
  sub(/ *\/\/.*/, "", line)
  return line
}

# Whether what is read is shown: nothing in a namespace "detail", nothing that is not public.
function is_shown(i) {
  for (i = 1; i <= scopes; i++) if (kind[i] == "detail" || access[i] != "public") return 0
  return 1
}

function enter(what) {
  kind[++scopes] = what ~ /namespace [a-z0-9_:]*detail/ ? "detail" : what ~ /namespace/ ? "namespace" : "class"
  access[scopes] = what ~ /^(template <[^{]*>\n? *)?class / || what ~ /\nclass / ? "private" : "public"
}

# The parameters of a declaration: what stands between the parentheses after its name.
function parameters(head, name,   at, i, depth, c, angle) {
  at = index(head, name "(") + length(name) + 1
  depth = 1
  for (i = at; i <= length(head) && depth > 0; i++) {
    c = substr(head, i, 1)
    if (c == "(" || c == "<" || c == "{") depth++
    if (c == ")" || c == ">" || c == "}") depth--
    if (c == "," && depth > 1) head = substr(head, 1, i - 1) " " substr(head, i + 1)
  }
  return substr(head, at, i - at - 1)
}

function text_of(group, name, word) {
  if ((group, name "." word) in known) return known[group, name "." word]
  return known[group, word]
}

function topic() {
  return FILENAME ~ /types[.]hpp$/ ? "cpp_types" : FILENAME ~ /oids[.]hpp$/ ? "cpp_identifiers" : "cpp"
}

# Prints a function with its comment.
function print_function(comment, head, name,   list, count, i, word, first) {
  is_void = head ~ /(^|[ \n])void [*]?[a-zA-Z]/
  is_made = name == owner[scopes]
  count = split(parameters(head, name), list, /,/)
  if (!is_void && !is_made) {
    if (match(comment, /(^|[.:][ \n]+)Returns[ \n]/)) {
      comment = substr(comment, 1, RSTART) "\n\n@return " substr(comment, RSTART + RLENGTH)
      sub(/^R\n/, "", comment)
    } else if (comment ~ verbs) {
      word = known["cppreturn", name]
      if (word == "") complain("nothing says what " name " returns")
      comment = comment "\n\n@return " word
    } else {
      first = comment
      sub(/[.;:]([ \n].*|$)/, "", first)
      comment = comment "\n\n@return " tolower(substr(first, 1, 1)) substr(first, 2)
    }
  }
  for (i = 1; i <= count; i++) {
    word = list[i]
    sub(/=.*/, "", word)
    sub(/[ \n]*$/, "", word)
    if (word !~ /[ &*>.][a-z_]+$/) continue
    sub(/.*[ &*>.]/, "", word)
    first = text_of("cppparam", name, word)
    if (first == "") complain("nothing says what " word " of " name " is")
    comment = comment "\n@param " word " " first
  }
  print_comment(comment)
  print head ";"
}

function print_comment(comment) {
  print "/**\n" comment (kind[scopes] != "class" ? "\n@ingroup " topic() : "") "\n*/"
}

# The name that a declaration declares.
function name_of(head,   name) {
  name = head
  if (name ~ /operator/) {
    sub(/.*operator/, "operator", name)
    sub(/\(.*/, "", name)
    return name
  }
  if (name ~ /\(/) {
    sub(/^template <[^\n]*>\n/, "", name)
    sub(/requires[^\n]*\n/, "", name)
    if (match(name, /[A-Za-z_][A-Za-z0-9_]*\(/)) name = substr(name, RSTART, RLENGTH - 1)
    return name
  }
  sub(/ *(=|[{;]).*/, "", name)
  sub(/.*[ *]/, "", name)
  return name
}

# A declaration has ended: `head` is all of it but for a body and what initialises members.
function declare(head, is_function,   name) {
  if (!is_shown() || head ~ /= *delete/ || head ~ /(^|[ \n])friend / || head ~ /std::ranges::/) return
  if (head ~ /\n *(class|struct) [A-Za-z]+$/) return
  # A constraint of several lines, and what deduces the arguments of a template.
  if (head ~ /requires\(const/) sub(/\n.*\)\n +/, "\n  ", head)
  if (head ~ /\) -> /) return
  name = name_of(head)
  if (("cppskip", name) in known) return
  if (comment == "" && (head ~ /^ *(using|static constexpr|static_assert)/ || head ~ /operator/ || name == owner[scopes])) return
  if (comment == "" && FILENAME ~ /types[.]hpp$/ && is_function) comment = known["cppfield", name ~ /_encoded$/ ? "octets" : name ~ /_text$/ ? "text" : "field"]
  if (comment == "" && match(head, /Oid [A-Za-z0-9_]+\("[0-9.]+"/)) {
    comment = head
    sub(/.*\("/, "", comment)
    sub(/".*/, "", comment)
    comment = comment "."
    sub(/\(.*/, "", head)  # which is not a function
    is_function = 0
  }
  if (comment == "" && head ~ /constexpr unsigned [A-Za-z]+ = [0-9]+$/) {
    comment = head
    sub(/.*= /, "", comment)
    comment = "Bit " comment "."
  }
  if (comment == "") comment = known["cpp", name]
  if (comment == "") {
    complain("nothing says what " name " is")
    return
  }
  gsub(/NAME/, name, comment)
  if (is_function) {
    print_function(comment, head, name)
  } else {
    print_comment(comment)
    print head ";"
  }
}

/^ *\/\/\// && text == "" {
  line = $0
  sub(/^ *\/\/\/ ?/, "", line)
  comment = comment (comment == "" ? "" : "\n") line
  next
}
/^ *\/\// && text == "" { next }
/^\/\*\*/ { in_file = 1 }
in_file {
  print
  if (/@file/) print " * @ingroup cpp"
  if (/\*\/$/) in_file = 0
  next
}
/^#/ || in_macro {
  in_macro = /\\$/
  print
  next
}
/^$/ && text == "" {
  comment = ""
  next
}

{
  line = plain($0)
  if (text == "") {
    if (line ~ /^ *(public|private|protected):/) {
      access[scopes] = line
      gsub(/[ :]/, "", access[scopes])
      if (is_shown()) print line
      next
    }
    if (line ~ /^ *};? *$/) {
      if (is_shown() || access[scopes] != "public" && kind[scopes] == "class") {
        access[scopes] = "public"
        if (is_shown()) print line
      }
      scopes--
      comment = ""
      next
    }
    start = 1
    depth = round = 0
    body = initialisers = 0
  }
  kept = text
  original = original $0 "\n"
  text = text line "\n"
  for (i = length(kept) + 1; i <= length(text); i++) {
    c = substr(text, i, 1)
    if (c == "(") round++
    if (c == ")") round--
    if (c == "{") {
      if (depth == 0 && round == 0) {
        before = substr(text, 1, i - 1)
        if (before ~ /^ *(inline )?namespace[ a-z0-9_:]*$/ ||
            before ~ /(^|[\n>) ]) *(class|struct)( \[\[nodiscard\]\])? [A-Za-z_:<>, 0-9"]*[^;()]*$/ && before !~ /\) *$/) {
          opens = 1
        } else if (before ~ /requires *(\([^{}]*\))? *$/ || before ~ /[=a-z_] *$/ && before !~ /\)[ a-z&]*$/) {
          # A constraint or a value: the declaration goes on.
        } else if (!body && before ~ /\)/) {
          body = i
        }
      }
      depth++
    }
    if (c == "}") depth--
    if (c == ":" && depth == 0 && round == 0 && !initialisers && substr(text, i + 1, 1) == " " &&
        substr(text, 1, i - 1) ~ /\)[ a-z]*$/) initialisers = i
    ended = depth == 0 && round == 0 && (c == ";" || c == "}" && body)
    if (opens || ended) break
  }
  if (opens) {
    what = text
    name = what
    sub(/^template[^\n]*\n/, "", name)
    sub(/^ *(class|struct) (\[\[nodiscard\]\] )?/, "", name)
    sub(/[^A-Za-z_].*/, "", name)
    if (("cppskip", name) in known) what = "namespace detail"
    if (what ~ /std::/) what = "namespace detail"
    if (is_shown() && what !~ /detail/) {
      if (comment == "" && what ~ / : Alternative</) comment = known["cppfield", "alternative"]
      if (comment != "" || what !~ /namespace/) {
        if (comment == "") complain("nothing says what this is: " $0)
        gsub(/NAME/, name, comment)
        print "/**\n" comment (what ~ /namespace/ || kind[scopes] == "class" ? "" : "\n@ingroup " topic()) "\n*/"
      }
      printf "%s", original ~ /{};?\n$/ ? substr(original, 1, match(original, /{};?\n$/) - 1) "{};\n" : original
    }
    if (text !~ /{};?\n$/) {
      enter(what)
      owner[scopes] = name
    }
  } else if (ended) {
    cut = body && (!initialisers || body < initialisers) ? body : initialisers ? initialisers : i
    head = substr(text, 1, cut - 1)
    # The text of an identifier is its comment.
    if (!body && head ~ /Oid /) head = substr(original, 1, cut - 1)
    sub(/[ \n]*$/, "", head)
    declare(head, body || head ~ /\)[ a-z&]*$/)
  } else {
    next
  }
  text = original = comment = ""
  opens = 0
}

END { exit failed }
