#include "compare/changes/Views.h"

#include "compare/changes/Keys.h"
#include "compare/facts/Hash.h"
#include "compare/facts/Labels.h"
#include "compare/facts/Values.h"
#include "reader/index/Kinds.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <utility>

namespace compare {

using reader::Object;

namespace {

constexpr std::size_t longestNoteText = 40;

// The boxes that a line runs between, as far as its diagram has them.
std::vector<const Object*> endsOf(const Snapshot& state, const Object& view)
{
    const Object* const diagram = state.index().diagramOf(view);
    std::vector<const Object*> ends;
    const auto addEnd = [&](const Object& from, std::string_view key) {
        const Object* end = state.index().view(from, key);
        while (end && end->parent() != diagram)
            end = end->parent();
        if (end && end != &view)
            ends.push_back(end);
    };
    const std::vector<const Object*> roles = view.objects("roleview_list");
    for (const Object* const role : roles)
        addEnd(*role, "supplier");
    if (roles.empty()) {
        addEnd(view, "client");
        addEnd(view, "supplier");
    }
    return ends;
}

const Object* elementOf(const Snapshot& state, const Object& view)
{
    return state.index().element(view).element;
}

std::string noteText(const Object& note)
{
    const Object* const label = note.object("label");
    return label ? label->text("label") : note.text("label");
}

std::string textOf(const Object& view, std::string_view key)
{
    std::string text;
    appendValue(text, view.get(key));
    return text == "FALSE" ? std::string() : text;
}

std::string sizeOf(const Object& view)
{
    const std::string width = textOf(view, "width");
    const std::string height = textOf(view, "height");
    return width.empty() && height.empty() ? std::string() : width + " x " + height;
}

std::optional<reader::Point> labelPlace(const Object& view)
{
    const Object* const label = view.object("label");
    return label ? label->get("location").asPoint() : std::nullopt;
}

// A box that Rose makes larger keeps its corner, give or take a step of the grid, and its centre moves. When somebody
// moves it, the label goes as far as the centre.
bool hasOnlyGrown(const Object& one, const Object& other)
{
    if (!sizesItself(one) || !sizesItself(other) || (!sizeOf(one).empty() && sizeOf(one) == sizeOf(other)))
        return false;
    const auto before = one.get("location").asPoint();
    const auto after = other.get("location").asPoint();
    const auto labelBefore = labelPlace(one);
    const auto labelAfter = labelPlace(other);
    if (!before || !after || !labelBefore || !labelAfter)
        return false;
    constexpr double gridStep = 16;
    const auto stays = [](double centre, double corner) {
        return centre != corner && (std::abs(centre) <= gridStep || std::abs(corner) <= gridStep);
    };
    const double x = after->x - before->x;
    const double y = after->y - before->y;
    const double labelX = labelAfter->x - labelBefore->x;
    const double labelY = labelAfter->y - labelBefore->y;
    return (x == 0 || stays(x, labelX)) && (y == 0 || stays(y, labelY));
}

struct View {
    const Object* object;
    std::uint64_t key;
};

// What stands on two diagrams that are one.
class Picture {
public:
    Picture(const Comparison& states, std::uint32_t old, std::uint32_t fresh, std::vector<Change>& changes)
        : states(states), old(old), fresh(fresh), changes(changes)
    {
        const std::vector<View> olds = viewsIn(states.before, false, *states.before[old].object);
        const std::vector<View> news = viewsIn(states.after, true, *states.after[fresh].object);
        pairViews(olds, news);
        for (const View& view : news)
            if (const auto partner = oldOf.find(view.object); partner != oldOf.end())
                compare(*partner->second, *view.object);
            else if (isTold(states.after, *view.object, true))
                add(Sort::added, states.after, *view.object, "shown");
        for (const View& view : olds)
            if (!newOf.contains(view.object) && isTold(states.before, *view.object, false))
                add(Sort::removed, states.before, *view.object, "hidden");
    }

private:
    static std::vector<View> viewsIn(const Snapshot& state, bool isNew, const Object& diagram)
    {
        std::vector<View> views;
        for (const Object* const object : viewsOf(diagram))
            views.push_back({object, keyOf(state, isNew, *object)});
        return views;
    }

    static std::uint64_t keyOf(const Snapshot& state, bool isNew, const Object& view)
    {
        if (view.is("NoteView"))
            return mixed(3, hashOf(noteText(view)));
        if (elementOf(state, view) || !isLine(view))
            return mixed(4, targetKey(state, isNew, view));
        std::uint64_t key = hashOf(view.kind());
        for (const Object* const end : endsOf(state, view))
            key = mixed(key, end->is("NoteView") ? hashOf(noteText(*end)) : targetKey(state, isNew, *end));
        return key;
    }

    // By what they show; of several views of one thing those that did not move first. Notes that are left are one note
    // with a new text if they stand in one place.
    void pairViews(std::vector<View> olds, std::vector<View> news)
    {
        const auto withPlace = [](const View& view) {
            return mixed(view.key, hashOf(textOf(*view.object, "location")));
        };
        const auto byKey = [](const View& view) { return view.key; };
        const auto byNotePlace = [&](const View& view) {
            return view.object->is("NoteView") ? mixed(5, hashOf(textOf(*view.object, "location")))
                                               : reinterpret_cast<std::uintptr_t>(view.object);
        };
        pairBy(olds, news, withPlace);
        pairBy(olds, news, byKey);
        pairBy(olds, news, byNotePlace);
    }

    template <class KeyOf>
    void pairBy(std::vector<View>& olds, std::vector<View>& news, const KeyOf& keyOf)
    {
        std::unordered_map<std::uint64_t, std::vector<const Object*>> waiting; // the last one is the next
        for (const View& view : olds)
            waiting[keyOf(view)].push_back(view.object);
        for (auto& entry : waiting)
            std::reverse(entry.second.begin(), entry.second.end());
        for (const View& view : news) {
            const auto found = waiting.find(keyOf(view));
            if (found == waiting.end() || found->second.empty())
                continue;
            oldOf.emplace(view.object, found->second.back());
            newOf.emplace(found->second.back(), view.object);
            found->second.pop_back();
        }
        std::erase_if(olds, [&](const View& view) { return newOf.contains(view.object); });
        std::erase_if(news, [&](const View& view) { return oldOf.contains(view.object); });
    }

    // Lines come and go with their ends, and views with what they show.
    bool isTold(const Snapshot& state, const Object& view, bool isNew) const
    {
        if (states.depth == Depth::all)
            return true;
        const auto& partners = isNew ? oldOf : newOf;
        const std::uint32_t element = state.find(elementOf(state, view));
        const bool isElementOfBoth = element == nobody || state[element].partner != nobody;
        if (!isLine(view))
            return isNew || isElementOfBoth;
        const std::vector<const Object*> ends = endsOf(state, view);
        return isElementOfBoth &&
               std::all_of(ends.begin(), ends.end(), [&](const Object* end) { return partners.contains(end); });
    }

    void add(Sort sort, const Snapshot& state, const Object& view, const char* what, std::string from = {},
             std::string to = {})
    {
        const bool wasThere = &state == &states.before;
        const auto partner = oldOf.find(&view);
        changes.push_back({sort, true, old, fresh, viewName(state, view), what, std::move(from), std::move(to),
                           wasThere                 ? &view
                           : partner == oldOf.end() ? nullptr
                                                    : partner->second,
                           wasThere ? nullptr : &view});
    }

    void compare(const Object& one, const Object& other)
    {
        compareTexts(Sort::changed, other, "text", one.is("NoteView") ? noteText(one) : std::string(),
                     other.is("NoteView") ? noteText(other) : std::string());
        if (isLine(one) && isLine(other)) {
            const bool followsBox = hasMovedEnd(other) && states.depth != Depth::all;
            if (!followsBox)
                compareNumbers(Sort::changed, other, "rerouted", courseOf(one), courseOf(other));
        } else {
            if (!hasOnlyGrown(one, other) || states.depth == Depth::all)
                compareNumbers(Sort::moved, other, "moved", textOf(one, "location"), textOf(other, "location"));
            if (states.depth == Depth::all || !sizesItself(one) || !sizesItself(other))
                compareNumbers(Sort::changed, other, "resized", sizeOf(one), sizeOf(other));
        }
        for (const std::string_view key : lookKeys)
            compareLooks(other, key, textOf(one, key), textOf(other, key));
        if (states.depth == Depth::all)
            compareRest(one, other);
    }

    void compareTexts(Sort sort, const Object& view, const char* what, std::string from, std::string to)
    {
        if (from != to)
            add(sort, states.after, view, what, std::move(from), std::move(to));
    }

    void compareNumbers(Sort sort, const Object& view, const char* what, std::string from, std::string to)
    {
        if (!areNear(from, to, states.nearness))
            compareTexts(sort, view, what, std::move(from), std::move(to));
    }

    // Whether a value is written at all depends on who writes the file.
    void compareLooks(const Object& view, std::string_view key, std::string from, std::string to)
    {
        const bool isFlag = from == "TRUE" || to == "TRUE";
        if (from != to && (isFlag || (!from.empty() && !to.empty())))
            add(Sort::changed, states.after, view, std::string(key).c_str(), std::move(from), std::move(to));
    }

    void compareRest(const Object& one, const Object& other)
    {
        if (one.viewNumber() != other.viewNumber())
            compareTexts(Sort::changed, other, "number", std::to_string(one.viewNumber().value_or(0)),
                         std::to_string(other.viewNumber().value_or(0)));
        for (const std::string_view key : {"annotation", "anchor", "autoResize", "compartment", "font", "label",
                                           "origin_attachment", "stereotype", "terminal_attachment"})
            compareTexts(Sort::changed, other, std::string(key).c_str(), textOf(one, key), textOf(other, key));
    }

    bool hasMovedEnd(const Object& line) const
    {
        const std::vector<const Object*> ends = endsOf(states.after, line);
        return std::any_of(ends.begin(), ends.end(), [&](const Object* end) {
            const auto before = oldOf.find(end);
            return before == oldOf.end() ||
                   !areNear(textOf(*before->second, "location"), textOf(*end, "location"), states.nearness) ||
                   !areNear(sizeOf(*before->second), sizeOf(*end), states.nearness);
        });
    }

    const Comparison& states;
    std::uint32_t old;
    std::uint32_t fresh;
    std::vector<Change>& changes;
    std::unordered_map<const Object*, const Object*> oldOf;
    std::unordered_map<const Object*, const Object*> newOf;
};

bool isBetween(const reader::Point& before, const reader::Point& here, const reader::Point& behind)
{
    return (before.x == here.x && here.x == behind.x) || (before.y == here.y && here.y == behind.y);
}

// Appends the points but the ends, and but those on the way from the one before to the one behind.
void appendCourse(std::string& text, const Object& line)
{
    std::vector<reader::Point> points;
    if (const reader::List* const list = line.get("vertices").asList())
        for (const reader::Value& value : list->values())
            if (const auto point = value.asPoint()) {
                const std::size_t count = points.size();
                if (count > 1 && isBetween(points[count - 2], points[count - 1], *point))
                    points.pop_back();
                points.push_back(*point);
            }
    for (std::size_t i = 1; i + 1 < points.size(); ++i)
        appendPoint(text += text.empty() ? "" : " ", points[i]);
}

} // namespace

void compareViews(const Comparison& states, std::uint32_t old, std::uint32_t fresh, std::vector<Change>& changes)
{
    const Picture picture(states, old, fresh, changes);
}

bool isLine(const Object& view)
{
    return view.has("roleview_list") || (view.has("client") && view.has("supplier"));
}

std::vector<const Object*> viewsOf(const Object& diagram)
{
    std::vector<const Object*> views = diagram.objects("items");
    std::erase_if(views, [](const Object* view) { return view->is("InheritTreeView"); });
    return views;
}

bool sizesItself(const Object& view)
{
    return view.flag("autoResize");
}

std::string courseOf(const Object& view)
{
    std::string course;
    appendCourse(course, view);
    for (const Object* const role : view.objects("roleview_list"))
        appendCourse(course, *role);
    return course;
}

std::string viewName(const Snapshot& state, const Object& view)
{
    if (view.is("NoteView"))
        return "note \"" + text::shortened(text::onOneLine(noteText(view)), longestNoteText) + '"';
    const Object* const element = elementOf(state, view);
    if (!isLine(view)) {
        const std::string name = element ? nameOf(*element) : std::string(lastPart(view.lastName()));
        return !name.empty() ? name : element ? headlineOf(state, *element) : std::string(view.kind());
    }
    // A line may end at another, as that of an association class; not further into those, which might end at each
    // other.
    const auto lineName = [&](const Object& line) {
        const Object* const relation = elementOf(state, line);
        return relation ? headlineOf(state, *relation) : std::string("a line");
    };
    std::string ends;
    for (const Object* const end : endsOf(state, view))
        ends.append(ends.empty() ? "" : " -- ").append(isLine(*end) ? lineName(*end) : viewName(state, *end));
    std::string kind = element ? std::string(kindWord(*element)) : "line";
    return kind + ' ' + (ends.empty() && element ? nameOf(*element) : ends);
}

} // namespace compare
