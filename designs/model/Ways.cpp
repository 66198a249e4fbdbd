#include "designs/model/Ways.h"

namespace design {

// A divided line has a part for each end; both parts begin at the middle and end at a box.
std::vector<Point> bendsOf(const Line& line)
{
    constexpr std::size_t withoutBends = 2; // points of a part, or of a whole way
    if (!line.middle || line.parts.size() != 2) {
        if (!line.hasEnds)
            return line.points;
        return line.points.size() <= withoutBends ? std::vector<Point>()
                                                  : std::vector<Point>(line.points.begin() + 1, line.points.end() - 1);
    }
    const std::vector<Point>& first = line.parts[0].points;
    const std::vector<Point>& second = line.parts[1].points;
    std::vector<Point> bends;
    if (first.size() > withoutBends)
        bends.assign(first.rbegin() + 1, first.rend() - 1);
    if (first.size() > withoutBends || second.size() > withoutBends)
        bends.push_back(*line.middle);
    if (second.size() > withoutBends)
        bends.insert(bends.end(), second.begin() + 1, second.end() - 1);
    return bends;
}

} // namespace design
