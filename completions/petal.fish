# Completion of the petal command for fish.

function __petal_assignments
    printf 'BP_SUPPORTED_TYPES=%s\n' 'As is' C++ Java 'Oracle 7.x/8'
    for name in \
            BP_EXPORT_FOREIGN_KEY_ATTRIBUTES \
            BP_GENERATE_QUALIFIERS \
            BP_SHOW_CONSTRAINTS_IN_DIAGRAMS \
            BP_USE_GRAPHICAL_INFORMATION
        printf '%s\n' $name=True $name=False
    end
    printf '%s=\n' \
        BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM \
        BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM
end

function __petal_formats
    petal import --list-formats 2>/dev/null | string replace -r ' +' \t
end

function __petal_formats_out
    petal convert --list-formats 2>/dev/null | string match -r '^\S+(?=.* out )'
end

# Folders, and the files with one of these endings.
function __petal_files
    complete -C '__fish_command_without_completions '(commandline -ct) |
        string match -r '^.*(?:/|\.(?:'(string join '|' -- $argv)'))$'
end

# The names of the diagrams in the files of the command line.
function __petal_diagrams
    set -l files (string match -r '.*\.(?:mdl|cat|sub|prc)$' -- (commandline -opc))
    test -n "$files"; and petal draw --list --quiet -- $files 2>/dev/null | string replace -r '.*\t' '' | string replace -r '.*::' ''
end

complete -c petal -f

set -l command __fish_use_subcommand
complete -c petal -n $command -a export -d 'Write a design as a Rose 98 model file'
complete -c petal -n $command -a import -d 'Make a model file of a design'
complete -c petal -n $command -a convert -d 'Write a design in the format of another tool'
complete -c petal -n $command -a check -d 'Say what is wrong with Rose files'
complete -c petal -n $command -a tree -d 'Print the outline of a Rose file'
complete -c petal -n $command -a dump -d 'Write everything in a Rose file as JSON, CSV or a database'
complete -c petal -n $command -a diff -d 'Tell what is different in two Rose files'
complete -c petal -n $command -a git -d 'Let git compare Rose files'
complete -c petal -n $command -a draw -d 'Draw the diagrams of a Rose file'
complete -c petal -n $command -a browse -d 'Make one page for a browser of a Rose file'
complete -c petal -n $command -a options -d 'List the options of the bridge'
complete -c petal -n $command -a help -d 'Describe a command'
complete -c petal -n $command -s h -l help -d 'Print help'
complete -c petal -n $command -s V -l version -d 'Print the version'

set -l export '__fish_seen_subcommand_from export'
complete -c petal -n $export -a '(__petal_files json mdj xml xmi uml ecore mdl cat)'
complete -c petal -n $export -s h -l help -d 'Print help'
complete -c petal -n $export -s o -l output -r -F -d 'The file to write, - for standard output'
complete -c petal -n $export -l option -x -a '(__petal_assignments)' -d 'Set an option of the bridge'
complete -c petal -n $export -l types -x -a 'as-is c++ java oracle' -d 'Type system of type names'
complete -c petal -n $export -l foreign-keys -d 'Write attributes that belong to foreign keys'
complete -c petal -n $export -l qualifiers -d 'Make qualifiers from the keys behind the roles'
complete -c petal -n $export -l constraints -d 'Show constraints on diagrams'
complete -c petal -n $export -l no-geometry -d 'Leave the geometry of the model out'
complete -c petal -n $export -l scale -x -d 'Scale of diagrams in percent'
complete -c petal -n $export -l x-scale -x -d 'Horizontal scale of diagrams in percent'
complete -c petal -n $export -l y-scale -x -d 'Vertical scale of diagrams in percent'
complete -c petal -n $export -l log -r -F -d 'Write the messages of the export, - for standard error'
complete -c petal -n $export -s q -l quiet -d 'Print nothing but errors'
complete -c petal -n $export -l stats -d 'Print what the export cost'
complete -c petal -n $export -l stats-json -r -F -d 'Write what the export cost as JSON'

complete -c petal -n $export -l from -x -a '(__petal_formats)' -d 'Format of the design'
complete -c petal -n $export -l layout -d 'Place what has no place, in a model file too'
complete -c petal -n $export -l charset -x -d 'Encoding of the files'
complete -c petal -n $export -l path -x -d 'Folder behind a symbol in the paths of units'
complete -c petal -n $export -l units-within -x -a '(__fish_complete_directories)' -d 'Read units from this folder alone'
complete -c petal -n $export -l no-units -d 'Leave controlled units out'
complete -c petal -n $export -l strict -d 'Write nothing when there are warnings'
complete -c petal -n $export -l no-layout -d 'Place nothing that has no place'
complete -c petal -n $export -l report -r -F -d 'Write what was left out or made up, and warnings, as JSON'
complete -c petal -n $export -l color -x -a 'auto always never' -d 'Colours for errors, warnings and notes'

set -l import '__fish_seen_subcommand_from import'
complete -c petal -n $import -a '(__petal_files json mdj xml xmi uml ecore mdl cat)'
complete -c petal -n $import -s h -l help -d 'Print help'
complete -c petal -n $import -s o -l output -r -F -d 'The file to write, - for standard output'
complete -c petal -n $import -l from -x -a '(__petal_formats)' -d 'Format of the design'
complete -c petal -n $import -l layout -d 'Place what has no place, in a model file too'
complete -c petal -n $import -l no-layout -d 'Place nothing that has no place'
complete -c petal -n $import -l report -r -F -d 'Write what was left out or made up, and warnings, as JSON'
complete -c petal -n $import -l charset -x -d 'Encoding of the files'
complete -c petal -n $import -l path -x -d 'Folder behind a symbol in the paths of units'
complete -c petal -n $import -l units-within -x -a '(__fish_complete_directories)' -d 'Read units from this folder alone'
complete -c petal -n $import -l no-units -d 'Leave controlled units out'
complete -c petal -n $import -s q -l quiet -d 'Print nothing but errors'
complete -c petal -n $import -l list-formats -d 'List the formats of designs'
complete -c petal -n $import -l color -x -a 'auto always never' -d 'Colours for errors, warnings and notes'

set -l convert '__fish_seen_subcommand_from convert'
complete -c petal -n $convert -a '(__petal_files json mdj xml xmi uml ecore mdl cat)'
complete -c petal -n $convert -s h -l help -d 'Print help'
complete -c petal -n $convert -s o -l output -r -F -d 'The file to write, - for standard output'
complete -c petal -n $convert -l from -x -a '(__petal_formats)' -d 'Format of the design'
complete -c petal -n $convert -l to -x -a '(__petal_formats_out)' -d 'Format to write'
complete -c petal -n $convert -l layout -d 'Place what has no place, in a model file too'
complete -c petal -n $convert -l no-layout -d 'Place nothing that has no place'
complete -c petal -n $convert -l report -r -F -d 'Write what was left out or made up, and warnings, as JSON'
complete -c petal -n $convert -l charset -x -d 'Encoding of the files'
complete -c petal -n $convert -l path -x -d 'Folder behind a symbol in the paths of units'
complete -c petal -n $convert -l units-within -x -a '(__fish_complete_directories)' -d 'Read units from this folder alone'
complete -c petal -n $convert -l no-units -d 'Leave controlled units out'
complete -c petal -n $convert -s q -l quiet -d 'Print nothing but errors'
complete -c petal -n $convert -l list-formats -d 'List the formats'
complete -c petal -n $convert -l color -x -a 'auto always never' -d 'Colours for errors, warnings and notes'

set -l check '__fish_seen_subcommand_from check'
complete -c petal -n $check -a '(__petal_files mdl cat sub prc)'
complete -c petal -n $check -s h -l help -d 'Print help'
complete -c petal -n $check -l charset -x -d 'Encoding of the files'
complete -c petal -n $check -l path -x -d 'Folder behind a symbol in the paths of units'
complete -c petal -n $check -l units-within -x -a '(__fish_complete_directories)' -d 'Read units from this folder alone'
complete -c petal -n $check -l no-units -d 'Leave controlled units out'
complete -c petal -n $check -l json -d 'Print the findings as JSON'
complete -c petal -n $check -l notes -d 'Also what says nothing against the file'
complete -c petal -n $check -l fail-on -x -a 'note warning error' -d 'Exit with 1 for findings as bad as this or worse'
complete -c petal -n $check -s q -l quiet -d 'Print no numbers of findings'
complete -c petal -n $check -l color -x -a 'auto always never' -d 'Colours for errors, warnings and notes'

set -l tree '__fish_seen_subcommand_from tree'
complete -c petal -n $tree -a '(__petal_files mdl cat sub prc)'
complete -c petal -n $tree -s h -l help -d 'Print help'
complete -c petal -n $tree -l depth -x -d 'Number of levels'
complete -c petal -n $tree -l full -d 'One fact a line, in a stable order'
complete -c petal -n $tree -l charset -x -d 'Encoding of the file'
complete -c petal -n $tree -l path -x -d 'Folder behind a symbol in the paths of units'
complete -c petal -n $tree -l units-within -x -a '(__fish_complete_directories)' -d 'Read units from this folder alone'
complete -c petal -n $tree -l no-units -d 'Leave controlled units out'
complete -c petal -n $tree -l color -x -a 'auto always never' -d 'Colours for errors, warnings and notes'

set -l dump '__fish_seen_subcommand_from dump'
complete -c petal -n $dump -a '(__petal_files mdl cat sub prc)'
complete -c petal -n $dump -s h -l help -d 'Print help'
complete -c petal -n $dump -l json -d 'As one tree in JSON'
complete -c petal -n $dump -s o -l output -r -F -d 'The JSON file to write'
complete -c petal -n $dump -l csv -x -a '(__fish_complete_directories)' -d 'As tables, a CSV file each in this folder'
complete -c petal -n $dump -l sqlite -r -F -d 'As tables in an SQLite database, - for standard output'
complete -c petal -n $dump -l charset -x -d 'Encoding of the files'
complete -c petal -n $dump -l path -x -d 'Folder behind a symbol in the paths of units'
complete -c petal -n $dump -l units-within -x -a '(__fish_complete_directories)' -d 'Read units from this folder alone'
complete -c petal -n $dump -l no-units -d 'Leave controlled units out'
complete -c petal -n $dump -s q -l quiet -d 'Print nothing but errors'
complete -c petal -n $dump -l color -x -a 'auto always never' -d 'Colours for errors, warnings and notes'

set -l diff '__fish_seen_subcommand_from diff'
complete -c petal -n $diff -a '(__petal_files mdl cat sub prc json mdj xml xmi uml ecore)'
complete -c petal -n $diff -s h -l help -d 'Print help'
complete -c petal -n $diff -l model-only -d 'Nothing of diagrams'
complete -c petal -n $diff -l diagrams-only -d 'Nothing but diagrams'
complete -c petal -n $diff -l only -x -a 'added removed changed moved' -d 'Only what was so'
complete -c petal -n $diff -l all -d 'Also what tools change by themselves'
complete -c petal -n $diff -l json -d 'As JSON'
complete -c petal -n $diff -l stat -d 'Numbers of changes alone'
complete -c petal -n $diff -l html -r -F -d 'A page for a browser instead, - for standard output'
complete -c petal -n $diff -l charset -x -d 'Encoding of the files'
complete -c petal -n $diff -l path -x -d 'Folder behind a symbol in the paths of units'
complete -c petal -n $diff -l units-within -x -a '(__fish_complete_directories)' -d 'Read units from this folder alone'
complete -c petal -n $diff -l no-units -d 'Leave controlled units out'
complete -c petal -n $diff -s q -l quiet -d 'The exit code alone'
complete -c petal -n $diff -l color -x -a 'auto always never' -d 'Colours of what is printed'

set -l git '__fish_seen_subcommand_from git'
complete -c petal -n $git -s h -l help -d 'Print help'
complete -c petal -n $git -l enable -d 'Let git compare Rose files with petal'
complete -c petal -n $git -l disable -d 'Undo that'
complete -c petal -n $git -l diff -d 'Compare two files, for git'
complete -c petal -n $git -l text -d 'Write a file as text, for git'

set -l draw '__fish_seen_subcommand_from draw'
complete -c petal -n $draw -a '(__petal_files mdl cat sub prc)'
complete -c petal -n $draw -s h -l help -d 'Print help'
complete -c petal -n $draw -l diagram -x -a '(__petal_diagrams)' -d 'Name of a diagram to draw'
complete -c petal -n $draw -s o -l output -r -F -d 'Folder or file for the pictures, - for standard output'
complete -c petal -n $draw -l format -x -a 'svg png pdf' -d 'Format of the pictures'
complete -c petal -n $draw -l list -d 'List the diagrams'
complete -c petal -n $draw -l charset -x -d 'Encoding of the file'
complete -c petal -n $draw -l path -x -d 'Folder behind a symbol in the paths of units'
complete -c petal -n $draw -l units-within -x -a '(__fish_complete_directories)' -d 'Read units from this folder alone'
complete -c petal -n $draw -l no-units -d 'Leave controlled units out'
complete -c petal -n $draw -s q -l quiet -d 'Print nothing but errors'
complete -c petal -n $draw -l json -d 'The list as JSON'
complete -c petal -n $draw -l color -x -a 'auto always never' -d 'Colours for errors, warnings and notes'

set -l browse '__fish_seen_subcommand_from browse'
complete -c petal -n $browse -a '(__petal_files mdl cat sub prc)'
complete -c petal -n $browse -s h -l help -d 'Print help'
complete -c petal -n $browse -s o -l output -r -F -d 'The page to write, - for standard output'
complete -c petal -n $browse -l charset -x -d 'Encoding of the file'
complete -c petal -n $browse -l path -x -d 'Folder behind a symbol in the paths of units'
complete -c petal -n $browse -l units-within -x -a '(__fish_complete_directories)' -d 'Read units from this folder alone'
complete -c petal -n $browse -l no-units -d 'Leave controlled units out'
complete -c petal -n $browse -s q -l quiet -d 'Print nothing but errors'
complete -c petal -n $browse -l color -x -a 'auto always never' -d 'Colours for errors, warnings and notes'

set -l options '__fish_seen_subcommand_from options'
complete -c petal -n $options -s h -l help -d 'Print help'
complete -c petal -n $options -l json -d 'Print the list as JSON'

complete -c petal -n '__fish_seen_subcommand_from help' -a 'export import convert check tree dump diff git draw browse options'
