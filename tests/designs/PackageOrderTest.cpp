#include "designs/SmallDesigns.h"

#include "designs/convert/DependencyOrder.h"
#include "designs/convert/PackageOrder.h"

#include <gmock/gmock.h>

namespace {

using design::Package;
using testing::ElementsAre;

// A package of one class of its name, with a diagram that shows these.
Package packageShowing(const std::string& name, const std::vector<std::string>& classes)
{
    Package package;
    package.name = name;
    package.classifiers = {classNamed(name)};
    package.diagrams = {diagramOf(classes)};
    return package;
}

// `a(b c)`
std::string namesIn(const Package& package)
{
    std::string names = package.name;
    for (const Package& child : package.packages)
        names.append(&child == &package.packages.front() ? "(" : " ").append(namesIn(child));
    return package.packages.empty() ? names : names + ")";
}

TEST(PackageOrder, PutsWhatIsShownFirst)
{
    const struct {
        std::vector<std::vector<std::string>> shown; // by the packages a, b, c ...
        const char* order;
    } rows[] = {
        {{{}, {}, {}}, "(a b c)"},
        {{{"a"}, {"a"}, {"b"}}, "(a b c)"},
        {{{"c"}, {}, {}}, "(b c a)"},
        {{{"b"}, {"c"}, {}}, "(c b a)"},
        {{{"b", "c"}, {}, {"b"}}, "(b c a)"},
        {{{"unknown"}, {}, {}}, "(a b c)"},
        // packages that show each other's classes, and one that two of them need
        {{{"b"}, {"a"}, {}}, "(c a b)"},
        {{{"b"}, {"c"}, {"a"}}, "(a c b)"},
        {{{"b", "d"}, {"a"}, {"a"}, {"d"}}, "(d a b c)"},
        {{{"b"}, {"a"}, {"d", "a"}, {"c"}}, "(a b c d)"},
    };
    for (const auto& row : rows) {
        Package root;
        for (std::size_t i = 0; i < row.shown.size(); ++i)
            root.packages.push_back(packageShowing(std::string(1, static_cast<char>('a' + i)), row.shown[i]));
        design::orderPackages(root);
        EXPECT_EQ(namesIn(root), row.order);
    }
}

// What a package shows counts for all around it, up to the one that holds both.
TEST(PackageOrder, LooksIntoPackages)
{
    Package a = packageShowing("a", {"a1", "b1"}); // shows what is in it, and in its neighbour
    a.packages = {packageShowing("a1", {"a2", "a"}), packageShowing("a2", {"c"})};
    Package b = packageShowing("b", {});
    b.packages = {packageShowing("b1", {"c", "b"})};
    Package root;
    root.packages = {a, b, packageShowing("c", {})};
    design::orderPackages(root);
    EXPECT_EQ(namesIn(root), "(c b(b1) a(a2 a1))");
}

// Both took minutes: a long chain, and a ring of packages that show the next one's classes.
TEST(PackageOrder, IsFoundForManyPackages)
{
    constexpr std::size_t count = 200000;
    for (const bool isRing : {false, true}) {
        design::Needs needs(count);
        for (std::size_t i = 0; i + 1 < count; ++i)
            needs[i] = {i + 1};
        if (isRing)
            needs.back() = {0};
        const std::vector<std::size_t> order = design::neededFirst(needs);
        ASSERT_EQ(order.size(), count);
        EXPECT_EQ(order.front(), isRing ? 0 : count - 1);
        EXPECT_EQ(order[1], isRing ? count - 1 : count - 2);
        EXPECT_EQ(order.back(), isRing ? 1 : 0);
    }
}

} // namespace
