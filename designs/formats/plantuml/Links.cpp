#include "designs/formats/plantuml/Links.h"

#include <array>
#include <utility>

namespace design::plantuml {

namespace {

constexpr std::array<std::string_view, 5> leftHeads = {"", "<", "<|", "o", "*"};
constexpr std::array<std::string_view, 5> rightHeads = {"", ">", "|>", "o", "*"};

std::string textOf(const LinkEnd& end)
{
    std::string text;
    for (const std::string& each : end.texts)
        text.append(text.empty() ? "" : "\n").append(each);
    return text.empty() ? text : inQuotes(text) + ' ';
}

} // namespace

// What is named first stands above or to the left: two dashes lead down, one to the right.
void addLink(std::string& out, Link link)
{
    if (link.side == Side::Above || link.side == Side::Left)
        std::swap(link.first, link.second);
    const bool isBeside = link.side == Side::Left || link.side == Side::Right;
    const char* const dash = link.isDashed ? "." : "-";
    out.append(link.first.alias).append(" ").append(textOf(link.first));
    out.append(leftHeads[static_cast<std::size_t>(link.first.head)]).append(dash);
    if (!link.colour.empty())
        out.append("[").append(link.colour).append("]");
    out.append(isBeside ? "" : dash).append(rightHeads[static_cast<std::size_t>(link.second.head)]);
    out.append(" ").append(textOf(link.second)).append(link.second.alias);
    if (!link.label.empty())
        out.append(" : ").append(link.label);
    out += '\n';
}

} // namespace design::plantuml
