#pragma once

#include "render/paper/Geometry.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace render {

/// What stands in a picture and should not be covered, found by place. It takes and answers no more than a bounded
/// number of things, and is empty after that.
class Obstacles {
public:
    enum class Kind : std::uint8_t { box, label, line };

    struct Obstacle {
        Kind kind;
        Rect rect;        ///< of a line: from its start to its end, whichever is greater
        const Path* path; ///< that a line is a piece of
    };

    void addRect(Kind kind, const Rect& rect);
    /// `path` must stay where it is.
    void addPath(const Path& path);

    /// What is in `rect`, or crosses it; a thing may be named several times.
    [[nodiscard]] std::vector<Obstacle> in(const Rect& rect);

    [[nodiscard]] bool isExhausted() const { return answersLeft == 0; }

private:
    void add(const Obstacle& obstacle, const Rect& room);

    std::vector<Obstacle> all;
    std::vector<std::uint32_t> wide; ///< those that are in too many cells
    std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> cells;
    std::size_t answersLeft = 20000000;
};

} // namespace render
