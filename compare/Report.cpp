#include "compare/Report.h"

#include "compare/Labels.h"
#include "compare/Values.h"
#include "reader/Kinds.h"
#include "text/Files.h"
#include "text/JsonWriter.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <utility>

namespace compare {

using reader::Object;

namespace {

constexpr std::size_t deepestLevel = 16;
constexpr std::size_t longestValue = 60;
constexpr std::size_t pieceSize = std::size_t{1} << 16U;

constexpr std::string_view sortNames[] = {"added", "removed", "changed", "moved"};

std::string_view nameOf(Sort sort)
{
    return sortNames[static_cast<std::size_t>(sort)];
}

bool isView(const Change& change)
{
    return change.old != nobody && change.fresh != nobody && !change.view.empty();
}

bool isComing(const Change& change)
{
    return change.old == nobody;
}

bool isGoing(const Change& change)
{
    return change.fresh == nobody;
}

const Object& objectOf(const Comparison& states, const Change& change)
{
    return *(isGoing(change) ? states.before[change.old] : states.after[change.fresh]).object;
}

// Long texts are shown where they begin to differ.
std::pair<std::string, std::string> excerpts(const std::string& before, const std::string& after)
{
    const std::string one = text::onOneLine(before);
    const std::string other = text::onOneLine(after);
    constexpr std::size_t inFront = 20;
    std::size_t start = 0;
    if (std::max(one.size(), other.size()) > longestValue) {
        const auto differing = std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first;
        start = static_cast<std::size_t>(differing - one.begin());
        start = start > inFront ? start - inFront : 0;
        while (start > 0 && start < std::max(one.size(), other.size()) &&
               text::isContinuation((start < one.size() ? one : other)[start]))
            --start;
    }
    const auto cut = [&](const std::string& text) {
        const std::string_view rest = std::string_view(text).substr(std::min(start, text.size()));
        return (start > 0 && !rest.empty() ? "..." : "") + text::shortened(rest, longestValue);
    };
    return {cut(one), cut(other)};
}

std::string shown(const std::string& value)
{
    if (value.empty())
        return "none";
    const bool isPlain = value.find(' ') == std::string::npos;
    return isPlain || value.starts_with('(') ? value : '"' + value + '"';
}

// What is different of one element, or of one view.
std::string detailOf(const Change& change)
{
    if (change.what == "name")
        return "renamed from " + (change.before.empty() ? "no name" : text::onOneLine(change.before));
    if (change.what == "owner")
        return "moved from " + (change.before.empty() ? "the model" : text::onOneLine(change.before));
    if (change.what == "order")
        return "now " + text::onOneLine(change.after);
    const std::string word(wordFor(change.what));
    if (change.before.empty() && change.after == "TRUE")
        return word;
    if (change.before == "TRUE" && change.after.empty())
        return "not " + word;
    const auto [before, after] = excerpts(change.before, change.after);
    if (change.before.empty())
        return word + ' ' + shown(after) + " added";
    if (change.after.empty())
        return word + ' ' + shown(before) + " removed";
    return word + ' ' + shown(before) + " -> " + shown(after);
}

std::string detailOfView(const Change& change)
{
    const bool isWordAlone = change.what == "shown" || change.what == "hidden" || change.what == "moved" ||
                             change.what == "resized" || change.what == "rerouted";
    return isWordAlone ? change.what : detailOf(change);
}

class TextWriter {
public:
    TextWriter(const Comparison& states, bool inColours, const Sink& sink)
        : states(states), inColours(inColours), sink(sink)
    {
    }

    void write(const std::vector<Change>& changes)
    {
        for (auto at = changes.begin(); at != changes.end();)
            at = at->isOfDiagram ? at + 1 : writeElement(at, changes.end());
        for (auto at = changes.begin(); at != changes.end();)
            at = at->isOfDiagram ? writeDiagram(at, changes.end()) : at + 1;
        if (!text.empty())
            sink(text);
    }

private:
    using Changes = std::vector<Change>::const_iterator;

    // Changes of one element stand behind each other.
    static Changes endOfElement(Changes at, Changes end)
    {
        const Change& first = *at;
        if (isComing(first) || isGoing(first))
            return at + 1;
        return std::find_if(at, end, [&](const Change& change) {
            return change.fresh != first.fresh || isComing(change) || change.isOfDiagram != first.isOfDiagram;
        });
    }

    Changes writeElement(Changes at, Changes end)
    {
        const std::uint32_t place = placeOf(*at, states);
        const Object& object = objectOf(states, *at);
        if (isGoing(*at)) {
            open(place);
            line('-', descriptionOf(states.before, object));
            return at + 1;
        }
        if (states.after[place].parent != nobody && !(isPackage(object) && !isComing(*at)))
            open(states.after[place].parent);
        else
            headings.clear();
        if (isComing(*at)) {
            line('+', descriptionOf(states.after, object));
            return at + 1;
        }
        const Changes last = endOfElement(at, end);
        std::string details;
        for (; at != last; ++at)
            details.append(details.empty() ? ": " : "; ").append(detailOf(*at));
        line('~', headingOf(place) + details);
        headings.push_back(place);
        return last;
    }

    Changes writeDiagram(Changes at, Changes end)
    {
        headings.clear();
        if (isGoing(*at) || isComing(*at)) {
            const Snapshot& state = isGoing(*at) ? states.before : states.after;
            line(isGoing(*at) ? '-' : '+', "diagram " + state.path(isGoing(*at) ? at->old : at->fresh));
            return at + 1;
        }
        const Changes last = endOfElement(at, end);
        std::vector<std::pair<std::string, std::string>> details; // and the views of which they are told
        std::map<std::string, std::size_t> places;
        std::string text = "diagram " + states.after.path(at->fresh);
        for (; at != last; ++at) {
            const std::string detail = isView(*at) ? detailOfView(*at) : detailOf(*at);
            const auto [place, isNew] = places.emplace(detail, details.size());
            if (isNew)
                details.emplace_back(detail, std::string());
            if (isView(*at))
                details[place->second]
                    .second.append(details[place->second].second.empty() ? "" : ", ")
                    .append(at->view);
        }
        std::string_view separator = ": ";
        for (const auto& [detail, views] : details) {
            text.append(separator).append(views).append(views.empty() ? "" : " ").append(detail);
            separator = "; ";
        }
        line('\0', text);
        return last;
    }

    static bool isPackage(const Object& object)
    {
        return reader::elementKindOf(object) == reader::ElementKind::package || object.is("Design", "Processes");
    }

    [[nodiscard]] std::string headingOf(std::uint32_t place) const
    {
        const Object& object = *states.after[place].object;
        if (object.is("Design"))
            return "model";
        return isPackage(object) ? std::string(kindWord(object)) + ' ' + states.after.path(place)
                                 : headlineOf(states.after, object);
    }

    // Makes `place` the last heading. Packages begin at the margin.
    void open(std::uint32_t place)
    {
        while (!headings.empty() && !(headings.back() <= place && place < states.after[headings.back()].end))
            headings.pop_back();
        std::vector<std::uint32_t> missing;
        for (std::uint32_t at = place; headings.empty() || at != headings.back();) {
            missing.push_back(at);
            if (isPackage(*states.after[at].object) || states.after[at].parent == nobody) {
                headings.clear();
                break;
            }
            at = states.after[at].parent;
        }
        for (auto at = missing.rbegin(); at != missing.rend(); ++at) {
            line('\0', headingOf(*at));
            headings.push_back(*at);
        }
    }

    void line(char sign, const std::string& words)
    {
        text.append(2 * std::min(headings.size(), deepestLevel), ' ');
        if (inColours)
            text += sign == '+' ? "\x1B[32m" : sign == '-' ? "\x1B[31m" : sign == '~' ? "\x1B[33m" : "\x1B[1m";
        if (sign != '\0')
            text.append(1, sign).append(" ");
        text += text::onOneLine(words);
        if (inColours)
            text += "\x1B[0m";
        text += '\n';
        if (text.size() >= pieceSize) {
            sink(text);
            text.clear();
        }
    }

    const Comparison& states;
    bool inColours;
    const Sink& sink;
    std::string text;
    std::vector<std::uint32_t> headings; // those that the next line stands below
};

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

void writeText(const Comparison& states, const std::vector<Change>& changes, bool inColours, const Sink& sink)
{
    TextWriter(states, inColours, sink).write(changes);
}

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
