#pragma once

#include "render/Geometry.h"

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

    /// Height of the letters' square, of a line, and of what is above the base line, in the units of the file.
    [[nodiscard]] double em() const { return size * 300 / 72; }
    [[nodiscard]] double lineHeight() const { return em() * 1.15; }
    [[nodiscard]] double ascent() const { return em() * 0.92; }
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

/// `<<name>>` as guillemets show it; other texts as they are.
[[nodiscard]] std::string withGuillemets(const std::string& text);

/// The lines of `text`, broken between words so that none is wider than `width` or the widest word; words of more than
/// a hand's breadth are broken, too. A width of 0 breaks nothing.
[[nodiscard]] std::vector<std::string> wrapped(const std::string& text, const Font& font, double width,
                                               const TextMeasure& measure);

/// Lines below each other.
struct TextBlock {
    std::vector<std::string> lines;
    Font font;

    [[nodiscard]] Size size(const TextMeasure& measure) const;
};

} // namespace render
