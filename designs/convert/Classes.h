#pragma once

#include "designs/convert/TypeTable.h"

namespace design {

/// Fills classes, and the features of classes and of associations' ends.
class ClassConverter {
public:
    ClassConverter(ModelBuilder& theBuilder, TypeTable& theTypes) : builder(theBuilder), types(theTypes) {}

    void fill(KivClass& target, const Classifier& classifier);
    /// Adds an attribute, of a class or a qualifier.
    KivAttribute* addTo(KivVector<KivAttribute>& attributes, const Attribute& attribute);

private:
    void addLiteral(KivVector<KivAttribute>& attributes, const Literal& literal);
    void addOperation(KivClass& target, const Operation& operation);
    void addParameter(KivLinkTree<KivArgument>& arguments, const Parameter& parameter);

    ModelBuilder& builder;
    TypeTable& types;
};

} // namespace design
