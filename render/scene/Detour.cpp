#include "render/scene/Detour.h"

#include <algorithm>
#include <array>
#include <limits>
#include <queue>

namespace render {

namespace {

constexpr double clearance = 24; // between a line and the boxes that it passes
constexpr double reach = 500;    // how far out of the way boxes are looked at
constexpr double corner = 200;   // as long as a corner seems
constexpr std::size_t mostBoxes = 30;

// Lines of a grid on which the way runs: past the sides of each box, and through both points.
class Grid {
public:
    Grid(const std::vector<Rect>& boxes, Point from, Point to)
    {
        for (const Point& point : {from, to}) {
            columns.push_back(point.x);
            rows.push_back(point.y);
        }
        for (const Rect& box : boxes) {
            columns.insert(columns.end(), {box.left - clearance, box.right + clearance});
            rows.insert(rows.end(), {box.top - clearance, box.bottom + clearance});
        }
        for (std::vector<double>* const places : {&columns, &rows}) {
            std::sort(places->begin(), places->end());
            places->erase(std::unique(places->begin(), places->end()), places->end());
        }
    }

    [[nodiscard]] std::size_t size() const { return columns.size() * rows.size(); }
    [[nodiscard]] Point at(std::size_t index) const
    {
        return {columns[index % columns.size()], rows[index / columns.size()]};
    }
    [[nodiscard]] std::size_t indexOf(Point point) const
    {
        const auto place = [](const std::vector<double>& places, double value) {
            return static_cast<std::size_t>(std::lower_bound(places.begin(), places.end(), value) - places.begin());
        };
        return place(rows, point.y) * columns.size() + place(columns, point.x);
    }
    /// The neighbour to the right, left, below or above; the place itself at the edge.
    [[nodiscard]] std::size_t neighbour(std::size_t index, std::size_t heading) const
    {
        const std::size_t column = index % columns.size();
        const std::size_t row = index / columns.size();
        const std::array<bool, 4> isOpen = {column + 1 < columns.size(), column > 0, row + 1 < rows.size(), row > 0};
        const std::array<std::size_t, 4> next = {index + 1, index - 1, index + columns.size(), index - columns.size()};
        return isOpen[heading] ? next[heading] : index;
    }

private:
    std::vector<double> columns;
    std::vector<double> rows;
};

// The cheapest ways from one point of the grid, each state a point and the heading in which it is come to.
class Search {
public:
    Search(const Grid& grid, const std::vector<Rect>& boxes, std::size_t start)
        : grid(grid), boxes(boxes), costs(grid.size() * headings, std::numeric_limits<double>::infinity()),
          before(costs.size(), 0)
    {
        for (std::size_t heading = 0; heading < headings; ++heading)
            reachState(start * headings + heading, 0, start * headings + heading);
        while (!open.empty()) {
            const auto [cost, state] = open.top();
            open.pop();
            if (cost <= costs[state])
                leave(state);
        }
    }

    [[nodiscard]] Path to(std::size_t end) const
    {
        const auto first = costs.begin() + static_cast<std::ptrdiff_t>(end * headings);
        auto state = static_cast<std::size_t>(std::min_element(first, first + headings) - costs.begin());
        if (costs[state] == std::numeric_limits<double>::infinity())
            return {};
        Path path = {grid.at(state / headings)};
        while (before[state] != state) {
            const bool isStraight = before[state] % headings == state % headings;
            state = before[state];
            if (!isStraight || before[state] == state)
                path.push_back(grid.at(state / headings));
        }
        return reversed(std::move(path));
    }

private:
    static constexpr std::size_t headings = 4;

    void reachState(std::size_t state, double cost, std::size_t from)
    {
        if (cost >= costs[state])
            return;
        costs[state] = cost;
        before[state] = from;
        open.emplace(cost, state);
    }

    void leave(std::size_t state)
    {
        const std::size_t here = state / headings;
        for (std::size_t heading = 0; heading < headings; ++heading) {
            const std::size_t next = grid.neighbour(here, heading);
            if (next == here)
                continue;
            const Path step = {grid.at(here), grid.at(next)};
            const auto isInTheWay = [&](const Rect& box) { return crosses(step, box.grownBy(clearance / 2)); };
            if (std::any_of(boxes.begin(), boxes.end(), isInTheWay))
                continue;
            const bool turns = heading != state % headings && before[state] != state;
            reachState(next * headings + heading, costs[state] + distance(step[0], step[1]) + (turns ? corner : 0),
                       state);
        }
    }

    const Grid& grid;
    const std::vector<Rect>& boxes;
    std::vector<double> costs;
    std::vector<std::size_t> before;
    std::priority_queue<std::pair<double, std::size_t>, std::vector<std::pair<double, std::size_t>>, std::greater<>>
        open;
};

} // namespace

Path detour(const std::vector<Rect>& boxes, Point from, Point to)
{
    const Rect around =
        Rect{std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x), std::max(from.y, to.y)}.grownBy(
            reach);
    std::vector<Rect> near;
    std::copy_if(boxes.begin(), boxes.end(), std::back_inserter(near),
                 [&](const Rect& box) { return box.overlaps(around); });
    if (near.size() > mostBoxes)
        return {};
    const Grid grid(near, from, to);
    return Search(grid, near, grid.indexOf(from)).to(grid.indexOf(to));
}

} // namespace render
