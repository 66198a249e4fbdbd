// What goes out comes back, or is told to be left out.

#include "designs/DesignLines.h"
#include "designs/formats/WrittenFiles.h"
#include "designs/Import.h"
#include "SmallDesigns.h"

#include <algorithm>
#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using design::Design;
using design::Package;
using testing::ElementsAreArray;

constexpr std::array<const char*, 3> formatNames = {"xmi", "ea", "staruml"};

// One of everything that has properties of its own: associations with a class and without.
Design everything()
{
    Design design = designOf({classNamed("A"), classNamed("B"), classNamed("C"), classNamed("E")});
    Package& package = design.root.packages[0];
    package.classifiers[2].kind = design::ClassifierKind::AssociationClass;
    package.classifiers[3].kind = design::ClassifierKind::Enumeration;
    package.classifiers[3].literals.resize(1);
    package.classifiers[3].literals[0].name = "red";
    package.classifiers[0].attributes.resize(1);
    package.classifiers[0].attributes[0].name = "a";
    package.classifiers[0].operations.resize(1);
    package.classifiers[0].operations[0].name = "o";
    package.associations = {association("A", "B"), association("B", "A")};
    package.associations[0].ends[0].qualifiers.resize(1);
    package.associations[0].ends[0].qualifiers[0].name = "q";
    package.associations[1].associationClassId = "C";
    package.associations[1].name = "C";
    package.relationships = {generalization("A", "B")};
    return design;
}

design::Parameter& templateParameter(Package& package)
{
    package.classifiers[0].templateParameters.resize(1);
    package.classifiers[0].templateParameters[0].name = "T";
    return package.classifiers[0].templateParameters[0];
}

std::vector<std::string> wordsIn(const std::string& list)
{
    std::vector<std::string> words;
    std::istringstream stream(list);
    for (std::string word; std::getline(stream >> std::ws, word, ',');)
        words.push_back(word);
    return words;
}

std::vector<std::string> linesOf(Design design, const design::Format& format)
{
    design::Report report;
    design.tool.clear();
    design.root.name.clear();
    design::settleFor(format, design, true, report);
    return DesignLines(std::move(design), {}).take();
}

// What a design has that the other has not.
std::vector<std::string> more(std::vector<std::string> lines, const std::vector<std::string>& other)
{
    for (const std::string& line : other)
        if (const auto found = std::find(lines.begin(), lines.end(), line); found != lines.end())
            lines.erase(found);
    return lines;
}

struct Outcome {
    std::vector<std::string> told;  ///< kinds of what is left out
    std::vector<std::string> lines; ///< of the design that comes back
};

Outcome outcomeIn(const design::Format& format, Design design)
{
    design::Report report;
    design::settleFor(format, design, true, report);
    const design::Catalogue catalogue(design.root);
    const std::string text = design::filesIn(format, {design, catalogue, "out"}, report).front().text;
    Outcome outcome;
    for (const design::ReportEntry& entry : report.leftEntries())
        outcome.told.push_back(entry.kind);
    design::Report second;
    outcome.lines = linesOf(design::readDesign(format, {text, "-"}, second), format);
    return outcome;
}

TEST(Losses, AreToldWhereSomethingDoesNotComeBack)
{
    const struct {
        const char* what;
        std::function<void(Package&)> change;
        std::array<const char*, formatNames.size()> told; ///< empty: it comes back
    } rows[] = {
        {"nothing", [](Package& /*p*/) {}, {"", "", ""}},
        {"a form",
         [](Package& p) { p.classifiers[0].form = design::ClassForm::Utility; },
         {"form of a class", "form of a class", "form of a class"}},
        {"a template",
         [](Package& p) {
             templateParameter(p);
             p.classifiers[0].form = design::ClassForm::Parameterized;
         },
         {"", "", ""}},
        {"a template without parameters",
         [](Package& p) { p.classifiers[0].form = design::ClassForm::Parameterized; },
         {"form of a class", "form of a class", "form of a class"}},
        {"an active class",
         [](Package& p) { p.classifiers[0].concurrency = design::Concurrency::Active; },
         {"", "", ""}},
        {"a guarded class",
         [](Package& p) { p.classifiers[0].concurrency = design::Concurrency::Guarded; },
         {"concurrency of a class", "concurrency of a class", "concurrency of a class"}},
        {"a persistent class",
         [](Package& p) { p.classifiers[0].isPersistent = true; },
         {"persistence of a class", "persistence", "persistence of a class"}},
        {"how many objects there are",
         [](Package& p) { p.classifiers[0].cardinality = "7"; },
         {"cardinality of a class", "cardinality of a class", "cardinality of a class"}},
        {"their space",
         [](Package& p) { p.classifiers[0].space = 8; },
         {"space of a class", "space", "space of a class"}},
        {"a held attribute",
         [](Package& p) { p.classifiers[0].attributes[0].containment = design::Containment::ByValue; },
         {"containment of an attribute", "", ""}},
        {"a note on an attribute",
         [](Package& p) { p.classifiers[0].attributes[0].notes = {"why"}; },
         {"note", "", "note"}},
        {"a virtual operation",
         [](Package& p) { p.classifiers[0].operations[0].isVirtual = true; },
         {"virtuality of an operation", "virtual operation", "virtuality of an operation"}},
        {"a friend",
         [](Package& p) { p.classifiers[0].operations[0].isFriend = true; },
         {"friendship of an operation", "friend", "friendship of an operation"}},
        {"a guarded operation",
         [](Package& p) { p.classifiers[0].operations[0].concurrency = design::Concurrency::Guarded; },
         {"concurrency of an operation", "", ""}},
        {"a literal with a value",
         [](Package& p) { p.classifiers[3].literals[0].value = "7"; },
         {"", "", "value of a literal"}},
        {"a literal with an empty value",
         [](Package& p) { p.classifiers[3].literals[0].hasEmptyValue = true; },
         {"value of a literal", "", ""}},
        {"several in a template parameter",
         [](Package& p) {
             templateParameter(p).multiplicity = design::Multiplicity{0, 3, ""};
         },
         {"multiplicity of a template parameter", "", "multiplicity of a template parameter"}},
        {"the default of a template parameter",
         [](Package& p) { templateParameter(p).initialValue = "int"; },
         {"default of a template parameter", "default of a template parameter", ""}},
        {"a text on a template parameter",
         [](Package& p) { templateParameter(p).documentation = "what it holds"; },
         {"", "documentation of a template parameter", ""}},
        {"a derived association", [](Package& p) { p.associations[0].isDerived = true; }, {"", "", ""}},
        {"one with a class",
         [](Package& p) { p.associations[1].isDerived = true; },
         {"derivation of an association", "derivation of an association", ""}},
        {"a constraint of an association", [](Package& p) { p.associations[0].constraints = {"c"}; }, {"", "", ""}},
        {"of one with a class",
         [](Package& p) { p.associations[1].constraints = {"c"}; },
         {"constraint of an association", "constraint of an association", ""}},
        {"a note on an association", [](Package& p) { p.associations[0].notes = {"n"}; }, {"", "", ""}},
        {"a text on one with a class",
         [](Package& p) { p.associations[1].documentation = "d"; },
         {"documentation of an association", "", ""}},
        {"a value of a tool",
         [](Package& p) {
             p.associations[0].properties = {{"t", "n", "v"}};
         },
         {"", "", ""}},
        {"of one with a class",
         [](Package& p) {
             p.associations[1].properties = {{"t", "n", "v"}};
         },
         {"properties of an association", "", ""}},
        {"a class called otherwise",
         [](Package& p) { p.associations[1].name = "sells"; },
         {"name of an association", "", ""}},
        {"a friend at an end",
         [](Package& p) { p.associations[0].ends[1].isFriend = true; },
         {"friendship of an end", "friend", "friendship of an end"}},
        {"a held end",
         [](Package& p) { p.associations[0].ends[1].containment = design::Containment::ByValue; },
         {"containment of an end", "", "containment of an end"}},
        {"a note on an end", [](Package& p) { p.associations[0].ends[1].notes = {"n"}; }, {"note", "", "note"}},
        {"a text on a qualifier",
         [](Package& p) { p.associations[0].ends[0].qualifiers[0].documentation = "by this"; },
         {"", "documentation of a qualifier", ""}},
        {"the stereotype of a qualifier",
         [](Package& p) { p.associations[0].ends[0].qualifiers[0].stereotype = "key"; },
         {"", "stereotype of a qualifier", ""}},
        {"a note on a qualifier",
         [](Package& p) { p.associations[0].ends[0].qualifiers[0].notes = {"n"}; },
         {"note", "note on a qualifier", "note"}},
        {"a held qualifier",
         [](Package& p) { p.associations[0].ends[0].qualifiers[0].containment = design::Containment::ByValue; },
         {"containment of an attribute", "", ""}},
        {"the name of a generalization",
         [](Package& p) { p.relationships[0].name = "is"; },
         {"name of a generalization", "", ""}},
        {"a private generalization",
         [](Package& p) { p.relationships[0].visibility = design::Visibility::Private; },
         {"visibility of a relation", "visibility of a relation", ""}},
        {"a virtual generalization",
         [](Package& p) { p.relationships[0].isVirtual = true; },
         {"virtuality of a relation", "", "virtuality of a relation"}},
        {"a friendly generalization",
         [](Package& p) { p.relationships[0].isFriend = true; },
         {"friendship of a relation", "friend", "friendship of a relation"}},
    };
    for (std::size_t i = 0; i < formatNames.size(); ++i) {
        const design::Format& format = *design::formatNamed(formatNames[i]);
        const Outcome plain = outcomeIn(format, everything());
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.what) + ", " + formatNames[i]);
            Design design = everything();
            row.change(design.root.packages[0]);
            const Outcome outcome = outcomeIn(format, design);
            EXPECT_THAT(more(outcome.told, plain.told), ElementsAreArray(wordsIn(row.told[i])));
            if (*row.told[i] == '\0') {
                EXPECT_EQ(more(outcome.lines, plain.lines),
                          more(linesOf(design, format), linesOf(everything(), format)));
            }
        }
    }
}

} // namespace
