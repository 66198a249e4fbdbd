#pragma once

#include "designs/model/Design.h"

#include <cstddef>
#include <string>
#include <unordered_set>

namespace design {

/// Makes identifiers that no element of the design has.
class NewIdentifiers {
public:
    explicit NewIdentifiers(const Package& root);

    /// Whether nothing has it yet; then it is taken.
    [[nodiscard]] bool take(const std::string& id) { return taken.insert(id).second; }
    std::string make();

private:
    std::unordered_set<std::string> taken;
    std::size_t last = 0;
};

} // namespace design
