#include "designs/formats/rose/Reading.h"

#include <algorithm>
#include <unordered_set>

namespace design::rose {

namespace {

// A view shows all features of one of these, or those whose lines its compartment lists.
struct FeatureList {
    std::string_view includeKey;
    std::string_view suppressKey;
    std::string_view listKey;
    bool areOperations;
};
constexpr FeatureList attributeList = {"IncludeAttribute", "SuppressAttribute", "class_attributes", false};
constexpr FeatureList operationList = {"IncludeOperation", "SuppressOperation", "operations", true};

// "price" of "<<key>> + /price : Money".
std::string nameIn(std::string_view line)
{
    constexpr std::string_view signs = "+#-~";
    if (const std::size_t end = line.starts_with("<<") ? line.find(">>") : std::string_view::npos;
        end != std::string_view::npos)
        line.remove_prefix(end + 2);
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    if (line.size() > 2 && signs.find(line.front()) != std::string_view::npos && line[1] == ' ')
        line.remove_prefix(2);
    line.remove_prefix(std::min(line.find_first_not_of("$/ "), line.size()));
    line = line.substr(0, std::min(line.find(" : "), line.find('(')));
    return std::string(line.substr(0, line.find_last_not_of(' ') + 1));
}

std::unordered_set<std::string> listedNames(const Object& view, bool areOperations)
{
    std::unordered_set<std::string> names;
    const Object* const compartment = view.object("compartment");
    const reader::List* const list = compartment ? compartment->get("compartmentItems").asList() : nullptr;
    if (!list)
        return names;
    for (const reader::Value& value : list->values()) {
        const std::string line = value.asText();
        if ((line.substr(0, line.find(" : ")).find('(') != std::string::npos) == areOperations)
            names.insert(nameIn(line));
    }
    return names;
}

void hide(const Reading& reading, const Object& view, const Object& element, const FeatureList& kind,
          std::array<bool, 4>& all, std::vector<std::string>& some)
{
    if (view.flag(kind.suppressKey)) {
        all.fill(true);
        return;
    }
    if (view.flag(kind.includeKey))
        return;
    const std::unordered_set<std::string> names = listedNames(view, kind.areOperations);
    if (names.empty()) {
        all.fill(true);
        return;
    }
    for (const Object* const feature : element.objects(kind.listKey))
        if (!names.contains(nameIn(feature->name())))
            some.push_back(reading.idOf(*feature));
}

} // namespace

HiddenFeatures hiddenFeatures(const Reading& reading, const Object& view, const Object& element)
{
    HiddenFeatures hidden;
    if (!view.is("ClassView"))
        return hidden;
    hide(reading, view, element, attributeList, hidden.attributes, hidden.features);
    hide(reading, view, element, operationList, hidden.operations, hidden.features);
    std::sort(hidden.features.begin(), hidden.features.end());
    return hidden;
}

} // namespace design::rose
