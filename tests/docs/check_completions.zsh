# What the completion for zsh offers:
#
#     check_completions.zsh PETAL SOURCE_DIR
#
# Completion works on the line of a terminal alone, so another shell has one here.

zmodload zsh/zpty || exit
work=$(mktemp -d)
trap 'rm -rf $work' EXIT
faults=0

cd $work || exit
mkdir sub
touch 'a b.model.json' design.mdj notes.txt sub/unit.cat
cat >old.mdl <<'END'
(object Petal version 42)
(object Design "D" root_category (object Class_Category "Logical View" logical_presentations (list l
(object ClassDiagram "Main") (object ClassDiagram "Order $it"))))
END

# What the other shell reads first. Its key tells what is offered, a line each behind a mark, and empties the line.
cat >.setup <<END
module_path=(${(j: :)${(@q)module_path}})
fpath=(${(q)2}/completions ${(j: :)${(@q)fpath}})
petal() { ${(q)1} "\$@" }
END
cat >>.setup <<'END'
stty -echo
PROMPT=
unset zle_bracketed_paste
autoload -Uz compinit && compinit -u -D
compadd() {
    [[ "${@[1,(i)(-|--)]}" == *\ -[OAD]\ * ]] && { builtin compadd "$@"; return }
    local -a matches
    builtin compadd -A matches "$@"
    offered+=($matches)
    builtin compadd "$@"
}
collect() { _main_complete; compstate[insert]= compstate[list]= }
tell() {
    local -aU offered=()
    zle collect
    BUFFER=
    print -rl -- '' $^offered'<' 'END<'
}
zle -C collect list-choices collect
zle -N tell
bindkey '^T' tell
print -r -- 'END<'
END

# The lines up to the mark for the end.
answer() {
    local text
    zpty -r other text "*END<" || { echo "the other shell has ended" >&2; exit 1 }
    print -r -- ${text//$'\r'/}
}

zpty other "cd ${(q)work}; exec ${commands[zsh]:-zsh} -f -i"
zpty -w other 'source ./.setup'
answer >/dev/null

# offers EXPECTED LINE: what is offered for the last word of the line, as it would be inserted, in the order of the alphabet.
offers() {
    zpty -w -n other $2$'\x14'
    local -a lines=(${(M)${(f)"$(answer)"}:#*<})
    local offered=${(j:|:)${(o)${lines%<}:#END}}
    [[ $offered == $1 ]] && return
    echo "$2: offers $offered, expected $1" >&2
    (( ++faults ))
}

offers 'old.mdl|sub' 'petal check '
offers 'old.mdl|sub' 'petal tree --depth 2 '
offers 'a\ b.model.json|design.mdj|old.mdl|sub' 'petal export '
offers 'a\ b.model.json|design.mdj|old.mdl|sub' 'petal import design.mdj '
offers 'sub' 'petal dump old.mdl --csv '
offers 'a\ b.model.json|design.mdj|notes.txt|old.mdl|sub' 'petal export -o '
offers 'Main|Order\ \$it' 'petal draw old.mdl --diagram '
offers 'Order\ \$it' 'petal draw old.mdl --diagram=O'
offers 'error|note|warning' 'petal check --fail-on '
offers 'always|auto' 'petal tree --color a'
offers 'As\ is|C++|Java|Oracle\ 7.x/8' 'petal export --option BP_SUPPORTED_TYPES='
offers 'browse' 'petal help b'
offers 'ecore' 'petal convert old.mdl --to ec'
offers 'help' 'petal h'
(( faults == 0 ))
