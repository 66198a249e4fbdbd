// Files for Enterprise Architect: what only they hold.

#include "designs/formats/WrittenFiles.h"
#include "designs/Import.h"
#include "designs/settling/Settling.h"
#include "SmallDesigns.h"

#include <gmock/gmock.h>
#include <pugixml.hpp>
#include <set>
#include <string>

namespace {

using testing::HasSubstr;
using testing::Not;

const design::Format& ea()
{
    return *design::formatNamed("ea");
}

std::string written(design::Design& design, design::Report& report)
{
    design::settleFor(ea(), design, true, report);
    const design::Catalogue catalogue(design.root);
    return design::filesIn(ea(), {design, catalogue, "out"}, report).front().text;
}

std::string written(design::Design design)
{
    design::Report report;
    return written(design, report);
}

design::Design back(const std::string& text)
{
    design::Report report;
    design::Design design = design::readDesign(ea(), {text, "-"}, report);
    design::settle(design, design::Reach::Packages, report);
    return design;
}

TEST(WriteEnterpriseArchitect, KeepsWhatOnlyTheExtensionHolds)
{
    design::Design design = designOf({classNamed("A"), classNamed("B")});
    design::Package& package = design.root.packages[0];
    package.classifiers[0].notes = {"Ask first"};
    package.classifiers[0].attributes.resize(1);
    package.classifiers[0].attributes[0].containment = design::Containment::ByReference;
    package.classifiers[0].operations.resize(1);
    package.classifiers[0].operations[0].concurrency = design::Concurrency::Guarded;
    package.associations = {association("A", "B")};
    package.associations[0].ends[1].containment = design::Containment::ByValue;
    package.relationships = {generalization("A", "B")};
    package.relationships[0].isVirtual = true;
    const design::Design returned = back(written(design));
    const design::Package& found = returned.root.packages.at(0);
    EXPECT_THAT(found.classifiers.at(0).notes, testing::ElementsAre("Ask first"));
    EXPECT_EQ(found.classifiers[0].attributes.at(0).containment, design::Containment::ByReference);
    EXPECT_EQ(found.classifiers[0].operations.at(0).concurrency, design::Concurrency::Guarded);
    EXPECT_EQ(found.associations.at(0).ends.at(1).containment, design::Containment::ByValue);
    EXPECT_TRUE(found.relationships.at(0).isVirtual);
}

// The tool takes a connector from the extension alone.
TEST(WriteEnterpriseArchitect, SaysAllOfAConnector)
{
    const struct {
        bool isFirstNavigable;
        bool isSecondNavigable;
        const char* direction;
    } rows[] = {
        {false, false, "Unspecified"},
        {true, false, "Destination -> Source"},
        {false, true, "Source -> Destination"},
        {true, true, "Bi-Directional"},
    };
    for (const auto& row : rows) {
        design::Design design = designOf({classNamed("A"), classNamed("B")});
        design::Association joint = association("A", "B");
        joint.name = "owns";
        joint.stereotype = "strong";
        joint.documentation = "why";
        joint.ends[0].isNavigable = row.isFirstNavigable;
        joint.ends[1].isNavigable = row.isSecondNavigable;
        joint.ends[0].aggregation = design::Aggregation::Composite;
        joint.ends[1].name = "part";
        joint.ends[1].multiplicity = design::Multiplicity{2, 4, ""};
        joint.ends[1].isStatic = true;
        joint.ends[1].visibility = design::Visibility::Private;
        design.root.packages[0].associations = {joint};
        pugi::xml_document file;
        ASSERT_TRUE(file.load_string(written(design).c_str()));
        for (const std::string& path :
             {std::string("[@name='owns']"), std::string("/documentation[@value='why']"),
              std::string("/properties[@ea_type='Association' and @stereotype='strong' and @direction='") +
                  row.direction + "']",
              std::string("/source/type[@aggregation='composite']"), std::string("/source/model[@name='A']"),
              std::string("/target/model[@name='B']"),
              std::string("/target/role[@name='part' and @visibility='Private' and @targetScope='classifier']"),
              std::string("/target/type[@multiplicity='2..4' and @aggregation='none']"),
              std::string("/source/modifiers[@isNavigable='") + (row.isFirstNavigable ? "true" : "false") + "']",
              std::string("/target/modifiers[@isNavigable='") + (row.isSecondNavigable ? "true" : "false") + "']"})
            EXPECT_TRUE(file.select_node(("//connectors/connector" + path).c_str())) << row.direction << path;
    }
}

TEST(WriteEnterpriseArchitect, TakesAnyText)
{
    const std::string hostile = "a\"b'<c>&]]>--><!--\n\t@enduml";
    design::Design design = designOf({classNamed("A")});
    design::Classifier& classifier = design.root.packages[0].classifiers[0];
    classifier.documentation = hostile;
    classifier.constraints = {hostile};
    classifier.attributes.resize(1);
    classifier.attributes[0].name = "x";
    classifier.attributes[0].initialValue = hostile;
    classifier.attributes[0].type.name = "map<int, \"&\">";
    const std::string text = written(design);
    const design::Design returned = back(text);
    const design::Classifier& found = returned.root.packages.at(0).classifiers.at(0);
    EXPECT_EQ(found.documentation, hostile);
    EXPECT_THAT(found.constraints, testing::ElementsAre(hostile));
    EXPECT_EQ(found.attributes.at(0).initialValue, hostile);
    EXPECT_EQ(found.attributes.at(0).type.name, "map<int, \"&\">");

    classifier.documentation = std::string("bell\a and\0nothing", 17);
    EXPECT_THAT(written(design), HasSubstr("\"bell andnothing\""));
}

// Identifiers of other tools that become the same text stay apart.
TEST(WriteEnterpriseArchitect, GivesEachElementItsOwnIdentifier)
{
    const design::Design returned =
        back(written(designOf({classNamed("a b"), classNamed("a_b"), classNamed("EAID_a_b"), classNamed("1")})));
    std::set<std::string> ids;
    for (const design::Classifier& classifier : returned.root.packages.at(0).classifiers)
        ids.insert(classifier.id);
    EXPECT_EQ(ids.size(), 4U);
    EXPECT_TRUE(ids.contains("EAID_1"));
}

// An end that one can go to is a property of the class at the other end; actors have none.
TEST(WriteEnterpriseArchitect, HasNavigableEndsWhereTheToolHasThem)
{
    design::Design design = designOf({classNamed("A"), classNamed("B")});
    design::Package& package = design.root.packages[0];
    package.associations = {association("A", "B")};
    package.associations[0].ends[0].aggregation = design::Aggregation::Composite;
    package.associations[0].ends[1].isNavigable = true;
    package.associations[0].ends[1].name = "b";
    const std::string ofClass = written(design);
    EXPECT_THAT(ofClass, HasSubstr("<ownedAttribute xmi:type=\"uml:Property\" xmi:id=\"EAID_dst"));
    EXPECT_THAT(ofClass, HasSubstr("aggregation=\"composite\""));
    package.classifiers[0].kind = design::ClassifierKind::Actor;
    const std::string ofActor = written(design);
    EXPECT_THAT(ofActor, Not(HasSubstr("<ownedAttribute")));
    EXPECT_THAT(ofActor, HasSubstr("<navigableOwnedEnd xmi:idref=\"EAID_dst"));
    EXPECT_TRUE(back(ofActor).root.packages.at(0).associations.at(0).ends.at(1).isNavigable);
}

// Without a connector, which has two ends; what only that could say is told.
TEST(WriteEnterpriseArchitect, HasAssociationsOfThreeEnds)
{
    design::Design design = designOf({classNamed("A"), classNamed("B"), classNamed("C")});
    design::Package& package = design.root.packages[0];
    package.associations = {association("A", "B")};
    design::Association& given = package.associations[0];
    given.documentation = "who has what of whom";
    given.ends.push_back(given.ends[0]);
    given.ends[2].participant.id = "C";
    given.ends[2].name = "whom";
    given.ends[2].stereotype = "key";
    given.ends[2].multiplicity = design::Multiplicity{0, -1, ""};
    given.ends[1].containment = design::Containment::ByReference;
    given.ends[0].aggregation = design::Aggregation::Shared;
    design::Report report;
    const design::Design returned = back(written(design, report));
    const design::Association& found = returned.root.packages.at(0).associations.at(0);
    ASSERT_EQ(found.ends.size(), 3U);
    EXPECT_EQ(found.ends[0].aggregation, design::Aggregation::Shared);
    EXPECT_EQ(found.ends[2].name, "whom");
    EXPECT_EQ(found.ends[2].multiplicity.value_or(design::Multiplicity()).upper, -1);
    std::set<std::string> left;
    for (const design::ReportEntry& entry : report.leftEntries())
        left.insert(entry.kind);
    EXPECT_EQ(left, (std::set<std::string>{"documentation", "stereotype", "containment of an end", "line"}));
}

TEST(WriteEnterpriseArchitect, DrawsLinesWithTheirBends)
{
    design::Design design = designOf({classNamed("A"), classNamed("B")});
    design::Package& package = design.root.packages[0];
    package.relationships = {generalization("A", "B")};
    design::Diagram diagram;
    diagram.id = "diagram";
    diagram.boxes = {{"A", design::Rectangle{-50, 0, 100, 50}, {}}, {"B", design::Rectangle{200, 200, 100, 50}, {}}};
    diagram.boxes[0].appearance.fillColor = 0x00FF80;
    diagram.boxes[1].hidden.operations[0] = true;
    diagram.lines = {{"A is B", {{0, 225}}, false, {}, {}, {}}};
    package.diagrams = {diagram};
    const std::string text = written(design);
    EXPECT_THAT(text, HasSubstr("Left=0;Top=0;Right=100;Bottom=50;")); // sheets begin at 0
    EXPECT_THAT(text, HasSubstr("BCol=8453888;"));
    EXPECT_THAT(text, HasSubstr("OpPub=0;"));
    EXPECT_THAT(text, HasSubstr("SX=0;SY=0;EX=0;EY=0;EDGE=3;"));
    EXPECT_THAT(text, HasSubstr("Path=50:-225$;"));
}

} // namespace
