#include "designs/formats/ecore/Types.h"

#include "designs/formats/shared/Kinds.h"
#include "text/Words.h"

#include <charconv>

namespace design::ecore {

namespace {

struct NamedType {
    std::string_view type; // in designs, in small letters
    std::string_view ecoreType;
};
constexpr std::array namedTypes = {
    NamedType{"string", "EString"},
    NamedType{"text", "EString"},
    NamedType{"char*", "EString"},
    NamedType{"std::string", "EString"},
    NamedType{"java.lang.string", "EString"},
    NamedType{"int", "EInt"},
    NamedType{"long", "ELong"},
    NamedType{"short", "EShort"},
    NamedType{"byte", "EByte"},
    NamedType{"bool", "EBoolean"},
    NamedType{"boolean", "EBoolean"},
    NamedType{"float", "EFloat"},
    NamedType{"double", "EDouble"},
    NamedType{"real", "EDouble"},
    NamedType{"char", "EChar"},
    NamedType{"date", "EDate"},
    NamedType{"integer", "EIntegerObject"},
    NamedType{"object", "EJavaObject"},
    NamedType{"java.lang.object", "EJavaObject"},
    NamedType{"java.lang.boolean", "EBooleanObject"},
    NamedType{"java.lang.integer", "EIntegerObject"},
    NamedType{"java.lang.long", "ELongObject"},
    NamedType{"java.lang.double", "EDoubleObject"},
    NamedType{"java.lang.float", "EFloatObject"},
    NamedType{"java.lang.class", "EJavaClass"},
    NamedType{"java.util.date", "EDate"},
};

// By their own names, which nothing else has.
constexpr std::array<std::string_view, 33> ecoreTypes = {
    "EBigDecimal",
    "EBigInteger",
    "EBoolean",
    "EBooleanObject",
    "EByte",
    "EByteArray",
    "EByteObject",
    "EChar",
    "ECharacterObject",
    "EDate",
    "EDiagnosticChain",
    "EDouble",
    "EDoubleObject",
    "EEList",
    "EEnumerator",
    "EFeatureMap",
    "EFeatureMapEntry",
    "EFloat",
    "EFloatObject",
    "EInt",
    "EIntegerObject",
    "EJavaClass",
    "EJavaObject",
    "ELong",
    "ELongObject",
    "EMap",
    "EResource",
    "EResourceSet",
    "EShort",
    "EShortObject",
    "EString",
    "ETreeIterator",
    "EInvocationTargetException",
};

template <class Number>
bool isNumber(std::string_view text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && error == std::errc() && end == text.data() + text.size();
}

} // namespace

std::string_view ecoreTypeNamed(std::string_view name)
{
    if (isOneOf(ecoreTypes, name))
        return name;
    const NamedType* const row = rowOf(namedTypes, text::lowerCase(std::string(name)));
    return row ? row->ecoreType : std::string_view();
}

std::string_view javaClassNamed(std::string_view name)
{
    struct JavaClass {
        std::string_view type; // of Ecore
        std::string_view name;
    };
    constexpr std::array classes = {
        JavaClass{"EString", "java.lang.String"},
        JavaClass{"EInt", "int"},
        JavaClass{"ELong", "long"},
        JavaClass{"EShort", "short"},
        JavaClass{"EByte", "byte"},
        JavaClass{"EBoolean", "boolean"},
        JavaClass{"EFloat", "float"},
        JavaClass{"EDouble", "double"},
        JavaClass{"EChar", "char"},
        JavaClass{"EIntegerObject", "java.lang.Integer"},
        JavaClass{"EDate", "java.util.Date"},
    };
    const JavaClass* const row = rowOf(classes, ecoreTypeNamed(name));
    return row ? row->name : "java.lang.Object";
}

bool isLiteralOf(std::string_view ecoreType, std::string_view text)
{
    if (ecoreType == "EString")
        return true;
    if (ecoreType == "EBoolean" || ecoreType == "EBooleanObject")
        return text == "true" || text == "false";
    if (ecoreType == "EInt" || ecoreType == "EIntegerObject")
        return isNumber<std::int32_t>(text);
    if (ecoreType == "ELong" || ecoreType == "ELongObject")
        return isNumber<std::int64_t>(text);
    if (ecoreType == "EShort")
        return isNumber<std::int16_t>(text);
    if (ecoreType == "EByte")
        return isNumber<std::int8_t>(text);
    return (ecoreType == "EDouble" || ecoreType == "EFloat") && isNumber<double>(text);
}

std::string linkTo(std::string_view ecoreType)
{
    return "ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//" + std::string(ecoreType);
}

} // namespace design::ecore
