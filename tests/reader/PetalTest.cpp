#include "PetalTexts.h"

#include "text/Words.h"

#include <gmock/gmock.h>

namespace {

using reader::Document;
using reader::Object;
using reader::Value;
using reader::ValueKind;
using testing::ElementsAre;

TEST(Petal, KnowsValuesOfEveryKind)
{
    const struct {
        const char* text;
        ValueKind kind;
        const char* meant;
    } rows[] = {
        {R"("two words")", ValueKind::text, "two words"},
        {R"("C:\\new \"x\" \d")", ValueKind::text, R"(C:\new "x" \d)"},
        {R"("")", ValueKind::text, ""},
        {"\n|one\n||two\n|\n  ", ValueKind::block, "one\n|two\n"},
        {"\r\n|one\r\n|two\r\n", ValueKind::block, "one\ntwo"},
        {"(value Text \r\n|one (\r\n|\" two\r\n\t)", ValueKind::typed, "one (\n\" two"},
        {R"((value cardinality "0..n"))", ValueKind::typed, "0..n"},
        {"-0.250000", ValueKind::number, "-0.250000"},
        {"99999999999999999999", ValueKind::number, "99999999999999999999"},
        {"TRUE", ValueKind::word, "TRUE"},
        {"1a-b", ValueKind::word, "1a-b"},
        {"@17", ValueKind::reference, ""},
        {"( 1 ,\t-2.5)", ValueKind::point, ""},
        {R"(("Set" 201))", ValueKind::tuple, ""},
        {"(1, 2, 3)", ValueKind::tuple, ""},
        {"(list)", ValueKind::list, ""},
        {"(object Never_Seen)", ValueKind::object, ""},
    };
    for (const auto& row : rows) {
        const Document document = read(model(std::string("key ").append(row.text).append("\nlast 1")));
        EXPECT_TRUE(document.findings().empty()) << row.text;
        const Value& value = document.root().get("key");
        EXPECT_EQ(value.kind(), row.kind) << row.text;
        EXPECT_EQ(value.asText(), row.meant) << row.text;
        EXPECT_EQ(std::string_view(value.position(), value.endPosition()), text::trimmed(row.text));
        EXPECT_EQ(document.root().integer("last"), 1) << row.text;
    }
}

TEST(Petal, ReadsNumbersThatFit)
{
    const struct {
        const char* text;
        std::optional<std::int64_t> whole;
        std::optional<double> number;
        std::optional<std::uint32_t> reference;
    } rows[] = {
        {"100", 100, 100.0, {}},      {"+7", 7, 7.0, {}},
        {"-2.75", -2, -2.75, {}},     {"9223372036854775808", {}, 9223372036854775808.0, {}},
        {"1e400", {}, {}, {}},        {"(value Width 5)", 5, 5.0, {}},
        {"\"5\"", {}, {}, {}},        {"@4294967295", {}, {}, 4294967295U},
        {"@-1", {}, {}, 4294967295U}, {"@4294967296", {}, {}, {}},
    };
    for (const auto& row : rows) {
        const Document document = read(model(std::string("key ").append(row.text)));
        const Value& value = document.root().get("key");
        EXPECT_EQ(value.asInt(), row.whole) << row.text;
        EXPECT_EQ(value.asNumber(), row.number) << row.text;
        EXPECT_EQ(value.asReference(), row.reference) << row.text;
        EXPECT_TRUE(document.findings().empty()) << row.text;
    }
}

TEST(Petal, KeepsWhatNobodyHasSeen)
{
    const Document document = read(model("odd (object Odd \"a\" \"b\" @5\n strange (list Things (1, 2) \"x\" @6\n"
                                         "(object Inner) (value V \"v\"))\n strange TRUE)"));
    const Object* const odd = document.root().object("odd");
    ASSERT_TRUE(odd);
    EXPECT_EQ(odd->kind(), "Odd");
    EXPECT_EQ(odd->name(), "a");
    EXPECT_EQ(odd->lastName(), "b");
    EXPECT_EQ(odd->viewNumber(), 5U);
    EXPECT_EQ(odd->parent(), &document.root());
    ASSERT_EQ(odd->attributes().size(), 2U);
    EXPECT_EQ(odd->attributes()[1].value.asBool(), true);
    const reader::List* const list = odd->get("strange").asList();
    ASSERT_TRUE(list);
    EXPECT_EQ(list->kind(), "Things");
    ASSERT_EQ(list->values().size(), 5U);
    EXPECT_EQ(list->values()[0].asPoint()->y, 2);
    EXPECT_EQ(list->objects().front()->parent(), odd);
}

TEST(Petal, TellsWhereAndWhatIsWrong)
{
    const struct {
        const char* body;
        std::vector<std::string> findings;
    } rows[] = {
        {"a 1", {}},
        {"a \"open", {"7:3: expected a second \" before the end of the line"}},
        {"a", {"7:1: expected a value behind the key 'a', found )"}},
        {"a\nb 2", {"7:1: expected a value behind the key 'a', found the end of the line"}},
        {"a 1 2\nb 3", {"7:5: expected a key or ), found the number 2"}},
        {"\xc3\xa4 \"\xc3\xa4\" ,", {"7:7: expected a key or ), found ,"}},
        {"a (object)", {"7:10: expected the kind of the object, found )"}},
        {"a (value Text)", {"7:3: expected a text in this value, found )"}},
        {"a (list l", {"8:1: expected ), found the end of the file; not closed is (object Design \"Logical View\""}},
        {"a 1)\n(object More", {"8:1: expected the end of the file, found ("}},
        {"a \x01", {"7:3: expected a value, found the control character 1"}},
    };
    for (const auto& row : rows) {
        const Document document = read(model(row.body));
        std::vector<std::string> findings;
        for (const reader::Finding& finding : document.findings())
            findings.push_back(std::to_string(finding.place.line) + ":" + std::to_string(finding.place.column) + ": " +
                               finding.text);
        EXPECT_EQ(findings, row.findings) << row.body;
    }
}

std::size_t objectsBelow(const Object& object)
{
    std::size_t count = 0;
    reader::forEachObject(object, [&](const Object&) { ++count; });
    return count;
}

TEST(Petal, EndsWithAMessageWhereverAFileIsCut)
{
    const std::string whole =
        logicalView("(object Class \"A\\\\\"\r\nquid \"0000000000B0\"\ndocumentation \n|one\n|two\n\n"
                    "size (1, 2)\nset (\"S\" 3)\nvalue (value Text \"t\"))",
                    "(object ClassView \"Class\" \"Logical View::A\" @1\nlocation (1, 2))");
    const std::string text = whole.substr(0, whole.find_last_of(')') + 1);
    for (std::size_t length = 0; length < text.size(); ++length) {
        try {
            const Document document = read(text.substr(0, length));
            EXPECT_FALSE(document.findings().empty()) << "cut at " << length;
            EXPECT_LE(objectsBelow(document.root()), document.objectCount() + 1) << "cut at " << length;
        } catch (const reader::NotPetal&) {
            EXPECT_LE(length, std::string_view("\n(object").size()) << "cut at " << length;
        }
    }
    EXPECT_TRUE(read(text).findings().empty());
}

TEST(Petal, BoundsWhatIsNested)
{
    constexpr std::size_t allowed = 4990;
    constexpr std::size_t hostile = 1000000;
    for (const char* const opening : {"a (object O ", "a (list ", "(", "(value V "}) {
        const auto nested = [&](std::size_t depth) {
            std::string text = "a (list l ";
            for (std::size_t i = 0; i < depth; ++i)
                text += opening[0] == 'a' && std::string_view(opening).find("list") != std::string_view::npos ? "(list "
                                                                                                              : opening;
            return text;
        };
        const Document document = read(model(nested(hostile)));
        EXPECT_THAT(document.findings().back().text, testing::HasSubstr("nested more than")) << opening;
        const std::string closed = nested(allowed) + std::string(allowed + 1, ')');
        EXPECT_GE(objectsBelow(read(model(closed)).root()), 1U) << opening;
    }
}

} // namespace
