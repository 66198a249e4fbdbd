#include "types/TypeNames.h"

#include "model/ExportState.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

KivNameLinkTree<KivType> enumClasses;
std::size_t writtenEnumClasses = 0;

namespace {

// Holds the last name that had to be put together.
std::string typeBuffer;

enum class TypeSystem { AsIs, Java, Oracle, Cpp, Unknown };

std::uint64_t knownRevision = 0;
TypeSystem knownTypeSystem = TypeSystem::Unknown;

TypeSystem typeSystemOf(const KivString& value)
{
    if (value == BP_SUPPORTED_TYPES_ENUM_AS_IS.getText())
        return TypeSystem::AsIs;
    if (value == BP_SUPPORTED_TYPES_ENUM_JAVA.getText())
        return TypeSystem::Java;
    if (value == BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8.getText())
        return TypeSystem::Oracle;
    return value == BP_SUPPORTED_TYPES_ENUM_C__.getText() ? TypeSystem::Cpp : TypeSystem::Unknown;
}

TypeSystem readTypeSystem()
{
    knownRevision = theOptions->getRevision();
    knownTypeSystem = typeSystemOf(theOptions->getValue(BP_SUPPORTED_TYPES.getName()));
    return knownTypeSystem;
}

// The option counts as it is each time a name is asked for, also when the host changes it in between; it is looked up
// only when the list has changed.
inline TypeSystem typeSystem()
{
    const std::uint64_t revision = theOptions->getRevision();
    return revision == knownRevision && revision != 0 ? knownTypeSystem : readTypeSystem();
}

struct TypeMapping {
    std::string_view oldDataType;
    std::string_view javaName;
    std::string_view oracleName;
};

// The last row stands for every data type that has no row.
constexpr std::array typeMappings = {
    TypeMapping{"SQL_BINARY", "Object", "BINARY INTEGER"},
    TypeMapping{"SQL_CHAR", "Character", "CHAR"},
    TypeMapping{"SQL_DATE", "Date", "DATE"},
    TypeMapping{"SQL_DOUBLE", "Double", "DOUBLE PRECISION"},
    TypeMapping{"SQL_VARBINARY", "Object", "IMAGE"},
    TypeMapping{"SQL_LONGVARBINARY", "Object", "LONG VARGRAPHIC"},
    TypeMapping{"SQL_INTEGER", "Integer", "INTEGER"},
    TypeMapping{"AUTOINCREMENT", "Integer", "INTEGER"},
    TypeMapping{"SQL_NUMERIC", "Number", "NUMBER"},
    TypeMapping{"SQL_REAL", "Float", "REAL"},
    TypeMapping{"SQL_SMALLINT", "Short", "SMALLINT"},
    TypeMapping{"SQL_TIME", "Date", "TIME"},
    TypeMapping{"SQL_TIMESTAMP", "Date", "DATE"},
    TypeMapping{"SQL_VARCHAR", "String", "VARCHAR2"},
    TypeMapping{"SQL_LONGVARCHAR", "String", "LONG VARCHAR"},
    TypeMapping{"SQL_BOOLEAN", "Boolean", "SMALLINT"},
    TypeMapping{"SQL_TINYINT", "Byte", "SMALLINT"},
    TypeMapping{"", "Void", "TEXT"},
};

const TypeMapping& mappingOf(const KivType* type)
{
    const std::string_view oldDataType = getOldDataType(type->getDataType());
    const auto* const row = std::find_if(typeMappings.begin(), typeMappings.end() - 1, [&](const TypeMapping& mapping) {
        return mapping.oldDataType == oldDataType;
    });
    return *row;
}

void appendNumber(std::string& text, int number)
{
    std::array<char, 12> digits;
    text.append(digits.data(), std::to_chars(digits.begin(), digits.end(), number).ptr);
}

} // namespace

std::string_view getTypeString(KivType* type)
{
    if (type->getTypeValueCount() >= 1) {
        enumClasses.add(type);
        return type->getName().view();
    }
    switch (typeSystem()) {
    case TypeSystem::AsIs:
        return type->getName().view();
    case TypeSystem::Java:
        return buildJavaTypeName(type);
    case TypeSystem::Oracle:
        return buildOracleTypeName(type);
    case TypeSystem::Cpp:
    case TypeSystem::Unknown:
        break;
    }
    return buildCppTypeName(type).view();
}

bool isCppTypeSystem()
{
    return typeSystem() == TypeSystem::Cpp;
}

std::string_view buildJavaTypeName(const KivType* type)
{
    return mappingOf(type).javaName;
}

// NUMBER(10,2), VARCHAR2(40), DATE
std::string_view buildOracleTypeName(const KivType* type)
{
    const std::string_view name = mappingOf(type).oracleName;
    const int length = type->getLength();
    const int scale = type->getScale();
    if (length < 1)
        return name;
    typeBuffer = name;
    typeBuffer += '(';
    appendNumber(typeBuffer, length);
    if (scale >= 1) {
        typeBuffer += ',';
        appendNumber(typeBuffer, scale);
    }
    typeBuffer += ')';
    return typeBuffer;
}

void releaseTypeNames() noexcept
{
    enumClasses.removeAll();
    writtenEnumClasses = 0;
    std::string().swap(typeBuffer);
    knownRevision = 0;
}
