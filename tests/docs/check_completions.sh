#!/bin/bash
# What the completion for bash offers, in a shell without extended patterns:
#
#     check_completions.sh PETAL SOURCE_DIR

petal_command=$1
source=$2
faults=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

shopt -u extglob
. "$source/completions/petal.bash"
petal() { "$petal_command" "$@"; }

cd "$work" || exit 1
mkdir sub
touch "a b.model.json" design.mdj notes.txt sub/unit.cat
petal export -q "$source/examples/orders.model.json" -o old.mdl
cat >named.mdl <<'END'
(object Petal version 42)
(object Design "D" root_category (object Class_Category "Logical View" logical_presentations (list l
(object ClassDiagram "Main") (object ClassDiagram "Order $it"))))
END

# offers EXPECTED WORDS...: what is offered for the last word, the words in the order of the alphabet.
offers() {
    local expected=$1 offered
    shift
    COMP_WORDS=(petal "$@")
    COMP_CWORD=$#
    _petal
    offered=$(printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -sd '|')
    [[ $offered == "$expected" ]] && return
    echo "petal $*: offers $offered, expected $expected" >&2
    faults=$((faults + 1))
}

offers 'named.mdl|old.mdl|sub' check ''
offers 'named.mdl|old.mdl|sub' check old.mdl ''
offers 'named.mdl|old.mdl|sub' tree --depth 2 ''
offers 'a b.model.json|design.mdj|named.mdl|old.mdl|sub' export ''
offers 'a b.model.json' export 'a\ b'
offers 'a b.model.json|design.mdj|named.mdl|old.mdl|sub' import design.mdj ''
offers '' dump old.mdl ''
offers 'sub/unit.cat' check sub/
offers 'named.mdl|old.mdl|sub' dump --sqlite out.db ''
offers 'sub' dump old.mdl --csv ''
offers 'sub' check --units-within ''
offers 'a b.model.json|design.mdj|named.mdl|notes.txt|old.mdl|sub' export -o ''
offers 'Main|Order\ \$it' draw named.mdl --diagram ''
offers 'Order\ \$it' draw named.mdl --diagram 'Or'
offers 'Main' draw named.mdl --diagram=M
offers '' draw --diagram ''
offers 'error|note|warning' check --fail-on ''
offers 'always|auto' tree --color a
offers 'browse' help b
offers 'ecore' convert named.mdl --to ec
offers 'convert' help co
offers 'help' h
[[ $faults -eq 0 ]]
