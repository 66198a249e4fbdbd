#include "browse/Page.h"
#include "reader/PetalTexts.h"

#include <algorithm>
#include <cstdint>
#include <gmock/gmock.h>
#include <simdjson.h>
#include <string>
#include <string_view>
#include <zlib.h>

namespace {

using simdjson::dom::element;
using testing::HasSubstr;
using testing::Not;

std::string pageOf(const reader::Document& document, const std::string& title = "orders.mdl",
                   const std::string& picture = "")
{
    const reader::Index index(document);
    std::string page;
    browse::writePage(document, index, {title, [&](const reader::Diagram&) { return picture; }},
                      [&](std::string_view piece) { page += piece; });
    return page;
}

std::string fromBase64(std::string_view text)
{
    constexpr std::string_view characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char c : text.substr(0, text.find('='))) {
        bits = bits << 6U | static_cast<std::uint32_t>(characters.find(c));
        count += 6;
        if (count >= 8)
            bytes += static_cast<char>(bits >> (count -= 8) & 0xFFU);
    }
    return bytes;
}

// What the script of that id holds, unpacked.
std::string unpacked(const std::string& page, const std::string& id)
{
    const std::string start = "<script type=\"text/plain\" id=\"" + id + "\">";
    const std::size_t from = page.find(start) + start.size();
    const std::string packed = fromBase64(std::string_view(page).substr(from, page.find("</script>", from) - from));
    std::string text;
    for (uLongf size = 4096;; size *= 4) {
        text.resize(size);
        uLongf used = size;
        const int result = uncompress(reinterpret_cast<Bytef*>(text.data()), &used,
                                      reinterpret_cast<const Bytef*>(packed.data()), packed.size());
        text.resize(used);
        if (result != Z_BUF_ERROR)
            return result == Z_OK ? text : "not packed: " + packed;
    }
}

// The JSON of the page as it stands.
std::string modelOf(const std::string& page)
{
    return unpacked(page, "model");
}

std::string modelOf(const reader::Document& document)
{
    return modelOf(pageOf(document));
}

std::size_t countOf(const std::string& text, std::string_view part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

std::string quoted(std::string_view text)
{
    std::string result = "\"";
    for (const char c : text)
        result.append(c == '"' || c == '\\' ? "\\" : "").append(1, c);
    return result + '"';
}

std::string aClass(std::string_view name, std::string_view body = "")
{
    return "(object Class " + quoted(name) + "\nquid \"0000000000C1\"\n" + std::string(body) + ")";
}

// What a browser could take for an element, or for the end of one.
constexpr std::string_view hostileTexts[] = {
    "<script>alert(1)</script>",
    "</script><img src=x onerror=alert(1)>",
    "</SCRIPT \t><svg onload=alert(1)>",
    "<!-- <script>",
    "\"><img src=x onerror=alert(1)>",
    "]]>&lt;b&gt;",
    "back\\slash \\u003c",
    "\u2028 and \u2029",
    "@model@ and @pictures@",
};

// Whether the model, too, is called so.
bool hasElementCalled(std::string_view text, const std::string& page)
{
    simdjson::dom::parser parser;
    const element model = parser.parse(simdjson::padded_string(modelOf(page)));
    const simdjson::dom::array rows = model["elements"];
    return std::string_view(model["title"]) == text && std::any_of(rows.begin(), rows.end(), [&](element row) {
               return std::string_view(row.at(2)) == text && std::string_view(row.at(4)["documentation"]) == text;
           });
}

TEST(Page, KeepsHostileTextsAsTexts)
{
    const std::string harmless = pageOf(read(logicalView(aClass("Order", "documentation \"text\"\n"))));
    for (const std::string_view text : hostileTexts) {
        SCOPED_TRACE(text);
        const std::string page = pageOf(
            read(logicalView(aClass(text, "documentation " + quoted(text) + "\nstereotype " + quoted(text) + "\n"))),
            std::string(text), "<svg><text>" + std::string(text) + "</text></svg>");
        for (const std::string_view part : {"<script", "</script", "<!--"})
            EXPECT_EQ(countOf(page, part), countOf(harmless, part)) << part;
        EXPECT_TRUE(hasElementCalled(text, page));
        EXPECT_EQ(unpacked(page, "picture-0"), "<svg><text>" + std::string(text) + "</text></svg>");
    }
}

TEST(Page, IsAllowedNothingButItself)
{
    const std::string page = pageOf(read(logicalView(aClass("Order"))));
    EXPECT_THAT(page, HasSubstr("default-src 'none'; style-src 'sha256-"));
    for (const std::string_view part :
         {"unsafe-inline", "unsafe-eval", "href=\"http", "src=\"", "@import", "innerHTML"})
        EXPECT_THAT(page, Not(HasSubstr(std::string(part))));
}

struct SheetRow {
    const char* what;
    const char* body;     // of a class Order
    const char* expected; // in the JSON
};

constexpr SheetRow sheetRows[] = {
    {"stereotype and documentation", "stereotype \"entity\"\ndocumentation\n|one\n|two\n\n",
     R"({"stereotype":"entity","documentation":"one\ntwo"})"},
    {"attribute",
     R"(class_attributes (list class_attribute_list (object ClassAttribute "price" quid "0000000000F1" type "Money" initv "0" exportControl "Protected")))",
     R"("price","0000000000F1",{"visibility":"#","type":["Money",-1],"value":"0")"},
    {"attribute whose type is a class",
     R"(class_attributes (list class_attribute_list (object ClassAttribute "next" quid "0000000000F1" type "Order" quidu "0000000000C1")))",
     R"("type":["Order",2])"},
    {"operation",
     R"(operations (list Operations (object Operation "pay" quid "0000000000F2" parameters (list Parameters (object Parameter "amount" type "Money" initv "1" documentation "how much")) result "Boolean" opExportControl "Public")))",
     R"("pay","0000000000F2",{"visibility":"+","type":["Boolean",-1],"parameters":[["amount","Money",-1,"1","how much"]])"},
    {"relation by quid",
     R"(superclasses (list inheritance_relationship_list (object Inheritance_Relationship quid "0000000000F3" supplier "Logical View::Order" quidu "0000000000C1")))",
     R"({"to":["Order",2,0])"},
    {"relation by name",
     R"(used_nodes (list uses_relationship_list (object Uses_Relationship quid "0000000000F4" supplier "Logical View::Order")))",
     R"({"to":["Order",2,0])"},
    {"relation to nothing",
     R"(used_nodes (list uses_relationship_list (object Uses_Relationship quid "0000000000F4" supplier "Logical View::Gone" quidu "00000000DEAD")))",
     R"({"to":["Gone",-1,3])"},
    {"transition whose ends have quids of their own",
     R"(statemachine (object State_Machine "S" quid "0000000000E0" states (list States
(object State "On" quid "0000000000E1" transitions (list transition_list
(object State_Transition quid "0000000000E2" supplier "Off" supplier_quidu "0000000000E3" client "On" client_quidu "0000000000E1")))
(object State "Off" quid "0000000000E3"))))",
     R"("0000000000E2",{"to":["Off",6,0],)"},
    {"properties of tools",
     R"(attributes (list Attribute_Set (object Attribute tool "Java" name "Final" value FALSE) (object Attribute tool "cg" name "Kind" value ("KindSet" 17))))",
     R"([["Java",[["Final","FALSE"]]],["cg",[["Kind","KindSet, 17"]]]])"},
    {"words of the file", "persistence \"Transient\"\nmulti FALSE\nopExportControl \"Private\"\n",
     R"([["Persistence","Transient"],["Multi","FALSE"],["Visibility","Private"]])"},
    {"not what goes without saying of a unit", "is_unit FALSE\nis_loaded TRUE\n", R"("Order","0000000000C1",{}])"},
    {"a key that is new", "someNew_key \"value\"\n", R"([["Some new key","value"]])"},
    {"a kind that is new", R"(novelties (list (object Novelty "New" quid "0000000000F5")))",
     R"("New","0000000000F5",{})"},
};

TEST(Page, ShowsWhatTheFileSaysOfAnElement)
{
    for (const SheetRow& row : sheetRows)
        EXPECT_THAT(modelOf(read(logicalView(aClass("Order", row.body)))), HasSubstr(row.expected)) << row.what;
}

TEST(Page, ShowsBothEndsOfAnAssociation)
{
    const std::string association =
        "(object Association \"places\" quid \"0000000000F6\" roles (list role_list\n"
        "(object Role \"order\" supplier \"Logical View::Order\" quidu \"0000000000C1\"\n"
        "client_cardinality (value cardinality \"0..n\") is_navigable TRUE)\n"
        "(object Role \"$UNNAMED$0\" supplier \"Logical View::Gone\" documentation \"gone\")))";
    EXPECT_THAT(modelOf(read(logicalView(aClass("Order") + association))),
                HasSubstr(R"({"ends":[["order","0..n","Order",2,0,"navigable",""],["","","Gone",-1,3,"","gone"]])"));
}

TEST(Page, SaysWhatOfADiagramShowsWhat)
{
    const std::string views = "(object ClassView \"Class\" \"Logical View::Order\" @7 quidu \"0000000000C1\")\n"
                              "(object NoteView @8)\n(object ClassView \"Class\" \"Logical View::Order\" @9)";
    EXPECT_THAT(modelOf(read(logicalView(aClass("Order"), views))), HasSubstr(R"("diagrams":[[3,[7,2,9,2]]])"));
}

// Whatever is left of a file, the page of it is whole.
TEST(Page, IsWholeForEveryBeginningOfAFile)
{
    const std::string text =
        logicalView(aClass("Order", sheetRows[3].body) +
                        R"((object Association "a" quid "0000000000F6" roles (list l (object Role "r" supplier "x"))))",
                    R"((object ClassView "Class" "Logical View::Order" @7 quidu "0000000000C1"))");
    simdjson::dom::parser parser;
    std::size_t pages = 0;
    for (std::size_t length = 0; length < text.size(); ++length) {
        try {
            const std::string json = modelOf(read(text.substr(0, length)));
            EXPECT_EQ(parser.parse(json).error(), simdjson::SUCCESS) << json;
            ++pages;
        } catch (const reader::NotPetal&) {
            EXPECT_LT(length, 100U);
        }
    }
    EXPECT_GT(pages, text.size() / 2);
}

// An address must mean the same element in every page of the model, and only that.
TEST(Page, GivesEachElementAnIdOfItsOwn)
{
    const std::string twice = aClass("Order") + aClass("Order");
    const std::string without = "(object Class \"Item\" class_attributes (list class_attribute_list\n"
                                "(object ClassAttribute \"a\") (object ClassAttribute \"a\")))";
    const std::string json = modelOf(read(logicalView(twice + without)));
    for (const char* const id :
         {R"("Order","0000000000C1",)", R"("Order","0000000000C1.2",)", R"("Item","0000000000A0.Item",)",
          R"("a","0000000000A0.Item.a",)", R"("a","0000000000A0.Item.a.2",)"})
        EXPECT_THAT(json, HasSubstr(id));
}

TEST(Page, SaysWhichUnitsAreMissing)
{
    const std::string unit = "(object Class_Category \"Shared\"\nis_unit TRUE\nis_loaded FALSE\n"
                             "file_name \"$curdir\\\\shared.cat\"\nquid \"0000000000B1\")";
    const std::string json = modelOf(read(logicalView(unit)));
    EXPECT_THAT(json, HasSubstr(R"("missing":[["$curdir\\shared.cat",)"));
    EXPECT_THAT(json, HasSubstr(R"("Shared","0000000000B1",{"missing":"$curdir\\shared.cat: )"));
}

} // namespace
