#include "kiv/KivType.h"

#include <array>

namespace {

struct DataType {
    std::string_view identifier;
    const char* oldIdentifier;
    const char* cppName; // null: depends on length or scale
};

constexpr std::array dataTypes = {
    DataType{"BINARY", "SQL_BINARY", "std::vector<std::byte>"},
    DataType{"CHAR", "SQL_CHAR", nullptr},
    DataType{"DATE", "SQL_DATE", "std::chrono::year_month_day"},
    DataType{"DOUBLE", "SQL_DOUBLE", "double"},
    DataType{"VARBINARY", "SQL_VARBINARY", "std::vector<std::byte>"},
    DataType{"LONGVARBINARY", "SQL_LONGVARBINARY", "std::vector<std::byte>"},
    DataType{"INTEGER", "SQL_INTEGER", "int"},
    DataType{"AUTOINCREMENT", "AUTOINCREMENT", "int"},
    DataType{"NUMERIC", "SQL_NUMERIC", nullptr},
    DataType{"REAL", "SQL_REAL", "float"},
    DataType{"SMALLINT", "SQL_SMALLINT", "short"},
    DataType{"TIME", "SQL_TIME", "std::chrono::seconds"},
    DataType{"TIMESTAMP", "SQL_TIMESTAMP", "std::chrono::system_clock::time_point"},
    DataType{"VARCHAR", "SQL_VARCHAR", "std::string"},
    DataType{"LONGVARCHAR", "SQL_LONGVARCHAR", "std::string"},
    DataType{"BOOLEAN", "SQL_BOOLEAN", "bool"},
    DataType{"TINYINT", "SQL_TINYINT", "signed char"},
};

// A number by which the identifiers differ, so that finding one takes one look.
constexpr std::size_t placeCount = 64;
constexpr std::size_t placeOf(std::string_view identifier)
{
    const std::size_t first = static_cast<unsigned char>(identifier.front());
    const std::size_t last = static_cast<unsigned char>(identifier.back());
    return (5 * identifier.size() + 2 * last + first) % placeCount;
}

constexpr std::array<const DataType*, placeCount> dataTypeAt = [] {
    std::array<const DataType*, placeCount> result = {};
    for (const DataType& entry : dataTypes) {
        const DataType*& place = result[placeOf(entry.identifier)];
        if (place)
            throw "two identifiers have one place";
        place = &entry;
    }
    return result;
}();

const DataType* findDataType(std::string_view identifier)
{
    if (identifier.empty())
        return nullptr;
    const DataType* const found = dataTypeAt[placeOf(identifier)];
    return found && found->identifier == identifier ? found : nullptr;
}

// The names as strings of their own, made at load time, so that naming a type copies no text.
const auto cppNames = [] {
    std::array<KivString, dataTypes.size()> result;
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = KivString(dataTypes[i].cppName);
    return result;
}();
const KivString character = "char";
const KivString text = "std::string";
const KivString integer = "long";
const KivString real = "double";

} // namespace

KivTypeValue::KivTypeValue() : KivModelObject(KivElementType::TypeValue) {}
KivType::KivType(KivElementType code) : KivModelObject(code) {}
KivConcreteType::KivConcreteType(KivElementType code) : KivType(code) {}
KivBaseType::KivBaseType() : KivConcreteType(KivElementType::BaseType) {}
KivDerivedType::KivDerivedType() : KivConcreteType(KivElementType::DerivedType) {}

KivString KivType::getInitialValue() const
{
    return {};
}

int KivType::getLowerBound() const
{
    return 0;
}

int KivType::getUpperBound() const
{
    return -1;
}

bool KivType::getUserDefined() const
{
    return false;
}

KivString KivType::getNativeDataType() const
{
    return {};
}

KivString KivType::getUserDataType() const
{
    return {};
}

KivString KivType::getNativeLogicalDataType() const
{
    return {};
}

const KivType* KivType::getActualType() const
{
    return this;
}

bool KivType::containsTypeValue(const KivTypeValue* value) const
{
    return value && typeValues.contains(value);
}

KivTypeValue* KivType::getTypeValue(int index) const
{
    const auto place = static_cast<std::size_t>(index);
    return index >= 0 && place < typeValues.count() ? typeValues.at(place) : nullptr;
}

KivTypeValue* KivType::getTypeValue(const KivString& name, int* index) const
{
    for (std::size_t place = 0; place < typeValues.count(); ++place) {
        KivTypeValue* const value = typeValues.at(place);
        if (value && value->getName() == name) {
            if (index)
                *index = static_cast<int>(place);
            return value;
        }
    }
    return nullptr;
}

void KivType::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    visitAll(typeValues, operation, context);
}

const char* getOldDataType(const KivString& dataType)
{
    const DataType* const entry = findDataType(dataType.view());
    return entry ? entry->oldIdentifier : "";
}

const KivString& buildCppTypeName(const KivType* type)
{
    const DataType* const entry = findDataType(type->getDataType().view());
    if (!entry)
        return type->getName();
    if (entry->cppName)
        return cppNames[static_cast<std::size_t>(entry - dataTypes.data())];
    if (entry->identifier == "CHAR")
        return type->getLength() == 0 || type->getLength() == 1 ? character : text;
    return type->getScale() <= 0 ? integer : real;
}
