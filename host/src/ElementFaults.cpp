#include "ElementFaults.h"

#include "kiv/KivCodes.h"

#include <algorithm>

namespace {

constexpr int hiddenLevel = 2;

// The export takes a number that is no code for the one called `meaning`.
void addUnknownCode(const KivObject& object, std::string_view kind, const char* field, int code,
                    std::string_view meaning, FaultList& list)
{
    list.add(KivFaultKind::UnknownCode, object, field,
             named(kind, object) + " has the " + field + " " + std::to_string(code) +
                 ", which is no code and counts as " + std::string(meaning));
}

// Codes go from 0 to `last`.
void requireCode(const KivObject& object, std::string_view kind, const char* field, int code, int last,
                 std::string_view meaning, FaultList& list)
{
    if (code < 0 || code > last)
        addUnknownCode(object, kind, field, code, meaning, list);
}

void findNegativeSize(const KivObject& object, const char* field, int size, const std::string& what, FaultList& list)
{
    if (size < 0)
        list.add(KivFaultKind::NegativeSize, object, field, what + " is negative: " + std::to_string(size));
}

void findAttributeFaults(const KivAttribute& attribute, std::string_view kind, FaultList& list)
{
    requireCode(attribute, kind, "visibility", attribute.visibility, KivVisibility::Implementation, "implementation",
                list);
    requireCode(attribute, kind, "containment", attribute.containment, KivContainment::Unspecified, "unspecified",
                list);
}

void findOperationFaults(const KivOperation& operation, FaultList& list)
{
    requireCode(operation, "operation", "visibility", operation.visibility, KivVisibility::Implementation,
                "implementation", list);
    requireCode(operation, "operation", "concurrency", operation.concurrency, KivConcurrency::Synchronous,
                "synchronous", list);
}

void findBoxFaults(const KivClass& theClass, FaultList& list)
{
    for (const KivProjection* const box : theClass.projections) {
        if (!box || (box->width >= 0 && box->height >= 0 && box->fontSize >= 0))
            continue;
        const std::string place =
            named("class", theClass) + (box->diagram ? " on " + named("diagram", *box->diagram) : std::string());
        findNegativeSize(*box, "width", box->width, "the width of " + place, list);
        findNegativeSize(*box, "height", box->height, "the height of " + place, list);
        findNegativeSize(*box, "fontSize", box->fontSize, "the font size of " + place, list);
    }
}

std::string namedRole(const KivAssociationRole& role, const KivAssociation& association)
{
    return role.getName().isEmpty() ? "a role of " + named("association", association) : named("role", role);
}

void findRoleFaults(const KivAssociationRole& role, const KivAssociation& association, FaultList& list)
{
    if (!role.participant)
        list.add(KivFaultKind::MissingEnd, role, "participant",
                 namedRole(role, association) + " has no participant, so the role is not written");
    const auto [lower, upper, isPresent] = role.multiplicity;
    if (isPresent && upper >= 0 && (lower > upper || lower < 0))
        list.add(KivFaultKind::Bounds, role, "multiplicity",
                 namedRole(role, association) + " has the lower bound " + (lower < 0 ? "n" : std::to_string(lower)) +
                     " above the upper bound " + std::to_string(upper));
    requireCode(role, "role", "visibility", role.visibility, KivVisibility::Implementation, "implementation", list);
    requireCode(role, "role", "containment", role.containment, KivContainment::Unspecified, "unspecified", list);
    for (const KivAttribute* const qualifier : role.qualifiers)
        if (qualifier)
            findAttributeFaults(*qualifier, "qualifier", list);
}

bool hasEnd(const KivVector<KivClass>& classes)
{
    return std::any_of(classes.begin(), classes.end(), [](const KivClass* end) { return end != nullptr; });
}

} // namespace

std::string named(std::string_view kind, const KivObject& object)
{
    const std::string_view name = object.getName().view();
    if (name.empty())
        return (kind.front() == 'a' || kind.front() == 'o' ? "an " : "a ") + std::string(kind) + " without a name";
    return "the " + std::string(kind) + " \"" + std::string(name) + '"';
}

std::string counted(std::size_t count, std::string_view one, std::string_view several)
{
    return std::to_string(count) + " " + std::string(count == 1 ? one : several);
}

bool isHiddenElement(const KivModelObject& object)
{
    return object.modelLevel == hiddenLevel;
}

void findTypeFaults(const KivType& type, FaultList& list)
{
    const KivString& identifier = type.getDataType();
    const bool isEnumeration = type.getTypeValueCount() > 0;
    if (!isEnumeration && !identifier.isEmpty() && *getOldDataType(identifier) == '\0')
        list.add(KivFaultKind::UnknownDataType, type, "dataType",
                 named("type", type) + " has the data type \"" + std::string(identifier.view()) +
                     "\", which is none of the known ones");
    if (type.getLength() < 0)
        findNegativeSize(type, "length", type.getLength(), "the length of " + named("type", type), list);
}

void findClassFaults(const KivClass& theClass, FaultList& list)
{
    constexpr int unusedType = 7;
    constexpr int lastVisibility = 1; // of classes
    if (theClass.classType == unusedType)
        addUnknownCode(theClass, "class", "classType", theClass.classType, "class", list);
    requireCode(theClass, "class", "classType", theClass.classType, KivClassType::Interface, "class", list);
    requireCode(theClass, "class", "visibility", theClass.visibility, lastVisibility, "implementation", list);
    requireCode(theClass, "class", "concurrency", theClass.concurrency, KivConcurrency::Synchronous, "synchronous",
                list);
    findBoxFaults(theClass, list);
    for (const KivAttribute* const attribute : theClass.attributes)
        if (attribute)
            findAttributeFaults(*attribute, "attribute", list);
    for (const KivOperation* const operation : theClass.operations)
        if (operation)
            findOperationFaults(*operation, list);
}

void findAssociationFaults(const KivAssociation& association, FaultList& list)
{
    if (association.roles.count() != 2)
        list.add(KivFaultKind::RoleCount, association, "roles",
                 named("association", association) + " has " + counted(association.roles.count(), "role", "roles") +
                     ", not two");
    for (const KivAssociationRole* const role : association.roles)
        if (role)
            findRoleFaults(*role, association, list);
}

void findGeneralizationFaults(const KivGeneralization& generalization, FaultList& list)
{
    if (!hasEnd(generalization.supertypes))
        list.add(KivFaultKind::MissingEnd, generalization, "supertypes",
                 named("generalization", generalization) + " has no supertype, so nothing is written of it");
    if (!hasEnd(generalization.subtypes))
        list.add(KivFaultKind::MissingEnd, generalization, "subtypes",
                 named("generalization", generalization) + " has no subtype, so nothing is written of it");
    requireCode(generalization, "generalization", "visibility", generalization.visibility,
                KivVisibility::Implementation, "implementation", list);
}
