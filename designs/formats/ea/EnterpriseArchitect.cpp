#include "designs/formats/Formats.h"

#include "designs/formats/ea/Diagrams.h"
#include "designs/formats/ea/Extension.h"
#include "designs/formats/ea/write/Write.h"
#include "designs/formats/uml2/Uml2.h"
#include "designs/formats/uml2/Umldi.h"
#include "designs/model/Walk.h"

#include <utility>

namespace design {

namespace ea {

namespace {

constexpr const char* proxyKind = "proxy connector";

// A line that other lines end at is a class in the tree; the Extension says that it is none, and which line it stands
// for. Comments on it are about that line; what else ends at it goes with it.
void removeProxies(Design& design, const Extension& extension, Report& report)
{
    const auto isProxy = [&](const Classifier& classifier) {
        const auto kind = extension.kinds.find(classifier.id);
        return kind == extension.kinds.end() ? classifier.name == "ProxyConnector" : kind->second == proxyKind;
    };
    forEachPackage(design.root, [&](Package& package) {
        std::erase_if(package.classifiers, [&](const Classifier& classifier) {
            if (!isProxy(classifier))
                return false;
            design.kinds[classifier.id] = proxyKind;
            report.left(proxyKind, classifier.id, classifier.name, "it stands for a line that other lines end at");
            return true;
        });
        for (Remark& remark : package.remarks)
            for (std::string& id : remark.elementIds)
                if (const auto line = extension.proxied.find(id); line != extension.proxied.end())
                    id = line->second;
    });
}

pugi::xml_node extensionIn(pugi::xml_node root)
{
    for (const pugi::xml_node child : root.children())
        if (xml::localName(child.name()) == "Extension" &&
            std::string_view(child.attribute("extender").value()).starts_with("Enterprise Architect"))
            return child;
    return {};
}

bool recognizes(const Source& source)
{
    const std::string head = xml::head(source.text);
    return uml2::hasModel(head) && head.find("Enterprise Architect") != std::string::npos;
}

Design read(const Source& source, Report& report)
{
    const xml::Document document(source.text);
    uml2::Outside outside(source.path);
    Design design = uml2::read(document, outside, report);
    const pugi::xml_node extensionNode = extensionIn(document.root());
    Extension extension = readExtension(extensionNode);
    umldi::readNames(document.root(), extension.names);
    removeProxies(design, extension, report);
    complete(design, extension);
    readDiagrams(document.root(), extensionNode, extension, design, report);
    design.kinds.merge(extension.kinds);
    design.outsideNames = std::move(extension.names);
    return design;
}

} // namespace

} // namespace ea

Format enterpriseArchitectFormat()
{
    return {"ea",
            "Enterprise Architect, XMI 2.1 and 2.5 (.xml, .xmi)",
            {".xml", ".xmi"},
            "a uml:Model with packaged elements, and an Extension of Enterprise Architect",
            ea::recognizes,
            ea::read,
            ea::write};
}

} // namespace design
