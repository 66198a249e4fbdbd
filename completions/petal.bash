# Completion of the petal command for bash.

_petal_booleans=(
    BP_EXPORT_FOREIGN_KEY_ATTRIBUTES
    BP_GENERATE_QUALIFIERS
    BP_SHOW_CONSTRAINTS_IN_DIAGRAMS
    BP_USE_GRAPHICAL_INFORMATION
)
_petal_percentages=(
    BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM
    BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM
)

# Offers the words behind the first that begin with the first.
_petal_words() {
    local current=$1 word
    shift
    for word; do
        [[ $word == "$current"* ]] && COMPREPLY+=("$word")
    done
}

# Offers folders, and the files that begin with $1 and have one of the endings behind it; all files without endings.
_petal_files() {
    local current=${1//\\/} file ending
    current=${current#[\"\']}
    shift
    while IFS= read -r file; do
        [[ $# == 0 || -d $file ]] && COMPREPLY+=("$file") && continue
        for ending; do
            [[ $file == *."$ending" ]] && COMPREPLY+=("$file") && break
        done
    done < <({ compgen -d -- "$current"; compgen -f -- "$current"; } | sort -u)
    compopt -o filenames 2>/dev/null
}

# Offers the names of the diagrams in the files behind the first that begin with the first, as the shell takes them.
_petal_diagrams() {
    local current=$1 name
    shift
    while IFS= read -r name; do
        printf -v name %q "${name##*::}"
        [[ $name == "$current"* ]] && COMPREPLY+=("$name")
    done < <(petal draw --list --quiet -- "$@" 2>/dev/null | sed 's/.*\t//' | sort -u)
}

# Offers NAME=, or the values of the option when its name is there.
_petal_assignments() {
    local name
    case $1 in
        BP_SUPPORTED_TYPES=*) _petal_words "$1" BP_SUPPORTED_TYPES={As\\\ is,C++,Java,Oracle\\\ 7.x/8} ;;
        *=*)
            for name in "${_petal_booleans[@]}"; do
                _petal_words "$1" "$name="{True,False}
            done
            ;;
        *)
            for name in BP_SUPPORTED_TYPES "${_petal_booleans[@]}" "${_petal_percentages[@]}"; do
                _petal_words "$1" "$name="
            done
            compopt -o nospace 2>/dev/null
            ;;
    esac
}

# Offers the argument $2 of the option $1; behind them stand the files of the command line.
_petal_argument() {
    case $1 in
        --option) _petal_assignments "$2" ;;
        --types) _petal_words "$2" as-is c++ java oracle ;;
        --color) _petal_words "$2" auto always never ;;
        --fail-on) _petal_words "$2" note warning error ;;
        --diagram) _petal_diagrams "$2" "${@:3}" ;;
        --from) _petal_words "$2" $(petal import --list-formats 2>/dev/null | cut -d ' ' -f 1) ;;
        --to) _petal_words "$2" $(petal convert --list-formats 2>/dev/null | sed -n 's/ .* out .*//p') ;;
        --charset) _petal_words "$2" UTF-8 CP1252 CP932 CP936 CP949 CP950 CP1250 CP1251 CP1256 ;;
        --units-within | --csv) _petal_files "$2" /. ;;
        --only) _petal_words "$2" added removed changed moved ;;
        --format) _petal_words "$2" svg png pdf ;;
        -o | --output | --log | --stats-json | --report | --sqlite) _petal_files "$2" ;;
    esac
}

_petal_takes_argument() {
    case $1 in
        -o | --output | --option | --types | --scale | --x-scale | --y-scale | --log | --stats-json | \
            --from | --to | --report | --charset | --path | --units-within | --depth | --diagram | --format | --color | \
            --fail-on | --only | --csv | --sqlite) return 0 ;;
        *) return 1 ;;
    esac
}

# Completes a command that takes options and files: current word, endings of the files as one word, number of options,
# options, words before the current one. There may be `most_files`, or any number.
_petal_command_with_files() {
    local current=$1 endings=$2 option='' files=() all_files='' word
    local options=("${@:4:$3}")
    shift $((3 + $3))
    for word; do
        if [[ $option ]]; then
            option=''
        elif [[ ! $all_files && $word == -- ]]; then
            all_files=1
        elif [[ $all_files || $word != -?* ]]; then
            word=${word//\\/}
            word=${word#[\"\']}
            files+=("${word%[\"\']}")
        elif _petal_takes_argument "$word"; then
            option=$word
        fi
    done
    if [[ $option ]]; then
        _petal_argument "$option" "$current" "${files[@]}"
    elif [[ ! $all_files && $current == --*=* ]]; then
        lead=${current%%=*}=
        _petal_argument "${current%%=*}" "${current#*=}" "${files[@]}"
    elif [[ ! $all_files && $current == -* ]]; then
        _petal_words "$current" "${options[@]}"
    elif [[ ! ${most_files-} || ${#files[@]} -lt ${most_files-} ]]; then
        # shellcheck disable=SC2086 # a word for each ending
        _petal_files "$current" $endings
    fi
}

_petal_export() {
    local options=(-h --help -o --output --option --types --foreign-keys --qualifiers --constraints --no-geometry
        --scale --x-scale --y-scale --log -q --quiet --stats --stats-json --from --layout --no-layout --report
        --charset --path --units-within --no-units --strict --color)
    _petal_command_with_files "$1" 'json mdj xml xmi uml ecore mdl cat' "${#options[@]}" "${options[@]}" "${@:2}"
}

_petal_import() {
    local options=(-h --help -o --output --from --layout --no-layout --report --charset --path --units-within
        --no-units -q --quiet --list-formats --color)
    _petal_command_with_files "$1" 'json mdj xml xmi uml ecore mdl cat' "${#options[@]}" "${options[@]}" "${@:2}"
}

_petal_convert() {
    local options=(-h --help -o --output --from --to --layout --no-layout --report --charset --path --units-within
        --no-units -q --quiet --list-formats --color)
    _petal_command_with_files "$1" 'json mdj xml xmi uml ecore mdl cat' "${#options[@]}" "${options[@]}" "${@:2}"
}

_petal_check() {
    local options=(-h --help --charset --path --units-within --no-units --json --notes --fail-on -q --quiet
        --color)
    _petal_command_with_files "$1" 'mdl cat sub prc' "${#options[@]}" "${options[@]}" "${@:2}"
}

_petal_tree() {
    local options=(-h --help --depth --full --charset --path --units-within --no-units --color)
    _petal_command_with_files "$1" 'mdl cat sub prc' "${#options[@]}" "${options[@]}" "${@:2}"
}

_petal_dump() {
    local options=(-h --help --json -o --output --csv --sqlite --charset --path --units-within --no-units -q --quiet
        --color)
    local most_files=1
    _petal_command_with_files "$1" 'mdl cat sub prc' "${#options[@]}" "${options[@]}" "${@:2}"
}

_petal_diff() {
    local options=(-h --help --model-only --diagrams-only --only --all --json --stat --html --charset --path
        --units-within --no-units -q --quiet --color)
    local most_files=2
    _petal_command_with_files "$1" 'mdl cat sub prc json mdj xml xmi uml ecore' "${#options[@]}" "${options[@]}" "${@:2}"
}

_petal_git() {
    _petal_command_with_files "$1" / 6 -h --help --enable --disable --diff --text "${@:2}"
}

_petal_draw() {
    local options=(-h --help --diagram -o --output --format --list --json --charset --path --units-within --no-units
        -q --quiet --color)
    _petal_command_with_files "$1" 'mdl cat sub prc' "${#options[@]}" "${options[@]}" "${@:2}"
}

_petal_browse() {
    local options=(-h --help -o --output --charset --path --units-within --no-units -q --quiet --color)
    _petal_command_with_files "$1" 'mdl cat sub prc' "${#options[@]}" "${options[@]}" "${@:2}"
}

_petal() {
    local words=() last=-1 lead='' i word
    COMPREPLY=()
    # Where the shell splits words at =, they are put together again.
    for ((i = 1; i <= COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $last -ge 0 && ( $word == = || ( ${COMP_WORDS[i - 1]} == = && ${words[last]} == *= ) ) ]]; then
            words[last]+=$word
        else
            words+=("$word")
            last=$((last + 1))
        fi
    done
    local current=${words[last]} before=("${words[@]:0:last}")

    case ${before[0]} in
        '')
            if [[ $current == -* ]]; then
                _petal_words "$current" -h --help -V --version
            else
                _petal_words "$current" export import convert check tree dump diff git draw browse options help
            fi
            ;;
        export) _petal_export "$current" "${before[@]:1}" ;;
        convert) _petal_convert "$current" "${before[@]:1}" ;;
        import) _petal_import "$current" "${before[@]:1}" ;;
        check) _petal_check "$current" "${before[@]:1}" ;;
        tree) _petal_tree "$current" "${before[@]:1}" ;;
        dump) _petal_dump "$current" "${before[@]:1}" ;;
        diff) _petal_diff "$current" "${before[@]:1}" ;;
        git) _petal_git "$current" "${before[@]:1}" ;;
        draw) _petal_draw "$current" "${before[@]:1}" ;;
        browse) _petal_browse "$current" "${before[@]:1}" ;;
        options) _petal_words "$current" -h --help --json ;;
        help) _petal_words "$current" export import convert check tree dump diff git draw browse options ;;
    esac

    # The shell replaces only what stands behind the last = where it splits words there.
    COMPREPLY=("${COMPREPLY[@]/#/$lead}")
    if [[ $COMP_WORDBREAKS == *=* && $current == *=* ]]; then
        COMPREPLY=("${COMPREPLY[@]#"${current%=*}="}")
    fi
}

complete -F _petal petal
