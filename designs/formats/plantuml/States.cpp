#include "designs/formats/drawn/States.h"
#include "designs/formats/drawn/Groups.h"
#include "designs/formats/plantuml/Notation.h"
#include "designs/formats/plantuml/Others.h"

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

class PlantUmlStates final : public StatesText {
public:
    explicit PlantUmlStates(const rose::DrawnDiagram& diagram) : StatesText(diagram, reservedWords()) {}

private:
    [[nodiscard]] bool isDot(const Figure& figure) const override { return figure.kind == FigureKind::Start; }

    // state "Wait for input" as Wait_for_input
    void addFigure(const Figure& figure, std::size_t level) override
    {
        const std::string& alias = aliasOf(figure);
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

    void addEnd(std::size_t level) override { out.append(2 * level, ' ').append("}\n"); }

    // Wait_for_input : entry / ring the bell
    void addDetails(const Figure& figure, const std::string& alias) override
    {
        if (!shapeOf(figure.kind).empty() && !figure.name.empty())
            addNoteAt(alias, figure.name); // such shapes show no names
        else if (shapeOf(figure.kind).empty())
            for (const std::string& line : figure.lines)
                out.append(alias).append(labelled(line)).append("\n");
    }

    void addTransition(const Figure& from, const Figure& to, std::string_view label) override
    {
        out.append(stateOf(from)).append(arrowTo(sideOf(&from.box, &to.box))).append(stateOf(to));
        out.append(labelled(label)).append("\n");
    }

    // note right of Wait_for_input
    //   the text
    // end note
    void addNoteAt(const std::string& alias, std::string_view text) override
    {
        out.append("note right of ").append(alias).append("\n");
        addNoteText(out, text);
        out += "end note\n";
    }

    void addLooseNote(std::string_view text) override
    {
        out.append("note ").append(inQuotes(text)).append(" as ").append(aliases.make("N")).append("\n");
    }
};

} // namespace

std::string statesOf(const rose::DrawnDiagram& diagram)
{
    return PlantUmlStates(diagram).write("");
}

} // namespace design::plantuml
