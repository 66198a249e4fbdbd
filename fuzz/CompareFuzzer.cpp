#include "browse/changes/ChangesPage.h"
#include "compare/changes/Pairing.h"
#include "compare/report/FullText.h"
#include "EqualLetters.h"
#include "render/Draw.h"
#include "Target.h"

#include <algorithm>
#include <string>

// Two petal files one behind the other, or one and its own second half. What is different is told in both directions
// and becomes a page, and a file is no different from itself.
namespace {

using compare::Comparison;
using compare::Depth;
using compare::Snapshot;

reader::Document documentOf(std::string_view text)
{
    reader::ReadOptions options;
    options.readsUnits = false;
    return reader::Document(std::string(text), "fuzzed.mdl", options);
}

// What a file holds stays text in the page: it brings neither an element nor the end of one.
void checkPage(const Comparison& states, const std::vector<compare::Change>& changes)
{
    const EqualLetters measure;
    render::DrawOptions drawing;
    drawing.measure = &measure;
    const auto picture = [&](const Snapshot& state, const reader::Diagram& diagram) {
        return render::svgOf(state.document(), state.index(), diagram, drawing);
    };
    std::string page;
    browse::writeChangesPage(states, changes, {"old", "new", picture}, [&](std::string_view piece) { page += piece; });
    require(page.starts_with("<!DOCTYPE html>") && page.rfind("</html>") == page.find("</html>"), "one page");
}

std::size_t checkChanges(const reader::Document& one, const reader::Document& other, Depth depth)
{
    Snapshot before(one, depth);
    Snapshot after(other, depth);
    compare::pair(before, after);
    for (std::uint32_t place = 0; place < before.size(); ++place)
        require(before[place].partner == compare::nobody || after[before[place].partner].partner == place,
                "pairs that know each other");
    const Comparison states{before, after, depth};
    const std::vector<compare::Change> changes = compare::changesOf(states);
    std::size_t length = 0;
    const compare::Sink sink = [&](std::string_view piece) { length += piece.size(); };
    compare::writeText(states, changes, true, sink);
    require(changes.empty() == (length == 0), "a line for what is different, and none without");
    compare::writeJson(states, changes, sink);
    compare::writeCounts(states, changes, sink);
    compare::writeFullText(before, sink);
    if (depth == Depth::meaning && !changes.empty())
        checkPage(states, changes);
    return changes.size();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = asText(data, size);
    const std::size_t header = text.rfind("(object Petal");
    const bool areTwo = header != std::string_view::npos && text.find("(object Petal") != header;
    const std::size_t start = areTwo ? header : text.size() / 2;
    try {
        const reader::Document one = documentOf(areTwo ? text.substr(0, start) : text);
        require(checkChanges(one, one, Depth::meaning) == 0, "no difference from itself");
        const reader::Document other = documentOf(text.substr(start));
        checkChanges(one, other, Depth::meaning);
        checkChanges(other, one, Depth::all);
    } catch (const reader::NotPetal& error) {
        require(*error.what() != '\0', "a reason for refusing a file");
    }
    return 0;
}
