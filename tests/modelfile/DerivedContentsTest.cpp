#include "modelfile/Loading.h"
#include "support/KivStringPrinting.h"

#include <gmock/gmock.h>
#include <string>

// What a model file does not say by itself: lists that mirror references, and references that are null or repeated.

namespace {

using testing::ElementsAre;

TEST(ModelFile, FillsMirrorsInTheOrderOfTheTraversal)
{
    // The child packages stand first in the file; the model's own contents are met first.
    const LoadedModel loaded = load(model(
        "'childPackages':[{'kind':'package','diagrams':[{'name':'4','elements':['a']}],'modelElements':["
        "{'kind':'generalization','name':'4','supertypes':['a'],'subtypes':['b','a']},"
        "{'kind':'dependency','name':'4','client':'a'},{'kind':'realization','name':'4','client':'a'},"
        "{'kind':'class','keys':[{'name':'4','attributes':['q','x']}]}],'childPackages':[{'diagrams':["
        "{'name':'3','elements':['a']},{'kind':'diagram','name':'other','elements':['a']}]}]}],"
        "'diagrams':[{'name':'9','elements':['b','a']}],'modelElements':["
        "{'kind':'realization','name':'1','client':'a','supplier':'b'},"
        "{'kind':'class','id':'a','attributes':[{'id':'x'}],'keys':[{'name':'1','attributes':['x']},"
        "{'name':'2','kind':'foreignKey','attributes':['x','q']}]},{'kind':'class','id':'b'},"
        "{'kind':'association','roles':[{'qualifiers':[{'id':'q'}]}]},"
        "{'kind':'dependency','name':'1','client':'a'},{'kind':'dependency','name':'2','client':'b','supplier':'a'},"
        "{'kind':'generalization','name':'1','supertypes':['b'],'subtypes':['a','a','b','a']},"
        "{'kind':'generalization','name':'2','supertypes':['a'],'subtypes':['b']}]"));
    const auto names = [](const auto& elements) {
        std::string result;
        for (const auto* const element : elements)
            result += element->getName().text();
        return result;
    };
    const KivModel& model = *loaded.model;
    const auto& a = at<KivClass>(model.modelElements, 1);
    const auto& b = at<KivClass>(model.modelElements, 2);
    EXPECT_EQ(names(a.generalizations), "14");
    EXPECT_EQ(names(b.generalizations), "124");
    EXPECT_EQ(names(a.realizations), "14");
    EXPECT_EQ(names(b.realizations), "");
    EXPECT_EQ(names(a.dependencies), "14");
    EXPECT_EQ(names(b.dependencies), "2");
    EXPECT_EQ(names(a.links), "349") << "child packages before diagrams, and no diagram of another kind";
    EXPECT_EQ(names(b.links), "9");
    EXPECT_EQ(names(a.attributes.at(0)->keys), "124");
    EXPECT_EQ(names(at<KivAssociation>(model.modelElements, 3).roles.at(0)->qualifiers.at(0)->keys), "24");
}

TEST(ModelFile, KeepsOrDropsNullAndRepeatedReferences)
{
    const LoadedModel loaded = load(
        model("'modelElements':[{'kind':'class','id':'a','attributes':[{'id':'x','type':null,'keyMappings':["
              "{'counterpart':'a'},{'key':'k','counterpart':null},{'key':'l','counterpart':'x'},"
              "{'key':'l','counterpart':'a'}]}],'operations':[{'returnType':null}],"
              "'keys':[{'id':'k','attributes':['x',null,'x']},{'id':'l'}]},"
              "{'kind':'association','associationClass':null,'roles':[{'participant':'a','key':null},"
              "{'participant':null},{'participant':'a'}]},"
              "{'kind':'generalization','supertypes':[null,'a','a'],'subtypes':['a',null,'a']},"
              "{'kind':'realization','client':null,'supplier':'a'},{'kind':'dependency','client':'a','supplier':'a'}],"
              "'diagrams':[{'elements':['a',null,'a']}]"));
    const KivModel& model = *loaded.model;
    auto* const a = static_cast<KivClass*>(model.modelElements.at(0));
    KivAttribute* const x = a->attributes.at(0);
    EXPECT_EQ(x->type, nullptr);
    EXPECT_EQ(x->keyMappings.count(), 4U);
    EXPECT_EQ(x->keyMappings.at(0).key, nullptr);
    EXPECT_EQ(x->keyMappings.counterpartOf(nullptr), nullptr);
    EXPECT_EQ(x->keyMappings.counterpartOf(a->keys.at(0)), nullptr);
    EXPECT_EQ(x->keyMappings.counterpartOf(a->keys.at(1)), x) << "the first entry with the key holds";
    EXPECT_EQ(a->operations.at(0)->returnType, nullptr);
    EXPECT_THAT(listOf(a->keys.at(0)->attributes), ElementsAre(x));
    EXPECT_EQ(x->keys.count(), 1U);
    const auto& association = at<KivAssociation>(model.modelElements, 1);
    EXPECT_EQ(association.associationClass, nullptr);
    EXPECT_EQ(association.roles.count(), 3U);
    EXPECT_EQ(association.roles.at(1)->participant, nullptr);
    EXPECT_EQ(association.roles.at(2)->participant, a);
    const auto& generalization = at<KivGeneralization>(model.modelElements, 2);
    EXPECT_THAT(listOf(generalization.supertypes), ElementsAre(nullptr, a, a));
    EXPECT_THAT(listOf(generalization.subtypes), ElementsAre(a, nullptr, a));
    EXPECT_THAT(listOf(a->generalizations), ElementsAre(&generalization));
    EXPECT_TRUE(a->realizations.isEmpty());
    EXPECT_THAT(listOf(a->dependencies), ElementsAre(model.modelElements.at(4)));
    EXPECT_THAT(listOf(at<KivClassDiagram>(model.diagrams, 0).elements), ElementsAre(a));
    EXPECT_THAT(listOf(a->links), ElementsAre(model.diagrams.at(0)));
}

TEST(ModelFile, TakesTheEmptyIdAsAnId)
{
    const LoadedModel loaded = load(model("'types':[{'id':''}],'modelElements':[{'kind':'class','attributes':["
                                          "{'type':''}]}]"));
    EXPECT_EQ(at<KivClass>(loaded.model->modelElements, 0).attributes.at(0)->type, loaded.model->types.at(0));
}

} // namespace
