#include "kiv/KivFaults.h"

#include "ElementFaults.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

constexpr std::string_view logicalView = "Logical View";
constexpr const char* wholeObject = "";

bool isDesignPackage(const KivPackage& package)
{
    return package.elementType == KivElementType::DesignPackage;
}

// The top-level package that becomes the root of the file; null when one is made.
const KivPackage* findRoot(const KivModel& model)
{
    const KivPackage* root = nullptr;
    for (const KivPackage* const package : model.childPackages) {
        if (!isDesignPackage(*package))
            continue;
        if (package->getName().view() == logicalView)
            return package;
        if (!root && package->getName().view().find(logicalView) != std::string_view::npos)
            root = package;
    }
    return root;
}

// What would be lost with a package that is not written, its sub-packages included.
struct Contents {
    std::size_t classes = 0;
    std::size_t associations = 0;
    std::size_t diagrams = 0;

    // `3 classes and 1 diagram`; empty for nothing.
    [[nodiscard]] std::string asText() const
    {
        std::vector<std::string> parts;
        if (classes > 0)
            parts.push_back(counted(classes, "class", "classes"));
        if (associations > 0)
            parts.push_back(counted(associations, "association", "associations"));
        if (diagrams > 0)
            parts.push_back(counted(diagrams, "diagram", "diagrams"));
        std::string text;
        for (std::size_t i = 0; i < parts.size(); ++i)
            text += (i == 0 ? "" : i + 1 == parts.size() ? " and " : ", ") + parts[i];
        return text;
    }
    [[nodiscard]] bool isOne() const { return classes + associations + diagrams == 1; }
};

class FaultFinder {
public:
    explicit FaultFinder(const KivModel& theModel) : model(theModel), root(findRoot(theModel)) {}

    std::vector<KivFault> run()
    {
        for (const KivType* const type : model.types)
            if (type)
                findTypeFaults(*type, list);
        walk();
        findDiagramFaults();
        findInheritanceCycles();
        return std::move(list.faults);
    }

private:
    // A package on the way to be looked into, and the outermost package around it that is not written.
    struct Waiting {
        const KivPackage* package;
        const KivPackage* lost;
    };
    struct DiagramCounts {
        std::size_t met = 0; // classes of the model that it draws
        std::size_t withoutPlace = 0;
        std::size_t unwritten = 0;
    };

    // Not a call within a call: packages may lie in each other deeper than any stack.
    void walk()
    {
        std::vector<Waiting> waiting = {{&model, &model}};
        std::unordered_set<const KivPackage*> seen = {&model};
        while (!waiting.empty()) {
            const auto [package, lost] = waiting.back();
            waiting.pop_back();
            lookInto(*package, lost);
            for (std::size_t i = package->childPackages.count(); i-- > 0;) {
                const KivPackage& child = *package->childPackages.at(i);
                if (seen.insert(&child).second)
                    waiting.push_back({&child, lostWith(child, package == &model ? nullptr : lost)});
                else
                    list.add(KivFaultKind::Cycle, child, wholeObject,
                             named("package", child) + " lies in itself or in two packages");
            }
        }
        for (const KivPackage* const package : lostPackages)
            addLost(*package);
    }

    // Below a package that is not written nothing is; of those named like the root only the root is.
    const KivPackage* lostWith(const KivPackage& package, const KivPackage* lostAround) const
    {
        if (lostAround)
            return lostAround;
        const bool isSecondRoot = package.getName().view() == logicalView && &package != root;
        return isDesignPackage(package) && !isSecondRoot ? nullptr : &package;
    }

    void lookInto(const KivPackage& package, const KivPackage* lost)
    {
        Contents* const contents = lost ? &contentsOf(*lost) : nullptr;
        std::unordered_set<std::string_view> names;
        for (const KivObject* const element : package.modelElements) {
            if (!element)
                continue;
            if (element->elementType == KivElementType::Class)
                lookAt(static_cast<const KivClass&>(*element), package, contents, names);
            else
                lookAt(*element, contents);
        }
        for (const KivDiagram* const diagram : package.diagrams) {
            if (!diagram || diagram->elementType != KivElementType::ClassDiagram)
                continue;
            if (contents)
                ++contents->diagrams;
            else
                writtenDiagrams.push_back(static_cast<const KivClassDiagram*>(diagram));
        }
    }

    // Relations other than associations are written with their classes, wherever they stand.
    void lookAt(const KivObject& element, Contents* contents)
    {
        switch (element.elementType) {
        case KivElementType::Association:
            if (contents)
                ++contents->associations;
            return findAssociationFaults(static_cast<const KivAssociation&>(element), list);
        case KivElementType::Generalization:
            return findGeneralizationFaults(static_cast<const KivGeneralization&>(element), list);
        case KivElementType::Dependency:
            return findRelationFaults(static_cast<const KivDependency&>(element), "dependency", list);
        case KivElementType::Realization:
            return findRelationFaults(static_cast<const KivRealization&>(element), "realization", list);
        default:
            return;
        }
    }

    Contents& contentsOf(const KivPackage& lost)
    {
        const auto [place, isNew] = lostContents.try_emplace(&lost);
        if (isNew)
            lostPackages.push_back(&lost);
        return place->second;
    }

    void lookAt(const KivClass& theClass, const KivPackage& package, Contents* contents,
                std::unordered_set<std::string_view>& names)
    {
        classes.push_back(&theClass);
        if (contents)
            ++contents->classes;
        countDrawn(theClass, contents != nullptr);
        if (isHiddenElement(theClass))
            return;
        const auto place = [&] {
            return &package == &model ? "outside of all packages" : "in " + named("package", package);
        };
        if (theClass.getName().isEmpty())
            list.add(KivFaultKind::NoName, theClass, "name", "a class " + place() + " has no name");
        else if (!names.insert(theClass.getName().view()).second)
            list.add(KivFaultKind::SameName, theClass, "name",
                     named("class", theClass) + " has the name of another class " + place());
        findClassFaults(theClass, list);
    }

    void countDrawn(const KivClass& theClass, bool isLost)
    {
        if (theClass.links.isEmpty())
            return;
        places.clear();
        for (const KivProjection* const projection : theClass.projections)
            if (projection)
                places.push_back(projection->diagram);
        std::sort(places.begin(), places.end(), std::less<>());
        for (const KivObject* const diagram : theClass.links) {
            if (!diagram || diagram->elementType != KivElementType::ClassDiagram)
                continue;
            DiagramCounts& counts = diagramCounts[diagram];
            ++counts.met;
            if (isHiddenElement(theClass))
                continue;
            counts.unwritten += isLost ? 1U : 0U;
            counts.withoutPlace += std::binary_search(places.begin(), places.end(), diagram, std::less<>()) ? 0U : 1U;
        }
    }

    void addLost(const KivPackage& package)
    {
        const Contents& contents = lostContents[&package];
        const std::string what = contents.asText();
        const std::string lost = contents.isOne() ? " is not written" : " are not written";
        if (what.empty())
            return;
        if (&package == &model)
            list.add(KivFaultKind::NotWritten, model,
                     contents.classes + contents.associations > 0 ? "modelElements" : "diagrams",
                     what + lost + ", for only what is in a package is");
        else if (!isDesignPackage(package))
            list.add(KivFaultKind::NotWritten, package, "kind",
                     named("package", package) + " is no design package, so " + what + " in it" + lost);
        else
            list.add(KivFaultKind::NotWritten, package, "name",
                     named("package", package) + " is not the root of the packages, so " + what + " in it" + lost);
    }

    void findDiagramFaults()
    {
        for (const KivClassDiagram* const diagram : writtenDiagrams) {
            const auto isClass = [](const KivModelObject* each) {
                return each && each->elementType == KivElementType::Class;
            };
            const auto drawn =
                static_cast<std::size_t>(std::count_if(diagram->elements.begin(), diagram->elements.end(), isClass));
            const DiagramCounts& counts = diagramCounts[diagram];
            const std::size_t unwritten = counts.unwritten + drawn - std::min(drawn, counts.met);
            if (unwritten > 0)
                list.add(KivFaultKind::DrawnOnly, *diagram, "elements",
                         named("diagram", *diagram) + " draws " +
                             counted(unwritten, "class that is", "classes that are") + " in no written package");
            if (counts.withoutPlace > 0)
                list.add(KivFaultKind::NoPlace, *diagram, wholeObject, withoutPlace(*diagram, counts.withoutPlace));
        }
    }

    static std::string withoutPlace(const KivClassDiagram& diagram, std::size_t count)
    {
        const std::string where =
            diagram.getName().isEmpty() ? named("diagram", diagram) : '"' + std::string(diagram.getName().view()) + '"';
        return counted(count, "box of ", "boxes of ") + where +
               (count == 1 ? " has no place" : " have no place and lie on each other");
    }

    // Goes up from every class, each way once; a class that is met on the way that leads to it closes a circle.
    void findInheritanceCycles()
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
                    list.add(KivFaultKind::Cycle, *next, wholeObject, named("class", *next) + " inherits from itself");
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

    // Those of all generalizations, each of which is followed once.
    static std::vector<const KivClass*> supertypesOf(const KivClass& theClass)
    {
        std::vector<const KivClass*> supertypes;
        for (const KivGeneralization* const generalization : theClass.generalizations)
            for (const KivClass* const supertype : generalization->supertypes)
                if (supertype)
                    supertypes.push_back(supertype);
        return supertypes;
    }

    const KivModel& model;
    const KivPackage* root;
    FaultList list;
    std::vector<const KivClass*> classes;
    std::vector<const KivObject*> places; // diagrams on which the class in hand has a place
    std::vector<const KivClassDiagram*> writtenDiagrams;
    std::vector<const KivPackage*> lostPackages; // the model itself among them, in the order of the walk
    std::unordered_map<const KivPackage*, Contents> lostContents;
    std::unordered_map<const KivObject*, DiagramCounts> diagramCounts;
};

} // namespace

const char* nameOf(KivFaultKind kind)
{
    switch (kind) {
    case KivFaultKind::NotWritten:
        return "not-written";
    case KivFaultKind::DrawnOnly:
        return "drawn-only";
    case KivFaultKind::NoPlace:
        return "no-place";
    case KivFaultKind::MissingEnd:
        return "missing-end";
    case KivFaultKind::RoleCount:
        return "role-count";
    case KivFaultKind::NoName:
        return "no-name";
    case KivFaultKind::SameName:
        return "same-name";
    case KivFaultKind::Cycle:
        return "cycle";
    case KivFaultKind::NegativeSize:
        return "negative-size";
    case KivFaultKind::Bounds:
        return "bounds";
    case KivFaultKind::UnknownCode:
        return "unknown-code";
    case KivFaultKind::UnknownDataType:
        return "unknown-data-type";
    }
    return "";
}

std::vector<KivFault> findFaults(const KivModel& model)
{
    return FaultFinder(model).run();
}
