#include "compare/facts/Snapshot.h"

#include "compare/facts/Hash.h"
#include "compare/facts/Values.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace compare {

using reader::Object;

bool isDiagram(const Object& object)
{
    return reader::diagramKindOf(object).has_value();
}

Snapshot::Snapshot(const reader::Document& document, Depth depth) : read(&document), elements(document)
{
    collect();
    hash(depth);
    byObject.resize(nodes.size());
    std::iota(byObject.begin(), byObject.end(), 0U);
    std::sort(byObject.begin(), byObject.end(),
              [&](std::uint32_t a, std::uint32_t b) { return std::less<>()(nodes[a].object, nodes[b].object); });
}

void Snapshot::collect()
{
    struct Open {
        const Object* object;
        std::uint32_t parent;
    };
    std::vector<Open> open = {{&read->root(), nobody}};
    while (!open.empty()) {
        const auto [object, parent] = open.back();
        open.pop_back();
        const bool isOne = isNode(*object) || parent == nobody;
        const auto inside = isOne ? static_cast<std::uint32_t>(nodes.size()) : parent;
        if (isOne)
            nodes.push_back({object, parent, inside + 1});
        if (isDiagram(*object) || object->is("Attribute", "Font", "defaults"))
            continue;
        const std::vector<const Object*> children = reader::childrenOf(*object);
        std::for_each(children.rbegin(), children.rend(), [&](const Object* child) {
            open.push_back({child, inside});
        });
    }
    for (std::uint32_t place = size(); place-- > 1;)
        nodes[nodes[place].parent].end = std::max(nodes[nodes[place].parent].end, nodes[place].end);
}

// Order counts nowhere in the hashes: sums are the same in any.
void Snapshot::hash(Depth depth)
{
    FactReader reader(depth);
    for (std::uint32_t place = size(); place-- > 0;) {
        Node& node = nodes[place];
        const std::string name = nameOf(*node.object);
        node.name = name.empty() ? 0 : hashOf(name);
        node.kind = hashOf(node.object->kind());
        node.hasSubstance = node.end > place + 1 || node.object->has("documentation");
        reader.forEach(*node.object, [&](std::string_view key, std::string_view value) {
            const std::uint64_t keyHash = hashOf(key);
            const std::uint64_t whole = mixed(keyHash, hashOf(value));
            node.facts += whole;
            node.content += isReference(key) ? mixed(keyHash, hashOf(lastPart(value))) : whole;
        });
        if (isDiagram(*node.object)) // is known by what it shows
            forEachShownName(*node.object, [&](std::uint64_t shown) {
                node.content += shown;
                node.hasSubstance = true;
            });
        if (node.parent != nobody)
            nodes[node.parent].content += mixed(mixed(node.kind, node.name), node.content);
    }
}

std::uint32_t Snapshot::find(const Object* object) const
{
    const auto found =
        std::lower_bound(byObject.begin(), byObject.end(), object, [&](std::uint32_t place, const Object* wanted) {
            return std::less<>()(nodes[place].object, wanted);
        });
    return found != byObject.end() && nodes[*found].object == object ? *found : nobody;
}

std::string Snapshot::path(std::uint32_t place) const
{
    std::vector<std::string> parts;
    constexpr std::size_t mostParts = 64; // no model is as deep as what is left out
    for (; place != nobody && parts.size() < mostParts; place = nodes[place].parent)
        if (std::string name = nameOf(*nodes[place].object); !name.empty())
            parts.push_back(std::move(name));
    std::string result;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        result.append(part == parts.rbegin() ? "" : "::").append(*part);
    return result;
}

} // namespace compare
