#include "designs/convert/TypeTable.h"

#include "designs/convert/Documentation.h"
#include "designs/model/DataTypes.h"

#include <algorithm>
#include <optional>

namespace design {

KivType* TypeTable::typeOf(const Reference& reference)
{
    if (reference.isEmpty())
        return nullptr;
    if (const Classifier* const classifier = catalogue.classifierOf(reference))
        return typeOf(*classifier);
    return typeNamed(reference);
}

KivType* TypeTable::typeOf(const Classifier& classifier)
{
    KivType*& type = ofClassifiers[&classifier];
    if (type)
        return type;
    type = create(builder.text(classifier, classifier.name));
    const bool isClass = selection.isClass(classifier);
    if (!isClass)
        builder.identify(*type, classifier.id); // the class has it otherwise
    if (!isClass && classifier.kind == ClassifierKind::Enumeration) {
        fillEnumeration(*type, classifier);
    } else {
        builder.count(Kind::Types);
        if (!isClass || classifier.kind == ClassifierKind::PrimitiveType)
            fillDataType(*type);
    }
    return type;
}

KivType* TypeTable::typeNamed(const Reference& reference)
{
    const std::string& name = reference.name.empty() ? reference.id : reference.name;
    KivType*& type = byName[name];
    if (type)
        return type;
    static const Element unnamed;
    type = create(builder.text(unnamed, name));
    builder.count(Kind::Types);
    fillDataType(*type);
    if (!reference.id.empty() && !catalogue.has(reference.id))
        report.made("type", reference.id, name, "it lies outside of the file; a type of that name stands for it");
    return type;
}

KivType* TypeTable::create(const KivString& name)
{
    auto* const type = builder.create<KivBaseType>();
    type->setName(name);
    builder.model().types.add(type);
    return type;
}

void TypeTable::fillDataType(KivType& type)
{
    const std::optional<DataType> dataType = dataTypeNamed(type.getName().view());
    if (!dataType)
        return;
    type.dataType = KivString(dataType->identifier);
    type.length = std::max(dataType->length, 0);
    type.scale = std::max(dataType->scale, 0);
}

// A literal without a value has its name as value, which is how the host knows that there is none.
void TypeTable::fillEnumeration(KivType& type, const Classifier& enumeration)
{
    builder.count(Kind::Enumerations);
    type.description = builder.text(enumeration, documentationOf(enumeration));
    type.stereotype = builder.text(enumeration, enumeration.stereotype);
    for (const Literal& literal : enumeration.literals) {
        builder.count(Kind::Literals);
        auto* const value = builder.create<KivTypeValue>(literal, documentationOf(literal));
        value->value =
            builder.text(literal, literal.value.empty() && !literal.hasEmptyValue ? literal.name : literal.value);
        value->position = nextPosition(type.typeValues);
        type.typeValues.add(value);
    }
}

} // namespace design
