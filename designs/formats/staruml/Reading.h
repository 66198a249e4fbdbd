#pragma once

#include "designs/formats/shared/Json.h"
#include "designs/formats/shared/Kinds.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <string_view>
#include <unordered_map>

/// Projects of StarUML: each object has a `_type` and an `_id`, and lies in the `ownedElements` of its owner.
namespace design::staruml {

using json::Object;

[[nodiscard]] std::string_view typeOf(const Object& object);
[[nodiscard]] std::string_view idOf(const Object& object);
[[nodiscard]] std::string_view nameOf(const Object& object);

/// The identifier that {"$ref": "..."} names.
[[nodiscard]] std::string_view referenceIn(const Object& object, std::string_view key);

/// Whether objects of that type become packages, classifiers, associations or relationships; the rows of tables are
/// null for what does not.
[[nodiscard]] bool isPackage(std::string_view type);
[[nodiscard]] const NamedClassifier* classifierOf(std::string_view type);
[[nodiscard]] bool isRelation(std::string_view type);

/// What the readers of all kinds of objects share.
class Reading {
public:
    Reading(json::Value root, Report& theReport);

    /// Any object of the file, views included, or null.
    [[nodiscard]] const Object* find(std::string_view id) const;
    [[nodiscard]] Reference referenceTo(std::string_view id) const;
    /// The class of the association with that identifier; empty when it has none.
    [[nodiscard]] std::string_view associationClassOf(std::string_view associationId) const;

    /// What all elements have; constraints of others that it holds become remarks of the package.
    void describe(const Object& object, Element& element, Package& package) const;
    /// Tells that it, and what it holds, has no place.
    void leave(const Object& object) const;

    /// Of what has no place in a design, by identifier.
    TextsById kinds;
    Report& report;

private:
    void add(json::Value value);
    void readConstraint(const Object& constraint, Element& owner, Package& package) const;

    std::unordered_map<std::string_view, Object> objects;
    std::unordered_map<std::string_view, std::string_view> associationClasses; // by association
};

/// The name stands for a text that is not there.
[[nodiscard]] std::string_view textOfConstraint(const Object& constraint);

// Each reads an object into the package; what lies in it goes there, too.

void readMember(Reading& reading, const Object& object, Package& package);
void readClassifier(Reading& reading, const Object& object, const NamedClassifier& type, Package& package);
void readRelation(Reading& reading, const Object& object, Package& package);
void readDiagram(Reading& reading, const Object& object, Package& package);

[[nodiscard]] Attribute readAttribute(Reading& reading, const Object& object, Package& package);

} // namespace design::staruml
