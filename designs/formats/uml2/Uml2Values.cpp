#include "designs/formats/uml2/Uml2Values.h"

#include "designs/formats/shared/Files.h"
#include "designs/model/Texts.h"

#include <algorithm>

namespace design::uml2 {

namespace {

void collectNames(pugi::xml_node root, Names& names)
{
    for (pugi::xml_node node = root; node;) {
        const std::string_view id = xml::xmiAttribute(node, "id");
        const std::string_view name = node.attribute("name").value();
        if (!id.empty() && !name.empty())
            names.emplace(id, name);
        if (const pugi::xml_node child = node.first_child()) {
            node = child;
            continue;
        }
        while (node && node != root && !node.next_sibling())
            node = node.parent();
        node = node == root ? pugi::xml_node() : node.next_sibling();
    }
}

std::string_view afterLast(std::string_view text, char separator)
{
    return text.substr(text.rfind(separator) + 1); // npos + 1 is the start
}

/// Names that tools make up for elements which have none: "_" and 22 letters, or longer.
bool isMadeUp(std::string_view fragment)
{
    return fragment.starts_with('_') && fragment.size() > 20;
}

/// The name that a tool notes beside a link, as "Library::Types::String".
std::string_view notedName(pugi::xml_node node)
{
    for (const pugi::xml_node child : node.children()) {
        const std::string_view path = child.child("referenceExtension").attribute("referentPath").value();
        if (!path.empty())
            return afterLast(path, ':');
    }
    return {};
}

std::optional<std::string> boundText(pugi::xml_node node, const char* child, const char* attribute, const Index& index)
{
    if (const pugi::xml_node value = node.child(child))
        return valueText(value, index);
    if (const pugi::xml_attribute value = node.attribute(attribute))
        return std::string(value.value());
    return std::nullopt;
}

} // namespace

const Names& Outside::namesIn(const std::string& file)
{
    const auto [entry, isNew] = files_.try_emplace(file);
    const bool isBeside = !file.empty() && file.find_first_of("/\\:") == std::string::npos && path_.has_filename();
    if (!isNew || !isBeside || path_ == "-")
        return entry->second;
    const auto bytes = readBeside(path_, file);
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
    const bool isHere = file.empty() || file == path_.filename().string();
    if (isHere && !fragment.empty())
        return {std::string(fragment), std::string(nameHint)};
    const Names& names = namesIn(file);
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

std::string valueText(pugi::xml_node value, const Index& index)
{
    const std::string_view type = xml::typeName(value);
    if (type == "LiteralNull")
        return "null";
    if (type == "InstanceValue") {
        const auto found = index.find(value.attribute("instance").value());
        if (found != index.end())
            return std::string(xml::property(found->second, "name"));
        return std::string(xml::property(value, "name"));
    }
    for (const char* const key : {"value", "body", "symbol"}) {
        const std::string_view text = xml::property(value, key);
        if (!text.empty())
            return std::string(text);
    }
    // What a tool leaves out has the value that the type begins with.
    if (type == "LiteralInteger" || type == "LiteralUnlimitedNatural" || type == "LiteralReal")
        return "0";
    if (type == "LiteralBoolean")
        return "false";
    return std::string(trimmed(value.text().get()));
}

std::optional<Multiplicity> multiplicity(pugi::xml_node node, const Index& index)
{
    const auto lower = boundText(node, "lowerValue", "lower", index);
    const auto upper = boundText(node, "upperValue", "upper", index);
    if (!lower && !upper)
        return std::nullopt;
    if (lower == upper)
        return parseMultiplicity(*lower);
    return parseMultiplicity(lower.value_or("1") + ".." + upper.value_or("1")); // a bound that is left out is 1
}

std::string generatorDocumentation(pugi::xml_node node)
{
    for (const pugi::xml_node annotation : node.children("eAnnotations")) {
        if (!std::string_view(annotation.attribute("source").value()).ends_with("GenModel"))
            continue;
        for (const pugi::xml_node detail : annotation.children("details")) {
            if (std::string_view(detail.attribute("key").value()) == "documentation")
                return std::string(xml::property(detail, "value"));
        }
    }
    return {};
}

Visibility visibility(std::string_view word)
{
    if (word == "private" || word == "Private")
        return Visibility::Private;
    if (word == "protected" || word == "Protected")
        return Visibility::Protected;
    return word == "package" || word == "Package" || word == "implementation" ? Visibility::Package
                                                                              : Visibility::Public;
}

Aggregation aggregation(std::string_view word)
{
    if (word == "composite")
        return Aggregation::Composite;
    return word == "shared" || word == "aggregate" ? Aggregation::Shared : Aggregation::None;
}

} // namespace design::uml2
