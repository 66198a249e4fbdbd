#include "designs/formats/Formats.h"

#include "designs/formats/staruml/Reading.h"
#include "designs/formats/staruml/Write.h"
#include "text/Words.h"

#include <array>
#include <utility>

namespace design {

namespace staruml {

namespace {

struct PackageType {
    std::string_view type;
    std::string_view stereotype;
};
constexpr std::array packageTypes = {
    PackageType{"UMLModel", ""},
    PackageType{"UMLPackage", ""},
    PackageType{"UMLSubsystem", "subsystem"},
    PackageType{"UMLProfile", "profile"},
};

// Object and package diagrams show classes and their relations, too.
constexpr std::array<std::string_view, 4> diagramTypes = {"UMLClassDiagram", "UMLObjectDiagram", "UMLPackageDiagram",
                                                          "UMLUseCaseDiagram"};

void readContent(Reading& reading, const Object& object, Package& package)
{
    reading.describe(object, package, package);
    json::forEach(object, "ownedElements", [&](const Object& member) { readMember(reading, member, package); });
}

void readPackage(Reading& reading, const Object& object, const PackageType& type, Package& parent)
{
    Package package;
    readContent(reading, object, package);
    if (package.stereotype.empty())
        package.stereotype = type.stereotype;
    parent.packages.push_back(std::move(package));
}

// The value of the first "_type" near the beginning.
std::string_view firstType(std::string_view text)
{
    constexpr std::size_t farthest = 4096;
    text = text.substr(0, farthest);
    constexpr std::string_view key = "\"_type\"";
    const std::size_t at = text.find(key);
    if (at == std::string_view::npos)
        return {};
    std::string_view rest = text::trimmed(text.substr(at + key.size()));
    if (!rest.starts_with(':'))
        return {};
    rest = text::trimmed(rest.substr(1));
    return rest.starts_with('"') ? rest.substr(1, rest.find('"', 1) - 1) : std::string_view();
}

// Also with the marks of a merge conflict in it, so that they can be reported.
bool recognizes(const Source& source)
{
    const std::string_view type = firstType(source.text);
    return type == "Project" || type.starts_with("UML");
}

Design read(const Source& source, Report& report)
{
    const json::Document document(source.text);
    Object project;
    if (document.root().get(project) != simdjson::SUCCESS)
        return {};
    Reading reading(document.root(), report);
    Design design;
    design.tool = "StarUML";
    if (typeOf(project) == "Project")
        readContent(reading, project, design.root);
    else
        readMember(reading, project, design.root);
    design.kinds = std::move(reading.kinds);
    return design;
}

} // namespace

bool isPackage(std::string_view type)
{
    return rowOf(packageTypes, type);
}

void readMember(Reading& reading, const Object& object, Package& package)
{
    const std::string_view type = typeOf(object);
    if (const auto* const packageType = rowOf(packageTypes, type))
        readPackage(reading, object, *packageType, package);
    else if (const auto* const classifierType = classifierOf(type))
        readClassifier(reading, object, *classifierType, package);
    else if (isRelation(type))
        readRelation(reading, object, package);
    else if (isOneOf(diagramTypes, type))
        readDiagram(reading, object, package);
    else if (type != "UMLConstraint" && type != "UMLAssociationClassLink") // what they belong to has them
        reading.leave(object);
}

} // namespace staruml

Format starUmlFormat()
{
    return {"staruml",
            "StarUML project (.mdj)",
            {".mdj", ".mfj"},
            "UMLClass, UMLInterface, UMLDataType or UMLEnumeration elements in the ownedElements of a Project",
            staruml::recognizes,
            staruml::read,
            staruml::write};
}

} // namespace design
