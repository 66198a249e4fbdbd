#include "designs/formats/uml2/Reading.h"
#include "designs/formats/uml2/Uml2.h"
#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace design::uml2 {

namespace {

// Of the ends, `client` and `supplier` are always asked, too.
constexpr std::array relationshipTypes = {
    NamedRelationship{"Generalization", RelationshipKind::Generalization, "", "specific", "general"},
    NamedRelationship{"InterfaceRealization", RelationshipKind::Realization, "", "implementingClassifier", "contract"},
    NamedRelationship{"Realization", RelationshipKind::Realization},
    NamedRelationship{"ComponentRealization", RelationshipKind::Realization, "", "realizingClassifier", "abstraction"},
    NamedRelationship{"Substitution", RelationshipKind::Dependency, "substitute", "substitutingClassifier", "contract"},
    NamedRelationship{"Dependency", RelationshipKind::Dependency},
    NamedRelationship{"Usage", RelationshipKind::Dependency, "use"},
    NamedRelationship{"Abstraction", RelationshipKind::Dependency, "abstraction"},
    NamedRelationship{"Permission", RelationshipKind::Dependency, "permit"},
    NamedRelationship{"Manifestation", RelationshipKind::Dependency, "manifest"},
    NamedRelationship{"Include", RelationshipKind::Dependency, "include", "includingCase", "addition"},
    NamedRelationship{"Extend", RelationshipKind::Dependency, "extend", "extension", "extendedCase"},
    NamedRelationship{"Implementation", RelationshipKind::Realization, "", "implementingClassifier", "contract"},
};

// What the file leaves out is one reference to nothing.
std::vector<Reference> endsOf(Reading& reading, pugi::xml_node node, const char* role, const char* commonRole,
                              std::string_view otherwise)
{
    std::vector<Reference> ends = references(node, role, reading.outside);
    if (ends.empty())
        ends = references(node, commonRole, reading.outside);
    if (ends.empty())
        ends.push_back({std::string(otherwise), {}});
    return ends;
}

std::vector<std::string> endIds(Reading& reading, pugi::xml_node node)
{
    std::vector<std::string> ids;
    const auto add = [&ids](std::string_view id) {
        if (!id.empty() && std::find(ids.begin(), ids.end(), id) == ids.end())
            ids.emplace_back(id);
    };
    for (const Reference& end : references(node, "memberEnd", reading.outside))
        add(end.id);
    for (const char* const role : {"ownedEnd", "navigableOwnedEnd"})
        for (const pugi::xml_node child : node.children(role))
            add(xml::xmiAttribute(child, "id"));
    const auto found = reading.propertiesOf.find(xml::xmiAttribute(node, "id"));
    if (found != reading.propertiesOf.end())
        for (const std::string_view id : found->second)
            add(id);
    return ids;
}

// An end is navigable when the class at the other end owns it, when it says so itself or when the association does.
AssociationEnd readEnd(Reading& reading, const std::string& id, Package& package)
{
    AssociationEnd end;
    end.id = id;
    const pugi::xml_node node = reading.find(id);
    if (!node)
        return end;
    reading.describe(node, end, package);
    end.participant = reference(node, "type", reading.outside);
    end.multiplicity = multiplicity(node, reading.index);
    end.visibility = visibilityNamed(node.attribute("visibility").value());
    end.aggregation = xml::flag(node, "isComposite") ? Aggregation::Composite
                                                     : aggregationNamed(node.attribute("aggregation").value());
    end.isNavigable = std::string_view(node.name()) != "ownedEnd" || xml::flag(node, "isNavigable");
    end.isStatic = xml::flag(node, "isStatic");
    end.isDerived = xml::flag(node, "isDerived");
    for (const pugi::xml_node qualifier : node.children("qualifier"))
        end.qualifiers.push_back(readAttribute(reading, qualifier, package));
    return end;
}

} // namespace

const NamedRelationship* relationshipOf(std::string_view type)
{
    return rowOf(relationshipTypes, type);
}

bool isAssociation(std::string_view type)
{
    return type == "Association" || type == "AssociationClass" || type == "CommunicationPath";
}

// One for each pair of ends.
void readRelationship(Reading& reading, pugi::xml_node node, const NamedRelationship& type, std::string_view ownerId,
                      Package& package)
{
    const std::vector<Reference> clients = endsOf(reading, node, type.client, "client", ownerId);
    const std::vector<Reference> suppliers = endsOf(reading, node, type.supplier, "supplier", {});
    Relationship relationship;
    reading.describe(node, relationship, package);
    relationship.kind = type.kind;
    addWord(relationship.stereotype, type.stereotype);
    const std::string id = relationship.id;
    int number = 1;
    for (const Reference& client : clients)
        for (const Reference& supplier : suppliers) {
            relationship.id = number == 1 ? id : id + "/" + std::to_string(number);
            relationship.client = client;
            relationship.supplier = supplier;
            package.relationships.push_back(relationship);
            ++number;
        }
}

void readAssociation(Reading& reading, pugi::xml_node node, Package& package)
{
    Association association;
    if (xml::typeName(node) == "AssociationClass") { // the class says everything else
        association.associationClassId = xml::xmiAttribute(node, "id");
        association.id = associationOf(association.associationClassId);
        association.name = xml::property(node, "name");
    } else {
        reading.describe(node, association, package);
        association.isDerived = xml::flag(node, "isDerived");
    }
    for (const std::string& id : endIds(reading, node))
        association.ends.push_back(readEnd(reading, id, package));
    for (const Reference& navigable : references(node, "navigableOwnedEnd", reading.outside))
        for (AssociationEnd& end : association.ends)
            end.isNavigable = end.isNavigable || end.id == navigable.id;
    if (association.ends.size() == 2) {
        // A property says that its owner, which is at the other end, is the whole. So do qualifiers: they stand at the
        // end whose objects pick those of the other one.
        std::swap(association.ends[0].aggregation, association.ends[1].aggregation);
        std::swap(association.ends[0].qualifiers, association.ends[1].qualifiers);
    }
    package.associations.push_back(std::move(association));
}

} // namespace design::uml2
