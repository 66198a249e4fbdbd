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

complete -c petal -f

set -l command __fish_use_subcommand
complete -c petal -n $command -a export -d 'Write a design as a Rose 98 model file'
complete -c petal -n $command -a options -d 'List the options of the bridge'
complete -c petal -n $command -s h -l help -d 'Print help'
complete -c petal -n $command -l version -d 'Print the version'

set -l export '__fish_seen_subcommand_from export'
complete -c petal -n $export -k -a '(__fish_complete_suffix .json)'
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

set -l options '__fish_seen_subcommand_from options'
complete -c petal -n $options -s h -l help -d 'Print help'
complete -c petal -n $options -l json -d 'Print the list as JSON'
