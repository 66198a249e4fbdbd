#pragma once

#include "render/paper/Geometry.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace render {

/// A font as the file names it.
struct Font {
    std::string face = "Arial";
    double size = 10; ///< in points
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isStruck = false;
    std::uint32_t colour = 0; ///< red + 256 * green + 65536 * blue

    /// Height of the letters' square, of a line, and of what is above the base line, in the units of the file: those
    /// of 10 points are 41, 50 and 40.6.
    [[nodiscard]] double em() const { return size * unitsPerPoint; }
    [[nodiscard]] double lineHeight() const { return size * 5; }
    [[nodiscard]] double ascent() const { return size * 4.06; }

    static constexpr double unitsPerPoint = 4.1;
};

/// Tells how wide a line of text is, in the units of the file.
class TextMeasure {
public:
    TextMeasure() = default;
    TextMeasure(const TextMeasure&) = delete;
    TextMeasure& operator=(const TextMeasure&) = delete;
    virtual ~TextMeasure() = default;
    [[nodiscard]] virtual double width(const std::string& line, const Font& font) const = 0;
};

/// By the fonts of this machine, whose library is opened for the first width. That throws std::runtime_error when there
/// is none.
class PangoMeasure final : public TextMeasure {
public:
    PangoMeasure();
    PangoMeasure(const PangoMeasure&) = delete;
    PangoMeasure& operator=(const PangoMeasure&) = delete;
    ~PangoMeasure() override;
    [[nodiscard]] double width(const std::string& line, const Font& font) const override;

private:
    struct Widths;
    std::unique_ptr<Widths> known;
};

/// `text` without what may not stand in a picture or steers a terminal: control characters other than line feeds, which
/// stay if `keepsLines`, and characters that are none.
[[nodiscard]] std::string cleanText(std::string_view text, bool keepsLines = false);

/// A text may be drawn that much narrower than its font has it. Boxes are sized by widths that are a little smaller.
inline constexpr double narrowest = 0.94;

/// A line as it is drawn where room is limited.
struct FittedLine {
    std::string text; ///< ends with an ellipsis where the line is cut
    double width = 0; ///< when drawn
    double scale = 1; ///< of its letters, from side to side
    bool isCut = false;
};
[[nodiscard]] FittedLine fitted(const std::string& line, const Font& font, double room, const TextMeasure& measure);

/// The lines of `text`, broken between words so that none is wider than `width`; a wider word has a line of its own,
/// and is broken only if it is more than a hand's breadth. A width of 0 breaks nothing.
[[nodiscard]] std::vector<std::string> wrapped(const std::string& text, const Font& font, double width,
                                               const TextMeasure& measure);

/// Lines below each other.
struct TextBlock {
    std::vector<std::string> lines;
    Font font;

    [[nodiscard]] Size size(const TextMeasure& measure) const;
    /// Leaves out the lines for which a box of this height has no room. An ellipsis stands for them.
    void cutTo(double height);
};

} // namespace render
