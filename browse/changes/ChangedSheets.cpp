#include "browse/changes/ChangedSheets.h"

#include "browse/Kinds.h"
#include "compare/facts/Labels.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace browse {

using compare::Change;
using compare::Comparison;
using compare::nobody;
using compare::Snapshot;

namespace {

bool hasNewOwner(const Change& change)
{
    return change.what == "owner" && !isView(change);
}

bool hasSheet(const reader::Object& object)
{
    if (object.is("Association", "Mechanism", "State_Machine"))
        return true;
    const Group group = kindOf(object).group;
    return group == Group::package || group == Group::classifier;
}

std::uint32_t sheetAround(const Snapshot& state, std::uint32_t node)
{
    while (!hasSheet(*state[node].object) && state[node].parent != nobody)
        node = state[node].parent;
    return node;
}

class Collector {
public:
    explicit Collector(const Comparison& states) : states(states) {}

    std::vector<ChangedSheet> collect(const std::vector<Change>& changes)
    {
        for (const Change& change : changes)
            if (!change.isOfDiagram)
                add(change);
        return std::move(sheets);
    }

private:
    // What comes or goes is told by its owner, and has a sheet with one side.
    void add(const Change& change)
    {
        std::uint32_t place = compare::placeOf(change, states);
        if (isComing(change) && states.after[place].parent != nobody)
            place = states.after[place].parent;
        place = sheetAround(states.after, place);
        sheet(states.after[place].partner, place).changes.push_back(&change);
        if ((isComing(change) || isGoing(change)) && hasSheet(compare::objectOf(states, change)))
            sheet(change.old, change.fresh);
        if (hasNewOwner(change))
            addLeaving(change);
    }

    // The sheet on which it stood shows that it is gone from there.
    void addLeaving(const Change& change)
    {
        const std::uint32_t owner = states.before[change.old].parent;
        if (!hasSheet(*states.before[owner].object) || states.before[owner].partner == nobody)
            return;
        ChangedSheet& former = sheet(owner, states.before[owner].partner);
        if (former.changes.empty() || former.changes.back() != &change)
            former.changes.push_back(&change);
    }

    ChangedSheet& sheet(std::uint32_t old, std::uint32_t fresh)
    {
        const auto [entry, isNew] = places.try_emplace({old, fresh}, sheets.size());
        if (isNew)
            sheets.push_back({old, fresh, {}});
        return sheets[entry->second];
    }

    const Comparison& states;
    std::vector<ChangedSheet> sheets;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> places;
};

class RowMaker {
public:
    RowMaker(const Comparison& states, const ChangedSheet& sheet)
        : states(states), sheet(sheet), reader(states.depth), oneSided(sheet.old == nobody     ? RowSort::added
                                                                       : sheet.fresh == nobody ? RowSort::removed
                                                                                               : RowSort::same)
    {
    }

    std::vector<ChangedRow> make()
    {
        sortChanges();
        addOwnChanges();
        addFacts();
        addChildren();
        return std::move(rows);
    }

private:
    // The child of the sheet's element that a node of the new state is or belongs to.
    [[nodiscard]] std::uint32_t childAround(std::uint32_t node) const
    {
        while (states.after[node].parent != sheet.fresh && states.after[node].parent != nobody)
            node = states.after[node].parent;
        return node;
    }

    void sortChanges()
    {
        for (const Change* const change : sheet.changes) {
            const std::uint32_t place = compare::placeOf(*change, states);
            if (hasNewOwner(*change) && sheetAround(states.after, place) != sheet.fresh)
                leaving.insert(change->old);
            else if (isGoing(*change) && place == sheet.fresh)
                going.insert(change->old);
            else if (isComing(*change) && states.after[place].parent == sheet.fresh)
                coming.insert(place);
            else if (place == sheet.fresh)
                own.push_back(change);
            else
                inside[childAround(place)].push_back(change);
        }
    }

    void addOwnChanges()
    {
        for (const Change* const change : own)
            rows.push_back({static_cast<RowSort>(change->sort), false, std::string(compare::wordFor(change->what)),
                            change->before, change->after});
    }

    // What is said of the element itself and is the same.
    void addFacts()
    {
        const bool isOld = sheet.fresh == nobody;
        const Snapshot& state = isOld ? states.before : states.after;
        for (compare::Fact& fact : reader.all(*state[isOld ? sheet.old : sheet.fresh].object)) {
            const bool isOfTool = fact.key.find('.') != std::string::npos;
            const bool isTold =
                std::any_of(own.begin(), own.end(), [&](const Change* change) { return change->what == fact.key; });
            if (!isOfTool && !isTold)
                addSides(std::string(compare::wordFor(fact.key)), fact.value, fact.value);
        }
    }

    // A line of which both sides are there, or the one that the sheet has.
    void addSides(std::string label, const std::string& before, const std::string& after)
    {
        rows.push_back({oneSided, false, std::move(label), oneSided == RowSort::added ? std::string() : before,
                        oneSided == RowSort::removed ? std::string() : after});
    }

    static std::vector<std::uint32_t> childrenOf(const Snapshot& state, std::uint32_t node)
    {
        std::vector<std::uint32_t> children;
        if (node != nobody)
            state.forEachChild(node, [&](std::uint32_t child) {
                if (!compare::isDiagram(*state[child].object))
                    children.push_back(child);
            });
        return children;
    }

    // In the order of the new state; what is gone stands where it was.
    void addChildren()
    {
        const std::vector<std::uint32_t> olds = childrenOf(states.before, sheet.old);
        const std::vector<std::uint32_t> news = childrenOf(states.after, sheet.fresh);
        std::unordered_map<std::uint32_t, std::size_t> oldPlaces;
        for (std::size_t i = 0; i < olds.size(); ++i)
            oldPlaces.emplace(olds[i], i);
        std::size_t next = 0; // of the old children
        for (const std::uint32_t child : news) {
            const auto partner = oldPlaces.find(states.after[child].partner);
            for (; partner != oldPlaces.end() && next <= partner->second; ++next)
                addGone(olds[next]);
            addChild(child);
        }
        for (; next < olds.size(); ++next)
            addGone(olds[next]);
    }

    void addGone(std::uint32_t child)
    {
        if (oneSided == RowSort::removed || going.contains(child))
            rows.push_back({RowSort::removed, false, {}, descriptionOf(states.before, child), {}});
        else if (leaving.contains(child))
            rows.push_back({RowSort::moved, false, {}, descriptionOf(states.before, child), {}});
    }

    void addChild(std::uint32_t child)
    {
        const std::string after = descriptionOf(states.after, child);
        const std::uint32_t partner = states.after[child].partner;
        if (oneSided == RowSort::added || coming.contains(child)) {
            rows.push_back({partner == nobody ? RowSort::added : RowSort::moved, false, {}, {}, after});
            return;
        }
        const auto changes = inside.find(child);
        if (changes == inside.end()) {
            if (partner != nobody && !hasSheet(*states.after[child].object))
                rows.push_back({RowSort::same, false, {}, descriptionOf(states.before, partner), after});
            return;
        }
        const bool isMoved = std::all_of(changes->second.begin(), changes->second.end(),
                                         [](const Change* change) { return change->sort == compare::Sort::moved; });
        rows.push_back({isMoved ? RowSort::moved : RowSort::changed,
                        false,
                        {},
                        partner == nobody ? std::string() : descriptionOf(states.before, partner),
                        after});
        for (const Change* const change : changes->second)
            addInside(*change, child);
    }

    // What the line of the child does not say by itself.
    void addInside(const Change& change, std::uint32_t child)
    {
        constexpr std::array<std::string_view, 6> said = {"name", "type", "result", "initv", "stereotype", "supplier"};
        if (change.fresh == child && std::find(said.begin(), said.end(), change.what) != said.end())
            return;
        ChangedRow row = {static_cast<RowSort>(change.sort), true, {}, {}, {}};
        if (isComing(change)) {
            row.after = descriptionOf(states.after, change.fresh);
        } else if (isGoing(change)) {
            row.before = descriptionOf(states.before, change.old);
        } else {
            row.label = std::string(compare::wordFor(change.what));
            if (change.fresh != child)
                row.label = compare::headlineOf(states.after, *states.after[change.fresh].object) + ": " + row.label;
            row.before = change.before;
            row.after = change.after;
        }
        rows.push_back(std::move(row));
    }

    static std::string descriptionOf(const Snapshot& state, std::uint32_t node)
    {
        return compare::descriptionOf(state, *state[node].object);
    }

    const Comparison& states;
    const ChangedSheet& sheet;
    compare::FactReader reader;
    RowSort oneSided;
    std::vector<ChangedRow> rows;
    std::vector<const Change*> own;
    std::unordered_set<std::uint32_t> coming;  // children of the new state
    std::unordered_set<std::uint32_t> going;   // children of the old one
    std::unordered_set<std::uint32_t> leaving; // the same, of which the new state has another owner
    std::unordered_map<std::uint32_t, std::vector<const Change*>> inside;
};

} // namespace

std::vector<ChangedSheet> changedSheets(const Comparison& states, const std::vector<Change>& changes)
{
    return Collector(states).collect(changes);
}

std::vector<ChangedRow> rowsOf(const Comparison& states, const ChangedSheet& sheet)
{
    return RowMaker(states, sheet).make();
}

} // namespace browse
