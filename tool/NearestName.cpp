#include "NearestName.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>
#include <vector>

namespace {

// No known name is nearly as long; what a longer one has behind this makes no difference.
constexpr std::size_t longestName = 100;

char folded(char byte)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
}

// Insertions, deletions and replacements that lead from one name to the other, case aside.
std::size_t editDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (folded(a[i]) == folded(b[j]) ? 0U : 1U);
            diagonal = std::exchange(row[j + 1], std::min({replaced, row[j] + 1, row[j + 1] + 1}));
        }
    }
    return row.back();
}

} // namespace

std::optional<std::string_view> nearestName(std::string_view name, std::span<const std::string_view> known)
{
    std::optional<std::string_view> nearest;
    std::size_t least = 0;
    for (const std::string_view candidate : known) {
        const std::size_t distance = editDistance(name.substr(0, longestName), candidate);
        if (!nearest || distance < least) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}
