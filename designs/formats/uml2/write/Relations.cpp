#include "designs/formats/shared/Kinds.h"
#include "designs/formats/uml2/write/Writer.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

#include <array>

namespace design::uml2 {

namespace {

struct DependencyType {
    std::string_view type; // the stereotype
    std::string_view umlType;
};
constexpr std::array dependencyTypes = {
    DependencyType{"use", "uml:Usage"},
    DependencyType{"abstraction", "uml:Abstraction"},
};

// An actor with features is a class in the file.
bool ownsFeatures(const Classifier& classifier)
{
    const bool isActor =
        classifier.kind == ClassifierKind::Actor && classifier.attributes.empty() && classifier.operations.empty();
    return !isActor && classifier.kind != ClassifierKind::UseCase;
}

std::string_view wordOf(Aggregation aggregation)
{
    return aggregation == Aggregation::Composite ? "composite" : "shared";
}

} // namespace

bool Writer::isItsClass(const Association& association) const
{
    const auto found = associationsOfClasses.find(writing.catalogue.classifier(association.associationClassId));
    return found != associationsOfClasses.end() && found->second == &association;
}

std::string Writer::identifierOf(const Association& association) const
{
    return identifierOf(isItsClass(association) ? association.associationClassId : association.id);
}

// What is written with the classes that relations lead from.
void Writer::collectRelations()
{
    forEachPackage(writing.design.root, [&](const Package& package) {
        for (const Association& association : package.associations) {
            const Classifier* const theClass = writing.catalogue.classifier(association.associationClassId);
            if (theClass && !associationsOfClasses.emplace(theClass, &association).second)
                report.left("association class", association.id, association.name,
                            "the class is that of another association already");
            for (std::size_t place = 0; place < association.ends.size(); ++place)
                if (ownsEnd(association, place))
                    endsOfClasses[writing.catalogue.classifierOf(association.ends[1 - place].participant)].emplace_back(
                        &association, place);
        }
        for (const Relationship& relationship : package.relationships)
            if (isOwnedByClass(relationship))
                relationsOfClasses[writing.catalogue.classifierOf(relationship.client)].push_back(&relationship);
    });
}

// A class has the ends that one can go to from it.
bool Writer::ownsEnd(const Association& association, std::size_t place) const
{
    if (association.ends.size() != 2 || !association.ends[place].isNavigable)
        return false;
    const Classifier* const owner = writing.catalogue.classifierOf(association.ends[1 - place].participant);
    return owner && ownsFeatures(*owner);
}

bool Writer::isOwnedByClass(const Relationship& relationship) const
{
    const Classifier* const client = writing.catalogue.classifierOf(relationship.client);
    const Classifier* const supplier = writing.catalogue.classifierOf(relationship.supplier);
    if (!client || !supplier || relationship.kind == RelationshipKind::Dependency)
        return false;
    return relationship.kind == RelationshipKind::Generalization || supplier->kind == ClassifierKind::Interface;
}

void Writer::writeOwnRelations(const Classifier& classifier, pugi::xml_node node)
{
    const auto found = relationsOfClasses.find(&classifier);
    if (found == relationsOfClasses.end())
        return;
    for (const Relationship* const relationship : found->second) {
        const bool isGeneralization = relationship->kind == RelationshipKind::Generalization;
        const std::string supplier = identifierOf(writing.catalogue.classifierOf(relationship->supplier)->id);
        pugi::xml_node added = isGeneralization
                                   ? add(node, "generalization", "uml:Generalization", *relationship)
                                   : add(node, "interfaceRealization", "uml:InterfaceRealization", *relationship);
        if (isGeneralization) { // which has no name
            added.remove_attribute("name");
            set(added, "general", supplier);
        } else {
            set(added, "client", node.attribute("xmi:id").value());
            set(added, "supplier", supplier);
            set(added, "contract", supplier);
        }
        describe(*relationship, added, node);
    }
}

void Writer::writeOwnEnds(const Classifier& classifier, pugi::xml_node node)
{
    const auto found = endsOfClasses.find(&classifier);
    if (found == endsOfClasses.end())
        return;
    for (const auto& [association, place] : found->second)
        writeEnd(*association, place, "ownedAttribute", node);
}

void Writer::writeAssociation(const Association& association, pugi::xml_node parent)
{
    if (isItsClass(association)) {
        for (const auto& [kind, text] : {std::pair{"documentation of an association", &association.documentation},
                                         std::pair{"stereotype of an association", &association.stereotype}})
            if (!text->empty())
                report.left(kind, association.id, association.name, "its class, which is the association, has its own");
        return;
    }
    pugi::xml_node node = add(parent, "packagedElement", "uml:Association", association);
    if (association.isDerived)
        set(node, "isDerived", "true");
    describe(association, node, node);
    writeEnds(association, node);
}

// The ends in their order, wherever they are, and those that no class has.
void Writer::writeEnds(const Association& association, pugi::xml_node node)
{
    std::string members;
    std::string navigable;
    std::vector<std::string> ids;
    for (std::size_t place = 0; place < association.ends.size(); ++place) {
        ids.push_back(endIdentifier(association, place));
        members.append(place == 0 ? "" : " ").append(ids.back());
        if (association.ends[place].isNavigable && !ownsEnd(association, place))
            navigable.append(navigable.empty() ? "" : " ").append(ids.back());
    }
    set(node, "memberEnd", members);
    if (!navigable.empty())
        set(node, "navigableOwnedEnd", navigable);
    for (std::size_t place = 0; place < association.ends.size(); ++place)
        if (!ownsEnd(association, place))
            writeEnd(association, place, "ownedEnd", node);
}

// An end is named before it is written.
const std::string& Writer::endIdentifier(const Association& association, std::size_t place)
{
    std::string& id = endIdentifiers[&association.ends[place]];
    if (id.empty()) {
        const AssociationEnd& end = association.ends[place];
        id = makeIdentifier(end.id.empty() ? identifierOf(association.id) + "-end" + std::to_string(place + 1)
                                           : xmlIdentifier(end.id));
    }
    return id;
}

// A property says that its owner, which is at the other end, is the whole, and which of its objects qualifiers pick.
void Writer::writeEnd(const Association& association, std::size_t place, const char* role, pugi::xml_node parent)
{
    const AssociationEnd& end = association.ends[place];
    const AssociationEnd& other = association.ends.size() == 2 ? association.ends[1 - place] : end;
    pugi::xml_node node = parent.append_child(role);
    set(node, "xmi:type", "uml:Property");
    set(node, "xmi:id", endIdentifier(association, place));
    if (!end.name.empty())
        set(node, "name", end.name);
    if (end.visibility != Visibility::Public) {
        constexpr std::array<std::string_view, 4> words = {"public", "protected", "private", "package"};
        set(node, "visibility", words[static_cast<std::size_t>(end.visibility)]);
    }
    if (end.isStatic)
        set(node, "isStatic", "true");
    if (end.isDerived)
        set(node, "isDerived", "true");
    if (const Classifier* const participant = writing.catalogue.classifierOf(end.participant))
        set(node, "type", identifierOf(participant->id));
    if (other.aggregation != Aggregation::None)
        set(node, "aggregation", wordOf(other.aggregation));
    set(node, "association", identifierOf(association));
    describe(end, node, parent);
    for (const Attribute& qualifier : other.qualifiers)
        writeAttribute(qualifier, "qualifier", node);
    writeMultiplicity(end.multiplicity, node);
}

std::string_view Writer::typeOf(const Relationship& relationship) const
{
    if (relationship.kind == RelationshipKind::Generalization)
        return "uml:Generalization";
    if (relationship.kind == RelationshipKind::Realization)
        return isOwnedByClass(relationship) ? "uml:InterfaceRealization" : "uml:Realization";
    const DependencyType* const row = rowOf(dependencyTypes, relationship.stereotype);
    return row ? row->umlType : "uml:Dependency";
}

WrittenRelation Writer::relation(const std::string& elementId) const
{
    const auto endOf = [&](const Reference& reference) {
        const Classifier* const classifier = writing.catalogue.classifierOf(reference);
        return classifier ? classifier->id : reference.id;
    };
    if (const Association* const association = writing.catalogue.association(elementId)) {
        if (association->ends.size() != 2)
            return {};
        return {isItsClass(*association) ? "uml:AssociationClass" : "uml:Association", identifierOf(*association),
                endOf(association->ends[0].participant), endOf(association->ends[1].participant)};
    }
    const Relationship* const relationship = writing.catalogue.relationship(elementId);
    if (!relationship)
        return {};
    return {typeOf(*relationship), identifierOf(relationship->id), endOf(relationship->client),
            endOf(relationship->supplier)};
}

void Writer::writeRelationship(const Relationship& relationship, pugi::xml_node parent)
{
    const auto endOf = [&](const Reference& reference) {
        const Classifier* const classifier = writing.catalogue.classifierOf(reference);
        return identifierOf(classifier ? classifier->id : reference.id);
    };
    if (relationship.kind == RelationshipKind::Generalization) {
        report.left("generalization", relationship.id, relationship.name, "UML 2 has none of packages");
        return;
    }
    const DependencyType* const row = rowOf(dependencyTypes, relationship.stereotype);
    const std::string_view type = typeOf(relationship);
    pugi::xml_node node = add(parent, "packagedElement", type, relationship);
    set(node, "client", endOf(relationship.client));
    set(node, "supplier", endOf(relationship.supplier));
    Relationship described = relationship;
    if (row && relationship.kind == RelationshipKind::Dependency)
        described.stereotype.clear();
    describe(described, node, parent);
}

} // namespace design::uml2
