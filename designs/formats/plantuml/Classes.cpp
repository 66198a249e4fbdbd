#include "designs/formats/plantuml/DiagramText.h"

#include "designs/formats/drawn/Notation.h"
#include "designs/model/Counts.h"
#include "designs/model/Texts.h"

#include <algorithm>
#include <type_traits>

namespace design::plantuml {

namespace {

std::string keywordOf(const Classifier& classifier, bool isFigureHere)
{
    if (isFigureHere)
        return classifier.kind == ClassifierKind::Actor ? "actor" : "usecase";
    if (classifier.kind == ClassifierKind::Interface)
        return "interface";
    if (classifier.kind == ClassifierKind::Enumeration)
        return "enum";
    return classifier.isAbstract ? "abstract class" : "class";
}

bool showsMembers(const Classifier& classifier, const Box& box)
{
    const auto isShown = [&](const auto& feature) { return shows(box, feature); };
    return std::any_of(classifier.attributes.begin(), classifier.attributes.end(), isShown) ||
           std::any_of(classifier.operations.begin(), classifier.operations.end(), isShown) ||
           std::any_of(classifier.literals.begin(), classifier.literals.end(), isShown);
}

// `<Item, T>`, or nothing.
std::string templateOf(const Classifier& classifier, const Catalogue& catalogue)
{
    const std::string text = withoutBrackets(escaped(notationOfParameters(classifier.templateParameters, catalogue)));
    return text.find_first_not_of(' ') == std::string::npos ? "" : std::string("<").append(text).append(">");
}

} // namespace

// abstract class "Order item" as Order_item<T> <<entity>> #FFFFCC ##FF0000 {
void DiagramText::addClassifier(const Classifier& classifier, const Box& box, const std::string& indentation)
{
    const bool hasMembers = showsMembers(classifier, box);
    const bool isFigureHere = isFigure(classifier) && !(hasClasses && hasMembers);
    if (!common.coverage.has(classifier))
        leaveProperties(classifier, common.report);
    common.coverage.add(classifier);
    addComment(out, indentation, classifier.documentation);
    const std::string& alias = aliases.of(classifier.id, classifier.name);
    out.append(indentation).append(keywordOf(classifier, isFigureHere)).append(" ");
    if (alias != classifier.name || isFigureHere)
        out.append(inQuotes(classifier.name)).append(" as ");
    out += alias;
    if (!isFigureHere)
        out.append(templateOf(classifier, catalogue));
    std::string stereotype = stereotypeOf(classifier);
    if (isFigure(classifier) && !isFigureHere)
        addWord(stereotype, nameOf(classifier.kind));
    out.append(stereotyped(stereotype)).append(ownColour(box.appearance.fillColor, usualFill));
    if (!isFigureHere && box.appearance.lineColor && box.appearance.lineColor != usualLine)
        out.append(" #").append(colour(*box.appearance.lineColor));
    if (hasMembers && !isFigureHere)
        addMembers(classifier, box, indentation);
    out += '\n';
}

//   {
//     +{static} number : Integer = 0
//     +cancel(reason : String) : Boolean
//   }
void DiagramText::addMembers(const Classifier& classifier, const Box& box, const std::string& indentation)
{
    const std::string inner = indentation + "  ";
    out += " {\n";
    for (const Literal& literal : classifier.literals)
        if (shows(box, literal))
            addLiteral(literal, inner);
    for (const Attribute& attribute : classifier.attributes)
        if (shows(box, attribute))
            addMember(attribute, notationOf(attribute, catalogue), false, inner);
    for (const Operation& operation : classifier.operations)
        if (shows(box, operation))
            addMember(operation, notationOf(operation, catalogue), operation.isAbstract, inner);
    out.append(indentation).append("}");
}

void DiagramText::addLiteral(const Literal& literal, const std::string& indentation)
{
    common.coverage.add(literal);
    addComment(out, indentation, literal.documentation);
    const std::string text = notationOf(literal);
    out.append(indentation).append(text.find('(') == std::string::npos ? "" : "{field} ");
    out.append(escapedStart(text)).append("\n");
}

// What has parentheses is taken for an operation if it does not say that it is a field.
template <class Feature>
void DiagramText::addMember(const Feature& feature, const std::string& text, bool isAbstract,
                            const std::string& indentation)
{
    common.coverage.add(feature);
    addComment(out, indentation, feature.documentation);
    out.append(indentation).append(1, signOf(feature.visibility));
    if (feature.isStatic)
        out += "{static} ";
    if (isAbstract)
        out += "{abstract} ";
    if (std::is_same_v<Feature, Attribute> && text.find('(') != std::string::npos)
        out += "{field} ";
    if (const std::string stereotype = stereotyped(feature.stereotype); !stereotype.empty())
        out.append(stereotype, 1).append(" ");
    out.append(escaped(text)).append("\n");
}

} // namespace design::plantuml
