#include "modelfile/write/ModelOutput.h"

namespace modelfile {

namespace {

constexpr std::size_t deepestPackageLevel = 512;

// What a model file calls the kind of an element; null for one that it does not have.
const char* kindOfElement(const KivObject* element)
{
    switch (element->elementType) {
    case KivElementType::Note:
        return "note";
    case KivElementType::Class:
        return "class";
    case KivElementType::Association:
        return "association";
    case KivElementType::Generalization:
        return "generalization";
    case KivElementType::Dependency:
        return "dependency";
    case KivElementType::Realization:
        return "realization";
    default:
        return nullptr;
    }
}

void writeNote(ModelOutput& out, const KivNote& note)
{
    out.text(note, "text", note.description);
    if (!note.getName().isEmpty())
        out.lose(note, "a note has no name in a model file");
}

void writeElement(ModelOutput& out, const KivObject& element)
{
    out.json.member("kind", kindOfElement(&element));
    switch (element.elementType) {
    case KivElementType::Class:
        return writeClass(out, static_cast<const KivClass&>(element));
    case KivElementType::Association:
        return writeAssociation(out, static_cast<const KivAssociation&>(element));
    case KivElementType::Generalization:
        return writeGeneralization(out, static_cast<const KivGeneralization&>(element));
    case KivElementType::Dependency:
        return writeDependency(out, static_cast<const KivDependency&>(element));
    case KivElementType::Realization:
        return writeRealization(out, static_cast<const KivRealization&>(element));
    default:
        return writeNote(out, static_cast<const KivNote&>(element));
    }
}

void writeDiagram(ModelOutput& out, const KivDiagram& diagram, const KivPackage& holder)
{
    if (diagram.elementType != KivElementType::ClassDiagram)
        out.json.member("kind", "diagram");
    out.common(diagram);
    out.projections(diagram);
    if (diagram.elementType != KivElementType::ClassDiagram)
        return;
    const auto& classDiagram = static_cast<const KivClassDiagram&>(diagram);
    if (classDiagram.package != &holder)
        out.lose(diagram, "its package is not the one that lists it");
    out.references(diagram, "elements", classDiagram.elements);
}

void writePackage(ModelOutput& out, const KivPackage& package, std::size_t level)
{
    if (package.elementType != KivElementType::DesignPackage)
        out.json.member("kind", "package");
    out.common(package);
    out.projections(package);
    writeContents(out, package, level);
}

} // namespace

void writeContents(ModelOutput& out, const KivPackage& package, std::size_t level)
{
    out.list("modelElements", package.modelElements, package, kindOfElement,
             [&](const KivObject& element, std::size_t) { writeElement(out, element); });
    if (level <= deepestPackageLevel)
        out.list("childPackages", "package", package.childPackages, package,
                 [&](const KivPackage& child, std::size_t) { writePackage(out, child, level + 1); });
    else if (!package.childPackages.isEmpty())
        out.lose(package, "packages are nested deeper than 512 levels");
    out.list("diagrams", "diagram", package.diagrams, package,
             [&](const KivDiagram& diagram, std::size_t) { writeDiagram(out, diagram, package); });
}

} // namespace modelfile
