#include "compare/changes/Likeness.h"

#include "compare/changes/Groups.h"
#include "compare/changes/Keys.h"
#include "compare/facts/Hash.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace compare {

namespace {

// What is in elements without partners, by its kind and name and the kind of the element, at whose place it is counted.
// In a diagram are the boxes.
Entries openContents(const Snapshot& state)
{
    Entries contents;
    for (std::uint32_t place = 0; place < state.size(); ++place) {
        const Node& node = state[place];
        if (node.partner != nobody)
            continue;
        if (node.name != 0 && node.parent != nobody && state[node.parent].partner == nobody &&
            !isRelation(*node.object))
            contents.push_back({mixed(mixed(node.kind, node.name), state[node.parent].kind), node.parent});
        if (isDiagram(*node.object))
            forEachShownName(*node.object, [&](std::uint64_t name) {
                contents.push_back({mixed(name, node.kind), place});
            });
    }
    return contents;
}

std::vector<std::size_t> countContents(const Snapshot& state)
{
    std::vector<std::size_t> counts(state.size());
    for (std::uint32_t place = 1; place < state.size(); ++place) {
        const Node& node = state[place];
        if (!isRelation(*node.object))
            ++counts[node.parent];
        if (isDiagram(*node.object))
            forEachShownName(*node.object, [&](std::uint64_t /*name*/) { ++counts[place]; });
    }
    return counts;
}

} // namespace

std::vector<std::pair<std::uint32_t, std::uint32_t>> alikeByContents(const Snapshot& before, const Snapshot& after)
{
    using Couple = std::pair<std::uint32_t, std::uint32_t>;
    constexpr std::size_t mostAlike = 8; // names that more have tell nothing
    Entries olds = openContents(before);
    Entries news = openContents(after);
    std::vector<Couple> votes;
    forEachGroup(olds, news, [&](std::span<const Entry> some, std::span<const Entry> others) {
        if (some.size() > mostAlike || others.size() > mostAlike)
            return;
        for (const Entry& old : some)
            for (const Entry& fresh : others)
                votes.emplace_back(old.place, fresh.place);
    });
    std::sort(votes.begin(), votes.end());
    std::vector<Couple> alike;
    if (votes.empty())
        return alike;
    const std::vector<std::size_t> oldCounts = countContents(before);
    const std::vector<std::size_t> newCounts = countContents(after);
    for (auto at = votes.begin(); at != votes.end();) {
        const auto end = std::find_if(at, votes.end(), [&](const Couple& vote) { return vote != *at; });
        if (2 * static_cast<std::size_t>(end - at) >= std::max(oldCounts[at->first], newCounts[at->second]))
            alike.push_back(*at);
        at = end;
    }
    return alike;
}

} // namespace compare
