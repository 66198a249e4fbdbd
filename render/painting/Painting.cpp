#include "render/painting/Painting.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <numbers>
#include <string>
#include <string_view>
#include <system_error>

namespace render {

namespace {

constexpr double mostMiter = 4;
constexpr double quarter = std::numbers::pi / 2;

std::string_view valueOf(pugi::xml_node element, const char* attribute)
{
    return element.attribute(attribute).value();
}

bool isColour(pugi::xml_node element, const char* attribute)
{
    return valueOf(element, attribute).starts_with('#');
}

void setColour(pugi::xml_node element, const char* attribute, cairo_t* drawing)
{
    std::string_view text = valueOf(element, attribute);
    text.remove_prefix(std::min<std::size_t>(text.size(), 1)); // the #
    unsigned colour = 0;
    std::from_chars(text.data(), text.data() + text.size(), colour, 16);
    const auto part = [colour](unsigned shift) { return ((colour >> shift) & 0xFFU) / 255.0; };
    cairo_set_source_rgb(drawing, part(16), part(8), part(0));
}

void addRectangle(pugi::xml_node element, cairo_t* drawing)
{
    const double left = numberOf(element, "x");
    const double top = numberOf(element, "y");
    const double width = numberOf(element, "width");
    const double height = numberOf(element, "height");
    const double radius = std::min({numberOf(element, "rx"), width / 2, height / 2});
    if (width <= 0 || height <= 0)
        return;
    if (radius <= 0) {
        cairo_rectangle(drawing, left, top, width, height);
        return;
    }
    const double right = left + width - radius;
    const double bottom = top + height - radius;
    cairo_new_sub_path(drawing);
    cairo_arc(drawing, left + radius, top + radius, radius, 2 * quarter, 3 * quarter);
    cairo_arc(drawing, right, top + radius, radius, 3 * quarter, 4 * quarter);
    cairo_arc(drawing, right, bottom, radius, 0, quarter);
    cairo_arc(drawing, left + radius, bottom, radius, quarter, 2 * quarter);
    cairo_close_path(drawing);
}

void addEllipse(pugi::xml_node element, cairo_t* drawing)
{
    const double across = numberOf(element, "rx");
    const double down = numberOf(element, "ry");
    if (across <= 0 || down <= 0)
        return;
    cairo_matrix_t matrix;
    cairo_get_matrix(drawing, &matrix);
    cairo_translate(drawing, numberOf(element, "cx"), numberOf(element, "cy"));
    cairo_scale(drawing, across, down);
    cairo_new_sub_path(drawing);
    cairo_arc(drawing, 0, 0, 1, 0, 4 * quarter);
    cairo_close_path(drawing);
    cairo_set_matrix(drawing, &matrix); // the pen is round
}

void addLine(pugi::xml_node element, cairo_t* drawing)
{
    const std::vector<double> numbers = numbersOf(element, "points");
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        cairo_line_to(drawing, numbers[i], numbers[i + 1]);
}

void addPolygon(pugi::xml_node element, cairo_t* drawing)
{
    addLine(element, drawing);
    cairo_close_path(drawing);
}

struct Shape {
    std::string_view name;
    void (*add)(pugi::xml_node element, cairo_t* drawing);
};
constexpr Shape shapes[] = {
    {"rect", addRectangle}, {"ellipse", addEllipse}, {"polyline", addLine}, {"polygon", addPolygon}};

// Fills and draws what was added.
void ink(pugi::xml_node element, cairo_t* drawing)
{
    if (isColour(element, "fill")) {
        setColour(element, "fill", drawing);
        cairo_fill_preserve(drawing);
    }
    if (isColour(element, "stroke")) {
        setColour(element, "stroke", drawing);
        cairo_set_line_width(drawing, numberOf(element, "stroke-width"));
        cairo_set_miter_limit(drawing, mostMiter);
        const std::vector<double> dashes = numbersOf(element, "stroke-dasharray");
        cairo_set_dash(drawing, dashes.data(), static_cast<int>(dashes.size()), 0);
        cairo_stroke_preserve(drawing);
    }
    cairo_new_path(drawing);
}

// Blanks at the ends of a text do not count, and several count as one.
std::string lineOf(pugi::xml_node element)
{
    std::string line;
    for (const pugi::xml_node part : element.children())
        if (part.type() == pugi::node_pcdata)
            for (const char c : std::string_view(part.value())) {
                const bool isBlank = c == ' ' || c == '\t' || c == '\n';
                if (!isBlank || (!line.empty() && line.back() != ' '))
                    line += isBlank ? ' ' : c;
            }
    if (line.ends_with(' '))
        line.pop_back();
    return line;
}

} // namespace

std::vector<double> numbersOf(pugi::xml_node element, const char* attribute)
{
    const std::string_view text = valueOf(element, attribute);
    std::vector<double> numbers;
    for (const char* at = text.data(); at != text.data() + text.size();) {
        double number = 0;
        const auto [end, error] = std::from_chars(at, text.data() + text.size(), number);
        if (error == std::errc())
            numbers.push_back(number);
        at = end == at ? at + 1 : end;
    }
    return numbers;
}

double numberOf(pugi::xml_node element, const char* attribute)
{
    const std::string_view text = valueOf(element, attribute);
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void Painting::drawText(pugi::xml_node element, cairo_t* drawing)
{
    cairo_save(drawing);
    const std::vector<double> numbers = numbersOf(element, "transform");
    if (numbers.size() == 6) {
        const cairo_matrix_t matrix = {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]};
        cairo_transform(drawing, &matrix);
    }
    setColour(element, "fill", drawing);
    const std::string_view lines = valueOf(element, "text-decoration");
    lettering.draw({lineOf(element), element.attribute("font-family").value(), numberOf(element, "font-size"),
                    valueOf(element, "font-weight") == "bold", valueOf(element, "font-style") == "italic",
                    lines.find("underline") != std::string_view::npos,
                    lines.find("line-through") != std::string_view::npos, valueOf(element, "text-anchor") == "middle",
                    numberOf(element, "x"), numberOf(element, "y")},
                   drawing);
    cairo_restore(drawing);
}

void Painting::draw(pugi::xml_node element, cairo_t* drawing)
{
    const std::string_view name = element.name();
    if (name == "text") {
        drawText(element, drawing);
        return;
    }
    const auto* const shape =
        std::find_if(std::begin(shapes), std::end(shapes), [name](const Shape& each) { return each.name == name; });
    if (shape != std::end(shapes)) {
        shape->add(element, drawing);
        ink(element, drawing);
        return;
    }
    for (const pugi::xml_node child : element.children())
        draw(child, drawing);
}

} // namespace render
