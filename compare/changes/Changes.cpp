#include "compare/changes/Changes.h"

#include "compare/changes/Order.h"
#include "compare/changes/Views.h"
#include "compare/facts/Values.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <cctype>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace compare {

using reader::Object;

namespace {

class Finder {
public:
    explicit Finder(const Comparison& states)
        : states(states), before(states.before), after(states.after), reader(states.depth)
    {
    }

    std::vector<Change> find()
    {
        noteRenames();
        for (std::uint32_t place = 0; place < before.size(); ++place)
            if (before[place].partner == nobody && before[before[place].parent].partner != nobody)
                add(Sort::removed, place, nobody, "removed");
        for (std::uint32_t place = 0; place < after.size(); ++place) {
            if (after[place].partner != nobody)
                compare(after[place].partner, place);
            else if (after[after[place].parent].partner != nobody)
                add(Sort::added, nobody, place, "added");
        }
        if (states.depth == Depth::all)
            compareFiles();
        std::stable_sort(changes.begin(), changes.end(), [&](const Change& a, const Change& b) {
            return std::make_tuple(placeOf(a, states), a.fresh == nobody) <
                   std::make_tuple(placeOf(b, states), b.fresh == nobody);
        });
        return std::move(changes);
    }

private:
    void add(Sort sort, std::uint32_t old, std::uint32_t fresh, std::string what, std::string from = {},
             std::string to = {})
    {
        const Object& object = *(fresh == nobody ? before[old] : after[fresh]).object;
        changes.push_back({sort,
                           isDiagram(object),
                           old,
                           fresh,
                           {},
                           std::move(what),
                           std::move(from),
                           std::move(to),
                           nullptr,
                           nullptr});
    }

    // Types are named by texts, whose words change with the names of classes.
    void noteRenames()
    {
        for (std::uint32_t place = 0; place < before.size(); ++place) {
            const Node& node = before[place];
            if (node.partner == nobody || node.name == after[node.partner].name ||
                reader::elementKindOf(*node.object) == reader::ElementKind::feature)
                continue;
            renames.emplace(nameOf(*node.object), nameOf(*after[node.partner].object));
        }
    }

    void compare(std::uint32_t old, std::uint32_t fresh)
    {
        const Node& one = before[old];
        const Node& other = after[fresh];
        if (one.name != other.name)
            add(Sort::changed, old, fresh, "name", nameOf(*one.object), nameOf(*other.object));
        if (other.parent != nobody && one.parent != nobody && after[other.parent].partner != one.parent)
            add(Sort::moved, old, fresh, "owner", before.path(one.parent), after.path(other.parent));
        if (isMisplaced(fresh))
            add(Sort::moved, old, fresh, "order", {}, neighbourOf(fresh));
        if (one.kind != other.kind)
            add(Sort::changed, old, fresh, "kind", std::string(one.object->kind()), std::string(other.object->kind()));
        if (one.facts != other.facts)
            compareFacts(old, fresh);
        noteOrder(old, fresh);
        if (isDiagram(*one.object))
            compareViews(states, old, fresh, changes);
    }

    void compareFacts(std::uint32_t old, std::uint32_t fresh)
    {
        const std::vector<Fact> olds = reader.all(*before[old].object);
        const std::vector<Fact> news = reader.all(*after[fresh].object);
        auto one = olds.begin();
        auto other = news.begin();
        while (one != olds.end() || other != news.end()) {
            const int order = one == olds.end() ? 1 : other == news.end() ? -1 : one->key.compare(other->key);
            if (order < 0) {
                add(Sort::changed, old, fresh, one->key, one->value, {});
            } else if (order > 0) {
                add(Sort::changed, old, fresh, other->key, {}, other->value);
            } else if (one->value != other->value && !isSameReference(*one, *other, old, fresh)) {
                add(Sort::changed, old, fresh, one->key, one->value, other->value);
            }
            one += order <= 0 ? 1 : 0;
            other += order >= 0 ? 1 : 0;
        }
    }

    // Whether two names mean one element, which has another name or another owner now.
    bool isSameReference(const Fact& one, const Fact& other, std::uint32_t old, std::uint32_t fresh) const
    {
        if (!isReference(one.key) || states.depth == Depth::all)
            return false;
        const std::string_view oldQuid = reader::quidIn(*before[old].object);
        const std::string_view newQuid = reader::quidIn(*after[fresh].object);
        const Object* const oldTarget = before.index().lookUp(oldQuid, one.value).element;
        const Object* const newTarget = after.index().lookUp(newQuid, other.value).element;
        if (oldTarget && newTarget) {
            const std::uint32_t target = before.find(oldTarget);
            return target != nobody && before[target].partner == after.find(newTarget) &&
                   before[target].partner != nobody;
        }
        if (!oldTarget && !newTarget && !oldQuid.empty() && oldQuid == newQuid)
            return true;
        return withNewNames(one.value) == lastPart(other.value);
    }

    // The words of a type, those of renamed classes as they are now.
    [[nodiscard]] std::string withNewNames(std::string_view type) const
    {
        const auto isPartOfWord = [](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return std::isalnum(byte) || c == '_' || byte >= 0x80;
        };
        type = lastPart(type);
        std::string result;
        while (!type.empty()) {
            const auto length = static_cast<std::size_t>(
                std::find_if(type.begin(), type.end(),
                             [&](char c) { return isPartOfWord(c) != isPartOfWord(type.front()); }) -
                type.begin());
            const auto renamed = renames.find(std::string(type.substr(0, length)));
            result += renamed == renames.end() ? type.substr(0, length) : std::string_view(renamed->second);
            type.remove_prefix(length);
        }
        return result;
    }

    // Finds which of the features that stayed in their owner stand elsewhere in it.
    void noteOrder(std::uint32_t old, std::uint32_t fresh)
    {
        std::unordered_map<std::uint64_t, std::pair<std::vector<std::uint32_t>, std::vector<std::uint32_t>>> lists;
        after.forEachChild(fresh, [&](std::uint32_t child) {
            const Node& node = after[child];
            if (!isOrdered(*node.object) || node.partner == nobody || before[node.partner].parent != old)
                return;
            auto& [places, partners] = lists[node.kind];
            places.push_back(child);
            partners.push_back(node.partner);
        });
        for (const auto& [kind, list] : lists) {
            if (std::is_sorted(list.second.begin(), list.second.end()))
                continue;
            const std::vector<bool> isOut = outOfOrder(list.second);
            for (std::size_t i = 0; i < isOut.size(); ++i)
                if (isOut[i])
                    misplaced.emplace(list.first[i], i == 0 ? nobody : list.first[i - 1]);
        }
    }

    // An owner is compared before what it owns.
    [[nodiscard]] bool isMisplaced(std::uint32_t fresh) const { return misplaced.contains(fresh); }

    [[nodiscard]] std::string neighbourOf(std::uint32_t fresh) const
    {
        const std::uint32_t neighbour = misplaced.at(fresh);
        return neighbour == nobody ? "first" : "behind " + nameOf(*after[neighbour].object);
    }

    // What nobody means, but `all` asks for.
    void compareFiles()
    {
        const reader::File& one = before.document().files().front();
        const reader::File& other = after.document().files().front();
        const auto compareTexts = [&](const char* what, const std::string& from, const std::string& to) {
            if (from != to)
                add(Sort::changed, 0, 0, what, from, to);
        };
        const auto lineEndOf = [](const Snapshot& state, const reader::File& file) {
            const std::string_view text = state.document().text(file);
            return text.find("\r\n") == std::string_view::npos ? "LF" : "CRLF";
        };
        compareTexts("notation", std::to_string(one.version), std::to_string(other.version));
        compareTexts("written by", one.writtenBy, other.writtenBy);
        compareTexts("charset", one.encoding, other.encoding);
        compareTexts("line ends", lineEndOf(before, one), lineEndOf(after, other));
    }

    const Comparison& states;
    const Snapshot& before;
    const Snapshot& after;
    FactReader reader;
    std::vector<Change> changes;
    std::unordered_map<std::string, std::string> renames;       // of all but features
    std::unordered_map<std::uint32_t, std::uint32_t> misplaced; // and what each stands behind
};

} // namespace

std::uint32_t placeOf(const Change& change, const Comparison& states)
{
    return change.fresh != nobody ? change.fresh : states.before[states.before[change.old].parent].partner;
}

std::vector<Change> changesOf(const Comparison& states)
{
    return Finder(states).find();
}

} // namespace compare
