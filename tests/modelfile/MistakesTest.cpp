#include "kiv/KivModelFile.h"

#include "support/ModelTexts.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

// What the mistakes that people make in model files are answered with, word for word.

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

std::string complaintAbout(const std::string& text)
{
    try {
        (void)parseModel(text, "m.json");
        return "";
    } catch (const ModelFileError& error) {
        return error.what();
    }
}

// A model whose second line is the keys.
std::string modelWith(const std::string& keys)
{
    return json("{'format':'kiv-model','version':1,\n" + keys + "}");
}

TEST(Mistakes, AreAnsweredWithPlaceReasonAndWhatWasMeant)
{
    const struct {
        const char* keys;
        const char* place;
        const char* message;
    } rows[] = {
        {"'naem':'Bank'", "2:1", "/naem: expected a known key, found the unknown key 'naem'; did you mean 'name'?"},
        {"'name':'Bank','name':'Loans'", "2:15",
         "/name: expected each key once in an object, found the key 'name' again"},
        {"'name':5", "2:8", "/name: expected a text, found the number 5"},
        {"'description':null", "2:15", "/description: expected a text, found null"},
        {"'types':{}", "2:9", "/types: expected a list, found an object"},
        {"'types':[5]", "2:10", "/types/0: expected an object, found the number 5"},
        {"'types':[{'id':'t','length':1.5}]", "2:29",
         "/types/0/length: expected an integer from -2147483648 to 2147483647, found the number 1.5"},
        {"'types':[{'length':'ten'}]", "2:20",
         "/types/0/length: expected an integer from -2147483648 to 2147483647, found the text 'ten'"},
        {"'types':[{'length':2147483648}]", "2:20",
         "/types/0/length: expected an integer from -2147483648 to 2147483647, found the number 2147483648"},
        {"'types':[{'kind':'basetype'}]", "2:18",
         "/types/0/kind: expected 'baseType' or 'derivedType', found the text 'basetype'; did you mean 'baseType'?"},
        {"'types':[{'typeValues':[{'position':40000}]}]", "2:37",
         "/types/0/typeValues/0/position: expected an integer from -32768 to 32767, found the number 40000"},
        {"'types':[{'id':'t'},{'id':'t'}]", "2:27",
         "/types/1/id: expected an id that is used once, found the id 't' again"},
        {"'types':[{'dataTyp':'VARCHAR'}]", "2:11",
         "/types/0/dataTyp: expected a known key, found the unknown key 'dataTyp'; did you mean 'dataType'?"},
        {"'childPackage':[]", "2:1",
         "/childPackage: expected a known key, found the unknown key 'childPackage'; did you mean 'childPackages'?"},
        {"'childPackages':[{'kind':'packge'}]", "2:26",
         "/childPackages/0/kind: expected 'designPackage' or 'package', found the text 'packge'; did you mean "
         "'package'?"},
        {"'childPackages':[{'name':'a\\u0000b'}]", "2:26",
         "/childPackages/0/name: expected a text without U+0000, found the text 'a\\u0000b'"},
        {"'modelElements':[{'name':'Account'}]", "2:18",
         "/modelElements/0/kind: expected a kind of element, found no \"kind\""},
        {"'modelElements':[{'kind':null}]", "2:18",
         "/modelElements/0/kind: expected a kind of element, found no \"kind\""},
        {"'modelElements':[{'kind':'Class'}]", "2:26",
         "/modelElements/0/kind: expected 'note', 'class', 'association', 'generalization', 'dependency' or "
         "'realization', found the text 'Class'; did you mean 'class'?"},
        {"'modelElements':[{'kind':'generalisation'}]", "2:26",
         "/modelElements/0/kind: expected 'note', 'class', 'association', 'generalization', 'dependency' or "
         "'realization', found the text 'generalisation'; did you mean 'generalization'?"},
        {"'modelElements':[{'kind':'interface'}]", "2:26",
         "/modelElements/0/kind: expected 'note', 'class', 'association', 'generalization', 'dependency' or "
         "'realization', found the text 'interface'"},
        {"'modelElements':[{'kind':'class','visibility':'private'}]", "2:47",
         "/modelElements/0/visibility: expected 'public' or 'implementation', or a number, found the text 'private'"},
        {"'modelElements':[{'kind':'class','visibility':'pubic'}]", "2:47",
         "/modelElements/0/visibility: expected 'public' or 'implementation', or a number, found the text 'pubic'; did "
         "you mean 'public'?"},
        {"'modelElements':[{'kind':'class','classType':'enumeration'}]", "2:46",
         "/modelElements/0/classType: expected 'class', 'parameterizedClass', 'instantiatedClass', 'classUtility', "
         "'parameterizedClassUtility', 'instantiatedClassUtility', 'metaclass' or 'interface', or a number, found the "
         "text 'enumeration'"},
        {"'modelElements':[{'kind':'class','isAbstract':'yes'}]", "2:47",
         "/modelElements/0/isAbstract: expected true or false, found the text 'yes'"},
        {"'modelElements':[{'kind':'class','attributes':[{'private':true}]}]", "2:49",
         "/modelElements/0/attributes/0/private: expected a known key, found the unknown key 'private'"},
        {"'modelElements':[{'kind':'class','attributes':[{'visibility':'privat'}]}]", "2:62",
         "/modelElements/0/attributes/0/visibility: expected 'public', 'protected', 'private' or 'implementation', or "
         "a number, found the text 'privat'; did you mean 'private'?"},
        {"'modelElements':[{'kind':'class','name':'Account','attributes':[{'name':'owner','type':'text'}]}]", "2:88",
         "/modelElements/0/attributes/0/type: expected the id of a type, found 'text', which is no id in the file (in "
         "the attribute 'owner')"},
        {"'types':[{'id':'t-text','name':'text'}],'modelElements':[{'kind':'class','id':'c','attributes':[{'type':'"
         "text'}]}]",
         "2:105",
         "/modelElements/0/attributes/0/type: expected the id of a type, found 'text', which is no id in the file (in "
         "the class 'c'); did you mean the id 't-text'?"},
        {"'types':[{'id':'text'}],'modelElements':[{'kind':'class','operations':[{'name':'find','returnType':'txet'}]}"
         "]",
         "2:100",
         "/modelElements/0/operations/0/returnType: expected the id of a type, found 'txet', which is no id in the "
         "file (in the operation 'find'); did you mean 'text'?"},
        {"'modelElements':[{'kind':'class','id':'Librarian'},{'kind':'generalization','id':'g1','subtypes':['Libarian']"
         "}]",
         "2:99",
         "/modelElements/1/subtypes/0: expected the id of a class, found 'Libarian', which is no id in the file (in "
         "the generalization 'g1'); did you mean 'Librarian'?"},
        {"'modelElements':[{'kind':'class','id':'c'},{'kind':'realization','name':'uses','client':'c','supplier':'C'}]",
         "2:104",
         "/modelElements/1/supplier: expected the id of a class, found 'C', which is no id in the file (in the "
         "realization 'uses'); did you mean 'c'?"},
        {"'types':[{'id':'t'}],'modelElements':[{'kind':'dependency','id':'d','client':'t'}]", "2:78",
         "/modelElements/0/client: expected the id of a class, found 't', the id of a type (in the dependency 'd')"},
        {"'modelElements':[{'kind':'association','name':'owns','roles':[{'participant':true}]}]", "2:78",
         "/modelElements/0/roles/0/participant: expected an id (a text) or null, found true"},
        {"'modelElements':[{'kind':'association','roles':[{'multiplicity':'1..many'}]}]", "2:65",
         "/modelElements/0/roles/0/multiplicity: expected a multiplicity such as '1', '0..1', '0..n' or 'n', found the "
         "text '1..many'"},
        {"'modelElements':[{'kind':'association','roles':[{'multiplicity':{'lower':'m'}}]}]", "2:74",
         "/modelElements/0/roles/0/multiplicity/lower: expected '*' or 'n', or a number, found the text 'm'"},
        {"'diagrams':[{'id':'d','name':'Main','elements':['Account']}]", "2:49",
         "/diagrams/0/elements/0: expected the id of an element of a package, found 'Account', which is no id in the "
         "file (in the diagram 'Main')"},
        {"'diagrams':[{'id':'d','projections':[{'x':1}]}]", "2:38",
         "/diagrams/0/projections/0/diagram: expected the id of a class diagram, found no \"diagram\""},
        {"'diagrams':[{'id':'d','projections':[{'diagram':'d','fillColor':'red'}]}]", "2:65",
         "/diagrams/0/projections/0/fillColor: expected a colour such as '#ffffcc', or a number, found the text 'red'"},
        {"'diagrams':[{'id':'d','projections':[{'diagram':'d','vertices':[[1,2],[3]]}]}]", "2:71",
         "/diagrams/0/projections/0/vertices/1: expected a point [x, y], found a list of 1"},
        {"'name':'Bank',}", "2:15", "expected a key in double quotes, found } behind a comma"},
        {"'name':'Bank' 'types':[]", "2:15", "expected a comma or }, found '"},
        {"'types':[{},]", "2:13", "expected a value, found ] behind a comma"},
        {"'name':'Bank' // the name", "2:15", "expected a comma or }, found a comment, which JSON does not have"},
        {"'name':'a\tb'", "2:10", "expected a text without control characters, found the control character 0x09"},
        {"'types':[{'length':080}]", "2:20", "expected a value, found 080, which is no number in JSON"},
        {"'types':[{'id':'t'", "2:20", "expected a comma or ], found the end of the text (the [ of 2:9 is open)"},
        {"name:'Bank'", "2:1", "expected a key in double quotes, found name"},
        {"'name':True", "2:8", "expected a value, found True; JSON has it in small letters"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(complaintAbout(modelWith(row.keys)),
                  json(std::string("m.json:") + row.place + ": error: " + row.message));
}

TEST(Mistakes, AreAllToldInTheOrderOfTheFile)
{
    const std::string first =
        "'modelElements':[{'kind':'class','id':'c','attributes':[{'type':'nowhere'},{'space':1}]},"
        "{'kind':'dependency','client':5,'supplier':'d'}],'naem':1";
    const auto places = [](const std::string& text) {
        std::vector<std::string> pointers;
        try {
            (void)parseModel(text, "m.json");
        } catch (const ModelFileError& error) {
            for (const ModelFileFault& fault : error.getFaults())
                pointers.push_back(fault.pointer);
            EXPECT_EQ(error.getCount(), pointers.size());
        }
        return pointers;
    };
    EXPECT_THAT(places(modelWith(first)),
                ElementsAre("/modelElements/0/attributes/0/type", "/modelElements/0/attributes/1/space",
                            "/modelElements/1/client", "/modelElements/1/supplier", "/naem"));
    // Where the JSON is broken the list ends, and where references lead is not known.
    EXPECT_THAT(places(modelWith(first + ",'types':[{},],'x':1")),
                ElementsAre("/modelElements/0/attributes/1/space", "/modelElements/1/client", "/naem", ""));
    EXPECT_THAT(places(modelWith("'x':[1,],'types':5")), ElementsAre("/x", "")) << "in what is passed over, too";
    // What stands in something that cannot be read is not missing.
    EXPECT_THAT(places(modelWith("'modelElements':[{'kind':'klass','id':'c','keys':[{'id':'k'}]},"
                                 "{'kind':'dependency','client':'c'},{'kind':'association','roles':[{'key':'k'}]}]")),
                ElementsAre("/modelElements/0/kind"));
}

TEST(Mistakes, AreToldUpToTwentyAndTheRestCounted)
{
    const auto manyTypes = [](int count) {
        std::string types = "{'x':1}";
        for (int i = 1; i < count; ++i)
            types += ",{'x':1}";
        return "'types':[" + types + "]";
    };
    EXPECT_THAT(complaintAbout(modelWith(manyTypes(20))), Not(HasSubstr("more")));
    EXPECT_THAT(complaintAbout(modelWith(manyTypes(21))),
                EndsWith("/types/19/x: expected a known key, found the unknown "
                         "key \"x\"\nm.json: 1 more mistake is not shown"));
    EXPECT_THAT(complaintAbout(modelWith(manyTypes(1000))), EndsWith("\nm.json: 980 more mistakes are not shown"));
    EXPECT_THAT(complaintAbout(modelWith("'diagrams':[{'elements':['nowhere']}]," + manyTypes(1000))),
                HasSubstr("/diagrams/0/elements/0"))
        << "references are followed at the end, and yet stand in their place";
}

TEST(Places, AreThoseOfObjectsAndKeys)
{
    const std::string text = "\xEF\xBB\xBF" + modelWith("'types':[{'length':-1}],\n'childPackages':[{'modelElements':["
                                                        "{'kind':'class','projections':[{'diagram':'d','x':2}]}],\n"
                                                        "'diagrams':[{'id':'d'}]}]");
    const LoadedModel loaded = parseModel(text, "m.json");
    const KivPackage* const package = loaded.model->childPackages.at(0);
    const auto* const element = static_cast<const KivClass*>(package->modelElements.at(0));
    const std::vector<ModelFilePart> parts = {{element->projections.at(0), "x"},
                                              {package, ""},
                                              {loaded.model->types.at(0), "length"},
                                              {loaded.model.get(), "format"},
                                              {element, "name"}};
    std::vector<std::string> places;
    for (const ModelFilePlace& place : findPlaces(text, *loaded.model, parts))
        places.push_back(std::to_string(place.line) + ":" + std::to_string(place.column) + " " + place.pointer);
    EXPECT_THAT(places, ElementsAre("3:86 /childPackages/0/modelElements/0/projections/0/x", "3:18 /childPackages/0",
                                    "2:20 /types/0/length", "1:11 /format", "3:36 /childPackages/0/modelElements/0"));
}

} // namespace
