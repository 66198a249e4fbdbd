#include "designs/formats/drawn/Aliases.h"
#include "designs/formats/plantuml/Links.h"
#include "designs/formats/plantuml/Notation.h"
#include "designs/formats/plantuml/Others.h"
#include "text/Words.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_map>

namespace design::plantuml {

namespace {

using rose::Figure;
using rose::FigureKind;
using rose::JointKind;

// Icons that PlantUML has, too.
constexpr std::array<std::string_view, 5> icons = {"actor", "boundary", "control", "database", "entity"};

bool isIcon(std::string_view stereotype)
{
    return std::find(icons.begin(), icons.end(), text::lowerCase(stereotype)) != icons.end();
}

std::string wordOf(const Figure& figure)
{
    switch (figure.kind) {
    case FigureKind::Component:
        return text::lowerCase(figure.stereotype) == "database" ? "database" : "component";
    case FigureKind::Subsystem:
        return "folder";
    case FigureKind::Interface:
        return "interface";
    case FigureKind::Processor:
    case FigureKind::Device:
        return "node";
    default:
        return isIcon(figure.stereotype) ? text::lowerCase(figure.stereotype) : "rectangle";
    }
}

std::string stereotypeOf(const Figure& figure)
{
    if (text::lowerCase(figure.stereotype) == wordOf(figure))
        return "";
    return figure.stereotype.empty() && figure.kind == FigureKind::Device ? "device" : figure.stereotype;
}

class FiguresText {
public:
    explicit FiguresText(const rose::DrawnDiagram& theDiagram) : diagram(theDiagram), aliases(reservedWords())
    {
        for (const Figure& figure : diagram.figures)
            boxes.emplace(figure.key, &figure.box);
        for (const rose::Joint& joint : diagram.joints)
            if (joint.kind == JointKind::Message)
                ways.insert(std::minmax(joint.from, joint.to));
    }

    std::string write()
    {
        for (const Figure& figure : diagram.figures)
            addFigure(figure);
        for (const rose::Joint& joint : diagram.joints)
            addJoint(joint);
        for (const rose::DrawnNote& note : diagram.notes)
            addNote(note);
        return std::move(out);
    }

private:
    // node "Server" as Server {
    //   artifact "orders.exe" as orders_exe <<process>>
    // }
    void addFigure(const Figure& figure)
    {
        const bool hasProcesses = figure.kind == FigureKind::Processor && !figure.lines.empty();
        std::string name = figure.name.empty() ? std::string(" ") : figure.name;
        if (!hasProcesses)
            for (const std::string& line : figure.lines)
                name.append("\n").append(line);
        out.append(wordOf(figure)).append(" ").append(inQuotes(name)).append(" as ");
        out.append(aliases.of(figure.key, figure.name)).append(stereotyped(stereotypeOf(figure)));
        out.append(hasProcesses ? " {\n" : "\n");
        if (!hasProcesses)
            return;
        for (const std::string& process : figure.lines)
            out.append("  artifact ")
                .append(inQuotes(process.empty() ? " " : process))
                .append(" as ")
                .append(aliases.make(process))
                .append(" <<process>>\n");
        out += "}\n";
    }

    // Server -- Printer
    void addJoint(const rose::Joint& joint)
    {
        const std::string* const from = aliases.find(joint.from);
        const std::string* const to = aliases.find(joint.to);
        const bool saysNothing = joint.kind == JointKind::Plain && joint.text.empty() && hasMessages(joint);
        if (!from || !to || saysNothing)
            return;
        Link link;
        link.first = {*from, Head::None, {}};
        link.second = {*to, headOf(joint.kind), {}};
        link.side = sideOf(boxes.at(joint.from), boxes.at(joint.to));
        link.isDashed = joint.kind == JointKind::Dependency || joint.kind == JointKind::Realization ||
                        joint.synchronization == reader::Synchronization::Return;
        link.label = escapedStart(joint.text);
        addLink(out, std::move(link));
    }

    static Head headOf(JointKind kind)
    {
        if (kind == JointKind::Plain)
            return Head::None;
        return kind == JointKind::Realization ? Head::Triangle : Head::Arrow;
    }

    // Arrows of messages stand for the link that they go along.
    [[nodiscard]] bool hasMessages(const rose::Joint& link) const
    {
        return ways.contains(std::minmax(link.from, link.to));
    }

    void addNote(const rose::DrawnNote& note)
    {
        const std::string own = aliases.make("N");
        out.append("note as ").append(own).append("\n");
        addNoteText(out, note.text);
        out += "end note\n";
        for (const std::string& key : note.figures)
            if (const std::string* const alias = aliases.find(key))
                out.append(*alias).append(" .. ").append(own).append("\n");
    }

    const rose::DrawnDiagram& diagram;
    Aliases aliases;
    std::unordered_map<std::string, const Box*> boxes;
    std::set<std::pair<std::string, std::string>> ways; ///< of messages
    std::string out;
};

} // namespace

std::string figuresOf(const rose::DrawnDiagram& diagram)
{
    return FiguresText(diagram).write();
}

} // namespace design::plantuml
