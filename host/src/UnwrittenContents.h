#pragma once

#include "ElementFaults.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

/// Only design packages are written.
[[nodiscard]] inline bool isDesignPackage(const KivPackage& package)
{
    return package.elementType == KivElementType::DesignPackage;
}

/// What would be lost with the packages that are not written.
class UnwrittenContents {
public:
    /// With one package, its sub-packages included.
    struct Counts {
        std::size_t classes = 0;
        std::size_t associations = 0;
        std::size_t diagrams = 0;
    };

    /// Those of the outermost package that is not written, or of the model itself; all are 0 at first.
    [[nodiscard]] Counts& with(const KivPackage& lost);
    /// A fault for each package that loses something, in the order in which they were met.
    void find(const KivModel& model, FaultList& list) const;

private:
    void add(const KivModel& model, const KivPackage& package, FaultList& list) const;

    std::vector<const KivPackage*> packages;
    std::unordered_map<const KivPackage*, Counts> countsOf;
};
