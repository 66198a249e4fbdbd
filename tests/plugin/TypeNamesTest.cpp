#include "types/TypeNames.h"

#include "model/ExportState.h"
#include "plugin/support/ModelBuilder.h"

#include <climits>

namespace {

// The option list that names are built for; null options at the end.
class TypeNames : public testing::Test {
protected:
    TypeNames() { theOptions = &options; }
    ~TypeNames() override
    {
        releaseTypeNames();
        theOptions = nullptr;
    }
    void setTypes(const char* value) { options.setValue(BP_SUPPORTED_TYPES.getName(), value); }
    [[nodiscard]] KivType* type(const char* dataType, int length = 0, int scale = 0)
    {
        return builder.type("Own name", dataType, length, scale);
    }

    ModelBuilder builder;
    KivOptionList options = optionsFor("");
};

} // namespace

TEST_F(TypeNames, FollowTheTypeSystem)
{
    const struct {
        const char* dataType;
        const char* cpp;
        const char* java;
        const char* oracle;
    } rows[] = {
        {"INTEGER", "int", "Integer", "INTEGER"}, {"GEOMETRY", "Own name", "Void", "TEXT"},
        {"integer", "Own name", "Void", "TEXT"},  {"SQL_INTEGER", "Own name", "Void", "TEXT"},
        {"INTEGER ", "Own name", "Void", "TEXT"}, {"", "Own name", "Void", "TEXT"},
    };
    for (const auto& row : rows) {
        KivType* const named = type(row.dataType);
        for (const auto& [system, name] :
             {std::pair("As is", "Own name"), {"C++", row.cpp}, {"Java", row.java}, {"Oracle 7.x/8", row.oracle}}) {
            setTypes(system);
            EXPECT_EQ(getTypeString(named), name) << row.dataType << " in " << system;
        }
    }
    EXPECT_TRUE(enumClasses.isEmpty());
}

TEST_F(TypeNames, OfAnUnknownSystemAreCpp)
{
    KivType* const named = type("INTEGER");
    for (const char* const system : {"java", "JAVA", "Java ", "Oracle", "as is", "c++", "", "Cobol"}) {
        setTypes(system);
        EXPECT_EQ(getTypeString(named), "int") << system;
        EXPECT_FALSE(isCppTypeSystem()) << system;
    }
    setTypes("C++");
    EXPECT_TRUE(isCppTypeSystem());
    options.removeAll();
    EXPECT_EQ(getTypeString(named), "int") << "no such option";
    EXPECT_FALSE(isCppTypeSystem());
}

TEST_F(TypeNames, OfOracleCarryLengthAndScale)
{
    const struct {
        const char* dataType;
        int length;
        int scale;
        const char* name;
    } rows[] = {
        {"NUMERIC", 10, 2, "NUMBER(10,2)"},
        {"NUMERIC", 10, 0, "NUMBER(10)"},
        {"NUMERIC", 5, -1, "NUMBER(5)"},
        {"NUMERIC", 0, 2, "NUMBER"},
        {"NUMERIC", -1, 2, "NUMBER"},
        {"NUMERIC", 1, 1, "NUMBER(1,1)"},
        {"NUMERIC", INT_MAX, INT_MAX, "NUMBER(2147483647,2147483647)"},
        {"NUMERIC", INT_MIN, INT_MIN, "NUMBER"},
        {"VARCHAR", 40, 0, "VARCHAR2(40)"},
        {"INTEGER", 10, 0, "INTEGER(10)"},
        {"DATE", 7, 3, "DATE(7,3)"},
        {"DOUBLE", 3, 0, "DOUBLE PRECISION(3)"},
        {"", 255, 0, "TEXT(255)"},
    };
    for (const auto& row : rows) {
        KivType* const named = type(row.dataType, row.length, row.scale);
        setTypes("Oracle 7.x/8");
        EXPECT_EQ(getTypeString(named), row.name);
        setTypes("Java");
        EXPECT_EQ(getTypeString(named), buildJavaTypeName(type(row.dataType))) << "Java has no suffix";
    }
}

TEST_F(TypeNames, OfCppLookAtLengthAndScale)
{
    const struct {
        const char* dataType;
        int length;
        int scale;
        const char* name;
    } rows[] = {
        {"CHAR", 0, 0, "char"},      {"CHAR", 1, 0, "char"},     {"CHAR", 2, 0, "std::string"},
        {"NUMERIC", 9, 0, "long"},   {"NUMERIC", 9, -1, "long"}, {"NUMERIC", 9, 1, "double"},
        {"NUMERIC", 0, 3, "double"}, {"INTEGER", 9, 9, "int"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(getTypeString(type(row.dataType, row.length, row.scale)), row.name)
            << row.dataType << " " << row.length << " " << row.scale;
}

TEST_F(TypeNames, OfEnumerationsAreTheirOwnEverywhere)
{
    KivType* const color = builder.enumeration("Color", {{"RED", "0"}});
    color->dataType = "INTEGER";
    color->length = 10;
    KivType* const sameName = builder.enumeration("Color", {{"A", "0"}, {"B", "1"}});
    for (const char* const system : {"As is", "C++", "Java", "Oracle 7.x/8", "unknown"}) {
        setTypes(system);
        EXPECT_EQ(getTypeString(color), "Color") << system;
    }
    EXPECT_EQ(getTypeString(sameName), "Color");
    ASSERT_EQ(enumClasses.count(), 2U) << "each once, in the order in which they were met";
    EXPECT_EQ(enumClasses.at(0), color);
    EXPECT_EQ(enumClasses.at(1), sameName);
    releaseTypeNames();
    EXPECT_TRUE(enumClasses.isEmpty());
}

TEST_F(TypeNames, OfAnyLengthAreWhole)
{
    const std::string longName(40000, 'n');
    KivType* const named = builder.type(KivString(longName));
    EXPECT_EQ(getTypeString(named), longName);
    setTypes("As is");
    EXPECT_EQ(getTypeString(named), longName);
}
