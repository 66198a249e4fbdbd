#include "kiv/KivLocale.h"
#include "kiv/KivMessages.h"
#include "kiv/KivOptions.h"
#include "kiv/KivPackage.h"
#include "support/KivStringPrinting.h"
#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <clocale>
#include <cstdlib>
#include <gmock/gmock.h>
#include <langinfo.h>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;

TEST(Multiplicity, IsWrittenAsItsBounds)
{
    constexpr int most = 2147483647;
    const struct {
        int lower;
        int upper;
        const char* text;
    } rows[] = {{0, 0, "0"},
                {1, 1, "1"},
                {0, 1, "0..1"},
                {0, -1, "0..n"},
                {1, -1, "1..n"},
                {-1, -1, "n"},
                {2, 5, "2..5"},
                {5, 5, "5"},
                {-1, 0, "n..0"},
                {-1, 7, "n..7"},
                {7, -1, "7..n"},
                {1, 0, "1..0"},
                {-2, -2, "-2"},
                {-2, 3, "-2..3"},
                {most, most, "2147483647"},
                {-most - 1, most, "-2147483648..2147483647"}};
    for (const auto& row : rows)
        EXPECT_EQ(buildMultiplicity(row.lower, row.upper), row.text);
}

TEST(Multiplicity, IsZeroAndZeroWhenAbsent)
{
    const struct {
        KivMultiplicity multiplicity;
        int lower;
        int upper;
    } rows[] = {{{}, 0, 0}, {{2, 5, false}, 0, 0}, {{2, 5, true}, 2, 5}, {{0, -1, true}, 0, -1}};
    for (const auto& row : rows) {
        int lower = 99;
        int upper = 99;
        decodeMultiplicity(row.multiplicity, &lower, &upper);
        EXPECT_EQ(lower, row.lower);
        EXPECT_EQ(upper, row.upper);
    }
}

TEST(DataTypes, HaveAnOlderIdentifierAndACppName)
{
    const char* const own = "Own name";
    const struct {
        const char* dataType;
        int length;
        int scale;
        const char* old;
        const char* cpp;
    } rows[] = {{"BINARY", 0, 0, "SQL_BINARY", "std::vector<std::byte>"},
                {"CHAR", 0, 0, "SQL_CHAR", "char"},
                {"CHAR", 1, 9, "SQL_CHAR", "char"},
                {"CHAR", 2, 0, "SQL_CHAR", "std::string"},
                {"CHAR", -1, 0, "SQL_CHAR", "std::string"},
                {"DATE", 0, 0, "SQL_DATE", "std::chrono::year_month_day"},
                {"DOUBLE", 0, 0, "SQL_DOUBLE", "double"},
                {"VARBINARY", 0, 0, "SQL_VARBINARY", "std::vector<std::byte>"},
                {"LONGVARBINARY", 0, 0, "SQL_LONGVARBINARY", "std::vector<std::byte>"},
                {"INTEGER", 5, 2, "SQL_INTEGER", "int"},
                {"AUTOINCREMENT", 0, 0, "AUTOINCREMENT", "int"},
                {"NUMERIC", 9, 0, "SQL_NUMERIC", "long"},
                {"NUMERIC", 9, -1, "SQL_NUMERIC", "long"},
                {"NUMERIC", 0, 1, "SQL_NUMERIC", "double"},
                {"REAL", 0, 0, "SQL_REAL", "float"},
                {"SMALLINT", 0, 0, "SQL_SMALLINT", "short"},
                {"TIME", 0, 0, "SQL_TIME", "std::chrono::seconds"},
                {"TIMESTAMP", 0, 0, "SQL_TIMESTAMP", "std::chrono::system_clock::time_point"},
                {"VARCHAR", 1, 0, "SQL_VARCHAR", "std::string"},
                {"LONGVARCHAR", 0, 0, "SQL_LONGVARCHAR", "std::string"},
                {"BOOLEAN", 0, 0, "SQL_BOOLEAN", "bool"},
                {"TINYINT", 0, 0, "SQL_TINYINT", "signed char"},
                {"", 0, 0, "", own},
                {"integer", 0, 0, "", own},
                {"INTEGER ", 0, 0, "", own},
                {"SQL_INTEGER", 0, 0, "", own}};
    for (const auto& row : rows) {
        KivBaseType type;
        type.setName(own);
        type.dataType = row.dataType;
        type.length = row.length;
        type.scale = row.scale;
        EXPECT_STREQ(getOldDataType(type.getDataType()), row.old) << row.dataType;
        EXPECT_EQ(buildCppTypeName(&type), row.cpp) << row.dataType << ' ' << row.length << ' ' << row.scale;
    }
}

const struct {
    const KivMessageIdentifier& identifier;
    const char* name;
    const char* text;
} catalogue[] = {
    {ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE, "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE", "unable to open output file '%1'"},
    {BRIDGE_UNEXPECTED_ERROR, "BRIDGE_UNEXPECTED_ERROR", "unexpected error in bridge '%1'"},
    {ROS_E_PRINTING_PACKAGE, "ROS_E_PRINTING_PACKAGE", "writing package '%1'"},
    {ROS_E_PRINTING_CLASSES, "ROS_E_PRINTING_CLASSES", "writing classes"},
    {ROS_E_PRINTING_ASSOCIATIONS, "ROS_E_PRINTING_ASSOCIATIONS", "writing associations"},
    {ROS_E_PRINTING_DIAGRAM, "ROS_E_PRINTING_DIAGRAM", "writing diagrams"},
    {BRIDGE_UNCONVERTIBLE_TEXT, "BRIDGE_UNCONVERTIBLE_TEXT", "text cannot be written in the locale's encoding: '%1'"},
    {ROS_E_VIEW_NUMBERS_WRAP, "ROS_E_VIEW_NUMBERS_WRAP", "too many diagrams: view numbers pass the 32-bit range"},
    {ROS_E_PACKAGES_NESTED_TOO_DEEP, "ROS_E_PACKAGES_NESTED_TOO_DEEP", "packages nested deeper than 512 levels: '%1'"},
    {ROS_E_EXPORT_RUNNING, "ROS_E_EXPORT_RUNNING", "an export is already running"}};

std::string withArgument(std::string text, std::string_view argument)
{
    const std::size_t place = text.find("%1");
    return place == std::string::npos ? text : text.replace(place, 2, argument);
}

TEST(Messages, HaveAGuardedArgumentInTheirTexts)
{
    const struct {
        KivString argument;
        const char* inText;
    } arguments[] = {{"", ""},          {"a/b c", "a/b c"},          {"%1", "%1"},        {"a\\b", "a\\b"},
                     {"a\nb", "a\\nb"}, {"\"x\\\r", "\\\"x\\\\\\r"}, {"dir\\", "dir\\\\"}};
    for (const auto& message : catalogue)
        for (const auto& [argument, inText] : arguments) {
            const std::string expected = withArgument(message.text, inText);
            EXPECT_STREQ(message.identifier.getName(), message.name);
            EXPECT_STREQ(message.identifier.getText(), message.text);
            EXPECT_EQ(message.identifier.format(argument).view(), expected);
            try {
                message.identifier.throwException(argument);
            } catch (const KivException& exception) {
                const KivException copy = exception;
                EXPECT_STREQ(copy.what(), expected.c_str());
                EXPECT_EQ(&copy.getIdentifier(), &message.identifier);
                EXPECT_EQ(copy.getArgument(), argument) << "the argument beside the text is not guarded";
            }
        }
}

TEST(Messages, ReachTheLogWithTheirArgument)
{
    struct Log : KivLog {
        void add(const KivLogEntry& entry) override
        {
            lines.push_back(std::string(entry.identifier.getName()) + "|" + entry.argument.text() + "|" +
                            entry.getText().text());
        }
        std::vector<std::string> lines;
    } log;
    ROS_E_PRINTING_PACKAGE.log(log, "a\nb");
    ROS_E_PRINTING_CLASSES.log(log);
    EXPECT_THAT(log.lines, ElementsAre("ROS_E_PRINTING_PACKAGE|a\nb|writing package 'a\\nb'",
                                       "ROS_E_PRINTING_CLASSES||writing classes"));
}

TEST(Options, AreTheOnesOfTheCatalogue)
{
    std::string summary;
    for (const KivBridgeOptionLiteral* const identifier :
         {&BP_FILE, &BP_SUPPORTED_TYPES, &BP_EXPORT_FOREIGN_KEY_ATTRIBUTES, &BP_GENERATE_QUALIFIERS,
          &BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, &BP_USE_GRAPHICAL_INFORMATION, &BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM,
          &BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM}) {
        const KivOption option = identifier->generateOption(false);
        EXPECT_EQ(identifier->getName(), option.name);
        EXPECT_EQ(option.value, option.defaultValue);
        EXPECT_FALSE(option.description.isEmpty());
        constexpr const char* kinds[] = {"file", "enumeration", "boolean", "percent"};
        summary.append(option.name.text()).append("|").append(kinds[static_cast<int>(option.kind)]);
        summary.append("|").append(option.value.text());
        for (const KivString& literal : option.literals)
            summary.append("|").append(literal.text());
        summary += "\n";
    }
    EXPECT_EQ(summary, "BP_FILE|file|\n"
                       "BP_SUPPORTED_TYPES|enumeration|C++|As is|C++|Java|Oracle 7.x/8\n"
                       "BP_EXPORT_FOREIGN_KEY_ATTRIBUTES|boolean|False|True|False\n"
                       "BP_GENERATE_QUALIFIERS|boolean|False|True|False\n"
                       "BP_SHOW_CONSTRAINTS_IN_DIAGRAMS|boolean|False|True|False\n"
                       "BP_USE_GRAPHICAL_INFORMATION|boolean|True|True|False\n"
                       "BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM|percent|100\n"
                       "BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM|percent|100\n");
    EXPECT_EQ(BOOLEAN_ENUM_VALUE_TRUE.getText(), "True");
    EXPECT_EQ(BOOLEAN_ENUM_VALUE_FALSE.getText(), "False");
    EXPECT_EQ(BP_SUPPORTED_TYPES_ENUM_AS_IS.getText(), "As is");
    EXPECT_EQ(BP_SUPPORTED_TYPES_ENUM_C__.getText(), "C++");
    EXPECT_EQ(BP_SUPPORTED_TYPES_ENUM_JAVA.getText(), "Java");
    EXPECT_EQ(BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8.getText(), "Oracle 7.x/8");
    const char* const extensions[] = {"mdl", "txt", nullptr};
    EXPECT_THAT(BP_FILE.generateOption(true, extensions, "Default", true).extensions, ElementsAre("mdl", "txt"));
}

TEST(Options, AreFoundByTheirExactNames)
{
    KivOptionList options;
    EXPECT_EQ(options.getValue("BP_FILE"), "");
    EXPECT_FALSE(options.setValue("BP_FILE", "x"));
    for (const char* const value : {"first", "second"}) {
        KivOption option;
        option.name = "A";
        option.value = value;
        options.append(option);
    }
    EXPECT_EQ(options.getValue("A"), "first");
    EXPECT_EQ(options.getValue("a"), "");
    EXPECT_EQ(options.find("a"), nullptr);
    const std::uint64_t revision = options.getRevision();
    EXPECT_TRUE(options.setValue("A", " x "));
    EXPECT_NE(options.getRevision(), revision);
    EXPECT_EQ(options.find("A")->value, " x ");
    EXPECT_EQ(options.getOptions().at(1).value, "second");
    options.removeAll();
    EXPECT_EQ(options.find("A"), nullptr);
}

// Sets the locale of the process for one test.
class LocaleTest : public testing::Test {
protected:
    ~LocaleTest() override
    {
        unsetenv("LOCPATH");
        std::setlocale(LC_CTYPE, "C");
    }

    static bool set(const char* name, std::string_view encoding)
    {
        return std::setlocale(LC_CTYPE, name) && nl_langinfo(CODESET) == encoding;
    }
    // A locale of that encoding, compiled for the test when the system has none.
    bool setLatin1() const
    {
        if (set("en_US.ISO-8859-1", "ISO-8859-1"))
            return true;
        const ProcessResult compiled = runProcess(
            {"/usr/bin/localedef", {"-f", "ISO-8859-1", "-i", "en_US", folder / "en_US.ISO-8859-1"}, folder.path()});
        setenv("LOCPATH", folder.path().c_str(), 1);
        return compiled.exitCode == 0 && set("en_US.ISO-8859-1", "ISO-8859-1");
    }
    static void expectUnconvertible(const KivString& text)
    {
        try {
            const KivString converted = utf8ToLocale(text);
            ADD_FAILURE() << testing::PrintToString(std::string(text.view())) << " gave " << converted.text();
        } catch (const KivException& exception) {
            EXPECT_EQ(&exception.getIdentifier(), &BRIDGE_UNCONVERTIBLE_TEXT);
            EXPECT_EQ(exception.getArgument(), text);
        }
    }

    TemporaryFolder folder;
    std::vector<KivString> notUtf8 = {"\xFF",     "a\xC3", "\x80z", "\xED\xA0\x80", "\xC0\xAF", "\xF4\x90\x80\x80",
                                      "a\xE2\x82"};
};

TEST_F(LocaleTest, PassesEveryByteInTheCLocale)
{
    ASSERT_TRUE(set("C", "ANSI_X3.4-1968"));
    std::string bytes;
    for (int code = 1; code < 256; ++code)
        bytes += static_cast<char>(code);
    EXPECT_EQ(utf8ToLocale(KivString(bytes)).view(), bytes);
    EXPECT_EQ(utf8ToLocale(KivString()), "");
}

TEST_F(LocaleTest, PassesTextInAUtf8Locale)
{
    if (!set("C.UTF-8", "UTF-8"))
        GTEST_SKIP() << "this system has no locale C.UTF-8";
    std::string everything;
    for (int i = 0; i < 100; ++i) // longer than any buffer on the way
        everything += "a/\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
    for (std::size_t shift = 0; shift < 8; ++shift)
        EXPECT_EQ(utf8ToLocale(KivString(std::string(shift, 'x') + everything)).view(),
                  std::string(shift, 'x') + everything);
    for (const KivString& text : notUtf8)
        expectUnconvertible(text);
}

TEST_F(LocaleTest, ConvertsIntoAnotherEncoding)
{
    if (!setLatin1())
        GTEST_SKIP() << "no ISO-8859-1 locale could be set up";
    std::string utf8;
    std::string latin1;
    for (int i = 0; i < 1000; ++i) {
        utf8 += i % 3 == 0 ? "x" : "\xC3\xA9";
        latin1 += i % 3 == 0 ? "x" : "\xE9";
    }
    EXPECT_EQ(utf8ToLocale(KivString(utf8)).view(), latin1);
    EXPECT_EQ(utf8ToLocale(KivString()), "");
    for (const KivString& text : notUtf8)
        expectUnconvertible(text);
    for (const char* const lacking : {"\xE2\x82\xAC", "abc\xC4\x80", "\xF0\x9F\x98\x80"})
        expectUnconvertible(lacking);
}

} // namespace
