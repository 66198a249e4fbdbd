#include "kiv/KivRelationship.h"

#include "kiv/KivClass.h"

#include <charconv>

namespace {

constexpr int unlimited = -1;

void addBound(KivString& text, int bound)
{
    if (bound == unlimited) {
        text.add(std::string_view("n"));
        return;
    }
    char digits[12];
    const auto* const end = std::to_chars(digits, digits + sizeof digits, bound).ptr;
    text.add(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

KivString composeMultiplicity(int lower, int upper)
{
    KivString text;
    addBound(text, lower);
    if (lower != upper) {
        text.add(std::string_view(".."));
        addBound(text, upper);
    }
    return text;
}

} // namespace

void decodeMultiplicity(const KivMultiplicity& multiplicity, int* lower, int* upper)
{
    *lower = multiplicity.isPresent ? multiplicity.lower : 0;
    *upper = multiplicity.isPresent ? multiplicity.upper : 0;
}

KivString buildMultiplicity(int lower, int upper)
{
    // Nearly every role has one of these; they are made once.
    static const KivString common[3][3] = {
        {composeMultiplicity(-1, -1), composeMultiplicity(-1, 0), composeMultiplicity(-1, 1)},
        {composeMultiplicity(0, -1), composeMultiplicity(0, 0), composeMultiplicity(0, 1)},
        {composeMultiplicity(1, -1), composeMultiplicity(1, 0), composeMultiplicity(1, 1)},
    };
    if (lower >= -1 && lower <= 1 && upper >= -1 && upper <= 1)
        return common[lower + 1][upper + 1];
    return composeMultiplicity(lower, upper);
}

KivRelationship::KivRelationship(KivElementType code) : KivModelElement(code) {}
KivAssociationRole::KivAssociationRole() : KivModelObject(KivElementType::AssociationRole) {}
KivAssociationRoleNameMap::KivAssociationRoleNameMap() : KivModelObject(KivElementType::AssociationRoleNameMap) {}
KivAssociation::KivAssociation() : KivRelationship(KivElementType::Association) {}
KivGeneralization::KivGeneralization() : KivRelationship(KivElementType::Generalization) {}
KivDependency::KivDependency() : KivRelationship(KivElementType::Dependency) {}
KivRealization::KivRealization() : KivRelationship(KivElementType::Realization) {}

void KivAssociationRole::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    visitAll(qualifiers, operation, context);
}

void KivAssociation::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    visitAll(roles, operation, context);
}
