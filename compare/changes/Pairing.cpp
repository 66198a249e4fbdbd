#include "compare/changes/Pairing.h"

#include "compare/facts/Hash.h"
#include "compare/facts/Values.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace compare {

using reader::ElementKind;
using reader::Object;

namespace {

// An element of one state by something that its partner must have, too.
struct Entry {
    std::uint64_t key;
    std::uint32_t place;

    bool operator<(const Entry& other) const { return std::tie(key, place) < std::tie(other.key, other.place); }
};

using Entries = std::vector<Entry>;

bool isRelation(const Object& object)
{
    return reader::elementKindOf(object) == ElementKind::relation || object.is("Role", "Link");
}

bool isFeature(const Object& object)
{
    return reader::elementKindOf(object) == ElementKind::feature;
}

// Rests of two lists, both sorted, go to `visit` by equal keys.
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

class Pairing {
public:
    Pairing(Snapshot& before, Snapshot& after) : before(before), after(after) {}

    void run()
    {
        couple(0, 0);
        settle();
        pairLeftovers(&Pairing::quidAndName);
        pairLeftovers(&Pairing::quidAndOwner);
        pairLeftovers(&Pairing::quidAndContent);
        pairLeftovers(&Pairing::nameAndContent, true);
        pairLeftovers(&Pairing::ownerAndContent);
        pairLeftovers(&Pairing::nameOfUnits, true);
        pairLeftovers(&Pairing::contentAlone, true);
        pairByChildren();
        withRelations = true;
        for (std::uint32_t place = 0; place < before.size(); ++place)
            if (before[place].partner != nobody)
                open.emplace_back(place, before[place].partner);
        settle();
        pairLeftovers(&Pairing::quidAndName);
        pairLeftovers(&Pairing::quidAndOwner);
        pairLeftovers(&Pairing::quidAndContent);
        pairEnds();
    }

private:
    using Key = std::optional<std::uint64_t> (Pairing::*)(const Snapshot& state, bool isNew, const Node& node) const;

    bool couple(std::uint32_t old, std::uint32_t fresh)
    {
        if (before[old].partner != nobody || after[fresh].partner != nobody)
            return false;
        before[old].partner = fresh;
        after[fresh].partner = old;
        open.emplace_back(old, fresh);
        return true;
    }

    // Pairs what belongs to elements that have been paired.
    void settle()
    {
        while (!open.empty()) {
            const auto [old, fresh] = open.back();
            open.pop_back();
            pairChildren(old, fresh);
        }
    }

    void pairChildren(std::uint32_t old, std::uint32_t fresh)
    {
        Entries olds = childrenOf(before, false, old);
        Entries news = childrenOf(after, true, fresh);
        forEachGroup(olds, news, [&](std::span<Entry> some, std::span<Entry> others) { pairGroup(some, others); });
    }

    [[nodiscard]] Entries childrenOf(const Snapshot& state, bool isNew, std::uint32_t place) const
    {
        Entries children;
        state.forEachChild(place, [&](std::uint32_t child) {
            const Node& node = state[child];
            if (node.partner != nobody || (!withRelations && isRelation(*node.object)))
                return;
            std::uint64_t key = mixed(node.kind, node.name);
            if (isRelation(*node.object))
                key = mixed(key, endsOf(state, isNew, child));
            children.push_back({key, child});
        });
        return children;
    }

    // A relation is known by what it leads to, an association by what all its ends lead to.
    [[nodiscard]] std::uint64_t endsOf(const Snapshot& state, bool isNew, std::uint32_t place) const
    {
        if (!state[place].object->is("Association"))
            return targetKey(state, isNew, *state[place].object);
        std::uint64_t ends = 0;
        state.forEachChild(place, [&](std::uint32_t role) {
            ends += mixed(state[role].name, targetKey(state, isNew, *state[role].object));
        });
        return ends;
    }

    // Of one kind and name in one owner: by quid, then by content, then one after the other.
    void pairGroup(std::span<Entry> olds, std::span<Entry> news)
    {
        if (olds.size() == 1 && news.size() == 1) {
            couple(olds.front().place, news.front().place);
            return;
        }
        const auto pairBy = [&](const auto& keyOf) {
            Entries some = rest(before, olds, keyOf);
            Entries others = rest(after, news, keyOf);
            forEachGroup(some, others, [&](std::span<Entry> a, std::span<Entry> b) { pairInOrder(a, b); });
        };
        pairBy([](const Node& node) { return quidOf(node); });
        pairBy([](const Node& node) { return std::optional(node.content); });
        pairBy([](const Node&) { return std::optional(std::uint64_t{0}); });
    }

    template <class KeyOf>
    static Entries rest(const Snapshot& state, std::span<const Entry> entries, const KeyOf& keyOf)
    {
        Entries result;
        for (const Entry& entry : entries)
            if (const auto key = keyOf(state[entry.place]); key && state[entry.place].partner == nobody)
                result.push_back({*key, entry.place});
        return result;
    }

    void pairInOrder(std::span<const Entry> olds, std::span<const Entry> news)
    {
        for (std::size_t i = 0; i < std::min(olds.size(), news.size()); ++i)
            couple(olds[i].place, news[i].place);
    }

    // What has no partner yet, over the whole model. `onlyClear`: the key must be that of one element in each state.
    void pairLeftovers(Key key, bool onlyClear = false)
    {
        Entries olds = leftovers(before, false, key);
        Entries news = leftovers(after, true, key);
        std::vector<std::pair<std::uint32_t, std::uint32_t>> found;
        forEachGroup(olds, news, [&](std::span<const Entry> some, std::span<const Entry> others) {
            if (onlyClear && (some.size() > 1 || others.size() > 1))
                return;
            for (std::size_t i = 0; i < std::min(some.size(), others.size()); ++i)
                found.emplace_back(some[i].place, others[i].place);
        });
        std::sort(found.begin(), found.end()); // owners in front of what belongs to them
        for (const auto& [old, fresh] : found)
            if (couple(old, fresh))
                settle();
    }

    [[nodiscard]] Entries leftovers(const Snapshot& state, bool isNew, Key keyOf) const
    {
        Entries result;
        for (std::uint32_t place = 0; place < state.size(); ++place) {
            const Node& node = state[place];
            if (node.partner != nobody || (!withRelations && isInRelation(state, node)))
                continue;
            if (const auto key = (this->*keyOf)(state, isNew, node))
                result.push_back({mixed(*key, node.kind), place});
        }
        return result;
    }

    static bool isInRelation(const Snapshot& state, const Node& node)
    {
        return isRelation(*node.object) || (node.parent != nobody && isRelation(*state[node.parent].object));
    }

    static std::optional<std::uint64_t> quidOf(const Node& node)
    {
        const std::string_view quid = node.object->get("quid").raw();
        return quid.empty() ? std::nullopt : std::optional(hashOf(quid));
    }

    [[nodiscard]] std::optional<std::uint64_t> quidAnd(const Node& node, std::optional<std::uint64_t> other) const
    {
        const auto quid = quidOf(node);
        return quid && other ? std::optional(mixed(*quid, *other)) : std::nullopt;
    }

    [[nodiscard]] std::optional<std::uint64_t> quidAndName(const Snapshot& /*state*/, bool /*isNew*/,
                                                           const Node& node) const
    {
        return quidAnd(node, node.name == 0 ? std::nullopt : std::optional(node.name));
    }

    [[nodiscard]] std::optional<std::uint64_t> quidAndOwner(const Snapshot& state, bool isNew, const Node& node) const
    {
        return quidAnd(node, ownerOf(state, isNew, node));
    }

    [[nodiscard]] std::optional<std::uint64_t> quidAndContent(const Snapshot& /*state*/, bool /*isNew*/,
                                                              const Node& node) const
    {
        return quidAnd(node, node.hasSubstance ? std::optional(node.content) : std::nullopt);
    }

    [[nodiscard]] std::optional<std::uint64_t> nameAndContent(const Snapshot& /*state*/, bool /*isNew*/,
                                                              const Node& node) const
    {
        return node.name == 0 ? std::nullopt : std::optional(mixed(node.name, node.content));
    }

    [[nodiscard]] std::optional<std::uint64_t> ownerAndContent(const Snapshot& state, bool isNew,
                                                               const Node& node) const
    {
        const auto owner = ownerOf(state, isNew, node);
        return owner && node.hasSubstance ? std::optional(mixed(*owner, node.content)) : std::nullopt;
    }

    // Features of one name are in many classes.
    [[nodiscard]] std::optional<std::uint64_t> nameOfUnits(const Snapshot& /*state*/, bool /*isNew*/,
                                                           const Node& node) const
    {
        const bool isUnit = node.name != 0 && !isFeature(*node.object);
        return isUnit ? std::optional(node.name) : std::nullopt;
    }

    [[nodiscard]] std::optional<std::uint64_t> contentAlone(const Snapshot& /*state*/, bool /*isNew*/,
                                                            const Node& node) const
    {
        return node.hasSubstance && !isFeature(*node.object) ? std::optional(node.content) : std::nullopt;
    }

    // The place of the owner in the new state, if both states have it.
    static std::optional<std::uint64_t> ownerOf(const Snapshot& state, bool isNew, const Node& node)
    {
        if (node.parent == nobody)
            return std::nullopt;
        const std::uint32_t owner = isNew ? node.parent : state[node.parent].partner;
        return owner == nobody || (isNew && state[owner].partner == nobody) ? std::nullopt
                                                                            : std::optional<std::uint64_t>(owner);
    }

    // Renamed and changed at once: at least half of what is in one is in the other.
    void pairByChildren()
    {
        const auto childKeys = [&](const Snapshot& state) {
            Entries keys;
            for (std::uint32_t place = 0; place < state.size(); ++place) {
                const Node& node = state[place];
                if (node.partner == nobody && node.name != 0 && node.parent != nobody &&
                    state[node.parent].partner == nobody && !isRelation(*node.object))
                    keys.push_back({mixed(mixed(node.kind, node.name), state[node.parent].kind), place});
            }
            return keys;
        };
        constexpr std::size_t mostAlike = 8; // names that more have tell nothing
        Entries olds = childKeys(before);
        Entries news = childKeys(after);
        std::vector<std::pair<std::uint32_t, std::uint32_t>> votes;
        forEachGroup(olds, news, [&](std::span<const Entry> some, std::span<const Entry> others) {
            if (some.size() > mostAlike || others.size() > mostAlike)
                return;
            for (const Entry& old : some)
                for (const Entry& fresh : others)
                    votes.emplace_back(before[old.place].parent, after[fresh.place].parent);
        });
        std::sort(votes.begin(), votes.end());
        if (votes.empty())
            return;
        const std::vector<std::size_t> oldCounts = childCounts(before);
        const std::vector<std::size_t> newCounts = childCounts(after);
        for (auto at = votes.begin(); at != votes.end();) {
            const auto end = std::find_if(at, votes.end(), [&](const auto& vote) { return vote != *at; });
            const std::size_t most = std::max(oldCounts[at->first], newCounts[at->second]);
            if (2 * static_cast<std::size_t>(end - at) >= most && couple(at->first, at->second))
                settle();
            at = end;
        }
    }

    static std::vector<std::size_t> childCounts(const Snapshot& state)
    {
        std::vector<std::size_t> counts(state.size());
        for (std::uint32_t place = 1; place < state.size(); ++place)
            ++counts[state[place].parent];
        return counts;
    }

    // An association has its ends whatever they lead to.
    void pairEnds()
    {
        for (std::uint32_t place = 0; place < before.size(); ++place) {
            if (before[place].partner == nobody || !before[place].object->is("Association"))
                continue;
            const auto rolesOf = [](const Snapshot& state, std::uint32_t association) {
                Entries roles;
                state.forEachChild(association, [&](std::uint32_t role) {
                    if (state[role].partner == nobody)
                        roles.push_back({state[role].kind, role});
                });
                return roles;
            };
            Entries olds = rolesOf(before, place);
            Entries news = rolesOf(after, before[place].partner);
            forEachGroup(olds, news,
                         [&](std::span<Entry> some, std::span<Entry> others) { pairInOrder(some, others); });
            settle();
        }
    }

    Snapshot& before;
    Snapshot& after;
    bool withRelations = false; // they are known by what they lead to, so that must be paired first
    std::vector<std::pair<std::uint32_t, std::uint32_t>> open;
};

// What names an element that is in no file that was read.
std::string nameIn(const Object& from)
{
    for (const std::string_view key : {"supplier", "class", "type"})
        if (from.has(key))
            return from.text(key);
    return from.lastName();
}

} // namespace

std::uint64_t targetKey(const Snapshot& state, bool isNew, const Object& from)
{
    const reader::Reference target = state.index().element(from);
    const std::uint32_t place = state.find(target.element);
    if (place == nobody)
        return hashOf(lastPart(nameIn(from)));
    const std::uint32_t common = isNew ? place : state[place].partner;
    return common == nobody ? mixed(1, place) : mixed(2, common);
}

void pair(Snapshot& before, Snapshot& after)
{
    Pairing(before, after).run();
}

} // namespace compare
