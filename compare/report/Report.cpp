#include "compare/report/Report.h"

#include "compare/facts/Labels.h"
#include "compare/facts/Values.h"
#include "text/Files.h"
#include "text/JsonWriter.h"
#include "text/Utf8.h"

#include <array>
#include <iterator>
#include <map>

namespace compare {

using reader::Object;

namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 16U;

constexpr std::string_view sortNames[] = {"added", "removed", "changed", "moved"};

std::string_view nameOf(Sort sort)
{
    return sortNames[static_cast<std::size_t>(sort)];
}

using Counts = std::map<std::string, std::array<std::size_t, std::size(sortNames)>, std::less<>>;

// A thing that is different in several ways counts once for each sort of them.
Counts countsOf(const Comparison& states, const std::vector<Change>& changes)
{
    Counts counts;
    const Change* last = nullptr;
    for (const Change& change : changes) {
        const bool isCounted = last && last->old == change.old && last->fresh == change.fresh &&
                               last->view == change.view && last->sort == change.sort;
        last = &change;
        if (isCounted && change.sort != Sort::added && change.sort != Sort::removed)
            continue;
        const std::string_view kind = isView(change) ? "view" : kindWord(objectOf(states, change));
        ++counts[std::string(kind)][static_cast<std::size_t>(change.sort)];
    }
    return counts;
}

void writePlace(text::JsonWriter& json, std::string_view key, const Snapshot& state, std::uint32_t node)
{
    if (node == nobody)
        return;
    const reader::Place place = state.document().place(*state[node].object);
    json.beginObject(key).member("path", text::mended(state.path(node)));
    json.member("file", text::mended(text::fileName(place.file))).member("line", place.line).endObject();
}

void writeChange(text::JsonWriter& json, const Comparison& states, const Change& change)
{
    const Object& object = objectOf(states, change);
    const Snapshot& state = isGoing(change) ? states.before : states.after;
    json.beginObject().member("change", nameOf(change.sort));
    json.member("of", change.isOfDiagram ? "diagram" : "model").member("kind", text::mended(kindWord(object)));
    json.member("name", text::mended(compare::nameOf(object)));
    json.member("text", text::mended(isComing(change) || isGoing(change) ? descriptionOf(state, object)
                                                                         : headlineOf(state, object)));
    if (isView(change))
        json.member("view", text::mended(change.view));
    if (!isComing(change) && !isGoing(change))
        json.member("what", text::mended(change.what));
    if (!change.before.empty())
        json.member("before", text::mended(change.before));
    if (!change.after.empty())
        json.member("after", text::mended(change.after));
    writePlace(json, "old", states.before, change.old);
    writePlace(json, "new", states.after, change.fresh);
    json.endObject();
}

} // namespace

void writeCounts(const Comparison& states, const std::vector<Change>& changes, const Sink& sink)
{
    for (const auto& [kind, numbers] : countsOf(states, changes)) {
        std::string line;
        for (std::size_t i = 0; i < numbers.size(); ++i)
            if (numbers[i] != 0)
                line.append(line.empty() ? "" : ", ")
                    .append(std::to_string(numbers[i]))
                    .append(" ")
                    .append(sortNames[i]);
        sink(text::onOneLine(kind) + ": " + line + '\n');
    }
}

void writeJson(const Comparison& states, const std::vector<Change>& changes, const Sink& sink)
{
    std::string out;
    text::JsonWriter json(out, {.deepestLine = 2, .indentation = 2}); // a change a line
    json.beginObject().beginList("changes");
    for (const Change& change : changes) {
        writeChange(json, states, change);
        if (out.size() >= pieceSize) {
            sink(out);
            out.clear();
        }
    }
    json.endList().beginObject("counts");
    for (const auto& [kind, numbers] : countsOf(states, changes)) {
        json.beginObject(text::mended(kind));
        for (std::size_t i = 0; i < numbers.size(); ++i)
            json.member(sortNames[i], numbers[i]);
        json.endObject();
    }
    json.endObject().endObject();
    sink(out += '\n');
}

} // namespace compare
