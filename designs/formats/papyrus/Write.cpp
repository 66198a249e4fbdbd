#include "designs/formats/papyrus/Write.h"

#include "designs/formats/papyrus/Views.h"
#include "designs/formats/shared/Xml.h"
#include "designs/model/Walk.h"

namespace design::papyrus {

namespace {

// By these the tool knows what it can draw in a diagram.
void writeStyles(Notation& notation, std::string_view kind, std::string_view ownerType, std::string_view ownerId)
{
    View(notation, "styles", "notation:StringValueStyle")
        .with("name", "diagram_compatibility_version")
        .with("stringValue", "1.4.0");
    writePart(notation, "styles", "notation:DiagramStyle");
    View style(notation, "styles", "style:PapyrusDiagramStyle");
    style.with("diagramKindId", std::string("org.eclipse.papyrus.uml.diagram.").append(kind));
    writeElement(notation, "owner", ownerType, ownerId);
}

void writeDiagram(Notation& notation, const Diagram& diagram, const Package& owner)
{
    const bool isOfUseCases = diagram.kind == DiagramKind::UseCase;
    const bool isOfModel = &owner == &notation.writing.design.root;
    const std::string_view ownerType = isOfModel ? "uml:Model" : "uml:Package";
    const std::string ownerId = notation.model.identifierOfPackage(owner);
    notation.diagramId = uml2::xmlIdentifier(diagram.id);
    notation.places.clear();
    xml::Element element(notation.xml, "notation:Diagram");
    element.with("xmi:id", notation.diagramId).with("type", isOfUseCases ? "UseCase" : "PapyrusUMLClassDiagram");
    element.with("name", diagram.name).with("measurementUnit", "Pixel");
    for (const Box& box : diagram.boxes)
        writeShape(notation, box);
    writeStyles(notation, isOfUseCases ? "usecase" : "class", ownerType, ownerId);
    writeElement(notation, "element", ownerType, ownerId);
    for (const Line& line : diagram.lines)
        writeEdge(notation, line);
    for (const std::string& text : diagram.notes)
        notation.report.left("note", diagram.id, text, "notes that hang at nothing are elements of packages here");
}

void writeDiagrams(const Writing& writing, const uml2::Writer& model, text::Sink& sink, Report& report)
{
    Notation notation(writing, model, sink, report);
    {
        xml::Element root(notation.xml, "xmi:XMI");
        root.with("xmi:version", "2.0").with("xmlns:xmi", "http://www.omg.org/XMI");
        root.with("xmlns:notation", "http://www.eclipse.org/gmf/runtime/1.0.2/notation");
        root.with("xmlns:style", "http://www.eclipse.org/papyrus/infra/gmfdiag/style");
        root.with("xmlns:uml", "http://www.eclipse.org/uml2/5.0.0/UML");
        forEachPackage(writing.design.root, [&](const Package& package) {
            for (const Diagram& diagram : package.diagrams)
                writeDiagram(notation, diagram, package);
        });
    }
    notation.xml.finish();
}

} // namespace

void write(const Writing& writing, Files& files, Report& report)
{
    const std::string own = writing.ending == ".notation" || writing.ending == ".di" ? writing.ending : ".uml";
    const auto begin = [&](const std::string& ending) -> text::Sink& {
        return files.begin({ending == own ? "" : writing.stem + ending});
    };
    uml2::Writer model(writing, report);
    {
        pugi::xml_document document;
        model.write(document.root());
        xml::save(document, begin(".uml"));
    }
    writeDiagrams(writing, model, begin(".notation"), report);
    begin(".di").write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xmi:XMI xmi:version=\"2.0\" "
                       "xmlns:xmi=\"http://www.omg.org/XMI\"/>\n");
}

} // namespace design::papyrus
