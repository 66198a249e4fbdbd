#include "designs/convert/PackageOrder.h"

#include "designs/model/Walk.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace design {

namespace {

// Packages are numbered so that a package and all below it have numbers in a row.
struct Span {
    std::size_t first = 0;
    std::size_t end = 0;
};

class PackageSorter {
public:
    explicit PackageSorter(const Package& root)
    {
        number(root);
        forEachPackage(root, [&](const Package& package) {
            for (const Diagram& diagram : package.diagrams)
                collectShown(diagram, shown[&package]);
        });
    }

    // Returns the homes of all that the package's diagrams, and those below it, show.
    std::vector<std::size_t> sort(Package& package)
    {
        std::vector<std::size_t> all = shown[&package];
        std::vector<std::vector<std::size_t>> ofChildren;
        std::vector<Span> places;
        for (Package& child : package.packages) {
            places.push_back(spans[&child]);
            ofChildren.push_back(sort(child));
            all.insert(all.end(), ofChildren.back().begin(), ofChildren.back().end());
        }
        rearrange(package.packages, places, ofChildren);
        std::sort(all.begin(), all.end());
        all.erase(std::unique(all.begin(), all.end()), all.end());
        return all;
    }

private:
    void number(const Package& package)
    {
        Span& span = spans[&package];
        span.first = next++;
        for (const Classifier& classifier : package.classifiers)
            homes.emplace(classifier.id, span.first);
        for (const Package& child : package.packages)
            number(child);
        spans[&package].end = next;
    }

    void collectShown(const Diagram& diagram, std::vector<std::size_t>& found) const
    {
        for (const Box& box : diagram.boxes)
            if (const auto home = homes.find(box.elementId); home != homes.end())
                found.push_back(home->second);
    }

    static bool needs(const std::vector<std::size_t>& shownHomes, const Span& place)
    {
        return std::any_of(shownHomes.begin(), shownHomes.end(),
                           [&](std::size_t home) { return home >= place.first && home < place.end; });
    }

    static void rearrange(std::vector<Package>& packages, const std::vector<Span>& places,
                          const std::vector<std::vector<std::size_t>>& ofChildren)
    {
        std::vector<std::size_t> waiting(packages.size());
        for (std::size_t i = 0; i < waiting.size(); ++i)
            waiting[i] = i;
        std::vector<Package> sorted;
        while (!waiting.empty()) {
            auto chosen = std::find_if(waiting.begin(), waiting.end(), [&](std::size_t candidate) {
                return ofChildren[candidate].empty() ||
                       std::none_of(waiting.begin(), waiting.end(), [&](std::size_t other) {
                           return other != candidate && needs(ofChildren[candidate], places[other]);
                       });
            });
            if (chosen == waiting.end())
                chosen = waiting.begin(); // they show each other's classes
            sorted.push_back(std::move(packages[*chosen]));
            waiting.erase(chosen);
        }
        packages = std::move(sorted);
    }

    std::unordered_map<const Package*, Span> spans;
    std::unordered_map<const Package*, std::vector<std::size_t>> shown;
    std::unordered_map<std::string, std::size_t> homes; // of classifiers
    std::size_t next = 0;
};

} // namespace

void orderPackages(Package& root)
{
    PackageSorter(root).sort(root);
}

} // namespace design
