#include "dump/facts/Elements.h"

#include "dump/facts/Walk.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace dump {

using reader::ElementKind;
using reader::Object;

namespace {

constexpr std::pair<ElementKind, Category> categories[] = {
    {ElementKind::package, Category::package},     {ElementKind::classifier, Category::classifier},
    {ElementKind::component, Category::component}, {ElementKind::node, Category::node},
    {ElementKind::relation, Category::relation},   {ElementKind::feature, Category::feature},
    {ElementKind::behavior, Category::behavior},
};

Category categoryOf(const Object& object)
{
    if (reader::diagramKindOf(object))
        return Category::diagram;
    const reader::KnownKind* const known = reader::knownKindOf(object);
    if (!known)
        return object.has("quid") && !object.viewNumber() ? Category::other : Category::none;
    for (const auto& [kind, category] : categories)
        if (known->element == kind)
            return category;
    if (known->word.empty())
        return Category::none;
    return object.is("Design") ? Category::model : Category::package; // the Deployment View
}

} // namespace

std::string_view nameOf(Category category)
{
    constexpr std::string_view names[] = {"",         "model",   "package",  "classifier", "component", "node",
                                          "relation", "feature", "behavior", "diagram",    "other"};
    return names[static_cast<std::size_t>(category)];
}

std::string kindWordOf(const Object& object)
{
    if (const auto diagram = reader::diagramKindOf(object))
        return std::string(reader::diagramKindName(*diagram)) + " diagram";
    const reader::KnownKind* const known = reader::knownKindOf(object);
    return known ? std::string(known->word) : std::string();
}

// Gives the objects their numbers.
class ElementsVisitor : public Visitor {
public:
    explicit ElementsVisitor(Elements& theElements) : elements(theElements) {}

    void beginFile(std::size_t /*file*/) override
    {
        if (!around.empty()) // the root of the unit stands for this one
            elements.entries[around.back()].category = Category::none;
    }

    void beginObject(const Object& object, const Member& /*member*/, const Extent& /*extent*/) override
    {
        const auto number = static_cast<Elements::Number>(elements.entries.size());
        Elements::Entry entry{&object, 0, 0, categoryOf(object)};
        if (!around.empty()) {
            const Elements::Entry& outer = elements.entries[around.back()];
            entry.owner = outer.category == Category::none ? outer.owner : around.back();
            entry.diagram = outer.diagram;
        }
        if (entry.category == Category::diagram)
            entry.diagram = number;
        elements.entries.push_back(entry);
        elements.numbers.emplace(&object, number);
        around.push_back(number);
    }

    void endObject() override { around.pop_back(); }
    void beginList(const Member& /*member*/, const Extent& /*extent*/) override {}
    void endList() override {}
    void value(const Member& /*member*/, const Extent& /*extent*/) override {}

private:
    Elements& elements;
    std::vector<Elements::Number> around; // the objects that are open
};

Elements::Elements(const reader::Document& document) : entries(1)
{
    entries.reserve(document.objectCount() + 1);
    numbers.reserve(document.objectCount());
    ElementsVisitor visitor(*this);
    walk(document, visitor);
}

Elements::Number Elements::numberOf(const Object* object) const
{
    const auto found = numbers.find(object);
    return found == numbers.end() ? 0 : found->second;
}

std::string Elements::qualifiedName(Number number) const
{
    constexpr std::string_view separator = "::";
    std::vector<std::string> names;
    std::size_t length = 0;
    std::size_t levels = 0;
    for (Number at = number; at != 0; at = entries[at].owner) {
        const auto given = entries[at].object->names();
        const std::string_view raw = given.empty() ? std::string_view() : given.front().raw();
        if (at == number && reader::isUnnamed(raw))
            return {};
        if (raw.size() > 2 * longestName || ++levels > longestName) // escapes make at most twice as much of it
            return {};
        if (reader::isUnnamed(raw) || entries[at].category == Category::model)
            continue;
        names.push_back(entries[at].object->name());
        length += names.back().size() + separator.size();
        if (length > longestName + separator.size())
            return {};
    }
    std::string result;
    std::ranges::reverse(names);
    for (const std::string& name : names)
        result.append(result.empty() ? "" : separator).append(name);
    return result;
}

} // namespace dump
