#pragma once

#include "kiv/KivFaults.h"

#include <string>
#include <string_view>

// The faults that an object has by itself, whatever else is in the model.

/// Faults as they are found.
class FaultList {
public:
    void add(KivFaultKind kind, const KivObject& object, const char* field, std::string text)
    {
        faults.push_back({kind, &object, field, std::move(text)});
    }

    std::vector<KivFault> faults;
};

/// `the class "Order"`, or `a class without a name`.
[[nodiscard]] std::string named(std::string_view kind, const KivObject& object);
/// `3 classes`, `1 class`.
[[nodiscard]] std::string counted(std::size_t count, std::string_view one, std::string_view several);

/// Whether the level code excludes an element from exports.
[[nodiscard]] bool isHiddenElement(const KivModelObject& object);

void findTypeFaults(const KivType& type, FaultList& list);
void findClassFaults(const KivClass& theClass, FaultList& list);
void findAssociationFaults(const KivAssociation& association, FaultList& list);
void findGeneralizationFaults(const KivGeneralization& generalization, FaultList& list);
/// Of a dependency or realization, as `kind` says.
template <class Relation>
void findRelationFaults(const Relation& relation, std::string_view kind, FaultList& list)
{
    if (!relation.client)
        list.add(KivFaultKind::MissingEnd, relation, "client",
                 named(kind, relation) + " has no client, so it is not written");
    if (!relation.supplier)
        list.add(KivFaultKind::MissingEnd, relation, "supplier",
                 named(kind, relation) + " has no supplier, so it is not written");
}
