#include "designs/formats/drawn/OtherDiagrams.h"

#include "designs/model/Walk.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace design {

namespace {

constexpr std::size_t deepestFigure = 40; // as deep as anybody draws

using rose::Figure;

// How many figures stand around one; none where they stand in each other, or too deep to be shown so.
class Levels {
public:
    explicit Levels(const rose::DrawnDiagram& diagram)
    {
        for (const Figure& figure : diagram.figures)
            figures.emplace(figure.key, &figure);
        figures.erase("");
    }

    [[nodiscard]] const Figure* around(const Figure& figure) const
    {
        const Figure* each = &figure;
        for (std::size_t level = 0; level <= deepestFigure; ++level) {
            const auto found = figures.find(each->around);
            if (found == figures.end())
                return level == 0 ? nullptr : figures.at(figure.around);
            each = found->second;
        }
        return nullptr;
    }

private:
    std::unordered_map<std::string_view, const Figure*> figures;
};

} // namespace

std::vector<WrittenFile> writeAllDiagrams(const Writing& writing, WriteDiagrams writeDiagrams, TextOfDrawn textOf,
                                          Report& report)
{
    const Homes homes(writing.design.root);
    Coverage coverage;
    const Common common{writing, homes, coverage, report};
    std::vector<WrittenFile> files;
    forEachPackage(writing.design.root, [&](const Package& package) { writeDiagrams(package, common, files); });
    writeOtherDiagrams(writing.design, textOf, files, report);
    coverage.tellRest(writing.design.root, report);
    return files;
}

void writeEach(const std::vector<WrittenFile>& diagrams, Files& files)
{
    for (const WrittenFile& diagram : diagrams)
        files.begin({diagram.name, diagram.kind, diagram.owner}).write(diagram.text);
}

std::vector<Nested> nested(const rose::DrawnDiagram& diagram)
{
    const Levels levels(diagram);
    std::unordered_map<const Figure*, std::vector<const Figure*>> within;
    for (const Figure& figure : diagram.figures)
        within[levels.around(figure)].push_back(&figure);
    std::vector<Nested> order;
    std::vector<Nested> open;
    const auto openAll = [&](const Figure* around, std::size_t level) {
        const auto found = within.find(around);
        if (found == within.end())
            return;
        for (auto each = found->second.rbegin(); each != found->second.rend(); ++each)
            open.push_back({*each, level, within.contains(*each)});
    };
    openAll(nullptr, 0);
    while (!open.empty()) {
        order.push_back(open.back());
        open.pop_back();
        openAll(order.back().figure, order.back().level + 1);
    }
    return order;
}

void writeOtherDiagrams(const Design& design, TextOfDrawn textOf, std::vector<WrittenFile>& files, Report& report)
{
    if (!design.document)
        return;
    Report unused; // all of it was told when the file was read
    const rose::Reading reading(*design.document, unused);
    std::unordered_set<std::string> shown;
    std::size_t interactions = 0; // which have no identifiers
    std::unordered_set<const reader::Object*> owners;
    for (const reader::Diagram* const each : rose::otherDiagrams(reading)) {
        rose::DrawnDiagram diagram = rose::drawnDiagram(reading, *each);
        std::string text = textOf(diagram);
        if (text.empty())
            continue;
        files.push_back(
            {diagram.name, std::move(text), std::string(reader::diagramKindName(diagram.kind)), diagram.owner});
        shown.insert(std::make_move_iterator(diagram.shown.begin()), std::make_move_iterator(diagram.shown.end()));
        if (diagram.interaction && owners.insert(diagram.interaction).second)
            ++interactions;
    }
    report.takeBack([&](const ReportEntry& entry) {
        if (entry.id.empty() && entry.kind == "interaction" && interactions > 0)
            return interactions-- > 0;
        return shown.contains(entry.id);
    });
}

} // namespace design
