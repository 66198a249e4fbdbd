#include "designs/DesignLines.h"
#include "designs/Files.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;

std::vector<std::string> splitLines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// Files that together hold everything that the formats' readers know. Beside each lies what must come of it.
class Formats : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(Formats, TakeWhatAFileHoldsAndNothingElse)
{
    const auto [name, format] = GetParam();
    const std::string bytes = bytesOf(name);
    const design::Source source{bytes, pathOf(name)};
    ASSERT_NE(design::formatOf(source), nullptr);
    EXPECT_EQ(design::formatOf(source)->name, format);
    // Any file of a design may be given.
    const bool isOther = name == std::string_view("shop.notation") || name == std::string_view("shop.di");
    EXPECT_THAT(linesOf(source),
                ElementsAreArray(splitLines(bytesOf((isOther ? "shop.uml" : std::string(name)) + ".lines"))));
}

INSTANTIATE_TEST_SUITE_P(, Formats,
                         testing::Values(std::pair("shop.mdj", "staruml"), std::pair("enterprise-architect.xml", "ea"),
                                         std::pair("shop.uml", "papyrus"), std::pair("shop.notation", "papyrus"),
                                         std::pair("shop.di", "papyrus"), std::pair("one-file.uml", "papyrus"),
                                         std::pair("umbrello.xmi", "umbrello"), std::pair("umbrello2.xmi", "umbrello"),
                                         std::pair("uml1.xmi", "umbrello"), std::pair("plain.xmi", "xmi"),
                                         std::pair("all-kinds.xmi", "xmi"), std::pair("shop.ecore", "ecore"),
                                         std::pair("packages.ecore", "ecore"), std::pair("shop.mdl", "rose")),
                         [](const auto& instance) {
                             std::string name = instance.param.first;
                             std::erase_if(name, [](unsigned char letter) { return std::isalnum(letter) == 0; });
                             return name;
                         });

// A file cut anywhere either is refused in words or was whole enough to be read.
TEST(FormatFiles, AreReadOrRefusedWhereverTheyAreCut)
{
    for (const char* const name : {"shop.mdj", "enterprise-architect.xml", "shop.uml", "umbrello.xmi", "uml1.xmi",
                                   "plain.xmi", "shop.ecore", "shop.mdl"}) {
        const std::string bytes = bytesOf(name);
        const design::Format* const format = design::formatOf({bytes, "-"});
        ASSERT_NE(format, nullptr) << name;
        for (std::size_t length = 0; length + 2 < bytes.size(); length += 7) {
            design::Report report;
            try {
                static_cast<void>(format->read({std::string_view(bytes).substr(0, length), "-"}, report));
                ADD_FAILURE() << name << " cut at " << length << " was read";
            } catch (const design::UnreadableDesign& fault) {
                EXPECT_THAT(fault.what(), HasSubstr(": ")) << name << " cut at " << length;
            }
        }
    }
}

// What lies beside the file that was given belongs to the design.
TEST(FormatFiles, NeedTheModelOfTheirDiagrams)
{
    const std::string diagrams = bytesOf("shop.notation");
    EXPECT_EQ(faultOf({diagrams, pathOf("alone.notation")}), "1:1: diagrams alone; the model is missing: alone.uml");
    EXPECT_EQ(faultOf({diagrams, "-"}), "1:1: diagrams alone; the model is missing: -.uml");

    const TemporaryFolder folder;
    folder.write("broken.notation", diagrams);
    folder.write("broken.uml", "<uml:Model>\n<a>");
    EXPECT_THAT(faultOf({diagrams, folder / "broken.notation"}), testing::StartsWith("broken.uml: 2:"));
    const std::string windows = bytesOf("shop.di");
    EXPECT_EQ(faultOf({windows, folder / "alone.di"}),
              "1:1: windows of a design alone; the model is missing: alone.uml");
    EXPECT_THAT(faultOf({windows, folder / "broken.di"}), testing::StartsWith("broken.uml: 2:"));
    EXPECT_EQ(design::formatOf({windows, "-"}), nullptr);
}

// A .notation file may be missing, or have no diagrams.
TEST(FormatFiles, MayHaveNoDiagramsBeside)
{
    const TemporaryFolder folder;
    const std::string empty = "<xmi:XMI xmi:version='2.0' xmlns:xmi='http://www.omg.org/XMI'/>";
    folder.write("shop.uml", bytesOf("shop.uml"));
    const std::vector<std::string> lines = linesOf({empty, folder / "shop.di"});
    EXPECT_THAT(lines, testing::Contains("class Item in sales"));
    folder.write("shop.notation", empty);
    EXPECT_EQ(linesOf({empty, folder / "shop.di"}), lines);
    EXPECT_EQ(linesOf({empty, folder / "shop.notation"}), lines);
}

// What is there and cannot be read is no diagram less, and nothing but a regular file is waited for.
TEST(FormatFiles, TellWhatBesideThemCannotBeRead)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink("loop.notation", folder.path() / "loop.notation");
    std::filesystem::create_directory(folder.path() / "folder.notation");
    ASSERT_EQ(mkfifo((folder / "pipe.notation").c_str(), 0600), 0);
    const std::string model = bytesOf("shop.uml");
    for (const auto& [name, reason] :
         {std::pair{"loop", "Too many levels of symbolic links"}, std::pair{"folder", "Is a directory"},
          std::pair{"pipe", "it is no regular file"}}) {
        const std::string path = folder / (std::string(name) + ".uml");
        EXPECT_EQ(faultOf({model, path}), std::string(name) + ".notation: " + reason);
    }
    const std::string longName(251, 'n'); // .notation makes a name of it that no file can have
    design::Report report;
    const design::Format* const format = design::formatOf({model, folder / (longName + ".uml")});
    ASSERT_NE(format, nullptr);
    EXPECT_TRUE(format->read({model, folder / (longName + ".uml")}, report).root.diagrams.empty());
}

// Names of elements in other files are read there; when such a file is broken, it is as if it were not there.
TEST(FormatFiles, TakeNamesFromTheFilesBeside)
{
    const char* const model = "<uml:Model xmlns:uml='u' xmlns:xmi='x' xmi:id='m' name='m'><packagedElement "
                              "xmi:type='uml:Class' xmi:id='c' name='C'><ownedAttribute xmi:id='a' name='a'>"
                              "<type href='FILE#_other5678901234567890123'/></ownedAttribute></packagedElement>"
                              "</uml:Model>";
    const TemporaryFolder folder;
    folder.write("other.uml", "<uml:Model xmlns:xmi='x'><x xmi:id='_other5678901234567890123' name='Other'/>"
                              "</uml:Model>");
    folder.write("broken.uml", "<uml:Model xmlns:xmi='x'><x xmi:id='_other5678901234567890123' name='Other'/>");
    const struct {
        const char* file;
        const char* name;
    } rows[] = {
        {"other.uml", "Other <other.uml#_other5678901234567890123>"},
        {"broken.uml", "_other5678901234567890123 <broken.uml#_other5678901234567890123>"},
        {"missing.uml", "_other5678901234567890123 <missing.uml#_other5678901234567890123>"},
        {"../other.uml", "_other5678901234567890123 <../other.uml#_other5678901234567890123>"},
        {"model.uml", "<_other5678901234567890123>"}, // the file itself, in which there is no such element
    };
    for (const auto& row : rows) {
        std::string text = model;
        text.replace(text.find("FILE"), 4, row.file);
        EXPECT_THAT(linesOf({text, folder / "model.uml"}),
                    testing::Contains("public attribute C.a : " + std::string(row.name)))
            << row.file;
    }
}

} // namespace
