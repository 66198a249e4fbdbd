#include "kiv/KivConnecting.h"
#include "kiv/KivFaults.h"
#include "support/KivStringPrinting.h"

#include <functional>
#include <gmock/gmock.h>
#include <string>

namespace {

// A model with a package "Bank" that holds the class "Account", without any fault.
struct Bank {
    Bank()
    {
        package->setName("Bank");
        account = add<KivClass>(*package, "Account");
        diagram = model.create<KivClassDiagram>();
        diagram->setName("Main");
        diagram->package = package;
        package->diagrams.add(diagram);
        model.addChildPackage(package);
    }

    template <class Element>
    Element* add(KivPackage& holder, const char* name)
    {
        auto* const element = model.create<Element>();
        element->setName(name);
        holder.modelElements.add(element);
        return element;
    }
    KivAssociationRole* addRole(KivAssociation& association, KivClass* participant)
    {
        auto* const role = model.create<KivAssociationRole>();
        role->participant = participant;
        association.roles.add(role);
        return role;
    }
    KivAssociation* addAssociation()
    {
        auto* const association = add<KivAssociation>(*package, "owns");
        addRole(*association, account);
        addRole(*association, account);
        return association;
    }
    void inherit(KivClass* subtype, KivClass* supertype)
    {
        auto* const generalization = add<KivGeneralization>(*package, "");
        generalization->subtypes.add(subtype);
        generalization->supertypes.add(supertype);
    }
    void draw(KivClass* theClass, bool isPlaced)
    {
        diagram->elements.add(theClass);
        if (!isPlaced)
            return;
        auto* const projection = model.create<KivProjection>();
        projection->diagram = diagram;
        theClass->projections.add(projection);
    }

    KivModel model;
    KivDesignPackage* package = model.create<KivDesignPackage>();
    KivClass* account = nullptr;
    KivClassDiagram* diagram = nullptr;
};

// The faults with their kinds and fields, a line each.
std::string faultsAfter(const std::function<void(Bank&)>& change)
{
    Bank bank;
    change(bank);
    connect(bank.model);
    std::string lines;
    for (const KivFault& fault : findFaults(bank.model))
        lines.append(lines.empty() ? "" : "\n")
            .append(nameOf(fault.kind))
            .append(" ")
            .append(fault.field)
            .append(": ")
            .append(fault.text);
    return lines;
}

TEST(Faults, NameWhatIsSurelyNotMeant)
{
    const struct {
        std::function<void(Bank&)> change;
        const char* fault;
    } rows[] = {
        {[](Bank&) {}, ""},
        // what is not written
        {[](Bank& b) { b.add<KivClass>(b.model, "Lost"); },
         "not-written modelElements: 1 class is not written, for only what is in a package is"},
        {[](Bank& b) { b.model.diagrams.add(b.model.create<KivClassDiagram>()); },
         "not-written diagrams: 1 diagram is not written, for only what is in a package is"},
        {[](Bank& b) { b.add<KivGeneralization>(b.model, "g")->subtypes.add(b.account); },
         "missing-end supertypes: the generalization \"g\" has no supertype, so nothing is written of it"},
        {[](Bank& b) {
             auto* const other = b.model.create<KivPackage>();
             other->setName("Other");
             b.package->addChildPackage(other);
             auto* const inner = b.model.create<KivDesignPackage>();
             other->addChildPackage(inner);
             b.add<KivClass>(*other, "A");
             b.add<KivClass>(*inner, "B");
             b.addRole(*b.add<KivAssociation>(*inner, "r"), b.account);
         },
         "role-count roles: the association \"r\" has 1 role, not two\n"
         "not-written kind: the package \"Other\" is no design package, so 2 classes and 1 association in it are not "
         "written"},
        {[](Bank& b) {
             auto* const view = b.model.create<KivDesignPackage>();
             view->setName("Logical View");
             b.package->addChildPackage(view);
             b.add<KivClass>(*view, "A");
         },
         "not-written name: the package \"Logical View\" is not the root of the packages, so 1 class in it is not "
         "written"},
        {[](Bank& b) {
             b.package->setName("Logical View");
             b.add<KivClass>(*b.package, "A");
         },
         ""},
        // what is drawn
        {[](Bank& b) { b.draw(b.account, true); }, ""},
        {[](Bank& b) {
             b.draw(b.account, false);
             b.draw(b.add<KivClass>(*b.package, "Loan"), false);
             b.draw(b.add<KivClass>(*b.package, "Hidden"), false);
             static_cast<KivClass*>(b.package->modelElements.at(2))->modelLevel = 2;
         },
         "no-place : 2 boxes of \"Main\" have no place and lie on each other"},
        {[](Bank& b) { b.draw(b.model.create<KivClass>(), true); },
         "drawn-only elements: the diagram \"Main\" draws 1 class that is in no written package"},
        // relations
        {[](Bank& b) { b.add<KivDependency>(*b.package, "d")->client = b.account; },
         "missing-end supplier: the dependency \"d\" has no supplier, so it is not written"},
        {[](Bank& b) { b.add<KivRealization>(*b.package, "")->supplier = b.account; },
         "missing-end client: a realization without a name has no client, so it is not written"},
        {[](Bank& b) { b.addAssociation(); }, ""},
        {[](Bank& b) { b.addAssociation()->roles.at(1)->participant = nullptr; },
         "missing-end participant: a role of the association \"owns\" has no participant, so the role is not written"},
        {[](Bank& b) { b.addRole(*b.addAssociation(), b.account); },
         "role-count roles: the association \"owns\" has 3 roles, not two"},
        {[](Bank& b) {
             b.addAssociation()->roles.at(0)->multiplicity = {2, 1, true};
         },
         "bounds multiplicity: a role of the association \"owns\" has the lower bound 2 above the upper bound 1"},
        {[](Bank& b) {
             b.addAssociation()->roles.at(0)->multiplicity = {2, -1, true};
         },
         ""},
        {[](Bank& b) {
             auto* const savings = b.add<KivClass>(*b.package, "Savings");
             b.inherit(savings, b.account);
             b.inherit(b.account, savings);
             b.inherit(b.add<KivClass>(*b.package, "Leaf"), savings);
         },
         "cycle : the class \"Account\" inherits from itself"},
        {[](Bank& b) {
             auto* const left = b.add<KivClass>(*b.package, "Left");
             auto* const right = b.add<KivClass>(*b.package, "Right");
             auto* const bottom = b.add<KivClass>(*b.package, "Bottom");
             for (KivClass* const side : {left, right}) {
                 b.inherit(bottom, side);
                 b.inherit(side, b.account);
             }
         },
         ""},
        // names
        {[](Bank& b) { b.add<KivClass>(*b.package, ""); }, "no-name name: a class in the package \"Bank\" has no name"},
        {[](Bank& b) { b.add<KivClass>(*b.package, "Account"); },
         "same-name name: the class \"Account\" has the name of another class in the package \"Bank\""},
        // numbers and texts
        {[](Bank& b) { b.account->classType = 7; },
         "unknown-code classType: the class \"Account\" has the classType 7, which is no code and counts as class"},
        {[](Bank& b) { b.account->classType = 0; }, ""},
        {[](Bank& b) { b.account->visibility = 2; },
         "unknown-code visibility: the class \"Account\" has the visibility 2, which is no code and counts as "
         "implementation"},
        {[](Bank& b) {
             b.account->attributes.add(b.model.create<KivAttribute>());
             b.account->attributes.at(0)->containment = -1;
         },
         "unknown-code containment: an attribute without a name has the containment -1, which is no code and counts as "
         "unspecified"},
        {[](Bank& b) {
             b.draw(b.account, true);
             b.account->projections.at(0)->height = -1;
         },
         "negative-size height: the height of the class \"Account\" on the diagram \"Main\" is negative: -1"},
        {[](Bank& b) {
             for (const char* const identifier : {"", "VARCHAR", "varchar"}) {
                 b.model.types.add(b.model.create<KivBaseType>());
                 b.model.types.at(b.model.types.count() - 1)->dataType = identifier;
             }
         },
         "unknown-data-type dataType: a type without a name has the data type \"varchar\", which is none of the known "
         "ones"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(faultsAfter(row.change), row.fault);
}

TEST(Faults, EndInAPackageThatHoldsItself)
{
    const std::string faults = faultsAfter([](Bank& b) {
        auto* const inner = b.model.create<KivDesignPackage>();
        inner->setName("Inner");
        b.package->addChildPackage(inner);
        inner->childPackages.add(b.package);
    });
    EXPECT_EQ(faults, "cycle : the package \"Bank\" lies in itself or in two packages");
}

} // namespace
