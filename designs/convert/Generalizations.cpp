#include "designs/convert/Generalizations.h"

#include "designs/model/Walk.h"

#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace design {

namespace {

// Those in a tree of which this is equal say the same.
auto propertiesOf(const Relationship& generalization)
{
    return std::tie(generalization.supplier.id, generalization.name, generalization.documentation,
                    generalization.stereotype, generalization.visibility, generalization.isVirtual,
                    generalization.isFriend);
}

template <class Visit>
void forEachGeneralization(const Package& root, const Visit& visit)
{
    forEachPackage(root, [&](const Package& package) {
        for (const Relationship& relationship : package.relationships)
            if (relationship.kind == RelationshipKind::Generalization)
                visit(relationship);
    });
}

} // namespace

Generalizations::Generalizations(const Design& design, const Catalogue& catalogue)
{
    for (const std::vector<std::string>& tree : design.trees)
        join(tree, catalogue);
    forEachGeneralization(design.root, [this](const Relationship& each) {
        if (!nodeOf.contains(&each))
            addNode(each);
    });
    order(design.root);
}

void Generalizations::addNode(const Relationship& generalization)
{
    nodeOf.emplace(&generalization, nodes.size());
    nodes.emplace_back().members.push_back(&generalization);
}

// Those in a tree that say the same are one.
void Generalizations::join(const std::vector<std::string>& tree, const Catalogue& catalogue)
{
    std::map<decltype(propertiesOf(std::declval<const Relationship&>())), std::size_t> nodesOfTree;
    for (const std::string& id : tree) {
        const Relationship* const member = catalogue.relationship(id);
        if (!member || member->kind != RelationshipKind::Generalization || nodeOf.contains(member))
            continue;
        const auto [node, isNew] = nodesOfTree.emplace(propertiesOf(*member), nodes.size());
        if (isNew) {
            addNode(*member);
        } else {
            nodeOf.emplace(member, node->second);
            nodes[node->second].members.push_back(member);
        }
    }
}

void Generalizations::order(const Package& root)
{
    std::unordered_map<std::string_view, std::size_t> lastOf; // by identifier of the class
    std::set<std::pair<std::string_view, std::size_t>> known; // a class has each once
    forEachGeneralization(root, [&](const Relationship& each) {
        const std::size_t node = nodeOf.at(&each);
        const auto [last, isFirst] = lastOf.emplace(each.client.id, node);
        if (!known.emplace(each.client.id, node).second || isFirst)
            return;
        nodes[last->second].followers.push_back(node);
        ++nodes[node].missing;
        last->second = node;
    });
}

void Generalizations::meet(const Relationship& generalization, const Make& make)
{
    const std::size_t node = nodeOf.at(&generalization);
    nodes[node].isMet = true;
    if (!nodes[node].isMade && nodes[node].missing == 0)
        this->make(node, make);
}

void Generalizations::make(std::size_t first, const Make& make)
{
    std::vector<std::size_t> ready = {first};
    while (!ready.empty()) {
        Node& node = nodes[ready.back()];
        ready.pop_back();
        node.isMade = true;
        make(node.members);
        for (auto follower = node.followers.rbegin(); follower != node.followers.rend(); ++follower)
            if (Node& next = nodes[*follower]; --next.missing == 0 && next.isMet && !next.isMade)
                ready.push_back(*follower);
    }
}

void Generalizations::makeRest(const Make& make)
{
    for (std::size_t node = 0; node < nodes.size(); ++node)
        if (!nodes[node].isMade)
            this->make(node, make);
}

} // namespace design
