#pragma once

#include "render/scene/Obstacles.h"
#include "render/scene/Scene.h"

#include <array>
#include <optional>
#include <unordered_map>
#include <vector>

namespace render {

/// Whether an object in a view is a text of its line.
[[nodiscard]] bool isLineLabel(const Object& label);

/// The text of a label of a line, `number` in front of it; no lines if there is nothing to show.
[[nodiscard]] TextBlock blockOfLabel(const Context& context, const Object& view, const Object& label,
                                     const std::string& number);

/// Beside the line, on the side and at the part of it that the label says.
[[nodiscard]] Rect rectBeside(const Object& label, const Path& path, Size size);

/// Where the labels of lines stand in a file of the exporter, which computes their places without knowing what is
/// there: those whose place is free stay, the others come to the best that there is beside their line.
class LabelPlaces {
public:
    explicit LabelPlaces(const Scene& scene);

    /// Nothing for files in which labels have places that somebody chose.
    [[nodiscard]] std::optional<Rect> of(const Object& label) const;

    /// How far from the middle or end of its line a label may stand.
    struct Reach {
        int steps;                  ///< along the line
        std::array<double, 3> gaps; ///< beside it
    };

private:
    struct Wanted {
        const Object* label;
        const Path* path;
        Size size;
        bool isAtEnd; ///< of the line, not in its middle
    };

    void collect(const Scene& scene);
    void collectFrom(const Context& context, const Object& view, const Path& path);
    [[nodiscard]] bool keep(const Wanted& wanted);
    void place(const Wanted& wanted);
    [[nodiscard]] double costOf(const Wanted& wanted, const Rect& rect);
    [[nodiscard]] static std::vector<Rect> candidates(const Wanted& wanted, const Reach& reach);

    std::vector<Path> wholePaths; ///< of associations
    std::vector<Wanted> labels;
    std::unordered_map<const Object*, Rect> rects;
    Obstacles obstacles;
};

} // namespace render
