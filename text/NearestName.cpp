#include "text/NearestName.h"

#include "text/Words.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace text {

namespace {

// Insertions, deletions, replacements and exchanges of neighbours that lead from one word to the other.
std::size_t editDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            row[j + 1] = std::min({last[j] + (a[i] == b[j] ? 0U : 1U), row[j] + 1, last[j + 1] + 1});
            if (i > 0 && j > 0 && a[i] == b[j - 1] && a[i - 1] == b[j])
                row[j + 1] = std::min(row[j + 1], beforeLast[j - 1] + 1);
        }
    }
    return row.back();
}

} // namespace

std::optional<std::string_view> nearestName(std::string_view name, std::span<const std::string_view> known)
{
    const std::string wanted = lowerCase(name);
    std::optional<std::string_view> nearest;
    std::size_t limit = wanted.size() / 3;
    for (const std::string_view candidate : known) {
        const std::size_t longer = std::max(wanted.size(), candidate.size());
        if (longer - std::min(wanted.size(), candidate.size()) > limit)
            continue; // that many letters differ at least
        const std::size_t distance = editDistance(wanted, lowerCase(candidate));
        if (distance > limit || (nearest && distance == limit))
            continue;
        limit = distance;
        nearest = candidate;
    }
    return nearest;
}

} // namespace text
