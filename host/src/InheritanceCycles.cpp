#include "InheritanceCycles.h"

#include <unordered_map>

namespace {

// Those of all generalizations, each of which is followed once.
std::vector<const KivClass*> supertypesOf(const KivClass& theClass)
{
    std::vector<const KivClass*> supertypes;
    for (const KivGeneralization* const generalization : theClass.generalizations)
        for (const KivClass* const supertype : generalization->supertypes)
            if (supertype)
                supertypes.push_back(supertype);
    return supertypes;
}

} // namespace

// Goes up from every class, each way once; a class that is met on the way that leads to it closes a circle.
void findInheritanceCycles(const std::vector<const KivClass*>& classes, FaultList& list)
{
    enum class State : std::uint8_t { OnTheWay, Done };
    struct Step {
        const KivClass* theClass;
        std::vector<const KivClass*> supertypes;
    };
    std::unordered_map<const KivClass*, State> states;
    for (const KivClass* const start : classes) {
        std::vector<Step> way;
        const auto enter = [&](const KivClass* next) {
            if (states.try_emplace(next, State::OnTheWay).second)
                way.push_back({next, supertypesOf(*next)});
            else if (states[next] == State::OnTheWay)
                list.add(KivFaultKind::Cycle, *next, "", named("class", *next) + " inherits from itself");
        };
        if (!start->generalizations.isEmpty() && !states.contains(start))
            enter(start);
        while (!way.empty()) {
            if (way.back().supertypes.empty()) {
                states[way.back().theClass] = State::Done;
                way.pop_back();
                continue;
            }
            const KivClass* const next = way.back().supertypes.back();
            way.back().supertypes.pop_back();
            enter(next);
        }
    }
}
