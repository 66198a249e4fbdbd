#pragma once

// What `--help` says above the options: a line that lists of commands show, and examples.

inline constexpr const char* mainHelp =
    R"(Look into Rational Rose model files (.mdl), and bring designs into them.

Examples:
  petal browse old.mdl                    the whole file as a page for a browser
  petal draw old.mdl -o pictures/         its diagrams as pictures
  petal check old.mdl                     is it whole?
  petal dump old.mdl --sqlite old.db      everything in it, for queries
  petal export orders.model.json          a model file as a Rose file
  petal export orders.mdj                 the same of a design of another tool
)";

inline constexpr const char* exportHelp = R"(Write a model file, or a design of another tool, as a Rose file.

Examples:
  petal export orders.model.json -o orders.mdl
  petal export orders.model.json --types oracle --foreign-keys --scale 150
  petal export *.model.json -o rose/
)";

inline constexpr const char* importHelp = R"(Make a model file of a design that another tool has saved.

Examples:
  petal import orders.mdj -o orders.model.json
  petal import --list-formats
)";

inline constexpr const char* convertHelp = R"(Write a design of one tool in the format of another.

Examples:
  petal convert orders.mdl -o orders.xmi --to ea
  petal convert orders.mdl -o diagrams/ --to plantuml
  petal convert orders.mdj -o orders.ecore
  petal convert --list-formats
)";

inline constexpr const char* checkHelp = R"(Say what is wrong with Rose files, one finding a line.

Examples:
  petal check orders.mdl
  petal check old.mdl --path FRAMEWORK_PATH=shared --json
  petal check *.mdl --fail-on error
)";

inline constexpr const char* treeHelp = R"(Print the outline of Rose files.

Examples:
  petal tree orders.mdl
  petal tree orders.mdl --depth 2
)";

inline constexpr const char* dumpHelp = R"(Write everything in a Rose file as JSON, CSV or an SQLite database.

Examples:
  petal dump orders.mdl --json -o orders.json
  petal dump orders.mdl --sqlite orders.db
  petal dump orders.mdl --csv tables/
)";

inline constexpr const char* drawHelp = R"(Draw the diagrams of Rose files as pictures.

Examples:
  petal draw orders.mdl -o pictures/
  petal draw orders.mdl --diagram Main -o main.png
  petal draw old.mdl --list
)";

inline constexpr const char* diffHelp = R"(Tell what is different in two Rose files.

Examples:
  petal diff orders.old.mdl orders.mdl
  petal diff orders.mdl orders.mdj
  petal diff orders.old.mdl orders.mdl --model-only --only added
  petal diff orders.old.mdl orders.mdl --html changes.html
)";

inline constexpr const char* gitHelp = R"(Let git compare Rose files in the words of the model.

Examples:
  petal git --enable
  petal git --disable
)";

inline constexpr const char* browseHelp = R"(Make a page for a browser of a Rose file, with all that is in it.

Examples:
  petal browse orders.mdl
  petal browse old.mdl -o old.html --path FRAMEWORK_PATH=shared
  petal browse *.mdl -o pages/
)";

inline constexpr const char* optionsHelp = R"(List the options of the bridge, the part that writes Rose files.

Examples:
  petal options
  petal options --json
)";

inline constexpr const char* helpHelp = R"(Describe a command.

Examples:
  petal help
  petal help export
)";
