#include "designs/formats/uml2/Reading.h"
#include "designs/model/Texts.h"

#include <utility>

namespace design::uml2 {

// <CityGML:CodeList base_Class="EAID_1" asDictionary="true"/>
void readStereotypes(pugi::xml_node parent, TextsById& stereotypes)
{
    for (const pugi::xml_node node : parent.children()) {
        const std::string_view name = node.name();
        if (name.find(':') == std::string_view::npos || name.starts_with("uml:") || name.starts_with("xmi:"))
            continue;
        const auto apply = [&](std::string_view id) { addWord(stereotypes[std::string(id)], xml::localName(name)); };
        for (const pugi::xml_attribute attribute : node.attributes())
            if (std::string_view(attribute.name()).starts_with("base_"))
                for (const std::string_view id : xml::words(attribute.value()))
                    apply(id);
        for (const pugi::xml_node child : node.children()) {
            const std::string_view id = xml::xmiAttribute(child, "idref");
            if (std::string_view(child.name()).starts_with("base_") && !id.empty())
                apply(id);
        }
    }
}

std::string toolOf(pugi::xml_node root)
{
    std::string tool;
    for (const pugi::xml_node child : root.children()) {
        if (xml::localName(child.name()) != "Documentation")
            continue;
        for (const char* const part : {"exporter", "exporterVersion"}) {
            std::string_view text = child.attribute(part).value();
            for (const pugi::xml_node inner : child.children())
                if (text.empty() && xml::localName(inner.name()) == part)
                    text = inner.text().get();
            if (!text.empty() && !tool.empty())
                tool += ' ';
            tool += text;
        }
    }
    // Eclipse's tools tell themselves by the names of their metamodel: "http://www.eclipse.org/uml2/5.0.0/UML".
    const std::string_view version = xml::between(root.attribute("xmlns:uml").value(), "www.eclipse.org/uml2/", '/');
    if (tool.empty() && !version.empty())
        tool = "Eclipse UML2 " + std::string(version);
    return tool;
}

} // namespace design::uml2
