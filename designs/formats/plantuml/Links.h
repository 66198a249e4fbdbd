#pragma once

#include "designs/formats/drawn/Groups.h"
#include "designs/formats/plantuml/Notation.h"

#include <string>
#include <vector>

namespace design::plantuml {

/// One end of a line.
struct LinkEnd {
    std::string alias;
    Head head = Head::None;
    std::vector<std::string> texts; ///< not escaped
};

struct Link {
    LinkEnd first;
    LinkEnd second;
    Side side = Side::Unknown; ///< where the second lies, seen from the first; unknown: the first above
    bool isDashed = false;
    std::string colour; ///< `#FF0000`, or empty
    std::string label;  ///< escaped
};

/// `Order "1" o-- "0..*" Line : holds`
void addLink(std::string& out, Link link);

} // namespace design::plantuml
