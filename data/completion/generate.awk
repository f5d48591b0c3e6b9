#!/usr/bin/awk -f
# Reads what "tarvex-run --help" prints and writes the completion of its command line for the shell
# that the variable shell names: bash, zsh or fish. So an option that --help shows is completed, by
# the kind of value that stands behind it there: FILE, JOURNAL and PICTURE are files, G and T groups,
# a|b|c choices; what N, P or NAME are only the user knows. Status 1 if the text has no options or
# no groups.

# Options and values of a line of the synopsis, which stand in brackets and bars.
function read_synopsis(line,    words, count, i, last)
{
    sub(/^(Usage:)? +tarvex-run /, "", line)
    gsub(/\[,[^]]*\]/, "", line)
    gsub(/[\[\],]/, " ", line)
    count = split(line, words, " ")
    for (i = 1; i <= count; i++) {
        if (words[i] ~ /^--[a-z]/)
            add_option(last = words[i])
        else if (words[i] != "|" && last != "") {
            value[last] = words[i]
            last = ""
        }
    }
}

function add_option(name)
{
    if (!(name in value)) {
        options[++nbr_options] = name
        value[name] = ""
    }
}

function read_description(line)
{
    if (match(line, /^--[a-z-]+/)) {
        described = substr(line, 1, RLENGTH)
        line = substr(line, 18)
    }
    sub(/^ +/, "", line)
    text[described] = text[described] (text[described] == "" ? "" : " ") line
}

# The first clause of it.
function description(name,    words)
{
    words = text[name]
    sub(/([;:]|[.] ).*/, "", words)
    return words
}

function kind(name)
{
    if (value[name] ~ /^(FILE|JOURNAL|PICTURE)/)
        return "file"
    if (value[name] ~ /^[GT](\||$)/)
        return "groups"
    if (value[name] ~ /^[a-z]+\|/)
        return "choices"
    return value[name] == "" ? "none" : "any"
}

function choices(name,    words)
{
    words = value[name]
    gsub(/\|/, " ", words)
    return words
}

function quoted(words)
{
    gsub(/'/, "'\\''", words)
    return "'" words "'"
}

# The options of a kind between separators; of all kinds without one.
function names(wanted, separator,    i, list)
{
    for (i = 1; i <= nbr_options; i++) {
        if (wanted == "" || kind(options[i]) == wanted)
            list = list (list == "" ? "" : separator) options[i]
    }
    return list
}

function print_bash(    i)
{
    print "_tarvex_run()"
    print "{"
    print "    local word=${COMP_WORDS[COMP_CWORD]} words= before="
    print "    local option=${COMP_WORDS[COMP_CWORD - 1]}"
    print "    [ \"$option\" != = ] || option=${COMP_WORDS[COMP_CWORD - 2]}"
    print "    [ \"$word\" != = ] || word="
    print "    case $option in"
    for (i = 1; i <= nbr_options; i++) {
        if (kind(options[i]) == "choices")
            print "        " options[i] ") words='" choices(options[i]) "' ;;"
    }
    print "        " names("groups", " | ") ")"
    print "            before=${word%\"${word##*,}\"}"
    print "            words='" groups "'"
    print "            ;;"
    print "        " names("any", " | ") ") words=' ' ;;"
    print "        *) [[ $word != -* ]] || words='" names("", " ") "' ;;"
    print "    esac"
    print "    if [ -n \"$words\" ]; then"
    print "        word=${word#\"$before\"}"
    print "        mapfile -t COMPREPLY < <(compgen -P \"$before\" -W \"$words\" -- \"$word\")"
    print "    else"
    print "        compopt -o filenames"
    print "        mapfile -t COMPREPLY < <(compgen -f -- \"$word\")"
    print "    fi"
    print "}"
    print "complete -F _tarvex_run tarvex-run"
}

function print_zsh(    i, name, words, actions)
{
    actions["file"] = ":file:_files"
    actions["groups"] = ":groups:_values -s , group " groups
    actions["any"] = ":value: "
    print "_arguments \\"
    for (i = 1; i <= nbr_options; i++) {
        name = options[i]
        words = description(name)
        gsub(/[\[\]:]/, "\\\\&", words)
        actions["choices"] = ":value:(" choices(name) ")"
        words = (kind(name) == "none" ? "" : "=") (words == "" ? "" : "[" words "]")
        print "    " quoted(name words actions[kind(name)]) " \\"
    }
    print "    '*:file:_files'"
}

function print_fish(    i, name, words, actions)
{
    actions["file"] = " -r -F"
    actions["groups"] = " -x -a " quoted("(__fish_append , " groups ")")
    actions["any"] = " -x"
    for (i = 1; i <= nbr_options; i++) {
        name = options[i]
        words = description(name)
        actions["choices"] = " -x -a " quoted(choices(name))
        print "complete -c tarvex-run -l " substr(name, 3) actions[kind(name)] \
            (words == "" ? "" : " -d " quoted(words))
    }
}

/^(Usage:| +) *tarvex-run / { in_synopsis = 1 }
/^$/ { in_synopsis = 0; described = "" }
in_synopsis { read_synopsis($0) }
/^--/ || (described != "" && /^  /) { read_description($0) }
sub(/^Groups: /, "") { gsub(/,/, ""); groups = $0 " all" }
END {
    add_option("--help")
    text["--help"] = "prints the options"
    add_option("--version")
    text["--version"] = "prints the version"
    if (nbr_options < 3 || groups == "")
        exit 1
    if (shell == "zsh")
        print "#compdef tarvex-run"
    print "# Completion of tarvex-run, made from its --help."
    print ""
    if (shell == "bash")
        print_bash()
    else if (shell == "zsh")
        print_zsh()
    else
        print_fish()
}
