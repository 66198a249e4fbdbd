#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace design {

/// Generalizations as the host has them: those that share a line to their supertype are one, which stands in one place.
/// A class has its supertypes in the order in which the host meets these, so that one may have to wait until others
/// that are before it in a class are there.
class Generalizations {
public:
    /// Makes one of the host's of these.
    using Make = std::function<void(const std::vector<const Relationship*>& members)>;

    Generalizations(const Design& design, const Catalogue& catalogue);

    /// Makes what can be made now that a generalization is met.
    void meet(const Relationship& generalization, const Make& make);
    /// Makes those that wait for each other.
    void makeRest(const Make& make);

private:
    struct Node {
        std::vector<const Relationship*> members;
        std::vector<std::size_t> followers; ///< that are behind it in a class
        std::size_t missing = 0;            ///< how many that are before it in a class are not made
        bool isMet = false;
        bool isMade = false;
    };

    void join(const std::vector<std::string>& tree, const Catalogue& catalogue);
    void addNode(const Relationship& generalization);
    void order(const Package& root);
    void make(std::size_t first, const Make& make);

    std::vector<Node> nodes;
    std::unordered_map<const Relationship*, std::size_t> nodeOf;
};

} // namespace design
