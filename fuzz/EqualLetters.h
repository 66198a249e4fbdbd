#pragma once

#include "render/paper/Text.h"

#include <string>

/// Letters that are all equally wide, so that pictures need no library that knows fonts.
class EqualLetters final : public render::TextMeasure {
public:
    [[nodiscard]] double width(const std::string& line, const render::Font& font) const override
    {
        return static_cast<double>(line.size()) * font.em() / 2;
    }
};
