#include "designs/layout/Graph.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace design {

namespace {

// The boxes of one row, from its upper to its lower border.
struct Row {
    double top = 0;
    double bottom = 0;
};

class Router {
public:
    explicit Router(const Graph& theGraph) : graph(theGraph)
    {
        findRows();
        countDepartures();
    }

    std::vector<Points> run()
    {
        std::vector<Points> ways;
        for (const Graph::Edge& edge : graph.edges)
            ways.push_back(edge.from == edge.to ? loopAt(graph.nodes[edge.from].place) : route(edge));
        return ways;
    }

private:
    enum class Side { Top, Bottom };

    // Rows are what the layout has centred on one level.
    void findRows()
    {
        std::map<long, Row> levels;
        for (const Graph::Node& node : graph.nodes) {
            const double bottom = node.place.top + node.place.height;
            const auto [row, isNew] = levels.emplace(std::lround(centreOf(node.place).y), Row{node.place.top, bottom});
            row->second.top = std::min(row->second.top, node.place.top);
            row->second.bottom = std::max(row->second.bottom, bottom);
        }
        for (const auto& [level, row] : levels) {
            rowAtLevel[level] = rows.size();
            rows.push_back(row);
        }
        usedLevels.resize(rows.size() + 1);
        linesInGap.resize(rows.size() + 1);
        for (const Graph::Edge& edge : graph.edges) {
            const auto [upper, lower] = std::minmax({rowOf(edge.from), rowOf(edge.to)});
            for (std::size_t row = upper; row < lower; ++row)
                ++linesInGap[row];
        }
    }

    [[nodiscard]] std::size_t rowOf(std::size_t node) const
    {
        return rowAtLevel.at(std::lround(centreOf(graph.nodes[node].place).y));
    }

    [[nodiscard]] bool leadsUp(const Graph::Edge& edge) const { return rowOf(edge.to) < rowOf(edge.from); }

    void countDepartures()
    {
        for (const Graph::Edge& edge : graph.edges) {
            const bool up = leadsUp(edge);
            ++lineCounts[{edge.from, up ? Side::Top : Side::Bottom}];
            if (!edge.sharesArrival)
                ++lineCounts[{edge.to, up ? Side::Bottom : Side::Top}];
        }
    }

    // The next free place on a side of a box; lines that share their arrival meet in the middle.
    Point takePort(std::size_t node, Side side, bool isShared)
    {
        const Rectangle& box = graph.nodes[node].place;
        const double y = side == Side::Top ? box.top : box.top + box.height;
        if (isShared)
            return {centreOf(box).x, y};
        const double count = lineCounts[{node, side}];
        const double taken = ++takenPorts[{node, side}];
        return {box.left + box.width * taken / (count + 1), y};
    }

    // A level of its own in the gap below a row, for each line that goes sideways there.
    double takeLevel(std::size_t row, bool isShared)
    {
        const double top = rows[row].bottom;
        const double height = rows[row + 1].top - top;
        if (isShared)
            return top + height / 2;
        const double taken = ++usedLevels[row];
        return top + height * taken / (linesInGap[row] + 1.0);
    }

    // Where a line is led through a row that it only passes.
    static double passage(const Points& guide, double y, double otherwise)
    {
        for (std::size_t i = 1; i < guide.size(); ++i) {
            const Point a = guide[i - 1];
            const Point b = guide[i];
            if (a.y != b.y && std::min(a.y, b.y) <= y && y <= std::max(a.y, b.y))
                return a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y);
        }
        return otherwise;
    }

    Points route(const Graph::Edge& edge)
    {
        const bool up = leadsUp(edge);
        const Point start = takePort(edge.from, up ? Side::Top : Side::Bottom, false);
        const Point end = takePort(edge.to, up ? Side::Bottom : Side::Top, edge.sharesArrival);
        Points way = {start};
        const auto from = static_cast<std::ptrdiff_t>(rowOf(edge.from));
        const auto to = static_cast<std::ptrdiff_t>(rowOf(edge.to));
        const std::ptrdiff_t step = up ? -1 : 1;
        for (std::ptrdiff_t row = from; row != to; row += step) {
            const std::ptrdiff_t next = row + step;
            const Row& passed = rows[static_cast<std::size_t>(next)];
            const double x = next == to ? end.x : passage(edge.guide, (passed.top + passed.bottom) / 2, way.back().x);
            if (std::abs(x - way.back().x) < 0.5)
                continue;
            const double level = takeLevel(static_cast<std::size_t>(std::min(row, next)), edge.sharesArrival);
            way.push_back({way.back().x, level});
            way.push_back({x, level});
        }
        way.push_back(end);
        return way;
    }

    const Graph& graph;
    std::vector<Row> rows;
    std::map<long, std::size_t> rowAtLevel;
    std::vector<int> linesInGap; // below each row
    std::vector<int> usedLevels;
    std::map<std::pair<std::size_t, Side>, int> lineCounts;
    std::map<std::pair<std::size_t, Side>, int> takenPorts;
};

} // namespace

std::vector<Points> routeOrthogonally(const Graph& graph)
{
    return Router(graph).run();
}

} // namespace design
