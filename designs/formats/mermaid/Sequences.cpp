#include "designs/formats/drawn/Aliases.h"
#include "designs/formats/drawn/Sequence.h"
#include "designs/formats/mermaid/Mermaid.h"
#include "designs/formats/mermaid/Notation.h"

namespace design::mermaid {

namespace {

std::string_view arrowOf(reader::Synchronization synchronization)
{
    switch (synchronization) {
    case reader::Synchronization::Asynchronous:
        return "-)";
    case reader::Synchronization::Return:
        return "-->>";
    case reader::Synchronization::Simple:
    case reader::Synchronization::Synchronous:
    case reader::Synchronization::ProcedureCall:
    case reader::Synchronization::Balking:
    case reader::Synchronization::Timeout:
        break;
    }
    return "->>";
}

// participant desk as desk #58; Order
void addParticipant(std::string& out, const rose::Figure& figure, const std::string& alias)
{
    std::string name = labelled(figure.name.empty() ? alias : figure.name).substr(3);
    if (const std::string& stereotype = figure.stereotype; !stereotype.empty() && iconOf(figure) != "actor")
        name.append("<br/>«").append(escaped(stereotype)).append("»");
    for (const std::string& line : figure.lines)
        name.append("<br/>").append(escaped(line));
    out.append("  ").append(iconOf(figure) == "actor" ? "actor " : "participant ").append(alias);
    out.append(" as ").append(name).append("\n");
}

// A message must have a text.
std::string shown(std::string_view text)
{
    return text.find_first_not_of(" \n\t") == std::string_view::npos ? ": #160;" : ": " + labelled(text).substr(3);
}

void addStep(std::string& out, const Step& step, const std::string& first, const std::string& last)
{
    switch (step.kind) {
    case StepKind::Message:
        out.append(first).append(arrowOf(step.message->synchronization)).append(last);
        out.append(shown(step.message->text));
        break;
    case StepKind::Activate:
        out.append("activate ").append(first);
        break;
    case StepKind::Deactivate:
        out.append("deactivate ").append(first);
        break;
    case StepKind::Destroy: // the notation lets only a message end a life
        out.append("Note over ").append(first).append(": (destroyed)");
        break;
    case StepKind::Note:
        out.append("Note over ").append(first);
        if (step.figures.size() > 1)
            out.append(",").append(last);
        out.append(shown(step.note->text));
        break;
    }
}

} // namespace

std::string sequenceOf(const rose::DrawnDiagram& diagram)
{
    const Sequence sequence = sequenceIn(diagram);
    if (sequence.participants.empty())
        return "";
    Aliases aliases(reservedWords());
    std::string out = headOf(diagram.name, diagram.path, "sequenceDiagram");
    if (diagram.isNumbered)
        out += "  autonumber\n";
    const auto aliasOf = [&](const rose::Figure* figure) { return aliases.of(figure->key, figure->name); };
    for (const rose::Figure* const figure : sequence.participants)
        addParticipant(out, *figure, aliasOf(figure));
    for (const Step& step : sequence.steps) {
        const std::string first = aliasOf(step.figures.front());
        const std::string last = aliasOf(step.figures.back());
        out += "  ";
        addStep(out, step, first, last);
        out += '\n';
    }
    return out;
}

} // namespace design::mermaid
