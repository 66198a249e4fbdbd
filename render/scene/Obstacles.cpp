#include "render/scene/Obstacles.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

constexpr double cellSize = 400;
constexpr std::int64_t mostCells = 64; // of one thing
constexpr std::size_t mostObstacles = 300000;

struct Cells {
    std::int64_t left;
    std::int64_t top;
    std::int64_t right;
    std::int64_t bottom;

    [[nodiscard]] std::int64_t count() const { return (right - left + 1) * (bottom - top + 1); }
};

Cells cellsOf(const Rect& rect)
{
    const auto cell = [](double place) { return static_cast<std::int64_t>(std::floor(place / cellSize)); };
    return {cell(rect.left), cell(rect.top), cell(rect.right), cell(rect.bottom)};
}

std::uint64_t keyOf(std::int64_t x, std::int64_t y)
{
    constexpr unsigned half = 32;
    return (static_cast<std::uint64_t>(x) << half) ^ (static_cast<std::uint64_t>(y) & 0xFFFFFFFFU);
}

bool isIn(const Obstacles::Obstacle& obstacle, const Rect& rect)
{
    if (obstacle.kind != Obstacles::Kind::line)
        return obstacle.rect.overlaps(rect);
    return crosses({{obstacle.rect.left, obstacle.rect.top}, {obstacle.rect.right, obstacle.rect.bottom}}, rect);
}

} // namespace

void Obstacles::add(const Obstacle& obstacle, const Rect& room)
{
    if (all.size() >= mostObstacles)
        return;
    const auto index = static_cast<std::uint32_t>(all.size());
    all.push_back(obstacle);
    const Cells covered = cellsOf(room);
    if (covered.count() > mostCells) {
        wide.push_back(index);
        return;
    }
    for (std::int64_t y = covered.top; y <= covered.bottom; ++y)
        for (std::int64_t x = covered.left; x <= covered.right; ++x)
            cells[keyOf(x, y)].push_back(index);
}

void Obstacles::addRect(Kind kind, const Rect& rect)
{
    add({kind, rect, nullptr}, rect);
}

void Obstacles::addPath(const Path& path)
{
    for (std::size_t i = 1; i < path.size(); ++i) {
        const auto pieces = static_cast<int>(std::max(1.0, std::ceil(distance(path[i - 1], path[i]) / cellSize)));
        for (int piece = 0; piece < pieces; ++piece) {
            const Point a = between(path[i - 1], path[i], 1.0 * piece / pieces);
            const Point b = between(path[i - 1], path[i], (piece + 1.0) / pieces);
            add({Kind::line, {a.x, a.y, b.x, b.y}, &path},
                {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)});
        }
    }
}

std::vector<Obstacles::Obstacle> Obstacles::in(const Rect& rect)
{
    std::vector<Obstacle> found;
    const auto look = [&](const std::vector<std::uint32_t>& indices) {
        for (const std::uint32_t index : indices) {
            if (answersLeft == 0)
                return;
            --answersLeft;
            if (isIn(all[index], rect))
                found.push_back(all[index]);
        }
    };
    look(wide);
    const Cells covered = cellsOf(rect);
    if (covered.count() > mostCells)
        return found;
    for (std::int64_t y = covered.top; y <= covered.bottom; ++y)
        for (std::int64_t x = covered.left; x <= covered.right; ++x)
            if (const auto cell = cells.find(keyOf(x, y)); cell != cells.end())
                look(cell->second);
    return found;
}

} // namespace render
