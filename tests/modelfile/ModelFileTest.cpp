#include "modelfile/Loading.h"
#include "support/KivStringPrinting.h"

#include <functional>
#include <gmock/gmock.h>
#include <simdjson.h>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;

void expectShared(const KivModelObject& object, const std::string& id)
{
    EXPECT_EQ(object.getName().view(), id + " \u00e9");
    EXPECT_EQ(object.description.view(), id + " text");
    EXPECT_EQ(object.stereotype.view(), id + " kind");
    EXPECT_EQ(object.modelLevel, 3) << id;
    ASSERT_EQ(object.notes.count(), 2U) << id;
    EXPECT_EQ(object.notes.at(0)->getText().view(), id + " note");
    ASSERT_FALSE(object.projections.isEmpty()) << id;
    EXPECT_EQ(object.projections.at(0)->y, static_cast<int>(id.size())) << id;
    EXPECT_EQ(object.projections.at(0)->diagram->getName(), "cd \u00e9") << id;
}

void expectArgument(const KivArgument& argument, const std::string& id)
{
    expectShared(argument, id);
    EXPECT_EQ(argument.position, -32768);
    EXPECT_EQ(argument.type->getName(), "t1 \u00e9");
    EXPECT_EQ(argument.initialValue, "= 1");
}

void expectAttribute(const KivAttribute& attribute, const std::string& id)
{
    expectShared(attribute, id);
    EXPECT_EQ(attribute.position, -32768);
    EXPECT_EQ(attribute.type->getName(), "t1 \u00e9");
    EXPECT_EQ(attribute.initialValue, "= 1");
    EXPECT_THAT(
        (std::vector<int>{attribute.visibility, attribute.containment, attribute.isStatic, attribute.isDerived}),
        ElementsAre(1, 0, 1, 1));
}

void expectTypes(const KivModel& model)
{
    const auto& type = at<KivType>(model.types, 0);
    expectShared(type, "t1");
    EXPECT_EQ(type.elementType, KivElementType::BaseType);
    EXPECT_EQ(type.dataType, "CHAR");
    EXPECT_EQ(type.length, 2);
    EXPECT_EQ(type.scale, -3);
    expectShared(*type.typeValues.at(0), "v1");
    EXPECT_EQ(type.typeValues.at(0)->value, "v");
    EXPECT_EQ(type.typeValues.at(0)->position, 9);
    expectShared(*model.types.at(1), "t2");
    EXPECT_EQ(model.types.at(1)->elementType, KivElementType::DerivedType);
}

void expectClass(const KivClass& class_, const KivModel& model)
{
    expectShared(class_, "c1");
    EXPECT_THAT((std::vector<int>{class_.classType, class_.visibility, class_.concurrency, class_.space,
                                  class_.isAbstract, class_.isPersistent}),
                ElementsAre(9, 1, 2, 4, 1, 1));
    EXPECT_EQ(class_.cardinality, "0..n");
    expectAttribute(*class_.attributes.at(0), "a1");
    EXPECT_EQ(class_.attributes.at(0)->keyMappings.counterpartOf(class_.keys.at(0)), model.types.at(0));
    const auto& operation = *class_.operations.at(0);
    expectShared(operation, "o1");
    EXPECT_EQ(operation.position, 32767);
    EXPECT_THAT((std::vector<int>{operation.visibility, operation.concurrency, operation.isAbstract, operation.isFriend,
                                  operation.isStatic, operation.isVirtual}),
                ElementsAre(1, 2, 1, 1, 1, 1));
    EXPECT_THAT((std::vector<KivString>{operation.semantics, operation.preCondition, operation.postCondition}),
                ElementsAre("sem", "pre", "post"));
    EXPECT_EQ(operation.returnType, model.types.at(1));
    expectArgument(*operation.arguments.at(0), "x1");
    expectArgument(*class_.parameters.at(0), "y1");
    expectShared(*class_.keys.at(0), "k1");
    EXPECT_EQ(class_.keys.at(0)->elementType, KivElementType::ForeignKey);
    EXPECT_EQ(class_.keys.at(1)->elementType, KivElementType::CandidateKey);
    EXPECT_EQ(class_.keys.at(0)->attributes.at(0), class_.attributes.at(1));
}

void expectRelationships(const KivPackage& package)
{
    auto* const class_ = package.modelElements.at(0);
    const auto& association = at<KivAssociation>(package.modelElements, 1);
    expectShared(association, "as");
    EXPECT_TRUE(association.isAggregation);
    EXPECT_EQ(association.constraint, "{a}");
    EXPECT_EQ(association.associationClass, class_);
    const KivAssociationRole& role = *association.roles.at(0);
    expectShared(role, "r1");
    EXPECT_EQ(role.participant, class_);
    EXPECT_EQ(role.key, static_cast<KivClass*>(class_)->keys.at(0));
    EXPECT_EQ(role.constraint, "{r}");
    EXPECT_THAT((std::vector<int>{role.multiplicity.lower, role.multiplicity.upper, role.multiplicity.isPresent,
                                  role.isAggregateEnd, role.isNavigable, role.isStatic, role.isFriend, role.visibility,
                                  role.containment}),
                ElementsAre(2, -1, 1, 1, 1, 1, 1, 1, 0));
    expectAttribute(*role.qualifiers.at(0), "q1");
    EXPECT_EQ(role.key->attributes.at(1), role.qualifiers.at(0));

    const auto& generalization = at<KivGeneralization>(package.modelElements, 2);
    expectShared(generalization, "ge");
    EXPECT_THAT((std::vector<int>{generalization.visibility, generalization.isVirtual, generalization.isFriend}),
                ElementsAre(2, 1, 1));
    EXPECT_THAT(listOf(generalization.supertypes), ElementsAre(class_, nullptr));
    EXPECT_THAT(listOf(generalization.subtypes), ElementsAre(nullptr, class_));
    auto* const other = package.modelElements.at(5);
    const auto& dependency = at<KivDependency>(package.modelElements, 3);
    expectShared(dependency, "de");
    EXPECT_EQ(dependency.client, class_);
    EXPECT_EQ(dependency.supplier, other);
    const auto& realization = at<KivRealization>(package.modelElements, 4);
    expectShared(realization, "re");
    EXPECT_EQ(realization.client, other);
    EXPECT_EQ(realization.supplier, class_);
}

void expectLineProjection(const KivProjection& projection)
{
    ASSERT_EQ(projection.elementType, KivElementType::RelationshipProjection);
    EXPECT_EQ(static_cast<const KivRelationshipProjection&>(projection).vertices, "(1,2)\r\n(3,4)");
    EXPECT_EQ(projection.fontName, "Mono");
    EXPECT_THAT((std::vector<int>{projection.x, projection.y, projection.width, projection.height, projection.lineColor,
                                  projection.fillColor, projection.fontColor, projection.fontSize}),
                ElementsAre(1, -2, 3, 4, 5, 6, 7, 8));
}

void expectEverything(const std::string& text)
{
    const LoadedModel loaded = load(text);
    const KivModel& model = *loaded.model;
    EXPECT_EQ(loaded.bytes, text.size());
    EXPECT_EQ(loaded.objects, 23U);
    EXPECT_THAT((std::vector<KivString>{model.getName(), model.description, model.stereotype}),
                ElementsAre("M", "MD", "MS"));
    expectTypes(model);
    EXPECT_EQ(at<KivNote>(model.modelElements, 0).getText(), "loose");
    expectShared(*model.diagrams.at(0), "od");
    EXPECT_EQ(model.diagrams.at(0)->elementType, KivElementType::Diagram);
    const KivPackage& package = *model.childPackages.at(0);
    expectShared(package, "p1");
    EXPECT_EQ(package.elementType, KivElementType::DesignPackage);
    EXPECT_EQ(package.getParent(), &model);
    expectShared(*package.childPackages.at(0), "p2");
    EXPECT_EQ(package.childPackages.at(0)->elementType, KivElementType::Package);
    ASSERT_EQ(package.modelElements.count(), 6U);
    expectClass(at<KivClass>(package.modelElements, 0), model);
    expectRelationships(package);
    expectLineProjection(*at<KivClass>(package.modelElements, 5).projections.at(0));
    const auto& diagram = at<KivClassDiagram>(package.diagrams, 0);
    expectShared(diagram, "cd");
    EXPECT_EQ(diagram.package, &package);
    EXPECT_THAT(listOf(diagram.elements),
                ElementsAre(package.modelElements.at(4), package.modelElements.at(0), package.modelElements.at(1)));
}

struct Spelling {
    bool isReversed = false; // the keys of each object
    bool isEscaped = false;  // every character that can be
    std::string space = {};  // between any two tokens
};

std::string spelled(std::string_view text, const Spelling& spelling)
{
    std::string result = "\"";
    for (const char byte : text) {
        constexpr const char* digits = "0123456789aBcDeF";
        const auto code = static_cast<unsigned char>(byte);
        if (code < 0x20U || (spelling.isEscaped && code < 0x80U))
            result.append("\\u00").append(1, digits[code >> 4U]).append(1, digits[code & 0xFU]);
        else
            result += byte;
    }
    return result + "\"";
}

// The same JSON, written in another way.
std::string rewritten(const simdjson::dom::element& value, const Spelling& spelling)
{
    if (value.is_string())
        return spelled(value.get_string().value_unsafe(), spelling);
    if (!value.is_object() && !value.is_array())
        return simdjson::minify(value);
    std::vector<std::string> parts;
    if (value.is_object()) {
        const simdjson::dom::object object = value.get_object().value_unsafe();
        for (const auto& [key, each] : object)
            parts.push_back(spelled(key, spelling) + spelling.space + ":" + rewritten(each, spelling));
    } else {
        const simdjson::dom::array array = value.get_array().value_unsafe();
        for (const simdjson::dom::element each : array)
            parts.push_back(rewritten(each, spelling));
    }
    if (value.is_object() && spelling.isReversed)
        std::reverse(parts.begin(), parts.end());
    std::string result = spelling.space;
    for (const std::string& part : parts)
        result.append(&part == parts.data() ? "" : ",").append(spelling.space + part + spelling.space);
    return (value.is_object() ? "{" + result + "}" : "[" + result + "]") + spelling.space;
}

std::string rewrittenByWriter()
{
    std::ostringstream stream;
    writeModelFile(*load(everything()).model, stream);
    return stream.str();
}

TEST(ModelFile, ReadsEveryKeyHoweverItIsWritten)
{
    simdjson::dom::parser parser;
    const simdjson::dom::element json = parser.parse(everything()).value();
    const struct {
        const char* name;
        std::string text;
    } rows[] = {{"as it is", everything()},
                {"in reverse order", rewritten(json, {.isReversed = true})},
                {"escaped", rewritten(json, {.isEscaped = true})},
                {"reversed and escaped", rewritten(json, {.isReversed = true, .isEscaped = true})},
                {"with white space", rewritten(json, {.space = " \r\n\t"})},
                {"written again", rewrittenByWriter()},
                {"behind a byte order mark", "\xEF\xBB\xBF" + everything() + "\n"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        expectEverything(row.text);
    }
}

TEST(ModelFile, TakesEachFlagFromItsOwnKey)
{
    using Flags = std::vector<bool>;
    const struct {
        const char* around; // & stands for the key
        std::vector<std::string> keys;
        std::function<Flags(const KivObject&)> flags;
    } rows[] = {
        {"{'kind':'class',&}",
         {"isAbstract", "isPersistent"},
         [](const KivObject& object) {
             const auto& class_ = static_cast<const KivClass&>(object);
             return Flags{class_.isAbstract, class_.isPersistent};
         }},
        {"{'kind':'class','attributes':[{&}]}",
         {"isStatic", "isDerived"},
         [](const KivObject& object) {
             const KivAttribute& attribute = *static_cast<const KivClass&>(object).attributes.at(0);
             return Flags{attribute.isStatic, attribute.isDerived};
         }},
        {"{'kind':'class','operations':[{&}]}",
         {"isAbstract", "isFriend", "isStatic", "isVirtual"},
         [](const KivObject& object) {
             const KivOperation& operation = *static_cast<const KivClass&>(object).operations.at(0);
             return Flags{operation.isAbstract, operation.isFriend, operation.isStatic, operation.isVirtual};
         }},
        {"{'kind':'association',&}",
         {"isAggregation"},
         [](const KivObject& object) { return Flags{static_cast<const KivAssociation&>(object).isAggregation}; }},
        {"{'kind':'association','roles':[{&}]}",
         {"isAggregateEnd", "isNavigable", "isStatic", "isFriend"},
         [](const KivObject& object) {
             const KivAssociationRole& role = *static_cast<const KivAssociation&>(object).roles.at(0);
             return Flags{role.isAggregateEnd, role.isNavigable, role.isStatic, role.isFriend};
         }},
        {"{'kind':'generalization',&}", {"isVirtual", "isFriend"}, [](const KivObject& object) {
             const auto& generalization = static_cast<const KivGeneralization&>(object);
             return Flags{generalization.isVirtual, generalization.isFriend};
         }}};
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.keys.size(); ++i)
            for (const bool value : {true, false}) {
                const std::string key = "'" + row.keys[i] + (value ? "':true" : "':false");
                const LoadedModel loaded = load(model("'modelElements':[" + with(row.around, "&", key) + "]"));
                Flags expected(row.keys.size());
                expected[i] = value;
                EXPECT_EQ(row.flags(*loaded.model->modelElements.at(0)), expected) << row.around << ' ' << key;
            }
}

TEST(ModelFile, GivesKeysThatAreLeftOutTheirDefaults)
{
    const LoadedModel loaded =
        load(model("'types':[{},{}],'childPackages':[{}],'diagrams':[{'id':'d'}],'modelElements':["
                   "{'kind':'class','attributes':[{},{}],'operations':[{'arguments':[{},{}]},{}],'parameters':[{},{}],"
                   "'keys':[{}],'projections':[{'diagram':'d'},{'diagram':'d','vertices':''}]},"
                   "{'kind':'association','roles':[{},{'multiplicity':{}},{'multiplicity':{'lower':0}},"
                   "{'multiplicity':{'upper':5}}]},{'kind':'generalization'},{'kind':'dependency'},{'kind':'note'}]"));
    const KivModel& model = *loaded.model;
    EXPECT_EQ(loaded.objects, 22U);
    const auto& class_ = at<KivClass>(model.modelElements, 0);
    EXPECT_THAT((std::vector<int>{class_.classType, class_.visibility, class_.concurrency, class_.space,
                                  class_.isAbstract, class_.isPersistent, class_.modelLevel}),
                ElementsAre(1, 0, 0, 0, 0, 0, 0));
    const KivAttribute& attribute = *class_.attributes.at(0);
    EXPECT_THAT(
        (std::vector<int>{attribute.visibility, attribute.containment, attribute.isStatic, attribute.isDerived}),
        ElementsAre(0, 2, 0, 0));
    const KivOperation& operation = *class_.operations.at(0);
    EXPECT_THAT((std::vector<int>{operation.visibility, operation.concurrency, operation.isAbstract, operation.isFriend,
                                  operation.isStatic, operation.isVirtual}),
                ElementsAre(0, 0, 0, 0, 0, 0));
    EXPECT_THAT((std::vector<const void*>{attribute.type, operation.returnType, class_.parameters.at(0)->type}),
                testing::Each(nullptr));
    EXPECT_THAT((std::vector<int>{class_.attributes.at(1)->position, class_.operations.at(1)->position,
                                  operation.arguments.at(1)->position, class_.parameters.at(1)->position,
                                  class_.attributes.at(0)->position}),
                ElementsAre(1, 1, 1, 1, 0));
    EXPECT_EQ(class_.keys.at(0)->elementType, KivElementType::CandidateKey);
    EXPECT_EQ(model.types.at(0)->elementType, KivElementType::BaseType);
    EXPECT_EQ(model.childPackages.at(0)->elementType, KivElementType::DesignPackage);
    EXPECT_EQ(model.diagrams.at(0)->elementType, KivElementType::ClassDiagram);
    EXPECT_EQ(at<KivClassDiagram>(model.diagrams, 0).package, &model);

    const KivProjection& projection = *class_.projections.at(0);
    EXPECT_EQ(projection.elementType, KivElementType::Projection);
    EXPECT_EQ(projection.fontName, "Arial");
    EXPECT_THAT((std::vector<int>{projection.x, projection.y, projection.width, projection.height, projection.lineColor,
                                  projection.fillColor, projection.fontColor, projection.fontSize}),
                ElementsAre(0, 0, 0, 0, 3342489, 13434879, 0, 10));
    EXPECT_EQ(class_.projections.at(1)->elementType, KivElementType::RelationshipProjection);

    std::vector<std::vector<int>> multiplicities;
    for (const KivAssociationRole* const role : at<KivAssociation>(model.modelElements, 1).roles)
        multiplicities.push_back({role->multiplicity.isPresent, role->multiplicity.lower, role->multiplicity.upper});
    EXPECT_THAT(multiplicities,
                ElementsAre(ElementsAre(0, 0, 0), ElementsAre(0, 0, 0), ElementsAre(1, 0, 0), ElementsAre(1, 0, 5)));
    const KivAssociationRole& role = *at<KivAssociation>(model.modelElements, 1).roles.at(0);
    EXPECT_THAT((std::vector<int>{role.visibility, role.containment, role.isNavigable}), ElementsAre(0, 2, 0));
    EXPECT_TRUE(!role.participant && !role.key && !at<KivAssociation>(model.modelElements, 1).associationClass);
    EXPECT_EQ(at<KivDependency>(model.modelElements, 3).client, nullptr);
    EXPECT_EQ(at<KivNote>(model.modelElements, 4).getText(), "");
}

TEST(ModelFile, CountsDefaultPositionsUpToTheLast)
{
    std::string literals = "{}";
    for (int i = 1; i < 32770; ++i)
        literals += ",{}";
    const LoadedModel loaded = load(model("'types':[{'typeValues':[" + literals + "]}]"));
    const auto& values = loaded.model->types.at(0)->typeValues;
    for (const auto& [index, position] : {std::pair(0, 0), {7, 7}, {32767, 32767}, {32768, 32767}, {32769, 32767}})
        EXPECT_EQ(values.at(static_cast<std::size_t>(index))->position, position) << index;
}

} // namespace
