#include "designs/formats/ea/write/Extension.h"

#include "designs/model/Texts.h"

namespace design::ea {

namespace {

// What the two halves of a connector say; relationships have ends that say little.
struct ConnectorEnd {
    std::string id;
    std::string type;
    std::string name;
    const AssociationEnd* end = nullptr;
    bool isNavigable = false;
};

struct Connector {
    std::string id;
    std::string type;
    std::string direction;
    std::string name;
    std::string stereotype;
    std::string documentation;
    ConnectorEnd source;
    ConnectorEnd target;
    std::string associationClass;
    bool isVirtual = false;
    const Element* element = nullptr; // null for the line of a note
};

ConnectorEnd endAt(Output& output, const std::string& id)
{
    ConnectorEnd end;
    end.id = output.subject(id);
    if (const Classifier* const classifier = output.writing.catalogue.classifier(id)) {
        end.type = typeOf(output, *classifier);
        end.name = classifier->name;
    } else if (const Package* const package = output.writing.catalogue.package(id)) {
        end.type = "Package";
        end.name = package->name;
    }
    return end;
}

// <source xmi:idref="EAID_1"><role name="r" visibility="Public" targetScope="instance"/>
//     <type multiplicity="*" aggregation="shared" containment="Unspecified"/>
void writeEnd(Output& output, const char* element, const ConnectorEnd& end)
{
    constexpr std::array<std::string_view, 3> containments = {"Unspecified", "Value", "Reference"};
    const AssociationEnd plain;
    const AssociationEnd& said = end.end ? *end.end : plain;
    xml::Element node(output.xml, element);
    node.with("xmi:idref", end.id);
    xml::Element(output.xml, "model").with("type", end.type).withSome("name", end.name);
    xml::Element(output.xml, "role")
        .withSome("name", said.name)
        .withSome("stereotype", said.stereotype)
        .with("visibility", capitalized(wordOf(said.visibility)))
        .with("targetScope", said.isStatic ? "classifier" : "instance");
    xml::Element(output.xml, "type")
        .withSome("multiplicity", said.multiplicity ? textOf(*said.multiplicity) : std::string())
        .with("aggregation", wordOf(said.aggregation))
        .with("containment", containments[static_cast<std::size_t>(said.containment)]);
    xml::Element(output.xml, "constraints");
    xml::Element(output.xml, "modifiers")
        .flag("isOrdered", false)
        .with("changeable", "none")
        .flag("isNavigable", end.isNavigable);
    xml::Element(output.xml, "style")
        .with("value", std::string("Union=0;Derived=") + (said.isDerived ? "1" : "0") + ";AllowDuplicates=0;");
    xml::Element(output.xml, "documentation").withSome("value", said.documentation);
    xml::Element(output.xml, "xrefs");
    writeTags(output, said);
}

void write(Output& output, const Connector& connector)
{
    xml::Element node(output.xml, "connector");
    node.with("xmi:idref", connector.id);
    if (!connector.name.empty() || !connector.associationClass.empty()) // the class may have another name
        node.with("name", connector.name);
    writeEnd(output, "source", connector.source);
    writeEnd(output, "target", connector.target);
    xml::Element(output.xml, "model");
    xml::Element(output.xml, "properties")
        .with("ea_type", connector.type)
        .withSome("stereotype", connector.stereotype)
        .with("direction", connector.direction);
    xml::Element(output.xml, "parameterSubstitutions");
    xml::Element(output.xml, "documentation").withSome("value", connector.documentation);
    xml::Element(output.xml, "appearance")
        .with("linemode", "3")
        .with("linecolor", "-1")
        .with("linewidth", "0")
        .with("seqno", "0")
        .with("headStyle", "0")
        .with("lineStyle", "0");
    xml::Element(output.xml, "labels");
    xml::Element(output.xml, "extendedProperties")
        .with("virtualInheritance", connector.isVirtual ? "1" : "0")
        .withSome("associationclass", connector.associationClass);
    xml::Element(output.xml, "style");
    xml::Element(output.xml, "xrefs");
    writeTags(output, connector.element ? *connector.element : Element());
}

std::string directionOf(bool toSource, bool toTarget)
{
    if (toSource)
        return toTarget ? "Bi-Directional" : "Destination -> Source";
    return toTarget ? "Source -> Destination" : "Unspecified";
}

void writeAssociation(Output& output, const Association& association)
{
    if (association.ends.size() != 2)
        return; // it has no connector
    Connector connector;
    connector.id = output.ids.of(association);
    connector.type = "Association";
    connector.name = association.name;
    connector.stereotype = association.stereotype;
    connector.documentation = association.documentation;
    const AssociationEnd& source = association.ends[0];
    const AssociationEnd& target = association.ends[1];
    connector.direction = directionOf(source.isNavigable, target.isNavigable);
    connector.source = endAt(output, source.participant.id);
    connector.target = endAt(output, target.participant.id);
    connector.element = &association;
    connector.source.end = &source;
    connector.target.end = &target;
    connector.source.isNavigable = source.isNavigable;
    connector.target.isNavigable = target.isNavigable;
    if (output.isInClass(association))
        connector.associationClass = output.ids.of(association.associationClassId);
    write(output, connector);
}

void writeRelationship(Output& output, const Relationship& relationship)
{
    const std::string_view type = typeOf(output, relationship);
    const bool isOfUseCases = type == "Include" || type == "Extend";
    Connector connector;
    connector.id = output.ids.of(relationship);
    connector.type = isOfUseCases ? "UseCase" : type == "Realization" ? "Realisation" : std::string(type);
    connector.name = relationship.name;
    connector.stereotype =
        isOfUseCases ? relationship.stereotype : stereotypeBeside(relationship.stereotype, impliedBy(type));
    connector.documentation = relationship.documentation;
    connector.direction = directionOf(false, true);
    connector.source = endAt(output, relationship.client.id);
    connector.target = endAt(output, relationship.supplier.id);
    connector.target.isNavigable = true;
    connector.isVirtual = relationship.isVirtual;
    connector.element = &relationship;
    write(output, connector);
}

void writeNoteLink(Output& output, const Note& note)
{
    Connector connector;
    connector.id = note.link;
    connector.type = "NoteLink";
    connector.direction = directionOf(false, false);
    connector.source.id = note.id;
    connector.source.type = "Note";
    connector.target.id = note.drawnAt;
    write(output, connector);
}

void writeOf(Output& output, const Package& package)
{
    for (const Note& note : output.notes.at(&package))
        if (!note.drawnAt.empty())
            writeNoteLink(output, note);
    for (const Classifier& classifier : package.classifiers)
        if (const auto held = output.inClient.find(classifier.id); held != output.inClient.end())
            for (const Relationship* const relationship : held->second)
                writeRelationship(output, *relationship);
    for (const Association* const association : output.associations.at(&package))
        writeAssociation(output, *association);
    for (const Relationship& relationship : package.relationships)
        if (!output.isHeldByClient(relationship))
            writeRelationship(output, relationship);
    for (const Package& child : package.packages)
        writeOf(output, child);
}

} // namespace

void writeConnectors(Output& output)
{
    const xml::Element node(output.xml, "connectors");
    writeOf(output, output.writing.design.root);
}

} // namespace design::ea
