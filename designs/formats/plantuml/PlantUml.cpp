#include "designs/formats/plantuml/PlantUml.h"

#include "designs/formats/drawn/OtherDiagrams.h"
#include "designs/formats/Formats.h"
#include "designs/formats/plantuml/Notation.h"
#include "designs/formats/plantuml/Others.h"

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
std::vector<WrittenFile> inOneFile(const std::vector<WrittenFile>& files)
{
    std::string all;
    for (const WrittenFile& file : files)
        all.append(all.empty() ? "" : "\n").append(file.text);
    return {{"", std::move(all)}};
}

std::vector<WrittenFile> write(const Writing& writing, Report& report)
{
    std::vector<WrittenFile> files = writeAllDiagrams(writing, writeDiagrams, framedTextOf, report);
    return writing.isFolder || files.empty() ? std::move(files) : inOneFile(files);
}

} // namespace

} // namespace plantuml

Format plantUmlFormat()
{
    Format format{"plantuml", "PlantUML, a file or a part of one for each diagram (.puml)", {".puml", ".plantuml"}, ""};
    format.write = plantuml::write;
    format.isWrittenByDiagram = true;
    format.hasPlaces = false;
    return format;
}

} // namespace design
