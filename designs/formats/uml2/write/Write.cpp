#include "designs/formats/uml2/write/Write.h"

#include "designs/formats/shared/Xml.h"
#include "designs/formats/uml2/write/Writer.h"
#include "designs/model/Walk.h"
#include "designs/settling/LeftDiagram.h"

#include <algorithm>

namespace design::uml2 {

Writer::Writer(const Writing& theWriting, Report& theReport) : writing(theWriting), report(theReport)
{
    noteIdentifiers();
    collectRelations();
}

void Writer::noteIdentifiers()
{
    const auto note = [&](const Element& element) {
        if (!element.id.empty() && !identifiers.contains(element.id))
            identifiers.emplace(element.id, makeIdentifier(xmlIdentifier(element.id)));
    };
    note(writing.design.root);
    forEachPackage(writing.design.root, [&](const Package& package) {
        for (const Package& child : package.packages)
            note(child);
        for (const Classifier& classifier : package.classifiers)
            note(classifier);
        for (const Association& association : package.associations)
            note(association);
        for (const Relationship& relationship : package.relationships)
            note(relationship);
    });
}

void Writer::write(pugi::xml_node parent)
{
    const Package& root = writing.design.root;
    model = parent.append_child("uml:Model");
    set(model, "xmi:version", "20131001");
    set(model, "xmlns:xmi", "http://www.omg.org/spec/XMI/20131001");
    set(model, "xmlns:ecore", "http://www.eclipse.org/emf/2002/Ecore");
    set(model, "xmlns:uml", "http://www.eclipse.org/uml2/5.0.0/UML");
    if (root.id.empty())
        modelIdentifier = makeIdentifier("model");
    set(model, "xmi:id", identifierOfPackage(root));
    if (!root.name.empty())
        set(model, "name", root.name);
    writePackage(root, model);
    tellLosses();
    for (const pugi::xml_node type : furtherNodes) {
        lastClassifier = lastClassifier ? model.insert_move_after(type, lastClassifier) : model.prepend_move(type);
    }
}

void Writer::writePackage(const Package& package, pugi::xml_node node)
{
    describe(package, node, node);
    writeRemarks(package, node);
    for (const Classifier& classifier : package.classifiers)
        writeClassifier(classifier, node);
    if (&package == &writing.design.root)
        lastClassifier = node.last_child();
    for (const Association& association : package.associations)
        writeAssociation(association, node);
    for (const Relationship& relationship : package.relationships)
        if (!isOwnedByClass(relationship))
            writeRelationship(relationship, node);
    for (const Package& child : package.packages) {
        pugi::xml_node added = add(node, "packagedElement", "uml:Package", child);
        packageIdentifiers.emplace(&child, added.attribute("xmi:id").value());
        writePackage(child, added);
    }
}

std::string Writer::identifierOfPackage(const Package& package) const
{
    if (&package != &writing.design.root)
        return packageIdentifiers.at(&package);
    return package.id.empty() ? modelIdentifier : identifierOf(package.id);
}

// A package has the notes of what is in it, and those that hang at nothing.
void Writer::writeRemarks(const Package& package, pugi::xml_node node)
{
    const auto comment = [&](const std::string& text, const std::string& annotated) {
        pugi::xml_node added = addPart(node, "ownedComment", "uml:Comment", "-note");
        if (!annotated.empty())
            set(added, "annotatedElement", annotated);
        setText(added.append_child("body"), text);
    };
    const auto commentAll = [&](const Element& element) {
        for (const std::string& text : element.notes)
            comment(text, identifierOf(element.id));
    };
    const auto commentOn = [&](const Association& association) {
        for (const std::string& text : association.notes)
            comment(text, identifierOf(association));
    };
    for (const Classifier& classifier : package.classifiers) {
        commentAll(classifier);
        if (const auto found = associationsOfClasses.find(&classifier); found != associationsOfClasses.end())
            commentOn(*found->second);
    }
    for (const Association& association : package.associations)
        if (!isItsClass(association))
            commentOn(association);
    for (const Relationship& relationship : package.relationships)
        commentAll(relationship);
    for (const Package& child : package.packages)
        if (!child.id.empty())
            commentAll(child);
    for (const Remark& remark : package.remarks)
        comment(remark.text, "");
}

pugi::xml_node Writer::add(pugi::xml_node parent, const char* role, std::string_view type, const Element& element)
{
    const std::string id = identifierOf(element, parent);
    pugi::xml_node node = parent.append_child(role);
    set(node, "xmi:type", type);
    set(node, "xmi:id", id);
    if (!element.name.empty())
        set(node, "name", element.name);
    return node;
}

pugi::xml_node Writer::addPart(pugi::xml_node parent, const char* role, std::string_view type, std::string_view suffix)
{
    const std::string id = makeIdentifier(parent.attribute("xmi:id").value() + std::string(suffix));
    pugi::xml_node node = parent.append_child(role);
    set(node, "xmi:type", type);
    set(node, "xmi:id", id);
    return node;
}

// Stereotypes are keywords, which need no profile.
void Writer::describe(const Element& element, pugi::xml_node described, pugi::xml_node space)
{
    if (!element.stereotype.empty()) {
        pugi::xml_node annotation = addPart(described, "eAnnotations", "ecore:EAnnotation", "-keywords");
        set(annotation, "source", "http://www.eclipse.org/uml2/2.0.0/UML");
        pugi::xml_node detail = addPart(annotation, "details", "ecore:EStringToStringMapEntry", "-word");
        set(detail, "key", element.stereotype);
    }
    writeProperties(element, described);
    if (!element.documentation.empty()) {
        pugi::xml_node comment = addPart(described, "ownedComment", "uml:Comment", "-comment");
        set(comment, "annotatedElement", described.attribute("xmi:id").value());
        setText(comment.append_child("body"), element.documentation);
    }
    const std::string_view constrained = described == space ? "" : described.attribute("xmi:id").value();
    for (const std::string& text : element.constraints)
        addRule(text, constrained, space);
}

// An annotation for each tool that keeps values with the element.
void Writer::writeProperties(const Element& element, pugi::xml_node node)
{
    std::unordered_map<std::string_view, pugi::xml_node> annotations; // by tool
    for (const Property& property : element.properties) {
        pugi::xml_node& annotation = annotations[property.tool];
        if (!annotation) {
            annotation = addPart(node, "eAnnotations", "ecore:EAnnotation", "-values");
            set(annotation, "source", std::string(ofTool).append(property.tool));
        }
        pugi::xml_node detail = addPart(annotation, "details", "ecore:EStringToStringMapEntry", "-value");
        set(detail, "key", property.name);
        set(detail, "value", property.value);
    }
}

void Writer::addRule(const std::string& text, std::string_view constrained, pugi::xml_node space)
{
    pugi::xml_node rule = addPart(space, "ownedRule", "uml:Constraint", "-rule");
    if (!constrained.empty())
        set(rule, "constrainedElement", constrained);
    pugi::xml_node value = addPart(rule, "specification", "uml:OpaqueExpression", "-value");
    setText(value.append_child("body"), text);
}

std::string Writer::identifierOf(const Element& element, pugi::xml_node parent)
{
    if (element.id.empty())
        return makeIdentifier(parent.attribute("xmi:id").value() + std::string("-part"));
    const auto found = identifiers.find(element.id);
    return found == identifiers.end() ? makeIdentifier(xmlIdentifier(element.id)) : found->second;
}

std::string Writer::identifierOf(std::string_view id) const
{
    const auto found = identifiers.find(std::string(id));
    return found == identifiers.end() ? std::string() : found->second;
}

std::string Writer::makeIdentifier(const std::string& wanted)
{
    if (taken.insert(wanted).second)
        return wanted;
    std::size_t& number = numbers[wanted];
    std::string numbered;
    do {
        numbered = wanted + "." + std::to_string(++number + 1);
    } while (!taken.insert(numbered).second);
    return numbered;
}

namespace {

// What XML cannot hold becomes a blank.
std::string withoutControls(std::string_view value)
{
    std::string text(value);
    const auto isBad = [](char byte) {
        return static_cast<unsigned char>(byte) < 0x20U && byte != '\n' && byte != '\t' && byte != '\r';
    };
    std::replace_if(text.begin(), text.end(), isBad, ' ');
    return text;
}

} // namespace

void set(pugi::xml_node node, const char* name, std::string_view value)
{
    node.append_attribute(name).set_value(withoutControls(value).c_str());
}

// Readers of XML take a carriage return for a line end, and one with a line feed for a single one.
void setText(pugi::xml_node node, std::string_view text)
{
    std::string lines = withoutControls(text);
    for (std::size_t at = lines.find('\r'); at != std::string::npos; at = lines.find('\r', at))
        lines.replace(at, lines.compare(at + 1, 1, "\n") == 0 ? 2 : 1, "\n");
    node.text().set(lines.c_str());
}

std::string xmlIdentifier(std::string_view id)
{
    std::string identifier(id);
    const auto isDigit = [](char byte) { return byte >= '0' && byte <= '9'; };
    const auto mayStand = [&](char byte) {
        const char lower = static_cast<char>(byte | 0x20);
        return (lower >= 'a' && lower <= 'z') || isDigit(byte) || byte == '_' || byte == '-' || byte == '.' ||
               static_cast<unsigned char>(byte) >= 0x80U;
    };
    std::replace_if(
        identifier.begin(), identifier.end(), [&](char byte) { return !mayStand(byte); }, '_');
    if (identifier.empty() || isDigit(identifier.front()) || identifier.front() == '-' || identifier.front() == '.')
        identifier.insert(identifier.begin(), '_');
    return identifier;
}

namespace {

void leaveDiagrams(const Package& package, const Catalogue& catalogue, Report& report)
{
    for (const Diagram& diagram : package.diagrams) {
        leaveDiagram(diagram, catalogue, "the model file has none; --to papyrus keeps diagrams beside it", report);
        for (const std::string& text : diagram.notes)
            report.left("note", diagram.id, text, "the diagram that it stands in is not there");
    }
}

} // namespace

void write(const Writing& writing, Files& files, Report& report)
{
    forEachPackage(writing.design.root,
                   [&](const Package& package) { leaveDiagrams(package, writing.catalogue, report); });
    pugi::xml_document document;
    Writer(writing, report).write(document.root());
    xml::save(document, files.begin({}));
}

} // namespace design::uml2
