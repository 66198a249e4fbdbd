#include "PetalTexts.h"

#include "reader/index/Index.h"

#include <gmock/gmock.h>

namespace {

using reader::Document;
using reader::Index;
using reader::Object;
using reader::ReferenceState;

constexpr const char* elements = R"((object Class_Category "P"
quid "0000000000B0"
logical_models (list l
(object Class "A"
quid "0000000000B1"
class_attributes (list l (object ClassAttribute "x" quid "0000000000B4")))
(object Class "Twice" quid "0000000000B2")))
(object Class "Twice" quid "0000000000B3")
(object Association "$UNNAMED$0" quid "0000000000B5")
(object Mechanism @7 quid "0000000000B6")
)";

constexpr const char* items = R"((object ClassView "Class" "Logical View::P::A" @1
quidu "0000000000B1")
(object ClassView "Class" "Logical View::P::A" @2
label (object ItemLabel Parent_View @2))
(object NoteView @3 client @1 supplier @7 drawSupplier @99)
)";

TEST(Index, FindsElementsByNameAndQuid)
{
    const Document document = read(logicalView(elements, items));
    const Index index(document);
    const struct {
        const char* name;
        const char* quid; // of what is found
    } rows[] = {
        {"Logical View", "0000000000A0"},
        {"Logical View::P", "0000000000B0"},
        {"Logical View::P::A", "0000000000B1"},
        {"Logical View::P::Twice", "0000000000B2"},
        {"Logical View::Twice", "0000000000B3"},
        {"A", "0000000000B1"},
        {"Twice", nullptr},
        {"P::A", nullptr},
        {"Logical View::A", nullptr},
        {"Logical View::P::A::", nullptr},
        {"x", nullptr},
        {"", nullptr},
    };
    for (const auto& row : rows) {
        const Object* const found = index.byName(row.name);
        ASSERT_EQ(found != nullptr, row.quid != nullptr) << row.name;
        if (found) {
            EXPECT_EQ(found, index.byQuid(row.quid)) << row.name;
        }
    }
    const Object* const attribute = index.byQuid("0000000000B4");
    ASSERT_TRUE(attribute);
    EXPECT_EQ(index.path(*attribute), "Logical View::P::A::x");
    EXPECT_EQ(reader::shownName(*index.byQuid("0000000000B5")), "");
}

TEST(Index, FindsViewsByTheirDiagram)
{
    const Document document = read(logicalView(elements, items));
    const Index index(document);
    ASSERT_EQ(index.diagrams().size(), 1U);
    const Object& diagram = *index.diagrams().front().object;
    const Object* const first = index.view(diagram, 1);
    const Object* const note = index.view(diagram, 3);
    ASSERT_TRUE(first && note);
    EXPECT_EQ(index.view(*note, "client"), first);
    EXPECT_EQ(index.view(*note, "supplier"), index.byQuid("0000000000B6"));
    EXPECT_EQ(index.view(*note, "drawSupplier"), nullptr);
    EXPECT_EQ(index.view(*note, "none"), nullptr);
    EXPECT_EQ(index.diagramOf(*note), &diagram);
    const Object* const element = index.byQuid("0000000000B1");
    EXPECT_EQ(index.element(*first).element, element);
    EXPECT_EQ(index.element(*index.view(diagram, 2)).element, element);
    EXPECT_EQ(index.element(*note).state, ReferenceState::none);
    EXPECT_EQ(index.viewsOf(*element), std::vector<const Object*>{first});
}

TEST(Index, FindsViewsWhoseNumbersAreThoseOfOthers)
{
    const Document document = read(model(
        "m (object Mechanism @1)\n"
        "a (object ClassDiagram \"A\" items (list diagram_item_list (object V \"a1\" @1) (object V \"a2\" @2)))\n"
        "b (object ClassDiagram \"B\" items (list diagram_item_list (object V \"b1\" @1) (object V \"again\" @1)))\n"
        "c (object ClassDiagram \"C\" items (list diagram_item_list))"));
    const Index index(document);
    const struct {
        const char* diagram;
        std::uint32_t number;
        const char* name; // of the view; empty for none
    } rows[] = {{"a", 1, "a1"}, {"b", 1, "b1"}, {"c", 1, ""}, {"a", 2, "a2"}, {"c", 2, "a2"}, {"a", 3, ""}};
    for (const auto& [key, number, name] : rows) {
        const Object* const view = index.view(*document.root().object(key), number);
        EXPECT_EQ(view ? view->name() : "", name) << key << ' ' << number;
    }
    EXPECT_EQ(index.viewIn(nullptr, document.root(), 1), document.root().object("m"));
    EXPECT_EQ(index.viewIn(nullptr, document.root(), 2), nullptr);
    EXPECT_EQ(index.view(document.root(), 1), nullptr); // which is no diagram, and there are several in the file
    EXPECT_EQ(index.duplicateViews().size(), 1U);
}

TEST(Index, TellsReferencesThatLeadNowhereApart)
{
    const std::string stub = "(object Class_Category \"U\"\nis_unit TRUE\nfile_name \"u.cat\")";
    const std::string whole = logicalView(elements);
    const std::string part = logicalView(elements + stub);
    const std::string unit =
        std::string(petalHeader) + "(object Class_Category \"U\"\nlogical_models (list l\n(object Class \"In\")))";
    const struct {
        const std::string& text;
        const char* quid;
        const char* name;
        ReferenceState state;
    } rows[] = {
        {whole, "0000000000B1", "", ReferenceState::found},
        {whole, "000000000000", "Logical View::P::A", ReferenceState::none},
        {whole, "", "", ReferenceState::none},
        {whole, "0000000000FF", "", ReferenceState::missing},
        {whole, "0000000000FF", "Logical View::P::A", ReferenceState::found},
        {part, "0000000000FF", "", ReferenceState::unloaded},
        {part, "0000000000FF", "Logical View::U::Any", ReferenceState::unloaded},
        {part, "0000000000FF", "Logical View::Used", ReferenceState::missing},
        {part, "0000000000FF", "Logical View::P::Gone", ReferenceState::missing},
        {unit, "0000000000FF", "Logical View::Other::X", ReferenceState::unloaded},
        {unit, "0000000000FF", "Logical View::U::In", ReferenceState::found},
        {unit, "0000000000FF", "Logical View::U::Gone", ReferenceState::missing},
    };
    for (const auto& row : rows) {
        const Document document = read(row.text);
        EXPECT_EQ(Index(document).lookUp(row.quid, row.name).state, row.state) << row.quid << ' ' << row.name;
    }
}

TEST(Index, KnowsEveryKindOfDiagram)
{
    const char* const rows[][2] = {
        {"ClassDiagram", "class"},          {"UseCaseDiagram", "use case"},    {"InteractionDiagram", "sequence"},
        {"ObjectDiagram", "collaboration"}, {"State_Diagram", "state"},        {"ActivityDiagram", "activity"},
        {"Module_Diagram", "component"},    {"Process_Diagram", "deployment"}, {"Tier_Diagram", "three-tier"},
        {"ThreeTierDiagram", "three-tier"}, {"Never_Seen", "other"},           {"ClassChart", "other"},
    };
    for (const auto& [kind, name] : rows) {
        const Document document =
            read(model(std::string("d (object ").append(kind).append(" \"D\" items (list diagram_item_list))")));
        const Index index(document);
        ASSERT_EQ(index.diagrams().size(), 1U) << kind;
        EXPECT_EQ(reader::diagramKindName(index.diagrams().front().kind), name);
        EXPECT_EQ(index.diagrams().front().name, "D");
    }
}

} // namespace
