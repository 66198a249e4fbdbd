#include "compare/changes/Order.h"

#include <algorithm>
#include <cstddef>

namespace compare {

std::vector<bool> outOfOrder(const std::vector<std::uint32_t>& sequence)
{
    constexpr auto nothing = static_cast<std::size_t>(-1);
    std::vector<std::size_t> lastOfLength; // where the growing row of each length ends that ends lowest
    std::vector<std::size_t> inFront(sequence.size(), nothing);
    for (std::size_t i = 0; i < sequence.size(); ++i) {
        const auto at =
            std::lower_bound(lastOfLength.begin(), lastOfLength.end(), sequence[i],
                             [&](std::size_t last, std::uint32_t number) { return sequence[last] < number; });
        if (at != lastOfLength.begin())
            inFront[i] = *(at - 1);
        if (at == lastOfLength.end())
            lastOfLength.push_back(i);
        else
            *at = i;
    }
    std::vector<bool> result(sequence.size(), true);
    for (std::size_t i = lastOfLength.empty() ? nothing : lastOfLength.back(); i != nothing; i = inFront[i])
        result[i] = false;
    return result;
}

} // namespace compare
