#pragma once

#include "designs/formats/drawn/Coverage.h"
#include "designs/formats/drawn/Groups.h"
#include "designs/formats/rose/DrawnDiagram.h"
#include "designs/formats/WrittenFiles.h"

#include <string>
#include <vector>

namespace design {

/// What the texts of all diagrams of a design have in common.
struct Common {
    const Writing& writing;
    const Homes& homes;
    Coverage& coverage;
    Report& report;
};

/// Adds the texts of a package's own diagrams, and tells which of them the format has not.
using WriteDiagrams = void (*)(const Package& package, const Common& common, std::vector<WrittenFile>& files);

/// The text of a diagram of a kind that a design has not; empty when the format has nothing for that kind.
using TextOfDrawn = std::string (*)(const rose::DrawnDiagram& diagram);

/// Writes the diagrams of the Rose file that the design was read from, but for those that the design has, and takes
/// back what the report says of them and of what they show.
void writeOtherDiagrams(const Design& design, TextOfDrawn textOf, std::vector<WrittenFile>& files, Report& report);

/// The texts of all diagrams: those of the design, then those that only its Rose file has. What is in none of them is
/// told.
[[nodiscard]] std::vector<WrittenFile> writeAllDiagrams(const Writing& writing, WriteDiagrams writeDiagrams,
                                                        TextOfDrawn textOf, Report& report);

/// A file for each diagram.
void writeEach(const std::vector<WrittenFile>& diagrams, Files& files);

/// The figures in the order in which a text declares them: what stands in another directly behind it, one level deeper.
struct Nested {
    const rose::Figure* figure = nullptr;
    std::size_t level = 0;
    bool isAround = false; ///< others follow that stand in it
};
[[nodiscard]] std::vector<Nested> nested(const rose::DrawnDiagram& diagram);

} // namespace design
