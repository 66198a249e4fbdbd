#include "designs/formats/Formats.h"

#include "designs/formats/rose/Reading.h"
#include "designs/formats/shared/Kinds.h"
#include "reader/index/Kinds.h"
#include "text/Utf8.h"
#include "text/Words.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace design {

namespace rose {

namespace {

// Packages of a model that hold classes, by their keys in it.
constexpr const char* logicalView = "root_category";
constexpr const char* useCaseView = "root_usecase_package";

void readPackage(Reading& reading, const Object& object, Package& package);

void readMember(Reading& reading, const Object& object, Package& package)
{
    if (reading.document.missingUnit(object))
        return; // told with the others
    if (object.is("Class_Category"))
        readPackage(reading, object, package.packages.emplace_back());
    else if (isClass(object))
        readClass(reading, object, package);
    else if (isUseCase(object))
        readUseCase(reading, object, package);
    else if (object.is("Association"))
        readAssociation(reading, object, package);
    else if (reader::elementKindOf(object) == reader::ElementKind::none)
        reading.leave(object, nothingOfThisKind);
}

void readPackage(Reading& reading, const Object& object, Package& package)
{
    reading.describe(object, package);
    for (const Object* const member : object.objects("logical_models"))
        readMember(reading, *member, package);
    readRelationships(reading, object, package);
    for (const Object* const diagram : object.objects("logical_presentations"))
        readDiagram(reading, *diagram, object, package);
}

// Rose gives every model a Use Case View, in which nobody may ever have drawn anything.
bool isEmpty(const Package& package)
{
    const auto showsNothing = [](const Diagram& diagram) { return diagram.boxes.empty() && diagram.remarks.empty(); };
    return package.packages.empty() && package.classifiers.empty() && package.associations.empty() &&
           package.relationships.empty() && package.remarks.empty() && package.documentation.empty() &&
           std::ranges::all_of(package.diagrams, showsNothing);
}

// What a package is read of, as opposed to what lies in classes and elsewhere.
bool isMember(const Object& object)
{
    return object.parent() && object.parent()->is("Class_Category");
}

// Components, states and the like, wherever they lie.
void leaveOthers(Reading& reading, const Object& root)
{
    reader::forEachObject(root, [&](const Object& object) {
        switch (reader::elementKindOf(object)) {
        case reader::ElementKind::classifier:
            if (!isClass(object) && !(isUseCase(object) && isMember(object)))
                reading.leave(object, nothingOfThisKind);
            break;
        case reader::ElementKind::component:
        case reader::ElementKind::node:
        case reader::ElementKind::behavior:
            reading.leave(object, nothingOfThisKind);
            break;
        case reader::ElementKind::package:
            if (object.is("SubSystem") && object.parent() != &root)
                reading.leave(object, nothingOfThisKind);
            break;
        default:
            break;
        }
        const auto diagram = reader::diagramKindOf(object);
        const bool isOfPackage =
            isMember(object) || (object.parent() && (isClass(*object.parent()) || isUseCase(*object.parent())));
        if (diagram && !isOfPackage && !object.objects("items").empty())
            reading.leave(object, classDiagramsOnly);
    });
    for (const reader::MissingUnit& unit : reading.document.missingUnits()) {
        reading.report.left(missingUnit, reading.idOf(*unit.stub), unit.fileName, unit.reason);
        reading.kinds.emplace(reading.idOf(*unit.stub), missingUnit);
    }
}

Design readDocument(const reader::Document& document, Report& report)
{
    Reading reading(document, report);
    const Object& root = document.root();
    Design design;
    design.isOrdered = true;
    design.tool = document.files().front().writtenBy;
    design.root.name = reader::shownName(root);
    if (const Object* const logical = root.object(logicalView)) {
        Package useCases;
        if (const Object* const other = root.object(useCaseView))
            readPackage(reading, *other, useCases);
        readPackage(reading, *logical, design.root.packages.emplace_back());
        if (!isEmpty(useCases))
            design.root.packages.push_back(std::move(useCases));
    } else {
        readMember(reading, root, design.root);
    }
    leaveOthers(reading, root);
    design.kinds = std::move(reading.kinds);
    design.trees = std::move(reading.trees);
    design.outsideNames = std::move(reading.outsideNames);
    return design;
}

// The place of a fault, as messages have it; that of a unit begins with its file.
std::string textOf(const reader::Finding& fault, const reader::Document& document)
{
    std::string text;
    if (fault.place.file != document.files().front().name)
        text.append(fault.place.file).append(":");
    return text.append(std::to_string(fault.place.line))
        .append(":")
        .append(std::to_string(fault.place.column))
        .append(": ")
        .append(fault.text);
}

bool recognizes(const Source& source)
{
    std::string_view text = source.text;
    if (text.starts_with(text::byteOrderMark))
        text.remove_prefix(text::byteOrderMark.size());
    constexpr std::size_t farthest = 4096;
    return text::trimmed(text.substr(0, farthest)).starts_with("(object");
}

Design read(const Source& source, Report& report)
{
    try {
        auto document = std::make_shared<const reader::Document>(
            std::string(source.text), source.path.string(), source.reading ? *source.reading : reader::ReadOptions());
        const auto& findings = document->findings();
        const auto fault = std::find_if(findings.begin(), findings.end(), [](const reader::Finding& finding) {
            return finding.severity == reader::Severity::error;
        });
        if (fault != findings.end())
            throw UnreadableDesign(textOf(*fault, *document));
        Design design = readDocument(*document, report);
        design.document = std::move(document);
        return design;
    } catch (const reader::NotPetal& error) {
        throw UnreadableDesign(error.what());
    }
}

} // namespace

} // namespace rose

Format roseFormat()
{
    return {"rose",           "Rose model or controlled unit of any version (.mdl, .cat)",
            {".mdl", ".cat"}, "Class objects in the packages of the Logical View or the Use Case View",
            rose::recognizes, rose::read};
}

} // namespace design
