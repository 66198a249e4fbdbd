#include "designs/convert/Convert.h"

#include "designs/convert/Documentation.h"
#include "designs/convert/JsonWriter.h"
#include "designs/convert/Projections.h"
#include "designs/convert/TypeTable.h"
#include "designs/model/DataTypes.h"
#include "designs/model/Kinds.h"
#include "designs/model/Selection.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

#include <algorithm>
#include <array>

namespace design {

namespace {

// The numbers that the host has for words of the design.
constexpr int interfaceClassType = 9;
constexpr int parameterizedClassType = 2;
constexpr int activeConcurrency = 2;
constexpr int containedByValue = 0;

// In an outermost package: keys of elements one a line, an attribute or projection a line.
constexpr int deepestLine = 6;

enum class Kind : std::uint8_t {
    Packages,
    Classes,
    Interfaces,
    DataTypes,
    Enumerations,
    Literals,
    Types,
    Attributes,
    Operations,
    Parameters,
    Associations,
    Generalizations,
    Realizations,
    Dependencies,
    Notes,
    Diagrams,
    Boxes,
    Lines,
};
constexpr std::array<std::string_view, 18> kindNames = {
    "packages",     "classes",      "interfaces", "data types", "enumerations", "literals",
    "types",        "attributes",   "operations", "parameters", "associations", "generalizations",
    "realizations", "dependencies", "notes",      "diagrams",   "boxes",        "lines",
};

int numberOf(Visibility visibility)
{
    switch (visibility) {
    case Visibility::Public:
        return 0;
    case Visibility::Protected:
        return 1;
    case Visibility::Private:
        return 2;
    case Visibility::Package:
        break;
    }
    return 3;
}

// What Rose files call classifiers that are no plain classes.
std::string_view stereotypeFor(ClassifierKind kind)
{
    switch (kind) {
    case ClassifierKind::DataType:
        return "dataType";
    case ClassifierKind::PrimitiveType:
        return "primitive";
    case ClassifierKind::Enumeration:
        return "enumeration";
    case ClassifierKind::Class:
    case ClassifierKind::Interface:
    case ClassifierKind::AssociationClass:
        break;
    }
    return "";
}

class ModelWriter {
public:
    ModelWriter(const Design& theDesign, const Catalogue& theCatalogue, Report& theReport)
        : design(theDesign), catalogue(theCatalogue), report(theReport), selection(theDesign.root, theCatalogue),
          types(theCatalogue, selection, theReport), projections(theDesign.root, theCatalogue)
    {
    }

    ModelText run()
    {
        json.beginObject();
        json.member("format", "kiv-model");
        json.member("version", 1);
        writeTexts(design.root, documentationOf(design.root));
        writePackages(design.root);
        writeTypes();
        json.endObject();
        ModelText result;
        result.text = std::move(json).take();
        for (std::size_t i = 0; i < counts.size(); ++i)
            if (counts[i] > 0)
                result.taken.push_back({kindNames[i], counts[i]});
        return result;
    }

private:
    void count(Kind kind, std::size_t number = 1) { counts[static_cast<std::size_t>(kind)] += number; }

    // Texts come as the file has them; those that no model file can hold are mended.
    void writeText(const Element& element, std::string_view key, std::string_view text)
    {
        if (text.empty())
            return;
        json.key(key);
        writeText(element, text);
    }
    void writeText(const Element& element, std::string_view text)
    {
        if (isWellFormed(text))
            return json.value(text);
        report.made("text", mended(element.id), mended(element.name), "bytes that are no text were replaced");
        json.value(mended(text));
    }

    // Name, description, stereotype and notes.
    void writeTexts(const Element& element, const std::string& description, std::string_view stereotype = {})
    {
        writeText(element, "name", element.name);
        writeText(element, "description", description);
        writeText(element, "stereotype", element.stereotype.empty() ? stereotype : element.stereotype);
        if (element.notes.empty())
            return;
        count(Kind::Notes, element.notes.size());
        json.beginList("notes");
        for (const std::string& note : element.notes)
            writeText(element, note);
        json.endList();
    }

    void writeElement(const Element& element, const std::string& description, std::string_view stereotype = {})
    {
        writeText(element, "id", element.id);
        writeTexts(element, description, stereotype);
    }

    template <class Items, class Write>
    void writeList(std::string_view key, const Items& items, const Write& write)
    {
        if (items.empty())
            return;
        json.beginList(key);
        for (const auto& item : items) {
            json.beginObject();
            write(item);
            json.endObject();
        }
        json.endList();
    }

    void writePackages(const Package& parent)
    {
        writeList("childPackages", parent.packages, [&](const Package& package) {
            count(Kind::Packages);
            writeElement(package, documentationOf(package));
            writeModelElements(package);
            writePackages(package);
            writeList("diagrams", package.diagrams, [&](const Diagram& diagram) { writeDiagram(diagram); });
        });
    }

    void writeModelElements(const Package& package)
    {
        json.beginList("modelElements");
        const auto write = [&](const auto& element, std::string_view kind) {
            json.beginObject();
            json.member("kind", kind);
            writeContent(element);
            json.endObject();
        };
        for (const Classifier& classifier : package.classifiers) {
            if (selection.isClass(classifier))
                write(classifier, "class");
            else
                types.add(classifier);
        }
        for (const Association& association : package.associations)
            write(association, "association");
        for (const Relationship& relationship : package.relationships)
            write(relationship, keyOf(relationship.kind));
        for (const std::string& note : package.looseNotes) {
            count(Kind::Notes);
            json.beginObject();
            json.member("kind", "note");
            writeText(package, "text", note);
            json.endObject();
        }
        json.endList();
    }

    void writeContent(const Classifier& classifier)
    {
        countClassifier(classifier.kind);
        writeElement(classifier, documentationOf(classifier), stereotypeFor(classifier.kind));
        if (classifier.kind == ClassifierKind::Interface)
            json.member("classType", interfaceClassType);
        else if (!classifier.templateParameters.empty())
            json.member("classType", parameterizedClassType);
        writeVisibility(classifier.visibility);
        writeFlag("isAbstract", classifier.isAbstract);
        if (classifier.isActive)
            json.member("concurrency", activeConcurrency);
        writeAttributes(classifier);
        writeList("operations", classifier.operations, [&](const Operation& operation) { writeOperation(operation); });
        writeList("parameters", classifier.templateParameters,
                  [&](const Parameter& parameter) { writeParameter(parameter); });
        writeKeys(classifier);
        writeProjections(classifier.id);
    }

    void countClassifier(ClassifierKind kind)
    {
        switch (kind) {
        case ClassifierKind::Interface:
            return count(Kind::Interfaces);
        case ClassifierKind::DataType:
        case ClassifierKind::PrimitiveType:
            return count(Kind::DataTypes);
        case ClassifierKind::Enumeration:
            return count(Kind::Enumerations);
        case ClassifierKind::Class:
        case ClassifierKind::AssociationClass:
            return count(Kind::Classes);
        }
    }

    void writeVisibility(Visibility visibility)
    {
        if (visibility != Visibility::Public)
            json.member("visibility", numberOf(visibility));
    }

    void writeFlag(std::string_view key, bool flag)
    {
        if (flag)
            json.member(key, true);
    }

    void writeType(const Element& element, std::string_view key, const Reference& type)
    {
        writeText(element, key, types.idOf(type));
    }

    // The literals of an enumeration that is a class stand before its attributes, as attributes without a type.
    void writeAttributes(const Classifier& classifier)
    {
        if (classifier.attributes.empty() && classifier.literals.empty())
            return;
        json.beginList("attributes");
        for (const Literal& literal : classifier.literals) {
            count(Kind::Literals);
            json.beginObject();
            writeElement(literal, documentationOf(literal));
            writeText(literal, "initialValue", literal.value);
            json.endObject();
        }
        for (const Attribute& attribute : classifier.attributes) {
            count(Kind::Attributes);
            json.beginObject();
            writeAttribute(attribute);
            json.endObject();
        }
        json.endList();
    }

    void writeAttribute(const Attribute& attribute)
    {
        writeElement(attribute, documentationOf(attribute));
        writeType(attribute, "type", attribute.type);
        writeText(attribute, "initialValue", attribute.initialValue);
        writeVisibility(attribute.visibility);
        writeFlag("isStatic", attribute.isStatic);
        writeFlag("isDerived", attribute.isDerived);
    }

    void writeOperation(const Operation& operation)
    {
        count(Kind::Operations);
        writeElement(operation, documentationOf(operation));
        writeVisibility(operation.visibility);
        writeFlag("isAbstract", operation.isAbstract);
        writeFlag("isStatic", operation.isStatic);
        writeText(operation, "semantics", operation.semantics);
        writeText(operation, "preCondition", operation.preCondition);
        writeText(operation, "postCondition", operation.postCondition);
        writeType(operation, "returnType", operation.returnType);
        writeList("arguments", operation.parameters, [&](const Parameter& parameter) { writeParameter(parameter); });
    }

    void writeParameter(const Parameter& parameter)
    {
        count(Kind::Parameters);
        writeElement(parameter, parameter.documentation);
        writeType(parameter, "type", parameter.type);
        writeText(parameter, "initialValue", parameter.initialValue);
    }

    // The attributes that identify an object are its candidate key.
    void writeKeys(const Classifier& classifier)
    {
        std::vector<const Attribute*> identifiers;
        for (const Attribute& attribute : classifier.attributes)
            if (attribute.isIdentifier)
                identifiers.push_back(&attribute);
        if (identifiers.empty())
            return;
        json.beginList("keys");
        json.beginObject();
        json.member("kind", "candidateKey");
        json.beginList("attributes");
        for (const Attribute* const attribute : identifiers)
            writeText(*attribute, attribute->id);
        json.endList();
        json.endObject();
        json.endList();
    }

    void writeContent(const Association& association)
    {
        count(Kind::Associations);
        const std::vector<AssociationEnd>& ends = association.ends;
        writeElement(association, association.documentation);
        writeFlag("isAggregation", std::any_of(ends.begin(), ends.end(), [](const AssociationEnd& end) {
                      return end.aggregation != Aggregation::None;
                  }));
        writeText(association, "constraint", constraintOf(association));
        writeText(association, "associationClass", association.associationClassId);
        json.beginList("roles");
        for (std::size_t i = 0; i < ends.size(); ++i) {
            json.beginObject();
            writeRole(association, i);
            json.endObject();
        }
        json.endList();
        writeProjections(association.id);
    }

    // Whether another end owns what is at this end for good: the part of a composition.
    static bool isPart(const Association& association, std::size_t index)
    {
        const auto isOwner = [](const AssociationEnd& end) { return end.aggregation == Aggregation::Composite; };
        for (std::size_t i = 0; i < association.ends.size(); ++i)
            if (i != index && isOwner(association.ends[i]))
                return !isOwner(association.ends[index]);
        return false;
    }

    void writeRole(const Association& association, std::size_t index)
    {
        const AssociationEnd& end = association.ends[index];
        writeElement(end, documentationOf(end));
        writeText(end, "participant", end.participant.id);
        if (end.multiplicity && end.multiplicity->text.empty()) {
            json.beginObject("multiplicity");
            json.member("lower", std::int64_t{end.multiplicity->lower});
            json.member("upper", std::int64_t{end.multiplicity->upper});
            json.endObject();
        }
        writeFlag("isAggregateEnd", end.aggregation != Aggregation::None);
        writeFlag("isNavigable", end.isNavigable);
        writeFlag("isStatic", end.isStatic);
        writeVisibility(end.visibility);
        if (isPart(association, index))
            json.member("containment", containedByValue);
        writeText(end, "constraint", constraintOf(end));
        writeList("qualifiers", end.qualifiers, [&](const Attribute& qualifier) {
            count(Kind::Attributes);
            writeAttribute(qualifier);
        });
        projections.writeRole(json, association.id, index);
    }

    void writeContent(const Relationship& relationship)
    {
        writeElement(relationship, documentationOf(relationship));
        if (relationship.kind == RelationshipKind::Generalization) {
            count(Kind::Generalizations);
            for (const auto& [key, end] :
                 {std::pair{"supertypes", &relationship.supplier}, std::pair{"subtypes", &relationship.client}}) {
                json.beginList(key);
                writeText(relationship, end->id);
                json.endList();
            }
        } else {
            count(relationship.kind == RelationshipKind::Realization ? Kind::Realizations : Kind::Dependencies);
            writeText(relationship, "client", relationship.client.id);
            writeText(relationship, "supplier", relationship.supplier.id);
        }
        writeProjections(relationship.id);
    }

    void writeProjections(const std::string& id) { projections.write(json, id); }

    void writeDiagram(const Diagram& diagram)
    {
        count(Kind::Diagrams);
        count(Kind::Lines, diagram.lines.size());
        writeElement(diagram, documentationOf(diagram));
        json.beginList("elements");
        for (const Box& box : diagram.boxes)
            if (catalogue.classifier(box.elementId)) {
                count(Kind::Boxes);
                writeText(diagram, box.elementId);
            }
        for (const Line& line : diagram.lines)
            writeText(diagram, line.elementId);
        json.endList();
    }

    void writeTypes()
    {
        writeList("types", types.types(), [&](const TypeTable::Type& type) { writeType(type); });
    }

    void writeType(const TypeTable::Type& type)
    {
        static const Element unnamed;
        const Element& element = type.classifier ? *type.classifier : unnamed;
        writeText(element, "id", type.id);
        writeText(element, "name", type.name);
        if (type.classifier && types.isEnumeration(type))
            return writeEnumeration(*type.classifier);
        count(Kind::Types);
        const bool isClass = type.classifier && selection.isClass(*type.classifier) &&
                             type.classifier->kind != ClassifierKind::PrimitiveType;
        const std::optional<DataType> dataType = isClass ? std::nullopt : dataTypeNamed(type.name);
        if (!dataType)
            return;
        json.member("dataType", dataType->identifier);
        if (dataType->length > 0)
            json.member("length", dataType->length);
        if (dataType->scale > 0)
            json.member("scale", dataType->scale);
    }

    // A literal without a value has its name as value, which is how the host knows that there is none.
    void writeEnumeration(const Classifier& enumeration)
    {
        count(Kind::Enumerations);
        writeText(enumeration, "description", documentationOf(enumeration));
        writeText(enumeration, "stereotype", enumeration.stereotype);
        writeList("typeValues", enumeration.literals, [&](const Literal& literal) {
            count(Kind::Literals);
            writeElement(literal, documentationOf(literal));
            writeText(literal, "value", literal.value.empty() ? literal.name : literal.value);
        });
    }

    const Design& design;
    const Catalogue& catalogue;
    Report& report;
    JsonWriter json{deepestLine};
    Selection selection;
    TypeTable types;
    Projections projections;
    std::array<std::size_t, kindNames.size()> counts = {};
};

} // namespace

ModelText writeModel(const Design& design, const Catalogue& catalogue, Report& report)
{
    return ModelWriter(design, catalogue, report).run();
}

} // namespace design
