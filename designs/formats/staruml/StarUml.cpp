#include "designs/formats/staruml/StarUml.h"

#include "designs/formats/shared/Json.h"
#include "designs/model/Kinds.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_map>

namespace design {

namespace {

using Json = simdjson::dom::element;
using Object = simdjson::dom::object;
using List = simdjson::dom::array;

// Elements by the kind that the file gives them.

constexpr std::array classifierTypes = {
    NamedClassifier{"UMLClass", ClassifierKind::Class, ""},
    NamedClassifier{"UMLInterface", ClassifierKind::Interface, ""},
    NamedClassifier{"UMLSignal", ClassifierKind::Class, "signal"},
    NamedClassifier{"UMLDataType", ClassifierKind::DataType, ""},
    NamedClassifier{"UMLPrimitiveType", ClassifierKind::PrimitiveType, ""},
    NamedClassifier{"UMLEnumeration", ClassifierKind::Enumeration, ""},
    NamedClassifier{"UMLStereotype", ClassifierKind::Class, "stereotype"},
    NamedClassifier{"UMLActor", ClassifierKind::Class, "Actor"},
    NamedClassifier{"UMLComponent", ClassifierKind::Class, "component"},
    NamedClassifier{"UMLObject", ClassifierKind::Class, "object"},
};

// Object and package diagrams show classes and their relations, too.
constexpr std::array<std::string_view, 3> diagramTypes = {"UMLClassDiagram", "UMLObjectDiagram", "UMLPackageDiagram"};

struct PackageType {
    std::string_view type;
    std::string_view stereotype;
};
constexpr std::array packageTypes = {
    PackageType{"UMLModel", ""},
    PackageType{"UMLPackage", ""},
    PackageType{"UMLSubsystem", "subsystem"},
    PackageType{"UMLProfile", "profile"},
};

struct RelationshipType {
    std::string_view type;
    RelationshipKind kind;
    std::string_view stereotype;
};
constexpr std::array relationshipTypes = {
    RelationshipType{"UMLGeneralization", RelationshipKind::Generalization, ""},
    RelationshipType{"UMLInterfaceRealization", RelationshipKind::Realization, ""},
    RelationshipType{"UMLRealization", RelationshipKind::Realization, ""},
    RelationshipType{"UMLDependency", RelationshipKind::Dependency, ""},
    RelationshipType{"UMLUsage", RelationshipKind::Dependency, "use"},
    RelationshipType{"UMLAbstraction", RelationshipKind::Dependency, "abstraction"},
    RelationshipType{"UMLRefinement", RelationshipKind::Dependency, "refine"},
    RelationshipType{"UMLTemplateBinding", RelationshipKind::Dependency, "bind"},
};

// Values of an object; what is not there, or of another type than expected, is empty.

std::string_view textIn(const Object& object, std::string_view key)
{
    std::string_view text;
    return object[key].get(text) == simdjson::SUCCESS ? text : std::string_view();
}

bool flagIn(const Object& object, std::string_view key)
{
    bool flag = false;
    return object[key].get(flag) == simdjson::SUCCESS && flag;
}

double numberIn(const Object& object, std::string_view key)
{
    double number = 0;
    return object[key].get(number) == simdjson::SUCCESS ? number : 0;
}

template <class Visit>
void forEachIn(const Object& object, std::string_view key, const Visit& visit)
{
    List list;
    if (object[key].get(list) != simdjson::SUCCESS)
        return;
    for (const Json item : list) {
        Object member;
        if (item.get(member) == simdjson::SUCCESS)
            visit(member);
    }
}

// The identifier that {"$ref": "..."} names.
std::string_view referenceIn(const Object& object, std::string_view key)
{
    Object reference;
    return object[key].get(reference) == simdjson::SUCCESS ? textIn(reference, "$ref") : std::string_view();
}

std::string_view typeOf(const Object& object)
{
    return textIn(object, "_type");
}
std::string_view idOf(const Object& object)
{
    return textIn(object, "_id");
}
std::string_view nameOf(const Object& object)
{
    return textIn(object, "name");
}

Visibility visibilityOf(const Object& object)
{
    const std::string_view word = textIn(object, "visibility");
    if (word == "private")
        return Visibility::Private;
    if (word == "protected")
        return Visibility::Protected;
    return word == "package" ? Visibility::Package : Visibility::Public;
}

Aggregation aggregationOf(const Object& end)
{
    const std::string_view word = textIn(end, "aggregation");
    if (word == "composite")
        return Aggregation::Composite;
    return word == "shared" ? Aggregation::Shared : Aggregation::None;
}

double coordinate(std::string_view text)
{
    constexpr double farthest = 1e6;
    double value = 0;
    text = trimmed(text);
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value >= -farthest && value <= farthest ? value : 0;
}

// "400:448;400:401"
std::vector<Point> parsePoints(std::string_view text)
{
    std::vector<Point> points;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view point = text.substr(0, end);
        if (const std::size_t colon = point.find(':'); colon != std::string_view::npos)
            points.push_back({coordinate(point.substr(0, colon)), coordinate(point.substr(colon + 1))});
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return points;
}

// "Arial;13;0": name, height in pixels, style.
void parseFont(std::string_view text, Appearance& appearance)
{
    constexpr double pointsInPixel = 0.75;
    const std::size_t nameEnd = text.find(';');
    appearance.fontName = trimmed(text.substr(0, nameEnd));
    if (nameEnd != std::string_view::npos)
        appearance.fontSize = coordinate(text.substr(nameEnd + 1)) * pointsInPixel;
}

Appearance appearanceOf(const Object& view)
{
    Appearance appearance;
    appearance.lineColor = parseColour(textIn(view, "lineColor"));
    appearance.fillColor = parseColour(textIn(view, "fillColor"));
    appearance.fontColor = parseColour(textIn(view, "fontColor"));
    parseFont(textIn(view, "font"), appearance);
    return appearance;
}

class Reader {
public:
    explicit Reader(Report& theReport) : report(theReport) {}

    Design read(Json root)
    {
        addToIndex(root);
        Object project;
        if (root.get(project) != simdjson::SUCCESS)
            return {};
        Design design;
        design.tool = "StarUML";
        if (typeOf(project) == "Project") {
            readElement(project, design.root);
            readOwned(project, design.root);
        } else {
            readMember(project, design.root);
        }
        attachTexts(design.root);
        return design;
    }

private:
    // A text that belongs to an element which may be read later.
    struct AttachedText {
        std::string_view elementId;
        std::string text;
    };

    // Every object with an identifier, views included.
    void addToIndex(Json value)
    {
        Object object;
        List list;
        if (value.get(object) == simdjson::SUCCESS) {
            if (const std::string_view id = idOf(object); !id.empty())
                index.emplace(id, object);
            for (const auto& member : object)
                addToIndex(member.value);
        } else if (value.get(list) == simdjson::SUCCESS) {
            for (const Json item : list)
                addToIndex(item);
        }
    }

    [[nodiscard]] std::string_view typeOfId(std::string_view id) const
    {
        const auto found = index.find(id);
        return found == index.end() ? std::string_view() : typeOf(found->second);
    }

    [[nodiscard]] Reference referenceTo(std::string_view id) const
    {
        const auto found = index.find(id);
        return {std::string(id), std::string(found == index.end() ? std::string_view() : nameOf(found->second))};
    }

    // A type is an element or a text.
    [[nodiscard]] Reference typeReference(const Object& typed) const
    {
        if (const std::string_view id = referenceIn(typed, "type"); !id.empty())
            return referenceTo(id);
        return {{}, std::string(trimmed(textIn(typed, "type")))};
    }

    [[nodiscard]] std::string stereotypeOf(const Object& object) const
    {
        if (const std::string_view id = referenceIn(object, "stereotype"); !id.empty())
            return referenceTo(id).name;
        return std::string(trimmed(textIn(object, "stereotype")));
    }

    void readElement(const Object& object, Element& element)
    {
        element.id = idOf(object);
        element.name = nameOf(object);
        element.documentation = textIn(object, "documentation");
        element.stereotype = stereotypeOf(object);
        forEachIn(object, "tags", [&](const Object& tag) { readTag(tag, element); });
        forEachIn(object, "ownedElements", [&](const Object& owned) {
            if (typeOf(owned) == "UMLConstraint")
                readConstraint(owned, element.id);
        });
    }

    // The host has no tagged values; they stay readable as lines of the documentation.
    static void readTag(const Object& tag, Element& element)
    {
        std::string line = std::string(nameOf(tag));
        Json value;
        if (tag["value"].get(value) == simdjson::SUCCESS && !value.is_null())
            line += " = " + (value.is_string() ? std::string(textIn(tag, "value")) : simdjson::minify(value));
        element.documentation += (element.documentation.empty() ? "{" : "\n{") + line + "}";
    }

    // The name stands for a text that is not there.
    static std::string_view textOfConstraint(const Object& constraint)
    {
        const std::string_view text = textIn(constraint, "specification");
        return text.empty() ? nameOf(constraint) : text;
    }

    void readConstraint(const Object& constraint, const std::string& ownerId)
    {
        std::string text(textOfConstraint(constraint));
        if (text.empty())
            return;
        bool isOfOthers = false;
        List constrained;
        if (constraint["constrainedElements"].get(constrained) == simdjson::SUCCESS) {
            forEachIn(constraint, "constrainedElements", [&](const Object& reference) {
                constraints.push_back({textIn(reference, "$ref"), text});
                isOfOthers = true;
            });
        }
        if (!isOfOthers)
            constraints.push_back({index.find(ownerId) == index.end() ? std::string_view() : index.find(ownerId)->first,
                                   std::move(text)});
    }

    void readOwned(const Object& owner, Package& package)
    {
        forEachIn(owner, "ownedElements", [&](const Object& member) { readMember(member, package); });
    }

    void readMember(const Object& object, Package& package)
    {
        const std::string_view type = typeOf(object);
        if (const auto* const packageType = rowOf(packageTypes, type))
            readPackage(object, *packageType, package);
        else if (const auto* const classifierType = rowOf(classifierTypes, type))
            readClassifier(object, *classifierType, package);
        else if (const auto* const relationshipType = rowOf(relationshipTypes, type))
            readRelationship(object, *relationshipType, package);
        else if (type == "UMLAssociation")
            readAssociation(object, package);
        else if (type == "UMLAssociationClassLink")
            associationClasses.emplace_back(referenceIn(object, "associationSide"), referenceIn(object, "classSide"));
        else if (std::find(diagramTypes.begin(), diagramTypes.end(), type) != diagramTypes.end())
            readDiagram(object, package);
        else if (type != "UMLConstraint") // read with its owner
            leave(object);
    }

    void leave(const Object& object)
    {
        const std::string_view type = typeOf(object);
        const bool isDiagram = type.ends_with("Diagram");
        report.left(type, idOf(object), nameOf(object),
                    isDiagram ? "only class diagrams are taken" : "the host model has nothing of this kind");
        forEachIn(object, "ownedElements", [&](const Object& owned) { leave(owned); });
    }

    void readPackage(const Object& object, const PackageType& type, Package& parent)
    {
        Package package;
        readElement(object, package);
        if (package.stereotype.empty())
            package.stereotype = type.stereotype;
        readOwned(object, package);
        parent.packages.push_back(std::move(package));
    }

    void readClassifier(const Object& object, const NamedClassifier& type, Package& package)
    {
        Classifier classifier;
        readElement(object, classifier);
        classifier.kind = type.kind;
        if (classifier.stereotype.empty())
            classifier.stereotype = type.stereotype;
        classifier.visibility = visibilityOf(object);
        classifier.isAbstract = flagIn(object, "isAbstract");
        classifier.isActive = flagIn(object, "isActive");
        forEachIn(object, "attributes",
                  [&](const Object& attribute) { classifier.attributes.push_back(readAttribute(attribute)); });
        forEachIn(object, "operations",
                  [&](const Object& operation) { classifier.operations.push_back(readOperation(operation)); });
        forEachIn(object, "templateParameters", [&](const Object& parameter) {
            classifier.templateParameters.push_back(readTemplateParameter(parameter));
        });
        forEachIn(object, "literals", [&](const Object& literal) {
            Literal& added = classifier.literals.emplace_back();
            readElement(literal, added);
        });
        for (const std::string_view key : {"receptions", "ports", "slots", "extensionPoints", "behaviors"})
            forEachIn(object, key, [&](const Object& member) { leave(member); });
        package.classifiers.push_back(std::move(classifier));
        forEachIn(object, "ownedElements", [&](const Object& member) { readMemberOfClassifier(member, package); });
    }

    void readMemberOfClassifier(const Object& member, Package& package)
    {
        if (rowOf(classifierTypes, typeOf(member)))
            report.made("nested class", idOf(member), nameOf(member), "it stands beside the class that it lay in");
        readMember(member, package);
    }

    // What attributes and parameters have in common.
    template <class Feature>
    void readTyped(const Object& object, Feature& feature)
    {
        readElement(object, feature);
        feature.type = typeReference(object);
        feature.initialValue = textIn(object, "defaultValue");
        feature.multiplicity = parseMultiplicity(textIn(object, "multiplicity"));
        if (flagIn(object, "isOrdered"))
            feature.constraints.emplace_back("ordered");
    }

    Attribute readAttribute(const Object& object)
    {
        Attribute attribute;
        readTyped(object, attribute);
        attribute.visibility = visibilityOf(object);
        attribute.isStatic = flagIn(object, "isStatic");
        attribute.isDerived = flagIn(object, "isDerived");
        attribute.isReadOnly = flagIn(object, "isReadOnly");
        attribute.isIdentifier = flagIn(object, "isID");
        return attribute;
    }

    Parameter readParameter(const Object& object)
    {
        Parameter parameter;
        readTyped(object, parameter);
        const std::string_view direction = textIn(object, "direction");
        if (direction == "out")
            parameter.direction = Direction::Out;
        else if (direction == "inout")
            parameter.direction = Direction::InOut;
        return parameter;
    }

    Parameter readTemplateParameter(const Object& object)
    {
        Parameter parameter;
        readTyped(object, parameter);
        parameter.type = {{}, std::string(textIn(object, "parameterType"))};
        return parameter;
    }

    [[nodiscard]] static std::string conditionsIn(const Object& object, std::string_view key)
    {
        std::string text;
        forEachIn(object, key, [&](const Object& condition) {
            text += text.empty() ? "" : "\n";
            text += textOfConstraint(condition);
        });
        return text;
    }

    Operation readOperation(const Object& object)
    {
        Operation operation;
        readElement(object, operation);
        operation.visibility = visibilityOf(object);
        operation.isStatic = flagIn(object, "isStatic");
        operation.isAbstract = flagIn(object, "isAbstract");
        operation.semantics = textIn(object, "specification");
        operation.preCondition = conditionsIn(object, "preconditions");
        operation.postCondition = conditionsIn(object, "postconditions");
        if (flagIn(object, "isQuery"))
            operation.constraints.emplace_back("query");
        forEachIn(object, "bodyConditions", [&](const Object& condition) { leave(condition); });
        forEachIn(object, "parameters", [&](const Object& each) {
            Parameter parameter = readParameter(each);
            if (textIn(each, "direction") != "return") {
                operation.parameters.push_back(std::move(parameter));
                return;
            }
            operation.returnType = std::move(parameter.type);
            operation.returnMultiplicity = std::move(parameter.multiplicity);
        });
        return operation;
    }

    // Whether a relationship can lead to this element. An element outside of the file gets a placeholder later.
    bool isPossibleEnd(std::string_view id) const
    {
        const std::string_view type = typeOfId(id);
        return type.empty() || rowOf(classifierTypes, type) || rowOf(packageTypes, type);
    }

    bool hasPossibleEnds(const Object& object, std::string_view a, std::string_view b)
    {
        if (isPossibleEnd(a) && isPossibleEnd(b))
            return true;
        const std::string_view type = typeOfId(isPossibleEnd(a) ? b : a);
        report.left(typeOf(object), idOf(object), nameOf(object),
                    "it ends at a " + std::string(type) + ", which is no class");
        return false;
    }

    void readRelationship(const Object& object, const RelationshipType& type, Package& package)
    {
        const std::string_view source = referenceIn(object, "source");
        const std::string_view target = referenceIn(object, "target");
        if (!hasPossibleEnds(object, source, target))
            return;
        Relationship relationship;
        readElement(object, relationship);
        relationship.kind = type.kind;
        if (relationship.stereotype.empty())
            relationship.stereotype = type.stereotype;
        relationship.client = referenceTo(source);
        relationship.supplier = referenceTo(target);
        if (const std::string_view mapping = textIn(object, "mapping"); !mapping.empty())
            relationship.constraints.emplace_back(mapping);
        package.relationships.push_back(std::move(relationship));
    }

    AssociationEnd readEnd(const Object& object)
    {
        AssociationEnd end;
        readElement(object, end);
        end.participant = referenceTo(referenceIn(object, "reference"));
        end.multiplicity = parseMultiplicity(textIn(object, "multiplicity"));
        end.visibility = visibilityOf(object);
        end.aggregation = aggregationOf(object);
        end.isDerived = flagIn(object, "isDerived");
        end.isNavigable = flagIn(object, "navigable") || textIn(object, "navigable") == "navigable";
        for (const auto& [key, word] : {std::pair{"isReadOnly", "readOnly"}, std::pair{"isOrdered", "ordered"}})
            if (flagIn(object, key))
                end.constraints.emplace_back(word);
        forEachIn(object, "qualifiers",
                  [&](const Object& qualifier) { end.qualifiers.push_back(readAttribute(qualifier)); });
        return end;
    }

    // An end that says nothing about it can be reached, unless the other one alone says that it can.
    static void settleNavigability(const Object& object, AssociationEnd& end, const AssociationEnd& other)
    {
        bool flag = false;
        const bool saysNothing = object["navigable"].get(flag) != simdjson::SUCCESS &&
                                 (textIn(object, "navigable").empty() || textIn(object, "navigable") == "unspecified");
        if (saysNothing)
            end.isNavigable = !other.isNavigable;
    }

    void readAssociation(const Object& object, Package& package)
    {
        std::array<Object, 2> ends;
        if (object["end1"].get(ends[0]) != simdjson::SUCCESS || object["end2"].get(ends[1]) != simdjson::SUCCESS) {
            report.left(typeOf(object), idOf(object), nameOf(object), "an end is missing");
            return;
        }
        if (!hasPossibleEnds(object, referenceIn(ends[0], "reference"), referenceIn(ends[1], "reference")))
            return;
        Association association;
        readElement(object, association);
        association.isDerived = flagIn(object, "isDerived");
        AssociationEnd first = readEnd(ends[0]);
        AssociationEnd second = readEnd(ends[1]);
        const AssociationEnd firstAsRead = first;
        settleNavigability(ends[0], first, second);
        settleNavigability(ends[1], second, firstAsRead);
        association.ends = {std::move(first), std::move(second)};
        package.associations.push_back(std::move(association));
    }

    void readDiagram(const Object& object, Package& package)
    {
        Diagram diagram;
        readElement(object, diagram);
        forEachIn(object, "ownedViews", [&](const Object& view) {
            if (typeOf(view) == "UMLNoteLinkView")
                readNoteLink(view);
        });
        forEachIn(object, "ownedViews", [&](const Object& view) {
            bool isVisible = true;
            if (view["visible"].get(isVisible) != simdjson::SUCCESS || isVisible)
                readView(view, diagram);
        });
        package.diagrams.push_back(std::move(diagram));
    }

    void readView(const Object& view, Diagram& diagram)
    {
        constexpr std::array drawnBesides = {"UMLNoteLinkView", "UMLAssociationClassLinkView", "UMLFrameView",
                                             "UMLConstraintView", "UMLConstraintLinkView"};
        const std::string_view type = typeOf(view);
        const std::string_view modelId = referenceIn(view, "model");
        if (type == "UMLNoteView" || type == "UMLTextView")
            readNote(view, diagram);
        else if (std::find(drawnBesides.begin(), drawnBesides.end(), type) != drawnBesides.end())
            return;
        else if (modelId.empty() || !(isTaken(modelId)))
            report.left(type, idOf(view), referenceTo(modelId).name, "what it shows is not taken");
        else if (!textIn(view, "points").empty())
            diagram.lines.push_back(
                {std::string(modelId), parsePoints(textIn(view, "points")), true, appearanceOf(view)});
        else if (rowOf(classifierTypes, typeOfId(modelId)) || rowOf(packageTypes, typeOfId(modelId)))
            diagram.boxes.push_back({std::string(modelId), boundsOf(view), appearanceOf(view)});
        else
            diagram.lines.push_back({std::string(modelId), {}, true, appearanceOf(view)});
    }

    [[nodiscard]] bool isTaken(std::string_view id) const
    {
        const std::string_view type = typeOfId(id);
        return rowOf(classifierTypes, type) || rowOf(packageTypes, type) || rowOf(relationshipTypes, type) ||
               type == "UMLAssociation";
    }

    static std::optional<Rectangle> boundsOf(const Object& view)
    {
        const Rectangle bounds = {numberIn(view, "left"), numberIn(view, "top"), numberIn(view, "width"),
                                  numberIn(view, "height")};
        constexpr double farthest = 1e6;
        const std::array numbers = {bounds.left, bounds.top, bounds.width, bounds.height};
        const bool isNear = std::all_of(numbers.begin(), numbers.end(),
                                        [](double number) { return number >= -farthest && number <= farthest; });
        return isNear ? std::optional(bounds) : std::nullopt;
    }

    // A note hangs at what the element of the view at the link's other end is.
    void readNoteLink(const Object& link)
    {
        for (const auto& [noteKey, otherKey] : {std::pair{"tail", "head"}, std::pair{"head", "tail"}}) {
            const auto note = index.find(referenceIn(link, noteKey));
            const auto other = index.find(referenceIn(link, otherKey));
            if (note == index.end() || other == index.end() || typeOf(note->second) != "UMLNoteView")
                continue;
            const std::string_view modelId = referenceIn(other->second, "model");
            if (modelId.empty() || !isTaken(modelId))
                continue;
            notes.push_back({modelId, std::string(textIn(note->second, "text"))});
            attachedNotes.emplace(note->first, true);
        }
    }

    void readNote(const Object& view, Diagram& diagram)
    {
        const std::string_view text = textIn(view, "text");
        if (!text.empty() && !attachedNotes.contains(idOf(view)))
            diagram.notes.emplace_back(text);
    }

    void attachTexts(Package& root)
    {
        std::unordered_map<std::string_view, Element*> elements;
        forEachElement(root, [&](Element& element) { elements.emplace(element.id, &element); });
        for (const auto& [texts, member, kind] : {std::tuple{&constraints, &Element::constraints, "UMLConstraint"},
                                                  std::tuple{&notes, &Element::notes, "UMLNoteView"}}) {
            for (const AttachedText& attached : *texts) {
                const auto found = elements.find(attached.elementId);
                if (found == elements.end()) {
                    report.left(kind, "", attached.text, "what it belongs to is not taken");
                    continue;
                }
                std::vector<std::string>& known = found->second->*member;
                if (std::find(known.begin(), known.end(), attached.text) == known.end())
                    known.push_back(attached.text);
            }
        }
        std::unordered_map<std::string_view, std::string_view> classes(associationClasses.begin(),
                                                                       associationClasses.end());
        forEachPackage(root, [&](Package& package) {
            for (Association& association : package.associations)
                if (const auto found = classes.find(association.id); found != classes.end())
                    association.associationClassId = found->second;
        });
    }

    Report& report;
    std::unordered_map<std::string_view, Object> index;
    std::unordered_map<std::string_view, bool> attachedNotes;
    std::vector<AttachedText> constraints;
    std::vector<AttachedText> notes;
    std::vector<std::pair<std::string_view, std::string_view>> associationClasses; // association, class
};

// The value of the first "_type" near the beginning.
std::string_view firstType(std::string_view text)
{
    constexpr std::size_t farthest = 4096;
    text = text.substr(0, farthest);
    constexpr std::string_view key = "\"_type\"";
    const std::size_t at = text.find(key);
    if (at == std::string_view::npos)
        return {};
    std::string_view rest = trimmed(text.substr(at + key.size()));
    if (!rest.starts_with(':'))
        return {};
    rest = trimmed(rest.substr(1));
    return rest.starts_with('"') ? rest.substr(1, rest.find('"', 1) - 1) : std::string_view();
}

// Also with the marks of a merge conflict in it, so that they can be reported.
bool recognizes(const Source& source)
{
    const std::string_view type = firstType(source.text);
    return type == "Project" || type.starts_with("UML");
}

Design read(const Source& source, Report& report)
{
    const JsonDocument document(source.text);
    return Reader(report).read(document.root());
}

} // namespace

Format starUmlFormat()
{
    return {"staruml", "StarUML project (.mdj)",
            "UMLClass, UMLInterface, UMLDataType or UMLEnumeration elements in the ownedElements of a Project",
            recognizes, read};
}

} // namespace design
