#pragma once

#include "designs/formats/shared/Kinds.h"
#include "designs/formats/shared/Xml.h"
#include "designs/formats/uml2/Outside.h"
#include "designs/formats/uml2/Values.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace design::uml2 {

/// What the readers of all kinds of elements share.
class Reading {
public:
    Reading(pugi::xml_node root, Outside& theOutside, Report& theReport);

    /// The element with that identifier; a null node when there is none.
    [[nodiscard]] pugi::xml_node find(std::string_view id) const;
    /// Whether a property is an end of an association, and no attribute of its class.
    [[nodiscard]] bool isEnd(pugi::xml_node property) const;

    /// What all elements have. Comments and constraints of others that it holds become remarks of the package.
    void describe(pugi::xml_node node, Element& element, Package& package);
    [[nodiscard]] std::string constraintText(pugi::xml_node constraint) const;
    /// Tells that it has no place.
    void leave(pugi::xml_node node, std::string_view type);

    Outside& outside;
    Report& report;
    Index index;
    TextsById kinds;                                                                  ///< of all that has an identifier
    std::unordered_map<std::string_view, std::vector<std::string_view>> propertiesOf; ///< by association

private:
    void add(pugi::xml_node node);
    void readComment(pugi::xml_node node, Element& owner, Package& package);
    void readConstraint(pugi::xml_node node, Element& owner, Package& package);

    std::unordered_set<std::string> ends; // identifiers of properties
};

/// The stereotypes that are applied to elements, by the identifiers of these.
void readStereotypes(pugi::xml_node parent, TextsById& stereotypes);

/// Program and version that wrote the file.
[[nodiscard]] std::string toolOf(pugi::xml_node root);

// Each reads a node into the package; what lies in it goes there, too.

void readMember(Reading& reading, pugi::xml_node node, Package& package);
void readClassifier(Reading& reading, pugi::xml_node node, const NamedClassifier& type, Package& package);
void readAssociation(Reading& reading, pugi::xml_node node, Package& package);
/// Where the file leaves the client out, it is the element that owns the relation.
void readRelationship(Reading& reading, pugi::xml_node node, const NamedRelationship& type, std::string_view ownerId,
                      Package& package);
/// What a package or a classifier has beside members and features.
void readOther(Reading& reading, pugi::xml_node part, Package& package);

[[nodiscard]] Attribute readAttribute(Reading& reading, pugi::xml_node node, Package& package);

// The rows of the tables are null for types of another kind.

[[nodiscard]] const NamedClassifier* classifierOf(std::string_view type);
[[nodiscard]] const NamedRelationship* relationshipOf(std::string_view type);
[[nodiscard]] bool isAssociation(std::string_view type);

/// Whether elements in that role are held by others and have names of their own.
[[nodiscard]] bool isMemberRole(std::string_view role);

} // namespace design::uml2
