// Every identifier and reference in what is written leads somewhere, whatever the design is like.

#include "designs/References.h"
#include "designs/Importing.h"
#include "designs/TextFormats.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace {

using testing::IsEmpty;

// Names, texts and identifiers that mean something to a format, that none can hold, or that are too much alike.
design::Design designWithHostileTexts()
{
    const std::vector<std::string> texts = {"<a href='x'>&amp;\"",
                                            "]]>--><!--",
                                            "a\r\nb\rc\nd",
                                            std::string("bell\a and\0 nothing", 18),

                                            "#//A/b",
                                            "{\"$ref\":1}",
                                            "EAID_1",
                                            "a b",
                                            "a_b",
                                            "1",
                                            "_1",
                                            " ",
                                            "..",
                                            "::",
                                            "a/b",
                                            std::string(5000, 'n')};
    design::Design design = designOf({});
    design::Package& package = design.root.packages[0];
    package.name = texts[0];
    design::Diagram diagram = diagramOf({});
    for (const std::string& text : texts) {
        design::Classifier classifier = classNamed(text);
        classifier.kind = static_cast<design::ClassifierKind>(package.classifiers.size() % 8);
        classifier.documentation = classifier.stereotype = text;
        classifier.notes = classifier.constraints = {text};
        classifier.properties = {{text, text, text}};
        classifier.attributes.resize(1);
        classifier.attributes[0].name = classifier.attributes[0].initialValue = text;
        classifier.attributes[0].type.name = text;
        classifier.operations.resize(1);
        classifier.operations[0].name = classifier.operations[0].preCondition = text;
        classifier.operations[0].parameters.resize(1);
        classifier.operations[0].parameters[0].name = text;
        classifier.literals.resize(1);
        classifier.literals[0].name = classifier.literals[0].value = text;
        classifier.templateParameters.resize(1);
        classifier.templateParameters[0].name = text;
        design::Association joint = association(text, texts[0]);
        joint.name = joint.documentation = joint.ends[0].name = joint.ends[1].name = text;
        joint.ends[1].isNavigable = true;
        joint.ends[0].qualifiers.resize(1);
        joint.ends[0].qualifiers[0].name = text;
        package.classifiers.push_back(classifier);
        package.associations.push_back(joint);
        diagram.boxes.push_back({text, std::nullopt, {}});
        diagram.lines.emplace_back().elementId = joint.id;
        diagram.notes.push_back(text);
    }
    package.diagrams = {diagram};
    return design;
}

// Ends and types that lead nowhere, identifiers that are missing or given twice, and classes that inherit from
// themselves.
design::Design designThatLeadsNowhere()
{
    design::Design design = designOf({classNamed("A"), classNamed("B"), classNamed("C"), classNamed("A")});
    design::Package& package = design.root.packages[0];
    package.classifiers.resize(6);
    package.relationships = {generalization("A", "B"), generalization("B", "C"),       generalization("C", "A"),
                             generalization("A", "A"), generalization("A", "nowhere"), generalization("", "B"),
                             generalization("A", "")};
    for (const design::RelationshipKind kind :
         {design::RelationshipKind::Realization, design::RelationshipKind::Dependency}) {
        package.relationships.push_back(generalization("B", "lost"));
        package.relationships.back().kind = kind;
    }
    package.associations = {association("A", "nobody"), association("A", ""), association("A", "A"),
                            association("A", "B"), association("B", "C")};
    package.associations[0].associationClassId = "missing";
    package.associations[2].associationClassId = package.associations[3].associationClassId = "A";
    package.associations[4].ends.push_back(package.associations[4].ends[0]);
    for (design::Classifier& classifier : package.classifiers) {
        classifier.attributes.resize(2);
        classifier.attributes[0].type.id = "lost";
        classifier.attributes[1].type.id = "A";
        classifier.operations.resize(2);
        classifier.operations[1].returnType.id = "lost";
    }
    package.remarks = {{"r", "about nothing", {"nowhere"}, false}, {"r", "holds", {"lost", "A"}, true}};
    package.diagrams = {diagramOf({"A", "gone", "B", "A", ""}), diagramOf({"A"})};
    for (const char* const line : {"A is B", "B is C", "gone", "A has A", "B has C"})
        package.diagrams[0].lines.emplace_back().elementId = line;
    return design;
}

// Packages in each other, and classes that inherit from each other, through all of them.
design::Design designThatIsDeep()
{
    constexpr int depth = 400;
    design::Design design;
    design::Package* package = &design.root;
    for (int i = 0; i < depth; ++i) {
        package->packages.resize(1);
        package = package->packages.data();
        package->name = "p";
        package->classifiers = {classNamed("C" + std::to_string(i))};
        if (i > 0)
            package->relationships = {generalization("C" + std::to_string(i), "C" + std::to_string(i - 1))};
    }
    return design;
}

class WrittenReferences : public testing::TestWithParam<std::string> {
protected:
    // What was written is read, and written again.
    static void expectWhole(design::Design design)
    {
        const Texts first = textsOf(std::move(design), GetParam(), false);
        EXPECT_THAT(deadReferences(GetParam(), first.files), IsEmpty());
        const TemporaryFolder folder;
        for (const design::WrittenFile& file : first.files)
            folder.write(file.name.empty() ? "design.uml" : file.name, file.text);
        design::Report report;
        design::Design back = design::readDesign(*design::formatNamed(GetParam()),
                                                 {first.files.at(0).text, folder / "design.uml"}, report);
        const Texts second = textsOf(std::move(back), GetParam(), false);
        EXPECT_THAT(deadReferences(GetParam(), second.files), IsEmpty());
    }
};

TEST_P(WrittenReferences, LeadSomewhereInDesignsOfAllTools)
{
    for (const char* const name : designFiles()) {
        SCOPED_TRACE(name);
        expectWhole(designIn(name));
    }
}

TEST_P(WrittenReferences, LeadSomewhereWhateverTextsSay)
{
    expectWhole(designWithHostileTexts());
}

TEST_P(WrittenReferences, LeadSomewhereWhenThoseOfTheDesignDoNot)
{
    expectWhole(designThatLeadsNowhere());
}

TEST_P(WrittenReferences, LeadSomewhereFromTheDepth)
{
    expectWhole(designThatIsDeep());
}

INSTANTIATE_TEST_SUITE_P(, WrittenReferences, testing::Values("ea", "staruml", "papyrus", "xmi", "ecore"),
                         [](const auto& instance) { return instance.param; });

// A model file whose references lead nowhere would not be read.
TEST(ReferencesInModelFiles, LeadSomewhere)
{
    const design::Format& staruml = *design::formatNamed("staruml");
    for (const design::Design& design : {designWithHostileTexts(), designThatLeadsNowhere(), designThatIsDeep()}) {
        const Texts file = textsOf(design, staruml.name);
        const Imported imported = importWith(staruml, file.files.at(0).text);
        EXPECT_EQ(imported.error, "");
        EXPECT_NE(imported.at("/childPackages/0"), "none");
    }
}

} // namespace
