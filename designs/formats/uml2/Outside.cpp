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

// No file can have a name that is too long.
bool isAbsence(const std::error_code& error)
{
    return error == std::errc::no_such_file_or_directory || error == std::errc::filename_too_long;
}

} // namespace

// A file that is there and cannot be read would take names or whole diagrams with it, so it is no file less.
std::optional<std::string> readBeside(const std::filesystem::path& path, const std::string& name)
{
    if (path == "-")
        return std::nullopt;
    try {
        return text::readNamedFile(path.parent_path() / name);
    } catch (const text::FileUnreadable& error) {
        if (isAbsence(error.code()))
            return std::nullopt;
        throw UnreadableDesign(name + ": " + error.code().message());
    }
}

bool isBeside(const std::filesystem::path& path, const std::string& name)
{
    std::error_code error;
    const auto type = std::filesystem::status(path.parent_path() / name, error).type();
    return path.has_filename() && path != "-" && type != std::filesystem::file_type::not_found && !isAbsence(error);
}

const TextsById& Outside::namesIn(const std::string& file)
{
    const auto [entry, isNew] = files.try_emplace(file);
    const bool isNameOnly = !file.empty() && file.find_first_of("/\\:") == std::string::npos && path.has_filename();
    const auto bytes = isNew && isNameOnly ? readBeside(path, file) : std::nullopt;
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
