// UML 2 models, and the diagrams that Papyrus has beside them: what they hold.

#include "designs/formats/WrittenFiles.h"
#include "designs/Import.h"
#include "SmallDesigns.h"

#include <gmock/gmock.h>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace {

using design::Design;
using testing::ElementsAre;

struct Written {
    std::string model;
    std::string diagrams; ///< of Papyrus
};

Written written(Design design, std::string_view formatName = "xmi")
{
    const design::Format& format = *design::formatNamed(formatName);
    design::Report report;
    design::settleFor(format, design, true, report);
    const design::Catalogue catalogue(design.root);
    Written result;
    for (design::WrittenFile& file : design::filesIn(format, {design, catalogue, "out"}, report))
        if (file.name != "out.di")
            (file.name.empty() ? result.model : result.diagrams) = std::move(file.text);
    return result;
}

Design back(const std::string& model)
{
    design::Report report;
    return design::readDesign(*design::formatNamed("xmi"), {model, "-"}, report);
}

const design::Classifier& firstClass(const Design& design)
{
    return design.root.packages.at(0).classifiers.at(0);
}

TEST(WriteUml2, TakesAnyText)
{
    const struct {
        std::string text;
        std::string returned;
    } rows[] = {
        {"a\"b'<c>&]]>--><!--&amp;", "a\"b'<c>&]]>--><!--&amp;"},
        {"one\r\ntwo\rthree\nfour", "one\ntwo\nthree\nfour"},
        {"bell\aand\x01more", "bell and more"},
        {"\xC3\xA4\xE2\x82\xAC", "\xC3\xA4\xE2\x82\xAC"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        Design design = designOf({classNamed("A")});
        design::Classifier& given = design.root.packages[0].classifiers[0];
        given.documentation = row.text;
        given.constraints = {row.text};
        given.attributes.resize(1);
        given.attributes[0].name = "x";
        given.attributes[0].type.name = row.text;
        given.attributes[0].initialValue = row.text;
        const Written file = written(design, "papyrus");
        const Design returned = back(file.model);
        const design::Classifier& found = firstClass(returned);
        EXPECT_EQ(found.documentation, row.returned);
        EXPECT_THAT(found.constraints, ElementsAre(row.returned));
        EXPECT_EQ(found.attributes.at(0).initialValue, row.returned);
    }
}

// What is no identifier of XML, and what would become the same one.
TEST(WriteUml2, GivesEachElementItsOwnIdentifier)
{
    const Written file =
        written(designOf({classNamed("a b"), classNamed("a_b"), classNamed("1"), classNamed("_1"), classNamed("<&>")}),
                "papyrus");
    EXPECT_EQ(back(file.model).root.packages.at(0).classifiers.size(), 5U);
}

// A reader of Ecore refuses what it has no feature for: a generalization has no name, a line no fill.
TEST(WriteUml2, SaysNothingThatElementsDoNotHave)
{
    Design design = designOf({classNamed("A"), classNamed("B")});
    design::Package& package = design.root.packages[0];
    package.relationships = {generalization("A", "B")};
    package.relationships[0].name = "is";
    package.diagrams = {diagramOf({"A", "B"})};
    design::Line line;
    line.elementId = "A is B";
    line.appearance.fillColor = line.appearance.fontColor = line.appearance.lineColor = 0xFF0000;
    line.appearance.fontName = "Arial";
    package.diagrams[0].lines = {line};
    const Written file = written(design, "papyrus");
    pugi::xml_document model;
    ASSERT_TRUE(model.load_string(file.model.c_str()));
    EXPECT_TRUE(model.select_node("//generalization"));
    EXPECT_FALSE(model.select_node("//generalization/@name"));
    pugi::xml_document diagrams;
    ASSERT_TRUE(diagrams.load_string(file.diagrams.c_str()));
    EXPECT_TRUE(diagrams.select_node("//edges[@lineColor='255']/styles[@fontName='Arial' and @fontColor='255']"));
    EXPECT_FALSE(diagrams.select_node("//edges/@fontName | //edges/@fillColor"));
}

// An actor that has features is a class in the model, and so it is drawn.
TEST(WriteUml2, DrawsElementsAsWhatTheyAreInTheModel)
{
    Design design = designOf({classNamed("A"), classNamed("B")});
    for (design::Classifier& classifier : design.root.packages[0].classifiers)
        classifier.kind = design::ClassifierKind::Actor;
    design.root.packages[0].classifiers[0].attributes.resize(1);
    design.root.packages[0].diagrams = {diagramOf({"A", "B"})};
    pugi::xml_document diagrams;
    ASSERT_TRUE(diagrams.load_string(written(design, "papyrus").diagrams.c_str()));
    EXPECT_TRUE(diagrams.select_node("//children[@type='Class_Shape']/element[@href='out.uml#A']"));
    EXPECT_TRUE(diagrams.select_node("//children[@type='Actor_Shape']/element[@href='out.uml#B']"));
}

// Values of other tools come back from every format that has a place for such.
TEST(WriteUml2, KeepsValuesOfTools)
{
    for (const char* const name : {"xmi", "papyrus", "ea", "staruml"}) {
        SCOPED_TRACE(name);
        const design::Format& format = *design::formatNamed(name);
        Design design = designOf({classNamed("A"), classNamed("B")});
        design::Package& package = design.root.packages[0];
        package.classifiers[0].attributes.resize(1);
        package.associations = {association("A", "B")};
        for (design::Element* const element : std::initializer_list<design::Element*>{
                 &package, &package.classifiers[0], &package.classifiers[0].attributes[0], &package.associations[0],
                 &package.associations[0].ends[0]})
            element->properties = {{"cg", "Inline", "a \"<&"}, {"Ecore", "nsURI", ""}};
        design::Report report;
        design::settleFor(format, design, true, report);
        const design::Catalogue catalogue(design.root);
        const std::string text = design::filesIn(format, {design, catalogue, "out"}, report).front().text;
        const Design returned = design::readDesign(format, {text, "-"}, report);
        const design::Package& found = returned.root.packages.at(0);
        for (const design::Element* const element : std::initializer_list<const design::Element*>{
                 &found, &found.classifiers[0], &found.classifiers[0].attributes.at(0), &found.associations.at(0),
                 &found.associations[0].ends.at(0)}) {
            ASSERT_EQ(element->properties.size(), 2U) << element->name;
            EXPECT_EQ(element->properties[0].tool, "cg");
            EXPECT_EQ(element->properties[0].name, "Inline");
            EXPECT_EQ(element->properties[0].value, "a \"<&");
            EXPECT_EQ(element->properties[1].tool, "Ecore");
        }
    }
}

} // namespace
