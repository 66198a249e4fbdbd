#include "designs/formats/ecore/Plan.h"

#include "designs/formats/ecore/Types.h"
#include "designs/model/Counts.h"
#include "designs/model/Walk.h"
#include "designs/settling/Settling.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace design::ecore {

namespace {

constexpr std::string_view javaClassStereotype = "javaclass";

bool holdsClassifiers(const Package& package)
{
    bool holds = false;
    forEachPackage(package, [&](const Package& each) {
        const auto isHeld = [](const Classifier& classifier) { return classifier.kind != ClassifierKind::UseCase; };
        holds = holds || std::any_of(each.classifiers.begin(), each.classifiers.end(), isHeld);
    });
    return holds;
}

// "order" of "Order".
std::string smallFirst(std::string name)
{
    if (!name.empty())
        name.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(name.front())));
    return name;
}

bool isDataType(const Classifier& classifier)
{
    const auto isJavaClass = [](const Attribute& each) { return each.stereotype == javaClassStereotype; };
    return classifier.operations.empty() &&
           std::all_of(classifier.attributes.begin(), classifier.attributes.end(), isJavaClass);
}

} // namespace

std::string_view propertyOf(const Element& element, std::string_view name)
{
    const auto found =
        std::find_if(element.properties.begin(), element.properties.end(),
                     [&](const Property& property) { return property.name == name && property.tool == "Ecore"; });
    return found == element.properties.end() ? std::string_view() : std::string_view(found->value);
}

std::string javaClassOf(const Classifier& dataType)
{
    for (const Attribute& attribute : dataType.attributes)
        if (attribute.stereotype == javaClassStereotype)
            return attribute.name;
    return std::string(propertyOf(dataType, "instanceClassName"));
}

Plan::Plan(const Writing& theWriting, Report& theReport)
    : writing(theWriting), report(theReport), outermostPackage(&theWriting.design.root)
{
    findOutermost();
    findMetaclasses();
    namePackage(*outermostPackage, "#/");
    planSupertypes();
    dropCycles();
    planAttributes();
    forEachPackage(writing.design.root, [&](const Package& package) {
        for (const Association& association : package.associations)
            planAssociation(association);
    });
    makeUniqueAmongInherited();
}

// A package around a single one and the placeholders, such as the model of a tool or the Logical View of Rose, is no
// package of Ecore.
void Plan::findOutermost()
{
    const std::vector<Package>& packages = writing.design.root.packages;
    if (!packages.empty() && packages.back().name == placeholderPackage)
        placeholders = &packages.back();
    for (;;) {
        const Package& package = *outermostPackage;
        const Package* only = nullptr;
        std::size_t count = 0;
        for (const Package& child : package.packages)
            if (&child != placeholders && holdsClassifiers(child)) {
                only = &child;
                ++count;
            }
        if (count != 1 || !package.classifiers.empty())
            return;
        report.left("package", package.id, package.name, "it holds nothing but the outermost package of the file");
        for (const Package& child : package.packages)
            if (&child != only && &child != placeholders)
                leavePackage(child);
        outermostPackage = only;
    }
}

// One that lies outside of the outermost package holds no classes, but may hold use cases.
void Plan::leavePackage(const Package& package)
{
    forEachPackage(package, [&](const Package& each) {
        report.left("package", each.id, each.name, "there is no class in it");
        for (const Classifier& useCase : each.classifiers)
            report.left("use case", useCase.id, useCase.name, "Ecore has none");
    });
}

std::vector<const Package*> Plan::packagesIn(const Package& package) const
{
    std::vector<const Package*> children;
    for (const Package& child : package.packages)
        children.push_back(&child);
    if (&package == outermostPackage && placeholders && &package != &writing.design.root)
        children.push_back(placeholders);
    return children;
}

void Plan::forEachPackageOfFile(const std::function<void(const Package&)>& visit) const
{
    forEachPackage(*outermostPackage, visit);
    if (placeholders && outermostPackage != &writing.design.root)
        forEachPackage(*placeholders, visit);
}

void Plan::findMetaclasses()
{
    std::unordered_set<std::string_view> joined;
    forEachPackage(writing.design.root, [&](const Package& package) {
        for (const Association& association : package.associations)
            for (const AssociationEnd& end : association.ends)
                joined.insert(end.participant.id);
        for (const Relationship& relationship : package.relationships)
            if (relationship.kind != RelationshipKind::Dependency) {
                joined.insert(relationship.client.id);
                joined.insert(relationship.supplier.id);
            }
    });
    forEachPackageOfFile([&](const Package& package) {
        for (const Classifier& classifier : package.classifiers) {
            Metaclass metaclass = Metaclass::Class;
            const bool isPlain = !joined.contains(classifier.id);
            const bool isType =
                classifier.kind == ClassifierKind::DataType || classifier.kind == ClassifierKind::PrimitiveType;
            if (classifier.kind == ClassifierKind::UseCase)
                metaclass = Metaclass::None;
            else if (classifier.kind == ClassifierKind::Enumeration && isPlain)
                metaclass = Metaclass::Enum;
            else if (isType && isPlain && isDataType(classifier))
                metaclass = Metaclass::DataType;
            metaclasses.emplace(&classifier, metaclass);
            if (metaclass == Metaclass::Class) {
                classes[&classifier];
                inOrder.push_back(&classifier);
            }
        }
    });
}

Metaclass Plan::metaclassOf(const Classifier& classifier) const
{
    const auto found = metaclasses.find(&classifier);
    return found == metaclasses.end() ? Metaclass::None : found->second;
}

std::string renamed(std::string_view from, std::string_view to)
{
    return std::string(from).append(", now ").append(to);
}

std::string takeName(Scope& scope, const Element& element, std::string_view kind, std::string_view otherwise,
                     Report& report)
{
    std::string_view wanted = element.name;
    for (const std::string_view key :
         {"packageName", "classifierName", "attributeName", "referenceName", "operationName"})
        if (const std::string_view own = propertyOf(element, key); !own.empty())
            wanted = own;
    std::string name = scope.take(wanted, otherwise);
    if (name != element.name)
        report.made("name", element.id, element.name.empty() ? name : renamed(element.name, name),
                    "the " + std::string(kind) + " has one that is an identifier and occurs once");
    return name;
}

void Plan::namePackage(const Package& package, const std::string& path)
{
    Scope own;
    Scope& scope = &package == outermostPackage ? classifierNames : own;
    for (const Classifier& classifier : package.classifiers) {
        if (metaclassOf(classifier) == Metaclass::None)
            continue;
        std::string name = takeName(scope, classifier, design::nameOf(classifier.kind), "Class", report);
        paths.emplace(&classifier, std::string(path).append("/").append(name));
        names.emplace(&classifier, std::move(name));
    }
    Scope packageNames;
    if (&package == outermostPackage)
        names.emplace(&package, takeName(packageNames, package, "package", writing.stem, report));
    for (const Package* const child : packagesIn(package)) {
        std::string name = takeName(packageNames, *child, "package", "package", report);
        namePackage(*child, std::string(path).append("/").append(name));
        names.emplace(child, std::move(name));
    }
}

Plan::TypeLink Plan::typeOf(const Reference& type)
{
    const Classifier* const classifier = writing.catalogue.classifierOf(type);
    if (classifier && metaclassOf(*classifier) != Metaclass::None)
        return {pathOf(*classifier), {}, classifier};
    const std::string& name = type.name.empty() ? type.id : type.name;
    if (const std::string_view ecoreType = name.empty() ? "EString" : ecoreTypeNamed(name); !ecoreType.empty())
        return {linkTo(ecoreType), std::string(ecoreType), nullptr};
    const auto [entry, isNew] = furtherTypesByName.try_emplace(name);
    if (isNew) {
        furtherNames.push_back(classifierNames.take(name, "Type"));
        entry->second = "#//" + furtherNames.back();
        report.made("primitive type", type.id, name, "types are data types of the file");
    }
    return {entry->second, {}, nullptr};
}

// An attribute whose type is a class is a reference that contains.
void Plan::planAttributes()
{
    forEachPackageOfFile([&](const Package& package) {
        for (const Classifier& classifier : package.classifiers) {
            const auto plan = classes.find(&classifier);
            if (plan == classes.end())
                continue;
            for (const Attribute& attribute : classifier.attributes) {
                TypeLink type = typeOf(attribute.type);
                std::string name = takeName(plan->second.names, attribute, "attribute", "attribute", report);
                if (type.classifier && metaclassOf(*type.classifier) == Metaclass::Class) {
                    const bool isContainment = attribute.containment != Containment::ByReference;
                    plan->second.references.push_back(
                        {std::move(name), nullptr, &attribute, &classifier, type.classifier, isContainment});
                    constexpr std::string_view reason = "its type is a class, to which a reference leads";
                    report.left("attribute", attribute.id, attribute.name, reason);
                    report.made("association", attribute.id, attribute.name, reason);
                } else {
                    plan->second.attributes.push_back({std::move(name), &attribute, std::move(type.link),
                                                       std::move(type.ecoreType), type.classifier});
                }
            }
        }
    });
}

void Plan::addReference(const Association& association, std::size_t end)
{
    const AssociationEnd& to = association.ends[end];
    const AssociationEnd& from = association.ends[1 - end];
    const Classifier* const owner = writing.catalogue.classifierOf(from.participant);
    const Classifier* const type = writing.catalogue.classifierOf(to.participant);
    ClassPlan& plan = classes.at(owner);
    std::string name = takeName(plan.names, to, "association end", smallFirst(nameOf(*type)), report);
    const bool isContainment = from.aggregation == Aggregation::Composite || to.containment == Containment::ByValue;
    plan.references.push_back({std::move(name), &to, nullptr, owner, type, isContainment});
}

// Where no end can be gone to, that was not said, and those with names can; or else the second.
void Plan::planAssociation(const Association& association)
{
    const auto leave = [&](std::string_view reason) {
        report.left("association", association.id, association.name, reason);
        for (const AssociationEnd& end : association.ends)
            for (const Attribute& qualifier : end.qualifiers)
                report.left("attribute", qualifier.id, qualifier.name,
                            "the association that it qualifies is not there");
    };
    if (association.ends.size() != 2)
        return leave("Ecore joins two classes");
    for (const AssociationEnd& end : association.ends) {
        const Classifier* const classifier = writing.catalogue.classifierOf(end.participant);
        if (!classifier || !classes.contains(classifier))
            return leave("an end of it is no class of the file");
    }
    for (const AssociationEnd& end : association.ends)
        for (const Attribute& qualifier : end.qualifiers)
            report.left("attribute", qualifier.id, qualifier.name, "Ecore has no qualifiers");
    bool isReference[] = {association.ends[0].isNavigable, association.ends[1].isNavigable};
    if (!isReference[0] && !isReference[1]) {
        isReference[0] = !association.ends[0].name.empty();
        isReference[1] = !association.ends[1].name.empty() || !isReference[0];
    }
    ReferencePlan* added[] = {nullptr, nullptr};
    // A reader takes the first that it meets for the second end.
    for (const std::size_t end : {std::size_t{1}, std::size_t{0}})
        if (isReference[end]) {
            addReference(association, end);
            const Classifier* const owner = writing.catalogue.classifierOf(association.ends[1 - end].participant);
            added[end] = &classes.at(owner).references.back();
        }
    if (added[0] && added[1]) {
        added[0]->opposite = added[1];
        added[1]->opposite = added[0];
        added[1]->isContainment = added[1]->isContainment && !added[0]->isContainment;
    }
}

} // namespace design::ecore
