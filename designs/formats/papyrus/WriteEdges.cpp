#include "designs/formats/papyrus/Views.h"

#include "designs/formats/shared/Kinds.h"
#include "designs/model/Ways.h"

#include <array>
#include <utility>
#include <vector>

namespace design::papyrus {

namespace {

// A text beside a line; the tool shows none that has no view.
struct Label {
    std::string_view type; // of the line, without "uml:"
    std::string_view name;
    int y; // from where it is by itself
};
constexpr int above = -20;
constexpr int below = 20;
constexpr std::array labels = {
    Label{"Association", "StereotypeLabel", above},
    Label{"Association", "NameLabel", below},
    Label{"Association", "TargetRoleLabel", above},
    Label{"Association", "SourceRoleLabel", above},
    Label{"Association", "SourceMultiplicityLabel", below},
    Label{"Association", "TargetMultiplicityLabel", below},
    Label{"Generalization", "StereotypeLabel", above},
    Label{"InterfaceRealization", "StereotypeLabel", above},
    Label{"InterfaceRealization", "NameLabel", below},
    Label{"Realization", "StereotypeLabel", above},
    Label{"Realization", "NameLabel", below},
    Label{"Abstraction", "NameLabel", below},
    Label{"Abstraction", "StereotypeLabel", above},
    Label{"Usage", "NameLabel", below},
    Label{"Usage", "StereotypeLabel", above},
    Label{"Dependency", "NameLabel", below},
    Label{"Dependency", "StereotypeLabel", above},
};

Point centreOf(const Rectangle& box)
{
    return {box.left + box.width / 2, box.top + box.height / 2};
}

void writeLabels(Notation& notation, std::string_view type)
{
    for (const Label& label : labels) {
        if (label.type != type)
            continue;
        const View view(notation, "children", "notation:DecorationNode",
                        std::string(label.type).append("_").append(label.name));
        writeLocation(notation, label.y);
    }
}

// Points are absolute where the second pair is no distance.
std::string textOf(const std::vector<Point>& points)
{
    std::string text;
    for (const Point& point : points)
        text.append(text.empty() ? "[" : "$[")
            .append(numberText(point.x))
            .append(", ")
            .append(numberText(point.y))
            .append(", -643984, -643984]");
    return text;
}

void writeBends(Notation& notation, const Line& line, const Rectangle& from, const Rectangle& to)
{
    std::vector<Point> points = bendsOf(line);
    std::string text = "[0, 0, 0, 0]$[0, 0, 0, 0]"; // a straight line has them, too
    if (!points.empty()) {
        points.insert(points.begin(), centreOf(from));
        points.push_back(centreOf(to));
        text = textOf(points);
    }
    View(notation, "bendpoints", "notation:RelativeBendpoints").with("points", text);
}

} // namespace

// <edges xmi:type="notation:Connector" xmi:id="_d-12" type="Association_Edge" source="_d-1" target="_d-5">
//   <children xmi:type="notation:DecorationNode" xmi:id="_d-13" type="Association_StereotypeLabel">
//   ...
//   <styles xmi:type="notation:FontStyle" xmi:id="_d-25"/>
//   <element xmi:type="uml:Association" href="shop.uml#_7"/>
//   <bendpoints xmi:type="notation:RelativeBendpoints" xmi:id="_d-27" points="[0, 0, 0, 0]$[0, 0, 0, 0]"/>
//   <sourceAnchor xmi:type="notation:IdentityAnchor" xmi:id="_d-26" id="(0.5,0.5)"/>
void writeEdge(Notation& notation, const Line& line)
{
    const uml2::WrittenRelation relation = notation.model.relation(line.elementId);
    const auto from = notation.places.find(relation.from);
    const auto to = notation.places.find(relation.to);
    if (relation.id.empty() || from == notation.places.end() || to == notation.places.end()) {
        notation.report.left("line", line.elementId, "",
                             "the diagram does not show what it joins, or it joins more than two");
        return;
    }
    const std::string type(relation.type.substr(relation.type.find(':') + 1));
    View edge(notation, "edges", "notation:Connector", type + "_Edge");
    edge.with("source", from->second.view).with("target", to->second.view);
    writeColour(edge, "lineColor", line.appearance.lineColor);
    writeLabels(notation, type);
    {
        View font(notation, "styles", "notation:FontStyle");
        writeFont(font, line.appearance);
    }
    writeElement(notation, "element", relation.type, relation.id);
    writeBends(notation, line, from->second.bounds, to->second.bounds);
    for (const char* const anchor : {"sourceAnchor", "targetAnchor"})
        View(notation, anchor, "notation:IdentityAnchor").with("id", "(0.5,0.5)");
}

} // namespace design::papyrus
