#include "designs/convert/PackageOrder.h"

#include "designs/convert/DependencyOrder.h"
#include "designs/model/Walk.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace design {

namespace {

class PackageSorter {
public:
    explicit PackageSorter(const Package& root)
    {
        number(root, 0);
        collectNeeds(root);
    }

    void sort(Package& package) const
    {
        std::size_t next = 0;
        sort(package, next);
    }

private:
    // Packages are numbered in the order of the file, so that all within a package have the numbers behind its own.
    struct Place {
        std::size_t parent = 0;
        std::size_t end = 0;
        std::size_t index = 0;          // in the parent
        std::vector<std::size_t> needs; // indexes of neighbours
    };

    void number(const Package& package, std::size_t index, std::size_t parent = 0)
    {
        const std::size_t number = places.size();
        places.push_back({parent, 0, index, {}});
        for (const Classifier& classifier : package.classifiers)
            homes.emplace(classifier.id, number);
        std::size_t childIndex = 0;
        for (const Package& child : package.packages)
            this->number(child, childIndex++, number);
        places[number].end = places.size();
    }

    void collectNeeds(const Package& root)
    {
        std::size_t number = 0;
        forEachPackage(root, [&](const Package& package) {
            for (const Diagram& diagram : package.diagrams)
                for (const Box& box : diagram.boxes)
                    if (const auto home = homes.find(box.elementId); home != homes.end())
                        addNeed(number, home->second);
            ++number;
        });
    }

    // One of the two packages, or one around it, is a neighbour of the other or of one around that, unless one of them
    // lies in the other.
    void addNeed(std::size_t showing, std::size_t home)
    {
        if (isWithin(home, showing) || isWithin(showing, home))
            return;
        while (!isWithin(home, places[showing].parent))
            showing = places[showing].parent;
        while (places[home].parent != places[showing].parent)
            home = places[home].parent;
        places[showing].needs.push_back(places[home].index);
    }

    [[nodiscard]] bool isWithin(std::size_t inner, std::size_t outer) const
    {
        return inner >= outer && inner < places[outer].end;
    }

    void sort(Package& package, std::size_t& next) const
    {
        ++next;
        Needs needs;
        for (Package& child : package.packages) {
            needs.push_back(places[next].needs);
            sort(child, next);
        }
        std::vector<Package> sorted;
        sorted.reserve(package.packages.size());
        for (const std::size_t index : neededFirst(needs))
            sorted.push_back(std::move(package.packages[index]));
        package.packages = std::move(sorted);
    }

    std::vector<Place> places;
    std::unordered_map<std::string, std::size_t> homes; // of classifiers
};

} // namespace

void orderPackages(Package& root)
{
    PackageSorter(root).sort(root);
}

} // namespace design
