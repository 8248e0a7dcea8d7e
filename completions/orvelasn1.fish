# Completion of orvelasn1(1) for fish. All words come from the tool itself: commands and options from
# its help, types from "types", fields from the file on the command line.

# Prints the options of a command: name, tab, what it takes, tab, what it does.
function __orvelasn1_options
    orvelasn1 $argv --help 2>/dev/null | awk -F '  +' '
        /^  -/ {
          sub(/, +-/, ",-")
          split($2, words, " ")
          if (words[2] !~ /^[A-Z]+(:|$)/) words[2] = ""
          count = split(words[1], names, ",")
          about = $3
          if (about == "" && getline > 0) about = $2
          for (i = 1; i <= count; i++) print names[i] "\t" words[2] "\t" about
        }'
end

# Prints the words for what an option or a command takes, such as NAME or WHEN:{auto,always,never}.
function __orvelasn1_values --argument-names kind current
    switch $kind
        case NAME
            orvelasn1 types --no-pager 2>/dev/null | sed 's/  */\t/'
        case OID
            orvelasn1 oid --list 2>/dev/null | sed 's/  */\t/'
        case PATH
            set --local file
            for word in (commandline --tokenize)[3..]
                test -z "$file" -a -f "$word"; and set file $word
            end
            test -n "$file"; or return
            set --local base (string match --regex '^.*(?=[.[])' -- $current)
            set --local path
            test -n "$base"; and set path $base.
            # For a place that is not there, the tool says what is.
            orvelasn1 tree --path "$path?" $file 2>&1 |
                sed -n 's/.*: there is no ? .*there is //p; s/.*: there is no ?; there is //p' |
                sed 's/, /\n/g' | sed "/\.\.\./d; /^\[/!s/^/$path/; /^\[/s/^/$base/"
        case '*{*}*'
            string replace --regex '.*{(.*)}.*' '$1' -- $kind | string split ,
        case 'FILE*' 'OUT*' A B
            __fish_complete_path $current
    end
end

function __orvelasn1_words
    set --local words (commandline --tokenize --current-process --cut-at-cursor)
    set --local current (commandline --current-token)
    set --local command $words[2]
    if string match --quiet -- '-*' $current
        set --local option (string match --regex '^--[^=]*(?==)' -- $current)
        if test -z "$option"
            __orvelasn1_options $command | string replace --regex '\t.*\t' '\t'
            return
        end
        set --local kind (__orvelasn1_options $command | string match --regex "(?<=^$option\t)[^\t]+")
        set current (string replace --regex '^[^=]*=' '' -- $current)
        string replace --regex -- '^' "$option=" (__orvelasn1_values "$kind" $current)
    else if test -z "$command"
        orvelasn1 --help 2>/dev/null | sed -n 's/^  \([a-z]\{1,\}\)   */\1\t/p'
        __orvelasn1_values FILE $current
    else
        set --local kind (__orvelasn1_options $command | string match --regex "(?<=^$words[-1]\t)[^\t]+")
        test -n "$kind"
        or set kind (orvelasn1 $command --help 2>/dev/null |
            sed -n 's/^Usage: .*\[OPTIONS\] *\[*\([A-Z]*\).*/\1/p')
        __orvelasn1_values "$kind" $current
    end
end

complete --command orvelasn1 --no-files --arguments '(__orvelasn1_words)'
