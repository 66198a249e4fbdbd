#include "render/shapes/Context.h"

#include "reader/index/Exports.h"

#include <algorithm>
#include <cctype>

namespace render {

namespace {

constexpr std::uint32_t maroon = 3342489;
constexpr std::uint32_t lightYellow = 13434879;
constexpr std::uint32_t white = 0xFFFFFF;
constexpr std::size_t linesOfAll = 40000; // of lists in a diagram
constexpr std::size_t linesOfOne = 2000;
constexpr std::size_t fewestLines = 20;  // also when those of all are used up
constexpr std::size_t mostPoints = 1000; // of a line
constexpr double smallestFont = 4;
constexpr double largestFont = 144;

Point boundedPoint(const reader::Value& value)
{
    const Point point = value.asPoint().value_or(Point{});
    return {boundedPlace(point.x), boundedPlace(point.y)};
}

std::optional<std::uint32_t> colourAt(const Object& view, std::string_view key)
{
    const auto colour = view.get(key).asInt();
    return colour ? std::optional(static_cast<std::uint32_t>(*colour) & white) : std::nullopt;
}

// In old files the pieces of a stereotype label's text have no brackets.
std::string bracketed(const std::string& text)
{
    return text.empty() || text.starts_with("<<") ? text : "<<" + text + ">>";
}

const Object* packageAround(const Object* object)
{
    while (object && !object->is("Class_Category", "SubSystem"))
        object = object->parent();
    return object;
}

// The package that an element is in, by its full name if the element is not in the document.
std::string ownerName(const Context& context, const Object& view, const Object* element)
{
    const Object* const shownIn = packageAround(context.diagram.owner);
    if (!shownIn)
        return {};
    if (element) {
        const Object* const owner = element->parent();
        return owner && owner != shownIn ? cleanText(owner->name()) : std::string();
    }
    const std::string path = view.names().empty() ? std::string() : view.lastName();
    const std::size_t end = path.rfind("::");
    if (end == std::string::npos || end == 0)
        return {};
    const std::size_t before = path.rfind("::", end - 1);
    const std::string owner =
        path.substr(before == std::string::npos ? 0 : before + 2, end - (before == std::string::npos ? 0 : before + 2));
    return owner == shownIn->name() ? std::string() : cleanText(owner);
}

} // namespace

Context::Context(const reader::Document& document, const reader::Index& index, const reader::Diagram& diagram,
                 const TextMeasure& measure, std::function<void(const std::string&)> warn)
    : document(document), index(index), diagram(diagram), measure(measure), warn(std::move(warn)),
      defaults(document.root().object("defaults")), linesLeft(linesOfAll)
{
    constexpr std::int64_t lastWithGrounds = 42; // petal version
    const reader::File& file = document.fileOf(diagram.object->position());
    isComputed = reader::startsLikeAnExport(document.text(file));
    hasGrounds = isComputed || (file.version > 0 && file.version <= lastWithGrounds);
    if (const Object* const font = defaults ? defaults->object("defaultFont") : nullptr)
        defaultFont = fontOf(*font, defaultFont);
    defaultFont.isUnderlined = false;
}

void addLines(const Context& context, TextBlock& block, const std::vector<const Object*>& objects,
              const std::function<std::string(const Object&)>& lineOf)
{
    const std::size_t most = std::clamp(context.linesLeft, fewestLines, linesOfOne);
    const std::size_t count = std::min(most, objects.size());
    for (std::size_t i = 0; i < count; ++i)
        block.lines.push_back(lineOf(*objects[i]));
    context.linesLeft -= std::min(count, context.linesLeft);
    if (count < objects.size())
        block.lines.emplace_back("\u2026");
}

Font fontOf(const Object& view, const Font& otherwise)
{
    const Object* const font = view.is("Font") ? &view : view.object("font");
    if (!font)
        return otherwise;
    Font result = otherwise;
    if (const std::string face = lineOf(*font, "face"); !face.empty())
        result.face = face;
    if (const double size = font->number("size"); size > 0)
        result.size = std::clamp(size, smallestFont, largestFont);
    result.isBold = font->flag("bold", result.isBold);
    result.isItalic = font->flag("italics", result.isItalic);
    result.isUnderlined = font->flag("underline", result.isUnderlined);
    result.isStruck = font->flag("strike", result.isStruck);
    if (!font->flag("default_color"))
        result.colour = colourAt(*font, "color").value_or(result.colour);
    return result;
}

Stroke strokeOf(const Object& view)
{
    const auto line = colourAt(view, "line_color");
    const auto fill = colourAt(view, "fill_color");
    return {line.value_or(maroon), fill.value_or(line ? white : lightYellow)};
}

Point locationOf(const Object& view)
{
    return boundedPoint(view.get("location"));
}

bool isPlaced(const Object& view)
{
    const Point location = locationOf(view);
    return location.x != 0 || location.y != 0;
}

Size sizeOf(const Object& view)
{
    return {boundedLength(view.number("width")), boundedLength(view.number("height"))};
}

bool hasTooManyPoints(const Object& view)
{
    const reader::List* const vertices = view.get("vertices").asList();
    return vertices && vertices->values().size() > mostPoints + 1;
}

Path pointsOf(const Object& view)
{
    Path path;
    if (const reader::List* const vertices = view.get("vertices").asList())
        for (const reader::Value& point : vertices->values())
            if (point.asPoint() && (path.size() < mostPoints || &point == &vertices->values().back()))
                path.push_back(boundedPoint(point));
    if (path.size() >= 2)
        return path;
    path.clear();
    for (const std::string_view key : {"origin_attachment", "terminal_attachment"})
        if (view.get(key).asPoint())
            path.push_back(boundedPoint(view.get(key)));
    return path.size() == 2 ? path : Path();
}

std::string lineOf(const Object& object, std::string_view key)
{
    return cleanText(object.text(key));
}

std::string nameOf(const Object& view, const Object* element)
{
    if (const Object* const label = view.object("label"))
        if (std::string text = lineOf(*label, "label"); !text.empty() && !text.starts_with("$UNNAMED$"))
            return text;
    return cleanText(reader::shownName(element ? *element : view));
}

std::string stereotypeOf(const Object& view, const Object* element)
{
    if (const Object* const label = view.object("stereotype"))
        return label->flag("hidden") ? std::string() : bracketed(lineOf(*label, "label"));
    const bool isText = view.flag("stereotype") && (!view.has("icon") || view.text("icon_style") == "Label");
    return isText && element ? bracketed(lineOf(*element, "stereotype")) : std::string();
}

Rect rectOfLabel(const Object& label, Size size)
{
    constexpr std::int64_t aroundMiddle = 1;
    constexpr std::int64_t rightOfPlace = 3;
    const Point place = locationOf(label);
    const std::int64_t anchor = label.integer("anchor_loc");
    if (anchor == aroundMiddle)
        return rectAround(place, size);
    if (anchor == rightOfPlace)
        return {place.x, place.y - size.height / 2, place.x + size.width, place.y + size.height / 2};
    const double width = widthOfLabel(label);
    const bool isCentred = label.integer("justify", 1) == 0 && width > 0;
    const double left = isCentred ? place.x + (width - size.width) / 2 : place.x;
    return {left, place.y, left + size.width, place.y + size.height};
}

double widthOfLabel(const Object& label)
{
    return boundedLength(label.number("max_width"));
}

TextBlock ownerOf(const Context& context, const Object& view, const Object* element, const Font& font)
{
    constexpr double size = 8; // points
    TextBlock block;
    block.font = font;
    block.font.size = size;
    block.font.isItalic = block.font.isBold = block.font.isUnderlined = false;
    if (const std::string owner = ownerName(context, view, element); !owner.empty())
        block.lines.push_back("(from " + owner + ")");
    return block;
}

void beginItem(Svg& svg, const Object& view, const Object* element)
{
    std::string kind = cleanText(view.kind());
    std::transform(kind.begin(), kind.end(), kind.begin(),
                   [](unsigned char c) { return static_cast<char>(std::isalnum(c) != 0 ? std::tolower(c) : '_'); });
    const auto number = view.viewNumber();
    svg.beginGroup(kind, number ? std::to_string(*number) : "", element ? lineOf(*element, "quid") : "",
                   nameOf(view, element));
}

} // namespace render
