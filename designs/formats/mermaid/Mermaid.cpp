#include "designs/formats/mermaid/Mermaid.h"

#include "designs/formats/drawn/OtherDiagrams.h"
#include "designs/formats/Formats.h"
#include "designs/settling/LeftDiagram.h"

#include <utility>

namespace design {

namespace mermaid {

namespace {

void writeDiagrams(const Package& package, const Common& common, std::vector<WrittenFile>& files)
{
    for (const Diagram& diagram : package.diagrams) {
        const bool isEmpty = diagram.boxes.empty() && diagram.notes.empty();
        if (isEmpty || diagram.kind != DiagramKind::Class) {
            leaveDiagram(diagram, common.writing.catalogue,
                         isEmpty ? "there is nothing in it" : "Mermaid has no use case diagrams", common.report);
            continue;
        }
        common.coverage.add(package); // its name is told
        files.push_back({diagram.name, textOf(diagram, package, common), "class", package.name});
    }
}

void write(const Writing& writing, Files& files, Report& report)
{
    const std::vector<WrittenFile> diagrams = writeAllDiagrams(writing, writeDiagrams, textOf, report);
    if (writing.isFolder)
        return writeEach(diagrams, files);
    if (diagrams.size() > 1)
        throw UnwritableDesign("a file of Mermaid holds one diagram, and there are " + std::to_string(diagrams.size()) +
                               "; give a folder (-o DIR/)");
    for (const WrittenFile& diagram : diagrams)
        files.begin({}).write(diagram.text);
}

} // namespace

std::string textOf(const rose::DrawnDiagram& diagram)
{
    switch (diagram.kind) {
    case reader::DiagramKind::sequence:
        return sequenceOf(diagram);
    case reader::DiagramKind::state:
    case reader::DiagramKind::activity:
        return statesOf(diagram);
    default:
        return "";
    }
}

} // namespace mermaid

Format mermaidFormat()
{
    Format format{
        "mermaid", "Mermaid, a file for each class, sequence, state and activity diagram (.mmd)", {".mmd"}, ""};
    format.write = mermaid::write;
    format.isWrittenByDiagram = true;
    format.hasPlaces = false;
    format.drawsDocument = true;
    return format;
}

} // namespace design
