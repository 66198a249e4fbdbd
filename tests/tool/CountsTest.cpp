// Elements by kinds: what a design held, what the report says of them, and what there is in what was made of it.

#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <cctype>
#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <simdjson.h>
#include <string>
#include <vector>

namespace {

using Counts = std::map<std::string, std::int64_t>;

struct Told {
    Counts read;
    Counts written; // by what was left and made up
};

Told toldIn(const std::string& report)
{
    simdjson::dom::parser parser;
    const simdjson::dom::element root = parser.parse(report);
    Told told;
    for (const auto& [kind, count] : simdjson::dom::object(root["read"]))
        told.read[std::string(kind)] = count;
    told.written = told.read;
    for (const auto& [list, sign] : {std::pair("left", -1), std::pair("made", 1)})
        for (const simdjson::dom::element entry : simdjson::dom::array(root[list]))
            told.written[std::string(entry["kind"])] += sign;
    return told;
}

class Counted : public testing::TestWithParam<std::string> {
protected:
    [[nodiscard]] Told convert(const std::string& input, const std::string& output) const
    {
        const ProcessResult result = runProcess(
            {PETAL_COMMAND, {"convert", "-q", input, "-o", output, "--report", "report.json"}, folder.path(), ""});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return toldIn(folder.read("report.json"));
    }

    TemporaryFolder folder;
};

// The kinds of what is in a design; other words in a report are about parts and properties of these.
constexpr const char* kinds[] = {"package",           "class",       "interface",  "data type",
                                 "primitive type",    "enumeration", "attribute",  "operation",
                                 "association class", "actor",       "use case",   "parameter",
                                 "literal",           "association", "dependency", "generalization",
                                 "realization",       "diagram",     "box",        "line"};

// Designs that come in and the formats that they go out in, those of models and Rose files by way of the host's model.
// What a model file holds is counted when it is read, which is by way of its Rose file.
TEST_P(Counted, AsTheReportSays)
{
    const bool isModel = GetParam().ends_with(".model.json");
    const std::vector<std::string> outputs =
        isModel ? std::vector<std::string>{"out.xml", "out.di", "out.mdj", "out.ecore", "alone.uml"}
                : std::vector<std::string>{"out.mdl", "out.model.json"};
    for (const std::string& output : outputs) {
        Counts expected = convert(std::string(PETAL_SOURCE_DIR) + GetParam(), output).written;
        Counts found = convert(output, output == "out.mdj" ? "again.uml" : "again.mdj").read;
        for (const char* const kind : kinds)
            EXPECT_EQ(found[kind], expected[kind]) << output << ": " << kind;
    }
}

std::vector<std::string> designs()
{
    std::vector<std::string> paths = {"/examples/orders.model.json", "/examples/host-model.model.json",
                                      "/tests/designs/files/all-kinds.model.json"};
    for (const char* const name :
         {"shop.mdj", "enterprise-architect.xml", "shop.uml", "one-file.uml", "umbrello.xmi", "umbrello2.xmi",
          "uml1.xmi", "plain.xmi", "all-kinds.xmi", "shop.ecore", "packages.ecore", "shop.mdl", "shop.model.json"})
        paths.push_back(std::string("/tests/designs/files/") + name);
    return paths;
}

INSTANTIATE_TEST_SUITE_P(, Counted, testing::ValuesIn(designs()), [](const auto& instance) {
    std::string name = instance.param.substr(instance.param.rfind('/') + 1);
    std::erase_if(name, [](unsigned char letter) { return std::isalnum(letter) == 0; });
    return name;
});

} // namespace
