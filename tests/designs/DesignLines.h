#pragma once

#include "designs/formats/Formats.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"
#include "designs/settling/Settling.h"

#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

/// A design as lines of text, one for each element, so that a table can say what must be there:
///
///     class Order in sales abstract <<Entity>> {One order} note(Ask first)
///     protected static attribute Order.unit : Unit [0..1] = 7
///     association holds: Order order [1] composite - Item items [*] ->
///     box Sales Order 10,20 100x50 fill ffff00 font Arial 9
///     line Sales holds 10,20 30,40
///     left use case Buy: nothing of this kind is taken
class DesignLines {
public:
    DesignLines(design::Design design, const design::Report& report)
    {
        design::forEachElement(design.root,
                               [this](const design::Element& element) { names[element.id] = element.name; });
        names[""] = "";
        if (!design.tool.empty())
            lines.push_back("tool " + design.tool);
        design::forEachPackage(design.root, [this](const design::Package& package) { add(package); });
        add("left ", report.leftEntries());
        add("made ", report.madeEntries());
    }

    /// Line ends within a text come out as `\n`.
    [[nodiscard]] std::vector<std::string> take()
    {
        for (std::string& line : lines)
            for (std::size_t at = line.find('\n'); at != std::string::npos; at = line.find('\n', at))
                line.replace(at, 1, "\\n");
        return std::move(lines);
    }

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
        const auto found = names.find(id);
        return found == names.end() ? "<" + id + ">" : found->second.empty() ? id : found->second;
    }

    // With the identifier of what is not in the design.
    std::string nameOf(const design::Reference& reference) const
    {
        if (reference.name.empty())
            return nameOf(reference.id);
        return reference.name + (names.contains(reference.id) ? "" : " <" + reference.id + ">");
    }

    static std::string many(const std::optional<design::Multiplicity>& multiplicity)
    {
        return multiplicity ? " [" + design::textOf(*multiplicity) + "]" : "";
    }

    static std::string word(design::Visibility visibility)
    {
        const char* const words[] = {"public ", "protected ", "private ", "package "};
        return words[static_cast<int>(visibility)];
    }

    static std::string valued(const std::string& value) { return value.empty() ? "" : " = " + value; }

    static std::string when(bool flag, const char* text) { return flag ? text : ""; }

    void add(const char* word, const std::vector<design::ReportEntry>& entries)
    {
        for (const design::ReportEntry& entry : entries)
            lines.push_back(word + entry.kind + " " + entry.name + ": " + entry.reason);
    }

    void add(const design::Package& package)
    {
        lines.push_back("package " + package.name + about(package));
        for (const design::Remark& remark : package.remarks)
            lines.push_back("note in " + package.name + " (" + remark.text + ")");
        for (const design::Classifier& classifier : package.classifiers)
            add(classifier, package);
        for (const design::Association& association : package.associations)
            add(association);
        for (const design::Relationship& relationship : package.relationships)
            lines.push_back(std::string(design::nameOf(relationship.kind)) + " " + relationship.name +
                            (relationship.name.empty() ? "" : ": ") + nameOf(relationship.client) + " - " +
                            nameOf(relationship.supplier) + about(relationship));
        for (const design::Diagram& diagram : package.diagrams)
            add(diagram, package);
    }

    void add(const design::Classifier& classifier, const design::Package& package)
    {
        const char* const words[] = {"class ",       "interface ",        "datatype ", "primitive ",
                                     "enumeration ", "associationclass ", "actor ",    "usecase "};
        std::string line = words[static_cast<int>(classifier.kind)] + classifier.name + " in " + package.name;
        if (classifier.visibility != design::Visibility::Public)
            line.insert(0, word(classifier.visibility));
        for (const design::Parameter& parameter : classifier.templateParameters)
            line += " <" + parameter.name + (parameter.type.isEmpty() ? "" : " : " + nameOf(parameter.type)) + ">";
        const bool isActive = classifier.concurrency == design::Concurrency::Active;
        lines.push_back(line + when(classifier.isAbstract, " abstract") + when(isActive, " active") +
                        when(classifier.isPersistent, " persistent") + about(classifier));
        for (const design::Attribute& attribute : classifier.attributes)
            lines.push_back(lineOf(attribute, "attribute " + classifier.name + "."));
        for (const design::Operation& operation : classifier.operations)
            add(operation, classifier);
        for (const design::Literal& literal : classifier.literals)
            lines.push_back("literal " + classifier.name + "." + literal.name + valued(literal.value) + about(literal));
    }

    std::string lineOf(const design::Attribute& attribute, const std::string& what) const
    {
        return word(attribute.visibility) + when(attribute.isStatic, "static ") +
               when(attribute.isDerived, "derived ") + when(attribute.isReadOnly, "readonly ") +
               when(attribute.isIdentifier, "id ") + what + attribute.name + " : " + nameOf(attribute.type) +
               many(attribute.multiplicity) + valued(attribute.initialValue) + about(attribute);
    }

    void add(const design::Operation& operation, const design::Classifier& classifier)
    {
        std::string line = word(operation.visibility) + when(operation.isStatic, "static ") +
                           when(operation.isAbstract, "abstract ") + "operation " + classifier.name + "." +
                           operation.name + "(";
        for (const design::Parameter& parameter : operation.parameters) {
            const char* const words[] = {"in ", "out ", "inout "};
            line += when(&parameter != operation.parameters.data(), ", ");
            line += words[static_cast<int>(parameter.direction)] + parameter.name + " : " + nameOf(parameter.type) +
                    many(parameter.multiplicity) + valued(parameter.initialValue) + about(parameter);
        }
        line += ") : " + nameOf(operation.returnType) + many(operation.returnMultiplicity);
        for (const auto& [what, text] :
             {std::pair{" pre ", &operation.preCondition}, std::pair{" post ", &operation.postCondition},
              std::pair{" does ", &operation.semantics}})
            line += text->empty() ? "" : what + *text;
        lines.push_back(line + about(operation));
    }

    void add(const design::Association& association)
    {
        std::string line = when(association.isDerived, "derived ") + "association " + association.name + ":";
        for (const design::AssociationEnd& end : association.ends) {
            const char* const words[] = {"", " shared", " composite"};
            line += (&end == association.ends.data() ? " " : " - ") +
                    when(end.visibility != design::Visibility::Public, word(end.visibility).c_str()) +
                    when(end.isStatic, "static ") + when(end.isDerived, "derived ") +
                    when(end.containment == design::Containment::ByValue, "held ") + nameOf(end.participant) + " " +
                    end.name + many(end.multiplicity) + words[static_cast<int>(end.aggregation)] + about(end);
            for (const design::Attribute& qualifier : end.qualifiers)
                line += " qualifier(" + lineOf(qualifier, "") + ")";
            line += when(end.isNavigable, " ->");
        }
        lines.push_back(
            line + (association.associationClassId.empty() ? "" : " class " + nameOf(association.associationClassId)) +
            about(association));
    }

    void add(const design::Diagram& diagram, const design::Package& package)
    {
        lines.push_back("diagram " + diagram.name + " in " + package.name + about(diagram));
        for (const design::Box& box : diagram.boxes) {
            std::ostringstream line;
            line << "box " << nameOf(box.elementId);
            if (box.bounds)
                line << " " << box.bounds->left << "," << box.bounds->top << " " << box.bounds->width << "x"
                     << box.bounds->height;
            addAppearance(line, box.appearance);
            addHidden(line, " without attributes", box.hidden.attributes);
            addHidden(line, " without operations", box.hidden.operations);
            lines.push_back(line.str());
        }
        for (const design::Line& drawn : diagram.lines) {
            std::ostringstream line;
            line << "line " << drawn.elementId << (drawn.hasEnds || drawn.points.empty() ? "" : " bends");
            for (const design::Point& point : drawn.points)
                line << " " << point.x << "," << point.y;
            if (drawn.middle)
                line << " middle " << drawn.middle->x << "," << drawn.middle->y;
            for (const design::LinePart& part : drawn.parts) {
                line << " part";
                for (const design::Point& point : part.points)
                    line << " " << point.x << "," << point.y;
            }
            addAppearance(line, drawn.appearance);
            lines.push_back(line.str());
        }
    }

    // ` without attributes +-`: by the signs of what is hidden.
    static void addHidden(std::ostringstream& line, const char* word, const std::array<bool, 4>& hidden)
    {
        std::string signs;
        for (std::size_t i = 0; i < hidden.size(); ++i)
            signs += hidden[i] ? std::string(1, "+#-~"[i]) : std::string();
        if (!signs.empty())
            line << word << ' ' << signs;
    }

    static void addAppearance(std::ostringstream& line, const design::Appearance& appearance)
    {
        line << std::hex;
        if (appearance.fillColor)
            line << " fill " << *appearance.fillColor;
        if (appearance.lineColor)
            line << " border " << *appearance.lineColor;
        if (appearance.fontColor)
            line << " text " << *appearance.fontColor;
        line << std::dec;
        if (!appearance.fontName.empty())
            line << " font " << appearance.fontName << " " << appearance.fontSize;
    }

    std::unordered_map<std::string, std::string> names;
    std::vector<std::string> lines;
};

/// What the reader of its format makes of a file, settled.
inline std::vector<std::string> linesOf(const design::Source& source)
{
    const design::Format* const format = design::formatOf(source);
    if (!format)
        return {"of no format"};
    design::Report report;
    design::Design design = format->read(source, report);
    design::settle(design, design::Reach::Classifiers, report);
    return DesignLines(std::move(design), report).take();
}
