#include "designs/formats/plantuml/DiagramText.h"

#include "designs/formats/drawn/Notation.h"

#include <algorithm>
#include <utility>

namespace design::plantuml {

namespace {

std::string labelled(const Element& element, const std::string& label)
{
    std::string text = stereotyped(element.stereotype);
    if (label.find_first_not_of(' ') != std::string::npos)
        text.append(" ").append(text.empty() ? escapedStart(label) : escaped(label));
    return text.empty() ? text : text.substr(1);
}

std::pair<std::string, std::string> pairOf(const AssociationEnd& first, const AssociationEnd& second)
{
    return std::minmax(first.participant.id, second.participant.id);
}

} // namespace

const Box* DiagramText::boxOf(const std::string& id) const
{
    const auto found = boxes.find(id);
    return found == boxes.end() ? nullptr : found->second;
}

void DiagramText::addLine(const Line& line)
{
    if (const Association* const association = catalogue.association(line.elementId))
        addAssociation(*association, line);
    else if (const Relationship* const relationship = catalogue.relationship(line.elementId))
        addRelationship(*relationship, line);
}

// Associations that are boxes are diamonds, which all of their ends are joined with.
void DiagramText::addBoxesOfAssociations()
{
    for (const Box& box : diagram.boxes)
        if (const Association* const association = catalogue.association(box.elementId))
            addDiamond(*association, "");
}

// What an alias stands for, or empty when the diagram does not show it.
std::string DiagramText::aliasOf(const std::string& id) const
{
    const std::string* const alias = aliases.find(id);
    return alias ? *alias : std::string();
}

std::string DiagramText::colourOf(const Line& line) const
{
    const Colour& own = line.appearance.lineColor;
    return !own || own == usualLine ? std::string() : colour(*own);
}

LinkEnd DiagramText::endOf(const AssociationEnd& end, bool hasArrow) const
{
    Head head = hasArrow ? Head::Arrow : Head::None;
    if (end.aggregation != Aggregation::None)
        head = end.aggregation == Aggregation::Composite ? Head::FilledDiamond : Head::Diamond;
    return {aliasOf(end.participant.id), head, textsAt(end, catalogue)};
}

// Order "1" o-- "0..*" Line : holds
void DiagramText::addAssociation(const Association& association, const Line& line)
{
    if (aliases.find(association.id))
        return; // it is a diamond already
    const auto& ends = association.ends;
    const std::string classAlias = aliasOf(association.associationClassId);
    const bool canBePair = ends.size() == 2 && !isMixed && pairs.insert(pairOf(ends[0], ends[1])).second;
    if (ends.size() != 2 || (!classAlias.empty() && !canBePair)) {
        addDiamond(association, colourOf(line));
        return;
    }
    tellAssociation(association);
    const bool isDirected = ends[0].isNavigable != ends[1].isNavigable;
    Link link;
    link.first = endOf(ends[0], isDirected && ends[0].isNavigable);
    link.second = endOf(ends[1], isDirected && ends[1].isNavigable);
    link.side = sideOf(boxOf(ends[0].participant.id), boxOf(ends[1].participant.id));
    link.colour = colourOf(line);
    link.label = labelled(association, labelOf(association));
    addLink(out, std::move(link));
    addLinkNotes(association.notes);
    if (!classAlias.empty())
        out.append("(").append(aliasOf(ends[0].participant.id)).append(", ");
    if (!classAlias.empty())
        out.append(aliasOf(ends[1].participant.id)).append(") .. ").append(classAlias).append("\n");
}

void DiagramText::tellAssociation(const Association& association)
{
    if (!common.coverage.has(association))
        leaveProperties(association, common.report);
    common.coverage.add(association);
    addComment(out, "", association.documentation);
    for (const AssociationEnd& end : association.ends)
        addComment(out, "", end.documentation);
}

// <> holds
// Order "1" o-- holds
void DiagramText::addDiamond(const Association& association, const std::string& lineColour)
{
    tellAssociation(association);
    const std::string& alias = aliases.of(association.id, association.name.empty() ? "association" : association.name);
    out.append("<> ").append(alias).append("\n");
    for (const AssociationEnd& end : association.ends)
        if (const LinkEnd first = endOf(end, false); !first.alias.empty())
            addLink(out, {first,
                          {alias, Head::None, {}},
                          Side::Unknown,
                          false,
                          lineColour,
                          &end == &association.ends.front() ? labelled(association, labelOf(association)) : ""});
    if (const std::string classAlias = aliasOf(association.associationClassId); !classAlias.empty())
        addLink(out, {{alias, Head::None, {}}, {classAlias, Head::None, {}}, Side::Unknown, true, lineColour, ""});
    for (const std::string& note : association.notes)
        addNote(note, &alias);
}

// Document <|-- Order
void DiagramText::addRelationship(const Relationship& relationship, const Line& line)
{
    if (!common.coverage.has(relationship))
        leaveProperties(relationship, common.report);
    common.coverage.add(relationship);
    addComment(out, "", relationship.documentation);
    const bool isDependency = relationship.kind == RelationshipKind::Dependency;
    Link link;
    link.first = {aliasOf(relationship.supplier.id), isDependency ? Head::Arrow : Head::Triangle, {}};
    link.second = {aliasOf(relationship.client.id), Head::None, {}};
    link.side = sideOf(boxOf(relationship.supplier.id), boxOf(relationship.client.id));
    if (isDependency && link.side == Side::Unknown)
        std::swap(link.first, link.second);
    link.isDashed = relationship.kind != RelationshipKind::Generalization;
    link.colour = colourOf(line);
    link.label = labelled(relationship, labelOf(relationship));
    addLink(out, std::move(link));
    addLinkNotes(relationship.notes);
}

// note on link
//   the text
// end note
void DiagramText::addLinkNotes(const std::vector<std::string>& notes)
{
    if (notes.empty())
        return;
    out += "note on link\n";
    for (const std::string& note : notes)
        addNoteText(out, note);
    out += "end note\n";
}

} // namespace design::plantuml
