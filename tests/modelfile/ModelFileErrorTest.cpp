#include "modelfile/Loading.h"
#include "modelfile/read/Tables.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <simdjson.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct ObjectKind {
    std::string name;   // as the reader calls it
    std::string around; // the model around the object's keys, which stand at &
    std::string place;
    std::vector<std::string> required; // keys and values without which there is no such object
    std::string keys;                  // each with the kind of value it takes; `shared` stands for those of all objects
};

constexpr const char* sharedKeys =
    "id=id name=text description=text stereotype=text modelLevel=int notes=list projections=list";

const ObjectKind objectKinds[] = {
    {"model",
     "{&}",
     "",
     {"'format':'kiv-model'", "'version':1"},
     "$schema=text name=text description=text stereotype=text types=list childPackages=list modelElements=list "
     "diagrams=list format=format version=version"},
    {"type",
     model("'types':[{&}]"),
     "/types/0",
     {},
     "shared kind=kind dataType=text length=int scale=int typeValues=list"},
    {"typeValue",
     model("'types':[{'typeValues':[{&}]}]"),
     "/types/0/typeValues/0",
     {},
     "shared value=text position=short"},
    {"package",
     model("'childPackages':[{&}]"),
     "/childPackages/0",
     {},
     "shared kind=kind modelElements=list childPackages=list diagrams=list"},
    {"note", model("'modelElements':[{&}]"), "/modelElements/0", {"'kind':'note'"}, "id=id kind=kind text=text"},
    {"class",
     model("'modelElements':[{&}]"),
     "/modelElements/0",
     {"'kind':'class'"},
     "shared kind=kind classType=code visibility=code concurrency=code space=int isAbstract=bool isPersistent=bool "
     "cardinality=text attributes=list operations=list parameters=list keys=list"},
    {"attribute",
     modelOfClass("'attributes':[{&}]"),
     "/modelElements/0/attributes/0",
     {},
     "shared position=short type=reference initialValue=text visibility=code containment=code isStatic=bool "
     "isDerived=bool keyMappings=list"},
    {"keyMapping",
     modelOfClass("'attributes':[{'keyMappings':[{&}]}]"),
     "/modelElements/0/attributes/0/keyMappings/0",
     {},
     "key=reference counterpart=reference"},
    {"operation",
     modelOfClass("'operations':[{&}]"),
     "/modelElements/0/operations/0",
     {},
     "shared position=short visibility=code concurrency=code isAbstract=bool isFriend=bool isStatic=bool "
     "isVirtual=bool "
     "semantics=text preCondition=text postCondition=text returnType=reference arguments=list"},
    {"argument",
     modelOfClass("'operations':[{'arguments':[{&}]}]"),
     "/modelElements/0/operations/0/arguments/0",
     {},
     "shared position=short type=reference initialValue=text"},
    {"key", modelOfClass("'keys':[{&}]"), "/modelElements/0/keys/0", {}, "shared kind=kind attributes=list"},
    {"association",
     model("'modelElements':[{&}]"),
     "/modelElements/0",
     {"'kind':'association'"},
     "shared kind=kind isAggregation=bool constraint=text associationClass=reference roles=list"},
    {"role",
     model("'modelElements':[{'kind':'association','roles':[{&}]}]"),
     "/modelElements/0/roles/0",
     {},
     "shared participant=reference multiplicity=multiplicity isAggregateEnd=bool isNavigable=bool isStatic=bool "
     "isFriend=bool visibility=code containment=code constraint=text key=reference qualifiers=list"},
    {"multiplicity",
     model("'modelElements':[{'kind':'association','roles':[{'multiplicity':{&}}]}]"),
     "/modelElements/0/roles/0/multiplicity",
     {},
     "lower=code upper=code"},
    {"generalization",
     model("'modelElements':[{&}]"),
     "/modelElements/0",
     {"'kind':'generalization'"},
     "shared kind=kind supertypes=list subtypes=list visibility=code isVirtual=bool isFriend=bool"},
    {"dependency",
     model("'modelElements':[{&}]"),
     "/modelElements/0",
     {"'kind':'dependency'"},
     "shared kind=kind client=reference supplier=reference"},
    {"realization",
     model("'modelElements':[{&}]"),
     "/modelElements/0",
     {"'kind':'realization'"},
     "shared kind=kind client=reference supplier=reference"},
    {"diagram", model("'diagrams':[{&}]"), "/diagrams/0", {}, "shared kind=kind elements=list"},
    {"projection",
     model("'diagrams':[{'id':'d'}],'types':[{'projections':[{&}]}]"),
     "/types/0/projections/0",
     {"'diagram':'d'"},
     "diagram=diagram x=int y=int width=int height=int lineColor=code fillColor=code fontColor=code fontName=text "
     "fontSize=int vertices=points"}};

struct Values {
    std::vector<std::string> right;
    std::vector<std::string> wrong;
};

Values valuesOf(const std::string& kind)
{
    const std::string digits(1000, '1');
    if (kind == "text")
        return {{"''", "'x'"}, {"null", "true", "1", "[]", "{}", "'a\\u0000b'", "'\\ud800'", "'\\udc00'"}};
    if (kind == "id")
        return {{"''", "'x'"}, {"null", "false", "1", "[]", "{}"}};
    if (kind == "int")
        return {{"0", "-0", "-1", "-2147483648", "2147483647"},
                {"null", "true", "'1'", "[]", "{}", "1.5", "1.0", "1e0", "2147483648", "-2147483649",
                 "9223372036854775808", digits}};
    if (kind == "code")
        return {{"0", "-1", "2147483647"},
                {"null", "true", "'Public'", "'#ff00'", "'#-00000'", "[]", "{}", "1.5", digits}};
    if (kind == "points")
        return {{"''", "'x'", "[]", "[[1,-2],[3,4]]"}, {"null", "true", "1", "{}"}};
    if (kind == "multiplicity")
        return {{"{}", "'1'", "'0..n'", "'*'"},
                {"null", "false", "0", "'x'", "'1..'", "'..1'", "'-1'", "'1...2'", "[]"}};
    if (kind == "short")
        return {{"0", "-32768", "32767"},
                {"null", "false", "'1'", "[]", "{}", "0.0", "1E2", "32768", "-32769", digits}};
    if (kind == "bool")
        return {{"true", "false"}, {"null", "0", "1", "'true'", "[]", "{}"}};
    if (kind == "list")
        return {{"[]"}, {"null", "false", "0", "'x'", "{}"}};
    if (kind == "object")
        return {{"{}"}, {"null", "false", "0", "'x'", "[]"}};
    if (kind == "reference")
        return {{"null"}, {"false", "0", "[]", "{}", "'nowhere'", "''"}};
    if (kind == "diagram")
        return {{"'d'"}, {"null", "false", "0", "[]", "{}", "'nowhere'"}};
    if (kind == "kind")
        return {{}, {"null", "true", "1", "[]", "{}", "''", "'Class'", "'unknown'"}};
    if (kind == "format")
        return {{"'kiv-model'", "'kiv-m\\u006fdel'"}, {"null", "1", "''", "'kiv-model '"}};
    return {{"1"}, {"null", "0", "2", "1.0", "1e0", "'1'", "[]"}};
}

// The model in which such an object has these keys.
std::string withKeys(const ObjectKind& kind, std::string keys)
{
    for (const std::string& required : kind.required)
        if (keys.find(required.substr(0, required.find(':') + 1)) == keys.npos)
            keys += (keys.empty() ? "" : ",") + required;
    return json(with(kind.around, "&", keys));
}

TEST(ModelFileErrors, HasTheKeysOfEachKindOfObjectAndNoOther)
{
    const std::vector<modelfile::ObjectKeys> known = modelfile::modelFileKeys();
    ASSERT_EQ(known.size(), std::size(objectKinds));
    for (const ObjectKind& kind : objectKinds) {
        std::vector<std::string> keys;
        const bool hasShared = kind.keys.starts_with("shared");
        std::istringstream words(hasShared ? with(kind.keys, "shared", sharedKeys) : kind.keys);
        for (std::string word; words >> word;) {
            const std::string key = word.substr(0, word.find('='));
            const std::string place = kind.place + "/" + key;
            keys.push_back(key);
            const Values values = valuesOf(word.substr(word.find('=') + 1));
            for (const std::string& value : values.right)
                EXPECT_EQ(complaintAbout(withKeys(kind, "'" + key + "':" + value)), "") << kind.name;
            for (const std::string& value : values.wrong)
                expectComplaint(withKeys(kind, "'" + key + "':" + value), place, "found");
            if (values.right.empty())
                continue;
            const std::string keyAndValue = "'" + key + "':" + values.right[0];
            expectComplaint(withKeys(kind, keyAndValue + "," + keyAndValue), place, "again");
            const std::string slip = key.substr(0, key.size() - 1) + "#";
            expectComplaint(withKeys(kind, "'" + slip + "':1"), kind.place + "/" + slip, "unknown key");
        }
        expectComplaint(withKeys(kind, "'completelyDifferent':null"), kind.place + "/completelyDifferent",
                        "the unknown key 'completelyDifferent'");
        const auto found = std::find_if(known.begin(), known.end(), [&](const modelfile::ObjectKeys& each) {
            return each.objectKind == kind.name;
        });
        ASSERT_NE(found, known.end()) << kind.name;
        EXPECT_THAT(keys, testing::UnorderedElementsAreArray(found->keys)) << kind.name;
    }
}

TEST(ModelFileErrors, NamesThePointThatIsNone)
{
    const struct {
        const char* vertices;
        const char* place;
        const char* complaint;
    } rows[] = {{"[1]", "/vertices/0", "a list"},
                {"[[1,2],[1]]", "/vertices/1", "a point [x, y], found a list of 1"},
                {"[[1,2,3]]", "/vertices/0", "a point [x, y], found a list of 3"},
                {"[['1',2]]", "/vertices/0/0", "an integer"}};
    for (const auto& row : rows)
        expectComplaint(model("'diagrams':[{'id':'d','projections':[{'diagram':'d','vertices':" +
                              std::string(row.vertices) + "}]}]"),
                        std::string("/diagrams/0/projections/0") + row.place, row.complaint);
}

TEST(ModelFileErrors, RefersOnlyToWhatThePlaceAllows)
{
    const std::string one =
        "'types':[{'id':'type','typeValues':[{'id':'literal'}]}],'childPackages':[{'id':'package','modelElements':["
        "{'kind':'class','id':'class','attributes':[{'id':'attribute'}],'operations':[{'id':'operation','arguments':["
        "{'id':'argument'}]}],'parameters':[{'id':'parameter'}],'keys':[{'id':'key'},{'id':'foreignKey','kind':"
        "'foreignKey'}]},{'kind':'association','id':'association','roles':[{'id':'role','qualifiers':[{'id':"
        "'qualifier'}]}]},{'kind':'generalization','id':'generalization'},{'kind':'dependency','id':'dependency'},"
        "{'kind':'realization','id':'realization'},{'kind':'note','id':'note'}],'diagrams':[{'id':'classDiagram'},"
        "{'id':'diagram','kind':'diagram'}]}]";
    const std::vector<std::string> elements = {"class", "association", "generalization", "dependency", "realization"};
    const std::vector<std::string> numbered = {
        "type",      "literal",        "package",    "class",       "attribute",  "operation",
        "argument",  "parameter",      "key",        "role",        "foreignKey", "association",
        "qualifier", "generalization", "dependency", "realization", "diagram",    "classDiagram"};
    std::vector<std::string> all = numbered;
    all.push_back("note");
    const struct {
        const char* keys; // & stands for the reference
        const char* place;
        std::vector<std::string> allowed;
    } rows[] = {
        {"'modelElements':[{'kind':'class','attributes':[{'type':&}]}]",
         "/modelElements/0/attributes/0/type",
         {"type"}},
        {"'modelElements':[{'kind':'class','parameters':[{},{'type':&}]}]",
         "/modelElements/0/parameters/1/type",
         {"type"}},
        {"'modelElements':[{'kind':'class','operations':[{'returnType':&}]}]",
         "/modelElements/0/operations/0/returnType",
         {"type"}},
        {"'modelElements':[{'kind':'class','operations':[{'arguments':[{'type':&}]}]}]",
         "/modelElements/0/operations/0/arguments/0/type",
         {"type"}},
        {"'modelElements':[{'kind':'class','attributes':[{'keyMappings':[{'key':&}]}]}]",
         "/modelElements/0/attributes/0/keyMappings/0/key",
         {"key", "foreignKey"}},
        {"'modelElements':[{'kind':'class','attributes':[{'keyMappings':[{'counterpart':&}]}]}]",
         "/modelElements/0/attributes/0/keyMappings/0/counterpart", numbered},
        {"'modelElements':[{'kind':'class','keys':[{'attributes':[null,&]}]}]",
         "/modelElements/0/keys/0/attributes/1",
         {"attribute", "qualifier"}},
        {"'modelElements':[{'kind':'association','associationClass':&}]",
         "/modelElements/0/associationClass",
         {"class"}},
        {"'modelElements':[{'kind':'association','roles':[{'participant':&}]}]",
         "/modelElements/0/roles/0/participant",
         {"class"}},
        {"'modelElements':[{'kind':'association','roles':[{'key':&}]}]",
         "/modelElements/0/roles/0/key",
         {"key", "foreignKey"}},
        {"'modelElements':[{'kind':'generalization','supertypes':[&]}]", "/modelElements/0/supertypes/0", {"class"}},
        {"'modelElements':[{'kind':'generalization','subtypes':[&]}]", "/modelElements/0/subtypes/0", {"class"}},
        {"'modelElements':[{'kind':'dependency','client':&}]", "/modelElements/0/client", {"class"}},
        {"'modelElements':[{'kind':'dependency','supplier':&}]", "/modelElements/0/supplier", {"class"}},
        {"'modelElements':[{'kind':'realization','client':&}]", "/modelElements/0/client", {"class"}},
        {"'modelElements':[{'kind':'realization','supplier':&}]", "/modelElements/0/supplier", {"class"}},
        {"'modelElements':[{'kind':'class','projections':[{'diagram':&}]}]",
         "/modelElements/0/projections/0/diagram",
         {"classDiagram"}},
        {"'diagrams':[{'elements':[&]}]", "/diagrams/0/elements/0", elements},
        {"'diagrams':[{'kind':'diagram','elements':[&]}]", "/diagrams/0/elements/0", elements}};
    for (const auto& row : rows)
        for (const std::string& id : all) {
            const std::string reference = with(row.keys, "&", "'" + id + "'");
            for (const std::string& text : {model(one + "," + reference), model(reference + "," + one)})
                if (std::find(row.allowed.begin(), row.allowed.end(), id) != row.allowed.end())
                    EXPECT_EQ(complaintAbout(text), "") << row.place << ' ' << id;
                else
                    expectComplaint(text, row.place, "'" + id + "'");
        }
}

TEST(ModelFileErrors, SaysWhatIsWrongAndWhere)
{
    const std::string key(59, 'a');
    const std::string start = json("{'format':'kiv-model','version':1,");
    const struct {
        std::string text;
        std::string place;
        std::string part;
    } rows[] = {
        // ids
        {model("'types':[{'id':'a'},{'id':'a'}]"), "/types/1/id", "the id 'a' again"},
        {model("'types':[{'id':'a'}],'modelElements':[{'kind':'note','id':'\\u0061'}]"), "/modelElements/0/id",
         "again"},
        {model("'types':[{'id':''},{'id':''}]"), "/types/1/id", "again"},
        // required keys
        {"{}", "/format", "'kiv-model'"},
        {json("{'format':'kiv-model'}"), "/version", "the version 1"},
        {json("{'version':1}"), "/format", "'kiv-model'"},
        {model("'modelElements':[{'kind':'note'},{}]"), "/modelElements/1/kind", "a kind of element"},
        {model("'modelElements':[{'kind':null}]"), "/modelElements/0/kind", "a kind of element"},
        {model("'types':[{'projections':[{'vertices':''}]}]"), "/types/0/projections/0/diagram", "class diagram"},
        // what lists hold
        {model("'types':[null]"), "/types/0", "an object, found null"},
        {model("'childPackages':[{},[]]"), "/childPackages/1", "an object, found a list"},
        {modelOfClass("'notes':['a',null]"), "/modelElements/0/notes/1", "a text, found null"},
        {modelOfClass("'keys':[{'attributes':[1]}]"), "/modelElements/0/keys/0/attributes/0", "id"},
        // keys
        {model("'naem':''"), "/naem", "the unknown key 'naem'; did you mean 'name'?"},
        {modelOfClass("'isabstract':true"), "/modelElements/0/isabstract", "did you mean 'isAbstract'?"},
        {modelOfClass("'a/b~c':1"), "/modelElements/0/a~1b~0c", "unknown key"},
        {model("'n\\u0061me':5"), "/name", "a text, found the number 5"},
        {model("'name':'a','n\\u0061me':'b'"), "/name", "again"},
        {model("'" + key + "\u00e9x':1"), "/" + key + "\u00e9x", "unknown key"},
        {model("'\\ud800':1"), "/\\ud800", "valid escapes"},
        // texts and numbers
        {model("'name':'\\ud83d'"), "/name", "valid escapes"},
        {model("'name':'\\ud83dx'"), "/name", "valid escapes"},
        {model("'name':'\\ude00\\ud83d'"), "/name", "valid escapes"},
        {model("'name':'\\x'"), "/name", "valid escapes"},
        {model("'name':5" + std::string(999, '0')), "/name", "the number 5000"},
        // the whole
        {"[]", "", "a list"},
        {"5", "", "the number 5"},
        {json("'x'"), "", "the text 'x'"},
        // no JSON
        {"", "1:1", ""},
        {"\xEF\xBB\xBF", "1:1", ""},
        {" \n ", "2:2", ""},
        {"\xEF\xBB\xBF\xEF\xBB\xBF{}", "1:1", ""},
        {"nul", "1:1", ""},
        {start + "\n\u00e9}", "2:1", ""},
        {start + json("'name':'\u00e9', x}"), "1:47", ""},
        {start + json("'name':'\xFF'}"), "1:43", "UTF-8"},
        {start + json("'name':'a\xC3'}"), "1:44", "UTF-8"},
        {start + json("'name':'\xED\xA0\x80'}"), "1:43", "UTF-8"},
        {start + json("'name':'a\tb'}"), "1:44", ""},
        {start + json("'name':'a\n'}"), "1:44", ""},
        {start + json(std::string("'name':'a\0'}", 12)), "1:44", ""},
        {start + json("\n'name':'a"), "2:8", ""},
        {start + json("'name':NaN}"), "1:42", ""},
        {start + "name:1}", "1:35", ""},
        {start + json("'name' 'a'}"), "1:42", ""},
        {start + json("'types':[{},]}"), "1:47", ""},
        {start + json("'types':[,{}]}"), "1:44", ""},
        {start + "}", "1:35", ""},
        {modelOfClass("'space':01"), "1:76", ""},
        {modelOfClass("'space':+1"), "1:76", ""},
        {modelOfClass("'space':.5"), "1:76", ""},
        {modelOfClass("'space':NaN"), "1:76", ""},
        {modelOfClass("'isAbstract':tru"), "1:81", ""},
        {model("") + " x", "1:36", ""},
        {model("") + "\n{}", "2:1", ""},
        {model("") + "}", "1:35", ""},
        {model("") + std::string(1, '\0'), "1:35", ""},
        {json("{\n'format':'kiv-model',\n'version':1"), "3:12", ""},
        {std::string(100'000, '['), "", "a list"},
    };
    for (const auto& row : rows) {
        expectComplaint(row.text, row.place, row.part);
        const std::string complaint = complaintAbout(row.text);
        EXPECT_TRUE(simdjson::validate_utf8(complaint)) << testing::PrintToString(complaint);
    }
}

} // namespace
