# What the completion for fish offers:
#
#     check_completions.fish PETAL SOURCE_DIR

set petal_command $argv[1]
set source_dir $argv[2]
set faults 0
set work (mktemp -d)
function clean --on-event fish_exit
    rm -rf $work
end

source $source_dir/completions/petal.fish
function petal
    $petal_command $argv
end

cd $work; or exit 1
mkdir sub
touch 'a b.model.json' design.mdj notes.txt sub/unit.cat
printf '%s' '(object Petal version 42)(object Design "D" root_category (object Class_Category "Logical View"' \
    ' logical_presentations (list l (object ClassDiagram "Main") (object ClassDiagram "Order $it"))))' >old.mdl

# offers EXPECTED LINE: what is offered for the last word of the line, without the descriptions.
function offers
    set -l offered (complete -C $argv[2] | string replace -r '\t.*' '' | env LC_ALL=C sort | string join '|')
    test "$offered" = $argv[1]; and return
    echo "$argv[2]: offers $offered, expected $argv[1]" >&2
    set faults (math $faults + 1)
end

offers 'old.mdl|sub/' 'petal check '
offers 'old.mdl|sub/' 'petal tree --depth 2 '
offers 'a b.model.json|design.mdj|old.mdl|sub/' 'petal export '
offers 'a b.model.json|design.mdj|old.mdl|sub/' 'petal import design.mdj '
offers sub/unit.cat 'petal check sub/'
offers sub/ 'petal dump old.mdl --csv '
offers 'a b.model.json|design.mdj|notes.txt|old.mdl|sub/' 'petal export -o '
offers 'Main|Order $it' 'petal draw old.mdl --diagram '
offers '--diagram=Order $it' 'petal draw old.mdl --diagram=O'
offers '' 'petal draw --diagram '
offers 'error|note|warning' 'petal check --fail-on '
offers 'always|auto' 'petal tree --color a'
offers 'BP_SUPPORTED_TYPES=As is|BP_SUPPORTED_TYPES=C++|BP_SUPPORTED_TYPES=Java|BP_SUPPORTED_TYPES=Oracle 7.x/8' \
    'petal export --option BP_SUPPORTED_TYPES='
offers browse 'petal help b'
offers ecore 'petal convert old.mdl --to ec'
offers '--help|--version' 'petal --'
offers help 'petal h'
test $faults -eq 0
