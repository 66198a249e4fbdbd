#pragma once

#include "render/paper/Text.h"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace render {

/// How something is drawn. Colours are those of the file: red + 256 * green + 65536 * blue.
struct Stroke {
    std::uint32_t line = 0;
    std::optional<std::uint32_t> fill; ///< none: what is behind shows
    bool isDashed = false;
    double width = 3;
};

enum class Align : std::uint8_t { left, centre };

/// Builds an `svg` element, and keeps how much room it takes.
class Svg {
public:
    /// `mostElements` are shapes and texts of ordinary size; larger ones count as several.
    explicit Svg(double mostElements);

    /// What is drawn until `endGroup` is in a group of the class `item KIND`.
    void beginGroup(const std::string& kind, const std::string& view, const std::string& quid,
                    const std::string& title);
    void endGroup();

    void rectangle(const Rect& rect, const Stroke& stroke, double radius = 0);
    void ellipse(const Rect& rect, const Stroke& stroke);
    void line(const Path& path, const Stroke& stroke);
    void polygon(const Path& path, const Stroke& stroke);
    /// A block whose first line starts at the top of `rect`, between its left and right sides: lines that are too long
    /// for that are squeezed or, if that is not enough, cut.
    void text(const TextBlock& block, const Rect& rect, Align align, const TextMeasure& measure);
    /// White paper, on which what is behind it does not show.
    void ground(const Rect& rect);

    /// Whether there was more than a picture can hold. What came later is left out.
    [[nodiscard]] bool isCut() const { return count > most; }
    /// Whether there were so many dashed lines that some of them are not dashed.
    [[nodiscard]] bool hasTooManyDashes() const { return dashes > mostDashes; }
    /// Whether there were so many fonts that others stand for some of them.
    [[nodiscard]] bool hasTooManyFonts() const { return faces.size() > mostFaces; }
    /// The whole picture.
    [[nodiscard]] std::string finished(const std::string& id, const std::string& title);

private:
    static constexpr double mostDashes = 500000;
    static constexpr std::size_t mostFaces = 100;

    [[nodiscard]] Stroke dashedWithin(Stroke stroke, double length);
    [[nodiscard]] std::string faceOf(const Font& font);
    /// `place` is on the base line, at the left end or middle of the text.
    void textLine(const FittedLine& line, const std::string& whole, Point place, Align align, const Font& font);
    pugi::xml_node shape(const char* name, const Stroke& stroke, const Rect& bounds);
    void use(const Rect& rect);

    pugi::xml_document document;
    pugi::xml_document leftOut;
    pugi::xml_node root;
    pugi::xml_node open;
    double most;
    double count = 0; ///< of shapes and texts
    double dashes = 0;
    std::set<std::string> faces;
    Rect room;
    bool isEmpty = true;
};

/// A number as it stands in a picture: a tenth of a unit is enough.
[[nodiscard]] std::string numberText(double value);

} // namespace render
