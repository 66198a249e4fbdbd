#include "designs/formats/plantuml/DiagramText.h"

#include "designs/formats/drawn/Notation.h"

#include <algorithm>
#include <map>
#include <utility>

namespace design::plantuml {

namespace {

// The colour that most boxes have, which the diagram names once; none when there are no colours.
Colour usualColour(const std::vector<Box>& boxes, Colour Appearance::*member)
{
    std::map<std::uint32_t, std::size_t> counts;
    for (const Box& box : boxes)
        if (const Colour& each = box.appearance.*member)
            ++counts[*each];
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == counts.end() ? Colour() : most->first;
}

} // namespace

DiagramText::DiagramText(const Diagram& theDiagram, const Package& owner, const Common& theCommon)
    : diagram(theDiagram), common(theCommon), catalogue(theCommon.writing.catalogue),
      groups(theDiagram, owner, theCommon.homes, theCommon.writing.catalogue), aliases(reservedWords()),
      usualFill(usualColour(theDiagram.boxes, &Appearance::fillColor)),
      usualLine(usualColour(theDiagram.boxes, &Appearance::lineColor))
{
    for (const Box& box : diagram.boxes)
        boxes.emplace(box.elementId, &box);
    findKinds();
}

std::string DiagramText::write()
{
    addHead();
    addGroup(0, "");
    addBoxesOfAssociations();
    for (const Line& line : diagram.lines)
        addLine(line);
    for (const Box& box : diagram.boxes)
        addNotes(box.elementId);
    for (const std::string& note : diagram.notes)
        addNote(note, nullptr);
    leaveLayout(diagram, common.report);
    return std::move(out);
}

// A diagram of actors and use cases alone is drawn as one; where classes stand among them, all is a class diagram.
void DiagramText::findKinds()
{
    bool hasFigures = false;
    for (const Box& box : diagram.boxes)
        if (const Classifier* const classifier = catalogue.classifier(box.elementId)) {
            hasFigures = hasFigures || isFigure(*classifier);
            hasClasses = hasClasses || !isFigure(*classifier);
        }
    hasClasses = hasClasses || !hasFigures || needsDiamond();
    isMixed = hasClasses && hasFigures;
}

bool DiagramText::needsDiamond() const
{
    const auto isOfMany = [&](const Line& line) {
        const Association* const association = catalogue.association(line.elementId);
        return association && association->ends.size() != 2;
    };
    return std::any_of(diagram.boxes.begin(), diagram.boxes.end(),
                       [&](const Box& box) { return catalogue.association(box.elementId) != nullptr; }) ||
           std::any_of(diagram.lines.begin(), diagram.lines.end(), isOfMany);
}

void DiagramText::addHead()
{
    if (isMixed)
        out += "allow_mixing\n";
    if (hasClasses)
        out += "hide empty members\n";
    if (usualFill && hasClasses)
        out.append("skinparam classBackgroundColor ").append(colour(*usualFill)).append("\n");
    if (usualLine && hasClasses)
        out.append("skinparam classBorderColor ").append(colour(*usualLine)).append("\n");
    if (usualFill && (!hasClasses || isMixed))
        out.append("skinparam usecaseBackgroundColor ").append(colour(*usualFill)).append("\n");
}

// package "Stock" as Stock <<subsystem>> #FFFFCC {
//   class Item
// }
void DiagramText::addGroup(std::size_t place, const std::string& indentation)
{
    const Group& group = groups.all()[place];
    const std::string inner = group.package ? indentation + "  " : indentation;
    if (group.package) {
        const Package& package = *group.package;
        common.coverage.add(package);
        if (group.box)
            addComment(out, indentation, package.documentation);
        out.append(indentation).append("package ").append(inQuotes(package.name)).append(" as ");
        out.append(aliases.of(package.id, package.name)).append(stereotyped(package.stereotype));
        if (group.box)
            out.append(ownColour(group.box->appearance.fillColor, usualFill));
        out += " {\n";
    }
    for (const Box* const box : group.boxes)
        addClassifier(*catalogue.classifier(box->elementId), *box, inner);
    for (const std::size_t each : group.groups)
        addGroup(each, inner);
    if (group.package)
        out.append(indentation).append("}\n");
}

void DiagramText::addNotes(const std::string& id)
{
    const std::string* const alias = aliases.find(id);
    const Classifier* const classifier = catalogue.classifier(id);
    const Element* element = classifier;
    if (!element)
        element = catalogue.package(id);
    if (!element || !alias)
        return;
    for (const std::string& note : element->notes)
        addNote(note, alias);
    for (const std::string& constraint : element->constraints)
        addNote(std::string("{").append(constraint).append("}"), alias);
    if (classifier)
        for (const std::string& note : notesOfFeatures(*classifier))
            addNote(note, alias);
}

// note as Note
//   the text
// end note
// Order .. Note
void DiagramText::addNote(const std::string& text, const std::string* target)
{
    const std::string alias = aliases.make("N");
    out.append("note as ").append(alias).append("\n");
    addNoteText(out, text);
    out += "end note\n";
    if (target)
        out.append(*target).append(" .. ").append(alias).append("\n");
}

std::string textOf(const Diagram& diagram, const Package& owner, const Common& common)
{
    return DiagramText(diagram, owner, common).write();
}

} // namespace design::plantuml
