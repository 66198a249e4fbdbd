#include "designs/formats/umbrello/Xmi1.h"

#include "designs/formats/shared/Xml.h"
#include "designs/model/Texts.h"

namespace design::uml1 {

std::vector<pugi::xml_node> parts(pugi::xml_node node, std::string_view role)
{
    std::vector<pugi::xml_node> found;
    for (const pugi::xml_node child : node.children()) {
        const std::string_view name = child.name();
        const std::size_t dot = name.rfind('.');
        if (dot == std::string_view::npos || name.substr(dot + 1) != role)
            continue;
        for (const pugi::xml_node part : child.children())
            if (part.type() == pugi::node_element)
                found.push_back(part);
    }
    return found;
}

std::string_view value(pugi::xml_node node, const char* role)
{
    if (const pugi::xml_attribute attribute = node.attribute(role))
        return attribute.value();
    for (const pugi::xml_node part : parts(node, role)) {
        const std::string_view reference = xml::xmiAttribute(part, "idref");
        if (!reference.empty())
            return reference;
    }
    for (const pugi::xml_node child : node.children()) {
        const std::string_view name = child.name();
        if (name.size() > std::string_view(role).size() && name.ends_with(role) &&
            name[name.size() - std::string_view(role).size() - 1] == '.')
            return child.attribute("xmi.value") ? child.attribute("xmi.value").value() : child.text().get();
    }
    return {};
}

std::optional<Multiplicity> multiplicity(pugi::xml_node node)
{
    if (const pugi::xml_attribute attribute = node.attribute("multiplicity"))
        return parseMultiplicity(attribute.value());
    for (const pugi::xml_node outer : parts(node, "multiplicity"))
        for (const pugi::xml_node range : parts(outer, "range"))
            return parseMultiplicity(std::string(value(range, "lower")) + ".." + std::string(value(range, "upper")));
    return std::nullopt;
}

} // namespace design::uml1
