#include "designs/formats/drawn/Groups.h"

#include "designs/model/Walk.h"

#include <algorithm>
#include <cmath>

namespace design {

namespace {

constexpr double usualHeight = 60; // of boxes that their tool sizes

struct Extent {
    double from = 0;
    double to = 0;

    [[nodiscard]] double middle() const { return (from + to) / 2; }
};

Extent heightOf(const Rectangle& bounds)
{
    if (bounds.height > 0)
        return {bounds.top, bounds.top + bounds.height};
    return {bounds.top - usualHeight / 2, bounds.top + usualHeight / 2};
}

double middleOf(const Rectangle& bounds)
{
    return bounds.left + bounds.width / 2;
}

} // namespace

Homes::Homes(const Package& theRoot) : root(&theRoot)
{
    homes.emplace(root, nullptr);
    forEachPackage(theRoot, [&](const Package& package) {
        for (const Package& child : package.packages)
            homes.emplace(&child, &package);
        for (const Classifier& classifier : package.classifiers)
            homes.emplace(&classifier, &package);
    });
}

const Package* Homes::of(const Element& element) const
{
    const auto found = homes.find(&element);
    return found == homes.end() ? nullptr : found->second;
}

std::string Homes::pathOf(const Package& package) const
{
    std::vector<const Package*> way;
    for (const Package* each = &package; each && each != root; each = of(*each))
        way.push_back(each);
    std::string path;
    for (auto each = way.rbegin(); each != way.rend(); ++each)
        path.append(path.empty() ? "" : "::").append((*each)->name);
    return path;
}

Groups::Groups(const Diagram& diagram, const Package& theOwner, const Homes& theHomes, const Catalogue& catalogue)
    : owner(theOwner), homes(theHomes), groups(1)
{
    for (const Package* each = &owner; each; each = homes.of(*each))
        around.insert(each);
    for (const Box* const box : inReadingOrder(diagram.boxes)) {
        if (const Package* const package = catalogue.package(box->elementId)) {
            const std::size_t place = package == &owner ? newGroup(*package) : groupOf(*package);
            groups[place].box = box;
        } else if (const Classifier* const classifier = catalogue.classifier(box->elementId)) {
            const Package* const home = homes.of(*classifier);
            groups[home && home != &owner ? groupOf(*home) : 0].boxes.push_back(box);
        }
    }
}

std::size_t Groups::groupOf(const Package& package)
{
    if (homes.isRoot(package))
        return 0;
    const auto found = places.find(&package);
    return found == places.end() ? newGroup(package) : found->second;
}

std::size_t Groups::newGroup(const Package& package)
{
    const Package* const home = homes.of(package);
    const bool isOutermost = !home || around.contains(home) || around.contains(&package);
    const std::size_t parent = isOutermost ? 0 : groupOf(*home);
    const std::size_t place = groups.size();
    groups.push_back({&package, nullptr, {}, {}});
    groups[parent].groups.push_back(place);
    places.emplace(&package, place);
    return place;
}

Side sideOf(const Box* box, const Box* other)
{
    if (!box || !other || !box->bounds || !other->bounds || box == other)
        return Side::Unknown;
    const Extent mine = heightOf(*box->bounds);
    const Extent others = heightOf(*other->bounds);
    if (mine.to <= others.from || others.to <= mine.from)
        return mine.middle() < others.middle() ? Side::Below : Side::Above;
    return middleOf(*box->bounds) <= middleOf(*other->bounds) ? Side::Right : Side::Left;
}

std::vector<const Box*> inReadingOrder(const std::vector<Box>& boxes)
{
    std::vector<const Box*> order;
    order.reserve(boxes.size());
    for (const Box& box : boxes)
        order.push_back(&box);
    const auto isBefore = [](const Box* a, const Box* b) {
        if (!a->bounds || !b->bounds)
            return a->bounds.has_value() && !b->bounds;
        const double first = heightOf(*a->bounds).middle();
        const double second = heightOf(*b->bounds).middle();
        return first != second ? first < second : a->bounds->left < b->bounds->left;
    };
    std::stable_sort(order.begin(), order.end(), isBefore);
    return order;
}

} // namespace design
