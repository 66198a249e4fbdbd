#pragma once

#include "designs/model/Design.h"
#include "designs/model/Walk.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace design {

/// Calls `visit(Reference&, bool isType)` for everything that names another element; what is no type is a classifier.
template <class Visit>
void forEachReference(Package& root, const Visit& visit)
{
    forEachPackage(root, [&visit](Package& package) {
        for (Classifier& classifier : package.classifiers) {
            for (Attribute& attribute : classifier.attributes)
                visit(attribute.type, true);
            for (Operation& operation : classifier.operations) {
                visit(operation.returnType, true);
                for (Parameter& parameter : operation.parameters)
                    visit(parameter.type, true);
            }
        }
        for (Association& association : package.associations) {
            for (AssociationEnd& end : association.ends) {
                visit(end.participant, false);
                for (Attribute& qualifier : end.qualifiers)
                    visit(qualifier.type, true);
            }
        }
        for (Relationship& relationship : package.relationships) {
            visit(relationship.client, false);
            visit(relationship.supplier, false);
        }
    });
}

using Names = std::unordered_map<std::string, std::string>;

/// Gives references that have an identifier alone the name that `names` has for it.
inline void nameReferences(Design& design, const Names& names)
{
    forEachReference(design.root, [&names](Reference& reference, bool /*isType*/) {
        const auto found = reference.name.empty() ? names.find(reference.id) : names.end();
        if (found != names.end())
            reference.name = found->second;
    });
}

/// Adds a word to a list such as the stereotypes of an element, which are joined with ", ".
inline void addWord(std::string& list, std::string_view word)
{
    const std::string around = ", " + list + ", ";
    if (word.empty() || around.find(", " + std::string(word) + ", ") != std::string::npos)
        return;
    if (!list.empty())
        list += ", ";
    list += word;
}

} // namespace design
