#include "Terminal.h"
#include "CommandFixture.h"

#include <cstdlib>

// What a terminal shows and a file does not: colours, and how far a long command is.

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* red = "\x1b[1;31merror:\x1b[0m expected";

class OnTerminal : public Command {
protected:
    OnTerminal()
    {
        folder.write("bad.mdl", "(object Petal\nversion 42)\n(object Design \"Logical View\" a \"open\n)\n");
        const std::string diagram =
            "(object ClassDiagram \"D\" items (list diagram_item_list (object ClassView \"Class\" "
            "\"A\" @1 location (9, 9))))\n";
        folder.write("two.mdl", "(object Petal\nversion 42)\n(object Design \"Logical View\" root_category (object "
                                "Class_Category \"Logical View\" logical_presentations (list l " +
                                    diagram + diagram + ")))\n");
    }

    [[nodiscard]] std::string shown(const Words& arguments, const char* variable = "LANG",
                                    const char* value = "C") const
    {
        return shownOnTerminal({PETAL_COMMAND, arguments, folder.path(), "",
                                [=] {
                                    unsetenv("NO_COLOR");
                                    setenv("TERM", "xterm", 1);
                                    setenv(variable, value, 1);
                                }},
                               80);
    }
};

TEST_F(OnTerminal, SeveritiesHaveColours)
{
    for (const Words& command : {Words{"tree", "bad.mdl"}, Words{"export", "broken.json"}}) {
        const auto with = [&](Words arguments) {
            arguments.insert(arguments.begin(), command.begin(), command.end());
            return arguments;
        };
        EXPECT_THAT(shown(command), HasSubstr("error:\x1b[0m ")) << command[0];
        EXPECT_THAT(shown(with({"--color", "never"})), Not(HasSubstr("\x1b"))) << command[0];
        EXPECT_THAT(shown(command, "NO_COLOR", "1"), Not(HasSubstr("\x1b"))) << command[0];
        EXPECT_THAT(shown(command, "NO_COLOR", ""), HasSubstr("\x1b[1;31m")) << command[0];
        EXPECT_THAT(shown(command, "TERM", "dumb"), Not(HasSubstr("\x1b"))) << command[0];
        EXPECT_THAT(shown(with({"--color=always"}), "NO_COLOR", "1"), HasSubstr("\x1b[1;31m")) << command[0];
        EXPECT_THAT(run(command).errors, Not(HasSubstr("\x1b"))) << command[0];
        EXPECT_THAT(run(with({"--color=always"})).errors, HasSubstr("\x1b[1;31m")) << command[0];
    }
    EXPECT_THAT(run({"check", "bad.mdl", "--color=always"}).output, HasSubstr(red));
    EXPECT_THAT(run({"check", "bad.mdl"}).output, Not(HasSubstr("\x1b")));
}

TEST_F(OnTerminal, ALongCommandSaysWhereItIs)
{
    const std::string program = std::string("sleep 1.1; cat two.mdl");
    const auto draw = [&](const std::string& input, const std::string& options) {
        const std::string line = "(" + input + ") | " PETAL_COMMAND " draw - -o pictures " + options;
        return shownOnTerminal({"/bin/sh", {"-c", line}, folder.path()}, 80);
    };
    const std::string slow = draw(program, "");
    EXPECT_THAT(slow, HasSubstr("\x1b[Kpicture 1 of 2: pictures/D.svg\x1b[K")) << "the line is wiped";
    EXPECT_THAT(draw(program, "-q"), testing::IsEmpty());
    for (const char* const rest : {"dump - --sqlite out.db", "convert - --to xmi -o out.uml"}) {
        const std::string line = "(" + program + ") | " PETAL_COMMAND " " + rest;
        EXPECT_THAT(shownOnTerminal({"/bin/sh", {"-c", line}, folder.path()}, 80),
                    StartsWith("\x1b[Kwriting what is in standard input\x1b[K"))
            << rest;
    }
    // On a busy machine a second may go by all the same.
    std::string fast;
    for (int tries = 5; tries > 0 && (fast.empty() || fast.find("picture 1") != std::string::npos); --tries)
        fast = draw("cat two.mdl", "");
    EXPECT_THAT(fast, Not(HasSubstr("picture 1"))) << "a second has not gone by";
}

} // namespace
