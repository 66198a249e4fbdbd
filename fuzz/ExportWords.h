#pragma once

#include <array>
#include <string_view>

/// Words in a model's description that choose the options of its export. The first two numbers in it are the scales in
/// percent. Of the type systems the last one holds.
struct ExportWord {
    std::string_view word;
    std::string_view option;
    std::string_view value;
};

inline constexpr std::array exportWords = {
    ExportWord{"as-is", "BP_SUPPORTED_TYPES", "As is"},
    ExportWord{"java", "BP_SUPPORTED_TYPES", "Java"},
    ExportWord{"oracle", "BP_SUPPORTED_TYPES", "Oracle 7.x/8"},
    ExportWord{"foreign-keys", "BP_EXPORT_FOREIGN_KEY_ATTRIBUTES", "True"},
    ExportWord{"qualifiers", "BP_GENERATE_QUALIFIERS", "True"},
    ExportWord{"constraints", "BP_SHOW_CONSTRAINTS_IN_DIAGRAMS", "True"},
    ExportWord{"no-geometry", "BP_USE_GRAPHICAL_INFORMATION", "False"},
};

/// A word that makes the first texts larger than the stream's buffer and gives the first diagram with a note more notes
/// than it has numbers for.
inline constexpr std::string_view enlargingWord = "large";
