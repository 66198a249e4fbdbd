#include "compare/facts/Labels.h"
#include "compare/report/Details.h"
#include "compare/report/Report.h"
#include "reader/index/Kinds.h"
#include "text/Utf8.h"

#include <algorithm>
#include <map>
#include <utility>

namespace compare {

using reader::Object;

namespace {

constexpr std::size_t deepestLevel = 16;
constexpr std::size_t pieceSize = std::size_t{1} << 16U;

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
        const auto last = endOfElement(at, end);
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
        const auto last = endOfElement(at, end);
        std::vector<std::pair<std::string, std::string>> details; // and the views of which they are told
        std::map<std::string, std::size_t> places;
        std::string words = "diagram " + states.after.path(at->fresh);
        for (; at != last; ++at) {
            const std::string detail = detailOf(*at);
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
            words.append(separator).append(views).append(views.empty() ? "" : " ").append(detail);
            separator = "; ";
        }
        line('\0', words);
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
        std::reverse(missing.begin(), missing.end());
        for (const std::uint32_t at : missing) {
            line('\0', headingOf(at));
            headings.push_back(at);
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

} // namespace

void writeText(const Comparison& states, const std::vector<Change>& changes, bool inColours, const Sink& sink)
{
    TextWriter(states, inColours, sink).write(changes);
}

} // namespace compare
