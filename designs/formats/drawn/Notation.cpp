#include "designs/formats/drawn/Notation.h"

#include "designs/model/Texts.h"
#include "text/Words.h"

#include <algorithm>
#include <array>

namespace design {

namespace {

std::string nameOfType(const Reference& type, const Catalogue& catalogue)
{
    const Classifier* const classifier = type.isEmpty() ? nullptr : catalogue.classifierOf(type);
    if (classifier)
        return classifier->name;
    return type.name.empty() ? type.id : type.name;
}

std::string between(std::string_view opening, std::string_view text, std::string_view closing)
{
    return std::string(opening).append(text).append(closing);
}

void addConstraints(std::string& text, const Element& element)
{
    for (const std::string& constraint : element.constraints)
        text.append(text.empty() ? "{" : " {").append(constraint).append("}");
}

// " : Money [0..1] = 0"
void addTypeAndValue(std::string& text, std::string_view type, const std::optional<Multiplicity>& multiplicity,
                     std::string_view value)
{
    if (!type.empty())
        text.append(" : ").append(type);
    if (multiplicity)
        text.append(" [").append(textOf(*multiplicity)).append("]");
    if (!value.empty())
        text.append(" = ").append(value);
}

std::string notationOf(const Parameter& parameter, const Catalogue& catalogue)
{
    constexpr std::array<std::string_view, 3> directions = {"", "out ", "inout "};
    std::string text(directions[static_cast<std::size_t>(parameter.direction)]);
    text += parameter.name;
    addTypeAndValue(text, nameOfType(parameter.type, catalogue), parameter.multiplicity, parameter.initialValue);
    addConstraints(text, parameter);
    return text;
}

std::string_view wordOf(ClassForm form)
{
    switch (form) {
    case ClassForm::Utility:
    case ClassForm::ParameterizedUtility:
    case ClassForm::InstantiatedUtility:
        return "utility";
    case ClassForm::Metaclass:
        return "metaclass";
    case ClassForm::Plain:
    case ClassForm::Data:
    case ClassForm::Parameterized:
    case ClassForm::Instantiated:
        break;
    }
    return "";
}

std::string_view wordOf(ClassifierKind kind)
{
    switch (kind) {
    case ClassifierKind::DataType:
        return "dataType";
    case ClassifierKind::PrimitiveType:
        return "primitive";
    case ClassifierKind::Class:
    case ClassifierKind::Interface:
    case ClassifierKind::Enumeration:
    case ClassifierKind::AssociationClass:
    case ClassifierKind::Actor:
    case ClassifierKind::UseCase:
        break;
    }
    return "";
}

// Whether the keyword of the kind says what the stereotype says.
bool isSaidByKind(ClassifierKind kind, std::string_view stereotype)
{
    const std::string word = text::lowerCase(stereotype);
    return (kind == ClassifierKind::Interface && word == "interface") ||
           (kind == ClassifierKind::Actor && word == "actor") ||
           (kind == ClassifierKind::Enumeration && (word == "enumeration" || word == "enum"));
}

bool isHidden(const Box& box, const Element& feature)
{
    const std::vector<std::string>& hidden = box.hidden.features;
    return std::binary_search(hidden.begin(), hidden.end(), feature.id);
}

} // namespace

std::string notationOf(const Attribute& attribute, const Catalogue& catalogue)
{
    std::string text = attribute.isDerived ? "/" : "";
    text += attribute.name;
    addTypeAndValue(text, nameOfType(attribute.type, catalogue), attribute.multiplicity, attribute.initialValue);
    if (attribute.isIdentifier)
        text += " {id}";
    if (attribute.isReadOnly)
        text += " {readOnly}";
    addConstraints(text, attribute);
    return text;
}

std::string notationOf(const Operation& operation, const Catalogue& catalogue)
{
    std::string text = operation.name + '(' + notationOfParameters(operation.parameters, catalogue) + ')';
    addTypeAndValue(text, nameOfType(operation.returnType, catalogue), operation.returnMultiplicity, "");
    addConstraints(text, operation);
    return text;
}

std::string notationOf(const Literal& literal)
{
    return literal.value.empty() ? literal.name : literal.name + " = " + literal.value;
}

std::string notationOfParameters(const std::vector<Parameter>& parameters, const Catalogue& catalogue)
{
    std::string text;
    for (const Parameter& parameter : parameters)
        text.append(text.empty() ? "" : ", ").append(notationOf(parameter, catalogue));
    return text;
}

std::vector<std::string> textsAt(const AssociationEnd& end, const Catalogue& catalogue)
{
    std::vector<std::string> texts;
    for (const Attribute& qualifier : end.qualifiers)
        texts.push_back(between("[", notationOf(qualifier, catalogue), "]"));
    if (!end.stereotype.empty())
        texts.push_back(between("<<", end.stereotype, ">>"));
    if (!end.name.empty()) {
        std::string role(1, signOf(end.visibility));
        texts.push_back(role.append(end.isStatic ? "$" : "").append(end.isDerived ? "/" : "").append(end.name));
    }
    if (end.multiplicity)
        texts.push_back(textOf(*end.multiplicity));
    std::string constraints;
    addConstraints(constraints, end);
    if (!constraints.empty())
        texts.push_back(std::move(constraints));
    return texts;
}

std::string labelOf(const Association& association)
{
    std::string text = association.isDerived ? "/" : "";
    text += association.name;
    addConstraints(text, association);
    return text;
}

std::string labelOf(const Relationship& relationship)
{
    std::string text = relationship.name;
    addConstraints(text, relationship);
    return text;
}

char signOf(Visibility visibility)
{
    switch (visibility) {
    case Visibility::Protected:
        return '#';
    case Visibility::Private:
        return '-';
    case Visibility::Package:
        return '~';
    case Visibility::Public:
        break;
    }
    return '+';
}

std::string stereotypeOf(const Classifier& classifier)
{
    std::string stereotype = isSaidByKind(classifier.kind, classifier.stereotype) ? "" : classifier.stereotype;
    if (text::lowerCase(stereotype) != text::lowerCase(wordOf(classifier.kind)))
        addWord(stereotype, wordOf(classifier.kind));
    addWord(stereotype, wordOf(classifier.form));
    return stereotype;
}

std::vector<std::string> notesOfFeatures(const Classifier& classifier)
{
    std::vector<std::string> notes;
    const auto add = [&](const Element& feature) {
        for (const std::string& note : feature.notes)
            notes.push_back(feature.name + ": " + note);
    };
    for (const Attribute& attribute : classifier.attributes)
        add(attribute);
    for (const Operation& operation : classifier.operations)
        add(operation);
    for (const Literal& literal : classifier.literals)
        add(literal);
    return notes;
}

bool shows(const Box& box, const Attribute& attribute)
{
    return !box.hidden.attributes[static_cast<std::size_t>(attribute.visibility)] && !isHidden(box, attribute);
}

bool shows(const Box& box, const Operation& operation)
{
    return !box.hidden.operations[static_cast<std::size_t>(operation.visibility)] && !isHidden(box, operation);
}

bool shows(const Box& box, const Literal& literal)
{
    return !box.hidden.attributes[static_cast<std::size_t>(Visibility::Public)] && !isHidden(box, literal);
}

} // namespace design
