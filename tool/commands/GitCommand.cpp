#include "tool/commands/Commands.h"

#include "tool/commands/Git.h"
#include "tool/output/OutputFile.h"

#include "reader/document/Document.h"
#include "text/Files.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view blockStart = "# What petal git --enable has written\n";
constexpr std::string_view blockEnd = "# petal git --disable removes it\n";
constexpr std::string_view endings[] = {"[mM][dD][lL]", "[cC][aA][tT]", "[sS][uU][bB]", "[pP][rR][cC]"};

constexpr std::string_view noFile = "/dev/null"; // what git calls one that is not there

constexpr const char* commandKey = "diff.petal.command";
constexpr const char* textKey = "diff.petal.textconv";

// What git says. It has told itself why it could not.
std::string askGit(const std::vector<std::string>& arguments)
{
    const GitResult result = runGit(arguments);
    if (result.exitCode != 0)
        throw std::runtime_error("git " + arguments.front() + " failed");
    return result.output;
}

std::string quotedForShell(const std::string& word)
{
    std::string result = "'";
    for (const char c : word)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

// The name of this command for a shell: `petal` if that is found, else its path.
std::string commandForShell()
{
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    const char* const folders = std::getenv("PATH");
    std::string_view rest = folders ? folders : "";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        const fs::path candidate = fs::path(rest.substr(0, end)) / "petal";
        if (fs::exists(candidate, error))
            return fs::equivalent(candidate, self, error) ? "petal" : quotedForShell(self.string());
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return quotedForShell(self.string());
}

std::string attributesFile()
{
    return askGit({"rev-parse", "--git-path", "info/attributes"});
}

std::string contentOf(const std::string& file)
{
    std::error_code error;
    return fs::exists(file, error) ? text::readFile(file) : std::string();
}

std::string withoutBlock(const std::string& content)
{
    const std::size_t start = content.find(blockStart);
    const std::size_t end = start == std::string::npos ? start : content.find(blockEnd, start);
    return end == std::string::npos ? content : content.substr(0, start) + content.substr(end + blockEnd.size());
}

void replace(const std::string& file, const std::string& content)
{
    fs::create_directories(fs::path(file).parent_path());
    OutputFile output(file);
    output.write(content);
    output.commit();
}

void enable()
{
    const std::string file = attributesFile();
    std::string content = withoutBlock(contentOf(file));
    if (!content.empty() && !content.ends_with('\n'))
        content += '\n';
    content += blockStart;
    for (const std::string_view ending : endings)
        content.append("*.").append(ending).append(" diff=petal\n");
    content += blockEnd;
    const std::string petal = commandForShell();
    const std::pair<const char*, std::string> settings[] = {{commandKey, petal + " git --diff --"},
                                                            {textKey, petal + " git --text --"}};
    for (const auto& [key, value] : settings) {
        askGit({"config", "--local", "--replace-all", key, value});
        std::cout << "git config " << key << ": " << value << '\n';
    }
    replace(file, content);
    std::cout << file << ": *.mdl, *.cat, *.sub and *.prc are compared by petal\n";
}

void disable()
{
    const std::string file = attributesFile();
    const std::string before = contentOf(file);
    if (const std::string content = withoutBlock(before); content != before) {
        replace(file, content);
        std::cout << file << ": the lines of petal are gone\n";
    }
    for (const char* const key : {commandKey, textKey}) {
        if (runGit({"config", "--local", "--get-all", key}).exitCode != 0)
            continue;
        askGit({"config", "--local", "--unset-all", key});
        std::cout << "git config " << key << " is gone\n";
    }
}

// What git hands over: path, old file, its hash and mode, new file, its hash and mode, and behind them the new path of
// a file that was renamed; of a file that is not merged the path alone. Git takes any exit code but 0 for a failure.
int compareForGit(const std::vector<std::string>& words)
{
    constexpr std::size_t oldPlace = 1;
    constexpr std::size_t newPlace = 4;
    constexpr std::size_t renamedPlace = 7;
    if (words.size() < renamedPlace) {
        std::cout << "* not merged: " << text::onOneLine(words.front()) << '\n';
        return endOfOutput(done, exportFailed);
    }
    const std::string& newPath = words.size() > renamedPlace ? words[renamedPlace] : words.front();
    std::cout << "petal diff a/" << text::onOneLine(words.front()) << " b/" << text::onOneLine(newPath) << '\n';
    if (words[oldPlace] == noFile || words[newPlace] == noFile) {
        std::cout << (words[oldPlace] == noFile ? "new file\n" : "deleted file\n");
        return endOfOutput(done, exportFailed);
    }
    DiffRequest request;
    request.oldFile = words[oldPlace];
    request.newFile = words[newPlace];
    request.reading.ignoresUnits = true;
    request.isForPager = std::getenv("GIT_PAGER_IN_USE") != nullptr;
    const int exitCode = runDiff(request);
    if (exitCode == done)
        std::cout << "nothing but what Rose changes by itself\n";
    else if (exitCode > foundFaults)
        std::cout << "git diff --no-ext-diff shows the lines\n";
    return endOfOutput(done, exportFailed);
}

// What is no Rose file, as models of another tool with the same ending are not, stays as it is.
int writeTextForGit(const std::string& file)
{
    try {
        return writeFullTree(file, ReadRequest());
    } catch (const reader::NotPetal&) {
        std::cout << text::readFile(file);
        return endOfOutput(done, invalidModel);
    }
}

} // namespace

int runGitCommand(const GitRequest& request)
{
    return reportFailures("git", "standard output", [&] {
        if (!request.words.empty() && request.comparesFiles)
            return compareForGit(request.words);
        if (request.words.size() == 1 && request.writesText)
            return writeTextForGit(request.words.front());
        if (!request.words.empty() || request.enables == request.disables) {
            report("git: --enable or --disable expected");
            return static_cast<int>(wrongUsage);
        }
        request.enables ? enable() : disable();
        return endOfOutput(done, exportFailed);
    });
}
