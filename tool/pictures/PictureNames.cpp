#include "tool/pictures/PictureNames.h"

#include "text/Utf8.h"
#include "text/Words.h"

#include "render/paper/Text.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

// Names that some systems keep for devices, whatever comes behind a dot.
constexpr std::string_view devices[] = {"aux", "con", "nul", "prn"};

constexpr std::size_t longestName = 100; // bytes, far below what file systems take

// A name that every file system takes: what may stand for something else there becomes an underscore.
std::string safeName(const std::string& text)
{
    constexpr std::string_view unsafe = "/\\:*?\"<>|$`'&;!";
    std::string name = text::onOneLine(render::cleanText(text)); // what steers a terminal is a question mark in it
    std::replace_if(
        name.begin(), name.end(), [&](char c) { return unsafe.find(c) != std::string_view::npos; }, '_');
    name.resize(text::beginningOf(name, longestName).size());
    while (!name.empty() && (name.back() == ' ' || name.back() == '.'))
        name.pop_back();
    const std::string stem = text::lowerCase(name.substr(0, name.find('.')));
    const bool isDevice = std::find(std::begin(devices), std::end(devices), stem) != std::end(devices);
    if (!name.empty() && (isDevice || name.front() == '.' || name.front() == '-' || name.front() == ' '))
        name.insert(name.begin(), '_');
    return name;
}

} // namespace

std::string PictureNames::nameFor(const NamedDiagram& diagram, const std::string& ending)
{
    std::string name = safeName(diagram.name);
    if (name.empty())
        name = diagram.kind + " diagram";
    std::string unique = name;
    if (isTaken(unique, ending))
        unique = name + " (" + diagram.kind + ")";
    if (isTaken(unique, ending) && !diagram.owner.empty())
        unique = name + " (" + safeName(diagram.owner) + ")";
    const std::string numbered = unique;
    std::size_t& number = numbers[text::lowerCase(numbered)];
    while (isTaken(unique, ending))
        unique = numbered + " " + std::to_string(++number + 1);
    taken.insert(text::lowerCase(unique + ending));
    return unique + ending;
}

bool PictureNames::isTaken(const std::string& name, const std::string& ending) const
{
    return taken.contains(text::lowerCase(name + ending));
}
