#include "designs/formats/ea/Diagrams.h"

#include "designs/formats/shared/Kinds.h"
#include "designs/formats/uml2/Umldi.h"
#include "designs/model/Walk.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace design::ea {

namespace {

// Where a line meets a box: at an offset from its centre, y upward, or straight beside the next bend where that lies
// beside the box, since such lines are drawn at right angles.
Point anchor(const Rectangle& box, Point offset, const Point* next)
{
    const Point centre{box.left + box.width / 2, box.top + box.height / 2};
    Point place{centre.x + offset.x, centre.y - offset.y};
    if (next == nullptr)
        return place;
    if (next->x >= box.left && next->x <= box.left + box.width)
        return {next->x, centre.y};
    if (next->y >= box.top && next->y <= box.top + box.height)
        return {centre.x, next->y};
    return place;
}

// A line without bends is upright or level if the boxes have room for that, from the place where it leaves the first.
void straighten(Point& first, Point& last, const Rectangle& from, const Rectangle& to)
{
    const double left = std::max(from.left, to.left);
    const double right = std::min(from.left + from.width, to.left + to.width);
    const double top = std::max(from.top, to.top);
    const double bottom = std::min(from.top + from.height, to.top + to.height);
    if (left <= right)
        first.x = last.x = std::clamp(first.x, left, right);
    else if (top <= bottom)
        first.y = last.y = std::clamp(first.y, top, bottom);
}

std::vector<Point> bends(std::string_view path)
{
    std::vector<Point> points;
    while (!path.empty()) {
        const std::string_view part = path.substr(0, path.find('$'));
        path.remove_prefix(std::min(part.size() + 1, path.size()));
        if (const std::size_t colon = part.find(':'); colon != std::string_view::npos)
            points.push_back({xml::number(part.substr(0, colon), 0), -xml::number(part.substr(colon + 1), 0)});
    }
    return points;
}

// "AttPub=0;OpPri=0;": what a box leaves out, by the visibility of the features, beside what the whole diagram does.
HiddenFeatures hiddenIn(std::string_view style, HiddenFeatures hidden)
{
    constexpr std::array<std::string_view, 4> attributes = {"AttPub=", "AttPro=", "AttPri=", "AttPkg="};
    constexpr std::array<std::string_view, 4> operations = {"OpPub=", "OpPro=", "OpPri=", "OpPkg="};
    const auto isHidden = [style](std::string_view key) { return xml::between(style, key, ';') == "0"; };
    for (std::size_t i = 0; i < hidden.attributes.size(); ++i) {
        hidden.attributes[i] = hidden.attributes[i] || isHidden(attributes[i]);
        hidden.operations[i] = hidden.operations[i] || isHidden(operations[i]);
    }
    return hidden;
}

bool isBox(pugi::xml_node element)
{
    return std::string_view(element.attribute("geometry").value()).starts_with("Left=");
}

constexpr std::string_view useCaseType = "Use Case";

using RemarksById = std::unordered_map<std::string, const Remark*>;

class DiagramReader {
public:
    DiagramReader(const Drawing& theDrawing, const Extension& theExtension, const RemarksById& theRemarks)
        : drawing(theDrawing), extension(theExtension), remarks(theRemarks)
    {
    }

    Diagram read(pugi::xml_node node)
    {
        diagram.id = xml::xmiAttribute(node, "id");
        diagram.name = valueOf(node, "properties", "name");
        diagram.documentation = valueOf(node, "properties", "documentation");
        if (valueOf(node, "properties", "type") == useCaseType)
            diagram.kind = DiagramKind::UseCase;
        const std::string_view style = valueOf(node, "style1", "value");
        hiddenInAll = hiding(xml::between(style, "HideAtts=", ';') == "1", xml::between(style, "HideOps=", ';') == "1");
        for (const pugi::xml_node element : node.child("elements").children("element"))
            if (isBox(element) && !readNote(element.attribute("subject").value()))
                readBox(element);
        for (const pugi::xml_node element : node.child("elements").children("element")) {
            const std::string_view geometry = element.attribute("geometry").value();
            if (!isBox(element) && geometry.find("Path=") != std::string_view::npos)
                readLine(element);
        }
        return std::move(diagram);
    }

private:
    // Whether it is a comment. Those on nothing belong to the diagram, others to what they are on.
    bool readNote(const std::string& id)
    {
        const auto found = remarks.find(id);
        if (found != remarks.end() && found->second->elementIds.empty() && !found->second->isConstraint)
            diagram.remarks.push_back(*found->second);
        return found != remarks.end();
    }

    // geometry="Left=444;Top=304;Right=652;Bottom=440;" subject="EAID_1" style="DUID=6EAFDD88;BCol=11796479;LCol=-1;"
    void readBox(pugi::xml_node node)
    {
        const std::string_view geometry = node.attribute("geometry").value();
        const std::string_view style = node.attribute("style").value();
        const double left = xml::number(xml::between(geometry, "Left=", ';'), 0);
        const double top = xml::number(xml::between(geometry, "Top=", ';'), 0);
        Box box;
        box.elementId = node.attribute("subject").value();
        if (const auto package = extension.packages.find(box.elementId); package != extension.packages.end())
            box.elementId = package->second;
        box.bounds = Rectangle{left, top, xml::number(xml::between(geometry, "Right=", ';'), left) - left,
                               xml::number(xml::between(geometry, "Bottom=", ';'), top) - top};
        if (const auto usual = extension.details.find(box.elementId); usual != extension.details.end())
            box.appearance = usual->second.appearance;
        const auto choose = [&](std::optional<std::uint32_t>& chosen, std::string_view key) {
            if (const auto own = colour(style, key))
                chosen = own;
        };
        choose(box.appearance.fillColor, "BCol=");
        choose(box.appearance.lineColor, "LCol=");
        choose(box.appearance.fontColor, "BFol=");
        box.appearance.fontName = xml::between(style, ";font=", ';');
        box.appearance.fontSize = xml::number(xml::between(style, "fontsz=", ';'), 0) / 10;
        box.hidden = hiddenIn(style, hiddenInAll);
        boxes.emplace(xml::between(style, "DUID=", ';'), box);
        diagram.boxes.push_back(std::move(box));
    }

    // geometry="SX=12;SY=0;EX=0;EY=-22;EDGE=1;$LLB=;Path=429:-459$;" style="EOID=ED8C0823;SOID=D1703BEE;Color=-1;"
    void readLine(pugi::xml_node node)
    {
        const std::string_view style = node.attribute("style").value();
        if (xml::between(style, "Hidden=", ';') == "1")
            return;
        Line line;
        const std::string subject(node.attribute("subject").value());
        if (const auto kind = extension.kinds.find(subject);
            kind != extension.kinds.end() && kind->second == "note link")
            return;
        const auto classId = extension.associationClasses.find(subject);
        line.elementId = drawing.lineId(classId == extension.associationClasses.end() ? subject : classId->second);
        line.appearance.lineColor = colour(style, "Color=");
        line.points = bends(xml::between(node.attribute("geometry").value(), "Path=", ';'));
        const auto from = boxes.find(xml::between(style, "SOID=", ';'));
        const auto to = boxes.find(xml::between(style, "EOID=", ';'));
        if (from != boxes.end() && to != boxes.end()) {
            addEnds(node, *from->second.bounds, *to->second.bounds, line);
            drawing.turn(line, from->second.elementId);
        }
        diagram.lines.push_back(std::move(line));
    }

    static void addEnds(pugi::xml_node node, const Rectangle& from, const Rectangle& to, Line& line)
    {
        const std::string_view geometry = node.attribute("geometry").value();
        const auto offset = [geometry](std::string_view x, std::string_view y) {
            return Point{xml::number(xml::between(geometry, x, ';'), 0),
                         xml::number(xml::between(geometry, y, ';'), 0)};
        };
        const bool hasBends = !line.points.empty();
        Point first = anchor(from, offset("SX=", "SY="), hasBends ? &line.points.front() : nullptr);
        Point last = anchor(to, offset("EX=", "EY="), hasBends ? &line.points.back() : nullptr);
        const std::string_view style = node.attribute("style").value();
        if (!hasBends && style.find("TREE=OR") != std::string_view::npos)
            straighten(first, last, from, to);
        line.points.insert(line.points.begin(), first);
        line.points.push_back(last);
        line.hasEnds = true;
    }

    const Drawing& drawing;
    const Extension& extension;
    const RemarksById& remarks;
    Diagram diagram;
    HiddenFeatures hiddenInAll;                      // boxes of the diagram
    std::unordered_map<std::string_view, Box> boxes; // by the number that lines know them by
};

// Object and package diagrams show classes and their relations, too.
constexpr std::array<std::string_view, 4> classDiagramTypes = {"Logical", "Class", "Object", "Package"};

// Ways of lines, by the identifiers of their diagram and of what they stand for.
using Ways = std::unordered_map<std::string, std::unordered_map<std::string, std::vector<Point>>>;

// Files of XMI 2.5 have the lines a second time, as they are seen.
Ways seenWays(pugi::xml_node root, const Drawing& drawing)
{
    Report ignored; // the same diagrams stand in the Extension
    Ways ways;
    for (umldi::OwnedDiagram& owned : umldi::read(root, drawing, ignored)) {
        const auto [diagram, isNew] = ways.try_emplace(owned.diagram.id);
        for (Line& line : owned.diagram.lines)
            if (isNew && line.points.size() > 1)
                diagram->second.try_emplace(line.elementId, std::move(line.points));
    }
    return ways;
}

} // namespace

void readDiagrams(pugi::xml_node root, pugi::xml_node extensionNode, const Extension& extension, Design& design,
                  Report& report)
{
    const Drawing drawing(design.root);
    const Ways ways = seenWays(root, drawing);
    RemarksById remarks;
    forEachPackage(design.root, [&](const Package& package) {
        for (const Remark& remark : package.remarks)
            remarks.emplace(remark.id, &remark);
    });
    std::unordered_set<std::string> drawn;
    for (const pugi::xml_node node : extensionNode.child("diagrams").children("diagram")) {
        const std::string_view type = valueOf(node, "properties", "type");
        if (!isOneOf(classDiagramTypes, type) && type != useCaseType) {
            report.left(plainWords(type) + " diagram", xml::xmiAttribute(node, "id"),
                        valueOf(node, "properties", "name"), classDiagramsOnly);
            continue;
        }
        Diagram diagram = DiagramReader(drawing, extension, remarks).read(node);
        for (const Remark& remark : diagram.remarks)
            drawn.insert(remark.id);
        if (const auto seen = ways.find(diagram.id); seen != ways.end())
            for (Line& line : diagram.lines)
                if (const auto way = seen->second.find(line.elementId); way != seen->second.end())
                    line.points = way->second;
        drawing.add(valueOf(node, "model", "package"), std::move(diagram));
    }
    forEachPackage(design.root, [&](Package& package) {
        std::erase_if(package.remarks, [&](const Remark& remark) { return drawn.contains(remark.id); });
    });
}

} // namespace design::ea
