#include "designs/Import.h"

#include "designs/convert/PackageOrder.h"
#include "designs/layout/Crossings.h"
#include "designs/layout/Diagrams.h"
#include "designs/layout/Layout.h"
#include "designs/layout/Scaling.h"
#include "designs/model/Walk.h"
#include "designs/settling/Settling.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <unordered_set>

namespace design {

namespace {

constexpr std::size_t deepestPackage = 500; // the host's files allow a few more
constexpr const char* logicalView = "Logical View";

std::size_t depthOf(const Package& package)
{
    std::size_t deepest = 0;
    for (const Package& child : package.packages)
        deepest = std::max(deepest, depthOf(child));
    return deepest + 1;
}

bool hasClassifiers(const Package& root)
{
    bool found = false;
    forEachPackage(root, [&](const Package& package) { found = found || !package.classifiers.empty(); });
    return found;
}

[[noreturn]] void throwNothingFound(const Format& format, const Report& report)
{
    std::map<std::string_view, std::size_t> others;
    for (const ReportEntry& entry : report.leftEntries())
        ++others[entry.kind];
    std::string found;
    for (const auto& [kind, count] : others)
        found.append(found.empty() ? "" : ", ").append(std::to_string(count)).append(" ").append(kind);
    throw UnreadableDesign("nothing to import was found; looked for " + std::string(format.lookedFor) +
                           (found.empty() ? "" : "; found only: " + found));
}

bool isEmpty(const Package& package)
{
    return package.packages.empty() && package.classifiers.empty() && package.associations.empty() &&
           package.relationships.empty() && package.remarks.empty() && package.diagrams.empty();
}

template <class Item>
void moveBehind(std::vector<Item>& from, std::vector<Item>& to)
{
    std::move(from.begin(), from.end(), std::back_inserter(to));
    from.clear();
}

// A Rose file has classes and diagrams in packages only, the outermost of which is the Logical View.
void moveIntoLogicalView(Package& root, Report& report)
{
    if (root.classifiers.empty() && root.associations.empty() && root.relationships.empty() && root.remarks.empty() &&
        root.diagrams.empty())
        return;
    auto view = std::find_if(root.packages.begin(), root.packages.end(),
                             [](const Package& package) { return package.name == logicalView; });
    if (view == root.packages.end()) {
        Package outermost;
        outermost.name = logicalView;
        outermost.packages = std::move(root.packages);
        report.made("package", "", logicalView, "a Rose file has everything in it");
        root.packages = {std::move(outermost)};
        view = root.packages.begin();
    }
    moveBehind(root.classifiers, view->classifiers);
    moveBehind(root.associations, view->associations);
    moveBehind(root.relationships, view->relationships);
    moveBehind(root.remarks, view->remarks);
    moveBehind(root.diagrams, view->diagrams);
}

// In a Rose file one package alone may be called so: others would not be written, nor would anything in them.
void nameOtherLogicalViews(Package& root, Report& report)
{
    const auto isCalledSo = [](const Package& package) { return package.name == logicalView; };
    const auto view = std::ranges::find_if(root.packages, isCalledSo);
    std::size_t number = 1;
    forEachPackage(root, [&](Package& package) {
        if (!isCalledSo(package) || &package == &root || (view != root.packages.end() && &package == &*view))
            return;
        package.name.append(" ").append(std::to_string(++number));
        report.made("name", package.id, package.name, "a Rose file has one package called Logical View");
    });
}

// The packages beside the Logical View of a Rose file, such as that of its use cases, if there is anything in them that
// a model has.
void moveIntoFirst(Package& root)
{
    std::vector<Package> others(std::make_move_iterator(root.packages.begin() + 1),
                                std::make_move_iterator(root.packages.end()));
    root.packages.resize(1);
    std::erase_if(others, isEmpty);
    moveBehind(others, root.packages.front().packages);
}

// Rose has the end that an association leads to first and the one that it comes from second. Readers of its files put
// an arrow at the first and the diamond of an aggregation at the second, whatever the roles say.
bool isTurned(const std::vector<AssociationEnd>& ends)
{
    if (ends.size() != 2)
        return false;
    const bool isWhole = ends[0].aggregation != Aggregation::None;
    if (isWhole != (ends[1].aggregation != Aggregation::None))
        return isWhole;
    return ends[1].isNavigable && !ends[0].isNavigable;
}

void turnAssociations(Package& root)
{
    std::unordered_set<std::string_view> turned;
    forEachPackage(root, [&](Package& package) {
        for (Association& association : package.associations)
            if (isTurned(association.ends)) {
                std::swap(association.ends[0], association.ends[1]);
                turned.insert(association.id);
            }
    });
    forEachPackage(root, [&](Package& package) {
        for (Diagram& diagram : package.diagrams)
            for (Line& line : diagram.lines)
                if (turned.contains(line.elementId))
                    std::reverse(line.points.begin(), line.points.end());
    });
}

void layOutOrTell(Diagram& diagram, const Catalogue& catalogue, LayoutBudget& budget, Report& report)
{
    if (!layOut(diagram, catalogue, budget))
        report.made("layout", diagram.id, diagram.name,
                    "there are too many boxes and lines to lay out; the boxes of the diagram stand in rows");
}

// In a file of the host boxes have their sizes, but may stand where its symbols of packages will be.
void prepareDiagrams(Package& root, const Catalogue& catalogue, bool isOrdered, bool hasLayout, Report& report)
{
    LayoutBudget budget;
    forEachPackage(root, [&](Package& package) {
        for (Diagram& diagram : package.diagrams) {
            if (!isOrdered)
                place(diagram, factorForText(diagram, catalogue), {});
            if (hasLayout)
                layOutOrTell(diagram, catalogue, budget, report);
            if (diagram.keepsPlaces)
                continue;
            if (!isOrdered)
                openCrossingLines(diagram);
            settleOrigin(diagram, package.packages.size());
        }
    });
}

void checkDepth(const Package& root)
{
    if (depthOf(root) > deepestPackage)
        throw UnreadableDesign("packages lie in each other more than " + std::to_string(deepestPackage) + " deep");
}

void settleAllDiagrams(Design& design, Reach reach, bool hasLayout, Report& report)
{
    const Catalogue catalogue(design.root);
    forEachPackage(design.root,
                   [&](Package& package) { settleDiagrams(package, reach, design.kinds, catalogue, report); });
    if (hasLayout && !showsAnything(design.root))
        addOverviews(design.root, catalogue, report);
}

} // namespace

Converted importDesign(const Format& format, const Source& source, std::optional<bool> layout, Report& report)
{
    Design design = format.read(source, report);
    std::vector<ElementCount> counts = countElements(design);
    design.document.reset();
    const bool hasLayout = layout.value_or(!design.isOrdered);
    leaveUseCases(design, report);
    if (!hasClassifiers(design.root))
        throwNothingFound(format, report);
    checkDepth(design.root);
    settle(design, Reach::Classifiers, report);
    if (design.isOrdered && !design.root.packages.empty())
        moveIntoFirst(design.root);
    moveIntoLogicalView(design.root, report);
    nameOtherLogicalViews(design.root, report);
    if (!design.isOrdered)
        turnAssociations(design.root);
    settleAllDiagrams(design, Reach::Classifiers, hasLayout, report);
    if (!design.isOrdered)
        orderPackages(design.root);
    giveIdentifiers(design, report);
    const Catalogue catalogue(design.root);
    prepareDiagrams(design.root, catalogue, design.isOrdered, hasLayout, report);
    Converted converted = convert(design, catalogue, report);
    converted.read = std::move(counts);
    return converted;
}

Design readDesign(const Format& format, const Source& source, Report& report)
{
    Design design = format.read(source, report);
    if (!hasClassifiers(design.root) && !design.document)
        throwNothingFound(format, report);
    checkDepth(design.root);
    return design;
}

void settleFor(const Format& target, Design& design, bool hasLayout, Report& report)
{
    if (!target.drawsDocument)
        design.document.reset();
    settle(design, Reach::Packages, report);
    settleAllDiagrams(design, Reach::Packages, hasLayout && target.hasDiagrams, report);
    giveIdentifiers(design, report);
    if (!target.hasDiagrams || !target.hasPlaces || !hasLayout)
        return;
    const Catalogue catalogue(design.root);
    LayoutBudget budget;
    forEachPackage(design.root, [&](Package& package) {
        for (Diagram& diagram : package.diagrams) {
            if (diagram.keepsPlaces)
                sizeAboutCentres(diagram, catalogue);
            layOutOrTell(diagram, catalogue, budget, report);
        }
    });
}

} // namespace design
