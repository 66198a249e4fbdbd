#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <tuple>
#include <vector>

namespace compare {

/// An element of one state by something that its partner must have, too.
struct Entry {
    std::uint64_t key;
    std::uint32_t place;

    bool operator<(const Entry& other) const { return std::tie(key, place) < std::tie(other.key, other.place); }
};

using Entries = std::vector<Entry>;

/// Sorts both lists and calls `visit` with those of each that have a key in common.
template <class Visit>
void forEachGroup(Entries& olds, Entries& news, const Visit& visit)
{
    std::sort(olds.begin(), olds.end());
    std::sort(news.begin(), news.end());
    auto oldAt = olds.begin();
    auto newAt = news.begin();
    while (oldAt != olds.end() && newAt != news.end()) {
        const std::uint64_t key = std::max(oldAt->key, newAt->key);
        const auto endOf = [&](auto at, auto end) {
            return std::find_if(at, end, [&](const Entry& entry) { return entry.key != key; });
        };
        if (oldAt->key < key) {
            ++oldAt;
        } else if (newAt->key < key) {
            ++newAt;
        } else {
            const auto oldEnd = endOf(oldAt, olds.end());
            const auto newEnd = endOf(newAt, news.end());
            visit(std::span<Entry>(oldAt, oldEnd), std::span<Entry>(newAt, newEnd));
            oldAt = oldEnd;
            newAt = newEnd;
        }
    }
}

} // namespace compare
