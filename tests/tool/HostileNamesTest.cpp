#include "support/Process.h"
#include "support/TemporaryFolder.h"
#include "text/Utf8.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

// Escape sequences in both notations, marks that turn the direction of writing, a bell, what deletes.
const std::string hostile = "n\x1b[31m\xC2\x9B"
                            "1m\u202E\u2066\u200F\u061C\x07\x7F\r";
// Such a name in JSON, where control characters are escapes.
constexpr const char* hostileJson = "n\\u001b[31m\\u009b1m\\u202e\\u2066\\u200f\\u061c\\u0007\\u007f\\r";
// What of it XML can hold.
const std::string hostileXml = "n\xC2\x9B"
                               "1m\u202E\u2066\u200F\u061C\x7F&#13;";

std::string filled(std::string text, std::string_view name)
{
    for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at + name.size()))
        text.replace(at, 1, name);
    return text;
}

// Characters beyond line ends and tabs that are not to be seen, in hexadecimal.
std::string steeringIn(std::string_view text)
{
    std::string found;
    while (!text.empty()) {
        const std::size_t length = text::characterLength(text);
        const char32_t character = length == 0 ? 0 : text::codePoint(text.substr(0, length));
        if (character == '\r' || text::kindOf(character) == text::CharacterKind::Hostile)
            found.append(std::to_string(character)).append(" ");
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return found;
}

constexpr const char* roseFile = R"((object Petal
version 42
charSet 0)
(object Design "Logical View"
root_category (object Class_Category "Logical View"
quid "0000000000A0"
logical_models (list l (object Class "@" quid "0000000000B1" stereotype "@" unknown_@ "@")
(object @ "x")
(object Class_Category "@" is_unit TRUE file_name "@.cat" quid "0000000000C0"))
logical_presentations (list l (object ClassDiagram "@" quid "0000000000D0" items (list diagram_item_list
(object ClassView "Class" "Logical View::@" $1 quidu "0000000000B1" location (100,100))
(object ClassView "@" "Logical View::@2" $2 quidu "0000000000FF" location (300,100))
(object FooView "@" $3 font (object Font "@" face "@") location (500,500)))))))
@ ) "@
)";

constexpr const char* modelFile = R"({"format": "kiv-model", "version": 1, KEY "childPackages": [{"name": "@",
"modelElements": [{"kind": KIND, "name": "@", "attributes": [{"name": "@"}]}]}]})";

constexpr const char* starUml = R"({"_type": "Project", "_id": "1", "name": "@", "ownedElements": [{"_type": "UMLModel",
"_id": "2", "name": "@", "ownedElements": [{"_type": "UML@", "_id": "3", "name": "@"}, {"_type": "UMLClass", "_id": "4",
"name": "@", "attributes": [{"_type": "UMLAttribute", "_id": "@", "name": "@", "type": {"$ref": "@"}}]}]}]})";

constexpr const char* papyrus = R"(<uml:Model xmlns:uml="u" xmlns:xmi="x" xmi:id="m" name="@">
<packagedElement xmi:type="uml:@" xmi:id="c" name="@"/><packagedElement xmi:type="uml:Class" xmi:id="d" name="@"/>
</uml:Model>)";

std::string replaced(std::string text, std::string_view what, std::string_view with)
{
    return text.replace(text.find(what), what.size(), with);
}

// Names in files, names of files and words of the command line reach messages on many ways.
class HostileNames : public testing::Test {
protected:
    HostileNames()
    {
        std::string rose = filled(roseFile, hostile);
        for (std::size_t at = rose.find('$'); at != std::string::npos; at = rose.find('$'))
            rose[at] = '@';
        const std::string good = replaced(replaced(modelFile, "KEY", ""), "KIND", "\"class\"");
        const std::string kind = replaced(replaced(modelFile, "KEY", ""), "KIND", "\"@\"");
        const std::string key = replaced(replaced(modelFile, "KEY", "\"@\": 1,"), "KIND", "\"class\"");
        add(".mdl", rose);
        add(".model.json", filled(good, hostileJson));
        add("key.model.json", filled(key, hostileJson));
        add("kind.model.json", filled(kind, hostileJson));
        add("cut.model.json", filled(good, hostileJson).substr(0, 200));
        add(".mdj", filled(starUml, hostileJson));
        add(".uml", filled(papyrus, hostileXml));
        add("cut.uml", filled(papyrus, hostileXml).substr(0, 150));
        add(".txt", "{}");
        files.push_back(hostile + ".none");
    }

    void add(const std::string& ending, const std::string& content)
    {
        files.push_back(hostile + ending);
        folder.write(files.back(), content);
    }

    // Standard output of what writes files to it is left out: a picture or a page is no message.
    void expectNothingSteered(const Words& words, bool isOutputShown = true)
    {
        const ProcessResult result = runProcess({PETAL_COMMAND, words, folder.path(), "", {}});
        EXPECT_GE(result.exitCode, 0) << testing::PrintToString(words);
        EXPECT_EQ(steeringIn(result.errors), "") << testing::PrintToString(words) << result.errors;
        if (isOutputShown) {
            EXPECT_EQ(steeringIn(result.output), "") << testing::PrintToString(words) << result.output;
        }
    }

    TemporaryFolder folder;
    std::vector<std::string> files;
};

TEST_F(HostileNames, OfFilesAndInThemSteerNoTerminal)
{
    for (const std::string& file : files) {
        const bool isRose = file.ends_with(".mdl");
        if (!isRose) {
            expectNothingSteered({"export", file, "-o", "out", "-q", "--log", "-"});
            expectNothingSteered({"import", file, "-o", "out"});
            expectNothingSteered({"export", file, "-o", hostile + "/out"});
        }
        if (!isRose && !file.ends_with(".txt") && !file.ends_with(".none"))
            continue; // read commands say the same of all that is none
        for (const Words& command :
             {Words{"check", "--notes"}, Words{"check", "--json"}, Words{"tree"}, Words{"draw", "--list"},
              Words{"draw", "-o", hostile}, Words{"draw", "--diagram", hostile}, Words{"browse", "-o", "page"}}) {
            Words words = command;
            words.push_back(file);
            expectNothingSteered(words);
        }
    }
}

TEST_F(HostileNames, InOptionsSteerNoTerminal)
{
    const std::string rose = hostile + ".mdl";
    const std::string model = hostile + ".model.json";
    for (const Words& words : {Words{"check", rose, "--charset", hostile},
                               Words{"check", rose, "--path", hostile},
                               Words{"check", rose, "--units-within", hostile},
                               Words{"tree", rose, "--depth", hostile},
                               Words{"draw", rose, "--format", hostile},
                               Words{"draw", rose, "-o", hostile + "/" + hostile + ".svg"},
                               Words{"browse", rose, "-o", hostile + "/" + hostile},
                               Words{"export", model, "--option", hostile + "=1"},
                               Words{"export", model, "--option", "BP_SUPPORTED_TYPES=" + hostile},
                               Words{"export", model, "--from", hostile},
                               Words{"export", model, "--types", hostile},
                               Words{"export", model, "--scale", hostile},
                               Words{"export", model, "--log", hostile + "/x"},
                               Words{"export", model, "--report", hostile + "/x"},
                               Words{"export", model, "--stats-json", hostile + "/x"},
                               Words{"export", model, "--report", model},
                               Words{"export", model, "-o", model},
                               Words{"export", model, "--" + hostile},
                               Words{hostile},
                               Words{"--" + hostile},
                               Words{"check", rose, "--json=" + hostile},
                               Words{"options", hostile}})
        expectNothingSteered(words);
}

// A line end in a name makes no further message.
TEST_F(HostileNames, AddNoLines)
{
    const std::string name = "a\npetal: b.mdl: no petal file\n";
    folder.write(name, "[]");
    for (const char* const command : {"check", "tree", "draw", "browse", "export", "import"}) {
        const ProcessResult result = runProcess({PETAL_COMMAND, {command, name}, folder.path(), "", {}});
        EXPECT_NE(result.exitCode, 0) << command;
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
    }
}

TEST_F(HostileNames, OfDiagramsBecomeHarmlessOnesOfFiles)
{
    expectNothingSteered({"draw", hostile + ".mdl", "-o", "pictures"});
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(folder.path() / "pictures")) {
        EXPECT_EQ(steeringIn(entry.path().filename().string()), "") << entry.path();
        ++count;
    }
    EXPECT_EQ(count, 1U);
}

} // namespace
