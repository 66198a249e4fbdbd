#include "designs/formats/uml2/Uml2.h"

#include "designs/formats/uml2/Reading.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

#include <array>
#include <cctype>
#include <utility>

namespace design::uml2 {

namespace {

// Where a UML tree begins in a file.
bool isModelRoot(pugi::xml_node node)
{
    constexpr std::array<std::string_view, 3> roots = {"Model", "Package", "Profile"};
    const std::string_view name = node.name();
    return name.find(':') != std::string_view::npos && isOneOf(roots, xml::localName(name)) &&
           !name.starts_with("xmi:");
}

std::vector<pugi::xml_node> modelRoots(pugi::xml_node root)
{
    std::vector<pugi::xml_node> roots;
    if (isModelRoot(root))
        return {root};
    for (const pugi::xml_node child : root.children())
        if (isModelRoot(child))
            roots.push_back(child);
    return roots;
}

void readPackage(Reading& reading, pugi::xml_node node, Package& package)
{
    reading.describe(node, package, package);
    for (const pugi::xml_node child : node.children()) {
        if (isMemberRole(child.name()))
            readMember(reading, child, package);
        else
            readOther(reading, child, package);
    }
}

void readChild(Reading& reading, pugi::xml_node node, Package& parent)
{
    Package package;
    readPackage(reading, node, package);
    parent.packages.push_back(std::move(package));
}

// The first model is the design, others are packages of it.
void readRoots(Reading& reading, const std::vector<pugi::xml_node>& roots, Package& top)
{
    bool hasTop = false;
    for (const pugi::xml_node node : roots) {
        const std::string_view kind = xml::localName(node.name());
        if (kind == "Profile")
            reading.leave(node, kind);
        else if (std::exchange(hasTop, true))
            readChild(reading, node, top);
        else
            readPackage(reading, node, top);
    }
}

// A component or the like has no place, the classes in it have.
void leaveWithMembers(Reading& reading, pugi::xml_node node, std::string_view type, Package& package)
{
    reading.leave(node, type.empty() ? std::string_view(node.name()) : type);
    for (const pugi::xml_node child : node.children())
        if (isMemberRole(child.name()) && type != "Profile")
            readMember(reading, child, package);
}

} // namespace

bool isMemberRole(std::string_view role)
{
    constexpr std::array<std::string_view, 7> roles = {"packagedElement", "ownedMember",  "nestedClassifier",
                                                       "nestedPackage",   "ownedElement", "ownedType",
                                                       "packagedMember"};
    return isOneOf(roles, role);
}

void readMember(Reading& reading, pugi::xml_node node, Package& package)
{
    constexpr std::array<std::string_view, 3> packageTypes = {"Package", "Model", "Subsystem"};
    const std::string_view type = xml::typeName(node);
    if (isOneOf(packageTypes, type) || (type.empty() && std::string_view(node.name()) == "nestedPackage"))
        readChild(reading, node, package);
    else if (const NamedClassifier* const classifier = classifierOf(type))
        readClassifier(reading, node, *classifier, package);
    else if (type == "Association")
        readAssociation(reading, node, package);
    else if (const NamedRelationship* const relationship = relationshipOf(type))
        readRelationship(reading, node, *relationship, {}, package);
    else
        leaveWithMembers(reading, node, type, package);
}

void readOther(Reading& reading, pugi::xml_node part, Package& package)
{
    constexpr std::array<std::string_view, 4> readElsewhere = {"ownedComment", "ownedRule", "eAnnotations",
                                                               "Extension"};
    constexpr std::array<std::string_view, 5> withoutType = {"profileApplication", "packageImport", "elementImport",
                                                             "packageMerge", "templateBinding"};
    const std::string_view role = xml::localName(part.name());
    if (isOneOf(readElsewhere, role))
        return;
    const std::string_view type = xml::typeName(part);
    if (isOneOf(withoutType, role)) {
        std::string name(role);
        name.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
        reading.leave(part, name);
    } else if (const NamedRelationship* const relationship = relationshipOf(type)) {
        readRelationship(reading, part, *relationship, xml::xmiAttribute(part.parent(), "id"), package);
    } else if (!type.empty() && !xml::xmiAttribute(part, "id").empty() && !part.attribute("base_Element") &&
               std::string_view(part.name()).find(':') == std::string_view::npos) {
        leaveWithMembers(reading, part, type, package);
    }
}

bool hasModel(std::string_view head)
{
    for (std::size_t at = 0; (at = head.find('<', at)) != std::string_view::npos; ++at) {
        const std::string_view name = head.substr(at + 1, head.find_first_of(" \t\r\n>", at) - at - 1);
        if (name.starts_with("uml:") || name.starts_with("UML2:"))
            return true;
    }
    return false;
}

Design read(const xml::Document& document, Outside& outside, Report& report)
{
    const pugi::xml_node root = document.root();
    const std::vector<pugi::xml_node> roots = modelRoots(root);
    Reading reading(root, outside, report);
    Design design;
    design.tool = toolOf(root);
    readRoots(reading, roots, design.root);
    design.kinds = std::move(reading.kinds);

    TextsById stereotypes;
    readStereotypes(root, stereotypes);
    for (const pugi::xml_node node : roots)
        if (node != root)
            readStereotypes(node, stereotypes);
    forEachElement(design.root, [&stereotypes](Element& element) {
        if (const auto found = stereotypes.find(element.id); found != stereotypes.end())
            addWord(element.stereotype, found->second);
    });
    return design;
}

std::string associationOf(std::string_view associationClassId)
{
    return std::string(associationClassId) + "/association";
}

} // namespace design::uml2
