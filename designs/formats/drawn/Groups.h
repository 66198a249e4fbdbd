#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace design {

/// Which package everything lies in.
class Homes {
public:
    explicit Homes(const Package& theRoot);

    /// The package that a package or classifier lies in; null for the root.
    [[nodiscard]] const Package* of(const Element& element) const;
    [[nodiscard]] bool isRoot(const Package& package) const { return &package == root; }
    /// "Logical View::Orders"; empty for the root.
    [[nodiscard]] std::string pathOf(const Package& package) const;

private:
    const Package* root;
    std::unordered_map<const Element*, const Package*> homes;
};

/// What of a diagram stands in one frame.
struct Group {
    const Package* package = nullptr; ///< null for what stands in no frame
    const Box* box = nullptr;         ///< of the package; null where only what is in it is shown
    std::vector<const Box*> boxes;    ///< of classifiers
    std::vector<std::size_t> groups;  ///< in it
};

/// The boxes of a diagram by the packages that they lie in, which a text shows as frames. What lies in the diagram's
/// own package stands in none. The first group is the outermost.
class Groups {
public:
    Groups(const Diagram& diagram, const Package& theOwner, const Homes& theHomes, const Catalogue& catalogue);

    [[nodiscard]] const std::vector<Group>& all() const { return groups; }

private:
    std::size_t groupOf(const Package& package);
    std::size_t newGroup(const Package& package);

    const Package& owner;
    const Homes& homes;
    std::vector<Group> groups;
    std::unordered_set<const Package*> around; ///< the diagram's package and those that it lies in
    std::unordered_map<const Package*, std::size_t> places;
};

/// How one box lies to another.
enum class Side : std::uint8_t {
    Unknown,
    Above,
    Below,
    Left,
    Right,
};
/// Where `other` lies, seen from `box`: beside it where both reach the same height. Each may be null.
[[nodiscard]] Side sideOf(const Box* box, const Box* other);

/// Boxes in the order of reading, by lines and in each from the left.
[[nodiscard]] std::vector<const Box*> inReadingOrder(const std::vector<Box>& boxes);

} // namespace design
