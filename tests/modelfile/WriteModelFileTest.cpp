#include "kiv/KivConnecting.h"
#include "kiv/KivModelFile.h"

#include "support/ModelTexts.h"

#include <functional>
#include <gmock/gmock.h>
#include <simdjson.h>
#include <sstream>
#include <string>
#include <vector>

namespace {
std::string written(KivModel& model, const KivIdOf& idOf = {})
{
    std::ostringstream stream;
    writeModelFile(model, stream, idOf);
    return stream.str();
}

// What the model of a text is written as.
std::string rewritten(const std::string& text)
{
    return written(*parseModel(text, "m.json").model);
}

TEST(WriteModelFile, WritesTheSameAgain)
{
    const std::string once = rewritten(everything());
    EXPECT_EQ(rewritten(once), once);
    EXPECT_THAT(once,
                testing::HasSubstr(
                    "\n     \"roles\": [\n      {\"name\": \"r1 \u00e9\", "
                    R"("description": "r1 text", "stereotype": "r1 kind", "modelLevel": 3, "notes": ["r1 note", ""], )"
                    "\"participant\": \"class p1 \u00e9/c1 \u00e9\", \"multiplicity\": \"2..n\", "));
}

TEST(WriteModelFile, LeavesOutWhatIsUsual)
{
    EXPECT_EQ(
        rewritten(model("'types':[{}],'childPackages':[{'modelElements':[{'kind':'class','attributes':[{},{}]},"
                        "{'kind':'note','text':'n'}],'diagrams':[{}]}]")),
        "{\n \"format\": \"kiv-model\",\n \"version\": 1,\n \"types\": [\n  {}\n ],\n \"childPackages\": [\n  {\n"
        "   \"modelElements\": [\n    {\n     \"kind\": \"class\",\n     \"attributes\": [\n      {},\n      {}\n"
        "     ]\n    },\n    {\n     \"kind\": \"note\",\n     \"text\": \"n\"\n    }\n   ],\n   \"diagrams\": [\n"
        "    {}\n   ]\n  }\n ]\n}\n");
}

std::string minified(const std::string& text)
{
    simdjson::dom::parser parser;
    return simdjson::minify(parser.parse(text).value());
}

TEST(WriteModelFile, NamesCodesColoursPointsAndMultiplicities)
{
    const struct {
        const char* read;
        const char* written;
    } rows[] = {
        {"'kind':'class','classType':9", "\"classType\":\"interface\""},
        {"'kind':'class','classType':7", "\"classType\":7"},
        {"'kind':'class','visibility':1", "\"visibility\":\"implementation\""},
        {"'kind':'class','visibility':2", "\"visibility\":2"},
        {"'kind':'class','concurrency':3", "\"concurrency\":\"synchronous\""},
        {"'kind':'class','attributes':[{'visibility':2,'containment':0}]",
         "{\"visibility\":\"private\",\"containment\":\"byValue\"}"},
        {"'kind':'association','roles':[{'multiplicity':{'lower':0,'upper':-1}}]", "\"multiplicity\":\"0..n\""},
        {"'kind':'association','roles':[{'multiplicity':{'lower':0}}]", "\"multiplicity\":\"0\""},
        {"'kind':'association','roles':[{'multiplicity':{'lower':-1,'upper':3}}]", "\"multiplicity\":\"n..3\""},
        {"'kind':'association','roles':[{'multiplicity':{'lower':-2,'upper':3}}]", "{\"lower\":-2,\"upper\":3}"},
        {"'kind':'class','projections':[{'diagram':'d','lineColor':255,'fillColor':-1,'fontColor':13434879}]",
         "\"lineColor\":\"#ff0000\",\"fillColor\":-1,\"fontColor\":\"#ffffcc\""},
        {"'kind':'class','projections':[{'diagram':'d','vertices':'(1,-2)\\r\\n(3,4)'}]",
         "\"vertices\":[[1,-2],[3,4]]"},
        {"'kind':'class','projections':[{'diagram':'d','vertices':'(1, 2)'}]", "\"vertices\":\"(1, 2)\""},
        {"'kind':'class','projections':[{'diagram':'d','vertices':'(1,2)\\r\\n(3,'}]",
         "\"vertices\":\"(1,2)\\r\\n(3,\""},
        {"'kind':'class','projections':[{'diagram':'d','vertices':''}]", "\"vertices\":\"\""},
    };
    for (const auto& row : rows) {
        const std::string once =
            rewritten(model("'modelElements':[{" + std::string(row.read) + "}],'diagrams':[{'id':'d'}]"));
        EXPECT_THAT(minified(once), testing::HasSubstr(row.written));
        EXPECT_EQ(rewritten(once), once);
    }
}

TEST(WriteModelFile, ReadsTheNamesThatItWrites)
{
    const LoadedModel loaded =
        parseModel(model("'modelElements':[{'kind':'class','classType':'classUtility','projections':[{'diagram':'d',"
                         "'fillColor':'#FF8001','vertices':[[1,2],[-3,4]]}]},{'kind':'association','roles':["
                         "{'multiplicity':'2..*'},{'multiplicity':{'lower':'n','upper':'*'}},{'multiplicity':'7'}]}],"
                         "'diagrams':[{'id':'d'}]"),
                   "m.json");
    const auto& element = static_cast<const KivClass&>(*loaded.model->modelElements.at(0));
    EXPECT_EQ(element.classType, 4);
    EXPECT_EQ(element.projections.at(0)->fillColor, 0x0180FF);
    EXPECT_EQ(static_cast<const KivRelationshipProjection&>(*element.projections.at(0)).vertices.view(),
              "(1,2)\r\n(-3,4)");
    const auto& roles = static_cast<const KivAssociation&>(*loaded.model->modelElements.at(1)).roles;
    const int bounds[][2] = {{2, -1}, {-1, -1}, {7, 7}};
    for (std::size_t i = 0; i < roles.count(); ++i) {
        EXPECT_TRUE(roles.at(i)->multiplicity.isPresent);
        EXPECT_EQ(roles.at(i)->multiplicity.lower, bounds[i][0]) << i;
        EXPECT_EQ(roles.at(i)->multiplicity.upper, bounds[i][1]) << i;
    }
}

// Two classes of one path, to which something refers, in a model that stands by itself.
struct TwoClasses {
    TwoClasses()
    {
        package->setName("P");
        model.addChildPackage(package);
        for (KivClass* const each : {first, second}) {
            each->setName("C");
            package->modelElements.add(each);
        }
        dependency->client = first;
        dependency->supplier = second;
        package->modelElements.add(dependency);
        first->dependencies.add(dependency);
    }

    KivModel model;
    KivDesignPackage* package = model.create<KivDesignPackage>();
    KivClass* first = model.create<KivClass>();
    KivClass* second = model.create<KivClass>();
    KivDependency* dependency = model.create<KivDependency>();
};

TEST(WriteModelFile, GivesIdsToWhatIsReferredTo)
{
    TwoClasses two;
    EXPECT_THAT(written(two.model), testing::AllOf(testing::HasSubstr("\"id\": \"class P/C\""),
                                                   testing::HasSubstr("\"id\": \"class P/C 2\""),
                                                   testing::HasSubstr("\"client\": \"class P/C\""),
                                                   testing::HasSubstr("\"supplier\": \"class P/C 2\"")));
    const auto idOf = [&](const KivObject& object) {
        return std::string(&object == two.first ? "class P/C" : &object == two.package ? "p" : "");
    };
    EXPECT_THAT(written(two.model, idOf),
                testing::AllOf(testing::HasSubstr("\"id\": \"p\""), testing::HasSubstr("\"client\": \"class P/C\""),
                               testing::HasSubstr("\"supplier\": \"class P/C 2\"")));
}

class HostClass : public KivDesignPackage {};

TEST(WriteModelFile, RefusesWhatAModelFileCannotSay)
{
    const struct {
        std::function<void(TwoClasses&)> change;
        const char* object;
        const char* reason;
    } rows[] = {
        {[](TwoClasses& two) { two.package->modelElements.add(two.first); }, "class P/C",
         "it stands in the model twice"},
        {[](TwoClasses& two) { two.package->modelElements.add(nullptr); }, "package P",
         "it holds nothing where an object belongs"},
        {[](TwoClasses& two) { two.package->modelElements.add(two.model.create<KivAttribute>()); }, "package P",
         "it holds \"\", whose class has no place there in a model file"},
        {[](TwoClasses& two) {
             static HostClass host;
             host.setName("H");
             two.package->addChildPackage(&host);
         },
         "package P", "it holds \"H\", whose class has no place there in a model file"},
        {[](TwoClasses& two) { two.second->description = "caf\xe9"; }, "class P/C",
         "its description holds bytes that are no UTF-8"},
        {[](TwoClasses& two) { two.dependency->supplier = two.model.create<KivClass>(); }, "dependency P/",
         "it refers to an object that stands nowhere in the model"},
        {[](TwoClasses& two) { two.second->dependencies.add(two.dependency); }, "class P/C",
         "its dependencies are not those, or not in the order, of a pass over the model"},
        {[](TwoClasses& two) { two.first->dependencies.removeAll(); }, "class P/C",
         "its dependencies are not those, or not in the order, of a pass over the model"},
        {[](TwoClasses& two) { two.package->diagrams.add(two.model.create<KivClassDiagram>()); }, "diagram P/",
         "its package is not the one that lists it"},
        {[](TwoClasses& two) { two.model.modelLevel = 2; }, "the model",
         "a model has no notes, no projections and no level in a model file"},
        {[](TwoClasses& two) { two.first->projections.add(two.model.create<KivProjection>()); }, "class P/C",
         "a projection of it is on no diagram, or of a class of the host's own"},
    };
    for (const auto& row : rows) {
        TwoClasses two;
        row.change(two);
        std::ostringstream refused;
        try {
            writeModelFile(two.model, refused);
            ADD_FAILURE() << row.reason;
        } catch (const ModelFileLossError& error) {
            EXPECT_EQ(error.what(), std::string(row.object) + ": " + row.reason);
        }
        EXPECT_EQ(refused.str(), "");
        std::ostringstream stream;
        const std::vector<ModelFileLoss> losses = writeModelFileWithLosses(two.model, stream);
        ASSERT_EQ(losses.size(), 1U) << row.reason;
        EXPECT_EQ(losses[0].object, row.object);
        EXPECT_EQ(losses[0].reason, row.reason);
        EXPECT_NO_THROW(static_cast<void>(parseModel(stream.str(), "m.json"))) << stream.str();
    }
}

TEST(WriteModelFile, WritesALargeModelInPieces)
{
    KivModel model;
    auto* const package = model.create<KivDesignPackage>();
    model.addChildPackage(package);
    for (int i = 0; i < 20000; ++i) {
        auto* const element = model.create<KivClass>();
        element->setName(KivString(std::to_string(i)));
        package->modelElements.add(element);
    }
    const std::string text = written(model);
    EXPECT_EQ(parseModel(text, "m.json").objects, 20002U);
    EXPECT_EQ(rewritten(text), text);
}

} // namespace
