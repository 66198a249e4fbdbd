#pragma once

#include "compare/facts/Facts.h"
#include "compare/facts/Hash.h"
#include "compare/facts/Values.h"
#include "reader/index/Index.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace compare {

inline constexpr std::uint32_t nobody = 0xFFFFFFFFU;

/// An element or a diagram. Nodes stand in the order of the file, each in front of what belongs to it.
struct Node {
    const reader::Object* object = nullptr;
    std::uint32_t parent = nobody;
    std::uint32_t end = 0;          ///< the first node behind it that does not belong to it
    std::uint32_t partner = nobody; ///< the same element in the other state
    bool hasSubstance = false;      ///< something is in it by which it can be told from others
    std::uint64_t name = 0;         ///< hash of the name; 0 when it has none
    std::uint64_t kind = 0;         ///< hash of the kind
    std::uint64_t facts = 0;        ///< hash of all its facts
    std::uint64_t content = 0;      ///< hash of facts and of all that belongs to it, without its name and any paths
};

/// One state of a model, as nodes. The document must stay where it is.
class Snapshot {
public:
    Snapshot(const reader::Document& document, Depth depth);

    [[nodiscard]] const reader::Document& document() const { return *read; }
    [[nodiscard]] const reader::Index& index() const { return elements; }
    [[nodiscard]] std::uint32_t size() const { return static_cast<std::uint32_t>(nodes.size()); }
    [[nodiscard]] Node& operator[](std::uint32_t place) { return nodes[place]; }
    [[nodiscard]] const Node& operator[](std::uint32_t place) const { return nodes[place]; }
    /// The node that is `object`, or `nobody`.
    [[nodiscard]] std::uint32_t find(const reader::Object* object) const;
    /// The place of one of its nodes.
    [[nodiscard]] std::uint32_t placeOf(const Node& node) const
    {
        return static_cast<std::uint32_t>(&node - nodes.data());
    }
    /// Names around a node and its own, joined by `::`.
    [[nodiscard]] std::string path(std::uint32_t place) const;

    template <class Visit>
    void forEachChild(std::uint32_t place, const Visit& visit) const
    {
        for (std::uint32_t child = place + 1; child < nodes[place].end; child = nodes[child].end)
            visit(child);
    }

private:
    void collect();
    void hash(Depth depth);

    const reader::Document* read;
    reader::Index elements;
    std::vector<Node> nodes;
    std::vector<std::uint32_t> byObject; // places, by the address of the object
};

/// Whether the object holds a diagram.
[[nodiscard]] bool isDiagram(const reader::Object& object);

/// Calls `visit` with a hash of the name, without its path, of what each box of a diagram shows.
template <class Visit>
void forEachShownName(const reader::Object& diagram, const Visit& visit)
{
    for (const reader::Object* const view : diagram.objects("items"))
        if (const std::string name = view->lastName(); !name.empty())
            visit(hashOf(lastPart(name)));
}

} // namespace compare
