#pragma once

#include "designs/layout/Geometry.h"

#include <cstddef>
#include <vector>

namespace design {

/// Leads lines around boxes. It compares no more than a bounded number of times, and leaves lines straight after that.
class Detours {
public:
    explicit Detours(const std::vector<Rectangle>& theBoxes);

    /// The way from the middle of one box to that of another by a channel beside boxes, which no other line has if
    /// there are enough. Empty when the straight line runs through no other box, or no such way is clear of them.
    [[nodiscard]] Points between(std::size_t from, std::size_t to);

private:
    // A horizontal or vertical way past a box.
    struct Channel {
        bool isRow;
        double place;
        bool isTaken = false;
    };

    [[nodiscard]] bool isClear(const Points& way, std::size_t from, std::size_t to);
    [[nodiscard]] bool canCompare(std::size_t times);

    const std::vector<Rectangle>& boxes;
    std::vector<Channel> channels;
    std::size_t comparisonsLeft = 20000000; // so many take less than a second
};

} // namespace design
