#include "diagrams/LinePoints.h"

#include "kiv/KivIbmRationalRose98ExportVertices.h"
#include "petal/PetalWriter.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

bool isWhiteSpace(char byte)
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

// Takes a decimal int from the front of `text`, white space before it allowed; nothing when there is none.
std::optional<Coordinate> takeInt(std::string_view& text)
{
    constexpr Coordinate beyondInt = Coordinate{1} << 40;
    std::string_view rest = text;
    while (!rest.empty() && isWhiteSpace(rest.front()))
        rest.remove_prefix(1);
    const bool isNegative = rest.starts_with('-');
    if (isNegative || rest.starts_with('+'))
        rest.remove_prefix(1);
    if (rest.empty() || !isDigit(rest.front()))
        return std::nullopt;
    Coordinate value = 0;
    for (; !rest.empty() && isDigit(rest.front()); rest.remove_prefix(1))
        value = std::min(10 * value + (rest.front() - '0'), beyondInt);
    text = rest;
    return clamped(isNegative ? -value : value);
}

// `text` is what stands from an opening to a closing parenthesis, both left out.
std::optional<Point> parsePoint(std::string_view text)
{
    const std::optional<Coordinate> x = takeInt(text);
    if (!x || !text.starts_with(','))
        return std::nullopt;
    text.remove_prefix(1);
    const std::optional<Coordinate> y = takeInt(text);
    if (!y || !text.empty())
        return std::nullopt;
    return Point{*x, *y};
}

void addNumber(KivString& text, Coordinate number)
{
    std::array<char, 24> digits;
    const auto* const end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    text.add(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

KivString textOf(const Point& point)
{
    KivString text = "(";
    addNumber(text, clamped(point.x));
    text.add(std::string_view(","));
    addNumber(text, clamped(point.y));
    text.add(std::string_view(")"));
    return text;
}

} // namespace

std::optional<Point> PointReader::next()
{
    const std::size_t closing = rest.find(')');
    if (closing == std::string_view::npos)
        return std::nullopt;
    const std::string_view text = rest.substr(0, closing);
    rest.remove_prefix(closing + 1);
    const std::size_t opening = text.rfind('(');
    if (opening == std::string_view::npos)
        return Point();
    return parsePoint(text.substr(opening + 1)).value_or(Point());
}

void LineShape::add(const Point& point)
{
    if (isEmpty)
        first = point;
    else if (point.x != last.x && point.y != last.y)
        rectilinear = false;
    last = point;
    isEmpty = false;
}

Point LineShape::origin() const
{
    return scaled(first);
}

Point LineShape::terminal() const
{
    return scaled(last);
}

Point scaled(const Point& point)
{
    return {scaledX(point.x), scaledY(point.y)};
}

void printLine(const KivString& vertices)
{
    if (vertices.isEmpty()) {
        line("line_style\t0");
        return;
    }
    LineShape shape;
    list("vertices\t(list Points", [&] {
        PointReader reader(vertices.view());
        while (const auto point = reader.next()) {
            line(scaled(*point));
            shape.add(*point);
        }
    });
    if (shape.isRectilinear()) {
        line("line_style\t3");
        line("origin_attachment     ", shape.origin());
        line("terminal_attachment   ", shape.terminal());
    } else {
        line("line_style\t0");
    }
}

const KivString* verticesOf(const KivProjection* projection)
{
    if (!projection || projection->elementType != KivElementType::RelationshipProjection)
        return nullptr;
    return &static_cast<const KivRelationshipProjection*>(projection)->vertices;
}

KivIbmRationalRose98ExportVertices::KivIbmRationalRose98ExportVertices(const KivString& theVertices)
    : vertices(theVertices)
{
    LineShape shape;
    PointReader reader(vertices.view());
    while (const auto point = reader.next())
        shape.add(*point);
    originPoint = textOf(shape.origin());
    terminalPoint = textOf(shape.terminal());
    rectilinear = shape.isRectilinear();
}

KivString& KivIbmRationalRose98ExportVertices::getLinePoints()
{
    deeper([&] {
        PointReader reader(vertices.view());
        while (const auto point = reader.next())
            linePoints.add(indent.text().view()).add(textOf(scaled(*point)).view());
    });
    return linePoints;
}
