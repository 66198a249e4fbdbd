#include "kiv/KivFaults.h"

#include "DrawnClasses.h"
#include "ElementFaults.h"
#include "InheritanceCycles.h"
#include "UnwrittenContents.h"

#include <string_view>
#include <unordered_set>
#include <utility>

namespace {

constexpr std::string_view logicalView = "Logical View";
constexpr const char* wholeObject = "";

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

class FaultFinder {
public:
    explicit FaultFinder(const KivModel& theModel) : model(theModel), root(findRoot(theModel)) {}

    std::vector<KivFault> run()
    {
        for (const KivType* const type : model.types)
            if (type)
                findTypeFaults(*type, list);
        walk();
        unwritten.find(model, list);
        drawnClasses.find(writtenDiagrams, list);
        findInheritanceCycles(classes, list);
        return std::move(list.faults);
    }

private:
    // A package on the way to be looked into, and the outermost package around it that is not written.
    struct Waiting {
        const KivPackage* package;
        const KivPackage* lost;
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
        UnwrittenContents::Counts* const contents = lost ? &unwritten.with(*lost) : nullptr;
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
    void lookAt(const KivObject& element, UnwrittenContents::Counts* contents)
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

    void lookAt(const KivClass& theClass, const KivPackage& package, UnwrittenContents::Counts* contents,
                std::unordered_set<std::string_view>& names)
    {
        classes.push_back(&theClass);
        if (contents)
            ++contents->classes;
        drawnClasses.count(theClass, contents != nullptr);
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

    const KivModel& model;
    const KivPackage* root;
    FaultList list;
    std::vector<const KivClass*> classes;
    std::vector<const KivClassDiagram*> writtenDiagrams;
    UnwrittenContents unwritten;
    DrawnClasses drawnClasses;
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
