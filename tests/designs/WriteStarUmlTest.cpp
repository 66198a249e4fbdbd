// Designs as StarUML keeps them.

#include "designs/formats/Formats.h"
#include "designs/formats/WrittenFiles.h"
#include "designs/Import.h"
#include "designs/model/Texts.h"
#include "SmallDesigns.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Written {
    std::string text;
    design::Report report;
};

Written written(design::Design design)
{
    const design::Format& format = *design::formatNamed("staruml");
    Written result;
    design::settleFor(format, design, true, result.report);
    const design::Catalogue catalogue(design.root);
    result.text = design::filesIn(format, {design, catalogue, "out"}, result.report).front().text;
    return result;
}

design::Design readBack(const std::string& text)
{
    design::Report report;
    return design::readDesign(*design::formatNamed("staruml"), {text, "-"}, report);
}

design::Classifier classifierOf(design::ClassifierKind kind, const std::string& name)
{
    design::Classifier classifier = classNamed(name);
    classifier.kind = kind;
    return classifier;
}

TEST(WriteStarUmlElements, ComeBack)
{
    const std::string hostile = "\"quoted\" ]]> --> @enduml \\ {name}: <T> \xC3\xA4";
    design::Classifier whole = classNamed("Whole");
    whole.documentation = "first\nsecond \x01 \"third\"";
    whole.stereotype = hostile;
    whole.constraints = {hostile};
    whole.notes = {"a note\nof two lines"};
    whole.properties = {{"Ecore", "nsURI", "http:///shop"}};
    whole.isAbstract = true;
    whole.concurrency = design::Concurrency::Active;
    design::Attribute attribute;
    attribute.name = hostile;
    attribute.type.name = "map<string, int>";
    attribute.containment = design::Containment::ByReference;
    attribute.multiplicity = design::parseMultiplicity("0..*");
    attribute.constraints = {"ordered", "x > 0"};
    whole.attributes = {attribute};
    design::Operation operation;
    operation.name = "run";
    operation.concurrency = design::Concurrency::Guarded;
    operation.preCondition = "ready\nset";
    operation.semantics = "goes";
    operation.returnType.id = "Part";
    operation.parameters.resize(1);
    operation.parameters[0].direction = design::Direction::InOut;
    whole.operations = {operation};
    design::Design design = designOf({whole, classNamed("Part")});
    design.root.packages[0].associations = {association("Whole", "Part")};
    design::AssociationEnd& end = design.root.packages[0].associations[0].ends[1];
    end.qualifiers = {attribute};
    end.isNavigable = true;
    design.root.packages[0].associations[0].ends[0].aggregation = design::Aggregation::Composite;

    const Written first = written(design);
    const design::Design back = readBack(first.text);
    EXPECT_THAT(first.report.leftEntries(), IsEmpty());
    const design::Package& package = back.root.packages.at(0);
    const design::Classifier& read = package.classifiers.at(0);
    EXPECT_EQ(read.documentation, whole.documentation);
    EXPECT_EQ(read.stereotype, hostile);
    EXPECT_EQ(read.constraints, whole.constraints);
    EXPECT_EQ(read.properties.at(0).tool + read.properties.at(0).name + read.properties.at(0).value,
              "EcorensURIhttp:///shop");
    EXPECT_TRUE(read.isAbstract);
    EXPECT_EQ(read.concurrency, design::Concurrency::Active);
    EXPECT_EQ(read.attributes.at(0).name, hostile);
    EXPECT_EQ(read.attributes.at(0).type.name, "map<string, int>");
    EXPECT_EQ(read.attributes.at(0).containment, design::Containment::ByReference);
    EXPECT_EQ(design::textOf(read.attributes.at(0).multiplicity.value()), design::textOf(*attribute.multiplicity));
    EXPECT_THAT(read.attributes.at(0).constraints, testing::UnorderedElementsAre("ordered", "x > 0"));
    EXPECT_EQ(read.operations.at(0).concurrency, design::Concurrency::Guarded);
    EXPECT_EQ(read.operations.at(0).preCondition, "ready\nset");
    EXPECT_EQ(read.operations.at(0).semantics, "goes");
    EXPECT_EQ(read.operations.at(0).returnType.id, "Part");
    EXPECT_EQ(read.operations.at(0).parameters.at(0).direction, design::Direction::InOut);
    const std::vector<design::AssociationEnd>& ends = package.associations.at(0).ends;
    EXPECT_EQ(ends.at(0).aggregation, design::Aggregation::Composite);
    EXPECT_FALSE(ends.at(0).isNavigable);
    EXPECT_TRUE(ends.at(1).isNavigable);
    EXPECT_EQ(ends.at(1).qualifiers.at(0).name, hostile);
    EXPECT_EQ(written(back).text, first.text);
}

TEST(WriteStarUmlElements, OfUseCasesComeBack)
{
    design::Design design = designOf({classifierOf(design::ClassifierKind::UseCase, "Buy"),
                                      classifierOf(design::ClassifierKind::UseCase, "Pay"),
                                      classifierOf(design::ClassifierKind::Actor, "Buyer")});
    design::Relationship include = generalization("Buy", "Pay");
    include.kind = design::RelationshipKind::Dependency;
    include.stereotype = "include";
    design.root.packages[0].relationships = {include};
    design.root.packages[0].associations = {association("Buyer", "Buy")};
    design.root.packages[0].diagrams = {diagramOf({"Buy", "Pay", "Buyer"})};
    design.root.packages[0].diagrams[0].kind = design::DiagramKind::UseCase;
    design.root.packages[0].diagrams[0].lines.resize(1);
    design.root.packages[0].diagrams[0].lines[0].elementId = include.id;

    const Written first = written(design);
    for (const char* const type : {"UMLUseCase", "UMLActor", "UMLInclude", "UMLUseCaseDiagram", "UMLUseCaseView",
                                   "UMLActorView", "UMLIncludeView", "UMLAssociation"})
        EXPECT_THAT(first.text, testing::HasSubstr("\"" + std::string(type) + "\""));
    const design::Design back = readBack(first.text);
    const design::Package& package = back.root.packages.at(0);
    EXPECT_EQ(package.classifiers.at(0).kind, design::ClassifierKind::UseCase);
    EXPECT_EQ(package.classifiers.at(2).kind, design::ClassifierKind::Actor);
    EXPECT_EQ(package.relationships.at(0).stereotype, "include");
    EXPECT_EQ(package.diagrams.at(0).kind, design::DiagramKind::UseCase);
    EXPECT_EQ(package.diagrams.at(0).boxes.size(), 3U);
    EXPECT_EQ(package.diagrams.at(0).lines.size(), 1U);
    EXPECT_EQ(written(back).text, first.text);
}

// One thing of each that StarUML has no place for.
TEST(WriteStarUmlElements, AreToldWhereTheyDoNotFit)
{
    design::Classifier odd = classNamed("Odd");
    odd.form = design::ClassForm::Utility;
    odd.concurrency = design::Concurrency::Guarded;
    odd.isPersistent = true;
    odd.cardinality = "n";
    odd.space = 8;
    odd.operations.resize(1);
    odd.operations[0].isVirtual = true;
    odd.operations[0].notes = {"hidden"};
    design::Classifier colour = classifierOf(design::ClassifierKind::Enumeration, "Colour");
    colour.literals.resize(1);
    colour.literals[0].name = "red";
    colour.literals[0].value = "7";
    design::Design design = designOf({odd, colour});
    design.root.packages[0].diagrams = {diagramOf({"Odd"})};
    design.root.packages[0].diagrams[0].boxes[0].hidden.attributes = {false, false, true, false};

    const Written result = written(design);
    std::vector<std::string> kinds;
    for (const design::ReportEntry& entry : result.report.leftEntries())
        kinds.push_back(entry.kind);
    EXPECT_THAT(kinds, testing::UnorderedElementsAre("form of a class", "concurrency of a class",
                                                     "persistence of a class", "cardinality of a class",
                                                     "space of a class", "virtuality of an operation", "note",
                                                     "value of a literal", "choice of attributes in a box"));
}

// Points of lines, places, colours and comments, as the file of the tool has them.
TEST(WriteStarUmlDiagrams, KeepPlacesColoursAndNotes)
{
    design::Classifier noted = classNamed("A");
    noted.notes = {"about A"};
    design::Design design = designOf({noted, classNamed("B")});
    design.root.packages[0].relationships = {generalization("A", "B")};
    design::Diagram diagram = diagramOf({"A", "B"});
    diagram.boxes[0].bounds = design::Rectangle{0, 0, 100, 100};
    diagram.boxes[0].appearance.fillColor = 0xFF8000;
    diagram.boxes[1].bounds = design::Rectangle{300, 0, 100, 100};
    diagram.notes = {"about all"};
    diagram.lines.resize(1);
    diagram.lines[0].elementId = "A is B";
    design.root.packages[0].diagrams = {diagram};

    const Written first = written(design);
    const design::Design back = readBack(first.text);
    const design::Diagram& read = back.root.packages.at(0).diagrams.at(0);
    const std::vector<design::Point>& points = read.lines.at(0).points;
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0].x, 100);
    EXPECT_EQ(points[0].y, 50);
    EXPECT_EQ(points[1].x, 300);
    EXPECT_EQ(read.boxes.at(0).appearance.fillColor, 0xFF8000U);
    EXPECT_EQ(read.boxes.at(1).bounds.value().left, 300);
    std::vector<std::string> texts;
    for (const design::Remark& remark : read.remarks)
        texts.push_back(remark.text + (remark.elementIds.empty() ? "" : " at " + remark.elementIds[0]));
    EXPECT_THAT(texts, ElementsAre("about A at A", "about all"));
    EXPECT_EQ(written(back).text, first.text);
}

} // namespace
