#include "browse/Page.h"
#include "reader/PetalTexts.h"
#include "Unpacked.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <simdjson.h>
#include <string>
#include <string_view>

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
    {"actions of a state, with what starts them",
     R"(statemachine (object State_Machine "S" quid "0000000000E0" states (list States
(object State "On" quid "0000000000E1" actions (list Actions (object action "ring" ActionTime (object ActionTime when "Entry")))))))",
     R"([["Actions","ring"],["Actions › Action time › When","Entry"]])"},
    {"a state without a name is called as its kind",
     R"(statemachine (object State_Machine "S" quid "0000000000E0" states (list States (object State "" quid "0000000000E1" type "StartState"))))",
     R"("Start state","0000000000E1")"},
    {"a transition without a name is called as its event",
     R"(statemachine (object State_Machine "S" quid "0000000000E0" states (list States
(object State "On" quid "0000000000E1" transitions (list transition_list (object State_Transition quid "0000000000E2" Event (object Event "flip" quid "0000000000E4")))))))",
     R"("flip","0000000000E2")"},
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

// An interaction has the name of the diagram that shows it.
TEST(Page, NamesInteractionsByTheirDiagrams)
{
    const std::string json = modelOf(read(model(R"(root_category (object Class_Category "Logical View"
quid "0000000000A0" logical_models (list l (object Mechanism @5 quid "0000000000D1") (object Mechanism @6 quid "0000000000D2"))
logical_presentations (list l (object InteractionDiagram "Buying" quid "0000000000D3" mechanism_ref @5))))")));
    EXPECT_THAT(json, HasSubstr(R"("Buying","0000000000D1")"));
    EXPECT_THAT(json, HasSubstr(R"("","0000000000D2")"));
}

// The word, the symbol, the group and whether it is a relation of the kind of the second element.
TEST(Page, SaysWhatElementsAre)
{
    const struct {
        const char* object;
        const char* kind;
    } rows[] = {
        {"Class \"A\"", R"(["class","class",2,"In component","Contains",0])"},
        {"UseCase \"A\"", R"(["use case","use-case",2,"","",0])"},
        {"Class_Category \"A\"", R"(["package","package",1,"","",0])"},
        {"Association \"A\"", R"(["association","association",5,"Associated with","Associated with",0])"},
        {"Uses_Relationship", R"(["dependency","dependency",5,"Uses","Used by",1])"},
        {"Operation \"A\"", R"(["operation","operation",3,"Returns","Returned by",0])"},
        {"State \"A\"", R"(["state","state",4,"","",0])"},
        {"ClassDiagram \"A\"", R"(["class diagram","diagram",0,"","",0])"},
        {"UseCaseDiagram \"A\"", R"(["use case diagram","use-case-diagram",0,"","",0])"},
        {"InteractionDiagram \"A\"", R"(["sequence diagram","sequence-diagram",0,"","",0])"},
        {"Novelty \"A\"", R"(["Novelty","other",4,"Refers to","Referred to by",0])"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(
            modelOf(read(model(std::string("root_category (object ") + row.object + "\nquid \"0000000000A9\")"))),
            HasSubstr(std::string(R"("kinds":[["model","model",1,"","",0],)") + row.kind + "]"))
            << row.object;
}

TEST(Page, SaysWhatIsWrongWithTheFile)
{
    const std::string json = modelOf(read(logicalView(aClass("Order", "documentation \"no end\n"))));
    EXPECT_THAT(json, HasSubstr(R"("faults":[["test.mdl:)"));
    EXPECT_THAT(modelOf(read(logicalView(aClass("Order")))), HasSubstr(R"("faults":[],)"));
    EXPECT_THAT(json, HasSubstr(R"("files":[["test.mdl","42",)"));
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
