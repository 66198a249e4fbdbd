#include "CommandFixture.h"

#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

// No output takes the place of a file that was read, or of another output.

namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;

constexpr const char* start = "\n(object Petal\n version 42\n charSet 0)\n";

class OutputClash : public Command {
protected:
    OutputClash()
    {
        folder.write("Main.svg",
                     std::string(start) +
                         "(object Design \"Logical View\" root_category (object Class_Category \"Logical "
                         "View\" logical_models (list l (object Class_Category \"U\" is_unit TRUE is_loaded "
                         "TRUE file_name \"unit.svg\")) logical_presentations (list l "
                         "(object ClassDiagram \"Main\" items (list l (object NoteView @1))) "
                         "(object ClassDiagram \"unit\" items (list l (object NoteView @1))))))");
        folder.write("unit.svg", std::string(start) + "(object Class_Category \"U\")");
        folder.write("shop.uml", "<xmi:XMI xmi:version='2.1' xmlns:xmi='http://schema.omg.org/spec/XMI/2.1' "
                                 "xmlns:uml='http://www.eclipse.org/uml2/3.0.0/UML'><uml:Model xmi:id='m' name='Shop'>"
                                 "<packagedElement xmi:type='uml:Class' xmi:id='c' name='Cart'><generalization "
                                 "xmi:type='uml:Generalization' xmi:id='g'><general xmi:type='uml:Class' "
                                 "href='other.uml#o'/></generalization></packagedElement></uml:Model></xmi:XMI>");
        folder.write("other.uml", "<uml:Model xmi:id='n' name='Other'/>");
        folder.write("shop.notation", "<xmi:XMI xmi:version='2.0' xmlns:xmi='http://www.omg.org/XMI'/>");
        fs::create_symlink("m.json", folder / "link");
        fs::create_hard_link(folder / "m.json", folder / "twin");
        fs::create_directory(folder / "sub");
        fs::create_symlink("x", folder / "to-x");
    }

    // All files and what is in them.
    [[nodiscard]] std::string everything() const
    {
        std::string text;
        for (const std::string& name : folder.names())
            text += name + ":\n" + (name == "sub" ? "" : folder.read(name)) + "\n";
        return text;
    }
};

TEST_F(OutputClash, IsRefusedBeforeAnythingIsWritten)
{
    const Words rows[] = {
        {"export", "m.json", "-o", "m.json"},
        {"export", "m.json", "-o", "./sub/../m.json"},
        {"export", "m.json", "-o", folder / "m.json"},
        {"export", "m.json", "-o", "link"},
        {"export", "m.json", "-o", "twin"},
        {"export", "m.json", "--log", "m.json"},
        {"export", "m.json", "--stats-json", "link"},
        {"export", "m.json", "--report", "twin"},
        {"export", "m.json", "-o", "x", "--log", "./x"},
        {"export", "m.json", "-o", "x", "--log", "to-x"},
        {"export", "m.json", "-o", "x", "--stats-json", "sub/../x"},
        {"export", "m.json", "-o", "x", "--log", "y", "--stats-json", "y"},
        {"export", "shop.uml", "-o", "shop.notation"},
        {"export", "shop.uml", "-o", "x", "--log", "shop.notation"},
        {"export", "shop.uml", "-o", "other.uml"},
        {"import", "shop.uml", "-o", "shop.notation"},
        {"import", "shop.uml", "-o", "x", "--report", "other.uml"},
        {"browse", "Main.svg", "-o", "Main.svg"},
        {"browse", "Main.svg", "-o", "unit.svg"},
        {"draw", "Main.svg"},
        {"draw", "Main.svg", "-o", "."},
        {"draw", "Main.svg", "--diagram", "unit"},
        {"draw", "Main.svg", "--diagram", "Main", "-o", "unit.svg"},
    };
    const std::string before = everything();
    for (const Words& row : rows) {
        const ProcessResult result = run(row);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(row) << result.errors;
        EXPECT_THAT(result.errors, HasSubstr("would overwrite")) << testing::PrintToString(row);
        EXPECT_EQ(everything(), before) << testing::PrintToString(row);
    }
}

TEST_F(OutputClash, IsRefusedForStandardStreams)
{
    folder.write("two.json", sensitiveModel());
    const struct {
        Words arguments;
        const char* appended;
    } rows[] = {
        {{"export", "two.json", "-o", "-"}, "two.json"},
        {{"export", "-", "-o", "two.json"}, "/dev/null"},
        {{"export", "-", "-o", "link"}, "/dev/null"},
        {{"export", "m.json", "-o", "two.json", "--stats-json", "-"}, "two.json"},
        {{"export", "m.json", "-o", "-", "--log", "two.json"}, "two.json"},
        {{"export", "m.json", "-o", "-", "--report", "-"}, "/dev/null"},
        {{"export", "m.json", "-o", "/dev/stdout", "--report", "/dev/fd/1"}, "/dev/null"},
        {{"tree", "Main.svg"}, "unit.svg"},
        {{"tree", "-", "--no-units"}, "two.json"},
        {{"check", "Main.svg"}, "Main.svg"},
        {{"check", "Main.svg", "--json"}, "unit.svg"},
        {{"check", "none.mdl", "Main.svg"}, "Main.svg"},
        {{"draw", "Main.svg", "--list"}, "Main.svg"},
        {{"draw", "Main.svg", "--diagram", "Main", "-o", "-"}, "unit.svg"},
        {{"browse", "Main.svg", "-o", "-"}, "unit.svg"},
    };
    const std::string before = everything();
    for (const auto& row : rows) {
        const bool isPetal = row.arguments.front() != "export";
        const ProcessResult result = run(row.arguments, [&] {
            const bool readsInput = row.arguments[1] == "-";
            const int input = open(isPetal ? "Main.svg" : row.arguments.back().c_str(), O_RDONLY);
            const int output = open(isPetal && readsInput ? "Main.svg" : row.appended, O_WRONLY | O_APPEND);
            if (readsInput)
                dup2(input, STDIN_FILENO);
            dup2(output, STDOUT_FILENO);
        });
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(row.arguments) << result.errors;
        EXPECT_THAT(result.errors, AnyOf(HasSubstr("would overwrite"), HasSubstr("would be mixed with")))
            << testing::PrintToString(row.arguments);
        EXPECT_EQ(everything(), before) << testing::PrintToString(row.arguments);
    }
}

TEST_F(OutputClash, IsNoneWhereNothingIsLost)
{
    EXPECT_EQ(run({"export", "m.json", "-o", "/dev/null", "--log", "/dev/null", "--report", "/dev/null"}).exitCode, 0);
    folder.write("x", "earlier");
    folder.write("y", "earlier");
    EXPECT_EQ(run({"export", "m.json", "-o", "x", "--log", "y"}).exitCode, 0);
    EXPECT_EQ(run({"draw", "Main.svg", "--no-units", "--diagram", "unit"}).exitCode, 0) << "a unit that was not read";
}

} // namespace
