#pragma once

#include "designs/model/Design.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace design {

/// What diagrams lean on: the relations that their lines stand for, and the packages that own them. The packages must
/// stay where they are.
class Drawing {
public:
    explicit Drawing(Package& theRoot);

    /// The identifier under which a line is drawn: that of the relation, or of the association in an association class.
    [[nodiscard]] std::string lineId(std::string_view elementId) const;

    /// Turns a line that was drawn from the element `start` if that is where its relation ends, so that all lines lead
    /// in the direction of their relations.
    void turn(Line& line, std::string_view start) const;

    /// Puts a diagram into the package that owns it, into the root when there is none.
    void add(std::string_view packageId, Diagram diagram) const;

private:
    Package& root;
    std::unordered_map<std::string, Package*> packages;
    std::unordered_map<std::string, std::pair<std::string, std::string>> ends; // of relations, both
    std::unordered_map<std::string, std::string> ofAssociationClasses;
};

/// A box that leaves out all attributes, all operations, or both.
[[nodiscard]] HiddenFeatures hiding(bool allAttributes, bool allOperations);

/// Colours as some tools keep them, 0xBBGGRR; negative is the tool's default.
[[nodiscard]] std::optional<std::uint32_t> colourOfBgr(std::int64_t value);

} // namespace design
