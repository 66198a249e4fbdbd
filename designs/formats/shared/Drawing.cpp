#include "designs/formats/shared/Drawing.h"

#include "designs/model/Walk.h"

#include <algorithm>

namespace design {

JoinedElements::JoinedElements(Package& root)
{
    forEachPackage(root, [this](const Package& package) {
        for (const Association& association : package.associations) {
            if (association.ends.size() == 2)
                ends_[association.id] = {association.ends[0].participant.id, association.ends[1].participant.id};
            if (!association.associationClassId.empty())
                ofAssociationClasses_[association.associationClassId] = association.id;
        }
        for (const Relationship& relationship : package.relationships)
            ends_[relationship.id] = {relationship.client.id, relationship.supplier.id};
    });
}

std::string JoinedElements::lineId(std::string_view elementId) const
{
    const auto found = ofAssociationClasses_.find(std::string(elementId));
    return found == ofAssociationClasses_.end() ? std::string(elementId) : found->second;
}

void JoinedElements::turn(Line& line, std::string_view start) const
{
    const auto found = ends_.find(line.elementId);
    if (found != ends_.end() && found->second.second == start && found->second.first != start)
        std::reverse(line.points.begin(), line.points.end());
}

std::optional<std::uint32_t> colourOfBgr(std::int64_t value)
{
    if (value < 0 || value > 0xFFFFFF)
        return std::nullopt;
    const auto bgr = static_cast<std::uint32_t>(value);
    return (bgr & 0xFFU) << 16U | (bgr & 0xFF00U) | bgr >> 16U;
}

void addDiagram(Package& root, std::string_view packageId, Diagram diagram)
{
    Package* owner = nullptr;
    forEachPackage(root, [&owner, packageId](Package& package) {
        if (owner == nullptr && package.id == packageId && !packageId.empty())
            owner = &package;
    });
    (owner == nullptr ? root : *owner).diagrams.push_back(std::move(diagram));
}

} // namespace design
