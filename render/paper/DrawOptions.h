#pragma once

#include <functional>
#include <string>

namespace render {

class TextMeasure;

/// Of a picture as SVG, and of one that becomes an image, which takes longer.
inline constexpr double mostInSvg = 500000;
inline constexpr double mostInImage = 50000;

struct DrawOptions {
    /// In front of every `id` in the picture, so that several pictures can stand in one page.
    std::string idPrefix;
    /// Takes what could not be drawn as it is meant, a sentence a time; may be empty.
    std::function<void(const std::string&)> warn;
    /// How wide texts are; null for the fonts of this machine.
    const TextMeasure* measure = nullptr;
    /// How many shapes and texts of ordinary size the picture may hold.
    double mostElements = mostInSvg;
};

} // namespace render
