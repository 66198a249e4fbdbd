#pragma once

#include "reader/index/Index.h"
#include "render/Draw.h"
#include "render/paper/Text.h"

#include <pugixml.hpp>

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>
#include <string>
#include <vector>

// All letters are alike here, so that pictures do not depend on the fonts of the machine.
class EqualLetters final : public render::TextMeasure {
public:
    [[nodiscard]] double width(const std::string& line, const render::Font& font) const override
    {
        const auto starts = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
        return static_cast<double>(std::count_if(line.begin(), line.end(), starts)) * font.em() / 2;
    }
};

inline std::string textOfFile(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

// A file of which pictures are drawn.
class Drawn {
public:
    explicit Drawn(std::string text) : document(std::move(text), "test.mdl"), index(document) {}

    [[nodiscard]] std::string picture(const reader::Diagram& diagram, const std::string& prefix = "")
    {
        render::DrawOptions options;
        options.idPrefix = prefix;
        options.measure = &measure;
        options.mostElements = mostElements;
        options.warn = [this](const std::string& text) { warnings.push_back(text); };
        return render::svgOf(document, index, diagram, options);
    }

    reader::Document document;
    reader::Index index;
    EqualLetters measure;
    double mostElements = render::mostInSvg;
    std::vector<std::string> warnings;
};

// How files of the exporter begin.
constexpr const char* exportStart = R"(
(object Petal
    version    	42
    _written   	"Rose 4.5.8054a"
    charSet    	0)

(object Design "Logical View"
    is_unit    	TRUE
    is_loaded  	TRUE
    quid       	"38F75B63013A"
)";

constexpr const char* roseStart = "\n(object Petal\n version 45\n charSet 0)\n(object Design \"Logical View\"\n";

// A model with one class diagram of these items, and these classes.
inline std::string modelOf(const std::string& items, const std::string& classes = "",
                           const std::string& start = roseStart)
{
    return start +
           "root_category (object "
           "Class_Category \"Logical View\"\nlogical_models (list l " +
           classes + ")\nlogical_presentations (list l (object ClassDiagram \"Main\" items (list diagram_item_list " +
           items + "))))))";
}
