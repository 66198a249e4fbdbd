// Designs that go out in a format and come back by it.

#include "designs/formats/WrittenFiles.h"
#include "designs/Import.h"
#include "designs/model/Counts.h"
#include "Files.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using Counts = std::map<std::string, std::int64_t>;

// What `report` says of its elements is in `counts` afterwards.
void settle(Counts& counts, const design::Report& report, std::size_t leftBefore, std::size_t madeBefore)
{
    const auto settleEntries = [&](const std::vector<design::ReportEntry>& entries, std::size_t from, int each) {
        for (std::size_t i = from; i < entries.size(); ++i)
            counts[entries[i].kind] += each;
    };
    settleEntries(report.leftEntries(), leftBefore, -1);
    settleEntries(report.madeEntries(), madeBefore, 1);
}

Counts countsOf(const design::Design& design)
{
    Counts counts;
    for (const design::ElementCount& each : design::countElements(design))
        counts.emplace(each.kind, each.count);
    return counts;
}

std::set<std::string> kindsIn(const Counts& counts)
{
    std::set<std::string> kinds;
    for (const auto& [kind, count] : counts)
        kinds.insert(kind);
    return kinds;
}

using Files = std::map<std::string, std::string>; // texts by names; that of the output itself is empty

Files writtenIn(const design::Format& format, design::Design& design, design::Report& report)
{
    design::settleFor(format, design, true, report);
    const design::Catalogue catalogue(design.root);
    Files files;
    for (design::WrittenFile& file : design::filesIn(format, {design, catalogue, "out"}, report))
        files.emplace(std::move(file.name), std::move(file.text));
    return files;
}

class ThereAndBack : public testing::TestWithParam<std::string> {};

// Every format that comes in and goes out, of files of all formats: no element is missing unsaid, and what was written
// once is written so again.
TEST_P(ThereAndBack, IsTheSameButForWhatIsTold)
{
    const std::string bytes = bytesOf(GetParam());
    const design::Source source{bytes, pathOf(GetParam())};
    for (const design::Format& format : design::formats()) {
        if (!format.read || !format.write)
            continue;
        SCOPED_TRACE(format.name);
        design::Report report;
        design::Design design = design::readDesign(*design::formatOf(source), source, report);
        Counts expected = countsOf(design);
        std::set<std::string> kinds = kindsIn(expected);
        const std::size_t left = report.leftEntries().size();
        const std::size_t made = report.madeEntries().size();
        const Files first = writtenIn(format, design, report);
        settle(expected, report, left, made);

        design::Report secondReport;
        const TemporaryFolder folder;
        for (const auto& [file, text] : first)
            folder.write(file.empty() ? "out.uml" : file, text);
        design::Design back = design::readDesign(format, {first.at(""), folder / "out.uml"}, secondReport);
        Counts counts = countsOf(back);
        kinds.merge(kindsIn(counts));
        for (const std::string& kind : kinds)
            EXPECT_EQ(counts[kind], expected[kind]) << kind;
        EXPECT_EQ(writtenIn(format, back, secondReport), first);
    }
}

INSTANTIATE_TEST_SUITE_P(, ThereAndBack,
                         testing::Values("shop.mdj", "enterprise-architect.xml", "shop.uml", "umbrello.xmi", "uml1.xmi",
                                         "plain.xmi", "all-kinds.xmi", "shop.ecore", "packages.ecore", "shop.mdl"),
                         [](const auto& instance) {
                             std::string name = instance.param;
                             std::erase_if(name, [](unsigned char letter) { return std::isalnum(letter) == 0; });
                             return name;
                         });

} // namespace
