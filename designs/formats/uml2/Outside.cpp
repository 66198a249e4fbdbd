#include "designs/formats/uml2/Outside.h"

#include "text/Files.h"

#include <algorithm>
#include <system_error>

namespace design::uml2 {

namespace {

void collectNames(pugi::xml_node root, TextsById& names)
{
    xml::forEachBelow(root, [&](pugi::xml_node node) {
        const std::string_view id = xml::xmiAttribute(node, "id");
        const std::string_view name = node.attribute("name").value();
        if (!id.empty() && !name.empty())
            names.emplace(id, name);
        return true;
    });
}

std::string_view afterLast(std::string_view text, char separator)
{
    return text.substr(text.rfind(separator) + 1); // npos + 1 is the start
}

// Names that tools make up for elements which have none: "_" and 22 letters, or longer.
bool isMadeUp(std::string_view fragment)
{
    return fragment.starts_with('_') && fragment.size() > 20;
}

// The name that a tool notes beside a link, as "Library::Types::String".
std::string_view notedName(pugi::xml_node node)
{
    for (const pugi::xml_node child : node.children()) {
        const std::string_view path = child.child("referenceExtension").attribute("referentPath").value();
        if (!path.empty())
            return afterLast(path, ':');
    }
    return {};
}

} // namespace

std::optional<std::string> readBeside(const std::filesystem::path& path, const std::string& name)
{
    const std::filesystem::path file = path.parent_path() / name;
    std::error_code error;
    if (path == "-" || !std::filesystem::is_regular_file(file, error))
        return std::nullopt;
    try {
        return text::readFile(file);
    } catch (const std::system_error&) { // as if it were not there
        return std::nullopt;
    }
}

const TextsById& Outside::namesIn(const std::string& file)
{
    const auto [entry, isNew] = files.try_emplace(file);
    const bool isBeside = !file.empty() && file.find_first_of("/\\:") == std::string::npos && path.has_filename();
    const auto bytes = isNew && isBeside ? readBeside(path, file) : std::nullopt;
    if (!bytes)
        return entry->second;
    try {
        const xml::Document document(*bytes);
        collectNames(document.root(), entry->second);
    } catch (const UnreadableDesign&) { // the names stay unknown, as if the file were not there
        entry->second.clear();
    }
    return entry->second;
}

Reference Outside::reference(std::string_view link, std::string_view nameHint)
{
    const std::size_t hash = link.find('#');
    const std::string file(link.substr(0, std::min(hash, link.size())));
    const std::string_view fragment = hash == std::string_view::npos ? std::string_view() : link.substr(hash + 1);
    const bool isHere = file.empty() || file == path.filename().string();
    if (isHere && !fragment.empty())
        return {std::string(fragment), std::string(nameHint)};
    const TextsById& names = namesIn(file);
    if (const auto found = names.find(std::string(fragment)); found != names.end())
        return {std::string(link), found->second};
    if (!nameHint.empty())
        return {std::string(link), std::string(nameHint)};
    // Links into libraries end with a name ("#String", "#//EString"), links to other models with an identifier.
    const std::string_view last = afterLast(fragment.empty() ? link : fragment, '/');
    return {isMadeUp(last) ? std::string(link) : std::string(), std::string(last)};
}

std::vector<Reference> references(pugi::xml_node node, const char* role, Outside& outside)
{
    std::vector<Reference> found;
    for (const std::string_view id : xml::words(node.attribute(role).value()))
        found.push_back({std::string(id), {}});
    for (const pugi::xml_node child : node.children(role)) {
        const std::string_view id = xml::xmiAttribute(child, "idref");
        if (!id.empty())
            found.push_back({std::string(id), {}});
        else if (const pugi::xml_attribute link = child.attribute("href"))
            found.push_back(outside.reference(link.value(), notedName(child)));
    }
    return found;
}

Reference reference(pugi::xml_node node, const char* role, Outside& outside)
{
    const std::vector<Reference> all = references(node, role, outside);
    return all.empty() ? Reference() : all.front();
}

} // namespace design::uml2
