#include "compare/facts/Facts.h"

#include "compare/facts/Values.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace compare {

using reader::Object;

namespace {

// What a tool counts, and what follows from other things. Sorted.
constexpr std::string_view ownKeys[] = {
    "client_quidu",
    "defaults",
    "file_name",
    "is_loaded",
    "is_unit",
    "items",
    "max_height",
    "max_width",
    "mechanism_ref",
    "ordinal",
    "origin_x",
    "origin_y",
    "quid",
    "quidu",
    "sequence",
    "supplier_is_device",
    "supplier_is_spec",
    "supplier_is_subsystem",
    "supplier_quidu",
    "title",
    "uid",
    "zoom",
};
static_assert(std::is_sorted(std::begin(ownKeys), std::end(ownKeys)));

constexpr std::string_view referenceKeys[] = {"AssociationClass", "category",  "class",    "module",
                                              "result",           "subsystem", "supplier", "type"};
static_assert(std::is_sorted(std::begin(referenceKeys), std::end(referenceKeys)));

// Versions of Rose differ in whether they write what goes without saying.
constexpr std::pair<std::string_view, std::string_view> unsaid[] = {
    {"Containment", "Unspecified"},
    {"concurrency", "Sequential"},
    {"persistence", "Transient"},
};

bool goesWithoutSaying(const Object& object, std::string_view key, std::string_view value)
{
    if (value.empty() || value == "FALSE")
        return true;
    if (key == "exportControl" && value == "Public" && !object.is("ClassAttribute", "Operation", "Role"))
        return true;
    return std::any_of(std::begin(unsaid), std::end(unsaid),
                       [&](const auto& each) { return each.first == key && each.second == value; });
}

} // namespace

bool isReference(std::string_view key)
{
    return std::binary_search(std::begin(referenceKeys), std::end(referenceKeys), key);
}

bool FactReader::take(const Object& object, const reader::Attribute& attribute)
{
    if (attribute.key == "items" ||
        (depth == Depth::meaning && std::binary_search(std::begin(ownKeys), std::end(ownKeys), attribute.key)))
        return false;
    value.clear();
    appendValue(value, attribute.value);
    // The end of an association has its name twice.
    if (attribute.key == "label" && object.is("Role") && value == object.name())
        return false;
    return depth == Depth::all ? !value.empty() : !goesWithoutSaying(object, attribute.key, value);
}

// An element has them in a list, a model in an object around that.
const reader::List* FactReader::propertiesIn(const reader::Attribute& attribute)
{
    const Object* const around = attribute.value.asObject();
    if (around && around->is("Properties"))
        return around->get("attributes").asList();
    return attribute.key == "attributes" ? attribute.value.asList() : nullptr;
}

const std::vector<Fact>& FactReader::properties(const reader::List& list)
{
    found.clear();
    addProperties(list, {}, 0);
    return found;
}

// The value of a property may be a list of others.
void FactReader::addProperties(const reader::List& list, const std::string& around, int level)
{
    constexpr int deepestLevel = 8;
    for (const reader::Value& member : list.values()) {
        const Object* const property = member.asObject();
        if (!property || !property->is("Attribute"))
            continue;
        const std::string name = (level == 0 ? property->text("tool") : around) + '.' + property->text("name");
        const reader::Value& content = property->get("value");
        if (content.kind() == reader::ValueKind::list && level < deepestLevel) {
            addProperties(*content.asList(), name, level + 1);
            continue;
        }
        value.clear();
        appendValue(value, content);
        found.push_back({name, value});
    }
}

std::vector<Fact> FactReader::all(const Object& object)
{
    std::vector<Fact> facts;
    forEach(object, [&](std::string_view factKey, std::string_view factValue) {
        facts.push_back({std::string(factKey), std::string(factValue)});
    });
    std::stable_sort(facts.begin(), facts.end(), [](const Fact& a, const Fact& b) { return a.key < b.key; });
    return facts;
}

} // namespace compare
