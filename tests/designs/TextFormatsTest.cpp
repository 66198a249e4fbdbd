// What a text of diagrams says, and what the report says that it does not.

#include "designs/TextFormats.h"
#include "designs/formats/mermaid/Notation.h"
#include "designs/formats/plantuml/Notation.h"
#include "designs/model/Counts.h"
#include "designs/model/Walk.h"

#include <gmock/gmock.h>
#include <map>

namespace {

using testing::HasSubstr;

// Calls `visit` with the kind and the element for all that is counted and has a name.
template <class Visit>
void forEachCounted(const design::Package& root, const Visit& visit)
{
    design::forEachPackage(root, [&](const design::Package& package) {
        if (&package != &root)
            visit("package", package);
        for (const design::Classifier& classifier : package.classifiers) {
            visit(std::string(design::nameOf(classifier.kind)), classifier);
            for (const design::Attribute& attribute : classifier.attributes)
                visit("attribute", attribute);
            for (const design::Operation& operation : classifier.operations) {
                visit("operation", operation);
                for (const design::Parameter& parameter : operation.parameters)
                    visit("parameter", parameter);
            }
            for (const design::Literal& literal : classifier.literals)
                visit("literal", literal);
        }
        for (const design::Association& association : package.associations)
            visit("association", association);
    });
}

struct TextFormat {
    const char* name;
    std::string (*escaped)(std::string_view text);
};

class TextsOfDiagrams : public testing::TestWithParam<TextFormat> {};

// What is not in the texts is told, one by one.
TEST_P(TextsOfDiagrams, SayEverythingThatIsNotTold)
{
    for (const char* const name : designFiles()) {
        const Texts texts = textsOf(designIn(name), GetParam().name);
        std::map<std::pair<std::string, std::string>, int> left;
        for (const design::ReportEntry& entry : texts.report.leftEntries())
            ++left[{entry.kind, entry.name}];
        const std::string all = texts.all();
        forEachCounted(texts.design.root, [&](const std::string& kind, const design::Element& element) {
            if (left[{kind, element.name}]-- <= 0) {
                EXPECT_THAT(all, HasSubstr(GetParam().escaped(element.name))) << name << ": " << kind;
            }
        });
    }
}

INSTANTIATE_TEST_SUITE_P(
    , TextsOfDiagrams,
    testing::Values(TextFormat{"plantuml", [](std::string_view text) { return design::plantuml::escaped(text); }},
                    TextFormat{"mermaid", [](std::string_view text) { return design::mermaid::escaped(text); }}),
    [](const auto& instance) { return instance.param.name; });

} // namespace
