#include "reader/index/Index.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <tuple>

namespace reader {

namespace {

constexpr std::string_view separator = "::";
constexpr std::uint64_t hashOfNothing = 14695981039346656037U;

std::uint64_t hashed(std::string_view text, std::uint64_t hash = hashOfNothing)
{
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    return hash;
}

// Elements whose names make up full names.
bool isScope(const Object& object)
{
    const ElementKind kind = elementKindOf(object);
    return kind == ElementKind::package || kind == ElementKind::classifier || kind == ElementKind::component ||
           kind == ElementKind::node;
}

const Object* scopeAround(const Object& object)
{
    const Object* at = object.parent();
    while (at && !isScope(*at))
        at = at->parent();
    return at;
}

// What is in front of the path of `object` in `fullName`; nothing when that is no end of it.
std::optional<std::string_view> inFrontOfPath(const Object& object, std::string_view fullName)
{
    for (const Object* at = &object;;) {
        const std::string name = at->name();
        if (!fullName.ends_with(name))
            return std::nullopt;
        fullName.remove_suffix(name.size());
        at = scopeAround(*at);
        if (!at)
            return fullName;
        if (!fullName.ends_with(separator))
            return std::nullopt;
        fullName.remove_suffix(separator.size());
    }
}

// Where the parts of a full name begin; no model is as deep as what is left out.
std::vector<std::size_t> startsOfParts(std::string_view fullName)
{
    constexpr std::size_t mostParts = 64;
    std::vector<std::size_t> starts = {0};
    for (std::size_t colons = fullName.find(separator); colons != std::string_view::npos && starts.size() < mostParts;
         colons = fullName.find(separator, starts.back()))
        starts.push_back(colons + separator.size());
    return starts;
}

bool saysNone(std::string_view quid)
{
    return !quid.empty() && quid.find_first_not_of('0') == std::string_view::npos;
}

// The name of what `from` refers to, if it gives one.
std::string nameIn(const Object& from)
{
    for (const std::string_view key : {"supplier", "class"})
        if (from.get(key).kind() == ValueKind::text)
            return from.text(key);
    if (!from.viewNumber())
        return {};
    for (const Value& name : from.names())
        if (name.raw().find(separator) != std::string_view::npos)
            return name.asText();
    return {};
}

} // namespace

std::string_view quidIn(const Object& from)
{
    const Value& quid = from.get("quidu");
    return quid ? quid.raw() : from.get("supplier_quidu").raw();
}

Index::Index(const Document& document) : document(&document)
{
    std::vector<Visit> open = {{&document.root(), hashOfNothing, 0}};
    while (!open.empty()) {
        const Visit visit = open.back();
        open.pop_back();
        add(visit, open);
    }
    sort();
    for (const MissingUnit& unit : document.missingUnits())
        unloadedPaths.push_back(path(*unit.stub));
    std::sort(unloadedPaths.begin(), unloadedPaths.end());
    isPartial = !unloadedPaths.empty() || !document.root().is("Design");
}

void Index::add(const Visit& visit, std::vector<Visit>& open)
{
    const Object& object = *visit.object;
    Visit inside = visit;
    if (const auto kind = diagramKindOf(object)) {
        allDiagrams.push_back({&object, *kind, object.name(), object.parent()});
        inside.diagram = static_cast<std::uint32_t>(allDiagrams.size());
    }
    if (isScope(object)) {
        const std::string name = object.name();
        inside.scope = hashed(name, visit.scope == hashOfNothing ? visit.scope : hashed(separator, visit.scope));
        names.push_back({inside.scope, &object});
        simpleNames.push_back({hashed(name), &object});
    }
    if (const Value& quid = object.get("quid"); quid.kind() == ValueKind::text)
        quids.push_back({quid.raw(), &object});
    if (const auto number = object.viewNumber()) {
        numbers.push_back({*number, fileOf(object), inside.diagram, &object});
        if (const Value& quid = object.get("quidu"); quid.kind() == ValueKind::text)
            shown.push_back({quid.raw(), &object});
    }
    const std::vector<const Object*> children = childrenOf(object);
    std::for_each(children.rbegin(), children.rend(), [&](const Object* child) {
        open.push_back({child, inside.scope, inside.diagram});
    });
}

bool Index::isBefore(const ByNumber& a, const ByNumber& b)
{
    return std::tie(a.number, a.file, a.diagram) < std::tie(b.number, b.file, b.diagram);
}

// What is equal stays in the order of the files.
void Index::sort()
{
    const auto byText = [](const ByQuid& a, const ByQuid& b) { return a.quid < b.quid; };
    const auto byHash = [](const ByName& a, const ByName& b) { return a.hash < b.hash; };
    std::stable_sort(quids.begin(), quids.end(), byText);
    std::stable_sort(shown.begin(), shown.end(), byText);
    std::stable_sort(names.begin(), names.end(), byHash);
    std::stable_sort(simpleNames.begin(), simpleNames.end(), byHash);
    std::stable_sort(numbers.begin(), numbers.end(), isBefore);
    for (const Diagram& diagram : allDiagrams)
        diagramPlaces.emplace_back(diagram.object, static_cast<std::uint32_t>(diagramPlaces.size() + 1));
    std::sort(diagramPlaces.begin(), diagramPlaces.end());
}

const Object* Index::byQuid(std::string_view quid) const
{
    const auto found = std::lower_bound(quids.begin(), quids.end(), quid,
                                        [](const ByQuid& a, std::string_view b) { return a.quid < b; });
    return found != quids.end() && found->quid == quid ? found->object : nullptr;
}

const Object* Index::byHash(std::uint64_t hash, std::string_view name, bool isFullName) const
{
    const std::vector<ByName>& entries = isFullName ? names : simpleNames;
    auto found = std::lower_bound(entries.begin(), entries.end(), hash,
                                  [](const ByName& a, std::uint64_t b) { return a.hash < b; });
    const Object* result = nullptr;
    for (; found != entries.end() && found->hash == hash; ++found) {
        if (isFullName ? inFrontOfPath(*found->object, name) != "" : found->object->name() != name)
            continue;
        if (isFullName)
            return found->object;
        if (result)
            return nullptr; // there is more than one
        result = found->object;
    }
    return result;
}

const Object* Index::byName(std::string_view fullName) const
{
    if (fullName.empty())
        return nullptr;
    if (const Object* const found = byHash(hashed(fullName), fullName, true))
        return found;
    std::size_t colons = fullName.find(separator);
    if (colons == std::string_view::npos)
        return byHash(hashed(fullName), fullName, false);
    if (document->root().is("Design"))
        return nullptr;
    for (; colons != std::string_view::npos; colons = fullName.find(separator)) {
        fullName.remove_prefix(colons + separator.size());
        if (const Object* const found = byHash(hashed(fullName), fullName, true))
            return found;
    }
    return nullptr;
}

const Object* Index::viewIn(const Object* diagram, const Object& from, std::uint32_t number) const
{
    const std::uint32_t place = diagram ? placeOfDiagram(*diagram) : 0;
    if (diagram && place == 0)
        return nullptr;
    const ByNumber wanted = {number, fileOf(diagram ? *diagram : from), place, nullptr};
    const auto found = std::lower_bound(numbers.begin(), numbers.end(), wanted, isBefore);
    return found != numbers.end() && !isBefore(wanted, *found) ? found->object : nullptr;
}

const Object* Index::view(const Object& diagram, std::uint32_t number) const
{
    const Object* const found = viewIn(&diagram, diagram, number);
    return found ? found : onlyInFile(diagram, number);
}

std::uint32_t Index::fileOf(const Object& object) const
{
    return static_cast<std::uint32_t>(&document->fileOf(object.position()) - document->files().data());
}

// From 1; 0 for what is no diagram.
std::uint32_t Index::placeOfDiagram(const Object& diagram) const
{
    const auto found = std::lower_bound(diagramPlaces.begin(), diagramPlaces.end(), std::pair(&diagram, 0U));
    return found != diagramPlaces.end() && found->first == &diagram ? found->second : 0;
}

const Object* Index::onlyInFile(const Object& from, std::uint32_t number) const
{
    const ByNumber wanted = {number, fileOf(from), 0, nullptr};
    const auto first = std::lower_bound(numbers.begin(), numbers.end(), wanted, isBefore);
    const auto isMeant = [&](auto at) {
        return at != numbers.end() && at->number == number && at->file == wanted.file;
    };
    return isMeant(first) && !isMeant(std::next(first)) ? first->object : nullptr;
}

const Object* Index::view(const Object& from, std::string_view key) const
{
    const auto number = from.get(key).asReference();
    if (!number)
        return nullptr;
    const Object* const diagram = diagramOf(from);
    return view(diagram ? *diagram : from, *number);
}

Reference Index::element(const Object& from) const
{
    return lookUp(quidIn(from), nameIn(from));
}

Reference Index::lookUp(std::string_view quid, std::string_view name) const
{
    if (saysNone(quid) || (quid.empty() && name.empty()))
        return {};
    if (const Object* const found = quid.empty() ? nullptr : byQuid(quid))
        return {ReferenceState::found, found};
    if (const Object* const found = byName(name))
        return {ReferenceState::found, found, true};
    return {isUnloaded(name) ? ReferenceState::unloaded : ReferenceState::missing};
}

// A name says whether it leads into a missing unit; only a quid may lead into any.
bool Index::isUnloaded(std::string_view fullName) const
{
    if (!isPartial)
        return false;
    if (fullName.find(separator) == std::string_view::npos)
        return true;
    if (!document->root().is("Design") && fullName.find(document->root().name() + "::") == std::string_view::npos)
        return true;
    // A unit does not know the packages around it.
    const std::vector<std::size_t> starts =
        document->root().is("Design") ? std::vector<std::size_t>{0} : startsOfParts(fullName);
    return std::any_of(starts.begin(), starts.end(),
                       [&](std::size_t start) { return beginsUnloaded(fullName.substr(start)); });
}

bool Index::beginsUnloaded(std::string_view name) const
{
    const auto isKnown = [&](std::string_view path) {
        return std::binary_search(unloadedPaths.begin(), unloadedPaths.end(), path, std::less<>());
    };
    const std::vector<std::size_t> starts = startsOfParts(name);
    return isKnown(name) || std::any_of(std::next(starts.begin()), starts.end(), [&](std::size_t start) {
               return isKnown(name.substr(0, start - separator.size()));
           });
}

std::vector<std::pair<const Object*, const Object*>> Index::duplicateQuids() const
{
    std::vector<std::pair<const Object*, const Object*>> result;
    const ByQuid* first = nullptr;
    for (const ByQuid& each : quids) {
        if (first && first->quid == each.quid && !each.quid.empty())
            result.emplace_back(each.object, first->object);
        else
            first = &each;
    }
    return result;
}

std::vector<std::pair<const Object*, const Object*>> Index::duplicateViews() const
{
    std::vector<std::pair<const Object*, const Object*>> result;
    const ByNumber* first = nullptr;
    for (const ByNumber& each : numbers) {
        if (first && !isBefore(*first, each))
            result.emplace_back(each.object, first->object);
        else
            first = &each;
    }
    return result;
}

std::vector<const Object*> Index::viewsOf(const Object& element) const
{
    std::vector<const Object*> result;
    const std::string_view quid = element.get("quid").raw();
    if (quid.empty())
        return result;
    auto at = std::lower_bound(shown.begin(), shown.end(), quid,
                               [](const ByQuid& a, std::string_view b) { return a.quid < b; });
    for (; at != shown.end() && at->quid == quid; ++at)
        result.push_back(at->object);
    return result;
}

const Object* Index::diagramOf(const Object& object) const
{
    const Object* at = &object;
    while (at && !diagramKindOf(*at))
        at = at->parent();
    return at;
}

bool Index::isCalled(const Object& element, std::string_view fullName) const
{
    const auto front = inFrontOfPath(element, fullName);
    return front && (front->empty() || (isPartial && front->ends_with(separator)));
}

std::string Index::path(const Object& element) const
{
    std::vector<std::string> parts;
    for (const Object* at = &element; at; at = scopeAround(*at))
        if (!at->is("Design"))
            parts.push_back(at->name());
    std::string result;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        result.append(part == parts.rbegin() ? "" : "::").append(*part);
    return result;
}

} // namespace reader
