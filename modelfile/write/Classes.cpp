#include "modelfile/write/ModelOutput.h"

#include <string_view>

namespace modelfile {

namespace {

void writeTypeValue(ModelOutput& out, const KivTypeValue& literal, std::size_t index)
{
    out.common(literal);
    out.text(literal, "value", literal.value);
    out.position(literal.position, index);
    out.projections(literal);
}

void writeArgument(ModelOutput& out, const KivArgument& argument, std::size_t index)
{
    out.common(argument);
    out.position(argument.position, index);
    out.reference(argument, "type", argument.type);
    out.text(argument, "initialValue", argument.initialValue);
    out.projections(argument);
}

void writeKeyMappings(ModelOutput& out, const KivAttribute& attribute)
{
    if (attribute.keyMappings.count() == 0)
        return;
    out.json.beginList("keyMappings");
    for (std::size_t i = 0; i < attribute.keyMappings.count(); ++i) {
        const KivKeyMapping mapping = attribute.keyMappings.at(i);
        out.json.beginObject();
        out.reference(attribute, "key", mapping.key);
        out.reference(attribute, "counterpart", mapping.counterpart);
        out.json.endObject();
    }
    out.json.endList();
}

void writeOperation(ModelOutput& out, const KivOperation& operation, std::size_t index)
{
    out.common(operation);
    out.position(operation.position, index);
    out.code("visibility", operation.visibility, 0, visibilityNames);
    out.code("concurrency", operation.concurrency, 0, concurrencyNames);
    out.flag("isAbstract", operation.isAbstract);
    out.flag("isFriend", operation.isFriend);
    out.flag("isStatic", operation.isStatic);
    out.flag("isVirtual", operation.isVirtual);
    out.text(operation, "semantics", operation.semantics);
    out.text(operation, "preCondition", operation.preCondition);
    out.text(operation, "postCondition", operation.postCondition);
    out.reference(operation, "returnType", operation.returnType);
    out.list("arguments", "argument", operation.arguments, operation,
             [&](const KivArgument& argument, std::size_t place) { writeArgument(out, argument, place); });
    out.projections(operation);
}

void writeKey(ModelOutput& out, const KivKey& key)
{
    if (key.elementType == KivElementType::ForeignKey)
        out.json.member("kind", "foreignKey");
    out.common(key);
    out.references(key, "attributes", key.attributes);
    out.projections(key);
}

} // namespace

void writeType(ModelOutput& out, const KivType& type)
{
    if (type.elementType == KivElementType::DerivedType)
        out.json.member("kind", "derivedType");
    out.common(type);
    out.text(type, "dataType", type.dataType);
    out.number("length", type.length);
    out.number("scale", type.scale);
    out.list("typeValues", "literal", type.typeValues, type,
             [&](const KivTypeValue& literal, std::size_t index) { writeTypeValue(out, literal, index); });
    out.projections(type);
}

void writeAttribute(ModelOutput& out, const KivAttribute& attribute, std::size_t index)
{
    out.common(attribute);
    out.position(attribute.position, index);
    out.reference(attribute, "type", attribute.type);
    out.text(attribute, "initialValue", attribute.initialValue);
    out.code("visibility", attribute.visibility, 0, visibilityNames);
    out.code("containment", attribute.containment, 2, containmentNames);
    out.flag("isStatic", attribute.isStatic);
    out.flag("isDerived", attribute.isDerived);
    writeKeyMappings(out, attribute);
    out.projections(attribute);
}

void writeClass(ModelOutput& out, const KivClass& element)
{
    out.common(element);
    out.code("classType", element.classType, 1, classTypeNames);
    out.code("visibility", element.visibility, 0, classVisibilityNames);
    out.code("concurrency", element.concurrency, 0, concurrencyNames);
    out.number("space", element.space);
    out.flag("isAbstract", element.isAbstract);
    out.flag("isPersistent", element.isPersistent);
    out.text(element, "cardinality", element.cardinality);
    out.list("attributes", "attribute", element.attributes, element,
             [&](const KivAttribute& attribute, std::size_t index) { writeAttribute(out, attribute, index); });
    out.list("operations", "operation", element.operations, element,
             [&](const KivOperation& operation, std::size_t index) { writeOperation(out, operation, index); });
    out.list("parameters", "parameter", element.parameters, element,
             [&](const KivArgument& parameter, std::size_t index) { writeArgument(out, parameter, index); });
    out.list("keys", "key", element.keys, element, [&](const KivKey& key, std::size_t) { writeKey(out, key); });
    out.projections(element);
}

} // namespace modelfile
