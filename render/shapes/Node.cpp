#include "render/shapes/Node.h"

#include "render/shapes/Shapes.h"
#include "text/Words.h"

#include <algorithm>

namespace render {

namespace {

constexpr double gapToName = 10;
constexpr double besideName = 7; // lines keep that far from a name
constexpr double usualNameWidth = 400;

constexpr NodeKind kinds[] = {
    {"ActivityStateView", prepareState, drawActivity, {375, 124}, false},
    {"CategoryView", preparePackage, drawPackage, {300, 180}, false},
    {"ClassInstanceView", prepareObject, drawObject, {180, 72}, false},
    {"ClassView", prepareClass, drawClass, {180, 110}, false},
    {"DecisionView", prepareDecision, drawDecision, {150, 74}, true},
    {"DeviceView", prepareDeployed, drawDevice, {225, 180}, false},
    {"InterObjView", prepareLifeline, drawLifeline, {300, 124}, false},
    {"InterfaceView", prepareClass, drawClass, {55, 55}, false},
    {"Label", prepareLabel, drawLabel, {0, 0}, false},
    {"ModView", prepareComponent, drawComponent, {300, 180}, false},
    {"NoteView", prepareNote, drawNote, {480, 120}, false},
    {"ObjectView", prepareObject, drawObject, {180, 72}, false},
    {"ProcessorView", prepareDeployed, drawProcessor, {225, 180}, false},
    {"StateView", prepareState, drawState, {300, 134}, false},
    {"SubSysView", preparePackage, drawPackage, {300, 150}, false},
    {"SynchronizationView", prepareBar, drawBar, {300, 24}, true},
    {"UseCaseView", prepareUseCase, drawUseCase, {216, 112}, true},
};

// What is drawn for kinds that are not known here.
constexpr NodeKind plainBox = {"", prepareBox, drawBox, {300, 110}, false};

std::string iconOf(const Object& view)
{
    const std::string style = view.text("icon_style");
    return style.empty() || style == "Icon" ? text::lowerCase(view.text("icon")) : std::string();
}

// Whether a label has a place that somebody has seen, or one that covers nothing.
bool isNamePlaced(const Context& context, const Node& node, const Object* label, const Rect& place)
{
    if (!label || !isPlaced(*label) || label->flag("hidden"))
        return false;
    return !context.isComputed || !place.overlaps(node.rect);
}

// Room for a name below or beside its icon: where the label stands, else below.
void placeName(const Context& context, Node& node)
{
    const Object* const label = node.view->object("label");
    const double width = label ? widthOfLabel(*label) : 0;
    TextBlock& block = node.blocks.emplace_back();
    block.font = label ? fontOf(*label, node.font) : node.font;
    block.font.isUnderlined = node.font.isUnderlined;
    block.lines = wrapped(node.name, block.font, (width > 0 ? width : usualNameWidth) / narrowest, context.measure);
    if (const std::string stereotype = stereotypeOf(*node.view, node.element); !stereotype.empty())
        block.lines.insert(block.lines.begin(), stereotype);
    const Size size = block.size(context.measure);
    const Rect below = rectAround({node.rect.centre().x, node.rect.bottom + gapToName + size.height / 2}, size);
    const Rect place = label ? rectOfLabel(*label, size) : below;
    node.nameRect = isNamePlaced(context, node, label, place) ? place : below;
    node.isNamedBelow = node.isNamedBelow && node.nameRect.top >= node.rect.centre().y;
}

// A place for what stands below the name of an icon: the line about its owner, and its members.
Rect belowName(const Node& node, Size size)
{
    const double x = node.nameRect.centre().x;
    const double top = node.nameRect.bottom;
    return {x - size.width / 2, top, x + size.width / 2, top + size.height};
}

Rect ownerRect(const Context& context, const Node& node)
{
    return belowName(node, node.owner.size(context.measure));
}

double heightOfOwner(const Node& node)
{
    return static_cast<double>(node.owner.lines.size()) * node.owner.font.lineHeight();
}

// The members of an icon stand as one block below its name.
Rect membersRect(const Context& context, const Node& node)
{
    constexpr double gap = 16;
    Size size;
    for (const MemberBlock& block : node.members) {
        const Size each = block.size(context.measure);
        size = {std::max(size.width, each.width), size.height + each.height};
    }
    const Object* const compartment = node.view->object("compartment");
    const double top = node.nameRect.bottom + heightOfOwner(node) + gap;
    const double place = compartment && isPlaced(*compartment) ? locationOf(*compartment).y : top;
    return belowName(node, size).movedBy(0, std::max(place, top - gap) - node.nameRect.bottom);
}

void drawOutside(const Context& context, const Node& node, Svg& svg)
{
    svg.text(node.blocks.back(), node.nameRect, Align::centre, context.measure);
    if (!node.isNamedBelow)
        return;
    svg.text(node.owner, ownerRect(context, node), Align::centre, context.measure);
    drawCompartments(context, node, membersRect(context, node), false, svg);
}

// The name below an icon, with the room that lines keep from it.
Rect nameBlock(const Node& node)
{
    return {node.nameRect.left - besideName, node.rect.bottom, node.nameRect.right + besideName,
            node.nameRect.bottom + heightOfOwner(node)};
}

Size sizeOfNode(const Node& node)
{
    const Size file = sizeOf(*node.view);
    return {file.width > 0 ? file.width : std::max(node.usual.width, node.least.width),
            file.height > 0 ? file.height : std::max(node.usual.height, node.least.height)};
}

Rect placeOf(const Node& node)
{
    const Size icon = iconSize(node.icon);
    const bool isIcon = icon.width > 0;
    const Size size = isIcon ? icon : sizeOfNode(node);
    const Rect rect = rectAround(locationOf(*node.view), size);
    return !isIcon && node.kind->prepare == prepareLabel ? rect.movedBy(size.width / 2, size.height / 2) : rect;
}

} // namespace

const NodeKind* nodeKindOf(const Object& view)
{
    const auto* const found =
        std::find_if(std::begin(kinds), std::end(kinds), [&](const NodeKind& kind) { return view.is(kind.keyword); });
    return found == std::end(kinds) ? nullptr : found;
}

Node nodeOf(const Context& context, const Object& view)
{
    Node node;
    node.view = &view;
    node.element = context.index.element(view).element;
    node.kind = nodeKindOf(view) ? nodeKindOf(view) : &plainBox;
    node.name = nameOf(view, node.element);
    node.icon = iconOf(view);
    node.font = fontOf(view, context.defaultFont);
    if (const Object* const label = view.object("label"))
        node.font = fontOf(*label, node.font);
    node.stroke = strokeOf(view);
    node.usual = node.kind->usualSize;
    node.isNamedOutside = node.kind->isNamedOutside;
    node.isNamedBelow = node.kind->prepare == prepareUseCase;
    node.isPlaced = isPlaced(view);
    node.kind->prepare(context, node);
    node.rect = placeOf(node);
    if (node.kind->prepare == prepareLifeline)
        placeLifeline(context, node);
    else if (node.isNamedOutside)
        placeName(context, node);
    return node;
}

void moveTo(Node& node, Point centre)
{
    const Point old = node.rect.centre();
    node.rect = node.rect.movedBy(centre.x - old.x, centre.y - old.y);
    node.nameRect = node.nameRect.movedBy(centre.x - old.x, centre.y - old.y);
    node.isPlaced = true;
}

bool isCovered(const Node& node, Point point)
{
    return node.rect.contains(point) || (node.isNamedBelow && nameBlock(node).contains(point));
}

Point exitOf(const Node& node, Point inside, Point outside)
{
    if (!node.isNamedBelow)
        return clipped(node.rect, node.outline, inside, outside);
    return clipped(node.rect, nameBlock(node), inside, outside);
}

Rect roomOf(const Node& node)
{
    if (!node.isNamedOutside)
        return node.rect;
    return {std::min(node.rect.left, node.nameRect.left), std::min(node.rect.top, node.nameRect.top),
            std::max(node.rect.right, node.nameRect.right), std::max(node.rect.bottom, node.nameRect.bottom)};
}

Size sizeOfBlocks(const Context& context, const Node& node)
{
    Size size;
    for (const TextBlock& block : node.blocks) {
        const Size each = block.size(context.measure);
        size = {std::max(size.width, each.width), size.height + each.height + padding};
    }
    return size;
}

void drawNode(const Context& context, const Node& node, Svg& svg)
{
    beginItem(svg, *node.view, node.element);
    node.kind->draw(context, node, svg);
    if (node.isNamedOutside)
        drawOutside(context, node, svg);
    svg.endGroup();
}

} // namespace render
