#include "designs/formats/shared/Drawing.h"

#include "designs/model/Walk.h"

#include <algorithm>

namespace design {

Drawing::Drawing(Package& theRoot) : root(theRoot)
{
    forEachPackage(root, [this](Package& package) {
        packages.emplace(package.id, &package);
        for (const Association& association : package.associations) {
            if (association.ends.size() == 2)
                ends[association.id] = {association.ends[0].participant.id, association.ends[1].participant.id};
            if (!association.associationClassId.empty())
                ofAssociationClasses[association.associationClassId] = association.id;
        }
        for (const Relationship& relationship : package.relationships)
            ends[relationship.id] = {relationship.client.id, relationship.supplier.id};
    });
    packages.erase("");
}

std::string Drawing::lineId(std::string_view elementId) const
{
    std::string id(elementId);
    const auto found = ofAssociationClasses.find(id);
    return found == ofAssociationClasses.end() ? id : found->second;
}

void Drawing::turn(Line& line, std::string_view start) const
{
    const auto found = ends.find(line.elementId);
    if (found != ends.end() && found->second.second == start && found->second.first != start)
        std::reverse(line.points.begin(), line.points.end());
}

void Drawing::add(std::string_view packageId, Diagram diagram) const
{
    const auto owner = packages.find(std::string(packageId));
    (owner == packages.end() ? root : *owner->second).diagrams.push_back(std::move(diagram));
}

HiddenFeatures hiding(bool allAttributes, bool allOperations)
{
    HiddenFeatures hidden;
    hidden.attributes.fill(allAttributes);
    hidden.operations.fill(allOperations);
    return hidden;
}

std::optional<std::uint32_t> colourOfBgr(std::int64_t value)
{
    if (value < 0 || value > 0xFFFFFF)
        return std::nullopt;
    const auto bgr = static_cast<std::uint32_t>(value);
    return (bgr & 0xFFU) << 16U | (bgr & 0xFF00U) | bgr >> 16U;
}

} // namespace design
