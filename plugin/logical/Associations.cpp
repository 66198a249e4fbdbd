#include "logical/LogicalView.h"

#include "model/ExportState.h"
#include "model/WrittenElements.h"
#include "petal/PetalWriter.h"
#include "petal/RoseKeywords.h"
#include "types/TypeNames.h"

#include <algorithm>

namespace {

// In the numbers of generated qualifiers, the distance between those of an attribute's first key and of its second.
constexpr long keyStride = 1000000;

// What is asked of the roles of an association as a whole.
struct Ends {
    std::size_t count = 0;
    const KivAssociationRole* first = nullptr;
    const KivAssociationRole* second = nullptr;
};

Ends endsOf(const KivAssociation& association)
{
    Ends ends;
    for (const KivAssociationRole* const role : association.roles) {
        if (!isWritten(role))
            continue;
        if (ends.count == 0)
            ends.first = role;
        else if (ends.count == 1)
            ends.second = role;
        ++ends.count;
    }
    return ends;
}

//     (object ClassAttribute "number"
//     quid\t\t"3449E400001A"
//     type\t\t"int"
void printQualifierHead(const KivAttribute& attribute, long number)
{
    line("(object ClassAttribute ", quoted(attribute.getName()));
    line("quid\t\t", quoted(makeQuid(aquid, number)));
    if (attribute.type)
        line("type\t\t", quoted(getTypeString(attribute.type)));
    else
        line("type\t\t\"int\"");
}

void printOwnQualifiers(const KivAssociationRole& role)
{
    KivAttributeByPosition qualifiers;
    role.getQualifierAttributeByPosition(qualifiers);
    list("keys\t(list class_attribute_list", [&] {
        for (const KivAttribute* const qualifier : qualifiers)
            object([&] { printQualifierHead(*qualifier, qualifier->pid); });
    });
}

// The key behind the opposite role of a binary association; null when there is none.
const KivKey* oppositeKey(const KivAssociationRole& role, const Ends& ends)
{
    if (ends.count != 2)
        return nullptr;
    return (ends.first != &role ? ends.first : ends.second)->key;
}

void printGeneratedQualifier(const KivAttribute& attribute, const KivKey& key)
{
    const std::size_t keyIndex = std::min(attribute.keys.indexOf(&key), attribute.keys.count());
    const KivModelObject* const counterpart = attribute.keyMappings.counterpartOf(&key);
    object([&] {
        printQualifierHead(attribute, static_cast<long>(keyIndex) * keyStride + attribute.pid);
        if (counterpart && !counterpart->getName().isEmpty())
            line("initv\t", makeRoseDesc(counterpart->getName()));
    });
}

void printGeneratedQualifiers(const KivAssociationRole& role, const Ends& ends)
{
    const KivKey* const key = oppositeKey(role, ends);
    if (!key || key->attributes.isEmpty())
        return;
    list("keys\t(list class_attribute_list", [&] {
        for (const KivAttribute* const attribute : key->attributes)
            printGeneratedQualifier(*attribute, *key);
    });
}

void printQualifiers(const KivAssociationRole& role, const Ends& ends)
{
    if (!role.qualifiers.isEmpty())
        printOwnQualifiers(role);
    else if (useQualifier)
        printGeneratedQualifiers(role, ends);
}

// Hosts give the roles that nobody named a name with this mark.
bool isUnnamed(const KivAssociationRole& role)
{
    return role.getName().view().find("$UNNAMED$") != std::string_view::npos;
}

//     (object Role "customer"
//     quid       \t"3449E000001A"
//     label\t\t"customer"
//     supplier   \t"Customer"
//     quidu      \t"3449E200002A"
//     exportControl\t"Public"
//     client_cardinality \t(value cardinality "0..1")
//     Containment\t"Unspecified"
//     is_navigable \tTRUE
//     is_aggregate \tFALSE)
void printRole(const KivAssociationRole& role, const KivAssociation& association, const Ends& ends)
{
    object([&] {
        line("(object Role ", quoted(role.getName()));
        line("quid       \t", quoted(makeQuid(iquid, role.pid)));
        if (!role.description.isEmpty())
            line("documentation\t", makeRoseDesc(role.description));
        line("label\t\t", quoted(isUnnamed(role) ? KivString() : role.getName()));
        line("supplier   \t", quoted(role.participant->getName()));
        line("quidu      \t", quoted(makeQuid(equid, role.participant->pid)));
        printQualifiers(role, ends);
        line("exportControl\t", keyword(visibilityKeywords, role.visibility));
        const KivString cardinality = cardinalityOf(role);
        if (isShown(cardinality))
            line("client_cardinality \t(value cardinality ", quoted(cardinality), ")");
        if (!role.constraint.isEmpty())
            line("Constraints\t", makeRoseDesc(role.constraint));
        line("Containment\t", keyword(containmentKeywords, role.containment));
        if (role.isStatic)
            line("static\tTRUE");
        if (role.isFriend)
            line("friend\tTRUE");
        line("is_navigable \t", role.isNavigable ? "TRUE" : "FALSE");
        line("is_aggregate \t", role.isAggregateEnd && association.isAggregation ? "TRUE" : "FALSE");
    });
}

} // namespace

//     (object Association "places"
//     quid       \t"3449E600001A"
//     roles\t(list role_list ...)
//     AssociationClass\t"Contract")
int printAssociations(KivAssociation* association)
{
    if (isHidden(*association))
        return 1;
    object([&] {
        line("(object Association ", quoted(association->getName()));
        line("quid       \t", quoted(makeQuid(asquid, association->pid)));
        if (!association->description.isEmpty())
            line("documentation\t", makeRoseDesc(association->description));
        if (!association->stereotype.isEmpty())
            line("stereotype\t", quoted(association->stereotype));
        list("roles\t(list role_list", [&] {
            const Ends ends = endsOf(*association);
            for (const KivAssociationRole* const role : association->roles)
                if (isWritten(role))
                    printRole(*role, *association, ends);
        });
        if (!association->constraint.isEmpty())
            line("Constraints\t", makeRoseDesc(association->constraint));
        if (association->associationClass)
            line("AssociationClass\t", quoted(association->associationClass->getName()));
    });
    return 1;
}
