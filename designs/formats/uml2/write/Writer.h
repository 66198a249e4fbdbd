#pragma once

#include "designs/formats/Format.h"
#include "designs/formats/uml2/Uml2.h"

#include <pugixml.hpp>

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace design::uml2 {

/// A relation as it stands in the file: its type, identifier, and the elements of the design that it leads from and to.
/// Without identifier: none that joins two elements.
struct WrittenRelation {
    std::string_view type;
    std::string id;
    std::string from;
    std::string to;
};

/// Writes a design as the tools of Eclipse save models of UML 2.
class Writer {
public:
    Writer(const Writing& theWriting, Report& theReport);

    /// Adds the model, with all that is in it, to a document.
    void write(pugi::xml_node parent);

    // What views of the written elements refer to them by.

    [[nodiscard]] std::string identifierOfPackage(const Package& package) const;
    [[nodiscard]] std::string identifierOfClassifier(const Classifier& classifier) const
    {
        return identifierOf(classifier.id);
    }
    [[nodiscard]] std::string identifierOfFeature(const Element& feature) const
    {
        return featureIdentifiers.at(&feature);
    }
    [[nodiscard]] std::string_view typeOf(const Classifier& classifier) const;
    [[nodiscard]] WrittenRelation relation(const std::string& elementId) const;

private:
    void collectRelations();
    void noteIdentifiers();

    /// What is in the design and has no place in the file.
    void tellLosses();

    void writePackage(const Package& package, pugi::xml_node node);
    void writeRemarks(const Package& package, pugi::xml_node node);

    void writeClassifier(const Classifier& classifier, pugi::xml_node parent);
    void writeLiteral(const Literal& literal, pugi::xml_node parent);
    void writeAttribute(const Attribute& attribute, const char* role, pugi::xml_node parent);
    void writeOperation(const Operation& operation, pugi::xml_node parent);
    void writeCondition(const char* role, const std::string& text, pugi::xml_node operation);
    void writeParameter(const Parameter& parameter, pugi::xml_node parent);
    void writeResult(const Operation& operation, pugi::xml_node parent);
    void writeTemplate(const Classifier& classifier, pugi::xml_node parent);
    void writeType(const Reference& type, pugi::xml_node node);
    void writeMultiplicity(const std::optional<Multiplicity>& multiplicity, pugi::xml_node node);
    void writeBound(const char* role, const char* type, const std::string& value, pugi::xml_node node);
    void writeValue(const char* role, const std::string& text, pugi::xml_node node);

    void writeAssociation(const Association& association, pugi::xml_node parent);
    void writeEnds(const Association& association, pugi::xml_node node);
    void writeEnd(const Association& association, std::size_t place, const char* role, pugi::xml_node parent);
    void writeOwnEnds(const Classifier& classifier, pugi::xml_node node);
    void writeOwnRelations(const Classifier& classifier, pugi::xml_node node);
    void writeRelationship(const Relationship& relationship, pugi::xml_node parent);
    [[nodiscard]] const std::string& endIdentifier(const Association& association, std::size_t place);
    [[nodiscard]] std::string_view typeOf(const Relationship& relationship) const;
    [[nodiscard]] bool isOwnedByClass(const Relationship& relationship) const;
    [[nodiscard]] bool ownsEnd(const Association& association, std::size_t place) const;

    pugi::xml_node add(pugi::xml_node parent, const char* role, std::string_view type, const Element& element);
    pugi::xml_node addPart(pugi::xml_node parent, const char* role, std::string_view type, std::string_view suffix);
    /// Comments, keywords and rules of an element. `space` is what holds its rules when it cannot itself.
    void describe(const Element& element, pugi::xml_node described, pugi::xml_node space);
    void writeProperties(const Element& element, pugi::xml_node node);
    void addRule(const std::string& text, std::string_view constrained, pugi::xml_node space);
    [[nodiscard]] std::string identifierOf(const Element& element, pugi::xml_node parent);
    [[nodiscard]] std::string identifierOf(std::string_view id) const;
    /// That of its class, if the class is the association.
    [[nodiscard]] std::string identifierOf(const Association& association) const;
    [[nodiscard]] bool isItsClass(const Association& association) const;
    [[nodiscard]] std::string makeIdentifier(const std::string& wanted);

    const Writing& writing;
    Report& report;
    std::unordered_map<std::string, std::string> identifiers; // of the design, as XML has them
    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, std::size_t> numbers; // the last behind each wanted identifier
    std::unordered_map<const Classifier*, const Association*> associationsOfClasses;
    std::unordered_map<const Classifier*, std::vector<std::pair<const Association*, std::size_t>>> endsOfClasses;
    std::unordered_map<const Classifier*, std::vector<const Relationship*>> relationsOfClasses;
    std::unordered_map<const AssociationEnd*, std::string> endIdentifiers;
    std::unordered_map<const Element*, std::string> featureIdentifiers; // of attributes, operations and literals
    std::unordered_map<std::string, std::string> furtherTypes;          // identifiers by names
    std::vector<pugi::xml_node> furtherNodes; // which come to stand behind the model's own classifiers
    std::unordered_map<const Package*, std::string> packageIdentifiers;
    std::string modelIdentifier; // where the design has none
    pugi::xml_node model;
    pugi::xml_node lastClassifier; // in the model itself
};

/// Sets a text without signs that XML cannot hold.
void setText(pugi::xml_node node, std::string_view text);

/// Sets an attribute, whose value is without signs that XML cannot hold.
void set(pugi::xml_node node, const char* name, std::string_view value);

/// The identifier of an element as one of XML: what may not stand in one is an underscore, and one stands in front
/// where it begins with a digit.
[[nodiscard]] std::string xmlIdentifier(std::string_view id);

} // namespace design::uml2
