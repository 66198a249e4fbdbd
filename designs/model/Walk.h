#pragma once

#include "designs/model/Design.h"

namespace design {

/// Calls `visit(Element&)` for the package and for every element in it, in the order of the file: packages before what
/// they hold, classifiers before their features.
template <class Visit>
void forEachElement(auto& package, const Visit& visit);

/// Calls `visit(Package&)` for the package and every package below it, outer ones first.
template <class Visit>
void forEachPackage(Package& package, const Visit& visit)
{
    visit(package);
    for (Package& child : package.packages)
        forEachPackage(child, visit);
}
template <class Visit>
void forEachPackage(const Package& package, const Visit& visit)
{
    visit(package);
    for (const Package& child : package.packages)
        forEachPackage(child, visit);
}

/// Of a classifier that may be const.
template <class Visit>
void forEachFeature(auto& classifier, const Visit& visit)
{
    for (auto& attribute : classifier.attributes)
        visit(attribute);
    for (auto& operation : classifier.operations) {
        visit(operation);
        for (auto& parameter : operation.parameters)
            visit(parameter);
    }
    for (auto& parameter : classifier.templateParameters)
        visit(parameter);
    for (auto& literal : classifier.literals)
        visit(literal);
}

template <class Visit>
void forEachOwnElement(auto& package, const Visit& visit)
{
    for (auto& classifier : package.classifiers) {
        visit(classifier);
        forEachFeature(classifier, visit);
    }
    for (auto& association : package.associations) {
        visit(association);
        for (auto& end : association.ends) {
            visit(end);
            for (auto& qualifier : end.qualifiers)
                visit(qualifier);
        }
    }
    for (auto& relationship : package.relationships)
        visit(relationship);
    for (auto& diagram : package.diagrams)
        visit(diagram);
}

template <class Visit>
void forEachElement(auto& package, const Visit& visit)
{
    forEachPackage(package, [&](auto& each) {
        visit(each);
        forEachOwnElement(each, visit);
    });
}

/// Calls `visit(Reference&)` for the types that a classifier's features and parameters have.
template <class Visit>
void forEachType(Classifier& classifier, const Visit& visit)
{
    for (Attribute& attribute : classifier.attributes)
        visit(attribute.type);
    for (Operation& operation : classifier.operations) {
        visit(operation.returnType);
        for (Parameter& parameter : operation.parameters)
            visit(parameter.type);
    }
    for (Parameter& parameter : classifier.templateParameters)
        visit(parameter.type);
}

/// Calls `visit(Reference&, bool isType)` for everything that names another element; what is no type is an end.
template <class Visit>
void forEachReference(Package& root, const Visit& visit)
{
    forEachPackage(root, [&visit](Package& package) {
        for (Classifier& classifier : package.classifiers)
            forEachType(classifier, [&visit](Reference& type) { visit(type, true); });
        for (Association& association : package.associations)
            for (AssociationEnd& end : association.ends) {
                visit(end.participant, false);
                for (Attribute& qualifier : end.qualifiers)
                    visit(qualifier.type, true);
            }
        for (Relationship& relationship : package.relationships) {
            visit(relationship.client, false);
            visit(relationship.supplier, false);
        }
    });
}

} // namespace design
