#include "designs/formats/ecore/Plan.h"

#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

#include <algorithm>
#include <cstdint>

// Which supertypes the classes of an Ecore file have, and what follows from that for their names.

namespace design::ecore {

namespace {

template <typename Class, typename Visit>
void forEachName(Class& plan, const Visit& visit)
{
    for (auto& attribute : plan.attributes)
        visit(attribute.name);
    for (auto& reference : plan.references)
        visit(reference.name);
}

} // namespace

struct Plan::SharedNames {
    std::unordered_map<std::string, std::size_t> counts; // of the classes that have a feature of the name
    std::size_t stepsLeft = 2000000;
};

void Plan::planSupertypes()
{
    forEachPackage(writing.design.root, [&](const Package& package) {
        for (const Relationship& relationship : package.relationships) {
            if (relationship.kind == RelationshipKind::Dependency) {
                report.left("dependency", relationship.id, relationship.name, "Ecore has none");
                continue;
            }
            const Classifier* const client = writing.catalogue.classifierOf(relationship.client);
            const Classifier* const supplier = writing.catalogue.classifierOf(relationship.supplier);
            const auto subtype = client ? classes.find(client) : classes.end();
            if (subtype == classes.end() || !supplier || !classes.contains(supplier)) {
                report.left(design::nameOf(relationship.kind), relationship.id, relationship.name,
                            "an end of it is no class of the file");
                continue;
            }
            std::vector<const Classifier*>& supertypes = subtype->second.supertypes;
            if (std::find(supertypes.begin(), supertypes.end(), supplier) != supertypes.end()) {
                report.left(design::nameOf(relationship.kind), relationship.id, relationship.name,
                            "the class has the supertype already");
                continue;
            }
            if (relationship.kind == RelationshipKind::Realization) {
                constexpr std::string_view reason = "an interface is a supertype as others are";
                report.left("realization", relationship.id, relationship.name, reason);
                report.made("generalization", relationship.id, relationship.name, reason);
            }
            // What is mixed in stands behind what is extended.
            supertypes.insert(relationship.stereotype == "extend" ? supertypes.begin() : supertypes.end(), supplier);
        }
    });
}

// No class may be its own supertype.
void Plan::dropCycles()
{
    enum class State : std::uint8_t { unknown, open, closed };
    std::unordered_map<const Classifier*, State> states;
    struct Step {
        const Classifier* classifier;
        std::size_t next;
    };
    for (const Classifier* const first : inOrder) {
        std::vector<Step> way = {{first, 0}};
        if (states[first] != State::unknown)
            continue;
        states[first] = State::open;
        while (!way.empty()) {
            Step& step = way.back();
            std::vector<const Classifier*>& supertypes = classes.at(step.classifier).supertypes;
            if (step.next == supertypes.size()) {
                states[step.classifier] = State::closed;
                supertypesFirst.push_back(step.classifier);
                way.pop_back();
                continue;
            }
            const Classifier* const supertype = supertypes[step.next];
            State& state = states[supertype];
            if (state == State::open) {
                report.left("generalization", "", step.classifier->name, "a class would be its own supertype");
                supertypes.erase(supertypes.begin() + static_cast<std::ptrdiff_t>(step.next));
                continue;
            }
            ++step.next;
            if (state == State::unknown) {
                state = State::open;
                way.push_back({supertype, 0});
            }
        }
    }
}

// Only names that occur in several classes are looked for in supertypes, and not for ever.
std::unordered_set<std::string> Plan::inheritedNames(const ClassPlan& plan, SharedNames& shared) const
{
    std::unordered_set<const Classifier*> met;
    std::unordered_set<std::string> inherited;
    std::vector<const Classifier*> open = plan.supertypes;
    while (!open.empty() && shared.stepsLeft > 0) {
        const Classifier* const supertype = open.back();
        open.pop_back();
        if (!met.insert(supertype).second)
            continue;
        const ClassPlan& other = classes.at(supertype);
        forEachName(other, [&](const std::string& name) {
            shared.stepsLeft -= shared.stepsLeft > 0 ? 1 : 0;
            if (shared.counts.at(name) > 1)
                inherited.insert(name);
        });
        open.insert(open.end(), other.supertypes.begin(), other.supertypes.end());
    }
    return inherited;
}

// A class has each name once, those of its supertypes included.
void Plan::makeUniqueAmongInherited()
{
    SharedNames shared;
    for (const Classifier* const classifier : inOrder)
        forEachName(classes.at(classifier), [&](const std::string& name) { ++shared.counts[name]; });
    for (const Classifier* const classifier : supertypesFirst) {
        ClassPlan& plan = classes.at(classifier);
        const std::unordered_set<std::string> inherited = inheritedNames(plan, shared);
        forEachName(plan, [&](std::string& name) {
            if (!inherited.contains(name))
                return;
            const std::string earlier = name;
            do {
                name = plan.names.take(earlier, earlier);
            } while (inherited.contains(name));
            ++shared.counts[name];
            report.made("name", classifier->id, renamed(earlier, name), "a supertype has a feature of that name");
        });
    }
}

} // namespace design::ecore
