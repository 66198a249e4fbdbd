#include "compare/changes/Order.h"

#include <gtest/gtest.h>

using Numbers = std::vector<std::uint32_t>;

namespace {

std::vector<bool> places(const Numbers& sequence)
{
    return compare::outOfOrder(sequence);
}

} // namespace

TEST(Order, AsFewAsPossibleAreOutOfIt)
{
    const std::pair<Numbers, std::vector<bool>> rows[] = {
        {{}, {}},
        {{1, 2, 3}, {false, false, false}},
        {{9, 1, 2, 3}, {true, false, false, false}},
        {{2, 3, 4, 1}, {false, false, false, true}},
        {{1, 7, 2, 3, 9}, {false, true, false, false, false}},
    };
    for (const auto& [sequence, expected] : rows)
        EXPECT_EQ(places(sequence), expected) << testing::PrintToString(sequence);
}
