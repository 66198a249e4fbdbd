#include "browse/Elements.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace browse {

using reader::Object;

namespace {

// What is in these is theirs: views, values of a tool, fonts.
bool hasElements(const Object& object)
{
    return !reader::diagramKindOf(object) && !object.is("Attribute", "Font", "Properties", "defaults");
}

constexpr std::size_t longestId = 80;

// Ids of elements that have no quids grow from parent to child.
std::string shortened(const std::string& id)
{
    if (id.size() <= longestId)
        return id;
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : id)
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    std::string digits;
    for (; hash != 0; hash >>= 4U)
        digits += "0123456789ABCDEF"[hash & 0xFU];
    return digits;
}

} // namespace

Elements::Elements(const reader::Document& document, const reader::Index& index) : root(&document.root())
{
    struct Open {
        const Object* object;
        std::size_t parent;
    };
    std::vector<Open> open = {{root, 0}};
    while (!open.empty()) {
        const auto [object, parent] = open.back();
        open.pop_back();
        const bool isShown = isElement(*object) || object == root;
        if (isShown)
            add(*object, parent);
        if (!hasElements(*object))
            continue;
        const std::size_t inside = isShown ? elements.size() - 1 : parent;
        std::vector<const Object*> children = reader::childrenOf(*object);
        std::reverse(children.begin(), children.end()); // the first is taken first
        for (const Object* const child : children)
            open.push_back({child, inside});
    }
    giveIds();
    nameInteractions(index);
}

void Elements::add(const Object& object, std::size_t parent)
{
    places.emplace(&object, elements.size());
    elements.push_back({&object, parent, kindPlace(object), nameOf(object), {}});
}

std::size_t Elements::kindPlace(const Object& object)
{
    const auto found = std::find_if(usedKinds.begin(), usedKinds.end(),
                                    [&](const Kind& kind) { return kind.keyword == object.kind(); });
    const auto place = static_cast<std::size_t>(found - usedKinds.begin());
    if (place == usedKinds.size())
        usedKinds.push_back(kindOf(object));
    return place;
}

std::string Elements::nameOf(const Object& object) const
{
    if (object.is("Processes"))
        return "Deployment View";
    if (object.is("Design"))
        return {};
    std::string name = reader::shownName(object);
    if (const Object* const event = object.object("Event"); name.empty() && event)
        return event->name();
    if (const std::string type = object.text("type"); name.empty() && object.is("State") && type != "Normal")
        return labelOf(type);
    return name;
}

// A quid stays with its element whatever that is called later. What has none of its own gets its parent's and its name.
void Elements::giveIds()
{
    std::unordered_map<std::string, std::size_t> takers;
    for (Element& element : elements) {
        element.id = element.object->is("Design") ? "model" : element.object->text("quid");
        if (element.id.empty())
            element.id = shortened(elements[element.parent].id + "." +
                                   (element.name.empty() ? std::string(element.object->kind()) : element.name));
        const std::string first = element.id;
        while (++takers[element.id] > 1)
            element.id = first + "." + std::to_string(takers[first]);
    }
}

// An interaction has no name; it is known by the diagram that shows it.
void Elements::nameInteractions(const reader::Index& index)
{
    for (const reader::Diagram& diagram : index.diagrams()) {
        const auto number = diagram.object->get("mechanism_ref").asReference();
        const std::size_t interaction = placeOf(number ? index.viewIn(nullptr, *diagram.object, *number) : nullptr);
        if (interaction != Elements::nowhere && elements[interaction].name.empty() &&
            elements[interaction].object->is("Mechanism"))
            elements[interaction].name = diagram.name;
    }
}

std::size_t Elements::placeOf(const Object* object) const
{
    for (; object; object = object->parent())
        if (const auto found = places.find(object); found != places.end())
            return found->second;
    return Elements::nowhere;
}

} // namespace browse
