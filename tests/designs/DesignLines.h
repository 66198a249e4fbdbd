#pragma once

#include "designs/model/Design.h"
#include "designs/model/Naming.h"
#include "designs/model/Report.h"
#include "designs/model/Texts.h"

#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

/// A design as lines of text, one for each element, so that a table can say what must be there:
///
///     class Order abstract <<Entity>> {One order} note(Ask first)
///     protected static attribute Order.unit : Unit [0..1] = 7
///     association holds: Order order [1] composite - Item items [*] ->
///     box Sales Order 10,20 100x50 fill ffff00 font Arial 9
///     line Sales holds 10,20 30,40
class DesignLines {
public:
    DesignLines(design::Design design, const design::Report& report)
    {
        design::forEachElement(design.root,
                               [this](const design::Element& element) { names_[element.id] = element.name; });
        names_[""] = "";
        design::forEachPackage(design.root, [this](const design::Package& package) { add(package); });
        for (const design::ReportEntry& entry : report.leftEntries())
            lines_.push_back("left " + entry.kind + " " + entry.name);
        for (const design::ReportEntry& entry : report.madeEntries())
            lines_.push_back("made " + entry.kind + " " + entry.name);
    }

    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

private:
    static std::string about(const design::Element& element)
    {
        std::string text = element.stereotype.empty() ? "" : " <<" + element.stereotype + ">>";
        text += element.documentation.empty() ? "" : " {" + element.documentation + "}";
        for (const std::string& note : element.notes)
            text += " note(" + note + ")";
        for (const std::string& constraint : element.constraints)
            text += " constraint(" + constraint + ")";
        return text;
    }

    std::string nameOf(const std::string& id) const
    {
        const auto found = names_.find(id);
        return found == names_.end() ? "<" + id + ">" : found->second.empty() ? id : found->second;
    }

    std::string nameOf(const design::Reference& reference) const
    {
        return reference.name.empty() ? nameOf(reference.id) : reference.name;
    }

    static std::string many(const std::optional<design::Multiplicity>& multiplicity)
    {
        return multiplicity ? " [" + textOf(*multiplicity) + "]" : "";
    }

    static std::string word(design::Visibility visibility)
    {
        const char* const words[] = {"public ", "protected ", "private ", "package "};
        return words[static_cast<int>(visibility)];
    }

    static std::string valued(const std::string& value) { return value.empty() ? "" : " = " + value; }

    void add(const design::Package& package)
    {
        lines_.push_back("package " + package.name + about(package));
        for (const std::string& note : package.looseNotes)
            lines_.push_back("note " + package.name + " (" + note + ")");
        for (const design::Classifier& classifier : package.classifiers)
            add(classifier, package);
        for (const design::Association& association : package.associations)
            add(association);
        for (const design::Relationship& relationship : package.relationships) {
            const char* const words[] = {"generalization ", "realization ", "dependency "};
            lines_.push_back(words[static_cast<int>(relationship.kind)] + nameOf(relationship.client) + " - " +
                             nameOf(relationship.supplier) + about(relationship));
        }
        for (const design::Diagram& diagram : package.diagrams)
            add(diagram, package);
    }

    void add(const design::Classifier& classifier, const design::Package& package)
    {
        const char* const words[] = {"class ",     "interface ",   "datatype ",
                                     "primitive ", "enumeration ", "associationclass "};
        std::string line = words[static_cast<int>(classifier.kind)] + classifier.name + " in " + package.name;
        for (const design::Parameter& parameter : classifier.templateParameters)
            line += " <" + parameter.name + ">";
        lines_.push_back(line + (classifier.isAbstract ? " abstract" : "") + about(classifier));
        for (const design::Attribute& attribute : classifier.attributes)
            lines_.push_back(word(attribute.visibility) + (attribute.isStatic ? "static " : "") +
                             (attribute.isDerived ? "derived " : "") + "attribute " + classifier.name + "." +
                             attribute.name + " : " + nameOf(attribute.type) + many(attribute.multiplicity) +
                             valued(attribute.initialValue) + about(attribute));
        for (const design::Operation& operation : classifier.operations)
            add(operation, classifier);
        for (const design::Literal& literal : classifier.literals)
            lines_.push_back("literal " + classifier.name + "." + literal.name + valued(literal.value));
    }

    void add(const design::Operation& operation, const design::Classifier& classifier)
    {
        std::string line = word(operation.visibility) + (operation.isStatic ? "static " : "") +
                           (operation.isAbstract ? "abstract " : "") + "operation " + classifier.name + "." +
                           operation.name + "(";
        for (const design::Parameter& parameter : operation.parameters) {
            const char* const words[] = {"in ", "out ", "inout "};
            line += words[static_cast<int>(parameter.direction)] + parameter.name + " : " + nameOf(parameter.type) +
                    valued(parameter.initialValue);
        }
        line += ") : " + nameOf(operation.returnType) + many(operation.returnMultiplicity);
        lines_.push_back(line + (operation.preCondition.empty() ? "" : " pre " + operation.preCondition) +
                         about(operation));
    }

    void add(const design::Association& association)
    {
        std::string line = "association " + association.name + ":";
        for (const design::AssociationEnd& end : association.ends) {
            const char* const words[] = {"", " shared", " composite"};
            line += (&end == association.ends.data() ? " " : " - ") + nameOf(end.participant) + " " + end.name +
                    many(end.multiplicity) + words[static_cast<int>(end.aggregation)] + about(end);
            for (const design::Attribute& qualifier : end.qualifiers)
                line += " qualifier " + qualifier.name;
            line += end.isNavigable ? " ->" : "";
        }
        lines_.push_back(
            line + (association.associationClassId.empty() ? "" : " class " + nameOf(association.associationClassId)) +
            about(association));
    }

    void add(const design::Diagram& diagram, const design::Package& package)
    {
        lines_.push_back("diagram " + diagram.name + " in " + package.name + about(diagram));
        for (const design::Box& box : diagram.boxes) {
            std::ostringstream line;
            line << "box " << nameOf(box.elementId);
            if (box.bounds)
                line << " " << box.bounds->left << "," << box.bounds->top << " " << box.bounds->width << "x"
                     << box.bounds->height;
            addAppearance(line, box.appearance);
            lines_.push_back(line.str());
        }
        for (const design::Line& drawn : diagram.lines) {
            std::ostringstream line;
            line << "line " << drawn.elementId;
            for (const design::Point& point : drawn.points)
                line << " " << point.x << "," << point.y;
            addAppearance(line, drawn.appearance);
            lines_.push_back(line.str());
        }
    }

    static void addAppearance(std::ostringstream& line, const design::Appearance& appearance)
    {
        line << std::hex;
        if (appearance.fillColor)
            line << " fill " << *appearance.fillColor;
        if (appearance.lineColor)
            line << " border " << *appearance.lineColor;
        line << std::dec;
        if (!appearance.fontName.empty())
            line << " font " << appearance.fontName << " " << appearance.fontSize;
    }

    std::unordered_map<std::string, std::string> names_;
    std::vector<std::string> lines_;
};
