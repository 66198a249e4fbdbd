#include "designs/formats/uml2/Values.h"

#include "designs/model/Texts.h"
#include "text/Words.h"

namespace design::uml2 {

namespace {

std::optional<std::string> boundText(pugi::xml_node node, const char* child, const char* attribute, const Index& index)
{
    if (const pugi::xml_node value = node.child(child))
        return valueText(value, index);
    if (const pugi::xml_attribute value = node.attribute(attribute))
        return std::string(value.value());
    return std::nullopt;
}

} // namespace

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
    return std::string(text::trimmed(value.text().get()));
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

std::string_view generatorDocumentation(pugi::xml_node node)
{
    for (const pugi::xml_node annotation : node.children("eAnnotations")) {
        if (!std::string_view(annotation.attribute("source").value()).ends_with("GenModel"))
            continue;
        for (const pugi::xml_node detail : annotation.children("details"))
            if (std::string_view(detail.attribute("key").value()) == "documentation")
                return xml::property(detail, "value");
    }
    return {};
}

} // namespace design::uml2
