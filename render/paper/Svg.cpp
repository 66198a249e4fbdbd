#include "render/paper/Svg.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <sstream>

namespace render {

namespace {

constexpr double margin = 24;
constexpr double dash = 14;
constexpr double dashGap = 10;
// What takes as long to draw as a small shape.
constexpr double lettersOfElement = 20;
constexpr double lengthOfElement = 10000;
constexpr double areaOfElement = 1e5;
constexpr double pixelsPerUnit = 96.0 / 300;
constexpr std::uint32_t white = 0xFFFFFF;

std::string colourText(std::uint32_t colour)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "#";
    for (const unsigned shift : {4U, 0U, 12U, 8U, 20U, 16U})
        text += digits[(colour >> shift) & 0xFU];
    return text;
}

std::string pointsText(const Path& path)
{
    std::string text;
    for (const Point& point : path)
        text.append(text.empty() ? "" : " ").append(numberText(point.x)).append(",").append(numberText(point.y));
    return text;
}

Rect roomOf(const Path& path)
{
    Rect room = {path.front().x, path.front().y, path.front().x, path.front().y};
    for (const Point& point : path)
        room = {std::min(room.left, point.x), std::min(room.top, point.y), std::max(room.right, point.x),
                std::max(room.bottom, point.y)};
    return room;
}

void set(pugi::xml_node node, const char* name, const std::string& value)
{
    node.append_attribute(name).set_value(value.c_str());
}

// Fonts that look alike where the file's own is not there.
std::string familyText(const std::string& face)
{
    return (face == "Arial" || face.empty() ? "Arial" : face + ", Arial") + ", Liberation Sans, Helvetica, sans-serif";
}

// Around `x`, which stays where it is. Not all programs that draw pictures know textLength.
std::string squeezing(double scale, double x)
{
    constexpr double steps = 1000;
    const auto thousandths = static_cast<int>(scale * steps);
    return "matrix(0." + std::to_string(thousandths) + " 0 0 1 " + numberText(x * (1 - thousandths / steps)) + " 0)";
}

} // namespace

std::string numberText(double value)
{
    std::array<char, 32> digits{};
    const double tenths = std::round(value * 10);
    const auto whole = static_cast<long long>(tenths / 10);
    const auto rest = static_cast<long long>(std::abs(tenths)) % 10;
    char* end = digits.data();
    if (tenths < 0 && whole == 0)
        *end++ = '-';
    end = std::to_chars(end, digits.data() + digits.size(), whole).ptr;
    std::string text(digits.data(), end);
    if (rest != 0)
        text.append(".").append(1, static_cast<char>('0' + rest));
    return text;
}

Svg::Svg(double mostElements) : root(document.append_child("svg")), open(root), most(mostElements) {}

Stroke Svg::dashedWithin(Stroke stroke, double length)
{
    if (stroke.isDashed)
        dashes += length / (dash + dashGap);
    stroke.isDashed = stroke.isDashed && dashes <= mostDashes;
    return stroke;
}

std::string Svg::faceOf(const Font& font)
{
    if (faces.size() <= mostFaces)
        faces.insert(font.face);
    return faces.size() <= mostFaces || faces.contains(font.face) ? font.face : std::string();
}

void Svg::beginGroup(const std::string& kind, const std::string& view, const std::string& quid,
                     const std::string& title)
{
    if (isCut())
        leftOut.reset();
    open = (isCut() ? leftOut.append_child("g") : root.append_child("g"));
    set(open, "class", "item " + kind);
    if (!view.empty())
        set(open, "data-view", view);
    if (!quid.empty())
        set(open, "data-quid", quid);
    if (!title.empty())
        open.append_child("title").text().set(title.c_str());
}

void Svg::endGroup()
{
    open = root;
}

void Svg::use(const Rect& rect)
{
    room = isEmpty ? rect
                   : Rect{std::min(room.left, rect.left), std::min(room.top, rect.top),
                          std::max(room.right, rect.right), std::max(room.bottom, rect.bottom)};
    isEmpty = false;
}

pugi::xml_node Svg::shape(const char* name, const Stroke& stroke, const Rect& bounds)
{
    use(bounds.grownBy(stroke.width / 2));
    count += 1 + (stroke.fill ? bounds.width() * bounds.height() / areaOfElement : 0);
    pugi::xml_node node = open.append_child(name);
    set(node, "fill", stroke.fill ? colourText(*stroke.fill) : "none");
    set(node, "stroke", colourText(stroke.line));
    set(node, "stroke-width", numberText(stroke.width));
    if (stroke.isDashed)
        set(node, "stroke-dasharray", numberText(dash) + " " + numberText(dashGap));
    return node;
}

void Svg::rectangle(const Rect& rect, const Stroke& stroke, double radius)
{
    const pugi::xml_node node = shape("rect", dashedWithin(stroke, 2 * (rect.width() + rect.height())), rect);
    set(node, "x", numberText(rect.left));
    set(node, "y", numberText(rect.top));
    set(node, "width", numberText(rect.width()));
    set(node, "height", numberText(rect.height()));
    if (radius > 0)
        set(node, "rx", numberText(radius));
}

void Svg::ellipse(const Rect& rect, const Stroke& stroke)
{
    const pugi::xml_node node = shape("ellipse", stroke, rect);
    set(node, "cx", numberText(rect.centre().x));
    set(node, "cy", numberText(rect.centre().y));
    set(node, "rx", numberText(rect.width() / 2));
    set(node, "ry", numberText(rect.height() / 2));
}

void Svg::line(const Path& path, const Stroke& stroke)
{
    if (path.size() < 2)
        return;
    const double length = lengthOf(path);
    count += static_cast<double>(path.size() - 2) / 2 + length / lengthOfElement;
    const Stroke drawn = dashedWithin(stroke, length);
    const pugi::xml_node node =
        shape("polyline", {drawn.line, std::nullopt, drawn.isDashed, drawn.width}, roomOf(path));
    set(node, "points", pointsText(path));
}

void Svg::polygon(const Path& path, const Stroke& stroke)
{
    if (path.size() < 2)
        return;
    const pugi::xml_node node = shape("polygon", stroke, roomOf(path));
    set(node, "points", pointsText(path));
}

void Svg::ground(const Rect& rect)
{
    use(rect);
    count += 1;
    pugi::xml_node node = open.append_child("rect");
    set(node, "x", numberText(rect.left));
    set(node, "y", numberText(rect.top));
    set(node, "width", numberText(rect.width()));
    set(node, "height", numberText(rect.height()));
    set(node, "fill", colourText(white));
}

void Svg::textLine(const FittedLine& line, const std::string& whole, Point place, Align align, const Font& font)
{
    if (line.text.find_first_not_of(' ') == std::string::npos)
        return;
    const double left = align == Align::centre ? place.x - line.width / 2 : place.x;
    use({left, place.y - font.ascent(), left + line.width, place.y - font.ascent() + font.lineHeight()});
    count += 1 + static_cast<double>(line.text.size()) / lettersOfElement;
    pugi::xml_node node = open.append_child("text");
    set(node, "x", numberText(place.x));
    set(node, "y", numberText(place.y));
    set(node, "font-family", familyText(faceOf(font)));
    set(node, "font-size", numberText(font.em()));
    set(node, "fill", colourText(font.colour));
    if (align == Align::centre)
        set(node, "text-anchor", "middle");
    if (font.isBold)
        set(node, "font-weight", "bold");
    if (font.isItalic)
        set(node, "font-style", "italic");
    if (font.isUnderlined || font.isStruck)
        set(node, "text-decoration",
            std::string(font.isUnderlined ? "underline" : "") + (font.isStruck ? " line-through" : ""));
    if (line.scale < 1)
        set(node, "transform", squeezing(line.scale, place.x));
    if (line.isCut)
        node.append_child("title").text().set(whole.c_str());
    node.append_child(pugi::node_pcdata).set_value(line.text.c_str());
}

void Svg::text(const TextBlock& block, const Rect& rect, Align align, const TextMeasure& measure)
{
    double base = rect.top + block.font.ascent();
    const double x = align == Align::centre ? rect.centre().x : rect.left;
    for (const std::string& line : block.lines) {
        textLine(fitted(line, block.font, rect.width(), measure), line, {x, base}, align, block.font);
        base += block.font.lineHeight();
    }
}

std::string Svg::finished(const std::string& id, const std::string& title)
{
    const Rect view = {std::floor(room.left - margin), std::floor(room.top - margin), std::ceil(room.right + margin),
                       std::ceil(room.bottom + margin)};
    pugi::xml_node background = root.prepend_child("rect");
    set(background, "x", numberText(view.left));
    set(background, "y", numberText(view.top));
    set(background, "width", numberText(view.width()));
    set(background, "height", numberText(view.height()));
    set(background, "fill", colourText(white));
    root.prepend_child("title").text().set(title.c_str());
    set(root, "xmlns", "http://www.w3.org/2000/svg");
    set(root, "id", id);
    set(root, "role", "img");
    set(root, "width", numberText(view.width() * pixelsPerUnit));
    set(root, "height", numberText(view.height() * pixelsPerUnit));
    set(root, "viewBox",
        numberText(view.left) + " " + numberText(view.top) + " " + numberText(view.width()) + " " +
            numberText(view.height()));
    std::ostringstream stream;
    document.save(stream, " ", pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8);
    return std::move(stream).str();
}

} // namespace render
