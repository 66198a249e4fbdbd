#include "render/Node.h"

#include "render/Shapes.h"
#include "text/Words.h"

#include <algorithm>

namespace render {

namespace {

constexpr double gapToName = 10;
constexpr double usualNameWidth = 400;

constexpr NodeKind kinds[] = {
    {"ActivityStateView", prepareState, drawActivity, {300, 124}, false},
    {"CategoryView", preparePackage, drawPackage, {300, 180}, false},
    {"ClassInstanceView", prepareObject, drawObject, {220, 72}, false},
    {"ClassView", prepareClass, drawClass, {300, 110}, false},
    {"DecisionView", prepareDecision, drawDecision, {112, 80}, true},
    {"DeviceView", prepareDeployed, drawDevice, {225, 180}, false},
    {"InterObjView", prepareLifeline, drawLifeline, {300, 124}, false},
    {"InterfaceView", prepareClass, drawClass, {58, 58}, false},
    {"Label", prepareLabel, drawLabel, {0, 0}, false},
    {"ModView", prepareComponent, drawComponent, {300, 180}, false},
    {"NoteView", prepareNote, drawNote, {480, 120}, false},
    {"ObjectView", prepareObject, drawObject, {220, 72}, false},
    {"ProcessorView", prepareDeployed, drawProcessor, {225, 180}, false},
    {"StateView", prepareState, drawState, {300, 134}, false},
    {"SubSysView", preparePackage, drawPackage, {300, 150}, false},
    {"SynchronizationView", prepareBar, drawBar, {300, 24}, true},
    {"UseCaseView", prepareUseCase, drawUseCase, {236, 118}, true},
};

// What is drawn for kinds that are not known here.
constexpr NodeKind plainBox = {"", prepareBox, drawBox, {300, 110}, false};

std::string iconOf(const Object& view)
{
    const std::string style = view.text("icon_style");
    return style.empty() || style == "Icon" ? text::lowerCase(view.text("icon")) : std::string();
}

bool isOutsideNamePlaced(const Object* label)
{
    return label && isPlaced(*label) && !label->flag("hidden");
}

// Room for a name below or beside its icon: where the label stands if it does not cover the icon, else below.
void placeName(const Context& context, Node& node)
{
    const Object* const label = node.view->object("label");
    const double width = label ? boundedLength(label->number("max_width")) : 0;
    TextBlock& block = node.blocks.emplace_back();
    block.font = label ? fontOf(*label, node.font) : node.font;
    block.font.isUnderlined = node.font.isUnderlined;
    block.lines = wrapped(node.name, block.font, std::max(width, usualNameWidth), context.measure);
    if (const std::string stereotype = stereotypeOf(*node.view, node.element); !stereotype.empty())
        block.lines.insert(block.lines.begin(), stereotype);
    const Size size = block.size(context.measure);
    const Rect below = rectAround({node.rect.centre().x, node.rect.bottom + gapToName + size.height / 2}, size);
    node.nameRect = below;
    if (!isOutsideNamePlaced(label))
        return;
    const Point place = locationOf(*label);
    const double lines = std::clamp(label->number("nlines", 1), 1.0, 4.0);
    const bool isCentred = label->integer("anchor_loc") == 1;
    const double top = isCentred ? place.y - lines * block.font.lineHeight() / 2 : place.y;
    node.nameRect = {place.x - (isCentred ? size.width / 2 : 0), top, 0, top + size.height};
    node.nameRect.right = node.nameRect.left + size.width;
    if (node.nameRect.overlaps(node.rect))
        node.nameRect = below;
}

Rect placeOf(const Node& node)
{
    const Size icon = iconSize(node.icon);
    if (icon.width > 0)
        return rectAround(locationOf(*node.view), icon);
    const Size file = sizeOf(*node.view);
    const Size size = {std::max(file.width > 0 ? file.width : node.usual.width, node.least.width),
                       std::max(file.height > 0 ? file.height : node.usual.height, node.least.height)};
    const Rect rect = rectAround(locationOf(*node.view), size);
    return node.kind->prepare == prepareLabel ? rect.movedBy(size.width / 2, size.height / 2) : rect;
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
        svg.text(node.blocks.back(), node.nameRect, Align::centre, context.measure);
    svg.endGroup();
}

} // namespace render
