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

/// Where the letters of a block stand: from the top of the first line's capitals to the base of the last line's.
[[nodiscard]] Rect lettersIn(const Rect& rect, const Font& font);

/// Where labels of lines stand. A file of the exporter has computed places, without regard to what is there: labels
/// whose place is free stay, the others come to the best that there is beside their line. In other files somebody chose
/// the places: a label that stands on another or on a box, so that nobody can read it, goes a small step.
class LabelPlaces {
public:
    explicit LabelPlaces(const Scene& scene);

    /// Nothing for those that are to stand where the file has them, or beside their line if it gives no place.
    [[nodiscard]] std::optional<Rect> of(const Object& label) const;

    /// A touch further where the letters would stand on the edge of a box or a name, if that is less than what one
    /// sees.
    [[nodiscard]] Rect clearOfEdges(const Rect& rect, const Font& font);

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
        Font font;
    };

    void placeComputed(const Scene& scene);
    void partChosen(const Scene& scene);
    void collect(const Scene& scene);
    void collectFrom(const Context& context, const Object& view, const Path& path);
    [[nodiscard]] bool keep(const Wanted& wanted);
    void place(const Wanted& wanted);
    void step(const Wanted& wanted);
    [[nodiscard]] bool isLegible(const Rect& letters, const Path& path);
    [[nodiscard]] double costOf(const Wanted& wanted, const Rect& rect);
    [[nodiscard]] static std::vector<Rect> candidates(const Wanted& wanted, const Reach& reach);

    std::vector<Path> wholePaths; ///< of associations
    std::vector<Wanted> labels;
    std::unordered_map<const Object*, Rect> rects;
    Obstacles obstacles;
    Obstacles boxes; ///< and names, where places were chosen
};

} // namespace render
