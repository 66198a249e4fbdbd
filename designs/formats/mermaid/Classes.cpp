#include "designs/formats/drawn/Aliases.h"
#include "designs/formats/drawn/Notation.h"
#include "designs/formats/mermaid/Mermaid.h"
#include "designs/formats/mermaid/Notation.h"
#include "designs/model/Counts.h"
#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace design::mermaid {

namespace {

// What a line ends with, on its left and on its right.
struct Head {
    std::string_view left;
    std::string_view right;
};
constexpr Head noHead = {"", ""};
constexpr Head arrow = {"<", ">"};
constexpr Head triangle = {"<|", "|>"};
constexpr Head diamond = {"o", "o"};
constexpr Head filledDiamond = {"*", "*"};

struct LinkEnd {
    std::string id;
    std::string alias;
    Head head = noHead;
    std::string text = {};
};

std::string joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all.append(all.empty() ? "" : " ").append(text);
    return all;
}

class ClassesText {
public:
    ClassesText(const Diagram& theDiagram, const Package& owner, const Common& theCommon)
        : diagram(theDiagram), common(theCommon), catalogue(theCommon.writing.catalogue),
          groups(theDiagram, owner, theCommon.homes, theCommon.writing.catalogue), aliases(reservedWords()),
          out(headOf(theDiagram.name, theCommon.homes.pathOf(owner), "classDiagram"))
    {
        for (const Box& box : diagram.boxes)
            boxes.emplace(box.elementId, &box);
    }

    std::string write()
    {
        addComment(out, "  ", diagram.documentation);
        for (const Group& group : groups.all())
            addGroup(group);
        for (const Box& box : diagram.boxes)
            if (const Association* const association = catalogue.association(box.elementId))
                addAssociationOfMany(*association);
        for (const Line& line : diagram.lines)
            addLine(line);
        for (const Box& box : diagram.boxes)
            addNotes(box.elementId);
        for (const std::string& note : diagram.notes)
            out.append("  note ").append(inQuotes(note, "\\n")).append("\n");
        leaveLook();
        return std::move(out);
    }

private:
    void leaveLook()
    {
        leaveLayout(diagram, common.report);
        const auto isColoured = [](const auto& each) {
            return each.appearance.fillColor.has_value() || each.appearance.lineColor.has_value();
        };
        if (std::any_of(diagram.boxes.begin(), diagram.boxes.end(), isColoured) ||
            std::any_of(diagram.lines.begin(), diagram.lines.end(), isColoured))
            common.report.left("colours of a diagram", diagram.id, diagram.name, "Mermaid colours its diagrams itself");
    }

    // namespace Stock {
    //   class Item
    // }
    void addGroup(const Group& group)
    {
        if (group.package)
            common.coverage.add(*group.package);
        if (group.box)
            addPackage(*group.package);
        const bool isNamespace = group.package && !group.boxes.empty();
        if (isNamespace)
            out.append("  namespace ").append(aliases.make(group.package->name)).append(" {\n");
        for (const Box* const box : group.boxes)
            addClassifier(*catalogue.classifier(box->elementId), *box, isNamespace ? "    " : "  ");
        if (isNamespace)
            out += "  }\n";
    }

    // A package that lines lead to must be a class.
    void addPackage(const Package& package)
    {
        addComment(out, "  ", package.documentation);
        std::string stereotype = package.stereotype;
        addWord(stereotype, "package");
        addHead(aliases.of(package.id, package.name), package.name, "  ");
        out.append(" {\n    <<").append(escaped(stereotype)).append(">>\n  }\n");
    }

    // class Order_item["Order item"]
    void addHead(const std::string& alias, std::string_view name, const std::string& indentation)
    {
        out.append(indentation).append("class ").append(alias);
        if (alias != name)
            out.append("[").append(inQuotes(name)).append("]");
    }

    //   {
    //     <<entity>>
    //     +number : Integer
    //   }
    void addClassifier(const Classifier& classifier, const Box& box, const std::string& indentation)
    {
        if (!common.coverage.has(classifier))
            leaveProperties(classifier, common.report);
        common.coverage.add(classifier);
        addComment(out, indentation, classifier.documentation);
        std::string name = classifier.name;
        if (!classifier.templateParameters.empty())
            name.append("<").append(notationOfParameters(classifier.templateParameters, catalogue)).append(">");
        addHead(aliases.of(classifier.id, classifier.name), name, indentation);
        const std::string inner = indentation + "  ";
        std::string body;
        std::swap(out, body);
        addAnnotations(classifier, inner);
        addMembers(classifier, box, inner);
        std::swap(out, body);
        if (!body.empty())
            out.append(" {\n").append(body).append(indentation).append("}");
        out += '\n';
    }

    void addAnnotations(const Classifier& classifier, const std::string& indentation)
    {
        std::string words = stereotypeOf(classifier);
        if (classifier.kind != ClassifierKind::Class && classifier.kind != ClassifierKind::DataType &&
            classifier.kind != ClassifierKind::PrimitiveType && classifier.kind != ClassifierKind::AssociationClass)
            addWord(words, nameOf(classifier.kind));
        if (classifier.isAbstract)
            addWord(words, "abstract");
        if (!words.empty())
            out.append(indentation).append("<<").append(escaped(words)).append(">>\n");
    }

    void addMembers(const Classifier& classifier, const Box& box, const std::string& indentation)
    {
        for (const Literal& literal : classifier.literals)
            if (shows(box, literal)) {
                common.coverage.add(literal);
                addComment(out, indentation, literal.documentation);
                out.append(indentation).append(memberText(notationOf(literal))).append("\n");
            }
        for (const Attribute& attribute : classifier.attributes)
            if (shows(box, attribute))
                addMember(attribute, notationOf(attribute, catalogue), attribute.isStatic ? "$" : "", indentation);
        for (const Operation& operation : classifier.operations)
            if (shows(box, operation))
                addMember(operation, notationOf(operation, catalogue),
                          operation.isAbstract ? "*" : (operation.isStatic ? "$" : ""), indentation);
    }

    template <class Feature>
    void addMember(const Feature& feature, const std::string& text, std::string_view mark,
                   const std::string& indentation)
    {
        common.coverage.add(feature);
        addComment(out, indentation, feature.documentation);
        out.append(indentation).append(1, signOf(feature.visibility));
        if (!feature.stereotype.empty())
            out.append("«").append(escaped(feature.stereotype)).append("» ");
        out.append(memberText(text)).append(mark).append("\n");
    }

    // A sign in front would be taken for a visibility.
    static std::string memberText(std::string_view text)
    {
        const std::size_t start = text.find_first_not_of(' ');
        if (start == std::string_view::npos)
            return "#160;";
        constexpr std::string_view signs = "+-";
        if (signs.find(text[start]) == std::string_view::npos)
            return escaped(text.substr(start));
        return std::string(text[start] == '+' ? "#43;" : "#45;").append(escaped(text.substr(start + 1)));
    }

    [[nodiscard]] const Box* boxOf(const std::string& id) const
    {
        const auto found = boxes.find(id);
        return found == boxes.end() ? nullptr : found->second;
    }

    [[nodiscard]] std::string aliasOf(const std::string& id) const
    {
        const std::string* const alias = aliases.find(id);
        return alias ? *alias : std::string();
    }

    // What stands above is named first.
    void addLink(LinkEnd first, LinkEnd second, bool isDashed, const std::string& label)
    {
        if (first.alias.empty() || second.alias.empty())
            return;
        const Side side = sideOf(boxOf(first.id), boxOf(second.id));
        if (side == Side::Above || side == Side::Left)
            std::swap(first, second);
        out.append("  ").append(first.alias).append(" ");
        out.append(first.text.empty() ? "" : inQuotes(first.text) + ' ');
        out.append(first.head.left).append(isDashed ? ".." : "--").append(second.head.right).append(" ");
        out.append(second.text.empty() ? "" : inQuotes(second.text) + ' ').append(second.alias);
        out.append(labelled(label)).append("\n");
    }

    static std::string labelWith(const std::string& stereotype, const std::string& label)
    {
        const std::string word = stereotype.empty() ? "" : std::string("«").append(stereotype).append("»");
        return word.empty() || label.empty() ? word + label : word + ' ' + label;
    }

    void addLine(const Line& line)
    {
        if (const Association* const association = catalogue.association(line.elementId))
            association->ends.size() == 2 ? addAssociation(*association) : addAssociationOfMany(*association);
        else if (const Relationship* const relationship = catalogue.relationship(line.elementId))
            addRelationship(*relationship);
    }

    [[nodiscard]] LinkEnd endOf(const AssociationEnd& end, bool hasArrow) const
    {
        Head head = hasArrow ? arrow : noHead;
        if (end.aggregation != Aggregation::None)
            head = end.aggregation == Aggregation::Composite ? filledDiamond : diamond;
        return {end.participant.id, aliasOf(end.participant.id), head, joined(textsAt(end, catalogue))};
    }

    void tellAssociation(const Association& association)
    {
        if (!common.coverage.has(association))
            leaveProperties(association, common.report);
        common.coverage.add(association);
        addComment(out, "  ", association.documentation);
        for (const AssociationEnd& end : association.ends)
            addComment(out, "  ", end.documentation);
    }

    // Order "1" o-- "0..*" Line : holds
    void addAssociation(const Association& association)
    {
        if (aliases.find(association.id))
            return; // it is a box already
        tellAssociation(association);
        const auto& ends = association.ends;
        const bool isDirected = ends[0].isNavigable != ends[1].isNavigable;
        addLink(endOf(ends[0], isDirected && ends[0].isNavigable), endOf(ends[1], isDirected && ends[1].isNavigable),
                false, labelWith(association.stereotype, labelOf(association)));
        addNotesOf(association, aliasOf(ends[0].participant.id));
        for (const AssociationEnd& end : ends)
            addClassLine(association, {end.participant.id, aliasOf(end.participant.id)});
    }

    // The class of an association is joined with what its line leads to.
    void addClassLine(const Association& association, const LinkEnd& end)
    {
        const std::string& id = association.associationClassId;
        if (!id.empty())
            addLink(end, {id, aliasOf(id)}, true, association.name);
    }

    // A box that all ends are joined with.
    void addAssociationOfMany(const Association& association)
    {
        if (aliases.find(association.id))
            return;
        tellAssociation(association);
        const std::string name = association.name.empty() ? "association" : association.name;
        const std::string alias = aliases.of(association.id, name);
        addHead(alias, name, "  ");
        out += " {\n    <<association>>\n  }\n";
        for (const AssociationEnd& end : association.ends)
            addLink(endOf(end, false), {association.id, alias}, false, "");
        addClassLine(association, {association.id, alias});
        addNotesOf(association, alias);
    }

    void addRelationship(const Relationship& relationship)
    {
        if (!common.coverage.has(relationship))
            leaveProperties(relationship, common.report);
        common.coverage.add(relationship);
        addComment(out, "  ", relationship.documentation);
        const bool isDependency = relationship.kind == RelationshipKind::Dependency;
        LinkEnd supplier = {relationship.supplier.id, aliasOf(relationship.supplier.id),
                            isDependency ? arrow : triangle};
        LinkEnd client = {relationship.client.id, aliasOf(relationship.client.id)};
        const std::string noted = client.alias;
        if (isDependency && sideOf(boxOf(client.id), boxOf(supplier.id)) == Side::Unknown)
            std::swap(supplier, client);
        addLink(std::move(supplier), std::move(client), relationship.kind != RelationshipKind::Generalization,
                labelWith(relationship.stereotype, labelOf(relationship)));
        addNotesOf(relationship, noted);
    }

    void addNotes(const std::string& id)
    {
        const std::string alias = aliasOf(id);
        const Classifier* const classifier = catalogue.classifier(id);
        const Package* const package = catalogue.package(id);
        if (alias.empty())
            return;
        if (package)
            addNotesOf(*package, alias);
        if (!classifier)
            return;
        addNotesOf(*classifier, alias);
        for (const std::string& constraint : classifier->constraints)
            addNote(std::string("{").append(constraint).append("}"), alias);
        for (const std::string& note : notesOfFeatures(*classifier))
            addNote(note, alias);
    }

    void addNotesOf(const Element& element, const std::string& alias)
    {
        for (const std::string& note : element.notes)
            addNote(note, alias);
    }

    // note for Order "the text"
    void addNote(std::string_view text, const std::string& alias)
    {
        out.append("  note for ").append(alias).append(" ").append(inQuotes(text, "\\n")).append("\n");
    }

    const Diagram& diagram;
    const Common& common;
    const Catalogue& catalogue;
    const Groups groups;
    Aliases aliases;
    std::unordered_map<std::string, const Box*> boxes;
    std::string out;
};

} // namespace

std::string textOf(const Diagram& diagram, const Package& owner, const Common& common)
{
    return ClassesText(diagram, owner, common).write();
}

} // namespace design::mermaid
