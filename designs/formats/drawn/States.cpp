#include "designs/formats/drawn/States.h"

#include "designs/formats/drawn/OtherDiagrams.h"

#include <utility>

namespace design {

using rose::Figure;

StatesText::StatesText(const rose::DrawnDiagram& theDiagram, std::span<const std::string_view> reservedWords)
    : aliases(reservedWords), diagram(theDiagram)
{
    for (const Figure& figure : diagram.figures)
        figures.emplace(figure.key, &figure);
}

std::string StatesText::write(std::string head)
{
    out = std::move(head);
    addFigures();
    for (const Figure& figure : diagram.figures)
        if (const std::string* const alias = aliases.find(figure.key))
            addDetails(figure, *alias);
    for (const rose::Joint& joint : diagram.joints) {
        const auto from = figures.find(joint.from);
        const auto to = figures.find(joint.to);
        if (from != figures.end() && to != figures.end())
            addTransition(*from->second, *to->second, joint.text);
    }
    for (const rose::DrawnNote& note : diagram.notes)
        addNote(note);
    return std::move(out);
}

// Each level closes when the next figure does not stand in it.
void StatesText::addFigures()
{
    std::size_t open = 0;
    for (const Nested& each : nested(diagram)) {
        for (; open > each.level; --open)
            addEnd(open - 1);
        if (isDot(*each.figure))
            continue;
        addFigure(*each.figure, each.level);
        out.append(each.isAround ? " {\n" : "\n");
        open += each.isAround ? 1 : 0;
    }
    for (; open > 0; --open)
        addEnd(open - 1);
}

void StatesText::addNote(const rose::DrawnNote& note)
{
    bool hangs = false;
    for (const std::string& key : note.figures)
        if (const std::string* const alias = aliases.find(key)) {
            addNoteAt(*alias, note.text);
            hangs = true;
        }
    if (!hangs)
        addLooseNote(note.text);
}

const std::string& StatesText::aliasOf(const Figure& figure)
{
    return aliases.of(figure.key, figure.name.empty() ? "state" : figure.name);
}

std::string StatesText::stateOf(const Figure& figure) const
{
    const std::string* const alias = aliases.find(figure.key);
    return alias ? *alias : "[*]";
}

const std::string* StatesText::firstState() const
{
    for (const Figure& figure : diagram.figures)
        if (const std::string* const alias = aliases.find(figure.key))
            return alias;
    return nullptr;
}

} // namespace design
