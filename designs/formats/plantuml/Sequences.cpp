#include "designs/formats/drawn/Sequence.h"

#include "designs/formats/drawn/Aliases.h"
#include "designs/formats/plantuml/Notation.h"
#include "designs/formats/plantuml/Others.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace design::plantuml {

namespace {

std::string_view arrowOf(reader::Synchronization synchronization)
{
    switch (synchronization) {
    case reader::Synchronization::Asynchronous:
        return "-\\\\";
    case reader::Synchronization::Return:
        return "-->>";
    case reader::Synchronization::Synchronous:
    case reader::Synchronization::ProcedureCall:
    case reader::Synchronization::Balking:
    case reader::Synchronization::Timeout:
        return "->";
    case reader::Synchronization::Simple:
        break;
    }
    return "->>";
}

// participant "desk : Order" as desk <<service>>
void addParticipant(std::string& out, const rose::Figure& figure, const std::string& alias)
{
    const std::string icon = iconOf(figure);
    std::string name = figure.name.empty() ? std::string(" ") : figure.name;
    for (const std::string& line : figure.lines)
        name.append("\n").append(line);
    out.append(icon.empty() ? "participant" : icon).append(" ").append(inQuotes(name)).append(" as ").append(alias);
    out.append(icon.empty() ? stereotyped(figure.stereotype) : "").append("\n");
}

// Customer -> desk : order
void addMessage(std::string& out, const rose::Joint& message, const std::string& from, const std::string& to)
{
    out.append(from).append(" ").append(arrowOf(message.synchronization)).append(" ").append(to);
    out.append(labelled(message.text)).append("\n");
}

// note over desk
//   the text
// end note
void addNote(std::string& out, const std::string& text, const std::string& over)
{
    out.append("note over ").append(over).append("\n");
    addNoteText(out, text);
    out += "end note\n";
}

// Bars of activity that begin and end between two messages. The tool takes one change of a participant there, or a bar
// that begins and ends.
class Bars {
public:
    void change(const std::string& alias, int by)
    {
        if (!wanted.contains(alias)) {
            order.push_back(alias);
            wanted[alias] = open[alias];
        }
        wanted[alias] += by;
    }

    void write(std::string& out)
    {
        for (const std::string& alias : order) {
            int& now = open[alias];
            const int then = std::max(wanted[alias], 0);
            if (then > now || now == 0)
                out.append("activate ").append(alias).append("\n");
            if (then < now || then == 0)
                out.append("deactivate ").append(alias).append("\n");
            now = then > now ? now + 1 : then < now ? now - 1 : now;
        }
        order.clear();
        wanted.clear();
    }

private:
    std::unordered_map<std::string, int> open;
    std::unordered_map<std::string, int> wanted; // of those that change
    std::vector<std::string> order;
};

} // namespace

std::string sequenceOf(const rose::DrawnDiagram& diagram)
{
    const Sequence sequence = sequenceIn(diagram);
    if (sequence.participants.empty())
        return figuresOf(diagram);
    Aliases aliases(reservedWords());
    std::string out = diagram.isNumbered ? "autonumber\n" : "";
    const auto aliasOf = [&](const rose::Figure* figure) { return aliases.of(figure->key, figure->name); };
    for (const rose::Figure* const figure : sequence.participants)
        addParticipant(out, *figure, aliasOf(figure));
    Bars bars;
    for (const Step& step : sequence.steps) {
        const std::string first = aliasOf(step.figures.front());
        const std::string last = aliasOf(step.figures.back());
        if (step.kind != StepKind::Activate && step.kind != StepKind::Deactivate)
            bars.write(out);
        switch (step.kind) {
        case StepKind::Message:
            addMessage(out, *step.message, first, last);
            break;
        case StepKind::Activate:
            bars.change(first, 1);
            break;
        case StepKind::Deactivate:
            bars.change(first, -1);
            break;
        case StepKind::Destroy:
            out.append("destroy ").append(first).append("\n");
            break;
        case StepKind::Note:
            addNote(out, step.note->text,
                    step.figures.size() > 1 ? std::string(first).append(", ").append(last) : first);
            break;
        }
    }
    bars.write(out);
    return out;
}

} // namespace design::plantuml
