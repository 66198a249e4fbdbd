#include "modelfile/read/Tables.h"

namespace modelfile {

namespace {

constexpr auto typeValueFields =
    withCommonFields(fieldTable(member<&KivTypeValue::value>("value"), member<&KivTypeValue::position>("position")));

constexpr auto typeFields = withCommonFields(fieldTable(
    knownKind<KivType>(), member<&KivType::dataType>("dataType"), member<&KivType::length>("length"),
    member<&KivType::scale>("scale"), Field<KivType>{"typeValues", [](Builder& builder, KivType& type, Value& value) {
                                                         readElements(builder, type.typeValues, value, typeValueFields);
                                                     }}));

} // namespace

void readType(Builder& builder, KivModel& model, Value& value)
{
    constexpr std::array<std::string_view, 2> kinds = {"baseType", "derivedType"};
    Object object = builder.readObject(value);
    KivType* type = nullptr;
    if (builder.readKind(object, kinds, 0) == 0)
        type = builder.create<KivBaseType>();
    else
        type = builder.create<KivDerivedType>();
    builder.readFields(object, *type, typeFields);
    model.types.add(type);
}

std::vector<ObjectKeys> typeKeys()
{
    return {keysOf("type", typeFields), keysOf("typeValue", typeValueFields)};
}

} // namespace modelfile
