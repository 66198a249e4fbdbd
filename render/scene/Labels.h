#pragma once

#include "render/scene/LabelPlaces.h"

namespace render {

/// Draws the texts of lines and messages. They stand where the file has them, or where LabelPlaces finds that they can
/// be read. Those that the file gives no place are put beside their lines, none over another.
class Labels {
public:
    Labels(const Scene& scene, Svg& svg);

    /// `numbers` are in front of the texts, one for each.
    void draw(const Object& view, const Path& path, const std::vector<std::string>& numbers = {});

private:
    void drawOne(const Object& view, const Object& label, const Path& path, const std::string& number);
    [[nodiscard]] Rect rectOf(const Object& view, const Object& label, const Path& path, const TextBlock& block);
    [[nodiscard]] Rect clearOfEnds(const Object& view, Rect rect) const;
    [[nodiscard]] Rect moved(Rect rect) const;

    const Scene& scene;
    Svg& svg;
    LabelPlaces places;
    std::vector<Rect> taken;
};

void drawLine(const Context& context, const Line& line, Svg& svg, Labels& labels);
/// Associations, swimlanes, messages; `numbers` are those of a message in its diagram.
void drawOther(const Scene& scene, const Object& view, const std::vector<std::string>& numbers, Svg& svg,
               Labels& labels);

} // namespace render
