#include "compare/report/FullText.h"

#include "compare/changes/Views.h"
#include "compare/facts/Labels.h"
#include "compare/facts/Values.h"
#include "text/Utf8.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace compare {

using reader::Object;

namespace {

constexpr std::size_t deepestLevel = 16;
constexpr std::size_t pieceSize = std::size_t{1} << 16U;

class Writer {
public:
    Writer(const Snapshot& state, const Sink& sink) : state(state), sink(sink), reader(Depth::meaning) {}

    void write()
    {
        std::vector<std::pair<std::uint32_t, std::size_t>> open = {{0, 0}};
        while (!open.empty()) {
            const auto [place, level] = open.back();
            open.pop_back();
            writeNode(place, level);
            std::vector<std::uint32_t> children = childrenOf(place);
            std::reverse(children.begin(), children.end()); // the first is taken first
            for (const std::uint32_t child : children)
                open.emplace_back(child, level + 1);
        }
        sink(text);
    }

private:
    void writeNode(std::uint32_t place, std::size_t level)
    {
        const Object& object = *state[place].object;
        line(level, object.is("Design") ? "model" : headlineOf(state, object));
        for (const Fact& fact : reader.all(object))
            writeFact(level + 1, fact);
        if (const reader::MissingUnit* const unit = state.document().missingUnit(object))
            line(level + 1, "unit: " + unit->fileName);
        if (isDiagram(object))
            for (const std::string& view : viewsIn(object))
                line(level + 1, view);
    }

    // Each line of a text is one.
    void writeFact(std::size_t level, const Fact& fact)
    {
        std::string_view rest = fact.value;
        std::string start = std::string(wordFor(fact.key)) + ": ";
        do {
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            line(level, start + std::string(rest.substr(0, end)));
            rest.remove_prefix(std::min(end + 1, rest.size()));
            start = "| ";
        } while (!rest.empty());
    }

    // What has an order keeps it, all else stands by kind and name.
    [[nodiscard]] std::vector<std::uint32_t> childrenOf(std::uint32_t place) const
    {
        struct Child {
            std::string kind;
            std::string label;
            std::uint32_t place;

            bool operator<(const Child& other) const
            {
                return std::tie(kind, label, place) < std::tie(other.kind, other.label, other.place);
            }
        };
        std::vector<Child> children;
        state.forEachChild(place, [&](std::uint32_t child) {
            const Object& object = *state[child].object;
            children.push_back({std::string(kindWord(object)),
                                isOrdered(object) ? std::string() : descriptionOf(state, object), child});
        });
        std::sort(children.begin(), children.end());
        std::vector<std::uint32_t> places;
        places.reserve(children.size());
        for (const Child& child : children)
            places.push_back(child.place);
        return places;
    }

    [[nodiscard]] std::vector<std::string> viewsIn(const Object& diagram) const
    {
        std::vector<std::string> lines;
        for (const Object* const view : viewsOf(diagram))
            lines.push_back(viewName(state, *view) + placeOf(*view) + looksOf(*view));
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    static std::string valueOf(const Object& view, std::string_view key)
    {
        std::string value;
        appendValue(value, view.get(key));
        return value;
    }

    static std::string placeOf(const Object& view)
    {
        if (isLine(view)) {
            const std::string course = courseOf(view);
            return course.empty() ? "" : " by way of " + course;
        }
        std::string result = view.has("location") ? " at " + valueOf(view, "location") : "";
        if (!sizesItself(view) && view.has("width"))
            result += ", " + valueOf(view, "width") + " x " + valueOf(view, "height");
        return result;
    }

    static std::string looksOf(const Object& view)
    {
        std::string result;
        for (const std::string_view key : lookKeys)
            if (view.flag(key))
                result.append(", ").append(wordFor(key));
            else if (view.has(key) && !view.get(key).asBool())
                result.append(", ").append(wordFor(key)).append(" ").append(valueOf(view, key));
        return result;
    }

    void line(std::size_t level, const std::string& words)
    {
        text.append(2 * std::min(level, deepestLevel), ' ').append(text::onOneLine(words)).append("\n");
        if (text.size() >= pieceSize) {
            sink(text);
            text.clear();
        }
    }

    const Snapshot& state;
    const Sink& sink;
    FactReader reader;
    std::string text;
};

} // namespace

void writeFullText(const Snapshot& state, const Sink& sink)
{
    Writer(state, sink).write();
}

} // namespace compare
