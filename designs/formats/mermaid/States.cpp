#include "designs/formats/drawn/States.h"
#include "designs/formats/mermaid/Mermaid.h"
#include "designs/formats/mermaid/Notation.h"

namespace design::mermaid {

namespace {

using rose::Figure;
using rose::FigureKind;

// Such shapes show no names.
bool isNameless(const Figure& figure)
{
    return figure.kind == FigureKind::Decision || figure.kind == FigureKind::Bar;
}

class MermaidStates final : public StatesText {
public:
    explicit MermaidStates(const rose::DrawnDiagram& diagram) : StatesText(diagram, reservedWords()) {}

private:
    [[nodiscard]] bool isDot(const Figure& figure) const override
    {
        return figure.kind == FigureKind::Start || figure.kind == FigureKind::End;
    }

    // state "Wait for input" as Wait_for_input
    void addFigure(const Figure& figure, std::size_t level) override
    {
        const std::string& alias = aliasOf(figure);
        out.append(2 * (level + 1), ' ').append("state ");
        if (isNameless(figure))
            out.append(alias).append(figure.kind == FigureKind::Bar ? " <<fork>>" : " <<choice>>");
        else
            out.append(inQuotes(figure.name)).append(" as ").append(alias);
    }

    void addEnd(std::size_t level) override { out.append(2 * (level + 1), ' ').append("}\n"); }

    // Wait_for_input : entry / ring the bell
    void addDetails(const Figure& figure, const std::string& alias) override
    {
        if (isNameless(figure)) {
            if (!figure.name.empty())
                addNoteAt(alias, figure.name);
            return;
        }
        if (!figure.stereotype.empty())
            out.append("  ").append(alias).append(labelled("«" + figure.stereotype + "»")).append("\n");
        for (const std::string& line : figure.lines)
            out.append("  ").append(alias).append(labelled(line.empty() ? " " : line)).append("\n");
    }

    void addTransition(const Figure& from, const Figure& to, std::string_view label) override
    {
        out.append("  ").append(stateOf(from)).append(" --> ").append(stateOf(to)).append(labelled(label)).append("\n");
    }

    void addNoteAt(const std::string& alias, std::string_view text) override
    {
        out.append("  note right of ").append(alias).append(labelled(text)).append("\n");
    }

    // A note must hang at a state.
    void addLooseNote(std::string_view text) override
    {
        if (const std::string* const alias = firstState())
            addNoteAt(*alias, text);
    }
};

} // namespace

std::string statesOf(const rose::DrawnDiagram& diagram)
{
    return MermaidStates(diagram).write(headOf(diagram.name, diagram.path, "stateDiagram-v2"));
}

} // namespace design::mermaid
