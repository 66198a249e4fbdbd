#include "designs/formats/rose/Reading.h"

#include "designs/formats/rose/Views.h"
#include "designs/formats/shared/Kinds.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace design::rose {

namespace {

// What stands for elements as boxes, and as lines between two of them. The other views stand for nothing of the model.
constexpr std::array<std::string_view, 4> boxViews = {"ClassView", "UseCaseView", "CategoryView", "ClassInstanceView"};
constexpr std::array<std::string_view, 6> lineViews = {"InheritView", "RealizeView",    "UsesView",
                                                       "ImportView",  "DependencyView", "InstantiateView"};

class DiagramReader {
public:
    DiagramReader(Reading& theReading, const Object& theDiagram, const Object& theOwner)
        : reading(theReading), object(theDiagram), owner(theOwner), items(theDiagram.objects("items"))
    {
    }

    Diagram read()
    {
        reading.describe(object, diagram);
        diagram.kind = object.is("UseCaseDiagram") ? DiagramKind::UseCase : DiagramKind::Class;
        diagram.keepsPlaces = true;
        for (const Object* const item : items)
            if (isOneOf(boxViews, item->kind()))
                addBox(*item);
        for (const Object* const item : items) {
            if (item->is("AssociationViewNew", "AssociationView"))
                addAssociation(*item);
            else if (isOneOf(lineViews, item->kind()))
                addLine(*item);
        }
        addRemarks();
        return std::move(diagram);
    }

private:
    std::string elementId(const Object& view)
    {
        Reference element = reading.elementOf(view);
        if (element.id.empty())
            element.id = element.name;
        if (!reading.index.element(view).element && !element.name.empty())
            reading.outsideNames.emplace(element.id, element.name);
        return element.id;
    }

    void addBox(const Object& view)
    {
        if (view.is("CategoryView") && isOwnSymbol(view))
            return;
        Box box;
        box.elementId = elementId(view);
        box.bounds = boundsOf(view);
        box.appearance = appearanceOf(view);
        if (const Object* const element = reading.index.element(view).element)
            box.hidden = hiddenFeatures(reading, view, *element);
        diagram.boxes.push_back(std::move(box));
    }

    // The host draws the packages within the diagram's package itself, in a row; where they are to be elsewhere, what
    // they would cover makes room.
    bool isOwnSymbol(const Object& view)
    {
        const Object* const package = reading.index.element(view).element;
        if (!package || package->parent() != &owner)
            return false;
        constexpr int distance = 440;
        constexpr int firstX = 260;
        constexpr int row = 400;
        const std::optional<reader::Point> place = view.get("location").asPoint();
        const bool isInRow =
            place && place->y == row && place->x >= firstX && static_cast<int>(place->x - firstX) % distance == 0;
        diagram.keepsPlaces = diagram.keepsPlaces && isInRow;
        return true;
    }

    void addAssociation(const Object& view)
    {
        Line line;
        line.elementId = elementId(view);
        line.appearance = appearanceOf(view);
        line.middle = pointIn(view, "location");
        const std::vector<const Object*> roles = view.objects("roleview_list");
        const Object* const association = reading.index.element(view).element;
        if (line.middle && association)
            for (const Object* const role : association->objects("roles"))
                line.parts.push_back(partOf(*role, roles, line.parts.size()));
        diagram.lines.push_back(std::move(line));
    }

    // The view of a role, or the one in its place.
    static LinePart partOf(const Object& role, const std::vector<const Object*>& views, std::size_t place)
    {
        const std::string quid = role.text("quid");
        auto view = std::find_if(views.begin(), views.end(),
                                 [&](const Object* each) { return !quid.empty() && each->text("quidu") == quid; });
        if (view == views.end() && place < views.size())
            view = views.begin() + static_cast<std::ptrdiff_t>(place);
        return view == views.end() ? LinePart() : LinePart{pointIn(**view, "location"), verticesOf(**view)};
    }

    void addLine(const Object& view)
    {
        Line line;
        line.elementId = elementId(view);
        line.appearance = appearanceOf(view);
        line.points = verticesOf(view);
        line.hasEnds = view.has("line_color") || !line.points.empty(); // or the host had no place for it
        if (const Object* const tree = reading.index.view(view, "drawSupplier")) {
            line.points = wayThrough(view, *tree);
            reading.join(firstOfTree.emplace(tree, line.elementId).first->second, line.elementId);
        }
        diagram.lines.push_back(std::move(line));
    }

    // From the subtype to the line that they share, and along that to the supertype.
    static std::vector<Point> wayThrough(const Object& view, const Object& tree)
    {
        std::vector<Point> way;
        for (const std::string_view key : {"terminal_attachment", "origin_attachment"})
            if (const std::optional<Point> point = pointIn(view, key))
                way.push_back(*point);
        const std::vector<Point> shared = verticesOf(tree);
        way.insert(way.end(), shared.begin(), shared.end());
        return way;
    }

    // A text at the very end of what is drawn says what the diagram is about.
    void addRemarks()
    {
        for (const Object* const item : items) {
            if (!item->is("NoteView", "Label"))
                continue;
            const Object* const label = item->is("Label") ? item : item->object("label");
            std::string text = label ? label->text("label") : std::string();
            if (text.empty())
                continue;
            if (item->is("Label") && item == items.back() && diagram.documentation.empty())
                diagram.documentation = std::move(text);
            else
                addRemark(*item, std::move(text));
        }
    }

    // A note of an element is drawn with it in every diagram, and taken once.
    void addRemark(const Object& note, std::string text)
    {
        Remark remark;
        remark.text = std::move(text);
        bool hangs = false;
        for (const Object* const item : items) {
            const Object* const target = targetOf(note, *item);
            if (!target)
                continue;
            hangs = true;
            if (std::string id = elementId(*target); reading.isNewNote(id, remark.text))
                remark.elementIds.push_back(std::move(id));
        }
        if (!hangs || !remark.elementIds.empty())
            diagram.remarks.push_back(std::move(remark));
    }

    // The view that an anchor leads to from the note, or null.
    [[nodiscard]] const Object* targetOf(const Object& note, const Object& anchor) const
    {
        if (!anchor.is("AttachView", "AnchorView"))
            return nullptr;
        const Object* const client = reading.index.view(anchor, "client");
        const Object* const supplier = reading.index.view(anchor, "supplier");
        if (client == &note)
            return supplier;
        return supplier == &note ? client : nullptr;
    }

    Reading& reading;
    const Object& object;
    const Object& owner;
    const std::vector<const Object*> items;
    Diagram diagram;
    std::unordered_map<const Object*, std::string> firstOfTree; // generalizations by views of trees
};

} // namespace

void readDiagram(Reading& reading, const Object& object, const Object& owner, Package& package)
{
    const auto kind = reader::diagramKindOf(object);
    if (kind == reader::DiagramKind::classes || kind == reader::DiagramKind::useCases)
        package.diagrams.push_back(DiagramReader(reading, object, owner).read());
    else if (!object.objects("items").empty())
        reading.leave(object, classDiagramsOnly);
}

} // namespace design::rose
