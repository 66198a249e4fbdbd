#include "designs/formats/ea/Extension.h"

#include "designs/formats/shared/Drawing.h"
#include "designs/formats/shared/Kinds.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

#include <array>
#include <utility>

namespace design::ea {

namespace {

// Values that name the tool that they are of: <tags><tag name="cg::Inline" value="True"/>
std::vector<Property> propertiesIn(pugi::xml_node node)
{
    constexpr std::string_view separator = "::";
    std::vector<Property> properties;
    for (const pugi::xml_node tag : node.child("tags").children("tag")) {
        const std::string_view name = tag.attribute("name").value();
        const std::size_t at = name.find(separator);
        if (at != std::string_view::npos && at > 0)
            properties.push_back({std::string(name.substr(0, at)), std::string(name.substr(at + separator.size())),
                                  tag.attribute("value").value()});
    }
    return properties;
}

class ExtensionReader {
public:
    Extension read(pugi::xml_node node)
    {
        for (const pugi::xml_node element : node.child("elements").children("element"))
            readElement(element);
        for (const pugi::xml_node stub : node.children("EAStub"))
            extension.names.emplace(xml::xmiAttribute(stub, "id"), stub.attribute("name").value());
        for (const pugi::xml_node connector : node.child("connectors").children("connector"))
            readConnector(connector);
        xml::forEachBelow(node.child("primitivetypes"), [this](pugi::xml_node type) {
            if (xml::typeName(type) == "PrimitiveType")
                extension.typeNames.emplace(xml::xmiAttribute(type, "id"), type.attribute("name").value());
            return true;
        });
        return std::move(extension);
    }

private:
    // With its features and the parameters of those.
    void readElement(pugi::xml_node element)
    {
        const std::string id(xml::xmiAttribute(element, "idref"));
        extension.kinds.emplace(id, plainWords(xml::typeName(element)));
        extension.names.emplace(id, element.attribute("name").value());
        if (xml::typeName(element) == "ProxyConnector")
            extension.proxied.emplace(id, element.attribute("classifier").value());
        if (const std::string_view inDiagrams = valueOf(element, "model", "package2"); !inDiagrams.empty())
            extension.packages.emplace(inDiagrams, id);
        readDetails(element);
        for (const pugi::xml_node attribute : element.child("attributes").children("attribute"))
            readDetails(attribute);
        for (const pugi::xml_node operation : element.child("operations").children("operation")) {
            readDetails(operation);
            for (const pugi::xml_node parameter : operation.child("parameters").children("parameter"))
                readDetails(parameter);
        }
    }

    // Associations that have a class are connectors under another identifier.
    void readConnector(pugi::xml_node connector)
    {
        const std::string id(xml::xmiAttribute(connector, "idref"));
        extension.connectors.emplace(id, connector);
        if (const auto type = valueOf(connector, "properties", "ea_type"); !type.empty())
            extension.kinds.emplace(id, plainWords(type));
        if (const auto classId = valueOf(connector, "extendedProperties", "associationclass"); !classId.empty())
            extension.associationClasses.emplace(id, classId);
        readDetails(connector);
        for (const char* const end : {"source", "target"}) {
            const pugi::xml_node node = connector.child(end);
            if (const std::string_view name = valueOf(node, "model", "name"); !name.empty())
                extension.names.emplace(xml::xmiAttribute(node, "idref"), name);
        }
    }

    // <attribute xmi:idref="EAID_1"><documentation value="..."/><stereotype stereotype="..."/><properties type="int"/>
    void readDetails(pugi::xml_node node)
    {
        Details& details = extension.details[std::string(xml::xmiAttribute(node, "idref"))];
        details.documentation = valueOf(node, "properties", "documentation");
        if (details.documentation.empty())
            details.documentation = valueOf(node, "documentation", "value");
        details.stereotype = valueOf(node, "properties", "stereotype");
        if (details.stereotype.empty())
            details.stereotype = valueOf(node, "stereotype", "stereotype");
        details.typeName = valueOf(node, "properties", "type");
        details.containment = valueOf(node, "containment", "containment");
        details.concurrency = valueOf(node, "type", "concurrency");
        details.isVirtual = valueOf(node, "extendedProperties", "virtualInheritance") == "1";
        const std::string_view style = valueOf(node, "style", "appearance");
        details.appearance.fillColor = colour(style, "BackColor=");
        details.appearance.lineColor = colour(style, "BorderColor=");
        details.appearance.fontColor = colour(style, "FontColor=");
        details.properties = propertiesIn(node);
    }

    Extension extension;
};

Containment containmentNamed(std::string_view word)
{
    if (word == "Value" || word == "By Value")
        return Containment::ByValue;
    return word == "Reference" || word == "By Reference" ? Containment::ByReference : Containment::Unspecified;
}

Concurrency concurrencyNamed(std::string_view word)
{
    if (word == "Guarded")
        return Concurrency::Guarded;
    if (word == "Active")
        return Concurrency::Active;
    return word == "Synchronous" ? Concurrency::Synchronous : Concurrency::Sequential;
}

// <source xmi:idref="EAID_1"><role name="r"/><type multiplicity="*" aggregation="shared"/><documentation value=""/>
void completeEnd(AssociationEnd& end, pugi::xml_node node)
{
    if (end.documentation.empty())
        end.documentation = valueOf(node, "documentation", "value");
    addWord(end.stereotype, valueOf(node, "role", "stereotype"));
    end.containment = containmentNamed(valueOf(node, "type", "containment"));
    end.properties = propertiesIn(node);
    if (end.participant.isEmpty()) { // the property lies outside of the exported packages
        end.participant.id = xml::xmiAttribute(node, "idref");
        end.name = valueOf(node, "role", "name");
        end.multiplicity = parseMultiplicity(valueOf(node, "type", "multiplicity"));
        end.visibility = visibilityNamed(valueOf(node, "role", "visibility"));
        end.isNavigable = xml::flag(node.child("modifiers"), "isNavigable");
    }
    if (end.aggregation == Aggregation::None)
        end.aggregation = aggregationNamed(valueOf(node, "type", "aggregation"));
}

// Whether the end is the connector's source, told by its identifier or by the class that it is at.
bool isSource(const AssociationEnd& end, pugi::xml_node connector)
{
    if (end.id.starts_with("EAID_src") || end.id.starts_with("EAID_dst"))
        return end.id.starts_with("EAID_src");
    return end.participant.id == xml::xmiAttribute(connector.child("source"), "idref");
}

// Puts the connector's source first, as lines are drawn from there.
void completeAssociation(Association& association, pugi::xml_node connector)
{
    std::vector<AssociationEnd>& ends = association.ends;
    if (ends.size() > 2)
        return;
    ends.resize(2); // an end whose property is not in the file
    if (!isSource(ends[0], connector) && isSource(ends[1], connector))
        std::swap(ends[0], ends[1]);
    completeEnd(ends[0], connector.child("source"));
    completeEnd(ends[1], connector.child("target"));
}

void completeAssociations(Package& root, const Extension& extension)
{
    TextsById connectorOf; // by identifier of the association class
    for (const auto& [connector, classId] : extension.associationClasses)
        connectorOf.emplace(classId, connector);
    forEachPackage(root, [&](Package& package) {
        for (Association& association : package.associations) {
            if (const auto other = connectorOf.find(association.associationClassId); other != connectorOf.end())
                association.id = other->second;
            const auto found = extension.connectors.find(association.id);
            if (found == extension.connectors.end())
                continue;
            if (const auto name = found->second.attribute("name"); name && !association.associationClassId.empty())
                association.name = name.value(); // the tree has that of the class alone
            completeAssociation(association, found->second);
        }
    });
}

const Details* detailsOf(const Extension& extension, const Element& element)
{
    const auto found = element.id.empty() ? extension.details.end() : extension.details.find(element.id);
    return found == extension.details.end() ? nullptr : &found->second;
}

void nameType(const Extension& extension, const Element& element, Reference& type)
{
    const Details* const details = detailsOf(extension, element);
    if (details && type.name.empty())
        type.name = details->typeName;
}

void completeFeatures(Classifier& classifier, const Extension& extension)
{
    for (Attribute& attribute : classifier.attributes) {
        nameType(extension, attribute, attribute.type);
        if (const Details* const details = detailsOf(extension, attribute))
            attribute.containment = containmentNamed(details->containment);
    }
    for (Operation& operation : classifier.operations) {
        if (const Details* const details = detailsOf(extension, operation))
            operation.concurrency = concurrencyNamed(details->concurrency);
        for (Parameter& parameter : operation.parameters)
            nameType(extension, parameter, parameter.type);
    }
}

void completeElements(Package& root, const Extension& extension)
{
    forEachElement(root, [&](Element& element) {
        const Details* const details = detailsOf(extension, element);
        if (!details)
            return;
        if (element.documentation.empty())
            element.documentation = details->documentation;
        addWord(element.stereotype, details->stereotype);
        element.properties = details->properties;
    });
    forEachPackage(root, [&](Package& package) {
        for (Classifier& classifier : package.classifiers)
            completeFeatures(classifier, extension);
        for (Relationship& relationship : package.relationships)
            if (const Details* const details = detailsOf(extension, relationship))
                relationship.isVirtual = details->isVirtual;
    });
}

// "EAJava_int", "EAnone_Date": types that have no element, named after a language.
void nameTypesByIdentifier(Package& root, const Extension& extension)
{
    forEachReference(root, [&](Reference& reference, bool isType) {
        if (const auto found = extension.typeNames.find(reference.id);
            isType && reference.name.empty() && found != extension.typeNames.end())
            reference.name = found->second;
        const std::size_t underscore = reference.id.find('_');
        if (isType && reference.name.empty() && underscore != std::string::npos && reference.id.starts_with("EA") &&
            !reference.id.starts_with("EAID_") && !reference.id.starts_with("EAPK_") &&
            !extension.names.contains(reference.id))
            reference.name = reference.id.substr(underscore + 1);
    });
}

} // namespace

Extension readExtension(pugi::xml_node node)
{
    return ExtensionReader().read(node);
}

void complete(Design& design, const Extension& extension)
{
    completeAssociations(design.root, extension);
    completeElements(design.root, extension);
    nameTypesByIdentifier(design.root, extension);
}

std::optional<std::uint32_t> colour(std::string_view style, std::string_view key)
{
    const double value = xml::number(xml::between(style, key, ';'), -1);
    return colourOfBgr(static_cast<std::int64_t>(value));
}

std::string_view valueOf(pugi::xml_node node, const char* child, const char* attribute)
{
    return node.child(child).attribute(attribute).value();
}

} // namespace design::ea
