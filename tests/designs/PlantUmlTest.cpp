#include "designs/formats/plantuml/Notation.h"
#include "designs/model/Walk.h"
#include "designs/TextFormats.h"
#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <regex>
#include <sstream>

namespace {

using testing::HasSubstr;

TEST(PlantUml, WritesEverythingThatADiagramShows)
{
    const Texts texts = textsOf(designWithEverything(), "plantuml");
    ASSERT_EQ(texts.files.size(), 1U);
    EXPECT_EQ(texts.files[0].name, "Main");
    EXPECT_EQ(texts.files[0].kind, "class");
    EXPECT_EQ(texts.files[0].owner, "Sales");
    EXPECT_EQ(texts.files[0].text, R"(@startuml
' Sales
title Main
allow_mixing
hide empty members
skinparam classBackgroundColor #FFFFCC
skinparam usecaseBackgroundColor #FFFFCC
class "Order item" as Order_item
' What was ordered.
' And by whom.
abstract class Order<Item : list<U+003C>int<U+003E>> <<entity>> {
  -{static} {field} <<key>> /total : NUMBER(12) = <U+0022>0<U+0022>
  +{abstract} cancel(reason : String = none, out why) : Boolean
}
interface "note" as note_ #00FF80
enum Colour {
  {field} RED = hex(FF)
  <U+002D>green-
}
actor "Buyer" as Buyer
class Contract
package "Stock" as Stock <<subsystem>> {
  class Shelf
}
<> holds
Order "[position]\n1" *-- holds : holds
Order_item "+items\n0..*\n<U+007B>ordered<U+007D>" -- holds
holds .. Contract
<> association
Buyer -- association
Order -- association
Shelf -- association
Order_item ..|> note_
note on link
  Some day
end note
Order --|> note_
Order ..> Stock : <<use>>
note as N
  Never
  <U+0065>nd note
end note
Order .. N
note as N_2
  <U+0040>enduml
end note
Order .. N_2
note as N_3
  <U+007B>x <U+003E> 0<U+007D>
end note
Order .. N_3
note as N_4
  A loose note
end note
@enduml
)");
}

// A line of a diagram is a line of its text, and so is a box.
TEST(PlantUml, ShowsAllBoxesAndLines)
{
    const std::regex link(R"re(\w+ ("[^"]*" )?[<|o*]*[-.](\[#\w+\])?[-.]?[|>o*]* ("[^"]*" )?\w+( : .*)?)re");
    const std::regex box(R"re( *((abstract )?class|interface|enum|actor|usecase|package) .*)re");
    const std::regex noteLine(R"re(\w+ \.\. N(_\d+)?)re");
    for (const char* const name : designFiles()) {
        const Texts texts = textsOf(designIn(name), "plantuml");
        std::size_t boxes = 0;
        std::size_t lines = 0;
        design::forEachPackage(texts.design.root, [&](const design::Package& package) {
            for (const design::Diagram& diagram : package.diagrams) {
                boxes += diagram.boxes.size();
                lines += diagram.lines.size();
            }
        });
        const std::string all = texts.all();
        std::istringstream stream(all);
        std::size_t boxesWritten = 0;
        std::size_t linesWritten = 0;
        for (std::string line; std::getline(stream, line);) {
            boxesWritten += std::regex_match(line, box) ? 1 : 0;
            linesWritten += std::regex_match(line, link) && !std::regex_match(line, noteLine) ? 1 : 0;
        }
        EXPECT_GE(boxesWritten, boxes) << name;       // frames of packages that no box shows are more
        if (all.find("\n<> ") == std::string::npos) { // a diamond has lines of its own
            EXPECT_EQ(linesWritten, lines) << name;
        }
    }
}

constexpr const char* everyKindOfDiagram = "../../render/models/everything.mdl";

// What a design has no place for comes from the Rose file itself, and is not left any more.
TEST(PlantUml, WritesTheOtherDiagramsOfARoseFile)
{
    const struct {
        const char* name;
        const char* kind;
        const char* text;
    } rows[] = {
        {"Steps", "sequence", R"(@startuml
' Use Case View
title Steps
autonumber
actor ": Customer" as Customer
participant "desk : Order\n<U+007B>multi<U+007D>" as desk_Order
Customer -> desk_Order : order
activate Customer
activate desk_Order
desk_Order -\\ desk_Order : check
desk_Order -->> Customer : receipt
deactivate desk_Order
deactivate Customer
destroy desk_Order
@enduml
)"},
        {"Who talks to whom", "collaboration", R"(@startuml
' Use Case View
title Who talks to whom
actor ": Customer" as Customer
rectangle "desk : Order\n<U+007B>multi<U+007D>" as desk_Order
Customer -> desk_Order : 1: order
desk_Order --> desk_Order : 1.1: check
@enduml
)"},
        {"Life of an order", "state", R"(@startuml
' Logical View::Order::States
title Life of an order
state "open" as open
state done <<end>>
open : entry / reserve goods
note right of done
  done
end note
[*] -> open
open -> done : paid
open --> open
@enduml
)"},
        {"Packing", "activity", R"(@startuml
' Logical View::Order::States
title Packing
state "Store" as Store {
  state "pack" as pack
}
state "Office" as Office
state state_ <<fork>>
state complete <<choice>>
note right of complete
  complete?
end note
complete -up-> pack
state_ --> complete
@enduml
)"},
        {"Components", "component", R"(@startuml
' Component View
title Components
folder "Server" as Server
component "orders" as orders <<EXE>>
interface "Printable" as Printable
Server <. orders
orders .|> Printable
@enduml
)"},
        {"Deployment View", "deployment", R"(@startuml
title Deployment View
node "Server" as Server {
  artifact "orders.exe" as orders_exe <<process>>
}
node "Printer" as Printer <<device>>
Server - Printer
@enduml
)"},
    };
    const Texts texts = textsOf(designIn(everyKindOfDiagram), "plantuml");
    for (const auto& row : rows) {
        const auto found = std::find_if(texts.files.begin(), texts.files.end(),
                                        [&](const design::WrittenFile& file) { return file.name == row.name; });
        ASSERT_NE(found, texts.files.end()) << row.name;
        EXPECT_EQ(found->kind, row.kind) << row.name;
        EXPECT_EQ(found->text, row.text) << row.name;
    }
}

// A text that a line begins with must not be taken for the pieces of other diagrams.
TEST(PlantUml, KeepsBeginningsOfLinesFromMeaningSomething)
{
    const struct {
        const char* text;
        const char* written;
    } rows[] = {
        {"[*]", "<U+005B>*]"},
        {"()", "<U+0028>)"},
        {"!include x", "<U+0021>include x"},
        {"' x", "<U+0027> x"},
        {"#red", "<U+0023>red"},
        {"  Order", "Order"},
        {"-green-", "<U+002D>green-"},
        {"Order (old)", "Order (old)"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(design::plantuml::escapedStart(row.text), row.written) << row.text;
}

TEST(PlantUml, KeepsNamesFromMeaningSomething)
{
    const struct {
        const char* text;
        const char* written;
    } rows[] = {
        {"Order", "Order"},
        {"a \"quoted\" name", "a <U+0022>quoted<U+0022> name"},
        {"two\nlines\ttab", "two\\nlines tab"},
        {"C:\\new", "C:<U+005C>new"},
        {"%getenv(\"HOME\")", "<U+0025>getenv(<U+0022>HOME<U+0022>)"},
        {"List<Item>", "List<Item>"},
        {"map<a, list<b>>", "map<a, list<U+003C>b<U+003E><U+003E>"},
        {"<img:x.png> <$s> <U+0041>", "<U+003C>img:x.png> <U+003C>$s> <U+003C>U+0041>"},
        {"a > b -> c", "a <U+003E> b -<U+003E> c"},
        {"__init__ a_b", "<U+005F><U+005F>init<U+005F><U+005F> a_b"},
        {"**x** a*b", "<U+002A><U+002A>x<U+002A><U+002A> a*b"},
        {"http://x", "http:<U+002F><U+002F>x"},
        {"/' x '/", "<U+002F>' x <U+0027>/"},
        {"{x} ~y @enduml", "<U+007B>x<U+007D> <U+007E>y <U+0040>enduml"},
        {"&#34; &", "<U+0026>#34; &"},
        {"0..* [1]", "0..* [1]"},
        {"\xE9t\xE9", "\xC3\xA9t\xC3\xA9"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(design::plantuml::escaped(row.text), row.written) << row.text;
}

// Names that would end or begin something, in every place of a diagram.
design::Design hostileDesign()
{
    const std::vector<std::string> names = {
        "\"quoted\"", "@enduml",        "end note", "note",    "}", "' comment", "!include x", "%date()", "-->",
        "]]>",        "a\nb",           "<b>",      "/' open", " ", "\\",        "#red",       "(x)",     "{",
        "::",         "class as class", "[*]",      "()"};
    design::Design design = designOf({});
    design::Package& package = design.root.packages[0];
    design::Diagram diagram = diagramOf({});
    const std::string* last = nullptr;
    for (const std::string& name : names) {
        design::Classifier classifier = classNamed(name);
        classifier.kind = static_cast<design::ClassifierKind>(package.classifiers.size() % 8);
        classifier.documentation = classifier.stereotype = name;
        classifier.notes = classifier.constraints = {name};
        classifier.attributes.resize(1);
        classifier.attributes[0].name = classifier.attributes[0].stereotype = name;
        classifier.attributes[0].type.name = name;
        classifier.operations.resize(1);
        classifier.operations[0].name = name;
        classifier.literals.resize(1);
        classifier.literals[0].name = name;
        classifier.templateParameters.resize(1);
        classifier.templateParameters[0].name = name;
        design::Association joint = association(last ? *last : name, name);
        joint.name = joint.stereotype = joint.documentation = name;
        joint.notes = {name};
        joint.ends[1].name = name;
        package.classifiers.push_back(classifier);
        package.associations.push_back(joint);
        diagram.boxes.push_back({name, std::nullopt, {}});
        diagram.lines.emplace_back().elementId = joint.id;
        diagram.notes.push_back(name);
        last = &name;
    }
    package.diagrams.push_back(diagram);
    diagram.boxes.resize(1);
    diagram.lines.clear();
    diagram.notes.clear();
    for (const std::string& name : names) {
        diagram.name = name;
        diagram.id = "diagram " + name;
        package.diagrams.push_back(diagram);
    }
    return design;
}

// What PlantUML says to texts; empty when all are good.
std::string faultsOf(const std::vector<design::WrittenFile>& files)
{
    const TemporaryFolder folder;
    std::string all;
    for (const design::WrittenFile& file : files)
        all += file.text;
    folder.write("all.puml", all);
    const ProcessResult result = runProcess(
        {"/usr/bin/plantuml", {"-charset", "UTF-8", "-tsvg", "-nbthread", "auto", "all.puml"}, folder.path()});
    return result.exitCode == 0 ? "" : result.output + result.errors;
}

TEST(PlantUml, IsTakenByPlantUmlWhateverStandsInIt)
{
    if (!std::filesystem::exists("/usr/bin/plantuml"))
        GTEST_SKIP() << "plantuml is not installed, so nothing reads what was written";
    std::vector<design::WrittenFile> files = textsOf(hostileDesign(), "plantuml").files;
    EXPECT_EQ(files.size(), 23U);
    const Texts everything = textsOf(designWithEverything(), "plantuml");
    files.insert(files.end(), everything.files.begin(), everything.files.end());
    std::vector<const char*> names = designFiles();
    names.push_back(everyKindOfDiagram);
    for (const char* const name : names) {
        const Texts texts = textsOf(designIn(name), "plantuml");
        files.insert(files.end(), texts.files.begin(), texts.files.end());
    }
    EXPECT_EQ(faultsOf(files), "");
}

// A single file has all diagrams.
TEST(PlantUml, PutsAllDiagramsIntoOneFile)
{
    const Texts apart = textsOf(designIn("shop.mdj"), "plantuml");
    const Texts together = textsOf(designIn("shop.mdj"), "plantuml", false);
    ASSERT_GT(apart.files.size(), 1U);
    ASSERT_EQ(together.files.size(), 1U);
    EXPECT_EQ(together.files[0].name, "");
    for (const design::WrittenFile& file : apart.files)
        EXPECT_THAT(together.files[0].text, HasSubstr(file.text));
}

} // namespace
