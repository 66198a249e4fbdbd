#include "modelfile/read/Faults.h"

#include "modelfile/read/JsonReader.h"
#include "text/JsonPointer.h"
#include "text/JsonWriter.h"
#include "text/Places.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <utility>

namespace modelfile {

namespace {

constexpr std::size_t mostFaults = 20;

// What the entries of a list are called. Elements of a package say themselves what they are.
std::string_view nameOfEntry(std::string_view quotedKey)
{
    constexpr std::array<std::pair<std::string_view, std::string_view>, 11> names = {{
        {"\"types\"", "type"},
        {"\"typeValues\"", "literal"},
        {"\"childPackages\"", "package"},
        {"\"diagrams\"", "diagram"},
        {"\"attributes\"", "attribute"},
        {"\"qualifiers\"", "qualifier"},
        {"\"operations\"", "operation"},
        {"\"arguments\"", "argument"},
        {"\"parameters\"", "parameter"},
        {"\"keys\"", "key"},
        {"\"roles\"", "role"},
    }};
    const auto* const found =
        std::find_if(names.begin(), names.end(), [&](const auto& row) { return row.first == quotedKey; });
    return found == names.end() ? "" : found->second;
}

// The text of a member of an object; empty when it has none.
std::string textOfMember(std::string_view json, std::size_t object, std::string_view key)
{
    const auto member = text::findJsonMember(json, object, key);
    if (!member || json[member->value] != '"')
        return "";
    return text::unescaped(json.substr(member->value, text::endOfJsonValue(json, member->value) - member->value));
}

// `the class "Order"`: the innermost object around the place that has a name, or else an id.
std::string holderOf(std::string_view json, const std::vector<text::JsonWalk::Level>& levels)
{
    for (std::size_t i = levels.size(); i-- > 2;) {
        if (!levels[i].isObject)
            continue;
        std::string kind(nameOfEntry(levels[i - 2].key));
        if (levels[i - 2].key == "\"modelElements\"")
            kind = textOfMember(json, levels[i].opened, "kind");
        std::string name = textOfMember(json, levels[i].opened, "name");
        if (name.empty())
            name = textOfMember(json, levels[i].opened, "id");
        if (!kind.empty() && !name.empty())
            return "the " + std::string(shownPart(text::onOneLine(kind))) + " " +
                   text::jsonQuoted(shownPart(text::mended(name)));
    }
    return "";
}

std::string wordsOf(const ContentError& error, std::string_view json, const text::JsonWalk& walk,
                    const NearestId& nearestId)
{
    std::string words = "expected " + error.expected + ", found " + error.found;
    std::string nearest = error.nearest;
    if (error.id.data()) {
        if (const std::string holder = holderOf(json, walk.levels()); !holder.empty())
            words.append(" (in ").append(holder).append(")");
        nearest = nearestId(error.id, error.kind);
    }
    return nearest.empty() ? words : words.append("; did you mean ").append(nearest).append("?");
}

} // namespace

void Faults::add(ContentError error)
{
    lookForBrokenJson();
    if (broken && broken->offset <= offsetOf(error.at))
        throw SyntaxError{text.data() + broken->offset, ""};
    ++count;
    first.push_back(std::move(error));
    if (first.size() >= 2 * mostFaults)
        keepFirst();
}

void Faults::add(const SyntaxError& error)
{
    lookForBrokenJson();
    if (!broken)
        broken = text::JsonFault{error.at ? std::min(offsetOf(error.at), text.size()) : text.size(), "well-formed JSON",
                                 error.reason, std::nullopt};
}

// The parser says that there is a fault, or does not come across it; what it is, and where, is looked for here.
void Faults::lookForBrokenJson()
{
    if (!std::exchange(isJsonChecked, true))
        broken = text::findJsonFault(text, deepestJsonLevel);
}

void Faults::keepFirst()
{
    std::stable_sort(first.begin(), first.end(), [](const auto& a, const auto& b) { return a.at < b.at; });
    if (first.size() > mostFaults)
        first.erase(first.begin() + mostFaults, first.end());
}

void Faults::skipped(const char* valueOrKey)
{
    std::size_t at = offsetOf(valueOrKey);
    if (at < text.size() && text[at] == '"') {
        const std::size_t colon = text.find_first_not_of(" \t\r\n", text::endOfJsonString(text, at) + 1);
        if (colon != std::string_view::npos && text[colon] == ':')
            at = text.find_first_not_of(" \t\r\n", colon + 1);
    }
    if (at < text.size() && (text[at] == '{' || text[at] == '['))
        skippedValues.push_back(at);
}

bool Faults::isInSkipped(std::string_view id)
{
    if (!skippedTexts) {
        skippedTexts.emplace();
        std::size_t end = 0; // one can lie in another
        for (const std::size_t start : skippedValues) {
            const std::size_t last = text::endOfJsonValue(text, start);
            for (std::size_t at = std::max(start, end); at < last; ++at) {
                if (text[at] != '"')
                    continue;
                const std::size_t quote = text::endOfJsonString(text, at);
                skippedTexts->insert(text.substr(at + 1, quote - at - 1));
                at = quote;
            }
            end = std::max(end, last);
        }
    }
    return skippedTexts->contains(id);
}

ModelFileError Faults::error(const std::string& name, const NearestId& nearestId)
{
    lookForBrokenJson();
    keepFirst();
    std::vector<ModelFileFault> told;
    text::JsonWalk walk(text);
    const text::PlaceIndex places(text);
    for (const ContentError& error : first) {
        const std::size_t offset = offsetOf(error.at);
        walk.goTo(offset);
        const auto [line, column] = places.at(offset);
        told.push_back({line, column, walk.pointer() + (error.missing.empty() ? "" : "/" + error.missing),
                        wordsOf(error, text, walk, nearestId)});
    }
    if (broken) {
        const auto [line, column] = places.at(broken->offset);
        told.resize(std::min(told.size(), mostFaults - 1));
        told.push_back({line, column, "", broken->message(text)});
    }
    return {name, std::move(told), count + (broken ? 1U : 0U)};
}

} // namespace modelfile
