#include "browse/changes/ChangedDiagrams.h"

#include "compare/changes/Views.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace browse {

using compare::Change;
using compare::Comparison;
using compare::nobody;
using compare::Snapshot;

namespace {

class DiagramCollector {
public:
    explicit DiagramCollector(const Comparison& states) : states(states) {}

    std::vector<ChangedDiagram> collect(const std::vector<Change>& changes)
    {
        for (const Change& change : changes)
            note(change);
        if (showsGone)
            addDiagramsWithGone();
        for (ChangedDiagram& diagram : diagrams)
            markElements(diagram);
        return std::move(diagrams);
    }

private:
    void note(const Change& change)
    {
        if (!change.isOfDiagram) {
            showsGone = showsGone || isGoing(change);
            const std::uint32_t place = compare::placeOf(change, states);
            noteElement(isComing(change) ? states.after[place].parent : place);
            return;
        }
        ChangedDiagram& diagram = at(change.old, change.fresh);
        diagram.changes.push_back(&change);
        mark(diagram.before, change.oldView, change.sort);
        mark(diagram.after, change.freshView, change.sort);
    }

    // A class shows its features.
    void noteElement(std::uint32_t node)
    {
        for (; node != nobody; node = states.after[node].parent) {
            const reader::Object& object = *states.after[node].object;
            if (reader::elementKindOf(object) == reader::ElementKind::package || object.is("Design", "Processes"))
                return;
            changed.insert(node);
        }
    }

    // What happened to a view itself is told before what happened to its element, and a change before a move. The lines
    // of an association are its roles.
    static void mark(Marks& marks, const reader::Object* view, compare::Sort sort)
    {
        if (view)
            for (const reader::Object* const role : view->objects("roleview_list"))
                mark(marks, role, sort);
        const auto number = view ? view->viewNumber() : std::nullopt;
        if (!number)
            return;
        const auto [entry, isNew] = marks.emplace(static_cast<std::uint32_t>(*number), sort);
        if (!isNew && sort == compare::Sort::changed && entry->second == compare::Sort::moved)
            entry->second = sort;
    }

    ChangedDiagram& at(std::uint32_t old, std::uint32_t fresh)
    {
        const std::uint64_t key = std::uint64_t{old} << 32U | fresh;
        const auto [entry, isNew] = places.try_emplace(key, diagrams.size());
        if (isNew)
            diagrams.push_back({old, fresh, {}, {}, {}});
        return diagrams[entry->second];
    }

    // Views of what is gone are not told by themselves.
    void addDiagramsWithGone()
    {
        for (std::uint32_t node = 0; node < states.before.size(); ++node) {
            const compare::Node& diagram = states.before[node];
            if (!compare::isDiagram(*diagram.object) || diagram.partner == nobody)
                continue;
            const std::vector<const reader::Object*> views = compare::viewsOf(*diagram.object);
            if (std::any_of(views.begin(), views.end(),
                            [&](const reader::Object* view) { return showsLonely(states.before, *view); }))
                at(node, diagram.partner);
        }
    }

    static std::uint32_t elementOf(const Snapshot& state, const reader::Object& view)
    {
        return state.find(state.index().element(view).element);
    }

    static bool showsLonely(const Snapshot& state, const reader::Object& view)
    {
        const std::uint32_t element = elementOf(state, view);
        return element != nobody && state[element].partner == nobody;
    }

    void markElements(ChangedDiagram& diagram)
    {
        if (diagram.old == nobody || diagram.fresh == nobody)
            return; // all of it is new, or gone
        for (const reader::Object* const view : compare::viewsOf(*states.before[diagram.old].object)) {
            const std::uint32_t element = elementOf(states.before, *view);
            if (showsLonely(states.before, *view))
                mark(diagram.before, view, compare::Sort::removed);
            else if (element != nobody && changed.contains(states.before[element].partner))
                mark(diagram.before, view, compare::Sort::changed);
        }
        for (const reader::Object* const view : compare::viewsOf(*states.after[diagram.fresh].object)) {
            if (showsLonely(states.after, *view))
                mark(diagram.after, view, compare::Sort::added);
            else if (changed.contains(elementOf(states.after, *view)))
                mark(diagram.after, view, compare::Sort::changed);
        }
    }

    const Comparison& states;
    std::vector<ChangedDiagram> diagrams;
    std::unordered_map<std::uint64_t, std::size_t> places;
    std::unordered_set<std::uint32_t> changed; // elements of the new state
    bool showsGone = false;
};

} // namespace

std::vector<ChangedDiagram> changedDiagrams(const Comparison& states, const std::vector<Change>& changes)
{
    return DiagramCollector(states).collect(changes);
}

} // namespace browse
