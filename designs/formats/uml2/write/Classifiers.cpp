#include "designs/formats/shared/Kinds.h"
#include "designs/formats/uml2/write/Writer.h"
#include "designs/model/Counts.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace design::uml2 {

namespace {

// Actors and use cases have no features in UML.
bool isActor(const Classifier& classifier)
{
    return classifier.kind == ClassifierKind::Actor && classifier.attributes.empty() && classifier.operations.empty();
}

std::string_view typeNamed(const Classifier& classifier, bool isOfAssociation)
{
    switch (classifier.kind) {
    case ClassifierKind::Interface:
        return "uml:Interface";
    case ClassifierKind::DataType:
        return "uml:DataType";
    case ClassifierKind::PrimitiveType:
        return "uml:PrimitiveType";
    case ClassifierKind::Enumeration:
        return "uml:Enumeration";
    case ClassifierKind::UseCase:
        return "uml:UseCase";
    case ClassifierKind::Actor:
        if (isActor(classifier))
            return "uml:Actor";
        break;
    case ClassifierKind::Class:
    case ClassifierKind::AssociationClass:
        break;
    }
    return isOfAssociation ? "uml:AssociationClass" : "uml:Class";
}

std::string_view wordOf(Visibility visibility)
{
    constexpr std::array<std::string_view, 4> words = {"public", "protected", "private", "package"};
    return words[static_cast<std::size_t>(visibility)];
}

// Public is what is not said.
void setVisibility(pugi::xml_node node, Visibility visibility)
{
    if (visibility != Visibility::Public)
        set(node, "visibility", wordOf(visibility));
}

void setFlag(pugi::xml_node node, const char* name, bool flag)
{
    if (flag)
        set(node, name, "true");
}

// Types that the standard library of UML has.
bool isLibraryType(std::string_view name)
{
    constexpr std::array<std::string_view, 5> names = {"Boolean", "Integer", "Real", "String", "UnlimitedNatural"};
    return isOneOf(names, name);
}

bool isInteger(const std::string& text)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = !text.empty() && error == std::errc() && end == text.data() + text.size();
    return isNumber && std::to_string(number) == text;
}

} // namespace

std::string_view Writer::typeOf(const Classifier& classifier) const
{
    return typeNamed(classifier, associationsOfClasses.contains(&classifier));
}

void Writer::writeClassifier(const Classifier& classifier, pugi::xml_node parent)
{
    const auto association = associationsOfClasses.find(&classifier);
    const bool isOfAssociation = association != associationsOfClasses.end();
    const std::string_view type = typeNamed(classifier, isOfAssociation);
    pugi::xml_node node = add(parent, "packagedElement", type, classifier);
    const std::string_view kind = type == "uml:Class"              ? "class"
                                  : type == "uml:AssociationClass" ? "association class"
                                                                   : nameOf(classifier.kind);
    if (kind != nameOf(classifier.kind)) {
        const std::string reason = "in UML 2 it is a kind of its own: " + std::string(kind);
        report.left(nameOf(classifier.kind), classifier.id, classifier.name, reason);
        report.made(kind, classifier.id, classifier.name, reason);
    }
    setVisibility(node, classifier.visibility);
    setFlag(node, "isAbstract", classifier.isAbstract);
    setFlag(node, "isActive", classifier.concurrency == Concurrency::Active);
    describe(classifier, node, node);
    writeTemplate(classifier, node);
    writeOwnRelations(classifier, node);
    for (const Literal& literal : classifier.literals)
        writeLiteral(literal, node);
    for (const Attribute& attribute : classifier.attributes)
        writeAttribute(attribute, "ownedAttribute", node);
    writeOwnEnds(classifier, node);
    for (const Operation& operation : classifier.operations)
        writeOperation(operation, node);
    if (isOfAssociation)
        writeEnds(*association->second, node);
}

void Writer::writeLiteral(const Literal& literal, pugi::xml_node parent)
{
    pugi::xml_node node = add(parent, "ownedLiteral", "uml:EnumerationLiteral", literal);
    featureIdentifiers.emplace(&literal, node.attribute("xmi:id").value());
    describe(literal, node, parent);
    writeValue("specification", literal.value, node);
}

void Writer::writeAttribute(const Attribute& attribute, const char* role, pugi::xml_node parent)
{
    pugi::xml_node node = add(parent, role, "uml:Property", attribute);
    featureIdentifiers.emplace(&attribute, node.attribute("xmi:id").value());
    set(node, "visibility", wordOf(attribute.visibility));
    setFlag(node, "isStatic", attribute.isStatic);
    setFlag(node, "isDerived", attribute.isDerived);
    setFlag(node, "isReadOnly", attribute.isReadOnly);
    setFlag(node, "isID", attribute.isIdentifier);
    describe(attribute, node, parent);
    writeType(attribute.type, node);
    writeMultiplicity(attribute.multiplicity, node);
    writeValue("defaultValue", attribute.initialValue, node);
}

void Writer::writeOperation(const Operation& operation, pugi::xml_node parent)
{
    pugi::xml_node node = add(parent, "ownedOperation", "uml:Operation", operation);
    featureIdentifiers.emplace(&operation, node.attribute("xmi:id").value());
    setVisibility(node, operation.visibility);
    setFlag(node, "isStatic", operation.isStatic);
    setFlag(node, "isAbstract", operation.isAbstract);
    describe(operation, node, node);
    writeCondition("precondition", operation.preCondition, node);
    writeCondition("postcondition", operation.postCondition, node);
    writeCondition("bodyCondition", operation.semantics, node);
    for (const Parameter& parameter : operation.parameters)
        writeParameter(parameter, node);
    writeResult(operation, node);
}

void Writer::writeCondition(const char* role, const std::string& text, pugi::xml_node operation)
{
    if (text.empty())
        return;
    addRule(text, "", operation);
    set(operation, role, operation.last_child().attribute("xmi:id").value());
}

void Writer::writeParameter(const Parameter& parameter, pugi::xml_node parent)
{
    constexpr std::array<std::string_view, 3> words = {"in", "out", "inout"};
    pugi::xml_node node = add(parent, "ownedParameter", "uml:Parameter", parameter);
    if (parameter.direction != Direction::In)
        set(node, "direction", words[static_cast<std::size_t>(parameter.direction)]);
    describe(parameter, node, parent);
    writeType(parameter.type, node);
    writeMultiplicity(parameter.multiplicity, node);
    writeValue("defaultValue", parameter.initialValue, node);
}

void Writer::writeResult(const Operation& operation, pugi::xml_node parent)
{
    if (operation.returnType.isEmpty() && !operation.returnMultiplicity)
        return;
    pugi::xml_node node = addPart(parent, "ownedParameter", "uml:Parameter", "-result");
    set(node, "direction", "return");
    writeType(operation.returnType, node);
    writeMultiplicity(operation.returnMultiplicity, node);
}

// A parameter stands for a class, or is a value of the type that it has.
void Writer::writeTemplate(const Classifier& classifier, pugi::xml_node parent)
{
    if (classifier.templateParameters.empty())
        return;
    pugi::xml_node signature =
        addPart(parent, "ownedTemplateSignature", "uml:RedefinableTemplateSignature", "-template");
    std::string names;
    for (const Parameter& parameter : classifier.templateParameters) {
        const bool isClass = parameter.type.isEmpty() || parameter.type.name == "class";
        pugi::xml_node owned =
            addPart(signature, "ownedParameter", isClass ? "uml:ClassifierTemplateParameter" : "uml:TemplateParameter",
                    "-parameter");
        names.append(names.empty() ? "" : " ").append(owned.attribute("xmi:id").value());
        pugi::xml_node element =
            add(owned, "ownedParameteredElement", isClass ? "uml:Class" : "uml:Property", parameter);
        set(owned, "parameteredElement", element.attribute("xmi:id").value());
        describe(parameter, element, parent);
        if (!isClass)
            writeType(parameter.type, element);
    }
    set(signature, "parameter", names);
}

// A type that is in no package is one of the library, or becomes a primitive type of the model.
void Writer::writeType(const Reference& type, pugi::xml_node node)
{
    if (type.isEmpty())
        return;
    if (const Classifier* const classifier = writing.catalogue.classifierOf(type))
        return set(node, "type", identifierOf(classifier->id));
    const std::string& name = type.name.empty() ? type.id : type.name;
    if (isLibraryType(name)) {
        pugi::xml_node link = node.append_child("type");
        set(link, "xmi:type", "uml:PrimitiveType");
        return set(link, "href", "pathmap://UML_LIBRARIES/UMLPrimitiveTypes.library.uml#" + name);
    }
    const auto [found, isNew] = furtherTypes.try_emplace(name);
    if (isNew) {
        found->second = makeIdentifier(xmlIdentifier("type-" + name));
        report.made("primitive type", type.id, name, "types are elements of the model");
        pugi::xml_node added = model.append_child("packagedElement");
        set(added, "xmi:type", "uml:PrimitiveType");
        set(added, "xmi:id", found->second);
        set(added, "name", name);
        furtherNodes.push_back(added);
    }
    set(node, "type", found->second);
}

// Bounds that are no numbers are texts.
void Writer::writeMultiplicity(const std::optional<Multiplicity>& multiplicity, pugi::xml_node node)
{
    if (!multiplicity)
        return;
    if (!multiplicity->text.empty()) {
        writeBound("lowerValue", "uml:LiteralString", multiplicity->text, node);
        return writeBound("upperValue", "uml:LiteralString", multiplicity->text, node);
    }
    const std::string lower = multiplicity->lower == 0 ? "" : std::to_string(multiplicity->lower);
    const std::string upper = multiplicity->upper < 0 ? "*" : std::to_string(multiplicity->upper);
    writeBound("lowerValue", "uml:LiteralInteger", lower, node);
    writeBound("upperValue", "uml:LiteralUnlimitedNatural", upper, node);
}

void Writer::writeBound(const char* role, const char* type, const std::string& value, pugi::xml_node node)
{
    pugi::xml_node bound = addPart(node, role, type, role[0] == 'l' ? "-lower" : "-upper");
    if (!value.empty())
        set(bound, "value", value);
}

void Writer::writeValue(const char* role, const std::string& text, pugi::xml_node node)
{
    if (text.empty())
        return;
    if (isInteger(text)) {
        pugi::xml_node value = addPart(node, role, "uml:LiteralInteger", "-value");
        return text == "0" ? void() : set(value, "value", text);
    }
    pugi::xml_node value = addPart(node, role, "uml:OpaqueExpression", "-value");
    setText(value.append_child("body"), text);
}

} // namespace design::uml2
