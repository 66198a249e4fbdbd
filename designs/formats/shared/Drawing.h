#pragma once

#include "designs/model/Design.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace design {

/// What the relations of a design join, so that lines can be drawn in their direction whatever way a tool drew them.
class JoinedElements {
public:
    explicit JoinedElements(Package& root);

    /// The identifier under which a line is drawn: that of the relation, or of the association in an association class.
    [[nodiscard]] std::string lineId(std::string_view elementId) const;

    /// Turns a line that was drawn from the element `start` if that is where its relation ends.
    void turn(Line& line, std::string_view start) const;

private:
    std::unordered_map<std::string, std::pair<std::string, std::string>> ends_;
    std::unordered_map<std::string, std::string> ofAssociationClasses_;
};

/// Colours as some tools keep them, 0xBBGGRR; negative is the tool's default.
[[nodiscard]] std::optional<std::uint32_t> colourOfBgr(std::int64_t value);

/// Puts diagrams into the packages that own them, those of unknown owners into the root.
void addDiagram(Package& root, std::string_view packageId, Diagram diagram);

} // namespace design
