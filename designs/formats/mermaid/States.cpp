#include "designs/formats/drawn/Aliases.h"
#include "designs/formats/drawn/OtherDiagrams.h"
#include "designs/formats/mermaid/Mermaid.h"
#include "designs/formats/mermaid/Notation.h"

#include <unordered_map>

namespace design::mermaid {

namespace {

using rose::Figure;
using rose::FigureKind;

bool isDot(const Figure& figure)
{
    return figure.kind == FigureKind::Start || figure.kind == FigureKind::End;
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
        out = headOf(diagram.name, diagram.path, "stateDiagram-v2");
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
                out.append(2 * open, ' ').append("}\n");
            if (isDot(*each.figure))
                continue; // a dot where its transition begins or ends
            addFigure(*each.figure, 2 * (each.level + 1));
            out.append(each.isAround ? " {\n" : "\n");
            open += each.isAround ? 1 : 0;
        }
        for (; open > 0; --open)
            out.append(2 * open, ' ').append("}\n");
    }

    // state "Wait for input" as Wait_for_input
    void addFigure(const Figure& figure, std::size_t indentation)
    {
        const std::string& alias = aliases.of(figure.key, figure.name.empty() ? "state" : figure.name);
        out.append(indentation, ' ').append("state ");
        if (figure.kind == FigureKind::Decision || figure.kind == FigureKind::Bar)
            out.append(alias).append(figure.kind == FigureKind::Bar ? " <<fork>>" : " <<choice>>");
        else
            out.append(inQuotes(figure.name)).append(" as ").append(alias);
    }

    // Wait_for_input : entry / ring the bell
    void addDetails(const Figure& figure)
    {
        const std::string* const alias = aliases.find(figure.key);
        if (!alias)
            return;
        if (figure.kind == FigureKind::Decision || figure.kind == FigureKind::Bar) {
            if (!figure.name.empty())
                addNoteAt(*alias, figure.name); // such shapes show no names
            return;
        }
        if (!figure.stereotype.empty())
            out.append("  ").append(*alias).append(labelled("«" + figure.stereotype + "»")).append("\n");
        for (const std::string& line : figure.lines)
            out.append("  ").append(*alias).append(labelled(line.empty() ? " " : line)).append("\n");
    }

    void addTransition(const rose::Joint& joint)
    {
        const auto from = figures.find(joint.from);
        const auto to = figures.find(joint.to);
        if (from == figures.end() || to == figures.end())
            return;
        out.append("  ").append(stateOf(*from->second)).append(" --> ").append(stateOf(*to->second));
        out.append(labelled(joint.text)).append("\n");
    }

    [[nodiscard]] std::string stateOf(const Figure& figure) const
    {
        const std::string* const alias = aliases.find(figure.key);
        return alias ? *alias : "[*]";
    }

    // Without a state to hang at a note is one of the first.
    void addNote(const rose::DrawnNote& note)
    {
        bool hangs = false;
        for (const std::string& key : note.figures)
            if (const std::string* const alias = aliases.find(key)) {
                addNoteAt(*alias, note.text);
                hangs = true;
            }
        for (auto figure = diagram.figures.begin(); !hangs && figure != diagram.figures.end(); ++figure)
            if (const std::string* const alias = aliases.find(figure->key)) {
                addNoteAt(*alias, note.text);
                hangs = true;
            }
    }

    void addNoteAt(const std::string& alias, std::string_view text)
    {
        out.append("  note right of ").append(alias).append(labelled(text)).append("\n");
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

} // namespace design::mermaid
