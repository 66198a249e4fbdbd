#include "compare/changes/Pairing.h"

#include "compare/changes/Groups.h"
#include "compare/changes/Keys.h"
#include "compare/changes/Likeness.h"
#include "compare/facts/Hash.h"
#include "reader/index/Exports.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace compare {

namespace {

class Pairing {
public:
    Pairing(Snapshot& before, Snapshot& after) : before(before), after(after) {}

    void run()
    {
        couple(0, 0);
        settle();
        // An export numbers its elements in their order, so there the quid of one may have been that of another.
        const bool numbersStay = !isExport(before) || !isExport(after);
        if (numbersStay)
            pairByQuids();
        pairUnits();
        pairFeatures(numbersStay);
        if (!numbersStay)
            pairByQuids();
        withRelations = true;
        for (std::uint32_t place = 0; place < before.size(); ++place)
            if (before[place].partner != nobody)
                open.emplace_back(place, before[place].partner);
        settle();
        if (numbersStay)
            pairByQuids();
        pairLeftovers(associationByEnds, true);
        pairLeftovers(associationByOwner, true);
        if (!numbersStay)
            pairByQuids();
        pairEnds();
    }

private:
    bool couple(std::uint32_t old, std::uint32_t fresh)
    {
        if (before[old].partner != nobody || after[fresh].partner != nobody)
            return false;
        before[old].partner = fresh;
        after[fresh].partner = old;
        open.emplace_back(old, fresh);
        return true;
    }

    static bool isExport(const Snapshot& state)
    {
        const reader::Document& document = state.document();
        return reader::startsLikeAnExport(document.text(document.files().front()));
    }

    void pairByQuids()
    {
        for (const Key key : {quidAndName, quidAndOwner, quidAndContent})
            pairLeftovers(key);
    }

    void pairUnits()
    {
        pairLeftovers(ownerAndContent);
        pairAlike(); // before what is in a renamed package is taken for moved
        pairLeftovers(unitNameAndContent, true);
        pairLeftovers(unitName, true);
        pairLeftovers(unitContent, true);
        pairAlike();
    }

    // When all that they may belong to is paired: those that went from one to another, then those renamed.
    void pairFeatures(bool numbersStay)
    {
        pairLeftovers(featureNameAndContent, true);
        pairLeftovers(numbersStay ? parameterByFacts : featureByFacts);
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

    // Of one kind and name in one owner: those that are the same in all, in content, in quid, then one after the other.
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
        pairBy(quidAndAll);
        pairBy([](const Node& node) { return std::optional(node.content); });
        pairBy(quidOf);
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
            if (const auto key = keyOf(state, isNew, node))
                result.push_back({mixed(*key, node.kind), place});
        }
        return result;
    }

    static bool isInRelation(const Snapshot& state, const Node& node)
    {
        return isRelation(*node.object) || (node.parent != nobody && isRelation(*state[node.parent].object));
    }

    void pairAlike()
    {
        for (const auto& [old, fresh] : alikeByContents(before, after))
            if (couple(old, fresh))
                settle();
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

} // namespace

void pair(Snapshot& before, Snapshot& after)
{
    Pairing(before, after).run();
}

} // namespace compare
