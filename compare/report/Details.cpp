#include "compare/report/Details.h"

#include "compare/facts/Labels.h"
#include "text/Utf8.h"

#include <algorithm>
#include <utility>

namespace compare {

namespace {

constexpr std::size_t longestValue = 60;

// Long texts are shown where they begin to differ.
std::pair<std::string, std::string> excerpts(const std::string& before, const std::string& after)
{
    const std::string one = text::onOneLine(before);
    const std::string other = text::onOneLine(after);
    constexpr std::size_t inFront = 20;
    std::size_t start = 0;
    if (std::max(one.size(), other.size()) > longestValue) {
        const auto differing = std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first;
        start = static_cast<std::size_t>(differing - one.begin());
        start = start > inFront ? start - inFront : 0;
        while (start > 0 && start < std::max(one.size(), other.size()) &&
               text::isContinuation((start < one.size() ? one : other)[start]))
            --start;
    }
    const auto cut = [&](const std::string& text) {
        const std::string_view rest = std::string_view(text).substr(std::min(start, text.size()));
        return (start > 0 && !rest.empty() ? "..." : "") + text::shortened(rest, longestValue);
    };
    return {cut(one), cut(other)};
}

std::string shown(const std::string& value)
{
    if (value.empty())
        return "none";
    const bool isPlain = value.find(' ') == std::string::npos;
    return isPlain || value.starts_with('(') ? value : '"' + value + '"';
}

// Places and sizes of views say nothing to a reader.
bool isWordAlone(const std::string& what)
{
    return what == "shown" || what == "hidden" || what == "moved" || what == "resized" || what == "rerouted";
}

} // namespace

std::string detailOf(const Change& change)
{
    if (isView(change) && isWordAlone(change.what))
        return change.what;
    if (change.what == "name")
        return "renamed from " + (change.before.empty() ? "no name" : text::onOneLine(change.before));
    if (change.what == "owner")
        return "moved from " + (change.before.empty() ? "the model" : text::onOneLine(change.before));
    if (change.what == "order")
        return "now " + text::onOneLine(change.after);
    std::string word(wordFor(change.what));
    if (change.before.empty() && change.after == "TRUE")
        return word;
    if (change.before == "TRUE" && change.after.empty())
        return "not " + word;
    const auto [before, after] = excerpts(change.before, change.after);
    if (change.before.empty())
        return word + ' ' + shown(after) + " added";
    if (change.after.empty())
        return word + ' ' + shown(before) + " removed";
    return word + ' ' + shown(before) + " -> " + shown(after);
}

} // namespace compare
