#include "reader/PetalTexts.h"
#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <simdjson.h>

using testing::HasSubstr;
using Words = std::vector<std::string>;

namespace {

std::string orders(const std::string& attribute, const std::string& place)
{
    return logicalView("(object Class \"Order\" quid \"B1\" class_attributes (list class_attribute_list " + attribute +
                           "))\n",
                       "(object ClassView \"Class\" \"Logical View::Order\" @1 location " + place + " quidu \"B1\")");
}

class DiffCommand : public testing::Test {
protected:
    DiffCommand()
    {
        folder.write("old.mdl", orders("", "(1, 1)"));
        folder.write("new.mdl", orders("(object ClassAttribute \"total\" quid \"C1\" type \"Money\")", "(2, 1)"));
        folder.write("text.mdl", "no petal file");
    }

    [[nodiscard]] ProcessResult run(Words arguments, const std::string& input = "") const
    {
        arguments.insert(arguments.begin(), "diff");
        return runProcess({PETAL_COMMAND, arguments, folder.path(), input, {}});
    }

    TemporaryFolder folder;
};

constexpr const char* modelPart = "package Logical View\n  class Order\n    + attribute total : Money\n";
constexpr const char* diagramPart = "diagram Logical View::Main: Order moved\n";

} // namespace

TEST_F(DiffCommand, SaysWhatWasAskedForAndWhetherThereIsAny)
{
    const struct {
        Words arguments;
        int exitCode;
        std::string output;
    } rows[] = {
        {{"old.mdl", "new.mdl"}, 1, std::string(modelPart) + diagramPart},
        {{"old.mdl", "old.mdl"}, 0, ""},
        {{"old.mdl", "new.mdl", "--model-only"}, 1, modelPart},
        {{"old.mdl", "new.mdl", "--diagrams-only"}, 1, diagramPart},
        {{"old.mdl", "new.mdl", "--only", "moved"}, 1, diagramPart},
        {{"old.mdl", "new.mdl", "--only", "removed"}, 0, ""},
        {{"old.mdl", "new.mdl", "-q"}, 1, ""},
        {{"old.mdl", "new.mdl", "--stat"}, 1, "attribute: 1 added\nview: 1 moved\n"},
    };
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << testing::PrintToString(row.arguments);
        EXPECT_EQ(result.output, row.output) << testing::PrintToString(row.arguments);
        EXPECT_EQ(result.errors, "") << testing::PrintToString(row.arguments);
    }
}

// A design is compared by what its export would be, whatever names of types that had.
TEST_F(DiffCommand, TakesDesignsAndModelFilesOnEitherSide)
{
    const std::string shop = R"({"format": "kiv-model", "version": 1, "name": "Shop",
        "types": [{"id": "t", "name": "Label", "dataType": "VARCHAR", "length": 10}],
        "childPackages": [{"name": "Sales", "modelElements": [{"kind": "class", "id": "c", "name": "Order",
        "attributes": [{"name": "title", "type": "t"}]}]}]})";
    folder.write("shop.model.json", shop);
    std::string changed = shop;
    changed.replace(changed.find("title"), 5, "label");
    folder.write("changed.model.json", changed);
    folder.write("broken.model.json", shop.substr(0, shop.size() - 1));
    for (const char* const types : {"c++", "java", "oracle", "as-is"}) {
        ASSERT_EQ(runProcess({PETAL_COMMAND,
                              {"export", "-q", "shop.model.json", "--types", types, "-o", "shop.mdl"},
                              folder.path(),
                              "",
                              {}})
                      .exitCode,
                  0);
        EXPECT_EQ(run({"shop.mdl", "shop.model.json"}).output, "") << types;
        EXPECT_EQ(run({"changed.model.json", "shop.mdl"}).exitCode, 1) << types;
    }
    EXPECT_EQ(run({"shop.model.json", "changed.model.json"}).output,
              "package Logical View::Sales\n  class Order\n    ~ attribute label: renamed from title\n");
    const ProcessResult broken = run({"shop.mdl", "broken.model.json"});
    EXPECT_EQ(broken.exitCode, 3);
    EXPECT_THAT(broken.errors, testing::StartsWith("broken.model.json:"));
}

// What an export would not hold either is no difference between a file of Rose and the design made of it.
TEST_F(DiffCommand, ComparesARoseFileWithTheDesignMadeOfIt)
{
    const auto rose = [](const std::string& operation) {
        return logicalView(
            "(object Class \"Order\" quid \"B1\" language \"COM\" operations (list Operations " + operation +
                ") statemachine (object State_Machine \"States\" quid \"B9\"))\n"
                "(object UseCase \"Pay\" quid \"B2\")\n"
                "(object Class_Category \"P\" is_unit TRUE is_loaded FALSE file_name \"P.cat\" quid \"B3\")",
            "(object ClassView \"Class\" \"Logical View::Order\" @1 location (411, 302) width 245 height 187 "
            "line_color 3342489 fill_color 13434879 quidu "
            "\"B1\")");
    };
    folder.write("rose.mdl", rose("(object Operation \"pay\" quid \"C1\")"));
    folder.write("later.mdl", rose("(object Operation \"pay\" quid \"C1\") (object Operation \"ship\" quid \"C2\")"));
    for (const char* const design : {"rose.mdj", "rose.model.json"}) {
        ASSERT_EQ(
            runProcess({PETAL_COMMAND, {"convert", "-q", "rose.mdl", "-o", design}, folder.path(), "", {}}).exitCode,
            0);
        const ProcessResult same = run({"rose.mdl", design, "--model-only"});
        EXPECT_EQ(same.output, "") << design;
        EXPECT_EQ(same.errors, "petal: P.cat: not loaded: there is no such file\n") << design;
        EXPECT_EQ(run({"rose.mdl", design, "--diagrams-only"}).output, "") << "pixels are near enough";
        EXPECT_EQ(run({design, "later.mdl", "--model-only"}).output,
                  "package Logical View\n  class Order\n    + operation ship()\n")
            << design;
    }
}

TEST_F(DiffCommand, TroubleIsNoDifference)
{
    const std::pair<Words, std::string> rows[] = {
        {{"old.mdl", "gone.mdl"}, "petal: gone.mdl: No such file or directory\n"},
        {{"text.mdl", "new.mdl"}, "petal: text.mdl: no petal file"},
        {{"-", "-"}, "petal: only one of the two files can be standard input\n"},
        {{"old.mdl", "new.mdl", "--only", "everything"}, "--only"},
        {{"old.mdl", "new.mdl", "--model-only", "--diagrams-only"}, "excludes"},
    };
    for (const auto& [arguments, message] : rows) {
        const ProcessResult result = run(arguments);
        EXPECT_GT(result.exitCode, 1) << testing::PrintToString(arguments);
        EXPECT_THAT(result.errors, HasSubstr(message)) << testing::PrintToString(arguments);
        EXPECT_EQ(result.output, "") << testing::PrintToString(arguments);
    }
    EXPECT_EQ(run({"-", "old.mdl"}, orders("", "(1, 1)")).exitCode, 0);
}

TEST_F(DiffCommand, WritesAPage)
{
    const struct {
        Words arguments;
        int exitCode;
        const char* errors;
        const char* page;
    } rows[] = {
        {{"old.mdl", "new.mdl", "--html", "page.html"}, 1, "page.html: 2 changes, ", "page.html"},
        {{"old.mdl", "old.mdl", "--html", "same.html"}, 0, "same.html: 0 changes, ", "same.html"},
        {{"old.mdl", "new.mdl", "--only", "removed", "--html", "none.html", "-q"}, 0, "", "none.html"},
        {{"old.mdl", "new.mdl", "--html", "new.mdl"}, 2, "would overwrite new.mdl", "new.mdl"},
        {{"old.mdl", "gone.mdl", "--html", "not.html"}, 3, "gone.mdl: No such file", nullptr},
        {{"old.mdl", "new.mdl", "--html", "nowhere/not.html"}, 3, "nowhere/not.html: No such file", nullptr},
        {{"old.mdl", "new.mdl", "--html", "not.html", "--json"}, 2, "excludes", nullptr},
    };
    const std::string before = folder.read("new.mdl");
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.errors, HasSubstr(row.errors));
        EXPECT_EQ(result.errors.empty(), row.errors[0] == '\0') << result.errors;
        EXPECT_TRUE(!row.page || std::filesystem::exists(folder.path() / row.page));
        EXPECT_FALSE(std::filesystem::exists(folder.path() / "not.html"));
    }
    EXPECT_EQ(folder.read("new.mdl"), before);
    EXPECT_THAT(run({"old.mdl", "new.mdl", "--html", "-"}).output, testing::EndsWith("</html>\n"));
}

TEST_F(DiffCommand, HasColoursWhereTheyAreWanted)
{
    const std::pair<const char*, bool> rows[] = {{"auto", false}, {"always", true}, {"never", false}};
    for (const auto& [use, hasColours] : rows) {
        const std::string output = run({"old.mdl", "new.mdl", "--color", use}).output;
        EXPECT_EQ(output.find("\x1B[32m+ attribute total") != std::string::npos, hasColours) << use;
    }
}

TEST_F(DiffCommand, Json)
{
    simdjson::dom::parser parser;
    const simdjson::padded_string text(run({"old.mdl", "new.mdl", "--json"}).output);
    const simdjson::dom::element root = parser.parse(text);
    const simdjson::dom::element added = root["changes"].at(0);
    EXPECT_EQ(std::string_view(added["change"]), "added");
    EXPECT_EQ(std::string_view(added["of"]), "model");
    EXPECT_EQ(std::string_view(added["text"]), "attribute total : Money");
    EXPECT_EQ(std::string_view(added["new"]["path"]), "Logical View::Order::total");
    EXPECT_EQ(std::string_view(added["new"]["file"]), "new.mdl");
    const simdjson::dom::element moved = root["changes"].at(1);
    EXPECT_EQ(std::string_view(moved["view"]), "Order");
    EXPECT_EQ(std::string_view(moved["before"]), "(1, 1)");
    EXPECT_EQ(std::string_view(moved["after"]), "(2, 1)");
    EXPECT_EQ(std::int64_t(root["counts"]["attribute"]["added"]), 1);
    EXPECT_EQ(root["changes"].get_array().size(), 2U);
}

TEST_F(DiffCommand, UnitsAreComparedAsOneModel)
{
    const std::string members = "(object Class \"Order\" quid \"B1\")\n";
    const std::string names = "(object Class_Category \"Sales\" is_unit TRUE is_loaded FALSE file_name \"sales.cat\" "
                              "quid \"A5\")\n";
    folder.write("whole.mdl", logicalView("(object Class_Category \"Sales\" quid \"A5\" logical_models (list "
                                          "unit_reference_list " +
                                          members + "))\n"));
    folder.write("parts.mdl", logicalView(names));
    folder.write("sales.cat", std::string(petalHeader) +
                                  "(object Class_Category \"Sales\" is_unit TRUE is_loaded TRUE quid \"A5\" "
                                  "logical_models (list unit_reference_list " +
                                  members + "))\n");
    const ProcessResult result = run({"whole.mdl", "parts.mdl"});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
}
