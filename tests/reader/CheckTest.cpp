#include "PetalTexts.h"

#include "reader/check/Check.h"

#include <gmock/gmock.h>

namespace {

using reader::Document;
using reader::Index;

std::vector<std::string> findingsIn(const std::string& text)
{
    const Document document = read(text);
    std::vector<std::string> result;
    for (const reader::Finding& finding : reader::check(document, Index(document)).findings)
        result.push_back((finding.severity == reader::Severity::note ? "note " : "") + std::string(finding.kind) + ' ' +
                         std::to_string(finding.place.line));
    return result;
}

// Two states with a transition whose lines begin with line 17.
std::string states(const std::string& transition)
{
    return "(object State_Machine \"M\"\nquid \"0000000000E0\"\nstates (list States\n"
           "(object State \"On\"\nquid \"0000000000E1\"\ntransitions (list transition_list (object State_Transition\n" +
           transition + ")))\n(object State \"Off\"\nquid \"0000000000E2\")))";
}

// An element stands in line 10 and what follows.
TEST(Check, FindsWhatIsWrongWithElements)
{
    const struct {
        std::string elements;
        std::vector<std::string> findings;
    } rows[] = {
        {"(object Class \"A\"\nquid \"0000000000B1\")", {}},
        {"(object Class \"A\"\nquid \"0000000000A0\")", {"duplicate-quid 12"}},
        {"(object Class \"A\"\nquid \"none\")", {"malformed-quid 12"}},
        {"(object Class \"A\"\nquid \"34429CE6000\")", {"note malformed-quid 12"}},
        {"(object Class \"A\")", {"without-quid 11"}},
        {"(object Object \"o\"\nclass \"Logical View::Gone\"\nquidu \"0000000000FF\")", {"dangling-reference 13"}},
        {"(object Object \"o\"\nclass \"Logical View\"\nquidu \"0000000000FF\")", {"dangling-reference 13"}},
        {"(object Object \"o\"\nclass \"Any\"\nquidu \"000000000000\")", {}},
        {"(object Object \"o\"\nclass \"Logical View\"\nquidu \"0000000000A0\")", {}},
        {"(object Link\nsupplier \"Logical View::Other\"\nquidu \"0000000000B1\")\n(object Class \"A\"\nquid "
         "\"0000000000B1\")",
         {"other-name 13"}},
        {"(object Link\nsupplier \"Logical View::Gone\")", {"dangling-reference 12"}},
        {"(object Message \"m\"\nOperation \"gone\"\nquidu \"0000000000FF\")", {"dangling-reference 13"}},
        {states("supplier \"Logical View::M::On\"\nsupplier_quidu \"0000000000E1\"\n"
                "client \"Logical View::M::Off\"\nclient_quidu \"0000000000E2\""),
         {}},
        {states("supplier \"On\"\nsupplier_quidu \"0000000000FE\"\nclient \"Off\"\nclient_quidu \"0000000000FF\""),
         {"dangling-reference 18", "dangling-reference 20"}},
        {states("supplier \"Logical View::M::Gone\""), {"dangling-reference 17"}},
        {"(object Mechanism @5)\n(object Mechanism @5)", {"duplicate-view 12"}},
        {"(object Message\nsubsystem \"Logical View\"\nquidu \"0000000000FF\")", {}},
        {"(object Association\nquid \"0000000000B1\"\nroles (list l\n(object Role\nquid \"0000000000B2\")))",
         {"not-two-roles 11"}},
        {"(object Class_Category \"P\"\nquid \"0000000000B1\")", {"without-models 11"}},
        {"(object Message\nquid \"0000000000B1\"\nquid \"0000000000B1\")", {"key-twice 13"}},
        {"(object Message\na 1 )\n(object Message\na 1\n)", {"lone-parenthesis 15"}},
        {"(object Semantic_Info\nPDL \"x\"\n)", {"note lone-parenthesis 13"}},
        {"(object Message\na (object Semantic_Info\nPDL \"x\")\n)", {"lone-parenthesis 14"}},
        {"(object Message\ndocumentation \n|x\n\n)", {}},
        {"(object Message\ndocumentation \n|x\nnext 1)", {"block-without-end 13"}},
        {"(object Message\na 1 b 2)", {"key-inside-line 12"}},
        {R"x((object Message "\"" "\"" "\d"))x", {"quote-in-text 11", "note unknown-escape 11"}},
        {"(object Message\na 2147483648)", {"big-number 12"}},
        {"(object Message\na -2147483649)", {"big-number 12"}},
        {"(object Message\na 2147483647\nb -2147483648\nc @2147483648)", {"dangling-view 14", "big-number 14"}},
        {R"x((object Message "a\\d" "b\\"))x", {}},
        {"(object Message\nlabel \"a\"\nlabel \"b\"\nFocus_Of_Control 1\nFocus_Of_Control 2)", {}},
        {"(object ModView @5\nheight 1\nheight 2)", {}},
        {"(object Message\ndocumentation \n|x\n)", {}},
        {"(object SubSystem \"P\"\nquid \"0000000000B1\"\nlogical_models (list l))", {"without-models 11"}},
        {"(object SubSystem \"P\"\nquid \"0000000000B1\"\nphysical_models (list l))", {}},
        {"(object Inheritance_Relationship\nsupplier \"Logical View\")", {"without-quid 11"}},
        {"(object ClassDiagram \"D\")", {"without-quid 11"}},
        {"(object module \"M\")\n(object Role)\n(object Parameter)", {"without-quid 11"}},
        {"(object Class_Category \"U\"\nis_unit TRUE\nfile_name \"u.cat\")\n(object Object \"o\"\nclass \"Logical "
         "View::U::X\"\nquidu \"0000000000FF\")",
         {"note unit-not-loaded 11", "without-quid 11", "note reference-into-unit 16"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(findingsIn(logicalView(row.elements)), row.findings) << row.elements;
}

// A view stands in line 17 and what follows.
TEST(Check, FindsWhatIsWrongWithViews)
{
    const struct {
        const char* items;
        std::vector<std::string> findings;
    } rows[] = {
        {"(object NoteView @1)\n(object AttachView \"\" @2\nclient @1)", {}},
        {"(object NoteView @1)\n(object NoteView @1)", {"duplicate-view 18"}},
        {"(object ClassView \"Class\" \"Logical View::Gone\" @1\nquidu \"0000000000FF\")", {"view-without-element 18"}},
        {"(object ClassView \"Class\" \"Logical View::Gone\" @1)", {"view-without-element 17"}},
        {"(object CategoryView \"LogicalView::A\" @1\nquidu \"0000000000B1\")", {"note other-name 18"}},
        {"(object CategoryView \"Logical View::B\" @1\nquidu \"0000000000B1\")", {"other-name 18"}},
        {"(object AttachView \"\" @2\nclient @1)", {"dangling-view 18"}},
        {"(object AttachView \"\" @2\nclients (list l @2 @1))", {"dangling-view 18"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(findingsIn(logicalView("(object Class \"A\"\nquid \"0000000000B1\")", row.items)), row.findings)
            << row.items;
}

TEST(Check, CountsThePlacesOfATrap)
{
    const auto textFor = [](const std::string& elements) {
        const Document document = read(logicalView(elements));
        const auto findings = reader::check(document, Index(document)).findings;
        return findings.size() == 1 ? findings.front().text : std::to_string(findings.size()) + " findings";
    };
    EXPECT_THAT(textFor(R"((object Message "\d"))"), testing::Not(testing::HasSubstr("places")));
    EXPECT_THAT(textFor(R"((object Message "\d") (object Message "\e"))"), testing::EndsWith(" (in 2 places)"));
}

TEST(Check, LooksForViewsInTheirOwnDiagramOnly)
{
    const std::string other = "(object ClassDiagram \"Other\"\nquid \"0000000000D0\"\nitems (list diagram_item_list\n"
                              "(object NoteView @1)))";
    EXPECT_THAT(findingsIn(logicalView(other, "(object NoteView @1)")), testing::IsEmpty());
    EXPECT_THAT(findingsIn(logicalView(other, "(object AttachView \"\" @2\nclient @1)")),
                testing::ElementsAre("dangling-view 20"));
}

} // namespace
