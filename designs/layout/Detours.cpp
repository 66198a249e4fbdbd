#include "designs/layout/Detours.h"

#include <limits>

namespace design {

namespace {

constexpr double clearances[] = {12, 20, 28}; // of a channel from the box that it passes
constexpr double sharedCost = 200;            // as long as a channel seems that another line has

double lengthOf(const Points& way)
{
    double length = 0;
    for (std::size_t i = 1; i < way.size(); ++i)
        length += distance(way[i - 1], way[i]);
    return length;
}

} // namespace

Detours::Detours(const std::vector<Rectangle>& theBoxes) : boxes(theBoxes)
{
    for (const Rectangle& box : boxes)
        for (const double clearance : clearances) {
            for (const double x : {box.left - clearance, box.left + box.width + clearance})
                channels.push_back({false, x});
            for (const double y : {box.top - clearance, box.top + box.height + clearance})
                channels.push_back({true, y});
        }
}

Points Detours::between(std::size_t from, std::size_t to)
{
    const Point start = centreOf(boxes[from]);
    const Point end = centreOf(boxes[to]);
    if (from == to || isClear({start, end}, from, to) || !canCompare(channels.size()))
        return {};
    Channel* best = nullptr;
    Points shortest;
    double least = std::numeric_limits<double>::infinity();
    for (Channel& channel : channels) {
        const double at = channel.place;
        const Points way = channel.isRow ? Points{start, {start.x, at}, {end.x, at}, end}
                                         : Points{start, {at, start.y}, {at, end.y}, end};
        const double cost = lengthOf(way) + (channel.isTaken ? sharedCost : 0);
        if (cost >= least || !isClear(way, from, to))
            continue;
        least = cost;
        best = &channel;
        shortest = way;
    }
    if (best)
        best->isTaken = true;
    return shortest;
}

// The ends lie in their boxes, which only the first and the last piece may run through.
bool Detours::isClear(const Points& way, std::size_t from, std::size_t to)
{
    const std::size_t pieces = way.size() - 1;
    if (!canCompare(pieces * boxes.size()))
        return false;
    for (std::size_t piece = 0; piece < pieces; ++piece)
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            const bool isAtHome = (i == from && piece == 0) || (i == to && piece + 1 == pieces);
            if (!isAtHome && crosses(way[piece], way[piece + 1], boxes[i]))
                return false;
        }
    return true;
}

bool Detours::canCompare(std::size_t times)
{
    comparisonsLeft = times > comparisonsLeft ? 0 : comparisonsLeft - times;
    return comparisonsLeft > 0;
}

} // namespace design
