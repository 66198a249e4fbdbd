#include "designs/DesignLines.h"
#include "designs/SmallDesigns.h"

#include <functional>
#include <gmock/gmock.h>

namespace {

using design::Design;
using design::Package;
using testing::Contains;
using testing::ElementsAreArray;

design::Remark remark(const std::string& text, const std::vector<std::string>& elementIds, bool isConstraint = false)
{
    return {"id of " + text, text, elementIds, isConstraint};
}

// Two packages: classes a and b and a note on them in the one, class c and a diagram in the other.
Design small()
{
    Design design = designOf({classNamed("a"), classNamed("b")});
    design.root.id = "root";
    design.root.name = "design";
    design.root.packages[0].id = "p";
    Package& second = design.root.packages.emplace_back();
    second.id = second.name = "second";
    second.classifiers = {classNamed("c")};
    second.diagrams = {diagramOf({})};
    design.kinds = {{"uc", "use case"}, {"p", "package"}};
    return design;
}

std::vector<std::string> settledLines(Design design)
{
    design::Report report;
    design::settle(design, design::Reach::Classifiers, report);
    return DesignLines(std::move(design), report).take();
}

const std::vector<std::string> unchanged = {"package design",     "package package", "class a in package",
                                            "class b in package", "package second",  "class c in second",
                                            "diagram  in second"};

struct Row {
    const char* what;
    std::function<void(Design&)> change;
    std::vector<std::string> added; ///< to the lines of the small design, where they are not those
};

void expectAdded(const Row& row)
{
    Design design = small();
    row.change(design);
    std::vector<std::string> lines = settledLines(std::move(design));
    std::erase_if(lines, [](const std::string& line) {
        return std::find(unchanged.begin(), unchanged.end(), line) != unchanged.end();
    });
    EXPECT_THAT(lines, ElementsAreArray(row.added)) << row.what;
}

const std::string placeholderPackage = "package External {Placeholders for classes outside of the imported file.}";
const std::string placeholderMade = ": it lies outside of the file; a placeholder is in the package External";
const std::string externalMade = "made package External: it holds the placeholders";

TEST(Settle, DecidesWhatBecomesOfEnds)
{
    const auto dependency = [](const design::Reference& client, const design::Reference& supplier) {
        design::Relationship relationship;
        relationship.client = client;
        relationship.supplier = supplier;
        return relationship;
    };
    const Row rows[] = {
        {"by identifier",
         [&](Design& d) {
             d.root.packages[1].relationships = {dependency({"c", ""}, {"a", "other"})};
         },
         {"dependency c - a"}},
        {"by a name that a class has",
         [&](Design& d) {
             d.root.packages[0].relationships = {dependency({"a", ""}, {"", "c"})};
         },
         {"dependency a - c"}},
        {"outside, one class for two relations",
         [&](Design& d) {
             d.root.packages[0].relationships = {dependency({"a", ""}, {"far", "Far"}),
                                                 dependency({"far", ""}, {"b", ""})};
         },
         {"dependency a - Far", "dependency Far - b", placeholderPackage, "class Far in External",
          "made class Far" + placeholderMade, externalMade}},
        {"outside, by name only",
         [&](Design& d) {
             d.root.packages[0].relationships = {dependency({"a", ""}, {"", "Far"})};
         },
         {"dependency a - Far", placeholderPackage, "class Far in External", "made class Far" + placeholderMade,
          externalMade}},
        {"outside, the file tells a name elsewhere",
         [&](Design& d) {
             d.outsideNames = {{"far", "Far"}};
             d.root.packages[0].relationships = {dependency({"a", ""}, {"far", ""})};
         },
         {"dependency a - Far", placeholderPackage, "class Far in External", "made class Far" + placeholderMade,
          externalMade}},
        {"outside, without a name",
         [&](Design& d) {
             d.root.packages[0].relationships = {dependency({"a", ""}, {"far", ""})};
         },
         {"dependency a - far", placeholderPackage, "class far in External", "made class far" + placeholderMade,
          externalMade}},
        {"there is a package External",
         [&](Design& d) {
             d.root.packages[1].name = "External";
             d.root.packages[0].relationships = {dependency({"a", ""}, {"far", ""})};
         },
         {"dependency a - far", "package External", "class c in External", "class far in External",
          "diagram  in External", "made class far" + placeholderMade}},
        {"missing",
         [&](Design& d) {
             d.root.packages[0].relationships = {dependency({"a", ""}, {})};
         },
         {"left dependency : an end is missing"}},
        {"something the design has no place for",
         [&](Design& d) {
             d.root.packages[0].relationships = {dependency({"uc", "Buy"}, {"a", ""})};
         },
         {"left dependency : an end is no class but: use case"}},
        {"a package",
         [&](Design& d) {
             d.root.packages[0].relationships = {dependency({"a", ""}, {"second", ""})};
         },
         {"left dependency : an end is no class but: package"}},
        {"an association with one end",
         [](Design& d) {
             d.root.packages[0].associations = {association("a", "b")};
             d.root.packages[0].associations[0].ends.pop_back();
         },
         {"left association : an end is missing"}},
        {"an association class that is not there",
         [](Design& d) {
             d.root.packages[0].associations = {association("a", "b")};
             d.root.packages[0].associations[0].associationClassId = "gone";
         },
         {"association : a  - b ", "left class of an association : it is not in the file"}},
        {"one relation goes, the others stay what they are",
         [&](Design& d) {
             d.root.packages[0].associations = {association("a", "uc"), association("a", "b")};
             d.root.packages[0].relationships = {dependency({"a", ""}, {"uc", ""}), generalization("a", "b")};
             d.root.packages[1].relationships = {generalization("c", "uc"), generalization("c", "a")};
         },
         {"association : a  - b ", "generalization a - b", "generalization c - a",
          "left association : an end is no class but: use case", "left dependency : an end is no class but: use case",
          "left generalization : an end is no class but: use case"}},
    };
    for (const Row& row : rows)
        expectAdded(row);
}

TEST(Settle, MakesPlaceholdersForWhatIsOnlyDrawn)
{
    const Row rows[] = {
        {"outside and named",
         [](Design& d) {
             d.outsideNames = {{"seen", "Seen"}, {"end", "End"}, {"a", "not a"}, {"uc", "Buy"}};
             d.root.packages[1].diagrams = {diagramOf({"end", "seen", "seen", "a", "uc"})};
             d.root.packages[0].relationships = {generalization("a", "end")};
         },
         {"generalization a - End", "box End", "box Seen", "box Seen", "box a", "box <uc>", placeholderPackage,
          "class Seen in External", "class End in External", "made class Seen" + placeholderMade,
          "made class End" + placeholderMade, externalMade}},
        {"of which the file tells no name",
         [](Design& d) { d.root.packages[1].diagrams = {diagramOf({"seen"})}; },
         {"box <seen>"}},
    };
    for (const Row& row : rows)
        expectAdded(row);
}

TEST(Settle, GivesRemarksToWhatTheyHangAt)
{
    const Row rows[] = {
        {"a comment on two elements of another package",
         [](Design& d) {
             d.root.packages[1].remarks = {remark("look", {"a", "b"})};
         },
         {"class a in package note(look)", "class b in package note(look)"}},
        {"the same comment in two diagrams",
         [](Design& d) {
             d.root.packages[1].diagrams[0].remarks = {remark("look", {"a"})};
             d.root.packages[0].diagrams = {design::Diagram()};
             d.root.packages[0].diagrams[0].remarks = {remark("look", {"a"})};
         },
         {"class a in package note(look)", "diagram  in package"}},
        {"a comment on one thing that is there and one that is not",
         [](Design& d) {
             d.root.packages[0].remarks = {remark("look", {"uc", "a"})};
         },
         {"class a in package note(look)"}},
        {"comments on nothing that is there",
         [](Design& d) {
             d.root.packages[0].remarks = {remark("of a package", {"uc"}), remark("loose", {})};
             d.root.packages[1].diagrams[0].remarks = {remark("of a diagram", {"uc"}), remark("free", {""})};
         },
         {"note in package (of a package)", "note in package (loose)",
          "diagram  in second note(of a diagram) note(free)"}},
        {"a loose comment that diagrams show",
         [](Design& d) {
             d.root.packages[0].remarks = {remark("shown", {}), remark("of a", {"a"}), remark("not shown", {})};
             d.root.packages[0].remarks[0].id = "shown";
             d.root.packages[0].remarks[1].id = "of a";
             d.root.packages[1].diagrams.resize(2);
             for (design::Diagram& diagram : d.root.packages[1].diagrams)
                 diagram.boxes = {{"shown", std::nullopt, {}}, {"of a", std::nullopt, {}}, {"shown", std::nullopt, {}}};
         },
         {"note in package (not shown)", "class a in package note(of a)", "diagram  in second note(shown)",
          "box <shown>", "box <of a>", "box <shown>", "diagram  in second note(shown)", "box <shown>", "box <of a>",
          "box <shown>"}},
        {"a comment on a relation that goes",
         [](Design& d) {
             d.root.packages[0].associations = {association("a", "uc")};
             d.root.packages[0].remarks = {remark("why", {"a has uc"})};
         },
         {"note in package (why)", "left association : an end is no class but: use case"}},
        {"a comment on a placeholder",
         [](Design& d) {
             d.root.packages[0].relationships = {generalization("a", "far")};
             d.root.packages[0].remarks = {remark("out there", {"far"})};
         },
         {"generalization a - far", placeholderPackage, "class far in External note(out there)",
          "made class far" + placeholderMade, externalMade}},
        {"the host has no notes on a model",
         [](Design& d) { d.root.remarks = {remark("of all", {"root"})}; },
         {"note in design (of all)"}},
        {"constraints",
         [](Design& d) {
             d.root.packages[0].associations = {association("a", "b")};
             d.root.packages[0].remarks = {remark("xor", {"a", "a has b"}, true), remark("gone", {"uc"}, true)};
             d.root.packages[1].diagrams[0].remarks = {remark("none", {}, true), remark("of all", {"root"}, true)};
         },
         {"package design constraint(of all)", "class a in package constraint(xor)",
          "association : a  - b  constraint(xor)", "left constraint gone: what it constrains is not taken",
          "left constraint none: what it constrains is not taken"}},
    };
    for (const Row& row : rows)
        expectAdded(row);
}

TEST(Settle, NamesAndIdentifiesWhatMustBe)
{
    const Row rows[] = {
        {"packages and classes without names",
         [](Design& d) {
             d.root.packages[1].classifiers.resize(2);
             d.root.packages[1].packages.resize(1);
         },
         {"class Unnamed 2 in second", "package Unnamed 1", "made name Unnamed 1: a package has none",
          "made name Unnamed 2: a class has none"}},
        {"line ends and control characters in names",
         [](Design& d) {
             d.root.packages[0].classifiers[0].attributes.resize(1);
             d.root.packages[0].classifiers[0].attributes[0].name = "two\nlines\x7F";
         },
         {"private attribute a.two lines  : ", "made name two lines : it had line ends or other control characters"}},
        {"an identifier given twice",
         [](Design& d) {
             d.root.packages[1].classifiers[0].id = "a";
             d.root.packages[0].relationships = {generalization("b", "a")};
         },
         {"generalization b - a", "made identifier c: it is given twice; the second element got another one"}},
    };
    for (const Row& row : rows)
        expectAdded(row);
}

// New identifiers are none that the file has.
TEST(Settle, GivesIdentifiersThatNothingHas)
{
    Design design = designOf({classNamed("petal-1"), classNamed("b")});
    design.root.packages[0].classifiers[1].id.clear();
    design.root.packages[0].relationships.resize(1);
    design.root.packages[0].diagrams.resize(1);
    design::Report report;
    design::giveIdentifiers(design, report);
    const Package& package = design.root.packages[0];
    EXPECT_EQ(package.classifiers[1].id, "petal-2");
    EXPECT_EQ(package.relationships[0].id, "petal-3");
    EXPECT_EQ(package.diagrams[0].id, "petal-4");
}

} // namespace
