#include "designs/formats/ea/write/Tree.h"

namespace design::ea {

namespace {

void writeNotes(Output& output, const Package& package)
{
    for (const Note& note : output.notes.at(&package)) {
        xml::Element comment(output.xml, "ownedComment");
        comment.with("xmi:type", "uml:Comment").with("xmi:id", note.id).with("body", note.text);
        if (!note.annotated.empty())
            xml::Element(output.xml, "annotatedElement").with("xmi:idref", note.annotated);
    }
}

// <generalization xmi:type="uml:Generalization" xmi:id="EAID_1" general="EAID_2"/>
void writeHeld(Output& output, const Relationship& relationship)
{
    const std::string_view type = typeOf(output, relationship);
    const std::string& supplier = output.target(relationship.supplier.id);
    const bool isGeneralization = type == "Generalization";
    const char* const role = isGeneralization ? "generalization" : type == "Include" ? "include" : "extend";
    const char* const end = isGeneralization ? "general" : type == "Include" ? "addition" : "extendedCase";
    xml::Element node(output.xml, role);
    node.with("xmi:type", "uml:" + std::string(type)).with("xmi:id", output.ids.of(relationship));
    node.withSome("name", relationship.name).with(end, supplier);
    writeConstraints(output, relationship);
}

void writeRelationship(Output& output, const Relationship& relationship)
{
    xml::Element node(output.xml, "packagedElement");
    node.with("xmi:type", "uml:" + std::string(typeOf(output, relationship)));
    node.with("xmi:id", output.ids.of(relationship)).withSome("name", relationship.name);
    const bool isGeneralization = relationship.kind == RelationshipKind::Generalization;
    node.with(isGeneralization ? "general" : "supplier", output.target(relationship.supplier.id));
    node.with(isGeneralization ? "specific" : "client", output.target(relationship.client.id));
    writeConstraints(output, relationship);
}

// The target comes first, as the tool has it.
void writeEnds(Output& output, const Association& association)
{
    const std::size_t count = association.ends.size();
    const auto place = [count](std::size_t i) { return count == 2 ? 1 - i : i; };
    for (std::size_t i = 0; i < count; ++i)
        xml::Element(output.xml, "memberEnd").with("xmi:idref", output.idOf(association, place(i)));
    for (std::size_t i = 0; i < count; ++i)
        if (association.ends[place(i)].isNavigable && !output.isOwnedByClass(association, place(i)))
            xml::Element(output.xml, "navigableOwnedEnd").with("xmi:idref", output.idOf(association, place(i)));
    for (std::size_t i = 0; i < count; ++i)
        if (!output.isOwnedByClass(association, place(i)))
            writeEnd(output, "ownedEnd", association, place(i));
}

void writeAssociation(Output& output, const Association& association)
{
    if (output.isInClass(association))
        return; // its class holds it
    if (!association.associationClassId.empty())
        output.left("class of an association", association, "the class belongs to another association");
    xml::Element node(output.xml, "packagedElement");
    node.with("xmi:type", "uml:Association").with("xmi:id", output.ids.of(association));
    node.withSome("name", association.name).with("visibility", "public");
    if (association.isDerived)
        node.flag("isDerived", true);
    writeEnds(output, association);
    writeConstraints(output, association);
}

void writeClassifier(Output& output, const Classifier& classifier)
{
    xml::Element node(output.xml, "packagedElement");
    node.with("xmi:type", "uml:" + std::string(typeOf(output, classifier)));
    node.with("xmi:id", output.ids.of(classifier)).with("name", classifier.name);
    if (classifier.kind != ClassifierKind::Enumeration || classifier.visibility != Visibility::Public)
        node.with("visibility", wordOf(classifier.visibility));
    if (classifier.isAbstract)
        node.flag("isAbstract", true);
    if (classifier.concurrency == Concurrency::Active)
        node.flag("isActive", true);
    writeConstraints(output, classifier);
    writeFeatures(output, classifier);
    if (const auto held = output.inClient.find(classifier.id); held != output.inClient.end())
        for (const Relationship* const relationship : held->second)
            writeHeld(output, *relationship);
    if (const auto found = output.associationOf.find(classifier.id); found != output.associationOf.end())
        writeEnds(output, *found->second);
}

void writeContent(Output& output, const Package& package)
{
    writeNotes(output, package);
    writeConstraints(output, package);
    for (const Classifier& classifier : package.classifiers)
        writeClassifier(output, classifier);
    for (const Association* const association : output.associations.at(&package))
        writeAssociation(output, *association);
    for (const Relationship& relationship : package.relationships)
        if (!output.isHeldByClient(relationship))
            writeRelationship(output, relationship);
    for (const Package& child : package.packages) {
        xml::Element node(output.xml, "packagedElement");
        node.with("xmi:type", "uml:Package").with("xmi:id", output.idOf(child)).with("name", child.name);
        node.with("visibility", "public");
        writeContent(output, child);
    }
}

} // namespace

void writeTree(Output& output)
{
    const Package& root = output.writing.design.root;
    xml::Element node(output.xml, "uml:Model");
    node.with("xmi:type", "uml:Model");
    if (output.isRootElement())
        node.with("xmi:id", output.idOf(root));
    node.with("name", output.nameOf(root)).with("visibility", "public");
    writeContent(output, root);
}

} // namespace design::ea
