#include "designs/formats/drawn/Aliases.h"
#include "designs/formats/drawn/Groups.h"
#include "designs/formats/drawn/OtherDiagrams.h"
#include "designs/formats/plantuml/Notation.h"
#include "designs/formats/plantuml/Others.h"

#include <unordered_map>

namespace design::plantuml {

namespace {

using rose::Figure;
using rose::FigureKind;

// Words of the shapes that are no states; the others have none.
std::string_view shapeOf(FigureKind kind)
{
    switch (kind) {
    case FigureKind::End:
        return "<<end>>";
    case FigureKind::Decision:
        return "<<choice>>";
    case FigureKind::Bar:
        return "<<fork>>";
    default:
        return "";
    }
}

std::string_view arrowTo(Side side)
{
    switch (side) {
    case Side::Right:
        return " -> ";
    case Side::Left:
        return " -left-> ";
    case Side::Above:
        return " -up-> ";
    case Side::Below:
    case Side::Unknown:
        break;
    }
    return " --> ";
}

class StatesText {
public:
    explicit StatesText(const rose::DrawnDiagram& theDiagram) : diagram(theDiagram), aliases(reservedWords())
    {
        for (const Figure& figure : diagram.figures)
            figures.emplace(figure.key, &figure);
    }

    std::string write()
    {
        addFigures();
        for (const Figure& figure : diagram.figures)
            addDetails(figure);
        for (const rose::Joint& joint : diagram.joints)
            addTransition(joint);
        for (const rose::DrawnNote& note : diagram.notes)
            addNote(note);
        return std::move(out);
    }

private:
    // Each level closes when the next figure does not stand in it.
    void addFigures()
    {
        std::size_t open = 0;
        for (const Nested& each : nested(diagram)) {
            for (; open > each.level; --open)
                out.append(2 * (open - 1), ' ').append("}\n");
            if (each.figure->kind == FigureKind::Start)
                continue; // a dot where its transition begins
            addFigure(*each.figure, each.level);
            out.append(each.isAround ? " {\n" : "\n");
            open += each.isAround ? 1 : 0;
        }
        for (; open > 0; --open)
            out.append(2 * (open - 1), ' ').append("}\n");
    }

    // state "Wait for input" as Wait_for_input
    void addFigure(const Figure& figure, std::size_t level)
    {
        const std::string& alias = aliases.of(figure.key, figure.name.empty() ? "state" : figure.name);
        const std::string_view shape = shapeOf(figure.kind);
        out.append(2 * level, ' ').append("state ");
        if (!shape.empty())
            out.append(alias).append(" ").append(shape);
        else
            out.append(inQuotes(figure.name.empty() ? " " : figure.name))
                .append(" as ")
                .append(alias)
                .append(stereotyped(figure.stereotype));
    }

    // Wait_for_input : entry / ring the bell
    void addDetails(const Figure& figure)
    {
        const std::string* const alias = aliases.find(figure.key);
        if (!alias)
            return;
        if (!shapeOf(figure.kind).empty() && !figure.name.empty())
            addNoteAt(*alias, figure.name); // such shapes show no names
        else if (shapeOf(figure.kind).empty())
            for (const std::string& line : figure.lines)
                out.append(*alias).append(labelled(line)).append("\n");
    }

    void addTransition(const rose::Joint& joint)
    {
        const auto from = figures.find(joint.from);
        const auto to = figures.find(joint.to);
        if (from == figures.end() || to == figures.end())
            return;
        const Side side = sideOf(&from->second->box, &to->second->box);
        out.append(stateOf(*from->second)).append(arrowTo(side)).append(stateOf(*to->second));
        out.append(labelled(joint.text)).append("\n");
    }

    [[nodiscard]] std::string stateOf(const Figure& figure) const
    {
        const std::string* const alias = aliases.find(figure.key);
        return alias ? *alias : "[*]";
    }

    void addNote(const rose::DrawnNote& note)
    {
        bool hangs = false;
        for (const std::string& key : note.figures)
            if (const std::string* const alias = aliases.find(key)) {
                addNoteAt(*alias, note.text);
                hangs = true;
            }
        if (!hangs)
            out.append("note ").append(inQuotes(note.text)).append(" as ").append(aliases.make("N")).append("\n");
    }

    // note right of Wait_for_input
    //   the text
    // end note
    void addNoteAt(const std::string& alias, std::string_view text)
    {
        out.append("note right of ").append(alias).append("\n");
        addNoteText(out, text);
        out += "end note\n";
    }

    const rose::DrawnDiagram& diagram;
    Aliases aliases;
    std::unordered_map<std::string, const Figure*> figures;
    std::string out;
};

} // namespace

std::string statesOf(const rose::DrawnDiagram& diagram)
{
    return StatesText(diagram).write();
}

} // namespace design::plantuml
