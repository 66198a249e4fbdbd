#pragma once

#include "designs/model/Design.h"
#include "designs/model/Report.h"
#include "reader/document/Document.h"
#include "reader/index/Index.h"

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/// Models of Rose: an element is an object of the file, with a quid that others refer to it by.
namespace design::rose {

using reader::Object;

/// What the readers of all kinds of objects share. The document must stay where it is.
class Reading {
public:
    Reading(const reader::Document& theDocument, Report& theReport);

    /// The quid, or the path of what has none.
    [[nodiscard]] std::string idOf(const Object& object) const;
    /// What a view shows or a relationship leads to.
    [[nodiscard]] Reference elementOf(const Object& from) const;
    /// The type that an attribute, parameter or operation names with that key.
    [[nodiscard]] Reference typeOf(const Object& object, std::string_view key) const;
    /// Name, documentation, stereotype and identifier.
    void describe(const Object& object, Element& element) const;

    /// Tells that it has no place, and notes its kind for what refers to it.
    void leave(const Object& object, std::string_view reason);
    /// Whether no element with that identifier has that note yet; then it has it.
    [[nodiscard]] bool isNewNote(const std::string& id, const std::string& text);

    /// Notes that a generalization shares a line with the one that is the first of the tree.
    void join(const std::string& first, const std::string& other);

    reader::Index index;
    std::vector<std::vector<std::string>> trees; ///< of generalizations, by identifiers
    /// Of what has no place in a design, by identifier.
    TextsById kinds;
    TextsById outsideNames;
    Report& report;
    const reader::Document& document;
    bool isExport; ///< the bridge has written the file: all in it is meant as it stands
    /// Identifiers of classes that an export draws as interfaces, whatever their stereotypes are.
    std::set<std::string> interfaces;

private:
    std::set<std::pair<std::string, std::string>> notes;
    std::unordered_map<std::string, std::size_t> treeOf; // by identifiers of generalizations
};

/// Of what has a kind that is not known, its keyword.
[[nodiscard]] std::string kindOf(const Object& object);

[[nodiscard]] Visibility visibilityOf(const Object& object, std::string_view key, Visibility otherwise);
[[nodiscard]] Containment containmentOf(const Object& object);
[[nodiscard]] Concurrency concurrencyOf(const Object& object);
[[nodiscard]] std::string lowerCase(std::string text);

// Each reads an object into the package; what lies in it goes there, too.

[[nodiscard]] bool isClass(const Object& object);
[[nodiscard]] inline bool isUseCase(const Object& object)
{
    return object.is("UseCase");
}
void readUseCase(Reading& reading, const Object& object, Package& package);
void readClass(Reading& reading, const Object& object, Package& package);
[[nodiscard]] Attribute readAttribute(const Reading& reading, const Object& object);
void readAssociation(Reading& reading, const Object& object, Package& package);
/// The relationships that a class or package is the client of.
void readRelationships(Reading& reading, const Object& owner, Package& package);
/// What a view of a class does not show of its features.
[[nodiscard]] HiddenFeatures hiddenFeatures(const Reading& reading, const Object& view, const Object& element);
void readDiagram(Reading& reading, const Object& object, const Object& owner, Package& package);

/// The declaration "enum Color {RED=0, GREEN}" of a class that stands for an enumeration; empty when it is none.
[[nodiscard]] std::string enumerationOf(const Object& theClass);
[[nodiscard]] std::vector<Literal> literalsOf(std::string_view declaration);

} // namespace design::rose
