#include "designs/formats/plantuml/PlantUml.h"

#include "designs/formats/drawn/OtherDiagrams.h"
#include "designs/formats/Formats.h"
#include "designs/formats/plantuml/Notation.h"
#include "designs/formats/plantuml/Others.h"
#include "designs/settling/LeftDiagram.h"

#include <utility>

namespace design {

namespace plantuml {

namespace {

std::string_view wordOf(DiagramKind kind)
{
    return kind == DiagramKind::UseCase ? "use case" : "class";
}

// @startuml
// ' Logical View::Orders
// title Main
// ...
// @enduml
std::string framed(std::string_view name, std::string_view owner, std::string_view documentation, std::string_view text)
{
    std::string out = "@startuml\n";
    addComment(out, "", owner);
    addComment(out, "", documentation);
    if (name.find_first_not_of(' ') != std::string_view::npos)
        out.append("title ").append(escapedStart(name)).append("\n");
    return out.append(text).append("@enduml\n");
}

std::string framedTextOf(const rose::DrawnDiagram& diagram)
{
    const std::string lines = linesOf(diagram);
    return lines.empty() ? lines : framed(diagram.name, diagram.path, diagram.documentation, lines);
}

void writeDiagrams(const Package& package, const Common& common, std::vector<WrittenFile>& files)
{
    for (const Diagram& diagram : package.diagrams) {
        if (diagram.boxes.empty() && diagram.notes.empty()) {
            leaveDiagram(diagram, common.writing.catalogue, "there is nothing in it", common.report);
            continue;
        }
        common.coverage.add(package); // its name is told
        const std::string owner = common.homes.pathOf(package);
        files.push_back({diagram.name,
                         framed(diagram.name, owner, diagram.documentation, textOf(diagram, package, common)),
                         std::string(wordOf(diagram.kind)), package.name});
    }
}

// All diagrams of a file stand one behind the other.
void writeInOneFile(const std::vector<WrittenFile>& diagrams, text::Sink& sink)
{
    std::string_view separator;
    for (const WrittenFile& diagram : diagrams) {
        sink.write(separator);
        sink.write(diagram.text);
        separator = "\n";
    }
}

void write(const Writing& writing, Files& files, Report& report)
{
    const std::vector<WrittenFile> diagrams = writeAllDiagrams(writing, writeDiagrams, framedTextOf, report);
    if (writing.isFolder)
        writeEach(diagrams, files);
    else if (!diagrams.empty())
        writeInOneFile(diagrams, files.begin({}));
}

} // namespace

} // namespace plantuml

Format plantUmlFormat()
{
    Format format{"plantuml", "PlantUML, a file or a part of one for each diagram (.puml)", {".puml", ".plantuml"}, ""};
    format.write = plantuml::write;
    format.isWrittenByDiagram = true;
    format.hasPlaces = false;
    format.drawsDocument = true;
    return format;
}

} // namespace design
