#!/bin/sh
# Holds the man page and the completions against the help of the command:
#
#     check_docs.sh PETAL SOURCE_DIR
#
# Each of them must have every option that a command's help shows, in the place for that command, and every option of
# the bridge; none may name a long option that no help shows.

petal=$1
man_page=$2/docs/petal.1
bash_file=$2/completions/petal.bash
zsh_file=$2/completions/_petal
fish_file=$2/completions/petal.fish
faults=0

fault() {
    echo "check_docs: $*" >&2
    faults=$((faults + 1))
}

# Below, $1 is a sub-command, or empty for the command itself; option names are printed one a line.

help_options() {
    "$petal" ${1:+"$1"} --help | sed -n 's/^  \(-[^ ]*\).*/\1/p' | tr ',' '\n'
}

# The words of a text that look like options.
option_words() {
    tr -c 'A-Za-z0-9_-' '\n' | grep -e '^--*[A-Za-z]'
}

man_options() {
    title=${1:+"Options of $1"}
    sed -n "/^\.Ss ${title:-General options}\$/,/^\.S[sh] /p" "$man_page" | grep '^\.It ' | man_words
}
man_words() {
    sed 's/Fl \(-*[A-Za-z]\)/-\1/g' | option_words
}

bash_options() {
    # shellcheck disable=SC2016 # for the inner shell
    bash --norc -c '. "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _petal; printf "%s\n" "${COMPREPLY[@]}"' \
        bash "$bash_file" petal ${1:+"$1"} -
}

zsh_options() {
    # Options in parentheses are those that an option excludes.
    sed -n "/^_petal${1:+_$1}()/,/^}/p" "$zsh_file" | sed 's/([^()]*)//g' | option_words
}

fish_options() {
    grep -e "-n \$${1:-command} " "$fish_file" | fish_words
}
fish_words() {
    grep '^complete ' | sed 's/ -s \([A-Za-z]\)/ -\1/g; s/ -l \([a-z]\)/ --\1/g' | option_words
}

for command in '' export import convert check tree dump diff git draw browse options; do
    shown=$(help_options "$command")
    [ -n "$shown" ] || fault "petal ${command:+$command }--help shows no options"
    for place in man bash zsh fish; do
        found=$(${place}_options "$command")
        for option in $shown; do
            echo "$found" | grep -qx -e "$option" || fault "$place: $option of petal${command:+ $command} is missing"
        done
    done
    all_shown="$all_shown $shown"
done

for option in $("$petal" options | grep '^[A-Z]' | grep -vx BP_FILE); do
    grep -qx "\.It Cm $option" "$man_page" || fault "man: $option is missing"
    for file in "$bash_file" "$zsh_file" "$fish_file"; do
        grep -qw "$option" "$file" || fault "$file: $option is missing"
    done
done

# check_named FILE WORDS...
check_named() {
    file=$1
    shift
    for option in $("$@" <"$file" | grep -e '^--' | sort -u); do
        echo "$all_shown" | tr ' ' '\n' | grep -qx -e "$option" || fault "$file: no help shows $option"
    done
}
check_named "$man_page" man_words
check_named "$bash_file" option_words
check_named "$zsh_file" option_words
check_named "$fish_file" fish_words

[ "$faults" -eq 0 ]
