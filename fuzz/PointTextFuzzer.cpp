#include "diagrams/LinePoints.h"
#include "kiv/KivIbmRationalRose98ExportVertices.h"
#include "model/ExportState.h"
#include "petal/Indentation.h"
#include "Target.h"

#include <cstdlib>
#include <limits>
#include <string>
#include <utility>
#include <vector>

// Two scales in percent, then LF, then the points of a line, which are held against a slow reading of the same rules.
namespace {

using Ints = std::pair<int, int>;

constexpr int least = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

bool isWhiteSpace(char byte)
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

// The value of decimal digits with an optional sign, clamped to an int.
int valueOf(std::string digits)
{
    const bool isNegative = digits.front() == '-';
    if (!isDigit(digits.front()))
        digits.erase(0, 1);
    long value = 0;
    for (const char digit : digits)
        if (value <= greatest)
            value = value * 10 + (digit - '0');
    if (isNegative)
        return value > greatest ? least : static_cast<int>(-value);
    return value > greatest ? greatest : static_cast<int>(value);
}

// An int with white space before it: `text` must be nothing else.
bool isInt(const std::string& text, int& value)
{
    std::size_t start = 0;
    while (start < text.size() && isWhiteSpace(text[start]))
        ++start;
    std::size_t digits = start;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-'))
        ++digits;
    if (digits == text.size())
        return false;
    for (std::size_t i = digits; i < text.size(); ++i)
        if (!isDigit(text[i]))
            return false;
    value = valueOf(text.substr(start));
    return true;
}

// `inner` is what stands between two parentheses.
Ints pointOf(const std::string& inner)
{
    const std::size_t comma = inner.find(',');
    Ints point;
    if (comma == std::string::npos || !isInt(inner.substr(0, comma), point.first) ||
        !isInt(inner.substr(comma + 1), point.second))
        return {0, 0};
    return point;
}

std::vector<Ints> pointsOf(const std::string& text)
{
    std::vector<Ints> points;
    std::string piece;
    for (const char byte : text) {
        if (byte != ')') {
            piece += byte;
            continue;
        }
        const std::size_t opening = piece.rfind('(');
        points.push_back(opening == std::string::npos ? Ints(0, 0) : pointOf(piece.substr(opening + 1)));
        piece.clear();
    }
    return points;
}

int scaledBy(float scale, int coordinate)
{
    const double value = static_cast<double>(coordinate) * static_cast<double>(scale);
    if (value <= static_cast<double>(least))
        return least;
    return value >= static_cast<double>(greatest) ? greatest : static_cast<int>(value);
}

std::string scaledText(const Ints& point)
{
    std::string text = "(";
    text += std::to_string(scaledBy(XScale, point.first));
    text += ',';
    text += std::to_string(scaledBy(YScale, point.second));
    return text += ')';
}

bool isRectilinear(const std::vector<Ints>& points)
{
    for (std::size_t i = 1; i < points.size(); ++i)
        if (points[i].first != points[i - 1].first && points[i].second != points[i - 1].second)
            return false;
    return true;
}

std::string_view takeScales(std::string_view input)
{
    const std::string line(input.substr(0, input.find('\n')));
    char* rest = nullptr;
    XScale = static_cast<float>(static_cast<double>(std::strtol(line.c_str(), &rest, 10)) / 100.0);
    YScale = static_cast<float>(static_cast<double>(std::strtol(rest, nullptr, 10)) / 100.0);
    return input.substr(std::min(line.size() + 1, input.size()));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(takeScales(asText(data, size)));
    const std::vector<Ints> points = pointsOf(text);

    PointReader reader(text);
    for (const Ints& point : points)
        require(reader.next() == Point{point.first, point.second}, "the points of the reference");
    require(!reader.next(), "no point behind the last");

    std::string lines;
    for (const Ints& point : points)
        lines += "\r\n\t" + scaledText(point);
    resetIndent();
    KivIbmRationalRose98ExportVertices vertices{KivString(std::string_view(text))};
    const Ints origin = points.empty() ? Ints(0, 0) : points.front();
    const Ints terminal = points.empty() ? Ints(0, 0) : points.back();
    require(vertices.originPoint == std::string_view(scaledText(origin)), "the first point as the origin");
    require(vertices.terminalPoint == std::string_view(scaledText(terminal)), "the last point as the terminal");
    require(vertices.rectilinear == isRectilinear(points), "the shape of the reference");
    require(vertices.getLinePoints() == std::string_view(lines), "a line for each point");
    require(indent.depth == 0, "the indentation as it was");
    return 0;
}
