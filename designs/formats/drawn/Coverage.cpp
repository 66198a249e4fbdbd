#include "designs/formats/drawn/Coverage.h"

#include "designs/model/Counts.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

#include <algorithm>

namespace design {

namespace {

constexpr std::string_view notDrawn = "no diagram that comes out shows it";
constexpr std::string_view noSuchProperty = "texts of diagrams do not say it";

void leaveIf(bool isThere, std::string_view kind, const Element& element, Report& report)
{
    if (isThere)
        report.left(kind, element.id, element.name, noSuchProperty);
}

void leaveProperties(const Operation& operation, Report& report)
{
    leaveIf(operation.concurrency != Concurrency::Sequential, "concurrency of an operation", operation, report);
    leaveIf(operation.isVirtual, "virtuality of an operation", operation, report);
    leaveIf(operation.isFriend, "friendship of an operation", operation, report);
    leaveIf(!operation.preCondition.empty(), "precondition of an operation", operation, report);
    leaveIf(!operation.postCondition.empty(), "postcondition of an operation", operation, report);
    leaveIf(!operation.semantics.empty(), "semantics of an operation", operation, report);
}

} // namespace

void Coverage::tell(std::string_view kind, const Element& element, Report& report) const
{
    if (!has(element))
        report.left(kind, element.id, element.name, notDrawn);
}

void Coverage::tellRest(const Classifier& classifier, Report& report) const
{
    tell(nameOf(classifier.kind), classifier, report);
    for (const Attribute& attribute : classifier.attributes)
        tell("attribute", attribute, report);
    for (const Operation& operation : classifier.operations) {
        tell("operation", operation, report);
        if (!has(operation))
            for (const Parameter& parameter : operation.parameters)
                tell("parameter", parameter, report);
    }
    if (!has(classifier))
        for (const Parameter& parameter : classifier.templateParameters)
            tell("parameter", parameter, report);
    for (const Literal& literal : classifier.literals)
        tell("literal", literal, report);
}

void Coverage::tellRest(const Package& root, Report& report) const
{
    forEachPackage(root, [&](const Package& package) {
        if (&package != &root)
            tell("package", package, report);
        for (const Classifier& classifier : package.classifiers)
            tellRest(classifier, report);
        for (const Association& association : package.associations) {
            tell("association", association, report);
            if (!has(association))
                for (const AssociationEnd& end : association.ends)
                    for (const Attribute& qualifier : end.qualifiers)
                        tell("attribute", qualifier, report);
        }
        for (const Relationship& relationship : package.relationships)
            tell(nameOf(relationship.kind), relationship, report);
        for (const Remark& remark : package.remarks)
            report.left("note", remark.id, remark.text, "it stands in no diagram");
    });
}

void leaveProperties(const Classifier& classifier, Report& report)
{
    leaveIf(classifier.visibility != Visibility::Public, "visibility of a class", classifier, report);
    leaveIf(classifier.concurrency != Concurrency::Sequential, "concurrency of a class", classifier, report);
    leaveIf(classifier.isPersistent, "persistence of a class", classifier, report);
    leaveIf(!classifier.cardinality.empty(), "cardinality of a class", classifier, report);
    leaveIf(classifier.space != 0, "space of a class", classifier, report);
    for (const Attribute& attribute : classifier.attributes)
        leaveIf(attribute.containment != Containment::Unspecified, "containment of an attribute", attribute, report);
    for (const Operation& operation : classifier.operations)
        leaveProperties(operation, report);
}

// That the part of a composition is held by value says its diamond.
void leaveProperties(const Association& association, Report& report)
{
    const bool isComposition =
        std::any_of(association.ends.begin(), association.ends.end(),
                    [](const AssociationEnd& end) { return end.aggregation == Aggregation::Composite; });
    for (const AssociationEnd& end : association.ends) {
        const bool isUsual =
            end.containment == Containment::Unspecified || (isComposition && end.containment == Containment::ByValue);
        leaveIf(!isUsual, "containment of an end", end, report);
        leaveIf(end.isFriend, "friendship of an end", end, report);
    }
}

void leaveProperties(const Relationship& relationship, Report& report)
{
    leaveIf(relationship.visibility != Visibility::Public, "visibility of a relation", relationship, report);
    leaveIf(relationship.isVirtual, "virtuality of a relation", relationship, report);
    leaveIf(relationship.isFriend, "friendship of a relation", relationship, report);
}

void leaveLayout(const Diagram& diagram, Report& report)
{
    const auto isPlaced = [](const Box& box) { return box.bounds.has_value(); };
    if (std::any_of(diagram.boxes.begin(), diagram.boxes.end(), isPlaced))
        report.left("places of a diagram", diagram.id, diagram.name,
                    "it is laid out anew; they say what stands above and what beside");
    const auto hasFont = [](const Box& box) { return !box.appearance.fontName.empty() || box.appearance.fontColor; };
    if (std::any_of(diagram.boxes.begin(), diagram.boxes.end(), hasFont))
        report.left("fonts of a diagram", diagram.id, diagram.name, noSuchProperty);
}

} // namespace design
