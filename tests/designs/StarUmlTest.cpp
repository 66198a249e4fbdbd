#include "designs/Importing.h"
#include "support/ModelTexts.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::string classA = "{'_type':'UMLClass','_id':'a','name':'A'}";
const std::string classB = "{'_type':'UMLClass','_id':'b','name':'B'}";

// A project whose one model has the elements, written with apostrophes.
std::string project(const std::string& elements)
{
    return json("{'_type':'Project','_id':'p','name':'Shop','ownedElements':[{'_type':'UMLModel','_id':'m',"
                "'name':'Model','ownedElements':[" +
                elements + "]}]}");
}

Imported import(const std::string& elements)
{
    return importWith(*design::formatNamed("staruml"), project(elements));
}

std::string classWith(const std::string& keys)
{
    return "{'_type':'UMLClass','_id':'a','name':'A'," + keys + "}";
}

std::string attribute(const std::string& keys)
{
    return classWith("'attributes':[{'_type':'UMLAttribute','_id':'t','name':'t'," + keys + "}]");
}

std::string operation(const std::string& keys)
{
    return classWith("'operations':[{'_type':'UMLOperation','_id':'o','name':'o'," + keys + "}]");
}

// What it says stands under the key that UML has for it.
std::string constraint(const std::string& text)
{
    constexpr const char* key = "specification";
    return std::string("{'_type':'UMLConstraint','_id':'k','").append(key).append("':'").append(text).append("'}");
}

std::string association(const std::string& end1, const std::string& end2, const std::string& keys = "")
{
    return classA + "," + classB +
           ",{'_type':'UMLAssociation','_id':'x','end1':{'_type':'UMLAssociationEnd','_id':'e1','reference':{'$ref':'a'"
           "}" +
           end1 + "},'end2':{'_type':'UMLAssociationEnd','_id':'e2','reference':{'$ref':'b'}" + end2 + "}" + keys + "}";
}

std::string relationship(const std::string& type)
{
    return classA + "," + classB + ",{'_type':'" + type +
           "','_id':'x','source':{'$ref':'a'},'target':{'$ref':'b'},'documentation':'why'}";
}

std::string diagram(const std::string& views, const std::string& elements)
{
    return elements + ",{'_type':'UMLClassDiagram','_id':'d','name':'D','ownedViews':[" + views + "]}";
}

const std::string boxA = "{'_type':'UMLClassView','_id':'va','model':{'$ref':'a'},'left':16,'top':376,'width':233,"
                         "'height':116,'fillColor':'#ff8000','lineColor':'#102030','font':'Times;16;0'}";
const std::string boxB = "{'_type':'UMLClassView','_id':'vb','model':{'$ref':'b'},'left':400,'top':376,'width':100,"
                         "'height':116}";

TEST(StarUml, TakesEachThingToItsPlace)
{
    const std::string element = "/childPackages/0/modelElements/0";
    const std::string first = element + "/attributes/0";
    const std::string called = element + "/operations/0";
    const std::string third = "/childPackages/0/modelElements/2";
    const struct {
        std::string elements;
        std::string pointer;
        const char* value;
    } rows[] = {
        {classA, "/name", "'Shop'"},
        {classA, "/childPackages/0/name", "'Model'"},
        {classA, element + "/id", "'a'"},
        {classWith("'documentation':'text','tags':[{'name':'k','value':'v'}]"), element + "/description",
         "'text\\n{k = v}'"},
        {classWith("'stereotype':'entity'"), element + "/stereotype", "'entity'"},
        {classWith("'stereotype':{'$ref':'s'}") + ",{'_type':'UMLStereotype','_id':'s','name':'table'}",
         element + "/stereotype", "'table'"},
        {classWith("'isAbstract':true"), element + "/isAbstract", "true"},
        {classWith("'isActive':true"), element + "/concurrency", "'active'"},
        {classWith("'visibility':'private'"), element + "/visibility", "2"},
        {"{'_type':'UMLInterface','_id':'i','name':'I'}", element + "/classType", "'interface'"},
        {"{'_type':'UMLDataType','_id':'i','name':'Point'}", element + "/stereotype", "'dataType'"},
        {"{'_type':'UMLSubsystem','_id':'u','ownedElements':[" + classA + "]}",
         "/childPackages/0/childPackages/0/stereotype", "'subsystem'"},
        {attribute("'type':'String'"), "/types/0", "{'id':'type String','name':'String','dataType':'VARCHAR'}"},
        {attribute("'type':{'$ref':'b'}") + "," + classB, "/types/0", "{'id':'type B','name':'B'}"},
        {attribute("'type':{'$ref':'gone'}"), "/types/0/name", "'gone'"},
        {attribute("'type':{'$ref':'r'}") + ",{'_type':'UMLPrimitiveType','_id':'r','name':'Integer'}", "/types/0",
         "{'id':'r','name':'Integer','dataType':'INTEGER'}"},
        {attribute("'type':{'$ref':'n'}") +
             ",{'_type':'UMLEnumeration','_id':'n','name':'N','literals':[{'_id':'l','name':'red'}]}",
         "/types/0", "{'id':'n','name':'N','typeValues':[{'id':'l','name':'red','value':'red'}]}"},
        {"{'_type':'UMLEnumeration','_id':'n','name':'N','literals':[{'_id':'l','name':'red'}]}",
         element + "/attributes", "[{'id':'l','name':'red'}]"},
        {attribute("'multiplicity':'0..*'"), first + "/description", "'Multiplicity: 0..*'"},
        {attribute("'multiplicity':'1'"), first + "/description", "none"},
        {attribute("'defaultValue':'7'"), first + "/initialValue", "'7'"},
        {attribute("'isStatic':true"), first + "/isStatic", "true"},
        {attribute("'isDerived':true"), first + "/isDerived", "true"},
        {attribute("'isReadOnly':true"), first + "/description", "'{readOnly}'"},
        {attribute("'isID':true"), element + "/keys", "[{'attributes':['t']}]"},
        {operation("'isAbstract':true"), called + "/isAbstract", "true"},
        {operation("'parameters':[{'_id':'r','name':'','direction':'return','type':'bool'},"
                   "{'_id':'q','name':'q','type':'int','defaultValue':'1'}]"),
         called,
         "{'id':'o','name':'o','returnType':'type bool','arguments':[{'id':'q','name':'q','type':'type int',"
         "'initialValue':'1'}]}"},
        {operation("'parameters':[{'_id':'q','name':'q','direction':'inout','multiplicity':'*'}]"),
         called + "/description", "'Parameter q: inout, 0..*'"},
        {operation("'preconditions':[" + constraint("x > 0") + "]"), called + "/preCondition", "'x > 0'"},
        {association("", ",'name':'end','multiplicity':'1..*'"), third + "/roles/1/multiplicity", "'1..n'"},
        {association(",'multiplicity':'some'", ""), third + "/roles/0/description", "'Multiplicity: some'"},
        {association(",'aggregation':'composite'", ""), third + "/roles/1",
         "{'id':'e1','participant':'a','isAggregateEnd':true,'isNavigable':true}"},
        {association(",'aggregation':'composite'", ""), third + "/roles/0/containment", "'byValue'"},
        {association(",'aggregation':'shared'", ""), third + "/isAggregation", "true"},
        {association(",'aggregation':'shared'", ""), third + "/roles/0/containment", "none"},
        {association("", ",'navigable':true"), third + "/roles/0/participant", "'b'"},
        {association("", ",'navigable':'navigable'"), third + "/roles/1/isNavigable", "none"},
        {association(",'navigable':'unspecified'", ",'navigable':'notNavigable'"), third + "/roles/0/isNavigable",
         "true"},
        {association(",'qualifiers':[{'_id':'q','name':'nr','type':'int'}]", ""), third + "/roles/0/qualifiers/0/name",
         "'nr'"},
        {association("", "") + ",{'_type':'UMLAssociationClassLink','_id':'l','classSide':{'$ref':'b'},"
                               "'associationSide':{'$ref':'x'}}",
         third + "/associationClass", "'b'"},
        {association("", "", ",'ownedElements':[" + constraint("xor") + "]"), third + "/constraint", "'xor'"},
        {relationship("UMLGeneralization"), third,
         "{'kind':'generalization','id':'x','description':'why','supertypes':['b'],'subtypes':['a']}"},
        {relationship("UMLInterfaceRealization"), third,
         "{'kind':'realization','id':'x','description':'why','client':'a','supplier':'b'}"},
        {relationship("UMLUsage"), third + "/stereotype", "'use'"},
        {relationship("UMLDependency"), third + "/kind", "'dependency'"},
        {diagram(boxA + ",{'_type':'UMLNoteView','_id':'n','text':'look'},{'_type':'UMLNoteLinkView','_id':'k',"
                        "'head':{'$ref':'va'},'tail':{'$ref':'n'}}",
                 classA),
         element + "/notes", "['look']"},
        {diagram(boxA + ",{'_type':'UMLNoteView','_id':'n','text':'look'}", classA),
         "/childPackages/0/diagrams/0/notes", "['look']"},
    };
    for (const auto& row : rows) {
        const Imported imported = import(row.elements);
        EXPECT_EQ(imported.at(row.pointer), json(row.value)) << row.pointer << "\n" << row.elements << imported.error;
    }
}

TEST(StarUml, DrawsWhatTheDiagramsShow)
{
    const std::string line = "{'_type':'UMLAssociationView','_id':'vx','model':{'$ref':'x'},'lineColor':'#ff0000',"
                             "'points':'249:400;300:400;300:450;400:450'}";
    const Imported imported = import(diagram(boxA + "," + boxB + "," + line, association("", ",'navigable':false")));
    const std::string elements = "/childPackages/0/modelElements/";
    const struct {
        std::string pointer;
        const char* value;
    } rows[] = {
        // Centre (16 + 233 / 2, 376 + 116 / 2) and size, 3.125 units to the pixel; colours from red to blue.
        {elements + "0/projections/0",
         "{'diagram':'d','x':414,'y':1356,'width':728,'height':363,'lineColor':'#102030','fillColor':'#ff8000',"
         "'fontName':'Times','fontSize':12}"},
        {elements + "1/projections/0", "{'diagram':'d','x':1406,'y':1356,'width':313,'height':363}"},
        // 201 pixels of line, half of which end at (300, 449.5).
        {elements + "2/projections/0", "{'diagram':'d','x':938,'y':1405,'lineColor':'#ff0000'}"},
        {elements + "2/roles/0/projections/0/vertices", "[[938,1405],[938,1250],[778,1250]]"},
        {elements + "2/roles/1/projections/0/vertices", "[[938,1405],[938,1406],[1250,1406]]"},
        {"/childPackages/0/diagrams/0/elements", "['a','b','x']"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(imported.at(row.pointer), json(row.value)) << row.pointer;
    EXPECT_THAT(imported.left(), IsEmpty());
}

TEST(StarUml, TellsWhatItLeaves)
{
    const struct {
        std::string elements;
        const char* entry;
    } rows[] = {
        {"{'_type':'UMLUseCase','_id':'u','name':'Buy'}", "use case Buy: nothing of this kind is taken"},
        {"{'_type':'UMLSequenceDiagram','_id':'u','name':'S'}",
         "UMLSequenceDiagram S: diagrams of this kind are not taken"},
        {"{'_type':'UMLStateMachine','_id':'u','ownedElements':[{'_type':'UMLStatechartDiagram','_id':'v','name':'T'}]"
         "}",
         "UMLStatechartDiagram T: diagrams of this kind are not taken"},
        {"{'_type':'UMLNode','_id':'u'},{'_type':'UMLDependency','_id':'v','name':'on','source':{'$ref':'a'},"
         "'target':{'$ref':'u'}}",
         "dependency on: an end is no class but: UMLNode"},
        {"{'_type':'UMLAssociation','_id':'v','name':'half','end1':{'_id':'e','reference':{'$ref':'a'}}}",
         "association half: an end is missing"},
        {"{'_type':'UMLDependency','_id':'v','source':{'$ref':'a'},'target':{'$ref':'m'}}",
         "dependency : an end is no class but: package"},
        {"{'_type':'UMLClassDiagram','_id':'d','ownedViews':[" + boxA + "," + boxA + "]}",
         "box A: a Rose diagram shows a class once"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(import(classA + "," + row.elements).left(), Contains(row.entry)) << row.elements;
}

TEST(StarUml, RefusesInWordsWhatItCannotRead)
{
    const std::string whole = project(classA);
    const struct {
        std::string text;
        const char* message;
    } rows[] = {
        {with(whole, "\"ownedElements\"", "\n<<<<<<< HEAD\n\"ownedElements\""),
         "2:1: expected a key in double quotes, found a mark of a merge conflict that was not resolved"},
        {whole.substr(0, whole.size() - 4),
         "1:164: expected a comma or ], found the end of the text (the [ of 1:122 is open)"},
        {with(whole, "Shop", "Sh\x80op"), "1:40: expected UTF-8, found the byte 0x80"},
        {with(whole, "\"Shop\"", "Shop"), "1:37: expected a value, found Shop"},
        {std::string(2000, '['), "1:1025: expected values that lie in each other at most 1024 deep, found one more"},
        {project("{'_type':'UMLUseCase','_id':'u'}"), "nothing to import was found; looked for UMLClass, UMLInterface, "
                                                      "UMLDataType or UMLEnumeration elements in the "
                                                      "ownedElements of a Project; found only: 1 use case"},
        {"[]", "nothing to import was found"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(importWith(*design::formatNamed("staruml"), row.text).error, StartsWith(row.message)) << row.text;
}

TEST(StarUml, IsToldByItsContent)
{
    const struct {
        std::string text;
        bool isRecognized;
    } rows[] = {
        {project(classA), true},
        {"\xEF\xBB\xBF" + project(classA), true},
        {"<<<<<<< HEAD\n" + project(classA), true},
        {json("{'_type' : 'UMLPackage'}"), true},
        {json("{'format':'kiv-model','version':1,'name':'_type'}"), false},
        {json("{'_type':'Drawing'}"), false},
        {"", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(design::formatNamed("staruml")->recognizes({row.text, "x"}), row.isRecognized) << row.text;
}

// Whatever the file is cut to, it is read or refused in words.
TEST(StarUml, SurvivesEveryCut)
{
    const std::string whole = project(diagram(boxA + "," + boxB, association("", "")));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Imported imported = importWith(*design::formatNamed("staruml"), whole.substr(0, length));
        EXPECT_THAT(imported.error, HasSubstr(": expected ")) << length;
    }
}

} // namespace
