#include "designs/model/DataTypes.h"

#include "text/Words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

namespace design {

namespace {

struct Name {
    std::string_view name; // lower case
    std::string_view identifier;
};

// Names of UML, of modelling tools, of programming languages and of databases.
constexpr std::array names = {
    Name{"anyuri", "VARCHAR"},
    Name{"bigdecimal", "NUMERIC"},
    Name{"bigint", "NUMERIC"},
    Name{"biginteger", "NUMERIC"},
    Name{"binary", "BINARY"},
    Name{"bit", "BOOLEAN"},
    Name{"blob", "LONGVARBINARY"},
    Name{"bool", "BOOLEAN"},
    Name{"boolean", "BOOLEAN"},
    Name{"byte", "TINYINT"},
    Name{"bytearray", "VARBINARY"},
    Name{"byte[]", "VARBINARY"},
    Name{"char", "CHAR"},
    Name{"character", "CHAR"},
    Name{"characterstring", "VARCHAR"},
    Name{"charstring", "VARCHAR"},
    Name{"clob", "LONGVARCHAR"},
    Name{"currency", "NUMERIC"},
    Name{"date", "DATE"},
    Name{"datetime", "TIMESTAMP"},
    Name{"decimal", "NUMERIC"},
    Name{"double", "DOUBLE"},
    Name{"float", "REAL"},
    Name{"guid", "VARCHAR"},
    Name{"image", "LONGVARBINARY"},
    Name{"int", "INTEGER"},
    Name{"int16", "SMALLINT"},
    Name{"int32", "INTEGER"},
    Name{"int64", "NUMERIC"},
    Name{"int8", "TINYINT"},
    Name{"integer", "INTEGER"},
    Name{"localdate", "DATE"},
    Name{"localdatetime", "TIMESTAMP"},
    Name{"localtime", "TIME"},
    Name{"long", "NUMERIC"},
    Name{"long double", "DOUBLE"},
    Name{"long int", "NUMERIC"},
    Name{"long long", "NUMERIC"},
    Name{"money", "NUMERIC"},
    Name{"nchar", "CHAR"},
    Name{"nonnegativeinteger", "INTEGER"},
    Name{"nvarchar", "VARCHAR"},
    Name{"number", "NUMERIC"},
    Name{"numeric", "NUMERIC"},
    Name{"nvarchar2", "VARCHAR"},
    Name{"positiveinteger", "INTEGER"},
    Name{"qstring", "VARCHAR"},
    Name{"raw", "VARBINARY"},
    Name{"real", "DOUBLE"},
    Name{"serial", "AUTOINCREMENT"},
    Name{"short", "SMALLINT"},
    Name{"single", "REAL"},
    Name{"size_t", "INTEGER"},
    Name{"smallint", "SMALLINT"},
    Name{"string", "VARCHAR"},
    Name{"sysdate", "DATE"},
    Name{"text", "LONGVARCHAR"},
    Name{"time", "TIME"},
    Name{"timestamp", "TIMESTAMP"},
    Name{"tinyint", "TINYINT"},
    Name{"uint", "INTEGER"},
    Name{"uint16", "INTEGER"},
    Name{"uint32", "NUMERIC"},
    Name{"uint64", "NUMERIC"},
    Name{"uint8", "SMALLINT"},
    Name{"unlimitednatural", "INTEGER"},
    Name{"unlimitedinteger", "INTEGER"},
    Name{"unsigned", "INTEGER"},
    Name{"unsigned int", "INTEGER"},
    Name{"unsigned long", "NUMERIC"},
    Name{"unsigned short", "INTEGER"},
    Name{"uri", "VARCHAR"},
    Name{"url", "VARCHAR"},
    Name{"uuid", "VARCHAR"},
    Name{"varbinary", "VARBINARY"},
    Name{"varchar", "VARCHAR"},
    Name{"varchar2", "VARCHAR"},
    Name{"wchar_t", "CHAR"},
    Name{"wstring", "VARCHAR"},
};

// The types of Ecore carry an E, those of Java's wrappers another one behind it.
constexpr std::array ecoreNames = {
    Name{"ebigdecimal", "NUMERIC"},   Name{"ebiginteger", "NUMERIC"},
    Name{"eboolean", "BOOLEAN"},      Name{"ebooleanobject", "BOOLEAN"},
    Name{"ebyte", "TINYINT"},         Name{"ebytearray", "VARBINARY"},
    Name{"ebyteobject", "TINYINT"},   Name{"echar", "CHAR"},
    Name{"echaracterobject", "CHAR"}, Name{"edate", "TIMESTAMP"},
    Name{"edouble", "DOUBLE"},        Name{"edoubleobject", "DOUBLE"},
    Name{"efloat", "REAL"},           Name{"efloatobject", "REAL"},
    Name{"eint", "INTEGER"},          Name{"eintegerobject", "INTEGER"},
    Name{"elong", "NUMERIC"},         Name{"elongobject", "NUMERIC"},
    Name{"eshort", "SMALLINT"},       Name{"eshortobject", "SMALLINT"},
    Name{"estring", "VARCHAR"},
};

template <std::size_t Count>
std::string_view find(const std::array<Name, Count>& table, std::string_view name)
{
    const auto* const found =
        std::find_if(table.begin(), table.end(), [&](const Name& entry) { return entry.name == name; });
    return found == table.end() ? std::string_view() : found->identifier;
}

// The last part of a name such as "java.lang.String" or "std::string".
std::string_view withoutQualification(std::string_view name)
{
    const std::size_t separator = name.find_last_of(".:");
    return separator == std::string_view::npos ? name : name.substr(separator + 1);
}

// "(10,2)", "(40)": takes the numbers off the name.
void takeSize(std::string_view& name, DataType& type)
{
    const std::size_t open = name.find('(');
    if (open == std::string_view::npos || !name.ends_with(')'))
        return;
    const std::string_view size = name.substr(open + 1, name.size() - open - 2);
    const std::size_t comma = size.find(',');
    const auto number = [](std::string_view digits, int& value) {
        digits = text::trimmed(digits);
        std::from_chars(digits.data(), digits.data() + digits.size(), value);
    };
    number(size.substr(0, comma), type.length);
    if (comma != std::string_view::npos)
        number(size.substr(comma + 1), type.scale);
    name = text::trimmed(name.substr(0, open));
}

} // namespace

std::optional<DataType> dataTypeNamed(std::string_view name)
{
    DataType type;
    name = text::trimmed(name);
    takeSize(name, type);
    const std::string lower = text::lowerCase(withoutQualification(name));
    type.identifier = find(names, lower);
    if (type.identifier.empty())
        type.identifier = find(ecoreNames, lower);
    if (type.identifier.empty())
        return std::nullopt;
    return type;
}

} // namespace design
