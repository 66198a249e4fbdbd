#include "modelfile/Loading.h"

#include <gmock/gmock.h>
#include <simdjson.h>
#include <string>

// Texts that nobody writes by mistake: too deep, too long, cut or with single bytes changed.

namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(ModelFileErrors, LimitsTheDepthOfPackages)
{
    // Each level has two packages of one name; the second one goes on.
    const auto nested = [](int depth) {
        std::string inside = "'modelElements':[{'kind':'class','attributes':[{'name':'deepest'}]}]";
        for (int level = depth; level > 0; --level) {
            const std::string name = "{'name':'p" + std::to_string(level) + "'";
            inside = "'childPackages':[" + name + "}," + name + "," + inside + "}]";
        }
        return model(inside);
    };
    const LoadedModel loaded = parseModel(nested(512), "m.json");
    const KivPackage* package = loaded.model.get();
    while (!package->childPackages.isEmpty())
        package = package->childPackages.at(1);
    EXPECT_EQ(package->getName(), "p512");
    const auto* const deepest = static_cast<const KivClass*>(package->modelElements.at(0));
    EXPECT_EQ(deepest->attributes.at(0)->getName(), "deepest");
    std::string place;
    for (int level = 1; level <= 512; ++level)
        place += "/childPackages/1";
    for (const int depth : {513, 514, 5000})
        expectComplaint(nested(depth), place + "/childPackages/0", "'p513'");
}

TEST(ModelFileErrors, SurvivesEndlessBrackets)
{
    const std::string lists(100'000, '[');
    for (const char* const start : {"{'types':", "{'childPackages':[{'name':", "{'x':", "{'childPackages':[{'x':"})
        EXPECT_THAT(complaintAbout(json(start) + lists), StartsWith("m.json:")) << start;
    EXPECT_THAT(complaintAbout(std::string(100'000, '{')), StartsWith("m.json:"));
}

TEST(ModelFileErrors, SurvivesALongKeyWithAnEscape)
{
    const std::string key = std::string(3'000'000, 'k') + "\\n";
    for (const char* const around :
         {"'modelElements':[{'&':0,'kind':'class'}]", "'types':[{'projections':[{'&':0,'diagram':'d'}]}]", "'&':0"})
        EXPECT_THAT(complaintAbout(model(with(around, "&", key))).substr(0, 20), StartsWith("m.json:")) << around;
}

// Another mistake comes to light first: that the design is no object, that it is not the end.
TEST(ModelFileErrors, SaysThatTheJsonIsBrokenBeforeAnotherMistake)
{
    for (const char* const text : {"1\f8", "true\f", "nul", "-", "1e\f[", "\"a\" \f 8", "[\f]"})
        EXPECT_THAT(complaintAbout(text), StartsWith("m.json:1:")) << text;
    EXPECT_THAT(complaintAbout("1\f8"), HasSubstr("which is no number in JSON"));
}

TEST(ModelFileErrors, RefusesATextThatIsCutAnywhere)
{
    const std::string text = everything();
    for (std::size_t length = 0; length < text.size(); ++length) {
        const std::string complaint = complaintAbout(text.substr(0, length));
        ASSERT_THAT(complaint, StartsWith("m.json:")) << "cut at " << length;
        ASSERT_TRUE(simdjson::validate_utf8(complaint)) << "cut at " << length;
    }
}

TEST(ModelFileErrors, IsAsStrictAboutJsonAsAnotherReader)
{
    const std::string text = everything();
    simdjson::dom::parser other;
    const std::string hostile("\0\"\\}],0\xFF", 8);
    for (std::size_t place = 0; place < text.size(); ++place)
        for (const char byte : hostile) {
            std::string changed = text;
            changed[place] = byte;
            const std::string complaint = complaintAbout(changed);
            const bool isJson = other.parse(changed).error() == simdjson::SUCCESS;
            ASSERT_TRUE(isJson || !complaint.empty()) << place << ' ' << testing::PrintToString(byte);
            ASSERT_FALSE(isJson && complaint.find("well-formed") != complaint.npos) << place << ' ' << complaint;
            ASSERT_TRUE(simdjson::validate_utf8(complaint)) << place << ' ' << complaint;
        }
}

} // namespace
