#pragma once

#include "Drawing.h"

/// What stands in a picture, read back from its SVG.

inline double number(const pugi::xml_node& node, const char* name)
{
    return node.attribute(name).as_double();
}

inline render::Rect rectOf(const pugi::xml_node& node)
{
    const double x = number(node, "x");
    const double y = number(node, "y");
    return {x, y, x + number(node, "width"), y + number(node, "height")};
}

inline render::Path pointsOf(const pugi::xml_node& line)
{
    std::istringstream stream(line.attribute("points").value());
    render::Path path;
    char comma = 0;
    for (render::Point point; stream >> point.x >> comma >> point.y;)
        path.push_back(point);
    return path;
}

inline pugi::xml_node itemOf(const pugi::xml_document& svg, int view)
{
    return svg.child("svg").find_child_by_attribute("data-view", std::to_string(view).c_str());
}

// A picture of items as a tree.
struct Parsed {
    explicit Parsed(const std::string& items, const std::string& classes = "", double mostElements = render::mostInSvg,
                    const std::string& start = roseStart)
        : drawn(modelOf(items, classes, start))
    {
        drawn.mostElements = mostElements;
        text = drawn.picture(drawn.index.diagrams().front());
        isWellFormed = static_cast<bool>(svg.load_string(text.c_str()));
    }

    Drawn drawn;
    std::string text;
    pugi::xml_document svg;
    bool isWellFormed = false;
};

/// The names of the shapes of an item, in the order in which they are drawn.
inline std::string shapesOf(const pugi::xml_node& item)
{
    std::string names;
    for (const pugi::xml_node& child : item.children())
        if (const std::string_view name = child.name(); name != "title" && name != "text")
            names.append(names.empty() ? "" : " ").append(name);
    return names;
}

/// The room of a line of text, from its base line to the height of the letters.
inline render::Rect roomOf(const pugi::xml_node& text, const EqualLetters& measure)
{
    render::Font font;
    font.size = number(text, "font-size") / render::Font::unitsPerPoint;
    double width = measure.width(text.text().get(), font);
    if (const std::string transform = text.attribute("transform").value(); transform.starts_with("matrix("))
        width *= std::stod(transform.substr(std::string_view("matrix(").size()));
    const double left = number(text, "x") - (text.attribute("text-anchor") ? width / 2 : 0);
    const double base = number(text, "y");
    return {left, base - number(text, "font-size") * 0.7, left + width, base};
}

/// The lines of text of an item.
inline std::vector<std::string> textsOf(const pugi::xml_node& item)
{
    std::vector<std::string> texts;
    for (const pugi::xml_node& text : item.children("text"))
        texts.emplace_back(text.text().get());
    return texts;
}
