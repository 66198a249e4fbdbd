#include "CommandFixture.h"

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

// A folder with two models of one name, and one with a fault.
class SeveralFiles : public Command {
protected:
    SeveralFiles()
    {
        for (const char* const name : {"a", "b"}) {
            fs::create_directory(folder / name);
            folder.write(std::string(name) + "/m.model.json", sensitiveModel());
        }
        folder.write("n.json", model("'childPackages':[{'name':'p'}]"));
    }

    [[nodiscard]] Words namesIn(const std::string& name) const
    {
        Words names;
        for (const auto& entry : fs::directory_iterator(folder / name))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(SeveralFiles, AreMadeInTheFolder)
{
    const std::string expected = exported();
    const ProcessResult result = run({"export", "m.json", "broken.json", "n.json", "-o", "rose/new/"});
    EXPECT_EQ(result.exitCode, 3) << "that of the broken one";
    EXPECT_THAT(result.errors, AllOf(HasSubstr("rose/new/m.mdl: 2 classes, 1 diagram, "), HasSubstr("broken.json:1:"),
                                     HasSubstr("rose/new/n.mdl: 0 classes, 0 diagrams, ")));
    EXPECT_THAT(namesIn("rose/new"), ElementsAre("m.mdl", "n.mdl"));
    EXPECT_TRUE(isSame(folder.read("rose/new/m.mdl"), expected));

    const struct {
        Words arguments;
        const char* made;
    } rows[] = {
        {{"export", "a/m.model.json", "-o", "a"}, "a/m.mdl"}, // a folder that is there needs no slash
        {{"import", "--layout", "a/m.model.json", "-o", "placed/"}, "placed/m.model.json"},
        {{"browse", "rose/new/m.mdl", "rose/new/n.mdl", "-o", "pages/"}, "pages/n.html"},
        {{"browse", "rose/new/m.mdl", "rose/new/n.mdl"}, "m.html"},
        {{"export", "m.json", "n.json"}, "n.mdl"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(run(row.arguments).exitCode, 0) << testing::PrintToString(row.arguments);
        EXPECT_TRUE(fs::is_regular_file(folder / row.made)) << row.made;
    }
}

TEST_F(SeveralFiles, AreWrittenInOtherFormats)
{
    (void)run({"export", "m.json", "-o", "x.mdl"});
    (void)run({"export", "m.json", "-o", "y.mdl"});
    const struct {
        Words arguments;
        const char* made;
    } rows[] = {
        {{"import", "x.mdl", "y.mdl", "-o", "models/"}, "models/y.model.json"},
        {{"convert", "x.mdl", "y.mdl", "--to", "model"}, "y.model.json"},
        {{"convert", "m.json", "x.mdl", "--to", "rose", "-o", "rose/"}, "rose/x.mdl"},
        {{"convert", "a/m.model.json", "y.mdl", "--to", "ecore"}, "m.ecore"},
        {{"convert", "x.mdl", "y.mdl", "--to", "papyrus", "-o", "new/"}, "new/y.notation"},
        {{"convert", "x.mdl", "y.mdl", "--to", "plantuml", "-o", "texts/"}, "texts/y/Main.puml"},
        {{"convert", "x.mdl", "y.mdl", "--to", "mermaid"}, "y/Main.mmd"},
    };
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, 0) << testing::PrintToString(row.arguments) << result.errors;
        EXPECT_TRUE(fs::is_regular_file(folder / row.made)) << row.made;
    }
    EXPECT_EQ(run({"convert", "x.mdl", "none.mdl", "--to", "mermaid", "-o", "new/"}).exitCode, 3);
    EXPECT_THAT(namesIn("new/x"), ElementsAre("Main.mmd")) << "and no folder for the one that is not there";
    EXPECT_FALSE(fs::exists(folder / "new/none"));
}

TEST_F(SeveralFiles, DoNotOverwriteEachOther)
{
    (void)run({"export", "m.json", "-o", "x.mdl"});
    (void)run({"export", "m.json", "-o", "x.html"});
    const struct {
        Words arguments;
        const char* message;
    } rows[] = {
        {{"export", "a/m.model.json", "b/m.model.json"},
         "m.mdl: the output of b/m.model.json would overwrite the output of a/m.model.json\n"},
        {{"browse", "x.mdl", "x.html"}, "x.html: the output of x.mdl would overwrite x.html, which was read\n"},
        {{"export", "m.json", "n.json", "-o", "-"}, "standard output is one file for what is made of 2"},
        {{"convert", "x.mdl", "a/x.mdl", "--to", "mermaid"},
         "a/x.mdl: what is made of another file goes into the folder 'x' already\n"},
        {{"convert", "x.mdl", "-", "--to", "ecore"}, "standard input has no name for its output to be called by"},
        {{"import", "x.mdl", "m.json", "--report", "r.json"}, "--report is about one model, not 2\n"},
    };
    const Words names = folder.names();
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(row.arguments);
        EXPECT_THAT(result.errors, HasSubstr(row.message));
    }
    EXPECT_EQ(folder.names(), names);
}

} // namespace
