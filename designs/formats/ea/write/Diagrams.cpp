#include "designs/formats/ea/write/Extension.h"

#include "designs/model/Ways.h"

#include <algorithm>
#include <cmath>

namespace design::ea {

namespace {

constexpr const char* diagramStyle =
    "ShowPrivate=1;ShowProtected=1;ShowPublic=1;HideRelationships=0;Locked=0;Border=1;HighlightForeign=1;"
    "PackageContents=1;SequenceNotes=0;ScalePrintImage=0;ShowDetails=0;Orientation=P;Zoom=100;ShowTags=0;OpParams=1;"
    "VisibleAttributeDetail=0;ShowOpRetType=1;ShowIcons=1;CollabNums=0;HideProps=0;ShowReqs=0;ShowCons=0;"
    "HideParents=0;UseAlias=0;HideAtts=0;HideOps=0;HideStereo=0;HideElemStereo=0;ShowTests=0;ShowMaint=0;"
    "ConnectorNotation=UML 2.1;ExplicitNavigability=0;ShowShape=1;ShowNotes=0;HideConnStereotype=0;";

constexpr double farthest = 1e8; // a place beyond is a fault of the file

std::int64_t rounded(double value)
{
    return std::isfinite(value) ? std::llround(std::clamp(value, -farthest, farthest)) : 0;
}

std::string number(double value)
{
    return std::to_string(rounded(value));
}

// The tool's colours have red in their lowest byte.
std::string colourText(std::optional<std::uint32_t> colour)
{
    if (!colour)
        return "-1";
    return std::to_string((*colour & 0xFFU) << 16U | (*colour & 0xFF00U) | (*colour >> 16U & 0xFFU));
}

// The number by which lines know a box of the diagram: "0000001F".
std::string boxNumber(std::size_t index)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text(8, '0');
    for (auto digit = text.rbegin(); digit != text.rend() && index > 0; ++digit, index /= digits.size())
        *digit = digits[index % digits.size()];
    return text;
}

std::string hiddenText(const HiddenFeatures& hidden)
{
    constexpr std::array<std::string_view, 4> suffixes = {"Pub=", "Pro=", "Pri=", "Pkg="};
    std::string text;
    for (std::size_t i = 0; i < suffixes.size(); ++i) {
        text.append(hidden.attributes[i] ? "Att" : "").append(hidden.attributes[i] ? suffixes[i] : "");
        text += hidden.attributes[i] ? "0;" : "";
        text.append(hidden.operations[i] ? "Op" : "").append(hidden.operations[i] ? suffixes[i] : "");
        text += hidden.operations[i] ? "0;" : "";
    }
    return text;
}

struct Offset {
    double x = 0;
    double y = 0;
};

class DiagramWriter {
public:
    DiagramWriter(Output& theOutput, const Diagram& theDiagram) : output(theOutput), diagram(theDiagram)
    {
        for (const Box& box : diagram.boxes) {
            boxesOf[box.elementId].push_back(places.size());
            places.push_back(placeOf(box));
        }
        moveIntoSheet();
    }

    void run()
    {
        const xml::Element elements(output.xml, "elements");
        for (std::size_t i = 0; i < places.size(); ++i)
            writeBox(i);
        writeNotes();
        for (const Line& line : diagram.lines)
            writeLine(line);
        for (const NoteLink& link : noteLinks)
            writeLink(link);
    }

private:
    struct NoteLink {
        std::string_view id;
        std::size_t note;
        std::size_t box;
    };

    static Rectangle placeOf(const Box& box)
    {
        const Rectangle bounds = box.bounds.value_or(Rectangle());
        const auto left = static_cast<double>(rounded(bounds.left));
        const auto top = static_cast<double>(rounded(bounds.top));
        return {left, top, static_cast<double>(rounded(bounds.left + bounds.width)) - left,
                static_cast<double>(rounded(bounds.top + bounds.height)) - top};
    }

    // The tool's sheets begin at 0.
    void moveIntoSheet()
    {
        for (const Rectangle& place : places) {
            shift.x = std::max(shift.x, -place.left);
            shift.y = std::max(shift.y, -place.top);
        }
        for (Rectangle& place : places) {
            place.left += shift.x;
            place.top += shift.y;
        }
    }

    static std::string geometry(const Rectangle& place)
    {
        return "Left=" + number(place.left) + ";Top=" + number(place.top) +
               ";Right=" + number(place.left + place.width) + ";Bottom=" + number(place.top + place.height) + ";";
    }

    // <element geometry="Left=444;Top=304;Right=652;Bottom=440;" subject="EAID_1" seqno="1" style="DUID=00000001;"/>
    void writeBox(std::size_t index)
    {
        const Box& box = diagram.boxes[index];
        const Appearance& look = box.appearance;
        std::string style = "DUID=" + boxNumber(index + 1) + ";NSL=0;BFol=" + colourText(look.fontColor) +
                            ";LCol=" + colourText(look.lineColor) + ";LWth=-1;";
        std::string font = look.fontName;
        std::erase(font, ';');
        if (!font.empty())
            style += "font=" + font + ";";
        style += "fontsz=" + number(look.fontSize * 10) + ";bold=0;black=0;italic=0;ul=0;charset=0;pitch=0;HideIcon=0;";
        style += hiddenText(box.hidden) + "BCol=" + colourText(look.fillColor) + ";";
        xml::Element(output.xml, "element")
            .with("geometry", geometry(places[index]))
            .with("subject", output.subject(box.elementId))
            .with("seqno", std::to_string(index + 1))
            .with("style", style);
    }

    // Designs do not say where notes stand: in rows below all else.
    void writeNotes()
    {
        std::vector<std::pair<const Note*, std::size_t>> notes; // and the box that it hangs at
        for (std::size_t i = 0; i < diagram.boxes.size(); ++i)
            if (const auto found = output.notesOn.find(output.subject(diagram.boxes[i].elementId));
                found != output.notesOn.end() && boxesOf.at(diagram.boxes[i].elementId).front() == i)
                for (const Note* const note : found->second)
                    notes.emplace_back(note, i);
        if (const auto found = output.notesOfDiagram.find(&diagram); found != output.notesOfDiagram.end())
            for (const Note* const note : found->second)
                notes.emplace_back(note, places.size());
        placeNotes(notes);
    }

    void placeNotes(const std::vector<std::pair<const Note*, std::size_t>>& notes)
    {
        constexpr double gap = 20;
        constexpr double width = 180;
        constexpr double letters = 26; // in a line of a note
        constexpr double line = 14;
        double right = 0;
        double top = 0;
        for (const Rectangle& place : places) {
            right = std::max(right, place.left + place.width);
            top = std::max(top, place.top + place.height);
        }
        Rectangle place{gap, top + 2 * gap, width, 0};
        double rowHeight = 0;
        std::size_t index = places.size();
        for (const auto& [note, box] : notes) {
            const auto breaks = static_cast<double>(std::count(note->text.begin(), note->text.end(), '\n'));
            place.height = gap + line * (1 + breaks + std::floor(static_cast<double>(note->text.size()) / letters));
            if (place.left > gap && place.left + width > right) {
                place.left = gap;
                place.top += rowHeight + gap;
                rowHeight = 0;
            }
            rowHeight = std::max(rowHeight, place.height);
            ++index;
            xml::Element(output.xml, "element")
                .with("geometry", geometry(place))
                .with("subject", note->id)
                .with("seqno", std::to_string(index))
                .with("style", "DUID=" + boxNumber(index) + ";");
            if (box < places.size())
                noteLinks.push_back({note->link, index, box + 1});
            place.left += width + gap;
        }
    }

    void writeLink(const NoteLink& link)
    {
        xml::Element(output.xml, "element")
            .with("geometry", "SX=0;SY=0;EX=0;EY=0;EDGE=1;$LLB=;LLT=;LMT=;LMB=;LRT=;LRB=;IRHS=;ILHS=;Path=;")
            .with("subject", link.id)
            .with("style", "Mode=3;EOID=" + boxNumber(link.box) + ";SOID=" + boxNumber(link.note) +
                               ";Color=-1;LWidth=0;Hidden=0;");
    }

    // The box of an element that a line ends at: the one that is next to the end, of those that there may be.
    std::size_t boxAt(const std::string& elementId, const std::optional<Point>& end) const
    {
        constexpr std::size_t tried = 16;
        const auto found = boxesOf.find(elementId);
        if (found == boxesOf.end())
            return places.size();
        if (!end)
            return found->second.front();
        const auto distance = [&](std::size_t box) {
            const Rectangle& place = places[box];
            return std::hypot(place.left + place.width / 2 - end->x, place.top + place.height / 2 - end->y);
        };
        const auto last = found->second.begin() + static_cast<std::ptrdiff_t>(std::min(tried, found->second.size()));
        return *std::min_element(found->second.begin(), last,
                                 [&](std::size_t a, std::size_t b) { return distance(a) < distance(b); });
    }

    // From the centre of the box, y upward. A line with bends meets it straight beside the next of them where it can.
    Offset offsetOf(std::size_t box, const Point* next, const std::optional<Point>& end) const
    {
        if (box >= places.size())
            return {};
        const Rectangle& place = places[box];
        const Point centre{place.left + place.width / 2, place.top + place.height / 2};
        if (next && next->x >= place.left && next->x <= place.left + place.width)
            return {next->x - centre.x, 0};
        if (next && next->y >= place.top && next->y <= place.top + place.height)
            return {0, centre.y - next->y};
        return end ? Offset{end->x - centre.x, centre.y - end->y} : Offset{};
    }

    // Which side of its first box a line leaves: top, right, bottom, left.
    int edgeOf(std::size_t box, const Point& next) const
    {
        const Rectangle& place = places[box];
        const double x = next.x - place.left - place.width / 2;
        const double y = next.y - place.top - place.height / 2;
        if (std::abs(y) * place.width > std::abs(x) * place.height)
            return y < 0 ? 1 : 3;
        return x > 0 ? 2 : 4;
    }

    Point moved(const Point& point) const { return {point.x + shift.x, point.y + shift.y}; }

    // The identifiers of what the line joins; false: it is no line of the tool's.
    bool findEnds(const Line& line, std::string& from, std::string& to) const
    {
        if (const Association* const association = output.writing.catalogue.association(line.elementId)) {
            if (association->ends.size() != 2)
                return false;
            from = association->ends[0].participant.id;
            to = association->ends[1].participant.id;
            return true;
        }
        const Relationship* const relationship = output.writing.catalogue.relationship(line.elementId);
        if (!relationship)
            return false;
        from = relationship->client.id;
        to = relationship->supplier.id;
        return true;
    }

    void writeLine(const Line& line)
    {
        std::string fromId;
        std::string toId;
        if (!findEnds(line, fromId, toId)) {
            output.report.left("line", line.elementId, "", noPlaceFor);
            return;
        }
        std::vector<Point> bends = bendsOf(line);
        for (Point& bend : bends)
            bend = {static_cast<double>(rounded(moved(bend).x)), static_cast<double>(rounded(moved(bend).y))};
        const bool hasEnds = line.hasEnds && line.points.size() > 1;
        const auto first = hasEnds ? std::optional(moved(line.points.front())) : std::nullopt;
        const auto last = hasEnds ? std::optional(moved(line.points.back())) : std::nullopt;
        const std::size_t from = boxAt(fromId, first);
        const std::size_t to = boxAt(toId, last);
        const Offset start = offsetOf(from, bends.empty() ? nullptr : &bends.front(), first);
        const Offset end = offsetOf(to, bends.empty() ? nullptr : &bends.back(), last);
        std::string path;
        for (const Point& bend : bends)
            path += number(bend.x) + ":" + number(-bend.y) + "$";
        const bool hasBoxes = from < places.size() && to < places.size();
        const int edge = hasBoxes ? edgeOf(from, bends.empty() ? centreOf(to) : bends.front()) : 1;
        std::string style = "Mode=3;";
        if (hasBoxes)
            style += "EOID=" + boxNumber(to + 1) + ";SOID=" + boxNumber(from + 1) + ";";
        xml::Element(output.xml, "element")
            .with("geometry", "SX=" + number(start.x) + ";SY=" + number(start.y) + ";EX=" + number(end.x) +
                                  ";EY=" + number(end.y) + ";EDGE=" + std::to_string(edge) +
                                  ";$LLB=;LLT=;LMT=;LMB=;LRT=;LRB=;IRHS=;ILHS=;Path=" + path + ";")
            .with("subject", output.ids.of(line.elementId))
            .with("style", style + "Color=" + colourText(line.appearance.lineColor) + ";LWidth=0;Hidden=0;");
    }

    Point centreOf(std::size_t box) const
    {
        const Rectangle& place = places[box];
        return {place.left + place.width / 2, place.top + place.height / 2};
    }

    Output& output;
    const Diagram& diagram;
    Point shift;
    std::vector<Rectangle> places; // of the boxes
    std::unordered_map<std::string, std::vector<std::size_t>> boxesOf;
    std::vector<NoteLink> noteLinks;
};

void writeDiagram(Output& output, const Diagram& diagram, const Package& package)
{
    xml::Element node(output.xml, "diagram");
    node.with("xmi:id", output.ids.of(diagram));
    xml::Element(output.xml, "model").with("package", output.idOf(package)).with("owner", output.idOf(package));
    xml::Element(output.xml, "properties")
        .with("name", diagram.name)
        .with("type", diagram.kind == DiagramKind::UseCase ? "Use Case" : "Logical")
        .withSome("documentation", diagram.documentation);
    xml::Element(output.xml, "style1").with("value", diagramStyle);
    xml::Element(output.xml, "extendedProperties");
    DiagramWriter(output, diagram).run();
}

void writeOf(Output& output, const Package& package)
{
    for (const Diagram& diagram : package.diagrams)
        writeDiagram(output, diagram, package);
    for (const Package& child : package.packages)
        writeOf(output, child);
}

} // namespace

void writeDiagrams(Output& output)
{
    const xml::Element node(output.xml, "diagrams");
    writeOf(output, output.writing.design.root);
}

} // namespace design::ea
