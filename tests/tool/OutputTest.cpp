#include "CommandFixture.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

// Outputs are complete or untouched.

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

void limitFileSize(rlim_t bytes)
{
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

mode_t modeOf(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

TEST_F(Command, LeavesTheTargetAloneWhenItFails)
{
    const std::size_t size = exported().size();
    const struct {
        Words arguments;
        rlim_t most; // bytes that a file can have
        int exitCode;
        const char* message;
    } rows[] = {
        {{"export", "broken.json"}, RLIM_INFINITY, 3, "broken.json:1:43: error: /types: "},
        {{"export", "none.json"}, RLIM_INFINITY, 3, "petal: none.json"},
        {{"export", "m.json", "--log", "/dev/full"}, RLIM_INFINITY, 1, "petal: /dev/full: No space left on device"},
        {{"export", "m.json", "--log", "sub"}, RLIM_INFINITY, 1, "petal: sub: Is a directory"},
        {{"export", "m.json", "--stats-json", "sub"}, RLIM_INFINITY, 1, "petal: sub: Is a directory"},
        {{"export", "m.json"}, 0, 1, "petal: target: File too large"},
        {{"export", "m.json"}, 1000, 1, "petal: target: File too large"},
        {{"export", "m.json"}, size - 1, 1, "petal: target: File too large"},
    };
    fs::create_directory(folder / "sub");
    folder.write("target", "old");
    const Words names = folder.names();
    for (const auto& row : rows) {
        Words arguments = row.arguments;
        arguments.insert(arguments.end(), {"-o", "target"});
        const ProcessResult result = run(arguments, [&] { limitFileSize(row.most); });
        const std::string words = testing::PrintToString(row.arguments) + " up to " + std::to_string(row.most);
        EXPECT_EQ(result.exitCode, row.exitCode) << words;
        EXPECT_THAT(result.errors, StartsWith(row.message)) << words;
        EXPECT_TRUE(isSame(folder.read("target"), "old")) << words;
        EXPECT_EQ(folder.names(), names) << words;
    }
    EXPECT_EQ(run({"export", "m.json", "-o", "target"}, [&] { limitFileSize(size); }).exitCode, 0);
    EXPECT_EQ(folder.read("target").size(), size);
}

TEST_F(Command, FollowsLinksAndKeepsModes)
{
    const std::string expected = exported();
    fs::create_directory(folder / "sub");
    folder.write("sub/real.mdl", "old");
    chmod((folder / "sub/real.mdl").c_str(), 0640);
    fs::create_symlink("real.mdl", folder / "sub/link");
    fs::create_symlink("sub/link", folder / "link");
    fs::create_symlink("sub/new.mdl", folder / "dangling");
    fs::create_symlink("loop", folder / "loop");
    fs::create_symlink("none/new.mdl", folder / "nowhere");
    for (const char* const link : {"link", "dangling"})
        EXPECT_EQ(run({"export", "m.json", "-o", link}, [] { umask(027); }).exitCode, 0) << link;
    for (const char* const file : {"sub/real.mdl", "sub/new.mdl"}) {
        EXPECT_TRUE(isSame(folder.read(file), expected)) << file;
        EXPECT_EQ(modeOf(folder / file), 0640U) << file;
    }
    for (const char* const link : {"loop", "nowhere"})
        EXPECT_EQ(run({"export", "m.json", "-o", link}).exitCode, 1) << link;
    for (const char* const link : {"link", "sub/link", "dangling", "loop", "nowhere"})
        EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
    EXPECT_EQ(run({"export", "m.json", "-o", "plain.mdl"}, [] { umask(0); }).exitCode, 0);
    EXPECT_EQ(modeOf(folder / "plain.mdl"), 0666U);
    chmod((folder / "plain.mdl").c_str(), 04751);
    EXPECT_EQ(run({"export", "m.json", "-o", "plain.mdl"}, [] { umask(077); }).exitCode, 0);
    EXPECT_EQ(modeOf(folder / "plain.mdl"), 04751U);
    EXPECT_THAT(folder.names(),
                ElementsAre("broken.json", "dangling", "link", "loop", "m.json", "nowhere", "plain.mdl", "sub"));
}

TEST_F(Command, WritesToPipes)
{
    const std::string expected = exported();
    mkfifo((folder / "pipe").c_str(), 0600);
    Process reader({"/bin/cat", {"pipe"}, folder.path()});
    EXPECT_EQ(run({"export", "m.json", "-o", "pipe"}).exitCode, 0);
    EXPECT_TRUE(isSame(reader.wait().output, expected));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    for (const char* const pipe : {"/dev/stdout", "/proc/self/fd/1", "/dev/fd/1"}) {
        const ProcessResult result = run({"export", "m.json", "-o", pipe});
        EXPECT_TRUE(isSame(result.output, expected)) << pipe << result.errors;
    }
    EXPECT_THAT(folder.names(), ElementsAre("broken.json", "m.json", "pipe"));
}

TEST_F(Command, GoesOnWhereAnOpenFileEnds)
{
    const std::string expected = exported();
    const struct {
        Words arguments;
        std::string added;
    } rows[] = {
        {{"-o", "/dev/stdout"}, expected},
        {{"-o", "/dev/fd/1"}, expected},
        {{"-o", "/proc/self/fd/1"}, expected},
        {{"-o", "/proc/thread-self/fd/1"}, expected},
        {{"-o", "/dev/fd/7"}, expected},
        {{"-o", "m.mdl", "--report", "/dev/stdout"}, "{"},
        {{"-o", "m.mdl", "--stats-json", "/dev/fd/1"}, "{"},
        {{"-o", "m.mdl", "--log", "/dev/fd/1"}, "writing package"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        folder.write("all", "before\n");
        Words arguments = {"export", "m.json"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const ProcessResult result = run(arguments, [&] {
            const int all = open("all", O_WRONLY);
            lseek(all, 0, SEEK_END);
            dup2(all, STDOUT_FILENO);
            dup2(all, 7);
        });
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_THAT(folder.read("all"), StartsWith("before\n" + row.added));
    }
    for (const char* const path : {"/dev/fd/9", "/dev/fd/3"})
        EXPECT_EQ(run({"export", "m.json", "-o", path}, [] { closefrom(3); }).errors,
                  std::string("petal: ") + path + ": Bad file descriptor\n");
}

TEST_F(Command, SaysWhenStandardOutputIsNotWritten)
{
    folder.write("a.mdl", exported());
    folder.write("none.mdl", "\n(object Petal\n version 42)\n(object Design \"x\" \"");
    const struct {
        Words arguments;
        int exitCode;
    } rows[] = {
        {{"--help"}, 1},
        {{"--version"}, 1},
        {{"draw", "--help"}, 1},
        {{"import", "--list-formats"}, 1},
        {{"options"}, 1},
        {{"options", "--json"}, 1},
        {{"check", "none.mdl"}, 3},
        {{"check", "a.mdl", "--json"}, 3},
        {{"tree", "a.mdl"}, 3},
        {{"draw", "a.mdl", "--list"}, 1},
        {{"draw", "a.mdl", "--diagram", "Logical View::Sales::Main", "-o", "-"}, 1},
        {{"browse", "a.mdl", "-o", "-"}, 1},
        {{"export", "m.json", "-o", "-"}, 1},
        {{"export", "m.json", "-o", "-", "--no-geometry"}, 1},
        {{"export", "m.json", "--stats-json", "-"}, 1},
        {{"export", "m.json", "--report", "-"}, 1},
    };
    const Words names = folder.names();
    for (const auto& row : rows) {
        const std::string words = testing::PrintToString(row.arguments);
        const ProcessResult full = run(row.arguments, [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
        EXPECT_EQ(full.exitCode, row.exitCode) << words;
        EXPECT_THAT(full.errors, HasSubstr("petal: standard output: No space left on device\n")) << words;
        const ProcessResult closed = run(row.arguments, [] {
            int ends[2];
            if (pipe(ends) == 0 && dup2(ends[1], STDOUT_FILENO) >= 0)
                close(ends[0]);
        });
        EXPECT_EQ(closed.exitCode, 1) << words;
        EXPECT_THAT(closed.errors, Not(HasSubstr("petal: "))) << words;
    }
    EXPECT_EQ(folder.names(), names);
}

TEST_F(Command, TakesNoFileForAClosedStream)
{
    // Enough packages for the log to reach the file while the export still writes it.
    std::string packages = "{'name':'p0'}";
    for (int i = 1; i < 3000; ++i)
        packages.append(",{'name':'p").append(std::to_string(i)).append("'}");
    folder.write("m.json", model("'childPackages':[" + packages + "]"));
    const std::string expected = exported();
    EXPECT_EQ(run({"export", "m.json", "-o", "-"}, [] { close(STDOUT_FILENO); }).exitCode, 1);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        (void)run({"export", "m.json", "-o", "x.mdl", "--log", "-", "--stats"}, [=] { close(stream); });
        EXPECT_TRUE(isSame(folder.read("x.mdl"), expected)) << "without stream " << stream;
    }
}

// In a command that is built with the sanitizers these take some signals, unless they are told not to.
void leaveSignals()
{
    setenv("ASAN_OPTIONS", "handle_segv=0:handle_sigbus=0", 1);
}

TEST_F(Command, SaysThatAFaultEndedIt)
{
    mkfifo((folder / "pipe").c_str(), 0600);
    const Words names = folder.names();
    for (const int signal : {SIGABRT, SIGTRAP, SIGSEGV, SIGBUS, SIGTERM}) {
        Process command({PETAL_COMMAND, {"export", "pipe", "-o", "x.mdl"}, folder.path(), "", leaveSignals});
        const int pipe = open((folder / "pipe").c_str(), O_WRONLY); // when the command opens it, too
        command.kill(signal);
        const ProcessResult result = command.wait();
        close(pipe);
        EXPECT_EQ(result.signal, signal);
        EXPECT_EQ(result.errors, signal == SIGTERM
                                     ? std::string()
                                     : std::string("petal: ended by a fault of its own or of a library: ") +
                                           sigdescr_np(signal) + "\n");
        EXPECT_EQ(folder.names(), names);
    }
}

// A model whose export takes so much longer than the start of the command that most signals arrive in between.
std::string slowModel(const std::function<double(const std::string&)>& secondsFor)
{
    std::string classes = "{'kind':'class','name':'c','attributes':[{'name':'a'},{'name':'b'}]}";
    const double start = secondsFor(model(""));
    while (secondsFor(model("'childPackages':[{'modelElements':[" + classes + "]}]")) < start + 0.02) {
        const std::string half = classes;
        classes.append(",").append(half);
    }
    return model("'childPackages':[{'modelElements':[" + classes + "]}]");
}

TEST_F(Command, LeavesTheOldOrTheNewFileWhenASignalEndsIt)
{
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    double duration = 0;
    folder.write("m.json", slowModel([&](const std::string& text) {
                     folder.write("m.json", text);
                     const auto start = Clock::now();
                     EXPECT_EQ(run({"export", "m.json", "-o", "m.mdl"}).exitCode, 0);
                     return duration = Seconds(Clock::now() - start).count();
                 }));
    const Words names = folder.names();
    const std::string contents[] = {folder.read("m.mdl"), exported({"--types", "java", "-q"})};
    std::size_t now = 0; // which of the two stands in the file
    std::mt19937 random(1);
    int endedBySignal = 0;
    for (int round = 0; round < 240; ++round) {
        const int signals[] = {SIGINT, SIGTERM, SIGHUP, SIGKILL};
        const int signal = signals[round % 4];
        SCOPED_TRACE(testing::Message() << "round " << round << ", signal " << signal);
        Process command(
            {PETAL_COMMAND, {"export", "m.json", "-o", "m.mdl", "--types", now == 0 ? "java" : "c++"}, folder.path()});
        std::this_thread::sleep_for(Seconds(std::uniform_real_distribution(0.0, 1.2 * duration)(random)));
        command.kill(signal);
        const ProcessResult result = command.wait();
        ASSERT_TRUE(result.signal == signal || result.exitCode == 0) << result.exitCode << result.errors;
        endedBySignal += result.signal == signal ? 1 : 0;
        const std::string content = folder.read("m.mdl");
        if (result.exitCode == 0 || content != contents[now])
            now = 1 - now;
        ASSERT_TRUE(isSame(content, contents[now]));
        ASSERT_TRUE(signal == SIGKILL || folder.names() == names) << testing::PrintToString(folder.names());
        for (const std::string& name : folder.names())
            if (name.starts_with(".petal-"))
                fs::remove(folder / name);
        ASSERT_EQ(folder.names(), names);
    }
    EXPECT_GT(endedBySignal, 20) << "too few for the test to mean anything";
}

} // namespace
