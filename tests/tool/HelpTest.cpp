#include "CommandFixture.h"

#include "text/Utf8.h"

#include <fstream>
#include <sstream>

namespace {

using testing::HasSubstr;

const Words commands = {"export", "import", "check",  "tree",    "dump", "diff",
                        "git",    "draw",   "browse", "options", "help"};

TEST_F(Command, DescribesItselfInEightyColumns)
{
    Words all = {""};
    all.insert(all.end(), commands.begin(), commands.end());
    for (const std::string& command : all) {
        const Words arguments = command.empty() ? Words{"--help"} : Words{command, "--help"};
        const std::string help = run(arguments).output;
        std::istringstream lines(help);
        std::string line;
        for (bool isInOptions = false; std::getline(lines, line);) {
            EXPECT_LE(text::countCharacters(line), 80U) << command << ": " << line;
            EXPECT_FALSE(line.ends_with(' ')) << command << ": " << line;
            isInOptions = isInOptions || line == "Options:";
            const bool isName = line.starts_with("  -") || !line.starts_with(" ");
            EXPECT_TRUE(!isInOptions || isName || line.starts_with(std::string(28, ' ')) || command.empty()) << line;
        }
        EXPECT_THAT(help, HasSubstr("Usage: petal"));
    }
}

TEST_F(Command, DescribesACommandOnEachWay)
{
    EXPECT_EQ(run({"help"}).output, run({"--help"}).output);
    for (const std::string& command : commands) {
        EXPECT_EQ(run({"help", command}).output, run({command, "--help"}).output) << command;
        EXPECT_THAT(run({"help"}).output, HasSubstr("\n  " + command + " ")) << command;
    }
    EXPECT_EQ(run({"help", "export", "import"}).exitCode, 2);
}

TEST_F(Command, NamesTheDefaultOfTypes)
{
    std::istringstream words(run({"help", "export"}).output);
    std::string help; // however it is broken into lines
    for (std::string word; words >> word;)
        help.append(word).append(1, ' ');
    EXPECT_THAT(help, HasSubstr("those of C++ (the default, which makes std::chrono::year_month_day of Date)"));
}

TEST_F(Command, SaysWhatItIsMadeOf)
{
    const std::string version = run({"--version"}).output;
    EXPECT_EQ(run({"-V"}).output, version);
    EXPECT_THAT(version, testing::ContainsRegex("^petal [0-9]+\\.[0-9]+\\.[0-9]+\n\nBuilt by:  [A-Z][A-Za-z]+ [0-9]"));
    for (const char* const library :
         {"simdjson ", "pugixml ", "Graphviz ", "Pango ", "cairo ", "SQLite ", "glibc ", "CLI11 "})
        EXPECT_THAT(version, testing::ContainsRegex(std::string(library) + "[0-9]+\\.[0-9]"));
    std::ifstream licence(PETAL_SOURCE_DIR "/LICENSE");
    std::string owner;
    while (std::getline(licence, owner) && !owner.starts_with("Copyright")) {
    }
    EXPECT_THAT(version, HasSubstr("Licence:   MIT, " + owner + "\n"));
}

} // namespace
